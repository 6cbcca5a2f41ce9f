// The report list's rules without a window: which rows it accepts, the
// alignment codes it hands to a print-list object, the order in which it
// hands the columns over, how a comparison of two values becomes a sort
// order, where the sort arrow and the title go in a header item at any DPI,
// how a cell's text is found in a row, and how a screen reader hears a row.
//
// Private to the library: the report list (list_ctrl.h) asks here; the
// header-format and text-drawing bits are the platform's values, spelled out
// so that this file needs no <windows.h>.
#pragma once

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "quorvel/common/box.h"
#include "quorvel/common/dpi_rules.h"

namespace qv::lists {

// ---- Rows ---------------------------------------------------------------------

// The header item of the first value column: with an image list, column 0
// shows only the row's image and carries no value.
constexpr int FirstValueColumn(bool hasImageList) noexcept { return hasImageList ? 1 : 0; }

// Whether a row of `valueCount` values with image `image` fits a list of
// `columnCount` header items: a list needs columns; with an image list every
// row names an image (-1 is refused), without one none may (any image from 0
// up is refused); and there is exactly one value per value column, at least
// one.
bool AcceptsEntry(int columnCount, bool hasImageList, int image, std::size_t valueCount) noexcept;

// A row: the values by column key. The key of a column is its header item's
// index when the list first took a row, and stays with the item when the
// user drags it elsewhere.
template <class Value>
using RowMap = std::map<int, Value>;

// The value of the column with key `*key` in `row`, or null when the row or
// the key is missing or the row has no such column.
template <class Value>
const Value* FindCell(const RowMap<Value>* row, const int* key) {
    if (!row || !key) return nullptr;
    const auto it = row->find(*key);
    return it == row->end() ? nullptr : &it->second;
}

// A cell's text for the list's text request: the value found as above,
// written into `buffer` by `toText(value, buffer)`. Answers the buffer's
// characters, or null (and `buffer` untouched) when there is no value. The
// characters stay valid until the buffer changes, that is, until the next
// request.
template <class Value, class ToText>
const wchar_t* CellText(const RowMap<Value>* row, const int* key, std::wstring& buffer, ToText&& toText) {
    const Value* value = FindCell(row, key);
    if (!value) return nullptr;
    toText(*value, buffer);
    return buffer.c_str();
}

// ---- Sorting ------------------------------------------------------------------

// VarCmp's answers: less, equal, greater, and "a null is involved".
enum : long { kCmpLess = 0, kCmpEqual = 1, kCmpGreater = 2, kCmpNull = 3 };

// The list's order of two rows from the comparison of their values: -1
// when the first comes first, 1 when it comes last, 0 when they are equal or
// cannot be ordered (types that do not compare, a null against a value, a
// failed comparison). Descending swaps -1 and 1.
constexpr int SortOrder(long comparison, bool ascending) noexcept {
    const int order = comparison == kCmpLess ? -1 : comparison == kCmpGreater ? 1 : 0;
    return ascending ? order : -order;
}

// ---- Header items -------------------------------------------------------------

// Header item format bits (HDF_*) and text-drawing flags (DT_*).
enum : int { kHdfRight = 0x0001, kHdfCenter = 0x0002, kHdfOwnerDraw = 0x8000 };
enum : unsigned {
    kDtCenter = 0x0001,
    kDtRight = 0x0002,
    // DT_END_ELLIPSIS | DT_NOPREFIX | DT_NOCLIP | DT_SINGLELINE | DT_VCENTER
    kDtHeaderText = 0x8924,
};

// Alignment codes of the print-list object: left, the bitmap column, right,
// centre. (2 is never used.)
enum : int { kAlignLeft = 0, kAlignBitmap = 1, kAlignRight = 3, kAlignCenter = 4 };

// The alignment code of a header item's format; centre wins over right.
constexpr int AlignmentFromFormat(int format) noexcept {
    return (format & kHdfCenter) ? kAlignCenter : (format & kHdfRight) ? kAlignRight : kAlignLeft;
}

// The DrawText flags of a header item's title: one line, vertically centred,
// cut with an ellipsis, aligned as the item's format says.
constexpr unsigned HeaderTextFlags(int format) noexcept {
    return kDtHeaderText | ((format & kHdfCenter) ? kDtCenter : (format & kHdfRight) ? kDtRight : 0u);
}

// Where a header item's title goes in the item's rectangle `item`: moved
// right and down while the item is held down (1 and 2 pixels at 96 DPI,
// scaled to `dpi`), kept clear of the sort arrow in the sort column, and
// `off` in from both sides. The title is drawn only when the result is not
// empty (left < right).
Box HeaderTextBox(Box item, int off, bool pressed, bool sortColumn, unsigned dpi = kBaseDpi) noexcept;

// The sort arrow's inset `off`, which also sets its size: twice the width of
// a blank in the header's font, so the arrow grows with the titles, and at
// least 4 pixels at 96 DPI scaled to `dpi`, so that a header whose font was
// made for 96 DPI still shows an arrow one can see on a high-DPI screen.
int SortArrowInset(int blankWidth, unsigned dpi) noexcept;

// The width of the arrow's strokes: one pixel at 96 DPI, scaled.
int SortArrowPen(unsigned dpi) noexcept;

// The sort arrow of the sort column, drawn in two strokes near the item's
// right edge: a highlight stroke and a shadow stroke, each a line from
// `from` through one or two further points (LineTo, so each end point is
// left out). `right` and `bottom` are the item's right and bottom edges;
// `off` is the inset (SortArrowInset) and `pen` the strokes' width
// (SortArrowPen): the strokes meet at the corners, a pen's width apart.
// Ascending points up, descending points down.
struct Point {
    int x = 0;
    int y = 0;
    bool operator==(const Point&) const = default;
};
struct Stroke {
    Point from;
    std::array<Point, 2> to{};
    int count = 0;  // how many of `to` are used
};
struct SortArrow {
    Stroke highlight;
    Stroke shadow;
};
SortArrow SortArrowGeometry(bool ascending, int right, int bottom, int off, int pen = 1) noexcept;

// ---- Print export -------------------------------------------------------------

// The texts of the image column in an export.
inline constexpr wchar_t kBitmapColumnName[] = L"Bitmap";
inline constexpr wchar_t kBitmapCellText[] = L"BitmapData";

// One display column of an export: its position (0 is the leftmost as the
// user ordered the columns), the header item shown there, and whether it is
// the image column.
struct ExportColumn {
    int position = 0;
    int headerItem = 0;
    bool bitmap = false;
    bool operator==(const ExportColumn&) const = default;
};

// The columns in display order from the header's order array: with an
// image list, the leftmost position is the image column.
std::vector<ExportColumn> ExportPlan(const std::vector<int>& order, bool hasImageList);

// The alignment code of a cell of `column`. The image column is 1; with an
// image list the other cells take their header item's alignment (`format`,
// or left when it could not be read); without an image list every cell is
// left-aligned, whatever the header says.
constexpr int CellAlignment(const ExportColumn& column, bool hasImageList, bool formatRead, int format) noexcept {
    if (column.bitmap) return kAlignBitmap;
    if (!hasImageList || !formatRead) return kAlignLeft;
    return AlignmentFromFormat(format);
}

// ---- Reading rows aloud ---------------------------------------------------------

// Which cells a screen reader hears for a row: the first column the user
// sees names the row; the others, in the order the user sees them, make its
// value. `order` is the header's order array (header items left to right);
// `skipped` a header item that is never read (the image column), or -1.
struct RowReading {
    int nameItem = -1;  // -1: no column to read
    std::vector<int> valueItems;
    bool operator==(const RowReading&) const = default;
};
RowReading RowReadingPlan(const std::vector<int>& order, int skipped);

// One cell of a row's value: its column's title and its text.
struct ReadCell {
    std::wstring title;
    std::wstring text;
};
// A row's value as a reader hears it: "Title: text" for each cell, joined by
// "; ". A cell without text is left out (a reader would only say the title);
// a cell whose column has no title is read by its text alone.
std::wstring RowValueText(const std::vector<ReadCell>& cells);

// A row's name from its naming cell: the text without the blanks around it
// (an indent shows a level on the screen; a reader hears the level
// otherwise, or not at all, but never as silence).
std::wstring RowNameText(const std::wstring& text);

}  // namespace qv::lists
