#include "quorvel/views/button_container_rules.h"

#include <algorithm>

namespace qv::buttons {

std::size_t LongestCaption(const std::vector<std::wstring>& captions) noexcept {
    std::size_t longest = 0;
    for (const std::wstring& caption : captions) longest = std::max(longest, caption.size());
    return longest;
}

Extent ButtonSize(Extent text, int margin) noexcept { return {text.cx + 2 * margin, text.cy + 2 * margin}; }

Box InnerArea(Box client, int spacing) noexcept {
    return {client.left + spacing, client.top + spacing, client.right - spacing, client.bottom - spacing};
}

Placement PlaceButtons(Orientation orientation, Box area, Extent size, int spacing, std::size_t count) {
    Placement result;
    if (orientation == Orientation::kHorizontal) {
        if (size.cy > area.Height()) return result;
        const int top = area.top + (area.Height() - size.cy) / 2;
        int x = area.left;
        for (std::size_t i = 0; i < count; ++i) {
            if (x + size.cx > area.right) return result;
            result.boxes.push_back({x, top, x + size.cx, top + size.cy});
            x += size.cx + spacing;
        }
    } else {
        if (size.cx > area.Width()) return result;
        // A column sits one spacing further in from the left than the area
        // (twice the spacing from the container's edge), as hosts expect.
        const int left = area.left + spacing;
        int y = area.top;
        for (std::size_t i = 0; i < count; ++i) {
            if (y + size.cy > area.bottom) return result;
            result.boxes.push_back({left, y, left + size.cx, y + size.cy});
            y += size.cy + spacing;
        }
    }
    result.complete = true;
    return result;
}

Extent MinimumSize(Orientation orientation, std::size_t count, Extent size, int spacing) noexcept {
    const int n = static_cast<int>(count);
    if (orientation == Orientation::kHorizontal) return {n * (size.cx + spacing) + spacing, size.cy + 2 * spacing};
    return {size.cx + 2 * spacing, n * (size.cy + spacing) + spacing};
}

}  // namespace qv::buttons
