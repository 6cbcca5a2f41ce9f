// XBaseEditReadOnly: a read-only text field. A framed static holds an inner
// prompt 2 pixels inside its frame; the field's text lives in the prompt,
// and the text messages sent to the field read and write it there, with the
// field's length limit and optional 0-9/A-Z restriction.
//
// XBaseEditReadOnlyColor: the same field whose colours and font go to the
// inner prompt.
#pragma once

#include <windows.h>

#include <memory>
#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/color.h"
#include "quorvel/controls/prompt.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"

// A reader hears it as a read-only text field named by its label, with the
// text as its value, not as a label whose name is the value.
class QV_API XBaseEditReadOnly : public qv::Static, public qv::AccessibleSource {
public:
    // Child, visible, group; framed by WS_EX_STATICEDGE.
    enum : DWORD { kStyle = 0x50020000 };
    enum : DWORD { kExStyle = WS_EX_STATICEDGE };
    // The prompt's distance from the frame's client edge.
    enum : int { kInset = 2 };

    XBaseEditReadOnly();
    ~XBaseEditReadOnly() override;

    // TRUE when the frame and its prompt both exist; FALSE for a null or
    // destroyed parent.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);

    // The largest number of characters the field keeps (32767 by default).
    void SetMaxInputChar(int count) noexcept { m_nMaxInputChar = count; }
    int GetMaxInputChar() const noexcept { return m_nMaxInputChar; }
    // Restricts texts set from now on to '0'-'9' and 'A'-'Z' (upper-cased;
    // a text with anything else is set empty).
    void ActivateInputMask09AZ(bool on) noexcept { m_bInputMask09AZ = on; }
    bool IsInputMask09AZActivated() const noexcept { return m_bInputMask09AZ; }

protected:
    void OnSize(UINT type, int cx, int cy) override;                 // WM_SIZE
    // 0 when the text went to the prompt, -1 without a prompt.
    LRESULT OnSetText(WPARAM wp, LPARAM lp) override;                // WM_SETTEXT
    // The characters copied plus one (one more than the usual answer).
    LRESULT OnGetText(WPARAM wp, LPARAM lp) override;                // WM_GETTEXT
    LRESULT OnGetTextLength(WPARAM wp, LPARAM lp) override;          // WM_GETTEXTLENGTH
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;          // WM_CHAR
    void OnSetFocus(HWND oldFocus) override;                         // WM_SETFOCUS

    // qv::AccessibleSource: name from the label, the text as value, role
    // text, state read-only.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleValue(long child, std::wstring& value) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

    // The inner prompt while it is a window, else null.
    XBasePrompt* InnerPrompt() const;

private:
    bool m_bInputMask09AZ = false;
    int m_nMaxInputChar = 32767;
    std::unique_ptr<XBasePrompt> m_pPrompt;
};

class QV_API XBaseEditReadOnlyColor : public XBaseEditReadOnly, public XBaseReadOnlyColor {
public:
    // Colours reach the prompt, so those set before Create are lost.
    void SetTextColor(unsigned long colour) override;
    void SetBkColor(unsigned long colour) override;

protected:
    // The font goes to the prompt (with redraw); the frame keeps its own.
    LRESULT OnSetFont(WPARAM wp, LPARAM lp) override;                // WM_SETFONT
};
