// The font and colour chooser's rules: style index and list position both
// ways, HTML colour texts both ways, sizes typed into the size list, the
// "Default" choice with the read-only rule, and the chooser's layout.
#include "quorvel/controls/font_color_rules.h"

#include <gtest/gtest.h>

#include <string>

namespace {

namespace fc = qv::fontcolor;
using fc::Style;

TEST(FontColorRulesTest, StyleIndexFlagsAndListPositions) {
    const struct { int index; Style style; int position; const wchar_t* text; } cases[] = {
        {0, {false, false, false}, 0, L"Normal"},
        {1, {false, true, false}, 2, L"Italic"},
        {2, {true, false, false}, 1, L"Bold"},
        {3, {false, false, true}, 3, L"Underlined"},
        {4, {true, true, false}, 4, L"Bold + Italic"},
        {5, {true, false, true}, 5, L"Bold + Underlined"},
        {6, {true, true, true}, 6, L"Bold + Italic + Underlined"},
        {7, {false, true, true}, 7, L"Italic + Underlined"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.index);
        EXPECT_EQ(fc::StyleIndex(c.style), c.index);
        EXPECT_EQ(fc::StyleOf(c.index), c.style);
        EXPECT_EQ(fc::ListPositionOfStyle(c.index), c.position);
        EXPECT_EQ(fc::StyleOfListPosition(c.position), c.index);
        EXPECT_EQ(std::wstring(fc::StyleListText(c.position)), c.text);
    }
}

TEST(FontColorRulesTest, StyleValuesOutsideTheListAreRefusedOrPlain) {
    for (int v : {-1, 8, 100}) {
        SCOPED_TRACE(v);
        EXPECT_EQ(fc::ListPositionOfStyle(v), -1);
        EXPECT_EQ(fc::StyleOfListPosition(v), -1);
        EXPECT_EQ(fc::StyleOf(v), Style{});
        EXPECT_EQ(std::wstring(fc::StyleListText(v)), L"");
    }
}

TEST(FontColorRulesTest, SizeListAndTypedSizes) {
    std::wstring list;
    for (int i = 0; i < fc::kSizeCount; ++i) list += std::wstring(fc::SizeListText(i)) + L" ";
    EXPECT_EQ(list, L"6 8 10 12 14 16 18 20 24 28 30 32 ");
    EXPECT_EQ(std::wstring(fc::SizeListText(fc::kSizeCount)), L"");

    const struct { const wchar_t* text; int size; } cases[] = {
        {L"12", 12}, {L" 7 ", 7}, {L"1", 1}, {L"999", 999}, {L"0", 0}, {L"1000", 0},
        {L"", 0},    {L"  ", 0},  {L"-3", 0}, {L"1.5", 0},  {L"12pt", 0}, {L"abc", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(c.text)));
        const auto size = fc::ParseSize(c.text);
        EXPECT_EQ(size.value_or(0), c.size);
    }
}

TEST(FontColorRulesTest, HtmlColourTextsBothWays) {
    const struct { std::uint32_t color; const wchar_t* html; } cases[] = {
        {0x000000, L"#000000"}, {0xFFFFFF, L"#ffffff"}, {0xFF0201, L"#0102ff"},  // RGB(1, 2, 255)
        {0x0000FF, L"#ff0000"}, {0x00FF00, L"#00ff00"}, {0xFF0000, L"#0000ff"},  {0x0A0B0C, L"#0c0b0a"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.html);
        EXPECT_EQ(fc::HtmlColor(c.color), c.html);
        EXPECT_EQ(fc::ParseHtmlColor(c.html), c.color);
    }
    EXPECT_EQ(fc::ParseHtmlColor(L" #FFaa00 "), 0x00AAFFu);
    EXPECT_EQ(fc::DecToHex(256), L"100");  // "%x" pads, never cuts
    for (const wchar_t* bad : {L"", L"#", L"ffffff", L"#fffff", L"#fffffff", L"#ggffff", L"# ffffff", L"rgb(1,2,3)"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(bad)));
        EXPECT_FALSE(fc::ParseHtmlColor(bad).has_value());
    }
}

TEST(FontColorRulesTest, DefaultKeepsTheBackgroundOfAReadOnlyChooser) {
    const fc::Choice chosen{L"Courier New", 20, 6, 0x123456, 0x00FFFF};
    const fc::Choice fresh;
    EXPECT_EQ(fresh, (fc::Choice{L"Arial", 12, 0, 0x000000, 0xFFFFFF}));
    EXPECT_EQ(fc::DefaultChoice(chosen, false), fresh);
    fc::Choice readOnly = fresh;
    readOnly.background = 0x00FFFF;
    EXPECT_EQ(fc::DefaultChoice(chosen, true), readOnly);

    EXPECT_EQ(fc::PreviewBackground(false, 0x00FFFF), 0x00FFFFu);
    EXPECT_EQ(fc::PreviewBackground(true, 0x00FFFF), 0xFFFFFFu);
}

TEST(FontColorRulesTest, PreviewAndButtonInsideTheChooserAtAnyDpi) {
    using fc::Box;
    const struct { Box frame; unsigned dpi; Box preview, button; } cases[] = {
        {{10, 20, 210, 44}, 96, {12, 22, 170, 42}, {172, 22, 208, 42}},
        // Too narrow or too low: empty boxes, never turned over.
        {{0, 0, 30, 3}, 96, {2, 2, 2, 2}, {0, 2, 28, 2}},
        {{0, 0, 0, 0}, 96, {2, 2, 2, 2}, {0, 2, 0, 2}},
        // The insets, the preview's 40 and the button's 38 scale: 3, 60, 57 at 150 %; 4, 80, 76 at 200 %.
        {{0, 0, 300, 36}, 144, {3, 3, 240, 33}, {243, 3, 297, 33}},
        {{0, 0, 400, 48}, 192, {4, 4, 320, 44}, {324, 4, 396, 44}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.dpi);
        EXPECT_EQ(fc::PreviewBox(c.frame, c.dpi), c.preview);
        EXPECT_EQ(fc::ButtonBox(c.frame, c.dpi), c.button);
    }
}

TEST(FontColorRulesTest, ReaderTextsFillTheirNumberedPlaces) {
    const struct { const wchar_t* pattern; const wchar_t* filled; } cases[] = {
        {fc::kReaderValue, L"Arial 12, Bold, Black on #1E90FF"},
        {fc::kReaderValueReadOnly, L"Arial 12, Bold, Black"},
        {L"%4 auf %5: %1 %2 (%3)", L"Black auf #1E90FF: Arial 12 (Bold)"},  // a translation reorders
        {L"100%% %1", L"100% Arial"},
        {L"%x %", L"%x %"},
        {L"%6%7", L""},                                                     // no such argument
    };
    for (const auto& c : cases) {
        EXPECT_EQ(fc::FillIn(c.pattern, {L"Arial", L"12", L"Bold", L"Black", L"#1E90FF"}), c.filled) << c.pattern;
    }
}

}  // namespace
