#include "quorvel/frame/ini_store.h"

#include <algorithm>

#include "quorvel/common/charclass.h"

namespace qv {
namespace {

std::wstring_view Trim(std::wstring_view s) {
    const std::size_t first = s.find_first_not_of(L" \t");
    if (first == std::wstring_view::npos) return {};
    return s.substr(first, s.find_last_not_of(L" \t") - first + 1);
}

}  // namespace

bool IniStore::NoCaseLess::operator()(std::wstring_view a, std::wstring_view b) const noexcept {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t x, wchar_t y) {
        return ToUpperAscii(x) < ToUpperAscii(y);
    });
}

void IniStore::Set(std::wstring_view section, std::wstring_view name, std::wstring_view value) {
    auto sectionIt = sections_.find(section);
    if (sectionIt == sections_.end()) sectionIt = sections_.emplace(section, Values{}).first;
    Values& values = sectionIt->second;
    const auto it = values.find(name);
    if (it == values.end()) {
        values.emplace(name, value);
    } else {
        it->second = value;
    }
}

bool IniStore::Get(std::wstring_view section, std::wstring_view name, std::wstring& value) const {
    const auto sectionIt = sections_.find(section);
    if (sectionIt == sections_.end()) return false;
    const auto it = sectionIt->second.find(name);
    if (it == sectionIt->second.end()) return false;
    value = it->second;
    return true;
}

bool IniStore::Parse(std::wstring_view content) {
    if (!content.empty() && content.front() == L'\uFEFF') content.remove_prefix(1);
    bool ok = true;
    std::wstring section;
    bool sectionValid = true;
    while (!content.empty()) {
        const std::size_t end = std::min(content.find_first_of(L"\r\n"), content.size());
        const std::wstring_view line = Trim(content.substr(0, end));
        std::size_t next = end;
        if (next < content.size()) next += content.compare(next, 2, L"\r\n") == 0 ? 2u : 1u;
        content.remove_prefix(next);

        if (line.empty() || line.front() == L';' || line.front() == L'#') continue;
        if (line.front() == L'[') {
            sectionValid = line.size() >= 2 && line.back() == L']';
            if (sectionValid) section = Trim(line.substr(1, line.size() - 2));
            ok = ok && sectionValid;
            continue;
        }
        const std::size_t equals = line.find(L'=');
        const std::wstring_view name = Trim(line.substr(0, equals));
        if (equals == std::wstring_view::npos || name.empty()) {
            ok = false;
        } else if (sectionValid) {
            Set(section, name, Trim(line.substr(equals + 1)));
        }
    }
    return ok;
}

}  // namespace qv
