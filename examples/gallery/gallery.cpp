// gallery.exe [--screenshot DIR]
//
// Without arguments: a resizable window with one tab per control family.
// With --screenshot DIR: shows each page in turn, writes DIR\NN-title.png of
// the window's client area, and exits (0 when every page was written).
#include "gallery.h"

#include <commctrl.h>
#include <wincodec.h>

#include <cstdio>
#include <string>

#include "quorvel/frame/services.h"
#include "quorvel/frame/session.h"
#include "quorvel/platform/com.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/tooltip/xtooltip.h"

namespace gallery {

namespace {

const wchar_t kMainClass[] = L"QuorvelGallery";
const wchar_t kPageClass[] = L"QuorvelGalleryPage";
constexpr int kTabId = 100;
constexpr int kMargin = 6;

struct State {
    HWND main = nullptr;
    HWND tabs = nullptr;
    HWND page = nullptr;
    int current = -1;
    std::unique_ptr<PageObjects> objects;
    std::wstring shotDir;  // screenshot mode: where the pictures go
};
State g;

RECT PageRect() {
    RECT rc;
    ::GetClientRect(g.tabs, &rc);
    TabCtrl_AdjustRect(g.tabs, FALSE, &rc);
    ::MapWindowPoints(g.tabs, g.main, reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}

// The pages place their controls in 96-DPI pixels, as a host's dialog
// template does in its own units; at another DPI the gallery moves and sizes
// them for the page's DPI, as the dialog manager does for a template. The
// controls scale what they lay out inside themselves.
BOOL CALLBACK ScaleChild(HWND child, LPARAM lp) {
    const auto page = reinterpret_cast<HWND>(lp);
    if (::GetParent(child) != page) return TRUE;  // only the page's own children
    RECT rc;
    ::GetWindowRect(child, &rc);
    ::MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&rc), 2);
    const UINT dpi = qv::DpiOf(page);
    const int x = qv::ScaleToDpi(rc.left, dpi), y = qv::ScaleToDpi(rc.top, dpi);
    ::MoveWindow(child, x, y, qv::ScaleToDpi(rc.right, dpi) - x, qv::ScaleToDpi(rc.bottom, dpi) - y, TRUE);
    return TRUE;
}

void ScaleLayout(HWND page) {
    if (qv::DpiOf(page) == qv::kBaseDpi) return;
    ::EnumChildWindows(page, ScaleChild, reinterpret_cast<LPARAM>(page));
}

void ShowPage(int index) {
    if (index == g.current) return;
    g.objects.reset();
    if (g.page) ::DestroyWindow(g.page);
    const PageInfo& info = Pages()[static_cast<size_t>(index)];
    const RECT rc = PageRect();
    g.page = ::CreateWindowExW(WS_EX_CONTROLPARENT, kPageClass, info.title, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                               rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top, g.main, nullptr,
                               ::GetModuleHandleW(nullptr), nullptr);
    ::SetWindowPos(g.page, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    if (info.build) {
        g.objects = info.build(g.page);
        ScaleLayout(g.page);
    } else {
        std::wstring text = std::wstring(info.title) + L"\n\n" + (info.comingText ? info.comingText : L"");
        AddLabel(g.page, text.c_str(), 16, 16, 700, 120);
    }
    g.current = index;
    TabCtrl_SetCurSel(g.tabs, index);
}

void Layout() {
    RECT rc;
    ::GetClientRect(g.main, &rc);
    ::MoveWindow(g.tabs, kMargin, kMargin, rc.right - 2 * kMargin, rc.bottom - 2 * kMargin, TRUE);
    if (g.page) {
        const RECT pr = PageRect();
        ::MoveWindow(g.page, pr.left, pr.top, pr.right - pr.left, pr.bottom - pr.top, TRUE);
    }
}

LRESULT CALLBACK MainProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_SIZE:
        if (g.tabs) Layout();
        return 0;
    case WM_DPICHANGED: {
        // Moved to a monitor of another DPI: the suggested size, and the
        // page built again for the new DPI.
        const auto* suggested = reinterpret_cast<const RECT*>(lp);
        ::SetWindowPos(hwnd, nullptr, suggested->left, suggested->top, suggested->right - suggested->left,
                       suggested->bottom - suggested->top, SWP_NOZORDER | SWP_NOACTIVATE);
        const int page = g.current;
        g.current = -1;
        if (page >= 0) ShowPage(page);
        return 0;
    }
    case WM_NOTIFY: {
        auto* hdr = reinterpret_cast<NMHDR*>(lp);
        if (hdr->idFrom == kTabId && hdr->code == TCN_SELCHANGE) ShowPage(TabCtrl_GetCurSel(g.tabs));
        return 0;
    }
    case WM_GETMINMAXINFO:
        reinterpret_cast<MINMAXINFO*>(lp)->ptMinTrackSize = POINT{640, 480};
        return 0;
    case WM_DESTROY:
        g.objects.reset();
        ::PostQuitMessage(0);
        return 0;
    default:
        return ::DefWindowProcW(hwnd, msg, wp, lp);
    }
}

// A page forwards its children's notifications to nobody: the library's
// controls receive them by reflection.
LRESULT CALLBACK PageProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_CTLCOLORSTATIC) {
        ::SetBkMode(reinterpret_cast<HDC>(wp), TRANSPARENT);
        return reinterpret_cast<LRESULT>(::GetSysColorBrush(COLOR_BTNFACE));
    }
    return ::DefWindowProcW(hwnd, msg, wp, lp);
}

void Pump(DWORD ms) {
    const DWORD start = ::GetTickCount();
    do {
        MSG msg;
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageW(&msg);
        }
        ::Sleep(10);
    } while (::GetTickCount() - start < ms);
}

// Captures the main window's client area (children included: under Wine
// PrintWindow draws only the background, BitBlt from the screen has it all)
// and writes it as PNG through WIC.
bool WritePng(HWND window, const std::wstring& path) {
    RECT rc;
    ::GetClientRect(window, &rc);
    const int w = rc.right, h = rc.bottom;
    BITMAPINFO bi{};
    bi.bmiHeader.biSize = sizeof(bi.bmiHeader);
    bi.bmiHeader.biWidth = w;
    bi.bmiHeader.biHeight = -h;  // top-down
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 24;
    void* bits = nullptr;
    // From the whole screen at the client area's place, so that pop-ups over
    // the page (a tooltip, a dropped list) are in the picture too.
    HDC screen = ::GetDC(nullptr);
    POINT origin{0, 0};
    ::ClientToScreen(window, &origin);
    HBITMAP dib = ::CreateDIBSection(screen, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
    HDC mem = ::CreateCompatibleDC(screen);
    HGDIOBJ old = ::SelectObject(mem, dib);
    ::BitBlt(mem, 0, 0, w, h, screen, origin.x, origin.y, SRCCOPY);
    ::SelectObject(mem, old);
    ::DeleteDC(mem);
    ::ReleaseDC(nullptr, screen);
    if (!dib) return false;

    const UINT stride = static_cast<UINT>((w * 3 + 3) & ~3);
    bool ok = false;
    qv::ComPtr<IWICImagingFactory> factory;
    qv::ComPtr<IWICStream> stream;
    qv::ComPtr<IWICBitmapEncoder> encoder;
    qv::ComPtr<IWICBitmapFrameEncode> frame;
    if (SUCCEEDED(factory.CoCreateInstance(CLSID_WICImagingFactory, IID_IWICImagingFactory, CLSCTX_INPROC_SERVER)) &&
        SUCCEEDED(factory->CreateStream(&stream)) &&
        SUCCEEDED(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE)) &&
        SUCCEEDED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder)) &&
        SUCCEEDED(encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache)) &&
        SUCCEEDED(encoder->CreateNewFrame(&frame, nullptr)) && SUCCEEDED(frame->Initialize(nullptr)) &&
        SUCCEEDED(frame->SetSize(static_cast<UINT>(w), static_cast<UINT>(h)))) {
        WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
        ok = SUCCEEDED(frame->SetPixelFormat(&format)) && format == GUID_WICPixelFormat24bppBGR &&
             SUCCEEDED(frame->WritePixels(static_cast<UINT>(h), stride, stride * static_cast<UINT>(h),
                                          static_cast<BYTE*>(bits))) &&
             SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder->Commit());
    }
    ::DeleteObject(dib);
    return ok;
}

std::wstring FileTitle(const wchar_t* title) {
    std::wstring out;
    for (const wchar_t* p = title; *p; ++p) {
        const wchar_t c = *p;
        if ((c >= L'a' && c <= L'z') || (c >= L'0' && c <= L'9')) out += c;
        else if (c >= L'A' && c <= L'Z') out += static_cast<wchar_t>(c - L'A' + L'a');
        else if (!out.empty() && out.back() != L'-') out += L'-';
    }
    while (!out.empty() && out.back() == L'-') out.pop_back();
    return out;
}

int Screenshots(const std::wstring& dir) {
    g.shotDir = dir;
    ::CreateDirectoryW(dir.c_str(), nullptr);
    int failures = 0;
    const auto& pages = Pages();
    for (size_t i = 0; i < pages.size(); ++i) {
        ShowPage(static_cast<int>(i));
        ::RedrawWindow(g.main, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        Pump(250);
        if (pages[i].beforeShot) {
            pages[i].beforeShot(g.page);
            Pump(250);
        }
        wchar_t name[16];
        swprintf(name, 16, L"%02u-", static_cast<unsigned>(i + 1));
        const std::wstring path = dir + L"\\" + name + FileTitle(pages[i].title) + L".png";
        if (!WritePng(g.main, path)) {
            fwprintf(stderr, L"could not write %ls\n", path.c_str());
            ++failures;
        } else {
            wprintf(L"%ls\n", path.c_str());
        }
    }
    return failures ? 1 : 0;
}

}  // namespace

namespace {

// The dialog shot waiting for its dialog: the picture's name and the timer.
std::wstring g_dialogShotName;
UINT_PTR g_dialogShotTimer = 0;
int g_dialogShotTicks = 0;

// Waits (up to 20 s) inside the modal dialog's own loop for the dialog of
// this thread to show, writes its picture and cancels it.
void CALLBACK ShootDialogWhenShown(HWND, UINT, UINT_PTR, DWORD) {
    HWND dialog = nullptr;
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND w, LPARAM lp) -> BOOL {
            wchar_t cls[16] = {};
            ::GetClassNameW(w, cls, 16);
            if (std::wstring(cls) != L"#32770" || !::IsWindowVisible(w)) return TRUE;
            *reinterpret_cast<HWND*>(lp) = w;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&dialog));
    if (!dialog && ++g_dialogShotTicks < 50) return;
    ::KillTimer(nullptr, g_dialogShotTimer);
    g_dialogShotTimer = 0;
    if (!dialog) return;
    ::RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    WriteWindowShot(dialog, g_dialogShotName.c_str());
    ::PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
}

}  // namespace

void ShootNextDialog(const wchar_t* name) {
    if (!InScreenshotMode() || !name || g_dialogShotTimer) return;
    g_dialogShotName = name;
    g_dialogShotTicks = 0;
    g_dialogShotTimer = ::SetTimer(nullptr, 0, 400, &ShootDialogWhenShown);
}

bool WriteWindowShot(HWND window, const wchar_t* name) {
    if (g.shotDir.empty() || !::IsWindow(window)) return false;
    const std::wstring path = g.shotDir + L"\\" + name + L".png";
    if (!WritePng(window, path)) return false;
    wprintf(L"%ls\n", path.c_str());
    return true;
}

bool InScreenshotMode() { return !g.shotDir.empty(); }

HFONT GalleryFont() {
    static HFONT font = [] {
        NONCLIENTMETRICSW ncm{};
        ncm.cbSize = sizeof(ncm);
        ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(ncm), &ncm, 0);
        return ::CreateFontIndirectW(&ncm.lfMessageFont);
    }();
    return font;
}

HWND AddLabel(HWND page, const wchar_t* text, int x, int y, int w, int h, DWORD style) {
    HWND label = ::CreateWindowExW(0, L"STATIC", text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, page, nullptr,
                                   ::GetModuleHandleW(nullptr), nullptr);
    ::SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), FALSE);
    return label;
}

}  // namespace gallery

namespace gallery {

// The gallery stands in for the host's session settings: tooltips switched
// on with a display time of 20 seconds, and no automatic line breaks in the
// long mark-up texts of the tooltip page, unless the settings say otherwise.
void EnableGalleryTooltips() {
    if (!qv::ReadSettingText(L"Common", L"tooltipdelaytime", 0).empty()) return;
    qv::Services::DefaultSettings().Set(L"Common", L"tooltipdelaytime", L"20");
    if (qv::ReadSettingText(L"Common", L"tooltipmaxtipwidth", 0).empty())
        qv::Services::DefaultSettings().Set(L"Common", L"tooltipmaxtipwidth", L"4096");
    XTooltip::ResetProcessSettings();
}

}  // namespace gallery

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
    using namespace gallery;
    qv::ComInit com;
    EnableGalleryTooltips();
    INITCOMMONCONTROLSEX icc{sizeof(icc), ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_TAB_CLASSES |
                                              ICC_STANDARD_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&icc);

    std::wstring shotDir;
    int argc = 0;
    LPWSTR* argv = ::CommandLineToArgvW(::GetCommandLineW(), &argc);
    for (int i = 1; i < argc; ++i) {
        if (std::wstring(argv[i]) == L"--screenshot" && i + 1 < argc) shotDir = argv[++i];
    }
    ::LocalFree(argv);

    WNDCLASSEXW wc{};
    wc.cbSize = sizeof(wc);
    wc.lpfnWndProc = MainProc;
    wc.hInstance = instance;
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = kMainClass;
    wc.hIcon = ::LoadIconW(nullptr, IDI_APPLICATION);
    ::RegisterClassExW(&wc);
    wc.lpfnWndProc = PageProc;
    wc.lpszClassName = kPageClass;
    ::RegisterClassExW(&wc);

    // The window's size in 96-DPI pixels, made for the screen's DPI (the
    // gallery is per-monitor aware: see gallery.manifest).
    const UINT dpi = qv::ScreenDpi();
    g.main = ::CreateWindowExW(0, kMainClass, L"Quorvel gallery", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0,
                               qv::ScaleToDpi(1024, dpi), qv::ScaleToDpi(720, dpi), nullptr, nullptr, instance, nullptr);
    if (!g.main) return 2;
    g.tabs = ::CreateWindowExW(0, WC_TABCONTROLW, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TCS_MULTILINE, 0, 0,
                               100, 100, g.main, reinterpret_cast<HMENU>(kTabId), instance, nullptr);
    ::SendMessageW(g.tabs, WM_SETFONT, reinterpret_cast<WPARAM>(GalleryFont()), FALSE);
    const auto& pages = Pages();
    for (size_t i = 0; i < pages.size(); ++i) {
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(pages[i].title);
        TabCtrl_InsertItem(g.tabs, static_cast<int>(i), &item);
    }
    Layout();
    ShowPage(0);
    ::ShowWindow(g.main, shotDir.empty() ? show : SW_SHOWNORMAL);
    ::UpdateWindow(g.main);

    if (!shotDir.empty()) {
        const int rc = Screenshots(shotDir);
        ::DestroyWindow(g.main);
        return rc;
    }
    MSG msg;
    while (::GetMessageW(&msg, nullptr, 0, 0) > 0) {
        if (!::IsDialogMessageW(g.main, &msg)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageW(&msg);
        }
    }
    return static_cast<int>(msg.wParam);
}
