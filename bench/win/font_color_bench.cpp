// Timing harness under Wine (not a test): what the font and colour chooser
// costs. Printed in microseconds, the best of several rounds (the other
// processes of a shared machine only ever add time):
// - a setter (bold on and off): a new preview font made, given to the
//   preview and the old one deleted, then the preview repainted;
// - the font and colour dialog opened and closed with OK: its lists filled
//   (the face list from every installed font family), the swatches and the
//   preview made, against the system's font count (the time includes the
//   wait for the timer that presses OK, about one timer tick).
#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "quorvel/controls/font_color.h"
#include "timing.h"

namespace {

void CALLBACK PressOk(HWND, UINT, UINT_PTR, DWORD) {
    if (HWND dlg = ::FindWindowW(L"#32770", L"Fonts and colors")) ::PostMessageW(dlg, WM_COMMAND, IDOK, 0);
}

int CALLBACK CountFamily(const LOGFONTW*, const TEXTMETRICW*, DWORD, LPARAM lp) {
    ++*reinterpret_cast<int*>(lp);
    return 1;
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    // Painting needs a visible window.
    HWND host = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 400, 100, nullptr, nullptr,
                                  nullptr, nullptr);
    XBaseColorControlNew chooser;
    chooser.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, RECT{10, 10, 260, 40}, host, 1);
    ::UpdateWindow(host);

    int families = 0;
    LOGFONTW lf{};
    lf.lfCharSet = ANSI_CHARSET;
    HDC dc = ::GetDC(host);
    ::EnumFontFamiliesExW(dc, &lf, &CountFamily, reinterpret_cast<LPARAM>(&families), 0);
    ::ReleaseDC(host, dc);

    double setter = 1e9, dialog = 1e9;
    for (int round = 0; round < 3; ++round) {
        setter = std::min(setter, qvbench::MicrosPerCall(500, [&](int i) {
                              chooser.SetFontBold(i % 2 == 0);
                              ::UpdateWindow(chooser);
                          }));
        dialog = std::min(dialog, qvbench::MicrosPerCall(10, [&](int) {
                              const UINT_PTR timer = ::SetTimer(nullptr, 0, 1, &PressOk);
                              chooser.ShowFontDlg();
                              ::KillTimer(nullptr, timer);
                          }));
    }
    std::printf("microseconds per call\n");
    std::printf("setter, new preview font and repaint:         %9.1f\n", setter);
    std::printf("dialog opened and closed with OK (%4d faces): %9.1f\n", families, dialog);
    ::DestroyWindow(host);
    return 0;
}
