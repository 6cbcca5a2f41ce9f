// What a screen reader hears from the tooltip, the labels, the prompts and
// the buttons: the tooltip named by its plain text, labels by their cleaned
// text and described by their help, buttons by kind and check, and changes
// of names and checks as they happen.
#include <oleacc.h>

#include <string>
#include <vector>

#include "quorvel/controls/base_buttons.h"
#include "quorvel/controls/prompt.h"
#include "quorvel/controls/static_text.h"
#include "quorvel/tooltip/xtooltip.h"
#include "support/accessibility.h"
#include "support/host.h"

namespace {

using qvtest::AccessibleOf;

// The events of `hwnd`'s client object (the system may raise its own for the
// window object as well).
size_t ClientEvents(qvtest::WinEventRecorder& events, HWND hwnd, DWORD event) {
    size_t n = 0;
    for (const auto& e : events.Events(hwnd, event)) n += e.object == OBJID_CLIENT ? 1 : 0;
    return n;
}

class TooltipAccessibilityTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        UseSettings({{L"tooltipdelaytime", L"5"}});
        HostTest::SetUp();
    }
};

TEST_F(TooltipAccessibilityTest, TheTooltipIsNamedByThePlainTextOfItsTool) {
    std::wstring longText;
    for (int i = 0; i < 30; ++i) longText += L"word ";  // wrapped at 80 characters
    const std::wstring cases[][2] = {
        {L"<b>Bold</b> and <ct=0xFF0000>red</ct>", L"Bold and red"},
        {L"First line<br>second", L"First line\r\nsecond"},
        {L"a<<b", L"a<b"},
        {longText, longText},  // the breaks the wrap inserted are taken out again
    };
    XBaseStaticText owner;
    ASSERT_TRUE(owner.Create(L"owner", 1, Row(0), font_, host_));
    XTooltip tip;
    ASSERT_TRUE(tip.Create(owner));
    for (const auto& c : cases) tip.AddTool(owner, c[0]);
    const auto acc = AccessibleOf(tip);
    EXPECT_EQ(acc.Role(), ROLE_SYSTEM_TOOLTIP);
    EXPECT_NE(acc.State() & STATE_SYSTEM_INVISIBLE, 0);
    for (int i = 0; i < 4; ++i) {
        tip.SetNewToolTip(i, true);  // the current tool, shown after the delay
        EXPECT_EQ(acc.Name(), cases[i][1]) << i;
    }
}

TEST_F(TooltipAccessibilityTest, AShownTooltipAnnouncesANewText) {
    XBasePrompt first, second;
    ASSERT_TRUE(first.Create(L"First", 1, Row(0), font_, host_, false, false, L"<b>First</b> help", false));
    ASSERT_TRUE(second.Create(L"Second", 2, Row(3), font_, host_, false, false, L"Second help", false));
    qvtest::WinEventRecorder events;
    auto hover = [&](HWND wnd, const wchar_t* name) {
        for (auto [over, p] : {std::pair{host_, POINT{600, 450}}, {wnd, POINT{5, 5}}}) {
            ::ClientToScreen(over, &p);
            ::SetCursorPos(p.x, p.y);
            qvtest::Pump(60);
        }
        HWND shown = nullptr;
        qvtest::WaitFor([&] {
            for (HWND tip : qvtest::Windows(L"XTooltip"))
                if (::IsWindowVisible(tip) && AccessibleOf(tip).Name() == name) shown = tip;
            return shown != nullptr;
        });
        return shown;
    };
    HWND tip = hover(first, L"First help");
    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(ClientEvents(events, tip, EVENT_OBJECT_NAMECHANGE), 1u);
    // Shown again with the same text: nothing new to tell.
    events.Clear();
    ASSERT_NE(hover(second, L"Second help"), nullptr);
    ASSERT_EQ(hover(first, L"First help"), tip);
    EXPECT_EQ(ClientEvents(events, tip, EVENT_OBJECT_NAMECHANGE), 0u);
}

using LabelsAccessibilityTest = qvtest::HostTest;

TEST_F(LabelsAccessibilityTest, LabelsAreNamedByTheirTextAndDescribedByTheirHelp) {
    const struct {
        const wchar_t* text;
        bool mandatory;
        const wchar_t* help;
        const wchar_t* name;
        const wchar_t* labelHelp;   // the standard tooltip shows its text as it is
        const wchar_t* promptHelp;  // the mark-up tooltip, tags removed
    } cases[] = {
        {L"&Due date", true, L"When it is due", L"Due date", L"When it is due", L"When it is due"},
        {L"Cost && price", false, L"<b>Net</b> price", L"Cost & price", L"<b>Net</b> price", L"Net price"},
        {L"Plan", false, L"Plans<document>plans.htm</document>", L"Plan", L"Plans <For more help press F1>",
         L"Plans\r\nPress F1 for more info..."},
        {L"No help", false, L"", L"No help", L"", L""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.text);
        XBaseStaticText label;
        ASSERT_TRUE(label.Create(c.text, 1, Row(0), font_, host_, c.help, c.mandatory));
        XBasePrompt prompt;
        ASSERT_TRUE(prompt.Create(c.text, 2, Row(1), font_, host_, false, false, c.help, c.mandatory));
        for (const auto& [hwnd, help] : {std::pair{label.m_hWnd, c.labelHelp}, {prompt.m_hWnd, c.promptHelp}}) {
            const auto acc = AccessibleOf(hwnd);
            EXPECT_EQ(acc.Name(), c.name);
            EXPECT_EQ(acc.Role(), ROLE_SYSTEM_STATICTEXT);
            EXPECT_EQ(acc.Value(), L"") << "a label, not a field";
            EXPECT_NE(acc.State() & STATE_SYSTEM_READONLY, 0);
            EXPECT_EQ(acc.Description(), help);
        }
    }
    // A new text is a new name, and a reader hears of it.
    XBaseStaticText label;
    XBasePrompt prompt;
    XBaseButton button;
    ASSERT_TRUE(label.Create(L"Before", 1, Row(0), font_, host_));
    ASSERT_TRUE(prompt.Create(L"Before", 2, Row(1), font_, host_, false, false, L"", false));
    ASSERT_TRUE(button.Create(L"Before", 3, Row(2), font_, host_));
    qvtest::WinEventRecorder events;
    for (HWND hwnd : {label.m_hWnd, prompt.m_hWnd, button.m_hWnd}) {
        events.Clear();
        ::SetWindowTextW(hwnd, L"&After *");
        EXPECT_EQ(ClientEvents(events, hwnd, EVENT_OBJECT_NAMECHANGE), 1u);
        EXPECT_EQ(AccessibleOf(hwnd).Name(), L"After");
    }
}

using ButtonsAccessibilityTest = qvtest::HostTest;

TEST_F(ButtonsAccessibilityTest, ButtonsReportTheirKindAndCheck) {
    XBaseButton push;
    XBaseCheckBox check;
    XBaseTriCheckBox tri;
    XBaseRadio radio;
    XBaseGroupBox group, captioned;
    ASSERT_TRUE(push.Create(L"&Save", 1, Row(0), font_, host_));
    ASSERT_TRUE(check.Create(L"Urgent", 2, Row(1), font_, host_));
    ASSERT_TRUE(tri.Create(L"Shared", 3, Row(2), font_, host_));
    ASSERT_TRUE(radio.Create(L"Daily", 4, Row(3), font_, host_));
    ASSERT_TRUE(group.Create(L"Options", 5, Row(4), font_, host_));
    ASSERT_TRUE(captioned.Create(L"Times", 6, RECT{10, 160, 300, 260}, font_, host_, L"<b>When</b> it runs", true));
    check.SendMessage(BM_SETCHECK, BST_CHECKED);
    tri.SendMessage(BM_SETCHECK, BST_INDETERMINATE);
    const struct {
        HWND hwnd;
        const wchar_t* name;
        long role;
        long checks;
        const wchar_t* description;
    } cases[] = {
        {push, L"Save", ROLE_SYSTEM_PUSHBUTTON, 0, L""},
        {check, L"Urgent", ROLE_SYSTEM_CHECKBUTTON, STATE_SYSTEM_CHECKED, L""},
        {tri, L"Shared", ROLE_SYSTEM_CHECKBUTTON, STATE_SYSTEM_MIXED, L""},
        {radio, L"Daily", ROLE_SYSTEM_RADIOBUTTON, 0, L""},
        {group, L"Options", ROLE_SYSTEM_GROUPING, 0, L""},
        {captioned, L"Times", ROLE_SYSTEM_GROUPING, 0, L"When it runs"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name);
        const auto acc = AccessibleOf(c.hwnd);
        EXPECT_EQ(acc.Name(), c.name);
        EXPECT_EQ(acc.Role(), c.role);
        EXPECT_EQ(acc.State() & (STATE_SYSTEM_CHECKED | STATE_SYSTEM_MIXED), c.checks);
        EXPECT_EQ(acc.Description(), c.description);
    }
}

TEST_F(ButtonsAccessibilityTest, EveryChangeOfACheckIsAnnounced) {
    XBaseCheckBox check;
    XBaseTriCheckBox tri;
    ASSERT_TRUE(check.Create(L"Urgent", 1, Row(0), font_, host_));
    ASSERT_TRUE(tri.Create(L"Shared", 2, Row(1), font_, host_));
    const struct {
        const char* what;
        XBaseCheckBox* box;
        bool click;  // else BM_SETCHECK with BST_CHECKED
        size_t announced;
        LRESULT after;
    } cases[] = {
        {"checked by the host", &check, false, 1, BST_CHECKED},
        {"set to what it is", &check, false, 0, BST_CHECKED},
        {"clicked clear", &check, true, 1, BST_UNCHECKED},
        {"clicked checked", &tri, true, 1, BST_CHECKED},
        {"clicked indeterminate", &tri, true, 1, BST_INDETERMINATE},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        qvtest::WinEventRecorder events;
        events.Clear();
        if (c.click) {
            c.box->SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
            c.box->SendMessage(WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
        } else {
            c.box->SendMessage(BM_SETCHECK, BST_CHECKED);
        }
        EXPECT_EQ(ClientEvents(events, *c.box, EVENT_OBJECT_STATECHANGE), c.announced);
        EXPECT_EQ(c.box->SendMessage(BM_GETCHECK), c.after);
    }
}

}  // namespace
