// Fuzzes Catalog::Parse and Find. The input bytes are decoded as UTF-8 into
// UTF-16 code units (as the text would be on Windows); each invalid byte
// becomes U+FFFD and encoded surrogates pass through as lone code units.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "frame/catalog.h"

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
    const std::wstring content = DecodeUtf8(data, size);
    qv::Catalog catalog;
    std::vector<std::wstring> errors;
    const bool ok = catalog.Parse(content, &errors);

    // Each line yields at most one entry or one error.
    std::size_t lines = 1;
    for (const wchar_t c : content) lines += c == L'\n' || c == L'\r';
    if (ok != errors.empty() || catalog.Size() + errors.size() > lines) std::abort();
    for (const std::wstring& error : errors) {
        if (error.rfind(L"line ", 0) != 0) std::abort();
    }

    // When nothing was reported and the first line is a plain entry (no
    // escape, '#', byte order mark or blank line), it is in the table as written.
    constexpr std::size_t npos = std::wstring_view::npos;
    const std::wstring_view first = std::wstring_view(content).substr(0, content.find_first_of(L"\r\n"));
    const std::size_t tab = first.find(L'\t');
    const bool plain = first.find_first_of(L"\\#\uFEFF") == npos && first.find_first_not_of(L" \t") != npos &&
                       tab != npos && tab > 0 && tab + 1 < first.size() && first.find(L'\t', tab + 1) == npos;
    if (ok && plain) {
        const std::wstring* found = catalog.Find(first.substr(0, tab));
        if (!found || *found != first.substr(tab + 1)) std::abort();
    }
    return 0;
}
