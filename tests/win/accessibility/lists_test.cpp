// What a screen reader hears from the lists: rows as items named by their
// first shown column and valued by the others with their titles, the
// header's columns with the sort direction, the events of a sort and of
// changed figures, and the filtering combo box named by its label.
#include <oleacc.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "quorvel/controls/static_text.h"
#include "quorvel/frame/services.h"
#include "quorvel/lists/cfg_list.h"
#include "quorvel/lists/custom_combo.h"
#include "quorvel/lists/list_ctrl.h"
#include "quorvel/platform/imagelist.h"
#include "quorvel/valueadded/value_added.h"
#include "support/accessibility.h"
#include "support/host.h"
#include "value_added_host.h"

namespace {

using qvtest::AccessibleOf;
using qvtest::WinEventRecorder;

class ListsAccessibilityTest : public qvtest::HostTest {
protected:
    // The report list under the label "Orders", with three columns and rows
    // of a part, a quantity and a note; `cfg` makes a configuration list,
    // `images` a report list with an image column before them.
    HWND MakeList(bool cfg, bool images) {
        label_ = std::make_unique<XBaseStaticText>();
        EXPECT_TRUE(label_->Create(L"&Orders", 100, Row(0), font_, host_));
        const RECT rect{10, 40, 420, 300};
        const DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_BORDER | LVS_REPORT;
        const int first = images ? 1 : 0;
        const wchar_t* titles[] = {L"Part", L"Qty", L"Note"};
        const std::vector<std::vector<const wchar_t*>> rows = {
            {L"Bolt", L"3", L"zinc"}, {L"Nut", L"5", L""}, {L"Washer", L"12", L"steel"}};
        if (cfg) {
            cfg_ = std::make_unique<XCfgListCtrl>();
            EXPECT_TRUE(cfg_->Create(style, rect, host_, 101));
            for (int c = 0; c < 3; ++c) cfg_->InsertColumn(c, titles[c], LVCFMT_LEFT, 100);
            for (int r = 0; r < 3; ++r) {
                cfg_->InsertItem(r, rows[r][0]);
                for (int c = 1; c < 3; ++c) cfg_->SetItemText(r, c, rows[r][c]);
            }
            return cfg_->m_hWnd;
        }
        report_ = std::make_unique<XBaseListCtrl>();
        if (images) {
            images_.Create(16, 16, ILC_COLOR32 | ILC_MASK, 1, 1);
            HICON icon = ::LoadIconW(nullptr, IDI_APPLICATION);
            images_.Add(icon);
            report_->AssignImageList(&images_);
        }
        EXPECT_TRUE(report_->Create(style, rect, host_, 101));
        if (images) report_->InsertColumn(0, L"", LVCFMT_LEFT, 24);
        for (int c = 0; c < 3; ++c) report_->InsertColumn(first + c, titles[c], LVCFMT_LEFT, 100);
        for (int r = 0; r < 3; ++r) {
            std::vector<qv::Variant> values;
            for (const wchar_t* text : rows[r]) values.emplace_back(text);
            EXPECT_TRUE(report_->AddEntry(values, r, images ? 0 : -1));
        }
        return report_->m_hWnd;
    }

    std::unique_ptr<XBaseStaticText> label_;
    qv::ImageList images_;
    std::unique_ptr<XBaseListCtrl> report_;
    std::unique_ptr<XCfgListCtrl> cfg_;
};

TEST_F(ListsAccessibilityTest, RowsAreItemsNamedByTheirFirstShownColumn) {
    const struct { const char* what; bool cfg, images; } lists[] = {
        {"report list", false, false}, {"report list with pictures", false, true}, {"configuration list", true, false},
    };
    for (const auto& l : lists) {
        SCOPED_TRACE(l.what);
        HWND list = MakeList(l.cfg, l.images);
        const int first = l.images ? 1 : 0;
        const auto acc = AccessibleOf(list);
        ASSERT_TRUE(acc);
        EXPECT_EQ(acc.Name(), L"Orders");
        EXPECT_EQ(acc.Role(), ROLE_SYSTEM_LIST);
        EXPECT_EQ(acc.ChildCount(), 3);
        EXPECT_EQ(acc.Name(1), L"Bolt");
        EXPECT_EQ(acc.Value(1), L"Qty: 3; Note: zinc");
        EXPECT_EQ(acc.Value(2), L"Qty: 5") << "an empty cell is not read";
        EXPECT_EQ(acc.Role(3), ROLE_SYSTEM_LISTITEM);
        EXPECT_EQ(acc.Role(4), -1) << "no fourth row";

        // Selection and focus as the list view has them.
        ::SetFocus(list);
        ListView_SetItemState(list, 2, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        EXPECT_EQ(acc.State(1) & (STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED), 0);
        EXPECT_EQ(acc.State(3) & (STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED | STATE_SYSTEM_SELECTABLE),
                  STATE_SYSTEM_SELECTED | STATE_SYSTEM_FOCUSED | STATE_SYSTEM_SELECTABLE);

        // The columns in the order the user dragged them to.
        int order[] = {first + 2, first, first + 1, 0};
        if (l.images) std::rotate(order, order + 3, order + 4);  // the image column stays first
        Header_SetOrderArray(ListView_GetHeader(list), first + 3, order);
        EXPECT_EQ(acc.Name(1), L"zinc");
        EXPECT_EQ(acc.Value(1), L"Part: Bolt; Qty: 3");
        ::DestroyWindow(list);
    }
}

// Every text the lists add for a reader goes through the translation.
struct Brackets : qv::ITranslationService {
    std::wstring Translate(std::wstring_view text) override { return L"[" + std::wstring(text) + L"]"; }
};
struct TranslatedBy {
    explicit TranslatedBy(qv::ITranslationService* service) { qv::Services::SetTranslation(service); }
    ~TranslatedBy() { qv::Services::SetTranslation(nullptr); }
};

TEST_F(ListsAccessibilityTest, TheHeaderTellsTheSortColumnAndASortIsAnnounced) {
    Brackets brackets;
    const TranslatedBy translated(&brackets);
    const struct { const char* what; bool cfg; } lists[] = {{"report list", false}, {"configuration list", true}};
    for (const auto& l : lists) {
        SCOPED_TRACE(l.what);
        HWND list = MakeList(l.cfg, false);
        HWND header = ListView_GetHeader(list);
        const auto acc = AccessibleOf(header);
        ASSERT_TRUE(acc);
        EXPECT_EQ(acc.ChildCount(), 3);
        EXPECT_EQ(acc.Name(2), L"Qty");
        EXPECT_EQ(acc.Role(2), ROLE_SYSTEM_COLUMNHEADER);
        EXPECT_EQ(acc.Description(2), L"");

        // Sorting by the second column the way a reader does, by its
        // default action: ascending first, then the other way round.
        WinEventRecorder events;
        VARIANT qty;
        qty.vt = VT_I4;
        qty.lVal = 2;
        BSTR action = nullptr;
        ASSERT_EQ(acc.object->get_accDefaultAction(qty, &action), S_OK);
        EXPECT_STREQ(action, L"[Click]");
        ::SysFreeString(action);
        for (const wchar_t* want : {L"[sorted ascending]", L"[sorted descending]"}) {
            events.Clear();
            ASSERT_EQ(acc.object->accDoDefaultAction(qty), S_OK);
            EXPECT_EQ(acc.Description(2), want);
            EXPECT_EQ(acc.Description(1), L"");
            const auto changed = events.Events(header, EVENT_OBJECT_DESCRIPTIONCHANGE);
            ASSERT_EQ(changed.size(), 1u) << "one column changed its description";
            EXPECT_EQ(changed[0].child, 2);
            EXPECT_EQ(events.Events(list, EVENT_OBJECT_REORDER).size(), 1u);
        }
        // The quantities are texts: "5" comes first, descending.
        EXPECT_EQ(AccessibleOf(list).Name(1), L"Nut");
        ::DestroyWindow(list);
    }
}

// Rows: 0 Processing, 1 Cutting, 2 Drilling, 3 Transport, 4 Not Assigned.
class ValueAddedAccessibilityTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        ASSERT_TRUE(host_objects_.Create(list_, host_, font_));
    }
    void TearDown() override {
        list_.DestroyWindow();
        HostTest::TearDown();
    }
    qvtest::ValueAddedHost host_objects_{{{1, 0, L"Processing", L"group", true},
                                          {11, 1, L"Cutting", L"step", true},
                                          {12, 1, L"Drilling", L"step", true},
                                          {2, 0, L"Transport", L"group", true}}};
    XValueAddedCtrl list_;
};

TEST_F(ValueAddedAccessibilityTest, RowsReadTheirFiguresAndAChangeIsAnnounced) {
    ASSERT_TRUE(list_.SetValue(L"[FP:0][SID:11][PID:1][TE:900][PE:25][TC:0][PC:10]"));
    const auto acc = AccessibleOf(list_);
    ASSERT_EQ(acc.ChildCount(), 5);
    const struct { long child; const wchar_t* name; const wchar_t* value; } rows[] = {
        {1, L"Processing", L"0.00"}, {2, L"Cutting", L"25.00"}, {5, L"Not Assigned", L"75.00"}};
    for (const auto& r : rows) {
        EXPECT_EQ(acc.Name(r.child), r.name);
        EXPECT_EQ(acc.Value(r.child).rfind(std::wstring(L"Entered Percent [%]: ") + r.value + L"; Entered Time [sec]: ", 0),
                  0u)
            << acc.Value(r.child);
    }
    EXPECT_NE(acc.Value(2).find(L"; Calculated Percent [%]: 10.00; Calculated Time [sec]: 0.00"), std::wstring::npos);

    // SetValue: Drilling changes, and with it what is not assigned; the
    // other rows are not announced.
    WinEventRecorder events;
    ASSERT_TRUE(list_.SetValue(L"[FP:0][SID:11][PID:1][TE:900][PE:25][TC:0][PC:10]|"
                               L"[FP:0][SID:12][PID:1][TE:0][PE:5][TC:0][PC:0]"));
    std::vector<long> changed;
    for (const auto& e : events.Events(list_, EVENT_OBJECT_VALUECHANGE)) changed.push_back(e.child);
    EXPECT_EQ(changed, (std::vector<long>{3, 5}));

    // An edit in place: the field is named by its row and described by its
    // column; taking the value announces the row, its group and the rest.
    list_.SetFocus();
    ASSERT_TRUE(list_.EditRow(1));
    XInPlaceFloatEdit* edit = list_.GetInPlaceEdit();
    ASSERT_NE(edit, nullptr);
    const auto field = AccessibleOf(*edit);
    EXPECT_EQ(field.Name(), L"Cutting");
    EXPECT_EQ(field.Description(), L"Entered Percent [%]");
    events.Clear();
    ::SendMessageW(*edit, EM_SETSEL, 0, -1);
    qvtest::TypeChars(*edit, L"30");
    ::SendMessageW(*edit, WM_CHAR, VK_TAB, 0);
    qvtest::Pump(30);
    changed.clear();
    for (const auto& e : events.Events(list_, EVENT_OBJECT_VALUECHANGE)) changed.push_back(e.child);
    EXPECT_EQ(changed, (std::vector<long>{1, 2, 5}));
    EXPECT_EQ(acc.Value(2).rfind(L"Entered Percent [%]: 30.00;", 0), 0u) << acc.Value(2);
}

TEST_F(ListsAccessibilityTest, TheFilteringComboIsNamedByItsLabelAndDescribedByItsTooltip) {
    XBaseStaticText label;
    ASSERT_TRUE(label.Create(L"&Material", 100, Row(0), font_, host_));
    XCustomCombo combo;
    ASSERT_TRUE(combo.Create(L"Steel", 101, RECT{10, 40, 200, 200}, font_, host_));
    combo.CreateTooltip(L"<b>Filter</b> with * and ?");
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(::GetComboBoxInfo(combo, &info));
    // The combo box and the field inside it, where the caret is.
    for (HWND part : {combo.m_hWnd, info.hwndItem}) {
        const auto acc = AccessibleOf(part);
        ASSERT_TRUE(acc);
        EXPECT_EQ(acc.Name(), L"Material");
        EXPECT_EQ(acc.Value(), L"Steel");
        EXPECT_EQ(acc.Description(), L"Filter with * and ?");
    }
}

}  // namespace
