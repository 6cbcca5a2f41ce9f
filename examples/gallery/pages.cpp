#include "gallery.h"

namespace gallery {

const std::vector<PageInfo>& Pages() {
    static const std::vector<PageInfo> pages = {
        {L"Foundation", BuildFoundationPage, nullptr, nullptr},
        {L"Patterns", BuildPatternPage, nullptr, nullptr},
        {L"Numeric entry", BuildNumericPage, nullptr, nullptr},
        {L"Dates and times", BuildDatesPage, nullptr, nullptr},
        {L"Tooltips", BuildTooltipPage, nullptr, ShowTooltipForShot},
        {L"Base controls", BuildBaseControlsPage, nullptr, nullptr},
        {L"Lists", BuildListsPage, nullptr, ShowListsForShot},
        {L"Value added", BuildValueAddedPage, nullptr, ShowValueAddedForShot},
        {L"Viewers", BuildViewersPage, nullptr, nullptr},
        {L"Search fields", BuildSearchFieldsPage, nullptr, ShowSearchFolderDialogForShot},
        {L"Splitter", BuildSplitterPage, nullptr, nullptr},
        {L"Line numbers", BuildLineNumbersPage, nullptr, nullptr},
        {L"Buttons", BuildButtonsPage, nullptr, nullptr},
        {L"Combo boxes", BuildComboBoxesPage, nullptr, ShowCombosForShot},
        {L"Font and colour", BuildFontColourPage, nullptr, ShowFontColourDialogForShot},
        {L"Rich text", BuildRichTextPage, nullptr, nullptr},
        {L"Scrolling dialog", BuildScrollDialogPage, nullptr, nullptr},
    };
    return pages;
}

}  // namespace gallery
