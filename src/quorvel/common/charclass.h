// Character classes used by every control of the library.
//
// The C runtime's isdigit/iswprint/towupper answer according to the current
// locale, which differs between the native test build, MinGW's msvcrt and the
// host process. Controls must give the same answer everywhere, so the classes
// are defined here once, on code units, without any locale.
#pragma once

namespace qv {

// '0'..'9' only; other scripts' digits are not digits for entry fields.
constexpr bool IsDigit(wchar_t c) noexcept { return c >= L'0' && c <= L'9'; }

// Printable = not a C0 or C1 control character (U+0000-U+001F, U+007F-U+009F).
constexpr bool IsPrintable(wchar_t c) noexcept {
    const unsigned u = static_cast<unsigned>(c);
    return !(u <= 0x1Fu || (u >= 0x7Fu && u <= 0x9Fu));
}

constexpr bool IsAsciiUpper(wchar_t c) noexcept { return c >= L'A' && c <= L'Z'; }
constexpr bool IsAsciiLower(wchar_t c) noexcept { return c >= L'a' && c <= L'z'; }

// Upper-cases a-z only; every other code unit is returned unchanged.
constexpr wchar_t ToUpperAscii(wchar_t c) noexcept {
    return IsAsciiLower(c) ? static_cast<wchar_t>(c - L'a' + L'A') : c;
}

// True for '0'-'9' and 'A'-'Z'.
constexpr bool IsDigitOrUpperLetter(wchar_t c) noexcept { return IsDigit(c) || IsAsciiUpper(c); }

}  // namespace qv
