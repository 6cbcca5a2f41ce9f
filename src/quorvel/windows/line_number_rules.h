// The arithmetic of the line-number gutter of XMultiLineEditLN: which lines
// it numbers, how wide it is, where each number goes, and how a number is
// written.
//
// Lines are counted from 0 here and shown from 1. The gutter numbers the
// lines that fit whole into the edit's client area: client height / line
// height of them (integer division), from the first visible line on, and
// never beyond the last line of the text.
//
// The number format is a printf-style format with one integer, given by the
// host ("%05i" unless it says otherwise). It is never handed to a C runtime
// printf: LineNumberFormat understands the subset of printf that writes one
// integer and writes the number itself, so a host format can neither read
// arguments that are not there ("%s", "%d %d", "%*d"), nor write memory
// ("%n"), nor ask for gigantic output ("%2000000000d"). A format outside
// that subset is refused as a whole and the gutter uses "%05i" instead.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "quorvel/common/dpi_rules.h"

namespace qv {

inline constexpr std::wstring_view kDefaultLineNumberFormat = L"%05i";

// The lines the gutter numbers: first to last, last excluded (0-based).
struct LineRange {
    int first = 0;
    int last = 0;
    bool operator==(const LineRange&) const = default;
};

// first = the edit's first visible line, last = first + clientHeight /
// lineHeight while that is below lineCount, else lineCount. Nonsense input
// (no line height yet, negative sizes, a first line beyond the text) gives
// a range inside [0, lineCount] with first <= last: possibly empty, never
// a division by zero or an overflow.
LineRange VisibleLineRange(int lineCount, int firstVisible, int clientHeight, int lineHeight) noexcept;

// The gutter's lengths at 96 DPI: the air it adds to the measured number
// (the left inset and some room before the dividing line), and the inset.
inline constexpr int kGutterPadding = 5;
inline constexpr int kGutterNumberLeft = 2;

// The gutter's width for a measured line-count text: its width + 5 pixels
// (a 2-pixel left inset, the rest is air before the dividing line), the
// pixels scaled to `dpi`. (The text is measured in the edit's font, which
// is already as large as the DPI makes it.)
int LineNumberGutterWidth(int countTextWidth, unsigned dpi = kBaseDpi) noexcept;

// Where the numbers start: kGutterNumberLeft at `dpi`.
int LineNumberLeft(unsigned dpi = kBaseDpi) noexcept;

// The top of line `line`'s number: line height * (line - first) + the top
// of the edit's formatting rectangle, so each number sits on its text line.
int LineNumberTop(int line, int first, int lineHeight, int topMargin) noexcept;

// The left edge the edit's formatting rectangle gets: one pixel right of
// the gutter, at any DPI (the gutter's dividing line is a one-pixel line
// too, as the system draws its borders; the edit keeps its own margin
// inside the rectangle).
inline constexpr int FormattingRectLeft(int gutterWidth) noexcept { return gutterWidth + 1; }

// A parsed number format: literal text ("%%" for a percent sign) around
// exactly one conversion
//   % [flags -+ #0 space] [width 0-64] [.precision 0-64] [h | l | ll] d|i|u|x|X|o
// written as printf writes an int. The length modifier is accepted for
// hosts that write "%ld", and the number is always written whole.
class LineNumberFormat {
public:
    // "%05i".
    LineNumberFormat();

    // The format, or nothing when it is outside the subset described above.
    static std::optional<LineNumberFormat> Parse(std::wstring_view format);
    // The format, or "%05i" for a refused one.
    static LineNumberFormat OrDefault(std::wstring_view format);

    std::wstring Format(int number) const;

    // Longest widths and precisions taken: wider numbers make no sense in a
    // gutter and are refused.
    static constexpr int kMaxWidth = 64;

private:
    std::wstring m_prefix;
    std::wstring m_suffix;
    bool m_left = false;   // '-'
    bool m_plus = false;   // '+'
    bool m_space = false;  // ' '
    bool m_alt = false;    // '#'
    bool m_zero = false;   // '0'
    int m_width = 0;
    int m_precision = -1;  // none
    wchar_t m_conversion = L'i';
};

// What the edit measures for the gutter's width: the line count, formatted.
std::wstring LineCountText(const LineNumberFormat& format, int lineCount);

// Whether a gutter whose width was measured for `measured` must widen for a
// text of `lineCount` lines: the formatted count has gained characters.
// (It never narrows on a text change; see XMultiLineEditLN.)
bool GutterMustWiden(const LineNumberFormat& format, std::wstring_view measured, int lineCount);

}  // namespace qv
