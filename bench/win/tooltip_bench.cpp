// Timing harness under Wine (not a test): the measuring and the drawing
// pass of the tooltip mark-up on GDI, for a text of about 2 KB that uses
// every tag. Prints microseconds per pass.
#include <windows.h>

#include <cstdio>
#include <string>

#include "timing.h"
#include "quorvel/tooltip/xtooltip.h"

namespace {

std::wstring SampleText() {
    const std::wstring block =
        L"<b>Bold</b>, <i>italic</i>, <u>underlined</u> and <s>struck-out</s> text<br>"
        L"<ct=0x0000FF>Red</ct> and <cti>colour value 1</cti>; <cb=0x80FFFF>a box</cb>, <cbi=5>shadow</cbi><br>"
        L"Tabs:<t>one<t=2>three<br=2>"
        L"<hr=0x40><al_c>centred<br><al_r>right-aligned<br><al_l><hr=50%><br>"
        L"Literal <<angle> brackets > and <xyz>unknown tags<br>";
    std::wstring text;
    while (text.size() < 2000) text += block;
    return text + L"<al_r><ct=0xFF0000>Press F1 for more info...</ct>";
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    XTooltip tip;  // no window needed: the passes only use the tooltip's font, colours and line lists
    const std::wstring text = SampleText();

    HDC screen = ::GetDC(nullptr);
    HDC measureDc = ::CreateCompatibleDC(screen);
    const SIZE size = tip.PrintTitleString(measureDc, RECT{}, text, true);
    HDC drawDc = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, size.cx + 16, size.cy + 16);
    HGDIOBJ old = ::SelectObject(drawDc, bitmap);
    const RECT rect{8, 8, 8 + size.cx, 8 + size.cy};
    ::ReleaseDC(nullptr, screen);

    const int n = 300;
    const double measure = qvbench::MicrosPerCall(n, [&](int) { tip.PrintTitleString(measureDc, RECT{}, text, true); });
    const double draw = qvbench::MicrosPerCall(n, [&](int) { tip.PrintTitleString(drawDc, rect, text, false); });
    std::printf("mark-up text: %u characters, %ld x %ld pixels\n", static_cast<unsigned>(text.size()), size.cx,
                size.cy);
    std::printf("measuring pass (memory DC):  %.1f us\n", measure);
    std::printf("drawing pass (memory bitmap): %.1f us\n", draw);

    ::SelectObject(drawDc, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(drawDc);
    ::DeleteDC(measureDc);
    return 0;
}
