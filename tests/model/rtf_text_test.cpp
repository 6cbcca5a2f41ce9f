#include "quorvel/frame/rtf_text.h"

#include <gtest/gtest.h>

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
    // \'hh in Windows-1252, including invalid hex.
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

TEST(RtfToText, SurvivesDeepNesting) {
    const std::size_t depth = 200000;
    const std::wstring rtf = L"{\\rtf1 " + std::wstring(depth, L'{') + L"x" + std::wstring(depth, L'}') + L"y}";
    std::wstring text;
    ASSERT_TRUE(qv::RtfToText(rtf, text));
    EXPECT_EQ(text, L"xy");
}

}  // namespace
