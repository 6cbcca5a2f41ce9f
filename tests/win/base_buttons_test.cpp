// The buttons on a real form: Tab/Enter/Shift+Tab focus moves, focus
// notifications to the parent (also through a group box), the three-state
// cycle, and colours that reach a prompt caption or inner prompt.
#include "quorvel/controls/base_buttons.h"

#include <tuple>
#include <vector>

#include "quorvel/controls/base_readonly.h"
#include "support/host.h"

namespace {

RECT At(int x, int y, int cx = 120, int cy = 24) { return RECT{x, y, x + cx, y + cy}; }

// What a control's answer to WM_CTLCOLORSTATIC (sent to its parent) puts into a DC.
std::pair<COLORREF, COLORREF> Painted(HWND parent, HWND control) {
    HDC dc = ::CreateCompatibleDC(nullptr);
    ::SendMessageW(parent, WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(control));
    const std::pair<COLORREF, COLORREF> colours{::GetTextColor(dc), ::GetBkColor(dc)};
    ::DeleteDC(dc);
    return colours;
}

// A form with a push button, check boxes, a radio button, a read-only field
// and a group box holding a check box.
class ButtonsTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        ASSERT_TRUE(button_.Create(L"OK", 1, At(10, 10), font_, host_));
        ASSERT_TRUE(check_.Create(L"Check", 2, At(10, 40), font_, host_));
        ASSERT_TRUE(tri_.Create(L"Tri", 3, At(10, 70), font_, host_));
        ASSERT_TRUE(radio_.Create(L"Radio", 4, At(10, 100), font_, host_));
        ASSERT_TRUE(readOnly_.Create(L"Read", 5, At(10, 130), font_, host_));
        ASSERT_TRUE(group_.Create(L"Group", 6, At(200, 10, 200, 100), font_, host_, L"", false));
        ASSERT_TRUE(inner_.Create(L"Inside", 7, At(10, 30), font_, group_));
    }
    XBaseButton button_;
    XBaseCheckBox check_, inner_;
    XBaseTriCheckBox tri_;
    XBaseRadio radio_;
    XBaseEditReadOnly readOnly_;
    XBaseGroupBox group_;
};

TEST_F(ButtonsTest, TabEnterAndShiftTabMoveTheFocus) {
    XBaseRadio orphan;
    EXPECT_FALSE(orphan.Create(L"Radio", 4, At(10, 100), font_, nullptr));
    const struct { HWND from; wchar_t key; bool shift; HWND to; } cases[] = {
        {button_, L'\t', false, check_}, {check_, L'\t', false, tri_}, {tri_, L'\r', false, radio_},
        {radio_, L'\t', false, button_},  // round to the first field
        {radio_, L'\t', true, tri_},      {button_, L'\t', true, radio_}, {tri_, L'x', false, tri_},  // other keys stay
    };
    qvtest::HeldKey shift(VK_SHIFT, false);
    for (const auto& c : cases) {
        ::SetFocus(c.from);
        shift.Set(c.shift);
        ::SendMessageW(c.from, WM_CHAR, c.key, 1);
        EXPECT_EQ(::GetFocus(), c.to) << ::GetDlgCtrlID(c.from) << " key " << int{c.key} << " shift " << c.shift;
    }
}

TEST_F(ButtonsTest, FocusIsReportedToTheParentAlsoThroughAGroupBox) {
    std::vector<HWND> notes;
    qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM lp) {
        const auto* hdr = reinterpret_cast<const NMHDR*>(lp);
        if (msg == WM_NOTIFY && hdr->code == static_cast<UINT>(NM_SETFOCUS) && wp == hdr->idFrom)
            notes.push_back(hdr->hwndFrom);
    });
    const std::pair<HWND, bool> cases[] = {
        {button_, false}, {check_, true}, {radio_, true}, {readOnly_, true}, {inner_, true}};
    for (const auto& [control, notifies] : cases) {
        ::SetFocus(host_);
        notes.clear();
        ::SetFocus(control);
        EXPECT_EQ(notes, notifies ? std::vector<HWND>{control} : std::vector<HWND>{}) << ::GetDlgCtrlID(control);
    }
}

TEST_F(ButtonsTest, TriStateBoxCyclesThroughThreeStates) {
    for (int expected : {BST_CHECKED, BST_INDETERMINATE, BST_UNCHECKED, BST_CHECKED}) {
        tri_.Click();
        EXPECT_EQ(tri_.GetCheck(), expected);
    }
}

TEST_F(ButtonsTest, ColoursAndFontsReachTheBoxOrThePromptShowingTheText) {
    XBaseGroupBoxColor plain, captioned;
    XBaseEditReadOnlyColor field;
    field.SetTextColor(RGB(7, 7, 7));  // no inner prompt yet: lost
    ASSERT_TRUE(plain.Create(L"Plain", 1, At(10, 200, 200, 80), font_, host_));
    ASSERT_TRUE(captioned.Create(L"Captioned", 2, At(10, 100, 200, 80), font_, host_, L"Help", true));
    ASSERT_TRUE(field.Create(L"Value", 3, At(10, 200, 200, 30), font_, host_));
    HWND caption = ::GetWindow(captioned, GW_CHILD), prompt = ::GetWindow(field, GW_CHILD);
    EXPECT_EQ(qvtest::TextOf(caption), L"Captioned*");
    RECT format{};  // the whole caption shows on one line
    ::SendMessageW(caption, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&format));
    EXPECT_GE(format.right - format.left, qvtest::TextExtent(caption, font_, L"Captioned*").cx);
    EXPECT_EQ(::SendMessageW(caption, EM_GETLINECOUNT, 0, 0), 1);
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    const struct { XBaseColor* colours; HWND parent, painted; std::pair<COLORREF, COLORREF> initial; } cases[] = {
        {&plain, host_, plain, {RGB(0, 0, 0), face}},
        {&captioned, captioned, caption, {RGB(8, 0, 0), face}},  // the caption sits on the box
        {&field, field, prompt, {RGB(8, 0, 0), ::GetSysColor(COLOR_WINDOW)}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Painted(c.parent, c.painted), c.initial) << ::GetDlgCtrlID(c.painted);
        c.colours->SetTextColor(RGB(1, 2, 3));
        c.colours->SetBkColor(RGB(4, 5, 6));
        EXPECT_EQ(Painted(c.parent, c.painted), std::make_pair(RGB(1, 2, 3), RGB(4, 5, 6))) << ::GetDlgCtrlID(c.painted);
    }

    // A font goes to the inner prompt (the caption grows to fit its text); the frames keep theirs.
    const RECT before = qv::Window::FromHandle(caption)->GetWindowRect();
    HFONT big = ::CreateFontW(-28, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, L"Tahoma");
    captioned.SetFont(big);
    field.SetFont(big);
    EXPECT_GT(qv::Window::FromHandle(caption)->GetWindowRect().right, before.right);
    for (HWND inner : {caption, prompt}) EXPECT_EQ(reinterpret_cast<HFONT>(::SendMessageW(inner, WM_GETFONT, 0, 0)), big);
    EXPECT_EQ(std::tuple(captioned.GetFont(), field.GetFont()), std::tuple(font_, font_));
    ::DestroyWindow(host_);
    ::DeleteObject(big);
}

}  // namespace
