// What a screen reader hears from the lists with check boxes and the combo
// boxes: items as check buttons with their checks, every toggle announced for
// its item, the check combo's field as its value, the tooltip as description.
#include <oleacc.h>

#include <memory>
#include <string>
#include <vector>

#include "quorvel/controls/base_lists.h"
#include "quorvel/controls/static_text.h"
#include "quorvel/lists/check_combo.h"
#include "support/accessibility.h"
#include "support/host.h"

namespace {

using qvtest::AccessibleOf;

constexpr long kChecks = STATE_SYSTEM_CHECKED | STATE_SYSTEM_MIXED;

VARIANT ChildId(long id) {
    VARIANT v;
    ::VariantInit(&v);
    v.vt = VT_I4;
    v.lVal = id;
    return v;
}

std::wstring DefaultActionOf(const qvtest::Accessible& acc, long child) {
    BSTR text = nullptr;
    std::wstring out;
    if (SUCCEEDED(acc.object->get_accDefaultAction(ChildId(child), &text)) && text) out = text;
    ::SysFreeString(text);
    return out;
}

std::vector<LONG> StateChanges(qvtest::WinEventRecorder& events, HWND hwnd) {
    std::vector<LONG> children;
    for (const auto& e : events.Events(hwnd, EVENT_OBJECT_STATECHANGE)) children.push_back(e.child);
    return children;
}

class CheckListsAccessibilityTest : public qvtest::HostTest {
protected:
    void Label(const wchar_t* text) { ASSERT_TRUE(label_.Create(text, 90, Row(0), font_, host_)); }
    // "alpha" checked, "beta" indeterminate, "gamma" clear and selected.
    static void Fill(qv::CheckListBox& list) {
        list.SetCheckStyle(BS_AUTO3STATE);
        for (const wchar_t* text : {L"alpha", L"beta", L"gamma"}) list.AddString(text);
        list.SetCheck(0, 1);
        list.SetCheck(1, 2);
        list.SetCurSel(2);
    }
    XBaseStaticText label_;
};

TEST_F(CheckListsAccessibilityTest, ListItemsAreCheckButtonsWithTheirStates) {
    Label(L"&Regions *");
    for (bool tabbed : {false, true}) {
        SCOPED_TRACE(tabbed ? "XTabCheckListBox" : "XBaseCheckListBox");
        std::unique_ptr<qv::CheckListBox> list;
        if (tabbed) {
            list = std::make_unique<XTabCheckListBox>();
            ASSERT_TRUE(list->Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | LBS_NOTIFY, Row(1), host_, 100));
        } else {
            auto base = std::make_unique<XBaseCheckListBox>();
            ASSERT_TRUE(base->Create(L"", 100, Row(1), font_, host_));
            list = std::move(base);
        }
        Fill(*list);
        const auto acc = AccessibleOf(*list);
        EXPECT_EQ(acc.Name(), L"Regions");
        EXPECT_EQ(acc.Role(), ROLE_SYSTEM_LIST);
        EXPECT_EQ(acc.ChildCount(), 3);
        const struct {
            const wchar_t* name;
            long checks;
            long selected;
            const wchar_t* action;
        } items[] = {{L"alpha", STATE_SYSTEM_CHECKED, 0, L"Uncheck"},
                     {L"beta", STATE_SYSTEM_MIXED, 0, L"Uncheck"},
                     {L"gamma", 0, STATE_SYSTEM_SELECTED, L"Check"}};
        for (long child = 1; child <= 3; ++child) {
            const auto& item = items[child - 1];
            EXPECT_EQ(acc.Name(child), item.name);
            EXPECT_EQ(acc.Role(child), ROLE_SYSTEM_CHECKBUTTON);
            EXPECT_EQ(acc.State(child) & (kChecks | STATE_SYSTEM_SELECTED), item.checks | item.selected);
            EXPECT_EQ(DefaultActionOf(acc, child), item.action);
        }
        list->Enable(0, false);
        EXPECT_NE(acc.State(1) & STATE_SYSTEM_UNAVAILABLE, 0);
    }
}

TEST_F(CheckListsAccessibilityTest, EveryToggleIsAnnouncedForItsItem) {
    enum How { kApi, kBoxClick, kSpace, kReaderAction };
    const struct {
        const char* what;
        How how;
        int index;
        std::vector<LONG> announced;
        int check;  // afterwards
    } cases[] = {
        {"SetCheck", kApi, 2, {3}, 1},
        {"SetCheck to the state it has", kApi, 0, {}, 1},
        {"click on the box", kBoxClick, 2, {3}, 1},
        {"Space on the selection", kSpace, 2, {3}, 1},
        {"the reader's default action", kReaderAction, 1, {2}, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        XBaseCheckListBox list;
        ASSERT_TRUE(list.Create(L"", 100, RECT{10, 40, 200, 160}, font_, host_));
        Fill(list);
        const auto acc = AccessibleOf(list);
        qvtest::WinEventRecorder events;
        events.Clear();
        RECT rc{};
        list.GetItemRect(c.index, rc);
        const LPARAM box = MAKELPARAM(rc.left + list.GetCheckSize() / 2, (rc.top + rc.bottom) / 2);
        switch (c.how) {
        case kApi: list.SetCheck(c.index, 1); break;
        case kBoxClick:
            list.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, box);
            list.SendMessage(WM_LBUTTONUP, 0, box);
            break;
        case kSpace:
            list.SetFocus();
            list.SendMessage(WM_KEYDOWN, VK_SPACE, 0);
            break;
        case kReaderAction: ASSERT_EQ(acc.object->accDoDefaultAction(ChildId(c.index + 1)), S_OK); break;
        }
        EXPECT_EQ(StateChanges(events, list), c.announced);
        EXPECT_EQ(list.GetCheck(c.index), c.check);
        EXPECT_EQ(acc.State(c.index + 1) & kChecks, c.check == 1 ? STATE_SYSTEM_CHECKED : 0);
    }
}

TEST_F(CheckListsAccessibilityTest, FieldsAreDescribedByTheirTooltips) {
    Label(L"Kind");
    XBaseComboBox combo;
    ASSERT_TRUE(combo.Create(L"", 100, RECT{10, 40, 200, 160}, font_, host_));
    for (const wchar_t* text : {L"Machine", L"<b>Man</b>power"}) combo.AddString(text);
    combo.SetCurSel(0);
    combo.CreateTooltip();  // the tooltip shows the current text
    XBaseCheckListBox checks;
    ASSERT_TRUE(checks.Create(L"", 101, RECT{10, 70, 200, 160}, font_, host_));
    const auto acc = AccessibleOf(combo);
    EXPECT_EQ(acc.Name(), L"Kind");
    EXPECT_EQ(acc.Role(), ROLE_SYSTEM_COMBOBOX);
    EXPECT_EQ(acc.Value(), L"Machine");
    EXPECT_EQ(acc.Description(), L"Machine");
    EXPECT_NE(acc.State() & STATE_SYSTEM_COLLAPSED, 0);
    EXPECT_EQ(AccessibleOf(checks).Description(), L"0 of 0 selected");

    // A new tooltip text is a new description, tags removed, and announced.
    qvtest::WinEventRecorder events;
    events.Clear();
    combo.SetCurSel(1);
    combo.CreateTooltip();
    EXPECT_EQ(events.Events(combo, EVENT_OBJECT_DESCRIPTIONCHANGE).size(), 1u);
    EXPECT_EQ(acc.Description(), L"Manpower");
}

TEST_F(CheckListsAccessibilityTest, TheCheckComboIsValuedByItsFieldAndListsItsEntries) {
    Label(L"Shifts");
    XCheckComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP, RECT{10, 40, 200, 200}, host_, 100));
    for (const auto& [text, checked] : {std::pair{L"Early", true}, {L"Late", false}, {L"Night", true}})
        combo.AddString(text, checked);
    const auto acc = AccessibleOf(combo);
    EXPECT_EQ(acc.Name(), L"Shifts");
    EXPECT_EQ(acc.Role(), ROLE_SYSTEM_COMBOBOX);
    EXPECT_EQ(acc.Value(), L"Early, Night");
    EXPECT_EQ(acc.ChildCount(), 3);
    EXPECT_EQ(acc.Name(2), L"Late");
    EXPECT_EQ(acc.Role(2), ROLE_SYSTEM_CHECKBUTTON);
    EXPECT_EQ(acc.State(3) & (kChecks | STATE_SYSTEM_INVISIBLE), STATE_SYSTEM_CHECKED | STATE_SYSTEM_INVISIBLE);
    combo.SetCheck(0, false);
    combo.SetCheck(2, false);
    combo.SetCurSel(1);
    EXPECT_EQ(acc.Value(), L"Late") << "nothing checked: the field shows the selection";

    // The open list: the same entries, checked as the combo box says.
    combo.ShowDropDown(true);  // checks the selection
    qvtest::Pump(50);
    ASSERT_NE(combo.GetCheckList(), nullptr);
    const auto list = AccessibleOf(combo.GetCheckList()->m_hWnd);
    EXPECT_EQ(list.Name(2), L"Late");
    EXPECT_EQ(list.State(2) & kChecks, STATE_SYSTEM_CHECKED);
    EXPECT_EQ(list.State(3) & kChecks, 0);
    EXPECT_EQ(acc.State(2) & STATE_SYSTEM_INVISIBLE, 0);
    EXPECT_EQ(DefaultActionOf(list, 2), L"Uncheck");
    combo.ShowDropDown(false);
}

TEST_F(CheckListsAccessibilityTest, CheckComboTogglesAreAnnouncedForEveryEntryOfTheText) {
    enum How { kApi, kSpace, kReaderAction };
    const struct {
        const char* what;
        How how;
        bool open;  // the list open first
        int index;
        std::vector<LONG> entries;  // state changes of the combo box's entries
        std::vector<LONG> items;    // ... of the open list's items
        size_t values;              // new values of the combo box
    } cases[] = {
        {"a text of two entries", kApi, false, 1, {2, 4}, {}, 1},
        {"the state it has", kApi, false, 0, {}, {}, 0},
        {"in the open list", kApi, true, 2, {3}, {3}, 1},
        {"Space in the open list", kSpace, true, 2, {3}, {3}, 1},
        {"the reader's action on the list", kReaderAction, true, 2, {3}, {3}, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        XCheckComboBox combo;
        ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | WS_VSCROLL, RECT{10, 40, 200, 200}, host_, 100));
        for (const auto& [text, checked] :
             {std::pair{L"Red", true}, {L"Green", false}, {L"Blue", false}, {L"Green", false}})
            combo.AddString(text, checked);
        if (c.open) {
            combo.ShowDropDown(true);
            qvtest::Pump(50);
            ASSERT_NE(combo.GetCheckList(), nullptr);
        }
        HWND list = c.open ? combo.GetCheckList()->m_hWnd : nullptr;
        qvtest::WinEventRecorder events;
        events.Clear();
        switch (c.how) {
        case kApi: combo.SetCheck(c.index, true); break;
        case kSpace:
            ::SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(c.index), 0);
            ::SendMessageW(combo, WM_KEYDOWN, VK_SPACE, 1);  // the combo box passes keys to its list
            break;
        case kReaderAction: AccessibleOf(list).object->accDoDefaultAction(ChildId(c.index + 1)); break;
        }
        EXPECT_EQ(StateChanges(events, combo), c.entries);
        if (list) {
            EXPECT_EQ(StateChanges(events, list), c.items);
        }
        EXPECT_EQ(events.Events(combo, EVENT_OBJECT_VALUECHANGE).size(), c.values);
        EXPECT_EQ(combo.GetCheck(c.index), 1);
        combo.ShowDropDown(false);
    }
}

}  // namespace
