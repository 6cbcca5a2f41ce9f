#include "quorvel/masks/datetime_field.h"

#include <commctrl.h>
#include <oleacc.h>

#include <tuple>

#include "quorvel/controls/reader_state.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/masks/date_rules.h"

namespace {

// Where each failure is reported from; log readers match on these positions.
constexpr unsigned long kLineCreate = 104;
constexpr unsigned long kLineClear = 135;
constexpr unsigned long kLineRange = 182;
constexpr unsigned long kLineShow = 195;
constexpr unsigned long kLineRead = 344;

qv::OleDateTime NullDate() {
    qv::OleDateTime v;
    v.SetStatus(qv::OleDateTime::null);
    return v;
}

// The date parts of a value into a SYSTEMTIME, the rest left as it is.
void CopyDate(const qv::OleDateTime& from, SYSTEMTIME& to) {
    to.wYear = static_cast<WORD>(from.GetYear());
    to.wMonth = static_cast<WORD>(from.GetMonth());
    to.wDay = static_cast<WORD>(from.GetDay());
}

auto DateKey(const qv::OleDateTime& v) { return std::make_tuple(v.GetYear(), v.GetMonth(), v.GetDay()); }

// `value` on the date of `bound`, at its own time of day.
qv::OleDateTime OnDateOf(const qv::OleDateTime& bound, const qv::OleDateTime& value) {
    return qv::OleDateTime(bound.GetYear(), bound.GetMonth(), bound.GetDay(), value.GetHour(), value.GetMinute(),
                           value.GetSecond());
}

}  // namespace

XBaseDateTime::XBaseDateTime(DWORD style) : XBaseDateTime(style, 1, 0) {}

XBaseDateTime::XBaseDateTime(DWORD style, int showNone, int upDown)
    : m_dtValue(qv::OleDateTime::GetCurrentTime()),
      m_dtMin(NullDate()),
      m_dtMax(NullDate()),
      m_dwStyle(style),
      m_nShowNone(showNone),
      m_nUpDown(upDown) {}

XBaseDateTime::~XBaseDateTime() = default;

int XBaseDateTime::Init(int showNone, int upDown) {
    qv::detail::RegisterDateClasses();
    // A second Init replaces the picker.
    if (m_pk.IsWindow()) m_pk.DestroyWindow();
    DWORD style = WS_CHILD | WS_VISIBLE | m_dwStyle;
    if (showNone) style |= DTS_SHOWNONE;
    if (upDown) style |= DTS_UPDOWN;
    if (!IsWindow() || !m_pk.Create(style, GetClientRect(), m_hWnd, static_cast<UINT>(GetDlgCtrlID()))) {
        qv::LogFailure(L" XBaseDateTime::Init", kLineCreate, L"Creating control failed");
        return 0;
    }
    // The dialog manager tabs into the picker only through a control parent.
    ModifyStyleEx(0, WS_EX_CONTROLPARENT);
    ShowDataControl();
    return 1;
}

int XBaseDateTime::InitSubclass(UINT id, HWND parent) {
    if (!m_hWnd) SubclassDlgItem(id, parent);
    return Init(m_nShowNone, m_nUpDown);
}

bool XBaseDateTime::ShowDataControl() {
    bool ok = true;
    // The time of day stays the picker's own; only the date is pushed.
    SYSTEMTIME st{};
    m_pk.GetTime(st);
    // Without the check box there is no "no date" to start from.
    if ((m_pk.GetStyle() & DTS_SHOWNONE) && !m_pk.SetTime(static_cast<const SYSTEMTIME*>(nullptr))) {
        qv::LogFailure(L" XBaseDateTime::ShowDataControl", kLineClear, L"DateTime_SetSystemtime failed");
        ok = false;
    }
    DWORD status = GDT_NONE;
    if (m_dtValue.GetStatus() != qv::OleDateTime::null) {
        CopyDate(m_dtValue, st);
        status = GDT_VALID;
    }

    SYSTEMTIME range[2] = {};
    DWORD flags = 0;
    if (m_dtMin.GetStatus() != qv::OleDateTime::null) {
        CopyDate(m_dtMin, range[0]);
        flags |= GDTR_MIN;
    }
    if (m_dtMax.GetStatus() != qv::OleDateTime::null) {
        // The whole last day is allowed, whatever the picker's time of day.
        range[1] = SYSTEMTIME{0, 0, 0, 0, 23, 59, 59, 999};
        CopyDate(m_dtMax, range[1]);
        flags |= GDTR_MAX;
    }
    if (flags && !m_pk.SetRange(flags, range)) {
        qv::LogFailure(L" XBaseDateTime::ShowDataControl", kLineRange, L"DateTime_SetRange failed");
        ok = false;
    }
    if (!m_pk.SendMessage(DTM_SETSYSTEMTIME, status, reinterpret_cast<LPARAM>(&st))) {
        qv::LogFailure(L" XBaseDateTime::ShowDataControl", kLineShow, L"DateTime_SetSystemtime failed");
        ok = false;
    }
    return ok;
}

bool XBaseDateTime::SetValue(const qv::OleDateTime& value) {
    if (!m_pk.IsWindow()) return false;
    if (value.GetStatus() == qv::OleDateTime::null) {
        if (m_pk.SetTime(static_cast<const SYSTEMTIME*>(nullptr))) {
            m_dtValue = value;
            qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
        }
        return true;
    }
    // The picker ignores the weekday when a date is set: it works it out.
    const SYSTEMTIME st{static_cast<WORD>(value.GetYear()),   static_cast<WORD>(value.GetMonth()),
                        static_cast<WORD>(value.GetYear()),   static_cast<WORD>(value.GetDay()),
                        static_cast<WORD>(value.GetHour()),   static_cast<WORD>(value.GetMinute()),
                        static_cast<WORD>(value.GetSecond()), 0};
    const LRESULT result = m_pk.SendMessage(DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&st));
    if (result != 0 && result != -1) {
        m_dtValue = value;
        qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);  // the frame tells the picker's value too
    }
    // A refused date answers true as well: the host learns of it by reading
    // the value back.
    return result != -1;
}

qv::OleDateTime XBaseDateTime::GetValue() {
    SYSTEMTIME st{};
    if (m_pk.IsWindow()) {
        const DWORD result = m_pk.GetTime(st);
        if (result == static_cast<DWORD>(GDT_ERROR)) {
            qv::LogFailure(
                L" XBaseDateTime::GetValue", kLineRead,
                L"SendMessage(m_pk.m_hWnd, DTM_GETSYSTEMTIME, 0, (LPARAM)&sysTime) failed\nInvalid Date/Time");
        } else if (result == GDT_NONE) {
            m_dtValue = NullDate();
            return m_dtValue;
        }
    }
    // An all-zero SYSTEMTIME (no picker, or a failed read) is an invalid date.
    const qv::OleDateTime value(st);
    if (value.GetStatus() == qv::OleDateTime::valid) m_dtValue = value;
    return value;
}

int XBaseDateTime::IsNullDate() const noexcept { return m_dtValue.GetStatus() == qv::OleDateTime::null ? 1 : 0; }

int XBaseDateTime::SetRange(const qv::OleDateTime* min, const qv::OleDateTime* max, int clampValue, int apply) {
    m_dtMin = min ? *min : NullDate();
    m_dtMax = max ? *max : NullDate();
    const bool push = apply && m_pk.IsWindow();
    // Start from what the user sees, so pushing the range loses no entry.
    if (push) m_pk.GetTime(m_dtValue);
    if (clampValue && m_dtValue.GetStatus() == qv::OleDateTime::valid) {
        if (m_dtMin.GetStatus() == qv::OleDateTime::valid && DateKey(m_dtValue) < DateKey(m_dtMin))
            m_dtValue = OnDateOf(m_dtMin, m_dtValue);
        else if (m_dtMax.GetStatus() == qv::OleDateTime::valid && DateKey(m_dtMax) < DateKey(m_dtValue))
            m_dtValue = OnDateOf(m_dtMax, m_dtValue);
    }
    if (!push) return 1;
    return ShowDataControl() ? 1 : 0;
}

int XBaseDateTime::SetRange(int daysBack, int daysAhead, int clampValue, int apply) {
    const qv::OleDateTime now = qv::OleDateTime::GetCurrentTime();
    // An impossible bound stays invalid (not null): the picker refuses it.
    auto shifted = [&now](long long days) {
        double date = 0;
        if (qv::datefields::ShiftDate(now.m_dt, days, date)) return qv::OleDateTime(date);
        qv::OleDateTime invalid;
        invalid.SetStatus(qv::OleDateTime::invalid);
        return invalid;
    };
    const qv::OleDateTime min = shifted(-static_cast<long long>(daysBack));
    const qv::OleDateTime max = shifted(daysAhead);
    return SetRange(&min, &max, clampValue, apply);
}

void XBaseDateTime::OnSize(UINT, int cx, int cy) {
    Default();
    if (m_pk.IsWindow()) m_pk.MoveWindow(RECT{0, 0, cx, cy});
}

void XBaseDateTime::OnSetFocus(HWND) {
    Default();
    if (m_pk.IsWindow()) m_pk.SetFocus();
}

bool XBaseDateTime::AccessibleValue(long child, std::wstring& value) {
    if (child != 0 || !m_pk.IsWindow()) return false;
    value = m_pk.GetSpokenValue();
    return true;
}

bool XBaseDateTime::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    role = ROLE_SYSTEM_GROUPING;
    return true;
}

namespace qv {

// ---- DatePicker ----------------------------------------------------------------------

std::wstring NoDateText() {
    const wchar_t* text = ::CoTranslateText(L"No date");
    return text ? text : L"No date";
}

std::wstring DatePicker::GetSpokenValue() const {
    if (!IsWindow()) return {};
    SYSTEMTIME st{};
    const DWORD status = GetTime(st);
    if (status == GDT_NONE) return NoDateText();
    // What the picker shows, in its own format.
    std::wstring shown = GetWindowText();
    if (!shown.empty() || status != GDT_VALID) return shown;
    // A picker that does not tell its text: the value in the user's format
    // of the picker's kind.
    wchar_t text[128] = {};
    const DWORD style = GetStyle();
    const int written = (style & DTS_TIMEFORMAT) == DTS_TIMEFORMAT
                            ? ::GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &st, nullptr, text, 128)
                            : ::GetDateFormatW(LOCALE_USER_DEFAULT,
                                               (style & DTS_LONGDATEFORMAT) ? DATE_LONGDATE : DATE_SHORTDATE, &st,
                                               nullptr, text, 128);
    return written > 0 ? std::wstring(text) : std::wstring();
}

bool DatePicker::AccessibleName(long child, std::wstring& name) {
    if (child != 0) return false;
    name = AccessibleLabelOf(m_hWnd);
    // A picker inside one of the library's fields is named by the field's label.
    HWND parent = GetParent();
    if (name.empty() && parent && Window::FromHandle(parent) && (::GetWindowLongPtrW(parent, GWL_STYLE) & WS_CHILD))
        name = AccessibleLabelOf(parent);
    return true;
}

bool DatePicker::AccessibleValue(long child, std::wstring& value) {
    if (child != 0) return false;
    value = GetSpokenValue();
    return true;
}

bool DatePicker::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    role = (GetStyle() & DTS_UPDOWN) ? ROLE_SYSTEM_SPINBUTTON : ROLE_SYSTEM_DROPLIST;
    return true;
}

bool DatePicker::AccessibleState(long child, long& state) {
    if (child != 0) return false;
    state = ReaderWindowState(m_hWnd, true);
    return true;
}

LRESULT DatePicker::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    const LRESULT result = DateTimeCtrl::WindowProc(msg, wp, lp);
    // The host's changes: the picker tells its parent only of the user's.
    if (msg == DTM_SETSYSTEMTIME && result) RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
    return result;
}

bool DatePicker::OnReflectNotify(NMHDR* hdr, LRESULT*) {
    if (hdr && hdr->code == static_cast<UINT>(DTN_DATETIMECHANGE))
        RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
    return false;
}

bool detail::RegisterDateClasses() {
    static bool registered = false;
    if (!registered) {
        INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_DATE_CLASSES};
        registered = ::InitCommonControlsEx(&icc) == TRUE;
    }
    return registered;
}

void DDX_DateTime(DataExchange* dx, int id, SYSTEMTIME& value) {
    if (!dx || dx->m_bFailed) return;
    HWND picker = dx->PrepareCtrl(id);
    if (!picker) return;
    if (dx->m_bSaveAndValidate) {
        SYSTEMTIME read{};
        if (::SendMessageW(picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&read)) == GDT_VALID) value = read;
    } else {
        ::SendMessageW(picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&value));
    }
}

}  // namespace qv
