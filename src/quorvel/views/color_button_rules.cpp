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

}  // namespace qv::colors
