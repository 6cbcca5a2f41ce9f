#include "quorvel/controls/font_color.h"

#include <commdlg.h>
#include <oleacc.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/font_color_rules.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/views/color_button_rules.h"
#include "quorvel/windows/named_button.h"

namespace fc = qv::fontcolor;

namespace {

std::wstring Translated(const wchar_t* text) { return qv::Services::Translation().Translate(text); }

constexpr COLORREF kReadOnlyGrey = 0xC0C0C0;

// The size is a height in pixels at 96 DPI, scaled to the window's DPI.
HFONT MakeFont(const std::wstring& face, int size, const fc::Style& style, UINT dpi) {
    LOGFONTW lf{};
    lf.lfHeight = qv::ScaleToDpi(size, dpi);
    lf.lfWeight = fc::Weight(style.bold);
    lf.lfItalic = style.italic ? TRUE : FALSE;
    lf.lfUnderline = style.underlined ? TRUE : FALSE;
    lf.lfPitchAndFamily = 32;  // FF_SWISS | DEFAULT_PITCH
    ::lstrcpynW(lf.lfFaceName, face.c_str(), LF_FACESIZE);
    return ::CreateFontIndirectW(&lf);
}

RECT ToRect(const fc::Box& b) { return RECT{b.left, b.top, b.right, b.bottom}; }
fc::Box ToBox(const RECT& r) { return fc::Box{r.left, r.top, r.right, r.bottom}; }

std::wstring ItemText(HWND item) {
    std::wstring text(static_cast<size_t>(::GetWindowTextLengthW(item)) + 1, L'\0');
    text.resize(static_cast<size_t>(::GetWindowTextW(item, text.data(), static_cast<int>(text.size()))));
    return text;
}

// The text of a combo box's list entry `index`.
std::wstring ListText(HWND combo, int index) {
    const LRESULT length = ::SendMessageW(combo, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
    if (length == CB_ERR) return {};
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    const LRESULT got = ::SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.resize(got == CB_ERR ? 0 : static_cast<size_t>(got));
    return text;
}

// Selects the entry whose text is `text` (ignoring case, as the list
// compares), or shows the text in the edit part when the list has none.
void ShowInCombo(HWND combo, const std::wstring& text) {
    const LRESULT found = ::SendMessageW(combo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
    ::SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(found), 0);
    if (found == CB_ERR) ::SetWindowTextW(combo, text.c_str());
}

// A colour as a reader hears it: its name where the default palette has
// one (translated), otherwise its "#RRGGBB" text.
std::wstring ReaderColorText(COLORREF color) {
    const wchar_t* name = qv::colors::ColorName(color);
    return name ? Translated(name) : qv::colors::HexText(color);
}

// The choice as a reader hears it (font_color.h).
std::wstring ReaderChoice(const std::wstring& face, int size, int styleIndex, COLORREF text, COLORREF background,
                          bool readOnly) {
    const std::wstring style = Translated(fc::StyleListText(fc::ListPositionOfStyle(styleIndex)));
    const std::wstring pattern = Translated(readOnly ? fc::kReaderValueReadOnly : fc::kReaderValue);
    return fc::FillIn(pattern,
                      {face, std::to_wstring(size), style, ReaderColorText(text), ReaderColorText(background)});
}

// A label of the chooser or its dialog that screen readers hear with a name
// and a value of its own: the preview (the choice) and the colour swatches
// (their colours). Without a name of its own it takes the label before it.
class ReaderStatic final : public XBaseStatictextColor, public virtual qv::AccessibleSource {
public:
    using Text = std::function<std::wstring()>;
    ReaderStatic(Text name, Text value) : m_name(std::move(name)), m_value(std::move(value)) {}

    bool AccessibleName(long child, std::wstring& name) override {
        if (child != CHILDID_SELF) return false;
        name = m_name ? m_name() : qv::AccessibleLabelOf(m_hWnd);
        return !name.empty();
    }
    bool AccessibleValue(long child, std::wstring& value) override {
        if (child != CHILDID_SELF || !m_value) return false;
        value = m_value();
        return true;
    }
    bool AccessibleRole(long child, long& role) override {
        if (child != CHILDID_SELF) return false;
        role = ROLE_SYSTEM_STATICTEXT;
        return true;
    }

private:
    Text m_name, m_value;
};

int CALLBACK CollectFace(const LOGFONTW* lf, const TEXTMETRICW*, DWORD, LPARAM lp) {
    auto* faces = reinterpret_cast<std::vector<std::wstring>*>(lp);
    try {
        // Vertical variants ("@Name") are for vertical text only.
        if (lf->lfFaceName[0] == L'@') return 1;
        std::wstring face(lf->lfFaceName);
        if (std::find(faces->begin(), faces->end(), face) == faces->end()) faces->push_back(std::move(face));
    } catch (...) {
        return 0;  // out of memory: keep the names so far
    }
    return 1;
}

}  // namespace

// ---- XBaseColorControlDlg ----------------------------------------------------------

XBaseColorControlDlg::XBaseColorControlDlg() noexcept : qv::Dialog(kTemplate) {}

XBaseColorControlDlg::~XBaseColorControlDlg() = default;

BOOL XBaseColorControlDlg::OnInitDialog() {
    qv::Dialog::OnInitDialog();
    m_given = Given{m_fontName, m_fontSize, m_styleIndex, m_textColor, m_bgColor};
    FillLists();
    ReplaceFrames();
    OrderForReading();
    AttachForReaders();
    if (m_readOnly) {
        if (m_backSwatch) {
            m_backSwatch->EnableWindow(false);
            m_backSwatch->SetBkColor(kReadOnlyGrey);
        }
        ::EnableWindow(GetDlgItem(kBackColorLabel), FALSE);
        ::EnableWindow(GetDlgItem(kBackColorButton), FALSE);
    }
    ShowChoice();
    if (m_preview) {
        m_preview->ModifyStyle(WS_BORDER, 0);
        m_preview->ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED);
    }
    SetWindowText(L"Fonts and colors");  // translated with the other texts
    return TRUE;
}

void XBaseColorControlDlg::FillFaceList() {
    std::vector<std::wstring> faces;
    LOGFONTW lf{};
    lf.lfCharSet = ANSI_CHARSET;
    HDC dc = ::GetDC(m_hWnd);
    if (dc) {
        ::EnumFontFamiliesExW(dc, &lf, &CollectFace, reinterpret_cast<LPARAM>(&faces), 0);
        ::ReleaseDC(m_hWnd, dc);
    }
    HWND list = GetDlgItem(kFaceList);
    ::SendMessageW(list, CB_RESETCONTENT, 0, 0);
    for (const std::wstring& face : faces)
        ::SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(face.c_str()));
}

void XBaseColorControlDlg::FillLists() {
    FillFaceList();
    HWND sizes = GetDlgItem(kHeightList);
    ::SendMessageW(sizes, CB_RESETCONTENT, 0, 0);
    for (int i = 0; i < fc::kSizeCount; ++i)
        ::SendMessageW(sizes, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(fc::SizeListText(i)));
    HWND styles = GetDlgItem(kStyleList);
    ::SendMessageW(styles, CB_RESETCONTENT, 0, 0);
    for (int i = 0; i < fc::kStyleCount; ++i)
        ::SendMessageW(styles, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Translated(fc::StyleListText(i)).c_str()));
}

void XBaseColorControlDlg::ReplaceFrames() {
    struct Frame {
        UINT frame, id;
        const wchar_t* text;
        std::unique_ptr<XBaseStatictextColor>* field;
        ReaderStatic::Text value;
    };
    const Frame frames[] = {
        {kTextSwatchFrame, kTextSwatch, L" ", &m_textSwatch, [this] { return ReaderColorText(m_textColor); }},
        {kBackSwatchFrame, kBackSwatch, L" ", &m_backSwatch, [this] { return ReaderColorText(m_bgColor); }},
        {kPreviewFrame, kPreview, fc::kDialogPreviewText, &m_preview, [this] {
             return ReaderChoice(m_fontName, m_fontSize, m_styleIndex, m_textColor, m_bgColor, m_readOnly);
         }},
    };
    const HFONT font = GetFont();
    for (const Frame& f : frames) {
        HWND old = GetDlgItem(static_cast<int>(f.frame));
        if (!old) continue;
        ::ShowWindow(old, SW_HIDE);
        RECT rc{};
        ::GetWindowRect(old, &rc);
        ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<POINT*>(&rc), 2);
        auto field = std::make_unique<ReaderStatic>(nullptr, f.value);
        if (!field->Create(f.text, f.id, rc, font, m_hWnd)) continue;  // the place stays empty
        // Behind the old frame in the tab order, so the dialog reads as before.
        ::SetWindowPos(field->m_hWnd, old, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        if (f.id != kPreview) field->ModifyStyleEx(0, WS_EX_STATICEDGE, SWP_FRAMECHANGED);
        field->ShowWindow(SW_SHOW);
        *f.field = std::move(field);
    }
}

void XBaseColorControlDlg::OrderForReading() {
    // The template's own labels (no id of their own), in template order:
    // "Font", "Height", "Style", "Text Color", "Preview". A template of
    // another make-up is left as it is.
    std::vector<HWND> labels;
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const int id = ::GetDlgCtrlID(child);
        wchar_t cls[16] = {};
        ::GetClassNameW(child, cls, 16);
        if ((id == -1 || id == 0xFFFF) && ::lstrcmpiW(cls, L"Static") == 0) labels.push_back(child);
    }
    if (labels.size() != 5) return;
    auto item = [this](UINT id) { return GetDlgItem(static_cast<int>(id)); };
    auto field = [](const std::unique_ptr<XBaseStatictextColor>& f) { return f ? f->m_hWnd : nullptr; };
    const HWND order[] = {
        labels[0], item(kFaceList),   labels[1], item(kHeightList), labels[2], item(kStyleList),
        labels[3], item(kTextSwatchFrame), field(m_textSwatch), item(kTextColorButton),
        item(kBackColorLabel), item(kBackSwatchFrame), field(m_backSwatch), item(kBackColorButton),
        labels[4], item(kPreviewFrame), field(m_preview),
        item(IDOK), item(IDCANCEL), item(kDefaultButton),
    };
    HWND after = HWND_TOP;
    for (HWND h : order) {
        if (!h) continue;
        ::SetWindowPos(h, after, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        after = h;
    }
}

void XBaseColorControlDlg::AttachForReaders() {
    m_readerItems.clear();
    // The library's own list objects answer readers with the label before
    // them as the name and the list's text as the value.
    for (UINT id : {kFaceList, kHeightList, kStyleList}) {
        auto list = std::make_unique<qv::ComboBox>();
        if (list->SubclassDlgItem(id, m_hWnd)) m_readerItems.push_back(std::move(list));
    }
    const struct { UINT id; const wchar_t* name; } buttons[] = {
        {kTextColorButton, L"Choose text color"},
        {kBackColorButton, L"Choose background color"},
    };
    for (const auto& b : buttons) {
        auto button = std::make_unique<qv::NamedButton>();
        if (!button->SubclassDlgItem(b.id, m_hWnd)) continue;
        button->SetAccessibleName(Translated(b.name));
        m_readerItems.push_back(std::move(button));
    }
}

void XBaseColorControlDlg::ShowChoice() {
    ShowInCombo(GetDlgItem(kFaceList), m_fontName);
    ShowInCombo(GetDlgItem(kHeightList), std::to_wstring(m_fontSize));
    ::SendMessageW(GetDlgItem(kStyleList), CB_SETCURSEL, static_cast<WPARAM>(fc::ListPositionOfStyle(m_styleIndex)), 0);
    if (m_textSwatch) m_textSwatch->SetBkColor(m_textColor);
    if (m_backSwatch && !m_readOnly) m_backSwatch->SetBkColor(m_bgColor);
    UpdatePreview();
}

void XBaseColorControlDlg::UpdatePreview() {
    if (!m_preview) return;
    m_preview->SetBkColor(fc::PreviewBackground(m_readOnly, m_bgColor));
    m_preview->SetTextColor(m_textColor);
    // The old font goes first; the preview is given the new one at once.
    m_previewFont.reset();
    m_previewFont.reset(MakeFont(m_fontName, m_fontSize, fc::StyleOf(m_styleIndex), qv::DpiOf(m_hWnd)));
    m_preview->SetFont(m_previewFont.get(), true);
    qv::RaiseAccessibleEvent(m_preview->m_hWnd, EVENT_OBJECT_VALUECHANGE);
}

bool XBaseColorControlDlg::ReadLists(bool warn, UINT notifyFrom, UINT notifyCode) {
    // A selection change arrives before the edit part shows the new entry.
    auto current = [&](UINT id) {
        HWND list = GetDlgItem(static_cast<int>(id));
        if (notifyFrom == id && notifyCode == CBN_SELCHANGE) {
            const LRESULT sel = ::SendMessageW(list, CB_GETCURSEL, 0, 0);
            if (sel != CB_ERR) return ListText(list, static_cast<int>(sel));
        }
        return ItemText(list);
    };
    auto refuse = [&](UINT id, const wchar_t* message) {
        if (!warn) return false;
        ::CoWarningBox(nullptr, Translated(L"Invalid entry").c_str(), Translated(message).c_str(), 0);
        ::SetFocus(GetDlgItem(static_cast<int>(id)));
        return false;
    };

    std::wstring face = current(kFaceList);
    const auto blank = face.find_first_not_of(L" \t");
    if (blank == std::wstring::npos) return refuse(kFaceList, L"Please choose a font.");
    face = face.substr(blank, face.find_last_not_of(L" \t") - blank + 1);
    const auto size = fc::ParseSize(current(kHeightList));
    if (!size) return refuse(kHeightList, L"Please enter a height from 1 to 999.");

    // The style list's edit part may hold typed text: an entry of the list
    // counts, anything else keeps the style chosen before.
    HWND styles = GetDlgItem(kStyleList);
    const std::wstring styleText = current(kStyleList);
    const LRESULT pos = ::SendMessageW(styles, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(styleText.c_str()));
    const int style = pos == CB_ERR ? -1 : fc::StyleOfListPosition(static_cast<int>(pos));

    m_fontName = face;
    m_fontSize = *size;
    if (style >= 0) m_styleIndex = style;
    return true;
}

void XBaseColorControlDlg::PickColor(bool background) {
    if (background && m_readOnly) return;
    COLORREF color = background ? m_bgColor : m_textColor;
    if (!RunColorDialog(color)) return;
    XBaseStatictextColor* swatch = background ? m_backSwatch.get() : m_textSwatch.get();
    (background ? m_bgColor : m_textColor) = color;
    if (swatch) {
        swatch->SetBkColor(color);
        swatch->ShowWindow(SW_SHOW);
        qv::RaiseAccessibleEvent(swatch->m_hWnd, EVENT_OBJECT_VALUECHANGE);
    }
    UpdatePreview();
}

bool XBaseColorControlDlg::RunColorDialog(COLORREF& color) {
    return qv::ChooseSystemColor(m_hWnd, color);
}

BOOL XBaseColorControlDlg::OnCommand(WPARAM wp, LPARAM lp) {
    const UINT id = LOWORD(wp), code = HIWORD(wp);
    switch (id) {
    case kTextColorButton:
    case kBackColorButton:
        if (code != BN_CLICKED) break;
        PickColor(id == kBackColorButton);
        return TRUE;
    case kDefaultButton: {
        if (code != BN_CLICKED) break;
        const fc::Choice now{m_fontName, m_fontSize, m_styleIndex, m_textColor, m_bgColor};
        const fc::Choice def = fc::DefaultChoice(now, m_readOnly);
        m_fontName = def.face;
        m_fontSize = def.size;
        m_styleIndex = def.styleIndex;
        m_textColor = def.text;
        m_bgColor = def.background;
        ShowChoice();
        return TRUE;
    }
    case kFaceList:
    case kHeightList:
    case kStyleList:
        // The preview follows the lists as the user goes; a text that
        // cannot be taken yet leaves it as it was.
        if (code == CBN_SELCHANGE || code == CBN_EDITCHANGE) {
            if (ReadLists(false, id, code)) UpdatePreview();
            return TRUE;
        }
        break;
    default: break;
    }
    return qv::Dialog::OnCommand(wp, lp);
}

void XBaseColorControlDlg::OnOK() {
    // ReadLists takes nothing unless every list holds something usable, so
    // a refused OK loses none of what was chosen before.
    if (ReadLists(true)) EndDialog(IDOK);
}

void XBaseColorControlDlg::OnCancel() {
    // The lists and colour buttons change the values as the user goes.
    m_fontName = m_given.face;
    m_fontSize = m_given.size;
    m_styleIndex = m_given.style;
    m_textColor = m_given.text;
    m_bgColor = m_given.background;
    qv::Dialog::OnCancel();
}

void XBaseColorControlDlg::OnDestroy() {
    // The fields go with the dialog; the object may be run again.
    if (m_preview) m_preview->SetFont(nullptr, false);
    m_textSwatch.reset();
    m_backSwatch.reset();
    m_preview.reset();
    m_readerItems.clear();
    m_previewFont.reset();
    Default();
}

// ---- XBaseColorControlNew -------------------------------------------------------------

XBaseColorControlNew::XBaseColorControlNew() = default;

XBaseColorControlNew::~XBaseColorControlNew() {
    // The children go before the frame; the font after the preview that shows it.
    m_pButton.reset();
    m_pPreview.reset();
    DestroyWindow();
}

int XBaseColorControlNew::CreateCtrl(const wchar_t* text, unsigned long style, const RECT& rect, HWND parent,
                                     unsigned int id) try {
    if (!parent || !::IsWindow(parent) || m_hWnd) return FALSE;
    // The frame shows no text of its own: its children cover it.
    (void)text;
    if (!qv::Static::Create(nullptr, style, rect, parent, id)) return FALSE;
    const fc::Box frame = ToBox(rect);
    // The preview is read with the chooser's name and the choice as its value.
    auto preview = std::make_unique<ReaderStatic>([this] { return qv::AccessibleLabelOf(m_hWnd); },
                                                  [this] { return GetReaderValue(); });
    auto button = std::make_unique<qv::NamedButton>();
    const HFONT dialogFont = reinterpret_cast<HFONT>(::SendMessageW(parent, WM_GETFONT, 0, 0));
    // The children are placed in the frame's own client area.
    const fc::Box inside{0, 0, frame.right - frame.left, frame.bottom - frame.top};
    const UINT dpi = qv::DpiOf(m_hWnd);
    if (!preview->Create(fc::kChooserPreviewText, 0, ToRect(fc::PreviewBox(inside, dpi)), nullptr, m_hWnd) ||
        !button->Create(L"...", kButtonStyle, ToRect(fc::ButtonBox(inside, dpi)), m_hWnd, m_buttonId)) {
        DestroyWindow();
        return FALSE;
    }
    button->SetFont(dialogFont, false);
    button->SetAccessibleName(Translated(L"Fonts and colors"));
    m_pPreview = std::move(preview);
    m_pButton = std::move(button);
    adaptControlToInternalData();
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseColorControlNew::CreateCtrl", __LINE__, FALSE);
}

void XBaseColorControlNew::adaptControlToInternalData() {
    if (!m_pPreview || !m_pPreview->IsWindow()) return;
    m_pPreview->SetBkColor(fc::PreviewBackground(m_readOnly, m_bgColor));
    m_pPreview->SetTextColor(m_textColor);
    qv::Font font(MakeFont(m_fontName, m_fontSize, fc::Style{m_bold, m_italic, m_underlined}, qv::DpiOf(m_hWnd)));
    m_pPreview->SetFont(font.get(), true);
    m_font = std::move(font);  // the previous font goes once the preview has let it go
    m_pPreview->ShowWindow(SW_SHOW);
    // A reader hears a changed choice; a setter that changed nothing says nothing.
    std::wstring value = GetReaderValue();
    if (value != m_readerValue) {
        m_readerValue = std::move(value);
        qv::RaiseAccessibleEvent(m_pPreview->m_hWnd, EVENT_OBJECT_VALUECHANGE);
    }
}

std::wstring XBaseColorControlNew::GetReaderValue() const {
    return ReaderChoice(m_fontName, m_fontSize, fc::StyleIndex(fc::Style{m_bold, m_italic, m_underlined}), m_textColor,
                        m_bgColor, m_readOnly);
}

bool XBaseColorControlNew::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_GROUPING;
    return true;
}

void XBaseColorControlNew::OnDpiChanged(UINT dpi) {
    if (!IsWindow()) return;
    const RECT client = GetClientRect();
    LayOutChildren(client.right, client.bottom, dpi);
    adaptControlToInternalData();
}

void XBaseColorControlNew::LayOutChildren(int cx, int cy, UINT dpi) {
    const fc::Box inside{0, 0, cx, cy};
    if (m_pPreview) m_pPreview->MoveWindow(ToRect(fc::PreviewBox(inside, dpi)));
    if (m_pButton) m_pButton->MoveWindow(ToRect(fc::ButtonBox(inside, dpi)));
}

LRESULT XBaseColorControlNew::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_DESTROY:
        // The children go with the frame; the objects follow them.
        m_pButton.reset();
        m_pPreview.reset();
        m_font.reset();
        return qv::Static::WindowProc(msg, wp, lp);
    default: return qv::Static::WindowProc(msg, wp, lp);
    }
}

void XBaseColorControlNew::OnSize(UINT type, int cx, int cy) {
    LayOutChildren(cx, cy, qv::DpiOf(m_hWnd));
    qv::Static::OnSize(type, cx, cy);
}

BOOL XBaseColorControlNew::OnCommand(WPARAM wp, LPARAM lp) {
    if (m_pButton && LOWORD(wp) == m_buttonId && HIWORD(wp) == BN_CLICKED &&
        reinterpret_cast<HWND>(lp) == m_pButton->m_hWnd) {
        ShowFontDlg();
        return TRUE;
    }
    return qv::Static::OnCommand(wp, lp);
}

std::unique_ptr<XBaseColorControlDlg> XBaseColorControlNew::MakeFontDlg() {
    return std::make_unique<XBaseColorControlDlg>();
}

bool XBaseColorControlNew::ShowFontDlg() try {
    if (m_inDialog || !IsWindow()) return false;
    std::unique_ptr<XBaseColorControlDlg> dlg = MakeFontDlg();
    if (!dlg) return false;
    dlg->SetControlForReadOnly(m_readOnly);
    dlg->SetFontName(m_fontName);
    dlg->SetFontSize(m_fontSize);
    dlg->SetTextColor(m_textColor);
    dlg->SetBGColor(m_bgColor);
    dlg->SetStyleIndex(fc::StyleIndex(fc::Style{m_bold, m_italic, m_underlined}));
    m_inDialog = true;
    const INT_PTR result = dlg->DoModal(m_hWnd);
    m_inDialog = false;
    if (result != IDOK) return false;
    m_fontName = dlg->GetFontName();
    m_fontSize = dlg->GetFontSize();
    m_textColor = dlg->GetTextColor();
    m_bgColor = dlg->GetBGColor();
    const fc::Style style = fc::StyleOf(dlg->GetStyleIndex());
    m_bold = style.bold;
    m_italic = style.italic;
    m_underlined = style.underlined;
    adaptControlToInternalData();
    return true;
} catch (...) {
    m_inDialog = false;
    return qv::CaughtAtEdge(" XBaseColorControlNew::ShowFontDlg", __LINE__, false);
}

std::wstring XBaseColorControlNew::GetTextColorHTML() const { return fc::HtmlColor(m_textColor); }
std::wstring XBaseColorControlNew::GetBGColorHTML() const { return fc::HtmlColor(m_bgColor); }

std::wstring XBaseColorControlNew::DecToHex(int value) { return fc::DecToHex(static_cast<unsigned>(value)); }

void XBaseColorControlNew::SetFontName(const std::wstring& face) {
    m_fontName = face;
    adaptControlToInternalData();
}
void XBaseColorControlNew::SetFontSize(int size) {
    m_fontSize = size;
    adaptControlToInternalData();
}
void XBaseColorControlNew::SetFontBold(bool bold) {
    m_bold = bold;
    adaptControlToInternalData();
}
void XBaseColorControlNew::SetFontItalic(bool italic) {
    m_italic = italic;
    adaptControlToInternalData();
}
void XBaseColorControlNew::SetFontUnderlined(bool underlined) {
    m_underlined = underlined;
    adaptControlToInternalData();
}
void XBaseColorControlNew::SetTextColor(COLORREF color) {
    m_textColor = color;
    adaptControlToInternalData();
}
void XBaseColorControlNew::SetBGColor(COLORREF color) {
    m_bgColor = color;
    adaptControlToInternalData();
}
void XBaseColorControlNew::SetControlForReadOnly(bool readOnly) {
    m_readOnly = readOnly;
    adaptControlToInternalData();
}

bool XBaseColorControlNew::SetTextColorHTML(const wchar_t* html) {
    const auto color = html ? fc::ParseHtmlColor(html) : std::nullopt;
    if (!color) return false;
    SetTextColor(*color);
    return true;
}

bool XBaseColorControlNew::SetBGColorHTML(const wchar_t* html) {
    const auto color = html ? fc::ParseHtmlColor(html) : std::nullopt;
    if (!color) return false;
    SetBGColor(*color);
    return true;
}
