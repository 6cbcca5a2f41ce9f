// The scrolling dialog's arithmetic: ranges from the shortfall of the client
// size, the grip's visibility, the steps of each command with clamping, the
// way back to the origin and wheel turns.
#include "quorvel/controls/scroll_dialog_rules.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

namespace sc = qv::scrolling;
using sc::Axis;

// A dialog laid out 400 x 300.
sc::Model Dialog(int width, int height, bool maximised = false, bool* grip = nullptr) {
    sc::Model m;
    m.Init(400, 300);
    const bool shown = m.Resize(width, height, maximised);
    if (grip) *grip = shown;
    return m;
}

TEST(ScrollDialogRulesTest, RangesAndGripFollowTheClientSize) {
    const struct { int w, h; bool maximised, resizable; Axis h_axis, v_axis; bool grip; } cases[] = {
        {400, 300, false, true, {0, 0, 0}, {0, 0, 0}, true},     // as laid out
        {360, 280, false, true, {5, 5, 0}, {5, 5, 0}, false},    // 40/8, 20/4
        {393, 297, false, true, {0, 0, 0}, {0, 0, 0}, true},     // less than a unit short
        {392, 300, false, true, {1, 1, 0}, {0, 0, 0}, false},    // one unit across is enough
        {400, 296, false, true, {0, 0, 0}, {1, 1, 0}, false},
        {640, 480, false, true, {-30, 0, 0}, {-45, 0, 0}, true}, // larger: negative excess, range 0..0
        {407, 303, false, true, {0, 0, 0}, {0, 0, 0}, true},     // -7/8 and -3/4 truncate to 0
        {400, 300, true, true, {0, 0, 0}, {0, 0, 0}, false},     // maximised: never a grip
        {400, 300, false, false, {0, 0, 0}, {0, 0, 0}, false},   // fixed size: nothing to drag
        {0, 0, false, true, {50, 50, 0}, {75, 75, 0}, false},
    };
    for (const auto& c : cases) {
        sc::Model m;
        m.Init(400, 300);
        EXPECT_EQ(m.Resize(c.w, c.h, c.maximised, c.resizable), c.grip) << c.w << "x" << c.h;
        EXPECT_EQ(m.Horizontal(), c.h_axis) << c.w << "x" << c.h;
        EXPECT_EQ(m.Vertical(), c.v_axis) << c.w << "x" << c.h;
    }
}

TEST(ScrollDialogRulesTest, BarsTakeTheirRoomOnlyWhenNeeded) {
    // Layout 400 x 300, bars 17 wide.
    const struct { int w, h; sc::Model::Size fit; } cases[] = {
        {400, 300, {400, 300}},  // no bar
        {417, 297, {417, 297}},  // short by less than a unit each way
        {377, 320, {377, 303}},  // across only: the bar still leaves a full height
        {377, 310, {360, 293}},  // the horizontal bar makes the vertical one needed
        {410, 296, {393, 296}},  // down only, and the narrower width still fits
        {405, 296, {388, 279}},  // the vertical bar makes the horizontal one needed
        {377, 297, {360, 280}},  // both
    };
    for (const auto& c : cases) {
        sc::Model m;
        m.Init(400, 300);
        EXPECT_EQ(m.FitBars(c.w, c.h, 17, 17), c.fit) << c.w << "x" << c.h;
    }
}

TEST(ScrollDialogRulesTest, VerticalStepsPerCommandAreClamped) {
    // Vertical excess 10 (260 high), excess 3 (288 high) and 0 (300 high).
    const struct { int height, position, command, thumb, step; } cases[] = {
        {260, 0, sc::kLineForward, 0, 1},   {260, 0, sc::kLineBack, 0, 0},     // nothing above the top
        {260, 4, sc::kLineBack, 0, -1},     {260, 10, sc::kLineForward, 0, 0}, // nothing below the end
        {260, 0, sc::kPageForward, 0, 10},  {260, 10, sc::kPageBack, 0, -10},  // a page is the whole excess
        {288, 0, sc::kPageForward, 0, 3},   {288, 2, sc::kPageForward, 0, 1},  // clamped to the maximum
        {288, 3, sc::kPageBack, 0, -3},     {288, 1, sc::kPageBack, 0, -1},
        {260, 2, sc::kThumbTrack, 7, 5},    {260, 7, sc::kThumbTrack, 2, -5},
        {260, 2, sc::kThumbTrack, 99, 8},   {260, 2, sc::kThumbTrack, -5, -2},
        {260, 6, sc::kToStart, 0, -6},      {260, 6, sc::kToEnd, 0, 4},
        {260, 6, sc::kThumbPosition, 1, 0}, {260, 6, sc::kEndScroll, 0, 0},
        {260, 6, 42, 0, 0},                 {300, 0, sc::kPageForward, 0, 0},  // no range: no step
        {300, 0, sc::kLineForward, 0, 0},
    };
    for (const auto& c : cases) {
        sc::Model m = Dialog(400, c.height);
        m.ScrollVertical(c.position);
        ASSERT_EQ(m.Vertical().position, c.position);
        EXPECT_EQ(m.VerticalStep(c.command, c.thumb), c.step)
            << "height " << c.height << " at " << c.position << " command " << c.command;
    }
}

TEST(ScrollDialogRulesTest, HorizontalPageIsAlwaysEightUnits) {
    // Horizontal excess 20 (240 wide) and 5 (360 wide).
    const struct { int width, position, command, thumb, step; } cases[] = {
        {240, 0, sc::kPageForward, 0, 8},  {240, 16, sc::kPageForward, 0, 4}, {240, 10, sc::kPageBack, 0, -8},
        {240, 3, sc::kPageBack, 0, -3},    {360, 0, sc::kPageForward, 0, 5},  {360, 0, sc::kLineForward, 0, 1},
        {360, 5, sc::kLineForward, 0, 0},  {360, 5, sc::kLineBack, 0, -1},    {240, 4, sc::kThumbTrack, 12, 8},
        {240, 4, sc::kToStart, 0, -4},     {240, 4, sc::kToEnd, 0, 16},       {240, 4, sc::kThumbPosition, 9, 0},
    };
    for (const auto& c : cases) {
        sc::Model m = Dialog(c.width, 300);
        m.ScrollHorizontal(c.position);
        EXPECT_EQ(m.HorizontalStep(c.command, c.thumb), c.step)
            << "width " << c.width << " at " << c.position << " command " << c.command;
    }
}

TEST(ScrollDialogRulesTest, StepsMoveTheContentsByTheirUnitsAndResetReturnsThem) {
    sc::Model m = Dialog(360, 288);  // horizontal 0..5, vertical 0..3
    EXPECT_EQ(m.ScrollVertical(m.VerticalStep(sc::kPageForward, 0)), -12) << "3 units of 4 pixels";
    EXPECT_EQ(m.ScrollHorizontal(m.HorizontalStep(sc::kPageForward, 0)), -40) << "clamped to 5 units of 8";
    EXPECT_EQ(m.ScrollVertical(7), 0) << "already at the end";
    EXPECT_EQ(m.ScrollHorizontal(-2), 16);
    EXPECT_EQ(m.Reset(), (sc::Model::Shift{24, 12}));
    EXPECT_EQ(m.Horizontal().position, 0);
    EXPECT_EQ(m.Vertical().position, 0);
    EXPECT_EQ(m.Reset(), (sc::Model::Shift{0, 0}));

    // Growing keeps a position only within the new range.
    m.ScrollVertical(3);
    m.Resize(360, 292, false);
    EXPECT_EQ(m.Vertical(), (Axis{2, 2, 2}));
    m.Resize(400, 300, false);
    EXPECT_EQ(m.Vertical(), (Axis{0, 0, 0}));
}

TEST(ScrollDialogRulesTest, GripSitsInTheBottomRightCorner) {
    EXPECT_EQ(sc::GripBox({0, 0, 400, 300}, 17, 17), (sc::Box{383, 283, 400, 300}));
    EXPECT_EQ(sc::GripBox({10, 20, 110, 70}, 16, 18), (sc::Box{94, 52, 110, 70}));
}

TEST(ScrollDialogRulesTest, WheelTurnsBecomeLines) {
    const struct { int carry, delta, lines, wantLines, wantCarry; } cases[] = {
        {0, -120, 3, 3, 0},   // one notch towards the user: three lines down
        {0, 120, 3, -3, 0},   {0, 240, 1, -2, 0},   {0, -40, 3, 1, 0},    // a third notch is a line
        {0, -30, 3, 0, -90},  {-90, -30, 3, 1, -60},  {-90, 30, 3, 0, 90},  // reversing drops what was kept
        {0, -120, 0, 0, 0},   {50, -120, -1, 0, 0},                        // no lines, or a page setting
    };
    for (const auto& c : cases) {
        int carry = c.carry;
        EXPECT_EQ(sc::WheelLines(carry, c.delta, c.lines), c.wantLines) << c.carry << " " << c.delta << " " << c.lines;
        EXPECT_EQ(carry, c.wantCarry) << c.carry << " " << c.delta << " " << c.lines;
    }
    int carry = 0;
    EXPECT_EQ(sc::WheelLines(carry, -32768, 0x7fffffff), 1 << 20) << "absurd settings stay in range";
}

// At any DPI a dialog short of its layout by the same share scrolls the same
// number of units (8 x 4 pixels at 96 DPI, scaled); a DPI change rescales the
// layout and starts again at the origin.
TEST(ScrollDialogRulesTest, UnitsAndLayoutFollowTheDpi) {
    const struct { unsigned dpi; int unitX, unitY; } cases[] = {{96, 8, 4}, {120, 10, 5}, {144, 12, 6}, {192, 16, 8}, {0, 8, 4}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.dpi);
        const auto at = [&](int px) { return qv::ScaleToDpi(px, c.dpi); };
        sc::Model m;
        m.Init(at(400), at(300), c.dpi);
        m.Resize(at(360), at(280), false);  // 40 x 20 pixels short at 96 DPI
        EXPECT_EQ(std::tie(m.Horizontal(), m.Vertical()), std::make_tuple(Axis{5, 5, 0}, Axis{5, 5, 0}));
        EXPECT_EQ(m.ScrollVertical(1), -c.unitY);
        EXPECT_EQ(m.ScrollHorizontal(m.HorizontalStep(sc::kPageForward, 0)), -5 * c.unitX);
        m.ChangeDpi(192);
        EXPECT_EQ(std::make_tuple(m.LayoutWidth(), m.LayoutHeight(), m.UnitX(), m.UnitY(), m.Vertical().position),
                  std::make_tuple(800, 600, 16, 8, 0));
        EXPECT_EQ(m.Reset(), (sc::Model::Shift{0, 0})) << "the caller scrolled back before";
    }
}

}  // namespace
