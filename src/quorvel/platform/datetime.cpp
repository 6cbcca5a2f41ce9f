#include "quorvel/platform/datetime.h"

#include <ctime>
#include <cwchar>

#include "quorvel/common/boundary.h"
#include "quorvel/common/oledate.h"
#include "quorvel/platform/com.h"

namespace qv {

namespace {

// The parts of a valid value; false for an invalid or null one.
bool PartsOf(const OleDateTime& v, oledate::DateParts& parts) noexcept {
    return v.m_status == OleDateTime::valid && oledate::ToParts(v.m_dt, parts);
}

// The conversions every C runtime's wcsftime knows (with the optional '#'
// flag). Others make some runtimes call their invalid-parameter handler.
bool IsKnownStrftimeFormat(const wchar_t* format) {
    for (const wchar_t* p = format; *p; ++p) {
        if (*p != L'%') continue;
        if (*++p == L'#') ++p;
        if (!*p || !std::wcschr(L"aAbBcdHIjmMpSUwWxXyYzZ%", *p)) return false;
    }
    return true;
}

}  // namespace

OleDateTime::OleDateTime(DATE dt) noexcept : m_dt(dt), m_status(oledate::IsValidDate(dt) ? valid : invalid) {}

OleDateTime::OleDateTime(const SYSTEMTIME& st) noexcept {
    SetDateTime(st.wYear, st.wMonth, st.wDay, st.wHour, st.wMinute, st.wSecond);
}

OleDateTime::OleDateTime(int year, int month, int day, int hour, int minute, int second) noexcept {
    SetDateTime(year, month, day, hour, minute, second);
}

OleDateTime OleDateTime::GetCurrentTime() noexcept {
    SYSTEMTIME st;
    ::GetLocalTime(&st);
    return OleDateTime(st);
}

bool OleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second) noexcept {
    double dt = 0;
    const bool ok = oledate::FromParts(year, month, day, hour, minute, second, dt);
    m_dt = dt;
    m_status = ok ? valid : invalid;
    return ok;
}

bool OleDateTime::SetDate(int year, int month, int day) noexcept { return SetDateTime(year, month, day, 0, 0, 0); }

bool OleDateTime::SetTime(int hour, int minute, int second) noexcept {
    return SetDateTime(1899, 12, 30, hour, minute, second);
}

bool OleDateTime::GetAsSystemTime(SYSTEMTIME& st) const noexcept {
    oledate::DateParts p;
    if (!PartsOf(*this, p)) return false;
    st = SYSTEMTIME{static_cast<WORD>(p.year),        static_cast<WORD>(p.month),  static_cast<WORD>(p.dayOfWeek - 1),
                    static_cast<WORD>(p.day),         static_cast<WORD>(p.hour),   static_cast<WORD>(p.minute),
                    static_cast<WORD>(p.second),      0};
    return true;
}

namespace {
// One part of a valid value, or -1 when the value is not valid.
int PartOrMinusOne(const OleDateTime& dt, int oledate::DateParts::*part) noexcept {
    oledate::DateParts p;
    return PartsOf(dt, p) ? p.*part : -1;
}
}  // namespace

int OleDateTime::GetYear() const noexcept { return PartOrMinusOne(*this, &oledate::DateParts::year); }
int OleDateTime::GetMonth() const noexcept { return PartOrMinusOne(*this, &oledate::DateParts::month); }
int OleDateTime::GetDay() const noexcept { return PartOrMinusOne(*this, &oledate::DateParts::day); }
int OleDateTime::GetHour() const noexcept { return PartOrMinusOne(*this, &oledate::DateParts::hour); }
int OleDateTime::GetMinute() const noexcept { return PartOrMinusOne(*this, &oledate::DateParts::minute); }
int OleDateTime::GetSecond() const noexcept { return PartOrMinusOne(*this, &oledate::DateParts::second); }
int OleDateTime::GetDayOfWeek() const noexcept { return PartOrMinusOne(*this, &oledate::DateParts::dayOfWeek); }
int OleDateTime::GetDayOfYear() const noexcept { return PartOrMinusOne(*this, &oledate::DateParts::dayOfYear); }

bool OleDateTime::operator==(const OleDateTime& other) const noexcept {
    if (m_status != other.m_status) return false;
    return m_status != valid || m_dt == other.m_dt;
}

bool OleDateTime::operator<(const OleDateTime& other) const noexcept {
    if (m_status != valid || other.m_status != valid) return false;
    return oledate::ToLinear(m_dt) < oledate::ToLinear(other.m_dt);
}

bool OleDateTime::operator<=(const OleDateTime& other) const noexcept {
    if (m_status != valid || other.m_status != valid) return false;
    return oledate::ToLinear(m_dt) <= oledate::ToLinear(other.m_dt);
}

std::wstring OleDateTime::Format(DWORD flags, LCID lcid) const try {
    if (m_status != valid) return {};
    Bstr text;
    if (FAILED(::VarBstrFromDate(m_dt, lcid, flags, &text)) || !text.Get()) return {};
    return text.Str();
} catch (...) {
    return CaughtAtEdge(" qv::OleDateTime::Format", __LINE__, std::wstring());
}

std::wstring OleDateTime::Format(const wchar_t* format) const try {
    oledate::DateParts p;
    if (!format || !*format || !PartsOf(*this, p) || !IsKnownStrftimeFormat(format)) return {};
    std::tm tm{};
    tm.tm_year = p.year - 1900;
    tm.tm_mon = p.month - 1;
    tm.tm_mday = p.day;
    tm.tm_hour = p.hour;
    tm.tm_min = p.minute;
    tm.tm_sec = p.second;
    tm.tm_wday = p.dayOfWeek - 1;
    tm.tm_yday = p.dayOfYear - 1;
    // wcsftime answers 0 both for "too small" and for an empty result; a
    // buffer far larger than the format settles it.
    for (size_t size = 128; size <= 64 * (std::wcslen(format) + 64); size *= 4) {
        std::wstring out(size, L'\0');
        const size_t n = std::wcsftime(out.data(), size, format, &tm);
        if (n > 0) {
            out.resize(n);
            return out;
        }
    }
    return {};
} catch (...) {
    return CaughtAtEdge(" qv::OleDateTime::Format", __LINE__, std::wstring());
}

bool OleDateTime::ParseDateTime(const wchar_t* text, DWORD flags, LCID lcid) noexcept {
    DATE dt = 0;
    // VarDateFromStr takes a non-const string but does not write to it.
    if (!text || FAILED(::VarDateFromStr(const_cast<wchar_t*>(text), lcid, flags, &dt)) || !oledate::IsValidDate(dt)) {
        m_dt = 0;
        m_status = invalid;
        return false;
    }
    m_dt = dt;
    m_status = valid;
    return true;
}

}  // namespace qv
