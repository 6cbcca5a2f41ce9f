// The button container's arithmetic: one size for all buttons, rows and
// columns that stop at the first button that does not fit, and the minimum
// size that shows them all.
#include "quorvel/views/button_container_rules.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

namespace bt = qv::buttons;
using bt::Box;
using bt::Extent;
using bt::Orientation;

TEST(ButtonContainerRulesTest, TheLongestCaptionSizesEveryButton) {
    const struct { std::vector<std::wstring> captions; std::size_t longest; } cases[] = {
        {{}, 0},
        {{L"OK"}, 2},
        {{L"OK", L"Cancel", L"Help"}, 6},
        {{L"", L"a"}, 1},
    };
    for (const auto& c : cases) EXPECT_EQ(bt::LongestCaption(c.captions), c.longest);
    EXPECT_EQ(bt::ButtonSize({60, 13}, 5), (Extent{70, 23}));
}

TEST(ButtonContainerRulesTest, RowsAndColumnsPlaceWhatFits) {
    // Buttons of 40 x 20, spacing 5, in the inner area of the client rectangle.
    const struct {
        const char* name;
        Orientation orientation;
        Box client;
        std::size_t count;
        std::vector<Box> boxes;
        bool complete;
    } cases[] = {
        {"row, centred vertically", Orientation::kHorizontal, {0, 0, 200, 50}, 3,
         {{5, 15, 45, 35}, {50, 15, 90, 35}, {95, 15, 135, 35}}, true},
        {"row exactly wide enough", Orientation::kHorizontal, {0, 0, 140, 30}, 3,
         {{5, 5, 45, 25}, {50, 5, 90, 25}, {95, 5, 135, 25}}, true},
        {"row one pixel too narrow keeps the leading buttons", Orientation::kHorizontal, {0, 0, 139, 30}, 3,
         {{5, 5, 45, 25}, {50, 5, 90, 25}}, false},
        {"row lower than a button places nothing", Orientation::kHorizontal, {0, 0, 400, 29}, 3, {}, false},
        {"column indented once more", Orientation::kVertical, {0, 0, 60, 200}, 2,
         {{10, 5, 50, 25}, {10, 30, 50, 50}}, true},
        {"column too short keeps the leading buttons", Orientation::kVertical, {0, 0, 60, 74}, 3,
         {{10, 5, 50, 25}, {10, 30, 50, 50}}, false},
        {"column narrower than a button places nothing", Orientation::kVertical, {0, 0, 49, 400}, 2, {}, false},
        {"no buttons", Orientation::kHorizontal, {0, 0, 10, 30}, 0, {}, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const bt::Placement p = bt::PlaceButtons(c.orientation, bt::InnerArea(c.client, 5), {40, 20}, 5, c.count);
        EXPECT_EQ(p.boxes, c.boxes);
        EXPECT_EQ(p.complete, c.complete);
    }
}

TEST(ButtonContainerRulesTest, TheMinimumSizeLaysOutEveryButton) {
    const struct { Orientation orientation; std::size_t count; Extent min; } cases[] = {
        {Orientation::kHorizontal, 3, {140, 30}},
        {Orientation::kVertical, 3, {50, 80}},
        {Orientation::kHorizontal, 0, {5, 30}},
    };
    for (const auto& c : cases) {
        const Extent min = bt::MinimumSize(c.orientation, c.count, {40, 20}, 5);
        EXPECT_EQ(min, c.min);
        // A container of its minimum size shows every button.
        EXPECT_TRUE(
            bt::PlaceButtons(c.orientation, bt::InnerArea({0, 0, min.cx, min.cy}, 5), {40, 20}, 5, c.count).complete);
    }
}

}  // namespace
