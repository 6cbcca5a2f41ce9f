// The colour button's palette and grid: the shared palette counted by its
// users, overwritten for all of them, and freed with the last; the arrow
// keys in the grid; the texts a screen reader hears.
#include "quorvel/views/color_button_rules.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

namespace cl = qv::colors;
using cl::GridKey;

TEST(ColorButtonRulesTest, ThePaletteLivesFromTheFirstUserToTheLast) {
    ASSERT_EQ(cl::PaletteUsers(), 0);
    ASSERT_TRUE(cl::AcquirePalette());
    ASSERT_TRUE(cl::AcquirePalette());
    EXPECT_EQ(cl::PaletteUsers(), 2);
    EXPECT_EQ(cl::PaletteColor(13), 0x0000FFu);  // red

    const std::uint32_t custom[] = {0x111111, 0x222222};
    cl::SetPaletteColors(custom, 2);
    EXPECT_EQ(cl::PaletteColor(0), 0x111111u);
    EXPECT_EQ(cl::PaletteColor(1), 0x222222u);
    EXPECT_EQ(cl::PaletteColor(2), cl::DefaultColor(2));
    EXPECT_EQ(cl::FindPaletteColor(0x222222), 1);

    cl::ReleasePalette();
    EXPECT_EQ(cl::PaletteColor(0), 0x111111u) << "one user still holds the palette";
    cl::ReleasePalette();
    EXPECT_EQ(cl::PaletteUsers(), 0);
    cl::ReleasePalette();  // one release too many changes nothing
    EXPECT_EQ(cl::PaletteUsers(), 0);

    // A new first user starts from the defaults again.
    ASSERT_TRUE(cl::AcquirePalette());
    EXPECT_EQ(cl::PaletteColor(0), 0x000000u);
    EXPECT_EQ(cl::FindPaletteColor(0x222222), -1);
    const std::uint32_t many[25] = {};
    cl::SetPaletteColors(many, 25);  // only 20 are taken
    EXPECT_EQ(cl::PaletteColor(19), 0u);
    EXPECT_EQ(cl::PaletteColor(20), 0u);
    cl::ReleasePalette();
}

TEST(ColorButtonRulesTest, ArrowKeysMoveByRowsAndColumns) {
    const struct { int from; GridKey key; int column; int to; } cases[] = {
        {5, GridKey::kRight, 0, 6},  {7, GridKey::kRight, 0, 8},          // end of a row: next row
        {19, GridKey::kRight, 0, cl::kOther},                             // last cell: "Other..."
        {5, GridKey::kLeft, 0, 4},   {0, GridKey::kLeft, 0, 0},           // first cell stays
        {5, GridKey::kUp, 0, 1},     {2, GridKey::kUp, 0, 2},             // top row stays
        {5, GridKey::kDown, 0, 9},   {17, GridKey::kDown, 0, cl::kOther}, // bottom row: "Other..."
        {cl::kOther, GridKey::kUp, 2, 18},  {cl::kOther, GridKey::kUp, 9, 19},
        {cl::kOther, GridKey::kDown, 0, cl::kOther}, {cl::kOther, GridKey::kRight, 0, cl::kOther},
        {cl::kOther, GridKey::kLeft, 0, 19},
        {11, GridKey::kHome, 0, 0},  {11, GridKey::kEnd, 0, 19},  {cl::kOther, GridKey::kHome, 0, 0},
        {-3, GridKey::kDown, 0, 0},  // from nowhere to the first cell
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "from " << c.from << " key " << static_cast<int>(c.key));
        EXPECT_EQ(cl::MoveInGrid(c.from, c.key, c.column), c.to);
    }
}

TEST(ColorButtonRulesTest, ColoursAreNamedOrWrittenInHex) {
    const struct { std::uint32_t color; const wchar_t* name; const wchar_t* hex; } cases[] = {
        {0x0000FF, L"Red", L"#FF0000"},
        {0xF0CAA6, L"Sky blue", L"#A6CAF0"},
        {0xFF9000, nullptr, L"#0090FF"},
        {0x010203, nullptr, L"#030201"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(cl::HexText(c.color), c.hex);
        if (c.name)
            EXPECT_STREQ(cl::ColorName(c.color), c.name);
        else
            EXPECT_EQ(cl::ColorName(c.color), nullptr);
    }
    for (int i = 0; i < cl::kPaletteSize; ++i) EXPECT_NE(cl::ColorName(cl::DefaultColor(i)), nullptr) << i;
}

}  // namespace
