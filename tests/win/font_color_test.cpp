// The font and colour chooser on a real host: its preview following the
// values, and its dialog driven to completion: lists chosen and typed into,
// the colour buttons (also the system's colour dialog), the style list both
// ways, "Default", a refused OK, Cancel and the read-only rule.
#include "quorvel/controls/font_color.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "support/host.h"

namespace {

using Step = std::function<bool()>;  // false: not yet, again at the next tick
using D = XBaseColorControlDlg;

// A dialog whose colour dialog answers from a queue (an empty queue: the
// system's colour dialog itself), counting how often it was asked.
class ScriptedDlg : public XBaseColorControlDlg {
public:
    std::deque<COLORREF>* answers = nullptr;
    int* asked = nullptr;

protected:
    bool RunColorDialog(COLORREF& color) override {
        ++*asked;
        if (answers->empty()) return XBaseColorControlDlg::RunColorDialog(color);
        color = answers->front();
        answers->pop_front();
        return true;
    }
};

class Chooser : public XBaseColorControlNew {
public:
    ScriptedDlg* dialog = nullptr;  // while ShowFontDlg runs
    std::deque<COLORREF> answers;
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
    Chooser* chooser;
    size_t next = 0;
    int idle = 0;
};
Script* g_script = nullptr;

// One step per tick while the dialog is up (its modal loop dispatches the
// ticks); a dialog still open well after its script is cancelled, so no
// test can hang.
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
std::wstring TextOf(Chooser& c, int id) { return qvtest::TextOf(Item(c, id)); }
XBaseStatictextColor* Field(Chooser& c, int id) {
    return dynamic_cast<XBaseStatictextColor*>(qv::Window::FromHandle(Item(c, id)));
}

// The user picks entry `position` of combo `id`, or types `text` into it.
Step Select(Chooser& c, int id, int position) {
    return [&c, id, position] {
        ::SendMessageW(Item(c, id), CB_SETCURSEL, static_cast<WPARAM>(position), 0);
        ::SendMessageW(c.dialog->m_hWnd, WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), LPARAM(Item(c, id)));
        return true;
    };
}
Step Type(Chooser& c, int id, const wchar_t* text) {
    return [&c, id, text] {
        ::SetWindowTextW(Item(c, id), text);
        ::SendMessageW(c.dialog->m_hWnd, WM_COMMAND, MAKEWPARAM(id, CBN_EDITCHANGE), LPARAM(Item(c, id)));
        return true;
    };
}
Step Press(Chooser& c, int id) {
    return [&c, id] { return ::PostMessageW(c.dialog->m_hWnd, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), LPARAM(Item(c, id))) != FALSE; };
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

class FontColorTest : public qvtest::HostTest {
protected:
    void Make(Chooser& c) { ASSERT_TRUE(c.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, RECT{10, 10, 210, 34}, host_, 400)); }
    // Runs `start` (which opens the dialog) while `steps` play in the dialog.
    void Play(Chooser& c, std::vector<Step> steps, const std::function<void()>& start) {
        Script script{std::move(steps), &c};
        g_script = &script;
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 30, &Tick);
        start();
        ::KillTimer(nullptr, timer);
        g_script = nullptr;
        c.dialog = nullptr;
        EXPECT_EQ(script.next, script.steps.size()) << "the dialog closed before the script ended";
    }
    // Presses the chooser's "..." and plays `steps` in its dialog.
    void Open(Chooser& c, std::vector<Step> steps) {
        Play(c, std::move(steps), [&] { ::SendMessageW(c.GetButton()->m_hWnd, BM_CLICK, 0, 0); });
    }
};

TEST_F(FontColorTest, ThePreviewFollowsTheValues) {
    Chooser c;
    EXPECT_EQ(c.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, RECT{0, 0, 100, 20}, nullptr, 1), FALSE);
    Make(c);
    EXPECT_EQ(c.GetFontName(), L"Arial");
    EXPECT_EQ(c.GetFontSize(), 12);
    EXPECT_FALSE(c.IsFontBold() || c.IsFontItalic() || c.IsFontUnderlined() || c.IsControlForReadOnly());
    EXPECT_EQ(c.GetTextColorHTML() + c.GetBGColorHTML(), L"#000000#ffffff");
    EXPECT_EQ(qvtest::TextOf(c.GetPreview()->m_hWnd), L"Test");
    EXPECT_EQ(qvtest::TextOf(c.GetButton()->m_hWnd), L"...");
    EXPECT_EQ(c.GetButton()->GetStyle(), 0x50004000u);
    EXPECT_EQ(qvtest::RectIn(c.m_hWnd, c.GetButton()->m_hWnd).left, 162);
    c.MoveWindow(RECT{10, 10, 310, 50});
    const RECT preview = qvtest::RectIn(c.m_hWnd, c.GetPreview()->m_hWnd);
    EXPECT_EQ(std::vector<long>({preview.left, preview.top, preview.right, preview.bottom}), std::vector<long>({2, 2, 260, 38}));
    EXPECT_EQ(FontOf(c.GetPreviewFont()).lfWeight, 400);

    c.SetFontName(L"Courier New");
    c.SetFontSize(20);
    c.SetFontBold(true);
    c.SetFontUnderlined(true);
    c.SetTextColor(RGB(1, 2, 255));
    EXPECT_TRUE(c.SetBGColorHTML(L"#FFFF00"));
    EXPECT_FALSE(c.SetBGColorHTML(L"#12345g"));
    EXPECT_FALSE(c.SetTextColorHTML(nullptr));
    const LOGFONTW lf = FontOf(c.GetPreviewFont());
    EXPECT_EQ(std::wstring(lf.lfFaceName), L"Courier New");
    EXPECT_EQ(lf.lfHeight, 20);
    EXPECT_EQ(lf.lfWeight, 700);
    EXPECT_TRUE(lf.lfUnderline && !lf.lfItalic);
    EXPECT_EQ(c.GetPreview()->GetFont(), c.GetPreviewFont());
    EXPECT_EQ(c.GetTextColorHTML() + c.GetBGColorHTML(), L"#0102ff#ffff00");
    EXPECT_EQ(c.GetPreview()->Scheme().TextColor(), RGB(1, 2, 255));
    EXPECT_EQ(c.GetPreview()->Scheme().BkColor(), RGB(255, 255, 0));

    // A read-only chooser keeps a white preview whatever background is stored.
    c.SetControlForReadOnly(true);
    c.SetBGColor(RGB(0, 128, 0));
    EXPECT_EQ(c.GetBGColor(), RGB(0, 128, 0));
    EXPECT_EQ(c.GetPreview()->Scheme().BkColor(), 0xFFFFFFu);
}

TEST_F(FontColorTest, TheDialogDrivenToCompletion) {
    Chooser c;
    Make(c);
    c.SetFontSize(16);
    c.SetFontItalic(true);
    c.answers = {RGB(1, 2, 255), RGB(255, 255, 0)};
    std::wstring face;
    Open(c, {
        Check([&] {
            EXPECT_EQ(qvtest::TextOf(c.dialog->m_hWnd), L"Fonts and colors");
            EXPECT_GT(::SendMessageW(Item(c, D::kFaceList), CB_GETCOUNT, 0, 0), 0);
            EXPECT_EQ(TextOf(c, D::kFaceList) + L"|" + TextOf(c, D::kHeightList) + L"|" + TextOf(c, D::kStyleList),
                      L"Arial|16|Italic");
            EXPECT_EQ(TextOf(c, D::kPreview), L"Preview of the selected fontattributes");
            EXPECT_TRUE(::GetWindowLongPtrW(Item(c, D::kPreview), GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
            EXPECT_FALSE(::IsWindowVisible(Item(c, D::kPreviewFrame)));
            EXPECT_EQ(Field(c, D::kBackSwatch)->Scheme().BkColor(), 0xFFFFFFu);
            EXPECT_TRUE(FontOf(c.dialog->GetPreviewFont()).lfItalic);
        }),
        Select(c, D::kFaceList, 0),
        Check([&] { face = TextOf(c, D::kFaceList); }),
        Type(c, D::kHeightList, L"20"),
        Select(c, D::kStyleList, 1),  // "Bold"
        Press(c, D::kTextColorButton),
        Press(c, D::kBackColorButton),
        Check([&] {
            const LOGFONTW lf = FontOf(c.dialog->GetPreviewFont());
            EXPECT_EQ(lf.lfHeight, 20);
            EXPECT_EQ(lf.lfWeight, 700);
            EXPECT_EQ(std::wstring(lf.lfFaceName), face);
            EXPECT_EQ(Field(c, D::kTextSwatch)->Scheme().BkColor(), RGB(1, 2, 255));
            EXPECT_EQ(Field(c, D::kPreview)->Scheme().BkColor(), RGB(255, 255, 0));
        }),
        Press(c, IDOK),
    });
    EXPECT_EQ(c.asked, 2);
    EXPECT_FALSE(face.empty());
    EXPECT_EQ(c.GetFontName(), face);
    EXPECT_EQ(c.GetFontSize(), 20);
    EXPECT_TRUE(c.IsFontBold() && !c.IsFontItalic() && !c.IsFontUnderlined());
    EXPECT_EQ(c.GetTextColorHTML() + c.GetBGColorHTML(), L"#0102ff#ffff00");
    EXPECT_EQ(FontOf(c.GetPreviewFont()).lfHeight, 20);
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
        c.SetFontBold(k.bold);
        c.SetFontItalic(k.italic);
        c.SetFontUnderlined(k.underlined);
        LRESULT shown = -1;
        Open(c, {Check([&] { shown = ::SendMessageW(Item(c, D::kStyleList), CB_GETCURSEL, 0, 0); }), Press(c, IDCANCEL)});
        EXPECT_EQ(shown, k.position);
        c.SetFontBold(!k.bold);
        c.SetFontItalic(!k.italic);
        c.SetFontUnderlined(!k.underlined);
        Open(c, {Select(c, D::kStyleList, k.position), Press(c, IDOK)});
        EXPECT_EQ(c.IsFontBold(), k.bold);
        EXPECT_EQ(c.IsFontItalic(), k.italic);
        EXPECT_EQ(c.IsFontUnderlined(), k.underlined);
    }
}

TEST_F(FontColorTest, CancelAndARefusedOkKeepEveryValue) {
    Chooser c;
    Make(c);
    // The dialog by itself: Esc gives back what it was given.
    ScriptedDlg dlg;
    dlg.answers = &c.answers;
    dlg.asked = &c.asked;
    dlg.SetFontName(L"Tahoma");
    dlg.SetFontSize(18);
    dlg.SetStyleIndex(5);
    dlg.SetBGColor(RGB(2, 2, 2));
    c.answers = {RGB(200, 0, 0)};
    c.dialog = &dlg;
    Play(c,
         {Type(c, D::kFaceList, L"Courier New"), Type(c, D::kHeightList, L"30"), Select(c, D::kStyleList, 0),
          Press(c, D::kBackColorButton), Check([&] { EXPECT_EQ(dlg.GetFontSize(), 30); }),
          [&] { return ::PostMessageW(dlg.m_hWnd, WM_KEYDOWN, VK_ESCAPE, 0) != FALSE; }},
         [&] { EXPECT_EQ(dlg.DoModal(host_), IDCANCEL); });
    EXPECT_EQ(dlg.GetFontName() + L"|" + std::to_wstring(dlg.GetFontSize()) + L"|" + std::to_wstring(dlg.GetStyleIndex()),
              L"Tahoma|18|5");
    EXPECT_EQ(dlg.GetBGColor(), RGB(2, 2, 2));

    // A height that is not a whole number, or a blank face, is refused with
    // a warning and the dialog stays open; good values are then taken.
    const size_t boxes = rec_->boxes.boxes.size();
    Open(c, {Type(c, D::kHeightList, L"abc"), Press(c, IDOK),
             Check([&] {
                 ASSERT_EQ(rec_->boxes.boxes.size(), boxes + 1);
                 EXPECT_EQ(rec_->boxes.boxes.back().caption, L"Invalid entry");
                 EXPECT_EQ(::GetParent(::GetFocus()), Item(c, D::kHeightList));
             }),
             Type(c, D::kFaceList, L"  "), Type(c, D::kHeightList, L"14"), Press(c, IDOK),
             Check([&] { EXPECT_EQ(rec_->boxes.boxes.size(), boxes + 2); }),
             Type(c, D::kFaceList, L"Courier New"), Press(c, IDOK)});
    EXPECT_EQ(c.GetFontSize(), 14);
    EXPECT_EQ(c.GetFontName(), L"Courier New");
}

TEST_F(FontColorTest, DefaultAndTheReadOnlyRule) {
    for (const bool readOnly : {false, true}) {
        SCOPED_TRACE(readOnly);
        Chooser c;
        Make(c);
        c.SetControlForReadOnly(readOnly);
        c.SetFontSize(24);
        c.SetFontBold(true);
        c.SetTextColor(RGB(0, 0, 255));
        c.SetBGColor(RGB(0, 128, 0));
        c.answers = {RGB(255, 0, 0)};
        Open(c, {
            Check([&] {
                EXPECT_EQ(Field(c, D::kBackSwatch)->IsWindowEnabled(), !readOnly);
                EXPECT_EQ(::IsWindowEnabled(Item(c, D::kBackColorButton)) != FALSE, !readOnly);
                EXPECT_EQ(::IsWindowEnabled(Item(c, D::kBackColorLabel)) != FALSE, !readOnly);
                EXPECT_EQ(Field(c, D::kBackSwatch)->Scheme().BkColor(), readOnly ? 0xC0C0C0u : RGB(0, 128, 0));
                EXPECT_EQ(Field(c, D::kPreview)->Scheme().BkColor(), readOnly ? 0xFFFFFFu : RGB(0, 128, 0));
            }),
            Press(c, D::kBackColorButton),  // a read-only chooser does not even ask
            Press(c, D::kDefaultButton),
            Check([&] { EXPECT_EQ(TextOf(c, D::kHeightList) + L"|" + TextOf(c, D::kStyleList), L"12|Normal"); }),
            Press(c, IDOK),
        });
        EXPECT_EQ(c.asked, readOnly ? 0 : 1);
        EXPECT_EQ(c.GetFontName() + L"|" + std::to_wstring(c.GetFontSize()), L"Arial|12");
        EXPECT_FALSE(c.IsFontBold());
        EXPECT_EQ(c.GetTextColor(), 0u);
        EXPECT_EQ(c.GetBGColor(), readOnly ? RGB(0, 128, 0) : 0xFFFFFFu);
    }
}

TEST_F(FontColorTest, TheSystemColourDialogAnswersTheColourButton) {
    Chooser c;
    Make(c);
    // Nothing queued: "..." opens the system's colour dialog; red, green and
    // blue are typed into its fields and taken with OK.
    HWND system = nullptr;
    Open(c, {Press(c, D::kBackColorButton),
             [&] {
                 for (HWND w : qvtest::Windows(L"#32770"))
                     if (::GetWindow(w, GW_OWNER) == c.dialog->m_hWnd && ::IsWindowVisible(w)) system = w;
                 if (!system) return false;
                 const struct { int id; const wchar_t* value; } fields[] = {{706, L"1"}, {707, L"2"}, {708, L"255"}};
                 for (const auto& f : fields) {
                     ::SetWindowTextW(::GetDlgItem(system, f.id), f.value);
                     ::SendMessageW(system, WM_COMMAND, MAKEWPARAM(f.id, EN_UPDATE), LPARAM(::GetDlgItem(system, f.id)));
                 }
                 return ::PostMessageW(system, WM_COMMAND, IDOK, LPARAM(::GetDlgItem(system, IDOK))) != FALSE;
             },
             [&] { return !::IsWindow(system); },
             Check([&] { EXPECT_EQ(Field(c, D::kBackSwatch)->Scheme().BkColor(), RGB(1, 2, 255)); }),
             Press(c, IDOK)});
    EXPECT_EQ(c.asked, 1);
    EXPECT_EQ(c.GetBGColorHTML(), L"#0102ff");
}

}  // namespace
