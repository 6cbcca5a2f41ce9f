#include "quorvel/lists/print_rules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "quorvel/common/utf8.h"

namespace qv::printlist {

namespace {

const std::wstring& EmptyText() {
    static const std::wstring empty;
    return empty;
}

int Clamp(long long v) {
    return static_cast<int>(std::clamp<long long>(v, 0, std::numeric_limits<int>::max()));
}

// Adds `text` to `out` with the characters HTML gives a meaning escaped.
void AppendHtmlEscaped(std::wstring_view text, std::string& out) {
    std::wstring flat = FlatCell(text);
    std::wstring escaped;
    escaped.reserve(flat.size());
    for (wchar_t c : flat) {
        switch (c) {
        case L'&': escaped += L"&amp;"; break;
        case L'<': escaped += L"&lt;"; break;
        case L'>': escaped += L"&gt;"; break;
        case L'"': escaped += L"&quot;"; break;
        default: escaped += c; break;
        }
    }
    AppendWideAsUtf8(escaped, out);
}

const char* AlignStyle(int alignment) {
    switch (alignment) {
    case kAlignRight: return " style=\"text-align:right\"";
    case kAlignCenter: return " style=\"text-align:center\"";
    default: return "";
    }
}

}  // namespace

// ---- PrintTable --------------------------------------------------------------

int PrintTable::RowCount() const {
    size_t rows = 0;
    for (const PrintColumn& c : columns) rows = std::max(rows, c.cells.size());
    return Clamp(static_cast<long long>(rows));
}

const std::wstring& PrintTable::Cell(int column, int row) const {
    if (column < 0 || static_cast<size_t>(column) >= columns.size() || row < 0) return EmptyText();
    const auto& cells = columns[static_cast<size_t>(column)].cells;
    return static_cast<size_t>(row) < cells.size() ? cells[static_cast<size_t>(row)] : EmptyText();
}

int PrintTable::CellAlignment(int column, int row) const {
    if (column < 0 || static_cast<size_t>(column) >= columns.size()) return kAlignLeft;
    const PrintColumn& c = columns[static_cast<size_t>(column)];
    if (row >= 0 && static_cast<size_t>(row) < c.cellAlignments.size()) {
        const int own = c.cellAlignments[static_cast<size_t>(row)];
        if (own == kAlignBitmap || own == kAlignRight || own == kAlignCenter) return own;
    }
    return c.alignment == kAlignBitmap || c.alignment == kAlignRight || c.alignment == kAlignCenter ? c.alignment
                                                                                                     : kAlignLeft;
}

bool PrintTable::IsBitmapColumn(int column) const {
    if (column < 0 || static_cast<size_t>(column) >= columns.size()) return false;
    const PrintColumn& c = columns[static_cast<size_t>(column)];
    if (c.alignment == kAlignBitmap) return true;
    return !c.cellAlignments.empty() &&
           std::all_of(c.cellAlignments.begin(), c.cellAlignments.end(), [](int a) { return a == kAlignBitmap; });
}

// ---- Layout --------------------------------------------------------------------

double ColumnScale(const std::vector<int>& widths, int areaWidth, int dpi, int listDpi) {
    if (listDpi <= 0) listDpi = 96;
    if (dpi <= 0) dpi = listDpi;
    const double physical = static_cast<double>(dpi) / listDpi;
    long long total = 0;
    for (int w : widths) total += std::max(w, 0);
    if (total <= 0 || areaWidth <= 0) return physical;
    return std::min(physical, static_cast<double>(areaWidth) / static_cast<double>(total));
}

int FontHeight(double scale, int dpiX, int dpiY, int listDpi) {
    if (listDpi <= 0) listDpi = 96;
    if (dpiX <= 0) dpiX = listDpi;
    if (dpiY <= 0) dpiY = dpiX;
    const double physical = static_cast<double>(dpiX) / listDpi;
    double ratio = physical > 0 && std::isfinite(scale) && scale > 0 ? scale / physical : 1.0;
    ratio = std::min(ratio, 1.0);
    const double points = std::max(kFontPoints * ratio, kMinFontPoints);
    return std::max(1, static_cast<int>(std::lround(points * dpiY / 72.0)));
}

PageLayout ComputeLayout(const LayoutInput& in) {
    PageLayout out;
    out.scale = ColumnScale(in.widths, in.areaWidth, in.dpiX, in.listDpi);
    out.rowHeight = std::max(in.rowHeight, 1);
    out.headerHeight = std::max(in.headerHeight, 1);

    // Edges from the running sum, so rounding never adds up along a row and
    // the last edge is the scaled total.
    out.columnX.reserve(in.widths.size() + 1);
    long long sum = 0;
    out.columnX.push_back(0);
    for (int w : in.widths) {
        sum += std::max(w, 0);
        // The small nudge keeps an exact fit (300 px into 200 dots) from
        // rounding down to one short of the area's edge.
        out.columnX.push_back(Clamp(static_cast<long long>(std::floor(static_cast<double>(sum) * out.scale + 1e-7))));
    }

    const long long body = static_cast<long long>(in.areaHeight) - out.headerHeight - std::max(in.footerHeight, 0);
    out.rowsPerPage = static_cast<int>(std::max<long long>(1, body / out.rowHeight));
    if (in.widths.empty()) {
        out.pageCount = 0;
    } else {
        const long long rows = std::max(in.rowCount, 0);
        out.pageCount = static_cast<int>(std::max<long long>(1, (rows + out.rowsPerPage - 1) / out.rowsPerPage));
    }
    return out;
}

int PageLayout::FirstRow(int page) const {
    if (page <= 0) return 0;
    return Clamp(static_cast<long long>(page) * rowsPerPage);
}

int PageLayout::RowsOn(int page, int rowCount) const {
    if (page < 0 || page >= pageCount) return 0;
    const long long left = static_cast<long long>(rowCount) - FirstRow(page);
    return static_cast<int>(std::clamp<long long>(left, 0, rowsPerPage));
}

std::wstring PageFooter(std::wstring_view format, int page, int pageCount) {
    std::wstring out;
    out.reserve(format.size() + 8);
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] == L'%' && i + 1 < format.size() && (format[i + 1] == L'1' || format[i + 1] == L'2')) {
            out += std::to_wstring(format[i + 1] == L'1' ? page : pageCount);
            ++i;
        } else {
            out += format[i];
        }
    }
    return out;
}

Rect MarginArea(int paperWidth, int paperHeight, int offsetX, int offsetY, int printableWidth, int printableHeight,
                int dpiX, int dpiY, double marginMm) {
    const auto mm = [&](int dpi) {
        return static_cast<int>(std::lround(std::max(marginMm, 0.0) * std::max(dpi, 1) / 25.4));
    };
    const int mx = mm(dpiX), my = mm(dpiY);
    offsetX = std::max(offsetX, 0);
    offsetY = std::max(offsetY, 0);
    // Margins measured from the paper's edges, brought into printable-area
    // coordinates; the far edges from the paper's size when it is known.
    Rect r;
    r.left = std::max(mx - offsetX, 0);
    r.top = std::max(my - offsetY, 0);
    const int farX = paperWidth > 0 ? paperWidth - mx - offsetX : printableWidth - mx;
    const int farY = paperHeight > 0 ? paperHeight - my - offsetY : printableHeight - my;
    r.right = std::min(farX, printableWidth);
    r.bottom = std::min(farY, printableHeight);
    // A margin that leaves nothing: the printable area as it is.
    if (r.right <= r.left || r.bottom <= r.top) r = Rect{0, 0, std::max(printableWidth, 0), std::max(printableHeight, 0)};
    return r;
}

// ---- Clipboard -----------------------------------------------------------------

std::wstring FlatCell(std::wstring_view text) {
    std::wstring out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n') continue;  // the LF makes the blank
        const bool control = static_cast<unsigned>(c) < 0x20 || c == 0x7F ||
                             (static_cast<unsigned>(c) >= 0x80 && static_cast<unsigned>(c) <= 0x9F) ||
                             c == 0x2028 || c == 0x2029;
        out += control ? L' ' : c;
    }
    return out;
}

std::wstring ClipboardText(const PrintTable& table) {
    std::vector<int> shown;
    for (int c = 0; c < static_cast<int>(table.columns.size()); ++c)
        if (!table.IsBitmapColumn(c)) shown.push_back(c);
    std::wstring out;
    const auto line = [&](auto cellOf) {
        for (size_t i = 0; i < shown.size(); ++i) {
            if (i) out += L'\t';
            out += FlatCell(cellOf(shown[i]));
        }
        out += L"\r\n";
    };
    line([&](int c) -> const std::wstring& { return table.columns[static_cast<size_t>(c)].name; });
    const int rows = table.RowCount();
    for (int r = 0; r < rows; ++r) line([&](int c) -> const std::wstring& { return table.Cell(c, r); });
    return out;
}

std::string HtmlTable(const PrintTable& table) {
    std::vector<int> shown;
    for (int c = 0; c < static_cast<int>(table.columns.size()); ++c)
        if (!table.IsBitmapColumn(c)) shown.push_back(c);
    std::string out = "<table border=\"1\" cellspacing=\"0\">\r\n<tr>";
    for (int c : shown) {
        const PrintColumn& col = table.columns[static_cast<size_t>(c)];
        out += "<th";
        out += AlignStyle(col.alignment);
        out += ">";
        AppendHtmlEscaped(col.name, out);
        out += "</th>";
    }
    out += "</tr>\r\n";
    const int rows = table.RowCount();
    for (int r = 0; r < rows; ++r) {
        out += "<tr>";
        for (int c : shown) {
            out += "<td";
            out += AlignStyle(table.CellAlignment(c, r));
            out += ">";
            AppendHtmlEscaped(table.Cell(c, r), out);
            out += "</td>";
        }
        out += "</tr>\r\n";
    }
    out += "</table>";
    return out;
}

std::string CfHtml(std::string_view fragment) {
    // Every offset is written with ten digits, so the header's length does
    // not depend on the numbers in it.
    static constexpr char kHeader[] =
        "Version:0.9\r\nStartHTML:%010zu\r\nEndHTML:%010zu\r\nStartFragment:%010zu\r\nEndFragment:%010zu\r\n";
    static constexpr char kBefore[] =
        "<html>\r\n<head>\r\n<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\r\n</head>\r\n"
        "<body>\r\n<!--StartFragment-->";
    static constexpr char kAfter[] = "<!--EndFragment-->\r\n</body>\r\n</html>\r\n";
    char probe[160];
    const size_t headerLength = static_cast<size_t>(std::snprintf(probe, sizeof probe, kHeader, size_t{0}, size_t{0},
                                                                  size_t{0}, size_t{0}));
    const size_t startHtml = headerLength;
    const size_t startFragment = startHtml + sizeof kBefore - 1;
    const size_t endFragment = startFragment + fragment.size();
    const size_t endHtml = endFragment + sizeof kAfter - 1;
    char header[160];
    std::snprintf(header, sizeof header, kHeader, startHtml, endHtml, startFragment, endFragment);
    std::string out;
    out.reserve(endHtml);
    out += header;
    out += kBefore;
    out += fragment;
    out += kAfter;
    return out;
}

}  // namespace qv::printlist
