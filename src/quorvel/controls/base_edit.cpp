#include "quorvel/controls/base_edit.h"

#include <utility>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/input_rules.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/tooltip/markup.h"

namespace qv {

// The Windows scripting regular-expression object's interface, in the order
// of its function table.
struct IRegExp : public IDispatch {
    virtual HRESULT STDMETHODCALLTYPE get_Pattern(BSTR* pattern) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Pattern(BSTR pattern) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_IgnoreCase(VARIANT_BOOL* ignoreCase) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_IgnoreCase(VARIANT_BOOL ignoreCase) = 0;
    virtual HRESULT STDMETHODCALLTYPE get_Global(VARIANT_BOOL* global) = 0;
    virtual HRESULT STDMETHODCALLTYPE put_Global(VARIANT_BOOL global) = 0;
    virtual HRESULT STDMETHODCALLTYPE Execute(BSTR source, IDispatch** matches) = 0;
    virtual HRESULT STDMETHODCALLTYPE Test(BSTR source, VARIANT_BOOL* match) = 0;
    virtual HRESULT STDMETHODCALLTYPE Replace(BSTR source, BSTR replacement, BSTR* result) = 0;
};

namespace {

const CLSID kClsidRegExp = {0x3F4DACA4, 0x160D, 0x11D2, {0xA8, 0xE9, 0x00, 0x10, 0x4B, 0x36, 0x5C, 0x9F}};
const IID kIidRegExp = {0x3F4DACA0, 0x160D, 0x11D2, {0xA8, 0xE9, 0x00, 0x10, 0x4B, 0x36, 0x5C, 0x9F}};

// The host's character check, through the sibling operation.
bool HostCharacterCheck(const std::wstring& text, bool wholeText) { return ::CheckCharacters0_9A_Z(text, wholeText); }

// Replaces the whole text the way the fields do: select all, clear, then
// the window's own text.
void ReplaceAllText(Edit& edit, const std::wstring& text) {
    if (!edit.IsWindow()) return;
    edit.SetSel(0, -1, true);
    edit.Clear();
    ::SetWindowTextW(edit.m_hWnd, text.c_str());
}

// After the edit control inserted `ch` into a restricted field: capitals
// only, and a refused character takes the first equal character with it.
void RestrictTypedCharacter(Edit& edit, UINT ch) {
    FieldState now;
    now.text = edit.GetWindowText();
    edit.GetSel(now.start, now.end);
    const FieldState next = RestrictAfterTyping(now, static_cast<wchar_t>(ch), &HostCharacterCheck);
    edit.SetSel(0, -1, true);
    edit.Clear();
    edit.ReplaceSel(next.text.c_str(), false);
    edit.SendMessage(EM_SETSEL, static_cast<WPARAM>(next.start), next.end);
}

std::wstring Translated(const wchar_t* text) {
    const wchar_t* translated = ::CoTranslateText(text);
    return translated ? translated : text;
}

}  // namespace

// ---- FieldTooltip ------------------------------------------------------------------

FieldTooltip::FieldTooltip() = default;
FieldTooltip::~FieldTooltip() = default;

BOOL FieldTooltip::PreTranslateMessage(MSG* msg) {
    if (msg) m_relay.Relay(m_tooltip.get(), *msg);
    return FALSE;
}

int FieldTooltip::CreateFieldTooltip(HWND owner, const std::wstring& text) {
    int created = 0;
    if (!m_tooltip) {
        auto tooltip = std::make_unique<XTooltip>();
        if (tooltip->Create(owner)) {
            tooltip->SetBehaviour(XTooltip::kBehaviourRepeat, -1);
            m_tooltip = std::move(tooltip);
            created = 1;
        }
    }
    // The text is also the field's description: a reader hears of a new one.
    if (text != m_text) RaiseAccessibleEvent(owner, EVENT_OBJECT_DESCRIPTIONCHANGE);
    m_text = text;
    if (m_tooltip) {
        // One tool per field: a later call updates the text instead of adding a tool.
        const int existing = m_tooltip->FindTool(owner, nullptr);
        if (existing >= 0) m_tooltip->RemoveTool(existing);
        m_tooltip->AddTool(owner, text);
    }
    return created;
}

bool FieldTooltip::AccessibleDescription(long child, std::wstring& description) {
    if (child != 0 || m_text.empty()) return false;
    description = MarkupPlainText(m_text);
    return true;
}

void FieldTooltip::RelayOwnMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (!m_tooltip) return;
    const MSG current = TooltipRelay::CurrentMessage(hwnd, msg, wp, lp);
    if (msg == WM_MOUSELEAVE) {
        // Asked for by the tooltip itself; no host loop relays it.
        if (m_tooltip->IsWindow()) m_tooltip->RelayEvent(&current);
        return;
    }
    m_relay.Relay(m_tooltip.get(), current);
}

}  // namespace qv

// ---- XBaseEdit -------------------------------------------------------------------------

bool XBaseEdit::m_bKillFocus = false;

XBaseEdit::XBaseEdit(const std::wstring& pattern, const std::wstring& patternDescription,
                     const std::wstring& attributeName)
    : m_strPattern(pattern), m_strPatternDescription(patternDescription), m_strAttributeName(attributeName) {
    // Without the object the field simply does not validate.
    m_hrRegExp = m_pRegExp.CoCreateInstance(qv::kClsidRegExp, qv::kIidRegExp, CLSCTX_INPROC_SERVER);
    if (SUCCEEDED(m_hrRegExp) && m_pRegExp) {
        m_pRegExp->put_Global(VARIANT_TRUE);
        m_pRegExp->put_IgnoreCase(VARIANT_FALSE);
    }
}

XBaseEdit::~XBaseEdit() {
    DestroyTooltip();
    m_pRegExp.Reset();
    m_bKillFocus = false;
    // m_comInit uninitialises COM after the object is gone.
}

BOOL XBaseEdit::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) {
    if (!CreateEx(WS_EX_CLIENTEDGE, L"EDIT", L"", kStyle, rect, parent, id)) return FALSE;
    SetFont(font, true);
    SetWindowTextW(text.c_str());
    return CreateTooltip() != 0;
}

BOOL XBaseEdit::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    if (!qv::Edit::Create(style, rect, parent, id)) return FALSE;
    return CreateTooltip() != 0;
}

int XBaseEdit::CreateTooltip() try {
    return CreateFieldTooltip(m_hWnd, GetWindowText());
} catch (...) {
    return qv::CaughtAtEdge(" XBaseEdit::CreateTooltip", __LINE__, 0);
}

void XBaseEdit::SetWindowTextW(const wchar_t* text) try {
    qv::ReplaceAllText(*this, qv::FieldTextForSet(text ? text : L"", m_nMaxInputChar, m_bInputMask09AZ,
                                                  &qv::HostCharacterCheck));
} catch (...) {
    qv::CaughtAtEdge(" XBaseEdit::SetWindowTextW", __LINE__);
}

LRESULT XBaseEdit::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    RelayOwnMessage(m_hWnd, msg, wp, lp);
    return qv::Edit::WindowProc(msg, wp, lp);
}

void XBaseEdit::OnChar(UINT ch, UINT, UINT) {
    // Tab moves on (Enter stays with the edit).
    if (ch == VK_TAB && qv::MoveFocusOnKey(m_hWnd, ch, false)) return;
    Default();
    if (!IsWindow()) return;
    const std::wstring text = GetWindowText();
    if (static_cast<long long>(text.size()) >= m_nMaxInputChar) {
        // What went beyond the limit is cut off and the caret goes to the end.
        // The cut text goes through this class's (virtual) SetWindowTextW, so
        // a derived field's own text rule applies too; with the 0-9/A-Z
        // restriction on, a refused character typed at the limit therefore
        // empties the field, as that rule empties any text it refuses.
        SetWindowTextW(qv::CutToLimit(text, m_nMaxInputChar).c_str());
        SendMessage(EM_SETSEL, static_cast<WPARAM>(-1), -1);
        SendMessage(WM_KEYDOWN, VK_END, 0);
    }
    if (m_bInputMask09AZ) qv::RestrictTypedCharacter(*this, ch);
}

void XBaseEdit::OnSetFocus(HWND) {
    Default();
    // Arriving by Tab selects everything, so typing replaces the value.
    if (::GetKeyState(VK_TAB) < 0) {
        SetSel(0, -1, true);
        SendMessage(EM_SCROLLCARET);
    }
    qv::NotifyParentSetFocus(m_hWnd);
}

void XBaseEdit::OnKillFocus(HWND) {
    const std::wstring text = GetWindowText();
    if (!m_strPattern.empty() && !text.empty() && m_bKillFocus && SUCCEEDED(m_hrRegExp) && m_pRegExp)
        ValidateAgainstPattern(text);
    m_bKillFocus = true;
    // The focus stays where it went, and a wrong text stays in the field.
    Default();
}

void XBaseEdit::ValidateAgainstPattern(const std::wstring& text) {
    const qv::Bstr pattern(m_strPattern);
    const qv::Bstr value(text);
    VARIANT_BOOL match = VARIANT_FALSE;
    HRESULT hr = m_pRegExp->put_Pattern(pattern);
    if (SUCCEEDED(hr)) hr = m_pRegExp->Test(value, &match);
    if (FAILED(hr)) {
        // The pattern itself does not compile: it is the configuration that is wrong.
        const std::wstring message = qv::Translated(L"The given validation pattern ") + L"\" " + m_strPattern +
                                     L" \" " +
                                     qv::Translated(L" is not valid. Please change it in configuration tool.");
        ::CoWarningBox(nullptr, qv::Translated(L"Invalid entry in configuration tool").c_str(), message.c_str(), 0);
        return;
    }
    if (match != VARIANT_FALSE) return;
    const std::wstring message =
        qv::Translated(L"The value entered does not match the validation pattern  for the attribute :") +
        m_strAttributeName + L"\n" + qv::Translated(L"The validation pattern given is  :  ") + L"\"  " +
        m_strPattern + L"  \" \n" + m_strPatternDescription;
    ::CoWarningBox(nullptr, qv::Translated(L"Invalid entry").c_str(), message.c_str(), 0);
}

void XBaseEdit::OnDestroy() {
    DestroyTooltip();
    Default();
}

bool XBaseEdit::OnReflectCommand(UINT notifyCode) {
    // A reader hears every change of the text: only changes the field
    // accepted reach the control, so nothing refused is ever announced.
    // (Where the system's edit raises the event itself, a reader gets it
    // twice with the same value, which readers ignore.)
    if (notifyCode == EN_CHANGE) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
    // The parent learns of the focus through NM_SETFOCUS instead.
    return notifyCode == EN_SETFOCUS || notifyCode == EN_KILLFOCUS;
}

// ---- XBaseMultiLineEdit ----------------------------------------------------------------

BOOL XBaseMultiLineEdit::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) {
    if (!CreateEx(WS_EX_CLIENTEDGE, L"EDIT", L"", kStyle, rect, parent, id)) return FALSE;
    SetFont(font, true);
    SetWindowTextW(text.c_str());
    return TRUE;
}

void XBaseMultiLineEdit::SetWindowTextW(const wchar_t* text) try {
    const std::wstring value = text ? text : L"";
    qv::ReplaceAllText(*this, m_bInputMask09AZ ? qv::RestrictedText(value, &qv::HostCharacterCheck) : value);
} catch (...) {
    qv::CaughtAtEdge(" XBaseMultiLineEdit::SetWindowTextW", __LINE__);
}

void XBaseMultiLineEdit::OnChar(UINT ch, UINT, UINT) {
    if (ch == VK_TAB && qv::MoveFocusOnKey(m_hWnd, ch, false)) return;
    Default();
    if (IsWindow() && m_bInputMask09AZ) qv::RestrictTypedCharacter(*this, ch);
}

void XBaseMultiLineEdit::OnSetFocus(HWND) {
    Default();
    qv::NotifyParentSetFocus(m_hWnd);
}
