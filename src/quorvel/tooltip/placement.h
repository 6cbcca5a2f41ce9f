// Tooltip geometry: wrapping long tool texts, the size of the box, where the
// box goes on the screen, the shape of its window region and where its text
// sits. Plain integers and rectangles; the tooltip window turns them into
// window positions and regions.
//
// Every length here is in pixels of the screen the tooltip shows on. The
// host sets the tooltip's sizes (margins, shadow, anchor, border) as it
// would at 96 DPI; TipShapeForDpi scales them to the DPI of the window the
// tooltip points at, so the box keeps its proportions next to a text that
// the DPI made larger.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "quorvel/tooltip/markup.h"

namespace qv {

// Style bits of a tooltip.
inline constexpr std::uint32_t kTipStyleAnchor = 0x1;        // balloon pointer at the cursor
inline constexpr std::uint32_t kTipStyleShadow = 0x2;        // drop shadow right and below
inline constexpr std::uint32_t kTipStyleVCenter = 0x8;       // text centred vertically
inline constexpr std::uint32_t kTipStyleBottom = 0x10;       // text at the bottom
inline constexpr std::uint32_t kTipStyleShowInactive = 0x100;  // show when the application is not active

// Where the box sits relative to the cursor.
enum TipDirection : int {
    kTipAboveLeft = 0,
    kTipAboveRight = 1,
    kTipBelowLeft = 2,
    kTipBelowRight = 3,  // the default; any value outside 0..3 is taken as this
};

// The size-table entries that shape the box, with their defaults.
struct TipShape {
    int marginX = 3;       // horizontal text margin
    int marginY = 1;       // vertical text margin
    int shadowX = 3;       // shadow offset
    int shadowY = 3;
    int anchorWidth = 0;   // balloon pointer
    int anchorHeight = 0;
    int anchorOffset = 0;  // distance of the pointer from the box side
    int borderX = 1;       // width of the frame's vertical sides
    int borderY = 1;       // height of its horizontal sides
    bool operator==(const TipShape&) const = default;
};

// `shape` given at 96 DPI, at `dpi`: every length scaled (rounded half away
// from zero), so a 1-pixel border becomes 2 pixels at 144 and 192 DPI and a
// length of 0 stays 0.
TipShape TipShapeForDpi(const TipShape& shape, unsigned dpi) noexcept;

// What the tooltip's owner is, for where the box goes below the cursor.
enum TipOwnerKind : int {
    kTipOwnerOther = 0,
    kTipOwnerEdit = 1,      // below the edit's line: 8 pixels at 96 DPI
    kTipOwnerComboBox = 2,  // below the combo box's field: 20 pixels
    kTipOwnerPrompt = 3,    // below the prompt's line: 20 pixels
};

// How far below the placed box's top the box is moved for an owner of
// `kind` at `dpi`; 0 for other owners and unknown kinds.
int TipOwnerOffset(int kind, unsigned dpi) noexcept;

// Inserts "<br>" into a tool text longer than `wrapWidth` characters at
// positions i * (wrapWidth + 1) - 1 of the growing text (i = 1, 2, ...) while
// the position is below the length of `text`. Each break is counted as one
// character although "<br>" has four, so the first line holds wrapWidth
// characters and every further one wrapWidth - 3; mark-up counts as text.
// A wrapWidth of 0 or less leaves the text alone.
std::wstring WrapToolText(std::wstring_view text, int wrapWidth);

// The text before WrapToolText(text, wrapWidth) inserted its breaks, for a
// screen reader, which should hear the words whole, not cut where the box
// wrapped them. A text that wrapping could not have made (a tool record the
// host filled in itself, a break the host wrote where wrapping would have
// put one but with the wrong length) comes back unchanged.
std::wstring UnwrapToolText(std::wstring_view wrapped, int wrapWidth);

// Size of the box for a measured text: text + 2 margins, + anchor height,
// + shadow offsets with the shadow style.
TipSize InfoBoxSize(TipSize textSize, std::uint32_t styles, const TipShape& shape) noexcept;

struct InfoBoxPlacement {
    TipRect rect;   // in screen coordinates
    int direction;  // 0..3, after any flips
    bool operator==(const InfoBoxPlacement&) const = default;
};

// Places `box` (only its width and height matter, unless a test fails: see
// below) at `cursor` on a screen of `screen` pixels, in `direction`.
// Horizontally the box ends at cursor.x + anchorOffset (capped at the screen
// width) for directions 0 and 2, and starts at cursor.x - anchorOffset (at
// least 0) for 1 and 3; if it leaves the screen the direction flips (0<->1,
// 2<->3) and is tried once more, and if that fails too the box keeps the
// horizontal extent of `box` while the flipped direction stays. Vertically
// likewise: ending at cursor.y for 0 and 1, starting there for 2 and 3,
// flipping 0<->2, 1<->3. With the shadow style and a final direction of 0 or
// 2 the box moves by the shadow offsets.
InfoBoxPlacement CalculateInfoBoxRect(TipSize screen, TipPoint cursor, const TipRect& box, int direction,
                                      std::uint32_t styles, const TipShape& shape) noexcept;

// The window region of a placed box, in window coordinates (origin at the
// top-left of `placed`).
//   body:   the box without the shadow offsets (right and bottom) and without
//           the anchor strip (bottom for directions 0 and 1, top for 2 and 3),
//           with right and bottom already + 1: CreateRectRgn(body...).
//   anchor: with the anchor style, a triangle from two points on the body's
//           edge at the strip to the cursor: CreatePolygonRgn, RGN_OR.
//   shadow: with the shadow style, a copy of body + anchor moved by
//           shadowOffset is joined too; the shadow alone is what is filled
//           with the shadow colour.
struct TipRegionShape {
    TipRect body;
    bool hasAnchor = false;
    std::array<TipPoint, 3> anchor{};
    bool hasShadow = false;
    TipPoint shadowOffset;
    bool operator==(const TipRegionShape&) const = default;
};

// `cursor` is in the coordinates of `placed` (screen coordinates).
TipRegionShape CalculateRegionShape(const TipRect& placed, TipPoint cursor, int direction, std::uint32_t styles,
                                    const TipShape& shape) noexcept;

// The rectangle the text is drawn in, inside the window's client rectangle:
// without the shadow offsets (shadow style), the margins and the anchor strip;
// then the text goes to the bottom (style 0x10) or is centred vertically
// (style 0x8), else stays at the top.
TipRect CalculateTextRect(const TipRect& client, TipSize textSize, int direction, std::uint32_t styles,
                          const TipShape& shape) noexcept;

}  // namespace qv
