// The library's module handle: every library resource (dialog template,
// bitmap, window class) is looked up in quorvel.dll itself, never in the
// host executable, even when the host carries a resource of the same number.
#pragma once

#include <windows.h>

#include "quorvel/common/api.h"

namespace qv {

// The module that contains this code (quorvel.dll).
QV_API HINSTANCE LibraryModule() noexcept;

// Loads a bitmap from the library's resources (null when missing).
QV_API HBITMAP LoadLibraryBitmap(UINT id) noexcept;

}  // namespace qv
