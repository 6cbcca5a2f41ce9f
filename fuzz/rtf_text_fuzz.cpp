// Fuzzes RtfToText. The input bytes are decoded as UTF-8 into UTF-16 code
// units (as the text would be on Windows); each invalid byte becomes U+FFFD
// and encoded surrogates pass through as lone code units.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "frame/rtf_text.h"

namespace {

std::wstring DecodeUtf8(const std::uint8_t* data, std::size_t size) {
    std::wstring out;
    for (std::size_t i = 0; i < size;) {
        const unsigned lead = data[i];
        const std::size_t len = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
        unsigned cp = len == 1 ? lead : lead & (0x3Fu >> len);
        std::size_t k = 1;
        for (; k < len && i + k < size && (data[i + k] & 0xC0) == 0x80; ++k) cp = cp << 6 | (data[i + k] & 0x3Fu);
        if (len == 0 || k < len || cp > 0x10FFFF) {
            out += static_cast<wchar_t>(0xFFFD);
            ++i;
            continue;
        }
        i += len;
        if (cp >= 0x10000) {
            out += static_cast<wchar_t>(0xD800 + ((cp - 0x10000) >> 10));
            out += static_cast<wchar_t>(0xDC00 + (cp & 0x3FF));
        } else {
            out += static_cast<wchar_t>(cp);
        }
    }
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring rtf = DecodeUtf8(data, size);
    std::wstring text = L"stale";
    const bool isRtf = qv::RtfToText(rtf, text);

    const std::size_t start = rtf.find_first_not_of(L" \t\r\n");
    const bool looksLikeRtf = start != std::wstring::npos && rtf.compare(start, 5, L"{\\rtf") == 0;
    // Every output character comes from at least one input character.
    if (isRtf != looksLikeRtf || (!isRtf && !text.empty()) || text.size() > rtf.size()) std::abort();
    return 0;
}
