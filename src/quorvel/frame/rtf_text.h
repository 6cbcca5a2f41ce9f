// Rich text (RTF) to plain text conversion for controls that accept rich text
// but display or validate plain text.
//
// Decisions:
//  - Input is rich text only if, after optional leading blanks (space, tab,
//    CR, LF), it starts with "{\rtf". Otherwise RtfToText returns false and
//    leaves `text` empty.
//  - The document ends where the outermost group closes; anything after it is
//    ignored (so surplus '}' never matter). A document whose closing braces are
//    missing is accepted as if they were present.
//  - Paragraph and line breaks (\par, \line, \row, \nestrow, \sect, \page,
//    and a backslash followed by a raw CR or LF) become "\r\n", the line
//    break Windows edit controls expect. \tab, \cell, \nestcell and a raw tab
//    become '\t'. Raw CR and LF in the source are formatting only and dropped,
//    as are other C0 control characters.
//  - \'hh is a byte in the code page in force: the current font's
//    (\fN, scoped to the group; \plain and the document start select the
//    default font \deffN), given by its \fcharsetN (0 ANSI and 1 default
//    mean the document's code page; 128 Shift-JIS 932, 129 Hangul 949,
//    130 Johab 1361, 134 GB2312 936, 136 Big5 950, 161 Greek 1253,
//    162 Turkish 1254, 163 Vietnamese 1258, 177 Hebrew 1255, 178 Arabic
//    1256, 186 Baltic 1257, 204 Cyrillic 1251, 222 Thai 874, 238 Eastern
//    European 1250, 254 and 255 PC/OEM 437, 77-89 the Mac code pages) or by
//    its \cpgN. A font with no known charset, an unknown font, or no font
//    reads bytes in the document's code page: \ansicpgN, else that of
//    \ansi (1252), \mac (10000), \pc (437) or \pca (850), else 1252. A code
//    page with no built-in table (see codepages.h) counts as unknown.
//  - Double-byte code pages: a lead byte and the trail byte after it give
//    one character, the trail byte written as \'hh or, when it is in the
//    ASCII range, as the character itself (\\ \{ \} included). A lead byte
//    followed by anything else (a byte that is not a trail byte of the code
//    page, another character, a control word or symbol, a brace, the end of
//    the input) gives U+FFFD, and what followed is read normally. Pairs the
//    code page leaves unassigned give the system converter's default
//    character ('?' or U+30FB), as on Windows.
//  - Symbol fonts (\fcharset2): each character U+0021-U+00FF or
//    U+F021-U+F0FF, however written (raw, \'hh, \uN), stands for the glyph
//    at that position. The font named "Symbol" gives its Unicode meaning
//    (0xB7 the bullet U+2022, 0x61 Greek alpha); glyphs without one, and
//    every glyph of other symbol fonts (Wingdings, Webdings ...), give
//    U+F000 + position, the code Windows gives symbol-font characters, so
//    the same font still shows them. Spaces stay spaces.
//  - Other characters of the input are already Unicode and are kept as they
//    are: only \'hh are bytes of a code page.
//  - \uN emits the UTF-16 code unit N (N < 0 means N + 65536) and then
//    skips the fallback: the next \ucN items (default 1, scoped to the
//    group), where an item is a character, a \'hh (so a double-byte
//    character written as two \'hh is two items), a control word or a
//    control symbol; a brace ends the skipping early.
//  - Groups starting with \* and the groups of destinations that carry no
//    visible text (font, colour, style and list tables, document info,
//    pictures, objects, headers, footers, footnotes, field instructions and the
//    like) are skipped with all their content. \binN data is always skipped.
//  - Control symbols: \\ \{ \} give the character; \~ gives U+00A0, \_ gives
//    U+2011, \- (optional hyphen) and any other symbol give nothing.
//  - Time is linear in the input length (a font look-up, logarithmic in the
//    number of fonts, is made only when the font or the font table changes)
//    and memory is bounded by it: nesting is tracked with an explicit stack,
//    never by recursion.
#pragma once

#include <string>
#include <string_view>

namespace qv {

// Converts `rtf` to plain text (UTF-16 code units in `text`). Returns false and
// leaves `text` empty when `rtf` is not rich text.
bool RtfToText(std::wstring_view rtf, std::wstring& text);

}  // namespace qv
