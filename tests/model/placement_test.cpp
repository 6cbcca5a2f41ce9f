#include "quorvel/tooltip/placement.h"

#include <gtest/gtest.h>

namespace {

using qv::TipPoint;
using qv::TipRect;

TEST(Placement, WrapsLongToolTexts) {
    std::wstring text;
    for (int i = 0; i < 200; ++i) text += static_cast<wchar_t>(L'A' + i % 26);
    std::wstring expected = text;
    expected.insert(157, L"<br>");
    expected.insert(80, L"<br>");
    EXPECT_EQ(qv::WrapToolText(text, 80), expected);

    const std::tuple<const wchar_t*, int, const wchar_t*> kCases[] = {
        {L"abcdefgh", 8, L"abcdefgh"},                // not longer than the width
        {L"abcdefgh", 0, L"abcdefgh"},                // no wrap width
        {L"abcdefghij", 4, L"abcd<br>e<br>fghij"},     // 4, then 4 - 3 per line
        {L"abcdefgh", 3, L"abc<br><br>defgh"},         // later lines hold nothing
        {L"abcd", 1, L"a<b<br>r>bcd"},                 // a break inside a break
    };
    for (const auto& [in, width, out] : kCases) EXPECT_EQ(qv::WrapToolText(in, width), out) << in << " " << width;
}

TEST(Placement, SizesTheBox) {
    qv::TipShape shape;
    shape.anchorHeight = 8;
    EXPECT_EQ(qv::InfoBoxSize({60, 20}, 0, shape), (qv::TipSize{66, 30}));
    EXPECT_EQ(qv::InfoBoxSize({60, 20}, qv::kTipStyleShadow, shape), (qv::TipSize{69, 33}));
}

struct PlaceCase {
    TipPoint cursor;
    int width, direction, anchorOffset;
    std::uint32_t styles;
    TipRect rect;
    int finalDirection;
};

// An 800 x 600 screen, boxes 50 pixels high.
const PlaceCase kPlaceCases[] = {
    {{5, 5}, 100, 3, 0, 0, {5, 5, 105, 55}, 3},
    {{750, 5}, 100, 3, 0, 0, {650, 5, 750, 55}, 2},        // right edge: flips left
    {{5, 580}, 100, 3, 0, 0, {5, 530, 105, 580}, 1},       // bottom edge: flips up
    {{50, 20}, 100, 0, 0, 0, {50, 20, 150, 70}, 3},        // left and top edges
    {{400, 100}, 900, 3, 0, 0, {0, 100, 900, 150}, 2},     // fits on neither side
    {{5, 100}, 100, 3, 10, 0, {0, 100, 100, 150}, 3},      // anchor offset beyond the edge
    {{795, 300}, 100, 0, 10, 0, {700, 250, 800, 300}, 0},  // capped at the screen width
    {{400, 100}, 100, 2, 0, qv::kTipStyleShadow, {303, 103, 403, 153}, 2},
    {{400, 100}, 100, 3, 0, qv::kTipStyleShadow, {400, 100, 500, 150}, 3},
    {{400, 100}, 100, 7, 0, 0, {400, 100, 500, 150}, 3},  // unknown direction
};

TEST(Placement, PlacesAndFlipsAtScreenEdges) {
    for (const PlaceCase& c : kPlaceCases) {
        qv::TipShape shape;
        shape.anchorOffset = c.anchorOffset;
        const qv::InfoBoxPlacement placed =
            qv::CalculateInfoBoxRect({800, 600}, c.cursor, {0, 0, c.width, 50}, c.direction, c.styles, shape);
        EXPECT_EQ(placed, (qv::InfoBoxPlacement{c.rect, c.finalDirection})) << c.cursor.x << "," << c.cursor.y;
    }
}

TEST(Placement, ShapesTheRegion) {
    qv::TipShape shape;
    shape.anchorWidth = 10;
    shape.anchorHeight = 8;
    shape.anchorOffset = 5;
    const std::uint32_t both = qv::kTipStyleAnchor | qv::kTipStyleShadow;
    const struct {
        TipRect placed;
        TipPoint cursor;
        int direction;
        std::uint32_t styles;
        qv::TipRegionShape region;
    } kCases[] = {
        {{10, 20, 110, 70}, {0, 0}, 3, 0, {{0, 8, 101, 51}, false, {}, false, {}}},
        {{100, 200, 200, 250}, {105, 200}, 3, both, {{0, 8, 98, 48}, true, {{{5, 8}, {15, 8}, {5, 0}}}, true, {3, 3}}},
        {{0, 0, 100, 50}, {95, 50}, 0, qv::kTipStyleAnchor, {{0, 0, 101, 43}, true, {{{95, 43}, {85, 43}, {95, 50}}}, false, {}}},
        {{0, 0, 100, 50}, {5, 50}, 1, qv::kTipStyleAnchor, {{0, 0, 101, 43}, true, {{{5, 43}, {15, 43}, {5, 50}}}, false, {}}},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(qv::CalculateRegionShape(c.placed, c.cursor, c.direction, c.styles, shape), c.region) << c.direction;
}

TEST(Placement, PlacesTheTextInsideTheBox) {
    qv::TipShape shape;
    shape.anchorHeight = 8;
    const qv::TipRect client{0, 0, 102, 60};
    const std::tuple<int, std::uint32_t, TipRect> kCases[] = {
        {3, 0, {3, 9, 99, 59}}, {1, qv::kTipStyleShadow, {3, 1, 96, 48}},
        {1, qv::kTipStyleShadow | qv::kTipStyleVCenter, {3, 14, 96, 48}},
        {3, qv::kTipStyleBottom | qv::kTipStyleVCenter, {3, 39, 99, 59}},
    };
    for (const auto& [direction, styles, rect] : kCases)
        EXPECT_EQ(qv::CalculateTextRect(client, {60, 20}, direction, styles, shape), rect) << styles;
}

TEST(Placement, UnwrapsWhatWrappingInserted) {
    std::wstring longText;
    for (int i = 0; i < 200; ++i) longText += static_cast<wchar_t>(L'a' + i % 26);
    // Round trips, at several widths, including a text with breaks of its own.
    const std::tuple<std::wstring, int> kRoundTrips[] = {
        {longText, 80}, {longText, 4}, {longText, 199}, {L"abcdefghij", 4},
        {L"<b>Bold</b> help<br>on two lines and more text to wrap", 10}, {L"short", 80},
    };
    for (const auto& [text, width] : kRoundTrips)
        EXPECT_EQ(qv::UnwrapToolText(qv::WrapToolText(text, width), width), text) << width;
    // Texts wrapping did not make stay as they are.
    const std::tuple<const wchar_t*, int> kUntouched[] = {
        {L"abcd<br>efghij", 4},    // the break is where wrapping puts it, but too few characters follow
        {L"abcdX<br>efg", 4},      // a break in the wrong place
        {L"abc<br><br>defgh", 3},  // widths below 4 are left alone
        {L"abcdefgh", 0},
    };
    for (const auto& [text, width] : kUntouched) EXPECT_EQ(qv::UnwrapToolText(text, width), text) << text;
}

TEST(Placement, ScalesTheShapeAndOwnerOffsetsWithTheDpi) {
    qv::TipShape base;
    base.anchorWidth = 9;
    base.anchorHeight = 8;
    base.anchorOffset = 5;
    const struct {
        unsigned dpi;
        qv::TipShape shape;  // margins, shadow, anchor width, height, offset, border
        int editOffset, lineOffset;
    } kCases[] = {
        {96, {3, 1, 3, 3, 9, 8, 5, 1, 1}, 8, 20},
        {0, {3, 1, 3, 3, 9, 8, 5, 1, 1}, 8, 20},  // a failed DPI query counts as 96
        {120, {4, 1, 4, 4, 11, 10, 6, 1, 1}, 10, 25},
        {144, {5, 2, 5, 5, 14, 12, 8, 2, 2}, 12, 30},
        {192, {6, 2, 6, 6, 18, 16, 10, 2, 2}, 16, 40},
    };
    for (const auto& c : kCases) {
        EXPECT_EQ(qv::TipShapeForDpi(base, c.dpi), c.shape) << c.dpi;
        EXPECT_EQ(qv::TipOwnerOffset(qv::kTipOwnerEdit, c.dpi), c.editOffset) << c.dpi;
        EXPECT_EQ(qv::TipOwnerOffset(qv::kTipOwnerComboBox, c.dpi), c.lineOffset) << c.dpi;
        EXPECT_EQ(qv::TipOwnerOffset(qv::kTipOwnerPrompt, c.dpi), c.lineOffset) << c.dpi;
        EXPECT_EQ(qv::TipOwnerOffset(qv::kTipOwnerOther, c.dpi), 0);
        EXPECT_EQ(qv::TipOwnerOffset(7, c.dpi), 0);
    }
    // A box sized with the scaled shape grows by the scaled margins and shadow.
    EXPECT_EQ(qv::InfoBoxSize({60, 20}, qv::kTipStyleShadow, qv::TipShapeForDpi(qv::TipShape{}, 192)),
              (qv::TipSize{60 + 12 + 6, 20 + 4 + 6}));
}

}  // namespace
