// Fuzzes Catalog::Parse and Find. The input bytes are decoded as UTF-8 into
// UTF-16 code units, as the text would be on Windows.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "quorvel/common/utf8.h"
#include "quorvel/frame/catalog.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring content = qv::Utf8ToWide(std::string_view(reinterpret_cast<const char*>(data), size));
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
