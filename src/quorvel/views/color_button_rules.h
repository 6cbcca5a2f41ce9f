// The colour button's palette and its grid, without a window: the shared
// 20-colour palette with its count of users, how the arrow keys move among
// the cells of the colour grid, the names a screen reader hears, and where
// the button's and the grid's parts go at any DPI.
//
// Colours are COLORREF values (0x00BBGGRR) held in 32-bit integers.
//
// Private to the library: the colour button (color_button.h) keeps the
// palette alive while it exists and asks here where the focus goes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "quorvel/common/box.h"
#include "quorvel/common/dpi_rules.h"

namespace qv::colors {

inline constexpr int kPaletteSize = 20;
// The grid: four cells per row, five rows, in reading order; after the cells
// comes the "Other..." button below the grid, which counts as index kOther.
inline constexpr int kGridColumns = 4;
inline constexpr int kGridRows = kPaletteSize / kGridColumns;
inline constexpr int kOther = kPaletteSize;

// The palette every colour button starts with: the 20 static colours of the
// default system palette.
std::uint32_t DefaultColor(int index) noexcept;

// The shared palette. The first colour button of the process creates it
// with the default colours, every further one counts itself in, and the
// last one to go frees it; a button created after that starts again from
// the defaults. AcquirePalette answers false (and counts nothing) when the
// palette could not be made.
bool AcquirePalette() noexcept;
void ReleasePalette() noexcept;
int PaletteUsers() noexcept;
// Colour `index` of the shared palette; the default colour when no palette
// exists or the index is outside it.
std::uint32_t PaletteColor(int index) noexcept;
// Overwrites the palette from its start with up to kPaletteSize colours
// (more are ignored); every button offers the new colours from then on.
// Nothing happens while no palette exists.
void SetPaletteColors(const std::uint32_t* colors, std::size_t count) noexcept;
// The first cell holding `color`, or -1.
int FindPaletteColor(std::uint32_t color) noexcept;

// A key in the grid.
enum class GridKey { kLeft, kRight, kUp, kDown, kHome, kEnd };

// The index that has the focus after `key` at index `from` (a cell or
// kOther). Left and Right go in reading order, from the end of one row to
// the start of the next, and Right from the last cell reaches "Other...".
// Up and Down move by a row; Down from the bottom row reaches "Other...",
// and Up from "Other..." goes back to the bottom row in `column`. Home and
// End go to the first and the last cell. At an edge the focus stays.
int MoveInGrid(int from, GridKey key, int column) noexcept;

// "#RRGGBB" for a COLORREF.
std::wstring HexText(std::uint32_t color);
// The English name of one of the default palette's colours ("Red",
// "Money green"), or null for any other colour.
const wchar_t* ColorName(std::uint32_t color) noexcept;

// ---- The button's face at any DPI ----------------------------------------
//
// The face is laid out in 96-DPI pixels and every length is scaled to the
// button's DPI; lines are `unit` pixels thick (1 at 96 DPI, 2 at 144 and
// 192), so the frame, the engraved separator and the outline keep their
// weight next to the scaled text of the form.

// The three shades of the 3D frame.
enum class Shade { kDarkShadow, kShadow, kHighlight };
struct Band {
    Box box;
    Shade shade;
    bool operator==(const Band&) const = default;
};

struct ButtonFace {
    int unit = 1;
    // The item, moved one unit right and down while the button is held.
    Box content;
    // The two-line 3D frame, in drawing order (later bands cover earlier
    // ones at the corners): raised at rest (dark shadow outside and shadow
    // inside along the bottom and right, highlight along the top and left),
    // sunken while held (the other way round).
    std::vector<Band> frame;
    // The engraved separator before the arrow: a shadow line and, right of
    // it, a highlight line, each `unit` wide.
    Box separatorShadow;
    Box separatorHighlight;
    // The drop-down arrow, rows top to bottom, each one pixel high and two
    // pixels narrower than the one above, ending in a single pixel: a sharp
    // triangle at every size (rows of 5, 3 and 1 pixels at 96 DPI, 9 down
    // to 1 at 192). A disabled button shows the rightmost `unit` pixels of
    // each row in white, for an engraved look.
    std::vector<Box> arrow;
    // The swatch: a black outline `unit` wide with the colour inside.
    Box swatch;
    // The track of the dotted focus frame: dots of unit x unit every
    // 2 * unit pixels from (left, top) along the four sides, the last ones
    // at the column `right` and the row `bottom` (inclusive).
    Box focus;
};

// The face of a button whose item rectangle is `item`, at `dpi`. At 96 DPI:
// frame lines 1 pixel, separator at right - 11 and right - 10 from top + 4
// to bottom - 4, arrow rows of 5, 3 and 1 pixels centred on right - 6 from
// half the height - 1, swatch from (left + 5, top + 4) to (right - 15,
// bottom - 4), focus dots from left + 3, top + 3 to right - 4, bottom - 4.
ButtonFace LayOutButton(const Box& item, bool pressed, unsigned dpi) noexcept;

// ---- The grid at any DPI ---------------------------------------------------
//
// The grid's cells and "Other..." in its client area, at 96 DPI: cells of
// 19 x 16 pixels, 2 apart across and 3 apart down, 2 from the edges;
// "Other..." 82 x 18 below them, 4 under the last row; 86 x 119 in all.
// Every length is scaled to the grid's DPI.
struct GridLayout {
    Box cells[kPaletteSize];  // in reading order
    Box other;
    int width = 0;             // the client area
    int height = 0;
    int unit = 1;              // the thickness of a cell's frames
    int inset = 2;             // from a cell's edge to its swatch (one unit more while held)
};
GridLayout LayOutGrid(unsigned dpi) noexcept;

}  // namespace qv::colors
