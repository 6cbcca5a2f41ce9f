// The arithmetic of drawing at any DPI. The library lays everything out in
// pixels at 96 DPI (100 %) and scales each length to the DPI of the window it
// is drawn in, so a form is as sharp and as roomy at 150 % or 200 % as at
// 100 %. Nothing here includes <windows.h>.
#pragma once

#include "quorvel/common/api.h"

namespace qv {

// The DPI the library's pixel sizes are written for.
inline constexpr unsigned kBaseDpi = 96;

// A length laid out at 96 DPI, at `dpi`, rounded half away from zero (as the
// platform's MulDiv). A DPI of 0, which a failed query answers, counts as 96.
// Results that would not fit an int saturate.
QV_API int ScaleToDpi(int length, unsigned dpi) noexcept;

// The reverse: a length measured at `dpi`, in 96-DPI pixels.
QV_API int ScaleFromDpi(int length, unsigned dpi) noexcept;

// A length laid out at `from` DPI, at `to` DPI (a window moved to another
// monitor rescales what it had laid out rather than starting again).
QV_API int ScaleBetweenDpi(int length, unsigned from, unsigned to) noexcept;

// Bitmaps are enlarged by whole multiples only, pixel for pixel, so they stay
// sharp: the largest multiple that fits the scaled slot, at least 1 (1 at
// 96 and 144 DPI, 2 at 192, 3 at 288).
QV_API int BitmapFactorForDpi(unsigned dpi) noexcept;

// The LOGFONT height (negative: character height) of a font of `points`.
QV_API int FontHeightForDpi(int points, unsigned dpi) noexcept;

// The offset that centres a length `inner` in `outer` (may be negative when
// the inner one is larger).
inline int CentredOffset(int outer, int inner) noexcept { return (outer - inner) / 2; }

}  // namespace qv
