#include "quorvel/lists/filter_rules.h"

namespace qv::lists {

bool TokenizeString(std::wstring_view pattern, std::vector<FilterToken>& tokens) {
    tokens.clear();
    bool wildcard = false;
    std::wstring literal;
    const auto flush = [&] {
        if (!literal.empty()) tokens.push_back({kFilterLiteral, std::move(literal)});
        literal.clear();
    };
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const wchar_t c = pattern[i];
        if (c == L'\\') {
            const wchar_t next = i + 1 < pattern.size() ? pattern[i + 1] : L'\0';
            if (next == L'*' || next == L'?' || next == L'\\') {
                literal += next;
                ++i;
            }
            // Before anything else the backslash alone is dropped.
        } else if (c == L'*') {
            flush();
            tokens.push_back({kFilterAnyRun, L"*"});
            wildcard = true;
        } else if (c == L'?') {
            flush();
            tokens.push_back({kFilterOneChar, L"?"});
            wildcard = true;
        } else {
            literal += c;
        }
    }
    flush();
    return wildcard;
}

bool CompareTokenToString(const std::vector<FilterToken>& tokens, std::wstring_view text) noexcept {
    const std::size_t n = tokens.size();
    if (n >= 2 && tokens[n - 2].type == kFilterAnyRun && tokens[n - 1].type == kFilterLiteral &&
        !text.ends_with(tokens[n - 1].text))
        return false;

    std::size_t position = 0;
    bool floating = false;
    for (const FilterToken& token : tokens) {
        switch (token.type) {
        case kFilterAnyRun:
            floating = true;
            break;
        case kFilterOneChar:
            ++position;
            break;
        default: {
            if (position > text.size()) return false;
            const std::size_t found = text.find(token.text, position);
            if (found == std::wstring_view::npos) return false;
            if (found != position && !floating) return false;
            position = found + token.text.size();
            break;
        }
        }
    }
    return true;
}

wchar_t ToLowerFilterChar(wchar_t c) noexcept {
    if (c >= L'A' && c <= L'Z') return static_cast<wchar_t>(c - L'A' + L'a');
    if (c >= 0x00C0 && c <= 0x00DE && c != 0x00D7) return static_cast<wchar_t>(c + 0x20);
    return c;
}

std::wstring ToLowerFilterText(std::wstring_view text) {
    std::wstring lowered(text);
    for (wchar_t& c : lowered) c = ToLowerFilterChar(c);
    return lowered;
}

bool IsFilterPattern(std::wstring_view typed) noexcept {
    return typed.find_first_of(L"*?+") != std::wstring_view::npos;
}

std::vector<std::size_t> FilterEntries(const std::vector<std::wstring>& lowered, std::wstring_view typed) {
    std::vector<std::size_t> kept;
    if (!IsFilterPattern(typed)) {
        for (std::size_t i = 0; i < lowered.size(); ++i)
            if (std::wstring_view(lowered[i]).starts_with(typed)) kept.push_back(i);
        return kept;
    }
    std::vector<FilterToken> tokens;
    TokenizeString(typed, tokens);
    for (std::size_t i = 0; i < lowered.size(); ++i)
        if (CompareTokenToString(tokens, lowered[i])) kept.push_back(i);
    return kept;
}

DropDownSize DropDownSizeFor(int textHeight, unsigned dpi) noexcept {
    DropDownSize size;
    const bool tall = textHeight > ScaleToDpi(24, dpi);
    size.rows = tall ? 5 : 15;
    size.itemHeight = textHeight + ScaleToDpi(tall ? 11 : 3, dpi);
    size.listHeight = size.rows * size.itemHeight;
    return size;
}

int DroppedWidthFor(int widestText, int currentWidth, unsigned dpi) noexcept {
    const int wanted = widestText + ScaleToDpi(27, dpi);
    return wanted > currentWidth ? wanted : 0;
}

int FillerCount(int shown, int rows) noexcept { return shown < rows ? rows - shown : 0; }

}  // namespace qv::lists
