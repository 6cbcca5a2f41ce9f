// The arithmetic of the scrolling dialog, without a window: how far a dialog
// made smaller than its layout can scroll, which step each scroll-bar command
// and each wheel turn takes, and whether and where the size grip shows.
//
// Positions are counted in units: 8 pixels across, 4 pixels down at 96 DPI,
// scaled to the dialog's DPI (so a line takes the same share of a field at
// 150 % as at 100 %). A dialog scrolls as far as it lacks room: the excess
// of its layout's client size over its current one, in units (integer
// division, so a shortfall of less than one unit does not scroll).
//
// Private to the library: the window class (scroll_dialog.h) keeps a Model
// and turns its answers into scroll bars and ScrollWindow calls.
#pragma once

#include "quorvel/common/box.h"
#include "quorvel/common/dpi_rules.h"

namespace qv::scrolling {

inline constexpr int kUnitX = 8;  // pixels per horizontal unit at 96 DPI
inline constexpr int kUnitY = 4;  // pixels per vertical unit at 96 DPI
// A page across is always this many units; a page down is the whole
// vertical excess (at least one unit).
inline constexpr int kPageX = 8;

// The scroll-bar command codes, with the values the platform sends in the
// low word of WM_HSCROLL / WM_VSCROLL (line up = line left, top = left end).
enum Command : int {
    kLineBack = 0,
    kLineForward = 1,
    kPageBack = 2,
    kPageForward = 3,
    kThumbPosition = 4,
    kThumbTrack = 5,
    kToStart = 6,
    kToEnd = 7,
    kEndScroll = 8,
};

// One direction of scrolling.
struct Axis {
    int excess = 0;    // shortfall of the client size, in units (may be negative)
    int maximum = 0;   // the scroll range is 0..maximum
    int position = 0;  // 0..maximum
    bool operator==(const Axis&) const = default;
};

using Box = qv::Box;

// The dialog's scroll state between its layout (the client rectangle when it
// was initialised) and its current client rectangle.
class Model {
public:
    // Remembers the layout size, measured at `dpi`; positions back to 0.
    void Init(int layoutWidth, int layoutHeight, unsigned dpi = kBaseDpi) noexcept;

    // The dialog now draws at `dpi`: the layout size rescaled from the DPI
    // before (the system scales the dialog's fields with it), the units for
    // the new DPI, both positions back to 0 (the caller has scrolled the
    // contents back to the origin with Reset first). The excesses follow at
    // the next Resize.
    void ChangeDpi(unsigned dpi) noexcept;
    unsigned Dpi() const noexcept { return m_dpi; }
    // Pixels per unit at the dialog's DPI.
    int UnitX() const noexcept { return m_unitX; }
    int UnitY() const noexcept { return m_unitY; }

    // A new client size: the excesses and maxima, and each position kept
    // within its new range. Answers whether the size grip shows: only when
    // neither direction lacks a whole unit, the dialog is not maximised and
    // it can be resized at all.
    bool Resize(int clientWidth, int clientHeight, bool maximised, bool resizable = true) noexcept;

    // The client size once the scroll bars that a client area of `bareWidth`
    // x `bareHeight` without bars needs are shown: a bar takes `barWidth`
    // (the vertical one) or `barHeight` (the horizontal one) from the room,
    // which may make the other bar needed too. Measuring from the bare size
    // lets bars go again when the dialog grows back to its layout.
    struct Size {
        int width = 0;
        int height = 0;
        bool operator==(const Size&) const = default;
    };
    Size FitBars(int bareWidth, int bareHeight, int barWidth, int barHeight) const noexcept;

    // The step, in units, of a command on the vertical or horizontal bar,
    // already kept within the range (0 when it would leave it). `thumb` is
    // the thumb position that a thumb-track command carries.
    int VerticalStep(int command, int thumb) const noexcept;
    int HorizontalStep(int command, int thumb) const noexcept;

    // Takes a step: the new position, and the pixels the contents move
    // (negative: up or left). Steps are clamped again here.
    int ScrollVertical(int step) noexcept;
    int ScrollHorizontal(int step) noexcept;

    // Back to the origin: answers the pixels the contents move to get there.
    struct Shift {
        int dx = 0;
        int dy = 0;
        bool operator==(const Shift&) const = default;
    };
    Shift Reset() noexcept;

    const Axis& Horizontal() const noexcept { return m_h; }
    const Axis& Vertical() const noexcept { return m_v; }
    int LayoutWidth() const noexcept { return m_layoutWidth; }
    int LayoutHeight() const noexcept { return m_layoutHeight; }

private:
    unsigned m_dpi = kBaseDpi;
    int m_unitX = kUnitX;
    int m_unitY = kUnitY;
    int m_layoutWidth = 0;
    int m_layoutHeight = 0;
    Axis m_h;
    Axis m_v;
};

// Keeps `step` within -position .. maximum - position.
int ClampStep(const Axis& axis, int step) noexcept;

// The grip's place: its size, with its bottom-right corner on the client
// area's bottom-right corner.
Box GripBox(const Box& client, int gripWidth, int gripHeight) noexcept;

// Wheel turns to lines: `delta` is the wheel's turn (120 a notch, positive
// away from the user), `linesPerNotch` the user's setting. Turns smaller than
// a line are kept in `carry` until they add up. Answers the lines to scroll,
// positive downwards. A setting of 0 scrolls nothing; a negative one (a page
// a notch) is not handled here.
int WheelLines(int& carry, int delta, int linesPerNotch) noexcept;

}  // namespace qv::scrolling
