// The numeric-entry page: every masked and numeric field with the pattern
// it enforces beside it, its limits, the decimal separator of the user's
// locale, the digit-class fields, the placeholder field with a date-like and
// a code-like template, and colour variants. Type into them: a keystroke the
// pattern refuses changes nothing; a value outside the limits is reported
// when the field is left.
#include <string>

#include "gallery.h"
#include "quorvel/frame/services.h"
#include "quorvel/masks/maskedit.h"
#include "quorvel/masks/numeric.h"
#include "quorvel/masks/placeholder.h"

namespace gallery {

namespace {

struct NumericObjects : PageObjects {
    XMaskIntegerEdit unsignedInt;
    XMaskSignedIntegerEdit signedInt;
    XMaskFloatEdit money{5, 2};
    XMaskSignedFloatEdit signedFloat;
    XMaskSignedFloatEditColor signedFloatColour{6, 3};
    XMaskBaseEdit custom{L"[KW|CW]##"};
    XNumberEdit number;
    XHEXEdit hex;
    XBinEdit bin;
    XHEXEditColor hexColour;
    XMaskEdit dateLike;
    XMaskEdit codeLike;
    XMaskEditColor codeColour;
};

RECT Box(int x, int y, int w, int h) { return RECT{x, y, x + w, y + h}; }

}  // namespace

std::unique_ptr<PageObjects> BuildNumericPage(HWND page) {
    auto objects = std::make_unique<NumericObjects>();
    NumericObjects& o = *objects;
    const HFONT font = GalleryFont();
    UINT id = 5000;
    int y = 16;
    const int labelX = 16, fieldX = 250, patternX = 420;

    std::wstring separator = L"Decimal separator of the user's locale: '";
    separator += qv::LocaleConversion::DecimalSeparator();
    separator += L"' (either '.' or ',' typed in a decimal field becomes it where the field asks for it)";
    AddLabel(page, separator.c_str(), labelX, y, 900, 18);
    y += 30;

    // A field, its label, and the pattern it enforces with its limits.
    auto row = [&](XMaskBaseEdit& field, const wchar_t* label, const wchar_t* text, const wchar_t* note) {
        AddLabel(page, label, labelX, y + 3, 230, 18);
        field.Create(text, id++, Box(fieldX, y, 150, 24), font, page);
        const std::wstring shown = L"pattern " + field.GetMask() + L"   " + note;
        AddLabel(page, shown.c_str(), patternX, y + 3, 560, 18);
        y += 32;
    };
    o.unsignedInt.SetLimits(0, 9999);
    row(o.unsignedInt, L"Unsigned integer", L"1024", L"limits 0..9999");
    o.signedInt.SetLimits(-100, 100);
    row(o.signedInt, L"Signed integer", L"-42", L"limits -100..100");
    o.money.SetLimits(0, 99999.99);
    row(o.money, L"Amount, 5 digits and 2 decimals", L"", L"limits 0..99999.99");
    o.money.SetValue(1234.5);
    o.signedFloat.SetLimits(-1e6, 1e6);
    row(o.signedFloat, L"Signed decimal with exponent", L"-12.5e3", L"limits -1e6..1e6");
    row(o.signedFloatColour, L"Signed decimal, coloured", L"", L"6 digits, 3 decimals");
    o.signedFloatColour.SetValue(3.14159);
    o.signedFloatColour.SetBkColor(RGB(255, 250, 205));
    row(o.custom, L"Calendar week (own pattern)", L"KW12", L"a set of prefixes, then two digits");

    // Digit-class fields: they refuse every other character as it is typed.
    const struct { XBaseEdit* field; const wchar_t* label; const wchar_t* text; const wchar_t* note; } digits[] = {
        {&o.number, L"Decimal digits", L"0815", L"0-9 only"},
        {&o.hex, L"Hexadecimal digits", L"1F3a", L"0-9, a-f, A-F"},
        {&o.bin, L"Binary digits", L"1011", L"0 and 1"},
        {&o.hexColour, L"Hexadecimal, coloured", L"BEEF", L"0-9, a-f, A-F"},
    };
    for (const auto& d : digits) {
        AddLabel(page, d.label, labelX, y + 3, 230, 18);
        d.field->Create(d.text, id++, Box(fieldX, y, 150, 24), font, page);
        AddLabel(page, d.note, patternX, y + 3, 560, 18);
        y += 32;
    }
    o.hexColour.SetTextColor(RGB(0, 0, 140));

    // Placeholder fields: type over the placeholders; the literals stay.
    const struct { XMaskEdit* field; const wchar_t* label; const wchar_t* mask; } templates[] = {
        {&o.dateLike, L"Date-like template", L"##.##.####"},
        {&o.codeLike, L"Code-like template", L"**-####/#"},
        {&o.codeColour, L"Code-like, coloured", L"**-####/#"},
    };
    for (const auto& t : templates) {
        AddLabel(page, t.label, labelX, y + 3, 230, 18);
        t.field->Create(L"", id++, Box(fieldX, y, 150, 24), font, page);
        t.field->SetMask(t.mask);
        const std::wstring shown = L"mask " + std::wstring(t.mask) + L"   (# digit, * any character)";
        AddLabel(page, shown.c_str(), patternX, y + 3, 560, 18);
        y += 32;
    }
    o.codeColour.SetBkColor(RGB(225, 235, 250));
    return objects;
}

}  // namespace gallery
