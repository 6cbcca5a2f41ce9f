#include "quorvel/masks/placeholder_rules.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

using Action = qv::PlaceholderAction;

TEST(PlaceholderRules, Template) {
    EXPECT_EQ(qv::PlaceholderTemplate(L"##.##", L'_') + L"|" + qv::PlaceholderTemplate(L"*#-A", L'*') + L"|" +
                  qv::PlaceholderTemplate(L"", L'_'),
              L"__.__|**-A|");
}

TEST(PlaceholderRules, IsCheckedChar) {
    const struct { const wchar_t* text; const wchar_t* mask; wchar_t placeholder; bool fits; } cases[] = {
        {L"12.3_", L"##.##", L'_', true},
        {L"12,__", L"##.##", L'_', false},    // literal differs
        {L"ab", L"aB", L'_', false},          // literals are case-sensitive
        {L"12", L"##.##", L'_', true},        // shorter than the mask
        {L"__.__1", L"##.##", L'_', false},   // longer than the mask
        {L"*1", L"##", L'*', true},           // the placeholder passes under '#'
        {L"_1", L"##", L'*', false},          // ... the old one no longer does
        {L"\u0661", L"#", L'_', false},       // only 0-9 are digits
    };
    for (const auto& c : cases)
        EXPECT_EQ(qv::IsCheckedChar(c.text, c.mask, c.placeholder), c.fits) << c.text << " / " << c.mask;
}

// ch: the typed character, or Backspace for BackspaceAction
struct KeyCase { const wchar_t *mask, *text; int start, end; wchar_t ch; Action expected; wchar_t placeholder = L'_'; };

Action Nothing() { return {}; }
Action Move(int caret) { return {Action::kMoveCaret, 0, 0, L"", caret}; }
Action Replace(int from, int to, const wchar_t* text, int caret) { return {Action::kReplace, from, to, text, caret}; }
Action TypeOver(int at, wchar_t ch, int caret) { return {Action::kTypeOver, at, at + 1, std::wstring(1, ch), caret}; }

const KeyCase kKeyCases[] = {
    // Typing over the template.
    {L"##.##", L"1_.__", 1, 1, L'2', TypeOver(1, L'2', 3)},       // moves past the '.'
    {L"#--#", L"_--_", 0, 0, L'7', TypeOver(0, L'7', 2)},        // past one literal only
    {L"#--#", L"7--_", 2, 2, L'8', Nothing()},                    // stuck before the second '-'
    {L"##", L"__", 0, 0, L'x', Nothing()},                        // letter under '#'
    {L"*#", L"__", 0, 0, L'x', TypeOver(0, L'x', 1)},             // letter under '*'
    {L"*", L"_", 0, 0, L'\u00E9', TypeOver(0, L'\u00E9', 1)},     // printable beyond ASCII
    {L"*", L"_", 0, 0, L'"', Nothing()},                          // the double quote never
    {L"*", L"_", 0, 0, L'\x1A', Nothing()},                       // Ctrl+Z
    {L"##", L"12", 2, 2, L'3', Nothing()},                        // end of the text
    {L"##.##", L"__.__", 0, 5, L'4', TypeOver(0, L'4', 1)},       // one character of a selection
    {L"##", L"_a", 0, 0, L'1', Nothing()},                        // the rest of the line must fit too
    {L"##", L"**", 0, 0, L'*', TypeOver(0, L'*', 1), L'*'},       // the placeholder itself under '#'
    {L"##", L"1_", 1, 1, L'*', Nothing()},                        // ... not another symbol
    // Backspace.
    {L"##.##", L"12.3_", 4, 4, L'\b', Replace(3, 4, L"_", 3)},    // after an input position
    {L"##.##", L"12.3_", 3, 3, L'\b', Move(2)},                   // after a literal: no delete
    {L"#--#", L"7--8", 3, 3, L'\b', Move(1)},                     // over all literals in a row
    {L"--#", L"--8", 2, 2, L'\b', Move(0)},                       // to the start
    {L"##", L"12", 0, 0, L'\b', Nothing()},
    {L"##", L"12", 1, 2, L'\b', Replace(0, 1, L"_", 0)},          // acts before the selection
    {L"#", L"1xy", 3, 3, L'\b', Move(1)},                         // text beyond the mask is literal
};

TEST(PlaceholderRules, Keys) {
    for (const KeyCase& c : kKeyCases) {
        SCOPED_TRACE(testing::Message() << c.mask << " \"" << c.text << "\" " << c.start << "-" << c.end << " key "
                                        << static_cast<int>(c.ch));
        const qv::PlaceholderLine line{c.text, c.start, c.end};
        const Action got = c.ch == L'\b' ? qv::BackspaceAction(line, c.mask, c.placeholder)
                                         : qv::TypedCharAction(line, c.mask, c.placeholder, c.ch);
        EXPECT_EQ(got, c.expected);
    }
}

TEST(PlaceholderRules, Delete) {
    const struct { const wchar_t* mask; const wchar_t* text; int start, end; Action expected; } cases[] = {
        {L"##.##", L"12.34", 1, 4, Replace(1, 4, L"_._", 1)},   // literals stay
        {L"##.##", L"12.34", 0, 5, Replace(0, 5, L"__.__", 0)},
        {L"##.##", L"12.34", 2, 2, Nothing()},                  // no selection: nothing
        {L"##", L"12xyz", 1, 5, Replace(1, 2, L"_", 1)},        // stops at the end of the mask
        {L"##.##", L"12", 0, 5, Replace(0, 2, L"__", 0)},       // ... and of the text
        {L"#", L"1xy", 2, 3, Nothing()},                        // wholly beyond the mask
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.mask << " \"" << c.text << "\" " << c.start << "-" << c.end);
        EXPECT_EQ(qv::DeleteAction({c.text, c.start, c.end}, c.mask, L'_'), c.expected);
    }
}

TEST(PlaceholderRules, CaretStopsAtTheEndOfTextAndMask) {
    EXPECT_EQ(std::tuple(qv::CaretAfterTyping(L"12", L"##-", 2), qv::CaretAfterTyping(L"1-", L"#", 1)),
              std::tuple(2, 1));
}

}  // namespace
