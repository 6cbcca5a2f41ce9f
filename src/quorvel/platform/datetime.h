// qv::OleDateTime: a date and time of day as an OLE automation DATE, with a
// status saying whether it holds a value.
//
// - A default-constructed value is valid and holds 1899-12-30 00:00 (DATE 0).
// - Setters that are given an impossible moment (2023-02-29, year 10000, ...)
//   leave the value invalid; the getters of an invalid or null value answer -1.
// - Text: Format goes through the user's locale (VarBstrFromDate), so a value
//   appears the way the user's other programs show dates. An invalid or a null
//   value formats as an empty string; controls show nothing for either.
//   ParseDateTime reads what Format writes, in the same locale.
// - Comparison works on the time line, also before 1899-12-30 where the DATE
//   number itself is not ordered (see common/oledate.h). Only two valid values
//   are ordered; equality also holds between two null or two invalid values.
#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>

#include "quorvel/common/api.h"

// <winbase.h> defines GetCurrentTime() as a macro for GetTickCount(); it
// would rename OleDateTime::GetCurrentTime.
#ifdef GetCurrentTime
#undef GetCurrentTime
#endif

namespace qv {

class QV_API OleDateTime {
public:
    enum DateTimeStatus { valid = 0, invalid = 1, null = 2 };

    DATE m_dt = 0;
    DateTimeStatus m_status = valid;

    OleDateTime() noexcept = default;
    // Valid when `dt` is within 0100-01-01 .. 9999-12-31, otherwise invalid.
    OleDateTime(DATE dt) noexcept;  // NOLINT: implicit like the DATE it wraps
    // The date and time of a SYSTEMTIME (milliseconds ignored).
    explicit OleDateTime(const SYSTEMTIME& st) noexcept;
    OleDateTime(int year, int month, int day, int hour, int minute, int second) noexcept;

    // The local time now, to the second.
    static OleDateTime GetCurrentTime() noexcept;

    DateTimeStatus GetStatus() const noexcept { return m_status; }
    void SetStatus(DateTimeStatus status) noexcept { m_status = status; }
    operator DATE() const noexcept { return m_dt; }

    // Each answers true when the moment exists; otherwise the value becomes invalid.
    bool SetDateTime(int year, int month, int day, int hour, int minute, int second) noexcept;
    // The date at 00:00.
    bool SetDate(int year, int month, int day) noexcept;
    // The time on 1899-12-30 (the DATE's day 0), as a time-only value.
    bool SetTime(int hour, int minute, int second) noexcept;

    // False for an invalid or null value.
    bool GetAsSystemTime(SYSTEMTIME& st) const noexcept;
    int GetYear() const noexcept;
    int GetMonth() const noexcept;
    int GetDay() const noexcept;
    int GetHour() const noexcept;
    int GetMinute() const noexcept;
    int GetSecond() const noexcept;
    int GetDayOfWeek() const noexcept;  // 1 = Sunday ... 7 = Saturday
    int GetDayOfYear() const noexcept;  // 1 = January 1st

    bool operator==(const OleDateTime& other) const noexcept;
    bool operator!=(const OleDateTime& other) const noexcept { return !(*this == other); }
    bool operator<(const OleDateTime& other) const noexcept;
    bool operator>(const OleDateTime& other) const noexcept { return other < *this; }
    bool operator<=(const OleDateTime& other) const noexcept;
    bool operator>=(const OleDateTime& other) const noexcept { return other <= *this; }

    // VarBstrFromDate in `lcid`; flags 0 (date and time), VAR_DATEVALUEONLY or
    // VAR_TIMEVALUEONLY. Empty for an invalid or null value.
    std::wstring Format(DWORD flags = 0, LCID lcid = LOCALE_USER_DEFAULT) const;
    // A strftime format (%d.%m.%Y %H:%M:%S, ...). Empty for an invalid or null
    // value, and for a format with a conversion strftime does not know.
    std::wstring Format(const wchar_t* format) const;
    // VarDateFromStr in `lcid` (flags as VarDateFromStr takes them: 0,
    // VAR_DATEVALUEONLY, VAR_TIMEVALUEONLY, LOCALE_NOUSEROVERRIDE). False, and
    // an invalid value of 0, when the text is not a date.
    bool ParseDateTime(const wchar_t* text, DWORD flags = 0, LCID lcid = LOCALE_USER_DEFAULT) noexcept;
};

}  // namespace qv
