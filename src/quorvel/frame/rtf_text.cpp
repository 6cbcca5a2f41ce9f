#include "quorvel/frame/rtf_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

#include "quorvel/common/charclass.h"

namespace qv {
namespace {

// Destinations whose content never reaches the plain text. Sorted for
// binary search (checked at compile time below).
constexpr std::wstring_view kHiddenDestinations[] = {
    L"annotation", L"atnauthor", L"atnid", L"bkmkend", L"bkmkstart",
    L"colorschememapping", L"colortbl", L"comment", L"datastore", L"docvar",
    L"falt", L"filetbl", L"fldinst", L"fonttbl", L"footer", L"footerf",
    L"footerl", L"footerr", L"footnote", L"generator", L"header", L"headerf",
    L"headerl", L"headerr", L"info", L"latentstyles", L"listoverridetable",
    L"listtable", L"mmathPr", L"nonshppict", L"objdata", L"object",
    L"pgdsctbl", L"pict", L"private", L"revtbl", L"rsidtbl", L"rxe",
    L"stylesheet", L"tc", L"template", L"themedata", L"txe", L"userprops",
    L"wgrffmtfilter", L"xe", L"xmlnstbl",
};

struct Replacement {
    std::wstring_view word;
    std::wstring_view text;
};

// Control words that stand for text. Sorted by word.
constexpr Replacement kReplacements[] = {
    {L"bullet", L"\u2022"},    {L"cell", L"\t"},         {L"emdash", L"\u2014"},
    {L"emspace", L"\u2003"},   {L"endash", L"\u2013"},   {L"enspace", L"\u2002"},
    {L"ldblquote", L"\u201C"}, {L"line", L"\r\n"},       {L"lquote", L"\u2018"},
    {L"ltrmark", L"\u200E"},   {L"nestcell", L"\t"},     {L"nestrow", L"\r\n"},
    {L"page", L"\r\n"},        {L"par", L"\r\n"},        {L"qmspace", L"\u2005"},
    {L"rdblquote", L"\u201D"}, {L"row", L"\r\n"},        {L"rquote", L"\u2019"},
    {L"rtlmark", L"\u200F"},   {L"sect", L"\r\n"},       {L"tab", L"\t"},
    {L"zwj", L"\u200D"},       {L"zwnj", L"\u200C"},
};

constexpr bool ReplacementLess(const Replacement& a, const Replacement& b) {
    return a.word < b.word;
}

static_assert(std::is_sorted(std::begin(kHiddenDestinations), std::end(kHiddenDestinations)));
static_assert(std::is_sorted(std::begin(kReplacements), std::end(kReplacements), ReplacementLess));

// Windows-1252 for 0x80-0x9F; the five unassigned bytes map to the C1 code
// point of the same value, as the Windows code page conversion does.
constexpr wchar_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

wchar_t FromCp1252(unsigned byte) {
    return byte >= 0x80 && byte <= 0x9F ? kCp1252High[byte - 0x80] : static_cast<wchar_t>(byte);
}

constexpr bool IsAsciiLetter(wchar_t c) { return IsAsciiLower(c) || IsAsciiUpper(c); }

int HexValue(wchar_t c) {
    if (IsDigit(c)) return c - L'0';
    if (c >= L'a' && c <= L'f') return c - L'a' + 10;
    if (c >= L'A' && c <= L'F') return c - L'A' + 10;
    return -1;
}

struct GroupState {
    bool hidden = false;  // inside an ignored destination
    int fallbackChars = 1;  // \ucN
};

class Converter {
public:
    Converter(std::wstring_view rtf, std::wstring& out) : in_(rtf), out_(out) {}

    // `pos` is just past the document's opening brace.
    void Run(std::size_t pos) {
        pos_ = pos;
        groups_.push_back(GroupState{});
        while (pos_ < in_.size() && !groups_.empty()) {
            const wchar_t c = in_[pos_++];
            switch (c) {
            case L'{':
                groups_.push_back(groups_.back());
                pendingFallback_ = 0;
                break;
            case L'}':
                groups_.pop_back();
                pendingFallback_ = 0;
                break;
            case L'\r':
            case L'\n':
                break;
            case L'\\':
                ControlSequence();
                break;
            default:
                if (!SkipItem()) EmitChar(c);
                break;
            }
        }
    }

private:
    // True when the current item is hidden or belongs to a \u fallback.
    bool SkipItem() {
        if (pendingFallback_ > 0) {
            --pendingFallback_;
            return true;
        }
        return groups_.back().hidden;
    }

    void EmitChar(wchar_t c) {
        if (c == L'\t' || static_cast<unsigned>(c) >= 0x20u) out_ += c;
    }

    void ControlSequence() {
        if (pos_ >= in_.size()) return;
        const wchar_t c = in_[pos_];
        if (IsAsciiLetter(c)) {
            ControlWord();
        } else if (c == L'\'') {
            ++pos_;
            int value = 0;
            int digits = 0;
            for (; digits < 2 && pos_ < in_.size(); ++digits, ++pos_) {
                const int h = HexValue(in_[pos_]);
                if (h < 0) break;
                value = value * 16 + h;
            }
            if (!SkipItem() && digits == 2) EmitChar(FromCp1252(static_cast<unsigned>(value)));
        } else {
            ++pos_;
            ControlSymbol(c);
        }
    }

    void ControlSymbol(wchar_t c) {
        if (pendingFallback_ > 0) {
            --pendingFallback_;
            return;
        }
        GroupState& group = groups_.back();
        if (c == L'*') group.hidden = true;
        if (group.hidden) return;
        switch (c) {
        case L'\\':
        case L'{':
        case L'}': out_ += c; break;
        case L'~': out_ += L'\u00A0'; break;
        case L'_': out_ += L'\u2011'; break;
        case L'\r':
        case L'\n': out_ += L"\r\n"; break;
        default: break;  // \- optional hyphen and unknown symbols
        }
    }

    void ControlWord() {
        const std::size_t start = pos_;
        while (pos_ < in_.size() && IsAsciiLetter(in_[pos_])) ++pos_;
        const std::wstring_view word = in_.substr(start, pos_ - start);

        bool negative = false;
        if (pos_ + 1 < in_.size() && in_[pos_] == L'-' && IsDigitAt(pos_ + 1)) {
            negative = true;
            ++pos_;
        }
        const bool hasParam = IsDigitAt(pos_);
        int param = 0;
        constexpr int kParamLimit = 1000000000;  // saturate instead of overflowing
        for (; IsDigitAt(pos_); ++pos_) {
            param = param >= kParamLimit / 10 ? kParamLimit : param * 10 + (in_[pos_] - L'0');
        }
        if (negative) param = -param;
        if (pos_ < in_.size() && in_[pos_] == L' ') ++pos_;

        if (word == L"bin") {
            // Binary data is never text, whatever group it is in.
            const std::size_t count = param > 0 ? static_cast<std::size_t>(param) : 0;
            pos_ += std::min(count, in_.size() - pos_);
        }
        if (pendingFallback_ > 0) {
            --pendingFallback_;
            return;
        }
        GroupState& group = groups_.back();
        if (word == L"uc") {
            group.fallbackChars = std::max(0, param);
            return;
        }
        if (group.hidden) return;
        if (std::binary_search(std::begin(kHiddenDestinations), std::end(kHiddenDestinations), word)) {
            group.hidden = true;
        } else if (word == L"u") {
            if (!hasParam) return;
            const int unit = param < 0 ? param + 65536 : param;
            if (unit > 0 && unit <= 0xFFFF) EmitChar(static_cast<wchar_t>(unit));
            pendingFallback_ = group.fallbackChars;
        } else {
            const Replacement key{word, {}};
            const auto it = std::lower_bound(std::begin(kReplacements), std::end(kReplacements), key,
                                             ReplacementLess);
            if (it != std::end(kReplacements) && it->word == word) out_ += it->text;
        }
    }

    bool IsDigitAt(std::size_t i) const { return i < in_.size() && IsDigit(in_[i]); }

    std::wstring_view in_;
    std::wstring& out_;
    std::size_t pos_ = 0;
    std::vector<GroupState> groups_;
    int pendingFallback_ = 0;
};

}  // namespace

bool RtfToText(std::wstring_view rtf, std::wstring& text) {
    text.clear();
    std::size_t pos = 0;
    while (pos < rtf.size() &&
           (rtf[pos] == L' ' || rtf[pos] == L'\t' || rtf[pos] == L'\r' || rtf[pos] == L'\n')) {
        ++pos;
    }
    if (rtf.substr(pos, 5) != L"{\\rtf") return false;
    Converter(rtf, text).Run(pos + 1);
    return true;
}

}  // namespace qv
