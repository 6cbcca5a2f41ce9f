// Timing harness under Wine (not a test): one keystroke end to end in a
// signed decimal field, against the same keystroke into a plain EDIT.
// Prints microseconds per WM_CHAR: the best of several rounds, since the
// other processes of a shared machine only ever add time.
#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "quorvel/masks/numeric.h"
#include "timing.h"

namespace {

// Types `ch` `count` times; every 63 characters the text starts again from
// "-", so the field holds at most 64 characters.
double PerCharMicros(HWND target, wchar_t ch, int count) {
    return qvbench::MicrosPerCall(count, [&](int i) {
        if (i % 63 == 0) {
            // Select all first: the decimal fields put a set text over the selection.
            ::SendMessageW(target, EM_SETSEL, 0, -1);
            ::SendMessageW(target, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"-"));
            ::SendMessageW(target, EM_SETSEL, 1, 1);
        }
        ::SendMessageW(target, WM_CHAR, ch, 1);
    });
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const qvbench::Host bench;
    HWND host = bench.window, raw = bench.rawEdit;
    XMaskSignedFloatEdit field;
    field.Create(WS_CHILD | ES_AUTOHSCROLL, RECT{0, 30, 300, 50}, host, 2);
    const int n = 1000;
    double rawChar = 1e9, fieldChar = 1e9, refused = 1e9;
    for (int round = 0; round < 7; ++round) {
        rawChar = std::min(rawChar, PerCharMicros(raw, L'7', n));
        fieldChar = std::min(fieldChar, PerCharMicros(field, L'7', n));
        refused = std::min(refused, PerCharMicros(field, L'x', n));
    }
    std::printf("WM_CHAR into a plain EDIT:                 %.2f us\n", rawChar);
    std::printf("WM_CHAR into a signed decimal field:       %.2f us\n", fieldChar);
    std::printf("refused WM_CHAR into a signed decimal field: %.2f us\n", refused);
    ::DestroyWindow(host);
    return 0;
}
