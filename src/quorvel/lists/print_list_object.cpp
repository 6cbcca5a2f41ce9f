#include "quorvel/lists/print_list_object.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/lists/print_rules.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/platform/window.h"

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

// ---- Pages ---------------------------------------------------------------------------

namespace {

// Fonts and metrics of one page set-up: what the layout needs from a DC.
struct PageSetup {
    pl::PageLayout layout;
    qv::Font body, header;
    int line = 1;      // one text line of the body font
    int padX = 1;      // inside a cell, left and right
    int rule = 1;      // line width
    int footerTop = 0; // from the area's top
};

qv::Font MakeFont(int height, bool bold) {
    LOGFONTW lf{};
    lf.lfHeight = -height;
    lf.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfOutPrecision = OUT_TT_PRECIS;
    lf.lfQuality = DEFAULT_QUALITY;
    wcscpy_s(lf.lfFaceName, L"Arial");
    return qv::Font(::CreateFontIndirectW(&lf));
}

int LineHeight(HDC dc, HFONT font) {
    qv::SelectObjectScope sel(dc, font);
    TEXTMETRICW tm{};
    if (!::GetTextMetricsW(dc, &tm)) return 1;
    return std::max(1, static_cast<int>(tm.tmHeight + tm.tmExternalLeading));
}

UINT TextFlags(int alignment) {
    UINT flags = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
    if (alignment == pl::kAlignRight) flags |= DT_RIGHT;
    else if (alignment == pl::kAlignCenter) flags |= DT_CENTER;
    return flags;
}

// Draws a picture scaled by `scale` into `cell`, centred, as DIB bits so any
// device takes it (a printer cannot select the screen's bitmaps).
void DrawBitmap(HDC dc, HBITMAP bitmap, const RECT& cell, double scale) {
    BITMAP bm{};
    if (!bitmap || ::GetObjectType(bitmap) != OBJ_BITMAP || !::GetObjectW(bitmap, sizeof bm, &bm)) return;
    if (bm.bmWidth <= 0 || bm.bmHeight <= 0) return;
    BITMAPINFO bi{};
    bi.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
    bi.bmiHeader.biWidth = bm.bmWidth;
    bi.bmiHeader.biHeight = bm.bmHeight;
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 32;
    bi.bmiHeader.biCompression = BI_RGB;
    std::vector<DWORD> bits(static_cast<size_t>(bm.bmWidth) * static_cast<size_t>(bm.bmHeight));
    qv::ClientDC screen(nullptr);
    if (!::GetDIBits(screen, bitmap, 0, static_cast<UINT>(bm.bmHeight), bits.data(), &bi, DIB_RGB_COLORS)) return;
    int w = std::max(1, static_cast<int>(bm.bmWidth * scale));
    int h = std::max(1, static_cast<int>(bm.bmHeight * scale));
    // Never taller or wider than the cell.
    const int cw = cell.right - cell.left, ch = cell.bottom - cell.top;
    if (cw <= 0 || ch <= 0) return;
    if (w > cw || h > ch) {
        const double fit = std::min(static_cast<double>(cw) / w, static_cast<double>(ch) / h);
        w = std::max(1, static_cast<int>(w * fit));
        h = std::max(1, static_cast<int>(h * fit));
    }
    const int x = cell.left + (cw - w) / 2, y = cell.top + (ch - h) / 2;
    ::SetStretchBltMode(dc, COLORONCOLOR);
    ::StretchDIBits(dc, x, y, w, h, 0, 0, bm.bmWidth, bm.bmHeight, bits.data(), &bi, DIB_RGB_COLORS, SRCCOPY);
}

void FillBox(HDC dc, const RECT& r, COLORREF color) {
    qv::Brush brush(::CreateSolidBrush(color));
    ::FillRect(dc, &r, brush);
}

}  // namespace

// The layout on `dc` inside `area`: scale from the DC's resolution, fonts
// shrunk with the columns, rows as tall as the text or the tallest picture.
static bool PreparePage(const pl::PrintTable& table, const std::vector<std::vector<HBITMAP>>& bitmaps, HDC dc,
                        const RECT& area, PageSetup& setup) {
    if (!dc) return false;
    const int dpiX = std::max(1, ::GetDeviceCaps(dc, LOGPIXELSX));
    const int dpiY = std::max(1, ::GetDeviceCaps(dc, LOGPIXELSY));
    pl::LayoutInput in;
    for (const pl::PrintColumn& c : table.columns) in.widths.push_back(c.width);
    in.rowCount = table.RowCount();
    in.areaWidth = area.right - area.left;
    in.areaHeight = area.bottom - area.top;
    in.dpiX = dpiX;
    const double scale = pl::ColumnScale(in.widths, in.areaWidth, dpiX);
    const int fontHeight = pl::FontHeight(scale, dpiX, dpiY);
    setup.body = MakeFont(fontHeight, false);
    setup.header = MakeFont(fontHeight, true);
    if (!setup.body || !setup.header) return false;
    setup.line = LineHeight(dc, setup.body);
    int pictureHeight = 0;
    for (const auto& column : bitmaps)
        for (HBITMAP h : column) {
            BITMAP bm{};
            if (h && ::GetObjectType(h) == OBJ_BITMAP && ::GetObjectW(h, sizeof bm, &bm))
                pictureHeight = std::max(pictureHeight, static_cast<int>(bm.bmHeight * scale));
        }
    const int padY = std::max(1, setup.line / 6);
    in.rowHeight = std::max(setup.line, pictureHeight) + 2 * padY;
    in.headerHeight = LineHeight(dc, setup.header) + 2 * padY;
    in.footerHeight = 2 * setup.line;
    setup.layout = pl::ComputeLayout(in);
    setup.padX = std::max(1, static_cast<int>(4 * setup.layout.scale));
    setup.rule = std::max(1, dpiX / 150);
    setup.footerTop = in.areaHeight - setup.line;
    return true;
}

int XPrintListObject::GetPageCount(HDC dc, const RECT& area) const try {
    PageSetup setup;
    if (!PreparePage(m_impl->table, m_impl->bitmaps, dc, area, setup)) return 0;
    return setup.layout.pageCount;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::GetPageCount", __LINE__, 0);
}

bool XPrintListObject::DrawPage(HDC dc, const RECT& area, int page, const wchar_t* title) const try {
    const pl::PrintTable& table = m_impl->table;
    PageSetup setup;
    if (!PreparePage(table, m_impl->bitmaps, dc, area, setup)) return false;
    const pl::PageLayout& l = setup.layout;
    if (page < 0 || page >= l.pageCount) return false;

    const int saved = ::SaveDC(dc);
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, RGB(0, 0, 0));
    const int left = area.left, top = area.top;
    const int right = left + l.columnX.back();
    const int rows = l.RowsOn(page, table.RowCount());
    const int bodyBottom = top + l.RowTop(rows);
    qv::Pen grid(::CreatePen(PS_SOLID, setup.rule, RGB(160, 160, 160)));
    qv::Pen dark(::CreatePen(PS_SOLID, setup.rule, RGB(0, 0, 0)));

    // The header row, on every page.
    FillBox(dc, RECT{left, top, right, top + l.headerHeight}, RGB(224, 224, 224));
    {
        qv::SelectObjectScope font(dc, setup.header);
        for (size_t c = 0; c < table.columns.size(); ++c) {
            RECT cell{left + l.columnX[c] + setup.padX, top, left + l.columnX[c + 1] - setup.padX,
                      top + l.headerHeight};
            if (cell.right <= cell.left) continue;
            // The picture column's name ("Bitmap" from a list) is no title
            // a reader needs; its pictures speak for themselves.
            if (table.IsBitmapColumn(static_cast<int>(c))) continue;
            const std::wstring name = pl::FlatCell(table.columns[c].name);
            ::DrawTextW(dc, name.c_str(), static_cast<int>(name.size()), &cell, TextFlags(table.columns[c].alignment));
        }
    }

    // The page's rows.
    {
        qv::SelectObjectScope font(dc, setup.body);
        const int first = l.FirstRow(page);
        for (int i = 0; i < rows; ++i) {
            const int row = first + i;
            const int y = top + l.RowTop(i);
            for (size_t c = 0; c < table.columns.size(); ++c) {
                RECT cell{left + l.columnX[c] + setup.padX, y, left + l.columnX[c + 1] - setup.padX,
                          y + l.rowHeight};
                if (cell.right <= cell.left) continue;
                const int column = static_cast<int>(c);
                if (table.CellAlignment(column, row) == pl::kAlignBitmap || table.IsBitmapColumn(column)) {
                    const auto& pictures = m_impl->bitmaps[c];
                    if (static_cast<size_t>(row) < pictures.size())
                        DrawBitmap(dc, pictures[static_cast<size_t>(row)], cell, l.scale);
                    continue;
                }
                const std::wstring text = pl::FlatCell(table.Cell(column, row));
                ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &cell,
                            TextFlags(table.CellAlignment(column, row)));
            }
        }
    }

    // Rules: under the header and each row, between the columns, a frame.
    {
        qv::SelectObjectScope pen(dc, grid);
        for (int i = 1; i <= rows; ++i) {
            const int y = top + l.RowTop(i);
            ::MoveToEx(dc, left, y, nullptr);
            ::LineTo(dc, right, y);
        }
        for (size_t c = 1; c + 1 < l.columnX.size(); ++c) {
            ::MoveToEx(dc, left + l.columnX[c], top, nullptr);
            ::LineTo(dc, left + l.columnX[c], bodyBottom);
        }
    }
    {
        qv::SelectObjectScope pen(dc, dark);
        qv::SelectObjectScope brush(dc, ::GetStockObject(NULL_BRUSH));
        ::MoveToEx(dc, left, top + l.headerHeight, nullptr);
        ::LineTo(dc, right, top + l.headerHeight);
        ::Rectangle(dc, left, top, right + 1, bodyBottom + 1);
    }

    // The footer: the title at the left, the page number at the right.
    {
        qv::SelectObjectScope font(dc, setup.body);
        RECT foot{left, top + setup.footerTop, area.right, area.bottom};
        const std::wstring number = pl::PageFooter(CoTranslateText(L"Page %1 of %2"), page + 1, l.pageCount);
        ::DrawTextW(dc, number.c_str(), static_cast<int>(number.size()), &foot, TextFlags(pl::kAlignRight));
        SIZE extent{};
        ::GetTextExtentPoint32W(dc, number.c_str(), static_cast<int>(number.size()), &extent);
        foot.right -= extent.cx + setup.line;
        const std::wstring name = pl::FlatCell(title ? title : L"");
        if (!name.empty() && foot.right > foot.left)
            ::DrawTextW(dc, name.c_str(), static_cast<int>(name.size()), &foot, TextFlags(pl::kAlignLeft));
    }
    ::RestoreDC(dc, saved);
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::DrawPage", __LINE__, false);
}

RECT XPrintListObject::GetPrintArea(HDC dc) {
    if (!dc) return RECT{};
    const pl::Rect r = pl::MarginArea(::GetDeviceCaps(dc, PHYSICALWIDTH), ::GetDeviceCaps(dc, PHYSICALHEIGHT),
                                      ::GetDeviceCaps(dc, PHYSICALOFFSETX), ::GetDeviceCaps(dc, PHYSICALOFFSETY),
                                      ::GetDeviceCaps(dc, HORZRES), ::GetDeviceCaps(dc, VERTRES),
                                      ::GetDeviceCaps(dc, LOGPIXELSX), ::GetDeviceCaps(dc, LOGPIXELSY),
                                      kMarginMm);
    return RECT{r.left, r.top, r.right, r.bottom};
}

namespace {

std::wstring DocumentName(BSTR formName) {
    std::wstring name = pl::FlatCell(FromBstr(formName));
    return name.empty() ? std::wstring(CoTranslateText(L"List")) : name;
}

}  // namespace

int XPrintListObject::PrintToDC(HDC dc, const wchar_t* docName) const try {
    if (!dc) return -1;
    const RECT area = GetPrintArea(dc);
    const int pages = GetPageCount(dc, area);
    if (pages <= 0) return 0;
    DOCINFOW info{};
    info.cbSize = sizeof info;
    info.lpszDocName = docName && *docName ? docName : L"List";
    if (::StartDocW(dc, &info) <= 0) return -1;
    for (int p = 0; p < pages; ++p) {
        if (::StartPage(dc) <= 0) {
            ::AbortDoc(dc);
            return -1;
        }
        DrawPage(dc, area, p, docName);
        if (::EndPage(dc) <= 0) {
            ::AbortDoc(dc);
            return -1;
        }
    }
    if (::EndDoc(dc) <= 0) return -1;
    return pages;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::PrintToDC", __LINE__, -1);
}

// ---- Print, preview, clipboard -------------------------------------------------------

// Prints through the print-dialog service; `owner` is the dialog's owner.
static HRESULT PrintWithDialog(const XPrintListObject& object, HWND owner, const std::wstring& name) {
    std::wstring device;
    HDC dc = qv::Services::PrintDialog().ChoosePrinter(owner, device);
    if (!dc) return S_FALSE;
    const int printed = object.PrintToDC(dc, name.c_str());
    ::DeleteDC(dc);
    if (printed < 0) {
        qv::LogFailure(L" XPrintListObject::PrintList", __LINE__, L"Printing failed", E_FAIL);
        return E_FAIL;
    }
    return S_OK;
}

HRESULT XPrintListObject::PrintList(int /*reserved*/, BSTR formName) try {
    if (m_impl->table.columns.empty()) return S_FALSE;
    // The object stays alive through the dialog, whatever the host does meanwhile.
    AddRef();
    const HRESULT hr = PrintWithDialog(*this, m_impl->preview ? m_impl->preview : ::GetActiveWindow(),
                                       DocumentName(formName));
    Release();
    return hr;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::PrintList", __LINE__, E_FAIL);
}

namespace {

// Global memory holding `size` bytes from `data`, for the clipboard.
HGLOBAL GlobalCopy(const void* data, size_t size) {
    HGLOBAL mem = ::GlobalAlloc(GMEM_MOVEABLE, size);
    if (!mem) return nullptr;
    void* p = ::GlobalLock(mem);
    if (!p) {
        ::GlobalFree(mem);
        return nullptr;
    }
    std::memcpy(p, data, size);
    ::GlobalUnlock(mem);
    return mem;
}

bool PutOnClipboard(UINT format, const void* data, size_t size) {
    HGLOBAL mem = GlobalCopy(data, size);
    if (!mem) return false;
    if (!::SetClipboardData(format, mem)) {
        ::GlobalFree(mem);
        return false;
    }
    return true;
}

}  // namespace

HRESULT XPrintListObject::CopyToClipboard() try {
    if (m_impl->table.columns.empty()) return S_FALSE;
    const std::wstring text = pl::ClipboardText(m_impl->table);
    const std::string html = pl::CfHtml(pl::HtmlTable(m_impl->table));
    const UINT htmlFormat = ::RegisterClipboardFormatW(L"HTML Format");

    // The clipboard's owner: a message-only window of our own, so that no
    // host window receives the clipboard's messages later on.
    HWND owner = ::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    if (!owner) {
        qv::LogFailure(L" XPrintListObject::CopyToClipboard", __LINE__, L"No window for the clipboard", E_FAIL);
        return E_FAIL;
    }
    // Another program may hold the clipboard for a moment.
    bool open = false;
    for (int attempt = 0; attempt < 20 && !(open = ::OpenClipboard(owner) != FALSE); ++attempt) ::Sleep(10);
    if (!open) {
        ::DestroyWindow(owner);
        qv::LogFailure(L" XPrintListObject::CopyToClipboard", __LINE__, L"Clipboard cannot be opened",
                       CLIPBRD_E_CANT_OPEN);
        return CLIPBRD_E_CANT_OPEN;
    }
    bool ok = ::EmptyClipboard() != FALSE;
    ok = ok && PutOnClipboard(CF_UNICODETEXT, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
    // The HTML form is extra: a clipboard without it still pastes the text.
    const bool htmlOk = ok && htmlFormat && PutOnClipboard(htmlFormat, html.c_str(), html.size() + 1);
    ::CloseClipboard();
    ::DestroyWindow(owner);
    if (!ok) {
        qv::LogFailure(L" XPrintListObject::CopyToClipboard", __LINE__, L"Clipboard data cannot be set",
                       CLIPBRD_E_CANT_SET);
        return CLIPBRD_E_CANT_SET;
    }
    if (!htmlOk)
        qv::LogFailure(L" XPrintListObject::CopyToClipboard", __LINE__, L"HTML clipboard data cannot be set",
                       CLIPBRD_E_CANT_SET);
    return S_OK;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::CopyToClipboard", __LINE__, E_FAIL);
}


// ---- Preview ---------------------------------------------------------------------------

namespace {

// The paper the preview shows: the default printer's, or A4 on the screen's
// resolution when there is no printer. Coordinates are the reference
// device's units from the paper's top-left corner.
class PreviewPaper {
public:
    PreviewPaper() {
        wchar_t name[256];
        DWORD length = 256;
        if (::GetDefaultPrinterW(name, &length)) m_printer = ::CreateDCW(L"WINSPOOL", name, nullptr, nullptr);
        if (m_printer && ::GetDeviceCaps(m_printer, PHYSICALWIDTH) > 0 && ::GetDeviceCaps(m_printer, PHYSICALHEIGHT) > 0) {
            m_ref = m_printer;
            m_width = ::GetDeviceCaps(m_ref, PHYSICALWIDTH);
            m_height = ::GetDeviceCaps(m_ref, PHYSICALHEIGHT);
            const int ox = ::GetDeviceCaps(m_ref, PHYSICALOFFSETX), oy = ::GetDeviceCaps(m_ref, PHYSICALOFFSETY);
            const RECT a = XPrintListObject::GetPrintArea(m_ref);
            m_area = RECT{a.left + ox, a.top + oy, a.right + ox, a.bottom + oy};
        } else {
            if (m_printer) ::DeleteDC(std::exchange(m_printer, nullptr));
            m_screen = ::GetDC(nullptr);
            m_ref = m_screen;
            m_width = ::MulDiv(2100, ::GetDeviceCaps(m_ref, LOGPIXELSX), 254);
            m_height = ::MulDiv(2970, ::GetDeviceCaps(m_ref, LOGPIXELSY), 254);
            const pl::Rect a = pl::MarginArea(m_width, m_height, 0, 0, m_width, m_height,
                                              ::GetDeviceCaps(m_ref, LOGPIXELSX), ::GetDeviceCaps(m_ref, LOGPIXELSY),
                                              XPrintListObject::kMarginMm);
            m_area = RECT{a.left, a.top, a.right, a.bottom};
        }
    }
    ~PreviewPaper() {
        if (m_printer) ::DeleteDC(m_printer);
        if (m_screen) ::ReleaseDC(nullptr, m_screen);
    }
    PreviewPaper(const PreviewPaper&) = delete;
    PreviewPaper& operator=(const PreviewPaper&) = delete;

    HDC Reference() const { return m_ref; }
    int Width() const { return m_width; }
    int Height() const { return m_height; }
    const RECT& Area() const { return m_area; }
    // The paper's size at 100 % on the screen, in pixels.
    SIZE ScreenSize(HDC screen) const {
        return SIZE{::MulDiv(m_width, ::GetDeviceCaps(screen, LOGPIXELSX), std::max(1, ::GetDeviceCaps(m_ref, LOGPIXELSX))),
                    ::MulDiv(m_height, ::GetDeviceCaps(screen, LOGPIXELSY), std::max(1, ::GetDeviceCaps(m_ref, LOGPIXELSY)))};
    }

private:
    HDC m_printer = nullptr;
    HDC m_screen = nullptr;
    HDC m_ref = nullptr;
    int m_width = 1, m_height = 1;
    RECT m_area{};
};

constexpr int kZoomPercent[] = {0, 50, 75, 100, 150, 200, 300};  // 0: the whole page
constexpr int kZoomLevels = static_cast<int>(sizeof kZoomPercent / sizeof kZoomPercent[0]);

}  // namespace

// The preview: a toolbar of buttons over a page window that shows the
// current page, played from a metafile drawn by DrawPage on the paper's
// reference device, so it looks as it will print.
class XPrintPreviewWnd : public qv::Window {
public:
    enum : UINT {
        kPrint = 100, kPrevious, kNext, kZoomIn, kZoomOut, kClose = IDCANCEL,
        kPageText = 110, kZoomText, kPage = 120,
    };

    XPrintPreviewWnd(XPrintListObject& object, std::wstring title) : m_object(object), m_title(std::move(title)) {}
    ~XPrintPreviewWnd() override {
        if (m_page) ::DeleteEnhMetaFile(m_page);
        if (OwnsWindow()) DestroyWindow();
    }

    bool Open(HWND owner);
    // Keys of the preview wherever its focus is; true when used.
    bool PreTranslate(const MSG& msg);

    int Page() const { return m_current; }
    int Zoom() const { return kZoomPercent[m_zoom]; }
    void ShowPage(int page);
    void SetZoom(int level);
    // The page's rectangle in the page window at the current zoom and scroll.
    RECT PageRect() const;
    HENHMETAFILE PageMetafile() const { return m_page; }

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;   // WM_COMMAND
    void OnSize(UINT type, int cx, int cy) override;  // WM_SIZE

private:
    class PageView;
    void Layout();
    void UpdateControls();
    void Close();

    XPrintListObject& m_object;
    std::wstring m_title;
    PreviewPaper m_paper;
    HWND m_owner = nullptr;
    bool m_ownerDisabled = false;
    std::unique_ptr<PageView> m_view;
    HENHMETAFILE m_page = nullptr;
    int m_pages = 0;
    int m_current = 0;
    int m_zoom = 0;
    HFONT m_font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
};

// The page area: grey around the paper, the paper with a shadow, scroll bars
// when the zoomed paper is larger than the window.
class XPrintPreviewWnd::PageView : public qv::Window {
public:
    explicit PageView(XPrintPreviewWnd& preview) : m_preview(preview) {}
    ~PageView() override {
        if (OwnsWindow()) DestroyWindow();
    }
    // The paper's size in pixels at the current zoom.
    SIZE PaperPixels() const {
        const RECT rc = GetClientRect();
        qv::ClientDC screen(nullptr);
        const SIZE full = m_preview.m_paper.ScreenSize(screen);
        const int percent = m_preview.Zoom();
        if (percent > 0) return SIZE{::MulDiv(full.cx, percent, 100), ::MulDiv(full.cy, percent, 100)};
        const double fit = std::min(static_cast<double>(std::max(1L, rc.right - 2 * kGap)) / std::max(1L, full.cx),
                                    static_cast<double>(std::max(1L, rc.bottom - 2 * kGap)) / std::max(1L, full.cy));
        return SIZE{std::max(1, static_cast<int>(full.cx * fit)), std::max(1, static_cast<int>(full.cy * fit))};
    }
    RECT PaperRect() const {
        const RECT rc = GetClientRect();
        const SIZE size = PaperPixels();
        const int x = size.cx + 2 * kGap <= rc.right ? (rc.right - size.cx) / 2 : kGap - m_scroll.x;
        const int y = size.cy + 2 * kGap <= rc.bottom ? (rc.bottom - size.cy) / 2 : kGap - m_scroll.y;
        return RECT{x, y, x + size.cx, y + size.cy};
    }
    // Scroll ranges for the current zoom; back to the top-left corner when `reset`.
    void UpdateScrollBars(bool reset) {
        if (reset) m_scroll = POINT{0, 0};
        const RECT rc = GetClientRect();
        const SIZE size = PaperPixels();
        for (int bar : {SB_HORZ, SB_VERT}) {
            const int total = (bar == SB_HORZ ? size.cx : size.cy) + 2 * kGap;
            const int page = bar == SB_HORZ ? rc.right : rc.bottom;
            LONG& pos = bar == SB_HORZ ? m_scroll.x : m_scroll.y;
            pos = std::clamp<LONG>(pos, 0, std::max(0, total - page));
            SCROLLINFO si{sizeof si, SIF_RANGE | SIF_PAGE | SIF_POS, 0, total - 1, static_cast<UINT>(std::max(page, 0)),
                          static_cast<int>(pos), 0};
            ::SetScrollInfo(m_hWnd, bar, &si, TRUE);
        }
        Invalidate(false);
    }

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
        switch (msg) {
        case WM_ERASEBKGND: return TRUE;  // all painted in WM_PAINT
        case WM_MOUSEWHEEL:
            Scroll(SB_VERT, GET_WHEEL_DELTA_WPARAM(wp) > 0 ? SB_LINEUP : SB_LINEDOWN);
            return 0;
        default: break;
        }
        return qv::Window::WindowProc(msg, wp, lp);
    }
    void OnPaint() override {
        qv::PaintDC paint(m_hWnd);
        const RECT rc = GetClientRect();
        qv::MemoryDC mem(paint, rc.right, rc.bottom);
        HDC dc = mem.IsValid() ? static_cast<HDC>(mem) : static_cast<HDC>(paint);
        ::FillRect(dc, &rc, ::GetSysColorBrush(COLOR_APPWORKSPACE));
        const RECT paper = PaperRect();
        RECT shadow{paper.left + 4, paper.top + 4, paper.right + 4, paper.bottom + 4};
        ::FillRect(dc, &shadow, ::GetSysColorBrush(COLOR_3DDKSHADOW));
        ::FillRect(dc, &paper, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        if (HENHMETAFILE page = m_preview.PageMetafile()) ::PlayEnhMetaFile(dc, page, &paper);
        if (mem.IsValid()) mem.CopyTo(paint);
    }
    void OnSize(UINT, int, int) override { UpdateScrollBars(false); }
    void OnHScroll(UINT code, UINT, HWND) override { Scroll(SB_HORZ, code); }
    void OnVScroll(UINT code, UINT, HWND) override { Scroll(SB_VERT, code); }

private:
    static constexpr LONG kGap = 16;
    void Scroll(int bar, UINT code) {
        SCROLLINFO si{};
        si.cbSize = sizeof si;
        si.fMask = SIF_ALL;
        if (!::GetScrollInfo(m_hWnd, bar, &si)) return;
        int pos = si.nPos;
        const int line = 40;
        switch (code) {
        case SB_LINEUP: pos -= line; break;
        case SB_LINEDOWN: pos += line; break;
        case SB_PAGEUP: pos -= static_cast<int>(si.nPage); break;
        case SB_PAGEDOWN: pos += static_cast<int>(si.nPage); break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION: pos = si.nTrackPos; break;
        case SB_TOP: pos = si.nMin; break;
        case SB_BOTTOM: pos = si.nMax; break;
        default: return;
        }
        (bar == SB_HORZ ? m_scroll.x : m_scroll.y) = pos;
        UpdateScrollBars(false);
    }

    XPrintPreviewWnd& m_preview;
    POINT m_scroll{0, 0};
};

bool XPrintPreviewWnd::Open(HWND owner) {
    static const wchar_t* const cls = qv::RegisterLibraryWindowClass(
        L"QuorvelPrintPreview", 0, nullptr, reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)));
    static const wchar_t* const pageCls =
        qv::RegisterLibraryWindowClass(L"QuorvelPrintPreviewPage", CS_HREDRAW | CS_VREDRAW, nullptr, nullptr);
    if (!cls || !pageCls) return false;
    m_owner = owner;
    m_pages = m_object.GetPageCount(m_paper.Reference(), m_paper.Area());

    // Three quarters of the work area of the owner's monitor, centred on it.
    MONITORINFO mi{};
    mi.cbSize = sizeof mi;
    HMONITOR monitor = ::MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY);
    if (!::GetMonitorInfoW(monitor, &mi)) ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &mi.rcWork, 0);
    const RECT& work = mi.rcWork;
    const int w = (work.right - work.left) * 3 / 4, h = (work.bottom - work.top) * 7 / 8;
    const RECT rect{work.left + (work.right - work.left - w) / 2, work.top + (work.bottom - work.top - h) / 2, 0, 0};
    const RECT placed{rect.left, rect.top, rect.left + w, rect.top + h};
    std::wstring caption = CoTranslateText(L"Print preview");
    if (!m_title.empty()) caption += L" - " + m_title;
    // Owned by `owner`: it stays above it and goes when the owner goes.
    if (!CreateEx(WS_EX_CONTROLPARENT | WS_EX_DLGMODALFRAME, cls, caption.c_str(),
                  WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, placed, owner, 0))
        return false;

    const struct { UINT id; const wchar_t* text; } buttons[] = {
        {kPrint, L"Print"}, {kPrevious, L"Previous page"}, {kNext, L"Next page"},
        {kZoomIn, L"Zoom in"}, {kZoomOut, L"Zoom out"}, {kClose, L"Close"},
    };
    for (const auto& b : buttons) {
        HWND button = ::CreateWindowExW(0, L"BUTTON", CoTranslateText(b.text),
                                        WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON, 0, 0, 10, 10, m_hWnd,
                                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(b.id)), nullptr, nullptr);
        ::SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
    }
    for (UINT id : {kPageText, kZoomText}) {
        HWND label = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_LEFT | SS_CENTERIMAGE, 0, 0, 10,
                                       10, m_hWnd, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
        ::SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(m_font), FALSE);
    }
    m_view = std::make_unique<PageView>(*this);
    if (!m_view->CreateEx(WS_EX_CLIENTEDGE, pageCls, L"", WS_CHILD | WS_VISIBLE | WS_HSCROLL | WS_VSCROLL,
                          RECT{0, 0, 10, 10}, m_hWnd, kPage))
        return false;
    ShowPage(0);
    Layout();
    if (m_owner && ::IsWindowEnabled(m_owner)) {
        ::EnableWindow(m_owner, FALSE);
        m_ownerDisabled = true;
    }
    ShowWindow(SW_SHOW);
    ::SetFocus(GetDlgItem(kNext));
    return true;
}

void XPrintPreviewWnd::ShowPage(int page) {
    m_current = std::clamp(page, 0, std::max(m_pages - 1, 0));
    if (m_page) ::DeleteEnhMetaFile(std::exchange(m_page, nullptr));
    HDC ref = m_paper.Reference();
    const RECT frame{0, 0, ::MulDiv(m_paper.Width(), 2540, std::max(1, ::GetDeviceCaps(ref, LOGPIXELSX))),
                     ::MulDiv(m_paper.Height(), 2540, std::max(1, ::GetDeviceCaps(ref, LOGPIXELSY)))};
    if (HDC dc = ::CreateEnhMetaFileW(ref, nullptr, &frame, nullptr)) {
        m_object.DrawPage(dc, m_paper.Area(), m_current, m_title.c_str());
        m_page = ::CloseEnhMetaFile(dc);
    }
    UpdateControls();
    if (m_view && m_view->IsWindow()) m_view->Invalidate(false);
}

void XPrintPreviewWnd::SetZoom(int level) {
    m_zoom = std::clamp(level, 0, kZoomLevels - 1);
    UpdateControls();
    if (m_view && m_view->IsWindow()) m_view->UpdateScrollBars(true);
}

RECT XPrintPreviewWnd::PageRect() const { return m_view ? m_view->PaperRect() : RECT{}; }

void XPrintPreviewWnd::UpdateControls() {
    if (!m_hWnd) return;
    const std::wstring page = pl::PageFooter(CoTranslateText(L"Page %1 of %2"), m_current + 1, m_pages);
    ::SetWindowTextW(GetDlgItem(kPageText), page.c_str());
    const std::wstring zoom = m_zoom == 0 ? std::wstring(CoTranslateText(L"Whole page"))
                                          : std::to_wstring(kZoomPercent[m_zoom]) + L" %";
    ::SetWindowTextW(GetDlgItem(kZoomText), zoom.c_str());
    // A disabled button with the focus would leave the keyboard nowhere.
    const auto enable = [&](UINT id, bool on) {
        HWND button = GetDlgItem(static_cast<int>(id));
        if (!on && ::GetFocus() == button) ::SetFocus(GetDlgItem(kClose));
        ::EnableWindow(button, on);
    };
    enable(kPrevious, m_current > 0);
    enable(kNext, m_current + 1 < m_pages);
    enable(kZoomIn, m_zoom + 1 < kZoomLevels);
    enable(kZoomOut, m_zoom > 0);
}

void XPrintPreviewWnd::Layout() {
    if (!m_hWnd) return;
    const RECT rc = GetClientRect();
    qv::ClientDC dc(m_hWnd);
    qv::SelectObjectScope font(dc, m_font);
    TEXTMETRICW tm{};
    ::GetTextMetricsW(dc, &tm);
    const int gap = 6, height = tm.tmHeight + 12;
    int x = gap;
    for (UINT id : {kPrint, kPrevious, kNext, kZoomIn, kZoomOut, kClose, kPageText, kZoomText}) {
        HWND item = GetDlgItem(static_cast<int>(id));
        const std::wstring text = qv::Window::FromHandle(item) ? L"" : [&] {
            std::wstring t(static_cast<size_t>(::GetWindowTextLengthW(item)) + 1, L'\0');
            t.resize(static_cast<size_t>(::GetWindowTextW(item, t.data(), static_cast<int>(t.size()))));
            return t;
        }();
        SIZE extent{};
        ::GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &extent);
        // The labels keep room for their longest texts as the page changes.
        const int width = id == kPageText ? extent.cx + 8 * tm.tmAveCharWidth
                          : id == kZoomText ? std::max<int>(extent.cx, 10 * tm.tmAveCharWidth)
                                            : std::max<int>(extent.cx + 20, 75);
        ::MoveWindow(item, x, gap, width, height, TRUE);
        x += width + gap;
    }
    if (m_view && m_view->IsWindow()) {
        const int top = height + 2 * gap;
        m_view->MoveWindow(RECT{0, top, rc.right, std::max<LONG>(rc.bottom, top)});
        m_view->UpdateScrollBars(false);
    }
}

void XPrintPreviewWnd::OnSize(UINT, int, int) { Layout(); }

void XPrintPreviewWnd::Close() {
    // The owner comes back before the preview goes, so it is the window
    // that is activated next.
    if (m_ownerDisabled) {
        ::EnableWindow(m_owner, TRUE);
        m_ownerDisabled = false;
    }
    DestroyWindow();
}

BOOL XPrintPreviewWnd::OnCommand(WPARAM wp, LPARAM lp) {
    if (HIWORD(wp) != BN_CLICKED || !lp) return qv::Window::OnCommand(wp, lp);
    switch (LOWORD(wp)) {
    case kPrint:
        // Printed: the preview has done its job. Cancelled: it stays.
        if (PrintWithDialog(m_object, m_hWnd, m_title.empty() ? DocumentName(nullptr) : m_title) == S_OK) Close();
        return TRUE;
    case kPrevious: ShowPage(m_current - 1); return TRUE;
    case kNext: ShowPage(m_current + 1); return TRUE;
    case kZoomIn: SetZoom(m_zoom + 1); return TRUE;
    case kZoomOut: SetZoom(m_zoom - 1); return TRUE;
    case kClose: Close(); return TRUE;
    default: break;
    }
    return qv::Window::OnCommand(wp, lp);
}

LRESULT XPrintPreviewWnd::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CLOSE:
        Close();
        return 0;
    case WM_COMMAND:
        // Esc through the dialog manager arrives without a control.
        if (LOWORD(wp) == IDCANCEL && lp == 0) {
            Close();
            return 0;
        }
        break;
    case WM_DESTROY:
        if (m_ownerDisabled) {
            ::EnableWindow(m_owner, TRUE);
            m_ownerDisabled = false;
        }
        break;
    default: break;
    }
    return qv::Window::WindowProc(msg, wp, lp);
}

bool XPrintPreviewWnd::PreTranslate(const MSG& msg) {
    if (msg.message != WM_KEYDOWN || !m_hWnd || (msg.hwnd != m_hWnd && !::IsChild(m_hWnd, msg.hwnd))) return false;
    switch (msg.wParam) {
    case VK_PRIOR: ShowPage(m_current - 1); return true;
    case VK_NEXT: ShowPage(m_current + 1); return true;
    case VK_HOME: ShowPage(0); return true;
    case VK_END: ShowPage(m_pages - 1); return true;
    case VK_ADD:
    case VK_OEM_PLUS: SetZoom(m_zoom + 1); return true;
    case VK_SUBTRACT:
    case VK_OEM_MINUS: SetZoom(m_zoom - 1); return true;
    default: return false;
    }
}

HRESULT XPrintListObject::PreviewList(int /*reserved*/, BSTR formName) try {
    if (m_impl->table.columns.empty()) return S_FALSE;
    if (m_impl->preview) {
        // Already showing (the host called again from inside): bring it up.
        ::SetForegroundWindow(m_impl->preview);
        return S_FALSE;
    }
    HWND active = ::GetActiveWindow();
    HWND owner = active ? ::GetAncestor(active, GA_ROOT) : nullptr;
    AddRef();  // alive until the preview is closed, whatever the host releases meanwhile
    HRESULT hr = S_OK;
    {
        XPrintPreviewWnd preview(*this, pl::FlatCell(FromBstr(formName)));
        if (!preview.Open(owner)) {
            qv::LogFailure(L" XPrintListObject::PreviewList", __LINE__, L"Creating the preview window failed", E_FAIL);
            hr = E_FAIL;
        } else {
            m_impl->preview = preview;
            // The preview's own message loop until it is closed. WM_QUIT ends
            // it too, and is posted again for the host's loop.
            while (preview.IsWindow()) {
                MSG msg;
                const BOOL got = ::GetMessageW(&msg, nullptr, 0, 0);
                if (got == -1) break;
                if (got == 0) {
                    ::PostQuitMessage(static_cast<int>(msg.wParam));
                    break;
                }
                if (preview.PreTranslate(msg)) continue;
                if (preview.IsWindow() && ::IsDialogMessageW(preview, &msg)) continue;
                ::TranslateMessage(&msg);
                ::DispatchMessageW(&msg);
            }
            m_impl->preview = nullptr;
        }
        if (preview.IsWindow()) preview.SendMessage(WM_CLOSE);
    }
    Release();
    return hr;
} catch (...) {
    return qv::CaughtAtEdge(" XPrintListObject::PreviewList", __LINE__, E_FAIL);
}
