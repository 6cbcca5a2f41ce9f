// XPrintListObject: the print-list object that comes with the library, so
// that a report list prints, previews and copies without a host object.
//
// It is a COM object of IZTPrintGenericListObject (quorvel/lists/print_list.h)
// and lives by its reference count only: CreateInstance makes one with one
// reference, the last Release deletes it. It keeps what a list hands over
// (the arrays' ownership as print_list.h states it; the pictures of the
// bitmap column are deleted on ResetList, when a column is handed over
// again, and with the object) and then
//  - CopyToClipboard puts the list on the clipboard twice: as Unicode text
//    (tab-separated, a header row, every line ending in CR LF) and as
//    "HTML Format" (a table), so a spreadsheet keeps the columns. Tabs and
//    line breaks inside a cell become blanks; the bitmap column is left out
//    of both, its cells carry no text;
//  - PreviewList shows the pages as they print on the default printer's
//    paper (A4 when there is no printer) in a window owned by the active
//    window, with page buttons, zoom and "Print". The window is modal: its
//    owner is disabled and PreviewList returns when it closes (Close, Esc,
//    the window's close box, or the owner being destroyed);
//  - PrintList asks for a printer with the print-dialog service (the system's
//    print dialog unless a host replaced it) and prints every page with the
//    form name as the document's name: columns shrunk to the paper's width
//    when they are wider (never enlarged beyond their size on screen), the
//    header row on every page, texts too long for their cell cut with "...",
//    the form name and "Page n of m" in the footer, the bitmap column's
//    pictures drawn (under an empty title: a list calls it "Bitmap").
//
// Answers: S_OK when done; S_FALSE when there is nothing to do (no columns
// handed over) or the user cancelled the print dialog; a failure code when
// printing or the clipboard failed (logged in the log book too).
//
// All of it runs on the user-interface thread.
#pragma once

#include <windows.h>

#include "quorvel/common/api.h"
#include "quorvel/lists/print_list.h"

class QV_API XPrintListObject : public IZTPrintGenericListObject {
public:
    enum : int {
        kDefaultColumnWidth = 100,  // list pixels of a column whose width was never set
        kMarginMm = 15,             // page margins from the paper's edges
    };

    // A new object with one reference: S_OK, E_POINTER for a null `out`,
    // E_OUTOFMEMORY.
    static HRESULT CreateInstance(IZTPrintGenericListObject** out);
    // The same, typed for callers that use the operations below.
    static HRESULT CreateObject(XPrintListObject** out);

    // IUnknown: IUnknown and IZTPrintGenericListObject.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // IZTPrintGenericListObject (see print_list.h).
    // S_OK and the arrays taken over; E_INVALIDARG for a negative count, null
    // names with columns, or indices that are not each display position once.
    HRESULT STDMETHODCALLTYPE SetColumnHeaders(int columnCount, BSTR* names, int* indices,
                                               int* alignments) override;
    // S_OK; S_FALSE for a column without a header, a negative row count or
    // null texts with rows (the pictures are deleted then too).
    HRESULT STDMETHODCALLTYPE SetColumnItems(int column, int rowCount, BSTR* texts, int* bitmaps,
                                             int* alignments) override;
    // S_OK; E_INVALIDARG for a negative column. May come before the headers.
    HRESULT STDMETHODCALLTYPE SetColumnWidth(int column, int width) override;
    HRESULT STDMETHODCALLTYPE ResetList() override;
    HRESULT STDMETHODCALLTYPE PrintList(int reserved, BSTR formName) override;
    HRESULT STDMETHODCALLTYPE PreviewList(int reserved, BSTR formName) override;
    HRESULT STDMETHODCALLTYPE CopyToClipboard() override;

    // What was handed over: columns with headers, and the longest column's rows.
    int GetColumnCount() const noexcept;
    int GetRowCount() const noexcept;

    // The pages of the list on a device: `area` is the rectangle inside the
    // margins in `dc`'s device units; the scale comes from the DC's
    // LOGPIXELSX. GetPageCount answers 0 without columns.
    int GetPageCount(HDC dc, const RECT& area) const;
    // Draws page `page` (0-based) into `area` of `dc`: the header row, the
    // page's rows and the footer ("title" at the left, "Page n of m" at the
    // right). The preview, printing and tests all draw with it.
    bool DrawPage(HDC dc, const RECT& area, int page, const wchar_t* title) const;
    // The rectangle inside the margins (kMarginMm from the paper's edges) on
    // a printer DC, in its device units: where PrintToDC draws the pages.
    static RECT GetPrintArea(HDC dc);
    // Prints every page to a printer DC that the caller made and deletes:
    // StartDocW with `docName`, one StartPage/EndPage per page, EndDoc.
    // Answers the pages printed, or -1 when the device refused (AbortDoc).
    int PrintToDC(HDC dc, const wchar_t* docName) const;
    // The preview window while PreviewList runs, else null.
    HWND GetPreviewWindow() const noexcept;

    XPrintListObject(const XPrintListObject&) = delete;
    XPrintListObject& operator=(const XPrintListObject&) = delete;

protected:
    XPrintListObject() noexcept;
    virtual ~XPrintListObject();

private:
    struct Impl;
    friend class XPrintPreviewWnd;
    Impl* m_impl;
    LONG m_refs = 1;
};
