#include "quorvel/controls/rich_text.h"

#include <commdlg.h>
#include <oleacc.h>

#include <algorithm>
#include <climits>
#include <string>
#include <vector>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/rich_text_rules.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/frame/zt_lang.h"
#include "resources/resource.h"

namespace rt = qv::richtext;

namespace {

// A field holds documents of any size: the control's own limit (32 767
// characters by default) would cut long documents short on the way in.
constexpr long kNoTextLimit = 0x7FFFFFF0;
// The indent of a bulleted paragraph's text, in twips.
constexpr LONG kBulletIndent = 360;

int CALLBACK CollectFace(const LOGFONTW* lf, const TEXTMETRICW*, DWORD, LPARAM lp) {
    if (lf->lfFaceName[0] != L'@') reinterpret_cast<std::vector<std::wstring>*>(lp)->push_back(lf->lfFaceName);
    return 1;
}

void WarnInvalid(const wchar_t* text) {
    const std::wstring caption = CoTranslateText(L"Invalid entry");
    const std::wstring message = CoTranslateText(text);
    CoWarningBox(nullptr, caption.c_str(), message.c_str(), 0);
}

// An RTF document as the control reads it: 8-bit text. Characters beyond
// ASCII (a host may hand over a document with them written out) become
// \uN escapes with '?' for readers that cannot show them.
std::string ToRtfBytes(const std::wstring& rtf) {
    std::string bytes;
    bytes.reserve(rtf.size());
    for (wchar_t c : rtf) {
        if (c < 0x80) {
            bytes += static_cast<char>(c);
        } else {
            bytes += "\\u";
            bytes += std::to_string(static_cast<short>(c));
            bytes += '?';
        }
    }
    return bytes;
}

// The font dialog's list, named for screen readers by the dialog's title,
// as it has no label of its own.
class TitledList final : public qv::ComboBox, public qv::AccessibleSource {
public:
    bool AccessibleName(long child, std::wstring& name) override {
        if (child != CHILDID_SELF) return false;
        const HWND dialog = GetParent();
        const int length = dialog ? ::GetWindowTextLengthW(dialog) : 0;
        name.assign(static_cast<size_t>(length > 0 ? length : 0) + 1, L'\0');
        name.resize(dialog ? static_cast<size_t>(::GetWindowTextW(dialog, name.data(), length + 1)) : 0);
        return !name.empty();
    }
};

}  // namespace

// ---- XGetFontNameDlg -------------------------------------------------------------

XGetFontNameDlg::XGetFontNameDlg() : Dialog(IDD_QV_FONTNAME) {}
XGetFontNameDlg::~XGetFontNameDlg() = default;

std::vector<std::wstring> XGetFontNameDlg::InstalledFontNames() {
    std::vector<std::wstring> names;
    HDC dc = ::GetDC(nullptr);
    if (!dc) return names;
    LOGFONTW lf{};
    lf.lfCharSet = DEFAULT_CHARSET;
    ::EnumFontFamiliesExW(dc, &lf, &CollectFace, reinterpret_cast<LPARAM>(&names), 0);
    ::ReleaseDC(nullptr, dc);
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

BOOL XGetFontNameDlg::OnInitDialog() {
    HWND combo = GetDlgItem(IDC_QV_FONTNAME_COMBO);
    for (const std::wstring& name : m_fontNames)
        ::SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name.c_str()));
    auto list = std::make_unique<TitledList>();
    m_readerList.reset(list->SubclassDlgItem(IDC_QV_FONTNAME_COMBO, m_hWnd) ? list.release() : nullptr);
    return Dialog::OnInitDialog();
}

void XGetFontNameDlg::DoDataExchange(qv::DataExchange* dx) { qv::DDX_Text(dx, IDC_QV_FONTNAME_COMBO, m_strFontName); }

void XGetFontNameDlg::OnOK() {
    const std::wstring kept = m_strFontName;
    if (!UpdateData(true)) return;
    const auto blank = [](wchar_t c) { return c == L' ' || c == L'\t'; };
    if (std::all_of(m_strFontName.begin(), m_strFontName.end(), blank)) {
        m_strFontName = kept;
        WarnInvalid(L"Please choose a font.");
        ::SetFocus(GetDlgItem(IDC_QV_FONTNAME_COMBO));
        return;
    }
    EndDialog(IDOK);
}

// ---- XGetFontSizeDlg -------------------------------------------------------------

XGetFontSizeDlg::XGetFontSizeDlg() : Dialog(IDD_QV_FONTSIZE) {}
XGetFontSizeDlg::~XGetFontSizeDlg() = default;

BOOL XGetFontSizeDlg::OnInitDialog() {
    // The label goes before the field: screen readers name a field by the
    // label before it.
    if (HWND label = GetDlgItem(IDC_QV_FONTSIZE_LABEL))
        ::SetWindowPos(label, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    auto edit = std::make_unique<qv::Edit>();
    m_readerEdit.reset(edit->SubclassDlgItem(IDC_QV_FONTSIZE_EDIT, m_hWnd) ? edit.release() : nullptr);
    return Dialog::OnInitDialog();
}

void XGetFontSizeDlg::DoDataExchange(qv::DataExchange* dx) {
    std::wstring text = rt::FormatFontSize(m_lTwips);
    qv::DDX_Text(dx, IDC_QV_FONTSIZE_EDIT, text);
    if (!dx->m_bSaveAndValidate || dx->m_bFailed) return;
    const auto twips = rt::ParseFontSize(text);
    if (!twips) {
        dx->PrepareEditCtrl(IDC_QV_FONTSIZE_EDIT);
        dx->Fail();
        return;
    }
    m_lTwips = *twips;
}

void XGetFontSizeDlg::OnOK() {
    if (!UpdateData(true)) {
        WarnInvalid(L"Please enter a font size from 1 to 1638 points.");
        return;
    }
    EndDialog(IDOK);
}

// ---- XRichEditCtrl ------------------------------------------------------------------

XRichEditCtrl::XRichEditCtrl() = default;
XRichEditCtrl::~XRichEditCtrl() = default;

void XRichEditCtrl::OnContextMenu(HWND, POINT pt) { ShowContextMenu(pt); }

void XRichEditCtrl::ShowContextMenu(POINT screen) {
    if (m_bMenuDisabled || !IsWindow()) return;
    long start = 0, end = 0;
    GetSel(start, end);
    if (screen.x == -1 && screen.y == -1) {
        // From the keyboard: at the caret.
        POINTL at{};
        SendMessage(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&at), end);
        screen = POINT{at.x, at.y};
        ::ClientToScreen(m_hWnd, &screen);
    }
    rt::MenuState state;
    state.selStart = start;
    state.selEnd = end;
    state.textEmpty = GetWindowTextLength() == 0;
    state.canUndo = CanUndo();
    state.canPaste = SendMessage(EM_CANPASTE, 0) != 0;
    state.readOnly = IsReadOnly();
    const auto flags = rt::EnableFlags(state);
    std::copy(flags.begin(), flags.end(), m_bEnable);

    HMENU menu = ::CreatePopupMenu();
    if (menu) {
        for (const rt::MenuLine& line : rt::kMenu) {
            if (line.IsSeparator()) {
                ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
                continue;
            }
            const bool on = m_bEnable[rt::FlagIndex(line.id)];
            const std::wstring text = CoTranslateText2(line.text);
            ::AppendMenuW(menu, MF_STRING | (on ? MF_ENABLED : MF_GRAYED), line.id, text.c_str());
        }
        ::TrackPopupMenu(menu, TPM_RIGHTBUTTON, screen.x, screen.y, 0, m_hWnd, nullptr);
        ::DestroyMenu(menu);
    }
    std::fill(std::begin(m_bEnable), std::end(m_bEnable), false);
}

BOOL XRichEditCtrl::OnCommand(WPARAM wp, LPARAM lp) {
    const UINT id = LOWORD(wp);
    if (lp != 0 || rt::FlagIndex(id) < 0) return RichEditCtrl::OnCommand(wp, lp);
    RunCommand(id);
    return TRUE;
}

bool XRichEditCtrl::RunCommand(UINT id) {
    if (!IsWindow() || !rt::MayRun(id, IsReadOnly())) return false;
    switch (id) {
    case kIdUndo: SendMessage(EM_UNDO); return true;
    case kIdCut: Cut(); return true;
    case kIdCopy: Copy(); return true;
    case kIdPaste: Paste(); return true;
    case kIdClear: SendMessage(WM_CLEAR); return true;
    case kIdSelectAll: SetSel(0, -1); return true;
    case kIdTextColor: return On_Menu_SetTextColor();
    case kIdFontName: return On_Menu_SetFontName();
    case kIdFontSize: return On_Menu_SetFontSize();
    default: On_Menu_ToggleFormat(id); return true;
    }
}

void XRichEditCtrl::On_Menu_ToggleFormat(UINT id) {
    const rt::Change change = rt::ChangeFor(id);
    switch (change) {
    case rt::Change::Bold:
    case rt::Change::Italic:
    case rt::Change::Underline: {
        const DWORD bit = change == rt::Change::Bold ? CFE_BOLD : change == rt::Change::Italic ? CFE_ITALIC : CFE_UNDERLINE;
        const DWORD mask = change == rt::Change::Bold ? CFM_BOLD : change == rt::Change::Italic ? CFM_ITALIC : CFM_UNDERLINE;
        CHARFORMAT2W cf{};
        const DWORD uniform = GetSelectionCharFormat(cf);
        const bool on = rt::ToggledOn((uniform & mask) != 0, (cf.dwEffects & bit) != 0);
        CHARFORMAT2W set{};
        set.dwMask = mask;
        set.dwEffects = on ? bit : 0;
        SetSelectionCharFormat(set);
        break;
    }
    case rt::Change::AlignLeft:
    case rt::Change::AlignCenter:
    case rt::Change::AlignRight: {
        PARAFORMAT2 pf{};
        pf.cbSize = sizeof(pf);
        pf.dwMask = PFM_ALIGNMENT;
        pf.wAlignment = change == rt::Change::AlignLeft ? PFA_LEFT : change == rt::Change::AlignCenter ? PFA_CENTER : PFA_RIGHT;
        SendMessage(EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&pf));
        break;
    }
    case rt::Change::Bullets: {
        PARAFORMAT2 pf{};
        pf.cbSize = sizeof(pf);
        const DWORD uniform = static_cast<DWORD>(SendMessage(EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&pf)));
        const bool on = rt::ToggledOn((uniform & PFM_NUMBERING) != 0, pf.wNumbering == PFN_BULLET);
        PARAFORMAT2 set{};
        set.cbSize = sizeof(set);
        set.dwMask = PFM_NUMBERING | PFM_OFFSET;
        set.wNumbering = on ? PFN_BULLET : 0;
        set.dxOffset = on ? kBulletIndent : 0;
        SendMessage(EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&set));
        break;
    }
    case rt::Change::None: break;
    }
}

bool XRichEditCtrl::SetSelectionTextColor(COLORREF colour) {
    if (!IsWindow()) return false;
    CHARFORMAT2W cf{};
    cf.dwMask = CFM_COLOR;
    cf.crTextColor = colour;
    return SetSelectionCharFormat(cf);
}

bool XRichEditCtrl::SetSelectionFontName(const wchar_t* face) {
    if (!IsWindow() || !face || !*face || wcslen(face) >= LF_FACESIZE) return false;
    CHARFORMAT2W cf{};
    cf.dwMask = CFM_FACE;
    wcsncpy(cf.szFaceName, face, LF_FACESIZE - 1);
    return SetSelectionCharFormat(cf);
}

bool XRichEditCtrl::SetSelectionFontSize(long twips) {
    if (!IsWindow() || twips < rt::kMinPoints * 20 || twips > rt::kMaxPoints * 20) return false;
    CHARFORMAT2W cf{};
    cf.dwMask = CFM_SIZE;
    cf.yHeight = twips;
    return SetSelectionCharFormat(cf);
}

bool XRichEditCtrl::On_Menu_SetTextColor() {
    static COLORREF custom[16] = {};
    CHOOSECOLORW cc{};
    cc.lStructSize = sizeof(cc);
    cc.hwndOwner = m_hWnd;
    cc.rgbResult = 0;
    cc.lpCustColors = custom;
    cc.Flags = 0;
    if (!::ChooseColorW(&cc)) return false;
    return SetSelectionTextColor(cc.rgbResult);
}

bool XRichEditCtrl::On_Menu_SetFontName() {
    if (!m_pFontNameDlg) m_pFontNameDlg.reset(new (std::nothrow) XGetFontNameDlg);
    if (!m_pFontNameDlg) {
        qv::LogFailure(L" XRichEditCtrl::On_Menu_SetFontName()", 1009, L"ASSERT(m_pFontNameDlg)");
        return false;
    }
    m_pFontNameDlg->SetFontNames(XGetFontNameDlg::InstalledFontNames());
    CHARFORMAT2W cf{};
    const DWORD uniform = GetSelectionCharFormat(cf);
    m_pFontNameDlg->SetFontName((uniform & CFM_FACE) ? cf.szFaceName : L"");
    if (m_pFontNameDlg->DoModal(m_hWnd) != IDOK) return false;
    return SetSelectionFontName(m_pFontNameDlg->GetFontName().c_str());
}

bool XRichEditCtrl::On_Menu_SetFontSize() {
    if (!m_pFontSizeDlg) m_pFontSizeDlg.reset(new (std::nothrow) XGetFontSizeDlg);
    if (!m_pFontSizeDlg) {
        qv::LogFailure(L" XRichEditCtrl::On_Menu_SetFontSize()", 1041, L"ASSERT(m_pFontSizeDlg)");
        return false;
    }
    CHARFORMAT2W cf{};
    const DWORD uniform = GetSelectionCharFormat(cf);
    if (uniform & CFM_SIZE) m_pFontSizeDlg->SetFontSize(cf.yHeight);
    if (m_pFontSizeDlg->DoModal(m_hWnd) != IDOK) return false;
    return SetSelectionFontSize(m_pFontSizeDlg->GetFontSize());
}

bool XRichEditCtrl::OnReflectCommand(UINT notifyCode) {
    if (notifyCode == EN_CHANGE) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
    return false;
}

void XRichEditCtrl::NotifyChanges() {
    if (IsWindow()) SetEventMask(GetEventMask() | ENM_CHANGE);
}

// ---- XRichEditCtrlEx -----------------------------------------------------------------

HMODULE XRichEditCtrlEx::RichEditLibrary() noexcept {
    // Kept for the life of the process: the window class must outlive every
    // control made from it.
    static const HMODULE library = ::LoadLibraryW(L"RICHED20.DLL");
    return library;
}

int XRichEditCtrlEx::Create(unsigned long style, const RECT& rect, HWND parent, unsigned int id) try {
    if (!RichEditLibrary() || !parent || !::IsWindow(parent)) return 0;
    if (!qv::Window::Create(L"RichEdit20W", L"", style, rect, parent, id)) return 0;
    NotifyChanges();
    return 1;
} catch (...) {
    return qv::CaughtAtEdge(" XRichEditCtrlEx::Create", __LINE__, 0);
}

void XRichEditCtrlEx::OnSetFocus(HWND oldFocus) { XRichEditCtrl::OnSetFocus(oldFocus); }

// ---- XBaseRTFEdit ----------------------------------------------------------------------

XBaseRTFEdit::XBaseRTFEdit() : m_crText(qv::kDefaultFieldTextColor), m_crBk(::GetSysColor(COLOR_WINDOW)) {}
XBaseRTFEdit::~XBaseRTFEdit() = default;

BOOL XBaseRTFEdit::Create(DWORD style, const RECT& rect, HWND parent, UINT id) try {
    if (!parent || !::IsWindow(parent) || !RichEditCtrl::Create(style, rect, parent, id)) {
        qv::LogFailure(L" XBaseRTFEdit::Create()", 163,
                       L"Error: void CXMsgBox::CreateRtfCtrl() in BOOL XBaseRTFEdit::Create(...)");
        return FALSE;
    }
    LimitText(kNoTextLimit);
    NotifyChanges();
    ApplyColors();
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseRTFEdit::Create", __LINE__, FALSE);
}

std::wstring XBaseRTFEdit::GetRTF() const try {
    if (!IsWindow()) return {};
    const std::string bytes = StreamOut(SF_RTF);
    return std::wstring(bytes.begin(), bytes.end());  // RTF is 7-bit text; bytes map one to one
} catch (...) {
    return qv::CaughtAtEdge(" XBaseRTFEdit::GetRTF", __LINE__, std::wstring());
}

bool XBaseRTFEdit::SetRTF(const std::wstring& rtf) try {
    if (!IsWindow()) return false;
    std::wstring plain;
    if (!RTF2TXT(rtf, plain)) return false;
    // Only a document is read in: any other text leaves the content as it was.
    const std::string bytes = ToRtfBytes(rtf);
    return StreamIn(SF_RTF, bytes) > 0;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseRTFEdit::SetRTF", __LINE__, false);
}

std::wstring XBaseRTFEdit::GetPlainText() const {
    std::wstring text;
    if (!RTF2TXT(GetRTF(), text)) return {};
    return text;
}

bool XBaseRTFEdit::SetReadOnly(bool readOnly) {
    if (!IsWindow()) return false;
    return RichEditCtrl::SetReadOnly(readOnly);
}

void XBaseRTFEdit::SetTextColor(unsigned long colour) {
    m_crText = colour;
    ApplyColors();
}

void XBaseRTFEdit::SetBkColor(unsigned long colour) {
    m_crBk = colour;
    ApplyColors();
}

void XBaseRTFEdit::ApplyColors() {
    if (!IsWindow()) return;
    SetBackgroundColor(false, m_crBk);
    CHARFORMAT2W cf{};
    cf.dwMask = CFM_COLOR;
    cf.crTextColor = m_crText;
    SetDefaultCharFormat(cf);
    Invalidate(true);
}

// ---- XBaseReadOnlyRTFEdit --------------------------------------------------------------

BOOL XBaseReadOnlyRTFEdit::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return XBaseRTFEdit::Create(style | ES_READONLY, rect, parent, id);
}

bool XBaseReadOnlyRTFEdit::SetReadOnly(bool readOnly) {
    if (!readOnly) return false;
    return XBaseRTFEdit::SetReadOnly(true);
}
