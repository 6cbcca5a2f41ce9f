// The font and colour chooser without a window: the style index the dialog
// exchanges and its list positions, the HTML colour texts, the read-only
// rule for the background, the "Default" choice, the size list, the layout
// of the chooser's preview and button at any DPI, and the text a screen
// reader hears for the choice.
//
// Colours are COLORREF values (0x00BBGGRR) held in 32-bit integers.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "quorvel/common/dpi_rules.h"

namespace qv::fontcolor {

// The three style flags of a font.
struct Style {
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool operator==(const Style&) const = default;
};

inline constexpr int kStyleCount = 8;

// The style index of a set of flags (every combination has one):
//   0 none, 1 italic, 2 bold, 3 underlined, 4 bold + italic,
//   5 bold + underlined, 6 bold + italic + underlined, 7 italic + underlined.
int StyleIndex(const Style& style) noexcept;
// The flags of a style index; an index outside 0..7 is the plain style.
Style StyleOf(int index) noexcept;

// The style list shows the styles in another order than their indices:
// "Bold" comes before "Italic", so indices 1 and 2 sit at list positions 2
// and 1. Both answer -1 for a value outside 0..7.
int ListPositionOfStyle(int index) noexcept;
int StyleOfListPosition(int position) noexcept;
// The text of the style list at `position` (0..7), "" outside.
const wchar_t* StyleListText(int position) noexcept;

// The texts of the size list, in order, and their number.
inline constexpr int kSizeCount = 12;
const wchar_t* SizeListText(int position) noexcept;

// A size typed or chosen in the size list: a whole number from kMinSize to
// kMaxSize, blanks around it allowed; nothing for any other text.
inline constexpr int kMinSize = 1;
inline constexpr int kMaxSize = 999;
std::optional<int> ParseSize(std::wstring_view text);

// Font weight for the bold flag: 700 bold, 400 normal.
int Weight(bool bold) noexcept;

// Two lower-case hexadecimal digits at least ("%x" padded with "0"):
// 0 -> "00", 10 -> "0a", 255 -> "ff", 256 -> "100".
std::wstring DecToHex(unsigned value);
// "#rrggbb" (lower case) for a COLORREF: red, green, blue in that order.
std::wstring HtmlColor(std::uint32_t color);
// The COLORREF of "#rrggbb" (either case, blanks around it allowed);
// nothing for any other text.
std::optional<std::uint32_t> ParseHtmlColor(std::wstring_view text);

// What the user has chosen.
struct Choice {
    std::wstring face = L"Arial";
    int size = 12;
    int styleIndex = 0;
    std::uint32_t text = 0x000000;
    std::uint32_t background = 0xFFFFFF;
    bool operator==(const Choice&) const = default;
};

// "Default": the chooser's initial font and colours. A chooser for a
// read-only field keeps its background colour, which the user cannot choose.
Choice DefaultChoice(const Choice& current, bool readOnly);

// The background a preview shows: white for a read-only chooser, whatever
// background is stored (the field it describes is painted by its own
// read-only scheme), otherwise the chosen background.
std::uint32_t PreviewBackground(bool readOnly, std::uint32_t background) noexcept;

// The texts of the two previews.
inline constexpr const wchar_t* kChooserPreviewText = L"Test";
inline constexpr const wchar_t* kDialogPreviewText = L"Preview of the selected fontattributes";

// The chooser's children inside its rectangle: at 96 DPI the preview 2
// pixels in from the left, top and bottom and 40 from the right, the "..."
// button 38 to 2 pixels from the right; at another `dpi` each distance is
// scaled. A chooser too small for them gets empty rectangles rather than
// turned-over ones.
struct Box {
    int left = 0, top = 0, right = 0, bottom = 0;
    bool operator==(const Box&) const = default;
};
Box PreviewBox(const Box& frame, unsigned dpi = kBaseDpi) noexcept;
Box ButtonBox(const Box& frame, unsigned dpi = kBaseDpi) noexcept;

// What a screen reader hears as the preview's value, before translation:
// "%1 %2, %3, %4 on %5" with the face, the size, the style, the text colour
// and the background colour; a chooser for a read-only field leaves the
// background out, as the user cannot choose it ("%1 %2, %3, %4").
inline constexpr const wchar_t* kReaderValue = L"%1 %2, %3, %4 on %5";
inline constexpr const wchar_t* kReaderValueReadOnly = L"%1 %2, %3, %4";

// `pattern` with "%1" to "%9" replaced by the arguments in that order, so a
// translation may put them in any order. "%%" is one "%"; a "%" before
// anything else stays as it is, and a number without an argument gives "".
std::wstring FillIn(std::wstring_view pattern, std::initializer_list<std::wstring_view> args);

}  // namespace qv::fontcolor
