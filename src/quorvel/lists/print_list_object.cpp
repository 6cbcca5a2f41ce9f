#include "quorvel/lists/print_list_object.h"

#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include "quorvel/common/boundary.h"
#include "quorvel/lists/print_rules.h"

namespace {

namespace pl = qv::printlist;

// A picture handed over as a 32-bit value: handles keep their meaning in the
// low 32 bits and are sign-extended, as the system does for 64-bit handles.
HBITMAP BitmapFromInt(int value) {
    return reinterpret_cast<HBITMAP>(static_cast<LONG_PTR>(value));
}

// Deletes what is a bitmap among `handles`, each once; anything else (a
// stale number, another kind of object) is left alone.
void DeleteBitmaps(std::vector<HBITMAP>& handles, const std::vector<HBITMAP>& keep = {}) {
    std::sort(handles.begin(), handles.end());
    handles.erase(std::unique(handles.begin(), handles.end()), handles.end());
    for (HBITMAP h : handles) {
        if (!h || std::find(keep.begin(), keep.end(), h) != keep.end()) continue;
        if (::GetObjectType(h) == OBJ_BITMAP) ::DeleteObject(h);
    }
    handles.clear();
}

std::wstring FromBstr(BSTR b) { return b ? std::wstring(b, ::SysStringLen(b)) : std::wstring(); }

}  // namespace

struct XPrintListObject::Impl {
    pl::PrintTable table;
    std::vector<std::vector<HBITMAP>> bitmaps;  // per column, per row (null: none)
    std::vector<int> widths;                    // per display column, set before or after the headers
    HWND preview = nullptr;

    int WidthOf(size_t column) const {
        return column < widths.size() && widths[column] >= 0 ? widths[column] : kDefaultColumnWidth;
    }
    void ForgetBitmaps() {
        std::vector<HBITMAP> all;
        for (auto& column : bitmaps) all.insert(all.end(), column.begin(), column.end());
        DeleteBitmaps(all);
        bitmaps.clear();
    }
    void Reset() {
        ForgetBitmaps();
        table.columns.clear();
        widths.clear();
    }
};

// ---- Creation and lifetime -------------------------------------------------------

XPrintListObject::XPrintListObject() noexcept : m_impl(new (std::nothrow) Impl) {}

XPrintListObject::~XPrintListObject() {
    if (m_impl) m_impl->Reset();
    delete m_impl;
}

HRESULT XPrintListObject::CreateObject(XPrintListObject** out) try {
    if (!out) return E_POINTER;
    *out = nullptr;
    auto* object = new (std::nothrow) XPrintListObject;
    if (!object) return E_OUTOFMEMORY;
    if (!object->m_impl) {
        delete object;
        return E_OUTOFMEMORY;
    }
    *out = object;
    return S_OK;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::CreateObject", __LINE__, E_OUTOFMEMORY);
}

HRESULT XPrintListObject::CreateInstance(IZTPrintGenericListObject** out) {
    if (!out) return E_POINTER;
    XPrintListObject* object = nullptr;
    const HRESULT hr = CreateObject(&object);
    *out = object;
    return hr;
}

HRESULT XPrintListObject::QueryInterface(REFIID iid, void** out) {
    if (!out) return E_POINTER;
    if (::IsEqualIID(iid, IID_IUnknown) || ::IsEqualIID(iid, IID_IZTPrintGenericListObject)) {
        *out = static_cast<IZTPrintGenericListObject*>(this);
        AddRef();
        return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
}

ULONG XPrintListObject::AddRef() { return static_cast<ULONG>(::InterlockedIncrement(&m_refs)); }

ULONG XPrintListObject::Release() {
    const LONG left = ::InterlockedDecrement(&m_refs);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
}

// ---- What the list hands over ------------------------------------------------------

HRESULT XPrintListObject::SetColumnHeaders(int columnCount, BSTR* names, int* indices, int* alignments) try {
    if (columnCount < 0 || (columnCount > 0 && !names)) return E_INVALIDARG;
    const size_t n = static_cast<size_t>(columnCount);
    // Each display position once; the header of entry i goes to indices[i].
    std::vector<size_t> position(n);
    std::vector<bool> taken(n, false);
    for (size_t i = 0; i < n; ++i) {
        const int at = indices ? indices[i] : static_cast<int>(i);
        if (at < 0 || static_cast<size_t>(at) >= n || taken[static_cast<size_t>(at)]) return E_INVALIDARG;
        taken[static_cast<size_t>(at)] = true;
        position[i] = static_cast<size_t>(at);
    }
    std::vector<pl::PrintColumn> columns(n);
    for (size_t i = 0; i < n; ++i) {
        pl::PrintColumn& c = columns[position[i]];
        c.name = FromBstr(names[i]);
        c.alignment = alignments ? alignments[i] : pl::kAlignLeft;
    }
    for (size_t i = 0; i < n; ++i) columns[i].width = m_impl->WidthOf(i);

    // A new list: the cells of the one before go, with their pictures.
    m_impl->ForgetBitmaps();
    m_impl->table.columns = std::move(columns);
    m_impl->bitmaps.assign(n, {});

    // Taken over: the strings and the arrays are the object's to free.
    for (size_t i = 0; i < n; ++i) ::SysFreeString(names[i]);
    ::CoTaskMemFree(names);
    ::CoTaskMemFree(indices);
    ::CoTaskMemFree(alignments);
    return S_OK;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::SetColumnHeaders", __LINE__, E_OUTOFMEMORY);
}

HRESULT XPrintListObject::SetColumnItems(int column, int rowCount, BSTR* texts, int* bitmaps, int* alignments) try {
    // The pictures are the object's from here on, whatever the answer.
    std::vector<HBITMAP> handed;
    if (bitmaps && rowCount > 0) {
        handed.reserve(static_cast<size_t>(rowCount));
        for (int r = 0; r < rowCount; ++r) handed.push_back(BitmapFromInt(bitmaps[r]));
    }
    const bool valid = column >= 0 && static_cast<size_t>(column) < m_impl->table.columns.size() && rowCount >= 0 &&
                       (rowCount == 0 || texts);
    if (!valid) {
        DeleteBitmaps(handed);
        return S_FALSE;
    }
    pl::PrintColumn& c = m_impl->table.columns[static_cast<size_t>(column)];
    std::vector<std::wstring> cells;
    cells.reserve(static_cast<size_t>(rowCount));
    for (int r = 0; r < rowCount; ++r) cells.push_back(FromBstr(texts[r]));
    std::vector<int> cellAlignments;
    if (alignments) cellAlignments.assign(alignments, alignments + rowCount);
    c.cells = std::move(cells);
    c.cellAlignments = std::move(cellAlignments);

    // The column's pictures of a call before go, unless handed over again.
    std::vector<HBITMAP>& kept = m_impl->bitmaps[static_cast<size_t>(column)];
    DeleteBitmaps(kept, handed);
    kept = std::move(handed);
    return S_OK;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::SetColumnItems", __LINE__, S_FALSE);
}

HRESULT XPrintListObject::SetColumnWidth(int column, int width) try {
    if (column < 0) return E_INVALIDARG;
    const size_t c = static_cast<size_t>(column);
    if (c >= m_impl->widths.size()) m_impl->widths.resize(c + 1, -1);
    m_impl->widths[c] = std::max(width, 0);
    if (c < m_impl->table.columns.size()) m_impl->table.columns[c].width = m_impl->widths[c];
    return S_OK;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::SetColumnWidth", __LINE__, E_OUTOFMEMORY);
}

HRESULT XPrintListObject::ResetList() try {
    m_impl->Reset();
    return S_OK;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::ResetList", __LINE__, E_FAIL);
}

int XPrintListObject::GetColumnCount() const noexcept { return static_cast<int>(m_impl->table.columns.size()); }
int XPrintListObject::GetRowCount() const noexcept { return m_impl->table.RowCount(); }
HWND XPrintListObject::GetPreviewWindow() const noexcept { return m_impl->preview; }

// ---- Output ------------------------------------------------------------------------------

HRESULT XPrintListObject::PrintList(int /*reserved*/, BSTR /*formName*/) { return E_NOTIMPL; }
HRESULT XPrintListObject::PreviewList(int /*reserved*/, BSTR /*formName*/) { return E_NOTIMPL; }
HRESULT XPrintListObject::CopyToClipboard() { return E_NOTIMPL; }
int XPrintListObject::GetPageCount(HDC /*dc*/, const RECT& /*area*/) const { return 0; }
bool XPrintListObject::DrawPage(HDC /*dc*/, const RECT& /*area*/, int /*page*/, const wchar_t* /*title*/) const {
    return false;
}
int XPrintListObject::PrintToDC(HDC /*dc*/, const wchar_t* /*docName*/) const { return -1; }
