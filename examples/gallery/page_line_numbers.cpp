// The line-numbers page: a multi-line edit with a line-number margin, holding
// a 2 000-line text scrolled to its middle, and beside it the coloured
// variant in a host's colours with a plain "%d" format and margin colours of
// its own. Scroll either (bar, wheel, keys): the numbers follow; type Enter
// at the end of the right one past line 99 and its margin widens.
#include <string>

#include "gallery.h"
#include "quorvel/windows/line_number_edit.h"

namespace gallery {

namespace {

struct LineNumberObjects : PageObjects {
    XMultiLineEditLN log;
    XMultiLineEditLNColor notes;
};

RECT Box(int x, int y, int w, int h) { return RECT{x, y, x + w, y + h}; }

// Lines that read like a production log, each short enough not to wrap.
std::wstring LogText(int lines) {
    static const wchar_t* const steps[] = {L"cut to length", L"drill 4 holes", L"weld frame", L"grind seams",
                                           L"prime", L"paint RAL 7035", L"assemble", L"inspect", L"pack"};
    std::wstring text;
    for (int i = 1; i <= lines; ++i) {
        if (i > 1) text += L"\r\n";
        text += L"Order " + std::to_wstring(4000 + i / 9) + L", step " + std::to_wstring(i % 9 + 1) + L": " +
                steps[i % 9];
    }
    return text;
}

}  // namespace

std::unique_ptr<PageObjects> BuildLineNumbersPage(HWND page) {
    auto objects = std::make_unique<LineNumberObjects>();
    LineNumberObjects& o = *objects;
    const HFONT font = GalleryFont();

    AddLabel(page, L"2 000 lines, scrolled to the middle (format \"%05i\")", 16, 16, 440, 18);
    o.log.Create(LogText(2000), 9000, Box(16, 40, 440, 420), font, page);
    // Line 1 000 in the middle of the view, with the caret on it.
    const int visible = o.log.GetLineNumberStatic().GetBottomLine() - o.log.GetLineNumberStatic().GetTopLine();
    o.log.LineScroll(1000 - 1 - visible / 2);
    const int middle = o.log.LineIndex(1000 - 1);
    o.log.SetSel(middle, middle, true);

    AddLabel(page, L"Coloured variant, format \"%d\", margin in the host's colours", 480, 16, 440, 18);
    o.notes.Create(LogText(120), 9001, Box(480, 40, 440, 420), font, page);
    o.notes.SetLineNumberFormat(L"%d");
    o.notes.SetTextColor(RGB(0, 0, 140));
    o.notes.SetBkColor(RGB(255, 250, 205));
    o.notes.SetMarginForegroundColor(RGB(90, 90, 60), false);
    o.notes.SetMarginBackgroundColor(RGB(240, 232, 170));
    o.notes.LineScroll(60);
    return objects;
}

}  // namespace gallery
