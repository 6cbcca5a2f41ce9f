#include "quorvel/masks/date_edits.h"

#include <commctrl.h>
#include <oleacc.h>

#include <string>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/reader_state.h"
#include "quorvel/masks/date_rules.h"
#include "quorvel/masks/datetime_field.h"

namespace df = qv::datefields;

namespace {

// Styles of the read-only field's hidden picker: the time format when the
// time is shown, otherwise the check box so that "no date" can be held.
constexpr DWORD kHiddenTimePicker = WS_CHILD | WS_GROUP | DTS_TIMEFORMAT;
constexpr DWORD kHiddenDatePicker = WS_CHILD | WS_GROUP | DTS_SHOWNONE;

qv::OleDateTime NullDate() {
    qv::OleDateTime v;
    v.SetStatus(qv::OleDateTime::null);
    return v;
}

RECT ToRect(const df::Box& box) { return RECT{box.left, box.top, box.right, box.bottom}; }

bool IsShiftDown() { return ::GetKeyState(VK_SHIFT) < 0; }

// The compound field a picker sits in, or null for a picker on its own.
XMFCBaseDateTimeEdit* CompoundOf(HWND picker) {
    return dynamic_cast<XMFCBaseDateTimeEdit*>(qv::Window::FromHandle(::GetParent(picker)));
}

// Creates one of the compound's pickers, showing no date where it can, with
// the font, and shows it.
int CreatePicker(qv::DateTimeCtrl& picker, DWORD style, const RECT& rect, HWND parent, unsigned int id, HFONT font) {
    qv::detail::RegisterDateClasses();
    if (!picker.qv::DateTimeCtrl::Create(style, rect, parent, id)) return 0;
    if (font) picker.SetFont(font, true);
    picker.SetTime(NullDate());
    picker.ShowWindow(SW_SHOW);
    return 1;
}

// A picker's reflected DTN_DATETIMECHANGE, re-sent to the compound it sits
// in under the picker's own id. While it is being re-sent, `reporting`
// keeps the copy from being reflected back to the picker.
bool ReportChangeToCompound(HWND picker, unsigned int id, bool& reporting, const NMHDR* hdr) {
    if (reporting || hdr->code != DTN_DATETIMECHANGE || !CompoundOf(picker)) return false;
    NMDATETIMECHANGE change = *reinterpret_cast<const NMDATETIMECHANGE*>(hdr);
    change.nmhdr = NMHDR{picker, id, static_cast<UINT>(DTN_DATETIMECHANGE)};
    reporting = true;
    ::SendMessageW(::GetParent(picker), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&change));
    reporting = false;
    return true;
}

// Tab in a picker of a compound goes to the compound; true when it took it.
bool TabToCompound(HWND picker, UINT vk) {
    if (vk != VK_TAB) return false;
    XMFCBaseDateTimeEdit* compound = CompoundOf(picker);
    if (!compound) return false;
    ::SendMessageW(compound->m_hWnd, WM_KEYDOWN, VK_TAB, 0);
    return true;
}

UINT DlgCodeInCompound(HWND picker, UINT code) { return CompoundOf(picker) ? code | DLGC_WANTTAB : code; }

}  // namespace

// ---- XMFCBaseDateEdit ------------------------------------------------------------

int XMFCBaseDateEdit::Create(bool showNone, const RECT& rect, HWND parent, unsigned int id, HFONT font) {
    m_nID = id;
    return CreatePicker(*this, showNone ? kStyleShowNone : kStyle, rect, parent, id, font);
}

int XMFCBaseDateEdit::SetValue(const qv::OleDateTime& value) { return SetTime(value) ? 1 : 0; }

int XMFCBaseDateEdit::GetValue(qv::OleDateTime& value) const { return GetTime(value) ? 1 : 0; }

bool XMFCBaseDateEdit::OnReflectNotify(NMHDR* hdr, LRESULT* result) {
    DatePicker::OnReflectNotify(hdr, result);
    return ReportChangeToCompound(m_hWnd, m_nID, m_bReporting, hdr);
}

void XMFCBaseDateEdit::OnKeyDown(UINT vk, UINT, UINT) {
    if (!TabToCompound(m_hWnd, vk)) Default();
}

UINT XMFCBaseDateEdit::OnGetDlgCode() { return DlgCodeInCompound(m_hWnd, static_cast<UINT>(Default())); }

// ---- XMFCBaseTimeEdit ------------------------------------------------------------

int XMFCBaseTimeEdit::Create(const RECT& rect, HWND parent, unsigned int id, HFONT font) {
    m_nID = id;
    return CreatePicker(*this, kStyle, rect, parent, id, font);
}

int XMFCBaseTimeEdit::SetValue(const qv::OleDateTime& value) { return SetTime(value) ? 1 : 0; }

int XMFCBaseTimeEdit::GetValue(qv::OleDateTime& value) const { return GetTime(value) ? 1 : 0; }

bool XMFCBaseTimeEdit::OnReflectNotify(NMHDR* hdr, LRESULT* result) {
    DatePicker::OnReflectNotify(hdr, result);
    // Inside a compound the focus is reported once, by OnSetFocus.
    if (hdr->code == static_cast<UINT>(NM_SETFOCUS) && !m_bReporting && CompoundOf(m_hWnd)) return true;
    return ReportChangeToCompound(m_hWnd, m_nID, m_bReporting, hdr);
}

void XMFCBaseTimeEdit::OnSetFocus(HWND) {
    Default();
    HWND parent = GetParent();
    if (!CompoundOf(m_hWnd)) return;
    m_nmhdr = NMHDR{m_hWnd, m_nID, static_cast<UINT>(NM_SETFOCUS)};
    m_bReporting = true;
    ::SendMessageW(parent, WM_NOTIFY, m_nID, reinterpret_cast<LPARAM>(&m_nmhdr));
    m_bReporting = false;
}

void XMFCBaseTimeEdit::OnKeyDown(UINT vk, UINT, UINT) {
    if (!TabToCompound(m_hWnd, vk)) Default();
}

UINT XMFCBaseTimeEdit::OnGetDlgCode() { return DlgCodeInCompound(m_hWnd, static_cast<UINT>(Default())); }

// ---- XMFCBaseDateTimeEdit --------------------------------------------------------

XMFCBaseDateTimeEdit::XMFCBaseDateTimeEdit(bool stretchFields)
    : m_pDate(std::make_unique<XMFCBaseDateEdit>()),
      m_pTime(std::make_unique<XMFCBaseTimeEdit>()),
      m_bStretchFields(stretchFields),
      m_nWidth(df::kFieldWidth),
      m_nHeight(df::kFieldHeight),
      m_nGap(df::kFieldGap) {}

XMFCBaseDateTimeEdit::~XMFCBaseDateTimeEdit() {
    // The pickers' last notifications must find the whole object.
    if (OwnsWindow()) DestroyWindow();
}

int XMFCBaseDateTimeEdit::Create(bool showNone, const RECT& rect, HWND parent, unsigned int& id, HFONT font) {
    static const wchar_t* const kClass = qv::RegisterLibraryWindowClass(
        L"QuorvelDateTimeEdit", 0, nullptr, reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)));
    m_nID = id;
    // Laid out at the minimum size at least, so that both pickers are made
    // at their full size; the compound is put at the caller's size after.
    const UINT dpi = qv::DpiOf(parent);
    UseSizesFor(dpi);
    const df::Box laid = df::LayoutRect(df::Box{rect.left, rect.top, rect.right, rect.bottom}, dpi);
    if (!kClass || !CreateEx(0, kClass, L"XMFCBaseDateTimeEdit", kStyle, ToRect(laid), parent, id)) return 0;
    UseSizesFor(qv::DpiOf(m_hWnd));
    const RECT client = GetClientRect();
    const df::FieldBoxes boxes = df::FieldLayout(client.right, client.bottom, m_bStretchFields, qv::DpiOf(m_hWnd));
    ++id;
    const bool date = m_pDate->Create(showNone, ToRect(boxes.date), m_hWnd, id, font) != 0;
    ++id;
    const bool time = m_pTime->Create(ToRect(boxes.time), m_hWnd, id, font) != 0;
    MoveWindow(rect, true);
    return date && time ? 1 : 0;
}

bool XMFCBaseDateTimeEdit::HasFields() const { return m_pDate->IsWindow() && m_pTime->IsWindow(); }

void XMFCBaseDateTimeEdit::PlaceFields() {
    const RECT client = GetClientRect();
    const df::FieldBoxes boxes = df::FieldLayout(client.right, client.bottom, m_bStretchFields, qv::DpiOf(m_hWnd));
    if (m_pDate->IsWindow()) m_pDate->MoveWindow(ToRect(boxes.date));
    if (m_pTime->IsWindow()) m_pTime->MoveWindow(ToRect(boxes.time));
}

void XMFCBaseDateTimeEdit::UseSizesFor(UINT dpi) {
    const df::FieldSizes sizes = df::FieldSizesForDpi(dpi);
    m_nWidth = sizes.width;
    m_nHeight = sizes.height;
    m_nGap = sizes.gap;
}

void XMFCBaseDateTimeEdit::OnDpiChanged(UINT dpi) {
    UseSizesFor(dpi);
    PlaceFields();
}

bool XMFCBaseDateTimeEdit::AccessibleName(long child, std::wstring& name) {
    if (child != 0) return false;
    name = qv::AccessibleLabelOf(m_hWnd);
    return true;
}

bool XMFCBaseDateTimeEdit::AccessibleValue(long child, std::wstring& value) {
    if (child != 0 || !HasFields()) return false;
    const std::wstring date = m_pDate->GetSpokenValue();
    SYSTEMTIME st{};
    // No date: the time of day alone means nothing.
    value = m_pDate->GetTime(st) == GDT_NONE ? date : date + L" " + m_pTime->GetSpokenValue();
    return true;
}

bool XMFCBaseDateTimeEdit::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    role = ROLE_SYSTEM_GROUPING;
    return true;
}

bool XMFCBaseDateTimeEdit::AccessibleState(long child, long& state) {
    if (child != 0) return false;
    state = qv::ReaderWindowState(m_hWnd, true);
    return true;
}

int XMFCBaseDateTimeEdit::SetValue(const qv::OleDateTime& value) {
    if (!HasFields()) return 0;
    int set = 0;
    if (value.GetStatus() == qv::OleDateTime::null) {
        set = m_pDate->SetValue(value);
    } else {
        const int date = m_pDate->SetValue(value);
        const int time = m_pTime->SetValue(value);
        set = date && time ? 1 : 0;
    }
    // The compound's own value is its pickers' together.
    qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
    return set;
}

int XMFCBaseDateTimeEdit::GetValue(qv::OleDateTime& value) const try {
    qv::OleDateTime date;
    qv::OleDateTime time;
    if (!HasFields() || !m_pDate->GetValue(date) || !m_pTime->GetValue(time)) return 0;
    if (date.GetStatus() == qv::OleDateTime::null) {
        value = date;
        return 1;
    }
    // One value from two pickers: the date of one and the time of the
    // other, through the texts the user sees.
    const std::wstring text =
        df::ReadOnlyText(df::kShowDateTime, date.Format(VAR_DATEVALUEONLY), time.Format(VAR_TIMEVALUEONLY));
    return value.ParseDateTime(text.c_str()) ? 1 : 0;
} catch (...) {
    return qv::CaughtAtEdge(" XMFCBaseDateTimeEdit::GetValue", __LINE__, 0);
}

void XMFCBaseDateTimeEdit::SetFocusToFirst() {
    if (!m_pDate->IsWindow()) return;
    m_hFocusOrigin = m_hWnd;
    m_pDate->SetFocus();
}

void XMFCBaseDateTimeEdit::SetFocusToLast() {
    if (m_pTime->IsWindow()) m_pTime->SetFocus();
}

void XMFCBaseDateTimeEdit::EnableControl(bool enable) {
    if (m_pDate->IsWindow()) m_pDate->EnableWindow(enable);
    if (m_pTime->IsWindow()) m_pTime->EnableWindow(enable);
}

BOOL XMFCBaseDateTimeEdit::PreTranslateMessage(MSG* msg) {
    if (!msg || msg->message != WM_KEYDOWN || msg->wParam != VK_TAB) return FALSE;
    if (!m_hFocusOrigin || !::IsWindow(m_hFocusOrigin) || !HasFields()) return FALSE;
    const HWND focus = ::GetFocus();
    const df::FocusAt at = focus == m_hWnd            ? df::FocusAt::Compound
                           : focus == m_pDate->m_hWnd ? df::FocusAt::DateField
                           : focus == m_pTime->m_hWnd ? df::FocusAt::TimeField
                                                      : df::FocusAt::Elsewhere;
    switch (df::TabStep(at, IsShiftDown(), m_hFocusOrigin == m_pTime->m_hWnd)) {
    case df::TabTarget::DateField: m_pDate->SetFocus(); return TRUE;
    case df::TabTarget::TimeField: m_pTime->SetFocus(); return TRUE;
    case df::TabTarget::FocusOrigin: ::SetFocus(m_hFocusOrigin); return TRUE;
    default: return FALSE;
    }
}

void XMFCBaseDateTimeEdit::OnTabKey() {
    MSG msg{::GetFocus(), WM_KEYDOWN, VK_TAB, 0, 0, {0, 0}};
    if (PreTranslateMessage(&msg)) return;
    // Not a step inside the compound: on to the parent's next (previous)
    // tab item, as Tab does anywhere else.
    const HWND next = ::GetNextDlgTabItem(GetParent(), m_hWnd, IsShiftDown() ? TRUE : FALSE);
    if (next && next != m_hWnd) ::SetFocus(next);
}

void XMFCBaseDateTimeEdit::OnSize(UINT, int, int) {
    Default();
    if (m_bStretchFields) PlaceFields();
}

void XMFCBaseDateTimeEdit::OnSetFocus(HWND oldFocus) {
    Default();
    // Back from one of the pickers (Shift+Tab after SetFocusToFirst): the
    // compound keeps the focus, and Tab or Shift+Tab goes on from here.
    if (!HasFields() || oldFocus == m_pDate->m_hWnd || oldFocus == m_pTime->m_hWnd) return;
    if (IsShiftDown()) {
        // Tabbing backwards into the compound: Shift+Tab in the date picker
        // must go on backwards, not back to where the user came from.
        m_hFocusOrigin = ::GetNextDlgTabItem(GetParent(), m_hWnd, TRUE);
        m_pTime->SetFocus();
    } else {
        m_hFocusOrigin = oldFocus;
        m_pDate->SetFocus();
    }
}

void XMFCBaseDateTimeEdit::OnKeyDown(UINT vk, UINT, UINT) {
    if (vk == VK_TAB)
        OnTabKey();
    else
        Default();
}

UINT XMFCBaseDateTimeEdit::OnGetDlgCode() { return static_cast<UINT>(Default()) | DLGC_WANTTAB; }

BOOL XMFCBaseDateTimeEdit::OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) {
    const auto* hdr = reinterpret_cast<const NMHDR*>(lp);
    const bool fromField =
        hdr && hdr->hwndFrom && (hdr->hwndFrom == m_pDate->m_hWnd || hdr->hwndFrom == m_pTime->m_hWnd);
    if (!fromField ||
        (hdr->code != static_cast<UINT>(DTN_DATETIMECHANGE) && hdr->code != static_cast<UINT>(NM_SETFOCUS)))
        return Window::OnNotify(wp, lp, result);
    // A focus report too reaches the parent as a change: for the host, the
    // compound's value may be about to change.
    if (hdr->code == static_cast<UINT>(DTN_DATETIMECHANGE)) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
    NMDATETIMECHANGE change{};
    change.nmhdr = NMHDR{m_hWnd, m_nID, static_cast<UINT>(DTN_DATETIMECHANGE)};
    change.dwFlags = GDT_NONE;
    SYSTEMTIME date{};
    SYSTEMTIME time{};
    if (m_pDate->GetTime(date) == GDT_VALID) {
        change.dwFlags = GDT_VALID;
        change.st = date;
        if (m_pTime->IsWindow() && m_pTime->GetTime(time) == GDT_VALID) {
            change.st.wHour = time.wHour;
            change.st.wMinute = time.wMinute;
            change.st.wSecond = time.wSecond;
            change.st.wMilliseconds = time.wMilliseconds;
        }
    }
    ::SendMessageW(GetParent(), WM_NOTIFY, m_nID, reinterpret_cast<LPARAM>(&change));
    *result = 0;
    return TRUE;
}

// ---- read-only fields ------------------------------------------------------------

namespace qv {

template <class Field>
ReadOnlyDateField<Field>::ReadOnlyDateField(DISPLAYTYPE type)
    : m_pPicker(std::make_unique<DateTimeCtrl>()), m_eDisplayType(type) {}

template <class Field>
ReadOnlyDateField<Field>::~ReadOnlyDateField() = default;

template <class Field>
int ReadOnlyDateField<Field>::Create(const RECT& rect, HWND parent, unsigned int& id, HFONT font) {
    if (!m_pPicker) return 0;
    detail::RegisterDateClasses();
    m_pPicker->Create(df::ShowsTime(m_eDisplayType) ? kHiddenTimePicker : kHiddenDatePicker, RECT{}, parent, id);
    ++id;
    return this->Field::Create(L"", id, rect, font, parent) ? 1 : 0;
}

template <class Field>
int ReadOnlyDateField<Field>::SetValue(const OleDateTime& value) try {
    int shown = 0;
    if (m_pPicker && m_pPicker->IsWindow() && m_pPicker->SetTime(value) && value.GetStatus() == OleDateTime::valid) {
        const std::wstring text =
            df::ReadOnlyText(m_eDisplayType, value.Format(VAR_DATEVALUEONLY), value.Format(VAR_TIMEVALUEONLY));
        this->SetWindowText(text.c_str());
        shown = 1;
    } else {
        this->SetWindowText(L"");
    }
    RaiseAccessibleEvent(this->m_hWnd, EVENT_OBJECT_VALUECHANGE);
    return shown;
} catch (...) {
    return CaughtAtEdge(" qv::ReadOnlyDateField::SetValue", __LINE__, 0);
}

template <class Field>
int ReadOnlyDateField<Field>::GetValue(OleDateTime& value) const {
    return m_pPicker && m_pPicker->IsWindow() && m_pPicker->GetTime(value) ? 1 : 0;
}

template <class Field>
bool ReadOnlyDateField<Field>::AccessibleValue(long child, std::wstring& value) {
    if (!Field::AccessibleValue(child, value)) return false;
    SYSTEMTIME st{};
    if (child == 0 && value.empty() && m_pPicker && m_pPicker->IsWindow() && m_pPicker->GetTime(st) == GDT_NONE)
        value = NoDateText();
    return true;
}

template class ReadOnlyDateField<XBaseEditReadOnly>;
template class ReadOnlyDateField<XBaseEditReadOnlyColor>;

}  // namespace qv
