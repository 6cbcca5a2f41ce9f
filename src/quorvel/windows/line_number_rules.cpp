#include "quorvel/windows/line_number_rules.h"

#include <algorithm>
#include <climits>

namespace qv {

namespace {

int ClampToInt(long long value) noexcept {
    return static_cast<int>(std::clamp<long long>(value, INT_MIN, INT_MAX));
}

bool IsConversion(wchar_t c) noexcept {
    return c == L'd' || c == L'i' || c == L'u' || c == L'x' || c == L'X' || c == L'o';
}

// Reads the digits at `at` into `value`. False when they make a number above
// `limit` (checked digit by digit, so no digit string can overflow).
bool ReadNumber(std::wstring_view text, std::size_t& at, int limit, int& value) noexcept {
    value = 0;
    while (at < text.size() && text[at] >= L'0' && text[at] <= L'9') {
        value = value * 10 + (text[at] - L'0');
        if (value > limit) return false;
        ++at;
    }
    return true;
}

}  // namespace

LineRange VisibleLineRange(int lineCount, int firstVisible, int clientHeight, int lineHeight) noexcept {
    const int count = std::max(lineCount, 0);
    const int first = std::clamp(firstVisible, 0, count);
    const int visible = lineHeight > 0 && clientHeight > 0 ? clientHeight / lineHeight : 0;
    const long long last = static_cast<long long>(first) + visible;
    return {first, last < count ? static_cast<int>(last) : count};
}

int LineNumberGutterWidth(int countTextWidth, unsigned dpi) noexcept {
    return ClampToInt(static_cast<long long>(std::max(countTextWidth, 0)) + ScaleToDpi(kGutterPadding, dpi));
}

int LineNumberLeft(unsigned dpi) noexcept { return ScaleToDpi(kGutterNumberLeft, dpi); }

int LineNumberTop(int line, int first, int lineHeight, int topMargin) noexcept {
    return ClampToInt(static_cast<long long>(lineHeight) * (static_cast<long long>(line) - first) + topMargin);
}

LineNumberFormat::LineNumberFormat() : m_zero(true), m_width(5) {}

std::optional<LineNumberFormat> LineNumberFormat::Parse(std::wstring_view format) {
    LineNumberFormat parsed;
    parsed.m_zero = false;
    parsed.m_width = 0;
    std::wstring* literal = &parsed.m_prefix;
    bool converted = false;
    std::size_t at = 0;
    while (at < format.size()) {
        const wchar_t c = format[at++];
        if (c != L'%') {
            literal->push_back(c);
            continue;
        }
        if (at < format.size() && format[at] == L'%') {
            literal->push_back(L'%');
            ++at;
            continue;
        }
        // The one conversion; a second one would read an argument that is not there.
        if (converted) return std::nullopt;
        converted = true;
        for (bool flags = true; flags && at < format.size(); ) {
            switch (format[at]) {
            case L'-': parsed.m_left = true; break;
            case L'+': parsed.m_plus = true; break;
            case L' ': parsed.m_space = true; break;
            case L'#': parsed.m_alt = true; break;
            case L'0': parsed.m_zero = true; break;
            default: flags = false; continue;
            }
            ++at;
        }
        // "*" (a width from the arguments) stops here: it is no conversion.
        if (!ReadNumber(format, at, kMaxWidth, parsed.m_width)) return std::nullopt;
        if (at < format.size() && format[at] == L'.') {
            ++at;
            if (!ReadNumber(format, at, kMaxWidth, parsed.m_precision)) return std::nullopt;
        }
        if (at < format.size() && format[at] == L'h') {
            ++at;
        } else if (at < format.size() && format[at] == L'l') {
            ++at;
            if (at < format.size() && format[at] == L'l') ++at;
        }
        if (at >= format.size() || !IsConversion(format[at])) return std::nullopt;
        parsed.m_conversion = format[at++];
        literal = &parsed.m_suffix;
    }
    if (!converted) return std::nullopt;
    return parsed;
}

LineNumberFormat LineNumberFormat::OrDefault(std::wstring_view format) {
    std::optional<LineNumberFormat> parsed = Parse(format);
    return parsed ? *parsed : LineNumberFormat();
}

std::wstring LineNumberFormat::Format(int number) const {
    const bool isSigned = m_conversion == L'd' || m_conversion == L'i';
    const bool negative = isSigned && number < 0;
    // An unsigned conversion shows an int as printf does: its 32-bit pattern.
    const unsigned long long magnitude =
        negative ? 0ull - static_cast<unsigned long long>(static_cast<long long>(number))
                 : (isSigned ? static_cast<unsigned long long>(number) : static_cast<unsigned int>(number));
    const unsigned base = m_conversion == L'o' ? 8u : (m_conversion == L'x' || m_conversion == L'X') ? 16u : 10u;
    const wchar_t* const digitSet = m_conversion == L'X' ? L"0123456789ABCDEF" : L"0123456789abcdef";

    std::wstring digits;
    // Precision 0 writes no digit for 0.
    if (magnitude != 0 || m_precision != 0) {
        for (unsigned long long rest = magnitude;; rest /= base) {
            digits.push_back(digitSet[rest % base]);
            if (rest < base) break;
        }
        std::reverse(digits.begin(), digits.end());
    }
    if (m_precision > static_cast<int>(digits.size())) digits.insert(0, m_precision - digits.size(), L'0');
    if (m_conversion == L'o' && m_alt && (digits.empty() || digits[0] != L'0')) digits.insert(0, 1, L'0');

    std::wstring sign;
    if (isSigned) {
        if (negative) sign = L"-";
        else if (m_plus) sign = L"+";
        else if (m_space) sign = L" ";
    } else if (m_alt && magnitude != 0 && (m_conversion == L'x' || m_conversion == L'X')) {
        sign = m_conversion == L'x' ? L"0x" : L"0X";
    }

    std::wstring field = sign + digits;
    const int pad = m_width - static_cast<int>(field.size());
    if (pad > 0) {
        if (m_left)
            field.append(pad, L' ');
        else if (m_zero && m_precision < 0)
            field.insert(sign.size(), pad, L'0');
        else
            field.insert(0, pad, L' ');
    }
    return m_prefix + field + m_suffix;
}

std::wstring LineCountText(const LineNumberFormat& format, int lineCount) { return format.Format(lineCount); }

bool GutterMustWiden(const LineNumberFormat& format, std::wstring_view measured, int lineCount) {
    return LineCountText(format, lineCount).size() > measured.size();
}

}  // namespace qv
