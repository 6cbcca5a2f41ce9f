// The lists at the DPI the test runs at: the value-added list's columns,
// pictures and in-place field, the filtering combo box's dropped list and
// the sort arrow, each the 96-DPI length scaled, and laid out again when the
// DPI changes.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "quorvel/frame/services.h"
#include "quorvel/lists/custom_combo.h"
#include "quorvel/lists/list_ctrl.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/valueadded/value_added.h"
#include "support/host.h"
#include "value_added_host.h"

namespace {

int Scaled(HWND hwnd, int length) { return qv::ScaleToDpi(length, qv::DpiOf(hwnd)); }

// A font of `points` made for the DPI of `hwnd`, as a DPI-aware host makes it.
HFONT FontFor(HWND hwnd, int points) {
    return ::CreateFontW(qv::FontHeightForDpi(points, qv::DpiOf(hwnd)), 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET,
                         0, 0, 0, 0, L"Tahoma");
}

// An 18 x 17, 24-bit BMP file of one colour.
void WritePicture(const std::filesystem::path& file) {
    BITMAPINFOHEADER info{sizeof(BITMAPINFOHEADER), 18, 17, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    const std::vector<BYTE> pixels(((18 * 3 + 3) & ~3u) * 17, 0x40);
    BITMAPFILEHEADER head{0x4D42, 0, 0, 0, sizeof head + sizeof info};
    head.bfSize = static_cast<DWORD>(head.bfOffBits + pixels.size());
    FILE* out = _wfopen(file.c_str(), L"wb");
    ASSERT_NE(out, nullptr);
    fwrite(&head, sizeof head, 1, out);
    fwrite(&info, sizeof info, 1, out);
    fwrite(pixels.data(), 1, pixels.size(), out);
    fclose(out);
}

class ValueAddedDpiTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        folder_ = std::filesystem::temp_directory_path() / L"qv_va_dpi";
        std::filesystem::create_directories(folder_);
        WritePicture(folder_ / L"group.bmp");
        WritePicture(folder_ / L"step.bmp");
        qv::Services::DefaultSettings().Set(L"Common", L"bitmaps", folder_.wstring());
        listFont_ = FontFor(host_, 9);
        ASSERT_TRUE(objects_.Create(list_, host_, listFont_));
    }
    void TearDown() override {
        list_.DestroyWindow();
        ::DeleteObject(listFont_);
        std::filesystem::remove_all(folder_);
        HostTest::TearDown();
    }
    SIZE PictureSize() const {
        int cx = 0, cy = 0;
        ImageList_GetIconSize(list_.GetImageList(LVSIL_SMALL), &cx, &cy);
        return SIZE{cx, cy};
    }
    // Where the field over row 1's entered percent belongs (within the
    // list's client area).
    RECT FieldPlace() {
        RECT cell{};
        list_.GetSubItemRect(1, XValueAddedCtrl::kColumnEnteredPercent, LVIR_BOUNDS, cell);
        const int left = cell.left + Scaled(list_, 4);
        const int right = left + list_.GetColumnWidth(XValueAddedCtrl::kColumnEnteredPercent) - Scaled(list_, 3);
        return RECT{left, cell.top, std::min<int>(right, list_.GetClientRect().right), cell.bottom};
    }
    std::filesystem::path folder_;
    HFONT listFont_ = nullptr;
    qvtest::ValueAddedHost objects_{{{1, 0, L"Processing", L"group", true}, {11, 1, L"Cutting", L"step", true}}};
    XValueAddedCtrl list_;
};

TEST_F(ValueAddedDpiTest, ColumnsPicturesAndTheFieldScale) {
    const int widths96[] = {20, 200, 145, 145, 145, 145};
    for (int c = 0; c < 6; ++c) EXPECT_EQ(list_.GetColumnWidth(c), Scaled(list_, widths96[c])) << c;
    const SIZE picture = PictureSize();
    EXPECT_EQ(picture.cx, Scaled(list_, 18));
    EXPECT_EQ(picture.cy, Scaled(list_, 17));
    // The rows are at least as high as the pictures' slots.
    RECT row{};
    list_.GetItemRect(0, row, LVIR_BOUNDS);
    EXPECT_GE(row.bottom - row.top, Scaled(list_, 17));

    list_.SetFocus();
    ASSERT_TRUE(list_.EditRow(1));
    XInPlaceFloatEdit* edit = list_.GetInPlaceEdit();
    ASSERT_NE(edit, nullptr);
    const RECT place = FieldPlace();
    EXPECT_EQ(qvtest::RectIn(list_, *edit).left, place.left);
    EXPECT_EQ(qvtest::RectIn(list_, *edit).right, place.right);

    // Laid out again when the DPI changes: the field back over its cell,
    // the pictures in their slots.
    ::MoveWindow(*edit, 0, 0, 30, 10, TRUE);
    qv::ImageList tiny;
    tiny.Create(4, 4, ILC_COLOR32 | ILC_MASK, 1, 1);
    list_.SetImageList(tiny, LVSIL_SMALL);
    ::SendMessageW(list_, WM_DPICHANGED_AFTERPARENT, 0, 0);
    const RECT back = qvtest::RectIn(list_, *edit);
    EXPECT_EQ(back.left, place.left);
    EXPECT_EQ(back.right, place.right);
    EXPECT_EQ(back.top, place.top);
    EXPECT_EQ(PictureSize().cx, Scaled(list_, 18));
    EXPECT_EQ(PictureSize().cy, Scaled(list_, 17));
    EXPECT_NE(list_.GetImageList(LVSIL_SMALL), tiny.GetSafeHandle());
    // The same widths: the DPI has not changed.
    EXPECT_EQ(list_.GetColumnWidth(1), Scaled(list_, 200));
    ::SendMessageW(*edit, WM_CHAR, VK_ESCAPE, 0);
    qvtest::Pump(20);
}

using CustomComboDpiTest = qvtest::HostTest;

TEST_F(CustomComboDpiTest, TheDroppedListKeepsItsRowsAtAnyDpi) {
    // Fonts made for the DPI: a normal one keeps 15 rows, a tall one 5, with
    // the room between rows scaled.
    const struct { int points, rows, gap96; } fonts[] = {{9, 15, 3}, {22, 5, 11}};
    for (const auto& f : fonts) {
        SCOPED_TRACE(f.points);
        const HFONT font = FontFor(host_, f.points);
        XCustomCombo combo;
        ASSERT_TRUE(combo.Create(L"", 100, RECT{10, 10, 110, 300}, font, host_));
        combo.AddEntry(L"Aluminium", 1);
        combo.AddEntry(L"Stainless steel, brushed", 2);
        combo.ShowDropDown(true);
        const TEXTMETRICW tm = [&] {
            TEXTMETRICW m{};
            HDC dc = ::GetDC(combo);
            const HGDIOBJ old = ::SelectObject(dc, font);
            ::GetTextMetricsW(dc, &m);
            ::SelectObject(dc, old);
            ::ReleaseDC(combo, dc);
            return m;
        }();
        const int item = tm.tmHeight + Scaled(combo, f.gap96);
        EXPECT_EQ(combo.GetCount(), f.rows) << "filled up to the rows it shows";
        const int width = qvtest::TextExtent(combo, font, L"Stainless steel, brushed").cx + Scaled(combo, 27);
        EXPECT_EQ(static_cast<int>(combo.SendMessage(CB_GETDROPPEDWIDTH)), width);
        combo.ShowDropDown(false);
        auto droppedHeight = [&] {
            RECT dropped{};
            combo.SendMessage(CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
            return dropped.bottom - dropped.top;
        };
        // The list below the field (the system keeps the font's own row
        // height inside it where it does not let a combo box set it).
        const int sized = droppedHeight();
        EXPECT_EQ(sized, f.rows * item);
        const RECT field = combo.GetWindowRect();

        // Sized again when the DPI changes.
        ::MoveWindow(combo, 10, 10, 100, field.bottom - field.top + 10, TRUE);
        ASSERT_NE(droppedHeight(), sized);
        ::SendMessageW(combo, WM_DPICHANGED_AFTERPARENT, 0, 0);
        EXPECT_EQ(droppedHeight(), sized);
        combo.DestroyWindow();
        ::DeleteObject(font);
    }
}

using SortHeaderDpiTest = qvtest::HostTest;

TEST_F(SortHeaderDpiTest, TheArrowScalesEvenWithAFontMadeFor96Dpi) {
    // A small font the host did not scale: the arrow takes its least size,
    // 4 pixels at 96 DPI scaled, with strokes a pixel wide scaled.
    HFONT font = nullptr;
    for (int height = -8; height < -3 && !font; ++height) {
        font = ::CreateFontW(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
        if (qvtest::TextExtent(host_, font, L" ").cx > 2) {
            ::DeleteObject(font);
            font = nullptr;
        }
    }
    ASSERT_NE(font, nullptr) << "a font whose blank leaves the arrow its least size";
    XBaseListCtrl list;
    ASSERT_TRUE(list.Create(WS_CHILD | WS_VISIBLE | LVS_REPORT, RECT{10, 10, 400, 200}, host_, 100));
    list.SetFont(font);
    list.InsertColumn(0, L"", LVCFMT_LEFT, 120);
    HWND header = list.GetHeaderCtrl();
    list.GetSortHeader().SetSortColumn(0, true);
    ::RedrawWindow(header, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    qvtest::Pump(100);

    // The arrow's extent: every pixel in the strokes' colours.
    RECT item{};
    Header_GetItemRect(header, 0, &item);
    const COLORREF light = ::GetSysColor(COLOR_BTNHILIGHT), dark = ::GetSysColor(COLOR_BTNSHADOW);
    HDC dc = ::GetDC(header);
    RECT box{item.right, item.bottom, item.left, item.top};
    for (int y = item.top + 1; y < item.bottom - 1; ++y)
        for (int x = item.left + 2; x < item.right - 2; ++x) {
            const COLORREF c = ::GetPixel(dc, x, y);
            if (c != light && c != dark) continue;
            box = RECT{std::min<LONG>(box.left, x), std::min<LONG>(box.top, y), std::max<LONG>(box.right, x + 1),
                       std::max<LONG>(box.bottom, y + 1)};
        }
    ::ReleaseDC(header, dc);
    const int off = Scaled(header, 4), pen = Scaled(header, 1);
    // Ascending: from 5/2 off + 2 pens left of the right edge to 3/2 off.
    EXPECT_NEAR(box.right - box.left, off + 2 * pen, pen + 1);
    EXPECT_NEAR(item.right - box.right, 3 * off / 2, pen + 1);
    EXPECT_NEAR(box.top - item.top, off - 2 * pen, pen + 1);
    list.DestroyWindow();
    ::DeleteObject(font);
}

}  // namespace
