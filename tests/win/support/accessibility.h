// Reading controls the way a screen reader does: the accessible object of a
// window (AccessibleObjectFromWindow), its name, role, state and value, and
// a recorder of the WinEvents the controls raise.
#pragma once

#include <windows.h>
#include <oleacc.h>

#include <string>
#include <vector>

#include "quorvel/platform/com.h"

namespace qvtest {

struct Accessible {
    qv::ComPtr<IAccessible> object;
    explicit operator bool() const { return object.Get() != nullptr; }
    std::wstring Name(long child = CHILDID_SELF) const;
    std::wstring Value(long child = CHILDID_SELF) const;
    std::wstring Description(long child = CHILDID_SELF) const;
    long Role(long child = CHILDID_SELF) const;   // -1 when not answered
    long State(long child = CHILDID_SELF) const;  // -1 when not answered
    long ChildCount() const;                      // -1 when not answered
};

// The client object of `hwnd`, as a reader gets it.
Accessible AccessibleOf(HWND hwnd);

// Records the WinEvents raised for the windows of this process while it
// lives (out of context: they arrive while messages are pumped).
class WinEventRecorder {
public:
    struct Event {
        DWORD event;
        HWND hwnd;
        LONG object;
        LONG child;
    };
    WinEventRecorder();
    ~WinEventRecorder();
    WinEventRecorder(const WinEventRecorder&) = delete;
    WinEventRecorder& operator=(const WinEventRecorder&) = delete;
    // Pumps for a moment, then answers the events for `hwnd` (all when null).
    std::vector<Event> Events(HWND hwnd = nullptr, DWORD event = 0);
    void Clear();

private:
    HWINEVENTHOOK hook_ = nullptr;
};

}  // namespace qvtest
