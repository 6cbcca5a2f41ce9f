// The report list on a real list view: rows taken or refused, cell texts
// through the list view's own text requests, sorting by header clicks, the
// pinned image column, the sort arrow's pixels, rows freed whoever deletes
// them and whatever is destroyed first, and the export to a print-list object
// with the context menu that starts it.
#include "quorvel/lists/list_ctrl.h"

#include <commctrl.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "quorvel/frame/services.h"
#include "quorvel/platform/datetime.h"
#include "quorvel/platform/imagelist.h"
#include "support/host.h"

namespace {

using qv::Variant;
using Values = std::vector<Variant>;

// An IUnknown that counts its references: rows holding it as a value show
// how many copies of those values are alive.
class Counted : public IUnknown {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = iid == IID_IUnknown ? this : nullptr;
        return *out ? (AddRef(), S_OK) : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --refs; }
    Variant Value() {
        Variant v;
        v.vt = VT_UNKNOWN;
        v.punkVal = this;
        AddRef();
        return v;
    }
    ULONG refs = 1;
};

// A print-list object that records what it is handed and keeps to the
// ownership rules: it frees the header arrays it accepts, and deletes the
// cells' bitmaps after measuring them ({0, 0}: none; {-1, -1}: no bitmap).
class Recorder : public IZTPrintGenericListObject {
public:
    struct Column {
        std::vector<std::wstring> texts;
        std::vector<SIZE> bitmaps;
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
            if (headerAnswer == S_OK) ::SysFreeString(names_[i]);
        }
        if (headerAnswer == S_OK) {
            for (void* array : {static_cast<void*>(names_), static_cast<void*>(indices_), static_cast<void*>(aligns)})
                ::CoTaskMemFree(array);
        }
        return headerAnswer;
    }
    HRESULT STDMETHODCALLTYPE SetColumnItems(int column, int rows, BSTR* texts, int* bitmaps, int* aligns) override {
        events.push_back(L"items " + std::to_wstring(column));
        Column& c = columns[column];
        for (int r = 0; r < rows; ++r) {
            c.texts.emplace_back(texts[r], ::SysStringLen(texts[r]));
            c.alignments.push_back(aligns[r]);
            HGDIOBJ bitmap = reinterpret_cast<HGDIOBJ>(static_cast<INT_PTR>(bitmaps[r]));
            BITMAP info{};
            const bool real = bitmap && ::GetObjectType(bitmap) == OBJ_BITMAP && ::GetObjectW(bitmap, sizeof info, &info);
            c.bitmaps.push_back(!bitmap ? SIZE{0, 0} : real ? SIZE{info.bmWidth, info.bmHeight} : SIZE{-1, -1});
            if (bitmap) ::DeleteObject(bitmap);
        }
        return column == refuseColumn ? S_FALSE : S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetColumnWidth(int column, int width) override { return widths[column] = width, S_OK; }
    HRESULT STDMETHODCALLTYPE ResetList() override { return events.push_back(L"reset"), S_OK; }
    HRESULT STDMETHODCALLTYPE PrintList(int reserved, BSTR form) override {
        return events.push_back(L"print " + std::to_wstring(reserved) + L" " + form), S_OK;
    }
    HRESULT STDMETHODCALLTYPE PreviewList(int reserved, BSTR form) override {
        return events.push_back(L"preview " + std::to_wstring(reserved) + L" " + form), S_OK;
    }
    HRESULT STDMETHODCALLTYPE CopyToClipboard() override { return events.push_back(L"copy"), S_OK; }

    ULONG refs = 1;
    HRESULT headerAnswer = S_OK;
    int refuseColumn = -1;
    std::vector<std::wstring> events, names;
    std::vector<int> indices, alignments;
    std::map<int, int> widths;
    std::map<int, Column> columns;
};

// Texts shown to the user come through here marked, so a test sees that
// they were translated.
class Brackets : public qv::ITranslationService {
public:
    std::wstring Translate(std::wstring_view text) override { return L"[" + std::wstring(text) + L"]"; }
};

Variant Text(const wchar_t* s) { return Variant(s); }
Variant Date(int y, int m, int d) { return Variant::FromDate(qv::OleDateTime(y, m, d, 0, 0, 0).m_dt); }
using Texts = std::vector<std::wstring>;

// Exposes the comparison of a sort.
struct ListProbe : XBaseListCtrl {
    using XBaseListCtrl::CompareFunc;
};

class ListCtrlTest : public qvtest::HostTest {
protected:
    void TearDown() override {
        qv::Services::SetTranslation(nullptr);
        HostTest::TearDown();
    }
    // A list on the host with columns named by `names` (formats by `formats`, else left).
    void Make(XBaseListCtrl& list, Texts names, std::vector<int> formats = {}, DWORD style = LVS_REPORT) {
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | style, RECT{10, 10, 610, 300}, host_, 100));
        for (size_t i = 0; i < names.size(); ++i)
            list.InsertColumn(static_cast<int>(i), names[i].c_str(), i < formats.size() ? formats[i] : LVCFMT_LEFT, 90);
    }
    // A 16 x 16 image list of two icons.
    qv::ImageList& Images() {
        if (!images_.GetSafeHandle()) {
            images_.Create(16, 16, ILC_COLOR32 | ILC_MASK, 2, 0);
            images_.Add(::LoadIconW(nullptr, IDI_APPLICATION));
            images_.Add(::LoadIconW(nullptr, IDI_WARNING));
        }
        return images_;
    }
    // The texts of a column as the list view shows them.
    static Texts ColumnTexts(HWND list, int column) {
        Texts texts;
        for (int r = 0; r < ListView_GetItemCount(list); ++r) {
            wchar_t text[128] = {};
            ListView_GetItemText(list, r, column, text, 128);
            texts.push_back(text);
        }
        return texts;
    }
    // The mouse: a click on header item `item`, a right click on row 0.
    static void ClickHeader(HWND header, int item) {
        RECT rc{};
        Header_GetItemRect(header, item, &rc);
        const LPARAM at = MAKELPARAM((rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2);
        ::SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, at);
        ::SendMessageW(header, WM_LBUTTONUP, 0, at);
    }
    static void RightClick(XBaseListCtrl& list) {
        RECT row{};
        list.GetItemRect(0, row, LVIR_LABEL);
        const LPARAM at = MAKELPARAM(row.left + 5, (row.top + row.bottom) / 2);
        ::PostMessageW(list, WM_RBUTTONUP, 0, at);
        ::SendMessageW(list, WM_RBUTTONDOWN, MK_RBUTTON, at);
        qvtest::Pump(50);
    }
    static std::wstring LastLog() {
        const auto& log = qv::Services::DefaultLogBook().Entries();
        return log.empty() ? L"" : qvtest::Describe(log.back());
    }
    qv::ImageList images_;
};

TEST_F(ListCtrlTest, RowsMustFitTheColumnsAndTheImageRule) {
    XBaseListCtrl plain, pictured, empty;
    Make(plain, {L"A", L"B"});
    ASSERT_TRUE(pictured.AssignImageList(&Images()));
    EXPECT_FALSE(pictured.AssignImageList(&Images())) << "only once";
    Make(pictured, {L"", L"A", L"B"});
    Make(empty, {});
    const struct { XBaseListCtrl* list; size_t values; int image; bool taken; const char* what; } cases[] = {
        {&plain, 2, -1, true, "plain row"},          {&plain, 2, 0, false, "an image without image list"},
        {&plain, 1, -1, false, "one value too few"}, {&plain, 3, -1, false, "one value too many"},
        {&plain, 0, -1, false, "no values"},         {&pictured, 2, 1, true, "row with image"},
        {&pictured, 2, -1, false, "no image"},       {&pictured, 3, 0, false, "a value for the image column"},
        {&empty, 0, -1, false, "no columns"},
    };
    for (const auto& c : cases) {
        const int before = c.list->GetItemCount();
        EXPECT_EQ(c.list->AddEntry(Values(c.values, Text(L"x")), 0, c.image), c.taken) << c.what;
        EXPECT_EQ(c.list->GetItemCount(), before + (c.taken ? 1 : 0)) << c.what;
    }
    XBaseListCtrl windowless;
    EXPECT_FALSE(windowless.AddEntry(Values(2, Text(L"x")), 0, -1));
}

TEST_F(ListCtrlTest, ACreatedListIsSingleSelectionASubclassedOneKeepsItsMode) {
    HWND hostList = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_ICON, 0, 0, 200, 200, host_,
                                      reinterpret_cast<HMENU>(9), nullptr, nullptr);
    XBaseListCtrl created, subclassed;
    Make(created, {L"A"}, {}, LVS_ICON);
    ASSERT_TRUE(subclassed.SubclassDlgItem(9, host_));
    for (XBaseListCtrl* list : {&created, &subclassed}) {
        EXPECT_EQ(list->GetStyle() & LVS_TYPEMASK, static_cast<DWORD>(LVS_REPORT));
        EXPECT_EQ(list->GetExtendedStyle(), static_cast<DWORD>(XBaseListCtrl::kExtendedStyle));
        EXPECT_EQ(list->GetSortHeader().m_hWnd, list->GetHeaderCtrl());
    }
    EXPECT_TRUE(created.GetStyle() & LVS_SINGLESEL);
    EXPECT_FALSE(::GetWindowLongPtrW(hostList, GWL_STYLE) & LVS_SINGLESEL);
}

TEST_F(ListCtrlTest, CellsShowTheirValuesAsTextDatesInTheUsersFormat) {
    qvtest::LocaleOverride locale(LOCALE_SSHORTDATE, L"dd.MM.yyyy");
    XBaseListCtrl list;
    ASSERT_TRUE(list.AssignImageList(&Images()));
    Make(list, {L"", L"Value"});
    Counted counted;
    const Variant values[] = {Text(L"Text"), Variant(42),     Variant(2.5),   Date(2023, 12, 24),
                              Variant::Null(), counted.Value(), Variant(-7LL)};
    for (const Variant& v : values) ASSERT_TRUE(list.AddEntry({v}, list.GetItemCount(), 0));
    EXPECT_EQ(ColumnTexts(list, 1), (Texts{L"Text", L"42", L"2.5", L"24.12.2023", L"", L"", L"-7"}));
    EXPECT_EQ(ColumnTexts(list, 0), Texts(7)) << "the image column has no text";
}

TEST_F(ListCtrlTest, RowsAreReadChangedAndDeletedWithinTheirBounds) {
    XBaseListCtrl list;
    Make(list, {L"A", L"B"});
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(list.AddEntry({Variant(i), Variant(10 * i)}, i, -1));
    // `out` is cleared once the bounds are passed, and left alone before.
    const struct { int row, column; bool found; VARTYPE vt; long value; } cases[] = {
        {0, 0, true, VT_I4, 0},      {2, 1, true, VT_I4, 20},    {1, 1, true, VT_I4, 10},
        {3, 0, false, VT_EMPTY, 0},  // the row at the count passes the bounds and is not there
        {0, 2, false, VT_EMPTY, 0},  {-1, 0, false, VT_EMPTY, 0},
        {4, 0, false, VT_I4, 99},    {0, 3, false, VT_I4, 99},
    };
    for (const auto& c : cases) {
        Variant out(99);
        EXPECT_EQ(list.GetData(c.row, c.column, out), c.found) << c.row << "," << c.column;
        EXPECT_EQ(out.vt, c.vt) << c.row << "," << c.column;
        if (c.vt == VT_I4) {
            EXPECT_EQ(out.lVal, c.value) << c.row << "," << c.column;
        }
    }
    Variant sel;
    EXPECT_FALSE(list.GetSelData(1, sel)) << "nothing selected";
    EXPECT_FALSE(list.SelectRow(3));
    ASSERT_TRUE(list.SelectRow(2));
    ASSERT_TRUE(list.SelectRow(1));
    EXPECT_EQ(list.GetSelectedCount(), 1);
    EXPECT_TRUE(list.GetSelData(1, sel));
    EXPECT_EQ(sel.lVal, 10);

    EXPECT_TRUE(list.ChangeEntry({Text(L"one"), Text(L"ten")}, 1, -1));
    EXPECT_EQ(ColumnTexts(list, 1), (Texts{L"0", L"ten", L"20"}));
    EXPECT_EQ(list.GetSelectedCount(), 0) << "the changed row is no longer selected";
    EXPECT_FALSE(list.ChangeEntry({Text(L"x"), Text(L"y")}, 3, -1));
    EXPECT_FALSE(list.DeleteRow(3));
    EXPECT_TRUE(list.DeleteRow(0));
    EXPECT_EQ(ColumnTexts(list, 0), (Texts{L"one", L"2"}));
}

TEST_F(ListCtrlTest, HeaderClicksSortWithOneDirectionForAllColumns) {
    XBaseListCtrl list;
    Make(list, {L"Name", L"Count"}, {LVCFMT_LEFT, LVCFMT_RIGHT});
    for (const auto& [name, count] : {std::pair{L"b", 1}, {L"c", 3}, {L"a", 2}})
        ASSERT_TRUE(list.AddEntry({Text(name), Variant(count)}, list.GetItemCount(), -1));
    HWND header = list.GetHeaderCtrl();
    const struct { int column; Texts names; bool ascending; } clicks[] = {
        {0, {L"a", L"b", L"c"}, true},
        {1, {L"c", L"a", L"b"}, false},  // another column: the direction turns round all the same
        {1, {L"b", L"a", L"c"}, true},
        {0, {L"c", L"b", L"a"}, false},
    };
    for (const auto& c : clicks) {
        ClickHeader(header, c.column);
        EXPECT_EQ(ColumnTexts(list, 0), c.names) << "column " << c.column;
        EXPECT_EQ(list.GetSortHeader().GetSortColumn(), c.column);
        EXPECT_EQ(list.GetSortHeader().IsSortAscending(), c.ascending);
        HDITEMW hdi{};
        hdi.mask = HDI_FORMAT;
        Header_GetItem(header, c.column, &hdi);
        EXPECT_TRUE(hdi.fmt & HDF_OWNERDRAW);
        EXPECT_EQ((hdi.fmt & HDF_RIGHT) != 0, c.column == 1) << "the format keeps its alignment";
    }
}

TEST_F(ListCtrlTest, ValuesThatDoNotCompareAreEqual) {
    XBaseListCtrl list;
    Make(list, {L"A"});
    ASSERT_TRUE(list.AddEntry({Variant(1)}, 0, -1));  // keys the column: key 0
    Counted counted;
    const struct { Variant a, b; int order; } cases[] = {
        {Variant(1), Variant(2), -1},       {Text(L"b"), Text(L"a"), 1},      {Variant(2.5), Variant(2), 1},
        {Date(2020, 1, 1), Date(2021, 1, 1), -1}, {Variant(3), Text(L"3"), -1},  // a number before a text
        {Variant::Null(), Variant::Null(), 0},    {Variant::Null(), Variant(1), 0},
        {counted.Value(), Variant(1), 0},   {Text(L"a"), counted.Value(), 0},
    };
    for (const auto& c : cases) {
        XBaseListCtrl::RowData a{{0, c.a}}, b{{0, c.b}}, other{{5, c.b}};
        auto cmp = [](const auto& x, const auto& y, const XClickData& click) {
            return ListProbe::CompareFunc(reinterpret_cast<LPARAM>(&x), reinterpret_cast<LPARAM>(&y),
                                          reinterpret_cast<LPARAM>(&click));
        };
        for (const bool ascending : {true, false}) {
            const XClickData click(0, ascending, &list.GetSortHeader());
            EXPECT_EQ(cmp(a, b, click), ascending ? c.order : -c.order) << c.a.vt << " vs " << c.b.vt;
            EXPECT_EQ(cmp(a, other, click), 0) << "a row without the column";
        }
        EXPECT_EQ(cmp(a, b, XClickData(0, true, nullptr)), 0) << "no header";
    }
}

TEST_F(ListCtrlTest, TheSortArrowIsDrawnInTheSortColumn) {
    XBaseListCtrl list;
    Make(list, {L"Name", L"Other"});
    // Two rows: the sort's comparisons are what set the sort column.
    ASSERT_TRUE(list.AddEntry({Text(L"b"), Text(L"x")}, 0, -1));
    ASSERT_TRUE(list.AddEntry({Text(L"a"), Text(L"y")}, 1, -1));
    HWND header = list.GetHeaderCtrl();
    const COLORREF light = ::GetSysColor(COLOR_BTNHILIGHT), dark = ::GetSysColor(COLOR_BTNSHADOW),
                   face = ::GetSysColor(COLOR_BTNFACE);
    ASSERT_TRUE(light != dark && light != face && dark != face);
    HDC dc = ::GetDC(header);
    HGDIOBJ old = ::SelectObject(dc, reinterpret_cast<HGDIOBJ>(::SendMessageW(header, WM_GETFONT, 0, 0)));
    SIZE blank{};
    ::GetTextExtentPoint32W(dc, L" ", 1, &blank);
    ::SelectObject(dc, old);
    const int off = 2 * blank.cx;
    // A pixel that only the highlight stroke draws and one that only the
    // shadow stroke draws (it goes second), in header item `item`.
    auto pixels = [&](int item, bool ascending) {
        RECT rc{};
        Header_GetItemRect(header, item, &rc);
        const int r = rc.right, b = rc.bottom;
        const POINT lightAt = ascending ? POINT{r - 2 * off, b - off} : POINT{r - 3 * off / 2, off - 1};
        const POINT darkAt = ascending ? POINT{r - 5 * off / 2 - 1, b - off - 1} : POINT{r - 2 * off, off - 1};
        return std::pair{::GetPixel(dc, lightAt.x, lightAt.y), ::GetPixel(dc, darkAt.x, darkAt.y)};
    };
    const struct { int column; bool ascending; } clicks[] = {{0, true}, {0, false}, {1, true}};
    for (const auto& c : clicks) {
        ClickHeader(header, c.column);
        ::RedrawWindow(header, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        qvtest::Pump(100);
        EXPECT_EQ(pixels(c.column, c.ascending), std::pair(light, dark)) << c.column << " " << c.ascending;
    }
    // Column 0 is still drawn by the header object, without its arrow.
    EXPECT_EQ(pixels(0, true), std::pair(face, face));
    EXPECT_EQ(pixels(0, false), std::pair(face, face));
    ::ReleaseDC(header, dc);
}

TEST_F(ListCtrlTest, TheImageColumnStaysInPlace) {
    XBaseListCtrl list;
    ASSERT_TRUE(list.AssignImageList(&Images()));
    Make(list, {L"", L"A", L"B"});
    ASSERT_TRUE(list.AddEntry({Text(L"b"), Text(L"x")}, 0, 0));
    ASSERT_TRUE(list.AddEntry({Text(L"a"), Text(L"y")}, 1, 1));
    HWND header = list.GetHeaderCtrl();
    // Header notifications as the header sends them to the list: 1 refuses.
    HDITEMW first{}, last{};
    first.mask = last.mask = HDI_ORDER;
    last.iOrder = 2;
    const struct { UINT code; int item; HDITEMW* pitem; LRESULT answer; } cases[] = {
        {HDN_BEGINTRACKW, 0, nullptr, 1},      {HDN_BEGINTRACKW, 1, nullptr, 0},
        {HDN_DIVIDERDBLCLICKW, 0, nullptr, 1}, {HDN_ITEMCHANGEDW, 0, &last, 1},
        {HDN_ENDDRAG, 0, &last, 1},            {HDN_ENDDRAG, 2, &first, 1},  // dropped in front of it
        {HDN_ENDDRAG, 2, &last, 0},            {HDN_BEGINDRAG, 1, &first, 1},
        {HDN_BEGINDRAG, 0, nullptr, 1},        {HDN_BEGINDRAG, 2, nullptr, 0},
    };
    for (const auto& c : cases) {
        NMHEADERW nm{{header, 0, c.code}, c.item, 0, c.pitem};
        EXPECT_EQ(::SendMessageW(list, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&nm)), c.answer)
            << "code " << static_cast<int>(c.code) << " item " << c.item;
    }
    // The mouse: the image column's divider does not move; the next one does.
    for (const int item : {0, 1}) {
        RECT rc{};
        Header_GetItemRect(header, item, &rc);
        const int before = list.GetColumnWidth(item);
        ::SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(rc.right, 5));
        ::SendMessageW(header, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(rc.right + 40, 5));
        ::SendMessageW(header, WM_LBUTTONUP, 0, MAKELPARAM(rc.right + 40, 5));
        EXPECT_EQ(list.GetColumnWidth(item), before + (item == 0 ? 0 : 40)) << item;
    }
    // A click on the image column's title sorts nothing.
    ClickHeader(header, 0);
    EXPECT_EQ(list.GetSortHeader().GetSortColumn(), -1);
    ClickHeader(header, 1);
    EXPECT_EQ(ColumnTexts(list, 1), (Texts{L"a", L"b"}));
}

TEST_F(ListCtrlTest, RowsAreFreedWhoeverDeletesThemAndWhateverGoesFirst) {
    Counted counted;
    auto fill = [&counted](XBaseListCtrl& list) {
        for (int i = 0; i < 4; ++i) ASSERT_TRUE(list.AddEntry({counted.Value(), Variant(i)}, i, -1));
    };
    enum End { kObject, kParent, kWindow, kHostDeletes, kObjectOfSubclassed };
    const struct { const char* what; End end; } ends[] = {
        {"the object first (created)", kObject},    {"the parent first", kParent},
        {"the list window first", kWindow},         {"the host deletes rows", kHostDeletes},
        {"the object first (subclassed)", kObjectOfSubclassed},
    };
    for (const auto& e : ends) {
        SCOPED_TRACE(e.what);
        HWND parent = qvtest::CreateHostWindow();
        HWND hostList = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 300, 200, parent,
                                          reinterpret_cast<HMENU>(7), nullptr, nullptr);
        auto list = std::make_unique<XBaseListCtrl>();
        if (e.end == kObjectOfSubclassed)
            ASSERT_TRUE(list->SubclassDlgItem(7, parent));
        else
            ASSERT_TRUE(list->Create(WS_CHILD | LVS_REPORT, RECT{0, 0, 300, 200}, parent, 8));
        list->InsertColumn(0, L"A");
        list->InsertColumn(1, L"B");
        fill(*list);
        EXPECT_EQ(counted.refs, 5u);
        switch (e.end) {
        case kObject: list.reset(); break;
        case kParent: ::DestroyWindow(parent); break;
        case kWindow: list->DestroyWindow(); break;
        case kHostDeletes:
            ListView_DeleteItem(*list, 1);
            EXPECT_EQ(counted.refs, 4u);
            EXPECT_TRUE(list->DeleteRow(0));
            EXPECT_EQ(counted.refs, 3u);
            ListView_DeleteAllItems(*list);
            EXPECT_EQ(counted.refs, 1u);
            fill(*list);  // rows taken after a delete-all are freed again
            break;
        case kObjectOfSubclassed:
            list.reset();
            EXPECT_EQ(ListView_GetItemCount(hostList), 0) << "the host's list keeps no rows without the object";
            EXPECT_EQ(Header_GetItemCount(ListView_GetHeader(hostList)), 2);
            break;
        }
        EXPECT_EQ(counted.refs, e.end == kHostDeletes ? 5u : 1u);
        list.reset();
        ::DestroyWindow(parent);
        EXPECT_EQ(counted.refs, 1u);
    }
}

// ---- Export -------------------------------------------------------------------------

TEST_F(ListCtrlTest, ColumnsGoOverInDisplayOrderWithTheirCells) {
    XBaseListCtrl plain, pictured;
    Make(plain, {L"Left", L"Right", L"Centre"}, {LVCFMT_LEFT, LVCFMT_RIGHT, LVCFMT_CENTER});
    ASSERT_TRUE(plain.AddEntry({Text(L"a"), Variant(1), Text(L"x")}, 0, -1));
    ASSERT_TRUE(plain.AddEntry({Text(L"b"), Variant(2), Text(L"y")}, 1, -1));
    plain.SetColumnWidth(2, 70);
    int order[] = {2, 0, 1};
    ASSERT_TRUE(ListView_SetColumnOrderArray(plain, 3, order));
    ASSERT_TRUE(pictured.AssignImageList(&Images()));
    Make(pictured, {L"", L"Name", L"Sum"}, {LVCFMT_LEFT, LVCFMT_LEFT, LVCFMT_RIGHT});
    ASSERT_TRUE(pictured.AddEntry({Text(L"a"), Variant(1)}, 0, 0));
    ASSERT_TRUE(pictured.AddEntry({Text(L"b"), Variant(2)}, 1, 5));  // an image the list does not have
    const SIZE icon{16, 16}, none{0, 0};
    const struct {
        XBaseListCtrl* list;
        Texts names;
        std::vector<int> headerAlignments;
        std::map<int, int> widths;
        std::vector<Texts> texts;
        std::vector<int> cellAlignments;  // per column, the same for every row
        std::vector<SIZE> bitmaps;        // of column 0
    } cases[] = {
        {&plain, {L"Centre", L"Left", L"Right"}, {4, 0, 3}, {{0, 70}, {1, 90}, {2, 90}},
         {{L"x", L"y"}, {L"a", L"b"}, {L"1", L"2"}}, {0, 0, 0}, {none, none}},  // no image list: all left
        {&pictured, {L"Bitmap", L"Name", L"Sum"}, {1, 0, 3}, {{0, pictured.GetColumnWidth(0)}, {1, 90}, {2, 90}},
         {{L"BitmapData", L"BitmapData"}, {L"a", L"b"}, {L"1", L"2"}}, {1, 0, 3}, {icon, none}},
    };
    for (const auto& c : cases) {
        Recorder rec;
        c.list->SetGenListObject(&rec);
        EXPECT_TRUE(c.list->PrintListSetColNameSize(nullptr));
        EXPECT_TRUE(c.list->PrintListSetItemData(nullptr));
        EXPECT_EQ(rec.names, c.names);
        EXPECT_EQ(rec.indices, (std::vector<int>{0, 1, 2}));
        EXPECT_EQ(rec.alignments, c.headerAlignments);
        EXPECT_EQ(rec.widths, c.widths);
        ASSERT_EQ(rec.columns.size(), 3u);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(rec.columns[i].texts, c.texts[i]) << i;
            EXPECT_EQ(rec.columns[i].alignments, std::vector<int>(2, c.cellAlignments[i])) << i;
        }
        for (size_t r = 0; r < 2; ++r) {
            EXPECT_EQ(rec.columns[0].bitmaps[r].cx, c.bitmaps[r].cx) << r;
            EXPECT_EQ(rec.columns[0].bitmaps[r].cy, c.bitmaps[r].cy) << r;
        }
        c.list->SetGenListObject(nullptr);
        EXPECT_EQ(rec.refs, 1u) << "no reference kept";
    }
}

TEST_F(ListCtrlTest, EmptyListsAndRefusalsEndInAResetAndALogEntry) {
    const std::wstring header = L"Quorvel| XBaseListCtrl::PrintListSetColNameSize|";
    const std::wstring items = L"Quorvel| XBaseListCtrl::PrintListSetItemData|";
    const std::wstring noHeader = header + L"524|Can't create header for printing lists|00000000";
    XBaseListCtrl noRows, noColumns, icons, refusing;
    Make(noRows, {L"A", L"B"});
    Make(noColumns, {});
    Make(icons, {L"A"});
    icons.ModifyStyle(LVS_TYPEMASK, LVS_ICON);
    Make(refusing, {L"A", L"B", L"C"});
    ASSERT_TRUE(refusing.AddEntry({Variant(1), Variant(2), Variant(3)}, 0, -1));
    const struct {
        const char* what;
        XBaseListCtrl* list;
        HRESULT headerAnswer;
        int refuseColumn;
        bool headers, cells;
        std::wstring headerLog, cellLog;
        Texts events;
    } cases[] = {
        {"zero rows: empty columns", &noRows, S_OK, -1, true, true, L"", L"",
         {L"headers", L"items 0", L"items 1"}},
        {"zero columns", &noColumns, S_OK, -1, false, false, noHeader,
         items + L"693|Can't create data for printing lists|00000000", {L"reset", L"reset"}},
        {"icon view: refused before the object is touched", &icons, S_OK, -1, false, false,
         header + L"396|Invalid ListViewStyle for printing|80004005",
         header + L"542|Invalid ListViewStyle for printing|80004005", {}},
        {"the headers and a column refused", &refusing, S_FALSE, 1, false, false, noHeader,
         items + L"693|Can't create data for printing lists|00000001",
         {L"headers", L"reset", L"items 0", L"items 1", L"reset"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        qv::Services::DefaultLogBook().Clear();
        Recorder rec;
        rec.headerAnswer = c.headerAnswer;
        rec.refuseColumn = c.refuseColumn;
        EXPECT_EQ(c.list->PrintListSetColNameSize(&rec), c.headers);
        EXPECT_EQ(LastLog(), c.headerLog);
        EXPECT_EQ(c.list->PrintListSetItemData(&rec), c.cells);
        EXPECT_EQ(LastLog(), c.cellLog.empty() ? c.headerLog : c.cellLog);
        EXPECT_EQ(rec.events, c.events);
        if (c.list == &noRows) {
            EXPECT_TRUE(rec.columns[1].texts.empty());
        }
    }
    XBaseListCtrl none;
    none.SetGenListObject(nullptr);
    Make(none, {L"A"});
    EXPECT_FALSE(none.PrintListSetColNameSize(nullptr)) << "no object at all";
    EXPECT_EQ(LastLog(), noHeader);
}

// The popup menu's entries, read while it is open, then closed.
std::vector<std::wstring> g_menu;
int g_menus = 0;
void CALLBACK ReadMenu(HWND, UINT, UINT_PTR, DWORD) {
    HWND popup = ::FindWindowW(L"#32768", nullptr);
    if (!popup || !::IsWindowVisible(popup)) return;
    HMENU menu = reinterpret_cast<HMENU>(::SendMessageW(popup, MN_GETHMENU, 0, 0));
    g_menu.clear();
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        wchar_t text[64] = {};
        ::GetMenuStringW(menu, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
        g_menu.push_back(std::to_wstring(::GetMenuItemID(menu, i)) + L" " + text);
    }
    ++g_menus;
    ::EndMenu();
}

TEST_F(ListCtrlTest, TheContextMenuOffersTranslatedEntriesAndRunsThem) {
    Brackets brackets;
    qv::Services::SetTranslation(&brackets);
    XBaseListCtrl list;
    Make(list, {L"A"});
    ASSERT_TRUE(list.AddEntry({Text(L"a")}, 0, -1));
    Recorder rec;
    list.SetGenListObject(&rec);
    g_menus = 0;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 50, &ReadMenu);

    ::SendMessageW(list, WM_COMMAND, XBaseListCtrl::kMenuPrint, 0);
    EXPECT_TRUE(rec.events.empty()) << "before the menu was ever shown its commands do nothing";
    RightClick(list);
    EXPECT_EQ(g_menus, 1);
    EXPECT_EQ(g_menu, (Texts{L"10000 [Print]", L"10010 [Preview]", L"10020 [Copy to clipboard]"}));
    const struct { WPARAM wp; Texts events; } commands[] = {
        {XBaseListCtrl::kMenuPrint, {L"headers", L"items 0", L"print 0 genformname"}},
        {XBaseListCtrl::kMenuPreview, {L"headers", L"items 0", L"preview 0 genformname"}},
        {XBaseListCtrl::kMenuCopy, {L"headers", L"items 0", L"copy"}},
        {MAKEWPARAM(XBaseListCtrl::kMenuCopy, 1), {}},  // an accelerator's, not the menu's
        {10030, {}},
    };
    for (const auto& c : commands) {
        rec.events.clear();
        ::SendMessageW(list, WM_COMMAND, c.wp, 0);
        EXPECT_EQ(rec.events, c.events) << c.wp;
    }
    list.SetGenListObject(nullptr);
    RightClick(list);
    EXPECT_EQ(g_menus, 1) << "no object, no menu";
    ::KillTimer(nullptr, timer);
    EXPECT_EQ(rec.refs, 1u);
}

TEST_F(ListCtrlTest, AListWhoseHostChoseNoObjectCopiesThroughTheLibrarysOwn) {
    XBaseListCtrl list;
    Make(list, {L"Name", L"Count"}, {LVCFMT_LEFT, LVCFMT_RIGHT});
    ASSERT_TRUE(list.AddEntry({Text(L"a"), Variant(1)}, 0, -1));
    ASSERT_TRUE(list.AddEntry({Text(L"b"), Variant(2)}, 1, -1));
    g_menus = 0;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 50, &ReadMenu);
    RightClick(list);  // the menu must have been shown for its commands to count
    ::KillTimer(nullptr, timer);
    EXPECT_EQ(g_menus, 1);
    qvtest::SetClipboard(host_, std::wstring(L"before"));
    ::SendMessageW(list, WM_COMMAND, XBaseListCtrl::kMenuCopy, 0);
    EXPECT_EQ(qvtest::ClipboardText(host_), L"Name\tCount\r\na\t1\r\nb\t2\r\n");
}

}  // namespace
