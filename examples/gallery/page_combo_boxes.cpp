// The "Combo boxes" page: choosing from long and short lists, and the
// configuration tool's plain-text list.
//
// Left, a filtering combo box over 5 000 parts: typing "hex" keeps the parts
// that begin with it, a pattern such as "*m8*zinc" ("*" any run, "?" one
// character) those that match it. Below, check combo boxes whose field shows
// the checked entries; "Early" is in the list twice and both share one check.
// Right, the configuration list: a click on a title sorts by that column's
// texts (upper case first), a button copies it through a print-list object.
#include <quorvel/lists/cfg_list.h>
#include <quorvel/lists/check_combo.h>
#include <quorvel/lists/custom_combo.h>
#include <quorvel/lists/print_list_object.h>

#include <commctrl.h>

#include <memory>
#include <string>

#include "gallery.h"

namespace gallery {

namespace {

constexpr UINT kPartsId = 6000;
constexpr UINT kShiftsId = 6001;
constexpr UINT kColourShiftsId = 6002;
constexpr UINT kSettingsId = 6003;

struct ComboObjects : PageObjects {
    XCustomCombo parts;
    XCheckComboBox shifts;
    XCheckComboBoxColor colourShifts;
    XCfgListCtrl settings;
};

void FillParts(XCustomCombo& combo) {
    static const wchar_t* const kinds[] = {L"Hex bolt", L"Socket screw", L"Washer", L"Hex nut", L"Threaded rod"};
    static const wchar_t* const sizes[] = {L"M4", L"M5", L"M6", L"M8", L"M10", L"M12", L"M16", L"M20"};
    static const wchar_t* const finishes[] = {L"zinc", L"black oxide", L"stainless A2", L"stainless A4", L"plain"};
    DWORD value = 1;
    for (int length = 10; length <= 250 && value <= 5000; length += 2) {
        for (const wchar_t* kind : kinds) {
            for (const wchar_t* size : sizes) {
                if (value > 5000) break;
                wchar_t text[96];
                swprintf(text, 96, L"%ls %lsx%d %ls", kind, size, length, finishes[(value / 3) % 5]);
                combo.AddEntry(text, value++);
            }
        }
    }
}

void FillShifts(XCheckComboBox& combo) {
    combo.AddString(L"Early", true);
    combo.AddString(L"Late", false);
    combo.AddString(L"Night", true);
    combo.AddString(L"Weekend", false);
    combo.AddString(L"Early", true);  // the same text: one shared check
}

void FillSettings(XCfgListCtrl& list) {
    list.InsertColumn(0, L"Key", LVCFMT_LEFT, 150);
    list.InsertColumn(1, L"Section", LVCFMT_LEFT, 100);
    list.InsertColumn(2, L"Value", LVCFMT_RIGHT, 80);
    struct Setting {
        const wchar_t* key;
        const wchar_t* section;
        const wchar_t* value;
    };
    static const Setting settings[] = {
        {L"tooltipdelaytime", L"Common", L"500"},          {L"TooltipMaxTipWidth", L"Common", L"400"},
        {L"decimalplacestimes", L"valueadded", L"2"},      {L"decimalplacespercentage", L"valueadded", L"1"},
        {L"bitmaps", L"valueadded", L"on"},                {L"contextHelpOnCustomizationObjects", L"customization", L"1"},
        {L"Language", L"Common", L"EN"},                   {L"autosave", L"Common", L"10"},
        {L"PrintFooter", L"print", L"yes"},                {L"paper", L"print", L"A4"},
    };
    int row = 0;
    for (const Setting& s : settings) {
        const int item = list.InsertItem(row++, s.key);
        list.SetItemText(item, 1, s.section);
        list.SetItemText(item, 2, s.value);
    }
}

}  // namespace

std::unique_ptr<PageObjects> BuildComboBoxesPage(HWND page) {
    auto objects = std::make_unique<ComboObjects>();
    HFONT font = GalleryFont();

    AddLabel(page,
             L"Filtering combo box, 5 000 parts: type the beginning (\"hex\"), or a pattern with * and ? "
             L"(\"*m8*zinc\", \"washer m1?x*\").",
             16, 8, 440, 36);
    objects->parts.Create(L"", kPartsId, RECT{16, 50, 336, 300}, font, page);
    FillParts(objects->parts);
    objects->parts.CreateTooltip(L"<b>Part</b><br>Type the beginning of a name, or a pattern:<br>"
                                 L"<b>*</b> any run of characters, <b>?</b> one character.");

    AddLabel(page, L"Check combo boxes: the field lists the checked shifts.", 16, 440, 440, 20);
    objects->shifts.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL, RECT{16, 466, 236, 600}, page, kShiftsId);
    objects->shifts.SetFont(font);
    FillShifts(objects->shifts);
    objects->colourShifts.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL, RECT{256, 466, 476, 600}, page,
                                 kColourShiftsId);
    objects->colourShifts.SetFont(font);
    objects->colourShifts.SetTextColor(RGB(0, 0, 128));
    objects->colourShifts.SetBkColor(RGB(255, 250, 205));
    FillShifts(objects->colourShifts);

    AddLabel(page, L"Configuration list: click a title to sort by its texts (upper case first).", 520, 8, 460, 36);
    objects->settings.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SHOWSELALWAYS,
                             RECT{520, 50, 880, 300}, page, kSettingsId);
    objects->settings.SetFont(font);
    objects->settings.SetExtendedStyle(LVS_EX_FULLROWSELECT | LVS_EX_HEADERDRAGDROP);
    FillSettings(objects->settings);
    objects->settings.SortCtrl(0, true);
    return objects;
}

// For the picture: a pattern typed into the parts field, its list dropped.
void ShowCombosForShot(HWND page) {
    HWND combo = ::GetDlgItem(page, kPartsId);
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    if (!::GetComboBoxInfo(combo, &info) || !info.hwndItem) return;
    ::SetFocus(info.hwndItem);
    for (const wchar_t* c = L"*m8*zinc"; *c; ++c) ::SendMessageW(info.hwndItem, WM_CHAR, *c, 1);
}

}  // namespace gallery
