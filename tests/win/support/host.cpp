#include "support/host.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>

#include "quorvel/tooltip/xtooltip.h"

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

bool WaitFor(const std::function<bool()>& done, DWORD ms) {
    const DWORD start = ::GetTickCount();
    for (;;) {
        Pump();
        if (done()) return true;
        if (::GetTickCount() - start > ms) return false;
        ::Sleep(5);
    }
}

void Press(HWND hwnd, const std::wstring& keys) {
    for (wchar_t k : keys) {
        if (k >= 0xE000) {
            ::SendMessageW(hwnd, WM_KEYDOWN, k - 0xE000, 1);
            continue;
        }
        if (k == L'\b') ::SendMessageW(hwnd, WM_KEYDOWN, VK_BACK, 1);
        ::SendMessageW(hwnd, WM_CHAR, k, 1);
    }
}

void HeldKey::Set(bool down) {
    BYTE keys[256] = {};
    ::GetKeyboardState(keys);
    keys[vk_] = down ? 0x80 : 0;
    ::SetKeyboardState(keys);
}

namespace {
template <class Char>
bool PutOnClipboard(HWND owner, UINT format, const Char* text) {
    if (!::OpenClipboard(owner)) return false;
    ::EmptyClipboard();
    bool ok = true;
    if (text) {
        const size_t size = (std::char_traits<Char>::length(text) + 1) * sizeof(Char);
        HGLOBAL block = ::GlobalAlloc(GMEM_MOVEABLE, size);
        std::memcpy(::GlobalLock(block), text, size);
        ::GlobalUnlock(block);
        ok = ::SetClipboardData(format, block) != nullptr;
    }
    ::CloseClipboard();
    return ok;
}

template <class Char>
std::basic_string<Char> FromClipboard(HWND owner, UINT format, const Char* none, const Char* closed) {
    if (!::OpenClipboard(owner)) return closed;
    std::basic_string<Char> text = none;
    if (HANDLE data = ::GetClipboardData(format)) {
        text = static_cast<const Char*>(::GlobalLock(data));
        ::GlobalUnlock(data);
    }
    ::CloseClipboard();
    return text;
}
}  // namespace

bool SetClipboard(HWND owner, const char* text) { return PutOnClipboard(owner, CF_TEXT, text); }
bool SetClipboard(HWND owner, const std::wstring& text) { return PutOnClipboard(owner, CF_UNICODETEXT, text.c_str()); }
std::string ClipboardAnsi(HWND owner) { return FromClipboard(owner, CF_TEXT, "<none>", "<closed>"); }
std::wstring ClipboardText(HWND owner) { return FromClipboard(owner, CF_UNICODETEXT, L"", L""); }

namespace {
LRESULT CALLBACK SpyProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR see) {
    (*reinterpret_cast<MessageSpy::See*>(see))(msg, wp, lp);
    return ::DefSubclassProc(hwnd, msg, wp, lp);
}
}  // namespace

MessageSpy::MessageSpy(HWND hwnd, See see) : hwnd_(hwnd), see_(std::move(see)) {
    ::SetWindowSubclass(hwnd_, &SpyProc, reinterpret_cast<UINT_PTR>(this), reinterpret_cast<DWORD_PTR>(&see_));
}

MessageSpy::~MessageSpy() {
    if (::IsWindow(hwnd_)) ::RemoveWindowSubclass(hwnd_, &SpyProc, reinterpret_cast<UINT_PTR>(this));
}

RECT RectIn(HWND parent, HWND child) {
    RECT r{};
    ::GetWindowRect(child, &r);
    ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&r), 2);
    return r;
}

SIZE TextExtent(HWND wnd, HFONT font, const std::wstring& text) {
    HDC dc = ::GetDC(wnd);
    HGDIOBJ old = ::SelectObject(dc, font);
    SIZE extent{};
    ::GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &extent);
    ::SelectObject(dc, old);
    ::ReleaseDC(wnd, dc);
    return extent;
}

std::wstring Describe(const qv::LogEntry& e) {
    wchar_t hr[16];
    ::wsprintfW(hr, L"%08lX", static_cast<unsigned long>(e.hr));
    return e.module + L"|" + e.function + L"|" + std::to_wstring(e.line) + L"|" + e.message + L"|" + hr;
}

bool LocaleOverride::Set(LCTYPE type, const wchar_t* value) {
    wchar_t old[100] = {};
    ::GetLocaleInfoW(LOCALE_USER_DEFAULT, type, old, 100);
    saved_.emplace_back(type, old);
    return ::SetLocaleInfoW(LOCALE_USER_DEFAULT, type, value) != FALSE;
}

LocaleOverride::~LocaleOverride() {
    for (auto it = saved_.rbegin(); it != saved_.rend(); ++it)
        ::SetLocaleInfoW(LOCALE_USER_DEFAULT, it->first, it->second.c_str());
}

std::vector<HWND> Windows(const wchar_t* cls, const std::vector<HWND>& old) {
    std::vector<HWND> found;
    for (HWND h = nullptr; (h = ::FindWindowExW(nullptr, h, cls, nullptr)) != nullptr;)
        if (std::find(old.begin(), old.end(), h) == old.end()) found.push_back(h);
    return found;
}

bool AnyVisible(const std::vector<HWND>& windows) {
    return std::any_of(windows.begin(), windows.end(), [](HWND h) { return ::IsWindowVisible(h) != FALSE; });
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
    qv::Services::DefaultSettings().ClearStore();
    XTooltip::ResetProcessSettings();
}

void HostTest::UseSettings(std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> common) {
    auto& store = qv::Services::DefaultSettings();
    store.ClearStore();
    store.Set(L"customization", L"contextHelpOnCustomizationObjects", L"C:\\help\\");
    for (const auto& [name, value] : common)
        if (*value) store.Set(L"Common", name, value);
    XTooltip::ResetProcessSettings();
}

}  // namespace qvtest
