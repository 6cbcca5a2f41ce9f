// OLE automation dates (the DATE type) without any Windows header.
//
// A DATE is a double counting days since 1899-12-30 00:00. Its integer part
// is the day, its fraction the time of day. For dates before 1899-12-30 the
// value is negative but the fraction still counts *forwards* from midnight:
// -1.25 is 1899-12-29 06:00 and -1.75 is 1899-12-29 18:00. So a DATE is not a
// linear time scale below zero; ToLinear/FromLinear convert to and from a
// scale where comparison and arithmetic work on both sides of zero.
//
// The valid range is the one OLE automation accepts: 0100-01-01 00:00:00 to
// 9999-12-31 23:59:59. Conversions round to the nearest whole second.
#pragma once

#include "quorvel/common/api.h"

namespace qv::oledate {

// 0100-01-01 and 9999-12-31 as day numbers.
inline constexpr double kMinDay = -657434.0;
inline constexpr double kMaxDay = 2958465.0;

struct DateParts {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int dayOfWeek = 7;  // 1 = Sunday ... 7 = Saturday
    int dayOfYear = 364;  // 1 = January 1st
};

QV_API bool IsLeapYear(int year) noexcept;
// Days of `month` in `year`; 0 for a month outside 1..12.
QV_API int DaysInMonth(int year, int month) noexcept;

// Year 100..9999, an existing day, hour 0..23, minute and second 0..59.
QV_API bool IsValidParts(int year, int month, int day, int hour, int minute, int second) noexcept;
// Inside the range above, and not NaN or infinite.
QV_API bool IsValidDate(double date) noexcept;

// The DATE of a moment; false (and `out` unchanged) for invalid parts.
QV_API bool FromParts(int year, int month, int day, int hour, int minute, int second, double& out) noexcept;
// The parts of a DATE, rounded to the second; false for an invalid DATE or
// one that rounds beyond 9999-12-31 23:59:59.
QV_API bool ToParts(double date, DateParts& out) noexcept;

// 1 = Sunday ... 7 = Saturday; 0 for an invalid DATE.
QV_API int DayOfWeek(double date) noexcept;

// A linear scale (days since 1899-12-30, fraction always added): equal to
// the DATE from zero up, -0.75 for the DATE -1.25.
QV_API double ToLinear(double date) noexcept;
QV_API double FromLinear(double linear) noexcept;

}  // namespace qv::oledate
