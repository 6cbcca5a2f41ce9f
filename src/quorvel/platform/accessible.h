// Screen-reader support for the library's controls (Microsoft Active
// Accessibility). A control that draws or lays out something the stock
// control underneath does not know about implements qv::AccessibleSource;
// the window object then answers WM_GETOBJECT for the client area with the
// platform's standard proxy for the window, and the source's answers laid
// over it: a name from the label, the value the control shows, the checked
// state of an owner-drawn item, the items of a window that has no child
// windows for them. What a source does not answer, the standard proxy does,
// so keyboard focus, location, navigation and the stock control's own items
// stay as the system reports them.
//
// Children: ids 1..n are the source's own items when it reports a count;
// otherwise the standard proxy's children are passed through.
#pragma once

#include <windows.h>

#include <string>

#include "quorvel/common/api.h"

namespace qv {

class QV_API AccessibleSource {
public:
    virtual ~AccessibleSource() = default;

    // Each answer is for `child` (0 = the control itself, 1..n its items).
    // Answer false to leave the question to the standard proxy.
    virtual bool AccessibleName(long /*child*/, std::wstring& /*name*/) { return false; }
    virtual bool AccessibleValue(long /*child*/, std::wstring& /*value*/) { return false; }
    virtual bool AccessibleDescription(long /*child*/, std::wstring& /*description*/) { return false; }
    // ROLE_SYSTEM_* / STATE_SYSTEM_* of oleacc.h.
    virtual bool AccessibleRole(long /*child*/, long& /*role*/) { return false; }
    virtual bool AccessibleState(long /*child*/, long& /*state*/) { return false; }
    // The number of items the control draws itself (answered as children
    // 1..n with no window of their own).
    virtual bool AccessibleChildCount(long& /*count*/) { return false; }
    // An item's rectangle in client coordinates.
    virtual bool AccessibleItemRect(long /*child*/, RECT& /*rect*/) { return false; }
    // The item under a client point (0 = the control itself), or false.
    virtual bool AccessibleHitTest(POINT /*client*/, long& /*child*/) { return false; }
    // The default action ("Check", "Press") of an item, and doing it.
    virtual bool AccessibleDefaultAction(long /*child*/, std::wstring& /*action*/) { return false; }
    virtual bool AccessibleDoDefaultAction(long /*child*/) { return false; }
};

// Answers WM_GETOBJECT for `hwnd` with the standard proxy wrapped around
// `source`'s answers, for OBJID_CLIENT; 0 for other objects or failure (the
// caller then passes the message on). The wrapper finds the source again on
// every call through the window object of `hwnd`, so a reader that keeps
// the object after the window is gone gets "not available", not a crash.
QV_API LRESULT AnswerGetObject(HWND hwnd, WPARAM wp, LPARAM lp);

// Raises a WinEvent (EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_VALUECHANGE,
// EVENT_OBJECT_STATECHANGE ...) for the control's client object or one of
// its items. Does nothing for a null or destroyed window.
QV_API void RaiseAccessibleEvent(HWND hwnd, DWORD event, long child = 0);

// The accessible name of a control from its label: the nearest static,
// button group box or library label before it in the dialog's tab order
// (the previous sibling windows), cleaned for reading aloud (mnemonic marks,
// the mandatory star and help references removed). The edit inside a
// library field that has no label of its own takes the field's. "" when
// there is none.
QV_API std::wstring AccessibleLabelOf(HWND hwnd);

// The window text of `hwnd`, cleaned as a label is.
QV_API std::wstring AccessibleTextOf(HWND hwnd);

}  // namespace qv
