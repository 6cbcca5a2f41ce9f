#include "quorvel/views/viewers.h"

#include <exdisp.h>
#include <oleacc.h>
#include <ole2.h>
#include <vfw.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "quorvel/common/boundary.h"
#include "quorvel/common/shell_text.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/platform/com.h"
#include "quorvel/platform/module.h"
#include "quorvel/views/viewer_rules.h"

namespace {

namespace vw = qv::viewer;

std::wstring Translated(const wchar_t* text) { return qv::Services::Translation().Translate(text); }

// The class ids of the web-browser control and of the HTML engine's
// document, spelt out so that no import library has to carry them.
constexpr CLSID kClsidWebBrowser = {0x8856F961, 0x340A, 0x11D0, {0xA9, 0x6B, 0x00, 0xC0, 0x4F, 0xD7, 0x05, 0xA2}};
constexpr CLSID kClsidHtmlDocument = {0x25336920, 0x03F9, 0x11CF, {0x8F, 0xD0, 0x00, 0xAA, 0x00, 0x68, 0x6F, 0x13}};
constexpr IID kIidWebBrowser2 = {0xD30C1661, 0xCDAF, 0x11D0, {0x8A, 0x3E, 0x00, 0xC0, 0x4F, 0xC9, 0xE2, 0x6E}};

// A file's first bytes (all of it when shorter), shared with any writer.
bool ReadHead(const std::wstring& path, size_t maxBytes, std::string& bytes) {
    bytes.clear();
    if (path.empty()) return false;
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    LARGE_INTEGER size{};
    bool ok = ::GetFileSizeEx(file, &size) != FALSE && size.QuadPart >= 0;
    if (ok) {
        const size_t want = static_cast<size_t>(std::min<long long>(size.QuadPart, static_cast<long long>(maxBytes)));
        bytes.resize(want);
        size_t got = 0;
        while (ok && got < want) {
            DWORD read = 0;
            const DWORD chunk = static_cast<DWORD>(std::min<size_t>(want - got, 1u << 20));
            ok = ::ReadFile(file, bytes.data() + got, chunk, &read, nullptr) != FALSE && read > 0;
            got += read;
        }
        bytes.resize(got);
    }
    ::CloseHandle(file);
    return ok;
}

bool IsUrl(const std::wstring& name) { return name.find(L"://") != std::wstring::npos; }

bool FileExists(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::wstring TempFolder() {
    wchar_t buffer[MAX_PATH + 1] = {};
    const DWORD n = ::GetTempPathW(MAX_PATH + 1, buffer);
    return (n > 0 && n <= MAX_PATH) ? std::wstring(buffer, n) : std::wstring();
}

}  // namespace

// ===================================================================================
// XDIBView
// ===================================================================================

XDIBView::XDIBView() noexcept
    : m_bkColor(::GetSysColor(COLOR_WINDOW)), m_bkBrush(::CreateSolidBrush(m_bkColor)) {}

XDIBView::~XDIBView() {
    DestroyWindow();
    CloseDrawDib();
}

bool XDIBView::Create(const RECT& rect, HWND parent, UINT id, DWORD style) try {
    if (m_hWnd || !parent || !::IsWindow(parent)) return false;
    static const wchar_t* const cls =
        qv::RegisterLibraryWindowClass(L"QuorvelDibView", CS_HREDRAW | CS_VREDRAW, ::LoadCursorW(nullptr, IDC_ARROW), nullptr);
    if (!cls) return false;
    if (!CreateEx(0, cls, L"", style | WS_CHILD, rect, parent, id)) return false;
    m_drawDib = ::DrawDibOpen();
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XDIBView::Create", __LINE__, false);
}

void XDIBView::CloseDrawDib() noexcept {
    if (m_drawDib) ::DrawDibClose(static_cast<HDRAWDIB>(m_drawDib));
    m_drawDib = nullptr;
}

bool XDIBView::DisplayBMP(const std::wstring& path) try {
    Clear();
    std::string file;
    if (!ReadHead(path, vw::kMaxBitmapFile + 4096, file)) return false;
    vw::PackedDib dib;
    if (!vw::ParseBmp(file, dib)) return false;
    m_dib = std::move(dib.bytes);
    m_bitsOffset = dib.bitsOffset;
    m_path = path;
    if (IsWindow()) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_NAMECHANGE);
    if (m_drawDib && IsWindow()) {
        // Palette pictures get the palette DrawDib makes for them.
        qv::ClientDC dc(m_hWnd);
        ::DrawDibRealize(static_cast<HDRAWDIB>(m_drawDib), dc, FALSE);
    }
    if (IsWindow()) Invalidate();
    return true;
} catch (...) {
    Clear();
    return qv::CaughtAtEdge(" XDIBView::DisplayBMP", __LINE__, false);
}

void XDIBView::Clear() {
    m_dib.clear();
    m_dib.shrink_to_fit();
    m_bitsOffset = 0;
    m_path.clear();
    if (IsWindow()) Invalidate();
}

SIZE XDIBView::GetBitmapSize() const noexcept {
    if (m_dib.empty()) return SIZE{0, 0};
    const auto* h = reinterpret_cast<const BITMAPINFOHEADER*>(m_dib.data());
    return SIZE{h->biWidth, h->biHeight};
}

int XDIBView::GetBitCount() const noexcept {
    return m_dib.empty() ? 0 : reinterpret_cast<const BITMAPINFOHEADER*>(m_dib.data())->biBitCount;
}

RECT XDIBView::GetPictureRect(const RECT& client) const noexcept {
    const SIZE size = GetBitmapSize();
    const long cw = client.right - client.left, ch = client.bottom - client.top;
    if (size.cx <= 0 || size.cy <= 0 || cw <= 0 || ch <= 0) return RECT{client.left, client.top, client.left, client.top};
    long w = size.cx, h = size.cy;
    if (w > cw || h > ch) {
        // Scaled down to fit, keeping the proportions.
        if (static_cast<long long>(w) * ch > static_cast<long long>(h) * cw) {
            h = std::max(1L, static_cast<long>(static_cast<long long>(h) * cw / w));
            w = cw;
        } else {
            w = std::max(1L, static_cast<long>(static_cast<long long>(w) * ch / h));
            h = ch;
        }
    }
    const long x = client.left + (cw - w) / 2, y = client.top + (ch - h) / 2;
    return RECT{x, y, x + w, y + h};
}

bool XDIBView::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF) return false;
    name = vw::ReaderName(m_path);
    return true;
}

bool XDIBView::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_GRAPHIC;
    return true;
}

void XDIBView::SetBkColor(COLORREF colour) {
    m_bkColor = colour;
    m_bkBrush.reset(::CreateSolidBrush(colour));
    if (IsWindow()) Invalidate();
}

void XDIBView::Draw(HDC dc, const RECT& client) {
    const RECT picture = GetPictureRect(client);
    const int saved = ::SaveDC(dc);
    ::ExcludeClipRect(dc, picture.left, picture.top, picture.right, picture.bottom);
    ::FillRect(dc, &client, m_bkBrush.get());
    ::RestoreDC(dc, saved);
    if (m_dib.empty()) return;
    auto* header = reinterpret_cast<BITMAPINFOHEADER*>(m_dib.data());
    void* bits = m_dib.data() + m_bitsOffset;
    const int w = picture.right - picture.left, h = picture.bottom - picture.top;
    bool drawn = m_drawDib && ::DrawDibDraw(static_cast<HDRAWDIB>(m_drawDib), dc, picture.left, picture.top, w, h,
                                            header, bits, 0, 0, header->biWidth, header->biHeight, 0);
    if (!drawn) {
        // A device DrawDib does not take (or a format it refuses) still
        // gets the picture, through GDI.
        ::SetStretchBltMode(dc, COLORONCOLOR);
        drawn = ::StretchDIBits(dc, picture.left, picture.top, w, h, 0, 0, header->biWidth, header->biHeight, bits,
                                reinterpret_cast<BITMAPINFO*>(header), DIB_RGB_COLORS, SRCCOPY) != 0;
    }
    if (!drawn) qv::LogFailure(L" XDIBView::Draw", __LINE__, L"Drawing the bitmap failed");
}

LRESULT XDIBView::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_PRINTCLIENT: {
        Draw(reinterpret_cast<HDC>(wp), GetClientRect());
        return 0;
    }
    case WM_QUERYNEWPALETTE:
    case WM_PALETTECHANGED: {
        if (msg == WM_PALETTECHANGED && reinterpret_cast<HWND>(wp) == m_hWnd) return 0;
        if (!m_drawDib || m_dib.empty()) return 0;
        qv::ClientDC dc(m_hWnd);
        const UINT changed = ::DrawDibRealize(static_cast<HDRAWDIB>(m_drawDib), dc, msg == WM_PALETTECHANGED);
        if (changed) Invalidate(false);
        return changed ? TRUE : FALSE;
    }
    default:
        return qv::Window::WindowProc(msg, wp, lp);
    }
}

void XDIBView::OnPaint() {
    PAINTSTRUCT ps;
    const HDC dc = ::BeginPaint(m_hWnd, &ps);
    if (dc) Draw(dc, GetClientRect());
    ::EndPaint(m_hWnd, &ps);
}

BOOL XDIBView::OnEraseBkgnd(HDC) { return TRUE; }  // Draw fills around the picture

void XDIBView::OnDestroy() {
    CloseDrawDib();
    Default();
}

// ===================================================================================
// XHTMLView: the OLE container
// ===================================================================================

// The client site, in-place site and in-place frame the web browser asks
// its container for. It lives as long as the browser holds it; the view
// holds one reference of its own until it lets the browser go.
struct XHTMLView::Host final : public IOleClientSite, public IOleInPlaceSite, public IOleInPlaceFrame {
    explicit Host(HWND window) : hwnd(window) {}
    virtual ~Host() = default;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
        if (!out) return E_POINTER;
        *out = nullptr;
        if (iid == IID_IUnknown || iid == IID_IOleClientSite)
            *out = static_cast<IOleClientSite*>(this);
        else if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite)
            *out = static_cast<IOleInPlaceSite*>(this);
        else if (iid == IID_IOleInPlaceUIWindow || iid == IID_IOleInPlaceFrame)
            *out = static_cast<IOleInPlaceFrame*>(this);
        else
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(::InterlockedIncrement(&refs)); }
    STDMETHODIMP_(ULONG) Release() override {
        const LONG left = ::InterlockedDecrement(&refs);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

    // IOleClientSite
    STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** moniker) override {
        if (moniker) *moniker = nullptr;
        return E_NOTIMPL;
    }
    STDMETHODIMP GetContainer(IOleContainer** container) override {
        if (container) *container = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleWindow (both the site and the frame)
    STDMETHODIMP GetWindow(HWND* window) override {
        if (!window) return E_POINTER;
        *window = hwnd;
        return S_OK;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

    // IOleInPlaceSite
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnUIActivate() override { return S_OK; }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO info) override {
        if (!frame || !document || !position || !clip || !info) return E_POINTER;
        *frame = static_cast<IOleInPlaceFrame*>(this);
        AddRef();
        *document = nullptr;
        ::GetClientRect(hwnd, position);
        *clip = *position;
        info->fMDIApp = FALSE;
        info->hwndFrame = hwnd;
        info->haccel = nullptr;
        info->cAccelEntries = 0;
        return S_OK;
    }
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
    STDMETHODIMP DiscardUndoState() override { return S_OK; }
    STDMETHODIMP DeactivateAndUndo() override { return S_OK; }
    STDMETHODIMP OnPosRectChange(LPCRECT rect) override {
        if (inPlace && rect) inPlace->SetObjectRects(rect, rect);
        return S_OK;
    }

    // IOleInPlaceUIWindow
    STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) override { return S_OK; }

    // IOleInPlaceFrame
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    HWND hwnd;
    LONG refs = 1;
    qv::ComPtr<IOleObject> object;
    qv::ComPtr<IOleInPlaceObject> inPlace;
    qv::ComPtr<IWebBrowser2> browser;
};

XHTMLView::XHTMLView() noexcept = default;

XHTMLView::~XHTMLView() {
    ReleaseBrowser();
    DestroyWindow();
    if (m_oleInitialized) ::OleUninitialize();
    m_oleInitialized = false;
}

bool XHTMLView::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF) return false;
    name = vw::ReaderName(m_url);
    return true;
}

bool XHTMLView::AccessibleDescription(long child, std::wstring& description) {
    if (child != CHILDID_SELF || HasBrowser()) return false;
    description = GetMessageText();
    return true;
}

bool XHTMLView::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = vw::IsPicture(m_url) ? ROLE_SYSTEM_GRAPHIC : ROLE_SYSTEM_DOCUMENT;
    return true;
}

bool XHTMLView::HtmlEngineAvailable() try {
    qv::ComInit com;
    qv::ComPtr<IClassFactory> factory;
    const HRESULT hr = ::CoGetClassObject(kClsidHtmlDocument, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                                          reinterpret_cast<void**>(&factory));
    return SUCCEEDED(hr) && factory;
} catch (...) {
    return qv::CaughtAtEdge(" XHTMLView::HtmlEngineAvailable", __LINE__, false);
}

bool XHTMLView::Create(const RECT& rect, HWND parent, UINT id, DWORD style) try {
    if (m_hWnd || !parent || !::IsWindow(parent)) return false;
    static const wchar_t* const cls = qv::RegisterLibraryWindowClass(
        L"QuorvelHtmlView", CS_HREDRAW | CS_VREDRAW, ::LoadCursorW(nullptr, IDC_ARROW), nullptr);
    if (!cls) return false;
    if (!CreateEx(0, cls, L"", style | WS_CHILD | WS_CLIPCHILDREN, rect, parent, id)) return false;

    if (!m_oleInitialized) {
        const HRESULT hr = ::OleInitialize(nullptr);
        m_oleInitialized = SUCCEEDED(hr);
    }
    if (!HtmlEngineAvailable()) {
        qv::LogFailure(L" XHTMLView::Create", __LINE__, L"The HTML engine is not available", REGDB_E_CLASSNOTREG);
        Invalidate();
        return true;
    }
    auto* host = new Host(m_hWnd);
    m_host = host;
    HRESULT hr = host->object.CoCreateInstance(kClsidWebBrowser, IID_IOleObject, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(hr)) hr = host->object->SetClientSite(static_cast<IOleClientSite*>(host));
    if (SUCCEEDED(hr)) {
        RECT client = GetClientRect();
        hr = host->object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, static_cast<IOleClientSite*>(host), 0, m_hWnd,
                                  &client);
    }
    if (SUCCEEDED(hr)) hr = host->object.QueryInterface(kIidWebBrowser2, host->browser);
    if (SUCCEEDED(hr)) hr = host->object.QueryInterface(IID_IOleInPlaceObject, host->inPlace);
    if (FAILED(hr)) {
        qv::LogFailure(L" XHTMLView::Create", __LINE__, L"Creating the web browser failed", hr);
        ReleaseBrowser();
        Invalidate();
        return true;
    }
    host->browser->put_Silent(VARIANT_TRUE);  // no script error boxes over the form
    return true;
} catch (...) {
    ReleaseBrowser();
    return qv::CaughtAtEdge(" XHTMLView::Create", __LINE__, false);
}

void XHTMLView::ReleaseBrowser() noexcept {
    Host* host = std::exchange(m_host, nullptr);
    if (!host) return;
    if (host->inPlace) host->inPlace->InPlaceDeactivate();
    if (host->object) {
        host->object->Close(OLECLOSE_NOSAVE);
        host->object->SetClientSite(nullptr);
    }
    host->inPlace.Reset();
    host->browser.Reset();
    host->object.Reset();
    host->Release();
}

bool XHTMLView::HasBrowser() const noexcept { return m_host && m_host->browser; }

std::wstring XHTMLView::GetMessageText() const {
    if (HasBrowser()) return {};
    return Translated(L"No HTML engine is available to show this file.");
}

bool XHTMLView::DisplayURL(const std::wstring& url) try {
    m_url = url;
    if (!HasBrowser()) return false;
    qv::Bstr address(url.c_str());
    VARIANT empty;
    ::VariantInit(&empty);
    const HRESULT hr = m_host->browser->Navigate(address, &empty, &empty, &empty, &empty);
    if (FAILED(hr)) qv::LogFailure(L" XHTMLView::DisplayURL", __LINE__, L"Navigating failed", hr);
    return SUCCEEDED(hr);
} catch (...) {
    return qv::CaughtAtEdge(" XHTMLView::DisplayURL", __LINE__, false);
}

bool XHTMLView::SetBrowserBars(bool show) {
    if (!HasBrowser()) return false;
    IWebBrowser2* b = m_host->browser.Get();
    const VARIANT_BOOL on = show ? VARIANT_TRUE : VARIANT_FALSE;
    bool ok = SUCCEEDED(b->put_ToolBar(show ? 1 : 0));
    ok = SUCCEEDED(b->put_MenuBar(on)) && ok;
    ok = SUCCEEDED(b->put_StatusBar(on)) && ok;
    ok = SUCCEEDED(b->put_AddressBar(on)) && ok;
    ok = SUCCEEDED(b->put_TheaterMode(VARIANT_FALSE)) && ok;
    ok = SUCCEEDED(b->put_FullScreen(VARIANT_FALSE)) && ok;
    return ok;
}

LRESULT XHTMLView::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_PRINTCLIENT:
        if (!HasBrowser()) {
            DrawMessage(reinterpret_cast<HDC>(wp));
            return 0;
        }
        return qv::Window::WindowProc(msg, wp, lp);
    default:
        return qv::Window::WindowProc(msg, wp, lp);
    }
}

void XHTMLView::OnPaint() {
    PAINTSTRUCT ps;
    const HDC dc = ::BeginPaint(m_hWnd, &ps);
    if (dc && !HasBrowser()) DrawMessage(dc);
    ::EndPaint(m_hWnd, &ps);
}

BOOL XHTMLView::OnEraseBkgnd(HDC) { return TRUE; }

void XHTMLView::DrawMessage(HDC dc) {
    const RECT client = GetClientRect();
    ::FillRect(dc, &client, ::GetSysColorBrush(COLOR_WINDOW));
    const std::wstring text = GetMessageText();
    RECT box = client;
    ::InflateRect(&box, -8, -8);
    const HGDIOBJ oldFont = ::SelectObject(dc, ::GetStockObject(DEFAULT_GUI_FONT));
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, ::GetSysColor(COLOR_GRAYTEXT));
    // Centred in the view, as the "File not found" text of the image view.
    RECT measured = box;
    ::DrawTextW(dc, text.c_str(), -1, &measured, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
    const LONG height = measured.bottom - measured.top;
    if (height < box.bottom - box.top) box.top += (box.bottom - box.top - height) / 2;
    ::DrawTextW(dc, text.c_str(), -1, &box, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
    ::SelectObject(dc, oldFont);
}

void XHTMLView::OnSize(UINT type, int cx, int cy) {
    if (m_host && m_host->inPlace) {
        const RECT rect{0, 0, cx, cy};
        m_host->inPlace->SetObjectRects(&rect, &rect);
    }
    Invalidate();
    qv::Window::OnSize(type, cx, cy);
}

void XHTMLView::OnDestroy() {
    ReleaseBrowser();
    Default();
}

// ===================================================================================
// XImageView
// ===================================================================================

namespace {
constexpr UINT kButtonOffsets[3] = {XImageView::kReloadOffset, XImageView::kOpenOffset, XImageView::kBrowserOffset};
constexpr UINT kButtonFaces[3] = {XImageView::kReloadFace, XImageView::kOpenFace, XImageView::kBrowserFace};
}  // namespace

XImageView::XImageView() : m_scheme(::GetSysColor(COLOR_WINDOWTEXT), ::GetSysColor(COLOR_WINDOW)) {}

XImageView::~XImageView() {
    ViewerDelete();
    // The tooltip goes before the buttons it watches, so that it lets go of
    // them itself.
    m_tooltip.DestroyWindow();
    DestroyWindow();
}

bool XImageView::CreateCtrl(UINT& id, const RECT& rect, HFONT font, HWND parent) try {
    if (m_hWnd || !parent || !::IsWindow(parent)) return false;
    if (!font) font = reinterpret_cast<HFONT>(::SendMessageW(parent, WM_GETFONT, 0, 0));
    if (!CreateEx(WS_EX_CONTROLPARENT, L"STATIC", L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, rect, parent, id))
        return false;
    m_idBase = id;
    const RECT area = ViewerGetSize();
    m_staticNotFound.Create(Translated(L"File not found").c_str(), WS_CHILD | SS_CENTER | SS_CENTERIMAGE | SS_NOPREFIX,
                            area, m_hWnd, m_idBase + kNotFoundOffset);
    if (font) m_staticNotFound.SetFont(font, false);
    if (HasAdditionalCtrls()) {
        if (!DisplayAdditionalCtrls(font)) qv::LogFailure(L" XImageView::CreateCtrl", __LINE__, L"Creating control failed");
        CreateBtnToolTips();
    }
    // "File not found" comes after the field in the tab order: shown, it is
    // no label that would name the field.
    if (m_staticNotFound.IsWindow())
        m_staticNotFound.SetWindowPos(HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Layout(qv::DpiOf(m_hWnd));
    id += kIdCount;
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XImageView::CreateCtrl", __LINE__, false);
}

HBITMAP XImageView::LoadBitmapW(UINT id) {
    return static_cast<HBITMAP>(
        ::LoadImageW(qv::LibraryModule(), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS));
}

bool XImageView::DisplayAdditionalCtrls(HFONT font) {
    const int row = qv::Scale(m_hWnd, vw::kRowHeight);
    bool ok = m_editFile.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | ES_AUTOHSCROLL, RECT{0, 0, 10, row},
                                m_hWnd, m_idBase + kFileEditOffset);
    if (ok) {
        if (font) m_editFile.SetFont(font, false);
        m_editFile.SetReadOnly(m_bReadOnly);
    }
    static const wchar_t* const kNames[3] = {L"Reload image", L"Edit image", L"Open in web browser"};
    for (int i = 0; i < 3; ++i) {
        // The name is not drawn (the face is); screen readers read it.
        const std::wstring name = Translated(kNames[i]);
        const bool made = m_buttons[i].Create(name.c_str(), WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_BITMAP | BS_CENTER,
                                              RECT{0, 0, row, row}, m_hWnd, m_idBase + kButtonOffsets[i]);
        ok = ok && made;
        if (!made) continue;
        m_buttons[i].SetAccessibleName(name);
        m_faces[i].reset(LoadBitmapW(kButtonFaces[i]));
        m_buttons[i].SetFace(m_faces[i].get());
    }
    return ok;
}

void XImageView::CreateBtnToolTips() {
    if (!m_tooltip.IsWindow() && !m_tooltip.Create(m_hWnd)) return;
    static const wchar_t* const kTips[3] = {L"Reload image", L"Edit image", L"Open in web browser"};
    for (int i = 0; i < 3; ++i)
        if (m_buttons[i].IsWindow()) m_tooltip.AddTool(m_buttons[i], Translated(kTips[i]).c_str());
}

qv::Button& XImageView::GetButton(UINT offset) noexcept {
    switch (offset) {
    case kOpenOffset: return m_buttons[1];
    case kBrowserOffset: return m_buttons[2];
    default: return m_buttons[0];
    }
}

namespace {
RECT ToRect(const qv::Box& b) { return RECT{b.left, b.top, b.right, b.bottom}; }
}  // namespace

RECT XImageView::ViewerGetSize() const {
    if (!IsWindow()) return RECT{};
    const RECT client = GetClientRect();
    return ToRect(vw::LayOutView(client.right, client.bottom, m_editFile.IsWindow(), qv::DpiOf(m_hWnd)).viewer);
}

void XImageView::Layout(UINT dpi) {
    if (!IsWindow()) return;
    const RECT client = GetClientRect();
    const vw::ViewLayout v = vw::LayOutView(client.right, client.bottom, m_editFile.IsWindow(), dpi);
    if (m_editFile.IsWindow()) {
        for (int i = 0; i < 3; ++i)
            if (m_buttons[i].IsWindow()) m_buttons[i].MoveWindow(ToRect(v.buttons[i]));
        m_editFile.MoveWindow(ToRect(v.edit));
    }
    const RECT area = ToRect(v.viewer);
    if (m_staticNotFound.IsWindow()) m_staticNotFound.MoveWindow(area);
    if (m_pHTMLView && m_pHTMLView->IsWindow()) m_pHTMLView->MoveWindow(area);
    if (m_pDIBView && m_pDIBView->IsWindow()) m_pDIBView->MoveWindow(area);
}

void XImageView::SetFilename(const std::wstring& name) try {
    if (!IsWindow()) return;
    if (m_bBrowserOnly && !m_editFile.IsWindow()) return;
    m_strFilename = name;
    if (m_editFile.IsWindow()) {
        m_settingName = true;
        m_editFile.SetWindowText(name.c_str());
        m_settingName = false;
    }
    DisplayFile();
} catch (...) {
    m_settingName = false;
    qv::CaughtAtEdge(" XImageView::SetFilename", __LINE__);
}

bool XImageView::DisplayFile() try {
    if (!IsWindow()) return false;
    const RECT area = ViewerGetSize();
    Invalidate();
    ViewerDelete();
    if (!ViewerMakeInstance() || !ViewerCreate(area)) {
        DispFileNotFound();
        return false;
    }
    Invalidate();
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XImageView::DisplayFile", __LINE__, false);
}

void XImageView::ViewerDelete() {
    m_pHTMLView.reset();
    m_pDIBView.reset();
}

bool XImageView::ViewerMakeInstance() {
    ViewerKind kind = kNoViewer;
    switch (vw::ChooseViewer(m_strFilename)) {
    case vw::Kind::Html: kind = kHtmlViewer; break;
    case vw::Kind::Bitmap: kind = kBitmapViewer; break;
    case vw::Kind::None: break;
    }
    if (kind == kNoViewer || !ShowsKind(kind)) return false;
    if (!IsUrl(m_strFilename) && !FileExists(m_strFilename)) return false;
    if (kind == kHtmlViewer) {
        m_pHTMLView.reset();
        m_pHTMLView = std::make_unique<XHTMLView>();
    } else {
        m_pDIBView.reset();
        m_pDIBView = std::make_unique<XDIBView>();
    }
    return true;
}

bool XImageView::ViewerCreate(const RECT& area) {
    if (m_pHTMLView) {
        if (!m_pHTMLView->Create(area, m_hWnd, m_idBase, WS_CHILD | WS_VISIBLE)) {
            m_pHTMLView.reset();
            return false;
        }
        DeleteErrorMsg();
        m_pHTMLView->ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED);
        m_pHTMLView->DisplayURL(m_strFilename);
        m_pHTMLView->SetBrowserBars(false);
        m_pHTMLView->ShowWindow(SW_SHOW);
        return true;
    }
    if (m_pDIBView) {
        if (!m_pDIBView->Create(area, m_hWnd, m_idBase, WS_CHILD | WS_VISIBLE)) {
            m_pDIBView.reset();
            return false;
        }
        DeleteErrorMsg();
        m_pDIBView->ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED);
        m_pDIBView->SetBkColor(m_scheme.BkColor());
        if (!m_pDIBView->DisplayBMP(m_strFilename)) {
            m_pDIBView.reset();
            return false;
        }
        m_pDIBView->ShowWindow(SW_SHOW);
        m_pDIBView->UpdateWindow();
        return true;
    }
    return false;
}

void XImageView::DispFileNotFound() {
    if (!m_staticNotFound.IsWindow()) return;
    m_staticNotFound.SetWindowText(Translated(L"File not found").c_str());
    m_staticNotFound.MoveWindow(ViewerGetSize());
    m_staticNotFound.ShowWindow(SW_SHOW);
}

void XImageView::DeleteErrorMsg() {
    if (m_staticNotFound.IsWindow()) m_staticNotFound.ShowWindow(SW_HIDE);
}

bool XImageView::IsFileNotFoundShown() const { return m_staticNotFound.IsWindow() && m_staticNotFound.IsWindowVisible(); }

XImageView::ViewerKind XImageView::GetViewerKind() const noexcept {
    if (m_pHTMLView) return kHtmlViewer;
    if (m_pDIBView) return kBitmapViewer;
    return kNoViewer;
}

void XImageView::SetReadOnly(bool readOnly) {
    m_bReadOnly = readOnly;
    if (m_editFile.IsWindow()) m_editFile.SetReadOnly(readOnly);
}

void XImageView::SetTextColor(unsigned long colour) {
    m_scheme.SetText(m_hWnd, colour);
    if (m_editFile.IsWindow()) m_editFile.Invalidate();
    if (m_staticNotFound.IsWindow()) m_staticNotFound.Invalidate();
}

void XImageView::SetBkColor(unsigned long colour) {
    m_scheme.SetBk(m_hWnd, colour);
    if (m_editFile.IsWindow()) m_editFile.Invalidate();
    if (m_staticNotFound.IsWindow()) m_staticNotFound.Invalidate();
    if (m_pDIBView) m_pDIBView->SetBkColor(colour);
}

void XImageView::StartIE() try {
    if (m_strFilename.empty()) return;
    const std::wstring command = vw::BrowserCommandLine(RegisteredBrowserCommand(), m_strFilename);
    if (!command.empty()) LaunchProcess(command);
} catch (...) {
    qv::CaughtAtEdge(" XImageView::StartIE", __LINE__);
}

std::wstring XImageView::RegisteredBrowserCommand() {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_CLASSES_ROOT, L"Applications\\iexplore.exe\\shell\\open\\command", 0, KEY_READ, &key) !=
        ERROR_SUCCESS)
        return {};
    wchar_t buffer[1000] = {};
    DWORD bytes = sizeof buffer - sizeof(wchar_t);
    DWORD type = 0;
    const LONG rc = ::RegQueryValueExW(key, nullptr, nullptr, &type, reinterpret_cast<BYTE*>(buffer), &bytes);
    ::RegCloseKey(key);
    if (rc != ERROR_SUCCESS || (type != REG_SZ && type != REG_EXPAND_SZ)) return {};
    buffer[std::min<size_t>(bytes / sizeof(wchar_t), 999)] = 0;
    return buffer;
}

bool XImageView::LaunchProcess(const std::wstring& commandLine) {
    std::vector<wchar_t> line(commandLine.begin(), commandLine.end());
    line.push_back(0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return false;
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return true;
}

void XImageView::OpenInApplication(HWND button) {
    const std::wstring folder = TempFolder();
    const std::wstring file = RenameIfHTMLIsforWordOrExcel(m_strFilename);
    const INT_PTR result = qv::Services::Shell().Execute(button, L"open", file.c_str(), nullptr,
                                                          folder.empty() ? nullptr : folder.c_str(), SW_SHOW);
    if (result < 33) {
        qv::Services::MessageBoxes().Show(m_hWnd, Translated(L"Open application").c_str(),
                                          Translated(qv::ShellErrorText(result)).c_str(), MB_ICONERROR);
    }
}

bool XImageView::IsHTMLFile(const std::wstring& path) try {
    std::string head;
    if (!ReadHead(path, 4096, head)) return false;
    const std::vector<std::wstring> lines = vw::TextLines(head, 1);
    return !lines.empty() && vw::IsHtmlFirstLine(lines[0]);
} catch (...) {
    return qv::CaughtAtEdge(" XImageView::IsHTMLFile", __LINE__, false);
}

std::wstring XImageView::RenameIfHTMLIsforWordOrExcel(const std::wstring& path) try {
    std::string head;
    if (!ReadHead(path, 64 * 1024, head)) return path;
    const vw::Office office = vw::DetectOfficePage(vw::TextLines(head, 3));
    if (office == vw::Office::None || !IsHTMLFile(path)) return path;
    return RenameFile(path, std::wstring(vw::OfficeExtension(office)));
} catch (...) {
    return qv::CaughtAtEdge(" XImageView::RenameIfHTMLIsforWordOrExcel", __LINE__, path);
}

std::wstring XImageView::RenameFile(const std::wstring& path, const std::wstring& extension) try {
    const std::wstring folder = TempFolder();
    const std::wstring name = vw::NameWithExtension(path, extension);
    if (folder.empty() || name.empty()) return path;
    const std::wstring target = folder + name;
    if (::CompareStringOrdinal(target.c_str(), -1, path.c_str(), -1, TRUE) == CSTR_EQUAL) return path;
    if (!::CopyFileW(path.c_str(), target.c_str(), FALSE)) {
        qv::LogFailure(L" XImageView::RenameFile", __LINE__, L"Copying the office page failed",
                       HRESULT_FROM_WIN32(::GetLastError()));
        return path;
    }
    return target;
} catch (...) {
    return qv::CaughtAtEdge(" XImageView::RenameFile", __LINE__, path);
}

LRESULT XImageView::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_PAINT: {
        PAINTSTRUCT ps;
        const HDC dc = ::BeginPaint(m_hWnd, &ps);
        if (dc) ::FillRect(dc, &ps.rcPaint, m_scheme.Brush());
        ::EndPaint(m_hWnd, &ps);
        return 0;
    }
    case WM_PRINTCLIENT: {
        const RECT client = GetClientRect();
        ::FillRect(reinterpret_cast<HDC>(wp), &client, m_scheme.Brush());
        return 0;
    }
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC: {
        const HWND child = reinterpret_cast<HWND>(lp);
        if (child == m_editFile.m_hWnd || child == m_staticNotFound.m_hWnd) {
            const HDC dc = reinterpret_cast<HDC>(wp);
            ::SetBkMode(dc, OPAQUE);
            return reinterpret_cast<LRESULT>(m_scheme.Apply(dc));
        }
        return qv::Window::WindowProc(msg, wp, lp);
    }
    default:
        return qv::Window::WindowProc(msg, wp, lp);
    }
}

void XImageView::OnSize(UINT type, int cx, int cy) {
    Layout(qv::DpiOf(m_hWnd));
    qv::Window::OnSize(type, cx, cy);
}

void XImageView::OnDpiChanged(UINT dpi) {
    Layout(dpi);
    for (auto& button : m_buttons) button.RefreshFace();
}

bool XImageView::AccessibleDescription(long child, std::wstring& description) {
    if (child != CHILDID_SELF || !IsFileNotFoundShown()) return false;
    description = m_staticNotFound.GetWindowText();
    return true;
}

bool XImageView::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_GROUPING;
    return true;
}

BOOL XImageView::OnEraseBkgnd(HDC dc) {
    const RECT client = GetClientRect();
    ::FillRect(dc, &client, m_scheme.Brush());
    return TRUE;
}

BOOL XImageView::OnCommand(WPARAM wp, LPARAM lp) {
    const UINT id = LOWORD(wp);
    const UINT code = HIWORD(wp);
    const HWND from = reinterpret_cast<HWND>(lp);
    if (from && code == BN_CLICKED && !m_strFilename.empty() && id >= (m_idBase & 0xFFFF)) {
        bool ours = false;
        for (const auto& button : m_buttons) ours = ours || (button.m_hWnd && button.m_hWnd == from);
        if (ours) {
            const UINT offset = id - (m_idBase & 0xFFFF);
            if (m_bBrowserOnly)
                StartIE();
            else if (offset == kReloadOffset)
                DisplayFile();
            else if (offset == kOpenOffset)
                OpenInApplication(from);
            else if (offset == kBrowserOffset)
                StartIE();
        }
    } else if (from && code == EN_CHANGE && from == m_editFile.m_hWnd) {
        qv::RaiseAccessibleEvent(m_editFile.m_hWnd, EVENT_OBJECT_VALUECHANGE);
        if (!m_settingName) {
            m_strFilename = m_editFile.GetWindowText();
            DisplayFile();
        }
        const HWND parent = GetParent();
        if (parent) ::SendMessageW(parent, WM_COMMAND, wp, lp);
    }
    return qv::Window::OnCommand(wp, lp);
}

void XImageView::OnDestroy() {
    ViewerDelete();
    m_tooltip.DestroyWindow();
    Default();
}
