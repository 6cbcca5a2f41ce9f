#include "quorvel/controls/script_button_rules.h"

#include <algorithm>
#include <utility>

namespace qv::script {

Metrics Metrics::ForDpi(unsigned dpi) noexcept {
    return Metrics{ScaleToDpi(kTextPadX, dpi), ScaleToDpi(kTextPadY, dpi), ScaleToDpi(kSpacing, dpi)};
}

Size ButtonSize(int textCx, int textCy, const Metrics& m) { return Size{textCx + m.padX, textCy + m.padY}; }

Size GroupContent(const std::vector<Size>& buttons, bool horizontal, const Metrics& m) {
    Size content;
    for (const Size& b : buttons) {
        content.cx = std::max(content.cx, b.cx);
        if (horizontal)
            content.cy += b.cy;
        else if (b.cy != 0)
            content.cy += b.cy + m.spacing;
    }
    return content;
}

SizeLimits GroupLimits(Size content, bool horizontal, const Metrics& m) {
    SizeLimits limits;
    limits.minCx = content.cx + m.spacing;
    limits.minCy = content.cy + m.spacing;
    limits.maxCx = content.cx + (horizontal ? 2 * m.spacing : m.spacing);
    limits.maxCy = content.cy + m.spacing;
    return limits;
}

std::vector<Box> AlignVertical(const std::vector<int>& heights, int width, int /*cx*/, int cy, const Metrics& m) {
    std::vector<Box> boxes;
    if (heights.empty()) return boxes;
    const int n = static_cast<int>(heights.size()) + 1;
    int total = heights.front();
    for (int h : heights) total += h;
    const int gap = (cy - total) / n;  // n is at least 2 here
    int y = m.spacing;
    for (int h : heights) {
        boxes.push_back(Box{0, y, width, h});
        y += h + gap;
    }
    return boxes;
}

std::vector<Box> AlignHorizontal(const std::vector<int>& heights, int width, int cx, int cy, const Metrics& m) {
    std::vector<Box> boxes;
    if (heights.empty()) return boxes;
    const int spacing = m.spacing;
    const int perRow = width + spacing > 0 ? cx / (width + spacing) : 0;

    // Count the rows and measure the widest one.
    int x = 0, row = 0, widest = 0, rows = 0, total = 0;
    for (int h : heights) {
        if (cx <= x + spacing + width) {
            widest = std::max(widest, row);
            x = 0;
            row = 0;
            total += h;
            ++rows;
        }
        row += width;
        x += width + spacing;
    }
    widest = std::max(widest, row);
    ++rows;
    total += heights.front();

    const int vgap = rows == 0 ? spacing : (cy - total) / rows;
    const int hgap = perRow == 0 ? spacing : (cx - widest) / perRow;

    x = 0;
    int y = spacing;
    for (int h : heights) {
        if (cx <= x + width) {
            x = 0;
            y += h + vgap;
        }
        boxes.push_back(Box{x, y, width, h});
        x += width + hgap;
    }
    return boxes;
}

ContainerParams ScaledParams(const ContainerParams& p, unsigned dpi) noexcept {
    const auto at = [dpi](int length) { return ScaleToDpi(length, dpi); };
    ContainerParams scaled = p;
    scaled.margin = at(p.margin);
    scaled.buttonCx = at(p.buttonCx);
    scaled.buttonCy = at(p.buttonCy);
    scaled.minCx = at(p.minCx);
    scaled.maxCx = at(p.maxCx);
    scaled.minCy = at(p.minCy);
    scaled.maxCy = at(p.maxCy);
    return scaled;
}

ContainerLayout LayoutContainer(int cx, int cy, Side side, const ContainerParams& p) {
    const int m = p.margin, bw = p.buttonCx, bh = p.buttonCy;
    Rect c;
    switch (side) {
        case Side::Top: c = Rect{m, m + bh + m, cx - m, cy - m}; break;
        case Side::Right: c = Rect{m, m, cx - m - bw - m, cy - m}; break;
        case Side::Bottom: c = Rect{m, m, cx - m, cy - m - bh - m}; break;
        case Side::Left: c = Rect{m + bw + m, m, cx - m, cy - m}; break;
    }
    if (p.limits) {
        const int h = c.bottom - c.top;
        if (h > p.maxCy) c.bottom = c.top + p.maxCy;
        else if (h < p.minCy) c.bottom = c.top + p.minCy;
        const int w = c.right - c.left;
        if (w > p.maxCx) c.right = c.left + p.maxCx;
        else if (w < p.minCx) c.right = c.left + p.minCx;
        if (c.left > c.right) std::swap(c.left, c.right);
        if (c.top > c.bottom) std::swap(c.top, c.bottom);
    }
    Rect b;
    switch (side) {
        case Side::Top: b.left = (cx - bw) / 2; b.top = m; break;
        case Side::Right: b.left = c.right + m; b.top = m; break;
        case Side::Bottom: b.left = (cx - bw) / 2; b.top = c.bottom + m; break;
        case Side::Left: b.left = m; b.top = m; break;
    }
    b.right = b.left + bw;
    b.bottom = b.top + bh;
    return ContainerLayout{c, b};
}

}  // namespace qv::script
