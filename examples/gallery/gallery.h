// The gallery: every control of the library on one window, one page per
// control family, created the way a host creates them.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace gallery {

// What a page builder leaves behind: the library objects it created, kept
// alive as long as the page.
struct PageObjects {
    virtual ~PageObjects() = default;
};

struct PageInfo {
    const wchar_t* title;
    // Creates the page's controls on `page` (a child window filling the
    // client area below the tabs). Null: the page says what will come.
    std::function<std::unique_ptr<PageObjects>(HWND page)> build;
    const wchar_t* comingText;
    // Called in screenshot mode after the page is shown, to open what a
    // picture should show (a tooltip, a drop-down); may be null.
    std::function<void(HWND page)> beforeShot;
};

// All pages, in tab order.
const std::vector<PageInfo>& Pages();

// Page builders, one file per family.
std::unique_ptr<PageObjects> BuildFoundationPage(HWND page);
std::unique_ptr<PageObjects> BuildPatternPage(HWND page);
std::unique_ptr<PageObjects> BuildTooltipPage(HWND page);
void ShowTooltipForShot(HWND page);

std::unique_ptr<PageObjects> BuildBaseControlsPage(HWND page);
std::unique_ptr<PageObjects> BuildDatesPage(HWND page);
std::unique_ptr<PageObjects> BuildNumericPage(HWND page);
std::unique_ptr<PageObjects> BuildSplitterPage(HWND page);
std::unique_ptr<PageObjects> BuildRichTextPage(HWND page);
std::unique_ptr<PageObjects> BuildSearchFieldsPage(HWND page);
// Opens the first field's folder picker for a picture of its own.
void ShowSearchFolderDialogForShot(HWND page);
std::unique_ptr<PageObjects> BuildScrollDialogPage(HWND page);
std::unique_ptr<PageObjects> BuildViewersPage(HWND page);
std::unique_ptr<PageObjects> BuildValueAddedPage(HWND page);
void ShowValueAddedForShot(HWND page);
// The "Buttons" page, built in two halves: script buttons on the left
// (x below 500), the button container and colour buttons on the right.
std::unique_ptr<PageObjects> BuildButtonsPage(HWND page);
std::unique_ptr<PageObjects> BuildScriptButtonsHalf(HWND page);
std::unique_ptr<PageObjects> BuildColourButtonsHalf(HWND page);
std::unique_ptr<PageObjects> BuildLineNumbersPage(HWND page);
std::unique_ptr<PageObjects> BuildListsPage(HWND page);
// Sorts the orders by their due date and copies the shifts, for the picture.
void ShowListsForShot(HWND page);
std::unique_ptr<PageObjects> BuildComboBoxesPage(HWND page);
// Types a pattern into the filtering combo box, for the picture.
void ShowCombosForShot(HWND page);
std::unique_ptr<PageObjects> BuildFontColourPage(HWND page);
// Opens a chooser's font and colour dialog for a picture of its own.
void ShowFontColourDialogForShot(HWND page);

// Shared helpers for page builders.
// Sets the gallery's tooltip settings (once per process).
void EnableGalleryTooltips();
HFONT GalleryFont();
// Screenshot mode only: writes the client area of `window` (any window on
// screen, a pop-up included) as name.png in the screenshot folder;
// false outside screenshot mode.
bool WriteWindowShot(HWND window, const wchar_t* name);
bool InScreenshotMode();
// Screenshot mode only: the next dialog of this thread that shows (a modal
// one the caller opens next) is written as name.png and cancelled.
void ShootNextDialog(const wchar_t* name);
HWND AddLabel(HWND page, const wchar_t* text, int x, int y, int w, int h, DWORD style = 0);

}  // namespace gallery
