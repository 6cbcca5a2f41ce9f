// The scrolling dialog on a host's resizable dialog (template 1001 of the test
// program): ranges and bars for sizes around its layout, the grip shown,
// hidden and placed, scroll commands and the wheel moving the fields by
// their units with clamping, the way back on a resize, a maximised dialog,
// disabled scrolling and the library's own child page.
#include "quorvel/controls/scroll_dialog.h"

#include <algorithm>
#include <vector>

#include "support/host.h"

namespace {

constexpr UINT kTemplate = 1001;
constexpr int kName = 1101;

class HostDialog : public XScrollDialog {
public:
    explicit HostDialog(HWND parent) : XScrollDialog(kTemplate, parent, ::GetModuleHandleW(nullptr)) {}
    HostDialog() = default;  // the library's child page
    using XScrollDialog::DisableScrolling;
    using XScrollDialog::GetGripperSize;
};

struct Range {
    int min = -1, max = -1;
    bool operator==(const Range&) const = default;
};

Range RangeOf(HWND hwnd, int bar) {
    Range r;
    ::GetScrollRange(hwnd, bar, &r.min, &r.max);
    return r;
}

class ScrollDialogTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        ASSERT_TRUE(dlg_.Create(host_));
        dlg_.ShowWindow(SW_SHOWNORMAL);
        qvtest::Pump();
        layout_ = dlg_.GetInitialClientRect();
        const RECT wr = dlg_.GetWindowRect();
        frame_ = SIZE{(wr.right - wr.left) - layout_.right, (wr.bottom - wr.top) - layout_.bottom};
        origin_ = qvtest::RectIn(dlg_, dlg_.GetDlgItem(kName));
    }

    // Sizes the dialog so that its client area, less the scroll bars the
    // size brings, is `cw` x `ch`.
    void SizeClient(int cw, int ch) {
        const int w = cw + frame_.cx + (ch < layout_.bottom - 3 ? ::GetSystemMetrics(SM_CXVSCROLL) : 0);
        const int h = ch + frame_.cy + (cw < layout_.right - 7 ? ::GetSystemMetrics(SM_CYHSCROLL) : 0);
        dlg_.SetWindowPos(nullptr, 0, 0, w, h, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        qvtest::Pump();
    }
    int LayoutW() const { return layout_.right; }
    int LayoutH() const { return layout_.bottom; }
    POINT NamePos() const {
        const RECT r = qvtest::RectIn(dlg_, dlg_.GetDlgItem(kName));
        return POINT{r.left - origin_.left, r.top - origin_.top};
    }
    bool GripShown() const { return ::IsWindowVisible(dlg_.GetGripper()) != FALSE; }

    HostDialog dlg_{nullptr};
    RECT layout_{};
    SIZE frame_{};
    RECT origin_{};
};

TEST_F(ScrollDialogTest, RangesAndGripFollowTheSize) {
    ASSERT_TRUE(::IsWindow(dlg_.GetGripper()));
    EXPECT_EQ(::GetDlgCtrlID(dlg_.GetGripper()), 59936);
    const struct { int dw, dh; Range h, v; bool grip; } cases[] = {
        {40, 20, {0, 5}, {0, 5}, false},   // 40 / 8 across, 20 / 4 down
        {0, 0, {0, 0}, {0, 0}, true},      // back to the layout
        {7, 3, {0, 0}, {0, 0}, true},      // less than a unit short
        {0, 12, {0, 0}, {0, 3}, false},
        {80, 0, {0, 10}, {0, 0}, false},
        {-60, -40, {0, 0}, {0, 0}, true},  // larger than the layout
    };
    for (const auto& c : cases) {
        SizeClient(LayoutW() - c.dw, LayoutH() - c.dh);
        const RECT rc = dlg_.GetClientRect();
        ASSERT_EQ(rc.right, LayoutW() - c.dw) << c.dw << "x" << c.dh;
        ASSERT_EQ(rc.bottom, LayoutH() - c.dh) << c.dw << "x" << c.dh;
        EXPECT_EQ(RangeOf(dlg_, SB_HORZ), c.h) << c.dw << "x" << c.dh;
        EXPECT_EQ(RangeOf(dlg_, SB_VERT), c.v) << c.dw << "x" << c.dh;
        EXPECT_EQ(dlg_.HorizontalScroll().maximum, c.h.max);
        EXPECT_EQ(dlg_.VerticalScroll().maximum, c.v.max);
        EXPECT_EQ(GripShown(), c.grip) << c.dw << "x" << c.dh;
        if (c.grip) {
            const SIZE g = dlg_.GetGripperSize();
            EXPECT_GT(g.cx, 0);
            const RECT at = qvtest::RectIn(dlg_, dlg_.GetGripper());
            EXPECT_EQ(at.right, rc.right) << "the grip sits in the bottom-right corner";
            EXPECT_EQ(at.bottom, rc.bottom);
            EXPECT_EQ(at.right - at.left, g.cx);
            EXPECT_EQ(at.bottom - at.top, g.cy);
        }
    }
}

TEST_F(ScrollDialogTest, CommandsMoveTheFieldsByTheirUnitsWithinTheRange) {
    SizeClient(LayoutW() - 80, LayoutH() - 40);  // 0..10 each way
    ASSERT_EQ(dlg_.VerticalScroll().maximum, 10);
    ASSERT_EQ(dlg_.HorizontalScroll().maximum, 10);
    const struct { UINT msg; WORD code, thumb; int hpos, vpos; } steps[] = {
        {WM_VSCROLL, SB_LINEDOWN, 0, 0, 1},       {WM_VSCROLL, SB_PAGEDOWN, 0, 0, 10},  // a page is the excess, clamped
        {WM_VSCROLL, SB_LINEDOWN, 0, 0, 10},      {WM_VSCROLL, SB_LINEUP, 0, 0, 9},
        {WM_VSCROLL, SB_TOP, 0, 0, 0},            {WM_VSCROLL, SB_LINEUP, 0, 0, 0},
        {WM_VSCROLL, SB_THUMBTRACK, 3, 0, 3},     {WM_VSCROLL, SB_THUMBPOSITION, 7, 0, 3},
        {WM_VSCROLL, SB_BOTTOM, 0, 0, 10},        {WM_HSCROLL, SB_PAGERIGHT, 0, 8, 10},  // 8 units across
        {WM_HSCROLL, SB_PAGERIGHT, 0, 10, 10},    {WM_HSCROLL, SB_LINELEFT, 0, 9, 10},
        {WM_HSCROLL, SB_PAGELEFT, 0, 1, 10},      {WM_HSCROLL, SB_THUMBTRACK, 40, 10, 10},
        {WM_HSCROLL, SB_LEFT, 0, 0, 10},          {WM_HSCROLL, SB_ENDSCROLL, 0, 0, 10},
    };
    for (const auto& s : steps) {
        dlg_.SendMessage(s.msg, MAKEWPARAM(s.code, s.thumb), 0);
        const POINT at = NamePos();
        EXPECT_EQ(at.x, -8 * s.hpos) << s.msg << " code " << s.code;
        EXPECT_EQ(at.y, -4 * s.vpos) << s.msg << " code " << s.code;
        EXPECT_EQ(::GetScrollPos(dlg_, SB_HORZ), s.hpos);
        EXPECT_EQ(::GetScrollPos(dlg_, SB_VERT), s.vpos);
    }
    // A scroll bar among the fields reports to the dialog too; it is the
    // host's business and does not scroll the dialog.
    HWND own = ::CreateWindowExW(0, L"SCROLLBAR", L"", WS_CHILD | SBS_VERT, 0, 0, 16, 60, dlg_, nullptr, nullptr, nullptr);
    dlg_.SendMessage(WM_VSCROLL, SB_TOP, reinterpret_cast<LPARAM>(own));
    dlg_.SendMessage(WM_HSCROLL, SB_RIGHT, reinterpret_cast<LPARAM>(own));
    EXPECT_EQ(::GetScrollPos(dlg_, SB_HORZ), 0);
    EXPECT_EQ(::GetScrollPos(dlg_, SB_VERT), 10);
    EXPECT_EQ(NamePos().y, -40);
    ::DestroyWindow(own);

    // A new size scrolls back to the origin first.
    SizeClient(LayoutW() - 40, LayoutH() - 40);
    EXPECT_EQ(NamePos().x, 0);
    EXPECT_EQ(NamePos().y, 0);
    EXPECT_EQ(::GetScrollPos(dlg_, SB_VERT), 0);
    dlg_.SendMessage(WM_VSCROLL, SB_PAGEDOWN, 0);
    SizeClient(LayoutW() + 20, LayoutH() + 20);
    EXPECT_EQ(NamePos().y, 0);
    EXPECT_EQ(RangeOf(dlg_, SB_VERT), (Range{0, 0}));
    EXPECT_TRUE(GripShown());
}

TEST_F(ScrollDialogTest, WheelScrollsDownOrElseAcross) {
    UINT lines = 3;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    ASSERT_GT(lines, 0u);
    ASSERT_LT(lines, 10u);
    SizeClient(LayoutW() - 80, LayoutH() - 40);
    dlg_.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_EQ(dlg_.VerticalScroll().position, static_cast<int>(lines));
    EXPECT_EQ(NamePos().y, -4 * static_cast<int>(lines));
    dlg_.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, 4 * WHEEL_DELTA), 0);
    EXPECT_EQ(dlg_.VerticalScroll().position, 0) << "clamped at the top";
    UINT chars = 3;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLCHARS, 0, &chars, 0);
    dlg_.SendMessage(WM_MOUSEHWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
    EXPECT_EQ(NamePos().x, -8 * static_cast<int>((std::min)(chars, 10u))) << "a tilt to the right";

    SizeClient(LayoutW() - 80, LayoutH());  // only across
    dlg_.SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), 0);
    EXPECT_EQ(dlg_.HorizontalScroll().position, static_cast<int>(lines));
    EXPECT_EQ(NamePos().x, -8 * static_cast<int>(lines));
    EXPECT_EQ(NamePos().y, 0);
}

TEST_F(ScrollDialogTest, GripResizesAndHidesWhenMaximised) {
    HWND grip = dlg_.GetGripper();
    const RECT g = qvtest::RectIn(dlg_, grip);
    POINT mid{(g.left + g.right) / 2, (g.top + g.bottom) / 2};
    ::ClientToScreen(dlg_, &mid);
    EXPECT_EQ(::SendMessageW(grip, WM_NCHITTEST, 0, MAKELPARAM(mid.x, mid.y)), HTBOTTOMRIGHT);
    // Pressing the button on it starts sizing the dialog from its corner
    // (the Escape already queued ends the sizing loop at once).
    std::vector<WPARAM> commands;
    {
        qvtest::MessageSpy spy(dlg_, [&](UINT msg, WPARAM wp, LPARAM) {
            if (msg == WM_SYSCOMMAND) commands.push_back(wp);
        });
        ::PostMessageW(dlg_, WM_KEYDOWN, VK_ESCAPE, 0);
        ::SendMessageW(grip, WM_NCLBUTTONDOWN, HTBOTTOMRIGHT, MAKELPARAM(mid.x, mid.y));
        qvtest::Pump();
    }
    EXPECT_EQ(commands, std::vector<WPARAM>{SC_SIZE | WMSZ_BOTTOMRIGHT});

    dlg_.ShowWindow(SW_SHOWMAXIMIZED);
    qvtest::Pump();
    EXPECT_FALSE(GripShown()) << "no grip on a maximised dialog";
    EXPECT_EQ(qvtest::RectIn(dlg_, grip).left, g.left) << "and it is not moved";
    dlg_.ShowWindow(SW_RESTORE);
    qvtest::Pump();
    EXPECT_TRUE(GripShown());
}

TEST_F(ScrollDialogTest, DisabledScrollingDropsTheGripAndOnlyResizes) {
    dlg_.DisableScrolling();
    EXPECT_EQ(dlg_.GetGripper(), nullptr);
    EXPECT_EQ(dlg_.GetGripperSize().cx, 0);
    SizeClient(LayoutW() - 80, LayoutH() - 40);
    EXPECT_EQ(dlg_.VerticalScroll().maximum, 0);
    dlg_.SendMessage(WM_VSCROLL, SB_PAGEDOWN, 0);
    EXPECT_EQ(NamePos().y, 0);
}

TEST_F(ScrollDialogTest, LibraryPageScrollsWithoutAGrip) {
    HostDialog page;  // IDD_QV_FORMVIEW: a child page that its parent sizes
    ASSERT_TRUE(page.Create(host_));
    const RECT layout = page.GetInitialClientRect();
    ASSERT_GT(layout.right, 100);
    page.SetWindowPos(nullptr, 0, 0, layout.right - 64 + ::GetSystemMetrics(SM_CXVSCROLL),
                      layout.bottom - 40 + ::GetSystemMetrics(SM_CYHSCROLL), SWP_NOMOVE | SWP_NOZORDER);
    page.ShowWindow(SW_SHOW);
    qvtest::Pump();
    EXPECT_EQ(RangeOf(page, SB_HORZ), (Range{0, 8}));
    EXPECT_EQ(RangeOf(page, SB_VERT), (Range{0, 10}));
    ASSERT_TRUE(page.IsWindowVisible());
    EXPECT_FALSE(::IsWindowVisible(page.GetGripper())) << "a page that cannot be resized has no grip";
    page.SetWindowPos(nullptr, 0, 0, layout.right + 10, layout.bottom + 10, SWP_NOMOVE | SWP_NOZORDER);
    qvtest::Pump();
    EXPECT_EQ(RangeOf(page, SB_VERT), (Range{0, 0}));
    EXPECT_FALSE(::IsWindowVisible(page.GetGripper())) << "not even at full size";
}

TEST_F(ScrollDialogTest, MissingTemplateFailsToOpen) {
    XScrollDialog missing(4321, host_, ::GetModuleHandleW(nullptr));
    EXPECT_FALSE(missing.Create());
    EXPECT_EQ(missing.GetGripper(), nullptr);
}

}  // namespace
