#include "quorvel/frame/catalog.h"

#include <algorithm>
#include <utility>

namespace qv {
namespace {

// Decodes the escapes of one column. Returns an empty message on success.
std::wstring_view Unescape(std::wstring_view column, std::wstring& out) {
    out.clear();
    for (std::size_t i = 0; i < column.size(); ++i) {
        if (column[i] != L'\\') {
            out += column[i];
            continue;
        }
        if (++i == column.size()) return L"trailing backslash";
        switch (column[i]) {
        case L't': out += L'\t'; break;
        case L'n': out += L'\n'; break;
        case L'r': out += L'\r'; break;
        case L'\\': out += L'\\'; break;
        case L'#': out += L'#'; break;
        default: return L"unknown escape";
        }
    }
    return {};
}

bool IsBlankLine(std::wstring_view line) {
    return line.find_first_not_of(L" \t") == std::wstring_view::npos;
}

// Splits and decodes one entry line. Returns an empty message on success.
std::wstring_view ReadEntry(std::wstring_view line, std::wstring& source, std::wstring& translation) {
    const std::size_t tab = line.find(L'\t');
    if (tab == std::wstring_view::npos) return L"missing tab between source and translation";
    if (line.find(L'\t', tab + 1) != std::wstring_view::npos) return L"more than one tab";
    std::wstring_view problem = Unescape(line.substr(0, tab), source);
    if (problem.empty()) problem = Unescape(line.substr(tab + 1), translation);
    if (problem.empty() && source.empty()) problem = L"empty source text";
    if (problem.empty() && translation.empty()) problem = L"empty translation";
    return problem;
}

}  // namespace

bool Catalog::Parse(std::wstring_view content, std::vector<std::wstring>* errors) {
    entries_.clear();
    if (!content.empty() && content.front() == L'\uFEFF') content.remove_prefix(1);
    bool ok = true;
    std::size_t lineNumber = 0;
    std::wstring source;
    std::wstring translation;
    while (!content.empty()) {
        const std::size_t end = std::min(content.find_first_of(L"\r\n"), content.size());
        const std::wstring_view line = content.substr(0, end);
        std::size_t next = end;
        if (next < content.size()) next += content.compare(next, 2, L"\r\n") == 0 ? 2u : 1u;
        content.remove_prefix(next);
        ++lineNumber;
        if (IsBlankLine(line) || line.front() == L'#') continue;

        std::wstring_view problem = ReadEntry(line, source, translation);
        if (problem.empty() && !entries_.emplace(std::move(source), std::move(translation)).second) {
            problem = L"source text already defined";
        }
        if (!problem.empty()) {
            ok = false;
            if (errors) errors->push_back(L"line " + std::to_wstring(lineNumber) + L": " + std::wstring(problem));
        }
    }
    return ok;
}

const std::wstring* Catalog::Find(std::wstring_view source) const {
    const auto it = entries_.find(source);
    return it == entries_.end() ? nullptr : &it->second;
}

}  // namespace qv
