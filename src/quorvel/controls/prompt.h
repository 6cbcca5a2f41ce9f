// XBasePrompt: a label made of a read-only, borderless multi-line edit, with
// a mark-up tooltip that can point to a help document. Hovering shows the
// tooltip; F1 while it is up opens the document (the tooltip asks the prompt
// for it). The read-only edit and the group-box caption use a prompt for
// their text.
//
// A screen reader hears a prompt as a label: its text, cleaned of the
// mnemonic marks and the mandatory star, as its name (announced again when
// the text changes), no value, and the tooltip's text, tags removed, as its
// description.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/base_keys.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/tooltip/xtooltip.h"

class QV_API XBasePrompt : public qv::Edit,
                           public XBaseColor,
                           public XTooltipOwnerKind,
                           public virtual qv::AccessibleSource {
public:
    // Child, visible, group, multi-line, read-only.
    enum : DWORD { kStyle = 0x50020804 };

    // Text RGB(8, 0, 0) on the system window colour.
    XBasePrompt();
    ~XBasePrompt() override;

    // Creates the edit with `text` (line feeds made line ends; "*" appended
    // when `mandatory`) and its tooltip from the help string `tooltip`
    // (optionally tagged with a document, see controls/help_text_rules.h).
    // The two flags after the parent are accepted for hosts that pass them
    // and are not used. TRUE only when the window and the tooltip were both
    // made by this call; FALSE for a null or destroyed parent.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent, bool unused1,
                bool unused2, const std::wstring& tooltip, bool mandatory);
    // A plain edit with the caller's style; no tooltip.
    BOOL Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    // The tooltip's mark-up text ("" = no tooltip is shown).
    const std::wstring& GetTooltipText() const noexcept { return m_strTooltipText; }
    // The help document F1 opens ("" = none).
    const std::wstring& GetTooltipContextHelpFile() const noexcept { return m_strContextHelpFile; }

    void SetTextColor(unsigned long colour) override;
    void SetBkColor(unsigned long colour) override;

    // For hosts whose message loop offers messages to the controls first:
    // passes the mouse messages and F1 to the tooltip. Never consumes the
    // message. Messages relayed here are not relayed a second time when the
    // window procedure sees them.
    BOOL PreTranslateMessage(MSG* msg);

    // XTooltipOwnerKind: the tooltip sits below the prompt's line and opens
    // the help document on F1.
    int TooltipOwnerKind() const override { return kOwnerPrompt; }
    std::wstring TooltipContextHelpFile() const override { return m_strContextHelpFile; }

    // qv::AccessibleSource: a label named by its text, described by its tooltip.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleValue(long child, std::wstring& value) override;
    bool AccessibleDescription(long child, std::wstring& description) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnMouseMove(UINT flags, POINT pt) override;                 // WM_MOUSEMOVE
    void OnDestroy() override;                                       // WM_DESTROY
    HBRUSH OnReflectCtlColor(HDC dc, UINT ctlColorMsg) override;     // reflected WM_CTLCOLOR*
    LRESULT OnSetText(WPARAM wp, LPARAM lp) override;                // WM_SETTEXT: the name changes

private:
    void Relay(const MSG& msg);

    qv::ColorScheme m_scheme;
    std::unique_ptr<XTooltip> m_pTooltip;
    qv::TooltipRelay m_relay;
    std::wstring m_strTooltipText;
    std::wstring m_strContextHelpFile;
};
