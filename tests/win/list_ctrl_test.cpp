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
        if (iid != IID_IUnknown) return *out = nullptr, E_NOINTERFACE;
        *out = this;
        AddRef();
        return S_OK;
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
// bitmaps of the cells after measuring them.
class Recorder : public IZTPrintGenericListObject {
public:
    struct Column {
        int column;
        std::vector<std::wstring> texts;
        std::vector<SIZE> bitmaps;  // {0, 0}: none; {-1, -1}: not a bitmap
        std::vector<int> alignments;
    };
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (iid != IID_IUnknown && iid != IID_IZTPrintGenericListObject) return *out = nullptr, E_NOINTERFACE;
        *out = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
    ULONG STDMETHODCALLTYPE Release() override { return --refs; }
    HRESULT STDMETHODCALLTYPE SetColumnHeaders(int n, BSTR* names_, int* indices_, int* alignments_) override {
        events.push_back(L"headers");
        names.clear();
        for (int i = 0; i < n; ++i) {
            names.emplace_back(names_[i], ::SysStringLen(names_[i]));
            indices.push_back(indices_[i]);
            alignments.push_back(alignments_[i]);
        }
        if (headerAnswer == S_OK) {
            for (int i = 0; i < n; ++i) ::SysFreeString(names_[i]);
            ::CoTaskMemFree(names_);
            ::CoTaskMemFree(indices_);
            ::CoTaskMemFree(alignments_);
        }
        return headerAnswer;
    }
    HRESULT STDMETHODCALLTYPE SetColumnItems(int column, int rows, BSTR* texts, int* bitmaps, int* aligns) override {
        events.push_back(L"items " + std::to_wstring(column));
        Column c{column, {}, {}, {}};
        for (int r = 0; r < rows; ++r) {
            c.texts.emplace_back(texts[r], ::SysStringLen(texts[r]));
            c.alignments.push_back(aligns[r]);
            SIZE size{0, 0};
            if (bitmaps[r]) {
                HGDIOBJ bitmap = reinterpret_cast<HGDIOBJ>(static_cast<INT_PTR>(bitmaps[r]));
                BITMAP info{};
                size = ::GetObjectType(bitmap) == OBJ_BITMAP && ::GetObjectW(bitmap, sizeof info, &info)
                           ? SIZE{info.bmWidth, info.bmHeight}
                           : SIZE{-1, -1};
                ::DeleteObject(bitmap);
            }
            c.bitmaps.push_back(size);
        }
        columns.push_back(c);
        return column == refuseColumn ? S_FALSE : S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetColumnWidth(int column, int width) override {
        widths[column] = width;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ResetList() override {
        events.push_back(L"reset");
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PrintList(int reserved, BSTR form) override {
        events.push_back(L"print " + std::to_wstring(reserved) + L" " + form);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE PreviewList(int reserved, BSTR form) override {
        events.push_back(L"preview " + std::to_wstring(reserved) + L" " + form);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CopyToClipboard() override {
        events.push_back(L"copy");
        return S_OK;
    }

    ULONG refs = 1;
    HRESULT headerAnswer = S_OK;
    int refuseColumn = -1;
    std::vector<std::wstring> events, names;
    std::vector<int> indices, alignments;
    std::map<int, int> widths;
    std::vector<Column> columns;
};

// Texts shown to the user come through here marked, so a test sees that
// they were translated.
class Brackets : public qv::ITranslationService {
public:
    std::wstring Translate(std::wstring_view text) override { return L"[" + std::wstring(text) + L"]"; }
};

Variant Text(const wchar_t* s) { return Variant(s); }
Variant Date(int y, int m, int d) { return Variant::FromDate(qv::OleDateTime(y, m, d, 0, 0, 0).m_dt); }

struct Column {
    const wchar_t* name;
    int format;
};

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
    void Make(XBaseListCtrl& list, const std::vector<Column>& columns, DWORD style = LVS_REPORT) {
        ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | style, RECT{10, 10, 610, 300}, host_, 100));
        for (size_t i = 0; i < columns.size(); ++i)
            list.InsertColumn(static_cast<int>(i), columns[i].name, columns[i].format, 90);
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
    static std::wstring CellText(HWND list, int row, int column) {
        wchar_t text[128] = {};
        ListView_GetItemText(list, row, column, text, 128);
        return text;
    }
    static std::vector<std::wstring> ColumnTexts(HWND list, int column) {
        std::vector<std::wstring> texts;
        for (int r = 0; r < ListView_GetItemCount(list); ++r) texts.push_back(CellText(list, r, column));
        return texts;
    }
    // A click in the middle of header item `item`, as the mouse makes it.
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
    qv::ImageList images_;
};

TEST_F(ListCtrlTest, RowsMustFitTheColumnsAndTheImageRule) {
    XBaseListCtrl plain, pictured, empty;
    Make(plain, {{L"A", LVCFMT_LEFT}, {L"B", LVCFMT_LEFT}});
    ASSERT_TRUE(pictured.AssignImageList(&Images()));
    EXPECT_FALSE(pictured.AssignImageList(&Images())) << "only once";
    Make(pictured, {{L"", LVCFMT_LEFT}, {L"A", LVCFMT_LEFT}, {L"B", LVCFMT_LEFT}});
    Make(empty, {});
    const struct { XBaseListCtrl* list; size_t values; int image; bool taken; const char* what; } cases[] = {
        {&plain, 2, -1, true, "plain row"},          {&plain, 2, 0, false, "an image without image list"},
        {&plain, 1, -1, false, "one value too few"}, {&plain, 3, -1, false, "one value too many"},
        {&plain, 0, -1, false, "no values"},         {&pictured, 2, 1, true, "row with image"},
        {&pictured, 2, -1, false, "no image"},       {&pictured, 3, 0, false, "a value for the image column"},
        {&pictured, 0, 0, false, "no values"},       {&empty, 0, -1, false, "no columns"},
    };
    for (const auto& c : cases) {
        const int before = c.list->GetItemCount();
        EXPECT_EQ(c.list->AddEntry(Values(c.values, Text(L"x")), 0, c.image), c.taken) << c.what;
        EXPECT_EQ(c.list->GetItemCount(), before + (c.taken ? 1 : 0)) << c.what;
    }
    XBaseListCtrl windowless;
    EXPECT_FALSE(windowless.AddEntry(Values(2, Text(L"x")), 0, -1));
    EXPECT_FALSE(windowless.AssignImageList(nullptr));
}

TEST_F(ListCtrlTest, CellsShowTheirValuesAsTextDatesInTheUsersFormat) {
    qvtest::LocaleOverride locale(LOCALE_SSHORTDATE, L"dd.MM.yyyy");
    XBaseListCtrl list;
    ASSERT_TRUE(list.AssignImageList(&Images()));
    Make(list, {{L"", LVCFMT_LEFT}, {L"Value", LVCFMT_LEFT}});
    Counted counted;
    const struct { Variant value; const wchar_t* text; } cases[] = {
        {Text(L"Text"), L"Text"}, {Variant(42), L"42"},      {Variant(2.5), L"2.5"},
        {Date(2023, 12, 24), L"24.12.2023"},                 {Variant::Null(), L""},
        {counted.Value(), L""},   {Variant(-7LL), L"-7"},
    };
    for (const auto& c : cases) ASSERT_TRUE(list.AddEntry({c.value}, list.GetItemCount(), 0));
    for (int r = 0; r < list.GetItemCount(); ++r) {
        EXPECT_EQ(CellText(list, r, 1), cases[r].text) << "row " << r;
        EXPECT_EQ(CellText(list, r, 0), L"") << "the image column has no text";
    }
}

TEST_F(ListCtrlTest, GetDataLooksUpByKeyWithinInclusiveBounds) {
    XBaseListCtrl list;
    Make(list, {{L"A", LVCFMT_LEFT}, {L"B", LVCFMT_LEFT}});
    for (int i = 0; i < 3; ++i) ASSERT_TRUE(list.AddEntry({Variant(i), Variant(10 * i)}, i, -1));
    const struct { int row, column; bool found; long value; } cases[] = {
        {0, 0, true, 0}, {2, 1, true, 20}, {1, 1, true, 10},
        {3, 0, false, 0},   // the row at the count passes the bounds and is not there
        {4, 0, false, 0}, {0, 2, false, 0}, {0, 3, false, 0}, {-1, 0, false, 0}, {0, -1, false, 0},
    };
    for (const auto& c : cases) {
        Variant out(99);
        EXPECT_EQ(list.GetData(c.row, c.column, out), c.found) << c.row << "," << c.column;
        if (c.found) {
            EXPECT_EQ(out.lVal, c.value) << c.row << "," << c.column;
        }
        // Cleared unless the bounds test refused.
        if (!c.found && c.row <= 3 && c.column <= 2) {
            EXPECT_EQ(out.vt, VT_EMPTY) << c.row << "," << c.column;
        }
    }
    Variant sel;
    EXPECT_FALSE(list.GetSelData(1, sel)) << "nothing selected";
    EXPECT_FALSE(list.SelectRow(3));
    ASSERT_TRUE(list.SelectRow(2));
    EXPECT_TRUE(list.GetSelData(1, sel));
    EXPECT_EQ(sel.lVal, 20);
    ASSERT_TRUE(list.SelectRow(1));
    EXPECT_EQ(list.GetNextItem(-1, LVNI_SELECTED), 1);
    EXPECT_EQ(list.GetSelectedCount(), 1);
}

TEST_F(ListCtrlTest, ChangeEntryReplacesTheRowAndDropsItsSelection) {
    XBaseListCtrl list;
    Make(list, {{L"A", LVCFMT_LEFT}});
    for (const wchar_t* s : {L"a", L"b", L"c"}) ASSERT_TRUE(list.AddEntry({Text(s)}, list.GetItemCount(), -1));
    ASSERT_TRUE(list.SelectRow(1));
    EXPECT_TRUE(list.ChangeEntry({Text(L"B")}, 1, -1));
    EXPECT_EQ(ColumnTexts(list, 0), (std::vector<std::wstring>{L"a", L"B", L"c"}));
    EXPECT_EQ(list.GetSelectedCount(), 0);
    EXPECT_FALSE(list.ChangeEntry({Text(L"x")}, 3, -1));
    EXPECT_FALSE(list.ChangeEntry({Text(L"x")}, -1, -1));
    EXPECT_TRUE(list.DeleteRow(0));
    EXPECT_FALSE(list.DeleteRow(2));
    EXPECT_EQ(ColumnTexts(list, 0), (std::vector<std::wstring>{L"B", L"c"}));
}

TEST_F(ListCtrlTest, HeaderClicksSortWithOneDirectionForAllColumns) {
    XBaseListCtrl list;
    Make(list, {{L"Name", LVCFMT_LEFT}, {L"Count", LVCFMT_RIGHT}});
    const struct { const wchar_t* name; int count; } rows[] = {{L"b", 1}, {L"c", 3}, {L"a", 2}};
    for (const auto& r : rows) ASSERT_TRUE(list.AddEntry({Text(r.name), Variant(r.count)}, list.GetItemCount(), -1));
    HWND header = list.GetHeaderCtrl();
    const struct { int column; std::vector<std::wstring> names; bool ascending; } clicks[] = {
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
    Make(list, {{L"A", LVCFMT_LEFT}});
    ASSERT_TRUE(list.AddEntry({Variant(1)}, 0, -1));  // keys the column: key 0
    Counted counted;
    const struct { Variant a, b; int ascending; } cases[] = {
        {Variant(1), Variant(2), -1},          {Text(L"b"), Text(L"a"), 1},
        {Variant(2.5), Variant(2), 1},         {Date(2020, 1, 1), Date(2021, 1, 1), -1},
        {Variant(3), Text(L"3"), -1},          {Variant::Null(), Variant::Null(), 0},
        {Variant::Null(), Variant(1), 0},      {counted.Value(), Variant(1), 0},      {Text(L"a"), counted.Value(), 0},
        {Variant(true), Variant(false), -1},   // VARIANT_TRUE is -1
    };
    for (const auto& c : cases) {
        XBaseListCtrl::RowData a{{0, c.a}}, b{{0, c.b}}, none{{5, c.b}};
        for (const bool ascending : {true, false}) {
            XClickData click(0, ascending, &list.GetSortHeader());
            const auto cmp = [&](const XBaseListCtrl::RowData& x, const XBaseListCtrl::RowData& y) {
                return ListProbe::CompareFunc(reinterpret_cast<LPARAM>(&x), reinterpret_cast<LPARAM>(&y),
                                              reinterpret_cast<LPARAM>(&click));
            };
            EXPECT_EQ(cmp(a, b), ascending ? c.ascending : -c.ascending) << c.a.vt << " vs " << c.b.vt;
            EXPECT_EQ(cmp(a, none), 0) << "a row without the column";
        }
    }
    XClickData headless(0, true, nullptr);
    XBaseListCtrl::RowData a{{0, Variant(1)}}, b{{0, Variant(2)}};
    EXPECT_EQ(ListProbe::CompareFunc(reinterpret_cast<LPARAM>(&a), reinterpret_cast<LPARAM>(&b),
                                     reinterpret_cast<LPARAM>(&headless)), 0);
}

TEST_F(ListCtrlTest, TheSortArrowIsDrawnInTheSortColumn) {
    XBaseListCtrl list;
    Make(list, {{L"Name", LVCFMT_LEFT}, {L"Other", LVCFMT_LEFT}});
    ASSERT_TRUE(list.AddEntry({Text(L"b"), Text(L"x")}, 0, -1));
    ASSERT_TRUE(list.AddEntry({Text(L"a"), Text(L"y")}, 1, -1));
    HWND header = list.GetHeaderCtrl();
    const COLORREF light = ::GetSysColor(COLOR_BTNHILIGHT), dark = ::GetSysColor(COLOR_BTNSHADOW),
                   face = ::GetSysColor(COLOR_BTNFACE);
    ASSERT_TRUE(light != dark && light != face && dark != face);
    HDC dc = ::GetDC(header);
    SIZE blank{};
    HGDIOBJ old = ::SelectObject(dc, reinterpret_cast<HGDIOBJ>(::SendMessageW(header, WM_GETFONT, 0, 0)));
    ::GetTextExtentPoint32W(dc, L" ", 1, &blank);
    ::SelectObject(dc, old);
    const int off = 2 * blank.cx;
    // A pixel that only the highlight stroke draws, and one that only the
    // shadow stroke draws (it goes second), in item `item` of the header.
    struct Pixels { POINT light, dark; };
    auto arrowPixels = [&](int item, bool ascending) {
        RECT rc{};
        Header_GetItemRect(header, item, &rc);
        const int r = rc.right, b = rc.bottom;
        return ascending ? Pixels{{r - 2 * off, b - off}, {r - 5 * off / 2 - 1, b - off - 1}}
                         : Pixels{{r - 3 * off / 2, off - 1}, {r - 2 * off, off - 1}};
    };
    auto at = [dc](POINT p) { return ::GetPixel(dc, p.x, p.y); };
    const struct { int column; bool ascending; } clicks[] = {{0, true}, {0, false}, {1, true}};
    for (const auto& c : clicks) {
        SCOPED_TRACE(std::to_string(c.column) + (c.ascending ? " ascending" : " descending"));
        ClickHeader(header, c.column);
        ::RedrawWindow(header, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        qvtest::Pump(100);
        const Pixels arrow = arrowPixels(c.column, c.ascending);
        EXPECT_EQ(at(arrow.light), light);
        EXPECT_EQ(at(arrow.dark), dark);
    }
    // Column 0 is still drawn by the header object, without its arrow.
    for (const bool ascending : {true, false}) {
        const Pixels gone = arrowPixels(0, ascending);
        EXPECT_EQ(at(gone.light), face);
        EXPECT_EQ(at(gone.dark), face);
    }
    ::ReleaseDC(header, dc);
}

TEST_F(ListCtrlTest, TheImageColumnStaysInPlace) {
    XBaseListCtrl list;
    ASSERT_TRUE(list.AssignImageList(&Images()));
    Make(list, {{L"", LVCFMT_LEFT}, {L"A", LVCFMT_LEFT}, {L"B", LVCFMT_LEFT}});
    ASSERT_TRUE(list.AddEntry({Text(L"b"), Text(L"x")}, 0, 0));
    ASSERT_TRUE(list.AddEntry({Text(L"a"), Text(L"y")}, 1, 1));
    HWND header = list.GetHeaderCtrl();
    // Header notifications as the header sends them to the list.
    HDITEMW order0{}, order2{};
    order0.mask = order2.mask = HDI_ORDER;
    order2.iOrder = 2;
    const struct { UINT code; int item; HDITEMW* pitem; LRESULT answer; } cases[] = {
        {HDN_BEGINTRACKW, 0, nullptr, 1},      {HDN_BEGINTRACKW, 1, nullptr, 0},
        {HDN_DIVIDERDBLCLICKW, 0, nullptr, 1}, {HDN_ITEMCLICKW, 0, nullptr, 1},
        {HDN_ITEMCHANGEDW, 0, &order2, 1},     {HDN_BEGINTRACKA, 0, nullptr, 1},
        {HDN_DIVIDERDBLCLICKA, 0, nullptr, 1}, {HDN_ENDDRAG, 0, &order2, 1},
        {HDN_ENDDRAG, 2, &order0, 1},          {HDN_ENDDRAG, 2, &order2, 0},
        {HDN_BEGINDRAG, 1, &order0, 1},        {HDN_BEGINDRAG, 0, &order2, 0},
        {HDN_BEGINDRAG, 0, nullptr, 1},        {HDN_BEGINDRAG, 2, nullptr, 0},
    };
    for (const auto& c : cases) {
        NMHEADERW nm{};
        nm.hdr = NMHDR{header, 0, c.code};
        nm.iItem = c.item;
        nm.pitem = c.pitem;
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
        if (item == 0)
            EXPECT_EQ(list.GetColumnWidth(0), before);
        else
            EXPECT_EQ(list.GetColumnWidth(1), before + 40);
    }
    // A click on the image column's title sorts nothing.
    ClickHeader(header, 0);
    EXPECT_EQ(list.GetSortHeader().GetSortColumn(), -1);
    ClickHeader(header, 1);
    EXPECT_EQ(ColumnTexts(list, 1), (std::vector<std::wstring>{L"a", L"b"}));
}

TEST_F(ListCtrlTest, RowsAreFreedWhoeverDeletesThemAndWhateverGoesFirst) {
    Counted counted;
    auto fill = [&counted](XBaseListCtrl& list) {
        for (int i = 0; i < 4; ++i) ASSERT_TRUE(list.AddEntry({counted.Value(), Variant(i)}, i, -1));
    };
    const struct { const char* what; int end; } ends[] = {
        {"the object first (created)", 0}, {"the parent first", 1},   {"the list window first", 2},
        {"the host deletes rows", 3},      {"the object first (subclassed)", 4},
    };
    for (const auto& e : ends) {
        SCOPED_TRACE(e.what);
        HWND parent = qvtest::CreateHostWindow();
        HWND hostList = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 300, 200,
                                          parent, reinterpret_cast<HMENU>(7), nullptr, nullptr);
        auto list = std::make_unique<XBaseListCtrl>();
        if (e.end == 4) {
            ASSERT_TRUE(list->SubclassDlgItem(7, parent));
        } else {
            ASSERT_TRUE(list->Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, RECT{0, 0, 300, 200}, parent, 8));
        }
        list->InsertColumn(0, L"A");
        list->InsertColumn(1, L"B");
        fill(*list);
        EXPECT_EQ(counted.refs, 5u);
        switch (e.end) {
        case 0: list.reset(); break;
        case 1: ::DestroyWindow(parent); break;
        case 2: list->DestroyWindow(); break;
        case 3:
            ListView_DeleteItem(*list, 1);
            EXPECT_EQ(counted.refs, 4u);
            EXPECT_TRUE(list->DeleteRow(0));
            EXPECT_EQ(counted.refs, 3u);
            ListView_DeleteAllItems(*list);
            EXPECT_EQ(counted.refs, 1u);
            fill(*list);  // rows taken again after a delete-all are freed again
            break;
        case 4:
            list.reset();
            EXPECT_EQ(ListView_GetItemCount(hostList), 0) << "the host's list keeps no rows without the object";
            EXPECT_EQ(Header_GetItemCount(ListView_GetHeader(hostList)), 2);
            break;
        }
        EXPECT_EQ(counted.refs, e.end == 3 ? 5u : 1u);
        list.reset();
        ::DestroyWindow(parent);
        EXPECT_EQ(counted.refs, 1u);
    }
}

TEST_F(ListCtrlTest, ACreatedListIsSingleSelectionASubclassedOneKeepsItsMode) {
    HWND hostList = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_ICON, 0, 0, 200, 200, host_,
                                      reinterpret_cast<HMENU>(9), nullptr, nullptr);
    XBaseListCtrl created, subclassed;
    Make(created, {{L"A", LVCFMT_LEFT}}, LVS_ICON);
    ASSERT_TRUE(subclassed.SubclassDlgItem(9, host_));
    for (XBaseListCtrl* list : {&created, &subclassed}) {
        EXPECT_EQ(list->GetStyle() & LVS_TYPEMASK, static_cast<DWORD>(LVS_REPORT));
        EXPECT_EQ(list->GetExtendedStyle(), static_cast<DWORD>(XBaseListCtrl::kExtendedStyle));
        EXPECT_NE(list->GetSortHeader().m_hWnd, nullptr);
    }
    EXPECT_TRUE(created.GetStyle() & LVS_SINGLESEL);
    EXPECT_FALSE(::GetWindowLongPtrW(hostList, GWL_STYLE) & LVS_SINGLESEL);
}

// ---- Export -------------------------------------------------------------------------

class ListExportTest : public ListCtrlTest {};

TEST_F(ListExportTest, ColumnsGoOverInDisplayOrderWithTheirCells) {
    XBaseListCtrl list;
    Make(list, {{L"Left", LVCFMT_LEFT}, {L"Right", LVCFMT_RIGHT}, {L"Centre", LVCFMT_CENTER}});
    ASSERT_TRUE(list.AddEntry({Text(L"a"), Variant(1), Text(L"x")}, 0, -1));
    ASSERT_TRUE(list.AddEntry({Text(L"b"), Variant(2), Text(L"y")}, 1, -1));
    list.SetColumnWidth(2, 70);
    int order[] = {2, 0, 1};
    ASSERT_TRUE(ListView_SetColumnOrderArray(list, 3, order));
    Recorder rec;
    ASSERT_TRUE(list.PrintListSetColNameSize(&rec));
    ASSERT_TRUE(list.PrintListSetItemData(&rec));
    EXPECT_EQ(rec.names, (std::vector<std::wstring>{L"Centre", L"Left", L"Right"}));
    EXPECT_EQ(rec.indices, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(rec.alignments, (std::vector<int>{4, 0, 3}));
    EXPECT_EQ(rec.widths, (std::map<int, int>{{0, 70}, {1, 90}, {2, 90}}));
    ASSERT_EQ(rec.columns.size(), 3u);
    const std::vector<std::wstring> texts[] = {{L"x", L"y"}, {L"a", L"b"}, {L"1", L"2"}};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(rec.columns[i].column, i);
        EXPECT_EQ(rec.columns[i].texts, texts[i]);
        EXPECT_EQ(rec.columns[i].alignments, (std::vector<int>{0, 0})) << "without image list, cells are left";
    }
    EXPECT_EQ(rec.refs, 1u) << "no reference kept";
}

TEST_F(ListExportTest, TheImageColumnGoesOverAsBitmapsOfTheIconSize) {
    XBaseListCtrl list;
    ASSERT_TRUE(list.AssignImageList(&Images()));
    Make(list, {{L"", LVCFMT_LEFT}, {L"Name", LVCFMT_LEFT}, {L"Sum", LVCFMT_RIGHT}});
    ASSERT_TRUE(list.AddEntry({Text(L"a"), Variant(1)}, 0, 0));
    ASSERT_TRUE(list.AddEntry({Text(L"b"), Variant(2)}, 1, 5));  // an image the list does not have
    ASSERT_TRUE(list.AddEntry({Text(L"c"), Variant(3)}, 2, 1));
    Recorder rec;
    list.SetGenListObject(&rec);
    EXPECT_EQ(rec.refs, 2u);
    ASSERT_TRUE(list.PrintListSetColNameSize(nullptr));
    ASSERT_TRUE(list.PrintListSetItemData(nullptr));
    EXPECT_EQ(rec.names, (std::vector<std::wstring>{L"Bitmap", L"Name", L"Sum"}));
    EXPECT_EQ(rec.alignments, (std::vector<int>{1, 0, 3}));
    EXPECT_EQ(rec.widths[0], list.GetColumnWidth(0));
    ASSERT_EQ(rec.columns.size(), 3u);
    const auto& image = rec.columns[0];
    EXPECT_EQ(image.texts, (std::vector<std::wstring>(3, L"BitmapData")));
    EXPECT_EQ(image.alignments, (std::vector<int>(3, 1)));
    ASSERT_EQ(image.bitmaps.size(), 3u);
    EXPECT_EQ(image.bitmaps[0].cx, 16);
    EXPECT_EQ(image.bitmaps[0].cy, 16);
    EXPECT_EQ(image.bitmaps[1].cx, 0) << "no image, no bitmap";
    EXPECT_EQ(image.bitmaps[2].cx, 16);
    EXPECT_EQ(rec.columns[2].texts, (std::vector<std::wstring>{L"1", L"2", L"3"}));
    EXPECT_EQ(rec.columns[2].alignments, (std::vector<int>(3, 3))) << "with image list, cells follow the header";
    list.SetGenListObject(nullptr);
    EXPECT_EQ(rec.refs, 1u);
}

TEST_F(ListExportTest, EmptyListsAndRefusalsEndInAResetAndALogEntry) {
    const std::wstring header = L"Quorvel| XBaseListCtrl::PrintListSetColNameSize|";
    const std::wstring items = L"Quorvel| XBaseListCtrl::PrintListSetItemData|";
    {
        SCOPED_TRACE("zero rows: empty columns, success");
        XBaseListCtrl list;
        Make(list, {{L"A", LVCFMT_LEFT}, {L"B", LVCFMT_LEFT}});
        Recorder rec;
        EXPECT_TRUE(list.PrintListSetItemData(&rec));
        ASSERT_EQ(rec.columns.size(), 2u);
        EXPECT_TRUE(rec.columns[1].texts.empty());
        EXPECT_EQ(LastLog(), L"");
    }
    {
        SCOPED_TRACE("zero columns");
        XBaseListCtrl list;
        Make(list, {});
        Recorder rec;
        EXPECT_FALSE(list.PrintListSetColNameSize(&rec));
        EXPECT_EQ(LastLog(), header + L"524|Can't create header for printing lists|00000000");
        EXPECT_FALSE(list.PrintListSetItemData(&rec));
        EXPECT_EQ(LastLog(), items + L"693|Can't create data for printing lists|00000000");
        EXPECT_EQ(rec.events, (std::vector<std::wstring>{L"reset", L"reset"}));
        XBaseListCtrl none;
        Make(none, {{L"A", LVCFMT_LEFT}});
        EXPECT_FALSE(none.PrintListSetColNameSize(nullptr)) << "no object at all";
        EXPECT_EQ(LastLog(), header + L"524|Can't create header for printing lists|00000000");
    }
    {
        SCOPED_TRACE("icon view: refused before the object is touched");
        XBaseListCtrl list;
        Make(list, {{L"A", LVCFMT_LEFT}});
        list.ModifyStyle(LVS_TYPEMASK, LVS_ICON);
        Recorder rec;
        EXPECT_FALSE(list.PrintListSetColNameSize(&rec));
        EXPECT_EQ(LastLog(), header + L"396|Invalid ListViewStyle for printing|80004005");
        EXPECT_FALSE(list.PrintListSetItemData(&rec));
        EXPECT_EQ(LastLog(), header + L"542|Invalid ListViewStyle for printing|80004005");
        EXPECT_TRUE(rec.events.empty());
    }
    {
        SCOPED_TRACE("the object refuses the headers, then a column");
        XBaseListCtrl list;
        Make(list, {{L"A", LVCFMT_LEFT}, {L"B", LVCFMT_LEFT}, {L"C", LVCFMT_LEFT}});
        ASSERT_TRUE(list.AddEntry({Variant(1), Variant(2), Variant(3)}, 0, -1));
        Recorder rec;
        rec.headerAnswer = S_FALSE;
        EXPECT_FALSE(list.PrintListSetColNameSize(&rec));
        EXPECT_EQ(LastLog(), header + L"524|Can't create header for printing lists|00000000");
        rec.refuseColumn = 1;
        EXPECT_FALSE(list.PrintListSetItemData(&rec));
        EXPECT_EQ(LastLog(), items + L"693|Can't create data for printing lists|00000001");
        EXPECT_EQ(rec.events, (std::vector<std::wstring>{L"headers", L"reset", L"items 0", L"items 1", L"reset"}));
    }
}

TEST_F(ListExportTest, TheContextMenuOffersTranslatedEntriesAndRunsThem) {
    Brackets brackets;
    qv::Services::SetTranslation(&brackets);
    XBaseListCtrl list;
    Make(list, {{L"A", LVCFMT_LEFT}});
    ASSERT_TRUE(list.AddEntry({Text(L"a")}, 0, -1));
    Recorder rec;
    list.SetGenListObject(&rec);

    // The menu is read while it is open, then closed.
    static std::vector<std::wstring> s_entries;
    static int s_menus = 0;
    s_entries.clear();
    s_menus = 0;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 50, [](HWND, UINT, UINT_PTR, DWORD) {
        HWND popup = ::FindWindowW(L"#32768", nullptr);
        if (!popup || !::IsWindowVisible(popup)) return;
        HMENU menu = reinterpret_cast<HMENU>(::SendMessageW(popup, MN_GETHMENU, 0, 0));
        s_entries.clear();
        for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
            wchar_t text[64] = {};
            ::GetMenuStringW(menu, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
            s_entries.push_back(std::to_wstring(::GetMenuItemID(menu, i)) + L" " + text);
        }
        ++s_menus;
        ::EndMenu();
    });
    // A right click on the first row, as the mouse makes it.
    auto rightClick = [&list] {
        RECT row{};
        list.GetItemRect(0, row, LVIR_LABEL);
        const LPARAM at = MAKELPARAM(row.left + 5, (row.top + row.bottom) / 2);
        ::PostMessageW(list, WM_RBUTTONUP, 0, at);
        ::SendMessageW(list, WM_RBUTTONDOWN, MK_RBUTTON, at);
        qvtest::Pump(50);
    };

    // Before the menu was ever shown its commands do nothing.
    ::SendMessageW(list, WM_COMMAND, XBaseListCtrl::kMenuPrint, 0);
    EXPECT_TRUE(rec.events.empty());
    rightClick();
    EXPECT_EQ(s_menus, 1);
    EXPECT_EQ(s_entries, (std::vector<std::wstring>{L"10000 [Print]", L"10010 [Preview]", L"10020 [Copy to clipboard]"}));

    const struct { WPARAM wp; std::vector<std::wstring> events; } commands[] = {
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
    rightClick();
    EXPECT_EQ(s_menus, 1) << "no object, no menu";
    rec.events.clear();
    ::SendMessageW(list, WM_COMMAND, XBaseListCtrl::kMenuPrint, 0);
    EXPECT_TRUE(rec.events.empty());
    ::KillTimer(nullptr, timer);
    EXPECT_EQ(rec.refs, 1u);
}

}  // namespace
