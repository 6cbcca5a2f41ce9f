// The base combo, list and check-list boxes on real controls: focus keys
// through a form, tooltips, colours, the coloured combo box's drop-down size
// and the tabbed check list.
#include "quorvel/controls/base_lists.h"

#include <algorithm>
#include <vector>

#include "quorvel/frame/services.h"
#include "support/host.h"

namespace {

using qvtest::TypeChars;

using BaseListsTest = qvtest::HostTest;

// Rows 40 pixels apart for fields `height` high (the drop-down lists included).
RECT ListRow(int i, int height = 24) { return RECT{10, 10 + 40 * i, 250, 10 + 40 * i + height}; }

// One of each field, in tab order, ids 1 to 6.
struct Form {
    XBaseEdit edit;
    XBaseMultiLineEdit lines;
    XBaseComboBox combo;
    XBaseEditComboBox editCombo;
    XBaseListBox list;
    XBaseCheckListBox checks;

    bool Create(HWND host, HFONT font) {
        return edit.Create(L"Edit text", 1, ListRow(0), font, host) &&
               lines.Create(L"", 2, ListRow(1, 36), font, host) && combo.Create(L"", 3, ListRow(2, 120), font, host) &&
               editCombo.Create(L"typed", 4, ListRow(3, 120), font, host) &&
               list.Create(L"", 5, ListRow(4, 36), font, host) && checks.Create(L"", 6, ListRow(5, 60), font, host);
    }
};

TEST_F(BaseListsTest, NoFieldWithoutALiveParent) {
    HWND gone = qvtest::CreateHostWindow();
    ::DestroyWindow(gone);
    Form late;
    EXPECT_FALSE(late.Create(gone, font_));
    EXPECT_FALSE(late.combo.Create(L"", 3, ListRow(0), font_, nullptr));
    EXPECT_FALSE(late.checks.Create(L"", 6, ListRow(0), font_, gone));
}

TEST_F(BaseListsTest, TabAndEnterWalkThroughTheForm) {
    Form form;
    ASSERT_TRUE(form.Create(host_, font_));
    HWND part = form.editCombo.GetEditPart();
    ASSERT_NE(part, nullptr);
    // Where each key is typed, and where the focus must be afterwards.
    const struct { HWND typedInto; const wchar_t* key; bool shift; HWND focus; } steps[] = {
        {form.edit, L"\t", false, form.lines},    {form.lines, L"\t", false, form.combo},
        {form.combo, L"\r", false, part},         {part, L"\t", false, form.list},
        {form.list, L"\r", false, form.checks},   {form.checks, L"\t", false, form.edit},
        // Backwards: round to the last field, out of the edit part, out of the multi-line edit.
        {form.edit, L"\t", true, form.checks},    {part, L"\r", true, form.combo},
        {form.lines, L"\t", true, form.edit},
    };
    form.edit.SetFocus();
    {
        qvtest::HeldKey shift(VK_SHIFT, false);
        for (const auto& s : steps) {
            SCOPED_TRACE(testing::Message() << ::GetDlgCtrlID(s.typedInto) << (s.shift ? " back" : ""));
            shift.Set(s.shift);
            TypeChars(s.typedInto, s.key);
            EXPECT_EQ(::GetFocus(), s.focus);
        }
    }
    EXPECT_EQ(qvtest::TextOf(part), L"typed");  // the keys were not typed into it
    EXPECT_EQ(form.editCombo.GetTooltipText(), L"typed");
    EXPECT_EQ(qvtest::TextOf(form.lines), L"");
}

TEST_F(BaseListsTest, TheMouseReachesTheTooltipWithoutTheHostsHelp) {
    // Tooltips are on when the settings give them a display time.
    qv::Services::DefaultSettings().Set(L"Common", L"tooltipdelaytime", L"5");
    XTooltip::ResetProcessSettings();
    Form form;
    ASSERT_TRUE(form.Create(host_, font_));
    // hovered: the combo box's edit part for the combo box
    const struct { HWND hovered; XTooltip* tooltip; } cases[] = {
        {form.edit, form.edit.GetTooltip()}, {form.editCombo.GetEditPart(), form.editCombo.GetTooltip()},
        {form.checks, form.checks.GetTooltip()}};
    for (const auto& c : cases) {
        SCOPED_TRACE(::GetDlgCtrlID(c.hovered));
        ASSERT_TRUE(c.tooltip && c.tooltip->IsWindow());
        c.tooltip->SetDelayTime(XTooltip::kDelayInitial, 20);
        RECT rc{};
        ::GetWindowRect(c.hovered, &rc);
        ::SetCursorPos(rc.left + 5, rc.top + 5);
        EXPECT_TRUE(qvtest::WaitFor([&] { return c.tooltip->IsVisible() != FALSE; }, 1000));
        c.tooltip->Pop();
    }
}

TEST_F(BaseListsTest, TooltipTexts) {
    XBaseCheckListBox checks;
    ASSERT_TRUE(checks.Create(L"", 1, ListRow(0, 120), font_, host_));
    EXPECT_EQ(checks.GetTooltipText(), L"0 of 0 selected");
    ASSERT_TRUE(checks.SetCheckStyle(BS_AUTO3STATE));
    for (int state : {1, 0, 1, 2, 1}) checks.SetCheck(checks.AddString(L"item"), state);
    EXPECT_EQ(checks.CreateTooltip(), 0);
    EXPECT_EQ(checks.GetTooltipText(), L"3 of 5 selected");
    ASSERT_NE(checks.GetTooltip(), nullptr);
    ASSERT_EQ(checks.GetTooltip()->GetToolCount(), 1);  // the text was replaced, not added
    tagXTOOLTIP_INFO tool;
    ASSERT_TRUE(checks.GetTooltip()->GetTool(0, tool));
    EXPECT_EQ(tool.szText, L"3 of 5 selected");

    XBaseComboBox combo;
    ASSERT_TRUE(combo.Create(L"", 2, ListRow(1, 120), font_, host_));
    combo.SetCurSel(combo.AddString(L"Second choice"));
    combo.CreateTooltip();
    EXPECT_EQ(combo.GetTooltipText(), L"Second choice");
    MSG msg{combo, WM_MOUSEMOVE, 0, 0, 0, {}};
    EXPECT_FALSE(combo.PreTranslateMessage(&msg));
}

TEST_F(BaseListsTest, CheckListPaintsInItsOwnColours) {
    XBaseReadOnlyCheckListBox checks;
    ASSERT_TRUE(checks.Create(L"", 1, ListRow(0, 120), font_, host_));
    // What the screen shows below the (missing) items.
    auto emptyArea = [&] {
        ::RedrawWindow(checks, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        qvtest::Pump(50);
        HDC screen = ::GetDC(checks);
        const COLORREF pixel = ::GetPixel(screen, 20, 60);
        ::ReleaseDC(checks, screen);
        return pixel;
    };
    EXPECT_EQ(emptyArea(), RGB(5, 0, 0));
    XBaseReadOnlyColor& readOnly = checks;
    readOnly.SetBkColor(RGB(0, 0, 200));
    EXPECT_EQ(emptyArea(), RGB(0, 0, 200));
}

TEST_F(BaseListsTest, ColouredComboDropsTenOrFiveRows) {
    // Fonts whose "W" is 19 and 20 pixels high: 19 + 11 = 30 makes ten rows,
    // 20 + 11 = 31 only five.
    const struct { int fontHeight, dropped; } cases[] = {{19, 300}, {20, 155}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fontHeight);
        HFONT font = ::CreateFontW(c.fontHeight, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
        XBaseComboBoxColor combo;
        ASSERT_TRUE(combo.Create(L"", 1, ListRow(0, 100), font, host_));
        combo.AddString(L"short");
        combo.AddString(L"a considerably longer item than the combo box is wide");
        ASSERT_EQ(qvtest::TextExtent(combo, font, L"W").cy, c.fontHeight);
        // The height asked for as the list drops (the combo box itself then
        // keeps its field's height and gives the rest to the list).
        int asked = 0;
        qvtest::MessageSpy spy(combo, [&](UINT msg, WPARAM, LPARAM lp) {
            const auto* pos = reinterpret_cast<const WINDOWPOS*>(lp);
            if (msg == WM_WINDOWPOSCHANGING && !(pos->flags & SWP_NOSIZE)) asked = (std::max)(asked, pos->cy);
        });
        combo.ShowDropDown(true);
        EXPECT_EQ(asked, c.dropped);
        EXPECT_GT(combo.SendMessage(CB_GETDROPPEDWIDTH), 240);
        combo.ShowDropDown(false);
        combo.DestroyWindow();
        ::DeleteObject(font);
    }
}

TEST_F(BaseListsTest, TabbedCheckListStopsAndDrawing) {
    XTabCheckListBox tabbed;
    ASSERT_TRUE(tabbed.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS,
                              ListRow(0, 120), host_, 1));
    HFONT wide = ::CreateFontW(16, 8, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma");
    tabbed.SetFont(wide);
    EXPECT_EQ(tabbed.GetAverageCharWidths(), 8);  // the font's own width
    tabbed.SetTabStops();
    EXPECT_EQ(tabbed.GetTabStopPixels(), std::vector<int>{4});
    EXPECT_FALSE(tabbed.SetTabStops(-1));
    int good[] = {10, 20, 41};
    EXPECT_TRUE(tabbed.SetTabStops(3, good));
    EXPECT_EQ(tabbed.GetTabStopPixels(), (std::vector<int>{20, 40, 82}));
    int disordered[] = {30, 30, 50, 60};
    EXPECT_FALSE(tabbed.SetTabStops(4, disordered));  // count set, the rest left as it was
    EXPECT_EQ(tabbed.GetTabStopPixels(), (std::vector<int>{60, 40, 82, 0}));

    // Items of a variable-height list only as high as the minimum are logged when drawn.
    auto& log = qv::Services::DefaultLogBook();
    tabbed.AddString(L"a\tb");
    tabbed.UpdateWindow();
    ASSERT_FALSE(log.Entries().empty());
    EXPECT_EQ(qvtest::Describe(log.Entries().back()),
              L"Quorvel| XTabCheckListBox::DrawItem()|2073|VERIFY(cyItem >= CalcMinimumItemHeight())|80004005");

    log.Clear();
    XTabCheckListBox fixed;
    ASSERT_TRUE(fixed.Create(WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS, ListRow(4, 60), host_, 2));
    fixed.AddString(L"a\tb");
    fixed.UpdateWindow();
    EXPECT_TRUE(log.Entries().empty());
    tabbed.DestroyWindow();
    ::DeleteObject(wide);
}

}  // namespace
