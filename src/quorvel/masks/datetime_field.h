// XBaseDateTime: a static frame that hosts a date picker ("SysDateTimePick32")
// and gives the host a date with an optional range and an optional "no date"
// state.
//
// The frame keeps the value and the range it will show; Init creates the
// picker over the frame's client area and pushes them into it. Only the date
// parts are pushed: the time of day is the picker's own. A null value
// (OleDateTime status null) means "no date": a picker made with the check
// box (showNone) then shows the box cleared.
//
// Failures are written to the log book (module "Quorvel") and the frame goes
// on with whatever the picker holds; no box is shown.
//
// DDX_DateTime exchanges a picker's value with a SYSTEMTIME during a
// dialog's data exchange.
//
// Screen readers: the picker is named by the label before the frame and
// tells the date it shows, or "No date" (translated) while its check box is
// cleared; every change, by the user or the host, is announced. The frame
// itself is a group with the same name and value.
#pragma once

#include <windows.h>

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/datetime.h"
#include "quorvel/platform/dialog.h"

namespace qv {

// A date or time picker as a screen reader hears it: named by its label
// (by the label of the library field it sits in when it has none of its
// own), the date or time it shows as its value, or "No date" (translated)
// while its check box is cleared; a drop-down list when it opens a
// calendar, a spin button when it has up-down arrows (as a time picker
// does); every change, by the user or the host, announced as a new value.
class QV_API DatePicker : public DateTimeCtrl, public virtual AccessibleSource {
public:
    // What a reader hears as the value (see above).
    std::wstring GetSpokenValue() const;

    // qv::AccessibleSource
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleValue(long child, std::wstring& value) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;     // DTM_SETSYSTEMTIME: announced
    bool OnReflectNotify(NMHDR* hdr, LRESULT* result) override;      // reflected DTN_DATETIMECHANGE: announced
};

// The text a reader hears for a field that holds no date: "No date", translated.
QV_API std::wstring NoDateText();

}  // namespace qv

class QV_API XBaseDateTime : public qv::Static, public virtual qv::AccessibleSource {
public:
    // `style` is added to the picker's own styles (WS_TABSTOP, DTS_LONGDATEFORMAT,
    // ...). `showNone` and `upDown` are the picker options InitSubclass creates
    // it with; the one-argument form gives the check box and no spin buttons.
    explicit XBaseDateTime(DWORD style = 0);
    XBaseDateTime(DWORD style, int showNone, int upDown);
    ~XBaseDateTime() override;

    // Creates the picker over the frame (check box when `showNone`, spin
    // buttons instead of a drop-down calendar when `upDown`) and shows the
    // value and range in it. 1 on success; 0, and a log entry, when the
    // picker cannot be created (also when the frame does not exist yet).
    int Init(int showNone, int upDown);
    // Attaches to the dialog item `id` of `parent` (a static frame of the
    // host's template), then Init with the constructor's picker options.
    // 0 when there is no such item or it already has an object.
    int InitSubclass(UINT id, HWND parent);

    // Sets the picker's date and time (DTM_SETSYSTEMTIME). False only when
    // there is no picker yet; a date the picker refuses (outside its range,
    // invalid) still answers true, and the picker keeps what it showed. A
    // null value clears the picker to "no date", which only a picker with
    // the check box takes.
    bool SetValue(const qv::OleDateTime& value);
    // The picker's date and time (DTM_GETSYSTEMTIME): a null value when it
    // shows no date, an invalid one before Init (nothing is logged then).
    qv::OleDateTime GetValue();
    // 1 when the frame's value is null ("no date"): the value set before
    // Init, or the one the picker last took (SetValue) or showed (GetValue).
    int IsNullDate() const noexcept;

    // Sets the range of dates (first and last day, both allowed whole): a
    // null pointer or a null value leaves that side open.
    // `clampValue` non-zero: a valid value outside the new range moves to
    // the nearest bound's date (its time of day kept); zero: it stays, and
    // a picker asked to show it does not: it shows no date, or, without the
    // check box, the date it showed before.
    // `apply` non-zero: with a picker, the range (and the value it holds,
    // clamped if asked) goes into the picker now; zero: at the next Init.
    // 0 when the picker refused the range or the value (logged), else 1.
    int SetRange(const qv::OleDateTime* min, const qv::OleDateTime* max, int clampValue, int apply);
    // The same with today minus `daysBack` days to today plus `daysAhead`
    // days; a span beyond 3615897 days gives an invalid bound, which the
    // picker refuses.
    int SetRange(int daysBack, int daysAhead, int clampValue, int apply);

    // The picker, for hosts that set its format or colours.
    qv::DateTimeCtrl& GetPicker() noexcept { return m_pk; }

    // qv::AccessibleSource: a group with the picker's value.
    bool AccessibleValue(long child, std::wstring& value) override;
    bool AccessibleRole(long child, long& role) override;

    // The value and range Init shows; set them before Init to choose what the
    // picker starts with. The value is now at construction, the range open.
    qv::OleDateTime m_dtValue;
    qv::OleDateTime m_dtMin;
    qv::OleDateTime m_dtMax;

protected:
    void OnSize(UINT type, int cx, int cy) override;   // WM_SIZE: the picker fills the frame
    void OnSetFocus(HWND oldFocus) override;           // WM_SETFOCUS: passed on to the picker

private:
    // Pushes the value and the range into the picker; false when the picker
    // refused either (each refusal logged).
    bool ShowDataControl();

    qv::DatePicker m_pk;
    DWORD m_dwStyle;
    int m_nShowNone;
    int m_nUpDown;
};

namespace qv {

namespace detail {
// Registers the common-control date classes, once per process; a failed
// registration is tried again by the next call. Used inside the library.
bool RegisterDateClasses();
}  // namespace detail

// The picker `id` of the dialog <-> `value`. Saving reads the picker
// (DTM_GETSYSTEMTIME); a picker showing no date leaves `value` as it was.
// Loading sets it (DTM_SETSYSTEMTIME); a date the picker refuses is not
// reported. Nothing happens when the dialog has no item `id`.
QV_API void DDX_DateTime(DataExchange* dx, int id, SYSTEMTIME& value);

}  // namespace qv
