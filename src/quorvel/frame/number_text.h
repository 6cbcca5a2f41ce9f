// Number text of the numeric entry controls, independent of the C runtime's
// locale: the user's decimal separator is passed in by the caller (the
// Windows layer reads it from the user's locale settings).
#pragma once

#include <string>
#include <string_view>

namespace qv {

// Parses a floating value written as
//   [blanks] [+|-] digits [sep digits] [(e|E) [+|-] digits] [blanks]
// where blanks are spaces and tabs, at least one mantissa digit is present
// (either side of the separator), and sep is `decimalSep` or '.'. Thousands
// separators and any other character are refused, as is a value that
// overflows or underflows double (so the text never silently means something
// else). A `decimalSep` that is itself a digit, sign, blank, 'e' or 'E' is not
// usable and only '.' is accepted. On failure `value` is left unchanged.
bool ParseLocaleDouble(std::wstring_view text, wchar_t decimalSep, double& value);

// Formats `value` with a printf-style format holding exactly one floating
// conversion:  %[flags -+ #0][width][.precision][l](f|F|e|E|g|G)
// with width and precision at most 999, plus any literal text and "%%".
// The decimal point of the converted value is replaced by `decimalSep`
// (literal text is copied as is). Returns false, leaving `text` unchanged,
// when the format has no conversion, more than one, a non-floating or
// unsupported one (%a, '*', other length modifiers), or when `value` is NaN or
// infinite: C runtimes spell those differently and no entry field could parse
// them back. Output is the same on every C99 runtime (two-digit minimum
// exponent).
bool FormatLocaleDouble(std::wstring& text, double value, std::wstring_view printfFormat,
                        wchar_t decimalSep);

// True when `text` parses as ParseLocaleDouble does and lower <= value <= upper.
bool CheckRangeText(double lower, double upper, std::wstring_view text, wchar_t decimalSep);

// True when every character is '0'-'9' or 'A'-'Z'; the empty text is true
// (an empty field holds no wrong character; required-ness is checked elsewhere).
bool CheckCharacters0to9AtoZ(std::wstring_view text);

}  // namespace qv
