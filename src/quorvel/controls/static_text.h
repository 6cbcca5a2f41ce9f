// XBaseStaticText: a label with context help. Hovering shows a standard
// tooltip with the help text and takes the keyboard focus, so that F1,
// pressed while the tooltip is up, opens the label's help document: a file
// in the user's help folder or a web page.
//
// XBaseStatictextColor: the same label in colours the host sets.
//
// A screen reader hears the label's text, cleaned of the mnemonic marks and
// the mandatory star, as its name (announced again when the text changes)
// and the help text its tooltip shows as its description.
#pragma once

#include <windows.h>

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"

class QV_API XBaseStaticText : public qv::Static, public virtual qv::AccessibleSource {
public:
    // Child, visible, group, SS_NOTIFY (the label hears the mouse).
    enum : DWORD { kStyle = 0x50020100 };

    XBaseStaticText();
    ~XBaseStaticText() override;

    // A label without help.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);
    // A label with the help string `tooltip` (optionally tagged with a
    // document, see controls/help_text_rules.h); "*" follows the text when
    // `mandatory`. A tooltip text that is empty or a single blank makes no
    // tooltip. FALSE for a null or destroyed parent.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent,
                const std::wstring& tooltip, bool mandatory);

    // The text cut to the configured maximum tooltip width.
    static std::wstring CheckMaxWidth(const std::wstring& text);
    // Sets the help text shown by the tooltip (creating the tooltip first).
    void SetToolTipText(const std::wstring& text);
    // How long the tooltip stays up: 5 s without a configured popup time,
    // 30 s with one.
    void SetTooltipDelayTime();
    // Sets the help document F1 opens.
    void SetTipHelpFile(const std::wstring& document);
    // The configured tooltip popup time, 0 when none is set.
    static unsigned int GetTooltipPopupTime();
    // The stored text of a session setting ("" when absent).
    static std::wstring ReadDataFromRegistry(const std::wstring& section, const std::wstring& name);
    // The user's help folder.
    static std::wstring GetFilePath();

    // Destroys the tooltip, then the label. The tooltip holding the document
    // reference stays until the object goes.
    bool DestroyWindow();

    // For hosts whose message loop offers messages to the controls first:
    // F1 while the tooltip is up opens the help document. Never consumes the
    // message; a message handled here is not handled again when the window
    // procedure sees it.
    BOOL PreTranslateMessage(MSG* msg);

    // qv::AccessibleSource: a label described by its help text (its name is
    // its text, as for any static).
    bool AccessibleDescription(long child, std::wstring& description) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;          // WM_CHAR
    void OnMouseMove(UINT flags, POINT pt) override;                 // WM_MOUSEMOVE
    void OnDestroy() override;                                       // WM_DESTROY
    LRESULT OnSetText(WPARAM wp, LPARAM lp) override;                // WM_SETTEXT: the name changes

private:
    // Shows `text` through `tip`, creating the tooltip for this label first.
    void SetToolText(qv::ToolTipCtrl& tip, std::wstring& kept, const std::wstring& text);
    void RelayEvent(UINT message, WPARAM wp, LPARAM lp);
    void OnHelpKey(const MSG& msg);

    qv::ToolTipCtrl m_toolTip;   // shows the help text
    qv::ToolTipCtrl m_docTip;    // never shown: holds the document reference
    std::wstring m_strTipText;   // what m_toolTip shows for this label
    std::wstring m_strDocument;  // what m_docTip holds for this label
    MSG m_lastHelpKey{};         // the F1 handled last, so it is handled once
};

// Black text on the button face colour.
class QV_API XBaseStatictextColor : public qv::ColorVariant<XBaseStaticText> {
public:
    XBaseStatictextColor() : ColorVariant(RGB(0, 0, 0), ::GetSysColor(COLOR_BTNFACE)) {}
};
