// The colour button's palette and its grid, without a window: the shared
// 20-colour palette with its count of users, how the arrow keys move among
// the cells of the colour grid, and the names a screen reader hears.
//
// Colours are COLORREF values (0x00BBGGRR) held in 32-bit integers.
//
// Private to the library: the colour button (color_button.h) keeps the
// palette alive while it exists and asks here where the focus goes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

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

}  // namespace qv::colors
