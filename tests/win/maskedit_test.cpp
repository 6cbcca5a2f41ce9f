// The masked edit on real EDIT controls: keystrokes, Delete and Backspace,
// cut and paste through the real clipboard, the error box when the field is
// left, and the shared checker's life.
#include "quorvel/masks/maskedit.h"

#include <string>
#include <tuple>
#include <utility>

#include "quorvel/masks/numeric.h"
#include "support/host.h"

namespace {

using qvtest::SelOf;
using qvtest::TextOf;
using qvtest::TypeChars;
using qvtest::SetClipboard;
using qvtest::ClipboardAnsi;

constexpr wchar_t kDeleteKey = 0x7F;  // in a key sequence: WM_KEYDOWN VK_DELETE

class MaskEditTest : public qvtest::HostTest {
protected:
    // Creates the field with `text`, gives it the focus and the selection.
    void Prepare(XMaskBaseEdit& edit, const wchar_t* text, int start, int end) {
        ASSERT_TRUE(edit.Create(text, 100, Row(0), font_, host_));
        edit.SetFocus();
        edit.SetSel(start, end);
    }
};

TEST_F(MaskEditTest, KeysChangeTheTextOnlyAsThePatternAllows) {
    // caret -1: the selection is unchanged
    struct Case { const wchar_t *mask, *text; int start, end; const wchar_t *keys, *result; int caret; } cases[] = {
        // The rules themselves are the model's (mask_rules_test); here each key reaches them.
        {L"#?", L"", 0, 0, L"a5", L"5", 1},
        {L"(+|-)#?", L"-0", 2, 2, L"7", L"-7", 1},   // the zero repair after a character
        {L"x#?", L"x5", 1, 1, L"\b", L"5", 1}, {L"#?", L"123", 0, 0, L"\x7F", L"23", 0},
        {L"#2?(.)(#2?)", L"12.34", 2, 2, L"\x7F", L"12.34", -1},  // Delete is checked
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.mask << " \"" << c.text << "\" + " << c.keys);
        XMaskBaseEdit edit(c.mask);
        Prepare(edit, c.text, c.start, c.end);
        for (const wchar_t* k = c.keys; *k; ++k) {
            if (*k == kDeleteKey) edit.SendMessage(WM_KEYDOWN, VK_DELETE, 1);
            else TypeChars(edit, std::wstring(1, *k));
        }
        EXPECT_EQ(TextOf(edit), c.result);
        const std::pair<int, int> expected = c.caret < 0 ? std::pair{c.start, c.end} : std::pair{c.caret, c.caret};
        EXPECT_EQ(SelOf(edit), expected);
        EXPECT_TRUE(rec_->boxes.boxes.empty());
    }
}

TEST_F(MaskEditTest, PasteAndCutGoThroughThePattern) {
    XMaskBaseEdit edit(L"x#?");
    Prepare(edit, L"x12", 2, 2);

    ASSERT_TRUE(SetClipboard(host_, "3a"));
    edit.Paste();  // refused: nothing changes
    EXPECT_EQ(std::tuple(TextOf(edit), SelOf(edit)), std::tuple(L"x12", std::pair(2, 2)));

    // Shift+Insert pastes through the same check (the edit control may paste
    // internally without a WM_PASTE of its own).
    {
        qvtest::HeldKey shift(VK_SHIFT);
        edit.SendMessage(WM_KEYDOWN, VK_INSERT, 0);
    }
    EXPECT_EQ(TextOf(edit), L"x12");

    ASSERT_TRUE(SetClipboard(host_, "34"));
    TypeChars(edit, L"\x16");  // Ctrl+V goes to the control, which pastes through the field
    EXPECT_EQ(std::tuple(TextOf(edit), SelOf(edit)), std::tuple(L"x1342", std::pair(5, 5)));

    edit.SetSel(0, 1);
    edit.Cut();  // "1342" breaks the pattern: refused
    EXPECT_EQ(std::tuple(TextOf(edit), ClipboardAnsi(host_)), std::tuple(L"x1342", "34"));

    // The selection goes out as 8-bit text of its length plus 2 bytes taken
    // from the wide text, so a CF_TEXT reader sees its first character.
    edit.SetSel(2, 4);
    TypeChars(edit, L"\x18");
    EXPECT_EQ(std::tuple(TextOf(edit), SelOf(edit), ClipboardAnsi(host_)), std::tuple(L"x12", std::pair(2, 2), "3"));

    ASSERT_TRUE(SetClipboard(host_, nullptr));  // a cut needs text on the clipboard already
    edit.SetSel(1, 3);
    edit.Cut();
    EXPECT_EQ(std::tuple(TextOf(edit), ClipboardAnsi(host_)), std::tuple(L"x12", "<none>"));
}

TEST_F(MaskEditTest, DisplayErrorShowsTheBoxOnceAndKeepsTheFocus) {
    XMaskBaseEdit edit;
    XBaseEdit other;
    Prepare(edit, L"1.5", 1, 1);
    ASSERT_TRUE(other.Create(L"", 101, Row(1), font_, host_));

    edit.SetFocus();
    edit.SetDisplayError(true);  // shown although the value is valid
    other.SetFocus();
    ASSERT_EQ(rec_->boxes.boxes.size(), 1u);
    const qvtest::RecordedBox& box = rec_->boxes.boxes[0];
    EXPECT_EQ(std::tie(box.caption, box.text, box.parent),
              std::tuple(L"Input-Error", L"Value out of range", edit.m_hWnd));
    EXPECT_EQ(box.type & MB_ICONMASK, static_cast<UINT>(MB_ICONERROR));
    EXPECT_EQ(std::tuple(::GetFocus(), TextOf(edit), SelOf(edit)), std::tuple(edit.m_hWnd, L"1.5", std::pair(0, 3)));

    other.SetFocus();  // the flag went with the box
    EXPECT_EQ(std::tuple(rec_->boxes.boxes.size(), ::GetFocus()), std::tuple(1u, other.m_hWnd));
}

TEST_F(MaskEditTest, TheLastFieldTakesTheCheckerWithIt) {
    const unsigned before = XMaskBaseEdit::GetParserCount();
    {
        XMaskBaseEdit first;
        EXPECT_EQ(XMaskBaseEdit::GetParserCount(), before + 1);
        {
            XMaskIntegerEditColor second;
            EXPECT_EQ(XMaskBaseEdit::GetParserCount(), before + 2);
        }
        EXPECT_EQ(XMaskBaseEdit::GetParserCount(), before + 1);
    }
    ASSERT_EQ(XMaskBaseEdit::GetParserCount(), before);
    // A field made afterwards has a working checker again.
    XMaskBaseEdit again(L"#2?");
    EXPECT_EQ(XMaskBaseEdit::GetParserCount(), before + 1);
    Prepare(again, L"", 0, 0);
    TypeChars(again, L"1x23");
    EXPECT_EQ(TextOf(again), L"12");
}

}  // namespace
