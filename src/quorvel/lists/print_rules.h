// The print-list object's rules without a window: the table a list hands
// over, how it is laid out on pages, and the clipboard texts made from it.
//
// Units: column widths are the list's pixels (96 to the inch on a normal
// screen); everything on a page is in the target device's units (printer
// dots, or the preview's pixels). The page area is the rectangle inside the
// margins.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qv::printlist {

// Alignment codes of headers and cells.
enum Alignment : int { kAlignLeft = 0, kAlignBitmap = 1, kAlignRight = 3, kAlignCenter = 4 };

// One display column as the list handed it over.
struct PrintColumn {
    std::wstring name;
    int alignment = kAlignLeft;   // the header's code
    int width = 0;                // list pixels
    std::vector<std::wstring> cells;
    std::vector<int> cellAlignments;  // one per cell; may be shorter than cells
};

// The whole list, columns in display order.
struct PrintTable {
    std::vector<PrintColumn> columns;

    // The longest column's cell count: columns handed over with fewer rows
    // show empty cells below their last one.
    int RowCount() const;
    // The cell's text, "" outside the column.
    const std::wstring& Cell(int column, int row) const;
    // How the cell is drawn: its own code when it has one other than left,
    // else the column's. A list hands over left for every cell of a column
    // whose header is right-aligned; the header decides then.
    int CellAlignment(int column, int row) const;
    // Whether the column shows pictures (its header or its cells say so).
    bool IsBitmapColumn(int column) const;
};

// ---- Page layout -----------------------------------------------------------

// The default font size and the smallest one that shrinking goes down to.
inline constexpr double kFontPoints = 9.0;
inline constexpr double kMinFontPoints = 6.0;

// Device units per list pixel: the columns at their physical size on the
// list's screen (dpi / listDpi), shrunk to the area's width when they are
// wider, never enlarged. Total width 0 (or no columns) keeps the physical size.
double ColumnScale(const std::vector<int>& widths, int areaWidth, int dpi, int listDpi = 96);

// The text height in device units (positive, for a font of that many pixels
// per em) of the body font: kFontPoints shrunk as much as the columns were
// below their physical size, but not below kMinFontPoints.
int FontHeight(double scale, int dpiX, int dpiY, int listDpi = 96);

struct LayoutInput {
    std::vector<int> widths;   // list pixels, display order; negative counts as 0
    int rowCount = 0;
    int areaWidth = 0;         // device units
    int areaHeight = 0;
    int dpiX = 96;             // device units per inch
    int listDpi = 96;          // list pixels per inch
    int rowHeight = 1;         // one body row, device units (at least 1 is used)
    int headerHeight = 1;      // the header row
    int footerHeight = 0;      // the footer line with its gap above
};

struct PageLayout {
    double scale = 1.0;              // device units per list pixel
    std::vector<int> columnX;        // left edge of each column from the area's left, plus the right edge of the last
    int rowHeight = 1;
    int headerHeight = 1;
    int rowsPerPage = 1;             // at least 1, even when not one row fits
    int pageCount = 0;               // 0 without columns; 1 for a list without rows

    // The first row of page `page` (0-based) and how many rows it shows.
    int FirstRow(int page) const;
    int RowsOn(int page, int rowCount) const;
    // Top of the header row is 0; body row i of a page starts below it.
    int RowTop(int rowOnPage) const { return headerHeight + rowOnPage * rowHeight; }
};

PageLayout ComputeLayout(const LayoutInput& in);

// The page footer's right-hand text: `format` with %1 the page number
// (1-based) and %2 the page count, e.g. "Page %1 of %2".
std::wstring PageFooter(std::wstring_view format, int page, int pageCount);

// The area inside margins of `marginMm` millimetres from the paper's edges,
// in printable-area coordinates (where device point 0,0 is the printable
// area's corner). The printer's own unprintable edge counts towards the
// margin; a margin smaller than it leaves the printable area as it is.
struct Rect { int left = 0, top = 0, right = 0, bottom = 0; };
Rect MarginArea(int paperWidth, int paperHeight, int offsetX, int offsetY, int printableWidth, int printableHeight,
                int dpiX, int dpiY, double marginMm);

// ---- Clipboard -------------------------------------------------------------

// A cell or header as one line: tabs, line breaks and other control
// characters become blanks (a CR LF pair one blank), so no text breaks a
// column or a row.
std::wstring FlatCell(std::wstring_view text);

// Tab-separated text: the header row, then each row; every line ends with
// CR LF. Picture columns are left out (their cells carry no text).
std::wstring ClipboardText(const PrintTable& table);

// An HTML table (UTF-8): a header row of <th>, then one <tr> per row; cells
// flattened like the text form and &, <, >, " escaped; right and centred
// columns carry a text-align style. Picture columns are left out.
std::string HtmlTable(const PrintTable& table);

// The "HTML Format" clipboard data around an HTML fragment (UTF-8): the
// Version/StartHTML/EndHTML/StartFragment/EndFragment header with byte
// offsets into the returned bytes, then the document with the fragment
// between the <!--StartFragment--> and <!--EndFragment--> marks.
std::string CfHtml(std::string_view fragment);

}  // namespace qv::printlist
