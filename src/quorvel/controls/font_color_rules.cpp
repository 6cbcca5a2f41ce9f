#include "quorvel/controls/font_color_rules.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>

namespace qv::fontcolor {

namespace {

// Index -> flags, in index order.
constexpr Style kStyles[kStyleCount] = {
    {false, false, false},  // 0
    {false, true, false},   // 1 italic
    {true, false, false},   // 2 bold
    {false, false, true},   // 3 underlined
    {true, true, false},    // 4
    {true, false, true},    // 5
    {true, true, true},     // 6
    {false, true, true},    // 7
};

// List position -> text.
constexpr const wchar_t* kStyleTexts[kStyleCount] = {
    L"Normal", L"Bold", L"Italic", L"Underlined", L"Bold + Italic", L"Bold + Underlined",
    L"Bold + Italic + Underlined", L"Italic + Underlined",
};

constexpr const wchar_t* kSizeTexts[kSizeCount] = {L"6",  L"8",  L"10", L"12", L"14", L"16",
                                                   L"18", L"20", L"24", L"28", L"30", L"32"};

bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

std::wstring_view Trim(std::wstring_view text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    return text;
}

int HexDigit(wchar_t c) {
    if (c >= L'0' && c <= L'9') return c - L'0';
    if (c >= L'a' && c <= L'f') return c - L'a' + 10;
    if (c >= L'A' && c <= L'F') return c - L'A' + 10;
    return -1;
}

int Clamp(int value, int low) { return value < low ? low : value; }

}  // namespace

int StyleIndex(const Style& style) noexcept {
    for (int i = 0; i < kStyleCount; ++i)
        if (kStyles[i] == style) return i;
    return 0;  // unreachable: the table holds all eight combinations
}

Style StyleOf(int index) noexcept { return index >= 0 && index < kStyleCount ? kStyles[index] : Style{}; }

int ListPositionOfStyle(int index) noexcept {
    if (index < 0 || index >= kStyleCount) return -1;
    if (index == 1) return 2;
    if (index == 2) return 1;
    return index;
}

// The swap is its own inverse.
int StyleOfListPosition(int position) noexcept { return ListPositionOfStyle(position); }

const wchar_t* StyleListText(int position) noexcept {
    return position >= 0 && position < kStyleCount ? kStyleTexts[position] : L"";
}

const wchar_t* SizeListText(int position) noexcept {
    return position >= 0 && position < kSizeCount ? kSizeTexts[position] : L"";
}

std::optional<int> ParseSize(std::wstring_view text) {
    text = Trim(text);
    if (text.empty() || text.size() > 3) return std::nullopt;
    int value = 0;
    for (wchar_t c : text) {
        if (c < L'0' || c > L'9') return std::nullopt;
        value = value * 10 + (c - L'0');
    }
    if (value < kMinSize || value > kMaxSize) return std::nullopt;
    return value;
}

int Weight(bool bold) noexcept { return bold ? 700 : 400; }

std::wstring DecToHex(unsigned value) {
    wchar_t buffer[16];
    std::swprintf(buffer, 16, L"%x", value);
    std::wstring text(buffer);
    if (text.size() < 2) text.insert(0, 2 - text.size(), L'0');
    return text;
}

std::wstring HtmlColor(std::uint32_t color) {
    return L"#" + DecToHex(color & 0xFF) + DecToHex((color >> 8) & 0xFF) + DecToHex((color >> 16) & 0xFF);
}

std::optional<std::uint32_t> ParseHtmlColor(std::wstring_view text) {
    text = Trim(text);
    if (text.size() != 7 || text[0] != L'#') return std::nullopt;
    std::uint32_t rgb = 0;
    for (size_t i = 1; i < 7; ++i) {
        const int d = HexDigit(text[i]);
        if (d < 0) return std::nullopt;
        rgb = (rgb << 4) | static_cast<std::uint32_t>(d);
    }
    // "#rrggbb" holds red first; a COLORREF holds it in the low byte.
    return ((rgb >> 16) & 0xFF) | (rgb & 0xFF00) | ((rgb & 0xFF) << 16);
}

Choice DefaultChoice(const Choice& current, bool readOnly) {
    Choice choice;
    if (readOnly) choice.background = current.background;
    return choice;
}

std::uint32_t PreviewBackground(bool readOnly, std::uint32_t background) noexcept {
    return readOnly ? 0xFFFFFF : background;
}

Box PreviewBox(const Box& f, unsigned dpi) noexcept {
    const int inset = ScaleToDpi(2, dpi);
    Box b{f.left + inset, f.top + inset, f.right - ScaleToDpi(40, dpi), f.bottom - inset};
    b.right = Clamp(b.right, b.left);
    b.bottom = Clamp(b.bottom, b.top);
    return b;
}

Box ButtonBox(const Box& f, unsigned dpi) noexcept {
    const int inset = ScaleToDpi(2, dpi);
    Box b{f.right - ScaleToDpi(38, dpi), f.top + inset, f.right - inset, f.bottom - inset};
    b.left = std::max(b.left, f.left);
    b.right = Clamp(b.right, b.left);
    b.bottom = Clamp(b.bottom, b.top);
    return b;
}

std::wstring FillIn(std::wstring_view pattern, std::initializer_list<std::wstring_view> args) {
    std::wstring out;
    out.reserve(pattern.size());
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const wchar_t c = pattern[i];
        if (c != L'%' || i + 1 == pattern.size()) {
            out += c;
            continue;
        }
        const wchar_t next = pattern[i + 1];
        if (next == L'%') {
            out += L'%';
            ++i;
        } else if (next >= L'1' && next <= L'9') {
            const std::size_t n = static_cast<std::size_t>(next - L'1');
            if (n < args.size()) out.append(*(args.begin() + n));
            ++i;
        } else {
            out += c;
        }
    }
    return out;
}

}  // namespace qv::fontcolor
