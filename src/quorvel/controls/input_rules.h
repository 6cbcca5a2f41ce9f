// Text rules of the base entry fields, kept apart from any window so they
// can be checked without one: the length limit, the optional restriction to
// the characters 0-9 and A-Z, and the drop-down size of the coloured combo
// box. A rule that cannot make its text (no memory) answers an empty one.
#pragma once

#include <string>
#include <string_view>

#include "quorvel/common/api.h"

namespace qv {

// Decides whether a text holds only allowed characters. `wholeText` false:
// the text is one typed character (exactly one is required); true: a whole
// text being set (the empty text passes). The Windows controls pass the
// host's CheckCharacters0_9A_Z here.
using CharactersCheck = bool (*)(const std::wstring& text, bool wholeText);

// The library's own 0-9/A-Z check with the contract above.
QV_API bool Only0to9AtoZ(const std::wstring& text, bool wholeText);

// The first `maxChars` characters of `text`; a limit of 0 or less keeps
// nothing.
QV_API std::wstring CutToLimit(std::wstring_view text, int maxChars);

// a-z turned into A-Z; every other character is left as it is.
QV_API std::wstring UpperCase0to9AtoZ(std::wstring_view text);

// A text as a restricted field takes it when it is set as a whole:
// upper-cased, and emptied when anything but 0-9/A-Z remains.
QV_API std::wstring RestrictedText(std::wstring_view text, CharactersCheck check = &Only0to9AtoZ);

// The text a field with limit `maxChars` (and the restriction, when
// `restricted`) shows after SetWindowTextW(text).
QV_API std::wstring FieldTextForSet(std::wstring_view text, int maxChars, bool restricted,
                                    CharactersCheck check = &Only0to9AtoZ);

// A field's text with its selection (EM_GETSEL order: start, end).
struct FieldState {
    std::wstring text;
    int start = 0;
    int end = 0;
};

// What a restricted field shows after the edit control has inserted the
// typed character `typed`: `after` is the text and selection at that moment.
// The text is upper-cased. When the (upper-cased) character is not allowed,
// the first equal character of the text is removed, which need not be the
// one just typed (in "A-B" a hyphen typed at the end leaves "AB-"), and the
// selection moves one to the left: its end when not negative, its start
// when above 0. A character that does not occur (Backspace, say) removes
// nothing.
QV_API FieldState RestrictAfterTyping(const FieldState& after, wchar_t typed, CharactersCheck check = &Only0to9AtoZ);

// The list height a coloured combo box drops down with, from the height of
// "W" in its font: ten rows of that height plus 11 pixels, or five rows when
// a row is taller than 30 pixels.
QV_API int DroppedListHeight(int heightOfW);

// The drop-down width for a widest item of `widestItem` pixels: 11 pixels
// more than the item when it is wider than `currentWidth`, else 0 (keep).
QV_API int DroppedListWidth(int widestItem, int currentWidth);

}  // namespace qv
