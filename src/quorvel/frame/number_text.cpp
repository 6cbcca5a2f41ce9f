#include "quorvel/frame/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <system_error>
#include <utility>

#include "quorvel/common/charclass.h"

namespace qv {
namespace {

constexpr bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t'; }

constexpr bool IsUsableSeparator(wchar_t c) {
    return c != 0 && !IsDigit(c) && !IsBlank(c) && c != L'+' && c != L'-' && c != L'e' && c != L'E';
}

// Appends the digits at text[i...] to `out`; returns how many there were.
std::size_t CopyDigits(std::wstring_view text, std::size_t& i, std::string& out) {
    const std::size_t start = i;
    for (; i < text.size() && IsDigit(text[i]); ++i) out += static_cast<char>(text[i]);
    return i - start;
}

// Reads a width or precision of at most 999; false when it is larger.
bool ReadSmallNumber(std::wstring_view format, std::size_t& i, std::string& conversion) {
    int value = 0;
    for (; i < format.size() && IsDigit(format[i]); ++i) {
        value = std::min(1000, value * 10 + (format[i] - L'0'));
        conversion += static_cast<char>(format[i]);
    }
    return value <= 999;
}

// Parses the conversion after a '%' at format[i] into a narrow printf
// conversion (without length modifier). Advances `i` past it.
bool ReadFloatConversion(std::wstring_view format, std::size_t& i, std::string& conversion) {
    conversion = "%";
    for (; i < format.size() && std::wstring_view(L"-+ #0").find(format[i]) != std::wstring_view::npos; ++i) {
        conversion += static_cast<char>(format[i]);
    }
    if (!ReadSmallNumber(format, i, conversion)) return false;
    if (i < format.size() && format[i] == L'.') {
        conversion += '.';
        ++i;
        if (!ReadSmallNumber(format, i, conversion)) return false;
    }
    if (i < format.size() && format[i] == L'l') ++i;  // %lf is %f in C99
    if (i >= format.size() || std::wstring_view(L"fFeEgG").find(format[i]) == std::wstring_view::npos) {
        return false;
    }
    conversion += static_cast<char>(format[i++]);
    return true;
}

}  // namespace

bool ParseLocaleDouble(std::wstring_view text, wchar_t decimalSep, double& value) {
    const wchar_t sep = IsUsableSeparator(decimalSep) ? decimalSep : L'.';
    std::size_t first = 0;
    std::size_t last = text.size();
    while (first < last && IsBlank(text[first])) ++first;
    while (last > first && IsBlank(text[last - 1])) --last;
    text = text.substr(first, last - first);

    // Rewrite into the locale-free form std::from_chars reads.
    std::string narrow;
    std::size_t i = 0;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) {
        if (text[i] == L'-') narrow += '-';
        ++i;
    }
    std::size_t mantissaDigits = CopyDigits(text, i, narrow);
    if (i < text.size() && (text[i] == L'.' || text[i] == sep)) {
        narrow += '.';
        ++i;
        mantissaDigits += CopyDigits(text, i, narrow);
    }
    if (mantissaDigits == 0) return false;
    if (i < text.size() && (text[i] == L'e' || text[i] == L'E')) {
        narrow += 'e';
        ++i;
        if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) narrow += static_cast<char>(text[i++]);
        if (CopyDigits(text, i, narrow) == 0) return false;
    }
    if (i != text.size()) return false;

    double parsed = 0.0;
    const char* end = narrow.data() + narrow.size();
    const auto result = std::from_chars(narrow.data(), end, parsed, std::chars_format::general);
    if (result.ec != std::errc{} || result.ptr != end) return false;
    value = parsed;
    return true;
}

bool FormatLocaleDouble(std::wstring& text, double value, std::wstring_view printfFormat,
                        wchar_t decimalSep) {
    if (!std::isfinite(value)) return false;
    std::wstring prefix;
    std::wstring suffix;
    std::string conversion;
    int conversions = 0;
    for (std::size_t i = 0; i < printfFormat.size();) {
        const wchar_t c = printfFormat[i++];
        std::wstring& literal = conversions == 0 ? prefix : suffix;
        if (c != L'%') {
            literal += c;
        } else if (i < printfFormat.size() && printfFormat[i] == L'%') {
            literal += L'%';
            ++i;
        } else if (++conversions > 1 || !ReadFloatConversion(printfFormat, i, conversion)) {
            return false;
        }
    }
    if (conversions != 1) return false;

    // The conversion alone goes through snprintf: the literal text may hold
    // characters a narrow format could not carry. The format is one checked
    // floating conversion, so passing it to snprintf is safe.
    const int length = std::snprintf(nullptr, 0, conversion.c_str(), value);
    if (length < 0) return false;
    std::string converted(static_cast<std::size_t>(length) + 1, '\0');
    std::snprintf(converted.data(), converted.size(), conversion.c_str(), value);
    converted.resize(static_cast<std::size_t>(length));

    std::wstring result = std::move(prefix);
    for (const char ch : converted) result += ch == '.' ? decimalSep : static_cast<wchar_t>(ch);
    result += suffix;
    text = std::move(result);
    return true;
}

bool CheckRangeText(double lower, double upper, std::wstring_view text, wchar_t decimalSep) {
    double value = 0.0;
    return ParseLocaleDouble(text, decimalSep, value) && lower <= value && value <= upper;
}

bool CheckCharacters0to9AtoZ(std::wstring_view text) {
    return std::all_of(text.begin(), text.end(), IsDigitOrUpperLetter);
}

}  // namespace qv
