// Search fields: an edit box with a browse button ("...") where the user
// types or picks a folder or a file, and the two pickers they open.
//
//   XSearchFolderCtrl     a folder; the browse button opens XFolderSelectDlg
//   XSearchFileCtrl       a file; the browse button opens XFileSelectDlg
//   XSearchFileOpenCtrl   a file, with a second button that opens the file
//                         with the application the system associates with it
//   XReadOnlySearch...    the same three showing a value the user cannot
//                         change: a read-only edit and a disabled browse
//                         button (the open button still opens the file), and
//                         no validation until the host turns it on
//
// The field is a static frame that owns its children, all as high as the
// frame and at its top: the edit (with the field's id) on the left and the
// buttons at the right edge, 25 pixels wide each. The frame's window text is
// the edit's text: WM_SETTEXT, WM_GETTEXT and WM_GETTEXTLENGTH sent to the
// frame read and write the edit, so GetDlgItemText on the field's id works.
// Two answers differ from a plain window's, as hosts of these fields expect:
// WM_SETTEXT answers 0 (SetWindowText on the field reports FALSE although
// the text was set) and WM_GETTEXT counts one more than the characters it
// copied (a 4-character text read into a buffer of 10 answers 5).
// The frame is a control parent, so Tab in a dialog reaches the edit and the
// buttons; focus given to the frame goes on to the edit.
//
// Validation (on by default, SetValidation): when the edit loses the focus
// and when text is set through WM_SETTEXT, the text is checked. A folder
// field asks the file system for anything in the folder, a file field opens
// the file for reading. A text that fails, the empty text included, is
// replaced by the system's message for the error ("The system cannot find
// the file specified."), selected, so the user sees why and types over it;
// nothing else is shown. Paths longer than MAX_PATH are checked in the
// system's long-path form, so a long path is never cut short.
//
// Notifications: the parent hears EN_CHANGE from the edit (with the field's
// id) when the user changes the text or picks a path, not when the field
// writes an error text or the host sets the text.
//
// Colours: every search field has its own text and background colours
// (XBaseColor; the read-only ones XBaseReadOnlyColor), by default RGB(8,0,0)
// on the window colour, read-only fields on the button-face colour.
//
// Screen readers: the field is a group named by the label before it, and
// so is its edit, whose value is the path; a change of the path is
// announced. The buttons are read as "Browse" and "Open" (translated), not
// as "..." or a picture.
//
// DPI: the buttons' widths and the gaps are scaled to the field's DPI, and
// the open button's face is enlarged by whole multiples, so it stays sharp;
// a DPI change lays the field out again.
#pragma once

#include <windows.h>
#include <commdlg.h>

#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/windows/named_button.h"

namespace qv {

// The system's open-file dialog (explorer style) run modally: the owner,
// initial folder, file name, filter ("Text (*.txt)|*.txt|All|*.*||"), flags
// and title are set before DoModal; the chosen path is read after it. A
// derived dialog adjusts the dialog once it is shown (OnInitDone), may
// refuse a chosen name (OnFileNameOK) and may end the dialog itself
// (EndWithPath).
class QV_API OpenFileDialog {
public:
    OpenFileDialog(const wchar_t* fileName, DWORD flags, const wchar_t* filter, HWND owner);
    virtual ~OpenFileDialog();
    OpenFileDialog(const OpenFileDialog&) = delete;
    OpenFileDialog& operator=(const OpenFileDialog&) = delete;

    // Runs the dialog: IDOK with a path chosen, IDCANCEL otherwise (a failure
    // of the dialog itself is written to the log book and answers IDCANCEL).
    virtual INT_PTR DoModal();
    // The chosen path (empty before DoModal answered IDOK). Paths of any
    // length come back whole.
    std::wstring GetPathName() const { return m_strPathName; }
    // The folder the dialog opens in (empty: the system's choice).
    void SetInitialDir(const std::wstring& folder) { m_strInitialDir = folder; }
    std::wstring GetInitialDir() const { return m_strInitialDir; }
    // The dialog's frame while it is shown, otherwise null.
    HWND GetDialogWindow() const noexcept { return m_hDialog; }
    // The structure DoModal passes to the system, for settings the class
    // has no setter for (hook, buffer and title are filled in by DoModal).
    OPENFILENAMEW& GetOFN() noexcept { return m_ofn; }

protected:
    // The dialog is shown: its controls exist.
    virtual void OnInitDone() {}
    // A name was chosen and OK pressed; false keeps the dialog open.
    virtual bool OnFileNameOK() { return true; }
    // A command reaching the dialog's frame (before the dialog acts on it);
    // true when the derived dialog dealt with it.
    virtual bool OnDialogCommand(WPARAM /*wp*/, LPARAM /*lp*/) { return false; }
    // Hides one of the dialog's controls (while it is shown).
    void HideControl(int id);
    // Sets the text of one of the dialog's controls (while it is shown).
    void SetControlText(int id, const std::wstring& text);
    // The folder the dialog shows now (empty when it cannot tell).
    std::wstring GetFolderPath() const;
    // Ends the dialog as if OK had chosen `path`.
    void EndWithPath(const std::wstring& path);
    // Centres the dialog over its owner (or the screen).
    void CenterDialog();

    std::wstring m_strTitle;

private:
    static UINT_PTR CALLBACK HookProc(HWND hook, UINT msg, WPARAM wp, LPARAM lp);
    static LRESULT CALLBACK FrameProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    UINT_PTR OnHook(HWND hook, UINT msg, WPARAM wp, LPARAM lp);

    OPENFILENAMEW m_ofn{};
    std::wstring m_strFileName;
    std::wstring m_strFilter;  // '|' already turned into terminators
    std::wstring m_strInitialDir;
    std::wstring m_strPathName;
    std::vector<wchar_t> m_buffer;
    HWND m_hDialog = nullptr;
    bool m_bEnded = false;
};

}  // namespace qv

// Picks a file: an open-file dialog for "All Files (*.*)" titled "Choose
// file" with an OK button "Select" (both translated; the host may set its
// own), centred over its owner.
class QV_API XFileSelectDlg : public qv::OpenFileDialog {
public:
    explicit XFileSelectDlg(HWND parent = nullptr);
    // Title and OK-button text; an open dialog shows them at once.
    void SetTitle(const std::wstring& title);
    std::wstring GetTitle() const { return m_strTitle; }
    void SetOkBtnText(const std::wstring& text);
    std::wstring GetOkBtnText() const { return m_strOkText; }

protected:
    void OnInitDone() override;

    std::wstring m_strOkText;
};

// Picks a folder with the same dialog: the file-name and file-type controls
// are hidden, OK sits beside Cancel, and OK takes the folder the dialog
// shows. Title "Choose folder", OK button "Select" (translated). When the
// folder cannot be read, an error box "XFolderSelectDlg:GetCurrentDirectory()"
// with the system's message says so and the dialog stays open.
class QV_API XFolderSelectDlg : public qv::OpenFileDialog {
public:
    explicit XFolderSelectDlg(HWND parent = nullptr);
    void SetTitle(const std::wstring& title);
    std::wstring GetTitle() const { return m_strTitle; }
    void SetOkBtnText(const std::wstring& text);
    std::wstring GetOkBtnText() const { return m_strOkText; }
    // The chosen folder; SetPath presets the folder the dialog opens in.
    std::wstring GetPath() const { return GetPathName(); }
    void SetPath(const std::wstring& path) { SetInitialDir(path); }

protected:
    void OnInitDone() override;
    bool OnDialogCommand(WPARAM wp, LPARAM lp) override;

    std::wstring m_strOkText;
};

class QV_API XBaseSearchCtrl : public qv::Static, public qv::AccessibleSource, public qv::DpiListener {
public:
    enum : UINT { kBrowseId = 10000, kOpenId = 11111 };
    enum : UINT { kBrowseBitmap = 142 };
    // The frame: child, visible, group, tab stop.
    enum : DWORD { kStyle = 0x50030000 };
    // The edit: child, visible, border, group, tab stop, ES_AUTOHSCROLL.
    enum : DWORD { kEditStyle = 0x50830080 };
    // The open button: child, visible, BS_BITMAP | BS_CENTER.
    enum : DWORD { kOpenStyle = 0x50000380 };

    XBaseSearchCtrl();
    ~XBaseSearchCtrl() override;

    // Creates the frame over `rect` on `parent` (with `style`; WS_CHILD is
    // always added) and its children, the edit holding `text` unchecked.
    // FALSE for a null or destroyed parent or when a child cannot be made.
    BOOL Create(const std::wstring& text, DWORD style, const RECT& rect, HFONT font, HWND parent, UINT id);

    // ---- Overridables, in this order ------------------------------------------
    // Runs the picker; answers the chosen path, or empty when cancelled.
    virtual std::wstring DoCallDialog();
    // Whether `text` names an existing target; on failure `text` becomes the
    // system's message for the error. The base accepts any text.
    virtual bool CheckFileExist(std::wstring& text);
    // Enables the browse button and makes the edit editable, or disables the
    // button and makes the edit read-only.
    virtual void EnableControl(bool enable);
    virtual void SetTextColor(unsigned long colour);
    virtual void SetBkColor(unsigned long colour);

    // ---- Settings ------------------------------------------------------------
    // The picker's title and OK-button text (empty: the picker's own).
    void SetDlgTitle(const std::wstring& title) { m_strDlgTitle = title; }
    std::wstring GetDlgTitle() const { return m_strDlgTitle; }
    void SetDlgOkBtnText(const std::wstring& text) { m_strDlgOkText = text; }
    std::wstring GetDlgOkBtnText() const { return m_strDlgOkText; }
    // A read-only field: read-only edit, disabled browse button.
    void MakeReadOnly(bool readOnly = true);
    bool IsReadOnly() const noexcept { return m_bReadOnly; }
    // Selects the whole text of the edit.
    void SelectDataInEditCtrl();
    void SetValidation(bool validate) noexcept { m_bValidation = validate; }
    bool GetValidation() const noexcept { return m_bValidation; }
    // Puts the library's bitmap `id` on the open button (BM_SETIMAGE); the
    // field owns it. False when the field has no open button or the bitmap
    // is missing. (Named with its W, so a host's LoadBitmap macro maps to it.)
    bool LoadBitmapW(UINT id);

    // The children (windows exist once the field is created).
    qv::Edit& GetEditCtrl() noexcept { return m_edit; }
    qv::Button& GetBrowseButton() noexcept { return m_browse; }
    // Null for the fields without an open button.
    qv::Button* GetOpenButton() noexcept { return m_bOpenButton ? &m_open : nullptr; }
    COLORREF GetTextColor() const noexcept { return m_scheme.TextColor(); }
    COLORREF GetBkColor() const noexcept { return m_scheme.BkColor(); }

    // qv::AccessibleSource: the field is a group named by its label.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleRole(long child, long& role) override;
    // qv::DpiListener: lays the children out and shows the face again.
    void OnDpiChanged(UINT dpi) override;

protected:
    XBaseSearchCtrl(bool openButton, bool readOnly);

    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnSize(UINT type, int cx, int cy) override;                 // WM_SIZE
    void OnSetFocus(HWND oldFocus) override;                         // WM_SETFOCUS
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;                   // WM_COMMAND
    // -1 without an edit; otherwise 0 (the text went to the edit).
    LRESULT OnSetText(WPARAM wp, LPARAM lp) override;                // WM_SETTEXT
    // -1 without an edit; the characters copied plus one.
    LRESULT OnGetText(WPARAM wp, LPARAM lp) override;                // WM_GETTEXT
    LRESULT OnGetTextLength(WPARAM wp, LPARAM lp) override;          // WM_GETTEXTLENGTH
    void OnDestroy() override;                                       // WM_DESTROY

    // Opens the edit's file with its associated application.
    void OpenFile();
    // Replaces the whole edit text without telling the parent, and selects it.
    void WriteEditText(const std::wstring& text);
    // Places the children for a client area of cx x cy at `dpi`.
    void LayOutChildren(int cx, int cy, UINT dpi);
    bool HasEdit() const { return m_edit.IsWindow(); }
    std::wstring EditText() const { return HasEdit() ? m_edit.GetWindowText() : std::wstring(); }

    qv::Edit m_edit;
    qv::NamedButton m_browse;
    qv::NamedButton m_open;
    qv::Bitmap m_openFace;
    std::wstring m_strDlgTitle;
    std::wstring m_strDlgOkText;
    qv::ColorScheme m_scheme;
    bool m_bOpenButton = false;
    bool m_bReadOnly = false;
    bool m_bValidation = true;
    // Set while the field writes the edit itself: no validation, no EN_CHANGE
    // to the parent.
    bool m_bTextBeingSet = false;
    bool m_bDestroying = false;
};

// A folder: checked by searching it for anything, picked with XFolderSelectDlg.
class QV_API XSearchFolderCtrl : public XBaseSearchCtrl, public XBaseColor {
public:
    XSearchFolderCtrl() : XBaseSearchCtrl(false, false) {}
    std::wstring DoCallDialog() override;
    bool CheckFileExist(std::wstring& text) override;
    void SetTextColor(unsigned long colour) override { XBaseSearchCtrl::SetTextColor(colour); }
    void SetBkColor(unsigned long colour) override { XBaseSearchCtrl::SetBkColor(colour); }

protected:
    explicit XSearchFolderCtrl(bool readOnly) : XBaseSearchCtrl(false, readOnly) {}
};

// A file: checked by opening it for reading, picked with XFileSelectDlg.
class QV_API XSearchFileCtrl : public XBaseSearchCtrl, public XBaseColor {
public:
    XSearchFileCtrl() : XBaseSearchCtrl(false, false) {}
    std::wstring DoCallDialog() override;
    bool CheckFileExist(std::wstring& text) override;
    void SetTextColor(unsigned long colour) override { XBaseSearchCtrl::SetTextColor(colour); }
    void SetBkColor(unsigned long colour) override { XBaseSearchCtrl::SetBkColor(colour); }

protected:
    XSearchFileCtrl(bool openButton, bool readOnly) : XBaseSearchCtrl(openButton, readOnly) {}
};

// A file with an open button (bitmap 142) that opens it with the system's
// associated application; a failure is shown in a box "Open application".
class QV_API XSearchFileOpenCtrl : public XSearchFileCtrl {
public:
    XSearchFileOpenCtrl() : XSearchFileCtrl(true, false) {}

protected:
    explicit XSearchFileOpenCtrl(bool readOnly) : XSearchFileCtrl(true, readOnly) {}
};

// The read-only fields. They are XBaseColor fields as well (through their
// editable class); a host that sorts fields by the interface asks for
// XBaseReadOnlyColor.
class QV_API XReadOnlySearchFolderCtrl : public XSearchFolderCtrl, public XBaseReadOnlyColor {
public:
    XReadOnlySearchFolderCtrl() : XSearchFolderCtrl(true) {}
    void SetTextColor(unsigned long colour) override { XBaseSearchCtrl::SetTextColor(colour); }
    void SetBkColor(unsigned long colour) override { XBaseSearchCtrl::SetBkColor(colour); }
};

class QV_API XReadOnlySearchFileCtrl : public XSearchFileCtrl, public XBaseReadOnlyColor {
public:
    XReadOnlySearchFileCtrl() : XSearchFileCtrl(false, true) {}
    void SetTextColor(unsigned long colour) override { XBaseSearchCtrl::SetTextColor(colour); }
    void SetBkColor(unsigned long colour) override { XBaseSearchCtrl::SetBkColor(colour); }
};

class QV_API XReadOnlySearchFileOpenCtrl : public XSearchFileOpenCtrl, public XBaseReadOnlyColor {
public:
    XReadOnlySearchFileOpenCtrl() : XSearchFileOpenCtrl(true) {}
    void SetTextColor(unsigned long colour) override { XBaseSearchCtrl::SetTextColor(colour); }
    void SetBkColor(unsigned long colour) override { XBaseSearchCtrl::SetBkColor(colour); }
};
