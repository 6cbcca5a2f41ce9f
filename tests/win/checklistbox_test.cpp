// The check list box: toggling by mouse and keyboard, the check styles, the
// item height, and per-item states that follow the list's items.
#include "quorvel/platform/checklistbox.h"

#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "quorvel/platform/gdi.h"
#include "support/host.h"

namespace {

using qvtest::HostTest;

// Records where the text part of each item is drawn, and asks for a taller
// item than the minimum when told to.
class RecordingList : public qv::CheckListBox {
public:
    std::vector<int> textLeft;
    UINT wantHeight = 0;

protected:
    void DrawItem(DRAWITEMSTRUCT* dis) override {
        textLeft.push_back(dis->rcItem.left);
        CheckListBox::DrawItem(dis);
    }
    void MeasureItem(MEASUREITEMSTRUCT* mis) override {
        if (wantHeight) mis->itemHeight = wantHeight;
    }
};

class CheckListBoxTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        spy_.emplace(host_, [this](UINT msg, WPARAM wp, LPARAM lp) {
            if (msg == WM_COMMAND && HIWORD(wp) == CLBN_CHKCHANGE)
                notices_.emplace_back(LOWORD(wp), reinterpret_cast<HWND>(lp));
        });
    }
    std::vector<std::pair<int, HWND>> notices_;  // CLBN_CHKCHANGE notifications that reached the host
    std::optional<qvtest::MessageSpy> spy_;
    void Fill(qv::CheckListBox& list, DWORD style = 0) {
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LBS_NOTIFY | style, RECT{10, 10, 210, 200}, host_, 300));
        for (const wchar_t* s : {L"alpha", L"beta", L"gamma"}) list.AddString(s);
    }
    static void Click(qv::CheckListBox& list, int index, int dx) {
        RECT rc{};
        list.GetItemRect(index, rc);
        const LPARAM at = MAKELPARAM(rc.left + dx, (rc.top + rc.bottom) / 2);
        list.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, at);
        list.SendMessage(WM_LBUTTONUP, 0, at);
    }
    static constexpr int kOnBox = 5;
    static constexpr int kOnText = 60;
};

TEST_F(CheckListBoxTest, ClicksToggleOnlyOnTheBoxOfAnEnabledItem) {
    // states: the item's state after each of three clicks
    struct Case { const char* what; UINT checkStyle; bool disable; int dx; std::vector<int> states; size_t notices; };
    const Case cases[] = {
        {"box, two-state", BS_AUTOCHECKBOX, false, kOnBox, {1, 0, 1}, 3},
        {"box, three-state", BS_AUTO3STATE, false, kOnBox, {1, 2, 0}, 3},
        {"text", BS_AUTOCHECKBOX, false, kOnText, {0, 0, 0}, 0},
        {"disabled item", BS_AUTOCHECKBOX, true, kOnBox, {0, 0, 0}, 0},
        {"manual three-state", BS_3STATE, false, kOnBox, {0, 0, 0}, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        notices_.clear();
        qv::CheckListBox list;
        Fill(list);
        ASSERT_TRUE(list.SetCheckStyle(c.checkStyle));
        list.Enable(1, !c.disable);
        for (int expected : c.states) {
            Click(list, 1, c.dx);
            EXPECT_EQ(list.GetCheck(1), expected);
        }
        EXPECT_EQ(std::tuple(list.GetCheck(0), list.GetCheck(2)), std::tuple(0, 0));
        ASSERT_EQ(notices_.size(), c.notices);
        for (const auto& n : notices_) EXPECT_EQ(n, std::pair(300, list.m_hWnd));
        EXPECT_EQ(list.GetCurSel(), c.disable ? LB_ERR : 1) << "a click selects unless the item is disabled";
    }
}

TEST_F(CheckListBoxTest, SpaceTogglesTheSelectedItems) {
    // selected: the last one has the caret; after: states of the three items after Space
    struct Case { const char* what; DWORD style; std::vector<int> selected; std::vector<int> after; } cases[] = {
        {"single selection", 0, {2}, {0, 0, 1}},
        {"extended selection", LBS_EXTENDEDSEL, {0, 2}, {1, 0, 1}},
        {"multiple selection", LBS_MULTIPLESEL, {1}, {0, 1, 0}}, {"nothing selected", 0, {}, {0, 0, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        notices_.clear();
        qv::CheckListBox list;
        Fill(list, c.style);
        for (int i : c.selected) {
            if (c.style) list.SetSel(i, true);
            else list.SetCurSel(i);
        }
        if (!c.selected.empty()) list.SetCaretIndex(c.selected.back());
        list.SendMessage(WM_KEYDOWN, VK_SPACE, 1);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(list.GetCheck(i), c.after[i]) << "item " << i;
        EXPECT_EQ(notices_.size(), c.selected.empty() ? 0u : 1u);
        if (c.selected.empty()) continue;  // then Space is the list box's own
        if (c.style) EXPECT_EQ(list.GetSelCount(), static_cast<int>(c.selected.size())) << "selection kept";
        else EXPECT_EQ(list.GetCurSel(), c.selected[0]) << "selection kept";
    }
}

TEST_F(CheckListBoxTest, IndeterminateNeedsAThreeStateStyle) {
    qv::CheckListBox list;
    Fill(list);
    EXPECT_FALSE(list.SetCheck(0, 2));
    EXPECT_EQ(list.GetCheck(0), 0);
    EXPECT_FALSE(list.SetCheckStyle(BS_PUSHBUTTON));
    ASSERT_TRUE(list.SetCheckStyle(BS_AUTO3STATE));
    EXPECT_TRUE(list.SetCheck(0, 2));
    EXPECT_EQ(list.GetCheck(0), 2);
    // Back in a two-state list, an indeterminate item toggles to unchecked.
    ASSERT_TRUE(list.SetCheckStyle(BS_AUTOCHECKBOX));
    Click(list, 0, kOnBox);
    EXPECT_EQ(list.GetCheck(0), 0);
    EXPECT_FALSE(list.SetCheck(3, 1) || list.SetCheck(0, 3));
    EXPECT_EQ(std::tuple(list.GetCheck(3), list.GetCheck(0)), std::tuple(-1, 0));
}

TEST_F(CheckListBoxTest, ItemHeightIsAtLeastTheBoxAndTheFont) {
    // fontHeight: LOGFONT height in pixels, 0 = no font set; wanted: MeasureItem's answer, 0 = minimum
    struct Case { int fontHeight; UINT wanted; } cases[] = {{0, 0}, {-6, 0}, {-30, 0}, {-6, 40}, {-6, 4}};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.fontHeight << " " << c.wanted);
        RecordingList list;
        list.wantHeight = c.wanted;
        Fill(list);
        qv::Font font;
        if (c.fontHeight) {
            font.reset(::CreateFontW(c.fontHeight, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Arial"));
            list.SetFont(font);
        }
        TEXTMETRICW tm{};
        {
            qv::ClientDC dc(list);
            qv::SelectObjectScope sel(dc, list.GetFont());
            ::GetTextMetricsW(dc, &tm);
        }
        const int minimum = std::max<int>(tm.tmHeight, qv::CheckListBox::kCheckSize + 2);
        EXPECT_EQ(std::tuple(list.CalcMinimumItemHeight(), list.GetItemHeight(0)),
                  std::tuple(minimum, std::max<int>(minimum, static_cast<int>(c.wanted))));
        list.DestroyWindow();
    }
}

TEST_F(CheckListBoxTest, StatesFollowInsertsAndDeletes) {
    struct Step { const char* what; void (*apply)(qv::CheckListBox&); std::vector<int> states; } steps[] = {
        {"insert at 1", [](qv::CheckListBox& l) { l.InsertString(1, L"new"); }, {1, 0, 0, 1}},
        {"delete 0", [](qv::CheckListBox& l) { l.DeleteString(0); }, {0, 0, 1}},
        {"append", [](qv::CheckListBox& l) { l.AddString(L"zeta"); }, {0, 0, 1, 0}},
        {"delete past the end", [](qv::CheckListBox& l) { l.DeleteString(9); }, {0, 0, 1, 0}},
        {"reset", [](qv::CheckListBox& l) { l.ResetContent(); }, {}},
    };
    qv::CheckListBox list;
    Fill(list);
    list.SetCheck(0, 1);
    list.SetCheck(2, 1);
    for (const Step& s : steps) {
        SCOPED_TRACE(s.what);
        s.apply(list);
        ASSERT_EQ(list.GetCount(), static_cast<int>(s.states.size()));
        for (size_t i = 0; i < s.states.size(); ++i) EXPECT_EQ(list.GetCheck(static_cast<int>(i)), s.states[i]) << i;
        EXPECT_EQ(list.GetCheck(list.GetCount()), -1);
    }
}

TEST_F(CheckListBoxTest, SortedInsertKeepsTheStateWithItsItem) {
    qv::CheckListBox list;
    Fill(list, LBS_SORT);  // alpha beta gamma
    list.SetCheck(1, 1);   // beta
    EXPECT_EQ(list.AddString(L"azure"), 1);
    EXPECT_EQ(std::tuple(list.GetText(2), list.GetCheck(2), list.GetCheck(1)), std::tuple(L"beta", 1, 0));
}

TEST_F(CheckListBoxTest, AttachNeedsAnOwnerDrawnListWithStrings) {
    struct Case { const wchar_t* cls; DWORD style; bool attaches; } cases[] = {
        {L"LISTBOX", LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, true},
        {L"LISTBOX", LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS, true},
        {L"LISTBOX", LBS_HASSTRINGS, false}, {L"LISTBOX", LBS_OWNERDRAWFIXED, false},
        {L"BUTTON", LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.style);
        HWND hwnd = ::CreateWindowExW(0, c.cls, L"", WS_CHILD | WS_VISIBLE | c.style, 0, 0, 100, 100, host_,
                                      reinterpret_cast<HMENU>(400), nullptr, nullptr);
        if (c.style & LBS_HASSTRINGS) ::SendMessageW(hwnd, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"there"));
        qv::CheckListBox list;
        EXPECT_EQ(list.SubclassDlgItem(400, host_), c.attaches);
        if (c.attaches) {  // existing items get a state
            EXPECT_EQ(list.GetCheck(0), 0);
            EXPECT_GE(list.GetItemHeight(0), qv::CheckListBox::kCheckSize + 2);
        }
        list.Detach();
        ::DestroyWindow(hwnd);
    }
}

TEST_F(CheckListBoxTest, TextIsDrawnAfterTheBox) {
    RecordingList list;
    Fill(list);
    list.Invalidate();
    list.UpdateWindow();
    ASSERT_EQ(list.textLeft.size(), 3u) << "drawing reaches the list through reflection";
    RECT rc{};
    list.GetItemRect(0, rc);
    EXPECT_EQ(list.textLeft[0], rc.left + qv::CheckListBox::kCheckSize + 4);
}

}  // namespace
