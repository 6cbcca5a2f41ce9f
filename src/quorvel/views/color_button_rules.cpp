#include "quorvel/views/color_button_rules.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>

namespace qv::colors {

namespace {

struct NamedColor {
    std::uint32_t color;
    const wchar_t* name;
};

constexpr std::array<NamedColor, kPaletteSize> kDefaults{{
    {0x000000, L"Black"},       {0x000080, L"Maroon"},      {0x008000, L"Green"},   {0x008080, L"Olive"},
    {0x800000, L"Navy"},        {0x800080, L"Purple"},      {0x808000, L"Teal"},    {0xC0C0C0, L"Silver"},
    {0xC0DCC0, L"Money green"}, {0xF0CAA6, L"Sky blue"},    {0xF0FBFF, L"Cream"},   {0xA4A0A0, L"Medium grey"},
    {0x808080, L"Grey"},        {0x0000FF, L"Red"},         {0x00FF00, L"Lime"},    {0x00FFFF, L"Yellow"},
    {0xFF0000, L"Blue"},        {0xFF00FF, L"Fuchsia"},     {0xFFFF00, L"Aqua"},    {0xFFFFFF, L"White"},
}};

using Palette = std::array<std::uint32_t, kPaletteSize>;

// Process-wide, like the buttons that share it; all on the UI thread.
Palette* g_palette = nullptr;
int g_users = 0;

bool IsCell(int index) noexcept { return index >= 0 && index < kPaletteSize; }

}  // namespace

std::uint32_t DefaultColor(int index) noexcept { return IsCell(index) ? kDefaults[index].color : 0; }

bool AcquirePalette() noexcept {
    if (!g_palette) {
        g_palette = new (std::nothrow) Palette;
        if (!g_palette) return false;
        for (int i = 0; i < kPaletteSize; ++i) (*g_palette)[i] = kDefaults[i].color;
    }
    ++g_users;
    return true;
}

void ReleasePalette() noexcept {
    if (g_users <= 0) return;
    if (--g_users == 0) {
        delete g_palette;
        g_palette = nullptr;
    }
}

int PaletteUsers() noexcept { return g_users; }

std::uint32_t PaletteColor(int index) noexcept {
    if (!IsCell(index)) return 0;
    return g_palette ? (*g_palette)[index] : kDefaults[index].color;
}

void SetPaletteColors(const std::uint32_t* colors, std::size_t count) noexcept {
    if (!g_palette || !colors) return;
    std::copy_n(colors, std::min<std::size_t>(count, kPaletteSize), g_palette->begin());
}

int FindPaletteColor(std::uint32_t color) noexcept {
    for (int i = 0; i < kPaletteSize; ++i)
        if (PaletteColor(i) == color) return i;
    return -1;
}

int MoveInGrid(int from, GridKey key, int column) noexcept {
    if (from == kOther) {
        switch (key) {
        case GridKey::kUp: return (kGridRows - 1) * kGridColumns + std::clamp(column, 0, kGridColumns - 1);
        case GridKey::kLeft:
        case GridKey::kEnd: return kPaletteSize - 1;
        case GridKey::kHome: return 0;
        default: return kOther;
        }
    }
    if (!IsCell(from)) return 0;
    switch (key) {
    case GridKey::kLeft: return from > 0 ? from - 1 : from;
    case GridKey::kRight: return from + 1;  // the last cell goes on to "Other..."
    case GridKey::kUp: return from >= kGridColumns ? from - kGridColumns : from;
    case GridKey::kDown: return from + kGridColumns < kPaletteSize ? from + kGridColumns : kOther;
    case GridKey::kHome: return 0;
    case GridKey::kEnd: return kPaletteSize - 1;
    }
    return from;
}

std::wstring HexText(std::uint32_t color) {
    static const wchar_t kDigits[] = L"0123456789ABCDEF";
    const unsigned channels[3] = {color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF};  // R, G, B
    std::wstring text = L"#";
    for (unsigned c : channels) {
        text += kDigits[c >> 4];
        text += kDigits[c & 0xF];
    }
    return text;
}

const wchar_t* ColorName(std::uint32_t color) noexcept {
    for (const NamedColor& named : kDefaults)
        if (named.color == (color & 0xFFFFFF)) return named.name;
    return nullptr;
}

ButtonFace LayOutButton(const Box& item, bool pressed, unsigned dpi) noexcept {
    auto s = [dpi](int length) { return ScaleToDpi(length, dpi); };
    ButtonFace f;
    const int u = std::max(1, s(1));
    f.unit = u;
    const int L = item.left, T = item.top, R = item.right, B = item.bottom;
    try {
        if (pressed) {
            f.frame = {
                {{L, T, L + u, B}, Shade::kDarkShadow},          {{L, T, R, T + u}, Shade::kDarkShadow},
                {{L + u, T + u, L + 2 * u, B - u}, Shade::kShadow}, {{L + u, T + u, R - u, T + 2 * u}, Shade::kShadow},
                {{L, B - u, R, B}, Shade::kHighlight},           {{R - u, T, R, B}, Shade::kHighlight},
            };
        } else {
            f.frame = {
                {{L, B - u, R, B}, Shade::kDarkShadow},             {{R - u, T, R, B}, Shade::kDarkShadow},
                {{L + u, B - 2 * u, R - u, B - u}, Shade::kShadow}, {{R - 2 * u, T + u, R - u, B - u}, Shade::kShadow},
                {{L + u, T + u, L + 2 * u, B - 2 * u}, Shade::kHighlight},
                {{L + u, T + u, R - 2 * u, T + 2 * u}, Shade::kHighlight},
            };
        }
    } catch (...) {
        f.frame.clear();  // out of memory: a face without its frame
    }
    const int shift = pressed ? u : 0;
    f.content = Box{L + shift, T + shift, R + shift, B + shift};
    const Box& c = f.content;

    const int sepX = c.right - s(11);
    f.separatorShadow = Box{sepX, c.top + s(4), sepX + u, c.bottom - s(4)};
    f.separatorHighlight = Box{sepX + u, c.top + s(4), sepX + 2 * u, c.bottom - s(4)};

    int width = s(5);
    if (width % 2 == 0) --width;  // odd, so the triangle ends in one pixel
    const int rows = (width + 1) / 2;
    const int centre = c.right - s(6);
    const int top = c.bottom / 2 - (rows - 1) / 2;
    try {
        f.arrow.reserve(static_cast<std::size_t>(rows));
        for (int r = 0; r < rows; ++r) {
            const int half = (width - 1) / 2 - r;
            f.arrow.push_back(Box{centre - half, top + r, centre + half + 1, top + r + 1});
        }
    } catch (...) {
        f.arrow.clear();
    }

    f.swatch = Box{c.left + s(5), c.top + s(4), c.right - s(15), c.bottom - s(4)};
    f.focus = Box{c.left + s(3), c.top + s(3), c.right - s(4), c.bottom - s(4)};
    return f;
}

GridLayout LayOutGrid(unsigned dpi) noexcept {
    auto s = [dpi](int length) { return ScaleToDpi(length, dpi); };
    GridLayout g;
    const int margin = s(2), cellW = s(19), cellH = s(16), gapX = s(2), gapY = s(3);
    for (int i = 0; i < kPaletteSize; ++i) {
        const int col = i % kGridColumns, row = i / kGridColumns;
        const int x = margin + col * (cellW + gapX), y = margin + row * (cellH + gapY);
        g.cells[i] = Box{x, y, x + cellW, y + cellH};
    }
    const int gridRight = g.cells[kGridColumns - 1].right;
    const int otherTop = g.cells[kPaletteSize - 1].bottom + s(4);
    g.other = Box{margin, otherTop, gridRight, otherTop + s(18)};
    g.width = gridRight + margin;
    g.height = g.other.bottom + s(3);
    g.unit = std::max(1, s(1));
    g.inset = s(2);
    return g;
}

}  // namespace qv::colors
