// The print-list object's model: columns fitted to the page, rows split into
// pages under a repeated header, the footer text, the margins, and the
// clipboard's text and HTML forms with their escaping and CF_HTML offsets.
#include "quorvel/lists/print_rules.h"

#include <gtest/gtest.h>

#include <string>

namespace {

namespace pl = qv::printlist;

pl::PrintTable Table(std::initializer_list<pl::PrintColumn> columns) {
    pl::PrintTable t;
    t.columns = columns;
    return t;
}

TEST(PrintRulesTest, ColumnsFitThePageWidthAndAreNeverEnlarged) {
    // A 600-dpi page 4000 dots wide shows 4000 / 6.25 = 640 list pixels at full size.
    const struct { std::vector<int> widths; int area; int dpi; double scale; } cases[] = {
        {{100, 200}, 4000, 600, 6.25},           // narrow list: physical size
        {{400, 400}, 4000, 600, 5.0},            // 800 px into 4000 dots
        {{100, -50, 100}, 1000, 600, 5.0},       // a negative width counts as 0
        {{}, 4000, 600, 6.25},                   // no columns
        {{0, 0}, 4000, 600, 6.25},               // all hidden
        {{300}, 300, 96, 1.0},                   // a screen: 1:1
        {{600}, 300, 96, 0.5},
        {{100}, 4000, 0, 1.0},                   // unknown dpi: the list's own
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(pl::ColumnScale(c.widths, c.area, c.dpi), c.scale) << c.widths.size() << " " << c.area;
    }
}

TEST(PrintRulesTest, FontShrinksWithTheColumnsDownToAFloor) {
    const struct { double scale; int dpi; int height; } cases[] = {
        {6.25, 600, 75},   // 9 pt at 600 dpi
        {3.125, 600, 50},  // half size: 4.5 pt, held at 6 pt
        {5.0, 600, 60},    // 0.8: 7.2 pt
        {1.0, 96, 12},
        {0.0, 96, 12},     // nonsense scale: the default size
    };
    for (const auto& c : cases) EXPECT_EQ(pl::FontHeight(c.scale, c.dpi, c.dpi), c.height) << c.scale;
}

TEST(PrintRulesTest, ColumnEdgesFollowTheScaledRunningSum) {
    pl::LayoutInput in;
    in.widths = {100, 100, 100};
    in.areaWidth = 200;  // scale 2/3
    in.areaHeight = 1000;
    const pl::PageLayout l = pl::ComputeLayout(in);
    EXPECT_EQ(l.columnX, (std::vector<int>{0, 66, 133, 200}));
    EXPECT_LE(l.columnX.back(), in.areaWidth);
}

TEST(PrintRulesTest, RowsSplitIntoPagesUnderTheHeader) {
    // Area 1000 high: header 40, footer 60, rows 30 -> 900 / 30 = 30 rows a page.
    const struct { int rows; int area; int rowHeight; int perPage; int pages; int lastRows; } cases[] = {
        {0, 1000, 30, 30, 1, 0},     // no rows: one page with the header only
        {1, 1000, 30, 30, 1, 1},
        {30, 1000, 30, 30, 1, 30},   // exactly full
        {31, 1000, 30, 30, 2, 1},    // one more starts a page
        {95, 1000, 30, 30, 4, 5},
        {5, 120, 30, 1, 5, 1},       // not one row fits: still one a page
        {3, 1000, 0, 900, 1, 3},     // row height 0 counts as 1
    };
    for (const auto& c : cases) {
        pl::LayoutInput in;
        in.widths = {50, 50};
        in.rowCount = c.rows;
        in.areaWidth = 500;
        in.areaHeight = c.area;
        in.rowHeight = c.rowHeight;
        in.headerHeight = 40;
        in.footerHeight = 60;
        const pl::PageLayout l = pl::ComputeLayout(in);
        SCOPED_TRACE(c.rows);
        EXPECT_EQ(l.rowsPerPage, c.perPage);
        ASSERT_EQ(l.pageCount, c.pages);
        // Every row on exactly one page, in order, each page starting below the header.
        int next = 0;
        for (int p = 0; p < l.pageCount; ++p) {
            EXPECT_EQ(l.FirstRow(p), next);
            next += l.RowsOn(p, c.rows);
        }
        EXPECT_EQ(next, c.rows);
        EXPECT_EQ(l.RowsOn(l.pageCount - 1, c.rows), c.lastRows);
        EXPECT_EQ(l.RowsOn(l.pageCount, c.rows), 0);
        EXPECT_EQ(l.RowTop(0), 40);
    }
}

TEST(PrintRulesTest, NoColumnsNoPages) {
    pl::LayoutInput in;
    in.rowCount = 10;
    in.areaWidth = in.areaHeight = 1000;
    const pl::PageLayout l = pl::ComputeLayout(in);
    EXPECT_EQ(l.pageCount, 0);
    EXPECT_EQ(l.RowsOn(0, 10), 0);
    EXPECT_EQ(l.columnX, std::vector<int>{0});
}

TEST(PrintRulesTest, FooterAndMargins) {
    EXPECT_EQ(pl::PageFooter(L"Page %1 of %2", 3, 12), L"Page 3 of 12");
    EXPECT_EQ(pl::PageFooter(L"%2/%1 %3 100%", 1, 2), L"2/1 %3 100%");

    // A4 at 600 dpi (4960 x 7016), printable area 100 dots in from each edge.
    const pl::Rect a = pl::MarginArea(4960, 7016, 100, 100, 4760, 6816, 600, 600, 15.0);
    EXPECT_EQ(a.left, 354 - 100);
    EXPECT_EQ(a.top, 354 - 100);
    EXPECT_EQ(a.right, 4960 - 354 - 100);
    EXPECT_EQ(a.bottom, 7016 - 354 - 100);
    // The printer's edge is wider than the margin: the printable area's edge.
    const pl::Rect b = pl::MarginArea(4960, 7016, 500, 500, 3960, 6016, 600, 600, 15.0);
    EXPECT_EQ(b.left, 0);
    EXPECT_EQ(b.right, 3960);
    // Margins that leave nothing: the whole printable area.
    const pl::Rect c = pl::MarginArea(100, 100, 0, 0, 100, 100, 600, 600, 15.0);
    EXPECT_EQ(c.right - c.left, 100);
    EXPECT_EQ(c.bottom - c.top, 100);
}

TEST(PrintRulesTest, CellsAlignByTheirOwnCodeElseTheColumns) {
    pl::PrintTable t = Table({{L"A", pl::kAlignRight, 10, {L"1", L"2", L"3"}, {0, 4}},
                              {L"B", pl::kAlignBitmap, 10, {L"BitmapData"}, {1}},
                              {L"C", 2, 10, {L"x"}, {7}}});
    EXPECT_EQ(t.RowCount(), 3);
    EXPECT_EQ(t.CellAlignment(0, 0), pl::kAlignRight);   // left: the header decides
    EXPECT_EQ(t.CellAlignment(0, 1), pl::kAlignCenter);
    EXPECT_EQ(t.CellAlignment(0, 2), pl::kAlignRight);   // no code
    EXPECT_EQ(t.CellAlignment(2, 0), pl::kAlignLeft);    // unknown codes: left
    EXPECT_TRUE(t.IsBitmapColumn(1));
    EXPECT_FALSE(t.IsBitmapColumn(0));
    EXPECT_EQ(t.Cell(1, 2), L"");                        // below a short column
    EXPECT_EQ(t.Cell(5, 0), L"");
}

TEST(PrintRulesTest, ClipboardTextKeepsColumnsWhateverTheCells) {
    const pl::PrintTable t = Table({{L"Pic", pl::kAlignBitmap, 16, {L"BitmapData", L"BitmapData"}, {1, 1}},
                                    {L"Name", 0, 100, {L"a\tb", L"line1\r\nline2"}, {}},
                                    {L"Qty", pl::kAlignRight, 50, {L"1", L"2\n"}, {}}});
    EXPECT_EQ(pl::ClipboardText(t), L"Name\tQty\r\na b\t1\r\nline1 line2\t2 \r\n");
    EXPECT_EQ(pl::ClipboardText(Table({{L"Only", 0, 10, {}, {}}})), L"Only\r\n");
    EXPECT_EQ(pl::ClipboardText(pl::PrintTable{}), L"\r\n");

    const struct { std::wstring in, out; } flat[] = {
        {L"a\tb", L"a b"}, {L"a\r\nb", L"a b"}, {L"a\n\rb", L"a  b"}, {L"a\rb", L"a b"},
        {std::wstring(L"a\0b", 3), L"a b"}, {L"\x85x\x2028", L" x "}, {L"plain", L"plain"},
    };
    for (const auto& f : flat) EXPECT_EQ(pl::FlatCell(f.in), f.out);
}

TEST(PrintRulesTest, HtmlTableEscapesAndAligns) {
    const pl::PrintTable t = Table({{L"Pic", pl::kAlignBitmap, 16, {L"BitmapData"}, {1}},
                                    {L"A&B", 0, 100, {L"<b>\"x\"</b>"}, {}},
                                    {L"Qty", pl::kAlignRight, 50, {L"1\t2"}, {}},
                                    {L"Mid", pl::kAlignCenter, 50, {L"\u00e4"}, {}}});
    EXPECT_EQ(pl::HtmlTable(t),
              "<table border=\"1\" cellspacing=\"0\">\r\n"
              "<tr><th>A&amp;B</th><th style=\"text-align:right\">Qty</th><th style=\"text-align:center\">Mid</th></tr>\r\n"
              "<tr><td>&lt;b&gt;&quot;x&quot;&lt;/b&gt;</td><td style=\"text-align:right\">1 2</td>"
              "<td style=\"text-align:center\">\xC3\xA4</td></tr>\r\n"
              "</table>");
}

// The number after `key` in a CF_HTML header.
size_t Offset(const std::string& data, const std::string& key) {
    const size_t at = data.find(key + ":");
    EXPECT_NE(at, std::string::npos) << key;
    return at == std::string::npos ? 0 : std::stoul(data.substr(at + key.size() + 1, 10));
}

TEST(PrintRulesTest, CfHtmlOffsetsPointIntoItsOwnBytes) {
    for (const std::string& fragment : {std::string("<table><tr><td>\xC3\xA4</td></tr></table>"), std::string(),
                                       std::string(5000, 'x')}) {
        const std::string data = pl::CfHtml(fragment);
        ASSERT_EQ(data.rfind("Version:0.9\r\n", 0), 0u);
        const size_t startHtml = Offset(data, "StartHTML"), endHtml = Offset(data, "EndHTML");
        const size_t startFragment = Offset(data, "StartFragment"), endFragment = Offset(data, "EndFragment");
        EXPECT_EQ(endHtml, data.size());
        EXPECT_EQ(data.substr(startHtml, 6), "<html>");
        EXPECT_EQ(data.substr(endFragment - 0, 18), "<!--EndFragment-->");
        EXPECT_EQ(data.substr(startFragment, endFragment - startFragment), fragment);
        EXPECT_EQ(data.substr(startFragment - 20, 20), "<!--StartFragment-->");
        EXPECT_NE(data.find("</html>", endFragment), std::string::npos);
    }
}

}  // namespace
