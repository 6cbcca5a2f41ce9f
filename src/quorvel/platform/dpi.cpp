#include "quorvel/platform/dpi.h"

namespace qv {
namespace {

using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
using GetSystemMetricsForDpiFn = int(WINAPI*)(int, UINT);

// Looked up once: systems before Windows 10 1607 have neither function, and
// the library must load there too.
template <class Fn>
Fn User32Function(const char* name) noexcept {
    HMODULE user32 = ::GetModuleHandleW(L"user32.dll");
    return user32 ? reinterpret_cast<Fn>(reinterpret_cast<void*>(::GetProcAddress(user32, name))) : nullptr;
}

}  // namespace

UINT ScreenDpi() noexcept {
    HDC screen = ::GetDC(nullptr);
    if (!screen) return kBaseDpi;
    const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
    ::ReleaseDC(nullptr, screen);
    return dpi > 0 ? static_cast<UINT>(dpi) : kBaseDpi;
}

UINT DpiOf(HWND hwnd) noexcept {
    if (!hwnd || !::IsWindow(hwnd)) return kBaseDpi;
    static const auto forWindow = User32Function<GetDpiForWindowFn>("GetDpiForWindow");
    if (forWindow) {
        const UINT dpi = forWindow(hwnd);
        if (dpi) return dpi;
    }
    return ScreenDpi();
}

int SystemMetricForDpi(int index, UINT dpi) noexcept {
    static const auto forDpi = User32Function<GetSystemMetricsForDpiFn>("GetSystemMetricsForDpi");
    if (forDpi) return forDpi(index, dpi ? dpi : kBaseDpi);
    return ScaleBetweenDpi(::GetSystemMetrics(index), ScreenDpi(), dpi);
}

bool DrawBitmapSharp(HDC dc, HBITMAP bitmap, const RECT& slot, UINT dpi) noexcept {
    BITMAP info{};
    if (!dc || !bitmap || !::GetObjectW(bitmap, sizeof info, &info)) return false;
    HDC source = ::CreateCompatibleDC(dc);
    if (!source) return false;
    HGDIOBJ old = ::SelectObject(source, bitmap);
    const int factor = BitmapFactorForDpi(dpi);
    const int cx = info.bmWidth * factor;
    const int cy = info.bmHeight * factor;
    const int x = slot.left + CentredOffset(slot.right - slot.left, cx);
    const int y = slot.top + CentredOffset(slot.bottom - slot.top, cy);
    const int oldMode = ::SetStretchBltMode(dc, COLORONCOLOR);
    const BOOL ok = ::StretchBlt(dc, x, y, cx, cy, source, 0, 0, info.bmWidth, info.bmHeight, SRCCOPY);
    ::SetStretchBltMode(dc, oldMode);
    ::SelectObject(source, old);
    ::DeleteDC(source);
    return ok != FALSE;
}

HBITMAP ScaledBitmapCopy(HBITMAP bitmap, UINT dpi) noexcept {
    BITMAP info{};
    const int factor = BitmapFactorForDpi(dpi);
    if (!bitmap || factor == 1 || !::GetObjectW(bitmap, sizeof info, &info)) return nullptr;
    HDC screen = ::GetDC(nullptr);
    if (!screen) return nullptr;
    HBITMAP copy = ::CreateCompatibleBitmap(screen, info.bmWidth * factor, info.bmHeight * factor);
    HDC target = copy ? ::CreateCompatibleDC(screen) : nullptr;
    HDC source = target ? ::CreateCompatibleDC(screen) : nullptr;
    bool ok = false;
    if (source) {
        HGDIOBJ oldTarget = ::SelectObject(target, copy);
        HGDIOBJ oldSource = ::SelectObject(source, bitmap);
        ::SetStretchBltMode(target, COLORONCOLOR);
        ok = ::StretchBlt(target, 0, 0, info.bmWidth * factor, info.bmHeight * factor, source, 0, 0, info.bmWidth,
                          info.bmHeight, SRCCOPY) != FALSE;
        ::SelectObject(source, oldSource);
        ::SelectObject(target, oldTarget);
    }
    if (source) ::DeleteDC(source);
    if (target) ::DeleteDC(target);
    ::ReleaseDC(nullptr, screen);
    if (!ok && copy) {
        ::DeleteObject(copy);
        copy = nullptr;
    }
    return copy;
}

}  // namespace qv
