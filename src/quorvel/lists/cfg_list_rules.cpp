#include "quorvel/lists/cfg_list_rules.h"

namespace qv::lists {

int CompareText(std::wstring_view a, std::wstring_view b) noexcept {
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < n; ++i) {
        // Compared as unsigned 16-bit code units, whatever the width of wchar_t.
        const auto ca = static_cast<unsigned>(a[i]), cb = static_cast<unsigned>(b[i]);
        if (ca != cb) return ca < cb ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

namespace {

void SortRecursive(SortableRows& rows, bool ascending, int low, int high) {
    int lo = low;
    int hi = high;
    const std::wstring pivot = rows.Text(lo + (hi - lo) / 2);
    // Before the pivot: below it ascending, above it descending.
    auto before = [ascending](int cmp) { return ascending ? cmp < 0 : cmp > 0; };
    while (lo <= hi) {
        while (lo < high && before(CompareText(rows.Text(lo), pivot))) ++lo;
        while (hi > low && before(CompareText(pivot, rows.Text(hi)))) --hi;
        if (lo <= hi) {
            if (lo != hi && CompareText(rows.Text(lo), rows.Text(hi)) != 0) rows.Swap(lo, hi);
            ++lo;
            --hi;
        }
    }
    if (low < hi) SortRecursive(rows, ascending, low, hi);
    if (lo < high) SortRecursive(rows, ascending, lo, high);
}

}  // namespace

bool SortRowRange(SortableRows& rows, bool ascending, int low, int high) {
    if (low < 0 || high <= low) return false;
    SortRecursive(rows, ascending, low, high);
    return true;
}

}  // namespace qv::lists
