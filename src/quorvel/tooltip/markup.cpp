#include "quorvel/tooltip/markup.h"

#include <algorithm>
#include <limits>

#include "quorvel/common/charclass.h"

namespace qv {
namespace {

constexpr wchar_t kTab = L'\t';
constexpr wchar_t kLf = L'\n';
constexpr wchar_t kCr = L'\r';
constexpr wchar_t kBlank = L' ';

// Pen positions, line sizes and tag values saturate here. Absurd counts and
// widths in a tag ("<br=4000000000>") then cannot overflow, and the result
// stays inside the coordinate range GDI accepts.
constexpr std::int64_t kCoordLimit = (std::int64_t{1} << 27) - 1;

int Sat(std::int64_t v) noexcept { return static_cast<int>(std::clamp(v, -kCoordLimit, kCoordLimit)); }

enum class Command {
    None,
    Bold,
    Italic,
    Underline,
    StrikeOut,
    LineBreak,
    Tab,
    TextColour,
    BackColour,
    BackColourIndex,
    AlignLeft,
    AlignCentre,
    AlignRight,
    Rule,
};

// How a tag's value is read.
enum class Value { None, Count, Colour, Index, Width };

struct Tag {
    std::wstring_view name;
    Command command;
    Value value;
    std::uint32_t defaultValue;  // Count and Index; Colour defaults are below
};

// In the order names are tried. "cti" takes a colour like "ct" and only its
// default differs (the colour value 1); no name selects a text colour by
// table index.
constexpr std::uint32_t kDefaultFromTable = 0xFFFFFFFFu;
constexpr Tag kTags[] = {
    {L"b", Command::Bold, Value::None, 0},
    {L"i", Command::Italic, Value::None, 0},
    {L"u", Command::Underline, Value::None, 0},
    {L"s", Command::StrikeOut, Value::None, 0},
    {L"br", Command::LineBreak, Value::Count, 1},
    {L"t", Command::Tab, Value::Count, 1},
    {L"\n", Command::LineBreak, Value::None, 1},
    {L"\t", Command::Tab, Value::None, 1},
    {L"ct", Command::TextColour, Value::Colour, kDefaultFromTable},
    {L"cti", Command::TextColour, Value::Colour, 1},
    {L"cb", Command::BackColour, Value::Colour, kDefaultFromTable},
    {L"cbi", Command::BackColourIndex, Value::Index, kTipColourBackground},
    {L"al", Command::AlignLeft, Value::None, 0},
    {L"al_l", Command::AlignLeft, Value::None, 0},
    {L"al_c", Command::AlignCentre, Value::None, 0},
    {L"al_r", Command::AlignRight, Value::None, 0},
    {L"hr", Command::Rule, Value::Width, 100},
};

// Tag names are ASCII; letters outside A-Z never match one, whatever the
// locale, so a name means the same on every machine.
bool SameName(std::wstring_view a, std::wstring_view b) noexcept {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (ToUpperAscii(a[i]) != ToUpperAscii(b[i])) return false;
    }
    return true;
}

const Tag* FindTag(std::wstring_view name) noexcept {
    for (const Tag& tag : kTags) {
        if (SameName(tag.name, name)) return &tag;
    }
    return nullptr;
}

int DigitValue(wchar_t c) noexcept {
    if (IsDigit(c)) return c - L'0';
    if (c >= L'a' && c <= L'z') return c - L'a' + 10;
    if (c >= L'A' && c <= L'Z') return c - L'A' + 10;
    return 99;
}

// The layout of one pass. Coordinates are kept in 64 bits and saturated when
// they are stored, so no tag value can overflow them.
class Layout {
public:
    Layout(MarkupSurface& surface, const TipRect& rect, std::wstring_view text, bool measuring,
           const MarkupStyle& style, MarkupLines& lines)
        : m_surface(surface), m_text(text), m_measuring(measuring), m_style(style), m_lines(lines),
          m_font(style.font), m_left(rect.left), m_top(rect.top), m_width(std::int64_t{rect.right} - rect.left), m_x(rect.left),
          m_y(rect.top) {}

    TipSize Run();

private:
    // Where the drawing pass is given lists of another text than the one it
    // draws (or the last line was never closed), missing lines are taken as
    // base-height lines of width 0 rather than read out of bounds.
    int LineWidth(std::size_t line) const noexcept {
        return line < m_lines.lineWidths.size() ? m_lines.lineWidths[line] : 0;
    }
    int LineHeight(std::size_t line) const noexcept {
        return line < m_lines.lineHeights.size() ? m_lines.lineHeights[line] : m_baseHeight;
    }

    void PlaceRun(std::wstring_view run);
    void Perform(const Tag& tag, bool closing, std::size_t& pos);
    void ChangeFont();
    void LineBreak(std::uint32_t count);
    void Tab(std::uint32_t count);
    void Rule(const std::wstring& value);
    void DrawRule(std::int64_t w);

    MarkupSurface& m_surface;
    std::wstring_view m_text;
    bool m_measuring;
    const MarkupStyle& m_style;
    MarkupLines& m_lines;
    FontDesc m_font;
    int m_baseHeight = 0;
    int m_avgChar = 0;
    std::int64_t m_left, m_top, m_width;
    std::int64_t m_x, m_y;
    std::size_t m_lineIndex = 0;
    int m_lineHeight = 0;
    bool m_lineStart = true;
    int m_alignment = 0;  // 0 left, 1 centre, 2 right
    int m_maxWidth = 0;
    std::vector<std::int64_t> m_percentOfLine;
};

// Keeps the surface's own font whatever happens: the layout's font is always
// selected back out at the end, also when an allocation fails midway.
class FontScope {
public:
    explicit FontScope(MarkupSurface& surface, const FontDesc& font) : m_surface(surface) { m_surface.UseFont(font); }
    ~FontScope() { m_surface.RestoreFont(); }
    FontScope(const FontScope&) = delete;
    FontScope& operator=(const FontScope&) = delete;

private:
    MarkupSurface& m_surface;
};

TipSize Layout::Run() {
    FontScope scope(m_surface, m_font);
    const TipTextMetrics metrics = m_surface.GetMetrics();
    m_baseHeight = Sat(metrics.height);
    m_avgChar = Sat(metrics.aveCharWidth);
    m_lineHeight = m_measuring ? m_baseHeight : LineHeight(0);
    m_percentOfLine.assign(1, 0);

    const std::size_t len = m_text.size();
    for (std::size_t pos = 0; pos <= len; ++pos) {
        if (pos == len) {  // closes the last line
            LineBreak(1);
            continue;
        }
        const std::wstring run = SearchBeginOfTag(m_text, pos);
        if (!run.empty()) {
            PlaceRun(run);
            --pos;  // the step brings the cursor back to where the scan left it
            continue;
        }
        // Nothing but CRs up to the end: not a tag. Stay at the end so that
        // the next round closes the line, as for a text without the CRs.
        if (pos == len) {
            --pos;
            continue;
        }
        std::wstring name = GetNameOfTag(m_text, pos);
        bool closing = false;
        if (!name.empty() && name.front() == L'/') {
            closing = true;
            name.erase(0, 1);
        }
        if (const Tag* tag = FindTag(name)) {
            Perform(*tag, closing, pos);
        } else {
            SearchEndOfTag(m_text, pos);
        }
    }

    const int height = Sat(m_y - m_top);
    // Per-cent rules count against the widest line, so they are added once it
    // is known; they do not widen the text themselves.
    for (std::size_t i = 0; i < m_percentOfLine.size() && i < m_lines.lineWidths.size(); ++i) {
        if (m_percentOfLine[i] != 0) {
            int& width = m_lines.lineWidths[i];
            width = Sat(std::int64_t{width} + MulDivRounded(Sat(m_percentOfLine[i]), m_maxWidth, 100));
        }
    }
    return {m_maxWidth, height};
}

void Layout::PlaceRun(std::wstring_view run) {
    if (!m_measuring && m_lineStart) {
        // Replaces whatever a tab or rule before the first run added to x.
        const std::int64_t lineWidth = LineWidth(m_lineIndex);
        if (m_alignment == 1) {
            // The halving is unsigned: a line wider than the rectangle (only
            // a per-cent rule makes one) is moved far out of sight rather
            // than centred over the left edge.
            const auto half = static_cast<std::uint32_t>(m_width - lineWidth) / 2u;
            m_x = Sat(m_left + static_cast<std::int32_t>(half));
        } else if (m_alignment == 2) {
            m_x = Sat(m_left + m_width - lineWidth);
        }
    }
    const TipSize extent = m_surface.MeasureText(run);
    if (m_measuring) {
        m_lineHeight = std::max(m_lineHeight, Sat(extent.cy));
    } else {
        // Runs sit on the bottom of a line that a taller run has enlarged.
        m_surface.PutText(Sat(m_x), Sat(m_y + LineHeight(m_lineIndex) - m_baseHeight), run);
    }
    m_x = Sat(m_x + extent.cx);
    m_lineStart = false;
}

void Layout::Perform(const Tag& tag, bool closing, std::size_t& pos) {
    std::uint32_t value = tag.defaultValue;
    std::wstring text;
    switch (tag.value) {
    case Value::None:
        break;
    case Value::Count:
    case Value::Index:
        value = GetUIntValue(m_text, pos, tag.defaultValue);
        break;
    case Value::Colour:
        text = GetStringValue(m_text, pos);
        if (!text.empty()) {
            value = ParseUInt32(text);
        } else if (tag.defaultValue == kDefaultFromTable) {
            value = m_style.colours[tag.command == Command::TextColour ? kTipColourText : kTipColourBackground];
        }
        break;
    case Value::Width:
        text = GetStringValue(m_text, pos);
        break;
    }
    SearchEndOfTag(m_text, pos);

    switch (tag.command) {
    case Command::Bold:
        if (closing) {
            m_font.weight = m_style.font.weight;
        } else {
            // A base weight of 0 (the platform's default) is drawn as normal
            // (400), so bold makes it 800 like an explicit normal weight.
            const std::int64_t base = m_style.font.weight > 0 ? m_style.font.weight : 400;
            m_font.weight = static_cast<int>(std::min<std::int64_t>(base * 2, 900));
        }
        ChangeFont();
        break;
    case Command::Italic:
    case Command::Underline:
    case Command::StrikeOut:
        m_font.*(tag.command == Command::Italic      ? &FontDesc::italic
                 : tag.command == Command::Underline ? &FontDesc::underline
                                                     : &FontDesc::strikeOut) = !closing;
        ChangeFont();
        break;
    case Command::LineBreak:
        LineBreak(value);
        break;
    case Command::Tab:
        Tab(value);
        break;
    case Command::TextColour:
        m_surface.SetTextColour(value);
        break;
    case Command::BackColourIndex:
        if (value >= kTipColourCount) break;  // no colour and no mode change
        value = m_style.colours[value];
        [[fallthrough]];
    case Command::BackColour:
        m_surface.SetBackColour(value);
        m_surface.SetBackMode(closing ? kBackModeTransparent : kBackModeOpaque);
        break;
    case Command::AlignLeft:
        m_alignment = 0;
        break;
    // Measuring never aligns: the widths it records are those of left-aligned
    // lines, which the drawing pass then aligns.
    case Command::AlignCentre:
        if (!m_measuring) m_alignment = 1;
        break;
    case Command::AlignRight:
        if (!m_measuring) m_alignment = 2;
        break;
    case Command::Rule:
        Rule(text);
        break;
    case Command::None:
        break;
    }
}

// Fonts are recreated on every font tag; the text metrics are not read again,
// so tab stops and the base line height stay those of the tooltip's font.
void Layout::ChangeFont() {
    m_surface.RestoreFont();
    m_surface.UseFont(m_font);
}

void Layout::LineBreak(std::uint32_t count) {
    const std::int64_t n = std::min<std::int64_t>(std::max<std::uint32_t>(count, 1), kCoordLimit);
    if (m_measuring) {
        const int width = Sat(m_x - m_left);
        m_maxWidth = std::max(m_maxWidth, width);
        m_lines.lineWidths.push_back(width);
        m_lines.lineHeights.push_back(m_lineHeight);
    }
    // Extra breaks add empty lines as tall as the line just ended.
    m_y = Sat(m_y + std::int64_t{LineHeight(m_lineIndex)} * n);
    ++m_lineIndex;
    m_percentOfLine.push_back(0);
    m_lineStart = true;
    m_x = m_left;
    m_lineHeight = m_baseHeight;
}

void Layout::Tab(std::uint32_t count) {
    const std::int64_t n = std::min<std::int64_t>(std::max<std::uint32_t>(count, 1), kCoordLimit);
    const std::int64_t stop = std::int64_t{4} * m_avgChar;
    if (stop <= 0) return;  // a font without an average width has no tab stops
    const std::int64_t r = (m_x - m_left) % stop;
    m_x = Sat(r == 0 ? m_x + n * stop : m_x + (stop - r) + (n - 1) * stop);
}

void Layout::Rule(const std::wstring& value) {
    if (value.empty()) {
        DrawRule(100);
        return;
    }
    const std::int64_t amount = std::min<std::int64_t>(ParseUInt32(value), kCoordLimit);
    if (value.back() != L'%') {
        DrawRule(amount);
    } else if (m_measuring) {
        std::int64_t& percent = m_percentOfLine[m_lineIndex];
        percent = Sat(percent + amount);
    } else {
        DrawRule(MulDivRounded(Sat(m_width), static_cast<int>(amount), 100));
    }
}

// A rule runs through the middle of the line and does not change its height.
void Layout::DrawRule(std::int64_t w) {
    if (!m_measuring) {
        const int y = Sat(m_y + LineHeight(m_lineIndex) / 2);
        m_surface.DrawHorzLine(Sat(m_x), Sat(m_x + w), y, m_surface.GetTextColour());
    }
    m_x = Sat(m_x + w);
}

}  // namespace

std::wstring MarkupPlainText(std::wstring_view text) {
    constexpr std::uint32_t kMaxRepeat = 16;
    std::wstring out;
    const std::size_t len = text.size();
    std::size_t pos = 0;
    while (pos < len) {
        const std::wstring run = SearchBeginOfTag(text, pos);
        if (!run.empty()) {
            out += run;
            continue;
        }
        if (pos >= len) break;
        std::wstring name = GetNameOfTag(text, pos);
        if (!name.empty() && name.front() == L'/') name.erase(0, 1);
        const Tag* tag = FindTag(name);
        std::uint32_t count = 1;
        if (tag && tag->value == Value::Count) count = GetUIntValue(text, pos, tag->defaultValue);
        // As in the layout: the cursor goes to the tag's end and one past it
        // (past the '>', or past the TAB or LF that is a tag of its own).
        SearchEndOfTag(text, pos);
        ++pos;
        if (!tag) continue;
        count = count == 0 ? 1 : (count > kMaxRepeat ? kMaxRepeat : count);
        if (tag->command == Command::LineBreak) {
            for (std::uint32_t i = 0; i < count; ++i) out += L"\r\n";
        } else if (tag->command == Command::Tab) {
            out.append(count, L'\t');
        }
    }
    return out;
}

std::wstring SearchBeginOfTag(std::wstring_view text, std::size_t& pos) {
    std::wstring run;
    const std::size_t len = text.size();
    while (pos < len) {
        const wchar_t c = text[pos];
        if (c == kCr) {
            ++pos;
        } else if (c == kTab || c == kLf) {
            // The TAB or LF stays under the cursor, to be read as a tab or
            // line break next. After text the cursor is not moved back: it
            // would land on the run's last character and read the same run
            // again forever. So "ab\tc" is "ab<t>c" and "ab\ncd" "ab<br>cd".
            return run;
        } else if (c != L'<') {
            run += c;
            ++pos;
        } else if (pos + 1 >= len || text[pos + 1] == L'<') {
            // "<<" is a literal '<'. So is a '<' at the very end, which
            // still takes two steps, leaving the cursor past the end: the
            // line it ends is drawn but not closed.
            run += L'<';
            pos += 2;
        } else {
            // A tag. After text the cursor rests on the '<', so that the
            // next scan finds the tag with an empty run.
            pos += run.empty() ? 1 : 0;
            return run;
        }
    }
    return run;
}

std::wstring GetNameOfTag(std::wstring_view text, std::size_t& pos) {
    std::wstring name;
    for (; pos < text.size(); ++pos) {
        const wchar_t c = text[pos];
        if (c == kTab || c == kLf) {
            if (name.empty()) return std::wstring(1, c);
        } else if (c == kBlank) {
            if (!name.empty()) {
                ++pos;
                break;
            }
        } else if (c == L'=' || c == L'>') {
            break;
        } else if (c != kCr) {
            name += c;
        }
    }
    return name;
}

std::wstring GetStringValue(std::wstring_view text, std::size_t& pos) {
    std::wstring value;
    bool equals = false;
    for (; pos < text.size(); ++pos) {
        const wchar_t c = text[pos];
        if (c == kTab || c == kLf || c == kCr) continue;
        if (c == kBlank) {
            if (value.empty()) continue;
            ++pos;
            break;
        }
        if (c == L'=') {
            equals = true;
        } else if (c == L'>' || !equals) {
            break;
        } else {
            value += c;
        }
    }
    return value;
}

std::uint32_t GetUIntValue(std::wstring_view text, std::size_t& pos, std::uint32_t defaultValue) {
    const std::wstring value = GetStringValue(text, pos);
    return value.empty() ? defaultValue : ParseUInt32(value);
}

void SearchEndOfTag(std::wstring_view text, std::size_t& pos) noexcept {
    while (pos < text.size() && text[pos] != kTab && text[pos] != kLf && text[pos] != L'>') ++pos;
}

std::wstring GetPropertiesOfTag(std::wstring_view text, std::size_t& pos) {
    std::wstring word;
    for (; pos < text.size(); ++pos) {
        const wchar_t c = text[pos];
        if (c == kBlank || c == kTab || c == kLf || c == kCr) {
            if (word.empty()) continue;
            ++pos;
            break;
        }
        if (c == L'=' || c == L'>') break;
        word += c;
    }
    return word;
}

std::uint32_t ParseUInt32(std::wstring_view text) noexcept {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == kBlank || (text[i] >= L'\t' && text[i] <= kCr))) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) negative = text[i++] == L'-';
    unsigned base = 10;
    if (i < text.size() && text[i] == L'0') {
        base = 8;
        // "0x" is a prefix only when a hexadecimal digit follows; else the
        // number is the 0 before the x.
        if (i + 2 < text.size() && (text[i + 1] == L'x' || text[i + 1] == L'X') && DigitValue(text[i + 2]) < 16) {
            base = 16;
            i += 2;
        }
    }
    std::uint64_t value = 0;
    bool overflow = false;
    for (int d; i < text.size() && (d = DigitValue(text[i])) < static_cast<int>(base); ++i) {
        value = value * base + static_cast<unsigned>(d);
        if (value > 0xFFFFFFFFu) {
            overflow = true;
            value = 0;
        }
    }
    if (overflow) return 0xFFFFFFFFu;
    const auto result = static_cast<std::uint32_t>(value);
    return negative ? 0u - result : result;
}

int MulDivRounded(int a, int b, int c) noexcept {
    if (c == 0) return -1;
    const std::int64_t product = std::int64_t{a} * b;
    std::int64_t quotient = product / c;
    const std::int64_t remainder = product % c;
    // Round half away from zero: |2r| >= |c|.
    if (remainder != 0 && 2 * (remainder < 0 ? -remainder : remainder) >= (c < 0 ? -std::int64_t{c} : c)) {
        quotient += (product < 0) == (c < 0) ? 1 : -1;
    }
    if (quotient > std::numeric_limits<int>::max() || quotient < std::numeric_limits<int>::min()) return -1;
    return static_cast<int>(quotient);
}

TipSize PrintTitleString(MarkupSurface& surface, const TipRect& rect, std::wstring_view text, bool measureOnly,
                         const MarkupStyle& style, MarkupLines& lines) noexcept {
    if (measureOnly) {
        lines.lineWidths.clear();
        lines.lineHeights.clear();
    }
    if (text.empty()) return {};
    try {
        return Layout(surface, rect, text, measureOnly, style, lines).Run();
    } catch (...) {  // out of memory: the font is already restored
        return {};
    }
}

}  // namespace qv
