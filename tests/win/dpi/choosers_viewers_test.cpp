// The colour button and its grid, the search fields, the image view and the
// font and colour chooser at the DPI the test runs at: every length they lay
// out or draw is the 96-DPI one scaled, library bitmaps grow by whole
// multiples only, and a DPI change puts a disturbed layout right again.
#include <algorithm>
#include <memory>
#include <string>

#include "quorvel/common/dpi_rules.h"
#include "quorvel/controls/font_color.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/views/color_button.h"
#include "quorvel/views/viewers.h"
#include "quorvel/windows/search_field.h"
#include "support/host.h"

namespace {

using qvtest::RectIn;

class ChooserDpiTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        dpi_ = qv::DpiOf(host_);
    }
    // A 96-DPI length at the DPI the test runs at.
    int S(int length) const { return qv::ScaleToDpi(length, dpi_); }
    // Moves `child` somewhere wrong, tells `control` its DPI changed, and
    // answers where `child` is then.
    RECT AfterDpiChange(HWND control, HWND child) {
        ::MoveWindow(child, 1, 1, 3, 3, FALSE);
        ::SendMessageW(control, WM_DPICHANGED_AFTERPARENT, 0, 0);
        return RectIn(control, child);
    }
    // The width and height of the bitmap a button shows.
    static SIZE FaceSize(HWND button) {
        BITMAP info{};
        const auto face = reinterpret_cast<HBITMAP>(::SendMessageW(button, BM_GETIMAGE, IMAGE_BITMAP, 0));
        if (!face || !::GetObjectW(face, sizeof info, &info)) return SIZE{0, 0};
        return SIZE{info.bmWidth, info.bmHeight};
    }
    // The 20-pixel library faces, enlarged by whole multiples only.
    int FaceSide() const { return 20 * qv::BitmapFactorForDpi(dpi_); }
    UINT dpi_ = 96;
};

std::wstring Describe(const RECT& r) {
    return std::to_wstring(r.left) + L"," + std::to_wstring(r.top) + L"," + std::to_wstring(r.right) + L"," +
           std::to_wstring(r.bottom);
}

// ---- Colour button ---------------------------------------------------------------------

using ColorButtonDpiTest = ChooserDpiTest;

TEST_F(ColorButtonDpiTest, TheFaceIsDrawnAtTheDpi) {
    const COLORREF chosen = RGB(30, 144, 255);
    XColorBtn button(chosen);
    const int w = S(80), h = S(24);
    ASSERT_TRUE(button.Create(nullptr, RECT{10, 10, 10 + w, 10 + h}, host_, 100));
    // The button draws itself into a bitmap of its own size.
    HDC screen = ::GetDC(nullptr);
    HDC dc = ::CreateCompatibleDC(screen);
    HBITMAP bitmap = ::CreateCompatibleBitmap(screen, w, h);
    ::ReleaseDC(nullptr, screen);
    HGDIOBJ old = ::SelectObject(dc, bitmap);
    ::SendMessageW(button, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);

    const int unit = std::max(1, S(1)), midY = h / 2;
    const struct { const char* part; int x, y; COLORREF color; } pixels[] = {
        {"swatch outline", S(5), midY, RGB(0, 0, 0)},
        {"swatch outline, inner edge", S(5) + unit - 1, midY, RGB(0, 0, 0)},
        {"swatch", S(5) + unit, midY, chosen},
        {"swatch, far end", w - S(15) - unit - 1, midY, chosen},
        {"beyond the swatch", w - S(15), midY, ::GetSysColor(COLOR_BTNFACE)},
        {"separator, shadow", w - S(11), midY, ::GetSysColor(COLOR_3DSHADOW)},
        {"separator, highlight", w - S(11) + unit, midY, ::GetSysColor(COLOR_3DHILIGHT)},
        {"arrow tip column", w - S(6), midY, RGB(0, 0, 0)},
        {"outer frame line", w - unit, midY, ::GetSysColor(COLOR_3DDKSHADOW)},
        {"inner frame line", w - unit - 1, midY, ::GetSysColor(COLOR_3DSHADOW)},
    };
    for (const auto& p : pixels) {
        EXPECT_EQ(::GetPixel(dc, p.x, p.y), p.color)
            << p.part << " at " << p.x << "," << p.y << " (" << dpi_ << " DPI)";
    }
    ::SelectObject(dc, old);
    ::DeleteObject(bitmap);
    ::DeleteDC(dc);
}

TEST_F(ColorButtonDpiTest, TheGridsCellsGapsAndOtherScaleAndComeBackAfterADpiChange) {
    XColorBtn keeper;  // holds the palette
    XColorBtnDlg grid;
    ASSERT_TRUE(grid.Create(host_));
    auto cell = [&](int i) { return ::GetDlgItem(grid, XColorBtnDlg::kFirstCell + i); };
    const RECT first = RectIn(grid, cell(0)), second = RectIn(grid, cell(1)), below = RectIn(grid, cell(4));
    const RECT last = RectIn(grid, cell(19));
    const RECT other = RectIn(grid, ::GetDlgItem(grid, XColorBtnDlg::kOtherButton));
    RECT client{};
    ::GetClientRect(grid, &client);
    const struct { const char* what; int got, expected; } lengths[] = {
        {"cell width", first.right - first.left, S(19)},
        {"cell height", first.bottom - first.top, S(16)},
        {"margin", first.left, S(2)},
        {"gap across", second.left - first.right, S(2)},
        {"gap down", below.top - first.bottom, S(3)},
        {"Other... below the grid", other.top - last.bottom, S(4)},
        {"Other... height", other.bottom - other.top, S(18)},
        {"Other... as wide as the grid", other.right, last.right},
        {"client width", client.right, last.right + S(2)},
        {"client height", client.bottom, other.bottom + S(3)},
    };
    for (const auto& l : lengths) EXPECT_EQ(l.got, l.expected) << l.what << " at " << dpi_ << " DPI";

    // The grid is a window of its own: it hears WM_DPICHANGED.
    RECT frame{};
    ::GetWindowRect(grid, &frame);
    ::MoveWindow(cell(7), 1, 1, 3, 3, FALSE);
    ::SendMessageW(grid, WM_DPICHANGED, MAKEWPARAM(dpi_, dpi_), reinterpret_cast<LPARAM>(&frame));
    const int secondRow = first.top + S(16) + S(3);  // cell 7 ends the second row
    EXPECT_EQ(Describe(RectIn(grid, cell(7))), Describe(RECT{last.left, secondRow, last.right, secondRow + S(16)}));
    grid.DestroyWindow();
}

// ---- Search fields ---------------------------------------------------------------------

using SearchFieldDpiTest = ChooserDpiTest;

TEST_F(SearchFieldDpiTest, ButtonsGapsAndTheFaceScaleAndComeBackAfterADpiChange) {
    std::unique_ptr<XBaseSearchCtrl> fields[] = {std::make_unique<XSearchFileCtrl>(),
                                                  std::make_unique<XSearchFileOpenCtrl>()};
    for (auto& field : fields) {
        const bool open = field->GetOpenButton() != nullptr;
        SCOPED_TRACE(open ? "with an open button" : "browse only");
        field->SetValidation(false);
        const int width = S(300), height = S(24);
        ASSERT_TRUE(field->Create(L"", 0, RECT{10, 10, 10 + width, 10 + height}, font_, host_, 100));
        const RECT browse = RectIn(*field, field->GetBrowseButton());
        const RECT edit = RectIn(*field, field->GetEditCtrl());
        const int lastLeft = open ? width - S(25) : browse.left;
        EXPECT_EQ(browse.right - browse.left, S(25));
        EXPECT_EQ(browse.bottom - browse.top, height);
        EXPECT_EQ(edit.right, browse.left - S(2));
        if (open) {
            const RECT button = RectIn(*field, *field->GetOpenButton());
            EXPECT_EQ(button.left, lastLeft);
            EXPECT_EQ(button.left - browse.right, S(4));
            const SIZE face = FaceSize(*field->GetOpenButton());
            EXPECT_EQ(face.cx, FaceSide());
            EXPECT_EQ(face.cy, FaceSide());
        } else {
            EXPECT_EQ(browse.right, width);
        }
        EXPECT_EQ(Describe(AfterDpiChange(*field, field->GetBrowseButton())), Describe(browse));
        EXPECT_EQ(Describe(AfterDpiChange(*field, field->GetEditCtrl())), Describe(edit));
        field.reset();
    }
}

// ---- Image view ------------------------------------------------------------------------

using ViewerDpiTest = ChooserDpiTest;

TEST_F(ViewerDpiTest, TheRowItsButtonsAndFacesScaleAndComeBackAfterADpiChange) {
    XImageView view;
    UINT id = 200;
    const int width = S(400), height = S(300);
    ASSERT_TRUE(view.CreateCtrl(id, RECT{0, 0, width, height}, font_, host_));
    const UINT offsets[] = {XImageView::kReloadOffset, XImageView::kOpenOffset, XImageView::kBrowserOffset};
    RECT before{};
    int right = width + S(2);
    for (int i = 2; i >= 0; --i) {
        HWND button = view.GetButton(offsets[i]);
        const RECT r = RectIn(view, button);
        SCOPED_TRACE(i);
        EXPECT_EQ(Describe(r), Describe(RECT{right - S(2) - S(24), 0, right - S(2), S(24)}));
        const SIZE face = FaceSize(button);
        EXPECT_EQ(face.cx, FaceSide());
        EXPECT_EQ(face.cy, FaceSide());
        right = r.left;
        if (i == 0) before = r;
    }
    const RECT edit = RectIn(view, view.GetFileEdit());
    EXPECT_EQ(Describe(edit), Describe(RECT{0, 0, right - S(2), S(24)}));
    EXPECT_EQ(Describe(view.ViewerGetSize()), Describe(RECT{0, S(24) + S(2), width, height}));

    EXPECT_EQ(Describe(AfterDpiChange(view, view.GetButton(XImageView::kReloadOffset))), Describe(before));
    EXPECT_EQ(Describe(AfterDpiChange(view, view.GetFileEdit())), Describe(edit));
}

// ---- Font and colour chooser ------------------------------------------------------------

using FontColorDpiTest = ChooserDpiTest;

TEST_F(FontColorDpiTest, PreviewButtonAndFontScaleAndComeBackAfterADpiChange) {
    XBaseColorControlNew chooser;
    const int width = S(300), height = S(28);
    ASSERT_TRUE(chooser.CreateCtrl(L"", WS_CHILD | WS_VISIBLE, RECT{10, 10, 10 + width, 10 + height}, host_, 100));
    const RECT preview = RectIn(chooser, *chooser.GetPreview());
    const RECT button = RectIn(chooser, *chooser.GetButton());
    EXPECT_EQ(Describe(preview), Describe(RECT{S(2), S(2), width - S(40), height - S(2)}));
    EXPECT_EQ(Describe(button), Describe(RECT{width - S(38), S(2), width - S(2), height - S(2)}));
    const struct { int size; } sizes[] = {{12}, {20}};
    for (const auto& s : sizes) {
        chooser.SetFontSize(s.size);
        LOGFONTW lf{};
        ASSERT_TRUE(::GetObjectW(chooser.GetPreviewFont(), sizeof lf, &lf));
        EXPECT_EQ(lf.lfHeight, S(s.size)) << "a size is pixels at 96 DPI";
    }
    EXPECT_EQ(Describe(AfterDpiChange(chooser, *chooser.GetPreview())), Describe(preview));
    EXPECT_EQ(Describe(AfterDpiChange(chooser, *chooser.GetButton())), Describe(button));
}

}  // namespace
