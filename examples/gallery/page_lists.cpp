// The "Lists" page: report lists as a planning form shows them.
//
// Left, 10 000 orders with typed values (texts, whole numbers, amounts,
// dates, empty cells) behind a status picture column: a click on a column
// title sorts, a right click offers Print, Preview and Copy to clipboard
// through the library's own print-list object.
// Right, a host's list view taken over by subclassing (it keeps its own
// selection mode), and a button that copies it through a print-list object
// the page holds, showing what reached the clipboard.
#include <quorvel/lists/list_ctrl.h>
#include <quorvel/lists/print_list_object.h>
#include <quorvel/platform/imagelist.h>

#include <commctrl.h>

#include <memory>
#include <string>
#include <vector>

#include "gallery.h"

namespace gallery {

namespace {

constexpr UINT kOrdersId = 5000;
constexpr UINT kShiftsId = 5001;
constexpr UINT kCopyId = 5002;
constexpr UINT kClipboardId = 5003;

// A 16 x 16 status picture: a filled circle in `color` on a transparent
// (masked) background.
HBITMAP StatusPicture(COLORREF color) {
    HDC screen = ::GetDC(nullptr);
    HDC dc = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, 16, 16);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ oldBitmap = ::SelectObject(dc, bitmap);
    HBRUSH back = ::CreateSolidBrush(RGB(255, 0, 255));
    const RECT all{0, 0, 16, 16};
    ::FillRect(dc, &all, back);
    ::DeleteObject(back);
    HBRUSH fill = ::CreateSolidBrush(color);
    HPEN pen = ::CreatePen(PS_SOLID, 1, RGB(64, 64, 64));
    HGDIOBJ oldBrush = ::SelectObject(dc, fill);
    HGDIOBJ oldPen = ::SelectObject(dc, pen);
    ::Ellipse(dc, 2, 2, 14, 14);
    ::SelectObject(dc, oldPen);
    ::SelectObject(dc, oldBrush);
    ::DeleteObject(pen);
    ::DeleteObject(fill);
    ::SelectObject(dc, oldBitmap);
    ::DeleteDC(dc);
    return bitmap;
}

// Deterministic sample data (a small linear congruential generator), so the
// screenshots are the same on every run.
struct Sample {
    unsigned state = 12345;
    unsigned Next(unsigned range) {
        state = state * 1103515245u + 12345u;
        return (state >> 8) % range;
    }
};

struct ListsObjects : PageObjects {
    qv::ImageList pictures;
    XBaseListCtrl orders;
    XBaseListCtrl shifts;
    qv::ComPtr<IZTPrintGenericListObject> copier;
    HWND clipboardView = nullptr;
    HWND page = nullptr;
    ~ListsObjects() override;
};

void FillOrders(XBaseListCtrl& list) {
    list.InsertColumn(0, L"", LVCFMT_LEFT, 24);
    list.InsertColumn(1, L"Order", LVCFMT_LEFT, 90);
    list.InsertColumn(2, L"Quantity", LVCFMT_RIGHT, 70);
    list.InsertColumn(3, L"Amount", LVCFMT_RIGHT, 90);
    list.InsertColumn(4, L"Due", LVCFMT_LEFT, 130);
    list.InsertColumn(5, L"Planner", LVCFMT_LEFT, 80);
    list.InsertColumn(6, L"Note", LVCFMT_LEFT, 150);

    static const wchar_t* const planners[] = {L"Adams", L"Berger", L"Chen", L"Dubois", L"Eriksen", L"Fischer"};
    static const wchar_t* const notes[] = {L"Rush order", L"Customer collects", L"Check drawing rev. C",
                                           L"Split delivery", L"Material on hold"};
    const DATE firstDay = 46023.0;  // 1 January 2026
    Sample random;
    ::SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    for (int i = 0; i < 10000; ++i) {
        std::vector<qv::Variant> row;
        row.reserve(6);
        wchar_t order[16];
        swprintf(order, 16, L"PO-%05d", 10000 + static_cast<int>(random.Next(90000)));
        row.emplace_back(order);
        row.emplace_back(static_cast<long>(1 + random.Next(500)));
        row.emplace_back(static_cast<double>(random.Next(10000000)) / 100.0);
        // Most due dates are whole days; every fourth has a time of day.
        const double time = (i % 4 == 0) ? (8 + random.Next(10)) / 24.0 : 0.0;
        row.push_back(qv::Variant::FromDate(firstDay + random.Next(365) + time));
        row.emplace_back(planners[random.Next(6)]);
        const unsigned note = random.Next(10);
        if (note < 5) row.emplace_back(notes[note]);
        else if (note < 8) row.emplace_back();  // never filled in
        else row.push_back(qv::Variant::Null());  // cleared by a planner
        list.AddEntry(std::move(row), i, static_cast<int>(random.Next(4)));
    }
    ::SendMessageW(list, WM_SETREDRAW, TRUE, 0);
}

void FillShifts(XBaseListCtrl& list) {
    list.InsertColumn(0, L"Shift", LVCFMT_LEFT, 70);
    list.InsertColumn(1, L"Line", LVCFMT_CENTER, 50);
    list.InsertColumn(2, L"Hours", LVCFMT_RIGHT, 60);
    list.InsertColumn(3, L"Lead", LVCFMT_LEFT, 90);
    struct Shift {
        const wchar_t* name;
        long line;
        double hours;
        const wchar_t* lead;
    };
    static const Shift shifts[] = {{L"Early", 1, 7.5, L"M. Novak"}, {L"Early", 2, 7.5, L"R. Silva"},
                                   {L"Late", 1, 8.0, L"A. Kim"},    {L"Late", 2, 7.25, L"J. Okafor"},
                                   {L"Night", 1, 6.5, L"T. Meyer"}};
    int row = 0;
    for (const Shift& s : shifts) {
        list.AddEntry({qv::Variant(s.name), qv::Variant(s.line), qv::Variant(s.hours), qv::Variant(s.lead)}, row++,
                      -1);
    }
}

// Copies the shifts list through the page's print-list object and shows the
// clipboard's text.
void CopyShifts(ListsObjects& objects) {
    if (!objects.copier) return;
    if (!objects.shifts.PrintListSetColNameSize(objects.copier.Get()) ||
        !objects.shifts.PrintListSetItemData(objects.copier.Get()))
        return;
    if (objects.copier->CopyToClipboard() != S_OK) return;
    std::wstring text;
    if (::OpenClipboard(objects.clipboardView)) {
        if (HANDLE data = ::GetClipboardData(CF_UNICODETEXT)) {
            if (const auto* chars = static_cast<const wchar_t*>(::GlobalLock(data))) {
                text = chars;
                ::GlobalUnlock(data);
            }
        }
        ::CloseClipboard();
    }
    // Show the tabs as arrows so the columns can be seen.
    for (wchar_t& c : text)
        if (c == L'\t') c = L'\x2192';
    ::SetWindowTextW(objects.clipboardView, text.c_str());
}

// A subclass of the page sees the copy button; everything else goes on to
// the gallery's page procedure.
LRESULT CALLBACK ListsPageProc(HWND page, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR data) {
    if (msg == WM_COMMAND && LOWORD(wp) == kCopyId && HIWORD(wp) == BN_CLICKED) {
        CopyShifts(*reinterpret_cast<ListsObjects*>(data));
        return 0;
    }
    return ::DefSubclassProc(page, msg, wp, lp);
}

ListsObjects::~ListsObjects() {
    if (page) ::RemoveWindowSubclass(page, ListsPageProc, 1);
}

}  // namespace

std::unique_ptr<PageObjects> BuildListsPage(HWND page) {
    auto objects = std::make_unique<ListsObjects>();
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);

    AddLabel(page,
             L"10 000 orders with typed values. Click a column title to sort (one direction for all columns: "
             L"every click turns it round); right-click for Print, Preview and Copy to clipboard.",
             16, 8, 620, 36);
    if (objects->pictures.Create(16, 16, ILC_COLOR32 | ILC_MASK, 4, 0)) {
        for (COLORREF color : {RGB(46, 160, 67), RGB(240, 180, 0), RGB(210, 50, 40), RGB(80, 120, 220)}) {
            HBITMAP picture = StatusPicture(color);
            objects->pictures.Add(picture, RGB(255, 0, 255));
            ::DeleteObject(picture);
        }
        objects->orders.AssignImageList(&objects->pictures);
    }
    objects->orders.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP, RECT{16, 50, 660, 600}, page, kOrdersId);
    objects->orders.SetFont(GalleryFont());
    FillOrders(objects->orders);

    AddLabel(page, L"A host's list view, subclassed: it keeps its multiple selection.", 680, 8, 300, 36);
    HWND hostList = ::CreateWindowExW(WS_EX_CLIENTEDGE, WC_LISTVIEWW, L"",
                                      WS_CHILD | WS_VISIBLE | WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS, 680, 50,
                                      300, 150, page, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kShiftsId)),
                                      instance, nullptr);
    ::SendMessageW(hostList, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), FALSE);
    objects->shifts.Attach(hostList);
    FillShifts(objects->shifts);

    HWND copy = ::CreateWindowExW(0, L"BUTTON", L"Copy to clipboard", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 680, 212,
                                  140, 26, page, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kCopyId)), instance,
                                  nullptr);
    ::SendMessageW(copy, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), FALSE);
    AddLabel(page, L"What a spreadsheet receives (tabs as arrows):", 680, 250, 300, 20);
    objects->clipboardView = ::CreateWindowExW(
        WS_EX_CLIENTEDGE, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_MULTILINE | ES_READONLY | WS_VSCROLL, 680, 274,
        300, 130, page, reinterpret_cast<HMENU>(static_cast<INT_PTR>(kClipboardId)), instance, nullptr);
    ::SendMessageW(objects->clipboardView, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), FALSE);
    XPrintListObject::CreateInstance(&objects->copier);

    if (::SetWindowSubclass(page, ListsPageProc, 1, reinterpret_cast<DWORD_PTR>(objects.get())))
        objects->page = page;
    return objects;
}

namespace {

// The preview shown while the picture of it is taken: the timer fires inside
// the preview's own message loop, takes the picture and closes it.
XPrintListObject* g_previewed = nullptr;

void CALLBACK ShootPreview(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND preview = g_previewed ? g_previewed->GetPreviewWindow() : nullptr;
    if (!preview) return;  // not up yet
    ::KillTimer(nullptr, timer);
    WriteWindowShot(preview, L"lists-preview");
    ::PostMessageW(preview, WM_CLOSE, 0, 0);
}

// The orders as the print preview shows them, in a picture of their own.
void ShootOrdersPreview(HWND page) {
    XPrintListObject* object = nullptr;
    if (FAILED(XPrintListObject::CreateObject(&object))) return;
    auto* orders = dynamic_cast<XBaseListCtrl*>(qv::Window::FromHandle(::GetDlgItem(page, kOrdersId)));
    if (orders && orders->PrintListSetColNameSize(object) && orders->PrintListSetItemData(object)) {
        g_previewed = object;
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 400, ShootPreview);
        qv::Bstr form(L"Orders");
        object->PreviewList(0, form);
        ::KillTimer(nullptr, timer);
        g_previewed = nullptr;
    }
    object->Release();
}

}  // namespace

// For the picture: the orders sorted by their due date (a real click on the
// column title), one row selected, and the shifts copied; the print preview
// of the orders gets a picture of its own.
void ShowListsForShot(HWND page) {
    if (InScreenshotMode()) ShootOrdersPreview(page);
    HWND orders = ::GetDlgItem(page, kOrdersId);
    HWND header = reinterpret_cast<HWND>(::SendMessageW(orders, LVM_GETHEADER, 0, 0));
    RECT item{};
    if (::SendMessageW(header, HDM_GETITEMRECT, 4, reinterpret_cast<LPARAM>(&item))) {
        const LPARAM at = MAKELPARAM((item.left + item.right) / 2, (item.top + item.bottom) / 2);
        ::SendMessageW(header, WM_LBUTTONDOWN, MK_LBUTTON, at);
        ::SendMessageW(header, WM_LBUTTONUP, 0, at);
    }
    LVITEMW state{};
    state.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    state.state = LVIS_SELECTED | LVIS_FOCUSED;
    ::SendMessageW(orders, LVM_SETITEMSTATE, 2, reinterpret_cast<LPARAM>(&state));
    ::SetFocus(orders);
    ::SendMessageW(page, WM_COMMAND, MAKEWPARAM(kCopyId, BN_CLICKED),
                   reinterpret_cast<LPARAM>(::GetDlgItem(page, kCopyId)));
}

}  // namespace gallery
