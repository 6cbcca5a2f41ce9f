// Keyboard and focus behaviour shared by the base controls, so that every
// field of a form feels the same: Tab (and, outside edits, Enter) moves to
// the next field, Shift the other way; a field that gets the focus tells its
// parent; a field's tooltip hears the mouse and F1 without the host's help.
#pragma once

#include <windows.h>

#include "quorvel/common/api.h"

class XTooltip;

namespace qv {

// Tab (and Enter when `enterMoves`) moves the focus to the parent's next tab
// item, or the previous one while Shift is held. Returns true when the key
// was one of those and the control has a parent: the key is then swallowed,
// also when there is no other tab item. False: pass the key on.
QV_API bool MoveFocusOnKey(HWND control, UINT ch, bool enterMoves);

// Tells the parent that `control` got the focus: WM_NOTIFY with the
// control's id and NMHDR { control, id, NM_SETFOCUS }.
QV_API void NotifyParentSetFocus(HWND control);

// Passes a control's mouse messages (and, where asked, F1) to its tooltip.
// The controls call Relay from their own window procedure, because a plain
// Win32 host never calls PreTranslateMessage; a host loop that does call the
// control's public PreTranslateMessage reaches the same Relay first. The
// same message (window, message, parameters, time) is relayed only once, so
// F1 never opens a help document twice.
class QV_API TooltipRelay {
public:
    // Mouse moves and the mouse leaving, and left, right and middle button
    // downs and ups.
    static bool IsRelayedMouseMessage(UINT msg) noexcept;
    // Relays `msg` when it is a mouse message of the list above, or F1
    // (WM_KEYDOWN with VK_F1) when `withF1`. Null or windowless tooltips are
    // skipped.
    void Relay(XTooltip* tooltip, const MSG& msg, bool withF1 = false);
    // The message being dispatched, as Relay wants it (time and cursor from
    // the thread's last message).
    static MSG CurrentMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept;

private:
    MSG m_last{};
};

}  // namespace qv
