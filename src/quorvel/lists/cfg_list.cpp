#include "quorvel/lists/cfg_list.h"

#include <objbase.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/lists/cfg_list_rules.h"
#include "quorvel/lists/list_rules.h"
#include "quorvel/platform/com.h"

namespace ql = qv::lists;

namespace {

// The log book source of the configuration tool, and the export's positions.
constexpr wchar_t kLogSource[] = L"ZTConfigTool";
constexpr unsigned long kLineHeaderFailed = 333;  // names and widths could not be handed over
constexpr unsigned long kLineItemsFailed = 439;   // cells could not be handed over
constexpr wchar_t kColNameSizeFunction[] = L" XCfgListCtrl::PrintListSetColNameSize";
constexpr wchar_t kItemDataFunction[] = L" XCfgListCtrl::PrintListSetItemData";

// The item fields that move with a row besides its texts.
constexpr UINT kRowStateMask = 0xFF0F;  // state image, overlay, focus, selection, cut, drop

// CoTaskMemAlloc'ed arrays that are freed unless handed over.
template <class T>
class TaskArray {
public:
    explicit TaskArray(int count) {
        const size_t n = static_cast<size_t>(count > 0 ? count : 1);
        p_ = static_cast<T*>(::CoTaskMemAlloc(sizeof(T) * n));
        if (p_)
            for (size_t i = 0; i < n; ++i) p_[i] = T{};
    }
    ~TaskArray() { ::CoTaskMemFree(p_); }
    TaskArray(const TaskArray&) = delete;
    TaskArray& operator=(const TaskArray&) = delete;
    T* get() const noexcept { return p_; }
    void release() noexcept { p_ = nullptr; }
    explicit operator bool() const noexcept { return p_ != nullptr; }
    T& operator[](int i) const noexcept { return p_[i]; }

private:
    T* p_ = nullptr;
};

void FreeStrings(int count, BSTR* strings) {
    if (!strings) return;
    for (int i = count; i > 0; --i) ::SysFreeString(strings[i - 1]);
}

// The rows of a list view as the sort sees them: texts of one column, and
// whole-row swaps done by the list.
class ListRows : public ql::SortableRows {
public:
    ListRows(const qv::ListCtrl& list, int column, std::function<void(int, int)> swap)
        : list_(list), column_(column), swap_(std::move(swap)) {}
    std::wstring Text(int row) override { return list_.GetItemText(row, column_); }
    void Swap(int a, int b) override { swap_(a, b); }

private:
    const qv::ListCtrl& list_;
    int column_;
    std::function<void(int, int)> swap_;
};

}  // namespace

// ---- Set-up and lifetime ------------------------------------------------------------

XCfgListCtrl::XCfgListCtrl() noexcept = default;

XCfgListCtrl::~XCfgListCtrl() {
    try {
        // Our own window goes while this class's handlers are still reached.
        if (IsWindow() && OwnsWindow()) DestroyWindow();
    } catch (...) {
        qv::LogCaughtException(" XCfgListCtrl::~XCfgListCtrl", __LINE__);
    }
}

bool XCfgListCtrl::Attach(HWND hwnd) try {
    if (!qv::ListCtrl::Attach(hwnd)) return false;
    SetUpWindow();
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XCfgListCtrl::Attach", __LINE__, false);
}

bool XCfgListCtrl::SubclassDlgItem(UINT id, HWND parent) {
    if (!parent || !::IsWindow(parent)) return false;
    return Attach(::GetDlgItem(parent, static_cast<int>(id)));
}

int XCfgListCtrl::OnCreate(CREATESTRUCTW* cs) {
    if (qv::ListCtrl::OnCreate(cs) == -1) return -1;
    SetUpWindow();
    return 0;
}

void XCfgListCtrl::SetUpWindow() {
    HWND header = GetHeaderCtrl();
    if (header && m_ctlHeader.m_hWnd != header) {
        if (m_ctlHeader.m_hWnd) m_ctlHeader.Detach();
        m_ctlHeader.Attach(header);
    }
}

int XCfgListCtrl::ColumnCount() const {
    HWND header = m_ctlHeader.m_hWnd ? m_ctlHeader.m_hWnd : (IsWindow() ? GetHeaderCtrl() : nullptr);
    return header ? static_cast<int>(::SendMessageW(header, HDM_GETITEMCOUNT, 0, 0)) : 0;
}

// ---- Sorting -------------------------------------------------------------------------

void XCfgListCtrl::SwapRows(int a, int b, int columns) {
    LVITEMW rowA{}, rowB{};
    for (auto [item, row] : {std::pair{&rowA, a}, std::pair{&rowB, b}}) {
        item->mask = LVIF_IMAGE | LVIF_PARAM | LVIF_STATE;
        item->iItem = row;
        item->stateMask = kRowStateMask;
        GetItem(item);
    }
    for (int c = 0; c < columns; ++c) {
        const std::wstring textA = GetItemText(a, c);
        const std::wstring textB = GetItemText(b, c);
        SetItemText(a, c, textB.c_str());
        SetItemText(b, c, textA.c_str());
    }
    rowA.iItem = b;
    rowB.iItem = a;
    SetItem(&rowA);
    SetItem(&rowB);
}

bool XCfgListCtrl::SortTextItems(int column, bool ascending, int low, int high) try {
    if (!IsWindow()) return false;
    const int columns = ColumnCount();
    if (column < 0 || column >= columns) return false;
    const int rows = GetItemCount();
    if (high == -1) high = rows - 1;
    if (high >= rows) return false;
    ListRows view(*this, column, [this, columns](int a, int b) { SwapRows(a, b, columns); });
    if (!ql::SortRowRange(view, ascending, low, high)) return false;
    RaiseRowsReordered();
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XCfgListCtrl::SortTextItems", __LINE__, false);
}

bool XCfgListCtrl::SortCtrl(int column, bool ascending) try {
    if (!SortTextItems(column, ascending, 0, -1)) return false;
    m_nSortColumn = column;
    m_bSortAscending = ascending;
    if (m_ctlHeader.m_hWnd) m_ctlHeader.SetSortColumn(column, ascending);
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XCfgListCtrl::SortCtrl", __LINE__, false);
}

LRESULT XCfgListCtrl::OnItemclick(NMHEADERW* info) {
    if (info->iButton != 0) return 0;  // left button only
    const int column = info->iItem;
    const bool ascending = ql::ClickDirection(m_nSortColumn, m_bSortAscending, column);
    // The click is remembered even when there is nothing to sort yet.
    m_nSortColumn = column;
    m_bSortAscending = ascending;
    SortCtrl(column, ascending);
    return 0;
}

// ---- Messages ------------------------------------------------------------------------

LRESULT XCfgListCtrl::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_DRAWITEM) {
        auto* dis = reinterpret_cast<DRAWITEMSTRUCT*>(lp);
        if (dis && dis->CtlType == ODT_HEADER && m_ctlHeader.m_hWnd && dis->hwndItem == m_ctlHeader.m_hWnd) {
            m_ctlHeader.Draw(dis);
            return TRUE;
        }
    }
    return qv::ListCtrl::WindowProc(msg, wp, lp);
}

void XCfgListCtrl::OnShowWindow(BOOL show, UINT status) { qv::ListCtrl::OnShowWindow(show, status); }

BOOL XCfgListCtrl::OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) {
    const auto* hdr = reinterpret_cast<const NMHDR*>(lp);
    if (hdr && m_ctlHeader.m_hWnd && hdr->hwndFrom == m_ctlHeader.m_hWnd &&
        (hdr->code == HDN_ITEMCLICKW || hdr->code == HDN_ITEMCLICKA)) {
        // The two forms differ only in the item's text, which is not read.
        *result = OnItemclick(reinterpret_cast<NMHEADERW*>(lp));
        return TRUE;
    }
    return qv::ListCtrl::OnNotify(wp, lp, result);
}

bool XCfgListCtrl::OnReflectNotify(NMHDR* hdr, LRESULT* result) {
    if (hdr && hdr->code == LVN_ENDLABELEDITW) {
        *result = OnEndlabeledit(reinterpret_cast<NMLVDISPINFOW*>(hdr));
        return true;
    }
    return false;
}

LRESULT XCfgListCtrl::OnEndlabeledit(NMLVDISPINFOW* info) { return info->item.pszText ? TRUE : FALSE; }

// ---- Print export -------------------------------------------------------------------

namespace {

void LogExportFailure(const wchar_t* function, unsigned long position, const wchar_t* message, long code) {
    XZTError::WriteErrorToLogBook(kLogSource, function, position, message, code);
}

bool ReadOrder(HWND header, int count, std::vector<int>& order) {
    order.assign(static_cast<size_t>(count), 0);
    return ::SendMessageW(header, HDM_GETORDERARRAY, static_cast<WPARAM>(count),
                          reinterpret_cast<LPARAM>(order.data())) != 0;
}

}  // namespace

bool XCfgListCtrl::PrintListSetColNameSize(IZTPrintGenericListObject* given) try {
    const qv::ComPtr<IZTPrintGenericListObject> object = given;
    auto fail = [&object] {
        if (object) object->ResetList();
        LogExportFailure(kColNameSizeFunction, kLineHeaderFailed, L"Can't create header for printing lists", 0);
        return false;
    };
    if (!object) return fail();
    HWND header = IsWindow() ? GetHeaderCtrl() : nullptr;
    const int n = ColumnCount();
    if (!header || n < 1) return fail();

    TaskArray<BSTR> names(n);
    TaskArray<int> indices(n);
    TaskArray<int> alignments(n);
    std::vector<int> order;
    if (!names || !indices || !alignments || !ReadOrder(header, n, order)) return fail();
    for (int i = 0; i < n; ++i) {
        const int item = order[static_cast<size_t>(i)];
        wchar_t text[257] = {};
        HDITEMW hdi{};
        hdi.mask = HDI_TEXT | HDI_FORMAT;
        hdi.pszText = text;
        hdi.cchTextMax = 256;
        int width = 0;
        if (::SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&hdi))) {
            alignments[i] = ql::AlignmentFromFormat(hdi.fmt);
            width = GetColumnWidth(item);
        } else {
            text[0] = L'\0';
        }
        indices[i] = i;
        names[i] = ::SysAllocString(text);
        if (!names[i]) {
            FreeStrings(n, names.get());
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
    FreeStrings(n, names.get());
    return fail();
} catch (...) {
    return qv::CaughtAtEdge(" XCfgListCtrl::PrintListSetColNameSize", __LINE__, false);
}

bool XCfgListCtrl::PrintListSetItemData(IZTPrintGenericListObject* given) try {
    const qv::ComPtr<IZTPrintGenericListObject> object = given;
    auto fail = [&object](long code) {
        if (object) object->ResetList();
        LogExportFailure(kItemDataFunction, kLineItemsFailed, L"Can't create data for printing lists", code);
        return false;
    };
    if (!object) return fail(0);
    HWND header = IsWindow() ? GetHeaderCtrl() : nullptr;
    const int n = ColumnCount();
    if (!header || n < 1) return fail(0);
    const int rows = GetItemCount();
    std::vector<int> order;
    if (!ReadOrder(header, n, order)) return fail(0);

    for (int i = 0; i < n; ++i) {
        const int item = order[static_cast<size_t>(i)];
        TaskArray<BSTR> texts(rows);
        TaskArray<int> bitmaps(rows);
        TaskArray<int> alignments(rows);
        if (!texts || !bitmaps || !alignments) return fail(1);
        HDITEMW hdi{};
        hdi.mask = HDI_FORMAT;
        const int alignment =
            ::SendMessageW(header, HDM_GETITEMW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&hdi))
                ? ql::AlignmentFromFormat(hdi.fmt)
                : ql::kAlignLeft;
        bool allocated = true;
        for (int r = 0; r < rows; ++r) {
            const std::wstring text = GetItemText(r, item);
            alignments[r] = alignment;
            texts[r] = ::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
            if (!texts[r]) allocated = false;
        }
        const HRESULT hr = allocated ? object->SetColumnItems(i, rows, texts.get(), bitmaps.get(), alignments.get())
                                     : S_FALSE;
        FreeStrings(rows, texts.get());
        if (hr == S_FALSE) return fail(1);
    }
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XCfgListCtrl::PrintListSetItemData", __LINE__, false);
}
