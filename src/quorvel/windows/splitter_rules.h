// The arithmetic of the two-column splitter, without a window: where the
// columns, the bar and its two buttons go, what a drop of the bar or a
// resize does near an edge, which widths are cached before a pane collapses
// and which widths a restore brings back.
//
// Coordinates are those of the splitter's inner area (its client area less
// the border on each side): x = 0 is the inner left edge, `Width()` the
// inner width. The bar is kBar pixels wide and lies between the columns, so
// column 0 spans [0, bar) and column 1 [bar + kBar, width).
//
// The lengths below are pixels at 96 DPI. A splitter drawn at another DPI
// uses them scaled (Metrics::ForDpi): a wider bar and taller buttons at
// 150 %, and the edges that collapse a pane as far away for the hand as at
// 100 %.
//
// Private to the library: the window class (splitter.h) keeps a Model and
// turns its answers into window positions.
#pragma once

#include "quorvel/common/box.h"
#include "quorvel/common/dpi_rules.h"

namespace qv::splitter {

// The bar between the columns, and the gap it leaves between the panes.
inline constexpr int kBar = 12;

// The collapse buttons on the bar: kButtonInset from each side of the bar,
// the upper one's top kButtonAboveMiddle above the bar's vertical middle,
// both kButtonHeight high, the lower one kButtonGap below the upper one.
inline constexpr int kButtonInset = 2;
inline constexpr int kButtonAboveMiddle = 80;
inline constexpr int kButtonHeight = 57;
inline constexpr int kButtonGap = 20;

// Drops of the bar. After a drag both panes are kept when each has at least
// kKeepMin; on a resize the left pane needs only kResizeKeepLeft. A left
// pane under kCollapseLeftBelow collapses; a drag that leaves more than
// kRightRoom on the right (and a left pane of kCollapseLeftBelow or more)
// takes the bar where it was dropped.
inline constexpr int kKeepMin = 21;
inline constexpr int kResizeKeepLeft = 16;
inline constexpr int kCollapseLeftBelow = 16;
inline constexpr int kRightRoom = 20;

// The first sizing widens a left pane under kFirstLeft and a right pane
// under kFirstRight to those widths.
inline constexpr int kFirstLeft = 15;
inline constexpr int kFirstRight = 20;

// The column-1 width kept while the right pane is collapsed (CacheSize).
inline constexpr int kCollapsedSliver = 3;

using Box = qv::Box;  // a rectangle in pixels, as a RECT

// The splitter's lengths at one DPI: the constants above, scaled.
struct Metrics {
    int bar = kBar;
    int buttonInset = kButtonInset;
    int buttonAboveMiddle = kButtonAboveMiddle;
    int buttonHeight = kButtonHeight;
    int buttonGap = kButtonGap;
    int keepMin = kKeepMin;
    int resizeKeepLeft = kResizeKeepLeft;
    int collapseLeftBelow = kCollapseLeftBelow;
    int rightRoom = kRightRoom;
    int firstLeft = kFirstLeft;
    int firstRight = kFirstRight;
    int collapsedSliver = kCollapsedSliver;

    // Every length scaled from 96 DPI to `dpi` (0 counts as 96).
    static Metrics ForDpi(unsigned dpi) noexcept;
    bool operator==(const Metrics&) const = default;
};

// The widths of column 0 and column 1.
struct Widths {
    int left = 0;
    int right = 0;
    bool operator==(const Widths&) const = default;
};

struct ButtonBoxes {
    Box upper;  // collapses and restores the left pane
    Box lower;  // collapses and restores the right pane
};

// The two buttons on `bar`.
ButtonBoxes ButtonRects(const Box& bar, const Metrics& lengths = Metrics{}) noexcept;

// Where a face of `width` x `height` goes on a button `area`: enlarged by
// `factor` (a whole multiple, pixel for pixel; below 1 counts as 1) and
// centred. A face larger than the button is centred all the same and cut at
// the button's edges: the library's faces carry a margin of the button's
// colour around their arrows, and only that margin is lost, where scaling
// the face down would drop rows and columns of the arrow itself. No face
// answers an empty box at the area's centre.
Box FaceBox(const Box& area, int width, int height, int factor) noexcept;

// What a drop of the bar at x does (also a resize, with the bar where the
// layout put it).
enum class Drop {
    KeepBoth,       // both panes stay: buttons shown, collapse flags cleared
    CollapseLeft,   // as a press of the upper button with both panes shown
    TakePosition,   // the bar stays where it was dropped, nothing else changes
    CollapseRight,  // as a press of the lower button with both panes shown
};

struct DropDecision {
    Drop action = Drop::KeepBoth;
    // The collapsing press finds both panes shown, whatever they were, so
    // that it collapses rather than restores.
    bool forceShown = false;
};

// The drop rules, in order, for a bar at x (unclamped) in an area `width`
// wide; left = x and right = width - x, each at least 0:
//  1. x inside the area, the bar still fits, left >= keepLeft and right >=
//     kKeepMin: keep both;
//  2. x < 1 or left < kCollapseLeftBelow: collapse the left pane;
//  3. x inside the area and right > kRightRoom: take the position;
//  4. otherwise collapse the right pane.
// The lengths are those of `lengths` (the constants at 96 DPI).
DropDecision DecideDrop(int x, int width, int keepLeft, const Metrics& lengths = Metrics{}) noexcept;

// The state flags of the splitter.
struct Flags {
    bool leftShown = true;   // both "shown" flags set: a press collapses
    bool rightShown = true;
    bool leftCollapsed = false;
    bool rightCollapsed = false;
    bool restoredByButton = false;
    bool BothShown() const noexcept { return leftShown && rightShown; }
};

// Whether some splitter of this process has made restore sizes with the
// thirds fallback. Records only: cached widths are used whenever a splitter
// has usable ones, also after this is set.
bool SizesMadeOnce() noexcept;
// Forgets it again (for tests).
void ForgetSizesMade() noexcept;

// One splitter's columns, bar, buttons and flags.
class Model {
public:
    // ---- DPI -------------------------------------------------------------------
    // The lengths for `dpi`, taken as they are: widths a host set stay, as
    // it sets them in the pixels of its own window. For a splitter that is
    // being made.
    void SetDpi(unsigned dpi) noexcept;
    // The splitter moved to `dpi`: the lengths for it, and every width kept
    // (wanted, minimum, cached) rescaled from the DPI before, so the panes
    // keep their shares; then lays out. Ends a drag (as CancelTrack).
    void ChangeDpi(unsigned dpi) noexcept;
    unsigned Dpi() const noexcept { return dpi_; }
    const Metrics& Lengths() const noexcept { return lengths_; }

    // ---- Area and layout ---------------------------------------------------
    // Takes a new inner size without running any rule (negative sizes are 0).
    void SetArea(int width, int height) noexcept;
    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }
    // The room both columns share: the width less the bar, at least 0.
    int Room() const noexcept;

    // 2 columns, or 1 after Toggle (the right pane is put away).
    int Columns() const noexcept { return columns_; }

    // A column's wanted width and minimum, as a host sets them; taken by the
    // next RecalcLayout. Column 0 wants a third of the width until it is set.
    void SetColumnInfo(int col, int ideal, int minimum) noexcept;
    // The width a column has in the last layout, and its minimum.
    int ColumnWidth(int col) const noexcept;
    int ColumnMin(int col) const noexcept;
    int ColumnIdeal(int col) const noexcept;

    // Lays the columns out: column 0 gets its wanted width within the room
    // (0 when that is below its minimum), column 1 the rest (when the rest is
    // below column 1's minimum, column 0 takes it all). With one column,
    // column 0 takes the whole width and there is no bar.
    void RecalcLayout() noexcept;
    bool HasBar() const noexcept { return columns_ >= 2; }
    int BarLeft() const noexcept { return barLeft_; }
    Box Bar() const noexcept;
    ButtonBoxes Buttons() const noexcept { return ButtonRects(Bar(), lengths_); }
    // Where the bar stands, as a screen reader hears it: the left pane's
    // share of the room in whole per cent (0 with the left pane collapsed,
    // 100 with the right one collapsed or without a bar).
    int LeftPercent() const noexcept;
    bool AnyCollapsed() const noexcept { return flags_.leftCollapsed || flags_.rightCollapsed; }
    bool UpperVisible() const noexcept { return HasBar() && upperVisible_; }
    bool LowerVisible() const noexcept { return HasBar() && lowerVisible_; }
    const Flags& State() const noexcept { return flags_; }
    // True once after each operation that set the buttons' faces again.
    bool TakeFacesDue() noexcept;

    // ---- The splitter's operations ----------------------------------------
    // Keeps the current widths as the widths to restore. While a pane is
    // collapsed the widths from before the collapse stay cached (a collapsed
    // layout is nothing to return to); the columns are written back in their
    // collapsed form instead: right collapsed, column 0 = column 1's width
    // less kCollapsedSliver (not below 0) and column 1 = kCollapsedSliver;
    // left collapsed, column 0 = 0. The write-back takes effect at the next
    // layout, which every caller here makes at once.
    void CacheSize() noexcept;
    Widths ReadCachedSize() const noexcept { return cached_; }
    // The widths a restore brings: the cached column 0 and the width less it.
    // With nothing usable cached (column 0 not cached, or no longer leaving
    // kKeepMin for column 1 beside the bar: the splitter was made narrower),
    // a third of the width and a third of the height, and then both panes
    // count as shown, the collapse flags are cleared and SizesMadeOnce() is
    // set. (A splitter of three columns would always answer thirds; this one
    // has two at most.)
    Widths MakeSplitSizes() noexcept;
    // Applies restore widths: negatives become 0; both 0 keeps the current
    // widths; then the columns take them, are laid out and cached. Answers
    // the widths applied in `widths`.
    void UpdateSizes(Widths& widths) noexcept;
    // Caches the widths, then gives the whole width to column 0 (closeRight)
    // or column 1, and lays out.
    void CloseVertSplitView(bool closeRight) noexcept;
    // The upper button: with both panes shown, collapse the left pane (only
    // the upper button stays visible); otherwise restore both.
    void BtnLeftPressed() noexcept;
    // The lower button: the mirror image, for the right pane.
    void BtnRightPressed() noexcept;
    // Puts the right pane away (one column) or brings it back.
    void Toggle() noexcept;

    // ---- Drops and resizes ---------------------------------------------------
    // The drop rules for a bar released at x (see DecideDrop); caches the
    // widths first. Answers what was done.
    Drop Release(int x, int keepLeft) noexcept;
    // A new inner size (WM_SIZE). The first one with some width widens a too
    // narrow pane (kFirstLeft, kFirstRight) and hides its button; every later
    // one runs the drop rules with kResizeKeepLeft, the bar of a collapsed
    // pane counting as at its edge.
    void Resize(int width, int height) noexcept;

    // ---- Tracking (the bar follows the mouse or the arrow keys) --------------
    void BeginTrack() noexcept;
    bool Tracking() const noexcept { return tracking_; }
    // Moves the bar to x (kept inside the room) and lays out.
    void TrackTo(int x) noexcept;
    // Puts the widths from before the drag back, then runs the drop rules
    // for x: a restore after a collapse returns to the widths before the drag.
    Drop EndTrack(int x) noexcept;
    void CancelTrack() noexcept;

private:
    struct Column {
        int ideal = -1;  // -1: a third of the width at the next layout
        int minimum = 0;
        int current = 0;
    };
    void TakePosition(int x) noexcept;
    void ShowBoth() noexcept;
    void Restore() noexcept;

    unsigned dpi_ = kBaseDpi;
    Metrics lengths_;
    int width_ = 0;
    int height_ = 0;
    int columns_ = 2;
    Column col_[2];
    int barLeft_ = 0;
    Widths cached_;
    Flags flags_;
    bool upperVisible_ = true;
    bool lowerVisible_ = true;
    bool facesDue_ = false;
    bool sized_ = false;
    bool tracking_ = false;
    int idealBeforeTrack_ = 0;
};

}  // namespace qv::splitter
