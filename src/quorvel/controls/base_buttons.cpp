#include "quorvel/controls/base_buttons.h"

#include <oleacc.h>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/base_keys.h"
#include "quorvel/controls/reader_state.h"

// ---- Form buttons ------------------------------------------------------------------

namespace qv {

BOOL FormButton::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) {
    return CreateButton(text, id, rect, font, parent, CreationStyle());
}

BOOL FormButton::CreateButton(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent,
                              DWORD style) {
    if (!Button::Create(text.c_str(), style, rect, parent, id)) return FALSE;
    SetFont(font, true);
    return TRUE;
}

void FormButton::OnChar(UINT ch, UINT, UINT) {
    if (!MoveFocusOnKey(m_hWnd, ch, true)) Default();
}

LRESULT FormButton::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    if (msg != BM_SETCHECK) return Button::WindowProc(msg, wp, lp);
    // A click on an automatic box or radio button sets the check through
    // this message too, so every change reaches a reader, whoever made it.
    const LRESULT before = ::SendMessageW(m_hWnd, BM_GETCHECK, 0, 0);
    const LRESULT result = Button::WindowProc(msg, wp, lp);
    if (::SendMessageW(m_hWnd, BM_GETCHECK, 0, 0) != before) RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_STATECHANGE);
    return result;
}

LRESULT FormButton::OnSetText(WPARAM, LPARAM) {
    const LRESULT result = Default();
    if (result) RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_NAMECHANGE);
    return result;
}

bool FormButton::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    switch (GetStyle() & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE: role = ROLE_SYSTEM_CHECKBUTTON; break;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON: role = ROLE_SYSTEM_RADIOBUTTON; break;
    case BS_GROUPBOX: role = ROLE_SYSTEM_GROUPING; break;
    default: role = ROLE_SYSTEM_PUSHBUTTON; break;
    }
    return true;
}

bool FormButton::AccessibleState(long child, long& state) {
    if (child != 0) return false;
    const DWORD type = GetStyle() & BS_TYPEMASK;
    state = ReaderWindowState(m_hWnd, type != BS_GROUPBOX);
    if (type == BS_GROUPBOX) return true;
    const LRESULT check = SendMessage(BM_GETCHECK);
    if (check == BST_CHECKED) state |= STATE_SYSTEM_CHECKED;
    if (check == BST_INDETERMINATE) state |= STATE_SYSTEM_MIXED;
    if (SendMessage(BM_GETSTATE) & BST_PUSHED) state |= STATE_SYSTEM_PRESSED;
    if (type == BS_DEFPUSHBUTTON) state |= STATE_SYSTEM_DEFAULT;
    return true;
}

void FocusReportingButton::OnSetFocus(HWND) {
    Default();
    NotifyParentSetFocus(m_hWnd);
}

}  // namespace qv

// ---- XBaseGroupBox ----------------------------------------------------------------------

XBaseGroupBox::XBaseGroupBox() = default;

XBaseGroupBox::~XBaseGroupBox() = default;

BOOL XBaseGroupBox::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent,
                           const std::wstring& helpText, bool mandatory) try {
    if (!CreateButton(L"", id, rect, font, parent, kPromptStyle)) return FALSE;
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    m_brBk.reset(::CreateSolidBrush(face));

    // The caption line is a prompt on the box's own background; its size
    // follows its text once the font is known.
    auto prompt = std::make_unique<XBasePrompt>();
    prompt->SetBkColor(face);
    const RECT start{kCaptionLeft, 0, kCaptionLeft + 1, 1};
    prompt->Create(text, id, start, font, m_hWnd, false, false, helpText, mandatory);
    m_pPrompt = std::move(prompt);
    if (!CaptionPrompt()) return FALSE;
    FitCaption(font);
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseGroupBox::Create", __LINE__, FALSE);
}

XBasePrompt* XBaseGroupBox::CaptionPrompt() const {
    return m_pPrompt && m_pPrompt->IsWindow() ? m_pPrompt.get() : nullptr;
}

void XBaseGroupBox::FitCaption(HFONT font) {
    XBasePrompt* prompt = CaptionPrompt();
    if (!prompt) return;
    const std::wstring text = prompt->GetWindowText();
    SIZE extent{};
    {
        qv::ClientDC dc(prompt->m_hWnd);
        qv::SelectObjectScope use(dc, font);  // none: the system font, as the edit uses
        ::GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &extent);
    }
    // The edit formats its text inside its client area less its margins
    // (which follow the font); that inset comes on top of the text, or the
    // end of the caption would wrap onto a line nobody sees.
    prompt->SetFont(font, true);
    const DWORD margins = prompt->GetMargins();
    int width = extent.cx + LOWORD(margins) + HIWORD(margins) + 1;
    const int left = qv::Scale(m_hWnd, kCaptionLeft);
    prompt->SetWindowPos(nullptr, left, 0, width, extent.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT client{}, format{};
    ::GetClientRect(prompt->m_hWnd, &client);
    prompt->SendMessage(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&format));
    const int inset = (client.right - client.left) - (format.right - format.left);
    if (extent.cx + inset + 1 > width) {
        width = extent.cx + inset + 1;
        prompt->SetWindowPos(nullptr, left, 0, width, extent.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void XBaseGroupBox::OnDpiChanged(UINT) {
    // The host gives the box a font for the new DPI; the caption follows it.
    if (XBasePrompt* prompt = CaptionPrompt()) FitCaption(prompt->GetFont());
}

bool XBaseGroupBox::AccessibleName(long child, std::wstring& name) {
    XBasePrompt* prompt = CaptionPrompt();
    if (child != 0 || !prompt) return false;
    name = qv::AccessibleTextOf(prompt->m_hWnd);
    return true;
}

bool XBaseGroupBox::AccessibleDescription(long child, std::wstring& description) {
    XBasePrompt* prompt = CaptionPrompt();
    return child == 0 && prompt && prompt->AccessibleDescription(0, description);
}

BOOL XBaseGroupBox::OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) {
    // A field inside the box got the focus: the form hears it as from any
    // other field (the field's own id and header).
    const auto* hdr = reinterpret_cast<const NMHDR*>(lp);
    if (hdr && hdr->code == static_cast<UINT>(NM_SETFOCUS)) {
        HWND parent = GetParent();
        if (parent && ::IsWindow(parent)) ::SendMessageW(parent, WM_NOTIFY, wp, lp);
    }
    return qv::FormButton::OnNotify(wp, lp, result);
}

HBRUSH XBaseGroupBox::OnReflectCtlColor(HDC dc, UINT) {
    if (!m_brBk) return nullptr;
    ::SetBkColor(dc, ::GetSysColor(COLOR_BTNFACE));
    return m_brBk.get();
}

// ---- XBaseGroupBoxColor ---------------------------------------------------------------------

void XBaseGroupBoxColor::SetTextColor(unsigned long colour) {
    if (XBasePrompt* prompt = CaptionPrompt()) {
        prompt->SetTextColor(colour);
        m_scheme.SetText(nullptr, colour);  // kept, nothing of the box to repaint
    } else {
        m_scheme.SetText(m_hWnd, colour);
    }
}

void XBaseGroupBoxColor::SetBkColor(unsigned long colour) {
    if (XBasePrompt* prompt = CaptionPrompt()) {
        prompt->SetBkColor(colour);
        m_scheme.SetBk(nullptr, colour);
    } else {
        m_scheme.SetBk(m_hWnd, colour);
    }
}

LRESULT XBaseGroupBoxColor::OnSetFont(WPARAM wp, LPARAM) {
    if (!CaptionPrompt()) return Default();
    FitCaption(reinterpret_cast<HFONT>(wp));
    return 0;
}
