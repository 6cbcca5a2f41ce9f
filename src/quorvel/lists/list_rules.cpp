#include "quorvel/lists/list_rules.h"

namespace qv::lists {

bool AcceptsEntry(int columnCount, bool hasImageList, int image, std::size_t valueCount) noexcept {
    if (columnCount <= 0) return false;
    if (hasImageList ? image == -1 : image >= 0) return false;
    const int expected = columnCount - (hasImageList ? 1 : 0);
    return expected > 0 && valueCount == static_cast<std::size_t>(expected);
}

Box HeaderTextBox(Box item, int off, bool pressed, bool sortColumn) noexcept {
    Box text = item;
    if (pressed) {
        text.left += 1;
        text.top += 2;
        text.right += 1;
    }
    if (sortColumn) text.right -= 3 * off;
    text.left += off;
    text.right -= off;
    return text;
}

SortArrow SortArrowGeometry(bool ascending, int right, int bottom, int off) noexcept {
    const int r = right, b = bottom;
    SortArrow arrow;
    if (ascending) {
        arrow.highlight = Stroke{{r - 2 * off, off - 1}, {{{r - 3 * off / 2, b - off}, {r - 5 * off / 2 - 2, b - off}}}, 2};
        arrow.shadow = Stroke{{r - 5 * off / 2 - 1, b - off - 1}, {{{r - 2 * off, off - 2}, {}}}, 1};
    } else {
        arrow.highlight = Stroke{{r - 3 * off / 2, off - 1}, {{{r - 2 * off - 1, b - off + 1}, {}}}, 1};
        arrow.shadow = Stroke{{r - 2 * off - 1, b - off}, {{{r - 5 * off / 2 - 1, off - 1}, {r - 3 * off / 2, off - 1}}}, 2};
    }
    return arrow;
}

std::vector<ExportColumn> ExportPlan(const std::vector<int>& order, bool hasImageList) {
    std::vector<ExportColumn> plan;
    plan.reserve(order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        plan.push_back(ExportColumn{static_cast<int>(i), order[i], hasImageList && i == 0});
    return plan;
}

}  // namespace qv::lists
