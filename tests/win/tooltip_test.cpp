// The mark-up tooltip window under a real message loop: delays, hiding,
// one tooltip at a time, behaviour flags, the process-wide switch-off, F1
// help over a prompt, and the shape of the shown window.
#include "quorvel/tooltip/xtooltip.h"

#include <memory>
#include <string>
#include <tuple>
#include <utility>

#include "quorvel/frame/services.h"
#include "support/host.h"

namespace {

using qvtest::Pump;
using qvtest::WaitFor;

// A label that owns a tooltip and relays its mouse and key messages to it,
// as the library's controls do; it can pose as any owner kind.
class Owner : public qv::Window, public XTooltipOwnerKind {
public:
    XTooltip tip;
    int kind = kOwnerOther;
    std::wstring help;
    bool inside = false;  // between a move and WM_MOUSELEAVE

    bool Make(HWND host, int x, int y, const wchar_t* text = L"Plain tooltip text") {
        if (!Create(L"STATIC", L"label", WS_CHILD | WS_VISIBLE | SS_NOTIFY, RECT{x, y, x + 160, y + 60}, host, 0) ||
            !tip.Create(m_hWnd))
            return false;
        tip.AddTool(m_hWnd, text);
        tip.SetDelayTime(XTooltip::kDelayInitial, 30);
        return true;
    }
    int TooltipOwnerKind() const override { return kind; }
    std::wstring TooltipContextHelpFile() const override { return help; }

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
        if (msg == WM_MOUSEMOVE || msg == WM_MOUSELEAVE || msg == WM_KEYDOWN || msg == WM_LBUTTONDOWN) {
            const MSG m{m_hWnd, msg, wp, lp, 0, {}};
            if (msg == WM_MOUSEMOVE || msg == WM_MOUSELEAVE) inside = msg == WM_MOUSEMOVE;
            tip.RelayEvent(&m);
        }
        return qv::Window::WindowProc(msg, wp, lp);
    }
};

class TooltipTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        UseSettings({{L"tooltipdelaytime", L"5"}});
        HostTest::SetUp();
        ::SetCursorPos(0, 0);
    }
    static void MoveTo(HWND wnd, int x, int y) {
        POINT p{x, y};
        ::ClientToScreen(wnd, &p);
        ::SetCursorPos(p.x, p.y);
        Pump(60);
    }
    // Makes an owner away from the cursor, so it shows nothing until hovered.
    bool Make(Owner& owner, int x, int y, const wchar_t* text = L"Plain tooltip text") {
        MoveTo(host_, 500, 400);
        return owner.Make(host_, x, y, text);
    }
    // Hovers the owner from outside until its tooltip shows.
    bool Show(Owner& owner, int x = 40, int y = 20) {
        Pump(60);  // the move a hidden tooltip leaves to the window beneath
        MoveTo(host_, 500, 400);
        // Leaving is noticed by a timer, and it lets the tooltip show again.
        WaitFor([&] { return !owner.inside; });
        MoveTo(owner, x, y);
        return WaitFor([&] { return owner.tip.IsVisible() != FALSE; });
    }
};

TEST_F(TooltipTest, ShowsAfterTheDelayAndHidesAfterTheDisplayTime) {
    Owner owner;
    ASSERT_TRUE(Make(owner, 20, 20));
    owner.tip.SetDelayTime(XTooltip::kDelayInitial, 400);
    owner.tip.SetDelayTime(XTooltip::kDelayAutoPop, 300);
    MoveTo(owner, 30, 20);
    EXPECT_FALSE(owner.tip.IsVisible()) << "nothing before the initial delay";
    EXPECT_TRUE(WaitFor([&] { return owner.tip.IsVisible() != FALSE; }));
    EXPECT_TRUE(WaitFor([&] { return owner.tip.IsVisible() == FALSE; }));
}

TEST_F(TooltipTest, ASecondTooltipHidesTheFirst) {
    Owner a, b;
    ASSERT_TRUE(Make(a, 20, 20));
    ASSERT_TRUE(Make(b, 20, 200));
    ASSERT_TRUE(Show(a));
    ASSERT_TRUE(Show(b));
    EXPECT_FALSE(a.tip.IsVisible());
}

TEST_F(TooltipTest, ClicksAndKeysHideButSystemKeysDoNot) {
    Owner owner;
    ASSERT_TRUE(Make(owner, 20, 20));
    const struct { UINT msg; bool hides; } cases[] = {
        {WM_LBUTTONDOWN, true}, {WM_NCLBUTTONDOWN, true}, {WM_KEYDOWN, true}, {WM_SYSKEYDOWN, false}, {WM_LBUTTONUP, false},
    };
    int x = 30;
    for (const auto& c : cases) {
        ASSERT_TRUE(Show(owner, x += 5)) << c.msg;
        const MSG m{owner, c.msg, c.msg == WM_KEYDOWN ? WPARAM{'A'} : 0, 0, 0, {}};
        owner.tip.RelayEvent(&m);
        EXPECT_EQ(owner.tip.IsVisible() == FALSE, c.hides) << "message " << c.msg;
        owner.tip.Pop();
    }
}

TEST_F(TooltipTest, BehaviourDecidesWhatMovingAndTimeDo) {
    enum Action { kMoveInTool, kWaitWithCursorOnTip };
    const struct { UINT behaviour; Action action; bool visibleAfter; const char* what; } cases[] = {
        {0, kMoveInTool, false, "a move inside the tool hides"},
        {XTooltip::kBehaviourRepeat, kMoveInTool, true, "re-shown after the delay"},
        {XTooltip::kBehaviourStay, kMoveInTool, true, "stays while moving inside the tool"},
        {XTooltip::kBehaviourStayOnTimeout, kWaitWithCursorOnTip, true, "stays while the cursor is on it"},
        {XTooltip::kBehaviourNoTimeout, kWaitWithCursorOnTip, true, "never hidden by time"},
    };
    for (const auto& c : cases) {
        Owner owner;
        ASSERT_TRUE(Make(owner, 20, 20));
        owner.tip.SetBehaviour(c.behaviour, 0);
        owner.tip.SetDelayTime(XTooltip::kDelayAutoPop, c.action == kWaitWithCursorOnTip ? 150 : 60000);
        ASSERT_TRUE(Show(owner)) << c.what;
        if (c.action == kMoveInTool) {
            MoveTo(owner, 20, 10);  // left of and above the box, still on the tool
        } else {
            POINT cursor;
            ::GetCursorPos(&cursor);
            ASSERT_EQ(::WindowFromPoint(cursor), owner.tip.m_hWnd) << "the box opens under the cursor";
        }
        Pump(700);
        EXPECT_EQ(owner.tip.IsVisible() != FALSE, c.visibleAfter) << c.what;
    }
}

// A plain Win32 window of the host as the tool: nobody relays its messages
// but the tooltip's own subclass, when asked for.
HWND PlainTool(HWND host, int y) {
    return ::CreateWindowExW(0, L"STATIC", L"tool", WS_CHILD | WS_VISIBLE | SS_NOTIFY, 20, y, 160, 60, host, nullptr,
                             nullptr, nullptr);
}

TEST_F(TooltipTest, ASubclassedPlainWindowShowsItsToolOnRealMouseMoves) {
    for (const bool subclass : {false, true}) {
        MoveTo(host_, 500, 400);
        HWND tool = PlainTool(host_, 20);
        XTooltip tip;
        ASSERT_TRUE(tip.Create(host_));
        tip.SetDelayTime(XTooltip::kDelayInitial, 30);
        EXPECT_FALSE(tip.SubclassTool(tool)) << "not a tool yet";
        tip.AddTool(tool, L"Plain window tool");
        if (subclass) {
            ASSERT_TRUE(tip.SubclassTool(tool));
        }
        MoveTo(tool, 40, 20);
        EXPECT_EQ(WaitFor([&] { return tip.IsVisible() != FALSE; }, subclass ? 4000 : 600), subclass);
        ::SendMessageW(tool, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(40, 20));  // a click on the tool hides it
        EXPECT_FALSE(tip.IsVisible());
        ::DestroyWindow(tool);
    }
}

TEST_F(TooltipTest, ASubclassedToolAndItsTooltipGoInAnyOrder) {
    enum First { kToolWindow, kTooltipObject, kTooltipWindow, kToolRemoved };
    for (const First first : {kToolWindow, kTooltipObject, kTooltipWindow, kToolRemoved}) {
        MoveTo(host_, 500, 400);
        HWND tool = PlainTool(host_, 20), other = PlainTool(host_, 200);
        const LONG_PTR plain = ::GetWindowLongPtrW(tool, GWLP_WNDPROC);
        auto tip = std::make_unique<XTooltip>();
        ASSERT_TRUE(tip->Create(host_));
        tip->SetDelayTime(XTooltip::kDelayInitial, 30);
        tip->AddTool(tool, L"First tool");
        tip->AddTool(other, L"Second tool");
        ASSERT_TRUE(tip->SubclassTool(tool) && tip->SubclassTool(other));
        tip->AddTool(nullptr, L"A tool without a window");
        tip->RemoveTool(2);  // takes no window's subclass with it
        ASSERT_NE(::GetWindowLongPtrW(tool, GWLP_WNDPROC), plain);
        switch (first) {
        case kToolWindow:
            // The tooltip forgets the window and goes on serving the others.
            ::DestroyWindow(tool);
            MoveTo(other, 40, 20);
            EXPECT_TRUE(WaitFor([&] { return tip->IsVisible() != FALSE; })) << "the other tool still shows";
            break;
        case kTooltipObject:
        case kTooltipWindow:
        case kToolRemoved:
            if (first == kTooltipObject) tip.reset();
            else if (first == kTooltipWindow) tip->DestroyWindow();
            else tip->RemoveTool(0);
            EXPECT_EQ(::GetWindowLongPtrW(tool, GWLP_WNDPROC), plain) << "case " << first << ": subclass removed";
            MoveTo(tool, 40, 20);  // reaches no tooltip any more
            ::DestroyWindow(tool);
            break;
        }
        tip.reset();
        ::DestroyWindow(other);
        Pump();
    }
}

TEST_F(TooltipTest, ProcessSettingsSwitchOffAndWrap) {
    // firstBreak: where AddTool puts the first "<br>" into 100 characters
    const struct { const wchar_t *popup, *maxWidth; bool window; UINT displayTime; size_t firstBreak; } cases[] = {
        {L"", L"", false, 5000, 80},          // no setting: tooltips off
        {L"0", L"120", false, 5000, 80},      // 0 seconds: off, the width is not read
        {L"7", L"10", true, 7000, 80},        // widths below 80 wrap at 80
        {L"2", L"90", true, 2000, 90}, {L"2", L"120", true, 2000, std::wstring::npos},
    };
    for (const auto& c : cases) {
        UseSettings({{L"tooltipdelaytime", c.popup}, {L"tooltipmaxtipwidth", c.maxWidth}});  // read by the next tooltip
        XTooltip tip;
        EXPECT_TRUE(tip.Create(host_));
        EXPECT_EQ(std::tuple(tip.m_hWnd != nullptr, tip.GetDelayTime(XTooltip::kDelayAutoPop)),
                  std::tuple(c.window, c.displayTime));
        tip.AddTool(host_, std::wstring(100, L'x'));
        tagXTOOLTIP_INFO info;
        ASSERT_TRUE(tip.GetTool(0, info));
        EXPECT_EQ(info.szText.find(L"<br>"), c.firstBreak) << "case " << (&c - cases);
    }
}

TEST_F(TooltipTest, SettersFollowThePerToolMask) {
    XTooltip tip;
    ASSERT_TRUE(tip.Create(host_));
    tip.AddTool(host_, L"a");
    tip.SetDirection(1, 0);
    tip.SetStyles(XTooltip::kStyleAnchor, 7);  // no such tool: the default
    // The tool's own direction is marked in its mask; its styles still follow the default ...
    EXPECT_EQ(std::tuple(tip.GetMaskTool(0), tip.GetDirection(0), tip.GetDirection(-1), tip.GetStyles(0)),
              std::tuple(XTooltip::kMaskDirection, 1u, 3u, XTooltip::kStyleAnchor));
    tip.ModifyStyles(0, XTooltip::kStyleShadow, 0);  // ... until it has its own, which leave the default alone
    EXPECT_EQ(std::tuple(tip.GetStyles(0), tip.GetStyles(-1)),
              std::tuple(XTooltip::kStyleAnchor | XTooltip::kStyleShadow, XTooltip::kStyleAnchor));
}

TEST_F(TooltipTest, BoxSitsBelowTheOwnersLineByKind) {
    const struct { int kind; LONG offset; } cases[] = {
        {XTooltipOwnerKind::kOwnerOther, 0}, {XTooltipOwnerKind::kOwnerEdit, 8},
        {XTooltipOwnerKind::kOwnerComboBox, 20}, {XTooltipOwnerKind::kOwnerPrompt, 20}};
    for (const auto& c : cases) {
        Owner owner;
        owner.kind = c.kind;
        ASSERT_TRUE(Make(owner, 20, 20));
        ASSERT_TRUE(Show(owner));
        POINT cursor;
        ::GetCursorPos(&cursor);
        EXPECT_EQ(owner.tip.GetWindowRect().top - cursor.y, c.offset) << "kind " << c.kind;
    }
}

TEST_F(TooltipTest, F1OverAPromptOpensItsHelpAndReportsShellErrors) {
    // box null: no box
    const struct { int kind; const wchar_t* help; INT_PTR result; const wchar_t* box; } cases[] = {
        {XTooltipOwnerKind::kOwnerPrompt, L"dates.htm", 42, nullptr},
        {XTooltipOwnerKind::kOwnerPrompt, L"dates.htm", 5, L"Access denied"},
        {XTooltipOwnerKind::kOwnerPrompt, L"dates.htm", 8, L"There was not enough memory to complete the operation"},
        {XTooltipOwnerKind::kOwnerPrompt, L"dates.htm", 11, L"The .exe file is invalid"},
        {XTooltipOwnerKind::kOwnerPrompt, L"dates.htm", 26, L"A sharing violation occurred"},
        {XTooltipOwnerKind::kOwnerPrompt, L"dates.htm", 31,
         L"There is no application associated with the given file name extension"},
        {XTooltipOwnerKind::kOwnerPrompt, L"dates.htm", 2, L"Help file not found"},
        {XTooltipOwnerKind::kOwnerPrompt, L"", 2, nullptr},        // a prompt without help
        {XTooltipOwnerKind::kOwnerEdit, L"dates.htm", 2, nullptr},  // not a prompt
    };
    HWND edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 300, 20, 100, 20, host_, nullptr, nullptr,
                                  nullptr);
    for (const auto& c : cases) {
        rec_->shell.calls.clear();
        rec_->boxes.boxes.clear();
        rec_->shell.answer = c.result;
        Owner owner;
        owner.kind = c.kind;
        owner.help = c.help;
        ASSERT_TRUE(Make(owner, 20, 20));
        ::SetFocus(edit);
        ASSERT_TRUE(Show(owner));
        const bool opens = c.kind == XTooltipOwnerKind::kOwnerPrompt && *c.help;
        EXPECT_EQ(::GetFocus(), opens ? owner.m_hWnd : edit) << "a prompt with help takes the focus for F1";
        ::SendMessageW(owner, WM_KEYDOWN, VK_F1, 0);
        EXPECT_EQ(::GetFocus(), edit) << "hiding gives the focus back";
        ASSERT_EQ(rec_->shell.calls.size(), opens ? 1u : 0u);
        for (const qvtest::RecordedShell& call : rec_->shell.calls)
            EXPECT_EQ(std::tie(call.verb, call.file, call.directory, call.show),
                      std::tuple(L"open", L"dates.htm", L"C:\\help\\", SW_SHOW));
        ASSERT_EQ(rec_->boxes.boxes.size(), c.box ? 1u : 0u) << c.result;
        for (const qvtest::RecordedBox& box : rec_->boxes.boxes)
            EXPECT_EQ(std::tie(box.text, box.caption, box.type),
                      std::tuple(c.box, L"Open application", UINT{MB_ICONHAND}));
    }
}

TEST_F(TooltipTest, WindowIsTheTextPlusMarginsShadowAndAnchor) {
    const wchar_t* text = L"Measured tooltip text";
    // The text's extent in 10-point Tahoma, as the screen shows it.
    HDC screen = ::GetDC(nullptr);
    HFONT font = ::CreateFontW(-::MulDiv(10, ::GetDeviceCaps(screen, LOGPIXELSY), 72), 0, 0, 0, FW_NORMAL, 0, 0, 0,
                               DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    ::ReleaseDC(nullptr, screen);
    const SIZE extent = qvtest::TextExtent(nullptr, font, text);
    ::DeleteObject(font);

    const struct {
        UINT styles;
        int anchorHeight;
        int extra;           // shadow offset (3) when shadowed
        bool topRightInside; // the shadow leaves the box's top-right corner out
    } cases[] = {{0, 0, 0, true}, {XTooltip::kStyleShadow, 0, 3, false}, {XTooltip::kStyleAnchor, 9, 0, false}};
    for (const auto& c : cases) {
        Owner owner;
        ASSERT_TRUE(Make(owner, 20, 20, text));
        owner.tip.SetStyles(c.styles);
        owner.tip.SetSize(XTooltip::kSizeAnchorHeight, c.anchorHeight);
        owner.tip.SetSize(XTooltip::kSizeAnchorWidth, c.anchorHeight);
        owner.tip.SetColor(XTooltip::kColorBorder, RGB(255, 0, 0));
        owner.tip.SetColor(XTooltip::kColorShadow, RGB(0, 0, 255));
        ASSERT_TRUE(Show(owner));
        Pump(100);
        const RECT wr = owner.tip.GetWindowRect();
        const int w = static_cast<int>(extent.cx) + 2 * 3 + c.extra;
        const int h = static_cast<int>(extent.cy) + 2 * 1 + c.anchorHeight + c.extra;
        EXPECT_EQ(std::tuple(wr.right - wr.left, wr.bottom - wr.top), std::tuple(w + 2L, h + 2L)) << c.styles;
        HRGN rgn = ::CreateRectRgn(0, 0, 0, 0);
        ASSERT_NE(::GetWindowRgn(owner.tip, rgn), ERROR);
        RECT box{};
        ::GetRgnBox(rgn, &box);
        EXPECT_EQ(std::tuple(box.right, box.bottom), std::tuple(w + 1L, h + 1L)) << c.styles;
        EXPECT_EQ(::PtInRegion(rgn, w, 0) != FALSE, c.topRightInside) << c.styles;
        ::DeleteObject(rgn);
        // What is on the screen: the border down the left side, the shadow in the far corner.
        HDC dc = ::GetDC(nullptr);
        EXPECT_EQ(::GetPixel(dc, wr.left, wr.top + h / 2), RGB(255, 0, 0)) << c.styles;
        if (c.extra) {
            EXPECT_EQ(::GetPixel(dc, wr.left + w, wr.top + h), RGB(0, 0, 255));
        }
        ::ReleaseDC(nullptr, dc);
    }
}

}  // namespace
