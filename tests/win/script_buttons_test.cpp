// Script buttons on a real window: a click reaches the owner as the posted
// command message, groups report and take their sizes, and the script
// container puts its "..." button on the chosen side with its tooltip and
// passes the button's and the control's notifications on to its parent.
#include "quorvel/controls/script_buttons.h"

#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "quorvel/frame/services.h"
#include "support/host.h"

namespace {

using qvtest::MessageSpy;
using qvtest::Pump;
using qvtest::RectIn;

// A rectangle as a comparable, printable value.
std::tuple<LONG, LONG, LONG, LONG> Edges(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }

constexpr UINT kClicked = XBaseScriptBtn_Group::kMsgScriptButtonClicked;

struct Seen {
    UINT msg;
    WPARAM wp;
    LPARAM lp;
    bool operator==(const Seen&) const = default;
};
void PrintTo(const Seen& s, std::ostream* os) {
    *os << std::hex << "{0x" << s.msg << ", 0x" << s.wp << ", 0x" << s.lp << "}";
}

class ScriptButtonsTest : public qvtest::HostTest {
protected:
    // Records the messages of `kind` that reach the host.
    std::vector<Seen> Watch(UINT kind, const std::function<void()>& act) {
        std::vector<Seen> seen;
        MessageSpy spy(host_, [&](UINT msg, WPARAM wp, LPARAM lp) {
            if (msg == kind) seen.push_back({msg, wp, lp});
        });
        act();
        Pump(50);
        return seen;
    }
    const std::vector<std::pair<int, std::wstring>> commands_{{101, L"Run"}, {102, L"Recalculate plan"}, {103, L"Export"}};
    void Fill(XBaseScriptBtn_Group& group, int alignment) {
        for (const auto& [id, text] : commands_) ASSERT_TRUE(group.AddScriptCommand(id, text));
        group.SetAlignment(alignment);
    }
    void Resize(HWND wnd, int cx, int cy) { ::SetWindowPos(wnd, nullptr, 0, 0, cx, cy, SWP_NOMOVE | SWP_NOZORDER); }
};

TEST_F(ScriptButtonsTest, ClickPostsTheCommandIdToTheOwner) {
    XBaseScriptBtn_Group group;
    ASSERT_TRUE(group.Create(7, RECT{10, 10, 300, 200}, font_, host_));
    Fill(group, XBaseScriptBtn_Group::kAlignVertical);
    group.UpdateSize();
    Resize(group, group.GetMaxWidth(), 150);
    ASSERT_EQ(group.GetScriptCommandCount(), 3);

    for (int i = 0; i < 3; ++i) {
        XBaseSCriptButton* button = group.GetScriptButton(i);
        ASSERT_NE(button, nullptr);
        const LPARAM id = commands_[static_cast<size_t>(i)].first;
        // A keyboard or programmatic press ...
        EXPECT_EQ(Watch(kClicked, [&] { button->Click(); }), (std::vector<Seen>{{kClicked, 0, id}})) << i;
        // ... and the mouse, pressed and released over the button.
        EXPECT_EQ(Watch(kClicked,
                        [&] {
                            ::SendMessageW(*button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
                            ::SendMessageW(*button, WM_LBUTTONUP, 0, MAKELPARAM(4, 4));
                        }),
                  (std::vector<Seen>{{kClicked, 0, id}}))
            << i;
    }
    // Released outside the button: no click.
    XBaseSCriptButton* first = group.GetScriptButton(0);
    EXPECT_TRUE(Watch(kClicked, [&] {
                    ::SendMessageW(*first, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
                    ::SendMessageW(*first, WM_LBUTTONUP, 0, MAKELPARAM(-40, -40));
                }).empty());
    EXPECT_EQ(group.GetScriptButton(3), nullptr);
}

TEST_F(ScriptButtonsTest, ClickWithoutAnOwnerWindowPostsNothing) {
    HWND first = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 300, 200, host_, nullptr, nullptr, nullptr);
    XBaseScriptBtn_Group group;
    ASSERT_TRUE(group.Create(7, RECT{10, 10, 300, 200}, font_, first));
    Fill(group, XBaseScriptBtn_Group::kAlignVertical);
    ::SetParent(group, host_);  // the group lives on, its owner goes
    ::DestroyWindow(first);
    ASSERT_TRUE(group.IsWindow());
    EXPECT_TRUE(Watch(kClicked, [&] { group.GetScriptButton(1)->Click(); }).empty());

    XBaseScriptBtn_Group orphan;
    EXPECT_EQ(orphan.Create(7, RECT{0, 0, 10, 10}, font_, nullptr), 0);
    EXPECT_FALSE(orphan.AddScriptCommand(1, L"x"));
}

TEST_F(ScriptButtonsTest, GroupsReportTheirSizeAndLayOutTheirButtons) {
    // Button sizes come from the texts in the group's font.
    int widest = 0;
    std::vector<int> heights;
    for (const auto& c : commands_) {
        const SIZE extent = qvtest::TextExtent(host_, font_, c.second);
        widest = std::max<int>(widest, extent.cx + 12);
        heights.push_back(extent.cy + 4);
    }
    const int h = heights.front();
    const struct {
        int alignment;
        int minCx, minCy, maxCx, maxCy;
    } cases[] = {
        {XBaseScriptBtn_Group::kAlignVertical, widest + 5, 3 * (h + 5) + 5, widest + 5, 3 * (h + 5) + 5},
        {XBaseScriptBtn_Group::kAlignHorizontal, widest + 5, 3 * h + 5, widest + 10, 3 * h + 5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.alignment);
        XBaseScriptBtn_Group group;
        ASSERT_TRUE(group.Create(7, RECT{10, 10, 400, 300}, font_, host_));
        Fill(group, c.alignment);
        // Before UpdateSize the layout gives the buttons no width.
        Resize(group, 390, 280);
        EXPECT_EQ(RectIn(group, *group.GetScriptButton(1)).right - RectIn(group, *group.GetScriptButton(1)).left, 0);

        group.UpdateSize();
        EXPECT_EQ(std::tuple(group.GetMinWidth(), group.GetMinHeight(), group.GetMaxWidth(), group.GetMaxHeight()),
                  std::tuple(c.minCx, c.minCy, c.maxCx, c.maxCy));
        std::vector<RECT> at;
        for (int i = 0; i < 3; ++i) at.push_back(RectIn(group, *group.GetScriptButton(i)));
        for (size_t i = 0; i < at.size(); ++i) {
            EXPECT_EQ(at[i].right - at[i].left, widest) << i;
            EXPECT_EQ(at[i].bottom - at[i].top, heights[i]) << i;
        }
        EXPECT_EQ(at[0].top, 5);
        if (c.alignment == XBaseScriptBtn_Group::kAlignVertical) {
            // One column, evenly spaced, the room of one more button left free.
            EXPECT_EQ(at[1].top - at[0].top, at[2].top - at[1].top);
            EXPECT_GE(280 - at[2].bottom, h);
            for (const RECT& r : at) EXPECT_EQ(r.left, 0);
        } else {
            // One row when the group is wide enough ...
            EXPECT_TRUE(at[0].left == 0 && at[0].right < at[1].left && at[1].right < at[2].left);
            EXPECT_TRUE(at[1].top == 5 && at[2].top == 5);
            // ... one button per row when it is as narrow as a button.
            Resize(group, widest, 280);
            for (int i = 0; i < 3; ++i) at[i] = RectIn(group, *group.GetScriptButton(i));
            EXPECT_TRUE(at[0].left == 0 && at[1].left == 0 && at[2].left == 0);
            EXPECT_TRUE(at[0].bottom <= at[1].top && at[1].bottom <= at[2].top);
        }
    }
    XBaseScriptBtn_Group empty;
    ASSERT_TRUE(empty.Create(8, RECT{0, 0, 50, 50}, font_, host_));
    empty.UpdateSize();
    EXPECT_EQ(std::tuple(empty.GetMinWidth(), empty.GetMinHeight()), std::tuple(5, 5));
}

TEST_F(ScriptButtonsTest, ContainerPutsTheButtonOnItsSideAndForwardsNotifications) {
    qv::CatalogTranslation german;
    ASSERT_TRUE(german.LoadText(L"Execute script\tSkript ausf\u00fchren\n"));
    qv::Services::SetTranslation(&german);
    const struct {
        XScriptContainer::BtnPos pos;
        int cx, cy;
        RECT control, button;
    } cases[] = {
        {XScriptContainer::PosRight, 200, 60, {15, 15, 140, 45}, {155, 15, 185, 35}},
        {XScriptContainer::PosTop, 200, 100, {15, 50, 185, 85}, {85, 15, 115, 35}},
        {XScriptContainer::PosBottom, 200, 100, {15, 15, 185, 50}, {85, 65, 115, 85}},
        {XScriptContainer::PosLeft, 200, 60, {60, 15, 185, 45}, {15, 15, 45, 35}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.pos);
        HWND edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_BORDER, 0, 0, 10, 10, host_,
                                      reinterpret_cast<HMENU>(40), nullptr, nullptr);
        XScriptContainer box(edit, c.pos, 41);
        ASSERT_TRUE(box.Create(RECT{10, 10, 10 + c.cx, 10 + c.cy}, host_, 42));
        EXPECT_EQ(::GetParent(edit), box.m_hWnd);
        EXPECT_TRUE(::IsWindowVisible(edit));
        EXPECT_EQ(Edges(RectIn(box, edit)), Edges(c.control));
        EXPECT_EQ(Edges(RectIn(box, box.GetButton())), Edges(c.button));
        EXPECT_EQ(qvtest::TextOf(box.GetButton()), L"...");

        // The tooltip of the button, in the user's language.
        wchar_t tip[80] = L"";
        TTTOOLINFOW ti{};
        ti.cbSize = TTTOOLINFOW_V2_SIZE;
        ti.hwnd = box;
        ti.uId = reinterpret_cast<UINT_PTR>(box.GetButton());
        ti.lpszText = tip;
        ::SendMessageW(box.GetToolTipCtrl(), TTM_GETTEXTW, std::size(tip), reinterpret_cast<LPARAM>(&ti));
        EXPECT_STREQ(tip, L"Skript ausf\u00fchren");

        // The button's press and the control's changes reach the host.
        const auto pressed = Watch(WM_COMMAND, [&] { ::SendMessageW(box.GetButton(), BM_CLICK, 0, 0); });
        EXPECT_EQ(pressed, (std::vector<Seen>{{WM_COMMAND, MAKEWPARAM(41, BN_CLICKED),
                                               reinterpret_cast<LPARAM>(box.GetButton())}}));
        const auto changed = Watch(WM_COMMAND, [&] { ::SetWindowTextW(edit, L"x"); });
        EXPECT_NE(std::find(changed.begin(), changed.end(),
                            Seen{WM_COMMAND, MAKEWPARAM(40, EN_CHANGE), reinterpret_cast<LPARAM>(edit)}),
                  changed.end());
    }
    qv::Services::SetTranslation(nullptr);

    // Moving the button re-lays the container out.
    HWND edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 10, 10, host_, nullptr, nullptr, nullptr);
    XScriptContainer box(edit, XScriptContainer::PosRight, 41);
    ASSERT_TRUE(box.Create(RECT{10, 10, 210, 110}, host_, 42));
    box.SetButtonPos(XScriptContainer::PosBottom);
    const RECT bottom{85, 65, 115, 85};
    EXPECT_EQ(Edges(RectIn(box, box.GetButton())), Edges(bottom));
}

TEST_F(ScriptButtonsTest, ContainerWithLimitsAndWithoutAControl) {
    HWND edit = ::CreateWindowExW(0, L"EDIT", L"", WS_CHILD, 0, 0, 10, 10, host_, nullptr, nullptr, nullptr);
    XScriptContainer::ConstructParam p;
    p.pControl = edit;
    p.bUseLimits = true;  // 50..100 wide, 15..30 high
    p.nButtonId = 43;
    p.ePosition = XScriptContainer::PosRight;
    p.strCaption = L"Run";
    p.nMargin = 10;
    XScriptContainer box(p);
    ASSERT_TRUE(box.Create(RECT{0, 0, 300, 100}, host_, 44));
    const RECT control{10, 10, 110, 40}, button{120, 10, 150, 30};
    EXPECT_EQ(Edges(RectIn(box, edit)), Edges(control));
    EXPECT_EQ(Edges(RectIn(box, box.GetButton())), Edges(button));
    EXPECT_EQ(qvtest::TextOf(box.GetButton()), L"Run");

    // Without a control no container is made, and no window stays behind.
    XScriptContainer none(nullptr, XScriptContainer::PosTop, 45);
    EXPECT_FALSE(none.Create(RECT{0, 0, 100, 100}, host_, 46));
    EXPECT_FALSE(none.IsWindow());
    EXPECT_EQ(::GetDlgItem(host_, 46), nullptr);
    EXPECT_EQ(::GetDlgItem(host_, 45), nullptr);
}

}  // namespace
