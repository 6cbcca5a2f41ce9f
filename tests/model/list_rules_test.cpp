// The report list's rules: which rows fit, the sort order from a value
// comparison, alignments from header formats, the sort arrow's lines, the
// export plan and its alignment codes, and a cell's text by its column key.
#include "quorvel/lists/list_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

namespace ql = qv::lists;

TEST(ListRulesTest, ARowFitsWithOneValuePerValueColumnAndTheImageRule) {
    const struct { int columns; bool images; int image; size_t values; bool fits; } cases[] = {
        {3, false, -1, 3, true},   {3, false, 0, 3, false},  {3, false, 5, 3, false},   // no image list: no image
        {3, false, -2, 3, true},   {3, false, -1, 2, false}, {3, false, -1, 4, false},  // one too few, one too many
        {0, false, -1, 0, false},  {0, true, 0, 0, false},                              // no columns
        {3, true, 0, 2, true},     {3, true, 4, 2, true},    {3, true, -1, 2, false},   // image list: -1 refused
        {3, true, -2, 2, true},    {3, true, 0, 3, false},                              // -2 passes; values as without
        {1, true, 0, 0, false},                                                         // only the image column
        {1, false, -1, 1, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ql::AcceptsEntry(c.columns, c.images, c.image, c.values), c.fits)
            << c.columns << " columns, images " << c.images << ", image " << c.image << ", " << c.values << " values";
    }
}

TEST(ListRulesTest, OnlyLessAndGreaterOrderRowsAndDescendingSwapsThem) {
    const struct { long cmp; int ascending, descending; } cases[] = {
        {ql::kCmpLess, -1, 1},  {ql::kCmpGreater, 1, -1}, {ql::kCmpEqual, 0, 0},
        {ql::kCmpNull, 0, 0},   {static_cast<long>(0x80020005L), 0, 0},  // DISP_E_TYPEMISMATCH
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ql::SortOrder(c.cmp, true), c.ascending) << c.cmp;
        EXPECT_EQ(ql::SortOrder(c.cmp, false), c.descending) << c.cmp;
    }
}

TEST(ListRulesTest, HeaderFormatsGiveAlignmentCodesAndTextFlagsWithCentreWinning) {
    const struct { int format; int code; unsigned flags; } cases[] = {
        {0, ql::kAlignLeft, 0x8924},
        {ql::kHdfRight, ql::kAlignRight, 0x8926},
        {ql::kHdfCenter, ql::kAlignCenter, 0x8925},
        {ql::kHdfCenter | ql::kHdfRight, ql::kAlignCenter, 0x8925},
        {ql::kHdfOwnerDraw | ql::kHdfRight, ql::kAlignRight, 0x8926},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ql::AlignmentFromFormat(c.format), c.code) << c.format;
        EXPECT_EQ(ql::HeaderTextFlags(c.format), c.flags) << c.format;
    }
}

TEST(ListRulesTest, TheArrowIsTwoStrokesNearTheRightEdge) {
    using P = ql::Point;
    // off 7: 3*off/2 = 10 and 5*off/2 = 17 (integer division of the products).
    const ql::SortArrow up = ql::SortArrowGeometry(true, 200, 24, 7);
    EXPECT_EQ(up.highlight.from, (P{186, 6}));
    ASSERT_EQ(up.highlight.count, 2);
    EXPECT_EQ(up.highlight.to[0], (P{190, 17}));
    EXPECT_EQ(up.highlight.to[1], (P{181, 17}));
    EXPECT_EQ(up.shadow.from, (P{182, 16}));
    ASSERT_EQ(up.shadow.count, 1);
    EXPECT_EQ(up.shadow.to[0], (P{186, 5}));

    const ql::SortArrow down = ql::SortArrowGeometry(false, 200, 24, 7);
    EXPECT_EQ(down.highlight.from, (P{190, 6}));
    ASSERT_EQ(down.highlight.count, 1);
    EXPECT_EQ(down.highlight.to[0], (P{185, 18}));
    EXPECT_EQ(down.shadow.from, (P{185, 17}));
    ASSERT_EQ(down.shadow.count, 2);
    EXPECT_EQ(down.shadow.to[0], (P{182, 6}));
    EXPECT_EQ(down.shadow.to[1], (P{190, 6}));
}

TEST(ListRulesTest, TheArrowScalesWithTheDpiAndKeepsItsFormAt96) {
    // The inset follows the font and never falls below 4 pixels at 96 DPI,
    // scaled; the strokes are one pixel at 96 DPI, scaled.
    const struct { int blank; unsigned dpi; int inset, pen; } metrics[] = {
        {3, 96, 6, 1}, {2, 96, 4, 1}, {1, 96, 4, 1}, {0, 96, 4, 1},
        {3, 144, 6, 2}, {2, 144, 6, 2}, {5, 144, 10, 2},
        {3, 192, 8, 2}, {6, 192, 12, 2}, {3, 288, 12, 3},
    };
    for (const auto& m : metrics) {
        EXPECT_EQ(ql::SortArrowInset(m.blank, m.dpi), m.inset) << m.blank << " @" << m.dpi;
        EXPECT_EQ(ql::SortArrowPen(m.dpi), m.pen) << m.dpi;
    }

    // A pen of 2 moves every corner nudge two pixels where a pen of 1 moves
    // it one; the points that only depend on the inset stay.
    using P = ql::Point;
    const ql::SortArrow up = ql::SortArrowGeometry(true, 200, 48, 14, 2);
    EXPECT_EQ(up.highlight.from, (P{172, 12}));
    EXPECT_EQ(up.highlight.to[0], (P{179, 34}));
    EXPECT_EQ(up.highlight.to[1], (P{161, 34}));
    EXPECT_EQ(up.shadow.from, (P{163, 32}));
    EXPECT_EQ(up.shadow.to[0], (P{172, 10}));
    const ql::SortArrow down = ql::SortArrowGeometry(false, 200, 48, 14, 2);
    EXPECT_EQ(down.highlight.from, (P{179, 12}));
    EXPECT_EQ(down.highlight.to[0], (P{170, 36}));
    EXPECT_EQ(down.shadow.from, (P{170, 34}));
    EXPECT_EQ(down.shadow.to[0], (P{163, 12}));
    EXPECT_EQ(down.shadow.to[1], (P{179, 12}));

    // A pressed title moves 1 across and 2 down at 96 DPI, scaled.
    const qv::Box item{0, 0, 100, 20};
    const struct { unsigned dpi; qv::Box want; } pressed[] = {
        {96, {7, 2, 95, 20}}, {144, {8, 3, 96, 20}}, {192, {8, 4, 96, 20}},
    };
    for (const auto& c : pressed) {
        const qv::Box got = ql::HeaderTextBox(item, 6, true, false, c.dpi);
        EXPECT_EQ(got.left, c.want.left) << c.dpi;
        EXPECT_EQ(got.top, c.want.top) << c.dpi;
        EXPECT_EQ(got.right, c.want.right) << c.dpi;
    }
}

TEST(ListRulesTest, AReaderHearsTheFirstShownColumnAsNameAndTheOthersAsTitledValues) {
    using R = ql::RowReading;
    const struct { std::vector<int> order; int skipped; R want; } plans[] = {
        {{0, 1, 2}, -1, {0, {1, 2}}},
        {{2, 0, 1}, -1, {2, {0, 1}}},   // as the user arranged them
        {{0, 2, 1}, 0, {2, {1}}},       // the image column is never read
        {{0}, 0, {-1, {}}},
        {{}, -1, {-1, {}}},
    };
    for (const auto& p : plans) EXPECT_EQ(ql::RowReadingPlan(p.order, p.skipped), p.want);

    const struct { std::vector<ql::ReadCell> cells; const wchar_t* want; } values[] = {
        {{{L"Qty", L"3"}, {L"Due", L"1/2/2024"}}, L"Qty: 3; Due: 1/2/2024"},
        {{{L"Qty", L""}, {L"Due", L"today"}}, L"Due: today"},     // an empty cell is not read
        {{{L"", L"loose"}, {L"Qty", L"3"}}, L"loose; Qty: 3"},    // a column without title
        {{{L"Qty", L""}}, L""},
        {{}, L""},
    };
    for (const auto& v : values) EXPECT_EQ(ql::RowValueText(v.cells), v.want);

    const struct { const wchar_t* text; const wchar_t* want; } names[] = {
        {L"    Cutting", L"Cutting"}, {L"Bolt  ", L"Bolt"}, {L"   ", L""}, {L"", L""}, {L"a b", L"a b"},
    };
    for (const auto& n : names) EXPECT_EQ(ql::RowNameText(n.text), n.want);
}

TEST(ListRulesTest, TheExportFollowsTheDisplayOrderWithTheImageColumnFirst) {
    using C = ql::ExportColumn;
    EXPECT_EQ(ql::ExportPlan({2, 0, 1}, false), (std::vector<C>{{0, 2, false}, {1, 0, false}, {2, 1, false}}));
    EXPECT_EQ(ql::ExportPlan({0, 2, 1}, true), (std::vector<C>{{0, 0, true}, {1, 2, false}, {2, 1, false}}));
    EXPECT_TRUE(ql::ExportPlan({}, true).empty());

    const C image{0, 0, true}, value{1, 2, false};
    const struct { C column; bool images, read; int format; int code; } cases[] = {
        {image, true, false, 0, ql::kAlignBitmap},
        {value, true, true, ql::kHdfRight, ql::kAlignRight},
        {value, true, false, ql::kHdfRight, ql::kAlignLeft},            // format not read
        {value, false, true, ql::kHdfCenter, ql::kAlignLeft},           // no image list: header not consulted
    };
    for (const auto& c : cases)
        EXPECT_EQ(ql::CellAlignment(c.column, c.images, c.read, c.format), c.code) << c.column.position << c.images;
}

TEST(ListRulesTest, ACellsTextIsFoundByItsColumnKey) {
    const ql::RowMap<double> row{{0, 1.5}, {2, 7.0}};
    auto toText = [](double v, std::wstring& out) { out = std::to_wstring(static_cast<int>(v * 10)); };
    std::wstring buffer = L"before";
    const int two = 2, one = 1;
    ASSERT_NE(ql::CellText(&row, &two, buffer, toText), nullptr);
    EXPECT_EQ(buffer, L"70");
    const struct { const ql::RowMap<double>* row; const int* key; } missing[] = {
        {&row, &one}, {&row, nullptr}, {nullptr, &two}};
    for (const auto& m : missing) {
        buffer = L"kept";
        EXPECT_EQ(ql::CellText(m.row, m.key, buffer, toText), nullptr);
        EXPECT_EQ(buffer, L"kept");
    }
}

}  // namespace
