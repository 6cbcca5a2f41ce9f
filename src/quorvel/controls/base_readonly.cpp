#include "quorvel/controls/base_readonly.h"

#include <oleacc.h>

#include <algorithm>
#include <cwchar>

#include "quorvel/common/boundary.h"
#include "quorvel/common/charclass.h"
#include "quorvel/controls/base_keys.h"
#include "quorvel/frame/siblings.h"

XBaseEditReadOnly::XBaseEditReadOnly() = default;

XBaseEditReadOnly::~XBaseEditReadOnly() = default;

BOOL XBaseEditReadOnly::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) try {
    // The frame shows no text of its own: the prompt covers its client area.
    if (!CreateEx(kExStyle, L"STATIC", L"", kStyle, rect, parent, id)) return FALSE;
    SetFont(font, true);
    RECT inner = GetClientRect();
    ::InflateRect(&inner, -kInset, -kInset);
    auto prompt = std::make_unique<XBasePrompt>();
    prompt->Create(text, id, inner, font, m_hWnd, false, false, std::wstring(), false);
    if (prompt->IsWindow()) prompt->SetFont(font, true);
    m_pPrompt = std::move(prompt);
    return InnerPrompt() ? TRUE : FALSE;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseEditReadOnly::Create", __LINE__, FALSE);
}

XBasePrompt* XBaseEditReadOnly::InnerPrompt() const {
    return m_pPrompt && m_pPrompt->IsWindow() ? m_pPrompt.get() : nullptr;
}

void XBaseEditReadOnly::OnSize(UINT, int cx, int cy) {
    Default();
    if (XBasePrompt* prompt = InnerPrompt()) {
        const RECT inner{kInset, kInset, kInset + std::max(cx - 2 * kInset, 0), kInset + std::max(cy - 2 * kInset, 0)};
        prompt->MoveWindow(inner);
    }
}

LRESULT XBaseEditReadOnly::OnSetText(WPARAM, LPARAM lp) {
    if (!IsWindow()) return -1;
    const auto* given = reinterpret_cast<const wchar_t*>(lp);
    std::wstring text = given ? given : L"";
    const size_t limit = static_cast<size_t>(std::max(m_nMaxInputChar, 0));
    if (text.size() > limit) text.resize(limit);
    XBasePrompt* prompt = InnerPrompt();
    if (!prompt) return -1;
    if (m_bInputMask09AZ) {
        std::transform(text.begin(), text.end(), text.begin(), qv::ToUpperAscii);
        if (!CheckCharacters0_9A_Z(text, true)) text.clear();
    }
    prompt->SetWindowText(text.c_str());
    // 0 as the field has always answered: callers of SetWindowText see FALSE.
    return 0;
}

LRESULT XBaseEditReadOnly::OnGetText(WPARAM wp, LPARAM lp) {
    XBasePrompt* prompt = InnerPrompt();
    if (!IsWindow() || !prompt) return -1;
    const size_t room = static_cast<size_t>(wp);
    auto* buffer = reinterpret_cast<wchar_t*>(lp);
    if (room == 0 || !buffer) return 0;
    const std::wstring text = prompt->GetWindowText();
    const size_t copied = std::min(text.size(), room - 1);
    std::copy_n(text.data(), copied, buffer);
    buffer[copied] = L'\0';
    // One more than the characters copied: hosts count on it.
    return static_cast<LRESULT>(copied + 1);
}

LRESULT XBaseEditReadOnly::OnGetTextLength(WPARAM, LPARAM) {
    XBasePrompt* prompt = InnerPrompt();
    if (!IsWindow() || !prompt) return -1;
    return prompt->GetWindowTextLength();
}

void XBaseEditReadOnly::OnChar(UINT ch, UINT, UINT) {
    if (!qv::MoveFocusOnKey(m_hWnd, ch, true)) Default();
}

void XBaseEditReadOnly::OnSetFocus(HWND) {
    Default();
    qv::NotifyParentSetFocus(m_hWnd);
}

// ---- XBaseEditReadOnlyColor ---------------------------------------------------------

void XBaseEditReadOnlyColor::SetTextColor(unsigned long colour) {
    if (XBasePrompt* prompt = InnerPrompt()) prompt->SetTextColor(colour);
}

void XBaseEditReadOnlyColor::SetBkColor(unsigned long colour) {
    if (XBasePrompt* prompt = InnerPrompt()) prompt->SetBkColor(colour);
}

LRESULT XBaseEditReadOnlyColor::OnSetFont(WPARAM wp, LPARAM) {
    XBasePrompt* prompt = InnerPrompt();
    if (!prompt) return Default();
    prompt->SetFont(reinterpret_cast<HFONT>(wp), true);
    return 0;
}

bool XBaseEditReadOnly::AccessibleName(long child, std::wstring& name) {
    if (child != 0) return false;
    name = qv::AccessibleLabelOf(m_hWnd);  // "" rather than the value when there is no label
    return true;
}

bool XBaseEditReadOnly::AccessibleValue(long child, std::wstring& value) {
    XBasePrompt* prompt = InnerPrompt();
    if (child != 0 || !prompt) return false;
    const int len = ::GetWindowTextLengthW(*prompt);
    value.assign(static_cast<size_t>(len > 0 ? len : 0) + 1, L'\0');
    ::GetWindowTextW(*prompt, value.data(), len + 1);
    value.resize(::wcslen(value.c_str()));  // a count that includes the terminator is not trusted
    return true;
}

bool XBaseEditReadOnly::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    role = ROLE_SYSTEM_TEXT;
    return true;
}

bool XBaseEditReadOnly::AccessibleState(long child, long& state) {
    if (child != 0) return false;
    state = STATE_SYSTEM_READONLY | (::GetFocus() == m_hWnd ? STATE_SYSTEM_FOCUSED : 0) |
            (IsWindowVisible() ? 0 : STATE_SYSTEM_INVISIBLE);
    return true;
}
