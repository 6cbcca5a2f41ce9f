#include "quorvel/tooltip/placement.h"

#include <algorithm>

#include "quorvel/common/dpi_rules.h"

namespace qv {
namespace {

int NormalDirection(int direction) noexcept { return direction >= 0 && direction <= 3 ? direction : kTipBelowRight; }
bool IsAbove(int direction) noexcept { return direction == kTipAboveLeft || direction == kTipAboveRight; }
bool IsLeft(int direction) noexcept { return direction == kTipAboveLeft || direction == kTipBelowLeft; }

// Takes the anchor strip off the side of `rect` that faces the cursor.
void RemoveAnchorStrip(TipRect& rect, int direction, const TipShape& shape) noexcept {
    if (IsAbove(direction)) {
        rect.bottom -= shape.anchorHeight;
    } else {
        rect.top += shape.anchorHeight;
    }
}

void RemoveShadow(TipRect& rect, std::uint32_t styles, const TipShape& shape) noexcept {
    if (styles & kTipStyleShadow) {
        rect.right -= shape.shadowX;
        rect.bottom -= shape.shadowY;
    }
}

}  // namespace

TipShape TipShapeForDpi(const TipShape& shape, unsigned dpi) noexcept {
    TipShape scaled;
    scaled.marginX = ScaleToDpi(shape.marginX, dpi);
    scaled.marginY = ScaleToDpi(shape.marginY, dpi);
    scaled.shadowX = ScaleToDpi(shape.shadowX, dpi);
    scaled.shadowY = ScaleToDpi(shape.shadowY, dpi);
    scaled.anchorWidth = ScaleToDpi(shape.anchorWidth, dpi);
    scaled.anchorHeight = ScaleToDpi(shape.anchorHeight, dpi);
    scaled.anchorOffset = ScaleToDpi(shape.anchorOffset, dpi);
    scaled.borderX = ScaleToDpi(shape.borderX, dpi);
    scaled.borderY = ScaleToDpi(shape.borderY, dpi);
    return scaled;
}

int TipOwnerOffset(int kind, unsigned dpi) noexcept {
    switch (kind) {
    case kTipOwnerEdit: return ScaleToDpi(8, dpi);
    case kTipOwnerComboBox:
    case kTipOwnerPrompt: return ScaleToDpi(20, dpi);
    default: return 0;
    }
}

std::wstring WrapToolText(std::wstring_view text, int wrapWidth) {
    std::wstring out(text);
    if (wrapWidth <= 0 || text.size() <= static_cast<std::size_t>(wrapWidth)) return out;
    const std::size_t step = static_cast<std::size_t>(wrapWidth) + 1;
    const std::wstring_view br = L"<br>";
    if (static_cast<std::size_t>(wrapWidth) + 1 < br.size()) {
        // So narrow that a break lands inside the "<br>" before it: insert
        // one by one (quadratic, but only for such absurd widths).
        for (std::size_t at = step - 1; at < text.size(); at += step) out.insert(at, br);
        return out;
    }
    // Every break lands at or after the end of the previous "<br>", so the
    // result is built in one pass: break i stands before character
    // i * step - 1 - (i - 1) * 4 of `text`.
    out.clear();
    out.reserve(text.size() + (text.size() / step + 1) * br.size());
    std::size_t from = 0;
    for (std::size_t at = step - 1, i = 0; at < text.size(); at += step, ++i) {
        const std::size_t cut = at - i * br.size();
        out.append(text.substr(from, cut - from));
        out.append(br);
        from = cut;
    }
    out.append(text.substr(from));
    return out;
}

std::wstring UnwrapToolText(std::wstring_view wrapped, int wrapWidth) {
    const std::wstring_view br = L"<br>";
    std::wstring text(wrapped);
    // Below 4 the breaks land inside one another; such a text stays as it is.
    if (wrapWidth < static_cast<int>(br.size()) || wrapped.size() <= static_cast<std::size_t>(wrapWidth)) return text;
    // Wrapping a text of length n inserts n / (wrapWidth + 1) breaks, break i
    // at i * (wrapWidth + 1) - 1 of the result (the later ones come after
    // it): find the count that accounts for the length, take the breaks out
    // from the last, and keep the result only if wrapping makes it again.
    const std::size_t step = static_cast<std::size_t>(wrapWidth) + 1;
    for (std::size_t count = 1; count * br.size() < wrapped.size(); ++count) {
        if ((wrapped.size() - count * br.size()) / step != count) continue;
        for (std::size_t i = count; i >= 1; --i) {
            const std::size_t at = i * step - 1;
            if (wrapped.substr(at, br.size()) != br) return std::wstring(wrapped);
            text.erase(at, br.size());
        }
        return WrapToolText(text, wrapWidth) == wrapped ? text : std::wstring(wrapped);
    }
    return text;
}

TipSize InfoBoxSize(TipSize textSize, std::uint32_t styles, const TipShape& shape) noexcept {
    TipSize size{textSize.cx + 2 * shape.marginX, textSize.cy + shape.anchorHeight + 2 * shape.marginY};
    if (styles & kTipStyleShadow) {
        size.cx += shape.shadowX;
        size.cy += shape.shadowY;
    }
    return size;
}

InfoBoxPlacement CalculateInfoBoxRect(TipSize screen, TipPoint cursor, const TipRect& box, int direction,
                                      std::uint32_t styles, const TipShape& shape) noexcept {
    InfoBoxPlacement result{box, NormalDirection(direction)};
    TipRect& rect = result.rect;
    const int width = box.Width();
    const int height = box.Height();

    const auto fitsHorizontally = [&](int dir) {
        int left = 0;
        int right = 0;
        if (IsLeft(dir)) {
            right = std::min(cursor.x + shape.anchorOffset, screen.cx);
            left = right - width;
        } else {
            left = std::max(cursor.x - shape.anchorOffset, 0);
            right = left + width;
        }
        if (left < 0 || right > screen.cx) return false;
        rect.left = left;
        rect.right = right;
        return true;
    };
    const auto fitsVertically = [&](int dir) {
        const int top = IsAbove(dir) ? cursor.y - height : cursor.y;
        const int bottom = top + height;
        if (top < 0 || bottom > screen.cy) return false;
        rect.top = top;
        rect.bottom = bottom;
        return true;
    };

    // A box that fits on neither side keeps the extent it came with, but the
    // direction stays flipped: the anchor and the text strip follow it.
    if (!fitsHorizontally(result.direction)) {
        result.direction ^= 1;
        fitsHorizontally(result.direction);
    }
    if (!fitsVertically(result.direction)) {
        result.direction ^= 2;
        fitsVertically(result.direction);
    }
    // Boxes left of the cursor move by the shadow, so that the body, not the
    // shadow, ends at the cursor.
    if ((styles & kTipStyleShadow) && IsLeft(result.direction)) {
        rect.left += shape.shadowX;
        rect.right += shape.shadowX;
        rect.top += shape.shadowY;
        rect.bottom += shape.shadowY;
    }
    return result;
}

TipRegionShape CalculateRegionShape(const TipRect& placed, TipPoint cursor, int direction, std::uint32_t styles,
                                    const TipShape& shape) noexcept {
    direction = NormalDirection(direction);
    TipRect box{0, 0, placed.Width(), placed.Height()};
    RemoveShadow(box, styles, shape);

    TipRegionShape region;
    region.body = {box.left, box.top, box.right + 1, box.bottom + 1};
    RemoveAnchorStrip(region.body, direction, shape);
    if (styles & kTipStyleAnchor) {
        // The pointer's base lies on the edge where the strip was cut, at the
        // anchor offset from the side nearer the cursor; its tip is the cursor.
        const int y = IsAbove(direction) ? region.body.bottom : region.body.top;
        const int x = IsLeft(direction) ? box.right - shape.anchorOffset : box.left + shape.anchorOffset;
        const int x2 = IsLeft(direction) ? x - shape.anchorWidth : x + shape.anchorWidth;
        region.hasAnchor = true;
        region.anchor = {TipPoint{x, y}, TipPoint{x2, y}, TipPoint{cursor.x - placed.left, cursor.y - placed.top}};
    }
    if (styles & kTipStyleShadow) {
        region.hasShadow = true;
        region.shadowOffset = {shape.shadowX, shape.shadowY};
    }
    return region;
}

TipRect CalculateTextRect(const TipRect& client, TipSize textSize, int direction, std::uint32_t styles,
                          const TipShape& shape) noexcept {
    TipRect rect = client;
    RemoveShadow(rect, styles, shape);
    rect.left += shape.marginX;
    rect.right -= shape.marginX;
    rect.top += shape.marginY;
    rect.bottom -= shape.marginY;
    RemoveAnchorStrip(rect, NormalDirection(direction), shape);
    if (styles & kTipStyleBottom) {
        rect.top = rect.bottom - textSize.cy;
    } else if (styles & kTipStyleVCenter) {
        rect.top += (rect.Height() - textSize.cy) / 2;
    }
    return rect;
}

}  // namespace qv
