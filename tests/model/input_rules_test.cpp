#include "quorvel/controls/input_rules.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

// after: text once the edit control inserted the character
struct TypingCase { const wchar_t* after; int start, end; wchar_t typed; const wchar_t* text; int newStart, newEnd; };

const TypingCase kTypingCases[] = {
    {L"XYa", 3, 3, L'a', L"XYA", 3, 3},       // lower case becomes upper case
    {L"AB-", 3, 3, L'-', L"AB", 2, 2},        // a refused character goes again
    {L"A-B-", 4, 4, L'-', L"AB-", 3, 3},      // ... but the first equal one goes
    {L"-AB", 1, 1, L'-', L"AB", 0, 0},        // first character
    {L"ab c", 3, 3, L' ', L"ABC", 2, 2},
    {L"AB", 0, 0, L'\b', L"AB", 0, 0},        // Backspace occurs nowhere: nothing goes
    {L"A.B", 0, 3, L'.', L"AB", 0, 2},        // start at 0 stays
    {L"-", 0, 0, L'-', L"", 0, -1},           // the end may run below 0
    {L"7z", 2, 2, L'z', L"7Z", 2, 2},
    {L"\u00E9A", 1, 1, L'\u00E9', L"A", 0, 0},  // only a-z are upper-cased
};

TEST(InputRules, RestrictAfterTyping) {
    for (const TypingCase& c : kTypingCases) {
        SCOPED_TRACE(testing::Message() << "after \"" << c.after << "\"");
        const qv::FieldState next = qv::RestrictAfterTyping({c.after, c.start, c.end}, c.typed);
        EXPECT_EQ(std::tie(next.text, next.start, next.end), std::tuple(c.text, c.newStart, c.newEnd));
    }
}

struct SetCase { const wchar_t* text; int limit; bool restricted; const wchar_t* shown; };

const SetCase kSetCases[] = {
    {L"ABCDEF", 5, false, L"ABCDE"}, {L"ABCDE", 5, false, L"ABCDE"}, {L"a-b", 32767, false, L"a-b"},
    {L"ab-c", 32767, true, L""}, {L"ab9c", 32767, true, L"AB9C"},
    {L"abc-", 3, true, L"ABC"},  // cut before it is checked
    {L"", 5, true, L""}, {L"ABC", 0, false, L""}, {L"ABC", -1, false, L""},
};

TEST(InputRules, FieldTextForSet) {
    for (const SetCase& c : kSetCases) {
        SCOPED_TRACE(testing::Message() << "\"" << c.text << "\" limit " << c.limit);
        EXPECT_EQ(qv::FieldTextForSet(c.text, c.limit, c.restricted), c.shown);
    }
}

TEST(InputRules, UsesTheGivenCharacterCheck) {
    // A host check that also allows '-' keeps hyphens.
    auto dashToo = [](const std::wstring& text, bool whole) {
        if (!whole && text.size() != 1) return false;
        for (wchar_t c : text)
            if (c != L'-' && !qv::Only0to9AtoZ(std::wstring(1, c), false)) return false;
        return true;
    };
    EXPECT_EQ(qv::RestrictedText(L"ab-c", dashToo), L"AB-C");
    EXPECT_EQ(qv::RestrictAfterTyping({L"A-B-", 4, 4}, L'-', dashToo).text, L"A-B-");
}

TEST(InputRules, DroppedListSize) {
    const struct { int heightOfW, height; } heights[] = {{19, 300}, {20, 155}, {13, 240}, {0, 110}, {40, 255}};
    for (const auto& c : heights) EXPECT_EQ(qv::DroppedListHeight(c.heightOfW), c.height) << c.heightOfW;
    EXPECT_EQ(std::tuple(qv::DroppedListWidth(120, 100), qv::DroppedListWidth(100, 100), qv::DroppedListWidth(80, 100)),
              std::tuple(131, 0, 0));
}

}  // namespace
