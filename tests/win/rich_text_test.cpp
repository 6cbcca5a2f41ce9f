// Rich text fields on a real rich edit control: the context menu read while
// it is open, the formatting commands read back from the selection, the edit
// commands, rich text in and out (a multi-megabyte document included), the
// font and colour dialogs driven to completion, colours, and creation.
#include "quorvel/controls/rich_text.h"

#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "quorvel/frame/services.h"
#include "quorvel/frame/siblings.h"
#include "resources/resource.h"
#include "support/host.h"

namespace {

using qvtest::TextOf;

const wchar_t kDoc[] = L"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}\\plain\\f0\\fs20 Hello {\\b bold} world\\par Second line}";

// ---- the open popup menu ----------------------------------------------------------

struct MenuItem {
    UINT id;
    std::wstring text;
    bool grayed;
    bool operator==(const MenuItem&) const = default;
};
void PrintTo(const MenuItem& m, std::ostream* os) {
    *os << m.id << ' ' << std::string(m.text.begin(), m.text.end()) << (m.grayed ? " (greyed)" : "");
}
std::vector<MenuItem> g_menu;
int g_menus = 0;

void CALLBACK ReadMenu(HWND, UINT, UINT_PTR, DWORD) {
    HWND popup = ::FindWindowW(L"#32768", nullptr);
    if (!popup || !::IsWindowVisible(popup)) return;
    HMENU menu = reinterpret_cast<HMENU>(::SendMessageW(popup, MN_GETHMENU, 0, 0));
    g_menu.clear();
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        wchar_t text[64] = {};
        ::GetMenuStringW(menu, static_cast<UINT>(i), text, 64, MF_BYPOSITION);
        const UINT state = ::GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
        const UINT id = static_cast<UINT>(::GetMenuItemID(menu, i));
        g_menu.push_back({id, text, id != 0 && (state & MF_GRAYED) != 0});  // separators: whatever the menu says
    }
    ++g_menus;
    ::EndMenu();
}

// Opens the field's context menu as a right click (or, `keyboard`, as
// Shift+F10) does and answers what was shown (nothing: no menu came up).
std::vector<MenuItem> OpenMenu(HWND field, bool keyboard = false) {
    g_menu.clear();
    g_menus = 0;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 30, &ReadMenu);
    RECT rc{};
    ::GetWindowRect(field, &rc);
    const LPARAM at = keyboard ? static_cast<LPARAM>(-1) : MAKELPARAM(rc.left + 5, rc.top + 5);
    ::SendMessageW(field, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(field), at);
    ::KillTimer(nullptr, timer);
    return g_menus ? g_menu : std::vector<MenuItem>{};
}

// ---- a modal dialog owned by the field ------------------------------------------------

// Acts on the dialog (class "#32770") owned by `g_owner` (the field's
// top-level window: a dialog is owned by that, not by a child) that shows up
// while a command runs; `g_act` answers true once it has ended it. A dialog
// still open after about four seconds is cancelled, so a failing test ends.
HWND g_owner = nullptr;
std::function<bool(HWND)> g_act;
int g_dialogs = 0;
int g_ticks = 0;

void CALLBACK DriveDialog(HWND, UINT, UINT_PTR, DWORD) {
    HWND dlg = nullptr;
    while ((dlg = ::FindWindowExW(nullptr, dlg, L"#32770", nullptr)) != nullptr) {
        if (::GetWindow(dlg, GW_OWNER) != g_owner || !::IsWindowVisible(dlg) || !::IsWindowEnabled(dlg)) continue;
        if (++g_ticks > 100) {
            ::PostMessageW(dlg, WM_COMMAND, IDCANCEL, 0);
            return;
        }
        ++g_dialogs;
        if (g_act && g_act(dlg)) g_act = nullptr;
        return;
    }
}

// Runs `command` on the field while `act` drives its dialog. A safety
// timer cancels a dialog the test failed to end.
bool RunWithDialog(XRichEditCtrl& field, UINT command, std::function<bool(HWND)> act) {
    g_owner = ::GetAncestor(field.m_hWnd, GA_ROOT);
    g_act = std::move(act);
    g_dialogs = 0;
    g_ticks = 0;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 40, &DriveDialog);
    const bool done = field.RunCommand(command);
    ::KillTimer(nullptr, timer);
    g_act = nullptr;
    return done;
}

void Click(HWND dlg, int id) { ::SendMessageW(dlg, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), 0); }

class RichTextTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        ASSERT_TRUE(field_.Create(RECT{10, 10, 400, 200}, host_, 100));
        ASSERT_TRUE(field_.SetRTF(kDoc));
    }
    CHARFORMAT2W Char() {
        CHARFORMAT2W cf{};
        cf.dwMask = static_cast<DWORD>(field_.GetSelectionCharFormat(cf));
        return cf;
    }
    PARAFORMAT2 Para() {
        PARAFORMAT2 pf{};
        pf.cbSize = sizeof(pf);
        pf.dwMask = static_cast<DWORD>(field_.SendMessage(EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&pf)));
        return pf;
    }
    void Command(UINT id) { field_.SendMessage(WM_COMMAND, id, 0); }
    XBaseRTFEdit field_;
};

// ---- context menu -----------------------------------------------------------------------

TEST_F(RichTextTest, ContextMenuListsEveryEntryGreyedBySelectionAndReadOnly) {
    const std::vector<std::pair<UINT, const wchar_t*>> layout = {
        {57643, L"Undo"}, {57635, L"Cut"}, {57634, L"Copy"}, {57637, L"Paste"}, {57632, L"Clear"},
        {57642, L"Select All"}, {0, L""}, {12340, L"Bold"}, {12341, L"Italic"}, {12342, L"Underlined"}, {0, L""},
        {12343, L"Align Left"}, {12344, L"Align Center"}, {12345, L"Align Right"}, {0, L""}, {12346, L"Bullets"},
        {0, L""}, {12347, L"Text Color..."}, {0, L""}, {12348, L"Font Name..."}, {12349, L"Font Size..."}};
    qvtest::SetClipboard(host_, "pasted");
    const struct {
        const char* what;
        long start, end;
        bool readOnly;
        std::vector<UINT> enabled;  // besides Undo and Paste, which follow the control
    } cases[] = {
        {"caret only", 3, 3, false, {57642, 12346, 12347, 12348, 12349}},
        {"selection",
         0,
         5,
         false,
         {57635, 57634, 57632, 57642, 12340, 12341, 12342, 12343, 12344, 12345, 12346, 12347, 12348, 12349}},
        {"read-only with selection", 0, 5, true, {57634, 57642}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        field_.SetReadOnly(c.readOnly);
        field_.SetSel(c.start, c.end);
        const bool canUndo = field_.CanUndo() && !c.readOnly;
        const bool canPaste = field_.SendMessage(EM_CANPASTE, 0) != 0 && !c.readOnly;
        std::vector<MenuItem> expected;
        for (const auto& [id, text] : layout) {
            bool on = std::find(c.enabled.begin(), c.enabled.end(), id) != c.enabled.end();
            if (id == 57643) on = canUndo;
            if (id == 57637) on = canPaste;
            expected.push_back({id, text, id != 0 && !on});
        }
        EXPECT_EQ(OpenMenu(field_), expected);
    }
    field_.SetReadOnly(false);
    field_.SetMenuDisabled(true);
    EXPECT_TRUE(OpenMenu(field_).empty()) << "a disabled menu shows nothing";
    field_.SetMenuDisabled(false);
    EXPECT_EQ(OpenMenu(field_).size(), layout.size());
    EXPECT_EQ(OpenMenu(field_, true).size(), layout.size()) << "from the keyboard: at the caret";
}

// ---- formatting --------------------------------------------------------------------------

TEST_F(RichTextTest, CharacterCommandsToggleTheSelectionsEffects) {
    const struct { UINT id; DWORD mask, effect; } cases[] = {
        {XRichEditCtrl::kIdBold, CFM_BOLD, CFE_BOLD},
        {XRichEditCtrl::kIdItalic, CFM_ITALIC, CFE_ITALIC},
        {XRichEditCtrl::kIdUnderlined, CFM_UNDERLINE, CFE_UNDERLINE},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.id);
        field_.SetSel(0, 5);  // "Hello"
        Command(c.id);
        CHARFORMAT2W cf = Char();
        EXPECT_EQ(std::tuple(cf.dwMask & c.mask, cf.dwEffects & c.effect), std::tuple(c.mask, c.effect));
        Command(c.id);
        cf = Char();
        EXPECT_EQ(std::tuple(cf.dwMask & c.mask, cf.dwEffects & c.effect), std::tuple(c.mask, 0ul));
    }
    // "Hello bold": half bold, so Bold makes all of it bold.
    field_.SetSel(0, 10);
    ASSERT_EQ(Char().dwMask & CFM_BOLD, 0ul) << "mixed";
    Command(XRichEditCtrl::kIdBold);
    EXPECT_EQ(Char().dwEffects & CFE_BOLD, static_cast<DWORD>(CFE_BOLD));
    EXPECT_EQ(Char().dwMask & CFM_BOLD, static_cast<DWORD>(CFM_BOLD));
}

TEST_F(RichTextTest, ParagraphCommandsAlignAndBullet) {
    const struct { UINT id; WORD alignment; } cases[] = {
        {XRichEditCtrl::kIdAlignCenter, PFA_CENTER},
        {XRichEditCtrl::kIdAlignRight, PFA_RIGHT},
        {XRichEditCtrl::kIdAlignLeft, PFA_LEFT},
    };
    for (const auto& c : cases) {
        field_.SetSel(0, 3);
        Command(c.id);
        EXPECT_EQ(Para().wAlignment, c.alignment) << c.id;
    }
    field_.SetSel(0, 3);
    Command(XRichEditCtrl::kIdBullets);
    EXPECT_EQ(Para().wNumbering, PFN_BULLET);
    Command(XRichEditCtrl::kIdBullets);
    EXPECT_EQ(Para().wNumbering, 0);
}

TEST_F(RichTextTest, ReadOnlyFieldRefusesEveryChangeButCopiesAndSelects) {
    XBaseReadOnlyRTFEdit ro;
    ASSERT_TRUE(ro.Create(RECT{10, 210, 400, 300}, host_, 101));
    EXPECT_TRUE(ro.GetStyle() & ES_READONLY);
    ASSERT_TRUE(ro.SetRTF(kDoc)) << "a read-only field still takes a document";
    EXPECT_FALSE(ro.SetReadOnly(false));
    EXPECT_TRUE(ro.IsReadOnly());
    ro.SetSel(0, 5);
    for (UINT id : {XRichEditCtrl::kIdBold, XRichEditCtrl::kIdBullets, XRichEditCtrl::kIdCut,
                    XRichEditCtrl::kIdClear, XRichEditCtrl::kIdFontSize})
        EXPECT_FALSE(ro.RunCommand(id)) << id;
    const std::wstring before = ro.GetRTF();
    EXPECT_EQ(ro.GetPlainText().substr(0, 16), L"Hello bold world");
    EXPECT_TRUE(ro.RunCommand(XRichEditCtrl::kIdCopy));
    EXPECT_EQ(qvtest::ClipboardText(host_), L"Hello");
    EXPECT_TRUE(ro.RunCommand(XRichEditCtrl::kIdSelectAll));
    long s = -1, e = -1;
    ro.GetSel(s, e);
    EXPECT_EQ(std::tuple(s, e), std::tuple(0L, ro.GetTextLength()));
    EXPECT_EQ(ro.GetRTF(), before);
}

TEST_F(RichTextTest, EditCommandsWorkOnTheControl) {
    field_.SetSel(0, 6);  // "Hello "
    Command(XRichEditCtrl::kIdCut);
    EXPECT_EQ(qvtest::ClipboardText(host_), L"Hello ");
    EXPECT_EQ(field_.GetWindowText().substr(0, 4), L"bold");
    field_.SetSel(4, 4);
    Command(XRichEditCtrl::kIdPaste);
    EXPECT_EQ(field_.GetWindowText().substr(0, 10), L"boldHello ");
    field_.SetSel(0, 4);
    Command(XRichEditCtrl::kIdClear);
    EXPECT_EQ(field_.GetWindowText().substr(0, 6), L"Hello ");
    ASSERT_TRUE(field_.CanUndo());
    Command(XRichEditCtrl::kIdUndo);
    EXPECT_EQ(field_.GetWindowText().substr(0, 10), L"boldHello ");
    Command(XRichEditCtrl::kIdSelectAll);
    long s = -1, e = -1;
    field_.GetSel(s, e);
    EXPECT_EQ(std::tuple(s, e), std::tuple(0L, field_.GetTextLength()));
}

// ---- rich text in and out ------------------------------------------------------------------

TEST_F(RichTextTest, RichTextGoesInAndComesOutAsTheSameText) {
    const std::wstring rtf = field_.GetRTF();
    EXPECT_EQ(rtf.substr(0, 5), L"{\\rtf");
    std::wstring text;
    ASSERT_TRUE(RTF2TXT(rtf, text));
    EXPECT_EQ(text.substr(0, 29), L"Hello bold world\r\nSecond line");
    field_.SetSel(6, 10);
    EXPECT_EQ(Char().dwEffects & CFE_BOLD, static_cast<DWORD>(CFE_BOLD)) << "the format came in too";

    // Not rich text, or no window: refused, and the content stays.
    for (const wchar_t* bad : {L"plain words", L"", L"{\\rt"}) {
        EXPECT_FALSE(field_.SetRTF(bad));
        EXPECT_EQ(field_.GetRTF(), rtf);
    }
    // Characters beyond ASCII written out in the document arrive as themselves.
    ASSERT_TRUE(field_.SetRTF(L"{\\rtf1\\ansi Gr\u00fc\u00dfe \u20ac}"));
    EXPECT_EQ(field_.GetWindowText().substr(0, 7), L"Gr\u00fc\u00dfe \u20ac");
    XBaseRTFEdit none;
    EXPECT_FALSE(none.SetRTF(kDoc));
    EXPECT_EQ(none.GetRTF(), L"");
}

TEST_F(RichTextTest, MultiMegabyteDocumentGoesInAndOutWhole) {
    std::wstring rtf = L"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}\\f0 ";
    std::wstring expected;
    const std::wstring filler(990, L'x');
    for (int i = 0; i < 2200; ++i) {
        const std::wstring line = L"L" + std::to_wstring(100000 + i) + filler;
        if (i % 2) rtf += L"{\\b " + line + L"}\\par\n";
        else rtf += line + L"\\par\n";
        expected += line + L"\r\n";
    }
    rtf += L"}";
    ASSERT_GT(rtf.size(), 2200000u);
    ASSERT_TRUE(field_.SetRTF(rtf));
    EXPECT_GE(field_.GetTextLength(), static_cast<long>(2200 * 997));
    const std::wstring out = field_.GetRTF();
    EXPECT_GT(out.size(), 2200000u);
    std::wstring text;
    ASSERT_TRUE(RTF2TXT(out, text));
    ASSERT_GE(text.size(), expected.size());
    EXPECT_TRUE(text.compare(0, expected.size(), expected) == 0) << "every line, in order";
    EXPECT_EQ(text.find_first_not_of(L"\r\n", expected.size()), std::wstring::npos);
}

// ---- dialogs -----------------------------------------------------------------------------------

TEST_F(RichTextTest, FontSizeDialogRefusesBadTextThenSetsTheSize) {
    field_.SetSel(0, 5);
    EXPECT_EQ(field_.GetFontSizeDlg(), nullptr) << "made on first use";
    int step = 0;
    std::wstring shown, caption;
    const bool done = RunWithDialog(field_, XRichEditCtrl::kIdFontSize, [&](HWND dlg) {
        HWND edit = ::GetDlgItem(dlg, IDC_QV_FONTSIZE_EDIT);
        if (step++ == 0) {
            shown = TextOf(edit);
            caption = TextOf(dlg);
            ::SetWindowTextW(edit, L"abc");
            Click(dlg, IDOK);  // refused: the dialog stays
            return false;
        }
        ::SetWindowTextW(edit, L"18.5");
        Click(dlg, IDOK);
        return true;
    });
    EXPECT_TRUE(done);
    EXPECT_EQ(std::tuple(shown, caption), std::tuple(L"10", L"Font size")) << "\\fs20 is 10 points";
    ASSERT_EQ(rec_->boxes.boxes.size(), 1u);
    EXPECT_EQ(rec_->boxes.boxes[0].caption, L"Invalid entry");
    EXPECT_EQ(Char().yHeight, 370);
    EXPECT_NE(field_.GetFontSizeDlg(), nullptr);

    // Cancel changes nothing.
    EXPECT_FALSE(RunWithDialog(field_, XRichEditCtrl::kIdFontSize, [](HWND dlg) {
        ::SetWindowTextW(::GetDlgItem(dlg, IDC_QV_FONTSIZE_EDIT), L"30");
        Click(dlg, IDCANCEL);
        return true;
    }));
    EXPECT_EQ(Char().yHeight, 370);
}

TEST_F(RichTextTest, FontNameDialogOffersTheInstalledFontsAndSetsOne) {
    field_.SetSel(0, 5);
    std::wstring shown, chosen;
    int count = 0;
    const bool done = RunWithDialog(field_, XRichEditCtrl::kIdFontName, [&](HWND dlg) {
        HWND combo = ::GetDlgItem(dlg, IDC_QV_FONTNAME_COMBO);
        shown = TextOf(combo);
        count = static_cast<int>(::SendMessageW(combo, CB_GETCOUNT, 0, 0));
        for (int i = 0; i < count && chosen.empty(); ++i) {
            wchar_t name[LF_FACESIZE] = {};
            ::SendMessageW(combo, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(name));
            if (shown != name) chosen = name;
        }
        ::SetWindowTextW(combo, chosen.c_str());
        Click(dlg, IDOK);
        return true;
    });
    EXPECT_TRUE(done);
    EXPECT_EQ(shown, L"Arial");
    EXPECT_EQ(static_cast<size_t>(count), XGetFontNameDlg::InstalledFontNames().size());
    ASSERT_FALSE(chosen.empty());
    EXPECT_EQ(Char().szFaceName, chosen);
}

TEST_F(RichTextTest, TextColorDialogColoursTheSelection) {
    field_.SetSel(0, 5);
    ASSERT_TRUE(field_.SetSelectionTextColor(RGB(255, 0, 0)));
    ASSERT_EQ(Char().crTextColor, RGB(255, 0, 0));
    // The dialog opens on colour 0; OK takes it.
    EXPECT_TRUE(RunWithDialog(field_, XRichEditCtrl::kIdTextColor, [](HWND dlg) {
        Click(dlg, IDOK);
        return true;
    }));
    EXPECT_EQ(g_dialogs, 1);
    const CHARFORMAT2W cf = Char();
    EXPECT_EQ(std::tuple(cf.crTextColor, cf.dwEffects & CFE_AUTOCOLOR), std::tuple(RGB(0, 0, 0), 0ul));
}

// ---- colours and creation ---------------------------------------------------------------------

TEST_F(RichTextTest, ColoursGoToTheDefaultFormatAndBackground) {
    auto defaultColour = [this] {
        CHARFORMAT2W cf{};
        field_.GetDefaultCharFormat(cf);
        return cf.crTextColor;
    };
    // EM_SETBKGNDCOLOR answers the colour it replaces.
    auto background = [this] {
        const COLORREF was = field_.SetBackgroundColor(false, RGB(1, 2, 3));
        field_.SetBackgroundColor(false, was);
        return was;
    };
    EXPECT_EQ(std::tuple(field_.GetTextColor(), defaultColour(), background()),
              std::tuple(RGB(8, 0, 0), RGB(8, 0, 0), ::GetSysColor(COLOR_WINDOW)));
    field_.SetTextColor(RGB(0, 0, 200));
    field_.SetBkColor(RGB(255, 255, 200));
    EXPECT_EQ(std::tuple(field_.GetTextColor(), defaultColour(), background()),
              std::tuple(RGB(0, 0, 200), RGB(0, 0, 200), RGB(255, 255, 200)));
    XBaseColor& scheme = field_;
    scheme.SetTextColor(RGB(1, 1, 1));
    EXPECT_EQ(defaultColour(), RGB(1, 1, 1));
}

TEST_F(RichTextTest, CreationFailsAndLogsWithoutAParentAndLoadsTheLibraryOnce) {
    XBaseRTFEdit orphan;
    EXPECT_FALSE(orphan.Create(RECT{0, 0, 10, 10}, nullptr, 1));
    const auto& log = qv::Services::DefaultLogBook().Entries();
    ASSERT_EQ(log.size(), 1u);
    EXPECT_EQ(qvtest::Describe(log.back()),
              L"Quorvel| XBaseRTFEdit::Create()|163|Error: void CXMsgBox::CreateRtfCtrl() in BOOL "
              L"XBaseRTFEdit::Create(...)|80004005");

    XRichEditCtrlEx a, b;
    EXPECT_EQ(a.Create(WS_CHILD | WS_VISIBLE, RECT{10, 210, 200, 240}, host_, 7), 1);
    const HMODULE first = XRichEditCtrlEx::RichEditLibrary();
    EXPECT_EQ(b.Create(WS_CHILD | WS_VISIBLE | ES_MULTILINE, RECT{10, 250, 200, 280}, host_, 8), 1);
    EXPECT_EQ(XRichEditCtrlEx::RichEditLibrary(), first);
    EXPECT_EQ(first, ::GetModuleHandleW(L"RICHED20.DLL"));
    wchar_t cls[32] = {};
    ::GetClassNameW(b.m_hWnd, cls, 32);
    EXPECT_EQ(std::tuple(std::wstring(cls), TextOf(b.m_hWnd), b.GetDlgCtrlID(), b.GetStyle() & ES_MULTILINE),
              std::tuple(std::wstring(L"RichEdit20W"), std::wstring(), 8, static_cast<DWORD>(ES_MULTILINE)));
    EXPECT_EQ(XRichEditCtrlEx().Create(WS_CHILD, RECT{}, nullptr, 9), 0);
    // The Ex control has the same menu.
    EXPECT_EQ(OpenMenu(b).size(), 21u);
}

}  // namespace
