// XValueAddedCtrl: the list in which planners distribute a share of a plan's
// total time over its process steps, and XInPlaceFloatEdit, the field in
// which they type a share.
//
// The list shows the plan's value-added configuration as groups and their
// children (a child's name indented), each with an entered percent and time
// and a calculated percent and time, and a last row "Not Assigned" with what
// is left of 100 %. The user edits the entered percent only, in place: a
// click on the "Entered Percent [%]" cell of the focused row, or F2 or Enter
// on the focused row, opens a decimal field (three integer digits, five
// decimals) over the cell. Enter takes the value and opens the field on the
// next editable row, Tab takes it and stays, Escape drops it, and leaving
// the field in any other way takes it. Children can always be edited; a
// group only when it has no children and is not the excluded group (a
// group's percent is the sum of its children's).
//
// The cap: the entered percents never exceed 100 in sum. A value above what
// is left is refused with the box "Value out of range. Max. 12.34% are
// assignable." (translated) and the old value stays; a value that lowers an
// entry is always taken, even while the sum is above 100 (a stored value
// may say anything). A taken value sets the entered time to that share of
// the total time and the group's figures to the sums of its children.
//
// The value string: what the form stores (GetValue/SetValue), one record per
// entry "[FP:..][SID:..][PID:..][TE:..][PE:..][TC:..][PC:..]" joined by "|"
// (the long names FORMPOS, SUBGROUPID, PARENTID, TIMEENTERED,
// PERCENTENTERED, TIMECALCULATED and PERCENTCALCULATED read as well).
// GetValue answers the string last given to SetValue untouched until the
// user changes an entry; after that, the records written afresh (records of
// entries that are not configured are gone then). A string in which a
// record lacks a field makes SetValue answer false and leaves the list
// empty; a later SetValue of a good string fills it again.
//
// Where the data comes from: CreateCtrl takes the host's query and data
// object from the initial values "pQuery" and "pObject", the configuration
// from XVAConfigFactory for the object's master plan-type set (the data
// object's "voxeproject", its "voxendirtypeset", its "master"), the total
// time from the data object's "validtime_tg" (an object of type
// "voxecompprocessdefault") or "dbl_totalcalculated", and from the session
// settings the decimal places ("valueadded"/"decimalplacestimes" and
// "decimalplacespercentage", two each by default) and the folder of the
// row pictures ("Common"/"bitmaps"): the first group's and the first child's
// bitmap files there (magenta is transparent). The rows carry pictures only
// when both pictures load. A host without the application's COM servers
// fills qv::DataObject and qv::Query (frame/host_objects.h) and the embedded
// configuration factory (XVAConfigFactory::SetConfiguration).
//
// Numbers: the list's cells show '.' as decimal separator, the field the
// user's own; the value string always '.'.
//
// Screen readers hear each row (group, step and "Not Assigned") as a list
// item named by its name and valued by its figures with their column titles
// ("Entered Percent [%]: 12.50; Entered Time [sec]: 450.00; ..."); when
// figures change, by an edit or SetValue, a reader hears of each row whose
// figures changed. The in-place field is named by its row and described by
// its column's title.
//
// DPI: the columns' widths (20, 200 and 145 pixels at 96 DPI), the
// pictures' slots (18 x 17, the pictures themselves enlarged only by whole
// multiples so they stay sharp) and the in-place field's insets are scaled
// to the list's DPI; when it changes, the columns keep their share of the
// width (also what the user resized), the pictures are made again for the
// new slots and an open field moves back over its cell.
//
// Every public operation answers false (or nothing) on failure, never
// throws, and is a safe no-op on an object without a live window.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/frame/va_config.h"
#include "quorvel/lists/list_ctrl.h"
#include "quorvel/masks/numeric.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/com.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/imagelist.h"

struct IZT_SessionDataMng;

// The initial values a host hands CreateCtrl ("pQuery" and "pObject", each
// VT_UNKNOWN). CreateCtrl frees the array with XInitValueWrapper::FreeStruct
// and clears both members; the structure itself stays the caller's.
struct tagVAINITDATA {
    unsigned long ulCount;
    tagINITVALUE* pValues;
};

// The in-place field of the list: a decimal field over one cell that ends
// itself when it loses the focus, telling the list's parent with
// LVN_ENDLABELEDITW from the list (the text, or null when cancelled). A
// screen reader hears it named by the caption of its row and described by
// its column's title; its value is its text.
class QV_API XInPlaceFloatEdit : public XMaskFloatEdit, public virtual qv::AccessibleSource {
public:
    XInPlaceFloatEdit(int row, int column, int digits = 3, int decimals = 5);

    int GetRow() const noexcept { return m_iRow; }
    int GetColumn() const noexcept { return m_iColumn; }
    bool IsCancelled() const noexcept { return m_bCancelled; }
    // Whether Enter ended the field (the list then moves on to the next row).
    bool EndedByEnter() const noexcept { return m_bEndedByEnter; }
    // The name and the description screen readers announce for the field.
    void SetAccessibleName(const std::wstring& name);
    void SetAccessibleDescription(const std::wstring& description);

    // qv::AccessibleSource
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleDescription(long child, std::wstring& description) override;

protected:
    // Escape cancels; Escape, Enter and Tab hand the focus back to the list.
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;     // WM_CHAR
    void OnKillFocus(HWND newFocus) override;                   // WM_KILLFOCUS
    // Every key, so a dialog does not take Enter, Escape or Tab.
    UINT OnGetDlgCode() override;                               // WM_GETDLGCODE

    int m_iRow;
    int m_iColumn;
    bool m_bCancelled = false;

private:
    friend class XValueAddedCtrl;
    void EndEdit();
    // Closes the field without a notification (the list is rebuilt or going).
    void Abandon();
    bool m_bEnded = false;
    bool m_bEndedByEnter = false;
    std::wstring m_strAccessibleName;
    std::wstring m_strAccessibleDescription;
};

// The same field in the family's colours: text RGB(8, 0, 0) on the window
// colour.
class QV_API XInPlaceFloatEditColor : public qv::DefaultColorVariant<XInPlaceFloatEdit> {
public:
    XInPlaceFloatEditColor(int row, int column) : DefaultColorVariant(row, column) {}
};

class QV_API XValueAddedCtrl : public XBaseListCtrl, public qv::DpiListener {
public:
    enum : int {
        kColumnImage = 0,
        kColumnName = 1,
        kColumnEnteredPercent = 2,
        kColumnEnteredTime = 3,
        kColumnCalculatedPercent = 4,
        kColumnCalculatedTime = 5,
        kEditId = 9000,
    };
    // WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | LVS_REPORT |
    // LVS_SINGLESEL | LVS_EDITLABELS | LVS_NOSORTHEADER
    enum : DWORD { kStyle = 0x50308205 };

    XValueAddedCtrl() noexcept;
    ~XValueAddedCtrl() override;

    // Creates the list on `parent` at `rect` with id `id` and fills it.
    // `initData` (a tagVAINITDATA*, may be null) names the host's query and
    // data object. FALSE when the window cannot be created, or when the
    // initial values name no configuration factory or no master plan-type
    // set (the latter with an error box).
    BOOL CreateCtrl(UINT& id, const RECT& rect, HFONT font, HWND parent, void* initData);

    // Stores `value`, reads it and rebuilds the rows; a value the host sets
    // is answered untouched by GetValue until the user edits.
    bool SetValue(const std::wstring& value);
    std::wstring GetValue() const;
    void SetReadOnly(bool readOnly) noexcept { m_bReadOnly = readOnly; }
    bool IsReadOnly() const noexcept { return m_bReadOnly; }
    // The group whose row is never edited (0: none).
    void SetExcludedGroup(long groupId) noexcept { m_lExcludedGroup = groupId; }
    // Whether the user has changed an entry since the host's last SetValue.
    bool IsModified() const noexcept { return m_bModified; }

    // The open in-place field, or null.
    XInPlaceFloatEdit* GetInPlaceEdit() const noexcept;
    // Opens the field on `row`'s entered percent when that row may be
    // edited; false otherwise.
    bool EditRow(int row);

    // qv::DpiListener: columns, pictures and an open field at the new DPI.
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnDestroy() override;                                         // WM_DESTROY
    bool OnReflectNotify(NMHDR* hdr, LRESULT* result) override;        // WM_NOTIFY (reflected)
    void OnLButtonDown(UINT flags, POINT pt) override;                 // WM_LBUTTONDOWN
    void OnKeyDown(UINT vk, UINT repCnt, UINT flags) override;         // WM_KEYDOWN: F2, Enter
    UINT OnGetDlgCode() override;                                      // WM_GETDLGCODE: Enter
    void OnHScroll(UINT code, UINT pos, HWND scrollBar) override;      // WM_HSCROLL
    void OnVScroll(UINT code, UINT pos, HWND scrollBar) override;      // WM_VSCROLL
    virtual LRESULT OnEndLabelEdit(NMLVDISPINFOW* info);               // LVN_ENDLABELEDITW
    virtual LRESULT OnCustomDraw(NMLVCUSTOMDRAW* draw);                // NM_CUSTOMDRAW

    // qv::ReportRowsSource: column 0 holds pictures or nothing, never read.
    int RowsUnreadColumn() const override { return kColumnImage; }

    // The row and column under `point` (client coordinates); -1 for none.
    int HitTestEx(POINT& point, int& column);
    // Opens the in-place field on a cell; null when it cannot.
    XInPlaceFloatEdit* EditSubLabel(int row, int column);
    qv::ComPtr<IZT_BaseDataObject> GetMasterPlanTypeSetFromObject(qv::ComPtr<IZT_BaseDataObject> object);
    qv::ComPtr<IZT_SessionDataMng> GetSessionDataManager();

    qv::ComPtr<IZT_Query> m_pQuery;
    qv::ComPtr<IZT_BaseDataObject> m_pObject;
    XVAConfig m_VAConfig;
    qv::ImageList m_ImageList;
    std::map<int, long> m_mapRows;                  // list row -> entry code
    std::wstring m_strValue;                        // as last given to SetValue
    bool m_bModified = false;
    bool m_bReadOnly = false;
    int m_iDecimalPlacesTimes = 2;
    int m_iDecimalPlacesPercentage = 2;
    long m_lExcludedGroup = 0;

private:
    struct State;
    bool Rebuild(const std::wstring& value);
    double TotalTime();
    void ReadSettings(bool planTypeSet);
    // Makes the rows' pictures for the list's DPI from the picture files
    // and gives them to the list; false when a picture does not load.
    bool MakeRowPictures();
    // Where the field over `row`'s `column` goes, from the cell and the
    // list's DPI; a column outside the client area is scrolled into view
    // first. False when the cell is not there or too narrow.
    bool EditRectFor(int row, int column, RECT& rect);
    bool EditableRow(int row) const;
    void RetireEdit();
    // The entries (ValueAddedEntry by code) and the configuration as the
    // rules see it; kept out of the header.
    std::unique_ptr<State> m_pState;
    std::unique_ptr<XInPlaceFloatEdit> m_pEdit;
    // Fields that ended while their own handlers were running, freed with
    // the list.
    std::vector<std::unique_ptr<XInPlaceFloatEdit>> m_retiredEdits;
    bool m_bImages = false;
    // The DPI the column widths were last laid out for.
    UINT m_uLayoutDpi = 96;
};
