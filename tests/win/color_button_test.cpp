// The colour button on a real host: the grid opened by a click and driven
// by keys and by the mouse, what the parent hears and when, the shared
// palette, "Other..." with the system colour dialog. (What screen readers
// hear is tested with the other controls' in accessibility/.)
#include "quorvel/views/color_button.h"

#include <functional>
#include <string>
#include <vector>

#include "support/host.h"

namespace {

// Steps run one per timer tick while the grid is open (the grid's modal
// loop dispatches the ticks), so each posted key is handled, with the focus
// it moves, before the next is posted. When the script is done and the grid
// is still open after a grace period, it is cancelled so no test can hang.
struct Script {
    std::vector<std::function<void()>> steps;
    size_t next = 0;
    int idle = 0;
    XColorBtnDlg* dialog = nullptr;
    bool sawDialog = false;
};
Script* g_script = nullptr;

void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
    Script& s = *g_script;
    HWND dlg = s.dialog->m_hWnd;
    if (!dlg || !::IsWindowVisible(dlg)) return;
    s.sawDialog = true;
    if (s.next < s.steps.size()) {
        s.steps[s.next++]();
    } else if (++s.idle > 40) {
        ::PostMessageW(dlg, WM_COMMAND, IDCANCEL, 0);
    }
}

// A key as the keyboard sends it, to the window with the focus.
std::function<void()> KeyStep(UINT vk) {
    return [vk] {
        HWND focus = ::GetFocus();
        ::PostMessageW(focus, WM_KEYDOWN, vk, 1);
        ::PostMessageW(focus, WM_KEYUP, vk, 0xC0000001);
    };
}

// A mouse click in the middle of grid cell `index`.
std::function<void()> ClickStep(XColorBtnDlg* dialog, int index) {
    return [dialog, index] {
        HWND cell = ::GetDlgItem(dialog->m_hWnd, static_cast<int>(XColorBtnDlg::kFirstCell) + index);
        RECT rc{};
        ::GetClientRect(cell, &rc);
        const LPARAM at = MAKELPARAM(rc.right / 2, rc.bottom / 2);
        ::PostMessageW(cell, WM_LBUTTONDOWN, MK_LBUTTON, at);
        ::PostMessageW(cell, WM_LBUTTONUP, 0, at);
    };
}

// The dialog box (of the system's class) that `owner` owns, or null.
HWND OwnedDialog(HWND owner) {
    struct Find { HWND owner, found; } find{owner, nullptr};
    ::EnumThreadWindows(
        ::GetCurrentThreadId(),
        [](HWND wnd, LPARAM lp) -> BOOL {
            auto* f = reinterpret_cast<Find*>(lp);
            wchar_t cls[16] = {};
            ::GetClassNameW(wnd, cls, 16);
            if (::GetWindow(wnd, GW_OWNER) == f->owner && std::wstring(cls) == L"#32770") f->found = wnd;
            return f->found == nullptr;
        },
        reinterpret_cast<LPARAM>(&find));
    return find.found;
}

struct Click {
    UINT id, code;
    COLORREF colorThen;  // the button's colour when the parent heard the click
};

class ColorButtonTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        // The spy goes on first, so the button's reflection runs before it
        // and the spy sees what the host's window procedure sees.
        spy_ = std::make_unique<qvtest::MessageSpy>(host_, [this](UINT msg, WPARAM wp, LPARAM lp) {
            if (msg == WM_COMMAND && reinterpret_cast<HWND>(lp) == button_->m_hWnd)
                clicks_.push_back({LOWORD(wp), HIWORD(wp), button_->GetSelColor()});
        });
    }
    void TearDown() override {
        spy_.reset();
        HostTest::TearDown();
    }
    void Make(XColorBtn& button, int row = 0) {
        button_ = &button;
        ASSERT_TRUE(button.Create(nullptr, RECT{10, 10 + 40 * row, 90, 34 + 40 * row}, host_, 300 + row));
    }
    // Clicks the button and plays `steps` in the grid.
    void Open(XColorBtn& button, std::vector<std::function<void()>> steps) {
        Script script{std::move(steps), 0, 0, button.GetDialog(), false};
        g_script = &script;
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 30, &Tick);
        ::SendMessageW(button, BM_CLICK, 0, 0);
        ::KillTimer(nullptr, timer);
        g_script = nullptr;
        EXPECT_TRUE(script.sawDialog);
        EXPECT_EQ(script.next, script.steps.size()) << "the grid closed before the script ended";
        EXPECT_EQ(button.GetDialog()->m_hWnd, nullptr);
    }

    XColorBtn* button_ = nullptr;
    std::vector<Click> clicks_;
    std::unique_ptr<qvtest::MessageSpy> spy_;
};

TEST_F(ColorButtonTest, TheGridChoosesByKeysAndByMouseAndTheParentHearsTheClickAfterwards) {
    XColorBtn button;  // white: the grid opens on the last cell
    Make(button);
    const struct {
        const char* name;
        std::vector<UINT> keys;
        int clickCell;  // -1: no click
        COLORREF expected;
    } cases[] = {
        {"Home, Right, Right, Down, Enter", {VK_HOME, VK_RIGHT, VK_RIGHT, VK_DOWN, VK_RETURN}, -1, 0x808000},
        // Each case opens on the colour the one before chose.
        {"Up from the current cell, Space", {VK_UP, VK_SPACE}, -1, 0x008000},
        {"Right past a row's end, Enter", {VK_RIGHT, VK_RIGHT, VK_RETURN}, -1, 0x800000},
        {"Esc leaves the colour", {VK_END, VK_ESCAPE}, -1, 0x800000},
        {"a click on red", {}, 13, 0x0000FF},
        {"Down to Other..., Up back to the column, Enter", {VK_DOWN, VK_DOWN, VK_UP, VK_RETURN}, -1, 0xFF00FF},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        clicks_.clear();
        std::vector<std::function<void()>> steps;
        for (UINT vk : c.keys) steps.push_back(KeyStep(vk));
        if (c.clickCell >= 0) steps.push_back(ClickStep(button.GetDialog(), c.clickCell));
        Open(button, steps);
        EXPECT_EQ(button.GetSelColor(), c.expected);
        ASSERT_EQ(clicks_.size(), 1u);
        EXPECT_EQ(clicks_[0].id, 300u);
        EXPECT_EQ(clicks_[0].code, static_cast<UINT>(BN_CLICKED));
        EXPECT_EQ(clicks_[0].colorThen, c.expected);
    }
}

TEST_F(ColorButtonTest, ThePaletteIsSharedOverwrittenForAllAndFreedWithTheLastButton) {
    const int before = XColorBtn::GetPaletteUsers();
    ASSERT_EQ(before, 0);
    auto first = std::make_unique<XColorBtn>(RGB(0, 0, 0));
    Make(*first);
    {
        const COLORREF custom[] = {0x123456, 0x654321};
        XColorBtn second(0x123456, custom, 2);
        EXPECT_EQ(XColorBtn::GetPaletteUsers(), 2);
        EXPECT_EQ(XColorBtn::GetPaletteColor(1), 0x654321u);
    }
    EXPECT_EQ(XColorBtn::GetPaletteUsers(), 1);
    // The first button's grid offers the colours the second one brought.
    Open(*first, {KeyStep(VK_HOME), KeyStep(VK_RIGHT), KeyStep(VK_RETURN)});
    EXPECT_EQ(first->GetSelColor(), 0x654321u);

    first.reset();
    EXPECT_EQ(XColorBtn::GetPaletteUsers(), 0);
    XColorBtn fresh;
    EXPECT_EQ(XColorBtn::GetPaletteColor(0), 0x000000u) << "a new palette starts from the defaults";
    EXPECT_EQ(XColorBtn::GetPaletteColor(1), 0x000080u);
}

TEST_F(ColorButtonTest, OtherOpensTheSystemColourDialogOnTheCurrentColour) {
    XColorBtn button(RGB(0x12, 0x34, 0x56));
    Make(button);
    for (const bool accept : {false, true}) {
        SCOPED_TRACE(accept ? "OK" : "Cancel");
        HWND chooser = nullptr;
        auto inChooser = [&] {
            // The system dialog is a top-level window owned by the grid.
            chooser = OwnedDialog(button.GetDialog()->m_hWnd);
            ASSERT_NE(chooser, nullptr);
            if (accept) {
                ::SetDlgItemInt(chooser, 706, 30, FALSE);   // red
                ::SetDlgItemInt(chooser, 707, 144, FALSE);  // green
                ::SetDlgItemInt(chooser, 708, 255, FALSE);  // blue
            }
            ::PostMessageW(chooser, WM_COMMAND, accept ? IDOK : IDCANCEL, 0);
        };
        std::vector<std::function<void()>> steps{KeyStep(VK_END), KeyStep(VK_RIGHT), KeyStep(VK_RETURN), [] {},
                                                 inChooser};
        if (!accept) steps.push_back(KeyStep(VK_ESCAPE));  // the grid stays open after a cancel there
        Open(button, steps);
        EXPECT_NE(chooser, nullptr);
        const COLORREF expected = accept ? RGB(30, 144, 255) : RGB(0x12, 0x34, 0x56);
        EXPECT_EQ(button.GetSelColor(), expected);
    }
}

TEST_F(ColorButtonTest, SettersAndTheCaptionThatIsNotDrawn) {
    XColorBtn named;
    ASSERT_TRUE(named.Create(L"Fill", RECT{10, 10, 90, 34}, host_, 41));
    XColorBtn plain(RGB(1, 2, 3));
    ASSERT_TRUE(plain.Create(nullptr, RECT{10, 50, 90, 74}, host_, 42));
    EXPECT_EQ(qvtest::TextOf(named), L"Fill");
    EXPECT_EQ(qvtest::TextOf(plain), L"");
    EXPECT_EQ(plain.GetSelColor(), RGB(1, 2, 3));
    named.SetSelColor(RGB(255, 0, 0));
    EXPECT_EQ(named.GetSelColor(), RGB(255, 0, 0));
    named.Reset();
    EXPECT_EQ(named.GetSelColor(), RGB(255, 255, 255));
    EXPECT_TRUE(named.GetStyle() & BS_OWNERDRAW);
}

}  // namespace
