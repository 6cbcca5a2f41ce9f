// The arithmetic of the button container, without a window: one common size
// for all buttons, where each button goes in a row or a column, and the
// smallest container that shows them all.
//
// Private to the library: the window class (button_container.h) turns these
// answers into window positions.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "quorvel/common/box.h"

namespace qv::buttons {

enum class Orientation { kHorizontal = 0, kVertical = 1 };

using Box = qv::Box;  // a rectangle in pixels, as a RECT

struct Extent {
    int cx = 0;
    int cy = 0;
    bool operator==(const Extent&) const = default;
};

// The number of characters of the longest caption: the container measures
// that many "W"s, so that every caption fits whatever its letters.
std::size_t LongestCaption(const std::vector<std::wstring>& captions) noexcept;

// The button size: the measured text plus `margin` on every side.
Extent ButtonSize(Extent text, int margin) noexcept;

// The client area less `spacing` on every side.
Box InnerArea(Box client, int spacing) noexcept;

// Where the buttons go. `boxes` holds the buttons that fit, leading ones
// first; the others keep wherever they were. `complete` is false when a
// button did not fit (or none could be placed at all).
struct Placement {
    std::vector<Box> boxes;
    bool complete = false;
};

// A row: buttons centred vertically in `area`, from its left edge, `spacing`
// apart; nothing when a button is higher than the area.
// A column: buttons from the top of `area`, indented by a further `spacing`
// from its left edge, `spacing` apart; nothing when a button is wider than
// the area.
Placement PlaceButtons(Orientation orientation, Box area, Extent size, int spacing, std::size_t count);

// The smallest client size that lays out `count` buttons of `size`.
Extent MinimumSize(Orientation orientation, std::size_t count, Extent size, int spacing) noexcept;

}  // namespace qv::buttons
