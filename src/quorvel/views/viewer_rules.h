// The decisions of the image and page viewer, without a window: which viewer
// a file name gets, whether a file is a page an office suite saved (and what
// it is opened as then), the command line that starts the web browser, the
// texts of the shell's errors, where the view's parts go at any DPI and what
// a screen reader hears of the file.
//
// Private to the library: the window classes (viewers.h) read the files and
// the registry and hand the texts in here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quorvel/common/box.h"
#include "quorvel/common/dpi_rules.h"

namespace qv::viewer {

// The viewer a file is shown in.
enum class Kind {
    None,    // no viewer: "File not found" shows in its place
    Html,    // the embedded web browser (pictures, pages, text)
    Bitmap,  // the bitmap viewer
};

// The up to three characters after the last "." of the file name (the part
// after the last "\" or "/"), as they are; empty without a dot. A dot in a
// folder name is no extension.
std::wstring ExtensionKey(std::wstring_view path);

// The viewer for a file name: "gif", "jpg", "htm" and "txt" (any case) go to
// the web browser, "bmp" to the bitmap viewer, anything else to none. Only
// three characters count, so "page.html" is a page and "photo.jpeg" (key
// "jpe") has no viewer.
Kind ChooseViewer(std::wstring_view path);

// A bitmap file read for drawing: a packed device-independent bitmap (a
// 40-byte header, then the three bit-field masks or the colour table, then
// the pixel rows bottom-up, each padded to 4 bytes), as the drawing
// functions take it.
struct PackedDib {
    std::vector<unsigned char> bytes;
    size_t bitsOffset = 0;  // where the pixel rows start in `bytes`
    int width = 0;
    int height = 0;         // always positive: top-down files are turned over
    int bitCount = 0;
};

// The largest side read, and the largest file.
inline constexpr long kMaxBitmapSide = 16000;
inline constexpr size_t kMaxBitmapFile = size_t{1} << 30;

// Reads a .bmp file's bytes: 1, 4, 8, 16, 24 or 32 bits per pixel,
// uncompressed, or with bit fields at 16 and 32 bits; headers of 40 bytes and
// the larger versions. False (and `dib` untouched) for anything else: core
// headers, run-length compression, embedded JPEG or PNG, sizes of zero or
// over kMaxBitmapSide, pixels or colours the file is too short for.
bool ParseBmp(std::string_view file, PackedDib& dib);

// The lines of a text file's bytes: UTF-16 (little or big endian) with its
// byte-order mark, otherwise UTF-8 (a mark is skipped; bytes that are not
// UTF-8 come through as U+FFFD, which no header line contains). Lines end at
// "\n", "\r\n" or "\r" and are given without the end. At most `maxLines`.
std::vector<std::wstring> TextLines(std::string_view bytes, size_t maxLines);

// Whether a first line starts an HTML file: it begins with "<html " (with
// the blank, as written).
bool IsHtmlFirstLine(std::wstring_view line);

// The application an office page belongs to.
enum class Office {
    None,         // not an office page: opened as it is
    WordPage,     // opened as a word-processor document (".doc")
    SpreadSheet,  // opened as a spreadsheet (".xls")
};

// The office page a file's first lines announce: line 1 opens the vector
// mark-up namespace on "<html", line 2 the office namespace, line 3 the
// word-processor or the spreadsheet namespace. Each line is compared whole,
// ignoring case and blanks around it; the first line that differs ends the
// test with None.
Office DetectOfficePage(const std::vector<std::wstring>& lines);

// The extension an office page is opened with ("doc", "xls"; "" for None).
std::wstring_view OfficeExtension(Office office);

// The file name (no folder) of `path` with its last extension replaced by
// `extension` ("report.htm", "doc" -> "report.doc"; a name without one gets
// it appended). Empty for an empty extension or a path without a file name.
std::wstring NameWithExtension(std::wstring_view path, std::wstring_view extension);

// The file name an office page is opened under (NameWithExtension with its
// office extension); empty for None.
std::wstring OfficeFileName(std::wstring_view path, Office office);

// Whether the file is a picture ("gif", "jpg" or "bmp" after the last dot,
// any case) rather than a page or a text: a screen reader hears the view
// showing it as a graphic.
bool IsPicture(std::wstring_view path);

// The name a screen reader hears for the file a view shows: its name without
// the folder ("C:\\plans\\site.bmp" gives "site.bmp"); the whole text when
// it ends in a separator (an address such as "http://host/").
std::wstring ReaderName(std::wstring_view path);

// The image view's parts in its client area `width` x `height` at `dpi`.
// At 96 DPI the file-name field and the buttons share a top row 24 pixels
// high: three buttons 24 wide at the right edge, 2 apart, the field from
// the left edge to 2 before the first button; the viewer (or the "File not
// found" text) fills the rest from 2 below the row. A view without the row
// (the reduced viewers) gives the viewer the whole area. Every length is
// scaled to the DPI; nothing is turned over in a view too small for it.
inline constexpr int kRowHeight = 24;
inline constexpr int kRowGap = 2;
inline constexpr int kButtonCount = 3;
struct ViewLayout {
    Box edit;                  // empty without the row
    Box buttons[kButtonCount]; // reload, open, web browser
    Box viewer;
};
ViewLayout LayOutView(int width, int height, bool withRow, unsigned dpi) noexcept;

// The command that starts the web browser on `file`, from the browser's
// registered open command: everything before its "%1" (all of it when there
// is none), a blank, then the file. Empty when no command is registered.
std::wstring BrowserCommandLine(std::wstring_view registered, std::wstring_view file);


}  // namespace qv::viewer
