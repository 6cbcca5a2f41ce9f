// XCfgListCtrl: the configuration tool's plain-text report list.
//
// The list view holds the texts itself: a form inserts columns and rows as
// for any list view (InsertColumn, InsertItem, SetItemText) and may give rows
// images, item values and states; the list keeps no data of its own.
//
// Sorting: a left click on a column title sorts the rows by that column's
// texts, ordinally (character codes, so "B" comes before "a"). A new column
// starts ascending; a click on the column sorted last turns the direction
// round. A sort moves whole rows: the texts of every column, the image, the
// item value and the state go together. The header draws an arrow in the
// sort column. SortTextItems sorts a range of rows without touching the
// arrow; SortCtrl sorts all rows and sets the arrow.
//
// Printing: PrintListSetColNameSize and PrintListSetItemData hand the
// columns (names, widths, alignments) and then the cells, column by column
// in the order the user arranged them, to a print-list object
// (print_list.h) that the caller gives; every cell is aligned as its header
// item is. Failures go to the log book under the configuration tool's name,
// and the object is reset.
//
// Label editing: in a list with LVS_EDITLABELS, an edited first-column text
// is taken as typed; a cancelled edit changes nothing.
//
// Screen readers hear the rows as the report list's are heard
// (qv::ReportRowsSource: the first column the user sees names a row, the
// others are its value with their titles), the header as XSrtHeaderCtrl
// tells it, and a sort as rows that changed places.
//
// Every public operation answers false on failure, never throws, and is a
// safe no-op on an object without a live window.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "quorvel/common/api.h"
#include "quorvel/lists/list_ctrl.h"
#include "quorvel/lists/print_list.h"
#include "quorvel/platform/controls.h"

class QV_API XCfgListCtrl : public qv::ListCtrl, public qv::ReportRowsSource {
public:
    XCfgListCtrl() noexcept;
    ~XCfgListCtrl() override;

    // Create(style, rect, parent, id) is the list view's; the header is taken
    // over when the window is created.
    using qv::ListCtrl::Create;
    // Subclasses a host's list view and takes over its header. False as for
    // qv::Window.
    bool Attach(HWND hwnd);
    bool (SubclassWindow)(HWND hwnd) { return Attach(hwnd); }
    bool SubclassDlgItem(UINT id, HWND parent);

    // Sorts rows `low` ... `high` (-1: the last row) by the texts of header
    // item `column`. False, with nothing moved, for a column the header does
    // not have, a range of one row or none, or a range outside the rows. The
    // arrow is left as it is.
    bool SortTextItems(int column, bool ascending, int low = 0, int high = -1);
    // Sorts all rows by `column` and, when that succeeds, shows the arrow
    // there and remembers the column and direction for the next click.
    bool SortCtrl(int column, bool ascending);

    // Hands the columns' names, display positions, alignments and widths to
    // `object`, in display order. Null fails at once.
    bool PrintListSetColNameSize(IZTPrintGenericListObject* object);
    // Hands the cells to `object`, one display column after the other, top
    // row first. Null fails at once.
    bool PrintListSetItemData(IZTPrintGenericListObject* object);

    XSrtHeaderCtrl& GetSortHeader() noexcept { return m_ctlHeader; }
    // The column sorted last by a click or SortCtrl (-1: none) and its direction.
    int GetSortColumn() const noexcept { return m_nSortColumn; }
    bool IsSortAscending() const noexcept { return m_bSortAscending; }

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    int OnCreate(CREATESTRUCTW* cs) override;                      // WM_CREATE
    // Showing or hiding changes nothing of the rows or the sort: the list
    // view's own handling.
    void OnShowWindow(BOOL show, UINT status) override;            // WM_SHOWWINDOW
    BOOL OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) override; // WM_NOTIFY (header)
    bool OnReflectNotify(NMHDR* hdr, LRESULT* result) override;    // WM_NOTIFY (reflected)
    // A left click on a column title: sorts by it (see above). Answers 0.
    virtual LRESULT OnItemclick(NMHEADERW* info);                  // HDN_ITEMCLICKA/W
    // Accepts the edited text (TRUE) unless the edit was cancelled.
    virtual LRESULT OnEndlabeledit(NMLVDISPINFOW* info);           // LVN_ENDLABELEDITW

    // Exchanges rows `a` and `b` completely.
    void SwapRows(int a, int b, int columns);

    // qv::ReportRowsSource: the texts the list view holds.
    HWND RowsWindow() const override { return m_hWnd; }
    std::wstring RowCellText(int row, int column) override { return GetItemText(row, column); }

    // The header, whose items the list draws on its behalf: the list view's
    // header has control id 0, so its owner-drawn items reach the list like
    // a menu's and are not reflected.
    class SortHeader : public XSrtHeaderCtrl {
    public:
        void Draw(DRAWITEMSTRUCT* dis) { DrawItem(dis); }
    };
    SortHeader m_ctlHeader;
    int m_nSortColumn = -1;
    bool m_bSortAscending = true;

private:
    void SetUpWindow();
    int ColumnCount() const;
};
