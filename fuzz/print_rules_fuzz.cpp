// Fuzzes the print-list object's model: a table and a page built from the
// input. The clipboard text keeps one line per row and one tab between
// columns whatever the cells hold; the CF_HTML offsets slice out the
// fragment; the page layout puts every row on exactly one page and every
// column edge inside the area.
//
// Input: 8 bytes of page and column set-up, then the column names and cells
// as UTF-8 pieces separated by 0xFF bytes (names first, then the cells
// column by column).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "quorvel/common/utf8.h"
#include "quorvel/lists/print_rules.h"

namespace pl = qv::printlist;

namespace {

size_t Count(std::wstring_view text, std::wstring_view what) {
    size_t n = 0;
    for (size_t at = text.find(what); at != std::wstring_view::npos; at = text.find(what, at + what.size())) ++n;
    return n;
}

size_t Number(const std::string& data, const char* key) {
    const size_t at = data.find(std::string(key) + ":");
    if (at == std::string::npos) std::abort();
    return std::strtoul(data.c_str() + at + std::string_view(key).size() + 1, nullptr, 10);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 8) return 0;
    const int columns = data[0] % 6;
    const int rows = data[1] % 8;
    const int areaWidth = data[2] * 16 - 200;   // may be negative
    const int areaHeight = data[3] * 16 - 200;
    const int dpi = data[4] * 4;                 // 0 counts as unknown
    const int rowHeight = data[5] - 10;
    const int widthStep = data[6];
    const int rowCount = data[7] * 97;

    std::vector<std::wstring> pieces;
    std::string_view rest(reinterpret_cast<const char*>(data + 8), size - 8);
    while (!rest.empty()) {
        const size_t cut = rest.find('\xFF');
        pieces.push_back(qv::Utf8ToWide(rest.substr(0, cut)));
        rest = cut == std::string_view::npos ? std::string_view() : rest.substr(cut + 1);
    }
    size_t next = 0;
    const auto take = [&] { return next < pieces.size() ? pieces[next++] : std::wstring(); };

    pl::PrintTable table;
    for (int c = 0; c < columns; ++c) {
        pl::PrintColumn col;
        col.name = take();
        col.alignment = static_cast<int>(col.name.size() % 5);
        col.width = (c + 1) * widthStep - 100;
        table.columns.push_back(col);
    }
    for (int c = 0; c < columns; ++c)
        for (int r = 0; r < rows - c % 2; ++r) table.columns[static_cast<size_t>(c)].cells.push_back(take());

    // Text: a header line and one line per row, the columns apart by tabs.
    const std::wstring text = pl::ClipboardText(table);
    size_t shown = 0;
    for (int c = 0; c < columns; ++c) shown += !table.IsBitmapColumn(c);
    const size_t lines = static_cast<size_t>(table.RowCount()) + 1;
    if (Count(text, L"\r\n") != lines || Count(text, L"\r") != lines || Count(text, L"\n") != lines) std::abort();
    if (Count(text, L"\t") != (shown ? shown - 1 : 0) * lines) std::abort();

    // HTML: one table row per line, the fragment found by its offsets.
    const std::string fragment = pl::HtmlTable(table);
    if (Count(qv::Utf8ToWide(fragment), L"<tr>") != lines) std::abort();
    const std::string cf = pl::CfHtml(fragment);
    const size_t start = Number(cf, "StartFragment"), end = Number(cf, "EndFragment");
    if (Number(cf, "EndHTML") != cf.size() || start > end || end > cf.size()) std::abort();
    if (cf.compare(start, end - start, fragment) != 0) std::abort();

    // Layout.
    pl::LayoutInput in;
    for (const pl::PrintColumn& c : table.columns) in.widths.push_back(c.width);
    in.rowCount = rowCount;
    in.areaWidth = areaWidth;
    in.areaHeight = areaHeight;
    in.dpiX = dpi;
    in.rowHeight = rowHeight;
    in.headerHeight = rowHeight + 3;
    in.footerHeight = rowHeight * 2;
    const pl::PageLayout l = pl::ComputeLayout(in);
    if (l.columnX.size() != in.widths.size() + 1 || l.rowsPerPage < 1) std::abort();
    for (size_t i = 1; i < l.columnX.size(); ++i)
        if (l.columnX[i] < l.columnX[i - 1]) std::abort();
    long long total = 0;
    for (int w : in.widths) total += w > 0 ? w : 0;
    if (total > 0 && areaWidth > 0 && l.columnX.back() > areaWidth) std::abort();
    if (columns == 0 ? l.pageCount != 0 : l.pageCount < 1) std::abort();
    long long covered = 0;
    for (int p = 0; p < l.pageCount; ++p) {
        if (l.FirstRow(p) != covered) std::abort();
        covered += l.RowsOn(p, rowCount);
    }
    if (columns > 0 && covered != rowCount) std::abort();
    (void)pl::FontHeight(l.scale, dpi, dpi);
    (void)pl::PageFooter(text, 1, l.pageCount);
    return 0;
}
