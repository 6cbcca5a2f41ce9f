// The splitter on a real host: the bar dragged with mouse messages and moved
// with keys, the collapse buttons clicked, what the parent hears, the active
// pane with and without a parent frame, and Toggle.
#include "quorvel/windows/splitter.h"

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

#include "quorvel/platform/module.h"
#include "support/host.h"

namespace {

constexpr UINT kUpperLow = XSplitterWnd::kUpperButtonId & 0xFFFF;
constexpr UINT kLowerLow = XSplitterWnd::kLowerButtonId & 0xFFFF;

std::tuple<int, int, int, int> Edges(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

struct Command {
    UINT id, code;
    HWND from;
    bool operator==(const Command&) const = default;
};

// A splitter of 614 x 402 on the host with column 0 at 300: a list box on the
// left (made on the splitter), a multi-line edit on the right (made on the
// host and moved in by SetPane).
class SplitterTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        splitter_.SetColumnInfo(0, 300, 0);
        ASSERT_TRUE(splitter_.Create(host_, RECT{8, 8, 622, 410}, 77));
        list_ = Make(L"LISTBOX", WS_VSCROLL | LBS_NOTIFY, splitter_);
        edit_ = Make(L"EDIT", ES_MULTILINE | ES_AUTOVSCROLL, host_);
        ASSERT_TRUE(splitter_.SetPane(0, list_) && splitter_.SetPane(1, edit_));
        width_ = splitter_.GetClientRect().right - 2 * splitter_.GetBorderCX();
        qvtest::Pump();
    }
    HWND Make(const wchar_t* cls, DWORD style, HWND parent) {
        return ::CreateWindowExW(WS_EX_CLIENTEDGE, cls, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 50, 50, parent,
                                 nullptr, ::GetModuleHandleW(nullptr), nullptr);
    }
    std::pair<int, int> Columns() {
        int left = -1, right = -1, minimum = 0;
        splitter_.GetColumnInfo(0, left, minimum);
        splitter_.GetColumnInfo(1, right, minimum);
        return {left, right};
    }
    // The bar's left edge in client coordinates (the area starts after the border).
    int BarX() { return splitter_.GetBorderCX() + Columns().first; }
    // Grabs the bar in its middle and releases it with its left edge at x of
    // the area, as the mouse does.
    void Drag(int x) {
        const int grab = BarX() + 6, y = 200, to = splitter_.GetBorderCX() + x + 6;
        ::SendMessageW(splitter_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(grab, y));
        ASSERT_EQ(::GetCapture(), splitter_.m_hWnd);
        ::SendMessageW(splitter_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM((grab + to) / 2, y));
        ::SendMessageW(splitter_, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to, y));
        ::SendMessageW(splitter_, WM_LBUTTONUP, 0, MAKELPARAM(to, y));
        EXPECT_EQ(::GetCapture(), nullptr);
    }
    std::pair<bool, bool> ButtonsShown() {
        return {splitter_.GetUpperButton().IsWindowVisible(), splitter_.GetLowerButton().IsWindowVisible()};
    }
    void Key(UINT vk) { ::SendMessageW(splitter_, WM_KEYDOWN, vk, 1); }
    // The commands of the collapse buttons among those the host heard.
    std::vector<Command> FromButtons(const std::vector<Command>& heard) {
        std::vector<Command> buttons;
        for (const Command& c : heard)
            if (c.from == splitter_.GetUpperButton().m_hWnd || c.from == splitter_.GetLowerButton().m_hWnd)
                buttons.push_back(c);
        return buttons;
    }

    XSplitterWnd splitter_;
    HWND list_ = nullptr, edit_ = nullptr;
    int width_ = 0;
};

TEST_F(SplitterTest, CreationPanesAndButtons) {
    EXPECT_TRUE(splitter_.GetExStyle() & WS_EX_CONTROLPARENT);
    EXPECT_EQ(std::pair(splitter_.GetBorderCX(), splitter_.GetBorderCY()),
              std::pair(::GetSystemMetrics(SM_CXBORDER), ::GetSystemMetrics(SM_CYBORDER)));
    EXPECT_EQ(std::pair(::GetDlgCtrlID(list_), ::GetDlgCtrlID(edit_)), std::pair(59648, 59649));
    EXPECT_EQ(::GetParent(edit_), splitter_.m_hWnd);
    EXPECT_EQ(Columns(), std::pair(300, width_ - 300 - 12));
    const RECT right = qvtest::RectIn(splitter_, edit_);
    EXPECT_EQ(right.left, BarX() + 12);

    const int middle = splitter_.GetBorderCY() + (splitter_.GetClientRect().bottom - 2 * splitter_.GetBorderCY()) / 2;
    const struct { XSplitterButton& button; UINT id, face, pressed; int top; } buttons[] = {
        {splitter_.GetUpperButton(), 456346, 139, 137, middle - 80},
        {splitter_.GetLowerButton(), 456347, 138, 136, middle - 80 + 57 + 20},
    };
    for (const auto& b : buttons) {
        SCOPED_TRACE(b.id);
        ASSERT_EQ(splitter_.GetDlgItem(static_cast<int>(b.id)), b.button.m_hWnd);
        EXPECT_EQ(b.button.GetStyle(), 0x50000020u);
        EXPECT_EQ(Edges(qvtest::RectIn(splitter_, b.button)), std::tuple(BarX() + 2, b.top, BarX() + 10, b.top + 57));
        EXPECT_EQ(std::pair(b.button.GetBitmapId(false), b.button.GetBitmapId(true)), std::pair(b.face, b.pressed));
        // Drawn at the size the library's bitmap has, whatever that is.
        BITMAP bm{};
        qv::Bitmap face(qv::LoadLibraryBitmap(b.face));
        ASSERT_TRUE(face && ::GetObjectW(face, sizeof bm, &bm));
        const SIZE size = b.button.GetBitmapSize(false);
        EXPECT_EQ(std::pair(size.cx, size.cy), std::pair(bm.bmWidth, bm.bmHeight));
    }
}

TEST_F(SplitterTest, DraggingTheBarKeepsOrCollapsesAndTheButtonRestores) {
    const struct { const char* what; int x; std::pair<int, int> columns; std::pair<bool, bool> shown; } cases[] = {
        {"to the middle", 200, {200, width_ - 212}, {true, true}},
        {"30 from the left edge", 30, {30, width_ - 42}, {true, true}},
        {"30 from the right edge", width_ - 30, {width_ - 30, 18}, {true, true}},
        {"10 from the left edge", 10, {0, width_ - 12}, {true, false}},
        {"15 from the right edge", width_ - 15, {width_ - 12, 0}, {false, true}},
        {"beyond the right edge", width_ + 40, {width_ - 12, 0}, {false, true}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        splitter_.SetColumnInfo(0, 300, 0);
        splitter_.RecalcLayout();
        std::vector<Command> heard;
        qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM lp) {
            if (msg == WM_COMMAND) heard.push_back({LOWORD(wp), HIWORD(wp), reinterpret_cast<HWND>(lp)});
        });
        Drag(c.x);
        EXPECT_EQ(Columns(), c.columns);
        EXPECT_EQ(ButtonsShown(), c.shown);
        EXPECT_EQ(::IsWindowVisible(list_) && ::IsWindowVisible(edit_), c.shown.first && c.shown.second);
        EXPECT_TRUE(FromButtons(heard).empty()) << "a drag is no button press";
        if (c.shown.first && c.shown.second) continue;
        XSplitterButton& restore = c.shown.first ? splitter_.GetUpperButton() : splitter_.GetLowerButton();
        restore.SendMessage(BM_CLICK);
        EXPECT_EQ(Columns(), std::pair(300, width_ - 312)) << "the widths before the drag";
        EXPECT_EQ(ButtonsShown(), std::pair(true, true));
        const UINT id = c.shown.first ? kUpperLow : kLowerLow;
        EXPECT_EQ(FromButtons(heard), (std::vector<Command>{{id, BN_CLICKED, restore}}));
    }
}

TEST_F(SplitterTest, ButtonsCollapseRestoreAndTellTheParent) {
    std::vector<Command> heard;
    std::vector<UINT> notes;
    qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM lp) {
        if (msg == WM_COMMAND) heard.push_back({LOWORD(wp), HIWORD(wp), reinterpret_cast<HWND>(lp)});
        if (msg == WM_NOTIFY) notes.push_back(reinterpret_cast<NMHDR*>(lp)->code);
    });
    XSplitterButton& upper = splitter_.GetUpperButton();
    XSplitterButton& lower = splitter_.GetLowerButton();
    ::SetFocus(edit_);
    upper.SendMessage(BM_CLICK);
    EXPECT_EQ(Columns(), std::pair(0, width_ - 12));
    EXPECT_EQ(ButtonsShown(), std::pair(true, false));
    EXPECT_TRUE(splitter_.IsLeftCollapsed());
    EXPECT_EQ(::GetFocus(), edit_) << "the focus stays in the pane shown";
    upper.SendMessage(BM_CLICK);
    EXPECT_EQ(Columns(), std::pair(300, width_ - 312));

    ::SetFocus(edit_);
    lower.SendMessage(BM_CLICK);
    EXPECT_EQ(Columns(), std::pair(width_ - 12, 0));
    EXPECT_EQ(ButtonsShown(), std::pair(false, true));
    EXPECT_EQ(::GetFocus(), list_) << "the collapsed pane's focus moves over";
    lower.SendMessage(BM_CLICK);
    EXPECT_EQ(Columns(), std::pair(300, width_ - 312));
    EXPECT_EQ(FromButtons(heard), (std::vector<Command>{{kUpperLow, BN_CLICKED, upper}, {kUpperLow, BN_CLICKED, upper},
                                           {kLowerLow, BN_CLICKED, lower}, {kLowerLow, BN_CLICKED, lower}}));

    // The panes' notifications reach the host with the panes' ids.
    heard.clear();
    qvtest::TypeChars(edit_, L"x");
    ::SendMessageW(list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"one"));
    ::SendMessageW(list_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    ::SendMessageW(list_, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    NMHDR hdr{edit_, 59649, 4242};
    ::SendMessageW(splitter_, WM_NOTIFY, hdr.idFrom, reinterpret_cast<LPARAM>(&hdr));
    EXPECT_NE(std::find(heard.begin(), heard.end(), Command{59649, EN_CHANGE, edit_}), heard.end());
    EXPECT_NE(std::find(heard.begin(), heard.end(), Command{59648, LBN_SELCHANGE, list_}), heard.end());
    EXPECT_EQ(notes, std::vector<UINT>{4242});
}

TEST_F(SplitterTest, KeyboardMovesAndDropsTheBar) {
    const struct { std::vector<UINT> keys; bool ctrl; std::pair<int, int> columns; } cases[] = {
        {{VK_RIGHT, VK_RIGHT, VK_RETURN}, false, {316, width_ - 328}},
        {{VK_LEFT, VK_RETURN}, true, {299, width_ - 311}},
        {{VK_LEFT, VK_LEFT, VK_ESCAPE}, false, {300, width_ - 312}},
        {{VK_END, VK_RETURN}, false, {width_ - 12, 0}},
        {{VK_HOME, VK_RETURN}, false, {0, width_ - 12}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "keys " << c.keys.size() << (c.ctrl ? " with Ctrl" : ""));
        splitter_.SetColumnInfo(0, 300, 0);
        splitter_.RecalcLayout();
        if (splitter_.IsLeftCollapsed()) splitter_.BtnLeftPressed();
        if (splitter_.IsRightCollapsed()) splitter_.BtnRightPressed();
        ::SetFocus(list_);
        ASSERT_TRUE(splitter_.DoKeyboardSplit());
        EXPECT_EQ(::GetFocus(), splitter_.m_hWnd);
        EXPECT_TRUE(::SendMessageW(splitter_, WM_GETDLGCODE, 0, 0) & DLGC_WANTALLKEYS);
        qvtest::HeldKey ctrl(VK_CONTROL, c.ctrl);
        for (UINT vk : c.keys) Key(vk);
        EXPECT_FALSE(splitter_.IsTracking());
        EXPECT_EQ(Columns(), c.columns);
        EXPECT_NE(::GetFocus(), splitter_.m_hWnd) << "the focus is back in a pane";
    }
    ASSERT_TRUE(splitter_.DoKeyboardSplit());
    Key(VK_RIGHT);
    ::SetFocus(edit_);
    EXPECT_FALSE(splitter_.IsTracking()) << "losing the focus puts the bar back";
}

TEST_F(SplitterTest, SizingCursorOverTheBarOnly) {
    const HCURSOR sizing = ::LoadCursorW(nullptr, IDC_SIZEWE);
    const struct { int x; bool sizing; } cases[] = {{BarX() + 6, true}, {BarX() - 20, false}, {BarX() + 1, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.x);
        POINT pt{c.x, 30};
        ::ClientToScreen(splitter_, &pt);
        ::SetCursorPos(pt.x, pt.y);
        ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
        splitter_.SendMessage(WM_SETCURSOR, reinterpret_cast<WPARAM>(splitter_.m_hWnd),
                              MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
        EXPECT_EQ(::GetCursor() == sizing, c.sizing);
    }
}

TEST_F(SplitterTest, ResizingCollapsesANarrowPaneAndKeepsItCollapsed) {
    splitter_.MoveWindow(RECT{8, 8, 330, 410});  // 320 inside the borders: 20 right of the bar at 300
    EXPECT_TRUE(splitter_.IsRightCollapsed());
    EXPECT_EQ(ButtonsShown(), std::pair(false, true));
    splitter_.MoveWindow(RECT{8, 8, 622, 410});
    EXPECT_EQ(Columns(), std::pair(width_ - 12, 0)) << "the bar follows the edge";
    splitter_.GetLowerButton().SendMessage(BM_CLICK);
    EXPECT_EQ(Columns(), std::pair(300, width_ - 312));
}

TEST_F(SplitterTest, ActivePaneNeedsAParentFrame) {
    splitter_.SetActivePane(0, 1);
    EXPECT_EQ(::GetFocus(), edit_);
    int row = -1, col = -1;
    EXPECT_EQ(splitter_.GetActivePane(&row, &col), edit_);
    EXPECT_EQ(std::pair(row, col), std::pair(0, 1));
    ::SetFocus(splitter_);
    EXPECT_EQ(::GetFocus(), edit_) << "the splitter hands its focus to the active pane";

    // A dialog box is no frame.
    struct alignas(4) {
        DLGTEMPLATE t{WS_POPUP | WS_VISIBLE, 0, 0, 0, 0, 300, 200};
        WORD menu = 0, cls = 0, title = 0;
    } dlg;
    HWND dialog = ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr), &dlg.t, host_, nullptr, 0);
    ASSERT_NE(dialog, nullptr);
    XSplitterWnd inDialog;
    ASSERT_TRUE(inDialog.Create(dialog, RECT{0, 0, 400, 300}, 5));
    HWND pane = Make(L"EDIT", 0, inDialog);
    inDialog.SetPane(1, pane);
    ::SetFocus(list_);
    inDialog.SetActivePane(0, 1);
    EXPECT_EQ(::GetFocus(), list_);
    ::SetFocus(pane);
    EXPECT_EQ(inDialog.GetActivePane(&row, &col), nullptr);
    EXPECT_EQ(inDialog.GetParentFrame(), nullptr);
    EXPECT_EQ(splitter_.GetParentFrame(), host_);
    ::DestroyWindow(dialog);
}

TEST_F(SplitterTest, TogglePutsTheRightPaneAway) {
    splitter_.Toggle();
    EXPECT_EQ(::GetDlgCtrlID(edit_), 59664);
    EXPECT_EQ(splitter_.GetPane(0, 1), nullptr);
    EXPECT_EQ(splitter_.GetColumnCount(), 1);
    EXPECT_FALSE(::IsWindowVisible(edit_));
    EXPECT_EQ(ButtonsShown(), std::pair(false, false));
    EXPECT_EQ(qvtest::RectIn(splitter_, list_).right - qvtest::RectIn(splitter_, list_).left, width_);
    splitter_.Toggle();
    EXPECT_EQ(splitter_.GetPane(0, 1), edit_);
    EXPECT_TRUE(::IsWindowVisible(edit_));
    EXPECT_EQ(Columns(), std::pair(300, width_ - 312));
    EXPECT_EQ(ButtonsShown(), std::pair(true, true));
}

}  // namespace
