// The base edits on real EDIT controls: typing against the limit and the
// 0-9/A-Z restriction, validation when the focus leaves, Tab and Enter, the
// parent's focus notification and the colours.
#include "quorvel/controls/base_edit.h"

#include <commctrl.h>

#include <tuple>
#include <utility>
#include <vector>

#include "support/host.h"

namespace {

using qvtest::SelOf;
using qvtest::TextOf;
using qvtest::TypeChars;

using BaseEditTest = qvtest::HostTest;

TEST_F(BaseEditTest, TypingKeepsTheLimitAndTheRestriction) {
    // before: set while the restriction is off
    struct Case { int limit; const wchar_t* before; bool restricted; const wchar_t *typed, *text; } cases[] = {
        // The character rules are the model's (input_rules_test); here the limit and the wiring.
        {5, L"ABCDE", false, L"F", L"ABCDE"},  {5, L"ABC", false, L"DEFG", L"ABCDE"},
        {99, L"", true, L"ab1.c", L"AB1C"},    {4, L"AB", true, L"c-d", L"D"},  // "-" at the limit: the cut text is refused whole
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.before << " + " << c.typed);
        XBaseEdit edit;
        edit.SetMaxInputChar(c.limit);
        ASSERT_TRUE(edit.Create(c.before, 100, Row(0), font_, host_));
        edit.ActivateInputMask09AZ(c.restricted);
        edit.SetFocus();
        edit.SetSel(static_cast<int>(wcslen(c.before)), static_cast<int>(wcslen(c.before)));
        TypeChars(edit, c.typed);
        EXPECT_EQ(TextOf(edit), c.text);
        const int at = static_cast<int>(wcslen(c.text));
        EXPECT_EQ(SelOf(edit), std::pair(at, at));
    }
}

TEST_F(BaseEditTest, SettingTheTextCutsAndRestricts) {
    XBaseEdit edit;
    edit.SetMaxInputChar(3);
    ASSERT_TRUE(edit.Create(L"ABCDE", 100, Row(0), font_, host_));
    EXPECT_EQ(std::tuple(TextOf(edit), edit.GetTooltipText()), std::tuple(L"ABC", L"ABC"));
    edit.ActivateInputMask09AZ(true);
    edit.SetWindowTextW(L"ab-c");
    EXPECT_EQ(TextOf(edit), L"");
}

TEST_F(BaseEditTest, ValidatesOnFocusLoss) {
    const wchar_t* mismatch =
        L"The value entered does not match the validation pattern  for the attribute :Order\n"
        L"The validation pattern given is  :  \"  ^[0-9]+$  \" \nDigits only";
    const wchar_t* broken =
        L"The given validation pattern \" ( \"  is not valid. Please change it in configuration tool.";
    // caption nullptr: no box
    struct Case { const wchar_t *pattern, *text, *caption, *message; } cases[] = {
        {L"^[0-9]+$", L"12a", L"Invalid entry", mismatch}, {L"^[0-9]+$", L"123", nullptr, nullptr},
        {L"^[0-9]+$", L"", nullptr, nullptr}, {L"", L"abc", nullptr, nullptr},
        {L"(", L"abc", L"Invalid entry in configuration tool", broken},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.pattern << " / " << c.text);
        rec_->boxes.boxes.clear();
        XBaseEdit edit(c.pattern, L"Digits only", L"Order");
        XBaseEdit other;
        ASSERT_TRUE(edit.Create(L"", 100, Row(0), font_, host_));
        ASSERT_TRUE(other.Create(L"", 101, Row(1), font_, host_));
        // The first focus loss after an edit was destroyed never validates.
        edit.SetWindowTextW(c.text);
        edit.SetFocus();
        other.SetFocus();
        EXPECT_TRUE(rec_->boxes.boxes.empty());
        edit.SetFocus();
        other.SetFocus();
        if (!c.caption) {
            EXPECT_TRUE(rec_->boxes.boxes.empty());
            continue;
        }
        ASSERT_EQ(rec_->boxes.boxes.size(), 1u);
        const qvtest::RecordedBox& box = rec_->boxes.boxes[0];
        EXPECT_EQ(std::tie(box.caption, box.text), std::tuple(c.caption, c.message));
        EXPECT_EQ(box.type & MB_ICONMASK, static_cast<UINT>(MB_ICONWARNING));
        EXPECT_EQ(::GetFocus(), other.m_hWnd);  // the focus is not taken back ...
        EXPECT_EQ(TextOf(edit), c.text);         // ... and the text stays
    }
}

TEST_F(BaseEditTest, TabMovesOnAndSelectsEnterMakesALineTheParentHearsOfTheFocus) {
    std::vector<std::pair<HWND, int>> notes;  // the WM_NOTIFY codes the host receives, with the sender
    qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM lp) {
        const auto* hdr = reinterpret_cast<const NMHDR*>(lp);
        if (msg == WM_NOTIFY && wp == hdr->idFrom) notes.emplace_back(hdr->hwndFrom, static_cast<int>(hdr->code));
    });
    XBaseMultiLineEdit lines;
    XBaseEdit next;
    ASSERT_TRUE(lines.Create(L"one", 100, RECT{10, 10, 200, 80}, font_, host_));
    ASSERT_TRUE(next.Create(L"HELLO", 101, Row(3), font_, host_));
    lines.SetFocus();
    lines.SetSel(3, 3);
    TypeChars(lines, L"\rtwo");
    EXPECT_EQ(TextOf(lines), L"one\r\ntwo");
    EXPECT_EQ(lines.GetLineCount(), 2);

    next.SetSel(0, 0);
    {
        qvtest::HeldKey tab(VK_TAB);
        TypeChars(lines, L"\t");
    }
    EXPECT_EQ(::GetFocus(), next.m_hWnd);
    EXPECT_EQ(TextOf(lines), L"one\r\ntwo");
    EXPECT_EQ(SelOf(next), std::pair(0, 5));  // arriving by Tab selects everything

    lines.SetFocus();
    next.SetSel(1, 1);
    next.SetFocus();  // not by Tab: the selection stays as it was
    EXPECT_EQ(SelOf(next), std::pair(1, 1));

    const std::vector<std::pair<HWND, int>> expected{
        {lines, NM_SETFOCUS}, {next, NM_SETFOCUS}, {lines, NM_SETFOCUS}, {next, NM_SETFOCUS}};
    EXPECT_EQ(notes, expected);
}

TEST_F(BaseEditTest, ColourVariantAnswersWithItsColours) {
    XBaseEditColor edit;
    ASSERT_TRUE(edit.Create(L"text", 100, Row(0), font_, host_));
    HDC dc = ::CreateCompatibleDC(nullptr);
    const auto brush = reinterpret_cast<HBRUSH>(
        ::SendMessageW(host_, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(edit.m_hWnd)));
    EXPECT_EQ(brush, edit.Scheme().Brush());
    EXPECT_EQ(std::tuple(::GetTextColor(dc), ::GetBkColor(dc)), std::tuple(RGB(8, 0, 0), ::GetSysColor(COLOR_WINDOW)));
    ::DeleteDC(dc);

    // Each new background replaces the brush: the earlier ones are deleted.
    // (Wine answers 0 to GetGuiResources, so the handles themselves are asked.)
    std::vector<HBRUSH> brushes{edit.Scheme().Brush()};
    for (COLORREF c : {RGB(0, 128, 0), RGB(0, 0, 128)}) {
        edit.SetBkColor(c);
        brushes.push_back(edit.Scheme().Brush());
    }
    EXPECT_EQ(::GetObjectType(brushes[0]) + ::GetObjectType(brushes[1]), 0u);
    LOGBRUSH lb{};
    ASSERT_EQ(::GetObjectW(brushes[2], sizeof(lb), &lb), static_cast<int>(sizeof(lb)));
    EXPECT_EQ(lb.lbColor, RGB(0, 0, 128));
}

}  // namespace
