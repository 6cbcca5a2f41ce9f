// qv::NamedButton: a push button whose face does not say what it does - a
// "..." caption or a bitmap - and which tells screen readers instead.
//
// A reader hears the name given with SetAccessibleName ("Browse", "Reload
// image"; the owner translates it) and the role of a push button, with the
// system's answers for everything else (focus, the disabled state, where
// it is). Without a name of its own the button is read by its caption.
//
// A bitmap face given with SetFace is shown at the button's DPI: enlarged by
// whole multiples, pixel for pixel, so it stays sharp (a 20-pixel face is 40
// pixels at 200 %, and stays 20 at 150 % rather than blurring to 30). The
// button follows a DPI change itself; its owner may also call RefreshFace
// after moving it to a window of another DPI.
#pragma once

#include <windows.h>

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/gdi.h"

namespace qv {

class QV_API NamedButton : public Button, public AccessibleSource, public DpiListener {
public:
    NamedButton() = default;
    ~NamedButton() override;

    // The name screen readers hear (empty: the caption). A change of the
    // name of a button on the screen is announced (EVENT_OBJECT_NAMECHANGE).
    void SetAccessibleName(const std::wstring& name);
    const std::wstring& GetAccessibleName() const noexcept { return m_name; }

    // Shows `face` on the button (BM_SETIMAGE) at the button's DPI; the
    // caller keeps `face` alive as long as the button shows it. Null takes
    // the face away.
    void SetFace(HBITMAP face);
    HBITMAP GetFace() const noexcept { return m_face; }
    // The bitmap the button shows now: `face` itself at 96 and 144 DPI, its
    // enlarged copy (owned by the button) where the DPI calls for one.
    HBITMAP GetShownFace() const noexcept { return m_scaled ? m_scaled.get() : m_face; }
    // Shows the face again at the button's current DPI.
    void RefreshFace();

    // qv::AccessibleSource
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleRole(long child, long& role) override;
    // qv::DpiListener
    void OnDpiChanged(UINT dpi) override;

private:
    void ShowFace(UINT dpi);

    std::wstring m_name;
    HBITMAP m_face = nullptr;
    Bitmap m_scaled;
};

// The state a reader hears for a push button: the window's state (shown,
// enabled and so focusable, focused) and pressed while held down.
QV_API long PushButtonState(HWND button) noexcept;

}  // namespace qv
