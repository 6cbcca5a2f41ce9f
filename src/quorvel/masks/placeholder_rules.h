// Rules of the placeholder mask edit: a fixed-layout field whose mask is
// shown as a template. Every input position of the mask holds a placeholder
// character until the user types over it; every other mask character is a
// literal that stays where it is.
//
// Mask characters:
//   #      an input position for a digit 0-9
//   *      an input position for any printable character
//   other  a literal, shown as it is and never changed by typing
//
// The text is compared with the mask position by position; there is no
// pattern language here. Each rule takes the line the caret is on (its text
// and the caret and selection within it) and answers what the field does;
// the window class carries that out on the edit control. Positions are
// indexes into the line, so a rule never needs to know about other lines.
// A rule that cannot be worked out (no memory) answers kNothing: the key is
// dropped.
//
// Portable code over std::wstring: built into the DLL and natively.
#pragma once

#include <string>
#include <string_view>

#include "quorvel/common/api.h"

namespace qv {

// The placeholder a field shows until SetPlaceholder chooses another.
inline constexpr wchar_t kDefaultPlaceholder = L'_';

// Whether the mask has an input position ('#' or '*') at `index`. Indexes
// outside the mask are not input positions: text beyond the mask (a host
// may set a longer text) behaves like a literal.
QV_API bool IsInputPosition(std::wstring_view mask, int index) noexcept;

// The template a mask shows: each input position replaced by the
// placeholder, every literal kept. "##.##" with '_' gives "__.__".
QV_API std::wstring PlaceholderTemplate(std::wstring_view mask, wchar_t placeholder);

// Whether `text` fits the mask position by position: under '#' a digit or
// the placeholder, under '*' anything, under a literal that same character
// (case-sensitive). A text shorter than the mask fits when every character
// it has fits; a text longer than the mask does not fit.
QV_API bool IsCheckedChar(std::wstring_view text, std::wstring_view mask, wchar_t placeholder);

// The line the caret is on, as the field reads it before each key: the
// text, and the selection within it (start = the caret, start <= end).
struct PlaceholderLine {
    std::wstring text;
    int start = 0;
    int end = 0;
};

// What the field does in answer to a key.
struct PlaceholderAction {
    enum Kind {
        kNothing,     // the key is dropped: text and selection stay as they were
        kMoveCaret,   // only the caret moves, to `caret`
        kReplace,     // [from, to) becomes `text` (not undoable); then the caret goes to `caret`
        kTypeOver,    // [from, to) is removed and the typed character is inserted there;
                      // then the caret goes to `caret`
    };
    Kind kind = kNothing;
    int from = 0;
    int to = 0;
    std::wstring text;
    int caret = 0;
    bool operator==(const PlaceholderAction&) const = default;
};

// Backspace. After an input position the placeholder is written back there
// and the caret goes before it. After a literal nothing is deleted: the
// caret walks left over all the literals in a row and stops behind the
// input position before them (or at the start of the line), so the next
// Backspace clears that position. At the start of the line nothing happens.
QV_API PlaceholderAction BackspaceAction(const PlaceholderLine& line, std::wstring_view mask, wchar_t placeholder);

// A typed character other than Backspace. The double quote and control
// characters are dropped. A printable character overwrites the character at
// the caret (one character, even when more are selected) when the line
// still fits the mask with it there; the caret then moves on as
// CaretAfterTyping says. At the end of the line nothing can be typed.
QV_API PlaceholderAction TypedCharAction(const PlaceholderLine& line, std::wstring_view mask, wchar_t placeholder,
                                         wchar_t ch);

// Where the caret goes once a character has been typed and the caret stands
// at `caret` behind it: over the literal at the caret, if there is one, but
// never over more than one. With "#--#", after the first digit the caret
// stops between the two hyphens; the user moves on with the arrow keys.
QV_API int CaretAfterTyping(std::wstring_view text, std::wstring_view mask, int caret) noexcept;

// The Delete key. Every input position of the selection gets its
// placeholder back, literals stay, and the caret goes to the start of the
// selection. Without a selection (or one wholly beyond the text or the
// mask) nothing happens: Delete never shifts the template.
QV_API PlaceholderAction DeleteAction(const PlaceholderLine& line, std::wstring_view mask, wchar_t placeholder);

}  // namespace qv
