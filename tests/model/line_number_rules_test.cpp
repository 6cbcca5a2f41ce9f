#include "quorvel/windows/line_number_rules.h"

#include <gtest/gtest.h>

#include <climits>
#include <cwchar>
#include <utility>

namespace {

using qv::LineNumberFormat;
using qv::LineRange;

TEST(LineNumberGutter, NumbersTheLinesThatFitWholeEachOnItsTextLine) {
    const struct { int count, first, height, lineHeight; LineRange range; } cases[] = {
        {1, 0, 100, 16, {0, 1}},        // an empty edit has one line
        {1000, 0, 100, 16, {0, 6}},     // 100 / 16: the partly visible seventh line is not numbered
        {1000, 39, 100, 16, {39, 45}},  // scrolled to line 40
        {42, 39, 100, 16, {39, 42}},    // the text ends first
        {1000, 5, 100, 0, {5, 5}},      // no line height measured yet
        {10, 20, -20, 16, {10, 10}},    // a first line beyond the text, a negative height
        {INT_MAX, INT_MAX - 2, INT_MAX, 1, {INT_MAX - 2, INT_MAX}},  // first + visible would overflow
    };
    for (const auto& c : cases)
        EXPECT_EQ(qv::VisibleLineRange(c.count, c.first, c.height, c.lineHeight), c.range) << c.count << "/" << c.first;
    EXPECT_EQ(LineNumberFormat().Format(1), L"00001");
    EXPECT_EQ(LineNumberFormat().Format(39 + 1), L"00040");
    EXPECT_EQ(qv::LineNumberTop(44, 39, 16, 1), 81);
    EXPECT_EQ(qv::LineNumberTop(INT_MAX, 0, INT_MAX, 0), INT_MAX);  // clamped rather than wrapped
}

TEST(LineNumberGutter, WidthFollowsTheFormattedLineCountAndOnlyWidens) {
    auto width = [](const LineNumberFormat& f, int lines) {  // a font of 7-pixel digits
        return qv::LineNumberGutterWidth(7 * static_cast<int>(qv::LineCountText(f, lines).size()));
    };
    const LineNumberFormat standard, plain = *LineNumberFormat::Parse(L"%d");
    EXPECT_EQ(width(standard, 10), 40);
    EXPECT_EQ(width(plain, 10), 19);  // "%d" narrows the gutter to two digits + 5
    const struct { const LineNumberFormat* format; const wchar_t* measured; int lines; bool widens; } cases[] = {
        {&plain, L"99", 100, true}, {&plain, L"99", 99, false}, {&plain, L"100", 99, false},
        {&standard, L"00099", 100, false}, {&standard, L"99999", 100000, true},
    };
    for (const auto& c : cases) EXPECT_EQ(qv::GutterMustWiden(*c.format, c.measured, c.lines), c.widens) << c.lines;
}

// The numbers are measured in the edit's font, already as large as the DPI
// makes it; the air around them is scaled.
TEST(LineNumberGutter, TheAirAroundTheNumbersScalesWithTheDpi) {
    const struct { unsigned dpi; int width, left; } cases[] = {
        {96, 40, 2}, {120, 41, 3}, {144, 43, 3}, {192, 45, 4}, {0, 40, 2},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(qv::LineNumberGutterWidth(35, c.dpi), c.width) << c.dpi;
        EXPECT_EQ(qv::LineNumberLeft(c.dpi), c.left) << c.dpi;
    }
    EXPECT_EQ(qv::FormattingRectLeft(45), 46) << "one pixel after the gutter at any DPI";
}

// The fuzz target compares any accepted format with printf; these are the
// cases worth reading.
TEST(LineNumberFormatTest, WritesTheNumberAsPrintfWould) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"%05i", L"00042"}, {L"%-5d|", L"42   |"}, {L"%+05d", L"+0042"}, {L"%08.3d", L"     042"},
        {L"%#08x", L"0x00002a"}, {L"%#o", L"052"}, {L"%%%d%%", L"%42%"}, {L"Line %hd:", L"Line 42:"},
    };
    for (const auto& [format, text] : cases) {
        const auto parsed = LineNumberFormat::Parse(format);
        ASSERT_TRUE(parsed.has_value()) << format;
        EXPECT_EQ(parsed->Format(42), text);
        wchar_t printed[64] = {};
        ASSERT_GE(std::swprintf(printed, 64, format, 42), 0);
        EXPECT_EQ(parsed->Format(42), printed);
    }
    EXPECT_EQ(LineNumberFormat::Parse(L"%hd")->Format(70000), L"70000");  // whole, whatever the length modifier
    EXPECT_EQ(LineNumberFormat::Parse(L"%.0d")->Format(0), L"");
}

TEST(LineNumberFormatTest, RefusesWhatIsNotOneIntegerAndFallsBackToTheDefault) {
    for (const wchar_t* format : {L"%s", L"%n", L"%d%n", L"%d %d", L"%*d", L"%.*d", L"%", L"%5", L"abc", L"", L"%%",
                                  L"%c", L"%f", L"%hhd", L"%I64d", L"%65d", L"%99999999999999999999d", L"%1$d"}) {
        EXPECT_FALSE(LineNumberFormat::Parse(format).has_value()) << format;
        EXPECT_EQ(LineNumberFormat::OrDefault(format).Format(7), L"00007");
    }
    EXPECT_TRUE(LineNumberFormat::Parse(L"%64d").has_value());
}

}  // namespace
