// Timing harness under Wine (not a test): what the window object and its
// reflection add to a message. Prints microseconds per message.
#include <windows.h>

#include <cstdio>

#include "quorvel/platform/window.h"
#include "timing.h"

namespace {

class Passthrough : public qv::Window {};

class Reflected : public qv::Window {
protected:
    bool OnReflectCommand(UINT) override { return true; }
};

double PerMessageMicros(HWND target, UINT msg, WPARAM wp, LPARAM lp, int count) {
    return qvbench::MicrosPerCall(count, [&](int i) {
        // Typing into an edit: keep the text at most 64 characters long,
        // like a field, so the edit's own cost stays that of a short text.
        if (msg == WM_CHAR && i % 64 == 0) ::SetWindowTextW(target, L"");
        ::SendMessageW(target, msg, wp, lp);
    });
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    const qvbench::Host bench;
    HWND host = bench.window, raw = bench.rawEdit;
    Passthrough wrapped;
    wrapped.Create(L"EDIT", L"", WS_CHILD | ES_AUTOHSCROLL, RECT{0, 30, 300, 50}, host, 2);
    Reflected button;
    button.Create(L"BUTTON", L"", WS_CHILD, RECT{0, 60, 100, 80}, host, 3);
    const int n = 5000;
    const double rawChar = PerMessageMicros(raw, WM_CHAR, L'7', 1, n);
    const double objChar = PerMessageMicros(wrapped, WM_CHAR, L'7', 1, n);
    const double reflect = PerMessageMicros(host, WM_COMMAND, MAKEWPARAM(3, BN_CLICKED),
                                            reinterpret_cast<LPARAM>(button.m_hWnd), n);
    std::printf("WM_CHAR into a plain EDIT:            %.2f us\n", rawChar);
    std::printf("WM_CHAR through the window object:    %.2f us\n", objChar);
    std::printf("WM_COMMAND reflected to the child:    %.2f us\n", reflect);
    ::DestroyWindow(host);
    return 0;
}
