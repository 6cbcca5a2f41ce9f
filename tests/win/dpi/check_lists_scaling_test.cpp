// The lists with check boxes, the compound date field and the group box's
// caption at the DPI the test runs at: boxes, columns, item heights, picker
// widths, gaps and insets are the 96-DPI sizes scaled, and each lays itself
// out again when its DPI changes.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "quorvel/controls/base_buttons.h"
#include "quorvel/controls/base_lists.h"
#include "quorvel/lists/check_combo.h"
#include "quorvel/masks/date_edits.h"
#include "quorvel/platform/dpi.h"
#include "support/host.h"

namespace {

using qvtest::RectIn;

class ScalingTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        dpi_ = qv::DpiOf(host_);
    }
    int S(int length) const { return qv::ScaleToDpi(length, dpi_); }
    // The height of `font`'s characters on `wnd`.
    static int FontHeight(HWND wnd, HFONT font, const wchar_t* sample = nullptr) {
        HDC dc = ::GetDC(wnd);
        HGDIOBJ old = ::SelectObject(dc, font);
        TEXTMETRICW tm{};
        ::GetTextMetricsW(dc, &tm);
        SIZE size{};
        if (sample) ::GetTextExtentPoint32W(dc, sample, static_cast<int>(wcslen(sample)), &size);
        ::SelectObject(dc, old);
        ::ReleaseDC(wnd, dc);
        return sample ? static_cast<int>(size.cy) : static_cast<int>(tm.tmHeight);
    }
    static void AfterParentDpiChange(HWND wnd) { ::SendMessageW(wnd, WM_DPICHANGED_AFTERPARENT, 0, 0); }
    UINT dpi_ = 96;
};

// Records where the text part of each item is drawn.
class RecordingList : public XTabCheckListBox {
public:
    std::vector<int> textLeft;
    void DrawItem(DRAWITEMSTRUCT* dis) override {
        textLeft.push_back(dis->rcItem.left);
        XTabCheckListBox::DrawItem(dis);
    }
};

using CheckListsDpiTest = ScalingTest;

TEST_F(CheckListsDpiTest, ItemsFitTheScaledBoxAndClicksHitIt) {
    RecordingList list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LBS_NOTIFY, RECT{10, 10, 250, 200}, host_, 300));
    list.SetFont(font_);
    for (const wchar_t* s : {L"alpha", L"beta"}) list.AddString(s);
    EXPECT_EQ(list.GetCheckSize(), S(13));
    EXPECT_EQ(list.GetItemHeight(0), std::max(FontHeight(list, font_), S(13) + S(2)));

    // The box column: the text part starts after it.
    ::RedrawWindow(list, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    ASSERT_FALSE(list.textLeft.empty());
    RECT rc{};
    list.GetItemRect(0, rc);
    EXPECT_EQ(list.textLeft.back(), rc.left + S(13) + S(4));

    // The box as drawn: its frame spans the scaled side (the light side of
    // its edge, as wide as a scaled pixel, may blend into the window colour).
    HDC screen = ::GetDC(list);
    HDC dc = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, 200, 100);
    ::ReleaseDC(list, screen);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    const int height = list.GetItemHeight(0);
    DRAWITEMSTRUCT dis{ODT_LISTBOX, 300, 0, ODA_DRAWENTIRE, 0, list, dc, RECT{0, 0, 200, height}, 0};
    ::SendMessageW(host_, WM_DRAWITEM, 300, reinterpret_cast<LPARAM>(&dis));
    const COLORREF window = ::GetPixel(dc, S(13) + S(3), 0);
    int first = -1, last = -1;
    for (int x = 0; x < S(13) + S(4); ++x)
        for (int y = 0; y < height; ++y)
            if (::GetPixel(dc, x, y) != window) {
                if (first < 0) first = x;
                last = x;
            }
    ::SelectObject(dc, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(dc);
    const int drawn = last - first + 1;
    EXPECT_GE(drawn, S(13) - S(1));
    EXPECT_LE(drawn, S(13));

    // A click toggles up to one pixel past the scaled box and no further.
    const struct {
        int x;
        int check;
    } clicks[] = {{S(13) + S(2) - 1, 1}, {S(13) + S(2), 0}};
    for (const auto& c : clicks) {
        list.SetCheck(1, 0);
        list.GetItemRect(1, rc);
        const LPARAM at = MAKELPARAM(rc.left + c.x, (rc.top + rc.bottom) / 2);
        list.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, at);
        list.SendMessage(WM_LBUTTONUP, 0, at);
        EXPECT_EQ(list.GetCheck(1), c.check) << "x " << c.x;
    }
}

TEST_F(CheckListsDpiTest, ListsMeasureTheirItemsAgainWhenTheirDpiChanges) {
    XBaseCheckListBox checks;
    ASSERT_TRUE(checks.Create(L"", 300, RECT{10, 10, 200, 150}, font_, host_));
    checks.AddString(L"alpha");
    // The combo box measures its items in its font when they are made: here
    // none was set, so in the system's.
    XCheckComboBox combo;
    ASSERT_TRUE(combo.Create(WS_CHILD | WS_VISIBLE | WS_VSCROLL, RECT{210, 10, 400, 200}, host_, 301));
    combo.AddString(L"Early", false);
    const int checkHeight = std::max(FontHeight(checks, font_), S(13) + S(2));
    const int comboHeight = std::max(FontHeight(combo, nullptr, L"Test"), S(13) + S(2));
    EXPECT_EQ(checks.GetItemHeight(0), checkHeight);
    EXPECT_EQ(combo.GetItemHeight(0), comboHeight);
    // Disturbed, then told of a new DPI: measured again.
    checks.SetItemHeight(0, 5);
    combo.SetItemHeight(0, 5);
    AfterParentDpiChange(checks);
    AfterParentDpiChange(combo);
    EXPECT_EQ(checks.GetItemHeight(0), checkHeight);
    EXPECT_EQ(combo.GetItemHeight(0), comboHeight);
}

using DateFieldsDpiTest = ScalingTest;

TEST_F(DateFieldsDpiTest, TheCompoundsPickersAreScaledAndPlacedAgain) {
    for (bool stretch : {false, true}) {
        SCOPED_TRACE(stretch ? "stretched" : "fixed");
        XMFCBaseDateTimeEdit compound(stretch);
        unsigned int id = 400;
        // Smaller than the least size: made the least size for the pickers.
        ASSERT_EQ(compound.Create(true, RECT{10, 10, 20, 20}, host_, id, font_), 1);
        EXPECT_EQ(compound.GetMinWidth(), 2 * S(100) + S(5));
        EXPECT_EQ(compound.GetMinHeight(), S(20));
        compound.MoveWindow(RECT{10, 10, 10 + 2 * S(100) + S(5), 10 + S(20)});
        auto layout = [&] {
            const RECT date = RectIn(compound, compound.GetDateField());
            const RECT time = RectIn(compound, compound.GetTimeField());
            return std::tuple(date.left, date.right, time.left, time.right, time.bottom);
        };
        const auto expected = std::tuple(0L, LONG{S(100)}, LONG{S(100) + S(5)}, LONG{2 * S(100) + S(5)}, LONG{S(20)});
        EXPECT_EQ(layout(), expected);
        compound.GetDateField().MoveWindow(RECT{0, 0, 7, 7});
        compound.GetTimeField().MoveWindow(RECT{9, 0, 15, 7});
        AfterParentDpiChange(compound);
        EXPECT_EQ(layout(), expected);
    }
}

using GroupBoxDpiTest = ScalingTest;

TEST_F(GroupBoxDpiTest, TheCaptionSitsAtTheScaledInsetAndIsPlacedAgain) {
    XBaseGroupBox box;
    ASSERT_TRUE(box.Create(L"Times", 500, RECT{10, 10, 300, 200}, font_, host_, L"When it runs", false));
    HWND caption = ::GetWindow(box, GW_CHILD);
    ASSERT_NE(caption, nullptr);
    const RECT placed = RectIn(box, caption);
    EXPECT_EQ(placed.left, S(8));
    ::MoveWindow(caption, 0, 0, 3, 3, FALSE);
    AfterParentDpiChange(box);
    const RECT again = RectIn(box, caption);
    EXPECT_EQ(std::tuple(again.left, again.top, again.right, again.bottom),
              std::tuple(placed.left, placed.top, placed.right, placed.bottom));
}

}  // namespace
