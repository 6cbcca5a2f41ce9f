// Fuzzes the line-number format: any host format is either refused or
// written without reading or writing beyond its own data, and an accepted
// format writes exactly what the C runtime's printf writes for an int (so
// nothing that printf would treat as another argument gets through).
// Input: bytes 0-3 are the number (little-endian); the rest is the format,
// ASCII bytes as they are and any byte >= 0x80 together with the next one as
// a code unit.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <string>
#include <vector>

#include "quorvel/windows/line_number_rules.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) return 0;
    const int number = static_cast<int>(static_cast<std::uint32_t>(data[0]) | static_cast<std::uint32_t>(data[1]) << 8 |
                                        static_cast<std::uint32_t>(data[2]) << 16 |
                                        static_cast<std::uint32_t>(data[3]) << 24);
    std::wstring format;
    bool ascii = true;
    for (std::size_t i = 4; i < size; ++i) {
        if (data[i] < 0x80 || i + 1 == size) {
            format += static_cast<wchar_t>(data[i]);
        } else {
            format += static_cast<wchar_t>((data[i] & 0x7Fu) << 8 | data[i + 1]);
            ascii = false;
            ++i;
        }
    }

    const auto parsed = qv::LineNumberFormat::Parse(format);
    const std::wstring text = qv::LineNumberFormat::OrDefault(format).Format(number);
    // Literal text, at most 64 digits of width or precision, a sign or 0x,
    // and 22 octal digits.
    if (text.size() > format.size() + qv::LineNumberFormat::kMaxWidth + 32) std::abort();
    if (!parsed) {
        if (text != qv::LineNumberFormat().Format(number)) std::abort();
        return 0;
    }
    if (parsed->Format(number) != text) std::abort();
    // printf narrows for h and l-less hosts alike: compare where no length
    // modifier can be in play (and the C locale writes the same characters).
    if (!ascii || format.find_first_of(L"hlL") != std::wstring::npos || format.find(L'\0') != std::wstring::npos)
        return 0;
    std::vector<wchar_t> expected(format.size() + 256);
    const int written = std::swprintf(expected.data(), expected.size(), format.c_str(), number);
    if (written < 0 || std::wstring(expected.data(), static_cast<std::size_t>(written)) != text) std::abort();
    return 0;
}
