// qv::Dialog: a dialog box from one of the library's own templates.
//
// The template is taken from quorvel.dll (LibraryModule()), never from the
// host executable, even when the host has a template with the same number;
// only a dialog that names another module (a host's dialog built on one of
// the library's dialog classes) takes its template from there. The object
// attaches to the dialog in WM_INITDIALOG; from then on the dialog's messages
// reach the object's handlers like any Window's.
//
// WM_INITDIALOG: OnInitDialog() (which fills the controls with
// UpdateData(false)), then CoTranslateWindow translates the caption and the
// controls' texts; OnInitDialog's answer goes back to the dialog manager
// (TRUE: give the default focus). When either throws, the dialog ends before
// it is shown, as one that could not be created.
// IDOK calls OnOK() (UpdateData(true), and EndDialog(IDOK) when that
// succeeds); IDCANCEL (also Esc and the close box) calls OnCancel().
//
// Data exchange: DoDataExchange lists the DDX_ calls of a dialog; UpdateData
// runs it in one direction. A failed DDX_ call marks the exchange failed,
// puts the focus on the offending control, and turns the remaining DDX_ calls
// of that exchange into no-ops. No message is shown: a dialog that wants one
// shows it when UpdateData answers false.
#pragma once

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/platform/window.h"

namespace qv {

class Dialog;

// The state of one data exchange between a dialog's controls and its members.
class QV_API DataExchange {
public:
    DataExchange(Dialog* dialog, bool saveAndValidate) noexcept;

    Dialog* m_pDlgWnd;
    HWND m_hDlg;
    bool m_bSaveAndValidate;  // true: controls -> members
    bool m_bFailed = false;
    HWND m_hWndLastControl = nullptr;

    // The control `id`, remembered as the one a failure is about.
    HWND PrepareCtrl(int id) noexcept;
    HWND PrepareEditCtrl(int id) noexcept { return PrepareCtrl(id); }
    // Marks the exchange failed and focuses the last prepared control
    // (selecting its text when it is an edit field).
    void Fail() noexcept;
};

class QV_API Dialog : public Window {
public:
    explicit Dialog(UINT templateId) noexcept : m_templateId(templateId) {}
    // The template `templateId` of `templateModule` (null: the library's).
    Dialog(UINT templateId, HINSTANCE templateModule) noexcept
        : m_templateId(templateId), m_templateModule(templateModule) {}
    ~Dialog() override;

    // DialogBoxParamW: runs the dialog modally and answers what EndDialog
    // was given, or -1 when the dialog could not be created.
    INT_PTR DoModal(HWND parent);
    // CreateDialogParamW: a modeless dialog, shown when its template says
    // WS_VISIBLE. The object destroys it when it is destroyed itself.
    bool Create(HWND parent);
    // Ends a modal dialog with `result`; a modeless one is destroyed.
    void EndDialog(int result);
    // Runs DoDataExchange: save = true reads the controls into the members
    // (and validates), false fills the controls. False when an exchange failed.
    bool UpdateData(bool save = true);

    UINT GetTemplateId() const noexcept { return m_templateId; }
    // The module the template is loaded from.
    HINSTANCE TemplateModule() const noexcept;
    bool IsModal() const noexcept { return m_modal; }

protected:
    // WM_INITDIALOG; answers TRUE to let the dialog manager set the focus.
    virtual BOOL OnInitDialog();
    // IDOK: UpdateData(true), then EndDialog(IDOK) when it succeeded.
    virtual void OnOK();
    // IDCANCEL: EndDialog(IDCANCEL).
    virtual void OnCancel();
    virtual void DoDataExchange(DataExchange* /*dx*/) {}

    BOOL OnCommand(WPARAM wp, LPARAM lp) override;  // WM_COMMAND: IDOK, IDCANCEL

private:
    static INT_PTR CALLBACK DialogProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);

    UINT m_templateId;
    HINSTANCE m_templateModule = nullptr;
    bool m_modal = false;
};

// Text of control `id` <-> a string.
QV_API void DDX_Text(DataExchange* dx, int id, std::wstring& value);
// Text of control `id` <-> a decimal integer; a text that is not one (blank
// space around it is allowed) fails the exchange.
QV_API void DDX_Text(DataExchange* dx, int id, int& value);

// The system colour dialog, opened full with `color` chosen; false when the
// user cancelled (`color` is then left). The custom colours the user keeps
// in it are one set for the whole process, whichever control opened it.
QV_API bool ChooseSystemColor(HWND owner, COLORREF& color);

}  // namespace qv
