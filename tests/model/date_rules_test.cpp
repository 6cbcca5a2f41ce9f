// The compound date-and-time field's picker layout and range spans in days.
#include "quorvel/masks/date_rules.h"

#include <gtest/gtest.h>

#include <tuple>

#include "quorvel/common/oledate.h"

namespace {

namespace df = qv::datefields;
using df::Box;

TEST(DateRulesTest, FieldLayoutFixedOrStretched) {
    struct Case { int width, height; bool stretch; Box date, time; } cases[] = {
        {150, 15, false, {0, 0, 100, 15}, {105, 0, 205, 15}},  // time picker cut off
        {400, 30, false, {0, 0, 100, 30}, {105, 0, 205, 30}}, {206, 20, true, {0, 0, 100, 20}, {105, 0, 206, 20}},
        {150, 15, true, {0, 0, 72, 15}, {77, 0, 150, 15}}, {2, -4, true, {0, 0, 0, 0}, {5, 0, 5, 0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << "x" << c.height << (c.stretch ? " stretched" : ""));
        const df::FieldBoxes boxes = df::FieldLayout(c.width, c.height, c.stretch);
        EXPECT_EQ(std::tie(boxes.date, boxes.time), std::tie(c.date, c.time));
    }
}

TEST(DateRulesTest, LayoutScalesWithTheDpi) {
    struct Case {
        unsigned dpi;
        df::FieldSizes sizes;
        Box laid;              // a 10 x 10 caller's rectangle at (5, 5), made the minimum size
        Box fixedTime;         // the fixed time picker in a 400 x 40 area
        Box stretchedDate;     // the stretched date picker in 400 x 40
    } cases[] = {
        {96, {100, 20, 5}, {5, 5, 210, 25}, {105, 0, 205, 40}, {0, 0, 197, 40}},
        {0, {100, 20, 5}, {5, 5, 210, 25}, {105, 0, 205, 40}, {0, 0, 197, 40}},  // unknown DPI: 96
        {144, {150, 30, 8}, {5, 5, 313, 35}, {158, 0, 308, 40}, {0, 0, 196, 40}},
        {192, {200, 40, 10}, {5, 5, 415, 45}, {210, 0, 410, 40}, {0, 0, 195, 40}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dpi);
        EXPECT_EQ(df::FieldSizesForDpi(c.dpi), c.sizes);
        EXPECT_EQ(df::LayoutRect(Box{5, 5, 15, 15}, c.dpi), c.laid);
        EXPECT_EQ(df::FieldLayout(400, 40, false, c.dpi).time, c.fixedTime);
        EXPECT_EQ(df::FieldLayout(400, 40, true, c.dpi).date, c.stretchedDate);
        // A caller's rectangle that is large enough stays as it is.
        EXPECT_EQ(df::LayoutRect(Box{0, 0, 500, 60}, c.dpi), (Box{0, 0, 500, 60}));
    }
}

TEST(DateRulesTest, ShiftDateKeepsTheTimeAndStopsAtTheLimits) {
    double noonMarch5 = 0;
    ASSERT_TRUE(qv::oledate::FromParts(2024, 3, 5, 12, 0, 0, noonMarch5));
    struct Case { double from; long long days; bool ok; int y, mo, d, h; } cases[] = {
        {noonMarch5, 30, true, 2024, 4, 4, 12}, {noonMarch5, -65, true, 2023, 12, 31, 12},
        {0.25, -1, true, 1899, 12, 29, 6},           // across day 0: the DATE goes -1.25
        {noonMarch5, 3615897, false, 0, 0, 0, 0},    // beyond year 9999 anyway
        {noonMarch5, -3615898, false, 0, 0, 0, 0},   // beyond the longest span
        {2958465.5, 1, false, 0, 0, 0, 0},           // past 9999-12-31
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.from << " + " << c.days);
        double out = -99;
        ASSERT_EQ(df::ShiftDate(c.from, c.days, out), c.ok);
        if (!c.ok) {
            EXPECT_EQ(out, -99) << "left alone";
            continue;
        }
        qv::oledate::DateParts p;
        ASSERT_TRUE(qv::oledate::ToParts(out, p));
        EXPECT_EQ(std::tuple(p.year, p.month, p.day, p.hour), std::tuple(c.y, c.mo, c.d, c.h));
    }
}

}  // namespace
