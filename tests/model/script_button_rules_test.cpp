// The script buttons' arithmetic: button and group sizes, the column and the
// rows of a group, and the script container's control and button places.
#include "quorvel/controls/script_button_rules.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

namespace sc = qv::script;
using sc::Box;
using sc::Rect;
using sc::Side;
using sc::Size;

TEST(ScriptButtonRulesTest, ContentAndSizeLimits) {
    const struct {
        const char* name;
        std::vector<Size> buttons;
        bool horizontal;
        Size content;
        sc::SizeLimits limits;
    } cases[] = {
        {"empty column", {}, false, {0, 0}, {5, 5, 5, 5}},
        {"empty rows", {}, true, {0, 0}, {5, 5, 10, 5}},
        {"column", {{60, 23}, {90, 23}, {70, 23}}, false, {90, 84}, {95, 89, 95, 89}},
        {"rows", {{60, 23}, {90, 23}, {70, 23}}, true, {90, 69}, {95, 74, 100, 74}},
        // A button without height adds no spacing to a column.
        {"column, flat button", {{40, 0}, {50, 20}}, false, {50, 25}, {55, 30, 55, 30}},
        {"rows, flat button", {{40, 0}, {50, 20}}, true, {50, 20}, {55, 25, 60, 25}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Size content = sc::GroupContent(c.buttons, c.horizontal);
        EXPECT_EQ(content, c.content);
        EXPECT_EQ(sc::GroupLimits(content, c.horizontal), c.limits);
    }
    EXPECT_EQ(sc::ButtonSize(48, 16), (Size{60, 20}));
}

TEST(ScriptButtonRulesTest, ColumnSharesTheFreeHeightAndKeepsOneButtonsRoom) {
    const struct {
        const char* name;
        std::vector<int> heights;
        int width, cy;
        std::vector<Box> boxes;
    } cases[] = {
        // Three 23-pixel buttons in 120: 4 gaps over 120 - 92.
        {"three in 120", {23, 23, 23}, 60, 120, {{0, 5, 60, 23}, {0, 35, 60, 23}, {0, 65, 60, 23}}},
        // The first button counted twice: (100 - 50 - 30) / 3 = 6.
        {"mixed heights", {30, 20}, 40, 100, {{0, 5, 40, 30}, {0, 41, 40, 20}}},
        // Too little room: the gap goes negative ((40 - 69) / 3 = -9) and the
        // buttons overlap.
        {"squeezed", {23, 23}, 60, 40, {{0, 5, 60, 23}, {0, 19, 60, 23}}},
        // Before UpdateSize the buttons get no width.
        {"no width yet", {20}, 0, 100, {{0, 5, 0, 20}}},
        {"empty", {}, 60, 100, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(sc::AlignVertical(c.heights, c.width, 200, c.cy), c.boxes);
    }
}

TEST(ScriptButtonRulesTest, RowsWrapAndShareTheFreeSpace) {
    const struct {
        const char* name;
        std::vector<int> heights;
        int width, cx, cy;
        std::vector<Box> boxes;
    } cases[] = {
        // 4 per row (300 / 65), one row: horizontal gap (300 - 180) / 4 = 30.
        {"one row", {20, 20, 20}, 60, 300, 60, {{0, 5, 60, 20}, {90, 5, 60, 20}, {180, 5, 60, 20}}},
        // 2 per row (140 / 65): rows counted 2, T = 40, vertical gap
        // (100 - 40) / 2 = 30, horizontal gap (140 - 120) / 2 = 10.
        {"two rows", {20, 20, 20}, 60, 140, 100, {{0, 5, 60, 20}, {70, 5, 60, 20}, {0, 55, 60, 20}}},
        // Room for two buttons and their spacing, yet they wrap: counting
        // allows for the spacing (130 <= 65 + 5 + 60), so the widest row is
        // one button, the horizontal gap (130 - 60) / 2 = 35, and placing
        // wraps too (130 <= 95 + 60); vertical gap (80 - 40) / 2 = 20.
        {"spacing counted", {20, 20}, 60, 130, 80, {{0, 5, 60, 20}, {0, 45, 60, 20}}},
        // Narrower than one button: even the first one wraps. Rows counted
        // 3, T = 60, vertical gap (100 - 60) / 3 = 13.
        {"narrow", {20, 20}, 60, 50, 100, {{0, 38, 60, 20}, {0, 71, 60, 20}}},
        {"empty", {}, 60, 300, 100, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(sc::AlignHorizontal(c.heights, c.width, c.cx, c.cy), c.boxes);
    }
}

TEST(ScriptButtonRulesTest, ContainerPlacesControlAndButtonOnEachSide) {
    const sc::ContainerParams standard;  // margin 15, button 30 x 20, no limits
    sc::ContainerParams limited = standard;
    limited.limits = true;  // width 50..100, height 15..30
    const struct {
        const char* name;
        int cx, cy;
        Side side;
        sc::ContainerParams params;
        Rect control, button;
    } cases[] = {
        {"right", 200, 60, Side::Right, standard, {15, 15, 140, 45}, {155, 15, 185, 35}},
        {"top", 200, 100, Side::Top, standard, {15, 50, 185, 85}, {85, 15, 115, 35}},
        {"bottom", 200, 100, Side::Bottom, standard, {15, 15, 185, 50}, {85, 65, 115, 85}},
        {"left", 200, 60, Side::Left, standard, {60, 15, 185, 45}, {15, 15, 45, 35}},
        // Limits cut a wide, tall control at its right and bottom edges; the
        // right-hand button follows the control.
        {"right, cut", 300, 100, Side::Right, limited, {15, 15, 115, 45}, {130, 15, 160, 35}},
        {"bottom, cut", 300, 200, Side::Bottom, limited, {15, 15, 115, 45}, {135, 60, 165, 80}},
        // ... and raise a small one.
        {"right, raised", 100, 40, Side::Right, limited, {15, 15, 65, 30}, {80, 15, 110, 35}},
        // Without limits a tiny client inverts the control.
        {"left, tiny", 40, 20, Side::Left, standard, {60, 15, 25, 5}, {15, 15, 45, 35}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const sc::ContainerLayout l = sc::LayoutContainer(c.cx, c.cy, c.side, c.params);
        EXPECT_EQ(l.control, c.control);
        EXPECT_EQ(l.button, c.button);
    }
}

// At 144 and 192 DPI the paddings, the spacing and every length a host
// gives a container (its limits too) are the 96-DPI ones scaled.
TEST(ScriptButtonRulesTest, LengthsScaleWithTheDpi) {
    sc::ContainerParams limited;
    limited.limits = true;  // width 50..100, height 15..30
    const struct { unsigned dpi; sc::Metrics lengths; Rect control, button; } cases[] = {
        {96, {12, 4, 5}, {15, 15, 115, 45}, {130, 15, 160, 35}},
        {144, {18, 6, 8}, {23, 23, 173, 68}, {196, 23, 241, 53}},
        {192, {24, 8, 10}, {30, 30, 230, 90}, {260, 30, 320, 70}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.dpi);
        EXPECT_EQ(sc::Metrics::ForDpi(c.dpi), c.lengths);
        const auto at = [&](int px) { return qv::ScaleToDpi(px, c.dpi); };
        const sc::ContainerLayout l = sc::LayoutContainer(at(300), at(100), Side::Right, sc::ScaledParams(limited, c.dpi));
        EXPECT_EQ(std::tie(l.control, l.button), std::tie(c.control, c.button));
    }
}

}  // namespace
