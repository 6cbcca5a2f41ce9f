// The value-added rules: the value string both ways, the 100 % cap, the
// roll-up into the group, the rows and their "Not Assigned" remainder, and
// the edit and colour decisions.
#include "quorvel/valueadded/value_added_rules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

namespace va = qv::valueadded;

// Group 1 with children 11, 12 (12 not shown); group 2 without children;
// group 3 with child 31.
va::Config Plan() {
    return {
        {1, L"Processing", {{11, L"Cutting", true}, {12, L"Drilling", false}}},
        {2, L"Transport", {}},
        {3, L"Storage", {{31, L"Waiting", true}}},
    };
}

std::wstring Record(int fp, int sid, int pid, const wchar_t* te, const wchar_t* pe, const wchar_t* tc,
                    const wchar_t* pc) {
    return L"[FP:" + std::to_wstring(fp) + L"][SID:" + std::to_wstring(sid) + L"][PID:" + std::to_wstring(pid) +
           L"][TE:" + te + L"][PE:" + pe + L"][TC:" + tc + L"][PC:" + pc + L"]";
}

TEST(ValueAddedRulesTest, EntryCodeKeepsParentLowAndIdHigh) {
    EXPECT_EQ(va::MakeEntryCode(0, 1), 0x10000);
    EXPECT_EQ(va::MakeEntryCode(3, 31), (31 << 16) | 3);
    EXPECT_EQ(va::MakeEntryCode(0x12345, 2), 0x20000 | 0x2345);  // parent cut to 16 bits
}

TEST(ValueAddedRulesTest, ReadsFieldsByShortTagOrLongName) {
    const struct { std::wstring piece; bool ok; va::ValueAddedEntry want; } cases[] = {
        {Record(4, 11, 1, L"120.5", L"12.25", L"3", L"4"), true, {4, 11, 1, 120.5, 12.25, 3, 4}},
        {L"[FORMPOS:4][SUBGROUPID:11][PARENTID:1][TIMEENTERED:1][PERCENTENTERED:2][TIMECALCULATED:3]"
         L"[PERCENTCALCULATED:4]",
         true, {4, 11, 1, 1, 2, 3, 4}},
        // Fields in any order, blanks and a sign, trailing junk, no number.
        {L"[PC:4][TC:3][PE: +2.5x][TE:-1][PID:1][SID:11][FP:abc]", true, {0, 11, 1, -1, 2.5, 3, 4}},
        // Beyond 32 bits: the nearest end; a double too large: infinity.
        {L"[FP:99999999999][SID:-99999999999][PID:0][TE:1e999][PE:1e-999][TC:nan][PC:inf]", true,
         {2147483647, -2147483647 - 1, 0, std::numeric_limits<double>::infinity(), 0.0, 0.0,
          std::numeric_limits<double>::infinity()}},
        // PC missing, an empty field, an unclosed bracket.
        {L"[FP:1][SID:11][PID:1][TE:1][PE:2][TC:3]", false, {}},
        {L"[FP:1][SID:11][PID:1][TE:1][PE:][TC:3][PC:4]", false, {}},
        {L"[FP:1][SID:11][PID:1][TE:1][PE:2][TC:3][PC:4", false, {}},
        {L"[fp:1][SID:11][PID:1][TE:1][PE:2][TC:3][PC:4]", false, {}},  // tags are case-sensitive
    };
    for (const auto& c : cases) {
        va::ValueAddedEntry got;
        ASSERT_EQ(va::ParseRecord(c.piece, got), c.ok) << c.piece;
        if (!c.ok) continue;
        EXPECT_EQ(got.FP, c.want.FP) << c.piece;
        EXPECT_EQ(got.SID, c.want.SID) << c.piece;
        EXPECT_EQ(got.PID, c.want.PID) << c.piece;
        EXPECT_EQ(got.TE, c.want.TE) << c.piece;
        EXPECT_EQ(got.PE, c.want.PE) << c.piece;
        if (std::isnan(c.want.TC) || c.piece.find(L"TC:nan") != std::wstring::npos)
            EXPECT_TRUE(std::isnan(got.TC)) << c.piece;
        else
            EXPECT_EQ(got.TC, c.want.TC) << c.piece;
        EXPECT_EQ(got.PC, c.want.PC) << c.piece;
    }
}

TEST(ValueAddedRulesTest, ValueStringKeepsKnownRecordsAndStopsAtABrokenOne) {
    va::EntryMap entries = va::BlankEntries(Plan());
    const std::wstring good = Record(1, 11, 1, L"60", L"10", L"0", L"0");
    const std::wstring unknown = Record(2, 99, 7, L"1", L"1", L"1", L"1");
    ASSERT_TRUE(va::ParseValueString(L"|" + unknown + L"||" + good + L"|", entries));
    EXPECT_EQ(entries.size(), va::BlankEntries(Plan()).size());  // the unknown record added nothing
    EXPECT_EQ(entries.at(va::MakeEntryCode(1, 11)).PE, 10.0);
    EXPECT_EQ(entries.at(va::MakeEntryCode(1, 11)).FP, 1);

    va::EntryMap broken = va::BlankEntries(Plan());
    EXPECT_FALSE(va::ParseValueString(good + L"|[FP:1][SID:31][PID:3]", broken));
    EXPECT_TRUE(va::ParseValueString(L"", broken));
}

TEST(ValueAddedRulesTest, WrittenStringsReadBackToTheSameText) {
    va::EntryMap entries = va::BlankEntries(Plan());
    entries.at(va::MakeEntryCode(1, 11)) = {7, 11, 1, 1.0 / 3.0, 12.345678912, 1e300, -0.0000004};
    entries.at(va::MakeEntryCode(0, 2)) = {-5, 2, 0, std::numeric_limits<double>::quiet_NaN(),
                                          std::numeric_limits<double>::infinity(),
                                          -std::numeric_limits<double>::infinity(), 99.9999995};
    const std::wstring written = va::WriteValueString(entries);
    EXPECT_NE(written.find(L"[FP:7][SID:11][PID:1][TE:0.333333][PE:12.345679]"), std::wstring::npos) << written;
    EXPECT_NE(written.find(L"[TE:nan][PE:inf][TC:-inf][PC:100.000000]"), std::wstring::npos) << written;
    EXPECT_EQ(written.front(), L'[');
    EXPECT_EQ(written.back(), L']');

    va::EntryMap again = va::BlankEntries(Plan());
    ASSERT_TRUE(va::ParseValueString(written, again));
    EXPECT_EQ(va::WriteValueString(again), written);
}

TEST(ValueAddedRulesTest, CapTakesExactlyTheMaximumAndAlwaysADecrease) {
    const va::Config plan = Plan();
    va::EntryMap entries = va::BlankEntries(plan);
    const va::EntryCode cutting = va::MakeEntryCode(1, 11), transport = va::MakeEntryCode(0, 2),
                        waiting = va::MakeEntryCode(3, 31), processing = va::MakeEntryCode(0, 1);
    entries.at(cutting).PE = 30.1;
    entries.at(transport).PE = 57.56;
    entries.at(processing).PE = 500.0;  // a group with children never counts
    // 100 - 30.1 - 57.56 is 12.340000000000003 or so in binary.
    const struct { va::EntryCode code; double value; va::EditOutcome want; } cases[] = {
        {waiting, 12.34, va::EditOutcome::Accepted},
        {waiting, 12.35, va::EditOutcome::OutOfRange},
        {waiting, 0.0, va::EditOutcome::NoChange},
        {waiting, std::numeric_limits<double>::quiet_NaN(), va::EditOutcome::OutOfRange},
        {cutting, 42.44, va::EditOutcome::Accepted},
        {cutting, 42.45, va::EditOutcome::OutOfRange},
        {va::MakeEntryCode(9, 9), 1.0, va::EditOutcome::NoChange},
    };
    for (const auto& c : cases) {
        double max = -1;
        EXPECT_EQ(va::DecideEdit(entries, c.code, c.value, plan, &max), c.want) << c.code << " " << c.value;
    }
    double max = 0;
    va::DecideEdit(entries, waiting, 13, plan, &max);
    EXPECT_NEAR(max, 12.34, 1e-9);

    // Above 100 in sum (a stored string can say anything): lowering is taken,
    // raising is not.
    entries.at(waiting).PE = 40.0;
    EXPECT_EQ(va::DecideEdit(entries, waiting, 39.0, plan), va::EditOutcome::Accepted);
    EXPECT_EQ(va::DecideEdit(entries, waiting, 41.0, plan), va::EditOutcome::OutOfRange);
}

TEST(ValueAddedRulesTest, EditRollsChildrenUpIntoTheirGroup) {
    va::EntryMap entries = va::BlankEntries(Plan());
    entries.at(va::MakeEntryCode(1, 12)).PE = 5.0;  // a hidden child still counts in its group
    entries.at(va::MakeEntryCode(1, 12)).TE = 30.0;
    ASSERT_TRUE(va::ApplyEdit(entries, va::MakeEntryCode(1, 11), 20.0, 600.0));
    EXPECT_EQ(entries.at(va::MakeEntryCode(1, 11)).TE, 120.0);
    EXPECT_EQ(entries.at(va::MakeEntryCode(0, 1)).PE, 25.0);
    EXPECT_EQ(entries.at(va::MakeEntryCode(0, 1)).TE, 150.0);

    // A group without children is not rolled into anything.
    ASSERT_TRUE(va::ApplyEdit(entries, va::MakeEntryCode(0, 2), 10.0, 600.0));
    EXPECT_EQ(entries.at(va::MakeEntryCode(0, 2)).TE, 60.0);
    EXPECT_EQ(entries.at(va::MakeEntryCode(0, 1)).PE, 25.0);
    EXPECT_FALSE(va::ApplyEdit(entries, va::MakeEntryCode(5, 5), 1.0, 600.0));
}

TEST(ValueAddedRulesTest, RowsShowShownChildrenAndTheRemainder) {
    const va::Config plan = Plan();
    va::EntryMap entries = va::BlankEntries(plan);
    entries.at(va::MakeEntryCode(1, 11)).PE = 40.0;
    entries.at(va::MakeEntryCode(1, 11)).PC = 10.0;
    entries.at(va::MakeEntryCode(0, 1)).PE = 40.0;  // the group's sum: not counted twice
    entries.at(va::MakeEntryCode(0, 2)).PE = 12.5;
    const auto rows = va::BuildRows(plan, entries, 3600.0, 2, 1, true, L"Not Assigned");
    const struct { const wchar_t* name; int image; const wchar_t* pe; const wchar_t* te; const wchar_t* pc; } want[] = {
        {L"Processing", 0, L"40.00", L"0.0", L"0.00"}, {L"    Cutting", 1, L"40.00", L"0.0", L"10.00"},
        {L"Transport", 0, L"12.50", L"0.0", L"0.00"},  {L"Storage", 0, L"0.00", L"0.0", L"0.00"},
        {L"    Waiting", 1, L"0.00", L"0.0", L"0.00"}, {L"Not Assigned", -1, L"47.50", L"1710.0", L"90.00"},
    };
    ASSERT_EQ(rows.size(), std::size(want));
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].name, want[i].name) << i;
        EXPECT_EQ(rows[i].image, want[i].image) << i;
        EXPECT_EQ(rows[i].pe, want[i].pe) << i;
        EXPECT_EQ(rows[i].te, want[i].te) << i;
        EXPECT_EQ(rows[i].pc, want[i].pc) << i;
    }
    EXPECT_FALSE(rows.back().hasCode);
    EXPECT_EQ(va::BuildRows(plan, entries, 0, 0, 0, false, L"x")[0].image, -1);
    EXPECT_EQ(va::FormatFixed(2.5, 40), L"2.500000000000000");  // decimals kept to 15
    EXPECT_EQ(va::FormatFixed(2.5, -3), L"2");                     // ... and to 0 (round half even)
    EXPECT_EQ(va::FormatFixed(100.0 - 87.66 - 12.34, 2), L"0.00");  // not "-0.00"
    EXPECT_EQ(va::FormatFixed(-0.004, 2), L"0.00");
    EXPECT_EQ(va::FormatFixed(-0.006, 2), L"-0.01");
}

TEST(ValueAddedRulesTest, EditableRowsAndColours) {
    const va::Config plan = Plan();
    const va::ValueAddedEntry child{0, 11, 1}, groupWithChildren{0, 1, 0}, leafGroup{0, 2, 0};
    EXPECT_TRUE(va::IsEditableRow(child, plan, 0));
    EXPECT_FALSE(va::IsEditableRow(groupWithChildren, plan, 0));
    EXPECT_TRUE(va::IsEditableRow(leafGroup, plan, 0));
    EXPECT_FALSE(va::IsEditableRow(leafGroup, plan, 2));

    const struct { int column; const va::ValueAddedEntry* entry; bool parent; va::CellBack back; va::CellText text; } cases[] = {
        {2, &child, false, va::CellBack::EditColumn, va::CellText::Default},
        {1, &child, false, va::CellBack::Light, va::CellText::Default},          // parent 1: odd
        {3, &leafGroup, false, va::CellBack::Default, va::CellText::Default},    // own id 2: even
        {1, &groupWithChildren, true, va::CellBack::Light, va::CellText::WindowText},
        {4, &groupWithChildren, true, va::CellBack::Light, va::CellText::GrayText},
        {3, nullptr, false, va::CellBack::Default, va::CellText::Default},       // "Not Assigned"
    };
    for (const auto& c : cases) {
        const va::CellColours got = va::ColoursFor(c.column, c.entry, c.parent);
        EXPECT_EQ(got.back, c.back) << c.column;
        EXPECT_EQ(got.text, c.text) << c.column;
    }
}

TEST(ValueAddedRulesTest, HitTestAndEditorSpan) {
    const std::vector<int> widths{20, 200, 145, 145};
    const struct { int x, rowLeft, want; } hits[] = {
        {0, 0, 0}, {20, 0, 0}, {21, 0, 1}, {220, 0, 1}, {221, 0, 2}, {510, 0, 3}, {511, 0, -1}, {-20, -30, 0}, {-5, -30, 1},
        {100, -300, 3},
    };
    for (const auto& h : hits) EXPECT_EQ(va::ColumnAt(h.x, h.rowLeft, widths), h.want) << h.x << " " << h.rowLeft;

    const struct { int rowLeft, offset, width, client; va::EditSpan want; } spans[] = {
        {0, 220, 145, 800, {0, 224, 366}},
        {0, 220, 145, 300, {0, 224, 300}},      // clipped to the client
        {0, 510, 145, 400, {510, 4, 146}},      // starts right of the client: scrolled
        {-300, 220, 145, 800, {-80, 4, 146}},   // starts left of it
    };
    for (const auto& s : spans) {
        const va::EditSpan got = va::EditSpanFor(s.rowLeft, s.offset, s.width, s.client);
        EXPECT_EQ(got.scroll, s.want.scroll) << s.offset;
        EXPECT_EQ(got.left, s.want.left) << s.offset;
        EXPECT_EQ(got.right, s.want.right) << s.offset;
    }
}

TEST(ValueAddedRulesTest, LengthsScaleWithTheDpi) {
    // The field's insets (4 and 3 at 96 DPI) scale; where the column starts
    // and whether it scrolls do not depend on them.
    const struct { unsigned dpi; int rowLeft, offset, width, client; va::EditSpan want; } spans[] = {
        {96, 0, 330, 218, 1200, {0, 334, 549}},
        {144, 0, 330, 218, 1200, {0, 336, 549}},
        {192, 0, 440, 290, 1200, {0, 448, 732}},
        {192, 0, 440, 290, 600, {0, 448, 600}},
        {192, 0, 1300, 290, 1200, {1300, 8, 292}},
    };
    for (const auto& s : spans) {
        const va::EditSpan got = va::EditSpanFor(s.rowLeft, s.offset, s.width, s.client, s.dpi);
        EXPECT_EQ(got.scroll, s.want.scroll) << s.dpi;
        EXPECT_EQ(got.left, s.want.left) << s.dpi;
        EXPECT_EQ(got.right, s.want.right) << s.dpi;
    }

    const struct { unsigned dpi; int minEdit; std::vector<int> widths; va::PictureSize picture; } lengths[] = {
        {96, 5, {20, 200, 145, 145, 145, 145}, {18, 17}},
        {120, 6, {25, 250, 181, 181, 181, 181}, {23, 21}},
        {144, 8, {30, 300, 218, 218, 218, 218}, {27, 26}},
        {192, 10, {40, 400, 290, 290, 290, 290}, {36, 34}},
    };
    for (const auto& l : lengths) {
        EXPECT_EQ(va::MinEditColumnWidth(l.dpi), l.minEdit) << l.dpi;
        std::vector<int> widths;
        for (int c = 0; c < va::kColumnCount; ++c) widths.push_back(va::ColumnWidthForDpi(c, l.dpi));
        EXPECT_EQ(widths, l.widths) << l.dpi;
        EXPECT_EQ(va::PictureSlotForDpi(l.dpi), l.picture) << l.dpi;
    }
    EXPECT_EQ(va::ColumnWidthForDpi(6, 96), 0);
    EXPECT_EQ(va::ColumnWidthForDpi(-1, 96), 0);
}

}  // namespace
