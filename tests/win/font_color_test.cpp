// The font and colour chooser on a real host: its preview and button, the
// setters shown in the preview, and its dialog driven to completion: the
// lists chosen and typed into, the colour buttons, "Default", a refused OK,
// Cancel, and a chooser for a read-only field.
#include "quorvel/controls/font_color.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "support/host.h"

namespace {

using Step = std::function<bool()>;  // false: not yet, try again at the next tick

// A dialog whose colour dialog answers from a queue (nothing queued: the
// system's colour dialog itself), and that counts how often it was asked.
class ScriptedDlg : public XBaseColorControlDlg {
public:
    std::deque<std::optional<COLORREF>>* answers = nullptr;
    int* asked = nullptr;

protected:
    bool RunColorDialog(COLORREF& color) override {
        ++*asked;
        if (answers->empty()) return XBaseColorControlDlg::RunColorDialog(color);
        const std::optional<COLORREF> answer = answers->front();
        answers->pop_front();
        if (answer) color = *answer;
        return answer.has_value();
    }
};

class Chooser : public XBaseColorControlNew {
public:
    ScriptedDlg* dialog = nullptr;  // the dialog of the last ShowFontDlg
    std::deque<std::optional<COLORREF>> answers;
    int asked = 0;

protected:
    std::unique_ptr<XBaseColorControlDlg> MakeFontDlg() override {
        auto dlg = std::make_unique<ScriptedDlg>();
        dlg->answers = &answers;
        dlg->asked = &asked;
        dialog = dlg.get();
        return dlg;
    }
};

struct Script {
    std::vector<Step> steps;
    size_t next = 0;
    int idle = 0;
    Chooser* chooser = nullptr;
};
Script* g_script = nullptr;

// One step per tick while the dialog is up (its modal loop dispatches the
// ticks); a dialog still open well after the script ended is cancelled so
// no test can hang.
void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    Script& s = *g_script;
    HWND dlg = s.chooser->dialog ? s.chooser->dialog->m_hWnd : nullptr;
    if (!dlg || !::IsWindowVisible(dlg)) return;
    if (s.next < s.steps.size()) {
        if (s.steps[s.next]()) ++s.next;
    } else if (++s.idle > 40) {
        ::PostMessageW(dlg, WM_COMMAND, IDCANCEL, 0);
    }
}

HWND Item(Chooser& c, int id) { return ::GetDlgItem(c.dialog->m_hWnd, id); }

// The user picks list entry `position` of combo `id`.
Step Select(Chooser& c, int id, int position) {
    return [&c, id, position] {
        HWND combo = Item(c, id);
        ::SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(position), 0);
        ::SendMessageW(c.dialog->m_hWnd, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
        return true;
    };
}

// The user types `text` into the edit part of combo `id`.
Step Type(Chooser& c, int id, const wchar_t* text) {
    return [&c, id, text] {
        HWND combo = Item(c, id);
        ::SetWindowTextW(combo, text);
        ::SendMessageW(c.dialog->m_hWnd, WM_COMMAND, MAKEWPARAM(id, CBN_EDITCHANGE), reinterpret_cast<LPARAM>(combo));
        return true;
    };
}

// A click on button `id` of the dialog.
Step Press(Chooser& c, int id) {
    return [&c, id] {
        ::PostMessageW(c.dialog->m_hWnd, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(Item(c, id)));
        return true;
    };
}

Step Check(std::function<void()> check) {
    return [check] {
        check();
        return true;
    };
}

LOGFONTW FontOf(HFONT font) {
    LOGFONTW lf{};
    EXPECT_NE(font, nullptr);
    if (font) ::GetObjectW(font, sizeof lf, &lf);
    return lf;
}

std::wstring ComboText(HWND combo) { return qvtest::TextOf(combo); }

XBaseStatictextColor* Field(Chooser& c, int id) {
    return dynamic_cast<XBaseStatictextColor*>(qv::Window::FromHandle(Item(c, id)));
}

class FontColorTest : public qvtest::HostTest {
protected:
    void Make(Chooser& c, RECT rect = RECT{10, 10, 210, 34}) {
        ASSERT_TRUE(c.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, rect, host_, 400));
    }
    // Presses the chooser's "..." and plays `steps` in its dialog.
    void Open(Chooser& c, std::vector<Step> steps) {
        Script script{std::move(steps), 0, 0, &c};
        g_script = &script;
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 30, &Tick);
        ::SendMessageW(c.GetButton()->m_hWnd, BM_CLICK, 0, 0);
        ::KillTimer(nullptr, timer);
        g_script = nullptr;
        EXPECT_EQ(script.next, script.steps.size()) << "the dialog closed before the script ended";
        EXPECT_NE(c.dialog, nullptr);
        c.dialog = nullptr;  // it went with ShowFontDlg
    }
};

TEST_F(FontColorTest, ANewChooserShowsTestInArialTwelveBlackOnWhite) {
    Chooser c;
    EXPECT_EQ(c.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, RECT{0, 0, 100, 20}, nullptr, 1), FALSE);
    Make(c);
    EXPECT_EQ(c.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, RECT{0, 0, 100, 20}, host_, 401), FALSE);
    EXPECT_EQ(c.GetFontName(), L"Arial");
    EXPECT_EQ(c.GetFontSize(), 12);
    EXPECT_FALSE(c.IsFontBold() || c.IsFontItalic() || c.IsFontUnderlined() || c.IsControlForReadOnly());
    EXPECT_EQ(c.GetTextColorHTML(), L"#000000");
    EXPECT_EQ(c.GetBGColorHTML(), L"#ffffff");

    EXPECT_EQ(qvtest::TextOf(c.GetPreview()->m_hWnd), L"Test");
    EXPECT_TRUE(c.GetPreview()->IsWindowVisible());
    EXPECT_EQ(c.GetPreview()->Scheme().BkColor(), 0xFFFFFFu);
    const LOGFONTW lf = FontOf(c.GetPreviewFont());
    EXPECT_EQ(lf.lfHeight, 12);
    EXPECT_EQ(lf.lfWeight, 400);
    EXPECT_EQ(std::wstring(lf.lfFaceName), L"Arial");
    EXPECT_EQ(c.GetPreview()->GetFont(), c.GetPreviewFont());

    EXPECT_EQ(qvtest::TextOf(c.GetButton()->m_hWnd), L"...");
    EXPECT_EQ(c.GetButton()->GetStyle() & 0xFFFFFFFFu, 0x50004000u);
    const auto rect = [&](HWND child) {
        const RECT r = qvtest::RectIn(c.m_hWnd, child);
        return std::vector<long>{r.left, r.top, r.right, r.bottom};
    };
    EXPECT_EQ(rect(c.GetPreview()->m_hWnd), (std::vector<long>{2, 2, 160, 22}));
    EXPECT_EQ(rect(c.GetButton()->m_hWnd), (std::vector<long>{162, 2, 198, 22}));
    c.MoveWindow(RECT{10, 10, 310, 50});
    EXPECT_EQ(rect(c.GetPreview()->m_hWnd), (std::vector<long>{2, 2, 260, 38}));
    EXPECT_EQ(rect(c.GetButton()->m_hWnd), (std::vector<long>{262, 2, 298, 38}));
}

TEST_F(FontColorTest, SettersShowInThePreviewAndBadHtmlTextsChangeNothing) {
    Chooser c;
    Make(c);
    c.SetFontName(L"Courier New");
    c.SetFontSize(20);
    c.SetFontBold(true);
    c.SetFontUnderlined(true);
    c.SetTextColor(RGB(1, 2, 255));
    EXPECT_TRUE(c.SetBGColorHTML(L"#FFFF00"));
    LOGFONTW lf = FontOf(c.GetPreviewFont());
    EXPECT_EQ(std::wstring(lf.lfFaceName), L"Courier New");
    EXPECT_EQ(lf.lfHeight, 20);
    EXPECT_EQ(lf.lfWeight, 700);
    EXPECT_FALSE(lf.lfItalic);
    EXPECT_TRUE(lf.lfUnderline);
    EXPECT_EQ(c.GetTextColorHTML(), L"#0102ff");
    EXPECT_EQ(c.GetBGColor(), RGB(255, 255, 0));
    EXPECT_EQ(c.GetPreview()->Scheme().TextColor(), RGB(1, 2, 255));
    EXPECT_EQ(c.GetPreview()->Scheme().BkColor(), RGB(255, 255, 0));

    for (const wchar_t* bad : {L"", L"#12345", L"red", L"#12345g"}) {
        EXPECT_FALSE(c.SetTextColorHTML(bad)) << bad;
        EXPECT_FALSE(c.SetBGColorHTML(bad)) << bad;
    }
    EXPECT_FALSE(c.SetTextColorHTML(nullptr));
    EXPECT_EQ(c.GetTextColorHTML(), L"#0102ff");
    EXPECT_EQ(c.GetBGColorHTML(), L"#ffff00");

    // A read-only chooser keeps a white preview whatever background is stored.
    c.SetControlForReadOnly(true);
    c.SetBGColor(RGB(0, 128, 0));
    EXPECT_EQ(c.GetBGColor(), RGB(0, 128, 0));
    EXPECT_EQ(c.GetPreview()->Scheme().BkColor(), 0xFFFFFFu);
    EXPECT_EQ(c.GetPreview()->Scheme().TextColor(), RGB(1, 2, 255));
}

TEST_F(FontColorTest, TheDialogDrivenToCompletion) {
    Chooser c;
    Make(c);
    c.SetFontSize(16);
    c.SetFontItalic(true);
    c.answers = {RGB(1, 2, 255), RGB(255, 255, 0)};
    std::wstring chosenFace;
    Open(c, {
        Check([&] {
            EXPECT_EQ(qvtest::TextOf(c.dialog->m_hWnd), L"Fonts and colors");
            EXPECT_GT(::SendMessageW(Item(c, XBaseColorControlDlg::kFaceList), CB_GETCOUNT, 0, 0), 0);
            EXPECT_EQ(ComboText(Item(c, XBaseColorControlDlg::kFaceList)), L"Arial");
            EXPECT_EQ(ComboText(Item(c, XBaseColorControlDlg::kHeightList)), L"16");
            EXPECT_EQ(::SendMessageW(Item(c, XBaseColorControlDlg::kHeightList), CB_GETCOUNT, 0, 0), 12);
            // Italic is index 1, shown at list position 2.
            EXPECT_EQ(::SendMessageW(Item(c, XBaseColorControlDlg::kStyleList), CB_GETCURSEL, 0, 0), 2);
            EXPECT_EQ(ComboText(Item(c, XBaseColorControlDlg::kStyleList)), L"Italic");
            // The framed statics gave way to the swatches and the preview.
            EXPECT_FALSE(::IsWindowVisible(Item(c, XBaseColorControlDlg::kPreviewFrame)));
            XBaseStatictextColor* preview = Field(c, XBaseColorControlDlg::kPreview);
            ASSERT_NE(preview, nullptr);
            EXPECT_TRUE(preview->IsWindowVisible());
            EXPECT_EQ(qvtest::TextOf(preview->m_hWnd), L"Preview of the selected fontattributes");
            EXPECT_TRUE(preview->GetExStyle() & WS_EX_CLIENTEDGE);
            EXPECT_EQ(qvtest::RectIn(c.dialog->m_hWnd, preview->m_hWnd).left,
                      qvtest::RectIn(c.dialog->m_hWnd, Item(c, XBaseColorControlDlg::kPreviewFrame)).left);
            EXPECT_EQ(Field(c, XBaseColorControlDlg::kTextSwatch)->Scheme().BkColor(), 0u);
            EXPECT_EQ(Field(c, XBaseColorControlDlg::kBackSwatch)->Scheme().BkColor(), 0xFFFFFFu);
            const LOGFONTW lf = FontOf(c.dialog->GetPreviewFont());
            EXPECT_EQ(lf.lfHeight, 16);
            EXPECT_TRUE(lf.lfItalic);
        }),
        Select(c, XBaseColorControlDlg::kFaceList, 0),
        Check([&] { chosenFace = ComboText(Item(c, XBaseColorControlDlg::kFaceList)); }),
        Type(c, XBaseColorControlDlg::kHeightList, L"20"),
        Select(c, XBaseColorControlDlg::kStyleList, 1),  // "Bold"
        Press(c, XBaseColorControlDlg::kTextColorButton),
        Press(c, XBaseColorControlDlg::kBackColorButton),
        Check([&] {
            const LOGFONTW lf = FontOf(c.dialog->GetPreviewFont());
            EXPECT_EQ(lf.lfHeight, 20);
            EXPECT_EQ(lf.lfWeight, 700);
            EXPECT_FALSE(lf.lfItalic);
            EXPECT_EQ(std::wstring(lf.lfFaceName), chosenFace);
            EXPECT_EQ(Field(c, XBaseColorControlDlg::kTextSwatch)->Scheme().BkColor(), RGB(1, 2, 255));
            EXPECT_EQ(Field(c, XBaseColorControlDlg::kBackSwatch)->Scheme().BkColor(), RGB(255, 255, 0));
            XBaseStatictextColor* preview = Field(c, XBaseColorControlDlg::kPreview);
            EXPECT_EQ(preview->Scheme().TextColor(), RGB(1, 2, 255));
            EXPECT_EQ(preview->Scheme().BkColor(), RGB(255, 255, 0));
        }),
        Press(c, IDOK),
    });
    EXPECT_EQ(c.asked, 2);
    EXPECT_FALSE(chosenFace.empty());
    EXPECT_EQ(c.GetFontName(), chosenFace);
    EXPECT_EQ(c.GetFontSize(), 20);
    EXPECT_TRUE(c.IsFontBold());
    EXPECT_FALSE(c.IsFontItalic() || c.IsFontUnderlined());
    EXPECT_EQ(c.GetTextColorHTML(), L"#0102ff");
    EXPECT_EQ(c.GetBGColorHTML(), L"#ffff00");
    const LOGFONTW lf = FontOf(c.GetPreviewFont());
    EXPECT_EQ(lf.lfHeight, 20);
    EXPECT_EQ(lf.lfWeight, 700);
    EXPECT_EQ(c.GetPreview()->Scheme().BkColor(), RGB(255, 255, 0));
}

TEST_F(FontColorTest, StyleListPositionsAndFlagsBothWays) {
    const struct { int position; bool bold, italic, underlined; } cases[] = {
        {0, false, false, false}, {1, true, false, false}, {2, false, true, false}, {3, false, false, true},
        {4, true, true, false},   {5, true, false, true},  {6, true, true, true},   {7, false, true, true},
    };
    Chooser c;
    Make(c);
    for (const auto& k : cases) {
        SCOPED_TRACE(k.position);
        // The dialog shows the chooser's flags at the right position ...
        c.SetFontBold(k.bold);
        c.SetFontItalic(k.italic);
        c.SetFontUnderlined(k.underlined);
        LRESULT shown = -1;
        Open(c, {Check([&] { shown = ::SendMessageW(Item(c, XBaseColorControlDlg::kStyleList), CB_GETCURSEL, 0, 0); }),
                 Press(c, IDCANCEL)});
        EXPECT_EQ(shown, k.position);
        // ... and the position chosen there gives the flags back.
        c.SetFontBold(!k.bold);
        c.SetFontItalic(!k.italic);
        c.SetFontUnderlined(!k.underlined);
        Open(c, {Select(c, XBaseColorControlDlg::kStyleList, k.position), Press(c, IDOK)});
        EXPECT_EQ(c.IsFontBold(), k.bold);
        EXPECT_EQ(c.IsFontItalic(), k.italic);
        EXPECT_EQ(c.IsFontUnderlined(), k.underlined);
    }
}

TEST_F(FontColorTest, CancelAndARefusedHeightKeepEveryValue) {
    Chooser c;
    Make(c);
    c.SetTextColor(RGB(10, 20, 30));
    c.answers = {RGB(200, 0, 0)};
    Open(c, {Type(c, XBaseColorControlDlg::kFaceList, L"Courier New"), Type(c, XBaseColorControlDlg::kHeightList, L"30"),
             Select(c, XBaseColorControlDlg::kStyleList, 6), Press(c, XBaseColorControlDlg::kTextColorButton),
             Press(c, IDCANCEL)});
    EXPECT_EQ(c.GetFontName(), L"Arial");
    EXPECT_EQ(c.GetFontSize(), 12);
    EXPECT_FALSE(c.IsFontBold() || c.IsFontItalic() || c.IsFontUnderlined());
    EXPECT_EQ(c.GetTextColor(), RGB(10, 20, 30));

    // The dialog run by itself gives back what it was given after a cancel.
    ScriptedDlg dlg;
    dlg.answers = &c.answers;
    dlg.asked = &c.asked;
    dlg.SetFontName(L"Tahoma");
    dlg.SetFontSize(18);
    dlg.SetStyleIndex(5);
    dlg.SetTextColor(RGB(1, 1, 1));
    dlg.SetBGColor(RGB(2, 2, 2));
    c.answers = {RGB(200, 0, 0), RGB(0, 200, 0)};
    Script script{{Type(c, XBaseColorControlDlg::kFaceList, L"Courier New"), Type(c, XBaseColorControlDlg::kHeightList, L"30"),
                   Select(c, XBaseColorControlDlg::kStyleList, 0), Press(c, XBaseColorControlDlg::kTextColorButton),
                   Press(c, XBaseColorControlDlg::kBackColorButton),
                   Check([&] { EXPECT_EQ(dlg.GetFontSize(), 30); }),  // the preview follows
                   [&] { return ::PostMessageW(dlg.m_hWnd, WM_KEYDOWN, VK_ESCAPE, 0) != FALSE; }},
                  0, 0, &c};
    c.dialog = &dlg;
    g_script = &script;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 30, &Tick);
    EXPECT_EQ(dlg.DoModal(host_), IDCANCEL);
    ::KillTimer(nullptr, timer);
    g_script = nullptr;
    c.dialog = nullptr;
    EXPECT_EQ(script.next, script.steps.size());
    EXPECT_EQ(dlg.GetFontName(), L"Tahoma");
    EXPECT_EQ(dlg.GetFontSize(), 18);
    EXPECT_EQ(dlg.GetStyleIndex(), 5);
    EXPECT_EQ(dlg.GetTextColor(), RGB(1, 1, 1));
    EXPECT_EQ(dlg.GetBGColor(), RGB(2, 2, 2));

    // A height that is not a whole number is refused with a warning and the
    // dialog stays open; a good one is then taken.
    const size_t boxes = rec_->boxes.boxes.size();
    Open(c, {Type(c, XBaseColorControlDlg::kHeightList, L"abc"), Press(c, IDOK),
             Check([&] {
                 ASSERT_EQ(rec_->boxes.boxes.size(), boxes + 1);
                 EXPECT_EQ(rec_->boxes.boxes.back().caption, L"Invalid entry");
                 EXPECT_EQ(::GetFocus(), ::GetDlgItem(Item(c, XBaseColorControlDlg::kHeightList), 1001));
             }),
             Type(c, XBaseColorControlDlg::kFaceList, L"  "), Type(c, XBaseColorControlDlg::kHeightList, L"14"),
             Press(c, IDOK), Check([&] { EXPECT_EQ(rec_->boxes.boxes.size(), boxes + 2); }),
             Type(c, XBaseColorControlDlg::kFaceList, L"Courier New"), Press(c, IDOK)});
    EXPECT_EQ(c.GetFontSize(), 14);
    EXPECT_EQ(c.GetFontName(), L"Courier New");
}

TEST_F(FontColorTest, DefaultAndTheReadOnlyRule) {
    const struct { bool readOnly; COLORREF background; } cases[] = {{false, 0xFFFFFF}, {true, RGB(0, 128, 0)}};
    for (const auto& k : cases) {
        SCOPED_TRACE(k.readOnly);
        Chooser c;
        Make(c);
        c.SetControlForReadOnly(k.readOnly);
        c.SetFontName(L"Courier New");
        c.SetFontSize(24);
        c.SetFontBold(true);
        c.SetTextColor(RGB(0, 0, 255));
        c.SetBGColor(RGB(0, 128, 0));
        c.answers = {RGB(255, 0, 0)};
        Open(c, {
            Check([&] {
                XBaseStatictextColor* swatch = Field(c, XBaseColorControlDlg::kBackSwatch);
                EXPECT_EQ(swatch->IsWindowEnabled(), !k.readOnly);
                EXPECT_EQ(::IsWindowEnabled(Item(c, XBaseColorControlDlg::kBackColorButton)) != FALSE, !k.readOnly);
                EXPECT_EQ(::IsWindowEnabled(Item(c, XBaseColorControlDlg::kBackColorLabel)) != FALSE, !k.readOnly);
                EXPECT_EQ(swatch->Scheme().BkColor(), k.readOnly ? 0xC0C0C0u : RGB(0, 128, 0));
                EXPECT_EQ(Field(c, XBaseColorControlDlg::kPreview)->Scheme().BkColor(),
                          k.readOnly ? 0xFFFFFFu : RGB(0, 128, 0));
            }),
            // A read-only chooser does not even ask for a background.
            Press(c, XBaseColorControlDlg::kBackColorButton),
            Press(c, XBaseColorControlDlg::kDefaultButton),
            Check([&] {
                EXPECT_EQ(ComboText(Item(c, XBaseColorControlDlg::kFaceList)), L"Arial");
                EXPECT_EQ(ComboText(Item(c, XBaseColorControlDlg::kHeightList)), L"12");
                EXPECT_EQ(ComboText(Item(c, XBaseColorControlDlg::kStyleList)), L"Normal");
                EXPECT_EQ(Field(c, XBaseColorControlDlg::kTextSwatch)->Scheme().BkColor(), 0u);
            }),
            Press(c, IDOK),
        });
        EXPECT_EQ(c.asked, k.readOnly ? 0 : 1);
        EXPECT_EQ(c.GetFontName(), L"Arial");
        EXPECT_EQ(c.GetFontSize(), 12);
        EXPECT_FALSE(c.IsFontBold());
        EXPECT_EQ(c.GetTextColor(), 0u);
        EXPECT_EQ(c.GetBGColor(), k.background);
        EXPECT_EQ(c.GetPreview()->Scheme().BkColor(), k.readOnly ? 0xFFFFFFu : k.background);
    }
}

TEST_F(FontColorTest, TheSystemColourDialogAnswersTheColourButtons) {
    Chooser c;
    Make(c);
    // Nothing queued: the "..." opens the system's colour dialog, which is
    // cancelled here; the text colour stays.
    HWND system = nullptr;
    Open(c, {Press(c, XBaseColorControlDlg::kTextColorButton),
             [&] {
                 system = nullptr;
                 for (HWND w : qvtest::Windows(L"#32770"))
                     if (::GetWindow(w, GW_OWNER) == c.dialog->m_hWnd && ::IsWindowVisible(w)) system = w;
                 if (!system) return false;
                 ::PostMessageW(system, WM_COMMAND, IDCANCEL, 0);
                 return true;
             },
             [&] { return !::IsWindow(system); }, Press(c, IDOK)});
    EXPECT_NE(system, nullptr);
    EXPECT_EQ(c.asked, 1);
    EXPECT_EQ(c.GetTextColor(), 0u);

    // Red, green and blue typed into the system dialog's fields and OK.
    Open(c, {Press(c, XBaseColorControlDlg::kBackColorButton),
             [&] {
                 system = nullptr;
                 for (HWND w : qvtest::Windows(L"#32770"))
                     if (::GetWindow(w, GW_OWNER) == c.dialog->m_hWnd && ::IsWindowVisible(w)) system = w;
                 if (!system) return false;
                 const struct { int id; const wchar_t* value; } fields[] = {{706, L"1"}, {707, L"2"}, {708, L"255"}};
                 for (const auto& f : fields) {
                     HWND edit = ::GetDlgItem(system, f.id);
                     ::SetWindowTextW(edit, f.value);
                     ::SendMessageW(system, WM_COMMAND, MAKEWPARAM(f.id, EN_UPDATE), reinterpret_cast<LPARAM>(edit));
                 }
                 ::PostMessageW(system, WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(::GetDlgItem(system, IDOK)));
                 return true;
             },
             [&] { return !::IsWindow(system); },
             Check([&] {
                 EXPECT_EQ(Field(c, XBaseColorControlDlg::kBackSwatch)->Scheme().BkColor(), RGB(1, 2, 255));
             }),
             Press(c, IDOK)});
    EXPECT_EQ(c.asked, 2);
    EXPECT_EQ(c.GetBGColorHTML(), L"#0102ff");
}

}  // namespace
