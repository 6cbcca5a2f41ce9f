// The font and colour page: choosers as a host's form settings would use
// them: one as new, one with a font and colours chosen, one for a read-only
// field (no background to choose), each with a line that reads the choice
// back through the getters, HTML colour texts included. "..." opens the
// font and colour dialog.
#include <memory>
#include <string>
#include <vector>

#include "gallery.h"
#include "quorvel/controls/font_color.h"

namespace gallery {

namespace {

constexpr UINT kFirstId = 9500;
constexpr UINT_PTR kReadoutTimer = 1;

struct Row {
    std::unique_ptr<XBaseColorControlNew> chooser;
    HWND readout = nullptr;
};

struct FontColourObjects;
FontColourObjects* g_objects = nullptr;

struct FontColourObjects : PageObjects {
    HWND page = nullptr;
    std::vector<Row> rows;
    ~FontColourObjects() override {
        if (page) ::KillTimer(page, kReadoutTimer);
        if (g_objects == this) g_objects = nullptr;
    }
};

std::wstring Describe(const XBaseColorControlNew& c) {
    std::wstring style;
    if (c.IsFontBold()) style += L", bold";
    if (c.IsFontItalic()) style += L", italic";
    if (c.IsFontUnderlined()) style += L", underlined";
    return c.GetFontName() + L", " + std::to_wstring(c.GetFontSize()) + style + L"; text " + c.GetTextColorHTML() +
           L", background " + c.GetBGColorHTML() + (c.IsControlForReadOnly() ? L" (read-only field)" : L"");
}

// The readouts follow what the user chose in the dialog.
void CALLBACK Refresh(HWND, UINT, UINT_PTR, DWORD) {
    if (!g_objects) return;
    for (Row& row : g_objects->rows) {
        const std::wstring text = Describe(*row.chooser);
        wchar_t shown[300] = {};
        ::GetWindowTextW(row.readout, shown, 300);
        if (text != shown) ::SetWindowTextW(row.readout, text.c_str());
    }
}

}  // namespace

void ShowFontColourDialogForShot(HWND /*page*/) {
    if (!g_objects || g_objects->rows.size() < 2 || !InScreenshotMode()) return;
    ShootNextDialog(L"font-colour-dialog");
    g_objects->rows[1].chooser->ShowFontDlg();
}

std::unique_ptr<PageObjects> BuildFontColourPage(HWND page) {
    auto objects = std::make_unique<FontColourObjects>();
    objects->page = page;
    AddLabel(page,
             L"The preview shows \"Test\" in the chosen font and colours; \"...\" opens the font and colour dialog. "
             L"The line below each chooser reads the choice back.",
             16, 12, 700, 36);

    struct Sample {
        const wchar_t* label;
        const wchar_t* face;
        int size;
        bool bold, italic, underlined, readOnly;
        COLORREF text, background;
    };
    const Sample samples[] = {
        {L"As new (XBaseColorControlNew)", L"Arial", 12, false, false, false, false, RGB(0, 0, 0), RGB(255, 255, 255)},
        {L"Mandatory fields", L"Times New Roman", 18, true, true, false, false, RGB(0, 0, 140), RGB(255, 250, 205)},
        {L"Changed fields", L"Courier New", 16, false, false, true, false, RGB(140, 0, 0), RGB(220, 240, 255)},
        {L"Read-only fields: no background to choose", L"Tahoma", 14, true, false, false, true, RGB(0, 90, 0),
         RGB(225, 245, 225)},
    };
    int y = 60;
    UINT id = kFirstId;
    for (const Sample& s : samples) {
        AddLabel(page, s.label, 16, y + 6, 250, 20);
        Row row;
        row.chooser = std::make_unique<XBaseColorControlNew>();
        XBaseColorControlNew& c = *row.chooser;
        c.SetFontName(s.face);
        c.SetFontSize(s.size);
        c.SetFontBold(s.bold);
        c.SetFontItalic(s.italic);
        c.SetFontUnderlined(s.underlined);
        c.SetTextColor(s.text);
        c.SetBGColor(s.background);
        c.SetControlForReadOnly(s.readOnly);
        c.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, RECT{270, y, 520, y + 32}, page, id++);
        row.readout = AddLabel(page, Describe(c).c_str(), 270, y + 36, 600, 18);
        objects->rows.push_back(std::move(row));
        y += 80;
    }
    g_objects = objects.get();
    ::SetTimer(page, kReadoutTimer, 300, &Refresh);
    return objects;
}

}  // namespace gallery
