// The viewer's decisions: which viewer a name gets, office pages and the
// name they are opened under, the browser's command line, the lines of a
// file in its encodings, the view's layout at any DPI and the file's name
// for a screen reader.
#include "quorvel/views/viewer_rules.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "quorvel/common/shell_text.h"

namespace {

namespace vw = qv::viewer;
using vw::Kind;
using vw::Office;

TEST(ViewerRulesTest, ViewerByTheCharactersAfterTheLastDot) {
    const struct { const wchar_t* path; Kind kind; const wchar_t* key; } cases[] = {
        {L"C:\\pics\\picture.JPG", Kind::Html, L"JPG"},
        {L"page.HTML", Kind::Html, L"HTM"},       // three characters count
        {L"page.htm", Kind::Html, L"htm"},
        {L"anim.gif", Kind::Html, L"gif"},
        {L"notes.txt", Kind::Html, L"txt"},
        {L"drawing.bmp", Kind::Bitmap, L"bmp"},
        {L"drawing.BmPx", Kind::Bitmap, L"BmP"},
        {L"photo.jpeg", Kind::None, L"jpe"},
        {L"notes.doc", Kind::None, L"doc"},
        {L"README", Kind::None, L""},
        {L"archive.tar.bmp", Kind::Bitmap, L"bmp"},
        {L"C:\\dir.bmp\\file", Kind::None, L""},   // a dot in a folder is no extension
        {L"dir.v2/image.bm", Kind::None, L"bm"},  // fewer than three
        {L"trailing.", Kind::None, L""},
        {L"", Kind::None, L""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vw::ChooseViewer(c.path), c.kind) << std::wstring(c.path);
        EXPECT_EQ(vw::ExtensionKey(c.path), c.key) << std::wstring(c.path);
    }
}

TEST(ViewerRulesTest, TheRowAndTheViewerScaleWithTheDpi) {
    using qv::Box;
    const struct {
        int width, height;
        bool row;
        unsigned dpi;
        Box edit, reload, browser, viewer;
    } cases[] = {
        {300, 200, true, 96, {0, 0, 222, 24}, {224, 0, 248, 24}, {276, 0, 300, 24}, {0, 26, 300, 200}},
        {300, 200, false, 96, {}, {}, {}, {0, 0, 300, 200}},
        // 36-pixel buttons 3 apart at 150 %, 48 and 4 at 200 %.
        {450, 300, true, 144, {0, 0, 333, 36}, {336, 0, 372, 36}, {414, 0, 450, 36}, {0, 39, 450, 300}},
        {600, 400, true, 192, {0, 0, 444, 48}, {448, 0, 496, 48}, {552, 0, 600, 48}, {0, 52, 600, 400}},
        // Too small: the field shrinks to nothing, the viewer to an empty strip.
        {50, 10, true, 96, {0, 0, 0, 24}, {-26, 0, -2, 24}, {26, 0, 50, 24}, {0, 10, 50, 10}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << " x " << c.height << " at " << c.dpi);
        const vw::ViewLayout v = vw::LayOutView(c.width, c.height, c.row, c.dpi);
        EXPECT_EQ(v.edit, c.edit);
        EXPECT_EQ(v.buttons[0], c.reload);
        EXPECT_EQ(v.buttons[2], c.browser);
        EXPECT_EQ(v.viewer, c.viewer);
        if (c.row) {
            EXPECT_EQ(v.buttons[1].left - v.buttons[0].right, v.buttons[2].left - v.buttons[1].right);
        }
    }
}

TEST(ViewerRulesTest, ReadersHearTheFilesNameAndWhetherItIsAPicture) {
    const struct { const wchar_t* path; const wchar_t* name; bool picture; } cases[] = {
        {L"C:\\plans\\site.BMP", L"site.BMP", true},
        {L"D:/scans/photo.jpg", L"photo.jpg", true},
        {L"anim.gif", L"anim.gif", true},
        {L"C:\\docs.jpg\\page.htm", L"page.htm", false},
        {L"notes.txt", L"notes.txt", false},
        {L"http://host/", L"http://host/", false},
        {L"", L"", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(vw::ReaderName(c.path), c.name) << c.path;
        EXPECT_EQ(vw::IsPicture(c.path), c.picture) << c.path;
    }
}

TEST(ViewerRulesTest, OfficePagesByTheirFirstThreeLines) {
    const std::wstring vml = L"<html xmlns:v=\"urn:schemas-microsoft-com:vml\"";
    const std::wstring office = L"xmlns:o=\"urn:schemas-microsoft-com:office:office\"";
    const std::wstring word = L"xmlns:w=\"urn:schemas-microsoft-com:office:word\"";
    const std::wstring excel = L"xmlns:x=\"urn:schemas-microsoft-com:office:excel\"";
    const struct { std::vector<std::wstring> lines; Office office; } cases[] = {
        {{vml, office, word, L"xmlns=\"http://www.w3.org/TR/REC-html40\">"}, Office::WordPage},
        {{vml, office, excel}, Office::SpreadSheet},
        {{L"<HTML XMLNS:V=\"URN:SCHEMAS-MICROSOFT-COM:VML\"", office, L"  " + word + L" "}, Office::WordPage},
        {{vml, office}, Office::None},                          // file ends early
        {{vml, word, office}, Office::None},                    // out of order
        {{L"<html>", office, word}, Office::None},
        {{vml + L">", office, word}, Office::None},             // the line must be the header alone
        {{vml, office, L"xmlns:p=\"urn:schemas-microsoft-com:office:powerpoint\""}, Office::None},
        {{}, Office::None},
    };
    for (const auto& c : cases) EXPECT_EQ(vw::DetectOfficePage(c.lines), c.office) << c.lines.size();
}

TEST(ViewerRulesTest, OfficePageNames) {
    const struct { const wchar_t* path; Office office; const wchar_t* name; } cases[] = {
        {L"C:\\tmp\\report.htm", Office::WordPage, L"report.doc"},
        {L"C:\\tmp\\sheet.v1.html", Office::SpreadSheet, L"sheet.v1.xls"},
        {L"C:\\tmp.d\\noext", Office::WordPage, L"noext.doc"},
        {L".htm", Office::WordPage, L".htm.doc"},
        {L"C:\\tmp\\report.htm", Office::None, L""},
        {L"C:\\tmp\\", Office::WordPage, L""},
    };
    for (const auto& c : cases) EXPECT_EQ(vw::OfficeFileName(c.path, c.office), c.name) << std::wstring(c.path);
}

TEST(ViewerRulesTest, HtmlFirstLineNeedsTheBlank) {
    EXPECT_TRUE(vw::IsHtmlFirstLine(L"<html xmlns:v=\"x\""));
    EXPECT_TRUE(vw::IsHtmlFirstLine(L"<html lang=\"en\">"));
    EXPECT_FALSE(vw::IsHtmlFirstLine(L"<html>"));
    EXPECT_FALSE(vw::IsHtmlFirstLine(L"<!DOCTYPE html>"));
    EXPECT_FALSE(vw::IsHtmlFirstLine(L""));
}

TEST(ViewerRulesTest, BrowserCommandLine) {
    const struct { const wchar_t* registered; const wchar_t* line; } cases[] = {
        {L"\"C:\\IE\\iexplore.exe\" %1", L"\"C:\\IE\\iexplore.exe\" C:\\a b.htm"},
        {L"\"C:\\IE\\iexplore.exe\" \"%1\"", L"\"C:\\IE\\iexplore.exe\" C:\\a b.htm"},
        {L"C:\\IE\\iexplore.exe", L"C:\\IE\\iexplore.exe C:\\a b.htm"},
        {L"C:\\IE\\iexplore.exe -nohome %1 -x", L"C:\\IE\\iexplore.exe -nohome C:\\a b.htm"},
        {L"", L""},
        {L"   ", L""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(vw::BrowserCommandLine(c.registered, L"C:\\a b.htm"), c.line) << std::wstring(c.registered);
}

TEST(ViewerRulesTest, ShellErrorTexts) {
    EXPECT_STREQ(qv::ShellErrorText(5), L"Access denied");
    EXPECT_STREQ(qv::ShellErrorText(31), L"There is no application associated with the given file name extension");
    EXPECT_STREQ(qv::ShellErrorText(26), L"A sharing violation occurred");
    EXPECT_STREQ(qv::ShellErrorText(2), L"Unknown error");
    EXPECT_STREQ(qv::ShellErrorText(0, L"Help file not found"), L"Help file not found");
}

TEST(ViewerRulesTest, TextLinesInEachEncoding) {
    using namespace std::string_literals;
    const struct { std::string bytes; std::vector<std::wstring> lines; } cases[] = {
        {"one\r\ntwo\nthree\rfour", {L"one", L"two", L"three"}},
        {"\xEF\xBB\xBF<html a>\r\n", {L"<html a>"}},
        {"\xFF\xFE<\0h\0\r\0\n\0x\0"s, {L"<h", L"x"}},
        {"\xFE\xFF\0<\0h\0\n\0y"s, {L"<h", L"y"}},
        {"\xFF\xFE<"s, {}},                 // an odd byte left over is dropped
        {"a\n\nb", {L"a", L"", L"b"}},
        {"", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(vw::TextLines(c.bytes, 3), c.lines) << c.bytes;
    EXPECT_TRUE(vw::TextLines("abc", 0).empty());
}

// A .bmp file: `header` bytes of header (40 or a larger version), the
// given fields, `colours` table entries, then `pixelBytes` bytes of pixels
// numbered 0, 1, 2, ... so that their order can be followed.
struct BmpLayout {
    int headerSize = 40;
    int32_t width = 3, height = 2;
    uint16_t planes = 1, bits = 24;
    uint32_t compression = 0, used = 0;
    int colours = 0;
    int pixelBytes = -1;  // -1: exactly what the rows need
    int offBitsDelta = 0;
};
std::string File(const BmpLayout& b) {
    std::string s;
    const auto put = [&s](uint32_t v, int n) { for (int i = 0; i < n; ++i) s.push_back(char((v >> (8 * i)) & 0xFF)); };
    const uint32_t stride = ((uint32_t(b.width) * b.bits + 31) / 32) * 4;
    const uint32_t rows = uint32_t(b.height < 0 ? -b.height : b.height);
    const uint32_t masks = (b.compression == 3 && b.headerSize == 40) ? 12 : 0;
    const uint32_t offBits = 14 + uint32_t(b.headerSize) + masks + uint32_t(b.colours) * 4 + uint32_t(b.offBitsDelta);
    s += "BM";
    put(0, 4), put(0, 4), put(offBits, 4);
    put(uint32_t(b.headerSize), 4), put(uint32_t(b.width), 4), put(uint32_t(b.height), 4), put(b.planes, 2), put(b.bits, 2);
    put(b.compression, 4), put(0, 4), put(0, 4), put(0, 4), put(b.used, 4), put(0, 4);
    for (int i = 40; i < b.headerSize; ++i) s.push_back(char(0xA0 + (i - 40) % 12));  // masks inside a larger header
    for (uint32_t i = 0; i < masks; ++i) s.push_back(char(0xA0 + i));
    for (int i = 0; i < b.colours * 4; ++i) s.push_back(char(0xC0 + i % 64));
    s.resize(offBits, '\0');
    const int pixels = b.pixelBytes >= 0 ? b.pixelBytes : int(stride * rows);
    for (int i = 0; i < pixels; ++i) s.push_back(char(i));
    return s;
}

TEST(ViewerRulesTest, BitmapFilesReadOrRefused) {
    const struct { const char* what; BmpLayout layout; bool ok; size_t bitsOffset; } cases[] = {
        {"24 bits", {}, true, 40},
        {"32 bits", {.bits = 32}, true, 40},
        {"8 bits, full palette", {.bits = 8, .colours = 256}, true, 40 + 1024},
        {"8 bits, 3 colours used", {.bits = 8, .used = 3, .colours = 3}, true, 40 + 12},
        {"4 bits, too many used", {.bits = 4, .used = 99, .colours = 16}, true, 40 + 64},
        {"1 bit", {.width = 9, .bits = 1, .colours = 2}, true, 48},
        {"16 bits with fields", {.bits = 16, .compression = 3}, true, 52},
        {"32 bits, fields in a V5 header", {.headerSize = 124, .bits = 32, .compression = 3}, true, 52},
        {"top-down", {.height = -2}, true, 40},
        {"pixels after a gap", {.offBitsDelta = 10}, true, 40},
        {"2 bits", {.bits = 2}, false, 0},
        {"run-length", {.bits = 8, .compression = 1, .colours = 256}, false, 0},
        {"fields at 24 bits", {.compression = 3}, false, 0},
        {"embedded JPEG", {.compression = 4}, false, 0},
        {"core header", {.headerSize = 12}, false, 0},
        {"two planes", {.planes = 2}, false, 0},
        {"no width", {.width = 0}, false, 0},
        {"no height", {.height = 0}, false, 0},
        {"too wide", {.width = 16001, .pixelBytes = 0}, false, 0},
        {"one pixel byte short", {.pixelBytes = 23}, false, 0},
        {"palette cut off", {.bits = 8, .colours = 10}, false, 0},
    };
    for (const auto& c : cases) {
        vw::PackedDib dib;
        ASSERT_EQ(vw::ParseBmp(File(c.layout), dib), c.ok) << c.what;
        if (!c.ok) {
            EXPECT_TRUE(dib.bytes.empty()) << c.what;
            continue;
        }
        EXPECT_EQ(dib.bitsOffset, c.bitsOffset) << c.what;
        EXPECT_EQ(dib.bitCount, c.layout.bits) << c.what;
        EXPECT_EQ(dib.height, std::abs(c.layout.height)) << c.what;
        EXPECT_EQ(dib.bytes[0], 40) << c.what;                        // always the 40-byte header
        EXPECT_EQ(int32_t(dib.bytes[8] | dib.bytes[9] << 8), std::abs(c.layout.height)) << c.what;
        if (c.layout.compression == 3) {
            EXPECT_EQ(dib.bytes[40], 0xA0) << c.what;  // the masks kept
        }
    }
}

TEST(ViewerRulesTest, TopDownRowsAreTurnedOver) {
    vw::PackedDib down, up;
    ASSERT_TRUE(vw::ParseBmp(File({.height = -2}), down));
    ASSERT_TRUE(vw::ParseBmp(File({.height = 2}), up));
    // Rows of 12 bytes (3 pixels of 3 bytes, padded): the file's first row
    // is the top one when top-down, the bottom one otherwise.
    EXPECT_EQ(down.bytes[40], 12);
    EXPECT_EQ(down.bytes[40 + 12], 0);
    EXPECT_EQ(up.bytes[40], 0);
    EXPECT_EQ(up.bytes[40 + 12], 12);
}

}  // namespace
