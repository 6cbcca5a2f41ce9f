// The filtering combo box on a real host: characters typed into its edit
// part filter the list by prefix or pattern, keep the typed text with the
// caret after it, and an empty field brings every entry back; the dropped
// list is filled up with blank entries; the edit part's colours.
#include "quorvel/lists/custom_combo.h"

#include <string>
#include <utility>
#include <vector>

#include "support/host.h"

namespace {

class CustomComboTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        ASSERT_TRUE(combo_.Create(L"", 100, RECT{10, 10, 250, 300}, font_, host_));
        for (const auto& [text, value] : kEntries) combo_.AddEntry(text, value);
        COMBOBOXINFO info{};
        info.cbSize = sizeof(info);
        ASSERT_TRUE(::GetComboBoxInfo(combo_.m_hWnd, &info));
        edit_ = info.hwndItem;
        ::SetFocus(edit_);
    }
    void TearDown() override {
        combo_.ShowDropDown(false);
        combo_.DestroyWindow();
        HostTest::TearDown();
    }

    // The shown list as "text=value" items.
    std::vector<std::wstring> Shown() const {
        std::vector<std::wstring> items;
        for (int i = 0; i < combo_.GetCount(); ++i)
            items.push_back(combo_.GetLBText(i) + L"=" + std::to_wstring(combo_.GetItemData(i)));
        return items;
    }

    static inline const std::vector<std::pair<std::wstring, DWORD>> kEntries = {
        {L"Apple", 1}, {L"apricot", 2}, {L"Banana", 3}, {L"grape", 4}, {L"a*b", 5}, {L"c+d", 6}, {L"Grapefruit", 7},
    };
    XCustomCombo combo_;
    HWND edit_ = nullptr;
};

TEST_F(CustomComboTest, TypingFiltersByPrefixOrPatternAndKeepsTheTypedText) {
    const struct { const wchar_t* typed; std::vector<std::wstring> shown; } cases[] = {
        {L"AP", {L"Apple=1", L"apricot=2"}},             // prefix, case ignored
        {L"ap*", {L"Apple=1", L"apricot=2"}},            // literal then star: begins with
        {L"*pe", {L"grape=4"}},                          // star then literal: ends with
        {L"gr?pe", {L"grape=4", L"Grapefruit=7"}},       // whatever follows
        {L"a\\*", {L"a*b=5"}},                           // escaped star: a literal star
        {L"c+", {L"c+d=6"}},                             // "+" switches to pattern mode, literally
        {L"rap", {}},                                    // a prefix does not float
        {L"zz*", {}},
    };
    for (const auto& c : cases) {
        ::SetWindowTextW(edit_, L"");
        qvtest::TypeChars(edit_, c.typed);
        EXPECT_EQ(Shown(), c.shown) << c.typed;
        EXPECT_EQ(qvtest::TextOf(edit_), c.typed);
        const std::wstring typed = c.typed;
        const DWORD sel = combo_.GetEditSel();
        EXPECT_EQ(LOWORD(sel), typed.size()) << c.typed;
        EXPECT_EQ(HIWORD(sel), typed.size()) << c.typed;
        EXPECT_TRUE(combo_.GetDroppedState()) << c.typed;
        EXPECT_EQ(combo_.GetEntryCount(), 7);
    }
}

TEST_F(CustomComboTest, EmptyFieldBringsEveryEntryBackWithItsValue) {
    qvtest::TypeChars(edit_, L"gr");
    ASSERT_EQ(Shown().size(), 2u);
    qvtest::TypeChars(edit_, L"\b\b");
    EXPECT_EQ(qvtest::TextOf(edit_), L"");
    EXPECT_EQ(Shown(), (std::vector<std::wstring>{L"Apple=1", L"apricot=2", L"Banana=3", L"grape=4", L"a*b=5",
                                                   L"c+d=6", L"Grapefruit=7"}));
    combo_.DeleteAll();
    EXPECT_EQ(combo_.GetCount(), 0);
    EXPECT_EQ(combo_.GetEntryCount(), 7);
}

TEST_F(CustomComboTest, DroppedListIsFilledUpToFifteenRows) {
    qvtest::TypeChars(edit_, L"ap");
    combo_.ShowDropDown(false);
    combo_.ShowDropDown(true);
    const std::vector<std::wstring> shown = Shown();
    ASSERT_EQ(shown.size(), 15u);
    EXPECT_EQ(shown[1], L"apricot=2");
    for (size_t i = 2; i < shown.size(); ++i) EXPECT_EQ(shown[i], L" =0") << i;
    // Entries wider than the list widen it.
    const LRESULT width = combo_.SendMessage(CB_GETDROPPEDWIDTH);
    EXPECT_GT(width, qvtest::TextExtent(combo_.m_hWnd, font_, L"apricot").cx);
}

TEST_F(CustomComboTest, EditPartIsAnsweredWithTheFieldColours) {
    HDC dc = ::GetDC(edit_);
    const auto ask = [&] {
        return reinterpret_cast<HBRUSH>(
            ::SendMessageW(combo_.m_hWnd, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(edit_)));
    };
    EXPECT_EQ(ask(), combo_.Scheme().Brush());
    EXPECT_EQ(::GetTextColor(dc), RGB(8, 0, 0));
    EXPECT_EQ(::GetBkColor(dc), ::GetSysColor(COLOR_WINDOW));

    combo_.SetTextColor(RGB(1, 2, 3));
    combo_.SetBkColor(RGB(200, 100, 50));
    const HBRUSH brush = ask();
    EXPECT_EQ(brush, combo_.Scheme().Brush());
    EXPECT_EQ(::GetTextColor(dc), RGB(1, 2, 3));
    EXPECT_EQ(::GetBkColor(dc), RGB(200, 100, 50));
    LOGBRUSH lb{};
    ASSERT_TRUE(::GetObjectW(brush, sizeof(lb), &lb));
    EXPECT_EQ(lb.lbColor, RGB(200, 100, 50));
    ::ReleaseDC(edit_, dc);
}

}  // namespace
