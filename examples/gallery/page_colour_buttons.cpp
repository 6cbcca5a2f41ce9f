// The right half of "Buttons": a button container and two colour buttons
// sharing the palette.
#include "gallery.h"

namespace gallery {

std::unique_ptr<PageObjects> BuildColourButtonsHalf(HWND page) {
    AddLabel(page, L"Button container and colour buttons: coming.", 500, 16, 460, 20);
    return nullptr;
}

}  // namespace gallery
