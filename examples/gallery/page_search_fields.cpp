// The search-fields page: folder, file and file-open fields, each with a
// path that exists and one that does not (the field then shows the system's
// message instead, selected, for the user to type over), the read-only
// variants, and fields in a host's colours. "..." opens the picker; the
// button with the bitmap opens the file with its application.
#include <memory>
#include <string>
#include <vector>

#include "gallery.h"
#include "quorvel/windows/search_field.h"

namespace gallery {

namespace {

constexpr UINT kFirstId = 9300;

struct SearchObjects : PageObjects {
    std::vector<std::unique_ptr<XBaseSearchCtrl>> fields;
};

std::wstring WindowsFolder() {
    wchar_t folder[MAX_PATH + 1] = {};
    const UINT n = ::GetWindowsDirectoryW(folder, MAX_PATH);
    return n > 0 && n <= MAX_PATH ? std::wstring(folder, n) : std::wstring(L"C:\\Windows");
}

std::wstring OwnPath() {
    std::vector<wchar_t> path(32768, L'\0');
    const DWORD n = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return std::wstring(path.data(), n);
}

}  // namespace

void ShowSearchFolderDialogForShot(HWND page) {
    HWND field = ::GetDlgItem(page, kFirstId);
    HWND browse = field ? ::GetDlgItem(field, XBaseSearchCtrl::kBrowseId) : nullptr;
    if (!browse || !InScreenshotMode()) return;
    ShootNextDialog(L"search-fields-folder-dialog");
    ::SendMessageW(browse, BM_CLICK, 0, 0);
}

std::unique_ptr<PageObjects> BuildSearchFieldsPage(HWND page) {
    auto objects = std::make_unique<SearchObjects>();
    const HFONT font = GalleryFont();
    const std::wstring windows = WindowsFolder();
    const std::wstring winIni = windows + L"\\win.ini";
    const std::wstring missingFolder = L"C:\\Plans\\Hall 7 \u2013 \u041f\u043b\u0430\u043d";
    const std::wstring missingFile = windows + L"\\no such order.txt";

    struct Row {
        const wchar_t* label;
        std::unique_ptr<XBaseSearchCtrl> field;
        std::wstring text;
        COLORREF text_colour, bk_colour;  // CLR_INVALID: the field's defaults
    };
    Row rows[] = {
        {L"Folder (XSearchFolderCtrl)", std::make_unique<XSearchFolderCtrl>(), windows, CLR_INVALID, CLR_INVALID},
        {L"Folder that does not exist", std::make_unique<XSearchFolderCtrl>(), missingFolder, CLR_INVALID,
         CLR_INVALID},
        {L"File (XSearchFileCtrl)", std::make_unique<XSearchFileCtrl>(), OwnPath(), CLR_INVALID, CLR_INVALID},
        {L"File that does not exist", std::make_unique<XSearchFileCtrl>(), missingFile, CLR_INVALID, CLR_INVALID},
        {L"File with open button (XSearchFileOpenCtrl)", std::make_unique<XSearchFileOpenCtrl>(), winIni,
         CLR_INVALID, CLR_INVALID},
        {L"Read-only folder", std::make_unique<XReadOnlySearchFolderCtrl>(), windows, CLR_INVALID, CLR_INVALID},
        {L"Read-only file", std::make_unique<XReadOnlySearchFileCtrl>(), winIni, CLR_INVALID, CLR_INVALID},
        {L"Read-only file with open button", std::make_unique<XReadOnlySearchFileOpenCtrl>(), winIni, CLR_INVALID,
         CLR_INVALID},
        {L"Mandatory file, host's colours", std::make_unique<XSearchFileCtrl>(), winIni, RGB(0, 0, 140),
         RGB(255, 250, 205)},
        {L"Changed folder, host's colours", std::make_unique<XSearchFolderCtrl>(), windows, RGB(140, 0, 0),
         RGB(220, 240, 255)},
        {L"Read-only file, host's colours", std::make_unique<XReadOnlySearchFileOpenCtrl>(), winIni,
         RGB(0, 90, 0), RGB(225, 245, 225)},
    };

    AddLabel(page, L"Leave a field with a wrong path and it shows why; \"...\" picks a path.", 16, 12, 700, 18);
    int y = 40;
    UINT id = kFirstId;
    for (Row& row : rows) {
        AddLabel(page, row.label, 16, y + 4, 290, 18);
        XBaseSearchCtrl& field = *row.field;
        // The field is created empty and the path set afterwards, so it is
        // checked the way a host's value would be.
        if (field.Create(L"", XBaseSearchCtrl::kStyle, RECT{310, y, 860, y + 24}, font, page, id++)) {
            if (row.bk_colour != CLR_INVALID) {
                field.SetTextColor(row.text_colour);
                field.SetBkColor(row.bk_colour);
            }
            ::SetWindowTextW(field, row.text.c_str());
        }
        objects->fields.push_back(std::move(row.field));
        y += 34;
    }
    return objects;
}

}  // namespace gallery
