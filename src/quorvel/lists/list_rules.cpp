#include "quorvel/lists/list_rules.h"

namespace qv::lists {

bool AcceptsEntry(int columnCount, bool hasImageList, int image, std::size_t valueCount) noexcept {
    if (columnCount <= 0) return false;
    if (hasImageList ? image == -1 : image >= 0) return false;
    const int expected = columnCount - (hasImageList ? 1 : 0);
    return expected > 0 && valueCount == static_cast<std::size_t>(expected);
}

Box HeaderTextBox(Box item, int off, bool pressed, bool sortColumn, unsigned dpi) noexcept {
    Box text = item;
    if (pressed) {
        const int across = ScaleToDpi(1, dpi);
        text.left += across;
        text.top += ScaleToDpi(2, dpi);
        text.right += across;
    }
    if (sortColumn) text.right -= 3 * off;
    text.left += off;
    text.right -= off;
    return text;
}

int SortArrowInset(int blankWidth, unsigned dpi) noexcept {
    const int fromFont = 2 * (blankWidth > 0 ? blankWidth : 0);
    const int least = ScaleToDpi(4, dpi);
    return fromFont > least ? fromFont : least;
}

int SortArrowPen(unsigned dpi) noexcept {
    const int pen = ScaleToDpi(1, dpi);
    return pen > 0 ? pen : 1;
}

SortArrow SortArrowGeometry(bool ascending, int right, int bottom, int off, int pen) noexcept {
    const int r = right, b = bottom, p = pen > 0 ? pen : 1;
    SortArrow arrow;
    if (ascending) {
        arrow.highlight = Stroke{{r - 2 * off, off - p}, {{{r - 3 * off / 2, b - off}, {r - 5 * off / 2 - 2 * p, b - off}}}, 2};
        arrow.shadow = Stroke{{r - 5 * off / 2 - p, b - off - p}, {{{r - 2 * off, off - 2 * p}, {}}}, 1};
    } else {
        arrow.highlight = Stroke{{r - 3 * off / 2, off - p}, {{{r - 2 * off - p, b - off + p}, {}}}, 1};
        arrow.shadow = Stroke{{r - 2 * off - p, b - off}, {{{r - 5 * off / 2 - p, off - p}, {r - 3 * off / 2, off - p}}}, 2};
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

RowReading RowReadingPlan(const std::vector<int>& order, int skipped) {
    RowReading plan;
    for (const int item : order) {
        if (item == skipped) continue;
        if (plan.nameItem < 0) plan.nameItem = item;
        else plan.valueItems.push_back(item);
    }
    return plan;
}

std::wstring RowValueText(const std::vector<ReadCell>& cells) {
    std::wstring value;
    for (const ReadCell& cell : cells) {
        if (cell.text.empty()) continue;
        if (!value.empty()) value += L"; ";
        if (!cell.title.empty()) {
            value += cell.title;
            value += L": ";
        }
        value += cell.text;
    }
    return value;
}

std::wstring RowNameText(const std::wstring& text) {
    const auto first = text.find_first_not_of(L' ');
    if (first == std::wstring::npos) return {};
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

}  // namespace qv::lists
