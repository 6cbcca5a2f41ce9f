// Fuzzes RtfToText. The input bytes are decoded as UTF-8 into UTF-16 code
// units (as the text would be on Windows); each invalid byte becomes U+FFFD
// and encoded surrogates pass through as lone code units.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quorvel/common/utf8.h"
#include "quorvel/frame/rtf_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring rtf = qv::Utf8ToWide(std::string_view(reinterpret_cast<const char*>(data), size));
    std::wstring text = L"stale";
    const bool isRtf = qv::RtfToText(rtf, text);

    const std::size_t start = rtf.find_first_not_of(L" \t\r\n");
    const bool looksLikeRtf = start != std::wstring::npos && rtf.compare(start, 5, L"{\\rtf") == 0;
    // Every output character comes from at least one input character.
    if (isRtf != looksLikeRtf || (!isRtf && !text.empty()) || text.size() > rtf.size()) std::abort();
    return 0;
}
