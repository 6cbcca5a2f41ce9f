#include "quorvel/lists/list_ctrl.h"

#include <objbase.h>
#include <oleacc.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/lists/list_rules.h"
#include "quorvel/lists/print_list_object.h"
#include "quorvel/platform/datetime.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/platform/imagelist.h"

namespace ql = qv::lists;

namespace {

// Log positions of the print export.
constexpr unsigned long kLineHeaderStyle = 396;   // names and widths: not a report view
constexpr unsigned long kLineHeaderFailed = 524;  // names and widths could not be handed over
constexpr unsigned long kLineItemsStyle = 542;    // cells: not a report view
constexpr unsigned long kLineItemsFailed = 693;   // cells could not be handed over

constexpr wchar_t kColNameSizeFunction[] = L" XBaseListCtrl::PrintListSetColNameSize";
constexpr wchar_t kItemDataFunction[] = L" XBaseListCtrl::PrintListSetItemData";
constexpr wchar_t kInvalidStyle[] = L"Invalid ListViewStyle for printing";

constexpr wchar_t kPrint[] = L"Print";
constexpr wchar_t kPreview[] = L"Preview";
constexpr wchar_t kCopy[] = L"Copy to clipboard";
constexpr wchar_t kFormName[] = L"genformname";

// What a reader hears of the sort column, and a header item's default action.
constexpr wchar_t kSortedAscending[] = L"sorted ascending";
constexpr wchar_t kSortedDescending[] = L"sorted descending";
constexpr wchar_t kClick[] = L"Click";

std::wstring Translated(const wchar_t* text) {
    const wchar_t* translated = CoTranslateText(text);
    return translated ? translated : text;
}

// The title of header item `item` of `header`, "" when it has none.
std::wstring HeaderTitle(HWND header, int item) {
    wchar_t text[257] = {};
    HDITEMW hdi{};
    hdi.mask = HDI_TEXT;
    hdi.pszText = text;
    hdi.cchTextMax = 256;
    if (!::SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&hdi))) return {};
    return text;
}

// The header's items from left to right as the user arranged them (the
// item indexes in order when the header cannot say).
std::vector<int> HeaderOrder(HWND header) {
    const int count = header ? static_cast<int>(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)) : 0;
    std::vector<int> order(static_cast<size_t>(count > 0 ? count : 0));
    if (order.empty()) return order;
    if (!::SendMessageW(header, HDM_GETORDERARRAY, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(order.data())))
        for (int i = 0; i < count; ++i) order[static_cast<size_t>(i)] = i;
    return order;
}


bool IsReportView(HWND list) {
    return (static_cast<DWORD>(::GetWindowLongPtrW(list, GWL_STYLE)) & LVS_TYPEMASK) == LVS_REPORT;
}

// The text of a value as a cell shows it: a date in the user's date and time
// format, anything else as VariantChangeType makes it text (nothing when
// that fails, as for a null).
void ValueText(const qv::Variant& value, std::wstring& text) {
    if (value.vt == VT_DATE) {
        text = qv::OleDateTime(value.date).Format(0, LANG_USER_DEFAULT);
        return;
    }
    if (value.vt == VT_BSTR) {
        text.assign(value.bstrVal ? value.bstrVal : L"", value.bstrVal ? ::SysStringLen(value.bstrVal) : 0);
        return;
    }
    qv::Variant converted;
    if (FAILED(::VariantChangeType(&converted, const_cast<qv::Variant*>(&value), 0, VT_BSTR)) ||
        converted.vt != VT_BSTR) {
        text.clear();
        return;
    }
    text = converted.Text();
}

// CoTaskMemAlloc'ed arrays that are freed unless handed over.
template <class T>
class TaskArray {
public:
    explicit TaskArray(int count)
        : p_(static_cast<T*>(::CoTaskMemAlloc(sizeof(T) * static_cast<size_t>(count > 0 ? count : 1)))) {
        if (p_)
            for (int i = 0; i < (count > 0 ? count : 1); ++i) p_[i] = T{};
    }
    ~TaskArray() { ::CoTaskMemFree(p_); }
    TaskArray(const TaskArray&) = delete;
    TaskArray& operator=(const TaskArray&) = delete;
    T* get() const noexcept { return p_; }
    T* release() noexcept {
        T* p = p_;
        p_ = nullptr;
        return p;
    }
    explicit operator bool() const noexcept { return p_ != nullptr; }
    T& operator[](int i) const noexcept { return p_[i]; }

private:
    T* p_;
};

}  // namespace

// ---- qv::ReportRowsSource -----------------------------------------------------------

namespace qv {

int ReportRowsSource::RowOfChild(long child) const {
    HWND list = RowsWindow();
    if (!list || !::IsWindow(list) || child < 1) return -1;
    const auto rows = static_cast<long>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    return child <= rows ? static_cast<int>(child - 1) : -1;
}

void ReportRowsSource::RaiseRowsReordered() const { RaiseAccessibleEvent(RowsWindow(), EVENT_OBJECT_REORDER); }

bool ReportRowsSource::AccessibleChildCount(long& count) {
    HWND list = RowsWindow();
    if (!list || !::IsWindow(list)) return false;
    count = static_cast<long>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    return true;
}

bool ReportRowsSource::AccessibleName(long child, std::wstring& name) {
    const int row = RowOfChild(child);
    if (row < 0) return false;
    HWND header = reinterpret_cast<HWND>(::SendMessageW(RowsWindow(), LVM_GETHEADER, 0, 0));
    const ql::RowReading plan = ql::RowReadingPlan(HeaderOrder(header), RowsUnreadColumn());
    name = plan.nameItem >= 0 ? ql::RowNameText(RowCellText(row, plan.nameItem)) : std::wstring();
    return true;
}

bool ReportRowsSource::AccessibleValue(long child, std::wstring& value) {
    const int row = RowOfChild(child);
    if (row < 0) return false;
    HWND header = reinterpret_cast<HWND>(::SendMessageW(RowsWindow(), LVM_GETHEADER, 0, 0));
    const ql::RowReading plan = ql::RowReadingPlan(HeaderOrder(header), RowsUnreadColumn());
    std::vector<ql::ReadCell> cells;
    cells.reserve(plan.valueItems.size());
    for (const int item : plan.valueItems) cells.push_back({HeaderTitle(header, item), RowCellText(row, item)});
    value = ql::RowValueText(cells);
    return true;
}

bool ReportRowsSource::AccessibleRole(long child, long& role) {
    if (child == CHILDID_SELF) {
        role = ROLE_SYSTEM_LIST;
        return true;
    }
    if (RowOfChild(child) < 0) return false;
    role = ROLE_SYSTEM_LISTITEM;
    return true;
}

bool ReportRowsSource::AccessibleState(long child, long& state) {
    const int row = RowOfChild(child);
    if (row < 0) return false;
    HWND list = RowsWindow();
    const auto rowState = static_cast<UINT>(
        ::SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED | LVIS_FOCUSED));
    state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    if (!(::GetWindowLongPtrW(list, GWL_STYLE) & LVS_SINGLESEL)) state |= STATE_SYSTEM_MULTISELECTABLE;
    if (rowState & LVIS_SELECTED) state |= STATE_SYSTEM_SELECTED;
    if ((rowState & LVIS_FOCUSED) && ::GetFocus() == list) state |= STATE_SYSTEM_FOCUSED;
    RECT rect{}, client{}, shown{};
    ::GetClientRect(list, &client);
    if (AccessibleItemRect(child, rect) && !::IntersectRect(&shown, &rect, &client)) state |= STATE_SYSTEM_OFFSCREEN;
    return true;
}

bool ReportRowsSource::AccessibleItemRect(long child, RECT& rect) {
    const int row = RowOfChild(child);
    if (row < 0) return false;
    rect = RECT{LVIR_BOUNDS, 0, 0, 0};
    return ::SendMessageW(RowsWindow(), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect)) != 0;
}

bool ReportRowsSource::AccessibleHitTest(POINT client, long& child) {
    HWND list = RowsWindow();
    if (!list || !::IsWindow(list)) return false;
    LVHITTESTINFO info{};
    info.pt = client;
    const auto row = static_cast<int>(::SendMessageW(list, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
    if (row < 0 || !(info.flags & LVHT_ONITEM)) return false;
    child = row + 1;
    return true;
}

}  // namespace qv

// ---- XSrtHeaderCtrl -------------------------------------------------------------

int XSrtHeaderCtrl::SetSortColumn(int column, bool ascending) {
    const int previous = m_iSortColumn;
    // The same column and direction again, the item still owner-drawn: what
    // is on the screen is already right.
    if (column == m_iSortColumn && ascending == m_bSortAscending && column == m_iOwnerDrawn) return previous;
    const bool changed = column != m_iSortColumn || ascending != m_bSortAscending;
    m_iSortColumn = column;
    m_bSortAscending = ascending;
    HDITEMW item{};
    item.mask = HDI_FORMAT;
    bool ownerDrawn = false;
    if (GetItem(column, &item)) {
        item.fmt |= HDF_OWNERDRAW;
        ownerDrawn = SetItem(column, &item);
    }
    m_iOwnerDrawn = ownerDrawn ? column : -1;
    Invalidate();
    if (changed && m_hWnd) {
        // A reader hears the new sort column's description, and that the
        // column sorted before has none now.
        if (const long child = ChildOfItem(column)) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_DESCRIPTIONCHANGE, child);
        if (previous != column)
            if (const long child = ChildOfItem(previous))
                qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_DESCRIPTIONCHANGE, child);
    }
    return previous;
}

int XSrtHeaderCtrl::ItemOfChild(long child) {
    if (!IsWindow() || child < 1) return -1;
    const std::vector<int> order = HeaderOrder(m_hWnd);
    return child <= static_cast<long>(order.size()) ? order[static_cast<size_t>(child - 1)] : -1;
}

long XSrtHeaderCtrl::ChildOfItem(int item) {
    if (!IsWindow() || item < 0) return 0;
    const std::vector<int> order = HeaderOrder(m_hWnd);
    for (size_t i = 0; i < order.size(); ++i)
        if (order[i] == item) return static_cast<long>(i) + 1;
    return 0;
}

bool XSrtHeaderCtrl::AccessibleChildCount(long& count) {
    if (!IsWindow()) return false;
    count = GetItemCount();
    return true;
}

bool XSrtHeaderCtrl::AccessibleName(long child, std::wstring& name) {
    const int item = ItemOfChild(child);
    if (item < 0) return false;
    name = HeaderTitle(m_hWnd, item);
    return true;
}

bool XSrtHeaderCtrl::AccessibleDescription(long child, std::wstring& description) {
    const int item = ItemOfChild(child);
    if (item < 0) return false;
    description.clear();
    if (item == m_iSortColumn) description = Translated(m_bSortAscending ? kSortedAscending : kSortedDescending);
    return true;
}

bool XSrtHeaderCtrl::AccessibleRole(long child, long& role) {
    if (child == CHILDID_SELF) {
        role = ROLE_SYSTEM_LIST;
        return true;
    }
    if (ItemOfChild(child) < 0) return false;
    role = ROLE_SYSTEM_COLUMNHEADER;
    return true;
}

bool XSrtHeaderCtrl::AccessibleState(long child, long& state) {
    const int item = ItemOfChild(child);
    if (item < 0) return false;
    state = STATE_SYSTEM_READONLY;
    RECT rect{};
    if (!GetItemRect(item, rect) || rect.right <= rect.left) state |= STATE_SYSTEM_INVISIBLE;
    return true;
}

bool XSrtHeaderCtrl::AccessibleItemRect(long child, RECT& rect) {
    const int item = ItemOfChild(child);
    return item >= 0 && GetItemRect(item, rect);
}

bool XSrtHeaderCtrl::AccessibleHitTest(POINT client, long& child) {
    if (!IsWindow()) return false;
    HDHITTESTINFO info{};
    info.pt = client;
    const auto item = static_cast<int>(SendMessage(HDM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
    if (item < 0) return false;
    child = ChildOfItem(item);
    return child > 0;
}

bool XSrtHeaderCtrl::AccessibleDefaultAction(long child, std::wstring& action) {
    // Only a header whose items are buttons sorts on a click.
    if (ItemOfChild(child) < 0 || !(GetStyle() & HDS_BUTTONS)) return false;
    action = Translated(kClick);
    return true;
}

bool XSrtHeaderCtrl::AccessibleDoDefaultAction(long child) {
    const int item = ItemOfChild(child);
    HWND owner = GetParent();
    if (item < 0 || !(GetStyle() & HDS_BUTTONS) || !owner) return false;
    // What a left click on the item tells the header's owner.
    NMHEADERW click{};
    click.hdr.hwndFrom = m_hWnd;
    click.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    click.hdr.code = HDN_ITEMCLICKW;
    click.iItem = item;
    click.iButton = 0;
    ::SendMessageW(owner, WM_NOTIFY, click.hdr.idFrom, reinterpret_cast<LPARAM>(&click));
    return true;
}

void XSrtHeaderCtrl::OnDpiChanged(UINT) {
    if (IsWindow()) Invalidate();
}

LRESULT XSrtHeaderCtrl::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case HDM_SETITEMW:
    case HDM_SETITEMA:
    case HDM_INSERTITEMW:
    case HDM_INSERTITEMA:
    case HDM_DELETEITEM:
    case WM_DESTROY:
        ForgetItems();  // an item's format, data or place may change
        break;
    default:
        break;
    }
    return qv::HeaderCtrl::WindowProc(msg, wp, lp);
}

void XSrtHeaderCtrl::ForgetItems() noexcept {
    m_iOwnerDrawn = -1;
    m_bItemsKnown = false;
}

int XSrtHeaderCtrl::CachedItemCount() {
    if (!m_hWnd) return 0;
    if (!m_bItemsKnown) {
        const int count = GetItemCount();
        m_itemData.assign(static_cast<size_t>(count > 0 ? count : 0), 0);
        m_itemDataRead.assign(m_itemData.size(), false);
        m_bItemsKnown = true;
    }
    return static_cast<int>(m_itemData.size());
}

bool XSrtHeaderCtrl::CachedItemData(int item, LPARAM& data) {
    if (item < 0 || item >= CachedItemCount()) return false;
    const size_t i = static_cast<size_t>(item);
    if (!m_itemDataRead[i]) {
        HDITEMW hdi{};
        hdi.mask = HDI_LPARAM;
        if (!GetItem(item, &hdi)) return false;
        m_itemData[i] = hdi.lParam;
        m_itemDataRead[i] = true;
    }
    data = m_itemData[i];
    return true;
}

bool XSrtHeaderCtrl::OnReflectDrawItem(DRAWITEMSTRUCT* dis) {
    if (!dis || dis->CtlType != ODT_HEADER) return false;
    DrawItem(dis);
    return true;
}

void XSrtHeaderCtrl::DrawItem(DRAWITEMSTRUCT* dis) {
    HDC dc = dis->hDC;
    const RECT rc = dis->rcItem;
    const bool sortColumn = static_cast<int>(dis->itemID) == m_iSortColumn;
    const int saved = ::SaveDC(dc);
    ::IntersectClipRect(dc, rc.left, rc.top, rc.right, rc.bottom);
    ::FillRect(dc, &rc, ::GetSysColorBrush(COLOR_BTNFACE));

    SIZE blank{};
    ::GetTextExtentPoint32W(dc, L" ", 1, &blank);
    const UINT dpi = qv::DpiOf(m_hWnd);
    const int off = ql::SortArrowInset(blank.cx, dpi);
    const int penWidth = ql::SortArrowPen(dpi);

    wchar_t text[256] = {};
    HDITEMW item{};
    item.mask = HDI_TEXT | HDI_FORMAT;
    item.pszText = text;
    item.cchTextMax = 256;
    if (!GetItem(static_cast<int>(dis->itemID), &item)) item.fmt = 0;
    const qv::Box box = ql::HeaderTextBox(qv::Box{rc.left, rc.top, rc.right, rc.bottom}, off,
                                          dis->itemState == ODS_SELECTED, sortColumn, dpi);
    if (box.left < box.right) {
        RECT textRect{box.left, box.top, box.right, box.bottom};
        ::SetBkMode(dc, TRANSPARENT);
        ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
        ::DrawTextW(dc, text, -1, &textRect, ql::HeaderTextFlags(item.fmt));
    }

    if (sortColumn) {
        qv::Pen highlight(::CreatePen(PS_SOLID, penWidth, ::GetSysColor(COLOR_BTNHILIGHT)));
        qv::Pen shadow(::CreatePen(PS_SOLID, penWidth, ::GetSysColor(COLOR_BTNSHADOW)));
        const ql::SortArrow arrow = ql::SortArrowGeometry(m_bSortAscending, rc.right, rc.bottom, off, penWidth);
        const HGDIOBJ ownPen = ::GetCurrentObject(dc, OBJ_PEN);
        for (const auto& [stroke, pen] : {std::pair{arrow.highlight, highlight.get()}, std::pair{arrow.shadow, shadow.get()}}) {
            ::SelectObject(dc, pen);
            ::MoveToEx(dc, stroke.from.x, stroke.from.y, nullptr);
            for (int i = 0; i < stroke.count; ++i) ::LineTo(dc, stroke.to[i].x, stroke.to[i].y);
        }
        ::SelectObject(dc, ownPen);  // before the pens go
    }
    ::RestoreDC(dc, saved);
}

// ---- XBaseListCtrl: set-up and lifetime ---------------------------------------------

XBaseListCtrl::XBaseListCtrl() noexcept = default;

XBaseListCtrl::~XBaseListCtrl() {
    try {
        if (IsWindow()) {
            if (OwnsWindow()) {
                // Our own WM_DESTROY frees the rows, while this class's
                // handlers are still reached.
                DestroyWindow();
            } else {
                // The host's list view lives on: it keeps its columns and
                // loses the rows, whose values go with this object.
                FreeMemory();
                if (HWND header = HeaderWindow()) {
                    HDITEMW item{};
                    item.mask = HDI_LPARAM;
                    for (int i = 0, n = ItemCount(header); i < n; ++i)
                        ::SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
                }
                DeleteAllItems();
            }
        }
    } catch (...) {
        qv::LogCaughtException(" XBaseListCtrl::~XBaseListCtrl", __LINE__);
    }
}

bool XBaseListCtrl::Attach(HWND hwnd) try {
    if (!qv::ListCtrl::Attach(hwnd)) return false;
    SetUpWindow(false);
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::Attach", __LINE__, false);
}

bool XBaseListCtrl::SubclassDlgItem(UINT id, HWND parent) {
    if (!parent || !::IsWindow(parent)) return false;
    return Attach(::GetDlgItem(parent, static_cast<int>(id)));
}

int XBaseListCtrl::OnCreate(CREATESTRUCTW* cs) {
    if (qv::ListCtrl::OnCreate(cs) == -1) return -1;
    SetUpWindow(true);
    return 0;
}

void XBaseListCtrl::SetUpWindow(bool created) {
    // A created list passes through list view (style bits 3) on its way to
    // report view; it has no lasting effect.
    if (created) ModifyStyle(0, 3);
    if ((GetStyle() & LVS_TYPEMASK) != LVS_REPORT) ModifyStyle(LVS_TYPEMASK, LVS_REPORT);
    if (m_pImageList) SetImageList(m_pImageList->GetSafeHandle(), LVSIL_SMALL);
    SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, kExtendedStyle);
    if (created) ModifyStyle(0, LVS_SINGLESEL);
    m_listViewProc = reinterpret_cast<WNDPROC>(::GetClassLongPtrW(m_hWnd, GCLP_WNDPROC));
    // The list view's header (its child with id 0, which LVM_GETHEADER
    // names without mistaking a label-edit field for it).
    HWND header = GetHeaderCtrl();
    if (header && m_ctlHeader.m_hWnd != header) {
        if (m_ctlHeader.m_hWnd) m_ctlHeader.Detach();
        m_ctlHeader.ForgetItems();
        m_ctlHeader.Attach(header);
    }
    m_bRowsReleased = false;
    // A host that never chose a print-list object gets the library's own.
    if (!m_bGenListObjectChosen && !m_pGenListObject) {
        IZTPrintGenericListObject* object = nullptr;
        if (SUCCEEDED(XPrintListObject::CreateInstance(&object))) m_pGenListObject.Attach(object);
    }
}

void XBaseListCtrl::OnDestroy() {
    FreeMemory();
    Default();
}

void XBaseListCtrl::FreeMemory() {
    if (!IsWindow()) return;
    m_strDisplayText.clear();
    m_strDisplayText.shrink_to_fit();
    if (!m_bColumnsNotKeyed) {
        if (HWND header = HeaderWindow()) {
            for (int i = 0, n = ItemCount(header); i < n; ++i) delete KeyOf(i);
        }
        m_bColumnsNotKeyed = true;
    }
    if (!m_bRowsReleased) {
        for (int i = 0, n = GetItemCount(); i < n; ++i) delete RowOf(i);
        m_bRowsReleased = true;
    }
}

void XBaseListCtrl::DeleteBSTR(unsigned long count, BSTR* array) {
    if (!array) return;
    for (unsigned long i = count; i > 0; --i) ::SysFreeString(array[i - 1]);
}

HWND XBaseListCtrl::HeaderWindow() const {
    if (m_ctlHeader.m_hWnd) return m_ctlHeader.m_hWnd;
    return IsWindow() ? GetHeaderCtrl() : nullptr;
}

int XBaseListCtrl::ItemCount(HWND header) const {
    if (!header) return 0;
    if (header == m_ctlHeader.m_hWnd) return const_cast<XSrtHeaderCtrl&>(m_ctlHeader).CachedItemCount();
    return static_cast<int>(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
}

const int* XBaseListCtrl::KeyOf(int item) const {
    HWND header = HeaderWindow();
    if (!header) return nullptr;
    LPARAM data = 0;
    if (header == m_ctlHeader.m_hWnd) {
        if (!const_cast<XSrtHeaderCtrl&>(m_ctlHeader).CachedItemData(item, data)) return nullptr;
    } else {
        HDITEMW hdi{};
        hdi.mask = HDI_LPARAM;
        if (!::SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&hdi)))
            return nullptr;
        data = hdi.lParam;
    }
    return reinterpret_cast<const int*>(data);
}

XBaseListCtrl::RowData* XBaseListCtrl::RowOf(int row) const {
    LVITEMW item{};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    if (!AskListView(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item))) return nullptr;
    return reinterpret_cast<RowData*>(item.lParam);
}

int XBaseListCtrl::RowCount() const { return static_cast<int>(AskListView(LVM_GETITEMCOUNT, 0, 0)); }

LRESULT XBaseListCtrl::AskListView(UINT msg, WPARAM wp, LPARAM lp) const {
    if (m_listViewProc) return ::CallWindowProcW(m_listViewProc, m_hWnd, msg, wp, lp);
    return ::SendMessageW(m_hWnd, msg, wp, lp);
}

// ---- Rows -----------------------------------------------------------------------

bool XBaseListCtrl::AssignImageList(qv::ImageList* list) try {
    if (m_pImageList || !list || !list->GetSafeHandle()) return false;
    m_pImageList = list;
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::AssignImageList", __LINE__, false);
}

bool XBaseListCtrl::AddEntry(std::vector<qv::Variant> values, int row, int image) try {
    if (!IsWindow()) return false;
    HWND header = HeaderWindow();
    const int columns = ItemCount(header);
    const bool images = m_pImageList != nullptr;
    if (!ql::AcceptsEntry(columns, images, image, values.size())) return false;
    const int first = ql::FirstValueColumn(images);

    if (m_bColumnsNotKeyed) {
        for (int c = first; c < columns; ++c) {
            auto key = std::make_unique<int>(c);
            HDITEMW hdi{};
            hdi.mask = HDI_LPARAM;
            hdi.lParam = reinterpret_cast<LPARAM>(key.get());
            if (!::SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(c), reinterpret_cast<LPARAM>(&hdi))) {
                // Take back the keys given so far.
                for (int k = first; k < c; ++k) {
                    delete KeyOf(k);
                    HDITEMW none{};
                    none.mask = HDI_LPARAM;
                    ::SendMessageW(header, HDM_SETITEMW, static_cast<WPARAM>(k), reinterpret_cast<LPARAM>(&none));
                }
                return false;
            }
            key.release();
        }
        m_bColumnsNotKeyed = false;
    }

    auto data = std::make_unique<RowData>();
    for (size_t i = 0; i < values.size(); ++i) {
        const int* key = KeyOf(first + static_cast<int>(i));
        if (!key) return false;
        data->emplace(*key, std::move(values[i]));
    }

    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = row;
    item.pszText = LPSTR_TEXTCALLBACKW;
    item.lParam = reinterpret_cast<LPARAM>(data.get());
    if (images) {
        // I_IMAGENONE (-2) is a row without a picture.
        item.mask |= LVIF_IMAGE;
        item.iImage = image;
    }
    m_bRowsReleased = false;  // rows are coming in again
    if (InsertItem(&item) == -1) return false;
    data.release();
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::AddEntry", __LINE__, false);
}

bool XBaseListCtrl::ReplaceRowValues(int row, std::vector<qv::Variant> values) try {
    if (!IsWindow() || row < 0 || row >= RowCount() || m_bColumnsNotKeyed) return false;
    RowData* data = RowOf(row);
    HWND header = HeaderWindow();
    const int columns = ItemCount(header);
    const int first = ql::FirstValueColumn(m_pImageList != nullptr);
    if (!data || values.empty() || static_cast<int>(values.size()) != columns - first) return false;
    for (size_t i = 0; i < values.size(); ++i) {
        const int* key = KeyOf(first + static_cast<int>(i));
        if (!key) return false;
        (*data)[*key] = std::move(values[i]);
    }
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::ReplaceRowValues", __LINE__, false);
}

bool XBaseListCtrl::ChangeEntry(std::vector<qv::Variant> values, int row, int image) try {
    if (!IsWindow() || row < 0 || row >= GetItemCount()) return false;
    if (!DeleteRow(row)) return false;
    return AddEntry(std::move(values), row, image);
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::ChangeEntry", __LINE__, false);
}

bool XBaseListCtrl::DeleteRow(int row) try {
    if (!IsWindow() || row < 0 || row >= GetItemCount()) return false;
    RowData* data = RowOf(row);
    if (!data) return false;
    m_lastReleasedRow = 0;
    const bool deleted = DeleteItem(row);
    // The deletion notification has normally freed the row; a list whose
    // notifications do not reach it frees it here.
    if (deleted && m_lastReleasedRow != reinterpret_cast<LPARAM>(data)) delete data;
    m_lastReleasedRow = 0;
    return deleted;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::DeleteRow", __LINE__, false);
}

void XBaseListCtrl::OnDeleteItem(LPARAM data) {
    if (m_bRowsReleased || !data) return;
    delete reinterpret_cast<RowData*>(data);
    m_lastReleasedRow = data;
}

void XBaseListCtrl::OnDeleteAllItems() {
    if (m_bRowsReleased) return;
    // Free them all now: a parent that answers TRUE here stops the
    // notifications of the single rows.
    for (int i = 0, n = GetItemCount(); i < n; ++i) delete RowOf(i);
    m_bRowsReleased = true;
}

bool XBaseListCtrl::GetData(int row, int column, qv::Variant& out) try {
    if (!IsWindow()) return false;
    HWND header = HeaderWindow();
    if (!header || row > GetItemCount() || column > ItemCount(header)) return false;
    out.Clear();
    const int key = column;
    const qv::Variant* value = ql::FindCell(RowOf(row), &key);
    if (!value) return false;
    out = *value;
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::GetData", __LINE__, false);
}

bool XBaseListCtrl::GetSelData(int column, qv::Variant& out) try {
    if (!IsWindow()) return false;
    HWND header = HeaderWindow();
    if (!header || column > ItemCount(header)) return false;
    out.Clear();
    const int key = column;
    for (int i = GetNextItem(-1, LVNI_SELECTED); i >= 0; i = GetNextItem(i, LVNI_SELECTED)) {
        if (const qv::Variant* value = ql::FindCell(RowOf(i), &key)) {
            out = *value;
            return true;
        }
    }
    return false;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::GetSelData", __LINE__, false);
}

bool XBaseListCtrl::SelectRow(int row) try {
    if (!IsWindow()) return false;
    const int count = GetItemCount();
    if (row < 0 || row >= count) return false;
    bool any = false;
    for (int i = 0; i < count; ++i)
        any = SetItemState(i, i == row ? LVIS_SELECTED : 0, LVIS_SELECTED) || any;
    return any;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::SelectRow", __LINE__, false);
}

// ---- Messages ------------------------------------------------------------------------

LRESULT XBaseListCtrl::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_DRAWITEM) {
        // The header is the list view's child with id 0, so its owner-drawn
        // items come here with wParam 0 like a menu's and are not reflected
        // to it: hand them over.
        auto* dis = reinterpret_cast<DRAWITEMSTRUCT*>(lp);
        if (dis && dis->CtlType == ODT_HEADER && m_ctlHeader.m_hWnd && dis->hwndItem == m_ctlHeader.m_hWnd) {
            m_ctlHeader.DrawItem(dis);
            return TRUE;
        }
    }
    return qv::ListCtrl::WindowProc(msg, wp, lp);
}

void XBaseListCtrl::OnSetFocus(HWND oldFocus) {
    qv::ListCtrl::OnSetFocus(oldFocus);
    RECT rect = GetWindowRect();
    ::MapWindowPoints(nullptr, GetParent(), reinterpret_cast<POINT*>(&rect), 2);
    RECT wider = rect;
    wider.right += 1;
    MoveWindow(wider, true);
    MoveWindow(rect, true);
}

bool XBaseListCtrl::OnReflectNotify(NMHDR* hdr, LRESULT* result) {
    if (!hdr) return false;
    switch (hdr->code) {
    case LVN_COLUMNCLICK: *result = OnColumnclick(reinterpret_cast<NMLISTVIEW*>(hdr)); return true;
    case LVN_GETDISPINFOW: *result = OnGetdispinfo(reinterpret_cast<NMLVDISPINFOW*>(hdr)); return true;
    case NM_RCLICK: *result = OnRclick(hdr); return true;
    // The parent hears of deletions too.
    case LVN_DELETEITEM: OnDeleteItem(reinterpret_cast<NMLISTVIEW*>(hdr)->lParam); return false;
    case LVN_DELETEALLITEMS: OnDeleteAllItems(); return false;
    default: return false;
    }
}

LRESULT XBaseListCtrl::OnGetdispinfo(NMLVDISPINFOW* info) {
    LVITEMW& item = info->item;
    if (!(item.mask & LVIF_TEXT)) return 0;
    if (m_pImageList && item.iSubItem == 0) return 0;
    const RowData* row = item.lParam ? reinterpret_cast<const RowData*>(item.lParam) : RowOf(item.iItem);
    if (ql::CellText(row, KeyOf(item.iSubItem), m_strDisplayText, ValueText)) item.pszText = m_strDisplayText.data();
    return 0;
}

LRESULT XBaseListCtrl::OnColumnclick(NMLISTVIEW* info) {
    if (m_pImageList && info->iSubItem == 0) return 0;
    m_bSortDirection = !m_bSortDirection;
    XClickData click(info->iSubItem, m_bSortDirection, m_ctlHeader.m_hWnd ? &m_ctlHeader : nullptr);
    if (SortItems(&XBaseListCtrl::CompareFunc, reinterpret_cast<DWORD_PTR>(&click))) RaiseRowsReordered();
    return 0;
}

std::wstring XBaseListCtrl::RowCellText(int row, int column) { return CellTextOf(row, column, RowOf(row)); }

int CALLBACK XBaseListCtrl::CompareFunc(LPARAM rowData1, LPARAM rowData2, LPARAM clickData) {
    const auto* click = reinterpret_cast<const XClickData*>(clickData);
    if (!click || !click->GetHeaderCtrl()) return 0;
    qv::HeaderCtrl* header = click->GetHeaderCtrl();
    const int column = click->GetColumnNumber();
    const bool ascending = click->GetSortDirection();
    LPARAM data = 0;
    if (auto* sortHeader = dynamic_cast<XSrtHeaderCtrl*>(header)) {
        sortHeader->SetSortColumn(column, ascending);
        if (!sortHeader->CachedItemData(column, data)) return 0;
    } else {
        HDITEMW hdi{};
        hdi.mask = HDI_LPARAM;
        if (!header->GetItem(column, &hdi)) return 0;
        data = hdi.lParam;
    }
    const int* key = reinterpret_cast<const int*>(data);
    const qv::Variant* value1 = ql::FindCell(reinterpret_cast<const RowData*>(rowData1), key);
    const qv::Variant* value2 = ql::FindCell(reinterpret_cast<const RowData*>(rowData2), key);
    if (!value1 || !value2) return 0;
    return ql::SortOrder(value1->Compare(*value2), ascending);
}

BOOL XBaseListCtrl::OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) {
    if (m_pImageList && lp) {
        const auto* nm = reinterpret_cast<const NMHEADERW*>(lp);
        bool pinned = false;
        switch (nm->hdr.code) {
        case HDN_BEGINTRACKW:
        case HDN_DIVIDERDBLCLICKW:
        case HDN_ITEMCLICKW:
        case HDN_ITEMCHANGEDW:
        case HDN_BEGINTRACKA:
        case HDN_DIVIDERDBLCLICKA:
            pinned = nm->iItem == 0;
            break;
        case HDN_ENDDRAG:
            pinned = nm->iItem == 0 || (nm->pitem && nm->pitem->iOrder == 0);
            break;
        case HDN_BEGINDRAG:
            pinned = nm->pitem ? nm->pitem->iOrder == 0 : nm->iItem == 0;
            break;
        default:
            break;
        }
        if (pinned) {
            *result = 1;
            return TRUE;
        }
    }
    return qv::ListCtrl::OnNotify(wp, lp, result);
}

LRESULT XBaseListCtrl::OnRclick(NMHDR*) {
    if (!m_pGenListObject) return 0;
    POINT pt{};
    ::GetCursorPos(&pt);
    m_mapMenu.clear();
    m_mapMenu[kMenuPrint] = kPrint;
    m_mapMenu[kMenuPreview] = kPreview;
    m_mapMenu[kMenuCopy] = kCopy;
    HMENU menu = ::CreatePopupMenu();
    if (!menu) return 0;
    bool appended = true;
    for (const auto& [id, text] : m_mapMenu)
        appended = ::AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id), CoTranslateText(text.c_str())) && appended;
    if (appended) ::TrackPopupMenu(menu, TPM_RIGHTBUTTON, pt.x, pt.y, 0, m_hWnd, nullptr);
    ::DestroyMenu(menu);
    return 0;
}

BOOL XBaseListCtrl::OnCommand(WPARAM wp, LPARAM lp) {
    if (m_pGenListObject && HIWORD(wp) == 0) {
        const auto entry = m_mapMenu.find(static_cast<int>(LOWORD(wp)));
        if (entry != m_mapMenu.end()) {
            const std::wstring& text = entry->second;
            auto is = [&text](const wchar_t* name) {
                return ::CompareStringOrdinal(text.c_str(), -1, name, -1, TRUE) == CSTR_EQUAL;
            };
            // The object stays alive through its calls, whatever they do to the list.
            const qv::ComPtr<IZTPrintGenericListObject> object = m_pGenListObject;
            if (is(kPrint)) {
                if (CreatePrintData()) object->PrintList(0, qv::Bstr(kFormName));
            } else if (is(kPreview)) {
                if (CreatePrintData()) object->PreviewList(0, qv::Bstr(kFormName));
            } else if (is(kCopy)) {
                if (CreatePrintData()) object->CopyToClipboard();
            }
        }
    }
    return qv::ListCtrl::OnCommand(wp, lp);
}

// ---- Print export -------------------------------------------------------------------

void XBaseListCtrl::SetGenListObject(IZTPrintGenericListObject* object) {
    m_bGenListObjectChosen = true;
    m_pGenListObject = object;
}

bool XBaseListCtrl::CreatePrintData() {
    const qv::ComPtr<IZTPrintGenericListObject> object = m_pGenListObject;
    if (!object) return false;
    return PrintListSetColNameSize(object.Get()) && PrintListSetItemData(object.Get());
}

bool XBaseListCtrl::ReadOrder(int count, std::vector<int>& order) const {
    order.assign(static_cast<size_t>(count), 0);
    return ::SendMessageW(HeaderWindow(), HDM_GETORDERARRAY, static_cast<WPARAM>(count),
                          reinterpret_cast<LPARAM>(order.data())) != 0;
}

bool XBaseListCtrl::PrintListSetColNameSize(IZTPrintGenericListObject* given) try {
    if (!IsWindow()) return false;
    if (!IsReportView(m_hWnd)) {
        qv::LogFailure(kColNameSizeFunction, kLineHeaderStyle, kInvalidStyle, E_FAIL);
        return false;
    }
    const qv::ComPtr<IZTPrintGenericListObject> object = given ? given : m_pGenListObject.Get();
    auto fail = [&object] {
        if (object) object->ResetList();
        qv::LogFailure(kColNameSizeFunction, kLineHeaderFailed, L"Can't create header for printing lists", 0);
        return false;
    };
    if (!object) return fail();
    HWND header = HeaderWindow();
    const int n = ItemCount(header);
    if (!header || n < 1) return fail();

    TaskArray<BSTR> names(n);
    TaskArray<int> indices(n);
    TaskArray<int> alignments(n);
    std::vector<int> order;
    if (!names || !indices || !alignments || !ReadOrder(n, order)) return fail();
    const bool images = m_pImageList != nullptr;
    for (const ql::ExportColumn& column : ql::ExportPlan(order, images)) {
        const int i = column.position;
        std::wstring name;
        int width = 0;
        if (column.bitmap) {
            name = ql::kBitmapColumnName;
            alignments[i] = ql::kAlignBitmap;
            width = GetColumnWidth(0);
        } else {
            wchar_t text[257] = {};
            HDITEMW hdi{};
            hdi.mask = HDI_TEXT | HDI_FORMAT;
            hdi.pszText = text;
            hdi.cchTextMax = 256;
            if (::SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column.headerItem),
                               reinterpret_cast<LPARAM>(&hdi))) {
                alignments[i] = ql::AlignmentFromFormat(hdi.fmt);
                name = text;
                width = GetColumnWidth(column.headerItem);
            }
        }
        indices[i] = i;
        names[i] = ::SysAllocStringLen(name.data(), static_cast<UINT>(name.size()));
        if (!names[i]) {
            DeleteBSTR(static_cast<unsigned long>(n), names.get());
            return fail();
        }
        object->SetColumnWidth(i, width);
    }
    if (object->SetColumnHeaders(n, names.get(), indices.get(), alignments.get()) == S_OK) {
        // The object owns the arrays and their strings now.
        names.release();
        indices.release();
        alignments.release();
        return true;
    }
    DeleteBSTR(static_cast<unsigned long>(n), names.get());
    return fail();
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::PrintListSetColNameSize", __LINE__, false);
}

void XBaseListCtrl::ReadAllRows(std::vector<RowData*>& data) const {
    // The list view's own procedure answers the reads, past the subclasses
    // of the window (this object's and any other): reading an item's data
    // changes nothing that a subclass could need to see, and every message
    // through a subclassed window costs more than the read itself (under
    // Wine, round trips to the server for the subclass chain).
    const auto proc = reinterpret_cast<WNDPROC>(::GetClassLongPtrW(m_hWnd, GCLP_WNDPROC));
    for (size_t r = 0; r < data.size(); ++r) {
        LVITEMW item{};
        item.mask = LVIF_PARAM;
        item.iItem = static_cast<int>(r);
        const LRESULT read = proc ? ::CallWindowProcW(proc, m_hWnd, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item))
                                  : SendMessage(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        data[r] = read ? reinterpret_cast<RowData*>(item.lParam) : nullptr;
    }
}

std::wstring XBaseListCtrl::CellTextOf(int row, int subItem, RowData* data) {
    wchar_t none[1] = {};
    NMLVDISPINFOW info{};
    info.hdr.hwndFrom = m_hWnd;
    info.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    info.hdr.code = LVN_GETDISPINFOW;
    info.item.mask = LVIF_TEXT;
    info.item.iItem = row;
    info.item.iSubItem = subItem;
    info.item.lParam = reinterpret_cast<LPARAM>(data);
    info.item.pszText = none;
    info.item.cchTextMax = 1;
    OnGetdispinfo(&info);
    return info.item.pszText ? std::wstring(info.item.pszText) : std::wstring();
}

HBITMAP XBaseListCtrl::RowBitmap(int row) const {
    LVITEMW item{};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    if (!GetItem(&item) || !m_pImageList) return nullptr;
    int cx = 0, cy = 0;
    m_pImageList->GetIconSize(cx, cy);
    qv::ClientDC listDC(m_hWnd);
    HDC memory = ::CreateCompatibleDC(listDC);
    if (!memory) return nullptr;
    qv::Bitmap bitmap(::CreateCompatibleBitmap(listDC, cx, cy));
    bool drawn = false;
    if (bitmap) {
        HGDIOBJ old = ::SelectObject(memory, bitmap.get());
        // On paper white: the image's transparent parts would otherwise keep
        // whatever the new bitmap held (black on most devices).
        const RECT all{0, 0, cx, cy};
        ::FillRect(memory, &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        drawn = m_pImageList->Draw(memory, item.iImage, POINT{0, 0}, ILD_NORMAL);
        ::SelectObject(memory, old);
    }
    ::DeleteDC(memory);
    // A bitmap that holds no image is not handed over, and goes.
    return drawn ? bitmap.release() : nullptr;
}

bool XBaseListCtrl::PrintListSetItemData(IZTPrintGenericListObject* given) try {
    if (!IsWindow()) return false;
    if (!IsReportView(m_hWnd)) {
        // Reported under the name of the column operation, which makes the
        // same test.
        qv::LogFailure(kColNameSizeFunction, kLineItemsStyle, kInvalidStyle, E_FAIL);
        return false;
    }
    const qv::ComPtr<IZTPrintGenericListObject> object = given ? given : m_pGenListObject.Get();
    auto fail = [&object](long code) {
        if (object) object->ResetList();
        qv::LogFailure(kItemDataFunction, kLineItemsFailed, L"Can't create data for printing lists", code);
        return false;
    };
    if (!object) return fail(0);
    const int rows = GetItemCount();
    HWND header = HeaderWindow();
    const int n = ItemCount(header);
    if (!header || n < 1) return fail(0);
    std::vector<int> order;
    if (!ReadOrder(n, order)) return fail(0);

    // Every row's data, read once for all columns; a cell's text is then
    // what the list's text request answers for it, asked of the handler
    // directly rather than by a message per cell through the list view and
    // its parent.
    std::vector<RowData*> data(static_cast<size_t>(rows));
    ReadAllRows(data);
    const bool images = m_pImageList != nullptr;
    for (const ql::ExportColumn& column : ql::ExportPlan(order, images)) {
        TaskArray<BSTR> texts(rows);
        TaskArray<int> bitmaps(rows);
        TaskArray<int> alignments(rows);
        if (!texts || !bitmaps || !alignments) return fail(1);
        bool formatRead = false;
        int format = 0;
        if (images && !column.bitmap) {
            HDITEMW hdi{};
            hdi.mask = HDI_FORMAT;
            formatRead = ::SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(column.headerItem),
                                        reinterpret_cast<LPARAM>(&hdi)) != 0;
            format = hdi.fmt;
        }
        const int alignment = ql::CellAlignment(column, images, formatRead, format);
        bool allocated = true;
        for (int r = 0; r < rows; ++r) {
            std::wstring text;
            if (column.bitmap) {
                text = ql::kBitmapCellText;
                if (HBITMAP bitmap = RowBitmap(r))
                    bitmaps[r] = static_cast<int>(reinterpret_cast<INT_PTR>(bitmap));  // GDI handles fit 32 bits
            } else {
                text = CellTextOf(r, column.headerItem, data[static_cast<size_t>(r)]);
            }
            alignments[r] = alignment;
            texts[r] = ::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
            if (!texts[r]) allocated = false;
        }
        HRESULT hr = S_FALSE;
        if (allocated) {
            hr = object->SetColumnItems(column.position, rows, texts.get(), bitmaps.get(), alignments.get());
        } else {
            // Bitmaps that were never handed over are still ours.
            for (int r = 0; r < rows; ++r)
                if (bitmaps[r]) ::DeleteObject(reinterpret_cast<HGDIOBJ>(static_cast<INT_PTR>(bitmaps[r])));
        }
        DeleteBSTR(static_cast<unsigned long>(rows), texts.get());
        if (!allocated || hr == S_FALSE) return fail(1);
    }
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseListCtrl::PrintListSetItemData", __LINE__, false);
}
