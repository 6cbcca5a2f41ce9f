#include "support/host.h"

#include <commctrl.h>

namespace qvtest {

namespace {
const wchar_t kHostClass[] = L"QuorvelTestHost";

LRESULT CALLBACK HostProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    return ::DefWindowProcW(hwnd, msg, wp, lp);
}

void RegisterHostClass() {
    static bool done = false;
    if (done) return;
    INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
    ::InitCommonControlsEx(&icc);
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof(wc);
    wc.lpfnWndProc = HostProc;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = kHostClass;
    ::RegisterClassExW(&wc);
    done = true;
}
}  // namespace

void Pump(DWORD ms) {
    const DWORD start = ::GetTickCount();
    do {
        MSG msg;
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageW(&msg);
        }
        if (ms) ::Sleep(5);
    } while (::GetTickCount() - start < ms);
}

HWND CreateHostWindow(const wchar_t* title) {
    RegisterHostClass();
    HWND hwnd = ::CreateWindowExW(0, kHostClass, title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 50, 50, 640, 480,
                                  nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    if (hwnd) {
        ::ShowWindow(hwnd, SW_SHOW);
        ::SetForegroundWindow(hwnd);
        Pump();
    }
    return hwnd;
}

void TypeChars(HWND hwnd, const std::wstring& text) {
    for (wchar_t c : text) ::SendMessageW(hwnd, WM_CHAR, c, 1);
}

std::wstring TextOf(HWND hwnd) {
    const int len = ::GetWindowTextLengthW(hwnd);
    std::wstring s(static_cast<size_t>(len) + 1, L'\0');
    s.resize(static_cast<size_t>(::GetWindowTextW(hwnd, s.data(), len + 1)));
    return s;
}

void HostTest::SetUp() {
    rec_ = std::make_unique<Recorders>();
    host_ = CreateHostWindow();
    ASSERT_NE(host_, nullptr) << "no X display? windows cannot be created";
}

void HostTest::TearDown() {
    if (host_ && ::IsWindow(host_)) ::DestroyWindow(host_);
    Pump();
    rec_.reset();
}

}  // namespace qvtest
