// "Buttons": script button groups and the script container on the left, the
// button container and colour buttons sharing one palette on the right.
#include "gallery.h"

namespace gallery {

namespace {
struct ButtonsPage : PageObjects {
    std::unique_ptr<PageObjects> scripts;
    std::unique_ptr<PageObjects> colours;
};
}  // namespace

std::unique_ptr<PageObjects> BuildButtonsPage(HWND page) {
    auto objects = std::make_unique<ButtonsPage>();
    objects->scripts = BuildScriptButtonsHalf(page);
    objects->colours = BuildColourButtonsHalf(page);
    return objects;
}

}  // namespace gallery
