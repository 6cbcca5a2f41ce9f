// The mark-up layout's drawing surface on a GDI device context.
//
// Fonts are built from the tooltip's LOGFONT with the fields the mark-up
// changes (face, height, weight, italic, underline, strike-out, character
// set) taken from the layout's font description; text, colours and the
// background mode go straight to the device context, and rules are drawn
// with a solid pen as thick as a 1-pixel line at 96 DPI is at the DPI the
// text is drawn at. The surface restores the device context's font
// and pen and deletes what it created, also when it is destroyed in the
// middle of a pass.
#pragma once

#include <windows.h>

#include "quorvel/tooltip/markup.h"

namespace qv {

class GdiMarkupSurface final : public MarkupSurface {
public:
    // `base` supplies the LOGFONT fields the font description leaves out;
    // `ruleWidth` is the pen width of rules, in pixels (at least 1).
    GdiMarkupSurface(HDC dc, const LOGFONTW& base, int ruleWidth = 1) noexcept
        : m_dc(dc), m_base(base), m_ruleWidth(ruleWidth > 1 ? ruleWidth : 1) {}
    ~GdiMarkupSurface() override { RestoreFont(); }
    GdiMarkupSurface(const GdiMarkupSurface&) = delete;
    GdiMarkupSurface& operator=(const GdiMarkupSurface&) = delete;

    void UseFont(const FontDesc& font) override;
    void RestoreFont() override;
    TipTextMetrics GetMetrics() override;
    TipSize MeasureText(std::wstring_view text) override;
    void PutText(int x, int y, std::wstring_view text) override;
    void SetTextColour(ColourRef colour) override { ::SetTextColor(m_dc, colour); }
    ColourRef GetTextColour() override { return ::GetTextColor(m_dc); }
    void SetBackColour(ColourRef colour) override { ::SetBkColor(m_dc, colour); }
    void SetBackMode(int mode) override { ::SetBkMode(m_dc, mode); }
    void DrawHorzLine(int xFrom, int xTo, int y, ColourRef colour) override;

    // The description of a LOGFONT, and a LOGFONT from `base` with a description applied.
    static FontDesc Describe(const LOGFONTW& font);
    static LOGFONTW Apply(const LOGFONTW& base, const FontDesc& font);

private:
    HDC m_dc;
    LOGFONTW m_base;
    int m_ruleWidth;
    HFONT m_font = nullptr;     // the font UseFont created
    HGDIOBJ m_previous = nullptr;
};

}  // namespace qv
