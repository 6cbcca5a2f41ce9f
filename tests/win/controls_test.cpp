// The stock-control wrappers drive the real controls: what a wrapper sets is
// what the control shows and answers.
#include "platform/controls.h"

#include "platform/datetime.h"
#include "support/host.h"

namespace {

using qvtest::HostTest;

class ControlsTest : public HostTest {
protected:
    RECT rc_{10, 10, 300, 200};
};

TEST_F(ControlsTest, EditSelectionAndReplacement) {
    struct Case {
        int start, end;
        const wchar_t* insert;
        const wchar_t* text;
        int caret;
    } cases[] = {
        {0, 5, L"HELLO", L"HELLO world", 5},
        {6, 11, L"", L"hello ", 6},
        {11, 11, L"!", L"hello world!", 12},
        {5, 0, L",", L", world", 1},  // a reversed range is the same range
    };
    qv::Edit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, rc_, host_, 100));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        edit.SetWindowText(L"hello world");
        edit.SetSel(c.start, c.end);
        edit.ReplaceSel(c.insert);
        EXPECT_EQ(edit.GetWindowText(), c.text);
        int s = -1, e = -1;
        edit.GetSel(s, e);
        EXPECT_EQ(s, c.caret);
        EXPECT_EQ(e, c.caret);
        EXPECT_EQ(edit.GetSel(), static_cast<DWORD>(MAKELONG(c.caret, c.caret)));
    }
    edit.LimitText(4);
    EXPECT_EQ(edit.GetLimitText(), 4u);
    edit.SetWindowText(L"");
    qvtest::TypeChars(edit, L"abcdef");
    EXPECT_EQ(edit.GetWindowText(), L"abcd");
}

TEST_F(ControlsTest, ComboItemsDataAndLookup) {
    qv::ComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWN | CBS_SORT, rc_, host_, 101));
    for (const wchar_t* s : {L"pear", L"apple", L"plum", L"fig"}) ASSERT_GE(combo.AddString(s), 0);
    ASSERT_EQ(combo.GetCount(), 4);
    struct Case {
        const wchar_t* find;
        int index;  // in sorted order
        const wchar_t* item;
    } cases[] = {{L"apple", 0, L"apple"}, {L"fig", 1, L"fig"},   {L"pear", 2, L"pear"},
                 {L"PLUM", 3, L"plum"},   {L"pl", CB_ERR, L""}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.find);
        EXPECT_EQ(combo.FindStringExact(-1, c.find), c.index);
        EXPECT_EQ(combo.GetLBText(c.index), c.item);
    }
    EXPECT_EQ(combo.SelectString(-1, L"pe"), 2) << "prefix selection";
    EXPECT_EQ(combo.GetCurSel(), 2);
    EXPECT_EQ(combo.GetWindowText(), L"pear");
    combo.SetItemData(1, 0xF16);
    EXPECT_EQ(combo.GetItemData(1), 0xF16u);
    EXPECT_EQ(combo.DeleteString(0), 3);
    EXPECT_EQ(combo.GetItemData(0), 0xF16u) << "data moves with its item";
}

TEST_F(ControlsTest, ListViewColumnsItemsAndHeader) {
    qv::ListCtrl list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, rc_, host_, 102));
    EXPECT_EQ(list.InsertColumn(0, L"Name", LVCFMT_LEFT, 80), 0);
    EXPECT_EQ(list.InsertColumn(1, L"Value", LVCFMT_RIGHT, 120), 1);
    EXPECT_EQ(list.GetColumnWidth(1), 120);

    const std::wstring longText(700, L'x');  // longer than the first read buffer
    struct Row {
        const wchar_t* name;
        std::wstring value;
        DWORD_PTR data;
    } rows[] = {{L"one", L"1", 11}, {L"two", longText, 22}, {L"three", L"", 33}};
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(list.InsertItem(i, rows[i].name), i);
        EXPECT_TRUE(list.SetItemText(i, 1, rows[i].value.c_str()));
        EXPECT_TRUE(list.SetItemData(i, rows[i].data));
    }
    ASSERT_EQ(list.GetItemCount(), 3);
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(list.GetItemText(i, 0), rows[i].name);
        EXPECT_EQ(list.GetItemText(i, 1), rows[i].value);
        EXPECT_EQ(list.GetItemData(i), rows[i].data);
    }

    list.SetItemState(1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(list.GetNextItem(-1, LVNI_SELECTED), 1);
    EXPECT_EQ(list.GetItemState(1, LVIS_SELECTED), static_cast<UINT>(LVIS_SELECTED));

    RECT cell{};
    ASSERT_TRUE(list.GetSubItemRect(2, 1, LVIR_BOUNDS, cell));
    LVHITTESTINFO hit{};
    hit.pt = POINT{cell.left + 3, (cell.top + cell.bottom) / 2};
    EXPECT_EQ(list.SubItemHitTest(&hit), 2);
    EXPECT_EQ(hit.iSubItem, 1);

    qv::HeaderCtrl header;
    ASSERT_TRUE(header.Attach(list.GetHeaderCtrl()));
    EXPECT_EQ(header.GetItemCount(), 2);
    wchar_t text[32] = {};
    HDITEMW item{};
    item.mask = HDI_TEXT;
    item.pszText = text;
    item.cchTextMax = 32;
    ASSERT_TRUE(header.GetItem(1, &item));
    EXPECT_STREQ(text, L"Value");

    EXPECT_TRUE(list.DeleteColumn(0));
    EXPECT_EQ(header.GetItemCount(), 1);
    EXPECT_TRUE(list.DeleteItem(0));
    EXPECT_EQ(list.GetItemData(0), 22u);
    EXPECT_TRUE(list.DeleteAllItems());
    EXPECT_EQ(list.GetItemCount(), 0);
}

TEST_F(ControlsTest, DatePickerWithShowNoneHoldsNoDate) {
    qv::DateTimeCtrl picker;
    ASSERT_TRUE(picker.Create(WS_CHILD | WS_VISIBLE | DTS_SHOWNONE | DTS_SHORTDATEFORMAT, rc_, host_, 103));
    SYSTEMTIME st{2024, 2, 0, 29, 0, 0, 0, 0};
    SYSTEMTIME got{};

    ASSERT_TRUE(picker.SetTime(&st));
    EXPECT_EQ(picker.GetTime(got), static_cast<DWORD>(GDT_VALID));
    EXPECT_EQ(got.wYear, 2024);
    EXPECT_EQ(got.wMonth, 2);
    EXPECT_EQ(got.wDay, 29);

    ASSERT_TRUE(picker.SetTime(nullptr));
    EXPECT_EQ(picker.GetTime(got), static_cast<DWORD>(GDT_NONE));

    // The date-time value overloads: no date is a null value, both ways.
    qv::OleDateTime value;
    ASSERT_TRUE(picker.GetTime(value));
    EXPECT_EQ(value.GetStatus(), qv::OleDateTime::null);
    ASSERT_TRUE(picker.SetTime(qv::OleDateTime(2001, 9, 8, 0, 0, 0)));
    ASSERT_TRUE(picker.GetTime(value));
    EXPECT_EQ(value.GetStatus(), qv::OleDateTime::valid);
    EXPECT_EQ(value.GetYear(), 2001);
    EXPECT_EQ(value.GetDay(), 8);
    qv::OleDateTime none;
    none.SetStatus(qv::OleDateTime::null);
    ASSERT_TRUE(picker.SetTime(none));
    EXPECT_EQ(picker.GetTime(got), static_cast<DWORD>(GDT_NONE));
    qv::OleDateTime bad(2023, 2, 29, 0, 0, 0);
    EXPECT_FALSE(picker.SetTime(bad)) << "an invalid value is not written";
    EXPECT_EQ(picker.GetTime(got), static_cast<DWORD>(GDT_NONE));
}

TEST_F(ControlsTest, ToolTipCountsItsTools) {
    qv::Button a, b;
    ASSERT_TRUE(a.Create(L"A", WS_CHILD | WS_VISIBLE, RECT{10, 10, 60, 30}, host_, 104));
    ASSERT_TRUE(b.Create(L"B", WS_CHILD | WS_VISIBLE, RECT{70, 10, 120, 30}, host_, 105));
    qv::ToolTipCtrl tip;
    ASSERT_TRUE(tip.Create(host_));
    EXPECT_EQ(tip.GetToolCount(), 0);
    EXPECT_TRUE(tip.AddTool(a, L"first"));
    EXPECT_TRUE(tip.AddTool(b, L"second"));
    RECT area{0, 0, 5, 5};
    EXPECT_TRUE(tip.AddTool(host_, L"corner", &area, 7));
    EXPECT_EQ(tip.GetToolCount(), 3);

    tip.UpdateTipText(L"changed", a);
    wchar_t text[80] = {};
    TTTOOLINFOW ti{};
    ti.cbSize = TTTOOLINFOW_V2_SIZE;
    ti.hwnd = host_;
    ti.uId = reinterpret_cast<UINT_PTR>(a.m_hWnd);
    ti.lpszText = text;
    tip.SendMessage(TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&ti));
    EXPECT_STREQ(text, L"changed");

    tip.DelTool(a);
    tip.DelTool(host_, 7);
    EXPECT_EQ(tip.GetToolCount(), 1);
}

TEST_F(ControlsTest, RichEditStreamsRtfInAndTextOut) {
    qv::RichEditCtrl rich;
    ASSERT_TRUE(rich.Create(WS_CHILD | WS_VISIBLE | ES_MULTILINE, rc_, host_, 106));
    const std::string rtf = "{\\rtf1\\ansi Hello \\b bold\\b0  world}";
    EXPECT_EQ(rich.StreamIn(SF_RTF, rtf), static_cast<long>(rtf.size()));
    EXPECT_EQ(rich.StreamOut(SF_TEXT), "Hello bold world");
    EXPECT_EQ(rich.GetTextLength(), 16);

    rich.SetSel(6, 10);
    CHARFORMAT2W cf{};
    cf.dwMask = CFM_BOLD;
    rich.GetSelectionCharFormat(cf);
    EXPECT_TRUE(cf.dwEffects & CFE_BOLD);
    rich.ReplaceSel(L"BOLD");
    EXPECT_EQ(rich.StreamOut(SF_TEXT), "Hello BOLD world");
    EXPECT_NE(rich.StreamOut(SF_RTF).find("{\\rtf"), std::string::npos);
}

TEST_F(ControlsTest, ListBoxPointsAndScrollBarPositions) {
    qv::ListBox list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LBS_NOTIFY, rc_, host_, 107));
    for (const wchar_t* s : {L"a", L"b", L"c"}) list.AddString(s);
    RECT item{};
    ASSERT_NE(list.GetItemRect(2, item), LB_ERR);
    bool outside = true;
    EXPECT_EQ(list.ItemFromPoint(POINT{item.left + 2, item.top + 1}, outside), 2u);
    EXPECT_FALSE(outside);
    list.ItemFromPoint(POINT{item.left + 2, item.bottom + 40}, outside);
    EXPECT_TRUE(outside);
    EXPECT_EQ(list.GetText(1), L"b");

    qv::ScrollBar bar;
    ASSERT_TRUE(bar.Create(WS_CHILD | WS_VISIBLE | SBS_HORZ, RECT{10, 220, 200, 236}, host_, 108));
    bar.SetScrollRange(0, 50);
    EXPECT_EQ(bar.SetScrollPos(20), 0);
    EXPECT_EQ(bar.GetScrollPos(), 20);
    SCROLLINFO si{};
    si.fMask = SIF_PAGE;
    si.nPage = 11;
    bar.SetScrollInfo(&si);
    EXPECT_EQ(bar.GetScrollLimit(), 40);
    bar.SetScrollPos(99);
    EXPECT_EQ(bar.GetScrollPos(), 40) << "clamped to the limit";
}

}  // namespace
