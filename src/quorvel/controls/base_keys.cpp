#include "quorvel/controls/base_keys.h"

#include "quorvel/tooltip/xtooltip.h"

namespace qv {

bool MoveFocusOnKey(HWND control, UINT ch, bool enterMoves) {
    if (ch != VK_TAB && !(enterMoves && ch == VK_RETURN)) return false;
    HWND parent = ::GetParent(control);
    if (!parent) return false;
    const bool back = (::GetKeyState(VK_SHIFT) & 0x8000) != 0;
    HWND next = ::GetNextDlgTabItem(parent, control, back ? TRUE : FALSE);
    if (next && next != control) ::SetFocus(next);
    return true;
}

void NotifyParentSetFocus(HWND control) {
    HWND parent = ::GetParent(control);
    if (!parent || !::IsWindow(parent)) return;
    NMHDR hdr{};
    hdr.hwndFrom = control;
    hdr.idFrom = static_cast<UINT_PTR>(::GetDlgCtrlID(control));
    hdr.code = static_cast<UINT>(NM_SETFOCUS);
    ::SendMessageW(parent, WM_NOTIFY, hdr.idFrom, reinterpret_cast<LPARAM>(&hdr));
}

bool TooltipRelay::IsRelayedMouseMessage(UINT msg) noexcept {
    switch (msg) {
    case WM_MOUSEMOVE:
    case WM_MOUSELEAVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONUP:
        return true;
    default:
        return false;
    }
}

void TooltipRelay::Relay(XTooltip* tooltip, const MSG& msg, bool withF1) {
    if (!tooltip || !tooltip->m_hWnd || !::IsWindow(tooltip->m_hWnd)) return;
    const bool f1 = withF1 && msg.message == WM_KEYDOWN && msg.wParam == VK_F1;
    if (!f1 && !IsRelayedMouseMessage(msg.message)) return;
    if (msg.hwnd == m_last.hwnd && msg.message == m_last.message && msg.wParam == m_last.wParam &&
        msg.lParam == m_last.lParam && msg.time == m_last.time)
        return;
    m_last = msg;
    tooltip->RelayEvent(&msg);
}

MSG TooltipRelay::CurrentMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
    MSG m{};
    m.hwnd = hwnd;
    m.message = msg;
    m.wParam = wp;
    m.lParam = lp;
    m.time = static_cast<DWORD>(::GetMessageTime());
    const DWORD pos = ::GetMessagePos();
    m.pt = POINT{static_cast<short>(LOWORD(pos)), static_cast<short>(HIWORD(pos))};
    return m;
}

}  // namespace qv
