// The left half of "Buttons": script button groups in rows and in a column,
// and a script container.
#include "gallery.h"

namespace gallery {

std::unique_ptr<PageObjects> BuildScriptButtonsHalf(HWND page) {
    AddLabel(page, L"Script buttons: coming.", 16, 16, 460, 20);
    return nullptr;
}

}  // namespace gallery
