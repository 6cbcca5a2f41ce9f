#include "quorvel/controls/prompt.h"

#include <oleacc.h>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/help_text_rules.h"
#include "quorvel/controls/reader_state.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/tooltip/markup.h"

XBasePrompt::XBasePrompt() : m_scheme(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}

XBasePrompt::~XBasePrompt() = default;

BOOL XBasePrompt::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent, bool, bool,
                         const std::wstring& tooltip, bool mandatory) try {
    if (!CreateEx(0, L"EDIT", L"", kStyle, rect, parent, id)) return FALSE;
    SetFont(font, true);

    std::wstring shown = text;
    if (mandatory) shown += L'*';
    SetWindowText(qv::PromptLineEnds(std::move(shown)).c_str());

    BOOL created = FALSE;
    if (!m_pTooltip) {
        m_pTooltip = std::make_unique<XTooltip>();
        if (m_pTooltip->Create(m_hWnd)) {
            m_pTooltip->SetBehaviour(XTooltip::kBehaviourRepeat, -1);
            created = TRUE;
        }
    }

    const std::wstring hint = CoTranslateText(std::wstring(qv::kPromptHelpHint).c_str());
    qv::PromptHelp help = qv::PromptTooltip(tooltip, hint);
    m_strTooltipText = std::move(help.tooltipText);
    m_strContextHelpFile = std::move(help.contextHelpFile);
    if (m_pTooltip) m_pTooltip->AddTool(m_hWnd, m_strTooltipText);
    return created;
} catch (...) {
    return qv::CaughtAtEdge(" XBasePrompt::Create", __LINE__, FALSE);
}

BOOL XBasePrompt::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return qv::Edit::Create(style, rect, parent, id) ? TRUE : FALSE;
}

void XBasePrompt::SetTextColor(unsigned long colour) { m_scheme.SetText(m_hWnd, colour); }

void XBasePrompt::SetBkColor(unsigned long colour) { m_scheme.SetBk(m_hWnd, colour); }

BOOL XBasePrompt::PreTranslateMessage(MSG* msg) {
    if (msg) Relay(*msg);
    return FALSE;
}

void XBasePrompt::Relay(const MSG& msg) {
    if (!m_pTooltip || !m_pTooltip->IsWindow() || m_strTooltipText.empty()) return;
    // The tooltip asks for WM_MOUSELEAVE to learn that the cursor left the
    // prompt; only the window procedure sees it, so it is never doubled.
    if (msg.message == WM_MOUSELEAVE) {
        m_pTooltip->RelayEvent(&msg);
        return;
    }
    m_relay.Relay(m_pTooltip.get(), msg, true);
}

LRESULT XBasePrompt::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    // A plain Win32 host never calls PreTranslateMessage: relay from here.
    if (msg == WM_MOUSELEAVE || qv::TooltipRelay::IsRelayedMouseMessage(msg) || (msg == WM_KEYDOWN && wp == VK_F1))
        Relay(qv::TooltipRelay::CurrentMessage(m_hWnd, msg, wp, lp));
    return qv::Edit::WindowProc(msg, wp, lp);
}

void XBasePrompt::OnMouseMove(UINT, POINT) {
    // A label, not a field: never the text cursor.
    ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
    Default();
}

void XBasePrompt::OnDestroy() {
    // The tooltip is a pop-up owned by the top-level window, so it would
    // outlive the prompt: it goes with it.
    m_pTooltip.reset();
    Default();
}

HBRUSH XBasePrompt::OnReflectCtlColor(HDC dc, UINT) { return m_scheme.Apply(dc); }

LRESULT XBasePrompt::OnSetText(WPARAM, LPARAM) {
    const LRESULT result = Default();
    if (result) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_NAMECHANGE);
    return result;
}

// ---- Screen readers ----------------------------------------------------------------

bool XBasePrompt::AccessibleName(long child, std::wstring& name) {
    if (child != 0) return false;
    name = qv::AccessibleTextOf(m_hWnd);
    return true;
}

bool XBasePrompt::AccessibleValue(long child, std::wstring& value) {
    // A label: its text is its name, not a value to edit.
    if (child != 0) return false;
    value.clear();
    return true;
}

bool XBasePrompt::AccessibleDescription(long child, std::wstring& description) {
    if (child != 0 || m_strTooltipText.empty()) return false;
    description = qv::MarkupPlainText(m_strTooltipText);
    return true;
}

bool XBasePrompt::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    role = ROLE_SYSTEM_STATICTEXT;
    return true;
}

bool XBasePrompt::AccessibleState(long child, long& state) {
    if (child != 0) return false;
    state = STATE_SYSTEM_READONLY | qv::ReaderWindowState(m_hWnd, false);
    return true;
}
