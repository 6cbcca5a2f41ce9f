// The configuration list's rules without a window: the order of two cell
// texts, the quicksort that puts a range of rows in that order, and the
// direction a click on a column title sorts in.
//
// Private to the library: the configuration list (cfg_list.h) asks here,
// through a small view of its rows (the text of a row in the sort column, and
// a swap of two whole rows), so the sort itself runs and is tested without a
// list view.
#pragma once

#include <string>
#include <string_view>

namespace qv::lists {

// Ordinal order of two texts, character code by character code: negative,
// zero or positive. No case folding, so "B" comes before "a".
int CompareText(std::wstring_view a, std::wstring_view b) noexcept;

// The rows a sort works on.
class SortableRows {
public:
    virtual ~SortableRows() = default;
    // The text of row `row` in the sort column.
    virtual std::wstring Text(int row) = 0;
    // Exchanges rows `a` and `b` completely.
    virtual void Swap(int a, int b) = 0;
};

// Sorts rows `low` ... `high` of `rows` in place by their texts (CompareText),
// ascending or descending: a quicksort around the middle row's text that
// swaps two rows only when their texts differ, so rows with equal texts are
// never exchanged with each other at the same step, though their final order
// is not the input order. False (and nothing touched) for a range of one row
// or none (high <= low), or one that starts below 0.
bool SortRowRange(SortableRows& rows, bool ascending, int low, int high);

// The direction of a sort by a click on column `clicked`, after the last sort
// by `lastColumn` in direction `lastAscending` (-1: none yet): the same column
// again turns the direction round, any other column starts ascending.
constexpr bool ClickDirection(int lastColumn, bool lastAscending, int clicked) noexcept {
    return clicked == lastColumn ? !lastAscending : true;
}

}  // namespace qv::lists
