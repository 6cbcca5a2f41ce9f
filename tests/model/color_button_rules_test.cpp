// The colour button's palette and grid: the shared palette counted by its
// users, overwritten for all of them, and freed with the last; the arrow
// keys in the grid; the texts a screen reader hears; the button's face and
// the grid laid out at 96, 144 and 192 DPI.
#include "quorvel/views/color_button_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(ColorButtonRulesTest, TheFaceScalesWithTheDpiAndKeepsItsShape) {
    using qv::Box;
    const struct {
        unsigned dpi;
        Box item;
        int unit;
        Box swatch, separatorShadow, focus;
        int arrowCentre, arrowTop, arrowRows;
    } cases[] = {
        // 96 DPI: the pixels the face has always had.
        {96, {0, 0, 80, 24}, 1, {5, 4, 65, 20}, {69, 4, 70, 20}, {3, 3, 76, 20}, 74, 11, 3},
        {144, {0, 0, 120, 36}, 2, {8, 6, 97, 30}, {103, 6, 105, 30}, {5, 5, 114, 30}, 111, 17, 4},
        {192, {0, 0, 160, 48}, 2, {10, 8, 130, 40}, {138, 8, 140, 40}, {6, 6, 152, 40}, 148, 22, 5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.dpi);
        const cl::ButtonFace f = cl::LayOutButton(c.item, false, c.dpi);
        EXPECT_EQ(f.unit, c.unit);
        EXPECT_EQ(f.content, c.item);
        EXPECT_EQ(f.swatch, c.swatch);
        EXPECT_EQ(f.separatorShadow, c.separatorShadow);
        EXPECT_EQ(f.separatorHighlight, (Box{c.separatorShadow.right, c.separatorShadow.top,
                                             c.separatorShadow.right + c.unit, c.separatorShadow.bottom}));
        EXPECT_EQ(f.focus, c.focus);
        // A triangle: rows one pixel high, each two narrower, centred, down to one pixel.
        ASSERT_EQ(static_cast<int>(f.arrow.size()), c.arrowRows);
        for (int r = 0; r < c.arrowRows; ++r) {
            const Box& row = f.arrow[static_cast<size_t>(r)];
            EXPECT_EQ(row.top, c.arrowTop + r);
            EXPECT_EQ(row.Height(), 1);
            EXPECT_EQ(row.Width(), 2 * (c.arrowRows - r) - 1);
            EXPECT_EQ(row.left + row.Width() / 2, c.arrowCentre);
        }
        // The arrow sits between the separator and the frame.
        EXPECT_GT(f.arrow.front().left, f.separatorHighlight.right);
        EXPECT_LT(f.arrow.front().right, c.item.right - 2 * c.unit);
        // Six frame bands of one unit across, inside the item.
        ASSERT_EQ(f.frame.size(), 6u);
        for (const cl::Band& b : f.frame) {
            EXPECT_EQ(std::min(b.box.Width(), b.box.Height()), c.unit);
            EXPECT_TRUE(b.box.left >= c.item.left && b.box.right <= c.item.right && b.box.top >= c.item.top &&
                        b.box.bottom <= c.item.bottom);
        }
        // Held down, the content moves one unit and the frame turns over.
        const cl::ButtonFace held = cl::LayOutButton(c.item, true, c.dpi);
        EXPECT_EQ(held.content, (Box{c.unit, c.unit, c.item.right + c.unit, c.item.bottom + c.unit}));
        EXPECT_EQ(held.swatch.left, c.swatch.left + c.unit);
        EXPECT_EQ(held.frame.front().shade, cl::Shade::kDarkShadow);
        EXPECT_EQ(held.frame.front().box.left, c.item.left) << "the dark line runs along the left while held";
        EXPECT_EQ(f.frame.front().box.bottom, c.item.bottom) << "and along the bottom at rest";
    }
}

TEST(ColorButtonRulesTest, TheGridScalesCellsGapsAndOther) {
    using qv::Box;
    const struct {
        unsigned dpi;
        Box first;
        int secondLeft, fifthTop;
        Box last, other;
        int width, height, unit, inset;
    } cases[] = {
        {96, {2, 2, 21, 18}, 23, 21, {65, 78, 84, 94}, {2, 98, 84, 116}, 86, 119, 1, 2},
        {144, {3, 3, 32, 27}, 35, 32, {99, 119, 128, 143}, {3, 149, 128, 176}, 131, 181, 2, 3},
        {192, {4, 4, 42, 36}, 46, 42, {130, 156, 168, 188}, {4, 196, 168, 232}, 172, 238, 2, 4},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.dpi);
        const cl::GridLayout g = cl::LayOutGrid(c.dpi);
        EXPECT_EQ(g.cells[0], c.first);
        EXPECT_EQ(g.cells[1].left, c.secondLeft);
        EXPECT_EQ(g.cells[4].top, c.fifthTop);
        EXPECT_EQ(g.cells[19], c.last);
        EXPECT_EQ(g.other, c.other);
        EXPECT_EQ(g.width, c.width);
        EXPECT_EQ(g.height, c.height);
        EXPECT_EQ(g.unit, c.unit);
        EXPECT_EQ(g.inset, c.inset);
        for (int i = 0; i < cl::kPaletteSize; ++i) {
            EXPECT_EQ(g.cells[i].Width(), c.first.Width()) << i;
            EXPECT_EQ(g.cells[i].Height(), c.first.Height()) << i;
        }
    }
}

}  // namespace
