// Fuzzes the tooltip mark-up: both passes over arbitrary text terminate,
// read nothing out of bounds (ASan) and keep their invariants.
// Input: byte 0 is the font's average character width (signed, so 0 and
// negative widths are tried), byte 1 the rectangle's width / 4; the rest is
// the text, ASCII bytes as they are and any byte >= 0x80 together with the
// next one as a code unit (so every UTF-16 value can appear).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "quorvel/tooltip/markup.h"

namespace {

class CheckingSurface : public qv::MarkupSurface {
public:
    explicit CheckingSurface(int avgChar) : m_avgChar(avgChar) {}
    int depth = 0;

    void UseFont(const qv::FontDesc& font) override {
        if (++depth != 1 || font.weight < 0 || font.weight > 900) std::abort();
        m_bold = font.weight > 400;
    }
    void RestoreFont() override {
        if (--depth != 0) std::abort();
    }
    qv::TipTextMetrics GetMetrics() override { return {13, m_avgChar}; }
    qv::TipSize MeasureText(std::wstring_view text) override {
        if (text.empty()) std::abort();  // runs are never empty
        return {static_cast<int>(text.size()) * 7, m_bold ? 15 : 13};
    }
    void PutText(int x, int y, std::wstring_view text) override { Check(x), Check(y), MeasureText(text); }
    void SetTextColour(qv::ColourRef colour) override { m_colour = colour; }
    qv::ColourRef GetTextColour() override { return m_colour; }
    void SetBackColour(qv::ColourRef) override {}
    void SetBackMode(int mode) override {
        if (mode != qv::kBackModeOpaque && mode != qv::kBackModeTransparent) std::abort();
    }
    void DrawHorzLine(int xFrom, int xTo, int y, qv::ColourRef) override { Check(xFrom), Check(xTo), Check(y); }

private:
    static void Check(int coordinate) {
        if (coordinate > (1 << 27) || coordinate < -(1 << 27)) std::abort();
    }
    int m_avgChar;
    bool m_bold = false;
    qv::ColourRef m_colour = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const int avgChar = static_cast<std::int8_t>(data[0]);
    const int width = data[1] * 4;
    std::wstring text;
    for (std::size_t i = 2; i < size; ++i) {
        if (data[i] < 0x80 || i + 1 == size) {
            text += static_cast<wchar_t>(data[i]);
        } else {
            text += static_cast<wchar_t>((data[i] & 0x7Fu) << 8 | data[i + 1]);
            ++i;
        }
    }

    CheckingSurface surface(avgChar);
    qv::MarkupStyle style;
    style.colours = {0, 1, 2, 3, 4, 5, 6};
    qv::MarkupLines lines;
    const qv::TipRect rect{10, 20, 10 + width, 500};
    const qv::TipSize measured = qv::PrintTitleString(surface, rect, text, true, style, lines);
    if (surface.depth != 0 || lines.lineWidths.size() != lines.lineHeights.size()) std::abort();
    // One line at most per character, plus the last one.
    if (lines.lineWidths.size() > text.size() + 1 || measured.cx < 0 || measured.cy < 0) std::abort();
    const qv::TipSize drawn = qv::PrintTitleString(surface, rect, text, false, style, lines);
    if (surface.depth != 0 || drawn.cx != 0 || drawn.cy != measured.cy) std::abort();
    return 0;
}
