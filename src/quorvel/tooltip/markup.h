// The tooltip mark-up language: a scanner and a two-pass layout that first
// measures a text (to size the tooltip) and then draws it (to paint it).
//
// A text is plain text with tags in angle brackets:
//   <b> <i> <u> <s>        bold (base weight x 2, at most 900), italic,
//                          underline, strike-out; the closing tag switches off
//   <br=n> <t=n>           n line breaks / n tab stops (default and 0 mean 1)
//   <ct=c> <cti=c>         text colour c (0x00BBGGRR); without a value the
//                          tooltip's text colour (<ct>) or the colour value 1
//                          (<cti>: it takes a colour, not a table index)
//   <cb=c> <cbi=n>         background colour c / colour-table entry n (0..6,
//                          7 or more ignores the tag); opening paints an
//                          opaque box behind the text, closing goes back to
//                          transparent and, without a value, to the
//                          tooltip's background colour
//   <al> <al_l> <al_c> <al_r>  left, centred, right-aligned lines
//   <hr=w> <hr=p%>         a rule w pixels (default 100) or p per cent of the
//                          text rectangle wide, through the middle of the line
//   "<<" is a literal '<'; '>' outside a tag is plain text.
// Names ignore the case of A-Z. Tags do not nest: an opening tag sets a
// state, a closing tag sets the closed state whatever came before, and for
// br, t, hr and the alignment tags the slash is ignored (</al_r> aligns right).
// Unknown tags are skipped whole. A tag missing its '>' swallows the rest of
// the text, and that last line is then not measured.
//
// The model draws through MarkupSurface, which the tooltip window implements
// with GDI; tests implement it with a recorder. Nothing here includes
// <windows.h>.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qv {

// A colour reference in the platform's byte order: 0x00BBGGRR (0x0000FF is
// red, 0xFF0000 blue).
using ColourRef = std::uint32_t;

struct TipSize {
    int cx = 0;
    int cy = 0;
    bool operator==(const TipSize&) const = default;
};

struct TipPoint {
    int x = 0;
    int y = 0;
    bool operator==(const TipPoint&) const = default;
};

// A rectangle with exclusive right and bottom, as RECT.
struct TipRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    constexpr int Width() const noexcept { return right - left; }
    constexpr int Height() const noexcept { return bottom - top; }
    bool operator==(const TipRect&) const = default;
};

// The tooltip's seven colours, by index.
enum TipColourIndex : std::size_t {
    kTipColourBlack = 0,
    kTipColourText = 1,
    kTipColourBackground = 2,
    kTipColourGradientMiddle = 3,
    kTipColourGradientEnd = 4,
    kTipColourShadow = 5,
    kTipColourBorder = 6,
    kTipColourCount = 7,
};
using TipColourTable = std::array<ColourRef, kTipColourCount>;

// The fields of a LOGFONT that the mark-up changes or needs. The window keeps
// its other LOGFONT fields (width, quality, pitch...) and takes these from
// here when it creates a font.
struct FontDesc {
    std::wstring face;          // lfFaceName
    int height = 0;             // lfHeight, logical units
    int weight = 400;           // lfWeight; 0 is the platform's default weight
    bool italic = false;        // lfItalic
    bool underline = false;     // lfUnderline
    bool strikeOut = false;     // lfStrikeOut
    std::uint8_t charSet = 1;   // lfCharSet, DEFAULT_CHARSET
    bool operator==(const FontDesc&) const = default;
};

// Text metrics of the selected font that the layout uses.
struct TipTextMetrics {
    int height = 0;        // tmHeight
    int aveCharWidth = 0;  // tmAveCharWidth
    bool operator==(const TipTextMetrics&) const = default;
};

// Background modes, with the platform's values.
inline constexpr int kBackModeTransparent = 1;
inline constexpr int kBackModeOpaque = 2;

// The drawing operations the layout needs from a device context. None of them
// may throw. The layout selects at most one font of its own at a time: every
// UseFont is followed by exactly one RestoreFont before the next UseFont.
class MarkupSurface {
public:
    virtual ~MarkupSurface() = default;
    // Creates a font from `font` and selects it, keeping the font that was
    // selected before (CreateFontIndirect + SelectObject).
    virtual void UseFont(const FontDesc& font) = 0;
    // Selects back the font kept by the last UseFont and deletes the font
    // that UseFont created (SelectObject + DeleteObject).
    virtual void RestoreFont() = 0;
    // Metrics of the selected font (GetTextMetrics).
    virtual TipTextMetrics GetMetrics() = 0;
    // Extent of `text` in the selected font (GetTextExtentPoint32).
    virtual TipSize MeasureText(std::wstring_view text) = 0;
    // Draws `text` with its top-left corner at (x, y) (TextOut).
    virtual void PutText(int x, int y, std::wstring_view text) = 0;
    virtual void SetTextColour(ColourRef colour) = 0;  // SetTextColor
    virtual ColourRef GetTextColour() = 0;             // GetTextColor
    virtual void SetBackColour(ColourRef colour) = 0;  // SetBkColor
    virtual void SetBackMode(int mode) = 0;            // SetBkMode: kBackMode*
    // A solid 1-pixel line in `colour` from (xFrom, y) to (xTo, y), the end
    // point excluded (a pen, MoveTo, LineTo; the previous pen is restored).
    virtual void DrawHorzLine(int xFrom, int xTo, int y, ColourRef colour) = 0;
};

// What the tooltip hands to the layout: its font and its colour table.
struct MarkupStyle {
    FontDesc font;
    TipColourTable colours{};
};

// Per-line results of the measuring pass, read by the drawing pass: the width
// and the height of every line the measuring pass closed.
struct MarkupLines {
    std::vector<int> lineWidths;
    std::vector<int> lineHeights;
};

// ---- Scanner. Each call reads `text` from the cursor `pos` and moves it;
// a cursor at or past the end reads nothing. ----

// Returns the run of plain text from `pos` up to the next tag, TAB or LF,
// with CRs dropped and "<<" read as '<'. When a tag follows a non-empty run,
// `pos` is left on its '<'; when the run is empty, just after it. A TAB or LF
// is left under the cursor. A lone '<' at the very end is literal text and
// leaves `pos` one past the end (so that last line is not closed).
std::wstring SearchBeginOfTag(std::wstring_view text, std::size_t& pos);

// Reads a tag name from just after '<': leading blanks skipped, ended by a
// blank (consumed), '=' or '>' (not consumed). A TAB or LF where the name
// would start is the name itself (the cursor stays on it); inside a name TAB,
// LF and CR are skipped.
std::wstring GetNameOfTag(std::wstring_view text, std::size_t& pos);

// Reads the value after '=' ("ct=0xFF" gives "0xFF"); blanks before it, TAB,
// LF and CR are skipped; a blank after it ends it. Without '=' the value is
// empty and the cursor stays where the value would start.
std::wstring GetStringValue(std::wstring_view text, std::size_t& pos);

// GetStringValue converted like wcstoul(value, nullptr, 0) on Windows, or
// `defaultValue` when the value is empty.
std::uint32_t GetUIntValue(std::wstring_view text, std::size_t& pos, std::uint32_t defaultValue);

// Moves the cursor to the next '>', TAB or LF, or to the end.
void SearchEndOfTag(std::wstring_view text, std::size_t& pos) noexcept;

// Returns the next blank-delimited word inside a tag: leading blanks, TAB, LF
// and CR are skipped; a blank after the word is consumed, '=' and '>' end it
// and are not.
std::wstring GetPropertiesOfTag(std::wstring_view text, std::size_t& pos);

// wcstoul(text, nullptr, 0) as the Windows C runtime does it, without any
// locale and for 16- and 32-bit wchar_t alike: leading white space
// (TAB..CR, blank), an optional sign, "0x"/"0X" hexadecimal, a leading 0
// octal, else decimal; ASCII digits only; stops at the first character that
// does not fit; no digits give 0; a value beyond 32 bits gives 0xFFFFFFFF;
// '-' negates modulo 2^32.
std::uint32_t ParseUInt32(std::wstring_view text) noexcept;

// The platform's MulDiv: a * b / c with a 64-bit intermediate, rounded half
// away from zero; -1 when c is 0 or the result does not fit in an int.
int MulDivRounded(int a, int b, int c) noexcept;

// ---- Plain text ----

// What a screen reader is given for a mark-up text: the text with its tags
// removed, "<br=n>" and raw line feeds as n "\r\n", "<t=n>" and raw TABs as
// n TABs, "<<" as '<', CRs dropped. A tag is read exactly as the layout
// reads it, so a tag missing its '>' swallows the rest here too. Counts are
// capped at 16 per tag: a slip such as "<br=4000000000>" must not make a
// gigabyte of line ends.
std::wstring MarkupPlainText(std::wstring_view text);

// ---- Layout ----

// Measures (measureOnly) or draws `text` in `rect`.
// Measuring clears and fills `lines` and returns (widest line, total height);
// nothing is drawn. Drawing draws into `rect` with the lists of the last
// measuring pass of the same text and returns (0, total height).
// An empty text returns (0, 0) and touches neither the surface nor, when
// drawing, the lists. Never throws: if memory runs out the pass stops, the
// surface gets its font back and (0, 0) is returned.
TipSize PrintTitleString(MarkupSurface& surface, const TipRect& rect, std::wstring_view text,
                         bool measureOnly, const MarkupStyle& style, MarkupLines& lines) noexcept;

}  // namespace qv
