// XBaseColorControlNew: a field with which a user chooses the font and the
// colours of some text of the host's forms. A preview label shows "Test" in
// the chosen font and colours; the "..." button beside it opens
// XBaseColorControlDlg, the library's dialog with lists for the font's face,
// height and style, the text and background colours and a live preview. The
// host reads the choice back through the getters, the colours also as HTML
// colour texts ("#rrggbb").
//
// A chooser for a read-only field ("SetControlForReadOnly") offers no
// background colour: the dialog's background button and swatch are disabled
// and both previews show a white background, whatever background is stored.
//
// The size is used as the font's height in logical units as it is entered
// (12 gives a font 12 pixels high), not converted from points.
//
// Screen readers: the chooser is a group named by the label before it. The
// preview is read with the same name and the choice as its value ("Arial
// 12, Bold, Black on White"; colours by name where the default palette has
// one, otherwise as "#RRGGBB"; without the background for a read-only
// chooser), and a change of the choice is announced. The "..." button is
// read as "Fonts and colors". In the dialog every list is named by its
// label (the dialog is ordered label before field, which is also the order
// Tab follows), the swatches carry their colours as values, the preview the
// choice, and the two "..." buttons say which colour they choose.
//
// DPI: the preview and the button keep their distances at the chooser's
// DPI, and both previews scale the font height with it (12 is 12 pixels at
// 96 DPI, 18 at 144); a DPI change lays the chooser out again.
//
// Style index: the dialog exchanges the three style flags as one number,
// 0 none, 1 italic, 2 bold, 3 underlined, 4 bold + italic, 5 bold +
// underlined, 6 bold + italic + underlined, 7 italic + underlined. The style
// list shows "Bold" before "Italic", so indices 1 and 2 sit at list
// positions 2 and 1.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/controls/static_text.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dialog.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/gdi.h"

// The font and colour dialog (the library's template 5022). Given the
// current choice before DoModal; after IDOK the getters hold the new one.
// Cancel leaves them as they were given.
//
// "..." beside the text and the background colour opens the system's colour
// dialog; "Default" puts the lists and colours back to Arial, 12, Normal,
// black on white (a read-only chooser keeps its background). OK takes the
// lists' texts: a face name that is empty or a height that is not a whole
// number from 1 to 999 is answered with a warning box, and the dialog stays
// open with the focus on that list.
class QV_API XBaseColorControlDlg : public qv::Dialog {
public:
    enum : UINT {
        kTemplate = 5022,
        kDefaultButton = 3,
        kFaceList = 5029,
        kHeightList = 5030,
        kStyleList = 5031,
        kTextColorButton = 5034,
        kBackColorButton = 5036,
        kTextSwatchFrame = 5038,
        kBackSwatchFrame = 5039,
        kBackColorLabel = 5040,
        kPreviewFrame = 5041,
        // The fields that take the three framed statics' places.
        kTextSwatch = 12000,
        kBackSwatch = 12001,
        kPreview = 12002,
    };

    XBaseColorControlDlg() noexcept;
    ~XBaseColorControlDlg() override;

    void SetControlForReadOnly(bool readOnly) noexcept { m_readOnly = readOnly; }
    void SetFontName(const std::wstring& face) { m_fontName = face; }
    void SetFontSize(int size) noexcept { m_fontSize = size; }
    void SetStyleIndex(int index) noexcept { m_styleIndex = index; }
    void SetTextColor(COLORREF color) noexcept { m_textColor = color; }
    void SetBGColor(COLORREF color) noexcept { m_bgColor = color; }

    bool IsControlForReadOnly() const noexcept { return m_readOnly; }
    const std::wstring& GetFontName() const noexcept { return m_fontName; }
    int GetFontSize() const noexcept { return m_fontSize; }
    int GetStyleIndex() const noexcept { return m_styleIndex; }
    COLORREF GetTextColor() const noexcept { return m_textColor; }
    COLORREF GetBGColor() const noexcept { return m_bgColor; }
    // The preview's font while the dialog is open (null before and after).
    HFONT GetPreviewFont() const noexcept { return m_previewFont.get(); }

protected:
    BOOL OnInitDialog() override;
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;  // WM_COMMAND
    void OnOK() override;
    // IDCANCEL: the values go back to those given.
    void OnCancel() override;
    void OnDestroy() override;                      // WM_DESTROY
    // The system's colour dialog opened on `color`; true (and the colour)
    // when the user chose one.
    virtual bool RunColorDialog(COLORREF& color);
    // Brings the preview up to the current face, size, style and colours.
    void UpdatePreview();

private:
    void FillFaceList();
    void FillLists();
    void ReplaceFrames();
    // Puts every label before its field and the buttons last, for screen
    // readers (which name a field by the label before it) and for Tab.
    void OrderForReading();
    // Takes over the lists and the two "..." buttons for screen readers:
    // the lists are named by their labels and valued by their texts, the
    // buttons by the colour they choose.
    void AttachForReaders();
    void ShowChoice();
    void PickColor(bool background);
    // The face, height and style the lists show; false (and a warning) when
    // one cannot be taken, with the focus on it.
    bool ReadLists(bool warn, UINT notifyFrom = 0, UINT notifyCode = 0);

    bool m_readOnly = false;
    std::wstring m_fontName = L"Arial";
    int m_fontSize = 12;
    int m_styleIndex = 0;
    COLORREF m_textColor = 0x000000;
    COLORREF m_bgColor = 0xFFFFFF;
    std::unique_ptr<XBaseStatictextColor> m_textSwatch;
    std::unique_ptr<XBaseStatictextColor> m_backSwatch;
    std::unique_ptr<XBaseStatictextColor> m_preview;
    std::vector<std::unique_ptr<qv::Window>> m_readerItems;  // the lists and "..." buttons, taken over
    qv::Font m_previewFont;
    // The values as given when the dialog opened, for Cancel.
    struct Given {
        std::wstring face;
        int size = 12;
        int style = 0;
        COLORREF text = 0x000000;
        COLORREF background = 0xFFFFFF;
    } m_given;
};

class QV_API XBaseColorControlNew : public qv::Static, public qv::AccessibleSource, public qv::DpiListener {
public:
    // The "..." button: child, visible, BS_NOTIFY.
    enum : DWORD { kButtonStyle = 0x50004000 };

    XBaseColorControlNew();
    ~XBaseColorControlNew() override;

    // Creates the frame (a static with `style`, e.g. WS_CHILD | WS_VISIBLE)
    // at `rect` of `parent`, the preview showing "Test" and the "..." button
    // inside it, and shows the current choice. `text` is taken for hosts
    // that pass a caption; the frame shows none, its children cover it. TRUE when all three exist;
    // FALSE for a null or destroyed parent or a second creation.
    int CreateCtrl(const wchar_t* text, unsigned long style, const RECT& rect, HWND parent, unsigned int id);

    std::wstring GetFontName() const { return m_fontName; }
    int GetFontSize() const noexcept { return m_fontSize; }
    bool IsFontBold() const noexcept { return m_bold; }
    bool IsFontItalic() const noexcept { return m_italic; }
    bool IsFontUnderlined() const noexcept { return m_underlined; }
    COLORREF GetTextColor() const noexcept { return m_textColor; }
    COLORREF GetBGColor() const noexcept { return m_bgColor; }
    bool IsControlForReadOnly() const noexcept { return m_readOnly; }
    // The colours as "#rrggbb" (lower case).
    std::wstring GetTextColorHTML() const;
    std::wstring GetBGColorHTML() const;

    // Each stores the value and brings the preview up to date.
    void SetFontName(const std::wstring& face);
    void SetFontSize(int size);
    void SetFontBold(bool bold);
    void SetFontItalic(bool italic);
    void SetFontUnderlined(bool underlined);
    void SetTextColor(COLORREF color);
    void SetBGColor(COLORREF color);
    void SetControlForReadOnly(bool readOnly);
    // The colours from "#rrggbb" texts (either case); false, and nothing
    // changed, for any other text.
    bool SetTextColorHTML(const wchar_t* html);
    bool SetBGColorHTML(const wchar_t* html);

    // "%x" of `value`, padded to two digits: 255 -> "ff", 1 -> "01".
    static std::wstring DecToHex(int value);

    // Opens the font and colour dialog on the current choice; on OK takes
    // the new one and shows it. True when the user chose OK.
    bool ShowFontDlg();

    // The children (null before CreateCtrl).
    XBaseStatictextColor* GetPreview() const noexcept { return m_pPreview.get(); }
    qv::Button* GetButton() const noexcept { return m_pButton.get(); }
    // The font the preview shows (null before CreateCtrl).
    HFONT GetPreviewFont() const noexcept { return m_font.get(); }
    // What a screen reader hears as the preview's value.
    std::wstring GetReaderValue() const;

    // qv::AccessibleSource: the chooser is a group named by its label.
    bool AccessibleRole(long child, long& role) override;
    // qv::DpiListener: lays the children out and makes the font again.
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnSize(UINT type, int cx, int cy) override;   // WM_SIZE
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;     // WM_COMMAND (the button's BN_CLICKED)
    // The dialog ShowFontDlg runs; a derived chooser may offer its own.
    virtual std::unique_ptr<XBaseColorControlDlg> MakeFontDlg();
    // Shows the current choice in the preview.
    void adaptControlToInternalData();

private:
    void LayOutChildren(int cx, int cy, UINT dpi);

    std::unique_ptr<XBaseStatictextColor> m_pPreview;
    std::unique_ptr<qv::Button> m_pButton;
    UINT m_buttonId = 0;
    std::wstring m_fontName = L"Arial";
    int m_fontSize = 12;
    bool m_bold = false;
    bool m_italic = false;
    bool m_underlined = false;
    COLORREF m_textColor = 0x000000;
    COLORREF m_bgColor = 0xFFFFFF;
    bool m_readOnly = false;
    qv::Font m_font;
    bool m_inDialog = false;
    std::wstring m_readerValue;  // the value a reader heard last
};
