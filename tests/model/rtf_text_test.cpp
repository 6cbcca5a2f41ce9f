#include "quorvel/frame/rtf_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "quorvel/common/utf8.h"

namespace {

struct RtfCase { const wchar_t* rtf; const wchar_t* text; };

const RtfCase kRtfCases[] = {
    // Groups, control words, delimiting space and parameters.
    {L"{\\rtf1\\ansi{\\b bold} plain}", L"bold plain"}, {L"  \r\n{\\rtf1 a\\fs-24 b\\f0c}", L"abc"},
    {L"{\\rtf1 a\\fs99999999999999999999 b\\u99999999999 c}", L"ab"},
    {L"{\\rtf1 a\\par b\\line c\\tab d}", L"a\r\nb\r\nc\td"}, {L"{\\rtf1 a\r\nb\\\nc}", L"ab\r\nc"},
    {L"{\\rtf1 x\\cell y\\cell\\row z}", L"x\ty\t\r\nz"},
    // Control symbols.
    {L"{\\rtf1 \\\\\\{\\}\\~\\-\\_}", L"\\{}\u00A0\u2011"},
    // Named characters.
    {L"{\\rtf1\\emdash\\endash\\bullet\\lquote\\rquote\\ldblquote\\rdblquote}",
     L"\u2014\u2013\u2022\u2018\u2019\u201C\u201D"},
    // \'hh with no code page named: Windows-1252, including invalid hex.
    {L"{\\rtf1 \\'e9\\'80\\'9f\\'41\\'zz\\'4}", L"\u00E9\u20AC\u0178Azz"},
    // \u with fallbacks of different lengths, group scoping and negative values.
    {L"{\\rtf1 \\u8364?x}", L"\u20ACx"},
    {L"{\\rtf1 \\uc2\\u8364\\'80\\'80x{\\uc0\\u233 y}\\u233 ??z}", L"\u20ACx\u00E9y\u00E9z"},
    {L"{\\rtf1 \\u-3980?}", L"\uF074"}, {L"{\\rtf1 \\uc3\\u233 a{b}}", L"\u00E9b"},
    {L"{\\rtf1{\\uc2\\u233}ab}", L"\u00E9ab"},
    // Hidden destinations with nested groups; visible text around them.
    {L"{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red0;}{\\*\\generator x;}A"
     L"{\\info{\\title T}}{\\header H}B{\\*\\unknown {deep}}C{\\pict\\bin3 }}}}D}",
     L"ABCD"},
    {L"{\\rtf1{\\field{\\*\\fldinst HYPERLINK \"u\"}{\\fldrslt link}}}", L"link"},
    // The document's code page: \ansicpg, else the header's character set,
    // else 1252; an unknown number counts as absent.
    {L"{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0\\'e8\\'e2\\'e5\\'f2}", L"\u041F\u0440\u0438\u0432\u0435\u0442"},
    {L"{\\rtf1\\mac \\'8e}", L"\u00E9"}, {L"{\\rtf1\\mac\\ansicpg99999 \\'8e}", L"\u00E9"},
    {L"{\\rtf1\\ansicpg99999 \\'e9}", L"\u00E9"},
    // Font charsets, group scoping, \deff and \plain; unknown charsets and
    // fonts read the document's code page; \cpg; entries without braces.
    {L"{\\rtf1\\ansicpg1251\\deff0{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset161 B;}}\\'e0{\\f1\\'e1}\\'e0}",
     L"\u0430\u03B1\u0430"},
    {L"{\\rtf1\\deff1{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset238 B;}}\\'b3\\f0\\'b3\\plain\\'b3}",
     L"\u0142\u00B3\u0142"},
    {L"{\\rtf1\\ansicpg1251{\\fonttbl{\\f0\\fcharset99 X;}}\\f0\\'e9\\f7\\'e9}", L"\u0439\u0439"},
    {L"{\\rtf1{\\fonttbl{\\f0\\cpg1253 X;}{\\f1\\fcharset162{\\*\\falt Y};}}\\f0\\'d9\\'ec\\f1\\'fe}", L"\u03A9\u03BC\u015F"},
    {L"{\\rtf1{\\fonttbl\\f0\\fcharset204 A;\\f1\\fcharset161 B;}\\f1\\'e1\\f0\\'e0}", L"\u03B1\u0430"},
    // Double-byte code pages: pairs as \'hh\'hh or with a literal ASCII trail
    // byte (\\ included), unassigned pairs, Johab and Big5.
    {L"{\\rtf1\\ansicpg932 \\'82\\'a0\\'83e\\'83X\\'83g\\'83\\\\}", L"\u3042\u30C6\u30B9\u30C8\u30BD"},
    {L"{\\rtf1\\ansicpg932 \\'85\\'40\\'b1}", L"\u30FB\uFF71"},
    {L"{\\rtf1{\\fonttbl{\\f0\\fcharset130 J;}{\\f1\\fcharset136 B;}}\\f0\\'d0\\'65\\'8b\\'69\\f1\\'a4\\'a4\\'a4\\'e5}",
     L"\uD55C\uAE00\u4E2D\u6587"},
    // A lead byte with no trail byte gives U+FFFD and swallows nothing.
    {L"{\\rtf1\\ansicpg936 x\\'d6", L"x\uFFFD"}, {L"{\\rtf1\\ansicpg936 \\'d6\\'20y}", L"\uFFFD y"},
    {L"{\\rtf1\\ansicpg936 \\'d6\\par\\'d6}\\'d0}", L"\uFFFD\r\n\uFFFD"},
    {L"{\\rtf1\\ansicpg936 {\\'d6}\\'ce\\'c4\\'d6\u00E9\\'d6\\'zz}", L"\uFFFD\u6587\uFFFD\u00E9\uFFFDzz"},
    // \u fallbacks count bytes: a pair written as two \'hh is two.
    {L"{\\rtf1\\ansicpg932\\uc2\\u12354\\'82\\'a0x\\uc1\\u12354\\'82\\'a0}", L"\u3042x\u3042\uF8F0"},
    // Symbol fonts: the Symbol font's meaning, U+F0xx for other fonts; spaces
    // stay spaces, control words keep their own characters.
    {L"{\\rtf1{\\fonttbl{\\f1\\fcharset2 Symbol{\\*\\falt Wingdings};}{\\f2\\fcharset2 Wingdings;}}"
     L"{\\f1\\'b7\\tab a W\\u-3999?\\'a0}{\\f2\\'a7 J}}",
     L"\u2022\t\u03B1 \u03A9\u03B1\uF0A0\uF0A7 \uF04A"},
    // Unbalanced braces: missing close accepted, text after the root ignored.
    {L"{\\rtf1 {open", L"open"},
    {L"{\\rtf1 a}}b}", L"a"},
    {L"{\\rtf1 a\\", L"a"},
};

TEST(RtfToText, ConvertsRichText) {
    for (const RtfCase& c : kRtfCases) {
        std::wstring text = L"stale";
        EXPECT_TRUE(qv::RtfToText(c.rtf, text)) << c.rtf;
        EXPECT_EQ(text, c.text) << c.rtf;
    }
}

TEST(RtfToText, RefusesOtherText) {
    for (const wchar_t* input : {L"", L"plain", L"{\\rt", L"x{\\rtf1 a}", L"{\\RTF1 a}", L"\\rtf1 a"}) {
        std::wstring text = L"stale";
        EXPECT_FALSE(qv::RtfToText(input, text)) << input;
        EXPECT_TRUE(text.empty()) << input;
    }
}

// Documents the system's rich edit control wrote (tests/data/rtf, made by
// write_samples.cpp there), with the text each must give.
TEST(RtfToText, ConvertsDocumentsOfTheRichEditControl) {
    const std::filesystem::path folder = std::filesystem::path(__FILE__).parent_path().parent_path() / "data" / "rtf";
    const auto read = [](const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    for (const char* name : {"cyrillic", "greek", "turkish", "central_european", "japanese", "chinese_simplified",
                             "korean", "mixed", "bullets"}) {
        const std::string rtf = read(folder / (std::string(name) + ".rtf"));
        const std::wstring expected = qv::Utf8ToWide(read(folder / (std::string(name) + ".txt")));
        ASSERT_FALSE(expected.empty()) << name;
        std::wstring text;
        EXPECT_TRUE(qv::RtfToText(std::wstring(rtf.begin(), rtf.end()), text)) << name;  // the files are ASCII
        EXPECT_EQ(text, expected) << name;
    }
}

TEST(RtfToText, SurvivesDeepNesting) {
    const std::size_t depth = 200000;
    const std::wstring rtf = L"{\\rtf1 " + std::wstring(depth, L'{') + L"x" + std::wstring(depth, L'}') + L"y}";
    std::wstring text;
    ASSERT_TRUE(qv::RtfToText(rtf, text));
    EXPECT_EQ(text, L"xy");
}

}  // namespace
