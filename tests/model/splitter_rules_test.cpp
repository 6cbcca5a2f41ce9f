// The splitter's arithmetic: drops near the edges, collapse and restore with
// the cached widths, the thirds fallback, the first sizing, resizes and the
// places of the bar's buttons.
#include "quorvel/windows/splitter_rules.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

namespace sp = qv::splitter;
using sp::Box;
using sp::Drop;
using sp::Widths;

// A splitter 612 wide inside its borders (600 for the panes) and 400 high,
// with column 0 at `left` and the first sizing done.
sp::Model Splitter(int left = 300, int width = 612, int height = 400) {
    sp::Model m;
    m.SetColumnInfo(0, left, 0);
    m.Resize(width, height);
    return m;
}

Widths Columns(const sp::Model& m) { return Widths{m.ColumnWidth(0), m.ColumnWidth(1)}; }

TEST(SplitterRulesTest, DropRulesInOrder) {
    const struct { int x, width, keepLeft; Drop action; bool forced; } cases[] = {
        {10, 612, 21, Drop::CollapseLeft, true},     // 10 px from the left edge
        {597, 612, 21, Drop::CollapseRight, true},   // 15 px from the right edge
        {30, 612, 21, Drop::KeepBoth, false},        // 30 px from each edge
        {582, 612, 21, Drop::KeepBoth, false},
        {591, 612, 21, Drop::KeepBoth, false},       // right exactly 21
        {592, 612, 21, Drop::CollapseRight, true},   // right 20 is not more than 20
        {0, 612, 21, Drop::CollapseLeft, true},      {-40, 612, 21, Drop::CollapseLeft, true},
        {15, 612, 21, Drop::CollapseLeft, true},     {16, 612, 21, Drop::TakePosition, false},
        {20, 612, 21, Drop::TakePosition, false},    // left 16..20: the bar stays, nothing else
        {16, 612, 16, Drop::KeepBoth, false},        // a resize needs only 16 on the left
        {612, 612, 21, Drop::CollapseRight, true},   // outside the area
        {900, 612, 21, Drop::CollapseRight, true},
        {20, 30, 16, Drop::CollapseRight, true},     // the bar does not fit
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "x " << c.x << " in " << c.width << " keep " << c.keepLeft);
        const sp::DropDecision d = sp::DecideDrop(c.x, c.width, c.keepLeft);
        EXPECT_EQ(std::tie(d.action, d.forceShown), std::tie(c.action, c.forced));
    }
}

TEST(SplitterRulesTest, DraggingNearAnEdgeCollapsesAndTheButtonRestoresTheWidthsBeforeTheDrag) {
    const struct { int x; Drop action; Widths dropped; bool upper, lower; } cases[] = {
        {10, Drop::CollapseLeft, {0, 600}, true, false},
        {597, Drop::CollapseRight, {600, 0}, false, true},
        {30, Drop::KeepBoth, {30, 570}, true, true},
        {570, Drop::KeepBoth, {570, 30}, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "dropped at " << c.x);
        sp::Model m = Splitter(300);
        m.BeginTrack();
        m.TrackTo(c.x);
        EXPECT_EQ(Columns(m), (Widths{c.x, 600 - c.x})) << "the panes follow the bar";
        EXPECT_EQ(m.EndTrack(c.x), c.action);
        EXPECT_EQ(Columns(m), c.dropped);
        EXPECT_EQ(std::make_tuple(m.UpperVisible(), m.LowerVisible()), std::tie(c.upper, c.lower));
        if (c.action == Drop::KeepBoth) continue;
        EXPECT_EQ(m.ReadCachedSize(), (Widths{300, 300})) << "the widths before the drag";
        (c.action == Drop::CollapseLeft ? m.BtnLeftPressed() : m.BtnRightPressed());
        EXPECT_EQ(Columns(m), (Widths{300, 300}));
        EXPECT_TRUE(m.UpperVisible() && m.LowerVisible());
        EXPECT_FALSE(m.State().leftCollapsed || m.State().rightCollapsed);
    }
}

TEST(SplitterRulesTest, EachButtonPressedTwiceCollapsesAndRestores) {
    const struct { bool upper; Widths collapsed; bool upperShown, lowerShown, leftCollapsed; } cases[] = {
        {true, {0, 600}, true, false, true},
        {false, {600, 0}, false, true, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.upper ? "upper button" : "lower button");
        sp::Model m = Splitter(200);
        auto press = [&] { c.upper ? m.BtnLeftPressed() : m.BtnRightPressed(); };
        press();
        EXPECT_EQ(Columns(m), c.collapsed);
        EXPECT_EQ(std::make_tuple(m.UpperVisible(), m.LowerVisible()), std::tie(c.upperShown, c.lowerShown));
        EXPECT_EQ(std::make_tuple(m.State().leftCollapsed, m.State().rightCollapsed),
                  std::make_tuple(c.leftCollapsed, !c.leftCollapsed));
        EXPECT_FALSE(m.State().leftShown || m.State().rightShown);
        EXPECT_EQ(m.ReadCachedSize(), (Widths{200, 400}));
        press();
        EXPECT_EQ(Columns(m), (Widths{200, 400}));
        EXPECT_TRUE(m.UpperVisible() && m.LowerVisible());
        EXPECT_TRUE(m.State().BothShown());
        EXPECT_TRUE(m.TakeFacesDue()) << "the restore sets the faces again";
        EXPECT_FALSE(m.TakeFacesDue());
    }
}

TEST(SplitterRulesTest, ARestoreWithNothingUsableCachedGivesThirds) {
    const struct { const char* what; int left, width, shrinkTo; } cases[] = {
        {"column 0 was empty when cached", 0, 612, 0},
        {"the splitter became too narrow for the cached width", 500, 612, 450},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        sp::ForgetSizesMade();
        sp::Model m = Splitter();
        m.SetColumnInfo(0, c.left, 0);
        m.RecalcLayout();
        m.BtnRightPressed();
        if (c.shrinkTo) m.Resize(c.shrinkTo, 300);
        EXPECT_FALSE(sp::SizesMadeOnce());
        m.BtnRightPressed();
        EXPECT_EQ(m.ColumnWidth(0), m.Width() / 3);
        EXPECT_TRUE(m.State().BothShown());
        EXPECT_FALSE(m.State().rightCollapsed);
        EXPECT_TRUE(sp::SizesMadeOnce());
    }
    sp::Model fresh;
    fresh.SetArea(600, 300);
    EXPECT_EQ(fresh.MakeSplitSizes(), (Widths{200, 100})) << "a third of the width and of the height";
    fresh.SetArea(612, 300);
    fresh.SetColumnInfo(0, 250, 0);
    fresh.RecalcLayout();
    fresh.CacheSize();
    EXPECT_EQ(fresh.MakeSplitSizes(), (Widths{250, 362})) << "cached column 0, the width less it";
}

TEST(SplitterRulesTest, CacheSizeKeepsTheWidthsBeforeACollapse) {
    sp::Model m = Splitter(240);
    m.CacheSize();
    EXPECT_EQ(m.ReadCachedSize(), (Widths{240, 360}));

    m.BtnRightPressed();  // right collapsed: 600 | 0
    m.CacheSize();
    EXPECT_EQ(m.ReadCachedSize(), (Widths{240, 360}));
    EXPECT_EQ(std::make_tuple(m.ColumnIdeal(0), m.ColumnIdeal(1)), std::make_tuple(0, 3)) << "written back";
    m.Resize(812, 400);  // the collapsed pane stays collapsed, the bar at the new edge
    EXPECT_EQ(Columns(m), (Widths{800, 0}));
    EXPECT_TRUE(m.State().rightCollapsed);

    m.BtnRightPressed();
    m.BtnLeftPressed();  // left collapsed: 0 | 800
    m.SetColumnInfo(0, 90, 0);
    m.CacheSize();
    EXPECT_EQ(m.ColumnIdeal(0), 0);
    EXPECT_EQ(m.ReadCachedSize(), (Widths{240, 560}));
    m.BtnLeftPressed();
    EXPECT_EQ(Columns(m), (Widths{240, 560}));

    Widths none{0, 0};
    m.UpdateSizes(none);
    EXPECT_EQ(none, (Widths{240, 560})) << "both 0 keeps the current widths";
    Widths negative{-5, 700};
    m.UpdateSizes(negative);
    EXPECT_EQ(negative, (Widths{0, 700}));
    EXPECT_EQ(Columns(m), (Widths{0, 800}));
}

TEST(SplitterRulesTest, FirstSizingWidensANarrowPaneAndHidesItsButton) {
    const struct { int left; int now; bool upper, lower; } cases[] = {
        {5, 15, false, true}, {590, 580, true, false}, {100, 100, true, true}, {-1, 204, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "column 0 wanted " << c.left);
        sp::Model m;
        if (c.left >= 0) m.SetColumnInfo(0, c.left, 0);
        m.Resize(612, 400);
        EXPECT_EQ(m.ColumnWidth(0), c.now);
        EXPECT_EQ(std::make_tuple(m.UpperVisible(), m.LowerVisible()), std::tie(c.upper, c.lower));
        EXPECT_TRUE(m.State().BothShown());
    }
}

TEST(SplitterRulesTest, ResizesRunTheDropRules) {
    const struct { int left, width; Widths now; bool leftCollapsed, rightCollapsed; } cases[] = {
        {300, 812, {300, 500}, false, false},
        {300, 320, {308, 0}, false, true},  // 20 left of the width right of the bar: collapsed
        {18, 612, {18, 582}, false, false},  // 16 is enough on a resize
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.left << " in " << c.width);
        sp::Model m = Splitter(c.left);
        m.Resize(c.width, 400);
        EXPECT_EQ(Columns(m), c.now);
        EXPECT_EQ(std::make_tuple(m.State().leftCollapsed, m.State().rightCollapsed),
                  std::tie(c.leftCollapsed, c.rightCollapsed));
    }
}

TEST(SplitterRulesTest, TrackingToggleAndMinimums) {
    sp::Model m = Splitter(300);
    m.BeginTrack();
    m.TrackTo(-50);
    EXPECT_EQ(m.BarLeft(), 0);
    m.TrackTo(9999);
    EXPECT_EQ(m.BarLeft(), 600);
    m.CancelTrack();
    EXPECT_EQ(Columns(m), (Widths{300, 300}));
    m.TrackTo(100);
    EXPECT_EQ(m.BarLeft(), 300) << "no tracking after the cancel";

    m.Toggle();
    EXPECT_EQ(std::make_tuple(m.Columns(), m.HasBar()), std::make_tuple(1, false));
    EXPECT_EQ(Columns(m), (Widths{612, 0}));
    EXPECT_FALSE(m.UpperVisible() || m.LowerVisible());
    EXPECT_EQ(m.Release(5, sp::kKeepMin), Drop::TakePosition) << "no drop rules without a bar";
    m.Toggle();
    EXPECT_EQ(Columns(m), (Widths{300, 300}));

    m.SetColumnInfo(0, 300, 310);  // below its minimum: not shown
    m.RecalcLayout();
    EXPECT_EQ(Columns(m), (Widths{0, 600}));
    m.SetColumnInfo(0, 300, 0);
    m.SetColumnInfo(1, 0, 320);  // the rest below column 1's minimum: column 0 takes it
    m.RecalcLayout();
    EXPECT_EQ(Columns(m), (Widths{600, 0}));
}

TEST(SplitterRulesTest, ButtonPlacesAndFacePlacement) {
    const sp::ButtonBoxes b = sp::ButtonRects(Box{300, 0, 312, 400});
    EXPECT_EQ(b.upper, (Box{302, 120, 310, 177}));
    EXPECT_EQ(b.lower, (Box{302, 197, 310, 254}));

    const struct { Box area; int w, h, factor; Box at; } cases[] = {
        {{0, 0, 8, 57}, 4, 9, 1, {2, 24, 6, 33}},        // own size, centred
        {{0, 0, 8, 57}, 10, 43, 1, {-1, 7, 9, 50}},      // wider than the button: cut, not shrunk
        {{0, 0, 12, 86}, 10, 43, 1, {1, 21, 11, 64}},    // 150 %: the face at its own size
        {{0, 0, 16, 114}, 10, 43, 2, {-2, 14, 18, 100}}, // 200 %: twice as large
        {{5, 5, 13, 62}, 10, 43, 0, {4, 12, 14, 55}},    // a factor below 1 counts as 1
        {{0, 0, 8, 57}, 0, 28, 2, {4, 28, 4, 28}},       // no image
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.w << "x" << c.h << " times " << c.factor);
        EXPECT_EQ(sp::FaceBox(c.area, c.w, c.h, c.factor), c.at);
    }
}

// At 144 and 192 DPI every length is the 96-DPI one scaled: the bar and its
// buttons, and the edges that collapse a pane, as far from the edge for the
// hand as at 100 %.
TEST(SplitterRulesTest, LengthsAndDropEdgesScaleWithTheDpi) {
    const struct { unsigned dpi; int bar; Box upper; } cases[] = {
        {96, 12, {302, 120, 310, 177}}, {144, 18, {303, 80, 315, 166}}, {192, 24, {304, 40, 320, 154}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.dpi);
        const sp::Metrics m = sp::Metrics::ForDpi(c.dpi);
        EXPECT_EQ(std::make_tuple(m.bar, sp::ButtonRects(Box{300, 0, 300 + m.bar, 400}, m).upper),
                  std::make_tuple(c.bar, c.upper));
        const auto at = [&](int px) { return qv::ScaleToDpi(px, c.dpi); };
        const int width = at(612);
        const std::pair<int, Drop> drops[] = {{at(10), Drop::CollapseLeft}, {width - at(15), Drop::CollapseRight},
                                              {at(30), Drop::KeepBoth},     {width - at(30), Drop::KeepBoth}};
        for (const auto& [x, action] : drops) {
            sp::Model model;
            model.SetDpi(c.dpi);
            model.Resize(width, at(400));
            model.BeginTrack();
            EXPECT_EQ(model.EndTrack(x), action) << x;
        }
    }
}

TEST(SplitterRulesTest, AnotherDpiKeepsEachPaneItsShareAndTheCachedWidths) {
    const struct { unsigned from, to; } moves[] = {{96, 144}, {96, 192}, {192, 96}, {144, 144}};
    for (const auto& mv : moves) {
        SCOPED_TRACE(testing::Message() << mv.from << " -> " << mv.to);
        const auto at = [](int px, unsigned dpi) { return qv::ScaleToDpi(px, dpi); };
        sp::Model m;
        m.SetDpi(mv.from);
        m.SetColumnInfo(0, at(240, mv.from), at(20, mv.from));
        m.Resize(at(612, mv.from), at(400, mv.from));
        m.BtnRightPressed();  // widths 240 | 360 cached, the right pane collapsed
        const int percent = m.LeftPercent();

        m.ChangeDpi(mv.to);
        m.Resize(at(612, mv.to), at(400, mv.to));  // the window grows with the DPI
        EXPECT_EQ(m.Lengths(), sp::Metrics::ForDpi(mv.to));
        EXPECT_TRUE(m.State().rightCollapsed) << "a collapsed pane stays collapsed";
        EXPECT_EQ(m.LeftPercent(), percent);
        EXPECT_EQ(m.ColumnMin(0), at(20, mv.to));
        EXPECT_EQ(m.ReadCachedSize(), (Widths{at(240, mv.to), at(360, mv.to)}));
        m.BtnRightPressed();
        EXPECT_EQ(Columns(m), (Widths{at(240, mv.to), at(612, mv.to) - at(240, mv.to) - m.Lengths().bar}));
    }
}

TEST(SplitterRulesTest, TheBarsPositionInPerCent) {
    const struct { int left; void (sp::Model::*press)(); int percent; } cases[] = {
        {200, nullptr, 33}, {300, nullptr, 50}, {303, nullptr, 51},  // 50.5 % rounds up
        {300, &sp::Model::BtnLeftPressed, 0}, {300, &sp::Model::BtnRightPressed, 100},
    };
    for (const auto& c : cases) {
        sp::Model m = Splitter(c.left);
        if (c.press) (m.*c.press)();
        EXPECT_EQ(m.LeftPercent(), c.percent) << c.left;
        EXPECT_EQ(m.AnyCollapsed(), c.press != nullptr);
    }
    sp::Model one = Splitter();
    one.Toggle();
    EXPECT_EQ(one.LeftPercent(), 100) << "one column has it all";
}

}  // namespace
