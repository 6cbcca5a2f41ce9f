#include "quorvel/tooltip/gdi_surface.h"

#include <cwchar>

namespace qv {

FontDesc GdiMarkupSurface::Describe(const LOGFONTW& font) {
    FontDesc d;
    d.face.assign(font.lfFaceName, ::wcsnlen(font.lfFaceName, LF_FACESIZE));
    d.height = font.lfHeight;
    d.weight = font.lfWeight;
    d.italic = font.lfItalic != 0;
    d.underline = font.lfUnderline != 0;
    d.strikeOut = font.lfStrikeOut != 0;
    d.charSet = font.lfCharSet;
    return d;
}

LOGFONTW GdiMarkupSurface::Apply(const LOGFONTW& base, const FontDesc& font) {
    LOGFONTW lf = base;
    const size_t n = font.face.size() < LF_FACESIZE - 1 ? font.face.size() : LF_FACESIZE - 1;
    ::wmemcpy(lf.lfFaceName, font.face.data(), n);
    lf.lfFaceName[n] = L'\0';
    lf.lfHeight = font.height;
    lf.lfWeight = font.weight;
    lf.lfItalic = font.italic ? 1 : 0;
    lf.lfUnderline = font.underline ? 1 : 0;
    lf.lfStrikeOut = font.strikeOut ? 1 : 0;
    lf.lfCharSet = font.charSet;
    return lf;
}

void GdiMarkupSurface::UseFont(const FontDesc& font) {
    RestoreFont();
    const LOGFONTW lf = Apply(m_base, font);
    m_font = ::CreateFontIndirectW(&lf);
    // Without a font of our own the context keeps drawing with its current one.
    if (m_font) m_previous = ::SelectObject(m_dc, m_font);
}

void GdiMarkupSurface::RestoreFont() {
    if (m_previous) ::SelectObject(m_dc, m_previous);
    if (m_font) ::DeleteObject(m_font);
    m_previous = nullptr;
    m_font = nullptr;
}

TipTextMetrics GdiMarkupSurface::GetMetrics() {
    TEXTMETRICW tm{};
    if (!::GetTextMetricsW(m_dc, &tm)) return {};
    return TipTextMetrics{static_cast<int>(tm.tmHeight), static_cast<int>(tm.tmAveCharWidth)};
}

TipSize GdiMarkupSurface::MeasureText(std::wstring_view text) {
    SIZE size{};
    if (!::GetTextExtentPoint32W(m_dc, text.data(), static_cast<int>(text.size()), &size)) return {};
    return TipSize{static_cast<int>(size.cx), static_cast<int>(size.cy)};
}

void GdiMarkupSurface::PutText(int x, int y, std::wstring_view text) {
    ::TextOutW(m_dc, x, y, text.data(), static_cast<int>(text.size()));
}

void GdiMarkupSurface::DrawHorzLine(int xFrom, int xTo, int y, ColourRef colour) {
    HPEN pen = ::CreatePen(PS_SOLID, m_ruleWidth, colour);
    if (!pen) return;
    HGDIOBJ old = ::SelectObject(m_dc, pen);
    ::MoveToEx(m_dc, xFrom, y, nullptr);
    ::LineTo(m_dc, xTo, y);
    ::SelectObject(m_dc, old);
    ::DeleteObject(pen);
}

}  // namespace qv
