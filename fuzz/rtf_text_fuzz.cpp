// Fuzzes RtfToText. The input bytes are decoded as UTF-8 into UTF-16 code
// units (as the text would be on Windows); each invalid byte becomes U+FFFD
// and encoded surrogates pass through as lone code units.
//
// The seeds in corpus/rtf_text_fuzz reach the code-page decoding: font
// tables with known, unknown and symbol charsets, charset switches inside
// groups, double-byte pairs cut off by a brace, a control word or the end,
// and \u fallbacks over double-byte pairs.
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
    // Whatever a byte decodes to, the only control characters that come out
    // are tabs and CR LF line breaks.
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c == L'\r' && (i + 1 == text.size() || text[i + 1] != L'\n')) std::abort();
        if (c == L'\n' && (i == 0 || text[i - 1] != L'\r')) std::abort();
        if (c < 0x20 && c != L'\t' && c != L'\r' && c != L'\n') std::abort();
    }
    return 0;
}
