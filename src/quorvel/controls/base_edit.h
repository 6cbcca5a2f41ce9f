// The base entry fields: the single-line edit XBaseEdit and the multi-line
// XBaseMultiLineEdit, with their colour-scheme variants.
//
// Both move the focus on with Tab (Shift+Tab back) and tell their parent
// when they get the focus (WM_NOTIFY, NM_SETFOCUS). Both can restrict input
// to the characters 0-9 and A-Z (lower-case letters become capitals, other
// characters are refused). The single-line edit also keeps a maximum number
// of characters, shows its own text in a tooltip, and checks its text against
// a validation pattern (a regular expression) when it loses the focus.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/base_keys.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/com.h"
#include "quorvel/platform/controls.h"
#include "quorvel/tooltip/xtooltip.h"

namespace qv {

struct IRegExp;

// The tooltip part of a field whose tooltip shows a text about the field
// (its contents, or how many items are checked). The tooltip belongs to the
// field. The field passes its mouse messages in from its own window
// procedure, and a host loop may pass them in as well through
// PreTranslateMessage: each message reaches the tooltip once.
//
// A screen reader hears the tooltip's text, tags removed, as the field's
// description. The field is a qv::AccessibleSource through this class; the
// base is virtual, so a derived field that answers more questions may name
// qv::AccessibleSource among its bases again, virtually, and still be one
// source.
class QV_API FieldTooltip : public virtual AccessibleSource {
public:
    FieldTooltip();
    virtual ~FieldTooltip();
    FieldTooltip(const FieldTooltip&) = delete;
    FieldTooltip& operator=(const FieldTooltip&) = delete;

    // Makes the tooltip unless there is one and lets it show the field's
    // text as it is now: 1 when this call made the tooltip, 0 otherwise.
    virtual int CreateTooltip() = 0;
    // For hosts whose message loop offers messages to the controls first:
    // the mouse messages go to the tooltip. Never consumes the message.
    virtual BOOL PreTranslateMessage(MSG* msg);

    XTooltip* GetTooltip() const noexcept { return m_tooltip.get(); }
    const std::wstring& GetTooltipText() const noexcept { return m_text; }

    // qv::AccessibleSource: the tooltip's text as plain text, for the field itself.
    bool AccessibleDescription(long child, std::wstring& description) override;

protected:
    // Makes the tooltip of `owner` unless there is one (with the repeating
    // behaviour) and lets it show `text` (replacing an earlier text). 1 when
    // this call made the tooltip, 0 when it existed or could not be made.
    int CreateFieldTooltip(HWND owner, const std::wstring& text);
    // A message of a window procedure: the mouse, and the WM_MOUSELEAVE the
    // tooltip asked for.
    void RelayOwnMessage(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    void DestroyTooltip() { m_tooltip.reset(); }

private:
    std::unique_ptr<XTooltip> m_tooltip;
    std::wstring m_text;
    TooltipRelay m_relay;
};

}  // namespace qv

class QV_API XBaseEdit : public qv::Edit, public qv::FieldTooltip, public XTooltipOwnerKind {
public:
    // Child, visible, border, group, tab stop, ES_AUTOHSCROLL; WS_EX_CLIENTEDGE.
    enum : DWORD { kStyle = 0x50830080 };
    enum : int { kDefaultMaxInputChar = 32767 };

    // The validation pattern (empty: none), its description and the name of
    // the attribute the field edits, for the warning shown on a mismatch.
    explicit XBaseEdit(const std::wstring& pattern = {}, const std::wstring& patternDescription = {},
                       const std::wstring& attributeName = {});
    ~XBaseEdit() override;

    void SetMaxInputChar(int maxChars) noexcept { m_nMaxInputChar = maxChars; }
    int GetMaxInputChar() const noexcept { return m_nMaxInputChar; }
    void ActivateInputMask09AZ(bool activate) noexcept { m_bInputMask09AZ = activate; }
    bool IsInputMask09AZActivated() const noexcept { return m_bInputMask09AZ; }

    // Creates the field with `text` (limit and restriction applied) and its
    // tooltip. FALSE when either could not be made, also for a null or
    // destroyed parent.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);
    // An edit with the caller's style and no extended style, and its tooltip.
    BOOL Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    // The tooltip shows the current text.
    int CreateTooltip() override;
    // Sets the text, cut to the limit and, with the restriction, upper-cased
    // (a text with other characters than 0-9/A-Z is not taken: the field is
    // emptied). Text set with the Win32 functions on the handle bypasses it.
    virtual void SetWindowTextW(const wchar_t* text);

    // XTooltipOwnerKind: the tooltip sits below the edit's line.
    int TooltipOwnerKind() const override { return kOwnerEdit; }

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;     // WM_CHAR
    void OnSetFocus(HWND oldFocus) override;                    // WM_SETFOCUS
    void OnKillFocus(HWND newFocus) override;                   // WM_KILLFOCUS
    void OnDestroy() override;                                  // WM_DESTROY
    bool OnReflectCommand(UINT notifyCode) override;            // reflected EN_SETFOCUS, EN_KILLFOCUS

    // Whether focus losses validate. Shared by all edits: off at first and
    // after any edit is destroyed, on after any focus loss. So the first
    // focus loss after a form with edits closed (typically when the next
    // form opens and the focus settles) shows no warning.
    static bool m_bKillFocus;

    bool m_bInputMask09AZ = false;
    int m_nMaxInputChar = kDefaultMaxInputChar;
    std::wstring m_strPattern;
    std::wstring m_strPatternDescription;
    std::wstring m_strAttributeName;
    qv::ComInit m_comInit;
    qv::ComPtr<qv::IRegExp> m_pRegExp;
    HRESULT m_hrRegExp = E_FAIL;

private:
    void ValidateAgainstPattern(const std::wstring& text);
};

class QV_API XBaseMultiLineEdit : public qv::Edit {
public:
    // XBaseEdit's style plus vertical scroll bar, ES_MULTILINE,
    // ES_AUTOVSCROLL and ES_WANTRETURN; WS_EX_CLIENTEDGE.
    enum : DWORD { kStyle = 0x50A31044 };

    void ActivateInputMask09AZ(bool activate) noexcept { m_bInputMask09AZ = activate; }
    bool IsInputMask09AZActivated() const noexcept { return m_bInputMask09AZ; }

    // Creates the field with `text` (restriction applied). FALSE for a null
    // or destroyed parent.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);
    // As XBaseEdit::SetWindowTextW, without a length limit.
    virtual void SetWindowTextW(const wchar_t* text);

protected:
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;     // WM_CHAR: Tab moves on, Enter makes a line
    void OnSetFocus(HWND oldFocus) override;                    // WM_SETFOCUS

    bool m_bInputMask09AZ = false;
};

// Colour-scheme variants: text RGB(8, 0, 0) on the system window colour
// until the host sets its own colours.
class QV_API XBaseEditColor : public qv::ColorVariant<XBaseEdit> {
public:
    explicit XBaseEditColor(const std::wstring& pattern = {}, const std::wstring& patternDescription = {},
                            const std::wstring& attributeName = {})
        : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW), pattern, patternDescription,
                       attributeName) {}
};

class QV_API XBaseMultiLineEditColor : public qv::ColorVariant<XBaseMultiLineEdit> {
public:
    XBaseMultiLineEditColor() : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}
};

// The coloured multi-line field a host shows read-only (it makes it so with
// EM_SETREADONLY); marked by the read-only colour interface.
class QV_API XBaseReadOnlyMultiLineEditColor : public qv::ColorVariant<XBaseMultiLineEdit, XBaseReadOnlyColor> {
public:
    XBaseReadOnlyMultiLineEditColor() : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}
};
