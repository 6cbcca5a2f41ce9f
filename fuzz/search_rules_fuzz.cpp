// Fuzzes the search fields' path rules with any text a user can type or
// paste: the long-path form, path kinds, message lines, a file's folder and
// the WM_GETTEXT count. The first byte picks the length limit; the rest is
// decoded as UTF-8 into UTF-16 code units, as the text would be on Windows.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quorvel/common/utf8.h"
#include "quorvel/windows/search_rules.h"

namespace sr = qv::search;

namespace {

bool IsPrefix(std::wstring_view prefix, std::wstring_view text) {
    return prefix.size() <= text.size() && text.compare(0, prefix.size(), prefix) == 0;
}

// A long-path form as the file system takes it unparsed: no doubled
// separator, no '/', no "." or ".." component after the prefix.
bool IsCleanLongForm(std::wstring_view name) {
    if (!IsPrefix(L"\\\\?\\", name)) return false;
    const std::wstring_view rest = name.substr(4);
    if (rest.find(L'/') != std::wstring_view::npos || rest.find(L"\\\\") != std::wstring_view::npos) return false;
    std::size_t start = 0;
    while (start <= rest.size()) {
        std::size_t end = rest.find(L'\\', start);
        if (end == std::wstring_view::npos) end = rest.size();
        const std::wstring_view part = rest.substr(start, end - start);
        if (part == L"." || part == L"..") return false;
        start = end + 1;
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t limit = data[0];
    const std::wstring text = qv::Utf8ToWide(std::string_view(reinterpret_cast<const char*>(data + 1), size - 1));

    const sr::PathKind kind = sr::ClassifyPath(text);
    const std::wstring name = sr::FileSystemName(text, limit);
    if (name != text) {
        // Only full paths past the limit change, and only into a clean long form.
        if (text.size() <= limit || (kind != sr::PathKind::Drive && kind != sr::PathKind::Unc)) std::abort();
        if (!IsCleanLongForm(name) || name.size() > text.size() + 8) std::abort();
    }

    const std::wstring line = sr::FirstLine(text);
    if (!IsPrefix(line, text) || line.find_first_of(L"\r\n") != std::wstring::npos) std::abort();
    if (!IsPrefix(sr::ParentFolder(text), text)) std::abort();

    const sr::TextAnswer answer = sr::AnswerGetText(text.size(), limit);
    if (limit == 0 ? (answer.copy != 0 || answer.answer != 0)
                   : (answer.copy >= limit || answer.copy > text.size() || answer.answer < 1))
        std::abort();
    return 0;
}
