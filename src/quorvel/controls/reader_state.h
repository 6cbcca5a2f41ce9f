// What a screen reader is told about a control window as a whole: whether
// it is shown, enabled, focused and can take the focus, in the
// STATE_SYSTEM_* bits of oleacc.h. The library's controls add their own
// bits (checked, read-only) to it. Private to the library: not installed.
#pragma once

#include <windows.h>
#include <oleacc.h>

namespace qv {

// INVISIBLE for a hidden window (or one inside a hidden parent),
// UNAVAILABLE for a disabled one, FOCUSED when it (or a window inside it)
// has the keyboard focus, FOCUSABLE when `focusable` and it is enabled.
inline long ReaderWindowState(HWND hwnd, bool focusable) noexcept {
    if (!hwnd || !::IsWindow(hwnd)) return STATE_SYSTEM_UNAVAILABLE;
    long state = 0;
    if (!::IsWindowVisible(hwnd)) state |= STATE_SYSTEM_INVISIBLE;
    const bool enabled = ::IsWindowEnabled(hwnd) != FALSE;
    if (!enabled) state |= STATE_SYSTEM_UNAVAILABLE;
    if (focusable && enabled) state |= STATE_SYSTEM_FOCUSABLE;
    const HWND focus = ::GetFocus();
    if (focus && (focus == hwnd || ::IsChild(hwnd, focus))) state |= STATE_SYSTEM_FOCUSED;
    return state;
}

}  // namespace qv
