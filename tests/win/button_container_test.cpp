// The button container on a real host: one size for every button, the
// layout on each resize in a row and in a column, the tooltips, and the
// buttons' commands and notifications reaching the container's parent.
#include "quorvel/views/button_container.h"

#include <string>
#include <tuple>
#include <vector>

#include "support/host.h"

namespace {

std::tuple<int, int, int, int> Edges(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

const std::vector<XButtonDescription> kThree{
    {L"OK", L"Save and close", 101},
    {L"Cancel", L"Close without saving", 102},
    {L"Help", L"", 103},
};

class ButtonContainerTest : public qvtest::HostTest {
protected:
    // The common button size: six "W"s (the longest caption) plus 5 on each side.
    SIZE Expected() {
        const SIZE text = qvtest::TextExtent(host_, font_, L"WWWWWW");
        return SIZE{text.cx + 10, text.cy + 10};
    }
    std::vector<std::tuple<int, int, int, int>> Places(const XButtonContainer& c) {
        std::vector<std::tuple<int, int, int, int>> places;
        for (int i = 0; i < c.GetButtonCount(); ++i) places.push_back(Edges(qvtest::RectIn(c, c.GetButton(i))));
        return places;
    }
    void Resize(XButtonContainer& c, int cx, int cy) {
        ::SetWindowPos(c, nullptr, 0, 0, cx, cy, SWP_NOMOVE | SWP_NOZORDER);
    }
};

TEST_F(ButtonContainerTest, ARowLaysOutWhatFitsOnEveryResize) {
    XButtonContainer bar(font_, XButtonContainer::kHorizontal, kThree);
    ASSERT_TRUE(bar.Create(RECT{10, 10, 20, 20}, host_, 77));  // too small for any button
    const SIZE b = Expected();
    ASSERT_EQ(bar.GetButtonCount(), 3);
    const auto provisional = std::make_tuple(0, 5, 5, 5);
    auto at = [&](int i, int cy) {
        const int x = 5 + i * (b.cx + 5), y = 5 + (cy - 10 - b.cy) / 2;
        return std::make_tuple(x, y, x + b.cx, y + b.cy);
    };
    const SIZE min = bar.GetMinSize();
    EXPECT_EQ(min.cx, 3 * (b.cx + 5) + 5);
    EXPECT_EQ(min.cy, b.cy + 10);
    EXPECT_EQ(Places(bar), (std::vector{provisional, provisional, provisional}));

    const struct { const char* name; int cx, cy; std::vector<std::tuple<int, int, int, int>> places; } cases[] = {
        {"two fit", min.cx - 1, 60, {at(0, 60), at(1, 60), provisional}},
        {"all fit, centred", min.cx, 60, {at(0, 60), at(1, 60), at(2, 60)}},
        {"wider and at the minimum height", 600, min.cy, {at(0, min.cy), at(1, min.cy), at(2, min.cy)}},
        {"too low: everything stays", 600, min.cy - 1, {at(0, min.cy), at(1, min.cy), at(2, min.cy)}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Resize(bar, c.cx, c.cy);
        EXPECT_EQ(Places(bar), c.places);
    }
}

TEST_F(ButtonContainerTest, AColumnStartsAtTheTopOneSpacingFurtherIn) {
    XButtonContainer column(font_, XButtonContainer::kVertical, kThree);
    ASSERT_TRUE(column.Create(RECT{10, 10, 300, 300}, host_, 78));
    const SIZE b = Expected();
    std::vector<std::tuple<int, int, int, int>> expected;
    for (int i = 0; i < 3; ++i) expected.emplace_back(10, 5 + i * (b.cy + 5), 10 + b.cx, 5 + i * (b.cy + 5) + b.cy);
    EXPECT_EQ(Places(column), expected);
    const SIZE min = column.GetMinSize();
    EXPECT_EQ(std::make_pair(min.cx, min.cy), std::make_pair(b.cx + 10, 3 * (b.cy + 5) + 5));
}

TEST_F(ButtonContainerTest, CommandsNotificationsAndTooltipsReachTheParent) {
    std::vector<std::tuple<UINT, UINT, HWND>> commands;
    std::vector<UINT> notifications;
    qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM lp) {
        if (msg == WM_COMMAND) commands.emplace_back(LOWORD(wp), HIWORD(wp), reinterpret_cast<HWND>(lp));
        if (msg == WM_NOTIFY && reinterpret_cast<NMHDR*>(lp)->code == NM_SETFOCUS)
            notifications.push_back(static_cast<UINT>(reinterpret_cast<NMHDR*>(lp)->idFrom));
    });
    XButtonContainer bar(font_, XButtonContainer::kHorizontal, kThree);
    ASSERT_TRUE(bar.Create(RECT{10, 10, 400, 60}, host_, 77));

    ::SendMessageW(bar.GetButton(1), BM_CLICK, 0, 0);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0], std::make_tuple(102u, static_cast<UINT>(BN_CLICKED), bar.GetButton(1)));

    NMHDR hdr{bar.GetButton(2), 103, static_cast<UINT>(NM_SETFOCUS)};
    ::SendMessageW(bar, WM_NOTIFY, 103, reinterpret_cast<LPARAM>(&hdr));
    EXPECT_EQ(notifications, std::vector<UINT>{103});

    // Buttons with a tooltip text have a tool; "Help" has none.
    EXPECT_EQ(::SendMessageW(bar.GetToolTip(), TTM_GETTOOLCOUNT, 0, 0), 2);
    wchar_t text[80] = {};
    TTTOOLINFOW ti{};
    ti.cbSize = TTTOOLINFOW_V2_SIZE;
    ti.hwnd = bar;
    ti.uId = reinterpret_cast<UINT_PTR>(bar.GetButton(1));
    ti.lpszText = text;
    ::SendMessageW(bar.GetToolTip(), TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&ti));
    EXPECT_EQ(std::wstring(text), L"Close without saving");
}

}  // namespace
