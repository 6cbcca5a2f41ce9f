#include "quorvel/controls/rich_text_rules.h"

namespace qv::richtext {

int FlagIndex(unsigned id) noexcept {
    int index = 0;
    for (const MenuLine& line : kMenu) {
        if (line.IsSeparator()) continue;
        if (line.id == id) return index;
        ++index;
    }
    return -1;
}

bool HasSelection(long start, long end) noexcept { return end >= 0 && end != start; }

std::array<bool, kCommandCount> EnableFlags(const MenuState& s) noexcept {
    const bool selected = HasSelection(s.selStart, s.selEnd);
    const bool editable = !s.readOnly;
    std::array<bool, kCommandCount> flags{};
    auto set = [&flags](unsigned id, bool on) { flags[static_cast<size_t>(FlagIndex(id))] = on; };
    set(kUndo, editable && s.canUndo);
    set(kCut, editable && selected);
    set(kCopy, selected);
    set(kPaste, editable && s.canPaste);
    set(kClear, editable && selected);
    set(kSelectAll, !s.textEmpty);
    for (unsigned id : {kBold, kItalic, kUnderlined, kAlignLeft, kAlignCenter, kAlignRight})
        set(id, editable && selected);
    for (unsigned id : {kBullets, kTextColor, kFontName, kFontSize}) set(id, editable);
    return flags;
}

bool MayRun(unsigned id, bool readOnly) noexcept {
    if (FlagIndex(id) < 0) return false;
    return !readOnly || id == kCopy || id == kSelectAll;
}

Change ChangeFor(unsigned id) noexcept {
    switch (id) {
    case kBold: return Change::Bold;
    case kItalic: return Change::Italic;
    case kUnderlined: return Change::Underline;
    case kAlignLeft: return Change::AlignLeft;
    case kAlignCenter: return Change::AlignCenter;
    case kAlignRight: return Change::AlignRight;
    case kBullets: return Change::Bullets;
    default: return Change::None;
    }
}

bool ToggledOn(bool uniform, bool on) noexcept { return !(uniform && on); }

namespace {

bool IsBlank(wchar_t c) noexcept { return c == L' ' || c == L'\t'; }
bool IsDigit(wchar_t c) noexcept { return c >= L'0' && c <= L'9'; }

}  // namespace

std::optional<long> ParseFontSize(std::wstring_view text) noexcept {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    long whole = 0;
    size_t i = 0;
    for (; i < text.size() && IsDigit(text[i]); ++i) {
        whole = whole * 10 + (text[i] - L'0');
        if (whole > kMaxPoints) return std::nullopt;
    }
    if (i == 0) return std::nullopt;
    long tenths = 0;
    if (i < text.size()) {
        if (text[i] != L'.' && text[i] != L',') return std::nullopt;
        ++i;
        // "12." is 12; one decimal place at most.
        if (i < text.size()) {
            if (!IsDigit(text[i])) return std::nullopt;
            tenths = text[i] - L'0';
            ++i;
        }
        if (i != text.size()) return std::nullopt;
    }
    const long twips = whole * 20 + tenths * 2;
    if (twips < kMinPoints * 20 || twips > kMaxPoints * 20) return std::nullopt;
    return twips;
}

std::wstring FormatFontSize(long twips) {
    if (twips < 0) twips = 0;
    const long tenths = (twips + 1) / 2;  // to the nearest tenth of a point
    std::wstring text = std::to_wstring(tenths / 10);
    if (tenths % 10) text += L'.' + std::to_wstring(tenths % 10);
    return text;
}

}  // namespace qv::richtext
