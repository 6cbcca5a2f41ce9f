// The rich text field's context menu without a window: entry order and ids,
// enabling by selection and read-only state, the formatting each command
// makes, and the font-size text.
#include "quorvel/controls/rich_text_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

namespace rt = qv::richtext;

// The enabled commands, as menu texts, for comparing whole.
std::vector<std::string> Enabled(const rt::MenuState& s) {
    const auto flags = rt::EnableFlags(s);
    std::vector<std::string> out;
    for (const rt::MenuLine& line : rt::kMenu)
        if (!line.IsSeparator() && flags[static_cast<size_t>(rt::FlagIndex(line.id))]) out.push_back(line.text);
    return out;
}

TEST(RichTextRulesTest, MenuHasSixteenCommandsWithOneFlagEach) {
    std::vector<int> indexes;
    for (const rt::MenuLine& line : rt::kMenu)
        if (!line.IsSeparator()) indexes.push_back(rt::FlagIndex(line.id));
    EXPECT_EQ(indexes, (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
    EXPECT_EQ(rt::FlagIndex(0), -1);
    EXPECT_EQ(rt::FlagIndex(12350), -1);
}

TEST(RichTextRulesTest, EnablingFollowsSelectionTextUndoPasteAndReadOnly) {
    const std::vector<std::string> formatting = {"Bullets", "Text Color...", "Font Name...", "Font Size..."};
    const struct {
        const char* name;
        rt::MenuState state;
        std::vector<std::string> enabled;
    } cases[] = {
        {"empty field", {0, 0, true, false, false, false}, formatting},
        {"caret in text", {3, 3, false, false, false, false},
         {"Select All", "Bullets", "Text Color...", "Font Name...", "Font Size..."}},
        {"selection",
         {1, 4, false, true, true, false},
         {"Undo", "Cut", "Copy", "Paste", "Clear", "Select All", "Bold", "Italic", "Underlined", "Align Left",
          "Align Center", "Align Right", "Bullets", "Text Color...", "Font Name...", "Font Size..."}},
        {"selection made backwards", {4, 1, false, false, false, false},
         {"Cut", "Copy", "Clear", "Select All", "Bold", "Italic", "Underlined", "Align Left", "Align Center",
          "Align Right", "Bullets", "Text Color...", "Font Name...", "Font Size..."}},
        {"no selection at all (end -1)", {0, -1, false, false, true, false},
         {"Paste", "Select All", "Bullets", "Text Color...", "Font Name...", "Font Size..."}},
        {"read-only with selection", {1, 4, false, true, true, true}, {"Copy", "Select All"}},
        {"read-only, caret only", {2, 2, false, true, true, true}, {"Select All"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Enabled(c.state), c.enabled);
    }
}

TEST(RichTextRulesTest, ReadOnlyFieldsRunOnlyCopyAndSelectAll) {
    for (const rt::MenuLine& line : rt::kMenu) {
        if (line.IsSeparator()) continue;
        SCOPED_TRACE(line.text);
        EXPECT_TRUE(rt::MayRun(line.id, false));
        EXPECT_EQ(rt::MayRun(line.id, true), line.id == rt::kCopy || line.id == rt::kSelectAll);
    }
    EXPECT_FALSE(rt::MayRun(1, false)) << "not a menu command";
}

TEST(RichTextRulesTest, FormattingCommandsAndToggles) {
    using C = rt::Change;
    const struct { unsigned id; C change; } cases[] = {
        {rt::kBold, C::Bold},           {rt::kItalic, C::Italic},         {rt::kUnderlined, C::Underline},
        {rt::kAlignLeft, C::AlignLeft}, {rt::kAlignCenter, C::AlignCenter}, {rt::kAlignRight, C::AlignRight},
        {rt::kBullets, C::Bullets},     {rt::kCopy, C::None},             {rt::kTextColor, C::None},
    };
    for (const auto& c : cases) EXPECT_EQ(rt::ChangeFor(c.id), c.change) << c.id;
    EXPECT_FALSE(rt::ToggledOn(true, true)) << "all on: off";
    EXPECT_TRUE(rt::ToggledOn(true, false)) << "all off: on";
    EXPECT_TRUE(rt::ToggledOn(false, true)) << "mixed: on";
    EXPECT_TRUE(rt::ToggledOn(false, false)) << "mixed: on";
}

TEST(RichTextRulesTest, FontSizeTextToTwipsAndBack) {
    const struct { const wchar_t* text; long twips; } good[] = {
        {L"12", 240}, {L" 8 ", 160}, {L"10.5", 210}, {L"10,5", 210}, {L"12.", 240},
        {L"1", 20},   {L"1638", 32760}, {L"007", 140}, {L"\t9\t", 180},
    };
    for (const auto& c : good) {
        SCOPED_TRACE(std::string(c.text, c.text + std::char_traits<wchar_t>::length(c.text)));
        ASSERT_EQ(rt::ParseFontSize(c.text), c.twips);
    }
    for (const wchar_t* bad : {L"", L"  ", L"0", L"0.5", L"1639", L"99999999999999", L"abc", L"12pt", L"1 2",
                               L"10.25", L".5", L"-3", L"+3", L"1e2", L"10.x"}) {
        EXPECT_FALSE(rt::ParseFontSize(bad).has_value())
            << std::string(bad, bad + std::char_traits<wchar_t>::length(bad));
    }
    const struct { long twips; const wchar_t* text; } shown[] = {
        {240, L"12"}, {210, L"10.5"}, {211, L"10.6"}, {20, L"1"}, {0, L"0"}, {-5, L"0"}, {32760, L"1638"},
    };
    for (const auto& c : shown) EXPECT_EQ(rt::FormatFontSize(c.twips), c.text) << c.twips;
    for (long twips = 20; twips <= 32760; twips += 2)
        ASSERT_EQ(rt::ParseFontSize(rt::FormatFontSize(twips)), twips) << "round trip of tenths";
}

}  // namespace
