// The left half of "Buttons": script button groups in rows and in a column,
// and script containers framing a host's field with the "..." button. The
// page hears the groups' click message and the containers' button presses
// the way a host dialog does, and says below which script would run.
#include "gallery.h"

#include <commctrl.h>

#include <memory>
#include <string>

#include "quorvel/controls/script_buttons.h"

namespace gallery {

namespace {

constexpr UINT_PTR kPageSubclass = 0x5C1B;
constexpr UINT kRowsId = 3100, kColumnId = 3101;
constexpr UINT kFieldRight = 3110, kFieldBottom = 3111;
constexpr UINT kBoxRight = 3120, kBoxBottom = 3121;
constexpr UINT kButtonRight = 3130, kButtonBottom = 3131;

// Shows in the status line what the host would do on a click.
LRESULT CALLBACK PageProc(HWND page, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR ref) {
    const HWND status = reinterpret_cast<HWND>(ref);
    switch (msg) {
    case XBaseScriptBtn_Group::kMsgScriptButtonClicked: {
        const std::wstring text = L"The host runs script " + std::to_wstring(lp) + L".";
        ::SetWindowTextW(status, text.c_str());
        return 0;
    }
    case WM_COMMAND:
        if (HIWORD(wp) == BN_CLICKED && (LOWORD(wp) == kButtonRight || LOWORD(wp) == kButtonBottom)) {
            const std::wstring text = L"The host runs the script of field " +
                                      std::to_wstring(LOWORD(wp) == kButtonRight ? 1 : 2) + L".";
            ::SetWindowTextW(status, text.c_str());
            return 0;
        }
        break;
    case WM_NCDESTROY: ::RemoveWindowSubclass(page, &PageProc, kPageSubclass); break;
    default: break;
    }
    return ::DefSubclassProc(page, msg, wp, lp);
}

HWND Field(HWND page, const wchar_t* text, UINT id) {
    HWND edit = ::CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", text, WS_CHILD | WS_TABSTOP | ES_AUTOHSCROLL, 0, 0, 10,
                                  10, page, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
    ::SendMessageW(edit, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), TRUE);
    return edit;
}

struct ScriptObjects : PageObjects {
    XBaseScriptBtn_Group rows, column;
    std::unique_ptr<XScriptContainer> right, bottom;
};

}  // namespace

std::unique_ptr<PageObjects> BuildScriptButtonsHalf(HWND page) {
    auto objects = std::make_unique<ScriptObjects>();
    const HFONT font = GalleryFont();

    AddLabel(page, L"Script group in rows: as many in a row as fit, all as wide as the widest.", 16, 12, 460, 20);
    XBaseScriptBtn_Group& rows = objects->rows;
    if (rows.Create(kRowsId, RECT{16, 36, 476, 136}, font, page)) {
        const std::pair<int, const wchar_t*> commands[] = {{101, L"Recalculate"}, {102, L"Check capacity"},
                                                          {103, L"Export"},      {104, L"Print"},
                                                          {105, L"Mail"},        {106, L"Archive"}};
        for (const auto& [id, text] : commands) rows.AddScriptCommand(id, text);
        rows.SetAlignment(XBaseScriptBtn_Group::kAlignHorizontal);
        rows.UpdateSize();
        // The host gives the rows the width it has and a height for two rows.
        ::SetWindowPos(rows, nullptr, 0, 0, 460, 70, SWP_NOMOVE | SWP_NOZORDER);
    }

    AddLabel(page, L"Script group in one column:", 16, 124, 200, 20);
    XBaseScriptBtn_Group& column = objects->column;
    if (column.Create(kColumnId, RECT{16, 148, 216, 298}, font, page)) {
        for (const auto& [id, text] : {std::pair{201, L"New order"}, {202, L"Copy plan"}, {203, L"Release"}})
            column.AddScriptCommand(id, text);
        column.SetAlignment(XBaseScriptBtn_Group::kAlignVertical);
        column.UpdateSize();
        ::SetWindowPos(column, nullptr, 0, 0, column.GetMaxWidth(), column.GetMaxHeight() + 30,
                       SWP_NOMOVE | SWP_NOZORDER);
    }

    AddLabel(page, L"Script containers: a host's field with its \"...\" button, on the right and below.", 236, 124,
             240, 36);
    objects->right = std::make_unique<XScriptContainer>(Field(page, L"Order 4711", kFieldRight),
                                                        XScriptContainer::PosRight, kButtonRight);
    objects->right->Create(RECT{236, 164, 476, 224}, page, kBoxRight);
    XScriptContainer::ConstructParam below;
    below.pControl = Field(page, L"Plan 2024-07", kFieldBottom);
    below.nButtonId = kButtonBottom;
    below.ePosition = XScriptContainer::PosBottom;
    below.nMargin = 8;
    objects->bottom = std::make_unique<XScriptContainer>(below);
    objects->bottom->Create(RECT{236, 232, 476, 312}, page, kBoxBottom);

    HWND status = AddLabel(page, L"Press a script button: the page answers as a host would.", 16, 330, 460, 20);
    ::SetWindowSubclass(page, &PageProc, kPageSubclass, reinterpret_cast<DWORD_PTR>(status));
    return objects;
}

}  // namespace gallery
