// qv::Box: the one rectangle of the portable model code, in pixels with right
// and bottom exclusive, as a RECT is. Layout rules of every family use it, so
// a window class converts to and from RECT in one way.
#pragma once

namespace qv {

struct Box {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int Width() const noexcept { return right - left; }
    int Height() const noexcept { return bottom - top; }
    bool operator==(const Box&) const = default;
};

}  // namespace qv
