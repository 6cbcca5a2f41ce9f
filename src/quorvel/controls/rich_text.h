// Rich text fields: formatted text on a form.
//
// XRichEditCtrl is a rich edit control with a context menu of edit and
// formatting commands (Undo, Cut, Copy, Paste, Clear, Select All; Bold,
// Italic, Underlined; three alignments; Bullets; Text Color...; Font
// Name... and Font Size...). Entries that cannot act on the current
// selection are greyed; a read-only field offers only Copy and Select All.
// XRichEditCtrlEx creates the window of the second-generation rich edit
// library itself. XBaseRTFEdit is the form field: rich text in and out by
// stream (documents of any size) and the colour scheme of the library's
// fields; XBaseReadOnlyRTFEdit shows rich text that the user cannot change.
//
// The two small font dialogs that the menu opens, XGetFontNameDlg ("Select a
// font") and XGetFontSizeDlg ("Font size"), come from the library's own
// dialog templates and can be run by a host on their own as well.
//
// Screen readers: a field is named by the label before it and its value is
// its text, as the rich edit control reports it; a change of the text is
// announced (EVENT_OBJECT_VALUECHANGE), whether typed, pasted, formatted by
// the menu or set by the host. Sizes inside the text are in points, so the
// text scales with the DPI as the control draws it; the fields lay out
// nothing of their own.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dialog.h"

// "Select a font": a sorted drop-down list of face names. OK with an empty
// name is refused with a warning. A screen reader hears the list by the
// dialog's title, its value the name shown.
class QV_API XGetFontNameDlg : public qv::Dialog {
public:
    XGetFontNameDlg();
    ~XGetFontNameDlg() override;

    // The names offered in the list (the list sorts them).
    void SetFontNames(const std::vector<std::wstring>& names) { m_fontNames = names; }
    const std::vector<std::wstring>& GetFontNames() const noexcept { return m_fontNames; }
    // The name shown when the dialog opens, and after OK the one chosen.
    void SetFontName(const std::wstring& name) { m_strFontName = name; }
    const std::wstring& GetFontName() const noexcept { return m_strFontName; }

    // The face names of the installed font families (no vertical "@"
    // variants), sorted, each once.
    static std::vector<std::wstring> InstalledFontNames();

protected:
    BOOL OnInitDialog() override;                               // WM_INITDIALOG: fills the list
    void OnOK() override;                                       // IDOK
    void DoDataExchange(qv::DataExchange* dx) override;

private:
    std::vector<std::wstring> m_fontNames;
    std::wstring m_strFontName;
    std::unique_ptr<qv::Window> m_readerList;  // the list, taken over while the dialog is open
};

// "Font size": the size in points, with at most one decimal place, from 1
// to 1638. OK with any other text is refused with a warning. The label
// comes before the field, so a screen reader names the field by it.
class QV_API XGetFontSizeDlg : public qv::Dialog {
public:
    XGetFontSizeDlg();
    ~XGetFontSizeDlg() override;

    // The size shown when the dialog opens, and after OK the one entered,
    // in twips (1/20 point) as the rich edit control counts.
    void SetFontSize(long twips) noexcept { m_lTwips = twips; }
    long GetFontSize() const noexcept { return m_lTwips; }

protected:
    BOOL OnInitDialog() override;                               // WM_INITDIALOG
    void OnOK() override;                                       // IDOK
    void DoDataExchange(qv::DataExchange* dx) override;

private:
    long m_lTwips = 240;
    std::unique_ptr<qv::Window> m_readerEdit;  // the field, taken over while the dialog is open
};

class QV_API XRichEditCtrl : public qv::RichEditCtrl {
public:
    // The menu's command ids (the edit commands' are the framework's).
    enum : UINT {
        kIdUndo = 57643, kIdCut = 57635, kIdCopy = 57634, kIdPaste = 57637, kIdClear = 57632,
        kIdSelectAll = 57642, kIdBold = 12340, kIdItalic = 12341, kIdUnderlined = 12342,
        kIdAlignLeft = 12343, kIdAlignCenter = 12344, kIdAlignRight = 12345, kIdBullets = 12346,
        kIdTextColor = 12347, kIdFontName = 12348, kIdFontSize = 12349,
    };
    enum : int { kMenuCommandCount = 16 };

    XRichEditCtrl();
    ~XRichEditCtrl() override;

    // With the menu disabled a right click shows nothing.
    void SetMenuDisabled(bool disabled) noexcept { m_bMenuDisabled = disabled; }
    bool IsMenuDisabled() const noexcept { return m_bMenuDisabled; }
    bool IsReadOnly() const { return (GetStyle() & ES_READONLY) != 0; }

    // Shows the context menu at a screen point ((-1, -1): at the caret)
    // and answers when it closes; the chosen command arrives as WM_COMMAND.
    void ShowContextMenu(POINT screen);                          // TrackPopupMenu
    // Carries out a menu command as if it had been chosen. False for an id
    // that is not the menu's, a command a read-only field does not run, or
    // a command that did not complete (a dialog cancelled).
    bool RunCommand(UINT id);

    // The character format of the selection (at the caret: of what is typed next).
    bool SetSelectionTextColor(COLORREF colour);                 // EM_SETCHARFORMAT CFM_COLOR
    bool SetSelectionFontName(const wchar_t* face);              // EM_SETCHARFORMAT CFM_FACE
    bool SetSelectionFontSize(long twips);                       // EM_SETCHARFORMAT CFM_SIZE

    // The font dialogs, once a command has made them (null before).
    XGetFontNameDlg* GetFontNameDlg() const noexcept { return m_pFontNameDlg.get(); }
    XGetFontSizeDlg* GetFontSizeDlg() const noexcept { return m_pFontSizeDlg.get(); }

protected:
    void OnContextMenu(HWND wnd, POINT pt) override;             // WM_CONTEXTMENU
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;               // WM_COMMAND from the menu
    // EN_CHANGE: announces the new text; the parent hears it as well.
    bool OnReflectCommand(UINT notifyCode) override;             // WM_COMMAND (reflected)
    // Asks the control for EN_CHANGE, which a rich edit control sends only
    // on request.
    void NotifyChanges();

    void On_Menu_ToggleFormat(UINT id);
    bool On_Menu_SetTextColor();
    bool On_Menu_SetFontName();
    bool On_Menu_SetFontSize();

    bool m_bMenuDisabled = false;
    // One per command, menu order; set only while the menu is being built.
    bool m_bEnable[kMenuCommandCount] = {};
    std::unique_ptr<XGetFontNameDlg> m_pFontNameDlg;
    std::unique_ptr<XGetFontSizeDlg> m_pFontSizeDlg;
};

// A rich edit control on the second-generation library (RICHED20.DLL,
// class "RichEdit20W"), which it loads itself: once per process, kept.
class QV_API XRichEditCtrlEx : public XRichEditCtrl {
public:
    // Nonzero when the window was made; 0 when the library cannot be
    // loaded or the parent is not a window.
    int Create(unsigned long style, const RECT& rect, HWND parent, unsigned int id);
    // The loaded library (loading it on the first call), or null.
    static HMODULE RichEditLibrary() noexcept;

protected:
    void OnSetFocus(HWND oldFocus) override;                     // WM_SETFOCUS
};

// The rich text field. Text colour and background follow the library's
// colour scheme: the background is the control's, the text colour is the
// default character format's, taken by all text that has no colour of its
// own (typed text, plain text); colours a document sets itself stay.
// Defaults: text RGB(8, 0, 0), background the system window colour.
class QV_API XBaseRTFEdit : public XRichEditCtrl, public XBaseColor {
public:
    // Child, visible, border, tab stop, vertical scroll bar, multi-line,
    // growing downwards, Enter makes a new line.
    enum : DWORD { kStyle = 0x50A11044 };

    XBaseRTFEdit();
    ~XBaseRTFEdit() override;

    // Makes the field (no text limit); FALSE, and a log entry, when the
    // window cannot be made (also for a null or destroyed parent).
    virtual BOOL Create(DWORD style, const RECT& rect, HWND parent, UINT id);
    BOOL Create(const RECT& rect, HWND parent, UINT id) { return Create(kStyle, rect, parent, id); }

    // The content as rich text; empty without a window.
    std::wstring GetRTF() const;                                 // EM_STREAMOUT SF_RTF
    // Replaces the content with a rich-text document. False, and the
    // content kept, when the text is not rich text, the field has no window
    // or the control did not read all of it.
    bool SetRTF(const std::wstring& rtf);                        // EM_STREAMIN SF_RTF
    // The content as plain text (lines end with "\r\n").
    std::wstring GetPlainText() const;
    virtual bool SetReadOnly(bool readOnly = true);              // EM_SETREADONLY

    void SetTextColor(unsigned long colour) override;
    void SetBkColor(unsigned long colour) override;
    COLORREF GetTextColor() const noexcept { return m_crText; }
    COLORREF GetBkColor() const noexcept { return m_crBk; }

protected:
    void ApplyColors();

    COLORREF m_crText;
    COLORREF m_crBk;
};

// The read-only rich text field: made read-only, and kept so (SetReadOnly
// answers false to anything else). Its menu offers Copy and Select All.
class QV_API XBaseReadOnlyRTFEdit : public XBaseRTFEdit, public XBaseReadOnlyColor {
public:
    BOOL Create(DWORD style, const RECT& rect, HWND parent, UINT id) override;
    using XBaseRTFEdit::Create;
    bool SetReadOnly(bool readOnly = true) override;

    void SetTextColor(unsigned long colour) override { XBaseRTFEdit::SetTextColor(colour); }
    void SetBkColor(unsigned long colour) override { XBaseRTFEdit::SetBkColor(colour); }
};
