// The base-controls page: the fields every form of a host is made of, laid
// out like a dialog, with labels that carry context help (hover for the
// tooltip, F1 for the document), each field beside its colour-scheme
// variant, filled check-list boxes and one field with a validation pattern.
#include <string>

#include "gallery.h"
#include "quorvel/controls/base_buttons.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/base_lists.h"
#include "quorvel/controls/base_readonly.h"
#include "quorvel/controls/prompt.h"
#include "quorvel/controls/static_text.h"

namespace gallery {

namespace {

// A pale yellow for mandatory fields and a pale blue for read-only ones, as
// a host might choose them.
constexpr COLORREF kMandatory = RGB(255, 250, 205);
constexpr COLORREF kReadOnly = RGB(225, 235, 250);
constexpr COLORREF kDarkBlue = RGB(0, 0, 140);

struct BaseObjects : PageObjects {
    XBaseStaticText labels[9];
    XBaseStatictextColor colouredLabel;
    XBaseEdit order{L"^[A-Z]{2}-[0-9]{4}$", L"Two capitals, a hyphen and four digits, such as AB-1234.", L"Order number"};
    XBaseEdit code;
    XBaseEditColor codeColour;
    XBaseMultiLineEdit notes;
    XBaseMultiLineEditColor notesColour;
    XBaseComboBox unit;
    XBaseComboBoxColor unitColour;
    XBaseEditComboBox place;
    XBaseEditComboBoxColor placeColour;
    XBaseListBox steps;
    XBaseListBoxColor stepsColour;
    XBaseCheckListBox checks;
    XBaseReadOnlyCheckListBox checksReadOnly;
    XTabCheckListBox tabbed;
    XBaseButton apply;
    XBaseCheckBox urgent;
    XBaseDualCheckBox billable;
    XBaseTriCheckBox approved;
    XBaseRadio shiftEarly, shiftLate;
    XBaseGroupBox shiftGroup;
    XBaseGroupBoxColor helpGroup;
    XBaseEditReadOnly planner;
    XBaseEditReadOnlyColor plannerColour;
    XBasePrompt prompt;
};

RECT Box(int x, int y, int w, int h) { return RECT{x, y, x + w, y + h}; }

void Fill(qv::ComboBox& combo, std::initializer_list<const wchar_t*> items) {
    for (const wchar_t* item : items) combo.AddString(item);
    combo.SetCurSel(0);
}

void Fill(qv::ListBox& list, std::initializer_list<const wchar_t*> items) {
    for (const wchar_t* item : items) list.AddString(item);
}

}  // namespace

std::unique_ptr<PageObjects> BuildBaseControlsPage(HWND page) {
    EnableGalleryTooltips();
    auto objects = std::make_unique<BaseObjects>();
    BaseObjects& o = *objects;
    const HFONT font = GalleryFont();
    UINT id = 100;

    // Column 1: labelled fields, plain and coloured.
    struct LabelDef { const wchar_t* text; int y; const wchar_t* help; bool mandatory; };
    const LabelDef labels[] = {
        {L"Order number", 16, L"The order's number.<document>order.htm</document>", true},
        {L"Code (0-9, A-Z)", 48, L"Capitals and digits only; lower-case letters become capitals.", false},
        {L"Notes", 112, L"Free text. Enter starts a new line, Tab moves on.", false},
        {L"Unit", 200, L"The unit of the quantity.", false},
        {L"Place", 264, L"Type a place or pick one.<document>http://example.com/places</document>", false},
        {L"Steps", 330, L"Process steps, sorted.", false},
        {L"Planner", 470, L"Read-only: the planner of the order.", false},
        {L"Reviewer", 502, L" ", false},
        {L"Coloured label", 534, L"A label in the host's colours.", false},
    };
    for (int i = 0; i < 8; ++i)
        o.labels[i].Create(labels[i].text, id++, Box(16, labels[i].y + 3, 110, 20), font, page, labels[i].help,
                           labels[i].mandatory);
    o.colouredLabel.Create(labels[8].text, id++, Box(16, labels[8].y + 3, 110, 20), font, page, labels[8].help, false);
    o.colouredLabel.SetTextColor(kDarkBlue);
    o.colouredLabel.SetBkColor(kMandatory);

    o.order.Create(L"AB-12", id++, Box(130, 16, 150, 24), font, page);
    o.code.ActivateInputMask09AZ(true);
    o.code.SetMaxInputChar(8);
    o.code.Create(L"X7Q2", id++, Box(130, 48, 150, 24), font, page);
    o.codeColour.ActivateInputMask09AZ(true);
    o.codeColour.Create(L"MANDATORY1", id++, Box(130, 80, 150, 24), font, page);
    o.codeColour.SetBkColor(kMandatory);
    o.notes.Create(L"Deliver before noon.\r\nCall first.", id++, Box(130, 112, 150, 80), font, page);
    o.notesColour.Create(L"Coloured notes", id++, Box(290, 112, 150, 80), font, page);
    o.notesColour.SetTextColor(kDarkBlue);
    o.unit.Create(L"", id++, Box(130, 200, 150, 200), font, page);
    Fill(o.unit, {L"pieces", L"kilograms", L"metres", L"hours"});
    o.unitColour.Create(L"", id++, Box(130, 232, 150, 200), font, page);
    Fill(o.unitColour, {L"coloured drop-down list", L"sized to its widest item on opening"});
    o.unitColour.SetBkColor(kMandatory);
    o.place.Create(L"Hamburg", id++, Box(130, 264, 150, 200), font, page);
    Fill(o.place, {L"Berlin", L"Hamburg", L"Munich"});
    o.placeColour.Create(L"Lyon", id++, Box(290, 264, 150, 200), font, page);
    Fill(o.placeColour, {L"Lyon", L"Paris"});
    o.placeColour.SetBkColor(kMandatory);
    o.steps.Create(L"", id++, Box(130, 300, 150, 90), font, page);
    Fill(o.steps, {L"Weld", L"Cut", L"Paint", L"Assemble", L"Pack"});
    o.stepsColour.Create(L"", id++, Box(290, 300, 150, 90), font, page);
    Fill(o.stepsColour, {L"Inspect", L"Ship"});
    o.stepsColour.SetTextColor(kDarkBlue);
    o.stepsColour.SetBkColor(kReadOnly);
    o.planner.Create(L"M. Keller", id++, Box(130, 470, 150, 24), font, page);
    o.plannerColour.Create(L"J. Ortiz", id++, Box(130, 502, 150, 24), font, page);
    o.plannerColour.SetBkColor(kReadOnly);

    // Column 2: check lists.
    AddLabel(page, L"Check lists (3 of 5 checked, one indeterminate)", 470, 16, 300, 18);
    o.checks.Create(L"", id++, Box(470, 36, 200, 100), font, page);
    o.checks.SetCheckStyle(BS_AUTO3STATE);
    // A check list starts on RGB(5, 0, 0) until its host gives it a
    // background, as hosts do.
    o.checks.SetBkColor(::GetSysColor(COLOR_WINDOW));
    const wchar_t* materials[] = {L"Steel", L"Copper", L"Glass", L"Wood", L"Plastic"};
    const int states[] = {1, 1, 0, 2, 1};
    for (int i = 0; i < 5; ++i) {
        o.checks.AddString(materials[i]);
        o.checks.SetCheck(i, states[i]);
    }
    o.checks.CreateTooltip();
    o.checksReadOnly.Create(L"", id++, Box(680, 36, 150, 100), font, page);
    for (const wchar_t* item : {L"Read-only", L"coloured list"}) o.checksReadOnly.AddString(item);
    o.checksReadOnly.SetCheck(0, 1);
    o.checksReadOnly.SetBkColor(kReadOnly);
    o.checksReadOnly.SetTextColor(kDarkBlue);
    AddLabel(page, L"Tab stops in item texts", 470, 146, 300, 18);
    o.tabbed.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOTIFY,
                    Box(470, 166, 360, 90), page, id++);
    ::SendMessageW(o.tabbed, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    int stops[] = {60, 120};
    o.tabbed.SetTabStops(2, stops);
    for (const wchar_t* row : {L"Step\tHours\tShare", L"Weld\t12.5\t40 %", L"Paint\t4.0\t13 %"}) o.tabbed.AddString(row);
    o.tabbed.SetCheck(1, 1);

    // Column 3: buttons and groups.
    o.shiftGroup.Create(L"Shift", id++, Box(470, 270, 170, 90), font, page);
    o.shiftEarly.Create(L"Early", id++, Box(482, 292, 140, 22), font, page);
    o.shiftLate.Create(L"Late", id++, Box(482, 322, 140, 22), font, page);
    o.shiftEarly.SetCheck(BST_CHECKED);
    o.helpGroup.Create(L"Options", id++, Box(660, 270, 170, 130), font, page,
                       L"Choices for this order.<document>options.htm</document>", true);
    o.helpGroup.SetTextColor(kDarkBlue);
    o.urgent.Create(L"Urgent", id++, Box(672, 296, 140, 22), font, page);
    o.billable.Create(L"Billable", id++, Box(672, 322, 140, 22), font, page);
    o.approved.Create(L"Approved (three states)", id++, Box(672, 348, 150, 22), font, page);
    o.urgent.SetCheck(BST_CHECKED);
    o.approved.SetCheck(BST_INDETERMINATE);
    o.apply.Create(L"Apply", id++, Box(470, 372, 100, 28), font, page);

    AddLabel(page, L"Prompt with context help (hover, then F1)", 470, 416, 300, 18);
    o.prompt.Create(L"Due date\nof the order", id++, Box(470, 436, 200, 40), font, page, false, false,
                    L"When the order must be delivered.<document>due.htm</document>", true);
    return objects;
}

}  // namespace gallery
