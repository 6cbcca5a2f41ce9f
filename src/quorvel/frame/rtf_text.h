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
//  - \'hh is a byte in Windows-1252 (the document's \ansicpg is not
//    consulted). \uN emits the UTF-16 code unit N (N < 0 means N + 65536) and
//    then skips the fallback: the next \ucN items (default 1, scoped to the
//    group), where an item is a character, a \'hh, a control word or a control
//    symbol; a brace ends the skipping early.
//  - Groups starting with \* and the groups of destinations that carry no
//    visible text (font, colour, style and list tables, document info,
//    pictures, objects, headers, footers, footnotes, field instructions and the
//    like) are skipped with all their content. \binN data is always skipped.
//  - Control symbols: \\ \{ \} give the character; \~ gives U+00A0, \_ gives
//    U+2011, \- (optional hyphen) and any other symbol give nothing.
//  - Time is linear in the input length and memory is bounded by it: nesting
//    is tracked with an explicit stack, never by recursion.
#pragma once

#include <string>
#include <string_view>

namespace qv {

// Converts `rtf` to plain text (UTF-16 code units in `text`). Returns false and
// leaves `text` empty when `rtf` is not rich text.
bool RtfToText(std::wstring_view rtf, std::wstring& text);

}  // namespace qv
