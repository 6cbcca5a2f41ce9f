#include "quorvel/windows/named_button.h"

#include <oleacc.h>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/reader_state.h"

namespace qv {

NamedButton::~NamedButton() {
    // The window lets go of the enlarged face before the face goes.
    if (OwnsWindow()) DestroyWindow();
}

void NamedButton::SetAccessibleName(const std::wstring& name) {
    if (name == m_name) return;
    m_name = name;
    if (IsWindow()) RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_NAMECHANGE);
}

void NamedButton::SetFace(HBITMAP face) {
    m_face = face;
    ShowFace(DpiOf(m_hWnd));
}

void NamedButton::RefreshFace() { ShowFace(DpiOf(m_hWnd)); }

void NamedButton::ShowFace(UINT dpi) {
    if (!IsWindow()) return;
    // The new image goes on before the old copy is freed: the button never
    // holds a deleted bitmap.
    Bitmap scaled(m_face ? ScaledBitmapCopy(m_face, dpi) : nullptr);
    SetBitmap(scaled ? scaled.get() : m_face);
    m_scaled = std::move(scaled);
}

bool NamedButton::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF || m_name.empty()) return false;
    name = m_name;
    return true;
}

bool NamedButton::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_PUSHBUTTON;
    return true;
}

void NamedButton::OnDpiChanged(UINT dpi) try {
    ShowFace(dpi);
} catch (...) {
    CaughtAtEdge(" qv::NamedButton::OnDpiChanged", __LINE__);
}

long PushButtonState(HWND button) noexcept {
    long state = ReaderWindowState(button, true);
    if (button && ::IsWindow(button) && (::SendMessageW(button, BM_GETSTATE, 0, 0) & BST_PUSHED))
        state |= STATE_SYSTEM_PRESSED;
    return state;
}

}  // namespace qv
