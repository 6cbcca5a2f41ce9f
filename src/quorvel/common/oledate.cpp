#include "quorvel/common/oledate.h"

#include <cmath>

namespace qv::oledate {

namespace {

// Days from 1970-01-01 to a proleptic Gregorian date, and back (the
// era-based algorithms: exact for every year, no tables).
long long DaysFromCivil(long long y, int m, int d) noexcept {
    y -= m <= 2;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const long long yoe = y - era * 400;
    const long long doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
    const long long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

void CivilFromDays(long long z, int& y, int& m, int& d) noexcept {
    z += 719468;
    const long long era = (z >= 0 ? z : z - 146096) / 146097;
    const long long doe = z - era * 146097;
    const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const long long mp = (5 * doy + 2) / 153;
    d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    y = static_cast<int>(yoe + era * 400 + (m <= 2));
}

// 1970-01-01 is day 25569 of the DATE scale.
constexpr long long kUnixEpochDay = 25569;

}  // namespace

bool IsLeapYear(int year) noexcept { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) noexcept {
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12) return 0;
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

bool IsValidParts(int year, int month, int day, int hour, int minute, int second) noexcept {
    return year >= 100 && year <= 9999 && day >= 1 && day <= DaysInMonth(year, month) && hour >= 0 &&
           hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
}

bool IsValidDate(double date) noexcept {
    if (!std::isfinite(date)) return false;
    const double day = std::trunc(date);
    return day >= kMinDay && day <= kMaxDay;
}

bool FromParts(int year, int month, int day, int hour, int minute, int second, double& out) noexcept {
    if (!IsValidParts(year, month, day, hour, minute, second)) return false;
    const double days = static_cast<double>(DaysFromCivil(year, month, day) + kUnixEpochDay);
    const double time = (hour * 3600 + minute * 60 + second) / 86400.0;
    out = days >= 0 ? days + time : days - time;
    return true;
}

bool ToParts(double date, DateParts& out) noexcept {
    if (!IsValidDate(date)) return false;
    long long day = static_cast<long long>(std::trunc(date));
    long long secs = std::llround(std::fabs(date - std::trunc(date)) * 86400.0);
    if (secs >= 86400) {  // rounded up to the next midnight
        ++day;
        secs -= 86400;
    }
    if (day > static_cast<long long>(kMaxDay)) return false;
    DateParts p;
    CivilFromDays(day - kUnixEpochDay, p.year, p.month, p.day);
    p.hour = static_cast<int>(secs / 3600);
    p.minute = static_cast<int>(secs / 60 % 60);
    p.second = static_cast<int>(secs % 60);
    const int dow = static_cast<int>(((day % 7) + 7) % 7);  // day 0 was a Saturday
    p.dayOfWeek = dow == 0 ? 7 : dow;
    p.dayOfYear = static_cast<int>(day - (DaysFromCivil(p.year, 1, 1) + kUnixEpochDay) + 1);
    out = p;
    return true;
}

int DayOfWeek(double date) noexcept {
    DateParts p;
    return ToParts(date, p) ? p.dayOfWeek : 0;
}

double ToLinear(double date) noexcept {
    const double day = std::trunc(date);
    return day + std::fabs(date - day);
}

double FromLinear(double linear) noexcept {
    const double day = std::floor(linear);
    const double frac = linear - day;
    return day >= 0 ? day + frac : day - frac;
}

}  // namespace qv::oledate
