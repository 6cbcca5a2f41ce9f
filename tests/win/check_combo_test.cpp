// The check combo box on a real host: states shared by equal texts, toggles
// by Space and by a click on a box in the open list, the selection checked by
// opening the list, states recorded before and after the list is taken over,
// the field's text in pixels, and the colour variant's brush.
#include "quorvel/lists/check_combo.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/host.h"

namespace {

constexpr UINT kId = 4711;

class CheckComboTest : public qvtest::HostTest {
protected:
    void Make(XCheckComboBox& combo, std::vector<std::pair<const wchar_t*, bool>> entries) {
        ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | WS_VSCROLL, RECT{10, 10, 200, 200}, host_, kId));
        ::SendMessageW(combo.m_hWnd, WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
        for (const auto& [text, checked] : entries) ASSERT_GE(combo.AddString(text, checked), 0);
    }
    static HWND ListOf(const XCheckComboBox& combo) {
        COMBOBOXINFO info{};
        info.cbSize = sizeof(info);
        ::GetComboBoxInfo(combo.m_hWnd, &info);
        return info.hwndList;
    }
    static void Open(XCheckComboBox& combo) {
        combo.ShowDropDown(true);
        qvtest::Pump(50);
    }
    // Both views of every entry: the combo box's shared state and the list's box.
    static std::vector<int> Checks(XCheckComboBox& combo) {
        std::vector<int> out;
        for (int i = 0; i < combo.GetCount(); ++i) {
            const int list = combo.GetCheckList() ? combo.GetCheckList()->GetCheck(i) : combo.GetCheck(i);
            out.push_back(combo.GetCheck(i) == list ? list : -9);
        }
        return out;
    }
};

TEST_F(CheckComboTest, EqualTextsShareTheirStateBeforeAndAfterTheListIsTakenOver) {
    XCheckComboBox combo;
    // The second "A" overrides the first; "a" is another text.
    Make(combo, {{L"A", true}, {L"B", false}, {L"A", false}, {L"a", true}});
    EXPECT_EQ(combo.GetCheckList(), nullptr);
    EXPECT_EQ(Checks(combo), (std::vector<int>{0, 0, 0, 1}));

    // The list's first colour request takes it over and shows the states.
    HWND list = ListOf(combo);
    ASSERT_NE(list, nullptr);
    HDC dc = ::GetDC(list);
    ::SendMessageW(combo.m_hWnd, WM_CTLCOLORLISTBOX, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(list));
    ::ReleaseDC(list, dc);
    ASSERT_NE(combo.GetCheckList(), nullptr);
    EXPECT_EQ(combo.GetCheckList()->m_hWnd, list);
    EXPECT_EQ(Checks(combo), (std::vector<int>{0, 0, 0, 1}));

    // Added afterwards: set in the list at once, for every entry of the text.
    EXPECT_EQ(combo.AddString(L"A", true), 4);
    EXPECT_EQ(Checks(combo), (std::vector<int>{1, 0, 1, 1, 1}));
    EXPECT_TRUE(combo.IsChecked(L"A"));
    EXPECT_FALSE(combo.IsChecked(L"B"));
    EXPECT_FALSE(combo.IsChecked(L"never added"));
    EXPECT_EQ(combo.GetCheck(5), -1);
}

TEST_F(CheckComboTest, OpeningChecksTheSelectionAndTheUserTogglesBySpaceAndByTheBox) {
    XCheckComboBox combo;
    Make(combo, {{L"Red", false}, {L"Green", false}, {L"Blue", false}, {L"Green", false}});
    combo.SetCurSel(3);
    Open(combo);  // takes the list over on its way
    ASSERT_TRUE(combo.GetDroppedState());
    ASSERT_NE(combo.GetCheckList(), nullptr);
    EXPECT_EQ(Checks(combo), (std::vector<int>{0, 1, 0, 1}));

    HWND list = combo.GetCheckList()->m_hWnd;
    // The open list draws a box before every entry, checked as recorded.
    auto box = [&](int index) {
        ::RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        RECT rc{};
        ::SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rc));
        std::vector<COLORREF> px;
        HDC dc = ::GetDC(list);
        for (int y = rc.top; y < rc.bottom; ++y)
            for (int x = rc.left; x < rc.left + XComboCheckListBox::CheckAreaWidth(); ++x) px.push_back(::GetPixel(dc, x, y));
        ::ReleaseDC(list, dc);
        return px;
    };
    EXPECT_NE(box(0), box(1));
    EXPECT_EQ(box(1), box(3));
    EXPECT_EQ(box(0), box(2));
    auto click = [&](int index, int x) {
        RECT rc{};
        ::SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rc));
        const LPARAM at = MAKELPARAM(rc.left + x, (rc.top + rc.bottom) / 2);
        ::SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
        ::SendMessageW(list, WM_LBUTTONUP, 0, at);
        qvtest::Pump(20);
    };
    auto space = [&](int index) {
        ::SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
        ::SendMessageW(combo.m_hWnd, WM_KEYDOWN, VK_SPACE, 1);  // the combo box passes keys to its list
        qvtest::Pump(20);
    };
    const struct {
        const char* name;
        std::function<void()> act;
        std::vector<int> expected;
        bool stillOpen;
    } cases[] = {
        {"Space on the second Green clears both", [&] { space(3); }, {0, 0, 0, 0}, true},
        {"Space on Red", [&] { space(0); }, {1, 0, 0, 0}, true},
        {"a click on Green's box checks both", [&] { click(1, 5); }, {1, 1, 0, 1}, true},
        {"a click on the other Green's box clears both", [&] { click(3, 5); }, {1, 0, 0, 0}, true},
        {"a click on Blue's text selects without a toggle", [&] { click(2, 40); }, {1, 0, 0, 0}, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        c.act();
        EXPECT_EQ(Checks(combo), c.expected);
        EXPECT_EQ(combo.GetDroppedState(), c.stillOpen);
    }
    EXPECT_EQ(combo.GetFieldText(), L"Red");
}

// The field drawn into a memory DC, compared with the expected text drawn by
// hand the same way.
class FieldPixels {
public:
    explicit FieldPixels(int w = 160, int h = 20) : w_(w), h_(h) {
        BITMAPINFO bi{};
        bi.bmiHeader = {sizeof(BITMAPINFOHEADER), w, -h, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        dc_ = ::CreateCompatibleDC(nullptr);
        bmp_ = ::CreateDIBSection(dc_, &bi, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits_), nullptr, 0);
        old_ = ::SelectObject(dc_, bmp_);
    }
    ~FieldPixels() {
        ::SelectObject(dc_, old_);
        ::DeleteObject(bmp_);
        ::DeleteDC(dc_);
    }
    std::vector<DWORD> DrawField(HWND host, const XCheckComboBox& combo, bool selected) {
        DRAWITEMSTRUCT dis{ODT_COMBOBOX, kId, 0, ODA_DRAWENTIRE,
                           ODS_COMBOBOXEDIT | (selected ? ODS_SELECTED : 0u), combo.m_hWnd, dc_, {0, 0, w_, h_}, 0};
        ::SendMessageW(host, WM_DRAWITEM, kId, reinterpret_cast<LPARAM>(&dis));
        return Pixels();
    }
    std::vector<DWORD> DrawExpected(const std::wstring& text, COLORREF fg, COLORREF bk) {
        HBRUSH brush = ::CreateSolidBrush(bk);
        RECT rc{0, 0, w_, h_};
        ::FillRect(dc_, &rc, brush);
        ::DeleteObject(brush);
        ::SetTextColor(dc_, fg);
        ::SetBkColor(dc_, bk);
        ::ExtTextOutW(dc_, 3, 1, ETO_CLIPPED, &rc, text.c_str(), static_cast<UINT>(text.size()), nullptr);
        return Pixels();
    }
    std::vector<DWORD> Pixels() const {
        ::GdiFlush();
        return std::vector<DWORD>(bits_, bits_ + w_ * h_);
    }
    COLORREF TextColor() const { return ::GetTextColor(dc_); }

private:
    int w_, h_;
    HDC dc_ = nullptr;
    HBITMAP bmp_ = nullptr;
    HGDIOBJ old_ = nullptr;
    DWORD* bits_ = nullptr;
};

TEST_F(CheckComboTest, TheFieldShowsTheCheckedTextsOnceEachElseTheSelection) {
    const COLORREF window = ::GetSysColor(COLOR_WINDOW), text = ::GetSysColor(COLOR_WINDOWTEXT);
    const COLORREF high = ::GetSysColor(COLOR_HIGHLIGHT), highText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
    const struct {
        const char* name;
        std::vector<std::pair<const wchar_t*, bool>> entries;
        int sel;
        bool selected;
        std::wstring expected;
        COLORREF fg, bk;
    } cases[] = {
        {"nothing checked: the selection", {{L"One", false}, {L"Two", false}}, 1, false, L"Two", text, window},
        {"nothing checked, nothing selected: empty", {{L"One", false}}, -1, false, L"", text, window},
        {"empty and selected: highlight", {{L"One", false}}, -1, true, L"", text, high},
        {"checked texts once each, in list order",
         {{L"Beta", true}, {L"Alpha", false}, {L"Gamma", true}, {L"Beta", true}}, 1, false, L"Beta, Gamma", text, window},
        {"selected field in highlight colours", {{L"One", true}, {L"Two", true}}, 0, true, L"One, Two", highText, high},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        XCheckComboBox combo;
        Make(combo, c.entries);
        combo.SetCurSel(c.sel);
        EXPECT_EQ(combo.GetFieldText(), c.expected);
        FieldPixels px;
        const std::vector<DWORD> drawn = px.DrawField(host_, combo, c.selected);
        EXPECT_EQ(px.TextColor(), 0u) << "the DC's text colour is restored";
        EXPECT_TRUE(drawn == px.DrawExpected(c.expected, c.fg, c.bk));
        combo.DestroyWindow();
    }
}

TEST_F(CheckComboTest, TheColourVariantAnswersColourRequestsWithItsOwnBrushAndColours) {
    XCheckComboBoxColor combo;
    Make(combo, {{L"One", true}});
    combo.SetBkColor(RGB(1, 2, 3));
    const HBRUSH brush = combo.Scheme().Brush();
    LOGBRUSH lb{};
    ASSERT_TRUE(::GetObjectW(brush, sizeof(lb), &lb));
    EXPECT_EQ(lb.lbColor, RGB(1, 2, 3));

    HWND list = ListOf(combo);
    HDC dc = ::GetDC(host_);
    // The list's request reaches the combo box; the field's is reflected from the parent.
    const std::pair<HWND, HWND> requests[] = {{combo.m_hWnd, list}, {host_, combo.m_hWnd}};
    for (const auto& [to, about] : requests) {
        ::SetTextColor(dc, RGB(200, 200, 200));
        const LRESULT r = ::SendMessageW(to, WM_CTLCOLORLISTBOX, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(about));
        EXPECT_EQ(reinterpret_cast<HBRUSH>(r), brush);
        EXPECT_EQ(::GetTextColor(dc), RGB(8, 0, 0));
        EXPECT_EQ(::GetBkColor(dc), RGB(1, 2, 3));
    }
    ::ReleaseDC(host_, dc);
    EXPECT_NE(combo.GetCheckList(), nullptr);

    // The field uses the scheme when not selected.
    FieldPixels px;
    EXPECT_TRUE(px.DrawField(host_, combo, false) == px.DrawExpected(L"One", RGB(8, 0, 0), RGB(1, 2, 3)));
}

// The drop-down list's parent is the desktop window, which belongs to another
// process. Taking the list over must not leave a subclass record there: it
// would point into this process's memory, and the next process to take over a
// list would follow it and crash.
TEST_F(CheckComboTest, TakingOverTheListLeavesTheDesktopWindowAlone) {
    const wchar_t* const kSubclassRecord = L"CC32SubclassInfo";
    HWND desktop = ::GetDesktopWindow();
    const HANDLE before = ::GetPropW(desktop, kSubclassRecord);
    XCheckComboBox combo;
    Make(combo, {{L"One", true}, {L"Two", false}});
    combo.SetCurSel(1);
    Open(combo);
    ASSERT_NE(combo.GetCheckList(), nullptr);
    EXPECT_EQ(::GetPropW(desktop, kSubclassRecord), before);
    // The list still works through the combo box: opening checked the
    // selection, Space toggles it back.
    EXPECT_EQ(Checks(combo), (std::vector<int>{1, 1}));
    combo.GetCheckList()->SendMessage(WM_KEYDOWN, VK_SPACE);
    EXPECT_EQ(Checks(combo), (std::vector<int>{1, 0}));
    combo.ShowDropDown(false);
}

}  // namespace
