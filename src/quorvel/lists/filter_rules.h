// The filtering combo box's rules without a window: how a typed pattern
// becomes tokens, whether an entry's text matches them, which entries the
// list shows for a typed text, the locale-free lower-casing both sides go
// through, and the size of the dropped list at any DPI.
//
// A pattern is matched by prefix unless it holds "*", "?" or "+". Then it is
// split into tokens: "*" any run of characters, "?" one character, and the
// literal runs between them; "\*", "\?" and "\\" stand for the character
// itself, a backslash before anything else is dropped. The literals are
// found from left to right without ever going back, so a match costs at most
// one forward search of the text per token, however many "*" the pattern
// holds.
//
// Private to the library: XCustomCombo (custom_combo.h) asks here.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "quorvel/common/dpi_rules.h"

namespace qv::lists {

// ---- Tokens -------------------------------------------------------------------

enum FilterTokenType : int {
    kFilterAnyRun = 0,   // "*": any run of characters, also none
    kFilterOneChar = 1,  // "?": one character
    kFilterLiteral = 2,  // the text itself
};

struct FilterToken {
    int type = kFilterLiteral;
    std::wstring text;  // "*", "?" or the literal

    friend bool operator==(const FilterToken&, const FilterToken&) = default;
};

// Splits `pattern` into `tokens` (replacing what they held), left to right:
// a backslash escapes "*", "?" and itself and is dropped before anything
// else; "*" and "?" end the pending literal and add their own token; every
// other character (also "+") joins the pending literal, which becomes a
// token before the next "*" or "?" and at the end. Empty literals are never
// added. True when the pattern held an unescaped "*" or "?".
bool TokenizeString(std::wstring_view pattern, std::vector<FilterToken>& tokens);

// Whether `text` matches `tokens`:
// - a pattern that ends with "*" and a literal requires the text to end
//   with that literal;
// - then the tokens are walked with a position from 0: "*" lets every later
//   literal float (found anywhere from the position on), "?" steps the
//   position on by one, a literal is searched from the position and must
//   start right there unless floating; the position moves past it.
// The text may continue after the last token, and a "?" at the end asks
// for nothing more: "ab?" matches "ab". No tokens match every text.
bool CompareTokenToString(const std::vector<FilterToken>& tokens, std::wstring_view text) noexcept;

// ---- Filtering ----------------------------------------------------------------

// Lower-cases A-Z and the Latin-1 capitals U+00C0-U+00DE (not U+00D7, the
// multiplication sign); every other code unit is kept. The same answer in
// every process and locale, which the C runtime's towlower does not give.
wchar_t ToLowerFilterChar(wchar_t c) noexcept;
std::wstring ToLowerFilterText(std::wstring_view text);

// Whether a typed text is a pattern ("*", "?" or "+" in it) rather than a
// prefix.
bool IsFilterPattern(std::wstring_view typed) noexcept;

// The indexes, in stored order, of the entries that a lower-cased typed text
// keeps: by prefix, or by the tokens of the pattern. `lowered` are the
// entries' texts, lower-cased. An empty text keeps every entry.
std::vector<std::size_t> FilterEntries(const std::vector<std::wstring>& lowered, std::wstring_view typed);

// ---- The dropped list ---------------------------------------------------------

struct DropDownSize {
    int rows = 15;        // rows the list shows (and holds at least)
    int itemHeight = 0;   // pixels per row
    int listHeight = 0;   // rows x itemHeight
};

// For a font whose text is `textHeight` pixels high, drawn at `dpi`: 15 rows
// of text + 3 pixels, or for tall fonts (over 24 pixels) 5 rows of text + 11
// pixels, each pixel length at 96 DPI scaled to `dpi`. A font made for the
// window's DPI thus keeps its 15 rows at 150 % and 200 %, with the same room
// between them.
DropDownSize DropDownSizeFor(int textHeight, unsigned dpi = kBaseDpi) noexcept;

// The dropped width for a widest item text of `widestText` pixels: 27
// pixels (at 96 DPI, scaled to `dpi`) more than the text when that exceeds
// `currentWidth`, else 0 (keep the current width).
int DroppedWidthFor(int widestText, int currentWidth, unsigned dpi = kBaseDpi) noexcept;

// How many blank filler entries bring a list of `shown` entries to `rows`.
int FillerCount(int shown, int rows) noexcept;

}  // namespace qv::lists
