// The filtering combo box's rules: the tokens of a typed pattern, the match
// of a text against them, which entries a typed text keeps, the lower-casing
// and the dropped list's size.
#include "quorvel/lists/filter_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

namespace ql = qv::lists;

std::wstring Describe(const std::vector<ql::FilterToken>& tokens) {
    std::wstring out;
    for (const auto& t : tokens) out += std::to_wstring(t.type) + L"[" + t.text + L"]";
    return out;
}

TEST(FilterRulesTest, TokensAndEscapes) {
    const struct { const wchar_t* pattern; const wchar_t* tokens; bool wildcard; } cases[] = {
        {L"", L"", false},
        {L"abc", L"2[abc]", false},
        {L"a+b", L"2[a+b]", false},                       // "+" is a literal
        {L"ab*", L"2[ab]0[*]", true},
        {L"*ab", L"0[*]2[ab]", true},
        {L"a?b", L"2[a]1[?]2[b]", true},
        {L"**", L"0[*]0[*]", true},
        {L"a\\*b", L"2[a*b]", false},                     // escaped star: literal, no wildcard
        {L"\\?\\\\", L"2[?\\]", false},
        {L"a\\xb", L"2[axb]", false},                     // backslash before anything else dropped
        {L"ab\\", L"2[ab]", false},                       // trailing backslash dropped
        {L"\\**", L"2[*]0[*]", true},
    };
    for (const auto& c : cases) {
        std::vector<ql::FilterToken> tokens{{ql::kFilterLiteral, L"stale"}};
        EXPECT_EQ(ql::TokenizeString(c.pattern, tokens), c.wildcard) << c.pattern;
        EXPECT_EQ(Describe(tokens), c.tokens) << c.pattern;
    }
}

TEST(FilterRulesTest, MatchAnchorsTheStartAndOnlyAStarLiteralEndAnchorsTheEnd) {
    const struct { const wchar_t* pattern; const wchar_t* text; bool match; } cases[] = {
        {L"ab*", L"abc", true},       {L"ab*", L"xabc", false},       // literal then star: begins with
        {L"*ab", L"xxab", true},      {L"*ab", L"abx", false},        // star then literal: ends with
        {L"*ab", L"abab", true},      {L"*a*a*a*a*b", L"aaaab", true},
        {L"a?c", L"abc", true},       {L"a?c", L"abcdef", true},      // whatever follows
        {L"a?c", L"acc", true},       {L"a?c", L"ac", false},  {L"a?c", L"xbc", false},
        {L"ab?", L"ab", true},        {L"ab?", L"abz", true},         // a trailing "?" asks nothing more
        {L"?b", L"ab", true},         {L"?b", L"b", false},
        {L"a*c*e", L"abcde", true},   {L"a*c*e", L"abcdex", false},   {L"a*e*c", L"abcde", false},
        {L"*", L"", true},            {L"", L"anything", true},
        {L"a\\*", L"a*b", true},      {L"a\\*", L"ab", false},
        {L"+x", L"+xy", true},        {L"+x", L"a+x", false},
        {L"*?", L"", true},           {L"a*?*b", L"ab", false},       // "?" steps on even after a star
    };
    for (const auto& c : cases) {
        std::vector<ql::FilterToken> tokens;
        ql::TokenizeString(c.pattern, tokens);
        EXPECT_EQ(ql::CompareTokenToString(tokens, c.text), c.match) << c.pattern << L" / " << c.text;
    }
}

// A backtracking matcher takes exponential time here; ours reads the text
// once per literal (a hang would show as the test's timeout).
TEST(FilterRulesTest, StarsNeverBacktrack) {
    std::vector<ql::FilterToken> tokens;
    std::wstring pattern;
    for (int i = 0; i < 2000; ++i) pattern += L"*a";
    ql::TokenizeString(pattern + L"*b*", tokens);  // no end anchor: the whole text is searched
    const std::wstring text(200000, L'a');
    EXPECT_FALSE(ql::CompareTokenToString(tokens, text));
    EXPECT_TRUE(ql::CompareTokenToString(tokens, text + L"b"));
    ql::TokenizeString(std::wstring(100000, L'*') + L"b", tokens);
    EXPECT_TRUE(ql::CompareTokenToString(tokens, text + L"b"));
}

TEST(FilterRulesTest, TypedTextKeepsEntriesInStoredOrderByPrefixOrPattern) {
    const std::vector<std::wstring> lowered = {L"apple", L"apricot", L"banana", L"grape", L"a*b", L"c+d", L"ab"};
    const struct { const wchar_t* typed; std::vector<size_t> kept; } cases[] = {
        {L"", {0, 1, 2, 3, 4, 5, 6}},
        {L"ap", {0, 1}},                 // prefix
        {L"pe", {}},                     // prefix does not float
        {L"*pe", {3}},                   // ends with
        {L"ap*", {0, 1}},
        {L"a?b", {4}},
        {L"a\\*", {4}},                  // an escaped star still selects pattern mode
        {L"c+", {5}},                    // "+" switches to pattern mode, taken literally
        {L"zz*", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(ql::FilterEntries(lowered, c.typed), c.kept) << c.typed;
}

TEST(FilterRulesTest, LowerCasingIsAsciiAndLatin1Only) {
    EXPECT_EQ(ql::ToLowerFilterText(L"AbZ\u00C4\u00DE\u00D7\u00DF\u0100-9"), L"abz\u00E4\u00FE\u00D7\u00DF\u0100-9");
}

TEST(FilterRulesTest, DroppedListSize) {
    // The tall-font limit and the room between rows are pixels at 96 DPI:
    // a 9-point font made for 144 or 192 DPI still gets 15 rows.
    const struct { int h; unsigned dpi; int rows, item; } cases[] = {
        {16, 96, 15, 19}, {24, 96, 15, 27}, {25, 96, 5, 36}, {40, 96, 5, 51},
        {24, 144, 15, 29}, {36, 144, 15, 41}, {37, 144, 5, 54},
        {29, 192, 15, 35}, {48, 192, 15, 54}, {49, 192, 5, 71},
    };
    for (const auto& c : cases) {
        const ql::DropDownSize s = ql::DropDownSizeFor(c.h, c.dpi);
        EXPECT_EQ(s.rows, c.rows) << c.h << " @" << c.dpi;
        EXPECT_EQ(s.itemHeight, c.item) << c.h << " @" << c.dpi;
        EXPECT_EQ(s.listHeight, c.rows * c.item) << c.h << " @" << c.dpi;
    }
    const struct { int widest, current; unsigned dpi; int want; } widths[] = {
        {100, 120, 96, 127}, {100, 127, 96, 0}, {100, 127, 144, 141}, {100, 141, 144, 0}, {100, 120, 192, 154},
    };
    for (const auto& w : widths) EXPECT_EQ(ql::DroppedWidthFor(w.widest, w.current, w.dpi), w.want) << w.dpi;
    EXPECT_EQ(ql::FillerCount(3, 15), 12);
    EXPECT_EQ(ql::FillerCount(20, 15), 0);
}

}  // namespace
