#include "quorvel/masks/mask_rules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <climits>
#include <string>
#include <tuple>
#include <utility>

#include "quorvel/masks/pattern.h"

namespace {

using qv::FieldState;
using qv::MaskEditPlan;
using qv::MaskSetup;
using qv::NumberKind;

constexpr const wchar_t* kDecimal = L"#?(.|,)(#?)(e#?)";

// One keystroke as the field carries it out: the plan, then, after a
// character went in or Backspace deleted, the leading-zero repair.
FieldState Type(const MaskSetup& setup, const FieldState& before, wchar_t typed, wchar_t separator = L',') {
    const MaskEditPlan plan = qv::PlanChar(setup, before, typed, typed, separator);
    FieldState after = qv::ApplyPlan(before, plan, typed);
    if (plan.repairAfter) after = qv::ApplyPlan(after, qv::PlanZeroRepair(setup, after, typed));
    return after;
}

// caret -1: selection unchanged
struct KeyCase { const wchar_t *mask, *text; int start, end; wchar_t typed; const wchar_t* result; int caret; };

const KeyCase kKeyCases[] = {
    {L"#?", L"", 0, 0, L'5', L"5", 1},
    {L"#?", L"0", 1, 1, L'0', L"0", -1},            // "00" refused
    {L"#?", L"0", 1, 1, L'5', L"5", 1},             // the zero goes, the caret follows the 5
    {L"#?", L"5", 0, 0, L'0', L"05", 1},            // a zero typed in front of a digit stays
    {L"#?(.)(#?)", L"0.", 2, 2, L'5', L"0.5", 3},   // no digit after the zero
    {kDecimal, L"5.5", 0, 0, L'0', L"5.5", -1},     // zero before a digit in a decimal number
    {L"(+|-)#?", L"-0", 2, 2, L'5', L"-5", 1},      // the caret stands where the zero was
    {L"(+|-)#?", L"", 0, 0, L'-', L"-", 1},         // a lone sign while typing
    {L"#3?", L"123", 3, 3, L'4', L"123", -1},       // a fourth digit
    {L"#?", L"123", 0, 3, L'9', L"9", 1},           // the selection is replaced
    {L"#?", L"12", 2, 2, L'\b', L"1", 1},
    {L"#?", L"05", 0, 0, L'\b', L"05", -1},         // Backspace at 0 changes nothing
    {L"x#?", L"x5", 1, 1, L'\b', L"5", 1},          // Backspace is never checked
    {L"#?", L"105", 1, 1, L'\b', L"5", 1},          // "05" loses its zero
    {L"#?", L"1", 1, 1, L'\r', L"1", -1},           // other control characters are swallowed
};

TEST(MaskRules, TypingFollowsThePatternAndDropsLeadingZeros) {
    for (const KeyCase& c : kKeyCases) {
        SCOPED_TRACE(testing::Message() << c.mask << " \"" << c.text << "\" + " << static_cast<int>(c.typed));
        const std::wstring mask = c.mask;
        const MaskSetup setup(XParserFactory::GetParserFactory(), mask, false, true);
        const FieldState after = Type(setup, {c.text, c.start, c.end}, c.typed);
        EXPECT_EQ(std::tie(after.text, after.start, after.end),
                  std::tuple(c.result, c.caret < 0 ? c.start : c.caret, c.caret < 0 ? c.end : c.caret));
    }
}

TEST(MaskRules, DecimalKeysBecomeTheLocaleSeparator) {
    struct { const wchar_t* mask; bool localeDecimal; wchar_t typed, separator; const wchar_t* result; } cases[] = {
        {kDecimal, true, L'.', L',', L"1,"},        {kDecimal, true, L';', L',', L"1,"},
        {L"#?(.)(#?)", true, L'.', L',', L"1"},     // ',' is not in the pattern
        {L"#?(.)(#?)", false, L'.', L',', L"1."},
    };
    for (const auto& c : cases) {
        const std::wstring mask = c.mask;
        const MaskSetup setup(XParserFactory::GetParserFactory(), mask, c.localeDecimal, true);
        EXPECT_EQ(Type(setup, {L"1", 1, 1}, c.typed, c.separator).text, c.result) << c.mask << " " << static_cast<char>(c.typed);
    }
}

TEST(MaskRules, ClipboardKeysAndTabGoOnUncheckedAndSwitchesApply) {
    const std::wstring mask = L"#?";
    const MaskSetup none(nullptr, mask, false, true);
    for (wchar_t key : {L'\x03', L'\x16', L'\x18', L'\t'}) {
        const MaskEditPlan plan = qv::PlanChar(none, {L"12", 1, 1}, key, key, 0);
        ASSERT_EQ(plan.count, 1);
        EXPECT_EQ(plan.ops[0].kind, qv::MaskEditOp::PassOn);
        EXPECT_FALSE(plan.repairAfter);
    }
    // Without the checker nothing that needs a check is done; Backspace is.
    EXPECT_EQ(Type(none, {L"12", 2, 2}, L'3').text, L"12");
    EXPECT_EQ(Type(none, {L"12", 2, 2}, L'\b').text, L"1");
    EXPECT_TRUE(qv::PlanPaste(none, {L"12", 2, 2}, L"3").Empty());
    // Leading zeros stay when the rule is off.
    const MaskSetup zeros(XParserFactory::GetParserFactory(), mask, false, false);
    EXPECT_EQ(Type(zeros, {L"0", 1, 1}, L'0').text, L"00");
}

// Delete (clip nullptr), cut (clip "") or paste; for a cut, `clip` of the
// result is what goes to the clipboard.
// caret -1: unchanged
struct EditCase { const wchar_t *mask, *text; int start, end; const wchar_t *clip, *result; int caret; };

const EditCase kEditCases[] = {
    {L"#?", L"12", 0, 0, nullptr, L"2", 0},
    {L"#?", L"12", 2, 2, nullptr, L"12", -1},                       // nothing after the caret
    {L"#2?(.|,)(#2?)(e#?)", L"12.34", 2, 2, nullptr, L"12.34", -1},  // "1234": too many digits
    {L"#?", L"12", 1, 1, L"34", L"1342", 4},
    {L"#?", L"12", 1, 1, L"3a", L"12", -1},                         // refused paste
    {L"(+|-)#?", L"5", 0, 0, L"-", L"-5", 2},                       // the caret goes to the end
    {L"x#?", L"x123", 3, 1, L"", L"x3", 1},
    {L"x#?", L"x123", 2, 2, L"", L"x123", -1},                      // nothing selected
    {L"x#?", L"x123", 0, 1, L"", L"x123", -1},                      // "123" breaks the pattern
};

TEST(MaskRules, DeleteCutAndPasteAreChecked) {
    for (const EditCase& c : kEditCases) {
        SCOPED_TRACE(testing::Message() << c.mask << " \"" << c.text << "\" " << (c.clip ? c.clip : L"<Delete>"));
        const std::wstring mask = c.mask;
        const MaskSetup setup(XParserFactory::GetParserFactory(), mask, false, true);
        const FieldState before{c.text, c.start, c.end};
        const MaskEditPlan plan = !c.clip   ? qv::PlanDelete(setup, before)
                                  : *c.clip ? qv::PlanPaste(setup, before, c.clip)
                                            : qv::PlanCut(setup, before);
        const FieldState after = qv::ApplyPlan(before, plan);
        EXPECT_EQ(std::tie(after.text, after.start, after.end),
                  std::tuple(c.result, c.caret < 0 ? c.start : c.caret, c.caret < 0 ? c.end : c.caret));
        if (c.clip && !*c.clip && !plan.Empty()) {
            EXPECT_EQ(plan.text, L"12");
        }
    }
}

struct LimitCase {
    NumberKind kind;
    const wchar_t* text;
    double lower, upper;
    wchar_t separator;
    bool passes;
    const wchar_t* shown;  // the text afterwards
};

const LimitCase kLimitCases[] = {
    {NumberKind::UnsignedInteger, L"25", 10, 20, L'.', false, L"20"},
    {NumberKind::UnsignedInteger, L"", 10, 20, L'.', false, L"10"},
    {NumberKind::UnsignedInteger, L"15", 10.9, 20, L'.', true, L"15"},
    {NumberKind::UnsignedInteger, L"99999999999", 0, 4294967295.0, L'.', false, L"4294967295"},
    {NumberKind::UnsignedInteger, L"7", -5, 1e12, L'.', true, L"7"},
    {NumberKind::SignedInteger, L"-30", -20, 20, L'.', false, L"-20"},
    {NumberKind::SignedInteger, L"-", 10, 20, L'.', false, L"10"},    // a lone sign is 0
    {NumberKind::SignedInteger, L"-", -5, 5, L'.', true, L"-"},
    {NumberKind::UnsignedDecimal, L"1.004", 0, 1, L'.', true, L"1.004"},  // three digits: 1.00
    {NumberKind::UnsignedDecimal, L"1.006", 0, 1, L'.', false, L"1"},
    {NumberKind::UnsignedDecimal, L"3", 0, 1.5, L',', false, L"1,5"},
    {NumberKind::UnsignedDecimal, L"0,5", 1, 2, L',', false, L"1"},
    {NumberKind::UnsignedDecimal, L"1.5e", 1, 2, L',', true, L"1.5e"},  // read as far as it is a number
    {NumberKind::SignedDecimal, L"99.567", -10, 10, L'.', false, L"99.56"},
    {NumberKind::SignedDecimal, L"-99,5", -10, 10, L',', false, L"-99"},
    {NumberKind::SignedDecimal, L"", -1, 1, L'.', true, L""},
    {NumberKind::SignedDecimal, L"-", -1, 1, L'.', false, L"-"},  // not yet a number
};

TEST(MaskRules, LimitsWhenTheFieldIsLeft) {
    for (const LimitCase& c : kLimitCases) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(c.kind) << " \"" << c.text << "\" in " << c.lower
                                        << ".." << c.upper);
        const qv::SeparatorConversion conversion(c.separator);
        std::wstring text = c.text;
        bool passes = false;
        switch (c.kind) {
        case NumberKind::UnsignedInteger: passes = qv::CheckUnsignedIntegerLimits(text, c.lower, c.upper); break;
        case NumberKind::SignedInteger: passes = qv::CheckSignedIntegerLimits(text, c.lower, c.upper); break;
        case NumberKind::UnsignedDecimal:
            passes = qv::CheckUnsignedDecimalLimits(text, c.lower, c.upper, conversion);
            break;
        case NumberKind::SignedDecimal:
            // Two decimals, except that a text with ',' is checked with none.
            passes = qv::CheckSignedDecimalLimits(text, c.lower, c.upper, c.separator == L',' ? 0 : 2, conversion);
            break;
        }
        EXPECT_EQ(std::tie(passes, text), std::tuple(c.passes, c.shown));
    }
}

TEST(MaskRules, ValuesReadAndWritten) {
    EXPECT_EQ(std::tuple(qv::ReadSignedValue(L" -12x"), qv::ReadSignedValue(L"-2147483649")), std::tuple(-12, INT_MIN));
    EXPECT_EQ(qv::ReadUnsignedValue(L"4294967296"), 4294967295u);
    const qv::SeparatorConversion comma(L',');
    // "2.5e" is read as far as it is a number.
    EXPECT_EQ(std::pair(qv::ReadDecimalValue(L"1,5", comma), qv::ReadDecimalValue(L"2.5e", comma)),
              std::pair(1.5, 2.5));
    EXPECT_TRUE(std::isinf(qv::ReadDecimalValue(L"1e999", comma)));

    // SetValue's text, and whether the (5, 2) field takes it.
    const std::wstring mask = qv::NumericMask(NumberKind::UnsignedDecimal, 5, 2);
    const MaskSetup setup(XParserFactory::GetParserFactory(), mask, true, true);
    struct { double value; wchar_t separator; const wchar_t* text; bool accepted; } cases[] = {
        {3.14159, L',', L"3,14", true}, {3.14159, L'.', L"3.14", true}, {0.0, L',', L"0", true},
        {123456.0, L'.', L"123456.00", false}, {-2.5, 0, L"-2.50", false},
    };
    for (const auto& c : cases) {
        std::wstring text;
        ASSERT_TRUE(qv::DecimalValueText(c.value, 2, c.separator, text));
        EXPECT_EQ(text, c.text);
        EXPECT_EQ(setup.Accepts(text), c.accepted) << c.text;
    }
}

TEST(MaskRules, TrimmedTrailingZeros) {
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"1.500", L"1.5"}, {L"100", L"1"}, {L"0.000", L"0.0"}, {L"2.0", L"2.0"},
        {L"1,500", L"1,5"}, {L"0", L"0"},   {L"", L""},         {L"10.250", L"10.25"},
    };
    for (const auto& [text, trimmed] : cases) EXPECT_EQ(qv::TrimmedTrailingZeros(text), trimmed) << text;
}

}  // namespace
