// The placeholder mask edit on a real EDIT control: typing over the
// template with real key messages, Backspace and Delete putting
// placeholders back, the caret keys, and cut, paste and the context menu
// being unavailable.
#include "quorvel/masks/placeholder.h"

#include <commctrl.h>

#include <string>
#include <tuple>
#include <utility>

#include "support/host.h"

namespace {

using qvtest::TextOf;

using qvtest::ClipboardText;
using qvtest::Key;
using qvtest::Press;

constexpr wchar_t kLeft = Key(VK_LEFT), kRight = Key(VK_RIGHT), kHome = Key(VK_HOME), kEnd = Key(VK_END),
                  kDel = Key(VK_DELETE), kIns = Key(VK_INSERT);

class PlaceholderTest : public qvtest::HostTest {
protected:
    // A masked field with the focus and the caret at the start.
    void Make(XMaskEdit& edit, const wchar_t* mask, wchar_t placeholder = L'_') {
        ASSERT_TRUE(edit.Create(L"", 100, Row(0), font_, host_));
        edit.SetPlaceholder(placeholder);
        edit.SetMask(mask);
        edit.SetFocus();
    }
};

TEST_F(PlaceholderTest, TypingOverTheTemplate) {
    struct Case { const wchar_t* mask; std::wstring keys; const wchar_t* text; int caret; wchar_t placeholder = L'_'; };
    const Case cases[] = {
        // What each key does to the template is the model's (placeholder_rules_test); here the keys reach it.
        {L"##.##", L"12", L"12.__", 3},                          // skips the '.'
        {L"##.##", L"12\b\b", L"1_.__", 1},                      // Backspace moves over the '.', then clears
        {L"#--#", std::wstring(L"1") + kRight + L"2\b\b", L"1--_", 1},  // over both hyphens
        {L"##.##", std::wstring(L"12") + kLeft + kLeft + L"7", L"17.__", 3},
        {L"##.##", std::wstring(L"12") + kHome + L"9", L"92.__", 1},
        {L"##.##", std::wstring(L"12") + kEnd + L"5", L"12.__", 5},  // End: past the template
        {L"##.##", std::wstring(L"12") + kHome + kDel, L"12.__", 0},  // Delete without a selection
        {L"##.##", std::wstring(L"12") + kHome + kIns + L"3", L"32.__", 1},  // Insert changes nothing
        {L"##-##", L"*1_", L"*1-**", 3, L'*'},  // own placeholder, typed itself under '#'
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.mask << " after \"" << c.text << "\"");
        XMaskEdit edit;
        Make(edit, c.mask, c.placeholder);
        Press(edit, c.keys);
        EXPECT_EQ(std::tuple(TextOf(edit), qvtest::SelOf(edit)), std::tuple(c.text, std::pair(c.caret, c.caret)));
    }
}

TEST_F(PlaceholderTest, KeysOnASelection) {
    XMaskEdit edit;
    Make(edit, L"##.##");
    Press(edit, L"1234");
    for (wchar_t key : {L'x', L'"', L'\x1A', kIns}) {  // refused: text and selection stay
        SCOPED_TRACE(static_cast<int>(key));
        edit.SetSel(1, 4);
        Press(edit, std::wstring(1, key));
        EXPECT_EQ(std::tuple(TextOf(edit), qvtest::SelOf(edit)), std::tuple(L"12.34", std::pair(1, 4)));
    }
    Press(edit, std::wstring(1, kDel));
    EXPECT_EQ(std::tuple(TextOf(edit), qvtest::SelOf(edit)), std::tuple(L"1_._4", std::pair(1, 1)));
    Press(edit, L"5");  // the template did not shift
    EXPECT_EQ(TextOf(edit), L"15._4");
}

TEST_F(PlaceholderTest, CutAndPasteChangeNothing) {
    XBaseEdit plain;  // the same clipboard does paste into a plain field
    ASSERT_TRUE(plain.Create(L"", 101, RECT{10, 50, 200, 74}, font_, host_));
    XMaskEdit edit;
    Make(edit, L"##.##");
    Press(edit, L"12");
    ASSERT_TRUE(qvtest::SetClipboard(host_, L"99.99"));
    plain.Paste();
    ASSERT_EQ(TextOf(plain), L"99.99");

    edit.SetSel(0, 0);
    edit.Paste();
    Press(edit, L"\x16");  // Ctrl+V
    {
        qvtest::HeldKey shift(VK_SHIFT);
        Press(edit, std::wstring(1, kIns));
    }
    EXPECT_EQ(TextOf(edit), L"12.__");

    edit.SetSel(0, 5);
    edit.Cut();
    Press(edit, L"\x18");  // Ctrl+X
    EXPECT_EQ(std::tuple(TextOf(edit), ClipboardText(host_), qvtest::SelOf(edit)),
              std::tuple(L"12.__", L"99.99", std::pair(0, 5)));
}

// Notes an open popup menu and closes it (the menu loop dispatches timer
// messages, so this runs while a context menu is up).
bool g_menuSeen = false;
void CALLBACK CloseMenu(HWND, UINT, UINT_PTR, DWORD) {
    HWND menu = ::FindWindowW(L"#32768", nullptr);
    if (menu && ::IsWindowVisible(menu)) {
        g_menuSeen = true;
        ::EndMenu();
    }
}

TEST_F(PlaceholderTest, NoContextMenuOnceMasked) {
    const UINT_PTR timer = ::SetTimer(nullptr, 0, 30, &CloseMenu);
    for (bool masked : {false, true}) {
        XMaskEdit edit;
        ASSERT_TRUE(edit.Create(L"", 100, RECT{10, 10, 200, 34}, font_, host_));
        if (masked) edit.SetMask(L"##");
        edit.SetFocus();
        g_menuSeen = false;
        ::SendMessageW(edit, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(edit.m_hWnd), MAKELPARAM(20, 20));
        EXPECT_EQ(g_menuSeen, !masked);
        EXPECT_EQ(TextOf(edit), masked ? L"__" : L"");
    }
    ::KillTimer(nullptr, timer);
}

TEST_F(PlaceholderTest, WithoutAMaskTypesLikeABaseEdit) {
    XMaskEdit edit;
    ASSERT_TRUE(edit.Create(L"", 100, Row(0), font_, host_));
    edit.SetFocus();
    Press(edit, L"ab\"c\b");
    EXPECT_EQ(TextOf(edit), L"ab\"");
}

TEST_F(PlaceholderTest, ColourVariantTypesAndPaints) {
    XMaskEditColor edit;
    Make(edit, L"#-#");
    Press(edit, L"12");
    EXPECT_EQ(TextOf(edit), L"1-2");
    EXPECT_EQ(std::tuple(edit.Scheme().TextColor(), edit.Scheme().BkColor()),
              std::tuple(RGB(8, 0, 0), ::GetSysColor(COLOR_WINDOW)));
    // The parent's colour question reaches the field, which answers with its brush.
    HDC dc = ::GetDC(edit);
    EXPECT_EQ(::SendMessageW(host_, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(edit.m_hWnd)),
              reinterpret_cast<LRESULT>(edit.Scheme().Brush()));
    ::ReleaseDC(edit, dc);
}

}  // namespace
