// RAII for GDI: device contexts that release themselves, object selections
// that restore the previous object, and owned GDI objects.
//
// Everything here is inline and keeps no state beyond its handles, so the
// classes need no export and can be used by hosts as they are.
#pragma once

#include <windows.h>

#include <utility>

namespace qv {

// An owned HFONT/HBRUSH/HPEN/HBITMAP/HRGN: DeleteObject on destruction and
// on reset. Move-only. Never give it a stock object.
template <class T>
class GdiObject {
public:
    GdiObject() noexcept = default;
    explicit GdiObject(T handle) noexcept : m_handle(handle) {}
    ~GdiObject() { reset(); }
    GdiObject(GdiObject&& other) noexcept : m_handle(other.release()) {}
    GdiObject& operator=(GdiObject&& other) noexcept {
        if (this != &other) reset(other.release());
        return *this;
    }
    GdiObject(const GdiObject&) = delete;
    GdiObject& operator=(const GdiObject&) = delete;

    T get() const noexcept { return m_handle; }
    operator T() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != nullptr; }
    // Deletes the held object and takes `handle`.
    void reset(T handle = nullptr) noexcept {
        if (m_handle && m_handle != handle) ::DeleteObject(m_handle);
        m_handle = handle;
    }
    // Gives up ownership without deleting.
    T release() noexcept { return std::exchange(m_handle, nullptr); }

private:
    T m_handle = nullptr;
};

using Font = GdiObject<HFONT>;
using Brush = GdiObject<HBRUSH>;
using Pen = GdiObject<HPEN>;
using Bitmap = GdiObject<HBITMAP>;
using Region = GdiObject<HRGN>;

// GetDC/ReleaseDC of a window's client area (the screen for a null window).
class ClientDC {
public:
    explicit ClientDC(HWND hwnd) noexcept : m_hwnd(hwnd), m_dc(::GetDC(hwnd)) {}
    ~ClientDC() {
        if (m_dc) ::ReleaseDC(m_hwnd, m_dc);
    }
    ClientDC(const ClientDC&) = delete;
    ClientDC& operator=(const ClientDC&) = delete;
    operator HDC() const noexcept { return m_dc; }

private:
    HWND m_hwnd;
    HDC m_dc;
};

// GetWindowDC/ReleaseDC: the whole window, non-client area included.
class WindowDC {
public:
    explicit WindowDC(HWND hwnd) noexcept : m_hwnd(hwnd), m_dc(::GetWindowDC(hwnd)) {}
    ~WindowDC() {
        if (m_dc) ::ReleaseDC(m_hwnd, m_dc);
    }
    WindowDC(const WindowDC&) = delete;
    WindowDC& operator=(const WindowDC&) = delete;
    operator HDC() const noexcept { return m_dc; }

private:
    HWND m_hwnd;
    HDC m_dc;
};

// BeginPaint/EndPaint, for WM_PAINT handlers.
class PaintDC {
public:
    explicit PaintDC(HWND hwnd) noexcept : m_hwnd(hwnd), m_dc(::BeginPaint(hwnd, &m_ps)) {}
    ~PaintDC() { ::EndPaint(m_hwnd, &m_ps); }
    PaintDC(const PaintDC&) = delete;
    PaintDC& operator=(const PaintDC&) = delete;
    operator HDC() const noexcept { return m_dc; }
    const PAINTSTRUCT& GetPaintStruct() const noexcept { return m_ps; }
    const RECT& GetPaintRect() const noexcept { return m_ps.rcPaint; }

private:
    HWND m_hwnd;
    PAINTSTRUCT m_ps{};
    HDC m_dc;
};

// Selects an object into a DC and selects the previous one back on scope exit.
class SelectObjectScope {
public:
    SelectObjectScope(HDC dc, HGDIOBJ obj) noexcept : m_dc(dc), m_old(obj ? ::SelectObject(dc, obj) : nullptr) {}
    ~SelectObjectScope() {
        if (m_old) ::SelectObject(m_dc, m_old);
    }
    SelectObjectScope(const SelectObjectScope&) = delete;
    SelectObjectScope& operator=(const SelectObjectScope&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_old;
};

// An off-screen DC compatible with `reference`, with a cx x cy bitmap of the
// reference's format selected: draw into it, then BitBlt it out in one go.
class MemoryDC {
public:
    MemoryDC(HDC reference, int cx, int cy) noexcept
        : m_dc(::CreateCompatibleDC(reference)),
          m_bitmap(::CreateCompatibleBitmap(reference, cx > 0 ? cx : 1, cy > 0 ? cy : 1)),
          m_old(m_dc && m_bitmap ? ::SelectObject(m_dc, m_bitmap) : nullptr),
          m_cx(cx),
          m_cy(cy) {}
    ~MemoryDC() {
        if (m_old) ::SelectObject(m_dc, m_old);
        if (m_dc) ::DeleteDC(m_dc);
    }
    MemoryDC(const MemoryDC&) = delete;
    MemoryDC& operator=(const MemoryDC&) = delete;
    operator HDC() const noexcept { return m_dc; }
    bool IsValid() const noexcept { return m_dc && m_old; }
    HBITMAP GetBitmap() const noexcept { return m_bitmap; }
    // BitBlt of the whole bitmap to (x, y) of `target`.
    bool CopyTo(HDC target, int x = 0, int y = 0) const noexcept {
        return ::BitBlt(target, x, y, m_cx, m_cy, m_dc, 0, 0, SRCCOPY) != FALSE;
    }

private:
    HDC m_dc;
    Bitmap m_bitmap;  // deleted after the destructor's body has selected it out
    HGDIOBJ m_old;
    int m_cx;
    int m_cy;
};

}  // namespace qv
