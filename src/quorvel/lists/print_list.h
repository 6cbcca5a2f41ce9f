// IZTPrintGenericListObject: the print-list object that report lists hand
// their contents to for printing, preview and the clipboard.
//
// A list gives the object its column headers (names, display positions,
// alignment codes), one call per column with that column's cell texts, and
// the column widths; then it asks for a print, a preview or a clipboard copy.
// Layout, pages and the clipboard format are the object's business. The
// library ships one (XPrintListObject, quorvel/lists/print_list_object.h);
// a host can give a list its own through XBaseListCtrl::SetGenListObject.
//
// Arrays and ownership:
//  - names and texts are BSTRs (SysAllocString); indices, bitmaps and
//    alignments are arrays of 32-bit int; all arrays come from CoTaskMemAlloc.
//  - SetColumnHeaders: when it answers S_OK the object owns the three arrays
//    and the strings and frees them (SysFreeString, CoTaskMemFree); on any
//    other answer the caller frees them.
//  - SetColumnItems: the caller frees the texts and the arrays after the call,
//    whatever it answered, so an object copies what it keeps. The bitmaps
//    (HBITMAP handles, 0 for none) belong to the object from the call on.
//  - column numbers and indices are display positions: 0 is the leftmost
//    column as the user ordered them.
//
// Alignment codes: 0 left, 1 the bitmap column, 3 right, 4 centre.
//
// Answers: SetColumnHeaders succeeds only with S_OK; SetColumnItems fails
// only with S_FALSE (1); the results of SetColumnWidth and ResetList are not
// looked at by the lists.
//
// A host whose own print-list object has further operations in its vtable
// wraps it in an object of this interface.
#pragma once

#include <windows.h>
#include <oaidl.h>
#include <unknwn.h>

// {FA0D72DD-9A2D-4277-9929-B0C5FEDC8C74}
inline constexpr IID IID_IZTPrintGenericListObject = {
    0xfa0d72dd, 0x9a2d, 0x4277, {0x99, 0x29, 0xb0, 0xc5, 0xfe, 0xdc, 0x8c, 0x74}};

struct IZTPrintGenericListObject : public IUnknown {
    // The column headers: columnCount names, display indices and alignment codes.
    virtual HRESULT STDMETHODCALLTYPE SetColumnHeaders(int columnCount, BSTR* names, int* indices,
                                                       int* alignments) = 0;
    // One display column's cells, top row first.
    virtual HRESULT STDMETHODCALLTYPE SetColumnItems(int column, int rowCount, BSTR* texts, int* bitmaps,
                                                     int* alignments) = 0;
    // A display column's width in the list's pixels.
    virtual HRESULT STDMETHODCALLTYPE SetColumnWidth(int column, int width) = 0;
    // Forgets everything set so far (and frees what the object owns).
    virtual HRESULT STDMETHODCALLTYPE ResetList() = 0;
    // Prints the list; formName names the document. reserved is 0.
    virtual HRESULT STDMETHODCALLTYPE PrintList(int reserved, BSTR formName) = 0;
    // Shows the pages as they will print. reserved is 0.
    virtual HRESULT STDMETHODCALLTYPE PreviewList(int reserved, BSTR formName) = 0;
    // Puts the list on the clipboard.
    virtual HRESULT STDMETHODCALLTYPE CopyToClipboard() = 0;
};

#if defined(__CRT_UUID_DECL)
__CRT_UUID_DECL(IZTPrintGenericListObject, 0xfa0d72dd, 0x9a2d, 0x4277, 0x99, 0x29, 0xb0, 0xc5, 0xfe, 0xdc, 0x8c,
                0x74)
#endif
