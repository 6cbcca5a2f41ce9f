#include "quorvel/masks/pattern.h"
#include "quorvel/masks/pattern_lint.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

struct CheckCase { const wchar_t* mask; const wchar_t* text; int expected; };

int CheckOf(const std::wstring& mask, const std::wstring& text) {
    return XParserFactory::GetParserFactory()->Check(text, mask);
}

const CheckCase kChecks[] = {
    // Prefix acceptance and the empty text.
    {L"##", L"", 1}, {L"[abc]", L"", 1}, {L"(", L"", 1}, {L"", L"", 1}, {L"", L"a", 0},
    {L"##", L"1", 1},
    // Greedy repetition fails an item above its maximum instead of stopping.
    {L"##", L"12", 0}, {L"#", L"7", 1}, {L"#", L"x", 0}, {L"#2?", L"12", 1}, {L"#2?", L"123", 0},
    {L"#?", L"0123", 1}, {L"#?", L"12a", 0},
    // Quantifier digits that become literals.
    {L"#12#?", L"5", 1}, {L"#12#?", L"51", 0}, {L"[ab]12#?", L"ab125", 1}, {L"[ab]3#?", L"ab5", 0},
    // Printable characters.
    {L"*?", L"Ab 9?", 1}, {L"*?", L"a\tb", 0}, {L"*?", L"a\nb", 0}, {L"*?", L"a\x85", 0},
    {L"*?", L"\x00e9\x20ac", 1},
    // String sets: whole strings, prefixes anywhere, ties to the earlier one.
    {L"[abc|de]", L"de", 1}, {L"[abc|de]", L"ab", 1}, {L"[abc|de]x", L"abx", 1}, {L"[abc|ab]", L"abx", 0},
    {L"[abc]?", L"abcabc", 1}, {L"[abc]?-", L"abab-", 1}, {L"[#(]", L"#(", 1}, {L"[ab", L"a", 0},
    // Groups never fail their caller.
    {L"(+|-)#?", L"5", 1}, {L"(+|-)#?", L"+12", 1}, {L"(+|-)#?", L"-", 1}, {L"(+|-)#?", L"+-1", 0},
    {L"(+|-)#?", L"1-", 0}, {L"(a|b)c", L"c", 1}, {L"(a|b)c", L"bc", 1}, {L"(a|b)c", L"ac1", 0},
    {L"#?(.)(#?)", L"12.", 1}, {L"#?(.)(#?)", L"12.5", 1},
    {L"#?(.|,)(#?)(e#?)", L"1,5e10", 1}, {L"#?(.|,)(#?)(e#?)", L"1e5", 1}, {L"#?(.|,)(#?)(e#?)", L"1e5e", 0},
    // Worked checks on a comma mask.
    {L"#5?(.|,)(#2?)", L"12345", 1}, {L"#5?(.|,)(#2?)", L"123456", 0}, {L"#5?(.|,)(#2?)", L"12,5", 1},
    {L"#5?(.|,)(#2?)", L"12.345", 0}, {L"#5?(.|,)(#2?)", L"1.2.3", 0},
    {L"#0?(.|,)(#0?)", L".", 1}, {L"#0?(.|,)(#0?)", L"1", 0},
    // Literals.
    {L"AB-##", L"AB-1", 1}, {L"AB-##", L"A", 1}, {L"AB-##", L"AC", 0}, {L"AA", L"AA", 0},
    // '|' at the top level completes the match; an alternative restarts at
    // the level's beginning.
    {L"a|b", L"ab", 1}, {L"a|b", L"b", 1}, {L"ab|ac", L"ac", 1}, {L"ab|ac", L"ad", 0},
    {L"x(ab|ac)#", L"xac5", 1},
    // A failing group inside a level that has a later '|': the group counts
    // as matching nothing.
    {L"(a|b)c|d", L"d", 1},
    // Unbalanced brackets answer without hanging.
    {L"(a", L"a", 0}, {L"a)b", L"ax", 1}, {L"((a)", L"a", 0}, {L"(((((", L"x", 0}, {L")", L"zz", 1},
    // Empty string alternatives: the guard refuses, and texts that never
    // reach the item keep their answer.
    {L"[|a]", L"a", 1}, {L"[|a]", L"b", 0}, {L"[]", L"x", 0}, {L"[a|]", L"ab", 0}, {L"x[|a]", L"y", 0},
    {L"#|[|a]", L"5", 1},
};

TEST(Pattern, ChecksAnswerAsTheLanguageReads) {
    for (const CheckCase& c : kChecks)
        EXPECT_EQ(CheckOf(c.mask, c.text), c.expected) << "mask '" << testing::PrintToString(std::wstring(c.mask))
                                                       << "' text " << testing::PrintToString(std::wstring(c.text));
}

TEST(Pattern, BuiltInNumericPatternsOnTypicalAndHostileInput) {
    const std::wstring unsignedInt = L"#?", signedInt = L"(+|-)#?", unsignedDec = L"#?(.)(#?)",
                       anySep = L"#?(.|,)(#?)(e#?)", signedDec = L"(+|-)#?(.|,)(#?)(e#?)";
    struct Row { const std::wstring* mask; const wchar_t* text; int expected; } rows[] = {
        {&unsignedInt, L"007", 1}, {&unsignedInt, L"-1", 0}, {&unsignedInt, L"1 2", 0},
        {&signedInt, L"-0", 1}, {&signedInt, L"--", 0}, {&signedInt, L"+", 1},
        {&unsignedDec, L"3.14", 1}, {&unsignedDec, L"3,14", 0}, {&unsignedDec, L".5", 1}, {&unsignedDec, L"1..", 0},
        {&anySep, L"2,5e", 1}, {&anySep, L"e", 1}, {&anySep, L"1.2,3", 0}, {&anySep, L"1E5", 0},
        {&signedDec, L"-12.5e3", 1}, {&signedDec, L"+,5", 1}, {&signedDec, L"-1e-3", 0}, {&signedDec, L"1+", 0},
        {&signedDec, L"\x0661", 0}, {&signedDec, L"12\x00a0" L"3", 0},
    };
    for (const Row& r : rows) EXPECT_EQ(CheckOf(*r.mask, r.text), r.expected) << testing::PrintToString(std::wstring(r.text));
    // Long texts: linear work, same answers.
    const std::wstring digits(10000, L'7');
    EXPECT_EQ(CheckOf(signedDec, L"-" + digits + L"." + digits), 1);
    EXPECT_EQ(CheckOf(signedDec, digits + L"x"), 0);
    EXPECT_EQ(CheckOf(L"#5?", digits), 0);
}

TEST(Pattern, CommaMaskAndSingleton) {
    XParserFactory* first = XParserFactory::GetParserFactory();
    EXPECT_EQ(first, XParserFactory::GetParserFactory());
    EXPECT_EQ(first->GetCommaMask(5, 2) + first->GetCommaMask(0, 0) + first->GetCommaMask(12, 10),
              L"#5?(.|,)(#2?)#0?(.|,)(#0?)#12?(.|,)(#10?)");
    EXPECT_EQ(first->NoZero(), 1);
    XParserFactory::DestroyParserFactory();
    XParserFactory::DestroyParserFactory();  // a second destroy is harmless
    XParserFactory* again = XParserFactory::GetParserFactory();
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->Check(L"12,5", again->GetCommaMask(5, 2)), 1);
}

TEST(Pattern, ItemsConsumeGreedily) {
    struct Row { const wchar_t* mask; int kind; const wchar_t* text; int count; int end; int min; int max; } rows[] = {
        {L"#", 1, L"7", 1, 1, 1, 1},       {L"#", 1, L"x", 0, 0, 1, 1},
        {L"#2?", 1, L"123", 3, 3, 0, 2},   {L"#?", 1, L"", 0, 0, 0, 100000},
        {L"*3?", 2, L"ab\tc", 2, 2, 0, 3}, {L"#99999999999?", 1, L"1", 1, 1, 0, 2147483647},
    };
    for (const Row& r : rows) {
        int maskPos = 1, textPos = 0, count = 0;
        XMenge item(r.kind, r.mask, maskPos);
        item.Consume(r.text, textPos, count);
        EXPECT_EQ(std::tuple(count, textPos, item.m_nMin, item.m_nMax), std::tuple(r.count, r.end, r.min, r.max))
            << testing::PrintToString(std::wstring(r.mask));
    }
    int maskPos = 0, textPos = 0, count = 0;
    XMenge set(std::wstring(L"[abc|ab]?"), maskPos);
    EXPECT_EQ(maskPos, 9);
    set.Consume(L"abx", textPos, count);
    EXPECT_EQ(std::tuple(count, textPos), std::tuple(1, 2));
}

TEST(PatternLint, ReportsWhatAuthorsGetWrong) {
    struct Row { const wchar_t* mask; int pos; const wchar_t* fragment; } rows[] = {
        {L"(a|b", 0, L"never closed"},        {L"a)b", 1, L"without '('"},
        {L"[ab", 0, L"without ']'"},           {L"(|a)", 1, L"empty alternative"},
        {L"(a|)", 3, L"empty alternative"},    {L"a|", 2, L"empty alternative"},
        {L"[a||b]", 3, L"string set"},         {L"[]", 1, L"string set"},
        {L"#12#?", 1, L"literal characters"},  {L"?#", 0, L"literal question mark"},
        {L"#??", 2, L"literal question mark"}, {L"#?#", 0, L"nothing can be typed"},
        {L"*?x", 0, L"nothing can be typed"},  {L"##", 0, L"nothing can be typed"},
        {L"[ab|c]?a", 0, L"nothing can be typed"}, {L"[a(b]", 2, L"group bracket"},
    };
    for (const Row& r : rows) {
        const auto problems = qv::LintPattern(r.mask);
        bool found = false;
        for (const auto& p : problems) found |= p.pos == r.pos && p.message.find(r.fragment) != std::wstring::npos;
        EXPECT_TRUE(found) << testing::PrintToString(std::wstring(r.mask));
    }
    for (const wchar_t* clean : {L"#?", L"(+|-)#?(.|,)(#?)(e#?)", L"#5?(.|,)(#2?)", L"AB-#", L"[Mon|Tue]?", L"#?-#?"})
        EXPECT_TRUE(qv::LintPattern(clean).empty()) << testing::PrintToString(std::wstring(clean));
}

TEST(PatternLint, ExplainsTheRefusedCharacter) {
    const auto e = qv::ExplainPattern(L"#5?(.|,)(#2?)", L"12,345");
    EXPECT_FALSE(e.accepted);  // the decimals "#2?" matched 3 times
    EXPECT_EQ(std::tuple(e.prefixLength, e.trace.reason, e.trace.itemBegin),
              std::tuple(5, qv::PatternTrace::Reason::ItemFailed, 9));
    EXPECT_EQ(qv::ExplainPattern(L"#?", L"12x").trace.reason, qv::PatternTrace::Reason::PatternUsedUp);
    const auto digits = qv::ExplainPattern(L"#2?x", L"123");
    EXPECT_EQ(std::tuple(digits.prefixLength, digits.trace.reason, digits.trace.itemBegin, digits.trace.count),
              std::tuple(2, qv::PatternTrace::Reason::ItemFailed, 0, 3));
    EXPECT_NE(qv::DescribeRefusal(L"#2?x", L"123", digits).find(L"\"#2?\""), std::wstring::npos);
    const auto empty = qv::ExplainPattern(L"x[|a]", L"xb");
    EXPECT_EQ(empty.trace.reason, qv::PatternTrace::Reason::EmptyAlternative);
    EXPECT_TRUE(qv::ExplainPattern(L"(+|-)#?", L"-12").accepted);
}

}  // namespace
