// The DPI a window is drawn at, and what the library's windows do with it.
//
// The library follows the awareness the host chose: in a per-monitor aware
// host each window reports the DPI of its monitor, and every fixed pixel
// size of the library (paddings, check boxes, arrows, bars, buttons, swatch
// and palette cells, gutters) is scaled to it; in a host that is not DPI
// aware the system stretches the whole window and the library sees 96. The
// library never changes the process's or a thread's awareness itself: that
// is the host's decision, made in its manifest.
//
// A window object that lays itself out implements qv::DpiListener; the
// window object calls it when the window gets WM_DPICHANGED (a top-level
// window of the library, such as a tooltip or a palette) or
// WM_DPICHANGED_AFTERPARENT (a child, after its parent moved to a monitor of
// another DPI).
#pragma once

#include <windows.h>

#include "quorvel/common/api.h"
#include "quorvel/common/dpi_rules.h"

#ifndef WM_DPICHANGED
#define WM_DPICHANGED 0x02E0
#endif
#ifndef WM_DPICHANGED_BEFOREPARENT
#define WM_DPICHANGED_BEFOREPARENT 0x02E2
#endif
#ifndef WM_DPICHANGED_AFTERPARENT
#define WM_DPICHANGED_AFTERPARENT 0x02E3
#endif

namespace qv {

class QV_API DpiListener {
public:
    virtual ~DpiListener() = default;
    // The window now draws at `dpi`: re-create fonts, re-measure, re-layout.
    virtual void OnDpiChanged(UINT dpi) = 0;
};

// The DPI `hwnd` is drawn at: the window's own on systems that know per
// window DPI, the screen's otherwise; 96 for a null or destroyed window.
QV_API UINT DpiOf(HWND hwnd) noexcept;

// The screen's DPI (the system DPI), for what is laid out before it has a
// window of its own; 96 when it cannot be read.
QV_API UINT ScreenDpi() noexcept;

// A 96-DPI length at the DPI of `hwnd`.
inline int Scale(HWND hwnd, int length) noexcept { return ScaleToDpi(length, DpiOf(hwnd)); }

// GetSystemMetricsForDpi where the system has it; the 96-DPI metric scaled
// from the system DPI otherwise.
QV_API int SystemMetricForDpi(int index, UINT dpi) noexcept;

// Draws `bitmap` centred in `slot`, enlarged by the whole multiple
// BitmapFactorForDpi(dpi) pixel for pixel (no smoothing: a 16-pixel arrow
// becomes a sharp 32-pixel arrow at 200 %, not a blurred 24-pixel one at
// 150 %). False for a null bitmap or DC.
QV_API bool DrawBitmapSharp(HDC dc, HBITMAP bitmap, const RECT& slot, UINT dpi) noexcept;

// A copy of `bitmap` enlarged by the whole multiple for `dpi`, for a control
// that shows a bitmap itself (BM_SETIMAGE); the caller owns it. At 96 DPI, or
// when the copy cannot be made, null (use the original).
QV_API HBITMAP ScaledBitmapCopy(HBITMAP bitmap, UINT dpi) noexcept;

}  // namespace qv
