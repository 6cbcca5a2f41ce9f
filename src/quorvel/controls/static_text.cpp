#include "quorvel/controls/static_text.h"

#include <oleacc.h>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/base_keys.h"
#include "quorvel/controls/help_text_rules.h"
#include "quorvel/controls/reader_state.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/session.h"
#include "quorvel/frame/zt_lang.h"

XBaseStaticText::XBaseStaticText() = default;

XBaseStaticText::~XBaseStaticText() = default;

BOOL XBaseStaticText::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) {
    return Create(text, id, rect, font, parent, std::wstring(), false);
}

BOOL XBaseStaticText::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent,
                             const std::wstring& tooltip, bool mandatory) try {
    std::wstring caption = text;
    if (mandatory) caption += L'*';
    const qv::ToolString parsed = qv::ParseToolString(tooltip);
    if (!qv::Static::Create(caption.c_str(), kStyle, rect, parent, id)) return FALSE;
    // A document tooltip left from an earlier window of this object serves that window only.
    m_docTip.DestroyWindow();
    m_strDocument.clear();
    m_strTipText.clear();

    const std::wstring hint = CoTranslateText(std::wstring(qv::kStaticHelpHint).c_str());
    const std::wstring tipText = qv::StaticTooltipText(parsed, hint);
    if (!parsed.document.empty()) SetTipHelpFile(parsed.document);
    if (qv::ShowsStaticTooltip(tipText)) {
        SetToolTipText(CheckMaxWidth(tipText));
        SetTooltipDelayTime();
    }
    SetFont(font, true);
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseStaticText::Create", __LINE__, FALSE);
}

std::wstring XBaseStaticText::CheckMaxWidth(const std::wstring& text) try {
    std::wstring cut = text;
    qv::ApplyTooltipMaxWidth(cut);
    return cut;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseStaticText::CheckMaxWidth", __LINE__, std::wstring());
}

void XBaseStaticText::SetToolTipText(const std::wstring& text) try {
    SetToolText(m_toolTip, m_strTipText, text);
} catch (...) {
    qv::CaughtAtEdge(" XBaseStaticText::SetToolTipText", __LINE__);
}

void XBaseStaticText::SetTipHelpFile(const std::wstring& document) try {
    SetToolText(m_docTip, m_strDocument, document);
} catch (...) {
    qv::CaughtAtEdge(" XBaseStaticText::SetTipHelpFile", __LINE__);
}

void XBaseStaticText::SetToolText(qv::ToolTipCtrl& tip, std::wstring& kept, const std::wstring& text) {
    if (!IsWindow()) return;
    if (tip.IsWindow()) {
        tip.UpdateTipText(text.c_str(), m_hWnd);
        kept = text;
        return;
    }
    // The label relays its own mouse moves (no TTF_SUBCLASS), so the
    // document's tooltip, which hears nothing, never shows.
    if (!tip.Create(m_hWnd)) return;
    if (tip.AddTool(m_hWnd, text.c_str(), nullptr, 0, 0)) {
        tip.Activate(true);
        kept = text;
    }
}

void XBaseStaticText::SetTooltipDelayTime() {
    if (!m_toolTip.IsWindow()) return;
    const std::uint32_t ms = qv::StaticAutoPopDelay(GetTooltipPopupTime());
    m_toolTip.SetDelayTime(TTDT_AUTOPOP, static_cast<int>(ms));
}

unsigned int XBaseStaticText::GetTooltipPopupTime() { return static_cast<unsigned int>(qv::TooltipPopupTimeSetting()); }

std::wstring XBaseStaticText::ReadDataFromRegistry(const std::wstring& section, const std::wstring& name) {
    // The host's manager takes flag 1 for its customisation section, 0 otherwise.
    return qv::ReadSettingText(section, name, section == L"customization" ? 1 : 0);
}

std::wstring XBaseStaticText::GetFilePath() { return qv::ContextHelpFileSetting(); }

bool XBaseStaticText::DestroyWindow() {
    // The text tooltip first, while the label still exists; the document's
    // tooltip, never shown, goes with the object.
    m_toolTip.DestroyWindow();
    return qv::Static::DestroyWindow();
}

BOOL XBaseStaticText::PreTranslateMessage(MSG* msg) try {
    if (msg && msg->message == WM_KEYDOWN && msg->wParam == VK_F1) OnHelpKey(*msg);
    return FALSE;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseStaticText::PreTranslateMessage", __LINE__, FALSE);
}

void XBaseStaticText::OnHelpKey(const MSG& msg) {
    // The same key press seen twice (offered by the host's loop, then
    // dispatched) opens the document once.
    const MSG& last = m_lastHelpKey;
    if (msg.hwnd == last.hwnd && msg.lParam == last.lParam && msg.time == last.time) return;
    m_lastHelpKey = msg;
    if (!m_toolTip.IsWindow() || !m_toolTip.IsWindowVisible()) return;
    const std::wstring target = qv::HelpTarget(m_strDocument, GetFilePath());
    if (target.empty()) return;
    // Failures (no such file, no browser) leave F1 without effect.
    qv::Services::Shell().Execute(m_hWnd, L"open", target.c_str(), nullptr, target.c_str(), SW_SHOWNORMAL);
}

LRESULT XBaseStaticText::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    // A plain Win32 host never calls PreTranslateMessage: F1 is seen here.
    if (msg == WM_KEYDOWN && wp == VK_F1) OnHelpKey(qv::TooltipRelay::CurrentMessage(m_hWnd, msg, wp, lp));
    return qv::Static::WindowProc(msg, wp, lp);
}

void XBaseStaticText::OnChar(UINT ch, UINT, UINT) {
    if (!qv::MoveFocusOnKey(m_hWnd, ch, true)) Default();
}

void XBaseStaticText::OnMouseMove(UINT flags, POINT pt) {
    if (m_toolTip.IsWindow() && !m_strTipText.empty()) {
        RelayEvent(WM_MOUSEMOVE, flags, MAKELPARAM(pt.x, pt.y));
        // The focus, so that F1 reaches this label.
        SetFocus();
    }
    Default();
}

void XBaseStaticText::OnDestroy() {
    // Also when the host destroys the label with the Win32 call: the tooltip
    // is owned by the top-level window and would outlive the label.
    m_toolTip.DestroyWindow();
    Default();
}

void XBaseStaticText::RelayEvent(UINT message, WPARAM wp, LPARAM lp) {
    if (!m_toolTip.IsWindow()) return;
    MSG msg{m_hWnd, message, wp, lp, 0, {static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))}};
    m_toolTip.RelayEvent(&msg);
}

LRESULT XBaseStaticText::OnSetText(WPARAM, LPARAM) {
    const LRESULT result = Default();
    if (result) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_NAMECHANGE);
    return result;
}

// ---- Screen readers ----------------------------------------------------------------

bool XBaseStaticText::AccessibleDescription(long child, std::wstring& description) {
    // The standard tooltip shows its text as it is (no mark-up): so does the reader.
    if (child != 0 || m_strTipText.empty() || !m_toolTip.IsWindow()) return false;
    description = m_strTipText;
    return true;
}

bool XBaseStaticText::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    role = ROLE_SYSTEM_STATICTEXT;
    return true;
}

bool XBaseStaticText::AccessibleState(long child, long& state) {
    if (child != 0) return false;
    state = STATE_SYSTEM_READONLY | qv::ReaderWindowState(m_hWnd, false);
    return true;
}
