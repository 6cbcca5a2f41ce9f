// The stock-control wrappers drive the real controls: what a wrapper sets is
// what the control shows and answers.
#include "quorvel/platform/controls.h"

#include "quorvel/platform/datetime.h"

#include <tuple>
#include <utility>
#include "support/host.h"

namespace {

using qvtest::HostTest;

class ControlsTest : public HostTest {
protected:
    RECT rc_{10, 10, 300, 200};
};

TEST_F(ControlsTest, EditSelectionAndReplacement) {
    struct Case { int start, end; const wchar_t* insert; const wchar_t* text; int caret; } cases[] = {
        {0, 5, L"HELLO", L"HELLO world", 5}, {6, 11, L"", L"hello ", 6}, {11, 11, L"!", L"hello world!", 12},
        {5, 0, L",", L", world", 1},  // a reversed range is the same range
    };
    qv::Edit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, rc_, host_, 100));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        edit.SetWindowText(L"hello world");
        edit.SetSel(c.start, c.end);
        edit.ReplaceSel(c.insert);
        EXPECT_EQ(std::tuple(edit.GetWindowText(), qvtest::SelOf(edit)),
                  std::tuple(c.text, std::pair(c.caret, c.caret)));
    }
    edit.LimitText(4);
    edit.SetWindowText(L"");
    qvtest::TypeChars(edit, L"abcdef");
    EXPECT_EQ(edit.GetWindowText(), L"abcd");
}

TEST_F(ControlsTest, ListViewColumnsItemsAndHeader) {
    qv::ListCtrl list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, rc_, host_, 102));
    EXPECT_EQ(list.InsertColumn(0, L"Name", LVCFMT_LEFT, 80), 0);
    EXPECT_EQ(list.InsertColumn(1, L"Value", LVCFMT_RIGHT, 120), 1);

    const std::wstring longText(700, L'x');  // longer than the first read buffer
    const std::pair<const wchar_t*, std::wstring> rows[] = {{L"one", L"1"}, {L"two", longText}, {L"three", L""}};
    for (int i = 0; i < 3; ++i) {
        ASSERT_EQ(list.InsertItem(i, rows[i].first), i);
        EXPECT_TRUE(list.SetItemText(i, 1, rows[i].second.c_str()));
        EXPECT_EQ(std::tuple(list.GetItemText(i, 0), list.GetItemText(i, 1)), std::tuple(rows[i].first, rows[i].second));
    }

    RECT cell{};
    ASSERT_TRUE(list.GetSubItemRect(2, 1, LVIR_BOUNDS, cell));
    LVHITTESTINFO hit{};
    hit.pt = POINT{cell.left + 3, (cell.top + cell.bottom) / 2};
    EXPECT_EQ(list.SubItemHitTest(&hit), 2);
    EXPECT_EQ(hit.iSubItem, 1);

    qv::HeaderCtrl header;
    ASSERT_TRUE(header.Attach(list.GetHeaderCtrl()));
    EXPECT_TRUE(list.DeleteColumn(0) && list.DeleteItem(0));
    EXPECT_EQ(std::tuple(header.GetItemCount(), list.GetItemCount()), std::tuple(1, 2));
}

TEST_F(ControlsTest, DatePickerWithShowNoneHoldsNoDate) {
    qv::DateTimeCtrl picker;
    ASSERT_TRUE(picker.Create(WS_CHILD | WS_VISIBLE | DTS_SHOWNONE | DTS_SHORTDATEFORMAT, rc_, host_, 103));
    SYSTEMTIME got{};
    ASSERT_TRUE(picker.SetTime(nullptr));
    EXPECT_EQ(picker.GetTime(got), static_cast<DWORD>(GDT_NONE));

    // The date-time value overloads: no date is a null value, both ways.
    qv::OleDateTime value;
    ASSERT_TRUE(picker.GetTime(value));
    EXPECT_EQ(value.GetStatus(), qv::OleDateTime::null);
    ASSERT_TRUE(picker.SetTime(qv::OleDateTime(2001, 9, 8, 0, 0, 0)));
    ASSERT_TRUE(picker.GetTime(value));
    EXPECT_EQ(value.GetStatus(), qv::OleDateTime::valid);
    EXPECT_EQ(std::tuple(value.GetYear(), value.GetDay()), std::tuple(2001, 8));
    qv::OleDateTime none;
    none.SetStatus(qv::OleDateTime::null);
    ASSERT_TRUE(picker.SetTime(none));
    EXPECT_EQ(picker.GetTime(got), static_cast<DWORD>(GDT_NONE));
    qv::OleDateTime bad(2023, 2, 29, 0, 0, 0);
    EXPECT_FALSE(picker.SetTime(bad)) << "an invalid value is not written";
    EXPECT_EQ(picker.GetTime(got), static_cast<DWORD>(GDT_NONE));
}

TEST_F(ControlsTest, RichEditStreamsRtfInAndTextOut) {
    qv::RichEditCtrl rich;
    ASSERT_TRUE(rich.Create(WS_CHILD | WS_VISIBLE | ES_MULTILINE, rc_, host_, 106));
    const std::string rtf = "{\\rtf1\\ansi Hello \\b bold\\b0  world}";
    EXPECT_EQ(rich.StreamIn(SF_RTF, rtf), static_cast<long>(rtf.size()));
    EXPECT_EQ(std::tuple(rich.StreamOut(SF_TEXT), rich.GetTextLength()), std::tuple("Hello bold world", 16));

    rich.SetSel(6, 10);
    CHARFORMAT2W cf{};
    cf.dwMask = CFM_BOLD;
    rich.GetSelectionCharFormat(cf);
    EXPECT_TRUE(cf.dwEffects & CFE_BOLD);
    rich.ReplaceSel(L"BOLD");
    EXPECT_EQ(rich.StreamOut(SF_TEXT), "Hello BOLD world");
    EXPECT_NE(rich.StreamOut(SF_RTF).find("{\\rtf"), std::string::npos);
}

}  // namespace
