// Shared by the Wine timing harnesses (not tests): a microsecond clock around
// a repeated call, and the hidden host with a plain EDIT to compare against.
#pragma once

#include <windows.h>

namespace qvbench {

// Microseconds per call of `f`, over `count` calls.
template <class F>
double MicrosPerCall(int count, F f) {
    LARGE_INTEGER freq, a, b;
    ::QueryPerformanceFrequency(&freq);
    ::QueryPerformanceCounter(&a);
    for (int i = 0; i < count; ++i) f(i);
    ::QueryPerformanceCounter(&b);
    return 1e6 * static_cast<double>(b.QuadPart - a.QuadPart) / static_cast<double>(freq.QuadPart) / count;
}

// A hidden pop-up host and, as its child, a plain EDIT (the baseline).
struct Host {
    HWND window = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr, nullptr, nullptr);
    HWND rawEdit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | ES_AUTOHSCROLL, 0, 0, 300, 20, window, nullptr,
                                     nullptr, nullptr);
};

}  // namespace qvbench
