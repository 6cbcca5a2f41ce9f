// The viewer's decisions: which viewer a name gets, office pages and the
// name they are opened under, the browser's command line, the lines of a
// file in its encodings.
#include "quorvel/views/viewer_rules.h"

#include <gtest/gtest.h>

#include <string>

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
    EXPECT_STREQ(vw::ShellErrorText(5), L"Access denied");
    EXPECT_STREQ(vw::ShellErrorText(31), L"There is no application associated with the given file name extension");
    EXPECT_STREQ(vw::ShellErrorText(26), L"A sharing violation occurred");
    EXPECT_STREQ(vw::ShellErrorText(2), L"Unknown error");
    EXPECT_STREQ(vw::ShellErrorText(0), L"Unknown error");
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

}  // namespace
