// The controls that lay other windows out, at the DPI the test runs at: every
// length is its 96-DPI length scaled, the splitter's faces are enlarged pixel
// for pixel, and a layout disturbed by hand comes back when the control
// hears of a DPI change.
#include <string>
#include <tuple>
#include <vector>

#include "quorvel/controls/script_buttons.h"
#include "quorvel/controls/scroll_dialog.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/platform/module.h"
#include "quorvel/views/button_container.h"
#include "quorvel/windows/line_number_edit.h"
#include "quorvel/windows/splitter.h"
#include "support/host.h"

namespace {

using Edges = std::tuple<int, int, int, int>;
Edges EdgesOf(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }
Edges In(HWND parent, HWND child) { return EdgesOf(qvtest::RectIn(parent, child)); }
// What the system sends a child after its parent moved to another DPI.
void DpiChanged(HWND hwnd) { ::SendMessageW(hwnd, WM_DPICHANGED_AFTERPARENT, 0, 0); }

class LayoutDpiTest : public qvtest::HostTest {
protected:
    int S(int px) const { return qv::ScaleToDpi(px, qv::DpiOf(host_)); }
};

using SplitterDpiTest = LayoutDpiTest;

TEST_F(SplitterDpiTest, BarButtonsAndFacesAtTheRunningDpiAndAgainAfterAChange) {
    XSplitterWnd splitter;
    ASSERT_TRUE(splitter.Create(host_, RECT{0, 0, S(614), S(402)}, 77));
    HWND right = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 9, 9, splitter, nullptr, nullptr, nullptr);
    ASSERT_TRUE(splitter.SetPane(1, right));
    splitter.SetColumnInfo(0, S(300), 0);
    splitter.RecalcLayout();
    const UINT dpi = qv::DpiOf(host_);
    EXPECT_EQ(std::pair(splitter.GetBorderCX(), splitter.GetBorderCY()),
              std::pair(qv::SystemMetricForDpi(SM_CXBORDER, dpi), qv::SystemMetricForDpi(SM_CYBORDER, dpi)));
    const RECT client = splitter.GetClientRect();
    const int top = splitter.GetBorderCY(), bar = splitter.GetBorderCX() + S(300);
    const int upper = top + (client.bottom - 2 * top) / 2 - S(80), lower = upper + S(57) + S(20);
    const auto expect = [&] {
        EXPECT_EQ(EdgesOf(splitter.GetBarRect()), Edges(bar, top, bar + S(12), client.bottom - top));
        EXPECT_EQ(In(splitter, splitter.GetUpperButton()), Edges(bar + S(2), upper, bar + S(12) - S(2), upper + S(57)));
        EXPECT_EQ(In(splitter, splitter.GetLowerButton()), Edges(bar + S(2), lower, bar + S(12) - S(2), lower + S(57)));
        EXPECT_EQ(In(splitter, right), Edges(bar + S(12), top, client.right - splitter.GetBorderCX(), client.bottom - top));
    };
    expect();
    splitter.GetUpperButton().MoveWindow(RECT{0, 0, 4, 4});
    ::MoveWindow(right, 1, 1, 3, 3, TRUE);
    DpiChanged(splitter);
    expect();

    // The face, drawn into a bitmap of our own, is the library's bitmap
    // enlarged by the whole multiple for the DPI, no pixel blended; its grey
    // is the button's colour.
    XSplitterButton& button = splitter.GetUpperButton();
    const int k = qv::BitmapFactorForDpi(dpi);
    const SIZE size = button.GetBitmapSize(false);
    const RECT face = button.GetFaceRect(false);
    ASSERT_EQ(std::pair(face.right - face.left, face.bottom - face.top), std::pair(size.cx * k, size.cy * k));
    qv::Bitmap source(qv::LoadLibraryBitmap(XSplitterWnd::kUpperFace));
    qv::ClientDC screen(nullptr);
    std::vector<DWORD> bgrx(static_cast<size_t>(size.cx * size.cy));
    BITMAPINFO info{};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), size.cx, -size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    ASSERT_EQ(::GetDIBits(screen, source, 0, static_cast<UINT>(size.cy), bgrx.data(), &info, DIB_RGB_COLORS), size.cy);
    const RECT inside = button.GetClientRect();
    qv::MemoryDC drawn(screen, inside.right, inside.bottom);
    button.SendMessage(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(static_cast<HDC>(drawn)), PRF_CLIENT);
    int compared = 0, wrong = 0;
    for (LONG y = std::max(face.top, 2L); y < std::min(face.bottom, inside.bottom - 2); ++y) {
        for (LONG x = std::max(face.left, 2L); x < std::min(face.right, inside.right - 2); ++x) {  // within the edge
            const DWORD p = bgrx[static_cast<size_t>((y - face.top) / k * size.cx + (x - face.left) / k)];
            const COLORREF rgb = RGB(p >> 16 & 0xFF, p >> 8 & 0xFF, p & 0xFF);
            ++compared;
            wrong += ::GetPixel(drawn, x, y) != (rgb == RGB(192, 192, 192) ? ::GetSysColor(COLOR_BTNFACE) : rgb);
        }
    }
    EXPECT_GT(compared, size.cy * k);
    EXPECT_EQ(wrong, 0);
}

using LineNumberDpiTest = LayoutDpiTest;

TEST_F(LineNumberDpiTest, TheGutterHasItsAirAtTheRunningDpiAndAgainAfterAChange) {
    XMultiLineEditLN edit;
    ASSERT_TRUE(edit.Create(L"one\r\ntwo", 100, RECT{10, 10, S(330), S(210)}, font_, host_));
    const int width = qvtest::TextExtent(edit, font_, L"00002").cx + S(5);
    const RECT client = edit.GetClientRect();
    const auto expect = [&] {
        EXPECT_EQ(In(edit, edit.GetLineNumberStatic()), Edges(0, 0, width, client.bottom));
        RECT format{};
        edit.SendMessage(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&format));
        EXPECT_GE(format.left, width + 1);
    };
    expect();
    edit.GetLineNumberStatic().MoveWindow(RECT{0, 0, 3, 3});
    edit.SendMessage(EM_SETRECT, 0, reinterpret_cast<LPARAM>(&client));
    DpiChanged(edit);
    expect();
}

using ButtonBarsDpiTest = LayoutDpiTest;

TEST_F(ButtonBarsDpiTest, ButtonsGapsAndMarginsAtTheRunningDpiAndAgainAfterAChange) {
    // A script group in one column: buttons of their text + 12 x 4, from 5
    // down, the free height shared out, the first button counted twice.
    XBaseScriptBtn_Group group;
    ASSERT_TRUE(group.Create(10, RECT{10, 10, 210, 210}, font_, host_));
    ASSERT_TRUE(group.AddScriptCommand(201, L"Recalculate") && group.AddScriptCommand(202, L"Export"));
    group.UpdateSize();
    const SIZE text = qvtest::TextExtent(host_, font_, L"Recalculate");
    const int w = text.cx + S(12), h = text.cy + S(4), gap = (200 - 3 * h) / 3;
    EXPECT_EQ(std::pair(group.GetMinWidth(), group.GetMinHeight()), std::pair(w + S(5), 2 * (h + S(5)) + S(5)));
    // A script container: margin 15, its button 30 x 20 on the right.
    HWND field = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 10, 10, host_, nullptr, nullptr, nullptr);
    XScriptContainer box(field, XScriptContainer::PosRight, 41);
    ASSERT_TRUE(box.Create(RECT{10, 220, 10 + S(200), 220 + S(60)}, host_, 42));
    const int right = S(200) - S(15) - S(30) - S(15);
    // A button container's row: "W"s for the longest caption + 5 around, 5 apart.
    XButtonContainer bar(font_, XButtonContainer::kHorizontal, {{L"OK", L"", 101}, {L"Cancel", L"", 102}});
    ASSERT_TRUE(bar.Create(RECT{10, 300, 10 + S(400), 300 + S(60)}, host_, 77));
    const SIZE ws = qvtest::TextExtent(host_, font_, L"WWWWWW");
    const int bw = ws.cx + 2 * S(5), bh = ws.cy + 2 * S(5), btop = S(5) + (S(60) - 2 * S(5) - bh) / 2;
    const int second = S(5) + bw + S(5);
    const SIZE min = bar.GetMinSize();
    EXPECT_EQ(std::pair(int{min.cx}, int{min.cy}), std::pair(2 * (bw + S(5)) + S(5), bh + 2 * S(5)));

    const auto expect = [&] {
        EXPECT_EQ(In(group, *group.GetScriptButton(0)), Edges(0, S(5), w, S(5) + h));
        EXPECT_EQ(std::get<1>(In(group, *group.GetScriptButton(1))), S(5) + h + gap);
        EXPECT_EQ(In(box, field), Edges(S(15), S(15), right, S(60) - S(15)));
        EXPECT_EQ(In(box, box.GetButton()), Edges(right + S(15), S(15), right + S(15) + S(30), S(15) + S(20)));
        EXPECT_EQ(In(bar, bar.GetButton(1)), Edges(second, btop, second + bw, btop + bh));
    };
    expect();
    for (HWND disturbed : {HWND(*group.GetScriptButton(0)), box.GetButton(), field, bar.GetButton(1)})
        ::MoveWindow(disturbed, 1, 1, 2, 2, TRUE);
    for (HWND control : {HWND(group), HWND(box), HWND(bar)}) DpiChanged(control);
    expect();
}

using ScrollDialogDpiTest = LayoutDpiTest;

TEST_F(ScrollDialogDpiTest, UnitsAndGripAtTheRunningDpiAndAgainAfterAChange) {
    XScrollDialog page;
    ASSERT_TRUE(page.Create(host_));
    page.ShowWindow(SW_SHOW);  // only what is shown scrolls
    HWND field = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, S(20), S(20), S(100), S(20), page, nullptr,
                                   nullptr, nullptr);
    const UINT dpi = qv::DpiOf(host_);
    const RECT origin = qvtest::RectIn(page, field);
    // The grip: as large as the system makes a size box for this DPI's
    // scroll bars (Wine makes it a pixel larger), in the corner.
    const RECT made = qvtest::RectIn(page, page.GetGripper());
    const int grip = made.right - made.left, metric = qv::SystemMetricForDpi(SM_CXHSCROLL, dpi);
    EXPECT_TRUE(grip == metric || grip == metric + 1) << grip << " for " << metric;
    const auto gripInCorner = [&] {
        const RECT c = page.GetClientRect();
        EXPECT_EQ(In(page, page.GetGripper()), Edges(c.right - grip, c.bottom - grip, c.right, c.bottom));
    };
    gripInCorner();

    // 40 x 20 pixels (at 96 DPI) short of the layout is five units each way
    // at any DPI; a line down and a page right move the field by their units.
    const RECT layout = page.GetInitialClientRect();
    page.SetWindowPos(nullptr, 0, 0, layout.right - S(40) + qv::SystemMetricForDpi(SM_CXVSCROLL, dpi),
                      layout.bottom - S(20) + qv::SystemMetricForDpi(SM_CYHSCROLL, dpi), SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(std::pair(page.HorizontalScroll().maximum, page.VerticalScroll().maximum), std::pair(5, 5));
    page.SendMessage(WM_VSCROLL, SB_LINEDOWN, 0);
    page.SendMessage(WM_HSCROLL, SB_PAGERIGHT, 0);
    EXPECT_EQ(In(page, field), Edges(origin.left - 5 * S(8), origin.top - S(4), origin.right - 5 * S(8),
                                     origin.bottom - S(4)));

    // A DPI change goes back to the origin and makes the grip again in the corner.
    ::MoveWindow(page.GetGripper(), 3, 3, 2, 2, TRUE);
    DpiChanged(page);
    EXPECT_EQ(In(page, field), EdgesOf(origin));
    gripInCorner();
}

}  // namespace
