// The right half of "Buttons": a button container and two colour buttons
// sharing the palette.
#include <quorvel/views/button_container.h>
#include <quorvel/views/color_button.h>

#include <memory>

#include "gallery.h"

namespace gallery {

namespace {

struct ColourButtons : PageObjects {
    std::unique_ptr<XButtonContainer> row;
    std::unique_ptr<XButtonContainer> column;
    std::unique_ptr<XColorBtn> text;
    std::unique_ptr<XColorBtn> fill;
    std::unique_ptr<XColorBtn> disabled;
};

}  // namespace

std::unique_ptr<PageObjects> BuildColourButtonsHalf(HWND page) {
    auto objects = std::make_unique<ColourButtons>();
    HFONT font = GalleryFont();

    AddLabel(page, L"Button container: equal buttons from descriptions, laid out on resize", 500, 16, 480, 20);
    const std::vector<XButtonDescription> bar{
        {L"New", L"Create an order", 4001},
        {L"Open...", L"Open an existing order", 4002},
        {L"Save", L"Save the order", 4003},
        {L"Close", L"Close without saving", 4004},
    };
    objects->row = std::make_unique<XButtonContainer>(font, XButtonContainer::kHorizontal, bar);
    objects->row->Create(RECT{500, 40, 980, 86}, page, 4000);

    AddLabel(page, L"A column too short shows the buttons that fit", 500, 100, 400, 20);
    objects->column = std::make_unique<XButtonContainer>(font, XButtonContainer::kVertical, bar);
    objects->column->Create(RECT{500, 124, 620, 210}, page, 4010);

    AddLabel(page, L"Colour buttons sharing one palette (click to choose)", 500, 280, 460, 20);
    const COLORREF brand[] = {RGB(0x1E, 0x90, 0xFF), RGB(0xFF, 0x8C, 0x00)};  // first two cells of every grid
    objects->text = std::make_unique<XColorBtn>(RGB(0x1E, 0x90, 0xFF), brand, 2);
    objects->fill = std::make_unique<XColorBtn>(RGB(255, 255, 0));
    AddLabel(page, L"Text", 500, 312, 60, 20);
    objects->text->Create(L"Text colour", RECT{560, 306, 640, 330}, page, 4020);
    AddLabel(page, L"Fill", 660, 312, 40, 20);
    objects->fill->Create(L"Fill colour", RECT{700, 306, 780, 330}, page, 4021);
    objects->disabled = std::make_unique<XColorBtn>();
    AddLabel(page, L"Disabled", 800, 312, 60, 20);
    objects->disabled->Create(L"Unused colour", RECT{870, 306, 950, 330}, page, 4022);
    objects->disabled->EnableWindow(false);
    return objects;
}

}  // namespace gallery
