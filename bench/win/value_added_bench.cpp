// Timing harness under Wine (not a test): the value-added list with 500
// entries (25 groups of 19 children) from the embedded host objects:
// - SetValue of a 500-record string: reading it and rebuilding every row;
// - GetValue after an edit (the string written afresh);
// - one in-place edit committed: the field opened on a child, a value typed,
//   Tab, the cap checked, the group rolled up and the rows rebuilt.
// Printed in milliseconds per operation.
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <string>

#include "quorvel/frame/host_objects.h"
#include "quorvel/valueadded/value_added.h"
#include "timing.h"

namespace {

void Pump() {
    MSG msg;
    while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&msg);
        ::DispatchMessageW(&msg);
    }
}

}  // namespace

int main() {
    ::CoInitialize(nullptr);
    INITCOMMONCONTROLSEX icc{sizeof icc, ICC_LISTVIEW_CLASSES};
    ::InitCommonControlsEx(&icc);
    HWND host = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 900, 600, nullptr, nullptr,
                                  nullptr, nullptr);

    std::vector<tagVACONFIGITEM> items;
    std::wstring value;
    for (long g = 1; g <= 25; ++g) {
        items.push_back({g, 0, L"Group " + std::to_wstring(g), L"group", true});
        for (long c = 1; c <= 19; ++c) {
            const long id = g * 100 + c;
            items.push_back({id, g, L"Step " + std::to_wstring(id), L"step", true});
            wchar_t record[160];
            std::swprintf(record, 160, L"%ls[FP:0][SID:%ld][PID:%ld][TE:7.200000][PE:0.200000][TC:0.000000][PC:0.000000]",
                          value.empty() ? L"" : L"|", id, g);
            value += record;
        }
    }
    XVAConfig config;
    config.SetItems(items);
    XVAConfigFactory::GetConfigFactory()->SetConfiguration(config);

    qv::DataObject *object = nullptr, *project = nullptr, *typeSet = nullptr, *master = nullptr;
    qv::DataObject::CreateInstance(&object);
    qv::DataObject::CreateInstance(&project);
    qv::DataObject::CreateInstance(&typeSet);
    qv::DataObject::CreateInstance(&master);
    object->SetAttribute(L"dbl_totalcalculated", 3600.0);
    typeSet->SetRelatedObject(L"master", master);
    project->SetRelatedObject(L"voxendirtypeset", typeSet);
    object->SetRelatedObject(L"voxeproject", project);
    auto* values = static_cast<tagINITVALUE*>(::CoTaskMemAlloc(sizeof(tagINITVALUE)));
    values[0].name = ::SysAllocString(L"pObject");
    ::VariantInit(&values[0].value);
    values[0].value.vt = VT_UNKNOWN;
    values[0].value.punkVal = object;
    object->AddRef();
    tagVAINITDATA init{1, values};

    XValueAddedCtrl list;
    UINT id = 1;
    bool made = false;
    const double create = qvbench::MicrosPerCall(1, [&](int) {
                              made = list.CreateCtrl(id, RECT{0, 0, 880, 580}, nullptr, host, &init);
                          }) / 1000.0;
    if (!made) {
        std::printf("the list could not be created\n");
        return 1;
    }
    std::printf("CreateCtrl with 501 rows inserted: %8.2f ms\n", create);
    Pump();
    const int rounds = 20;
    const double setValue = qvbench::MicrosPerCall(rounds, [&](int) { list.SetValue(value); }) / 1000.0;
    std::printf("rows after SetValue: %d\n", list.GetItemCount());
    const double setEmpty = qvbench::MicrosPerCall(rounds, [&](int) { list.SetValue(L""); }) / 1000.0;
    std::printf("SetValue of an empty string, rows kept: %8.2f ms\n", setEmpty);

    // One edit: alternately 0.1 and 0.2 on the same child, so each is taken.
    const double edit = qvbench::MicrosPerCall(rounds, [&](int i) {
                            list.EditRow(1);
                            XInPlaceFloatEdit* field = list.GetInPlaceEdit();
                            if (!field) return;
                            ::SendMessageW(*field, EM_SETSEL, 0, -1);
                            for (const wchar_t* c = i % 2 ? L"0.2" : L"0.1"; *c; ++c)
                                ::SendMessageW(*field, WM_CHAR, *c, 0);
                            ::SendMessageW(*field, WM_CHAR, VK_TAB, 0);
                        }) / 1000.0;
    Pump();
    const double getValue = qvbench::MicrosPerCall(rounds, [&](int) { list.GetValue(); }) / 1000.0;
    std::printf("modified after the edits: %s\n", list.IsModified() ? "yes" : "no");

    // The list view's own share: 501 callback rows into a plain list view of
    // six columns and out again, and 501 reads of an item's data.
    HWND plain = ::CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 0, 0, 880, 580, host,
                                   nullptr, nullptr, nullptr);
    for (int c = 0; c < 6; ++c) {
        LVCOLUMNW col{};
        col.mask = LVCF_WIDTH;
        col.cx = 100;
        ::SendMessageW(plain, LVM_INSERTCOLUMNW, c, reinterpret_cast<LPARAM>(&col));
    }
    const double plainRows = qvbench::MicrosPerCall(rounds, [&](int) {
                                 ::SendMessageW(plain, WM_SETREDRAW, FALSE, 0);
                                 ::SendMessageW(plain, LVM_DELETEALLITEMS, 0, 0);
                                 for (int r = 0; r < 501; ++r) {
                                     LVITEMW item{};
                                     item.mask = LVIF_TEXT | LVIF_PARAM;
                                     item.iItem = r;
                                     item.pszText = LPSTR_TEXTCALLBACKW;
                                     ::SendMessageW(plain, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
                                 }
                                 ::SendMessageW(plain, WM_SETREDRAW, TRUE, 0);
                             }) / 1000.0;
    const double reads = qvbench::MicrosPerCall(rounds, [&](int) {
                             for (int r = 0; r < 501; ++r) {
                                 LVITEMW item{};
                                 item.mask = LVIF_PARAM;
                                 item.iItem = r;
                                 ::SendMessageW(plain, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
                             }
                         }) / 1000.0;
    const double ourReads = qvbench::MicrosPerCall(rounds, [&](int) {
                                for (int r = 0; r < 501; ++r) list.GetItemData(r);
                            }) / 1000.0;
    std::printf("501 item reads through the list's subclass: %8.2f ms\n", ourReads);
    std::printf("plain list view: 501 rows deleted and inserted: %8.2f ms; 501 item reads: %8.2f ms\n", plainRows,
                reads);
    std::printf("SetValue, 500 entries, rows rebuilt: %8.2f ms\n", setValue);
    std::printf("one in-place edit committed (cap, roll-up, rebuild): %8.2f ms\n", edit);
    std::printf("GetValue after an edit (500 records written): %8.2f ms\n", getValue);

    list.DestroyWindow();
    ::DestroyWindow(host);
    object->Release();
    project->Release();
    typeSet->Release();
    master->Release();
    ::CoUninitialize();
    return 0;
}
