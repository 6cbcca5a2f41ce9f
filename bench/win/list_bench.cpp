// Timing harness under Wine (not a test): the report list with 100 000 rows
// of six mixed values (texts, integers, doubles, dates, and a column that
// mixes integers, texts and nulls), against a plain list view in the same
// run:
// - taking the rows: AddEntry, against LVM_INSERTITEMW with callback texts;
// - a sort by a column click (integers, texts, the mixed column), against
//   LVM_SORTITEMS with a comparator of two integers;
// - the export of the whole list to a print-list object that only counts
//   (PrintListSetColNameSize + PrintListSetItemData);
// - what these are made of: one comparison of the sort and its VarCmp, one
//   message into a plain and into a subclassed window, and the messages the
//   list view sends its header for every new row.
// Printed in seconds per whole operation; one round, as 100 000 rows take
// minutes under Wine. A first argument sets another row count.
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <memory>
#include <vector>

#include "quorvel/lists/list_ctrl.h"
#include "quorvel/platform/com.h"
#include "quorvel/platform/datetime.h"
#include "timing.h"

namespace {

int kRows = 100000;  // a first argument sets another count
constexpr int kColumns = 6;


template <class F>
double SecondsOf(F f) {
    return qvbench::MicrosPerCall(1, [&](int) { f(); }) / 1e6;
}

// A repeatable pseudo-random sequence.
unsigned Next(unsigned& state) {
    state = state * 1664525u + 1013904223u;
    return state >> 8;
}

std::vector<std::vector<qv::Variant>> MakeRows() {
    static const wchar_t* const words[] = {L"alpha", L"Beta", L"gamma", L"delta", L"Epsilon", L"zeta", L"eta"};
    std::vector<std::vector<qv::Variant>> rows(kRows);
    unsigned state = 12345;
    for (int i = 0; i < kRows; ++i) {
        wchar_t name[32];
        std::swprintf(name, 32, L"Item %06u", Next(state) % 1000000);
        const unsigned r = Next(state);
        qv::Variant mixed;
        switch (r % 3) {
        case 0: mixed = qv::Variant(static_cast<int>(r % 1000)); break;
        case 1: mixed = qv::Variant(words[r % 7]); break;
        default: mixed = qv::Variant::Null(); break;
        }
        rows[i].reserve(kColumns);
        rows[i].emplace_back(name);
        rows[i].emplace_back(static_cast<int>(Next(state) % 100000));
        rows[i].emplace_back(static_cast<double>(Next(state) % 100000) / 7.0);
        rows[i].push_back(qv::Variant::FromDate(36526.0 + Next(state) % 9000));
        rows[i].emplace_back(words[Next(state) % 7]);
        rows[i].push_back(std::move(mixed));
    }
    return rows;
}

// A print-list object that counts what it is handed and frees it as an
// object must.
class Counter : public IZTPrintGenericListObject {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override { return *out = nullptr, E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE SetColumnHeaders(int n, BSTR* names, int* indices, int* alignments) override {
        for (int i = 0; i < n; ++i) ::SysFreeString(names[i]);
        ::CoTaskMemFree(names);
        ::CoTaskMemFree(indices);
        ::CoTaskMemFree(alignments);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetColumnItems(int, int rows, BSTR* texts, int*, int*) override {
        for (int r = 0; r < rows; ++r) chars += ::SysStringLen(texts[r]);
        cells += rows;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetColumnWidth(int, int) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResetList() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PrintList(int, BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE PreviewList(int, BSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE CopyToClipboard() override { return S_OK; }
    long long cells = 0, chars = 0;
};

struct Probe : XBaseListCtrl {
    using XBaseListCtrl::CompareFunc;
};

HWND MakeHost() {
    return ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 800, 600, nullptr, nullptr, nullptr, nullptr);
}

void AddColumns(HWND list) {
    for (int c = 0; c < kColumns; ++c) {
        LVCOLUMNW col{};
        col.mask = LVCF_TEXT | LVCF_WIDTH;
        wchar_t name[8] = {static_cast<wchar_t>(L'A' + c), 0};
        col.pszText = name;
        col.cx = 90;
        ::SendMessageW(list, LVM_INSERTCOLUMNW, c, reinterpret_cast<LPARAM>(&col));
    }
}

// ---- The plain list view ---------------------------------------------------------

std::vector<unsigned> g_keys;

int CALLBACK ByKey(LPARAM a, LPARAM b, LPARAM) {
    const unsigned x = g_keys[static_cast<size_t>(a)], y = g_keys[static_cast<size_t>(b)];
    return x < y ? -1 : x > y ? 1 : 0;
}

struct Baseline {
    double add = 0, sort = 0;
};

Baseline RunBaseline() {
    HWND host = MakeHost();
    HWND list = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 700, 500, host, nullptr,
                                  nullptr, nullptr);
    AddColumns(list);
    Baseline b;
    b.add = SecondsOf([&] {
        for (int i = 0; i < kRows; ++i) {
            LVITEMW item{};
            item.mask = LVIF_TEXT | LVIF_PARAM;
            item.iItem = i;
            item.pszText = LPSTR_TEXTCALLBACKW;
            item.lParam = i;
            ::SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
    });
    b.sort = SecondsOf([&] { ::SendMessageW(list, LVM_SORTITEMS, 0, reinterpret_cast<LPARAM>(&ByKey)); });
    ::DestroyWindow(host);
    return b;
}

// ---- The report list ---------------------------------------------------------------

void ClickColumn(HWND host, HWND list, int column) {
    NMLISTVIEW nm{};
    nm.hdr = NMHDR{list, 1, static_cast<UINT>(LVN_COLUMNCLICK)};
    nm.iItem = -1;
    nm.iSubItem = column;
    ::SendMessageW(host, WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&nm));
}

struct Measured {
    double add = 0, sortInt = 0, sortText = 0, sortMixed = 0, exportAll = 0;
    long long cells = 0;
};

Measured RunList(const std::vector<std::vector<qv::Variant>>& source) {
    auto rows = source;  // AddEntry takes its values over
    HWND host = MakeHost();
    XBaseListCtrl list;
    list.Create(WS_CHILD | LVS_REPORT, RECT{0, 0, 700, 500}, host, 1);
    AddColumns(list);
    Measured m;
    m.add = SecondsOf([&] {
        for (int i = 0; i < kRows; ++i) list.AddEntry(std::move(rows[static_cast<size_t>(i)]), i, -1);
    });
    m.sortInt = SecondsOf([&] { ClickColumn(host, list, 1); });
    m.sortText = SecondsOf([&] { ClickColumn(host, list, 0); });
    m.sortMixed = SecondsOf([&] { ClickColumn(host, list, 5); });
    Counter counter;
    m.exportAll = SecondsOf([&] {
        list.PrintListSetColNameSize(&counter);
        list.PrintListSetItemData(&counter);
    });
    m.cells = counter.cells;
    ::DestroyWindow(host);
    return m;
}

// Header messages seen while rows go in.
int g_headerMessages = 0;
HWND g_header = nullptr;
LRESULT CALLBACK CountHeader(int code, WPARAM wp, LPARAM lp) {
    if (code >= 0 && reinterpret_cast<const CWPSTRUCT*>(lp)->hwnd == g_header) ++g_headerMessages;
    return ::CallNextHookEx(nullptr, code, wp, lp);
}

// What the times above are made of, in microseconds: one comparison of the
// sort and its VarCmp; one message into a plain list view, into the report
// list and into its header (both subclassed); and how many messages the list
// view sends its header for every row that goes in.
void Parts() {
    HWND host = MakeHost();
    HWND plain = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | LVS_REPORT, 0, 0, 700, 500, host, nullptr,
                                   nullptr, nullptr);
    XBaseListCtrl list;
    list.Create(WS_CHILD | LVS_REPORT, RECT{0, 0, 700, 500}, host, 1);
    AddColumns(list);
    auto row = [] {
        return std::vector<qv::Variant>{qv::Variant(L"a"), qv::Variant(1), qv::Variant(1.0), qv::Variant::FromDate(1.0),
                                        qv::Variant(L"b"), qv::Variant(2)};
    };
    list.AddEntry(row(), 0, -1);
    XBaseListCtrl::RowData a{{1, qv::Variant(5)}, {0, qv::Variant(L"Item 004711")}};
    XBaseListCtrl::RowData b{{1, qv::Variant(7)}, {0, qv::Variant(L"Item 004712")}};
    const XClickData click(1, true, &list.GetSortHeader()), clickText(0, true, &list.GetSortHeader());
    auto compare = [&](const XClickData& c) {
        return qvbench::MicrosPerCall(200000, [&](int) {
            Probe::CompareFunc(reinterpret_cast<LPARAM>(&a), reinterpret_cast<LPARAM>(&b), reinterpret_cast<LPARAM>(&c));
        });
    };
    const double compareInt = compare(click), compareText = compare(clickText);
    const double varCmpInt = qvbench::MicrosPerCall(200000, [&](int) { a.at(1).Compare(b.at(1)); });
    const double varCmpText = qvbench::MicrosPerCall(200000, [&](int) { a.at(0).Compare(b.at(0)); });
    auto message = [](HWND target, UINT msg) {
        return qvbench::MicrosPerCall(500, [&](int) { ::SendMessageW(target, msg, 0, 0); });
    };
    const double toPlain = message(plain, LVM_GETITEMCOUNT), toList = message(list, LVM_GETITEMCOUNT);
    const double toHeader = message(list.GetHeaderCtrl(), HDM_GETITEMCOUNT);
    g_header = list.GetHeaderCtrl();
    HHOOK hook = ::SetWindowsHookExW(WH_CALLWNDPROC, &CountHeader, nullptr, ::GetCurrentThreadId());
    for (int i = 0; i < 100; ++i) list.AddEntry(row(), 1, -1);
    ::UnhookWindowsHookEx(hook);
    std::printf("one comparison of the sort, integers / texts:        %6.2f / %6.2f us\n", compareInt, compareText);
    std::printf("  of which VarCmp, integers / texts:                 %6.2f / %6.2f us\n", varCmpInt, varCmpText);
    std::printf("a message into a plain list view:                    %6.2f us\n", toPlain);
    std::printf("a message into the report list / its header:         %6.2f / %6.2f us\n", toList, toHeader);
    std::printf("messages the list view sends its header per new row: %6.1f\n", g_headerMessages / 100.0);
    ::DestroyWindow(host);
}

}  // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    if (argc > 1 && std::atoi(argv[1]) > 0) kRows = std::atoi(argv[1]);
    INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&icc);
    g_keys.resize(kRows);
    unsigned state = 777;
    for (auto& k : g_keys) k = Next(state);
    const auto rows = MakeRows();

    const Baseline base = RunBaseline();
    const Measured m = RunList(rows);
    std::printf("%d rows x %d columns; seconds\n", kRows, kColumns);
    std::printf("plain list view, LVM_INSERTITEMW with callback text: %8.3f\n", base.add);
    std::printf("report list, AddEntry:                               %8.3f  (%.2fx)\n", m.add, m.add / base.add);
    std::printf("plain list view, LVM_SORTITEMS on integer keys:      %8.3f\n", base.sort);
    std::printf("report list, sort by the integer column:             %8.3f  (%.2fx)\n", m.sortInt,
                m.sortInt / base.sort);
    std::printf("report list, sort by the text column:                %8.3f  (%.2fx)\n", m.sortText,
                m.sortText / base.sort);
    std::printf("report list, sort by the mixed column:               %8.3f  (%.2fx)\n", m.sortMixed,
                m.sortMixed / base.sort);
    std::printf("report list, export of %lld cells:                %8.3f\n", m.cells, m.exportAll);
    Parts();
    return 0;
}
