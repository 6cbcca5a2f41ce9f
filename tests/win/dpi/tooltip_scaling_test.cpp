// The tooltip at the DPI the test runs at: its font, margins, shadow, anchor
// and the offset below its owner's line are the 96-DPI sizes scaled, and a
// tooltip on screen lays itself out again when its DPI changes.
#include <tuple>

#include "quorvel/controls/base_edit.h"
#include "quorvel/platform/dpi.h"
#include "support/host.h"

namespace {

class TooltipDpiTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        UseSettings({{L"tooltipdelaytime", L"5"}});
        HostTest::SetUp();
        dpi_ = qv::DpiOf(host_);
    }
    int S(int length) const { return qv::ScaleToDpi(length, dpi_); }
    // An edit whose tooltip shows its text, hovered from outside until it shows.
    bool Show(XBaseEdit& edit, const wchar_t* text, UINT styles = XTooltip::kDefaultStyles, int anchor = 0) {
        if (!edit.Create(text, 1, RECT{20, 20, 300, 44}, font_, host_)) return false;
        XTooltip& tip = *edit.GetTooltip();
        tip.SetStyles(styles);
        tip.SetSize(XTooltip::kSizeAnchorHeight, anchor);
        tip.SetSize(XTooltip::kSizeAnchorWidth, anchor);
        for (auto [over, p] : {std::pair{host_, POINT{600, 450}}, {edit.m_hWnd, POINT{40, 10}}}) {
            ::ClientToScreen(over, &p);
            ::SetCursorPos(p.x, p.y);
            qvtest::Pump(60);
        }
        return qvtest::WaitFor([&] { return tip.IsVisible() != FALSE; });
    }
    UINT dpi_ = 96;
};

TEST_F(TooltipDpiTest, TheBoxIsTheTextInTheScaledFontWithScaledMarginsShadowAndAnchor) {
    const wchar_t* text = L"Measured tooltip text";
    HFONT font = ::CreateFontW(qv::FontHeightForDpi(10, dpi_), 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0,
                               0, L"Tahoma");
    const SIZE extent = qvtest::TextExtent(nullptr, font, text);
    ::DeleteObject(font);
    const struct {
        UINT styles;
        int anchor;  // anchor height and width at 96 DPI
    } cases[] = {{0, 0}, {XTooltip::kStyleShadow, 0}, {XTooltip::kStyleAnchor, 9}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "styles " << c.styles);
        XBaseEdit edit;
        ASSERT_TRUE(Show(edit, text, c.styles, c.anchor));
        const XTooltip& tip = *edit.GetTooltip();
        EXPECT_EQ(tip.GetFontForDpi(dpi_).lfHeight, qv::FontHeightForDpi(10, dpi_));
        const int shadow = (c.styles & XTooltip::kStyleShadow) ? S(3) : 0;
        const int w = static_cast<int>(extent.cx) + 2 * S(3) + shadow;
        const int h = static_cast<int>(extent.cy) + 2 * S(1) + S(c.anchor) + shadow;
        const RECT wr = tip.GetWindowRect();
        POINT cursor{};
        ::GetCursorPos(&cursor);
        EXPECT_EQ(std::tuple(wr.right - wr.left, wr.bottom - wr.top, wr.top - cursor.y),
                  std::tuple(w + 2L, h + 2L, LONG{S(8)}))
            << "size, and the offset below an edit's line";
        HRGN rgn = ::CreateRectRgn(0, 0, 0, 0);
        ASSERT_NE(::GetWindowRgn(tip, rgn), ERROR);
        RECT box{};
        ::GetRgnBox(rgn, &box);
        ::DeleteObject(rgn);
        EXPECT_EQ(std::tuple(box.right, box.bottom), std::tuple(w + 1L, h + 1L)) << "the window's region";
    }
}

TEST_F(TooltipDpiTest, AShownTooltipIsLaidOutAgainWhenItsDpiChanges) {
    XBaseEdit edit;
    ASSERT_TRUE(Show(edit, L"Laid out again"));
    XTooltip& tip = *edit.GetTooltip();
    const RECT shown = tip.GetWindowRect();
    ::MoveWindow(tip, 0, 0, 7, 7, FALSE);  // as a move to another monitor leaves it
    RECT suggested = shown;
    tip.SendMessage(WM_DPICHANGED, MAKEWPARAM(dpi_, dpi_), reinterpret_cast<LPARAM>(&suggested));
    const RECT again = tip.GetWindowRect();
    EXPECT_EQ(std::tuple(again.left, again.top, again.right, again.bottom),
              std::tuple(shown.left, shown.top, shown.right, shown.bottom));
    // A hidden tooltip has nothing to lay out and stays hidden.
    tip.Pop();
    tip.SendMessage(WM_DPICHANGED, MAKEWPARAM(dpi_, dpi_), reinterpret_cast<LPARAM>(&suggested));
    EXPECT_FALSE(tip.IsVisible());
}

}  // namespace
