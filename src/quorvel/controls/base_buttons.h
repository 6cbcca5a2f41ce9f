// The library's buttons: push button, check boxes (two- and three-state),
// radio button and group box. Tab and Enter move to the next field of the
// form (Shift+Tab to the previous one); check boxes and radio buttons tell
// their parent when they get the focus (WM_NOTIFY, NM_SETFOCUS), and a group
// box passes that notification on from the fields inside it. A group box can
// show its caption as a prompt with context help.
//
// Screen readers: each button is named by its text and reports its kind
// (push button, check box, radio button, group) and, for check boxes and
// radio buttons, whether it is checked (mixed for the third state of a
// three-state box); every change of the check, by the user or the host, is
// announced. A group box with a prompt caption is named by the caption and
// described by its help text, and places its caption for its DPI.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/color.h"
#include "quorvel/controls/prompt.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/gdi.h"

namespace qv {

// A button of a form: Tab and Enter move the focus on (Shift+Tab back).
class QV_API FormButton : public Button, public virtual AccessibleSource {
public:
    // Creates the button with its class's style and sets its font with
    // redraw. FALSE for a null or destroyed parent.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);

    // qv::AccessibleSource: the kind of button and its check.
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

protected:
    virtual DWORD CreationStyle() const = 0;
    BOOL CreateButton(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent, DWORD style);
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;    // BM_SETCHECK: announced
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;          // WM_CHAR
    LRESULT OnSetText(WPARAM wp, LPARAM lp) override;                // WM_SETTEXT: the name changes
};

// A form button that also tells its parent when it gets the focus.
class QV_API FocusReportingButton : public FormButton {
protected:
    void OnSetFocus(HWND oldFocus) override;                         // WM_SETFOCUS
};

// `Base` created with the window style `Style`.
template <class Base, DWORD Style>
class StyledButton : public Base {
public:
    enum : DWORD { kStyle = Style };

protected:
    DWORD CreationStyle() const override { return Style; }
};

}  // namespace qv

// Push button: child, visible, group, tab stop.
class QV_API XBaseButton : public qv::StyledButton<qv::FormButton, 0x50030000> {};

// Two-state check box: child, visible, group, tab stop, BS_AUTOCHECKBOX,
// BS_LEFT.
class QV_API XBaseCheckBox : public qv::StyledButton<qv::FocusReportingButton, 0x50030103> {};

// A check box for yes/no values; the same as XBaseCheckBox.
class QV_API XBaseDualCheckBox : public XBaseCheckBox {};

// Three-state check box (BS_AUTO3STATE instead of BS_AUTOCHECKBOX):
// unchecked, checked, indeterminate, in that order on each click.
class QV_API XBaseTriCheckBox : public qv::StyledButton<XBaseCheckBox, 0x50030106> {};

// Radio button: child, visible, tab stop, BS_AUTORADIOBUTTON; not a group
// start, so consecutive radios form one group.
class QV_API XBaseRadio : public qv::StyledButton<qv::FocusReportingButton, 0x50010009> {};

// Group box. The second Create draws the caption as a prompt with context
// help; the fields inside the box can be its children, and their focus
// notifications reach the box's parent.
class QV_API XBaseGroupBox : public qv::StyledButton<qv::FormButton, 0x50020007>, public qv::DpiListener {
public:
    // The first Create: child, visible, group, BS_GROUPBOX. The second: the
    // same with BS_LEFTTEXT and BS_NOTIFY, for the prompt caption.
    enum : DWORD { kPromptStyle = 0x50024027 };
    // Where the caption starts, in the box's client coordinates at 96 DPI
    // (scaled to the box's DPI).
    enum : int { kCaptionLeft = 8 };

    XBaseGroupBox();
    ~XBaseGroupBox() override;

    using FormButton::Create;
    // An empty box on the button face colour, with a prompt caption showing
    // `text` and the help string `helpText` (see XBasePrompt); "*" follows
    // the caption when `mandatory`.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent,
                const std::wstring& helpText, bool mandatory);

    // qv::DpiListener: the caption is placed and sized again.
    void OnDpiChanged(UINT dpi) override;

    // qv::AccessibleSource: with a prompt caption, named by the caption and
    // described by its help text.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleDescription(long child, std::wstring& description) override;

protected:
    BOOL OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) override;           // WM_NOTIFY from children
    HBRUSH OnReflectCtlColor(HDC dc, UINT ctlColorMsg) override;             // reflected WM_CTLCOLOR*

    // The caption prompt while it is a window, else null.
    XBasePrompt* CaptionPrompt() const;
    // Sets `font` on the caption prompt and sizes the prompt to its text.
    void FitCaption(HFONT font);

private:
    std::unique_ptr<XBasePrompt> m_pPrompt;
    qv::Brush m_brBk;  // the prompt caption form's background
};

// A group box in colours the host sets: black text on the button face
// colour. With a prompt caption, the colours go to the caption.
class QV_API XBaseGroupBoxColor : public qv::ColorVariant<XBaseGroupBox> {
public:
    XBaseGroupBoxColor() : ColorVariant(RGB(0, 0, 0), ::GetSysColor(COLOR_BTNFACE)) {}

    void SetTextColor(unsigned long colour) override;
    void SetBkColor(unsigned long colour) override;

protected:
    // With a prompt caption the font goes to the caption, which is resized
    // to its text; the box keeps its own font.
    LRESULT OnSetFont(WPARAM wp, LPARAM lp) override;                        // WM_SETFONT
};
