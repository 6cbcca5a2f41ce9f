// XBaseListCtrl: the report list whose rows are typed values, and
// XSrtHeaderCtrl, its header with the sort arrow.
//
// A form creates the list (or subclasses a list view of its dialog), inserts
// the columns as for any list view (InsertColumn), and adds rows with
// AddEntry: one value (qv::Variant) per column. The list keeps the values,
// not texts: each cell's text is made when the list view asks for it, a date
// in the user's date and time format, any other value as VariantChangeType
// turns it into text (a value that has no text, such as a null, shows
// nothing).
//
// Columns and keys: the first row the list takes gives every value column a
// key, its header item's index at that moment, kept in the header item's
// data; a row's values are stored by key. The key moves with its column when
// the user drags the column elsewhere, so GetData(row, column) and the
// comparisons of a sort name a column by the index it had when the first
// row came in.
//
// The image column: a list given an image list (AssignImageList, before its
// window is created or subclassed) shows the row's image in column 0, which
// holds no value, is never sorted, and can be neither resized nor dragged,
// nor can another column be dragged in front of it. Each row then has one
// value fewer than the header has columns, and must name an image.
//
// Sorting: a click on a column title sorts by that column's values (VarCmp
// in the user's locale; values that do not compare, like a text against a
// null, count as equal, and equal rows keep no particular order). The list
// has one direction for all its columns: the first click sorts ascending and
// every further click, on any column, turns the direction round. The header
// draws an arrow in the sort column.
//
// Selection: a list created by Create allows one selected row; a list view
// subclassed from a dialog keeps the selection mode of its template.
//
// Printing and the clipboard: a right click offers "Print", "Preview" and
// "Copy to clipboard" when the list has a print-list object
// (print_list.h). The list hands the object its columns in display order
// (PrintListSetColNameSize) and their cells column by column
// (PrintListSetItemData), then asks it to print, preview or copy. A cell
// goes over with the text the list shows for it (its text request answered
// by OnGetdispinfo, which a derived class may override). The
// object: whatever the host last gave SetGenListObject; a list whose host
// never called SetGenListObject before its window was created or subclassed
// takes the library's own XPrintListObject then. SetGenListObject(nullptr)
// leaves the list without an object, and so without the menu.
//
// Row data and lifetime: each row's values live in a map that the list
// owns, in the item's data; each key in its header item's data. Nothing of
// it leaks, whoever deletes the rows and whatever goes first:
//  - DeleteRow and ChangeEntry free the row they take out; so does a host
//    that deletes rows itself (LVM_DELETEITEM, LVM_DELETEALLITEMS): the list
//    frees a row when the list view reports its deletion to the parent. A
//    row whose deletion fails keeps its values.
//  - When the window is destroyed (WM_DESTROY), every key and row is freed.
//  - Destroying the object first destroys a window it created; a window it
//    subclassed is left with its columns but without rows, keys or object.
// This relies on the list view's notifications reaching the list through
// its parent, as they do for any parent the list was created on or attached
// under; DeleteRow frees its row even when they do not.
//
// Rows come in one by one and a sort compares values, not messages: the
// column keys and the header's item states are read from the header once and
// kept until a message that can change them reaches it (the header object
// sees every such message), so neither a new row nor a comparison of a sort
// sends the header anything.
//
// Screen readers: the list reads as a list whose items are its rows (see
// qv::ReportRowsSource below), the header as a row of column headers, the
// sort column saying "sorted ascending" or "sorted descending" (translated)
// as its description. A sort tells the reader that the rows changed places
// and which column now sorts; a header item's default action "Click" sorts
// by it as a click does.
//
// DPI: the sort arrow's inset follows the header's font, with a least size
// of 4 pixels at 96 DPI scaled to the header's DPI, and its strokes are a
// pixel wide at 96 DPI, scaled; the header repaints when its DPI changes.
// Everything else the list shows is sized by its font and the host's
// columns.
//
// Every public operation answers false (or nothing) on failure, never
// throws, and is a safe no-op on an object without a live window.
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <oaidl.h>

#include <map>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/lists/print_list.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/com.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"

namespace qv {
class ImageList;

// The rows of a report list as a screen reader reads them. The list is a
// list; each row is an item, child id = row index + 1 (the ids the list
// view's own events use), named by the text of the first column the user
// sees (blanks around it dropped), with the other columns' texts, in the
// order the user sees them and each with its column's title, as its value
// ("Qty: 3; Due: 1/2/2024"; empty cells are not read). A row's state is
// the list view's: selected, focused while the list has the focus, off
// screen while scrolled out of view.
//
// Some systems' proxy of a list view tells a reader nothing of its rows,
// and none knows the texts a list makes on request; these answers read what
// the list shows, the same way everywhere.
class QV_API ReportRowsSource : public virtual AccessibleSource {
public:
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleValue(long child, std::wstring& value) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;
    bool AccessibleChildCount(long& count) override;
    bool AccessibleItemRect(long child, RECT& rect) override;
    bool AccessibleHitTest(POINT client, long& child) override;

protected:
    // The list view whose rows are read (null: none yet).
    virtual HWND RowsWindow() const = 0;
    // The text of row `row` in header item `column`, as the list shows it.
    virtual std::wstring RowCellText(int row, int column) = 0;
    // A header item that is never read (a column of pictures), or -1.
    virtual int RowsUnreadColumn() const { return -1; }
    // The row of item `child` (child - 1), or -1 when it is no row.
    int RowOfChild(long child) const;
    // Tells a reader that the rows changed places (after a sort).
    void RaiseRowsReordered() const;
};

}  // namespace qv

// What a sort hands its comparison: the direction (true = ascending), the
// clicked column (header item index) and the list's header.
class QV_API XClickData {
public:
    XClickData(int column, bool ascending, qv::HeaderCtrl* header) noexcept
        : m_bSortDirection(ascending), m_iColumnNumber(column), m_pHeaderCtrl(header) {}
    XClickData(const XClickData&) noexcept = default;
    XClickData& operator=(const XClickData&) noexcept = default;

    int GetColumnNumber() const noexcept { return m_iColumnNumber; }
    bool GetSortDirection() const noexcept { return m_bSortDirection; }
    qv::HeaderCtrl* GetHeaderCtrl() const noexcept { return m_pHeaderCtrl; }

private:
    bool m_bSortDirection;
    int m_iColumnNumber;
    qv::HeaderCtrl* m_pHeaderCtrl;
};

// The list's header: draws its items itself once one of them is the sort
// column, with the title and, in the sort column, an arrow pointing up for
// ascending and down for descending.
//
// A screen reader hears it as a list of column headers, child k being the
// k-th column from the left as the user arranged them: each named by its
// title, the sort column described as "sorted ascending" or "sorted
// descending" (translated); a change of the sort column or direction is
// announced as a change of these descriptions. A header with buttons offers
// "Click" as each item's default action, which sorts by the column.
class QV_API XSrtHeaderCtrl : public qv::HeaderCtrl, public virtual qv::AccessibleSource, public qv::DpiListener {
public:
    XSrtHeaderCtrl() noexcept = default;

    // Makes `column` the sort column in `ascending` direction: its item
    // becomes owner-drawn and the header is repainted. A column that was the
    // sort column before stays owner-drawn and is drawn without arrow.
    // Answers the previous sort column (-1: none). Setting the same column
    // and direction again while the item is still owner-drawn changes
    // nothing and costs nothing, so a sort may call it for every comparison.
    int SetSortColumn(int column, bool ascending);
    int GetSortColumn() const noexcept { return m_iSortColumn; }
    bool IsSortAscending() const noexcept { return m_bSortAscending; }

    // qv::AccessibleSource: the column headers (see above).
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleDescription(long child, std::wstring& description) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;
    bool AccessibleChildCount(long& count) override;
    bool AccessibleItemRect(long child, RECT& rect) override;
    bool AccessibleHitTest(POINT client, long& child) override;
    bool AccessibleDefaultAction(long child, std::wstring& action) override;
    bool AccessibleDoDefaultAction(long child) override;

    // qv::DpiListener: the arrow is drawn afresh at the new DPI.
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    bool OnReflectDrawItem(DRAWITEMSTRUCT* dis) override;  // WM_DRAWITEM
    // Draws item `dis->itemID`: button face, title, and the arrow in the
    // sort column.
    virtual void DrawItem(DRAWITEMSTRUCT* dis);
    // The header item of accessible child `child` (-1: none), and back.
    int ItemOfChild(long child);
    long ChildOfItem(int item);

    int m_iSortColumn = -1;
    bool m_bSortAscending = true;

private:
    friend class XBaseListCtrl;
    // The item count and each item's data (HDI_LPARAM) as the header answers
    // them, read once and kept until a message that can change them
    // (HDM_SETITEM, HDM_INSERTITEM, HDM_DELETEITEM) passes the header: the
    // list reads column keys for every row it takes and every comparison of
    // a sort, and a message to the header costs far more than a look here.
    int CachedItemCount();
    bool CachedItemData(int item, LPARAM& data);
    void ForgetItems() noexcept;

    // The item last made owner-drawn by SetSortColumn, while no message that
    // can change item formats has reached the header since (-1: none).
    int m_iOwnerDrawn = -1;
    bool m_bItemsKnown = false;
    std::vector<LPARAM> m_itemData;
    std::vector<bool> m_itemDataRead;
};

class QV_API XBaseListCtrl : public qv::ListCtrl, public qv::ReportRowsSource {
public:
    // A row's values by column key.
    using RowData = std::map<int, qv::Variant>;

    // The context menu's commands.
    enum : int { kMenuPrint = 10000, kMenuPreview = 10010, kMenuCopy = 10020 };
    // LVS_EX_HEADERDRAGDROP | LVS_EX_FULLROWSELECT | LVS_EX_UNDERLINEHOT
    enum : DWORD { kExtendedStyle = 0x830 };

    XBaseListCtrl() noexcept;
    ~XBaseListCtrl() override;

    // Subclasses a host's list view and sets it up as Create does, except
    // that it keeps its selection mode. False as for qv::Window.
    bool Attach(HWND hwnd);
    bool (SubclassWindow)(HWND hwnd) { return Attach(hwnd); }
    bool SubclassDlgItem(UINT id, HWND parent);

    // Gives the list an image list for its image column (not owned; it must
    // outlive the list's window). Taken only once, only a list with a
    // handle, and used only when the window is created or subclassed
    // afterwards.
    bool AssignImageList(qv::ImageList* list);

    // Inserts a row at `row` with one value per value column (in column
    // order) and, with an image list, image `image` (which may not be -1;
    // I_IMAGENONE is a row without a picture);
    // without one `image` must be negative. False when the row does not fit
    // the columns or cannot be inserted.
    bool AddEntry(std::vector<qv::Variant> values, int row, int image);
    // Replaces row `row` (0 <= row < count) by a new one at the same
    // position; the row's selection and other states are not kept.
    bool ChangeEntry(std::vector<qv::Variant> values, int row, int image);
    // Deletes row `row` with its values; false for a row that is not there
    // or has no values, or when the list view refuses.
    bool DeleteRow(int row);
    // The value of row `row` in the column with key `column`. Bounds are
    // checked with row <= item count and column <= column count, so the
    // row one past the end is looked for and not found.
    bool GetData(int row, int column, qv::Variant& out);
    // The value in the column with key `column` of the first selected row
    // that has one.
    bool GetSelData(int column, qv::Variant& out);
    // Selects row `row` and unselects every other row; focus and scrolling
    // stay. True when any row's state was set.
    bool SelectRow(int row);

    // The print-list object for the context menu and the export (held
    // counted). Null leaves the list without one, not even the library's.
    void SetGenListObject(IZTPrintGenericListObject* object);
    // Hands the columns' names, display positions, alignments and widths to
    // `object` (null: the list's own), in display order.
    bool PrintListSetColNameSize(IZTPrintGenericListObject* object);
    // Hands the cells to `object` (null: the list's own), one display column
    // after the other, top row first.
    bool PrintListSetItemData(IZTPrintGenericListObject* object);

    XSrtHeaderCtrl& GetSortHeader() noexcept { return m_ctlHeader; }

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    int OnCreate(CREATESTRUCTW* cs) override;                      // WM_CREATE
    void OnDestroy() override;                                     // WM_DESTROY
    // Moves the window a pixel wider and back, so it lays out and paints afresh.
    void OnSetFocus(HWND oldFocus) override;                       // WM_SETFOCUS
    // The context menu's commands.
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;                 // WM_COMMAND
    // Keeps the image column in place: its header item is neither resized,
    // clicked nor dragged, and no column is dropped in front of it.
    BOOL OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) override; // WM_NOTIFY (header)
    bool OnReflectNotify(NMHDR* hdr, LRESULT* result) override;    // WM_NOTIFY (reflected)
    virtual LRESULT OnColumnclick(NMLISTVIEW* info);               // LVN_COLUMNCLICK
    virtual LRESULT OnGetdispinfo(NMLVDISPINFOW* info);            // LVN_GETDISPINFOW
    virtual LRESULT OnRclick(NMHDR* hdr);                          // NM_RCLICK

    // qv::ReportRowsSource: the cells as the list shows them; the image
    // column is not read.
    HWND RowsWindow() const override { return m_hWnd; }
    std::wstring RowCellText(int row, int column) override;
    int RowsUnreadColumn() const override { return m_pImageList ? 0 : -1; }

    // Gives row `row` new values (one per value column, in column order)
    // and keeps its image, states and position: what a derived list uses to
    // change the figures of rows it shows again, without the list view's
    // costly deletion and insertion. False for a row without values or
    // values that do not fit the columns.
    bool ReplaceRowValues(int row, std::vector<qv::Variant> values);
    // The held object's columns and cells; false without an object.
    bool CreatePrintData();
    // Frees every key and row (the items and header items keep their data
    // pointers; the window is going).
    void FreeMemory();
    // Frees `count` strings of `array`, the last first.
    void DeleteBSTR(unsigned long count, BSTR* array);
    // The sort's comparison of two rows' data; `clickData` is an XClickData*.
    static int CALLBACK CompareFunc(LPARAM rowData1, LPARAM rowData2, LPARAM clickData);

    bool m_bColumnsNotKeyed = true;
    XSrtHeaderCtrl m_ctlHeader;
    qv::ImageList* m_pImageList = nullptr;
    bool m_bSortDirection = false;
    qv::ComPtr<IZTPrintGenericListObject> m_pGenListObject;
    std::map<int, std::wstring> m_mapMenu;
    std::wstring m_strDisplayText;

private:
    void SetUpWindow(bool created);
    HWND HeaderWindow() const;
    // The header's item count (0 without a header).
    int ItemCount(HWND header) const;
    // The key kept in header item `item`, or null.
    const int* KeyOf(int item) const;
    RowData* RowOf(int row) const;
    // The list view's item count, asked of the list view's own procedure.
    int RowCount() const;
    // Read-only questions (an item's data, the item count) go straight to
    // the list view's class procedure: a message through the window
    // subclasses costs far more than the answer (under Wine each
    // subclass looks itself up in the window's properties), and the rows'
    // data are ours to read.
    LRESULT AskListView(UINT msg, WPARAM wp, LPARAM lp) const;
    WNDPROC m_listViewProc = nullptr;
    // The notifications of rows deleted by the list view.
    void OnDeleteItem(LPARAM data);
    void OnDeleteAllItems();
    bool ReadOrder(int count, std::vector<int>& order) const;
    // The data of every row, in display order.
    void ReadAllRows(std::vector<RowData*>& data) const;
    // The text of a cell as the list's text request answers it.
    std::wstring CellTextOf(int row, int subItem, RowData* data);
    HBITMAP RowBitmap(int row) const;

    // The host chose the print-list object (SetGenListObject was called).
    bool m_bGenListObjectChosen = false;
    // Every row has been freed (the window is going, or all rows are being
    // deleted): deletions the list view reports are then not freed again.
    bool m_bRowsReleased = false;
    // The row data freed by the last deletion notification.
    LPARAM m_lastReleasedRow = 0;
};
