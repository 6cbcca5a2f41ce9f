#include "quorvel/controls/scroll_dialog.h"

#include <oleacc.h>

#include <algorithm>

#include "quorvel/frame/services.h"
#include "quorvel/frame/siblings.h"
#include "resources/resource.h"

namespace sc = qv::scrolling;

namespace {

// Answers true while it lives; the flag is cleared whatever happens.
class Busy {
public:
    explicit Busy(bool& flag) noexcept : m_flag(flag) { m_flag = true; }
    ~Busy() { m_flag = false; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    bool& m_flag;
};

int UserSetting(UINT action, int fallback) {
    UINT value = 0;
    if (!::SystemParametersInfoW(action, 0, &value, 0)) return fallback;
    if (value == WHEEL_PAGESCROLL) return -1;
    return static_cast<int>(value);
}

}  // namespace

// ---------------------------------------------------------------------------
// XScrollGripper

LRESULT XScrollGripper::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_NCHITTEST: {
        const LRESULT hit = Default();
        return hit == HTCLIENT ? HTBOTTOMRIGHT : hit;
    }
    case WM_NCLBUTTONDOWN:
        if (wp == HTBOTTOMRIGHT) {
            // The dialog is sized, not the grip: the same drag as on the
            // dialog's own bottom-right border.
            HWND dialog = GetParent();
            if (dialog && (::GetWindowLongPtrW(dialog, GWL_STYLE) & WS_THICKFRAME))
                ::SendMessageW(dialog, WM_SYSCOMMAND, SC_SIZE | WMSZ_BOTTOMRIGHT, lp);
            return 0;
        }
        break;
    default:
        break;
    }
    return ScrollBar::WindowProc(msg, wp, lp);
}

bool XScrollGripper::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF) return false;
    name = qv::Services::Translation().Translate(L"Size grip");
    return true;
}

bool XScrollGripper::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_GRIP;
    return true;
}

// ---------------------------------------------------------------------------
// XScrollDialog

XScrollDialog::XScrollDialog() noexcept : Dialog(IDD_QV_FORMVIEW) {}

XScrollDialog::XScrollDialog(unsigned int templateId, HWND parent, HINSTANCE templateModule) noexcept
    : Dialog(templateId, templateModule), m_pParent(parent) {}

XScrollDialog::~XScrollDialog() = default;

BOOL XScrollDialog::OnInitDialog() {
    Dialog::OnInitDialog();
    if (m_bScrollingDisabled) return TRUE;
    const RECT rc = GetClientRect();
    m_rcInitialClient = rc;
    m_model.Init(rc.right - rc.left, rc.bottom - rc.top, qv::DpiOf(m_hWnd));
    m_iWheelCarry = m_iHWheelCarry = 0;
    m_bInitialized = 1;
    const SIZE gripSize = GripMetrics();
    const RECT grip{rc.right - gripSize.cx, rc.bottom - gripSize.cy, rc.right, rc.bottom};
    if (!m_gripper.IsWindow() && !m_gripper.Create(XScrollGripper::kStyle, grip, m_hWnd, XScrollGripper::kId))
        qv::LogFailure(L" XScrollDialog::OnInitDialog", __LINE__, L"Creating the size grip failed");
    // A dialog that cannot be resized has no use for the grip: the first
    // layout hides it.
    Busy busy(m_bInLayout);
    SetupScrollbars();
    return TRUE;
}

bool XScrollDialog::IsMaximised() const {
    WINDOWPLACEMENT wp{};
    wp.length = sizeof(wp);
    return ::GetWindowPlacement(m_hWnd, &wp) && wp.showCmd == SW_SHOWMAXIMIZED;
}

void XScrollDialog::SetupScrollbars() {
    if (m_bScrollingDisabled || !IsWindow()) return;
    // The room without the bars decides which bars are needed; the ranges
    // are those of the client area that remains once they are shown.
    const RECT rc = GetClientRect();
    const DWORD style = GetStyle();
    const UINT dpi = qv::DpiOf(m_hWnd);
    const int barWidth = qv::SystemMetricForDpi(SM_CXVSCROLL, dpi);
    const int barHeight = qv::SystemMetricForDpi(SM_CYHSCROLL, dpi);
    const int bareWidth = rc.right - rc.left + ((style & WS_VSCROLL) ? barWidth : 0);
    const int bareHeight = rc.bottom - rc.top + ((style & WS_HSCROLL) ? barHeight : 0);
    const sc::Model::Size fit = m_model.FitBars(bareWidth, bareHeight, barWidth, barHeight);
    const bool maximised = IsMaximised();
    const bool resizable = (style & WS_THICKFRAME) != 0;
    const bool grip = m_model.Resize(fit.width, fit.height, maximised, resizable);
    if (m_gripper.IsWindow()) m_gripper.ShowWindow(grip ? SW_SHOW : SW_HIDE);

    const sc::Axis h = m_model.Horizontal();
    const sc::Axis v = m_model.Vertical();
    ::SetScrollRange(m_hWnd, SB_HORZ, 0, h.maximum, FALSE);
    ::SetScrollPos(m_hWnd, SB_HORZ, h.position, TRUE);
    ::SetScrollRange(m_hWnd, SB_VERT, 0, v.maximum, FALSE);
    ::SetScrollPos(m_hWnd, SB_VERT, v.position, TRUE);

    if (!maximised && m_gripper.IsWindow()) {
        // Read the client rectangle again: the bars just shown or hidden
        // changed it.
        const RECT now = GetClientRect();
        const SIZE size = GetGripperSize();
        const sc::Box box = sc::GripBox({now.left, now.top, now.right, now.bottom}, size.cx, size.cy);
        m_gripper.MoveWindow(RECT{box.left, box.top, box.right, box.bottom}, true);
    }
}

void XScrollDialog::ResetScrollbars() {
    if (m_bScrollingDisabled || !IsWindow()) return;
    const sc::Model::Shift back = m_model.Reset();
    if (back.dx || back.dy) ::ScrollWindow(m_hWnd, back.dx, back.dy, nullptr, nullptr);
    ::SetScrollPos(m_hWnd, SB_HORZ, 0, TRUE);
    ::SetScrollPos(m_hWnd, SB_VERT, 0, TRUE);
}

void XScrollDialog::DisableScrolling() {
    m_bScrollingDisabled = true;
    if (m_gripper.IsWindow()) m_gripper.DestroyWindow();
}

SIZE XScrollDialog::GetGripperSize() const {
    if (!m_gripper.IsWindow()) return SIZE{0, 0};
    const RECT rc = m_gripper.GetClientRect();
    return SIZE{rc.right - rc.left, rc.bottom - rc.top};
}

SIZE XScrollDialog::GripMetrics() const {
    const UINT dpi = qv::DpiOf(m_hWnd);
    return SIZE{qv::SystemMetricForDpi(SM_CXHSCROLL, dpi), qv::SystemMetricForDpi(SM_CYVSCROLL, dpi)};
}

void XScrollDialog::OnSize(UINT, int, int) {
    Default();
    if (!m_bInitialized || m_bScrollingDisabled || m_bInLayout) return;
    Relayout();
}

void XScrollDialog::Relayout() {
    // Showing a scroll bar takes room from the client area and sends another
    // WM_SIZE; that one is left alone and the layout is repeated here until
    // the client size holds (two bars: at most three rounds).
    Busy busy(m_bInLayout);
    for (int round = 0; round < 3; ++round) {
        const RECT before = GetClientRect();
        ResetScrollbars();
        SetupScrollbars();
        const RECT after = GetClientRect();
        if (::EqualRect(&before, &after)) break;
    }
}

void XScrollDialog::ScrollVertically(int step) {
    step = sc::ClampStep(m_model.Vertical(), step);
    if (step == 0) return;
    const int dy = m_model.ScrollVertical(step);
    ::ScrollWindow(m_hWnd, 0, dy, nullptr, nullptr);
    ::SetScrollPos(m_hWnd, SB_VERT, m_model.Vertical().position, TRUE);
}

void XScrollDialog::ScrollHorizontally(int step) {
    step = sc::ClampStep(m_model.Horizontal(), step);
    if (step == 0) return;
    const int dx = m_model.ScrollHorizontal(step);
    ::ScrollWindow(m_hWnd, dx, 0, nullptr, nullptr);
    ::SetScrollPos(m_hWnd, SB_HORZ, m_model.Horizontal().position, TRUE);
}

// Only the dialog's own bars scroll it; a scroll bar, track bar or spin
// control among its fields reports here too (scrollBar set) and is left to
// the host.
void XScrollDialog::OnVScroll(UINT code, UINT pos, HWND scrollBar) {
    if (!m_bScrollingDisabled && !scrollBar) ScrollVertically(m_model.VerticalStep(static_cast<int>(code), static_cast<int>(pos)));
    Default();
}

void XScrollDialog::OnHScroll(UINT code, UINT pos, HWND scrollBar) {
    if (!m_bScrollingDisabled && !scrollBar) ScrollHorizontally(m_model.HorizontalStep(static_cast<int>(code), static_cast<int>(pos)));
    Default();
}

BOOL XScrollDialog::OnMouseWheel(UINT, short delta, POINT) {
    const bool down = m_model.Vertical().maximum > 0;
    const bool across = m_model.Horizontal().maximum > 0;
    if (m_bScrollingDisabled || (!down && !across)) return static_cast<BOOL>(Default());
    // Down when the dialog can scroll down, otherwise across; the user's
    // setting of lines a notch (or a page a notch).
    int lines = UserSetting(SPI_GETWHEELSCROLLLINES, 3);
    if (down) {
        if (lines < 0) lines = (std::max)(m_model.Vertical().excess, 1);
        ScrollVertically(sc::WheelLines(m_iWheelCarry, delta, lines));
    } else {
        if (lines < 0) lines = sc::kPageX;
        ScrollHorizontally(sc::WheelLines(m_iHWheelCarry, delta, lines));
    }
    return TRUE;
}

void XScrollDialog::OnDpiChanged(UINT dpi) {
    if (!m_bInitialized || m_bScrollingDisabled || m_bInLayout || !IsWindow()) return;
    {
        // Back to the origin in the old units, then the layout and the
        // units for the new DPI.
        Busy busy(m_bInLayout);
        ResetScrollbars();
        m_model.ChangeDpi(dpi);
        m_rcInitialClient.right = m_rcInitialClient.left + m_model.LayoutWidth();
        m_rcInitialClient.bottom = m_rcInitialClient.top + m_model.LayoutHeight();
        m_iWheelCarry = m_iHWheelCarry = 0;
        if (m_gripper.IsWindow()) {
            // Made again for the new scroll-bar size, so it is the size the
            // system gives a size box at this DPI; the layout below places
            // it and shows or hides it.
            m_gripper.DestroyWindow();
            const RECT rc = GetClientRect();
            const SIZE grip = GripMetrics();
            if (!m_gripper.Create(XScrollGripper::kStyle,
                                  RECT{rc.right - grip.cx, rc.bottom - grip.cy, rc.right, rc.bottom}, m_hWnd,
                                  XScrollGripper::kId))
                qv::LogFailure(L" XScrollDialog::OnDpiChanged", __LINE__, L"Creating the size grip failed");
        }
    }
    Relayout();
}

LRESULT XScrollDialog::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_DPICHANGED && lp && !(GetStyle() & WS_CHILD)) {
        // A top-level dialog takes the rectangle the system suggests for
        // the new DPI, after its layout has been rescaled (OnDpiChanged).
        const RECT suggested = *reinterpret_cast<const RECT*>(lp);
        const LRESULT result = Dialog::WindowProc(msg, wp, lp);
        SetWindowPos(nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                     suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
        return result;
    }
    if (msg == WM_MOUSEHWHEEL && !m_bScrollingDisabled && m_model.Horizontal().maximum > 0) {
        // A tilt to the right is a positive turn; the lines run the other way.
        int chars = UserSetting(SPI_GETWHEELSCROLLCHARS, 3);
        if (chars < 0) chars = sc::kPageX;
        const int turn = GET_WHEEL_DELTA_WPARAM(wp);
        ScrollHorizontally(sc::WheelLines(m_iHWheelCarry, -turn, chars));
        return 0;
    }
    return Dialog::WindowProc(msg, wp, lp);
}
