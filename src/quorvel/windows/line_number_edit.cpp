#include "quorvel/windows/line_number_edit.h"

#include <oleacc.h>

#include "quorvel/platform/gdi.h"
#include "quorvel/windows/line_number_rules.h"

namespace {

// The font an edit paints with; null before it has one, when both the edit
// and a fresh DC use the system font.
HFONT EditFont(HWND edit) {
    return edit ? reinterpret_cast<HFONT>(::SendMessageW(edit, WM_GETFONT, 0, 0)) : nullptr;
}

std::wstring DefaultFormat() { return std::wstring(qv::kDefaultLineNumberFormat); }

}  // namespace

// ---- XLineNumberStatic ------------------------------------------------------------------

XLineNumberStatic::XLineNumberStatic()
    : m_crForeground(::GetSysColor(COLOR_WINDOWTEXT)), m_crBackground(kDefaultBackground), m_strFormat(DefaultFormat()) {}

void XLineNumberStatic::SetForegroundColor(COLORREF colour, bool redraw) {
    m_crForeground = colour;
    if (redraw) Redraw();
}

void XLineNumberStatic::SetBackgroundColor(COLORREF colour, bool redraw) {
    m_crBackground = colour;
    if (redraw) Redraw();
}

bool XLineNumberStatic::SetLineNumberFormat(const wchar_t* format) {
    const bool accepted = format && qv::LineNumberFormat::Parse(format);
    const std::wstring used = accepted ? std::wstring(format) : DefaultFormat();
    if (used == m_strFormat) return accepted;
    m_strFormat = used;
    Redraw();
    return accepted;
}

void XLineNumberStatic::SetTopAndBottom(int first, int last) {
    if (first == m_nFirst && last == m_nLast) return;
    m_nFirst = first;
    m_nLast = last;
    Redraw();
}

void XLineNumberStatic::SetTopMargin(int margin) {
    if (margin == m_nTopMargin) return;
    m_nTopMargin = margin;
    Redraw();
}

void XLineNumberStatic::Redraw() {
    if (IsWindow()) ::RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

BOOL XLineNumberStatic::OnEraseBkgnd(HDC) { return TRUE; }

LRESULT XLineNumberStatic::OnSetText(WPARAM, LPARAM) {
    const LRESULT result = Default();
    Redraw();
    return result;
}

void XLineNumberStatic::OnEnable(BOOL) {
    Default();
    Redraw();
}

void XLineNumberStatic::OnPaint() {
    const qv::PaintDC paint(m_hWnd);
    const RECT client = GetClientRect();
    const int cx = client.right - client.left, cy = client.bottom - client.top;
    // Drawn off-screen and copied in one go: scrolling never shows a half-drawn gutter.
    const qv::MemoryDC memory(paint, cx, cy);
    if (!memory.IsValid()) return;
    const qv::Pen pen(::CreatePen(PS_SOLID, 1, m_crForeground));
    const qv::SelectObjectScope penScope(memory, pen);
    const qv::Brush background(::CreateSolidBrush(m_crBackground));
    ::FillRect(memory, &client, background);
    ::MoveToEx(memory, cx - 1, 0, nullptr);
    ::LineTo(memory, cx - 1, cy);

    ::SetTextColor(memory, m_crForeground);
    ::SetBkColor(memory, m_crBackground);
    const qv::SelectObjectScope fontScope(memory, EditFont(GetParent()));
    if (m_nLast != 0) {
        SIZE zero{};
        ::GetTextExtentPoint32W(memory, L"0", 1, &zero);
        const qv::LineNumberFormat format = qv::LineNumberFormat::OrDefault(m_strFormat);
        const int left = qv::LineNumberLeft(qv::DpiOf(m_hWnd));
        for (int line = m_nFirst; line < m_nLast; ++line) {
            const int y = qv::LineNumberTop(line, m_nFirst, zero.cy, m_nTopMargin);
            // Whatever first and last a caller set, no more numbers are
            // written than can be seen.
            if (y >= cy || line - m_nFirst > cy) break;
            const std::wstring text = format.Format(line + 1);
            ::TextOutW(memory, left, y, text.c_str(), static_cast<int>(text.size()));
        }
    }
    memory.CopyTo(paint);
}

bool XLineNumberStatic::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF) return false;
    name.clear();  // not the window text the gutter is made with
    return true;
}

bool XLineNumberStatic::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_GRAPHIC;
    return true;
}

bool XLineNumberStatic::AccessibleState(long child, long& state) {
    if (child != CHILDID_SELF) return false;
    state = STATE_SYSTEM_INVISIBLE | STATE_SYSTEM_READONLY;
    return true;
}

// ---- XMultiLineEditLN -------------------------------------------------------------------

XMultiLineEditLN::XMultiLineEditLN() : m_strFormat(DefaultFormat()) {}

XMultiLineEditLN::~XMultiLineEditLN() {
    // The window goes while this object is whole, gutter included; an edit
    // the host attached stays, as it was before.
    if (OwnsWindow())
        DestroyWindow();
    else if (IsWindow())
        Detach();
}

bool XMultiLineEditLN::SetLineNumberFormat(const wchar_t* format) {
    const bool accepted = m_wndLineNumber.SetLineNumberFormat(format);
    m_strFormat = m_wndLineNumber.GetLineNumberFormat();
    Prepare();
    return accepted;
}

void XMultiLineEditLN::SetMarginForegroundColor(COLORREF colour, bool redraw) {
    m_wndLineNumber.SetForegroundColor(colour, redraw);
}

void XMultiLineEditLN::SetMarginBackgroundColor(COLORREF colour, bool redraw) {
    m_wndLineNumber.SetBackgroundColor(colour, redraw);
}

void XMultiLineEditLN::Prepare() {
    if (!IsWindow() || !m_wndLineNumber.IsWindow()) return;
    // A new font may leave the gutter's place and lines as they were and
    // still change every number: it repaints at the end in any case (once).
    ::InvalidateRect(m_wndLineNumber, nullptr, TRUE);
    const int width = CalcLineNumberWidth();
    const RECT client = GetClientRect();
    RECT format = client;
    format.left = qv::FormattingRectLeft(width);
    SendMessage(EM_SETRECT, 0, reinterpret_cast<LPARAM>(&format));
    m_wndLineNumber.MoveWindow(RECT{0, 0, width, client.bottom - client.top}, true);
    // The edit keeps its own border inside the rectangle: the numbers start
    // where its first line really is.
    RECT used{};
    SendMessage(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&used));
    m_wndLineNumber.SetTopMargin(used.top);
    UpdateTopAndBottom();
    m_wndLineNumber.UpdateWindow();
}

int XMultiLineEditLN::CalcLineNumberWidth() {
    if (!IsWindow()) return qv::LineNumberGutterWidth(0);
    const qv::ClientDC dc(m_hWnd);
    const qv::SelectObjectScope font(dc, GetFont());
    ::GetTextExtentPoint32W(dc, L"0", 1, &m_sizeZero);
    m_strMeasured = qv::LineCountText(qv::LineNumberFormat::OrDefault(m_strFormat), GetLineCount());
    SIZE size{};
    ::GetTextExtentPoint32W(dc, m_strMeasured.c_str(), static_cast<int>(m_strMeasured.size()), &size);
    return qv::LineNumberGutterWidth(size.cx, qv::DpiOf(m_hWnd));
}

int XMultiLineEditLN::AskEdit(UINT msg) {
    // Keys, the wheel and mouse selection ask after every message: inside
    // this window's own message handling the question goes straight to the
    // edit below this object's layer instead of through every subclass on
    // the window again (under Wine each layer costs a few server calls).
    if (GetCurrentMessage().hwnd == m_hWnd) return static_cast<int>(DefWindowProc(msg, 0, 0));
    return static_cast<int>(SendMessage(msg));
}

void XMultiLineEditLN::UpdateTopAndBottom() {
    if (!IsWindow() || !m_wndLineNumber.IsWindow()) return;
    const RECT client = GetClientRect();
    const qv::LineRange range = qv::VisibleLineRange(AskEdit(EM_GETLINECOUNT), AskEdit(EM_GETFIRSTVISIBLELINE),
                                                     client.bottom - client.top, m_sizeZero.cy);
    m_wndLineNumber.SetTopAndBottom(range.first, range.last);
}

void XMultiLineEditLN::OnChange() {
    if (!IsWindow() || !m_wndLineNumber.IsWindow()) return;
    if (qv::GutterMustWiden(qv::LineNumberFormat::OrDefault(m_strFormat), m_strMeasured, AskEdit(EM_GETLINECOUNT)))
        Prepare();
    else
        UpdateTopAndBottom();
}

bool XMultiLineEditLN::CreateLineNumberStatic() {
    // Made anywhere and moved into place by Prepare at once.
    if (!m_wndLineNumber.Create(L"LINENUMBERSTATIC", kLineNumberStyle, RECT{10, 10, 150, 50}, m_hWnd, kLineNumberId))
        return false;
    SetLineNumberFormat(m_strFormat.c_str());
    return true;
}

bool XMultiLineEditLN::Attach(HWND hwnd) {
    if (!XBaseMultiLineEdit::Attach(hwnd)) return false;
    if (CreateLineNumberStatic()) return true;
    qv::Window::Detach();
    return false;
}

bool XMultiLineEditLN::SubclassDlgItem(UINT id, HWND parent) {
    if (!parent || !::IsWindow(parent)) return false;
    return Attach(::GetDlgItem(parent, static_cast<int>(id)));
}

HWND XMultiLineEditLN::Detach() {
    if (m_wndLineNumber.IsWindow()) {
        m_wndLineNumber.DestroyWindow();
        if (IsWindow()) {
            RECT client = GetClientRect();
            SendMessage(EM_SETRECT, 0, reinterpret_cast<LPARAM>(&client));
        }
    }
    return qv::Window::Detach();
}

LRESULT XMultiLineEditLN::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    // Everything else that can scroll the view or change the text: the
    // numbers follow once the edit has done its work.
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_MOUSEWHEEL:
    case WM_LBUTTONDOWN:
    case WM_TIMER:  // the edit's own timer scrolls while the mouse selects beyond the edge
    case EM_LINESCROLL:
    case EM_SCROLL:
    case EM_SCROLLCARET:
    case EM_REPLACESEL:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
    case EM_UNDO: {
        const LRESULT result = XBaseMultiLineEdit::WindowProc(msg, wp, lp);
        OnChange();
        return result;
    }
    case WM_MOUSEMOVE: {
        const LRESULT result = XBaseMultiLineEdit::WindowProc(msg, wp, lp);
        if (::GetCapture() == m_hWnd) OnChange();  // selecting with the mouse
        return result;
    }
    default:
        return XBaseMultiLineEdit::WindowProc(msg, wp, lp);
    }
}

int XMultiLineEditLN::OnCreate(CREATESTRUCTW*) {
    if (Default() == -1) return -1;
    return CreateLineNumberStatic() ? 0 : -1;
}

void XMultiLineEditLN::OnVScroll(UINT, UINT, HWND) {
    Default();
    UpdateTopAndBottom();
}

void XMultiLineEditLN::OnSize(UINT, int, int) {
    Default();
    Prepare();
}

LRESULT XMultiLineEditLN::OnSetText(WPARAM, LPARAM) {
    const LRESULT result = Default();
    OnChange();
    return result;
}

LRESULT XMultiLineEditLN::OnSetFont(WPARAM, LPARAM) {
    const LRESULT result = Default();
    Prepare();
    return result;
}

void XMultiLineEditLN::OnDpiChanged(UINT) { Prepare(); }

bool XMultiLineEditLN::OnReflectCommand(UINT notifyCode) {
    if (notifyCode == EN_CHANGE) {
        OnChange();
        // A reader hears the new text, as from the library's other fields.
        qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
    }
    return false;  // the parent hears of the change too
}

// ---- Colour-scheme variants ------------------------------------------------------------

XLineNumberStaticColor::XLineNumberStaticColor()
    : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {
    m_crForeground = Scheme().TextColor();
    m_crBackground = Scheme().BkColor();
}

void XLineNumberStaticColor::SetTextColor(unsigned long colour) {
    ColorVariant::SetTextColor(colour);
    SetForegroundColor(colour, true);
}

void XLineNumberStaticColor::SetBkColor(unsigned long colour) {
    ColorVariant::SetBkColor(colour);
    SetBackgroundColor(colour, true);
}
