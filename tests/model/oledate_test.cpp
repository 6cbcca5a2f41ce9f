// OLE DATE arithmetic: the day origin, the forward-counting time of negative
// dates, calendar edges and rejected input.
#include "quorvel/common/oledate.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

namespace {

using qv::oledate::DateParts;

std::tuple<int, int, int, int, int, int> Ymdhms(const DateParts& p) {
    return {p.year, p.month, p.day, p.hour, p.minute, p.second};
}

// dayOfWeek: 1 = Sunday
struct Moment { double date; int y, mo, d, h, mi, s; int dayOfWeek; };

const Moment kMoments[] = {
    {0.0, 1899, 12, 30, 0, 0, 0, 7}, {1.0, 1899, 12, 31, 0, 0, 0, 1}, {2.0, 1900, 1, 1, 0, 0, 0, 2},
    {0.5, 1899, 12, 30, 12, 0, 0, 7}, {-1.25, 1899, 12, 29, 6, 0, 0, 6}, {-1.75, 1899, 12, 29, 18, 0, 0, 6},
    {-2.0, 1899, 12, 28, 0, 0, 0, 5},
    {61.0, 1900, 3, 1, 0, 0, 0, 5},     // 1900 is not a leap year
    {36585.0, 2000, 2, 29, 0, 0, 0, 3},  // 2000 is
    {45351.0, 2024, 2, 29, 0, 0, 0, 5}, {45352.75, 2024, 3, 1, 18, 0, 0, 6}, {-657434.0, 100, 1, 1, 0, 0, 0, 6},
    {2958465.0, 9999, 12, 31, 0, 0, 0, 6},
};

TEST(OleDate, MomentsConvertBothWays) {
    for (const Moment& m : kMoments) {
        SCOPED_TRACE(m.date);
        double dt = 1e9;
        ASSERT_TRUE(qv::oledate::FromParts(m.y, m.mo, m.d, m.h, m.mi, m.s, dt));
        EXPECT_DOUBLE_EQ(dt, m.date);
        DateParts p;
        ASSERT_TRUE(qv::oledate::ToParts(m.date, p));
        EXPECT_EQ(Ymdhms(p), std::tuple(m.y, m.mo, m.d, m.h, m.mi, m.s));
        EXPECT_EQ(p.dayOfWeek, m.dayOfWeek);
        EXPECT_EQ(qv::oledate::DayOfWeek(m.date), m.dayOfWeek);
    }
}

TEST(OleDate, RoundsToTheNearestSecondAcrossMidnight) {
    struct Case { double date; int y, mo, d, h, mi, s; } cases[] = {
        {1.0 + 59.6 / 86400, 1899, 12, 31, 0, 1, 0},
        {-0.25, 1899, 12, 30, 6, 0, 0},  // day 0 from either side
        {1.0 - 0.2 / 86400, 1899, 12, 31, 0, 0, 0},        // 23:59:59.8 of day 0
        {-1.0 - (86400 - 0.2) / 86400, 1899, 12, 30, 0, 0, 0},  // 1899-12-29 23:59:59.8
        {2958465.0 + 3599.0 / 86400, 9999, 12, 31, 0, 59, 59},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.date);
        DateParts p;
        ASSERT_TRUE(qv::oledate::ToParts(c.date, p));
        EXPECT_EQ(Ymdhms(p), std::tuple(c.y, c.mo, c.d, c.h, c.mi, c.s));
    }
    DateParts p;
    EXPECT_FALSE(qv::oledate::ToParts(2958465.0 + (86400 - 0.2) / 86400, p)) << "rounds into year 10000";
}

TEST(OleDate, DayOfYearCountsLeapDays) {
    struct Case { int y, mo, d, doy; } cases[] = {
        {1900, 12, 31, 365}, {2000, 12, 31, 366}, {2024, 3, 1, 61}, {2023, 3, 1, 60}, {100, 1, 1, 1}};
    for (const Case& c : cases) {
        double dt = 0;
        ASSERT_TRUE(qv::oledate::FromParts(c.y, c.mo, c.d, 0, 0, 0, dt));
        DateParts p;
        ASSERT_TRUE(qv::oledate::ToParts(dt, p));
        EXPECT_EQ(p.dayOfYear, c.doy) << c.y << "-" << c.mo << "-" << c.d;
    }
}

TEST(OleDate, InvalidPartsAreRejected) {
    struct Case { int y, mo, d, h, mi, s; } cases[] = {
        {99, 12, 31, 0, 0, 0},   {10000, 1, 1, 0, 0, 0}, {1900, 2, 29, 0, 0, 0}, {2023, 2, 29, 0, 0, 0},
        {2024, 13, 1, 0, 0, 0},  {2024, 0, 1, 0, 0, 0},  {2024, 4, 31, 0, 0, 0}, {2024, 1, 0, 0, 0, 0},
        {2024, 1, 1, 24, 0, 0},  {2024, 1, 1, 0, 60, 0}, {2024, 1, 1, 0, 0, 60}, {2024, 1, 1, -1, 0, 0},
    };
    for (const Case& c : cases) {
        double dt = 123.0;
        EXPECT_FALSE(qv::oledate::FromParts(c.y, c.mo, c.d, c.h, c.mi, c.s, dt))
            << c.y << "-" << c.mo << "-" << c.d << " " << c.h << ":" << c.mi << ":" << c.s;
        EXPECT_EQ(dt, 123.0) << "output left alone";
    }
}

TEST(OleDate, InvalidDatesAreRejected) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    for (double dt : {-657435.0, 2958466.0, nan, inf, -inf, 1e300}) {
        DateParts p;
        EXPECT_EQ(std::tuple(qv::oledate::IsValidDate(dt), qv::oledate::ToParts(dt, p), qv::oledate::DayOfWeek(dt)),
                  std::tuple(false, false, 0)) << dt;
    }
    EXPECT_TRUE(qv::oledate::IsValidDate(-657434.99) && qv::oledate::IsValidDate(2958465.99));  // 0100-01-01 23:45
}

TEST(OleDate, LinearScaleOrdersNegativeTimes) {
    struct Case { double date, linear; } cases[] = {
        {0.0, 0.0}, {2.5, 2.5}, {-1.25, -0.75}, {-1.75, -0.25}, {-2.0, -2.0}, {-0.5, 0.5}};
    for (const Case& c : cases) EXPECT_DOUBLE_EQ(qv::oledate::ToLinear(c.date), c.linear) << c.date;
    for (double linear : {-0.75, -0.25, -2.0, -1.5, 3.25})
        EXPECT_DOUBLE_EQ(qv::oledate::ToLinear(qv::oledate::FromLinear(linear)), linear) << linear;
    // 1899-12-29 06:00 comes before 18:00 of the same day.
    EXPECT_LT(qv::oledate::ToLinear(-1.25), qv::oledate::ToLinear(-1.75));
}

}  // namespace
