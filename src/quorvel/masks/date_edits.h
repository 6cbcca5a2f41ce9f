// Date and time entry fields on the platform's date picker:
//
// - XMFCBaseDateEdit: a date picker, optionally with a check box for "no date";
// - XMFCBaseTimeEdit: a time picker with spin buttons;
// - XMFCBaseDateTimeEdit: a date picker and a time picker side by side that
//   the host treats as one control: one id, one value, one kind of
//   notification (DTN_DATETIMECHANGE, also when the focus comes in), and Tab
//   and Shift+Tab walking through both pickers;
// - XMFCBaseDateEditReadOnly and XMFCBaseDateEditReadOnlyColor: a value shown
//   as text in the read-only field, as a date, a time, or both, in the user's
//   locale.
//
// Values are qv::OleDateTime: valid, invalid, or null for "no date".
//
// Screen readers: each picker is a qv::DatePicker (masks/datetime_field.h):
// named by its label, the date or time it shows as value, or "No date"
// (translated). The compound is a group named by its label whose value is
// the date and the time as its pickers show them (or "No date"); its
// pickers are named by its label too. The read-only field tells "No date"
// where it shows nothing because it holds no date.
//
// DPI: the compound's picker widths, least height and gap are sizes at 96
// DPI scaled to its DPI; it lays its pickers out again when that changes.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/base_readonly.h"
#include "quorvel/masks/datetime_field.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/datetime.h"
#include "quorvel/platform/dpi.h"

// What the read-only date field shows; any other value shows the date.
enum DISPLAYTYPE : int { DISPLAYTYPE_DATE = 0, DISPLAYTYPE_TIME = 1, DISPLAYTYPE_DATETIME = 2 };

class QV_API XMFCBaseDateEdit : public qv::DatePicker {
public:
    // Child, group; with the check box also visible and DTS_SHOWNONE.
    enum : DWORD { kStyle = WS_CHILD | WS_GROUP, kStyleShowNone = WS_CHILD | WS_VISIBLE | WS_GROUP | DTS_SHOWNONE };

    // Creates the picker showing no date (only a picker with the check box,
    // `showNone`, can), with `font` when one is given, and shows it. 1 on
    // success, 0 when the picker cannot be created.
    int Create(bool showNone, const RECT& rect, HWND parent, unsigned int id, HFONT font);
    // The picker's value (DTM_SETSYSTEMTIME / DTM_GETSYSTEMTIME); null is "no date".
    int SetValue(const qv::OleDateTime& value);
    int GetValue(qv::OleDateTime& value) const;

protected:
    // Reflected DTN_DATETIMECHANGE: inside a compound field, reported to
    // it; otherwise the parent gets the picker's own notification.
    bool OnReflectNotify(NMHDR* hdr, LRESULT* result) override;
    void OnKeyDown(UINT vk, UINT repCnt, UINT flags) override;    // WM_KEYDOWN: Tab inside a compound
    UINT OnGetDlgCode() override;                                 // WM_GETDLGCODE: Tab inside a compound

    unsigned int m_nID = 0;
    bool m_bReporting = false;
};

class QV_API XMFCBaseTimeEdit : public qv::DatePicker {
public:
    // Child, group, DTS_TIMEFORMAT.
    enum : DWORD { kStyle = WS_CHILD | WS_GROUP | DTS_TIMEFORMAT };

    // As XMFCBaseDateEdit::Create, without a check box.
    int Create(const RECT& rect, HWND parent, unsigned int id, HFONT font);
    int SetValue(const qv::OleDateTime& value);
    int GetValue(qv::OleDateTime& value) const;

protected:
    // Reflected DTN_DATETIMECHANGE as the date field's; inside a compound
    // the picker's own NM_SETFOCUS is dropped, OnSetFocus reports instead.
    bool OnReflectNotify(NMHDR* hdr, LRESULT* result) override;
    // WM_SETFOCUS: inside a compound, tells it (NM_SETFOCUS).
    void OnSetFocus(HWND oldFocus) override;
    void OnKeyDown(UINT vk, UINT repCnt, UINT flags) override;    // WM_KEYDOWN: Tab inside a compound
    UINT OnGetDlgCode() override;                                 // WM_GETDLGCODE: Tab inside a compound

    unsigned int m_nID = 0;
    NMHDR m_nmhdr{};
    bool m_bReporting = false;
};

class QV_API XMFCBaseDateTimeEdit : public qv::Window, public virtual qv::AccessibleSource, public qv::DpiListener {
public:
    // Child, visible, group, tab stop.
    enum : DWORD { kStyle = WS_CHILD | WS_VISIBLE | WS_GROUP | WS_TABSTOP };

    // `stretchFields`: false keeps both pickers 100 pixels wide whatever the
    // compound's size (a narrow compound cuts the time picker off); true lets
    // them share the compound's width whenever it is resized.
    explicit XMFCBaseDateTimeEdit(bool stretchFields = false);
    ~XMFCBaseDateTimeEdit() override;

    // Creates the compound with id `id`, laid out at least GetMinWidth() x
    // GetMinHeight(), its date picker (with the check box when `showNone`)
    // with id + 1 and its time picker with id + 2, then puts it at `rect`.
    // `id` is left at the time picker's id. 1 when all three were created.
    int Create(bool showNone, const RECT& rect, HWND parent, unsigned int& id, HFONT font);
    // The date of the value into the date picker and its time into the time
    // picker; 1 when both took it. A null value only clears the date picker
    // (which needs its check box for that) and answers what it did.
    int SetValue(const qv::OleDateTime& value);
    // The date picker's date at the time picker's time, joined as text in
    // the user's locale and read back; a null value when the date picker
    // shows no date. 0 when a picker is missing or cannot be read.
    int GetValue(qv::OleDateTime& value) const;

    int GetMinHeight() const noexcept { return m_nHeight; }
    int GetMinWidth() const noexcept { return m_nGap + 2 * m_nWidth; }

    // The date picker gets the focus; Shift+Tab from it then leaves for the
    // compound itself.
    void SetFocusToFirst();
    // The time picker gets the focus.
    void SetFocusToLast();
    // Enables or disables both pickers.
    virtual void EnableControl(bool enable);

    // Tab (WM_KEYDOWN, VK_TAB) once the focus has come in from somewhere:
    // from the compound itself to the date picker, from the date picker to
    // the time picker; with Shift from the time picker to the date picker
    // and from the date picker back to where the focus came from. TRUE when
    // the key was used. The pickers call it themselves; a host loop that
    // offers messages to the controls first may call it as well.
    BOOL PreTranslateMessage(MSG* msg);

    XMFCBaseDateEdit& GetDateField() noexcept { return *m_pDate; }
    XMFCBaseTimeEdit& GetTimeField() noexcept { return *m_pTime; }

    // qv::DpiListener: the pickers' sizes follow the DPI and are placed again.
    void OnDpiChanged(UINT dpi) override;

    // qv::AccessibleSource: a group named by its label, valued by its pickers.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleValue(long child, std::wstring& value) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

protected:
    void OnSize(UINT type, int cx, int cy) override;              // WM_SIZE
    // WM_SETFOCUS from outside: remembered as where the focus came from and
    // passed to the date picker (to the time picker with Shift held, the
    // user tabbing backwards).
    void OnSetFocus(HWND oldFocus) override;
    void OnKeyDown(UINT vk, UINT repCnt, UINT flags) override;    // WM_KEYDOWN: Tab
    UINT OnGetDlgCode() override;                                 // WM_GETDLGCODE: wants Tab
    // DTN_DATETIMECHANGE and NM_SETFOCUS of the pickers, re-sent to the
    // parent as the compound's DTN_DATETIMECHANGE.
    BOOL OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) override;

private:
    // Tab or Shift+Tab in a picker (which passes it here) or the compound:
    // the compound's own steps, else on to the parent's next or previous
    // tab item.
    void OnTabKey();
    bool HasFields() const;
    void PlaceFields();
    // The sizes at `dpi` into m_nWidth, m_nHeight and m_nGap.
    void UseSizesFor(UINT dpi);

    std::unique_ptr<XMFCBaseDateEdit> m_pDate;
    std::unique_ptr<XMFCBaseTimeEdit> m_pTime;
    bool m_bStretchFields;
    int m_nWidth;
    int m_nHeight;
    int m_nGap;
    HWND m_hFocusOrigin = nullptr;
    unsigned int m_nID = 0;
};

namespace qv {

// The read-only date field over one of the read-only field classes: a hidden
// picker holds the value, the field shows it as text.
template <class Field>
class ReadOnlyDateField : public Field {
public:
    explicit ReadOnlyDateField(DISPLAYTYPE type);
    ~ReadOnlyDateField() override;

    // Creates the hidden picker that holds the value, with id `id` on
    // `parent`, and the read-only field with id + 1; `id` is left at the
    // field's id. 1 on success.
    int Create(const RECT& rect, HWND parent, unsigned int& id, HFONT font);
    // Shows a valid value as text in the user's locale (date, time, or date,
    // one blank and time, by the display type) and answers 1; anything else
    // empties the field and answers 0.
    int SetValue(const OleDateTime& value);
    // The value the hidden picker holds.
    int GetValue(OleDateTime& value) const;

    // qv::AccessibleSource: the text shown, or "No date" when the field
    // shows nothing because it holds no date.
    bool AccessibleValue(long child, std::wstring& value) override;

private:
    std::unique_ptr<DateTimeCtrl> m_pPicker;
    DISPLAYTYPE m_eDisplayType;
};

extern template class QV_API ReadOnlyDateField<XBaseEditReadOnly>;
extern template class QV_API ReadOnlyDateField<XBaseEditReadOnlyColor>;

}  // namespace qv

class QV_API XMFCBaseDateEditReadOnly : public qv::ReadOnlyDateField<XBaseEditReadOnly> {
public:
    explicit XMFCBaseDateEditReadOnly(DISPLAYTYPE type = DISPLAYTYPE_DATE) : ReadOnlyDateField(type) {}
};

// The same field in the colour scheme of the read-only fields.
class QV_API XMFCBaseDateEditReadOnlyColor : public qv::ReadOnlyDateField<XBaseEditReadOnlyColor> {
public:
    explicit XMFCBaseDateEditReadOnlyColor(DISPLAYTYPE type = DISPLAYTYPE_DATE) : ReadOnlyDateField(type) {}
};
