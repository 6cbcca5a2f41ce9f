// Fuzzes the filtering combo box's tokenizer and matcher over any (pattern,
// text) pair: each must terminate quickly and never crash or read out of
// bounds, also for long runs of "*". The input is UTF-8; the pattern is
// everything before the first tab and the text everything after it (no tab:
// the text is empty).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "quorvel/common/utf8.h"
#include "quorvel/lists/filter_rules.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    namespace ql = qv::lists;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const size_t tab = input.find('\t');
    const std::wstring pattern = qv::Utf8ToWide(input.substr(0, tab));
    const std::wstring text = tab == std::string_view::npos ? std::wstring() : qv::Utf8ToWide(input.substr(tab + 1));

    std::vector<ql::FilterToken> tokens;
    const bool wildcard = ql::TokenizeString(pattern, tokens);
    size_t literalChars = 0;
    bool sawWildcard = false;
    for (const ql::FilterToken& t : tokens) {
        if (t.type == ql::kFilterLiteral) {
            if (t.text.empty()) std::abort();
            literalChars += t.text.size();
        } else {
            sawWildcard = true;
            if (t.text != (t.type == ql::kFilterAnyRun ? L"*" : L"?")) std::abort();
        }
    }
    if (wildcard != sawWildcard || literalChars + tokens.size() > pattern.size() + tokens.size()) std::abort();

    const bool match = ql::CompareTokenToString(tokens, text);
    // A text matches itself as a literal pattern, and a pattern wrapped in
    // "*" on both sides keeps every text that the pattern keeps. (Only the
    // trailing "*" makes that true: "*" then a literal as the last two
    // tokens anchors the literal at the end, "ab" keeps "abc" but "*ab"
    // does not.)
    std::vector<ql::FilterToken> star{{ql::kFilterAnyRun, L"*"}};
    star.insert(star.end(), tokens.begin(), tokens.end());
    star.push_back({ql::kFilterAnyRun, L"*"});
    if (match && !ql::CompareTokenToString(star, text)) std::abort();
    if (!ql::CompareTokenToString({{ql::kFilterLiteral, text}}, text) && !text.empty()) std::abort();

    const std::vector<std::wstring> entries{ql::ToLowerFilterText(text)};
    for (size_t i : ql::FilterEntries(entries, ql::ToLowerFilterText(pattern)))
        if (i != 0) std::abort();
    return 0;
}
