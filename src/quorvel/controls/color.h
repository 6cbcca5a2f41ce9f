// The colour scheme of the library's fields: a host gives any field its own
// text and background colours (for mandatory, changed or read-only fields)
// and treats all coloured fields alike through two small interfaces.
#pragma once

#include <windows.h>

#include <utility>

#include "quorvel/common/api.h"
#include "quorvel/platform/gdi.h"

// A field whose colours the host sets. Exactly these two operations, in this
// order, and no virtual destructor, so that the interface's table is what a
// host compiled against it expects. Colours are COLORREF values 0x00BBGGRR.
class QV_API XBaseColor {
public:
    virtual void SetTextColor(unsigned long colour) = 0;
    virtual void SetBkColor(unsigned long colour) = 0;

protected:
    ~XBaseColor() = default;
};

// Marks the read-only coloured fields; adds nothing.
class QV_API XBaseReadOnlyColor : public XBaseColor {
protected:
    ~XBaseReadOnlyColor() = default;
};

namespace qv {

// Text colour, background colour and the solid brush of the background that
// a field paints itself with. The brush belongs to the scheme: it is made
// when the scheme is, replaced (the old one deleted) when the background
// changes and deleted with the scheme.
class ColorScheme {
public:
    ColorScheme(COLORREF text, COLORREF background)
        : m_crText(text), m_crBk(background), m_brBk(::CreateSolidBrush(background)) {}

    COLORREF TextColor() const noexcept { return m_crText; }
    COLORREF BkColor() const noexcept { return m_crBk; }
    HBRUSH Brush() const noexcept { return m_brBk.get(); }

    // Stores the colour and repaints `hwnd` (nothing to repaint before the
    // window exists: the colour is simply kept).
    void SetText(HWND hwnd, COLORREF colour) {
        m_crText = colour;
        if (hwnd && ::IsWindow(hwnd)) ::InvalidateRect(hwnd, nullptr, TRUE);
    }
    void SetBk(HWND hwnd, COLORREF colour) {
        m_crBk = colour;
        m_brBk.reset(::CreateSolidBrush(colour));
        if (hwnd && ::IsWindow(hwnd)) ::InvalidateRect(hwnd, nullptr, TRUE);
    }

    // The answer to a WM_CTLCOLOR* message: the colours into the DC, the
    // brush to the control. The background mode is left as it is.
    HBRUSH Apply(HDC dc) const {
        ::SetTextColor(dc, m_crText);
        ::SetBkColor(dc, m_crBk);
        return m_brBk.get();
    }

private:
    COLORREF m_crText;
    COLORREF m_crBk;
    qv::Brush m_brBk;
};

// The colour-scheme variant of a control class that paints itself: the
// control's own constructor arguments follow the two default colours.
// A variant of a new control class is one line:
//   class QV_API XFooColor : public qv::ColorVariant<XFoo> { using ColorVariant::ColorVariant; };
// (see the defaults of each variant where it is declared).
template <class Control, class Interface = XBaseColor>
class ColorVariant : public Control, public Interface {
public:
    template <class... Args>
    explicit ColorVariant(COLORREF text, COLORREF background, Args&&... args)
        : Control(std::forward<Args>(args)...), m_scheme(text, background) {}

    void SetTextColor(unsigned long colour) override { m_scheme.SetText(this->m_hWnd, colour); }
    void SetBkColor(unsigned long colour) override { m_scheme.SetBk(this->m_hWnd, colour); }
    const ColorScheme& Scheme() const noexcept { return m_scheme; }

protected:
    // Reflected WM_CTLCOLOR* (WM_CTLCOLOREDIT, WM_CTLCOLORSTATIC for a
    // read-only or disabled edit, WM_CTLCOLORLISTBOX, ...).
    HBRUSH OnReflectCtlColor(HDC dc, UINT) override { return m_scheme.Apply(dc); }

    ColorScheme m_scheme;
};

// The default text colour of the coloured fields: RGB(8, 0, 0), a near-black
// stored as a colour (not a system-colour index).
constexpr COLORREF kDefaultFieldTextColor = RGB(8, 0, 0);

}  // namespace qv
