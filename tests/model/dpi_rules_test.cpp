#include "quorvel/common/dpi_rules.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST(DpiRules, LengthsScaleAndRoundLikeMulDiv) {
    struct Case { int length; unsigned dpi; int scaled; } cases[] = {
        {10, 96, 10},  {10, 144, 15},  {10, 192, 20}, {7, 144, 11},   // 10.5 rounds away from zero
        {-7, 144, -11}, {1, 120, 1},   {3, 120, 4},   {0, 192, 0},
        {10, 0, 10},                                                   // an unreadable DPI counts as 96
        {INT_MAX, 192, INT_MAX}, {INT_MIN, 192, INT_MIN},              // saturates
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.length << " at " << c.dpi);
        EXPECT_EQ(qv::ScaleToDpi(c.length, c.dpi), c.scaled);
    }
    EXPECT_EQ(qv::ScaleFromDpi(15, 144), 10);
    EXPECT_EQ(qv::ScaleBetweenDpi(15, 144, 192), 20);
    EXPECT_EQ(qv::ScaleBetweenDpi(20, 192, 0), 10);
}

TEST(DpiRules, BitmapsGrowByWholeMultiplesAndFontsByPoints) {
    struct Case { unsigned dpi; int factor; int height8pt; } cases[] = {
        {0, 1, -11}, {96, 1, -11}, {120, 1, -13}, {144, 1, -16}, {191, 1, -21}, {192, 2, -21}, {288, 3, -32},
        {100000, 64, -11111},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.dpi);
        EXPECT_EQ(qv::BitmapFactorForDpi(c.dpi), c.factor);
        EXPECT_EQ(qv::FontHeightForDpi(8, c.dpi), c.height8pt);
    }
}

}  // namespace
