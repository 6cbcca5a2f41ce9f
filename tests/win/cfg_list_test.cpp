// The configuration list on a real list view: sorting by header clicks with
// whole rows moving, ranges that do not sort, and the export to a print-list
// object with its failures logged under the configuration tool's name.
#include "quorvel/lists/cfg_list.h"

#include <commctrl.h>

#include <map>
#include <string>
#include <vector>

#include "quorvel/frame/services.h"
#include "support/host.h"

namespace {

using Texts = std::vector<std::wstring>;

// A print-list object that records what it is handed and keeps to the
// ownership rules (it frees the header arrays it accepts).
class Recorder : public IZTPrintGenericListObject {
public:
    struct Column {
        Texts texts;
        std::vector<int> alignments;
    };
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = iid == IID_IUnknown || iid == IID_IZTPrintGenericListObject ? this : nullptr;
        return *out ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --refs; }
    HRESULT STDMETHODCALLTYPE SetColumnHeaders(int n, BSTR* names_, int* indices_, int* aligns) override {
        events.push_back(L"headers");
        for (int i = 0; i < n; ++i) {
            names.emplace_back(names_[i], ::SysStringLen(names_[i]));
            indices.push_back(indices_[i]);
            alignments.push_back(aligns[i]);
            ::SysFreeString(names_[i]);
        }
        for (void* array : {static_cast<void*>(names_), static_cast<void*>(indices_), static_cast<void*>(aligns)})
            ::CoTaskMemFree(array);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetColumnItems(int column, int rows, BSTR* texts, int* bitmaps, int* aligns) override {
        events.push_back(L"items " + std::to_wstring(column));
        Column& c = columns[column];
        for (int r = 0; r < rows; ++r) {
            c.texts.emplace_back(texts[r], ::SysStringLen(texts[r]));
            c.alignments.push_back(aligns[r]);
            if (bitmaps[r]) ++bitmapsSeen;
        }
        return column == refuseColumn ? S_FALSE : S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetColumnWidth(int column, int width) override { return widths[column] = width, S_OK; }
    HRESULT STDMETHODCALLTYPE ResetList() override { return events.push_back(L"reset"), S_OK; }
    HRESULT STDMETHODCALLTYPE PrintList(int, BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PreviewList(int, BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CopyToClipboard() override { return S_OK; }

    ULONG refs = 1;
    int refuseColumn = -1;
    int bitmapsSeen = 0;
    Texts events, names;
    std::vector<int> indices, alignments;
    std::map<int, int> widths;
    std::map<int, Column> columns;
};

class CfgListTest : public qvtest::HostTest {
protected:
    // A report list with columns `names` (formats `formats`, else left) and
    // rows `rows` (one text per column).
    void Make(XCfgListCtrl& list, Texts names, std::vector<Texts> rows, std::vector<int> formats = {}) {
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LVS_REPORT, RECT{10, 10, 610, 300}, host_, 100));
        for (size_t i = 0; i < names.size(); ++i)
            list.InsertColumn(static_cast<int>(i), names[i].c_str(), i < formats.size() ? formats[i] : LVCFMT_LEFT,
                              60 + 10 * static_cast<int>(i));
        for (size_t r = 0; r < rows.size(); ++r) {
            ASSERT_EQ(list.InsertItem(static_cast<int>(r), rows[r][0].c_str()), static_cast<int>(r));
            for (size_t c = 1; c < rows[r].size(); ++c)
                list.SetItemText(static_cast<int>(r), static_cast<int>(c), rows[r][c].c_str());
        }
    }
    static Texts ColumnTexts(XCfgListCtrl& list, int column) {
        Texts texts;
        for (int r = 0; r < list.GetItemCount(); ++r) texts.push_back(list.GetItemText(r, column));
        return texts;
    }
    static void ClickHeader(HWND header, int item) {
        RECT rc{};
        Header_GetItemRect(header, item, &rc);
        const LPARAM at = MAKELPARAM((rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2);
        ::SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, at);
        ::SendMessageW(header, WM_LBUTTONUP, 0, at);
    }
    static std::wstring LastLog() {
        const auto& log = qv::Services::DefaultLogBook().Entries();
        return log.empty() ? L"" : qvtest::Describe(log.back());
    }
};

TEST_F(CfgListTest, HeaderClicksSortAscendingFirstAndTheSameColumnAgainTurnsRound) {
    XCfgListCtrl list;
    Make(list, {L"Name", L"Key"}, {{L"b", L"2"}, {L"B", L"4"}, {L"a", L"1"}, {L"C", L"3"}});
    HWND header = list.GetHeaderCtrl();
    const struct { int column; bool ascending; Texts names; } clicks[] = {
        {0, true, {L"B", L"C", L"a", L"b"}},   // upper case first
        {0, false, {L"b", L"a", L"C", L"B"}},
        {1, true, {L"a", L"b", L"C", L"B"}},   // a new column starts ascending
        {1, false, {L"B", L"C", L"b", L"a"}},
        {0, true, {L"B", L"C", L"a", L"b"}},   // and so does a column sorted before
    };
    for (const auto& c : clicks) {
        ClickHeader(header, c.column);
        EXPECT_EQ(ColumnTexts(list, 0), c.names) << c.column;
        EXPECT_EQ(list.GetSortHeader().GetSortColumn(), c.column);
        EXPECT_EQ(list.GetSortHeader().IsSortAscending(), c.ascending) << c.column;
    }
    // The header's click notifications, in either character set; only the
    // left button sorts.
    const struct { UINT code; int item, button, column; bool ascending; } notes[] = {
        {HDN_ITEMCLICKW, 1, 1, 0, true}, {HDN_ITEMCLICKA, 1, 2, 0, true},  // right and middle: nothing
        {HDN_ITEMCLICKA, 0, 0, 0, false}, {HDN_ITEMCLICKW, 1, 0, 1, true},
    };
    for (const auto& n : notes) {
        NMHEADERW nm{};
        nm.hdr = NMHDR{header, 0, n.code};
        nm.iItem = n.item;
        nm.iButton = n.button;
        ::SendMessageW(list, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&nm));
        EXPECT_EQ(list.GetSortHeader().GetSortColumn(), n.column) << n.code << " button " << n.button;
        EXPECT_EQ(list.GetSortHeader().IsSortAscending(), n.ascending) << n.code << " button " << n.button;
    }
    EXPECT_EQ(ColumnTexts(list, 0), (Texts{L"a", L"b", L"C", L"B"}));
}

TEST_F(CfgListTest, TheListDrawsTheArrowOfItsHeader) {
    XCfgListCtrl list;
    Make(list, {L"Name", L"Other"}, {{L"b", L"x"}, {L"a", L"y"}});
    HWND header = list.GetHeaderCtrl();
    const COLORREF light = ::GetSysColor(COLOR_BTNHILIGHT), dark = ::GetSysColor(COLOR_BTNSHADOW);
    ASSERT_NE(light, dark);
    HDC dc = ::GetDC(header);
    HGDIOBJ old = ::SelectObject(dc, reinterpret_cast<HGDIOBJ>(::SendMessageW(header, WM_GETFONT, 0, 0)));
    SIZE blank{};
    ::GetTextExtentPoint32W(dc, L" ", 1, &blank);
    ::SelectObject(dc, old);
    const int off = 2 * blank.cx;
    // A pixel only the highlight stroke draws and one only the shadow stroke draws.
    for (bool ascending : {true, false}) {
        ASSERT_TRUE(list.SortCtrl(1, ascending));
        ::RedrawWindow(header, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        qvtest::Pump(100);
        RECT rc{};
        Header_GetItemRect(header, 1, &rc);
        const int r = rc.right, b = rc.bottom;
        const POINT lightAt = ascending ? POINT{r - 2 * off, b - off} : POINT{r - 3 * off / 2, off - 1};
        const POINT darkAt = ascending ? POINT{r - 5 * off / 2 - 1, b - off - 1} : POINT{r - 2 * off, off - 1};
        EXPECT_EQ(::GetPixel(dc, lightAt.x, lightAt.y), light) << ascending;
        EXPECT_EQ(::GetPixel(dc, darkAt.x, darkAt.y), dark) << ascending;
    }
    ::ReleaseDC(header, dc);
}

TEST_F(CfgListTest, AnEditedLabelIsTakenAndACancelledOneIsNot) {
    XCfgListCtrl list;
    Make(list, {L"A"}, {{L"old"}, {L"keep"}});
    list.ModifyStyle(0, LVS_EDITLABELS);
    list.SetFocus();
    const struct { int row; UINT key; const wchar_t* shown; } edits[] = {
        {0, VK_RETURN, L"new"}, {1, VK_ESCAPE, L"keep"},
    };
    for (const auto& e : edits) {
        HWND edit = ListView_EditLabel(list, e.row);
        ASSERT_TRUE(edit) << e.row;
        ::SetWindowTextW(edit, L"new");
        ::SendMessageW(edit, WM_KEYDOWN, e.key, 0);
        qvtest::Pump(50);
        EXPECT_EQ(list.GetItemText(e.row, 0), e.shown) << e.row;
    }
}

TEST_F(CfgListTest, WholeRowsMoveTogether) {
    XCfgListCtrl list;
    Make(list, {L"A", L"B", L"C"}, {{L"x", L"3", L"three"}, {L"y", L"1", L"one"}, {L"z", L"2", L"two"}});
    const UINT states[] = {LVIS_SELECTED | INDEXTOOVERLAYMASK(1), 0, INDEXTOOVERLAYMASK(2) | LVIS_CUT};
    for (int r = 0; r < 3; ++r) {
        LVITEMW item{};
        item.mask = LVIF_IMAGE | LVIF_PARAM | LVIF_STATE;
        item.iItem = r;
        item.iImage = 10 + r;
        item.lParam = 100 + r;
        item.state = states[r];
        item.stateMask = LVIS_SELECTED | LVIS_CUT | LVIS_OVERLAYMASK;
        ASSERT_TRUE(list.SetItem(&item));
    }
    ASSERT_TRUE(list.SortCtrl(1, true));
    EXPECT_EQ(ColumnTexts(list, 2), (Texts{L"one", L"two", L"three"}));
    EXPECT_EQ(ColumnTexts(list, 0), (Texts{L"y", L"z", L"x"}));
    const int from[] = {1, 2, 0};  // where each row came from
    for (int r = 0; r < 3; ++r) {
        LVITEMW item{};
        item.mask = LVIF_IMAGE | LVIF_PARAM | LVIF_STATE;
        item.iItem = r;
        item.stateMask = LVIS_SELECTED | LVIS_CUT | LVIS_OVERLAYMASK;
        ASSERT_TRUE(list.GetItem(&item));
        EXPECT_EQ(item.iImage, 10 + from[r]) << r;
        EXPECT_EQ(item.lParam, 100 + from[r]) << r;
        EXPECT_EQ(item.state, states[from[r]]) << r;
    }
}

TEST_F(CfgListTest, RangesThatCannotSortFailAndLeaveTheArrow) {
    XCfgListCtrl one, three;
    Make(one, {L"A"}, {{L"b"}});
    Make(three, {L"A", L"B"}, {{L"c", L"1"}, {L"b", L"2"}, {L"a", L"3"}});
    EXPECT_FALSE(one.SortCtrl(0, true)) << "a single row";
    EXPECT_EQ(one.GetSortHeader().GetSortColumn(), -1);
    ASSERT_TRUE(three.SortCtrl(1, false));
    const Texts sorted = ColumnTexts(three, 0);
    ASSERT_EQ(sorted, (Texts{L"a", L"b", L"c"}));
    const struct { int column, low, high; } ranges[] = {
        {0, 1, 1}, {0, 2, 1}, {2, 0, -1}, {-1, 0, -1}, {0, 0, 3}, {0, -1, 2},
    };
    for (const auto& r : ranges) {
        EXPECT_FALSE(three.SortTextItems(r.column, true, r.low, r.high)) << r.column << " " << r.low << ".." << r.high;
        EXPECT_EQ(ColumnTexts(three, 0), sorted);
    }
    EXPECT_TRUE(three.SortTextItems(0, false, 1, 2));
    EXPECT_EQ(ColumnTexts(three, 0), (Texts{L"a", L"c", L"b"})) << "only rows 1 and 2";
    EXPECT_EQ(three.GetSortHeader().GetSortColumn(), 1) << "a range sort leaves the arrow";
    EXPECT_FALSE(three.GetSortHeader().IsSortAscending());
}

TEST_F(CfgListTest, ExportHandsColumnsInDisplayOrderWithHeaderAlignments) {
    XCfgListCtrl list;
    Make(list, {L"Left", L"Right", L"Centre"}, {{L"a", L"1", L"x"}, {L"b", L"2", L"y"}},
         {LVCFMT_LEFT, LVCFMT_RIGHT, LVCFMT_CENTER});
    int order[] = {2, 0, 1};
    ASSERT_TRUE(ListView_SetColumnOrderArray(list, 3, order));
    Recorder rec;
    EXPECT_TRUE(list.PrintListSetColNameSize(&rec));
    EXPECT_TRUE(list.PrintListSetItemData(&rec));
    EXPECT_EQ(rec.events, (Texts{L"headers", L"items 0", L"items 1", L"items 2"}));
    EXPECT_EQ(rec.names, (Texts{L"Centre", L"Left", L"Right"}));
    EXPECT_EQ(rec.indices, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(rec.alignments, (std::vector<int>{4, 0, 3}));
    EXPECT_EQ(rec.widths, (std::map<int, int>{{0, 80}, {1, 60}, {2, 70}}));
    const std::vector<Texts> texts = {{L"x", L"y"}, {L"a", L"b"}, {L"1", L"2"}};
    const int cellAlignments[] = {4, 0, 3};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(rec.columns[i].texts, texts[static_cast<size_t>(i)]) << i;
        EXPECT_EQ(rec.columns[i].alignments, std::vector<int>(2, cellAlignments[i])) << i;
    }
    EXPECT_EQ(rec.bitmapsSeen, 0);
    EXPECT_EQ(rec.refs, 1u) << "no reference kept";
}

TEST_F(CfgListTest, ExportFailuresResetTheObjectAndLogUnderTheToolsName) {
    const std::wstring header = L"ZTConfigTool| XCfgListCtrl::PrintListSetColNameSize|333|"
                                L"Can't create header for printing lists|00000000";
    const std::wstring items = L"ZTConfigTool| XCfgListCtrl::PrintListSetItemData|439|"
                               L"Can't create data for printing lists|0000000";
    XCfgListCtrl rows, noColumns;
    Make(rows, {L"A", L"B", L"C"}, {{L"1", L"2", L"3"}});
    Make(noColumns, {}, {});

    qv::Services::DefaultLogBook().Clear();
    EXPECT_FALSE(rows.PrintListSetColNameSize(nullptr));
    EXPECT_EQ(LastLog(), header);
    EXPECT_FALSE(rows.PrintListSetItemData(nullptr));
    EXPECT_EQ(LastLog(), items + L"0");

    Recorder refusing;
    refusing.refuseColumn = 1;
    EXPECT_FALSE(rows.PrintListSetItemData(&refusing));
    EXPECT_EQ(refusing.events, (Texts{L"items 0", L"items 1", L"reset"}));
    EXPECT_EQ(LastLog(), items + L"1");

    Recorder empty;
    EXPECT_FALSE(noColumns.PrintListSetColNameSize(&empty));
    EXPECT_EQ(LastLog(), header);
    EXPECT_FALSE(noColumns.PrintListSetItemData(&empty));
    EXPECT_EQ(LastLog(), items + L"0");
    EXPECT_EQ(empty.events, (Texts{L"reset", L"reset"}));
    EXPECT_EQ(empty.refs, 1u);
}

}  // namespace
