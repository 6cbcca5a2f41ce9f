// Typed wrappers of the stock Windows controls.
//
// Each class is a qv::Window whose Create uses the control's window class,
// plus one-line wrappers of the control's messages under the names hosts
// know. They add no behaviour of their own: the result is whatever the
// control answers. Text getters return std::wstring. An object can also be
// attached to an existing control (Attach, SubclassDlgItem).
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <richedit.h>

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/platform/window.h"

namespace qv {

class OleDateTime;

// "EDIT"
class QV_API Edit : public Window {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    DWORD GetSel() const { return static_cast<DWORD>(SendMessage(EM_GETSEL)); }  // EM_GETSEL
    void GetSel(int& start, int& end) const;                                        // EM_GETSEL
    void SetSel(int start, int end, bool noScroll = false);                          // EM_SETSEL (+EM_SCROLLCARET)
    void SetSel(DWORD selection, bool noScroll = false) { SetSel(LOWORD(selection), HIWORD(selection), noScroll); }
    void ReplaceSel(const wchar_t* text, bool canUndo = false) { SendMessage(EM_REPLACESEL, canUndo, reinterpret_cast<LPARAM>(text ? text : L"")); }  // EM_REPLACESEL
    void LimitText(int maxChars = 0) { SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(maxChars)); }                 // EM_LIMITTEXT
    void SetLimitText(UINT maxChars) { SendMessage(EM_SETLIMITTEXT, maxChars); }                                   // EM_SETLIMITTEXT
    UINT GetLimitText() const { return static_cast<UINT>(SendMessage(EM_GETLIMITTEXT)); }                // EM_GETLIMITTEXT
    bool SetReadOnly(bool readOnly = true) { return SendMessage(EM_SETREADONLY, readOnly) != 0; }       // EM_SETREADONLY
    int GetLineCount() const { return static_cast<int>(SendMessage(EM_GETLINECOUNT)); }                  // EM_GETLINECOUNT
    int LineFromChar(int index = -1) const { return static_cast<int>(SendMessage(EM_LINEFROMCHAR, static_cast<WPARAM>(index))); }  // EM_LINEFROMCHAR
    int LineIndex(int line = -1) const { return static_cast<int>(SendMessage(EM_LINEINDEX, static_cast<WPARAM>(line))); }          // EM_LINEINDEX
    int LineLength(int index = -1) const { return static_cast<int>(SendMessage(EM_LINELENGTH, static_cast<WPARAM>(index))); }      // EM_LINELENGTH
    std::wstring GetLine(int line) const;                                                                // EM_GETLINE
    void LineScroll(int lines, int chars = 0) { SendMessage(EM_LINESCROLL, static_cast<WPARAM>(chars), lines); }  // EM_LINESCROLL
    int GetFirstVisibleLine() const { return static_cast<int>(SendMessage(EM_GETFIRSTVISIBLELINE)); }    // EM_GETFIRSTVISIBLELINE
    bool GetModify() const { return SendMessage(EM_GETMODIFY) != 0; }                                    // EM_GETMODIFY
    void SetModify(bool modified = true) { SendMessage(EM_SETMODIFY, modified); }                       // EM_SETMODIFY
    void SetPasswordChar(wchar_t ch) { SendMessage(EM_SETPASSWORDCHAR, ch); }                            // EM_SETPASSWORDCHAR
    wchar_t GetPasswordChar() const { return static_cast<wchar_t>(SendMessage(EM_GETPASSWORDCHAR)); }    // EM_GETPASSWORDCHAR
    void SetMargins(UINT left, UINT right) { SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELONG(left, right)); }  // EM_SETMARGINS
    DWORD GetMargins() const { return static_cast<DWORD>(SendMessage(EM_GETMARGINS)); }                  // EM_GETMARGINS
    int CharFromPos(POINT pt) const { return static_cast<int>(SendMessage(EM_CHARFROMPOS, 0, MAKELPARAM(pt.x, pt.y))); }  // EM_CHARFROMPOS
    POINT PosFromChar(UINT index) const;                                                                 // EM_POSFROMCHAR
    bool CanUndo() const { return SendMessage(EM_CANUNDO) != 0; }                                        // EM_CANUNDO
    bool Undo() { return SendMessage(EM_UNDO) != 0; }                                                    // EM_UNDO
    void EmptyUndoBuffer() { SendMessage(EM_EMPTYUNDOBUFFER); }                                          // EM_EMPTYUNDOBUFFER
    void Cut() { SendMessage(WM_CUT); }                                                                  // WM_CUT
    void Copy() { SendMessage(WM_COPY); }                                                                // WM_COPY
    void Paste() { SendMessage(WM_PASTE); }                                                              // WM_PASTE
    void Clear() { SendMessage(WM_CLEAR); }                                                              // WM_CLEAR
};

// "COMBOBOX"
class QV_API ComboBox : public Window {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    int AddString(const wchar_t* text) { return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text))); }               // CB_ADDSTRING
    int InsertString(int index, const wchar_t* text) { return static_cast<int>(SendMessage(CB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text))); }  // CB_INSERTSTRING
    int DeleteString(UINT index) { return static_cast<int>(SendMessage(CB_DELETESTRING, index)); }  // CB_DELETESTRING
    void ResetContent() { SendMessage(CB_RESETCONTENT); }                                            // CB_RESETCONTENT
    int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }                     // CB_GETCOUNT
    int GetCurSel() const { return static_cast<int>(SendMessage(CB_GETCURSEL)); }                   // CB_GETCURSEL
    int SetCurSel(int index) { return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(index))); }  // CB_SETCURSEL
    std::wstring GetLBText(int index) const;                                                         // CB_GETLBTEXT
    int GetLBTextLen(int index) const { return static_cast<int>(SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(index))); }  // CB_GETLBTEXTLEN
    int FindString(int startAfter, const wchar_t* text) const { return static_cast<int>(SendMessage(CB_FINDSTRING, static_cast<WPARAM>(startAfter), reinterpret_cast<LPARAM>(text))); }  // CB_FINDSTRING
    int FindStringExact(int startAfter, const wchar_t* text) const { return static_cast<int>(SendMessage(CB_FINDSTRINGEXACT, static_cast<WPARAM>(startAfter), reinterpret_cast<LPARAM>(text))); }  // CB_FINDSTRINGEXACT
    int SelectString(int startAfter, const wchar_t* text) { return static_cast<int>(SendMessage(CB_SELECTSTRING, static_cast<WPARAM>(startAfter), reinterpret_cast<LPARAM>(text))); }  // CB_SELECTSTRING
    void ShowDropDown(bool show = true) { SendMessage(CB_SHOWDROPDOWN, show); }                    // CB_SHOWDROPDOWN
    bool GetDroppedState() const { return SendMessage(CB_GETDROPPEDSTATE) != 0; }                  // CB_GETDROPPEDSTATE
    void GetDroppedControlRect(RECT& rect) const { SendMessage(CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&rect)); }  // CB_GETDROPPEDCONTROLRECT
    int SetDroppedWidth(UINT width) { return static_cast<int>(SendMessage(CB_SETDROPPEDWIDTH, width)); }  // CB_SETDROPPEDWIDTH
    int SetItemData(int index, DWORD_PTR data) { return static_cast<int>(SendMessage(CB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data))); }  // CB_SETITEMDATA
    DWORD_PTR GetItemData(int index) const { return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, static_cast<WPARAM>(index))); }  // CB_GETITEMDATA
    // index -1 is the selection field.
    int SetItemHeight(int index, UINT height) { return static_cast<int>(SendMessage(CB_SETITEMHEIGHT, static_cast<WPARAM>(index), height)); }  // CB_SETITEMHEIGHT
    int GetItemHeight(int index) const { return static_cast<int>(SendMessage(CB_GETITEMHEIGHT, static_cast<WPARAM>(index))); }  // CB_GETITEMHEIGHT
    DWORD GetEditSel() const { return static_cast<DWORD>(SendMessage(CB_GETEDITSEL)); }            // CB_GETEDITSEL
    bool SetEditSel(int start, int end) { return SendMessage(CB_SETEDITSEL, 0, MAKELPARAM(start, end)) != 0; }  // CB_SETEDITSEL
    bool LimitText(int maxChars) { return SendMessage(CB_LIMITTEXT, static_cast<WPARAM>(maxChars)) != 0; }  // CB_LIMITTEXT
    int GetTopIndex() const { return static_cast<int>(SendMessage(CB_GETTOPINDEX)); }              // CB_GETTOPINDEX
    int SetTopIndex(int index) { return static_cast<int>(SendMessage(CB_SETTOPINDEX, static_cast<WPARAM>(index))); }  // CB_SETTOPINDEX
};

// "LISTBOX"
class QV_API ListBox : public Window {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    int AddString(const wchar_t* text) { return static_cast<int>(SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text))); }  // LB_ADDSTRING
    int InsertString(int index, const wchar_t* text) { return static_cast<int>(SendMessage(LB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text))); }  // LB_INSERTSTRING
    int DeleteString(UINT index) { return static_cast<int>(SendMessage(LB_DELETESTRING, index)); }  // LB_DELETESTRING
    void ResetContent() { SendMessage(LB_RESETCONTENT); }                                            // LB_RESETCONTENT
    int GetCount() const { return static_cast<int>(SendMessage(LB_GETCOUNT)); }                     // LB_GETCOUNT
    int GetCurSel() const { return static_cast<int>(SendMessage(LB_GETCURSEL)); }                   // LB_GETCURSEL
    int SetCurSel(int index) { return static_cast<int>(SendMessage(LB_SETCURSEL, static_cast<WPARAM>(index))); }  // LB_SETCURSEL
    std::wstring GetText(int index) const;                                                           // LB_GETTEXT
    int GetTextLen(int index) const { return static_cast<int>(SendMessage(LB_GETTEXTLEN, static_cast<WPARAM>(index))); }  // LB_GETTEXTLEN
    int FindString(int startAfter, const wchar_t* text) const { return static_cast<int>(SendMessage(LB_FINDSTRING, static_cast<WPARAM>(startAfter), reinterpret_cast<LPARAM>(text))); }  // LB_FINDSTRING
    int FindStringExact(int startAfter, const wchar_t* text) const { return static_cast<int>(SendMessage(LB_FINDSTRINGEXACT, static_cast<WPARAM>(startAfter), reinterpret_cast<LPARAM>(text))); }  // LB_FINDSTRINGEXACT
    int SelectString(int startAfter, const wchar_t* text) { return static_cast<int>(SendMessage(LB_SELECTSTRING, static_cast<WPARAM>(startAfter), reinterpret_cast<LPARAM>(text))); }  // LB_SELECTSTRING
    int SetItemData(int index, DWORD_PTR data) { return static_cast<int>(SendMessage(LB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data))); }  // LB_SETITEMDATA
    DWORD_PTR GetItemData(int index) const { return static_cast<DWORD_PTR>(SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(index))); }  // LB_GETITEMDATA
    int GetSel(int index) const { return static_cast<int>(SendMessage(LB_GETSEL, static_cast<WPARAM>(index))); }  // LB_GETSEL
    // Multiple-selection lists only; index -1 is every item.
    int SetSel(int index, bool select = true) { return static_cast<int>(SendMessage(LB_SETSEL, select, index)); }  // LB_SETSEL
    int GetSelCount() const { return static_cast<int>(SendMessage(LB_GETSELCOUNT)); }              // LB_GETSELCOUNT
    int GetSelItems(int maxItems, int* indexes) const { return static_cast<int>(SendMessage(LB_GETSELITEMS, static_cast<WPARAM>(maxItems), reinterpret_cast<LPARAM>(indexes))); }  // LB_GETSELITEMS
    int GetCaretIndex() const { return static_cast<int>(SendMessage(LB_GETCARETINDEX)); }          // LB_GETCARETINDEX
    int SetCaretIndex(int index, bool partialOk = true) { return static_cast<int>(SendMessage(LB_SETCARETINDEX, static_cast<WPARAM>(index), partialOk)); }  // LB_SETCARETINDEX
    int GetItemRect(int index, RECT& rect) const { return static_cast<int>(SendMessage(LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect))); }  // LB_GETITEMRECT
    // The nearest item; `outside` tells whether pt is outside the item area.
    UINT ItemFromPoint(POINT pt, bool& outside) const;                                               // LB_ITEMFROMPOINT
    int SetTopIndex(int index) { return static_cast<int>(SendMessage(LB_SETTOPINDEX, static_cast<WPARAM>(index))); }  // LB_SETTOPINDEX
    int GetTopIndex() const { return static_cast<int>(SendMessage(LB_GETTOPINDEX)); }              // LB_GETTOPINDEX
    int SetItemHeight(int index, UINT height) { return static_cast<int>(SendMessage(LB_SETITEMHEIGHT, static_cast<WPARAM>(index), MAKELPARAM(height, 0))); }  // LB_SETITEMHEIGHT
    int GetItemHeight(int index) const { return static_cast<int>(SendMessage(LB_GETITEMHEIGHT, static_cast<WPARAM>(index))); }  // LB_GETITEMHEIGHT
    // Tab stops in dialog units: none = every 32, one = every n, or a list.
    bool SetTabStops() { return SendMessage(LB_SETTABSTOPS) != 0; }                                // LB_SETTABSTOPS
    bool SetTabStops(const int& each) { return SendMessage(LB_SETTABSTOPS, 1, reinterpret_cast<LPARAM>(&each)) != 0; }  // LB_SETTABSTOPS
    bool SetTabStops(int count, const int* stops) { return SendMessage(LB_SETTABSTOPS, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(stops)) != 0; }  // LB_SETTABSTOPS
    void SetHorizontalExtent(int cx) { SendMessage(LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(cx)); }  // LB_SETHORIZONTALEXTENT
    int GetHorizontalExtent() const { return static_cast<int>(SendMessage(LB_GETHORIZONTALEXTENT)); }  // LB_GETHORIZONTALEXTENT
};

// "BUTTON"
class QV_API Button : public Window {
public:
    bool Create(const wchar_t* caption, DWORD style, const RECT& rect, HWND parent, UINT id);
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id) { return Create(L"", style, rect, parent, id); }

    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }     // BM_GETCHECK
    void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }  // BM_SETCHECK
    UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }   // BM_GETSTATE
    void SetState(bool highlight) { SendMessage(BM_SETSTATE, highlight); }          // BM_SETSTATE
    void Click() { SendMessage(BM_CLICK); }                                         // BM_CLICK
    UINT GetButtonStyle() const { return GetStyle() & 0xFFFF; }                      // GWL_STYLE
    void SetButtonStyle(UINT style, bool redraw = true) { SendMessage(BM_SETSTYLE, style, redraw); }  // BM_SETSTYLE
    // Both answer the previous image.
    HBITMAP SetBitmap(HBITMAP bitmap) { return reinterpret_cast<HBITMAP>(SendMessage(BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap))); }  // BM_SETIMAGE
    HBITMAP GetBitmap() const { return reinterpret_cast<HBITMAP>(SendMessage(BM_GETIMAGE, IMAGE_BITMAP)); }  // BM_GETIMAGE
    HICON SetIcon(HICON icon) { return reinterpret_cast<HICON>(SendMessage(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon))); }  // BM_SETIMAGE
    HICON GetIcon() const { return reinterpret_cast<HICON>(SendMessage(BM_GETIMAGE, IMAGE_ICON)); }  // BM_GETIMAGE
};

// "STATIC"
class QV_API Static : public Window {
public:
    bool Create(const wchar_t* text, DWORD style, const RECT& rect, HWND parent, UINT id);
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id) { return Create(L"", style, rect, parent, id); }

    // SS_BITMAP / SS_ICON statics; each answers the previous image.
    HBITMAP SetBitmap(HBITMAP bitmap) { return reinterpret_cast<HBITMAP>(SendMessage(STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap))); }  // STM_SETIMAGE
    HBITMAP GetBitmap() const { return reinterpret_cast<HBITMAP>(SendMessage(STM_GETIMAGE, IMAGE_BITMAP)); }  // STM_GETIMAGE
    HICON SetIcon(HICON icon) { return reinterpret_cast<HICON>(SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(icon))); }  // STM_SETICON
    HICON GetIcon() const { return reinterpret_cast<HICON>(SendMessage(STM_GETICON)); }  // STM_GETICON
};

// WC_HEADERW
class QV_API HeaderCtrl : public Window {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    int GetItemCount() const { return static_cast<int>(SendMessage(HDM_GETITEMCOUNT)); }  // HDM_GETITEMCOUNT
    bool GetItem(int index, HDITEMW* item) const { return SendMessage(HDM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item)) != 0; }  // HDM_GETITEMW
    bool SetItem(int index, const HDITEMW* item) { return SendMessage(HDM_SETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item)) != 0; }  // HDM_SETITEMW
    int InsertItem(int index, const HDITEMW* item) { return static_cast<int>(SendMessage(HDM_INSERTITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item))); }  // HDM_INSERTITEMW
    bool DeleteItem(int index) { return SendMessage(HDM_DELETEITEM, static_cast<WPARAM>(index)) != 0; }  // HDM_DELETEITEM
    bool GetItemRect(int index, RECT& rect) const { return SendMessage(HDM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect)) != 0; }  // HDM_GETITEMRECT
};

// WC_LISTVIEWW
class QV_API ListCtrl : public Window {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    // LVCFMT_* format; a width of -1 leaves the column at the control's default.
    int InsertColumn(int column, const wchar_t* heading, int format = LVCFMT_LEFT, int width = -1, int subItem = -1);  // LVM_INSERTCOLUMNW
    int InsertColumn(int column, const LVCOLUMNW* col) { return static_cast<int>(SendMessage(LVM_INSERTCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(col))); }  // LVM_INSERTCOLUMNW
    bool DeleteColumn(int column) { return SendMessage(LVM_DELETECOLUMN, static_cast<WPARAM>(column)) != 0; }  // LVM_DELETECOLUMN
    int GetColumnWidth(int column) const { return static_cast<int>(SendMessage(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column))); }  // LVM_GETCOLUMNWIDTH
    bool SetColumnWidth(int column, int cx) { return SendMessage(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(cx, 0)) != 0; }  // LVM_SETCOLUMNWIDTH
    bool GetColumn(int column, LVCOLUMNW* col) const { return SendMessage(LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(col)) != 0; }  // LVM_GETCOLUMNW
    bool SetColumn(int column, const LVCOLUMNW* col) { return SendMessage(LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(col)) != 0; }  // LVM_SETCOLUMNW
    int InsertItem(int item, const wchar_t* text);                                                   // LVM_INSERTITEMW
    int InsertItem(const LVITEMW* item) { return static_cast<int>(SendMessage(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(item))); }  // LVM_INSERTITEMW
    bool DeleteItem(int item) { return SendMessage(LVM_DELETEITEM, static_cast<WPARAM>(item)) != 0; }  // LVM_DELETEITEM
    bool DeleteAllItems() { return SendMessage(LVM_DELETEALLITEMS) != 0; }                         // LVM_DELETEALLITEMS
    int GetItemCount() const { return static_cast<int>(SendMessage(LVM_GETITEMCOUNT)); }          // LVM_GETITEMCOUNT
    bool GetItem(LVITEMW* item) const { return SendMessage(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(item)) != 0; }  // LVM_GETITEMW
    bool SetItem(const LVITEMW* item) { return SendMessage(LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(item)) != 0; }  // LVM_SETITEMW
    bool SetItemText(int item, int subItem, const wchar_t* text);                                    // LVM_SETITEMTEXTW
    std::wstring GetItemText(int item, int subItem) const;                                           // LVM_GETITEMTEXTW
    bool SetItemData(int item, DWORD_PTR data);                                                      // LVM_SETITEMW (lParam)
    DWORD_PTR GetItemData(int item) const;                                                           // LVM_GETITEMW (lParam)
    int GetNextItem(int start, int flags) const { return static_cast<int>(SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(start), flags)); }  // LVM_GETNEXTITEM
    // Item -1 is every item.
    bool SetItemState(int item, UINT state, UINT mask);                                              // LVM_SETITEMSTATE
    UINT GetItemState(int item, UINT mask) const { return static_cast<UINT>(SendMessage(LVM_GETITEMSTATE, static_cast<WPARAM>(item), mask)); }  // LVM_GETITEMSTATE
    bool EnsureVisible(int item, bool partialOk) { return SendMessage(LVM_ENSUREVISIBLE, static_cast<WPARAM>(item), partialOk) != 0; }  // LVM_ENSUREVISIBLE
    // The list view's own header control (report view).
    HWND GetHeaderCtrl() const { return reinterpret_cast<HWND>(SendMessage(LVM_GETHEADER)); }     // LVM_GETHEADER
    // Answers the previous extended style.
    DWORD SetExtendedStyle(DWORD exStyle) { return static_cast<DWORD>(SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, exStyle)); }  // LVM_SETEXTENDEDLISTVIEWSTYLE
    DWORD GetExtendedStyle() const { return static_cast<DWORD>(SendMessage(LVM_GETEXTENDEDLISTVIEWSTYLE)); }  // LVM_GETEXTENDEDLISTVIEWSTYLE
    // `area` is LVIR_BOUNDS, LVIR_ICON or LVIR_LABEL.
    bool GetSubItemRect(int item, int subItem, int area, RECT& rect) const;                         // LVM_GETSUBITEMRECT
    bool GetItemRect(int item, RECT& rect, UINT area) const;                                         // LVM_GETITEMRECT
    int HitTest(POINT pt, UINT* flags = nullptr) const;                                              // LVM_HITTEST
    int HitTest(LVHITTESTINFO* info) const { return static_cast<int>(SendMessage(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(info))); }  // LVM_HITTEST
    int SubItemHitTest(LVHITTESTINFO* info) const { return static_cast<int>(SendMessage(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(info))); }  // LVM_SUBITEMHITTEST
    // `which` is LVSIL_NORMAL, LVSIL_SMALL or LVSIL_STATE; answers the previous list.
    HIMAGELIST SetImageList(HIMAGELIST list, int which) { return reinterpret_cast<HIMAGELIST>(SendMessage(LVM_SETIMAGELIST, static_cast<WPARAM>(which), reinterpret_cast<LPARAM>(list))); }  // LVM_SETIMAGELIST
    HIMAGELIST GetImageList(int which) const { return reinterpret_cast<HIMAGELIST>(SendMessage(LVM_GETIMAGELIST, static_cast<WPARAM>(which))); }  // LVM_GETIMAGELIST
    // The comparison gets the items' data (lParam) and `data`.
    bool SortItems(PFNLVCOMPARE compare, DWORD_PTR data) { return SendMessage(LVM_SORTITEMS, data, reinterpret_cast<LPARAM>(compare)) != 0; }  // LVM_SORTITEMS
    int GetTopIndex() const { return static_cast<int>(SendMessage(LVM_GETTOPINDEX)); }            // LVM_GETTOPINDEX
    int GetCountPerPage() const { return static_cast<int>(SendMessage(LVM_GETCOUNTPERPAGE)); }    // LVM_GETCOUNTPERPAGE
    bool Scroll(SIZE size) { return SendMessage(LVM_SCROLL, static_cast<WPARAM>(size.cx), size.cy) != 0; }  // LVM_SCROLL
    bool RedrawItems(int first, int last) { return SendMessage(LVM_REDRAWITEMS, static_cast<WPARAM>(first), last) != 0; }  // LVM_REDRAWITEMS
    int GetSelectedCount() const { return static_cast<int>(SendMessage(LVM_GETSELECTEDCOUNT)); }  // LVM_GETSELECTEDCOUNT
    bool SetBkColor(COLORREF color) { return SendMessage(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(color)) != 0; }  // LVM_SETBKCOLOR
    bool SetTextColor(COLORREF color) { return SendMessage(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(color)) != 0; }  // LVM_SETTEXTCOLOR
    bool SetTextBkColor(COLORREF color) { return SendMessage(LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(color)) != 0; }  // LVM_SETTEXTBKCOLOR
};

// DATETIMEPICK_CLASSW
class QV_API DateTimeCtrl : public Window {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    // GDT_VALID, or GDT_NONE when a DTS_SHOWNONE control holds no date.
    DWORD GetTime(SYSTEMTIME& time) const { return static_cast<DWORD>(SendMessage(DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time))); }  // DTM_GETSYSTEMTIME
    // Null clears the date of a DTS_SHOWNONE control.
    bool SetTime(const SYSTEMTIME* time);                                                            // DTM_SETSYSTEMTIME
    // The same with a date-time value: no date reads and writes as a null value.
    bool GetTime(OleDateTime& time) const;                                                            // DTM_GETSYSTEMTIME
    bool SetTime(const OleDateTime& time);                                                           // DTM_SETSYSTEMTIME
    // GDTR_MIN | GDTR_MAX flags of the limits set; range[0] = min, range[1] = max.
    DWORD GetRange(SYSTEMTIME range[2]) const { return static_cast<DWORD>(SendMessage(DTM_GETRANGE, 0, reinterpret_cast<LPARAM>(range))); }  // DTM_GETRANGE
    bool SetRange(DWORD flags, const SYSTEMTIME range[2]) { return SendMessage(DTM_SETRANGE, flags, reinterpret_cast<LPARAM>(range)) != 0; }  // DTM_SETRANGE
    // Null returns to the locale's format of the control's style.
    bool SetFormat(const wchar_t* format) { return SendMessage(DTM_SETFORMATW, 0, reinterpret_cast<LPARAM>(format)) != 0; }  // DTM_SETFORMATW
    // `which` is MCSC_BACKGROUND, MCSC_TEXT, ...; answers the previous colour.
    COLORREF GetMonthCalColor(int which) const { return static_cast<COLORREF>(SendMessage(DTM_GETMCCOLOR, static_cast<WPARAM>(which))); }  // DTM_GETMCCOLOR
    COLORREF SetMonthCalColor(int which, COLORREF color) { return static_cast<COLORREF>(SendMessage(DTM_SETMCCOLOR, static_cast<WPARAM>(which), static_cast<LPARAM>(color))); }  // DTM_SETMCCOLOR
    HFONT GetMonthCalFont() const { return reinterpret_cast<HFONT>(SendMessage(DTM_GETMCFONT)); }  // DTM_GETMCFONT
    void SetMonthCalFont(HFONT font, bool redraw = true) { SendMessage(DTM_SETMCFONT, reinterpret_cast<WPARAM>(font), redraw); }  // DTM_SETMCFONT
    // The drop-down calendar while it is open, otherwise null.
    HWND GetMonthCalCtrl() const { return reinterpret_cast<HWND>(SendMessage(DTM_GETMONTHCAL)); }  // DTM_GETMONTHCAL
};

// "RichEdit20W" (RICHED20.DLL is loaded by the first Create and stays loaded).
class QV_API RichEditCtrl : public Window {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    bool SetReadOnly(bool readOnly = true) { return SendMessage(EM_SETREADONLY, readOnly) != 0; }  // EM_SETREADONLY
    void GetSel(long& start, long& end) const;                                                       // EM_EXGETSEL
    void SetSel(long start, long end);                                                               // EM_EXSETSEL
    void ReplaceSel(const wchar_t* text, bool canUndo = false) { SendMessage(EM_REPLACESEL, canUndo, reinterpret_cast<LPARAM>(text ? text : L"")); }  // EM_REPLACESEL
    void LimitText(long maxChars = 0) { SendMessage(EM_EXLIMITTEXT, 0, maxChars); }                          // EM_EXLIMITTEXT
    long GetTextLength() const { return static_cast<long>(SendMessage(WM_GETTEXTLENGTH)); }        // WM_GETTEXTLENGTH
    // `format` is SF_RTF or SF_TEXT (| SFF_SELECTION ...).
    long StreamIn(int format, EDITSTREAM& stream) { return static_cast<long>(SendMessage(EM_STREAMIN, static_cast<WPARAM>(format), reinterpret_cast<LPARAM>(&stream))); }  // EM_STREAMIN
    long StreamOut(int format, EDITSTREAM& stream) const { return static_cast<long>(SendMessage(EM_STREAMOUT, static_cast<WPARAM>(format), reinterpret_cast<LPARAM>(&stream))); }  // EM_STREAMOUT
    // Replaces the content (or the selection, with SFF_SELECTION) with `data`,
    // 8-bit RTF or text; answers the number of bytes read.
    long StreamIn(int format, const std::string& data);                                              // EM_STREAMIN
    // The content (or the selection) as 8-bit RTF or text; empty when the
    // transfer failed.
    std::string StreamOut(int format) const;                                                         // EM_STREAMOUT
    // Answers the previous background colour.
    COLORREF SetBackgroundColor(bool sysColor, COLORREF color) { return static_cast<COLORREF>(SendMessage(EM_SETBKGNDCOLOR, sysColor, static_cast<LPARAM>(color))); }  // EM_SETBKGNDCOLOR
    bool SetDefaultCharFormat(CHARFORMAT2W& cf) { cf.cbSize = sizeof(cf); return SendMessage(EM_SETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&cf)) != 0; }  // EM_SETCHARFORMAT
    bool SetSelectionCharFormat(CHARFORMAT2W& cf) { cf.cbSize = sizeof(cf); return SendMessage(EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&cf)) != 0; }  // EM_SETCHARFORMAT
    // Answers the mask of the attributes common to the whole selection.
    DWORD GetSelectionCharFormat(CHARFORMAT2W& cf) const { cf.cbSize = sizeof(cf); return static_cast<DWORD>(SendMessage(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&cf))); }  // EM_GETCHARFORMAT
    DWORD GetDefaultCharFormat(CHARFORMAT2W& cf) const { cf.cbSize = sizeof(cf); return static_cast<DWORD>(SendMessage(EM_GETCHARFORMAT, SCF_DEFAULT, reinterpret_cast<LPARAM>(&cf))); }  // EM_GETCHARFORMAT
    DWORD SetEventMask(DWORD mask) { return static_cast<DWORD>(SendMessage(EM_SETEVENTMASK, 0, static_cast<LPARAM>(mask))); }  // EM_SETEVENTMASK
    DWORD GetEventMask() const { return static_cast<DWORD>(SendMessage(EM_GETEVENTMASK)); }         // EM_GETEVENTMASK
    bool GetModify() const { return SendMessage(EM_GETMODIFY) != 0; }                              // EM_GETMODIFY
    void SetModify(bool modified = true) { SendMessage(EM_SETMODIFY, modified); }                  // EM_SETMODIFY
    bool CanUndo() const { return SendMessage(EM_CANUNDO) != 0; }                                  // EM_CANUNDO
    bool Undo() { return SendMessage(EM_UNDO) != 0; }                                              // EM_UNDO
    void EmptyUndoBuffer() { SendMessage(EM_EMPTYUNDOBUFFER); }                                    // EM_EMPTYUNDOBUFFER
    void Cut() { SendMessage(WM_CUT); }                                                            // WM_CUT
    void Copy() { SendMessage(WM_COPY); }                                                          // WM_COPY
    void Paste() { SendMessage(WM_PASTE); }                                                        // WM_PASTE
    void Clear() { SendMessage(WM_CLEAR); }                                                        // WM_CLEAR
    int GetLineCount() const { return static_cast<int>(SendMessage(EM_GETLINECOUNT)); }            // EM_GETLINECOUNT
    long LineFromChar(long index) const { return static_cast<long>(SendMessage(EM_EXLINEFROMCHAR, 0, index)); }  // EM_EXLINEFROMCHAR
};

// "SCROLLBAR" (the control's own bar, SB_CTL)
class QV_API ScrollBar : public Window {
public:
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    bool GetScrollInfo(SCROLLINFO* info, UINT mask = SIF_ALL) const;                                // GetScrollInfo
    bool SetScrollInfo(SCROLLINFO* info, bool redraw = true) { info->cbSize = sizeof(SCROLLINFO); return ::SetScrollInfo(m_hWnd, SB_CTL, info, redraw) != 0; }  // SetScrollInfo
    int GetScrollPos() const { return ::GetScrollPos(m_hWnd, SB_CTL); }                            // GetScrollPos
    // Answers the previous position.
    int SetScrollPos(int pos, bool redraw = true) { return ::SetScrollPos(m_hWnd, SB_CTL, pos, redraw); }  // SetScrollPos
    bool SetScrollRange(int minPos, int maxPos, bool redraw = true) { return ::SetScrollRange(m_hWnd, SB_CTL, minPos, maxPos, redraw) != FALSE; }  // SetScrollRange
    bool GetScrollRange(int* minPos, int* maxPos) const { return ::GetScrollRange(m_hWnd, SB_CTL, minPos, maxPos) != FALSE; }  // GetScrollRange
    int GetScrollLimit() const;                                                                      // GetScrollInfo
    bool EnableScrollBar(UINT arrows = ESB_ENABLE_BOTH) { return ::EnableScrollBar(m_hWnd, SB_CTL, arrows) != FALSE; }  // EnableScrollBar
    bool ShowScrollBar(bool show = true) { return ::ShowScrollBar(m_hWnd, SB_CTL, show) != FALSE; }  // ShowScrollBar
};

// TOOLTIPS_CLASSW: a top-level popup owned by `parent`.
class QV_API ToolTipCtrl : public Window {
public:
    bool Create(HWND parent, DWORD style = TTS_ALWAYSTIP);

    // A tool for window `wnd`: with toolId 0 the whole window (TTF_IDISHWND,
    // hosted by wnd's parent), otherwise `rect` of wnd identified by toolId.
    // TTF_SUBCLASS lets the tooltip watch the mouse itself; pass 0 as
    // `extraFlags` when the host calls RelayEvent instead.
    bool AddTool(HWND wnd, const wchar_t* text, const RECT* rect = nullptr, UINT_PTR toolId = 0,
                 UINT extraFlags = TTF_SUBCLASS);                                                    // TTM_ADDTOOLW
    void DelTool(HWND wnd, UINT_PTR toolId = 0);                                                     // TTM_DELTOOLW
    void UpdateTipText(const wchar_t* text, HWND wnd, UINT_PTR toolId = 0);                          // TTM_UPDATETIPTEXTW
    void SetToolRect(HWND wnd, UINT_PTR toolId, const RECT& rect);                                   // TTM_NEWTOOLRECTW
    void RelayEvent(MSG* msg) { SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(msg)); }  // TTM_RELAYEVENT
    void Activate(bool activate) { SendMessage(TTM_ACTIVATE, activate); }                          // TTM_ACTIVATE
    // Answers the previous width; -1 means no limit (one line).
    int SetMaxTipWidth(int width) { return static_cast<int>(SendMessage(TTM_SETMAXTIPWIDTH, 0, width)); }  // TTM_SETMAXTIPWIDTH
    int GetMaxTipWidth() const { return static_cast<int>(SendMessage(TTM_GETMAXTIPWIDTH)); }       // TTM_GETMAXTIPWIDTH
    // `which` is TTDT_AUTOPOP, TTDT_INITIAL, TTDT_RESHOW or TTDT_AUTOMATIC.
    void SetDelayTime(DWORD which, int ms) { SendMessage(TTM_SETDELAYTIME, which, MAKELPARAM(ms, 0)); }  // TTM_SETDELAYTIME
    int GetDelayTime(DWORD which) const { return static_cast<int>(SendMessage(TTM_GETDELAYTIME, which)); }  // TTM_GETDELAYTIME
    void Pop() { SendMessage(TTM_POP); }                                                           // TTM_POP
    void Update() { SendMessage(TTM_UPDATE); }                                                     // TTM_UPDATE
    int GetToolCount() const { return static_cast<int>(SendMessage(TTM_GETTOOLCOUNT)); }          // TTM_GETTOOLCOUNT
    void SetTipBkColor(COLORREF color) { SendMessage(TTM_SETTIPBKCOLOR, color); }                  // TTM_SETTIPBKCOLOR
    void SetTipTextColor(COLORREF color) { SendMessage(TTM_SETTIPTEXTCOLOR, color); }              // TTM_SETTIPTEXTCOLOR
};

}  // namespace qv
