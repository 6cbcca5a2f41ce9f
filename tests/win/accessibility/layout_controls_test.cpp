// What a screen reader hears from the controls that lay other windows out:
// the splitter's bar as an item with its position and its buttons named by
// what a press does, the line-numbered edit as a field whose gutter readers
// skip, script buttons, the button container and the scrolling dialog's grip.
#include <oleacc.h>

#include <string>
#include <tuple>

#include "quorvel/controls/script_buttons.h"
#include "quorvel/controls/scroll_dialog.h"
#include "quorvel/frame/services.h"
#include "quorvel/views/button_container.h"
#include "quorvel/windows/line_number_edit.h"
#include "quorvel/windows/splitter.h"
#include "support/accessibility.h"
#include "support/host.h"

namespace {

using qvtest::AccessibleOf;
using qvtest::WinEventRecorder;
constexpr long kBar = XSplitterWnd::kBarItem;

HWND Make(HWND parent, const wchar_t* cls, const wchar_t* text, int y, DWORD style = WS_VISIBLE) {
    return ::CreateWindowExW(0, cls, text, WS_CHILD | style, 8, y, 200, 20, parent, nullptr, nullptr, nullptr);
}

// The events of `kind` recorded for `child` of the client object of `hwnd`.
size_t Count(WinEventRecorder& events, HWND hwnd, DWORD kind, long child = CHILDID_SELF) {
    size_t n = 0;
    for (const auto& e : events.Events(hwnd, kind)) n += e.object == OBJID_CLIENT && e.child == child;
    return n;
}

// A catalog for the texts the library adds for readers, while it lives.
struct German {
    explicit German(const wchar_t* catalog) {
        loaded = catalog_.LoadText(catalog);
        qv::Services::SetTranslation(&catalog_);
    }
    ~German() { qv::Services::SetTranslation(nullptr); }
    qv::CatalogTranslation catalog_;
    bool loaded = false;
};

// A labelled splitter with column 0 at 300 pixels of its panes' room.
class SplitterAccessibilityTest : public qvtest::HostTest {
public:
    void SetUp() override {
        HostTest::SetUp();
        Make(host_, L"STATIC", L"&Work area", 8);
        splitter_.SetColumnInfo(0, 300, 0);
        ASSERT_TRUE(splitter_.Create(host_, RECT{8, 32, 622, 434}, 77));
        ASSERT_TRUE(splitter_.SetPane(0, Make(splitter_, L"LISTBOX", L"", 0)));
        ASSERT_TRUE(splitter_.SetPane(1, Make(splitter_, L"EDIT", L"", 0)));
    }
    std::wstring Percent() const {
        int left = 0, right = 0, min = 0;
        splitter_.GetColumnInfo(0, left, min);
        splitter_.GetColumnInfo(1, right, min);
        return std::to_wstring((200 * left + left + right) / (2 * (left + right))) + L"%";
    }
    XSplitterWnd splitter_;
};

TEST_F(SplitterAccessibilityTest, TheBarIsASeparatorWhoseValueIsItsPositionAndEveryChangeIsAnnounced) {
    auto acc = AccessibleOf(splitter_);
    EXPECT_EQ(std::make_tuple(acc.Name(), acc.ChildCount(), acc.Role(kBar), acc.Name(kBar), acc.State(kBar)),
              std::make_tuple(std::wstring(L"Work area"), 1L, long{ROLE_SYSTEM_SEPARATOR}, std::wstring(L"Splitter bar"),
                              0L));
    EXPECT_EQ(acc.Value(kBar), L"50%");

    const struct { const char* what; HWND press; int drag; const wchar_t* value; long state; } steps[] = {
        {"upper button: the left pane collapses", splitter_.GetUpperButton(), 0, L"0%", STATE_SYSTEM_COLLAPSED},
        {"upper button again: restored", splitter_.GetUpperButton(), 0, L"50%", 0},
        {"lower button: the right pane collapses", splitter_.GetLowerButton(), 0, L"100%", STATE_SYSTEM_COLLAPSED},
        {"lower button again: restored", splitter_.GetLowerButton(), 0, L"50%", 0},
        {"a drag to 150", nullptr, 150, nullptr, 0},
    };
    for (const auto& s : steps) {
        SCOPED_TRACE(s.what);
        const long stateBefore = AccessibleOf(splitter_).State(kBar);
        WinEventRecorder events;
        if (s.press) ::SendMessageW(s.press, BM_CLICK, 0, 0);
        if (s.drag) {
            const int grab = splitter_.GetBarRect().left + 3, to = splitter_.GetBorderCX() + s.drag + 3;
            ::SendMessageW(splitter_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(grab, 20));
            ::SendMessageW(splitter_, WM_LBUTTONUP, 0, MAKELPARAM(to, 20));
        }
        acc = AccessibleOf(splitter_);
        EXPECT_EQ(acc.Value(kBar), s.value ? s.value : Percent());
        EXPECT_EQ(acc.State(kBar), s.state);
        EXPECT_GE(Count(events, splitter_, EVENT_OBJECT_VALUECHANGE, kBar), 1u);
        EXPECT_EQ(Count(events, splitter_, EVENT_OBJECT_STATECHANGE, kBar), stateBefore != s.state ? 1u : 0u);
    }
    // While the keyboard moves it, the bar has the focus.
    ASSERT_TRUE(splitter_.DoKeyboardSplit());
    EXPECT_EQ(AccessibleOf(splitter_).State(kBar), STATE_SYSTEM_FOCUSED);
    ::SendMessageW(splitter_, WM_KEYDOWN, VK_ESCAPE, 1);
    EXPECT_EQ(AccessibleOf(splitter_).State(kBar), 0);
}

TEST_F(SplitterAccessibilityTest, ButtonsAreNamedByWhatAPressDoesAndPressedWhileHeldDown) {
    const German german(L"Collapse the left pane\tLinken Bereich einklappen\n"
                        L"Restore both panes\tBeide Bereiche wiederherstellen\nSplitter bar\tTrennleiste\n");
    ASSERT_TRUE(german.loaded);
    splitter_.RecalcLayout();  // names are given at every layout
    XSplitterButton& upper = splitter_.GetUpperButton();
    EXPECT_EQ(AccessibleOf(splitter_).Name(kBar), L"Trennleiste");
    for (const wchar_t* name : {L"Beide Bereiche wiederherstellen", L"Linken Bereich einklappen"}) {
        WinEventRecorder events;
        upper.SendMessage(BM_CLICK);
        ::SetFocus(host_);
        const auto acc = AccessibleOf(upper);
        EXPECT_EQ(std::make_tuple(acc.Name(), acc.Role(), acc.State()),
                  std::make_tuple(std::wstring(name), long{ROLE_SYSTEM_PUSHBUTTON}, long{STATE_SYSTEM_FOCUSABLE}));
        EXPECT_EQ(Count(events, upper, EVENT_OBJECT_NAMECHANGE), 1u);
    }
    for (const BOOL down : {TRUE, FALSE}) {
        WinEventRecorder events;
        upper.SendMessage(BM_SETSTATE, down);
        EXPECT_EQ((AccessibleOf(upper).State() & STATE_SYSTEM_PRESSED) != 0, down != FALSE);
        EXPECT_EQ(Count(events, upper, EVENT_OBJECT_STATECHANGE), 1u);
    }
}

using LineNumberAccessibilityTest = qvtest::HostTest;

TEST_F(LineNumberAccessibilityTest, TheEditIsAFieldAndReadersSkipTheGutter) {
    Make(host_, L"STATIC", L"Script &text:", 8);
    XMultiLineEditLN edit;
    ASSERT_TRUE(edit.Create(L"first\r\nsecond", 100, RECT{8, 32, 300, 200}, font_, host_));
    const auto field = AccessibleOf(edit);
    EXPECT_EQ(std::make_tuple(field.Name(), field.Role(), field.Value()),
              std::make_tuple(std::wstring(L"Script text:"), long{ROLE_SYSTEM_TEXT}, std::wstring(L"first\r\nsecond")));
    const auto gutter = AccessibleOf(edit.GetLineNumberStatic());
    EXPECT_EQ(std::make_tuple(gutter.Name(), gutter.Role(), gutter.State() & STATE_SYSTEM_INVISIBLE),
              std::make_tuple(std::wstring(), long{ROLE_SYSTEM_GRAPHIC}, long{STATE_SYSTEM_INVISIBLE}));
    WinEventRecorder events;
    edit.SetFocus();
    qvtest::TypeChars(edit, L"x");
    EXPECT_GE(Count(events, edit, EVENT_OBJECT_VALUECHANGE), 1u);
}

using ScriptButtonsAccessibilityTest = qvtest::HostTest;

TEST_F(ScriptButtonsAccessibilityTest, GroupsAreNamedByTheirLabelsAndButtonsByWhatTheyDo) {
    const German german(L"Execute script\tSkript ausf\u00fchren\n");
    ASSERT_TRUE(german.loaded);
    Make(host_, L"STATIC", L"&Scripts", 8);
    XBaseScriptBtn_Group group;
    ASSERT_TRUE(group.Create(10, RECT{8, 32, 208, 132}, font_, host_));
    ASSERT_TRUE(group.AddScriptCommand(201, L"&Recalculate"));
    Make(host_, L"STATIC", L"&Formula", 140);
    XScriptContainer box(Make(host_, L"EDIT", L"", 0, WS_TABSTOP), XScriptContainer::PosRight, 41);
    ASSERT_TRUE(box.Create(RECT{8, 164, 308, 224}, host_, 42));
    Make(host_, L"STATIC", L"&Actions", 230);
    XButtonContainer bar(font_, XButtonContainer::kHorizontal, {{L"&Save", L"Save and close", 101}});
    ASSERT_TRUE(bar.Create(RECT{8, 254, 400, 314}, host_, 77));

    const struct { const char* what; HWND hwnd; const wchar_t *name, *description; long role; } cases[] = {
        {"script group", group, L"Scripts", L"", ROLE_SYSTEM_GROUPING},
        {"its command", *group.GetScriptButton(0), L"Recalculate", L"", ROLE_SYSTEM_PUSHBUTTON},
        {"script container", box, L"Formula", L"", ROLE_SYSTEM_GROUPING},
        {"its \"...\", by its tooltip", box.GetButton(), L"Skript ausf\u00fchren", L"", ROLE_SYSTEM_PUSHBUTTON},
        {"button container", bar, L"Actions", L"", ROLE_SYSTEM_GROUPING},
        {"its button", bar.GetButton(0), L"Save", L"Save and close", ROLE_SYSTEM_PUSHBUTTON},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto acc = AccessibleOf(c.hwnd);
        EXPECT_EQ(std::make_tuple(acc.Name(), acc.Description(), acc.Role()),
                  std::make_tuple(std::wstring(c.name), std::wstring(c.description), c.role));
        EXPECT_NE(acc.State(), -1);
    }
}

using ScrollDialogAccessibilityTest = qvtest::HostTest;

TEST_F(ScrollDialogAccessibilityTest, TheGripIsANamedGrip) {
    const German german(L"Size grip\tGr\u00f6\u00dfe \u00e4ndern\n");
    XScrollDialog page;
    ASSERT_TRUE(page.Create(host_));
    const auto grip = AccessibleOf(page.GetGripper());
    EXPECT_EQ(std::make_tuple(grip.Role(), grip.Name()),
              std::make_tuple(long{ROLE_SYSTEM_GRIP}, std::wstring(L"Gr\u00f6\u00dfe \u00e4ndern")));
}

}  // namespace
