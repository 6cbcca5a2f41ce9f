#include "quorvel/controls/help_text_rules.h"

#include <gtest/gtest.h>

namespace {

TEST(HelpTextStatic, SplitsTheHelpStringAndAddsTheF1Hint) {
    const struct { const wchar_t *source, *tooltip, *document, *shown; } cases[] = {
        {L"Start date", L"Start date", L"", L"Start date"},
        {L"Start date<document>dates.htm</document>", L"Start date", L"dates.htm",
         L"Start date <For more help press F1>"},
        {L"<document>http://h/a.htm</document>", L"", L"http://h/a.htm", L" <For more help press F1>"},
        {L"Open<document>dates.htm", L"Open", L"", L"Open"},  // no closing tag: no document
        {L"Tail<document>a.htm</document> more", L"Tail", L"a.htm", L"Tail <For more help press F1>"},
    };
    for (const auto& c : cases) {
        const qv::ToolString parsed = qv::ParseToolString(c.source);
        EXPECT_EQ(parsed, (qv::ToolString{c.tooltip, c.document})) << c.source;
        EXPECT_EQ(qv::StaticTooltipText(parsed), c.shown) << c.source;
    }
    for (const wchar_t* none : {L"", L" "}) EXPECT_FALSE(qv::ShowsStaticTooltip(none));
    EXPECT_TRUE(qv::ShowsStaticTooltip(L"  "));
}

TEST(HelpTextStatic, AutoPopDelayIsFiveSecondsUnsetAndThirtyOtherwise) {
    const std::pair<std::uint32_t, std::uint32_t> cases[] = {
        {0, 5000}, {1, 30000}, {30, 30000}, {4294967u, 30000}, {0xFFFFFFFFu, 30000},
        {536870912u, 5000},  // 2^29 * 1000 wraps round to 0
        {652835029u, 8},     // wraps round to 8: used as it is
    };
    for (const auto& [setting, ms] : cases) EXPECT_EQ(qv::StaticAutoPopDelay(setting), ms) << setting;
}

TEST(HelpTextStatic, F1TargetIsTheWebAddressOrFolderPlusFile) {
    const struct { const wchar_t *document, *folder, *target; } cases[] = {
        {L"dates.htm", L"C:\\help\\", L"C:\\help\\dates.htm"},
        {L"dates.htm", L"C:\\help", L"C:\\helpdates.htm"},  // no separator is added
        {L"http://example.org/dates.htm", L"C:\\help\\", L"http://example.org/dates.htm"},
        {L"", L"C:\\help\\", L""},
    };
    for (const auto& c : cases) EXPECT_EQ(qv::HelpTarget(c.document, c.folder), c.target) << c.document;
}

TEST(HelpTextPrompt, TooltipEndsWithTheRedF1Line) {
    const std::wstring red = L"<ct=0xFF0000>Press F1 for more info...</ct>";
    const struct { const wchar_t* source; std::wstring tooltip; const wchar_t* file; } cases[] = {
        {L"Plain <b>text</b>", L"Plain <b>text</b>", L""},
        {L"Due date<document>dates.htm</document>", L"Due date<br><al_r>" + red, L"dates.htm"},
        {L"<document>dates.htm</document>", red, L"dates.htm"},
        {L"A<document>x<y>z</document>", L"A<br><al_r>" + red, L"x"},
    };
    for (const auto& c : cases) EXPECT_EQ(qv::PromptTooltip(c.source), (qv::PromptHelp{c.tooltip, c.file})) << c.source;
}

TEST(HelpTextPrompt, LineFeedsBecomeLineEnds) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"A\nB", L"\r\nB"},  // the first character is lost
        {L"XY\nZ", L"XY\r\nZ"}, {L"XY\r\nZ", L"XY\r\nZ"}, {L"ab\ncd\nef", L"ab\r\ncd\r\nef"}, {L"A\n\nB", L"\r\n\r\nB"},
    };
    for (const auto& [in, out] : cases) EXPECT_EQ(qv::PromptLineEnds(in), out) << ::testing::PrintToString(std::wstring(in));
}

}  // namespace

TEST(HelpTextAccessibleName, LabelsAreReadWithoutMarksAndReferences) {
    struct Case { const wchar_t* text; const wchar_t* name; } cases[] = {
        {L"Due &date", L"Due date"},           {L"Cost && price", L"Cost & price"},
        {L"Order number *", L"Order number"},  {L"Order*", L"Order"},
        {L"Line one\r\nline  two", L"Line one line two"},
        {L"  padded\t", L"padded"},
        {L"Help<document>help.htm</document>", L"Help"},
        {L"a < b", L"a < b"},                  {L"*", L""},  {L"", L""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.text);
        EXPECT_EQ(qv::AccessibleLabelName(c.text), c.name);
    }
}
