// The line-numbered multi-line edit XMultiLineEditLN and its gutter
// XLineNumberStatic, with their colour-scheme variants.
//
// The gutter is a child static of the edit, at the left of the edit's client
// area, as high as the client area and as wide as the formatted line count
// (+5 pixels). The edit's formatting rectangle starts one pixel to its right,
// so text never runs under the numbers. The gutter numbers the lines that
// fit whole into the client area (client height / line height of them) from
// the first visible line on, each number on its text line, in the format
// "%05i" unless the host sets another.
//
// When the numbers follow the edit:
// - the text: WM_SETTEXT and the reflected EN_CHANGE (the parent still
//   receives EN_CHANGE);
// - the view: WM_VSCROLL, and besides it everything else that scrolls an
//   edit: the mouse wheel (WM_MOUSEWHEEL), the keyboard (WM_KEYDOWN,
//   WM_CHAR), EM_LINESCROLL, EM_SCROLL, EM_SCROLLCARET, text put in by
//   EM_REPLACESEL, WM_PASTE, WM_CUT, WM_CLEAR, WM_UNDO and EM_UNDO, and
//   selecting with the mouse beyond the edge (WM_LBUTTONDOWN, WM_MOUSEMOVE
//   while the edit has the capture, and the edit's own WM_TIMER). Each of
//   these reads the first visible line and the line count once; the gutter
//   repaints only when the lines it numbers changed;
// - the layout (gutter width, formatting rectangle): WM_SIZE, WM_SETFONT and
//   SetLineNumberFormat. Beyond those, the gutter also widens as soon as
//   the line count gains a digit (99 -> 100 lines with "%d"), so that no
//   number is ever cut off. It does not narrow when lines go: that waits for
//   the next size, font or format change, so that deleting and retyping a
//   line never makes the whole text jump sideways.
//
// The numbers count the lines as the edit shows them: in an edit that wraps
// words (the default style has no ES_AUTOHSCROLL), a long paragraph takes
// several numbers. An edit with ES_AUTOHSCROLL numbers text lines.
//
// Number formats: a printf-style format with one integer (d, i, u, x, X or
// o, with flags, a width and a precision of up to 64, and an optional h, l
// or ll), plus literal text and "%%". The library writes the number itself
// and never hands the host's format to a C runtime printf. Anything else
// ("%s", "%n", "%d %d", "%*d", a width above 64 ...) is refused:
// SetLineNumberFormat answers false and the gutter uses "%05i".
//
// Hosts create the edit with XBaseMultiLineEdit's Create (or CreateEx), or
// attach it to a multi-line EDIT of their dialog with SubclassDlgItem or
// Attach; either way the gutter is made at once.
//
// DPI: the numbers are written in the edit's font, which the host makes as
// large as the DPI wants; the gutter's air around them (5 pixels, the
// numbers 2 pixels in) is scaled to the edit's DPI, and the edit lays the
// gutter out again when it moves to a monitor of another DPI.
//
// Screen readers: the edit is a field like any other, named by the label
// before it, its text its value. The gutter repeats what a reader already
// says (the line the caret is on) and is decoration to them: it reports
// itself as an unnamed graphic in the invisible state, which readers skip,
// so walking through a form never stops at a column of numbers.
#pragma once

#include <windows.h>

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"

// The gutter: a static that paints the numbers of the lines first to last
// (0-based, last excluded, shown from 1) of its parent edit, in the edit's
// font, double-buffered, with a one-pixel line in the foreground colour at
// its right edge.
class QV_API XLineNumberStatic : public qv::Static, public qv::AccessibleSource {
public:
    // RGB(234, 232, 228), a light grey.
    enum : COLORREF { kDefaultBackground = 0xE4E8EA };
    // The left inset of the numbers, in pixels at 96 DPI (scaled to the
    // gutter's DPI when painted).
    enum : int { kNumberLeft = 2 };

    // Numbers in the system's window text colour on the light grey, format "%05i".
    XLineNumberStatic();

    // The colour of the numbers and of the dividing line, and of the
    // background; repainted at once when `redraw` and the gutter exists.
    void SetForegroundColor(COLORREF colour, bool redraw = true);
    void SetBackgroundColor(COLORREF colour, bool redraw = true);
    COLORREF GetForegroundColor() const noexcept { return m_crForeground; }
    COLORREF GetBackgroundColor() const noexcept { return m_crBackground; }

    // The number format (see the top of this file); null is "%05i". False
    // when the format was refused and "%05i" is used instead.
    bool SetLineNumberFormat(const wchar_t* format);
    const std::wstring& GetLineNumberFormat() const noexcept { return m_strFormat; }

    // The lines to number: first to last, last excluded (0-based).
    void SetTopAndBottom(int first, int last);
    int GetTopLine() const noexcept { return m_nFirst; }
    int GetBottomLine() const noexcept { return m_nLast; }
    // Where the first number goes: the top of the edit's formatting rectangle.
    void SetTopMargin(int margin);
    int GetTopMargin() const noexcept { return m_nTopMargin; }

    // Screen readers skip the gutter (see the top of this file): an unnamed
    // graphic, invisible to them.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

protected:
    void OnPaint() override;                           // WM_PAINT
    BOOL OnEraseBkgnd(HDC dc) override;                // WM_ERASEBKGND: the painting covers it all
    // The static control draws its own text or greyed look in place on these:
    // the numbers are painted over it at once.
    LRESULT OnSetText(WPARAM wp, LPARAM lp) override;  // WM_SETTEXT
    void OnEnable(BOOL enable) override;               // WM_ENABLE

    // Invalidates, erases and repaints at once, when the window exists.
    void Redraw();

    COLORREF m_crForeground;
    COLORREF m_crBackground;
    std::wstring m_strFormat;
    int m_nTopMargin = 0;
    int m_nFirst = 0;
    int m_nLast = 0;
};

class QV_API XMultiLineEditLN : public XBaseMultiLineEdit, public qv::DpiListener {
public:
    // The gutter's window: text, style (WS_CHILD | WS_VISIBLE | SS_CENTER)
    // and control id.
    enum : DWORD { kLineNumberStyle = 0x50000001 };
    enum : UINT { kLineNumberId = 65535 };

    XMultiLineEditLN();
    ~XMultiLineEditLN() override;

    // Stores the format (see the top of this file) in the edit and the
    // gutter and lays the gutter out again when the window exists. False
    // when the format was refused and "%05i" is used instead.
    bool SetLineNumberFormat(const wchar_t* format);
    const std::wstring& GetLineNumberFormat() const noexcept { return m_strFormat; }
    // The gutter's colours (XLineNumberStatic).
    void SetMarginForegroundColor(COLORREF colour, bool redraw = true);
    void SetMarginBackgroundColor(COLORREF colour, bool redraw = true);

    // Lays out: measures the gutter, makes the formatting rectangle start
    // right of it, moves it to (0, 0, width, client height), gives it the
    // formatting rectangle's top and the lines to number.
    void Prepare();
    // Measures "0" and the formatted line count in the edit's font; answers
    // the gutter's width (the count's width + 5, the 5 scaled to the DPI).
    int CalcLineNumberWidth();
    // Gives the gutter the lines to number now (it repaints when they changed).
    void UpdateTopAndBottom();

    XLineNumberStatic& GetLineNumberStatic() noexcept { return m_wndLineNumber; }
    // The size of "0" in the edit's font as last measured: cy is the line height.
    SIZE GetZeroSize() const noexcept { return m_sizeZero; }

    // Attaching to a host's multi-line EDIT makes the gutter as well. False
    // as for qv::Window, or when the gutter cannot be made (the edit is then
    // left as it was).
    bool Attach(HWND hwnd);
    bool (SubclassWindow)(HWND hwnd) { return Attach(hwnd); }
    bool SubclassDlgItem(UINT id, HWND parent);
    // Letting go of an attached edit takes the gutter away and gives the
    // text the whole client area again.
    HWND Detach();
    HWND UnsubclassWindow() { return Detach(); }

    // The edit now draws at another DPI: the gutter is measured and laid
    // out again (Prepare).
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    int OnCreate(CREATESTRUCTW* cs) override;                   // WM_CREATE: makes the gutter
    void OnVScroll(UINT code, UINT pos, HWND scrollBar) override;  // WM_VSCROLL
    void OnSize(UINT type, int cx, int cy) override;            // WM_SIZE
    LRESULT OnSetText(WPARAM wp, LPARAM lp) override;           // WM_SETTEXT
    LRESULT OnSetFont(WPARAM wp, LPARAM lp) override;           // WM_SETFONT
    bool OnReflectCommand(UINT notifyCode) override;            // reflected EN_CHANGE
    // The text changed: the numbers follow, and the gutter widens when the
    // line count gained a digit.
    void OnChange();

    XLineNumberStatic m_wndLineNumber;
    SIZE m_sizeZero{0, 0};
    std::wstring m_strFormat;
    // The line-count text the gutter's width was measured for.
    std::wstring m_strMeasured;

private:
    bool CreateLineNumberStatic();
    // EM_GETLINECOUNT or EM_GETFIRSTVISIBLELINE.
    int AskEdit(UINT msg);
};

// Colour-scheme variants. The coloured edit paints its text area in its
// scheme (text RGB(8, 0, 0) on the system window colour until the host sets
// its own); its gutter keeps the gutter's own colours, set with
// SetMarginForegroundColor and SetMarginBackgroundColor, so a field coloured
// as mandatory or changed still shows a neutral margin.
class QV_API XMultiLineEditLNColor : public qv::ColorVariant<XMultiLineEditLN> {
public:
    XMultiLineEditLNColor() : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}
};

// A gutter in a colour scheme: its numbers and dividing line are painted in
// the scheme's text colour and its background in the scheme's background
// (RGB(8, 0, 0) on the system window colour until the host sets its own), so
// a host that colours all its fields through XBaseColor colours it too.
class QV_API XLineNumberStaticColor : public qv::ColorVariant<XLineNumberStatic> {
public:
    XLineNumberStaticColor();
    void SetTextColor(unsigned long colour) override;
    void SetBkColor(unsigned long colour) override;
};
