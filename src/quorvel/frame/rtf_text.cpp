#include "quorvel/frame/rtf_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <vector>

#include "quorvel/common/charclass.h"
#include "quorvel/frame/codepages.h"

namespace qv {
namespace {

// Literal control words compare by length first, with no wcslen.
using namespace std::string_view_literals;

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

constexpr bool IsAsciiLetter(wchar_t c) { return IsAsciiLower(c) || IsAsciiUpper(c); }

int HexValue(wchar_t c) {
    if (IsDigit(c)) return c - L'0';
    if (c >= L'a' && c <= L'f') return c - L'a' + 10;
    if (c >= L'A' && c <= L'F') return c - L'A' + 10;
    return -1;
}

constexpr char16_t kReplacementChar = 0xFFFD;
constexpr unsigned kNotAByte = 0x100;

struct GroupState {
    bool hidden = false;     // inside an ignored destination
    bool fontTable = false;  // inside the font table: its entries are read, not shown
    int fallbackChars = 1;   // \ucN
    int font = -1;           // \fN; -1 is the document's default font (\deffN)
};

// What the bytes of one font mean.
struct Font {
    CharsetKind kind = CharsetKind::Document;
    unsigned codePage = 0;     // CharsetKind::CodePage
    bool symbolTable = false;  // CharsetKind::Symbol: the Symbol font's own encoding is known
};

// How text in the current font is read.
struct Decoding {
    const CodePage* page = nullptr;  // null for a symbol font
    bool symbolTable = false;
};

// The font-table entry being read.
struct FontEntry {
    bool open = false;
    int number = 0;
    int charset = -1;
    int codePage = 0;  // \cpgN
    std::wstring name;
};

bool IsSymbolFontName(std::wstring_view name) {
    while (!name.empty() && name.front() == L' ') name.remove_prefix(1);
    while (!name.empty() && name.back() == L' ') name.remove_suffix(1);
    constexpr std::wstring_view kSymbol = L"symbol";
    if (name.size() != kSymbol.size()) return false;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const wchar_t c = IsAsciiUpper(name[i]) ? static_cast<wchar_t>(name[i] - L'A' + L'a') : name[i];
        if (c != kSymbol[i]) return false;
    }
    return true;
}

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
                FlushLead();
                groups_.push_back(groups_.back());
                pendingFallback_ = 0;
                break;
            case L'}':
                FlushLead();
                if (groups_.back().fontTable) FinishFont();
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
                TextChar(c);
                break;
            }
        }
        FlushLead();
    }

private:
    // Consumes one item of a \u fallback; true when there was one to consume.
    bool SkipFallback() {
        if (pendingFallback_ == 0) return false;
        --pendingFallback_;
        return true;
    }

    void EmitChar(wchar_t c) {
        if (c == L'\t' || static_cast<unsigned>(c) >= 0x20u) out_ += c;
    }

    // A lead byte that no trail byte followed.
    void FlushLead() {
        if (pendingLead_ < 0) return;
        pendingLead_ = -1;
        EmitChar(kReplacementChar);
    }

    // A literal character: raw text or one of \\ \{ \}.
    void TextChar(wchar_t c) {
        if (SkipFallback()) return;
        const GroupState& group = groups_.back();
        if (group.fontTable) {
            FontTableChar(c);
            return;
        }
        if (group.hidden) return;
        const Decoding& decoding = Current();
        // A writer may put a trail byte from the ASCII range as itself.
        const unsigned byte = static_cast<unsigned>(c) < 0x80u ? static_cast<unsigned>(c) : kNotAByte;
        if (pendingLead_ >= 0 && JoinTrail(decoding, byte)) return;
        EmitChar(decoding.page == nullptr ? SymbolChar(decoding, c) : c);
    }

    // \'hh with two hex digits.
    void ByteItem(unsigned byte) {
        const GroupState& group = groups_.back();
        if (group.fontTable) {
            FontTableChar(static_cast<wchar_t>(byte));
            return;
        }
        if (group.hidden) return;
        DecodeByte(Current(), byte);
    }

    // Ends the pending lead byte: with `byte` as its trail byte (true), or
    // as U+FFFD when `byte` cannot follow it; `byte` is then read on its own.
    bool JoinTrail(const Decoding& decoding, unsigned byte) {
        const unsigned lead = static_cast<unsigned>(pendingLead_);
        pendingLead_ = -1;
        if (decoding.page != nullptr && decoding.page->IsTrail(byte)) {
            EmitChar(static_cast<wchar_t>(decoding.page->Pair(lead, byte)));
            return true;
        }
        EmitChar(kReplacementChar);
        return false;
    }

    void DecodeByte(const Decoding& decoding, unsigned byte) {
        if (pendingLead_ >= 0 && JoinTrail(decoding, byte)) return;
        if (decoding.page == nullptr) {
            EmitChar(SymbolChar(decoding, static_cast<wchar_t>(byte)));
        } else if (decoding.page->IsLead(byte)) {
            pendingLead_ = static_cast<int>(byte);
        } else {
            EmitChar(static_cast<wchar_t>(decoding.page->bytes[byte]));
        }
    }

    // A character in a symbol font stands for the glyph at its position,
    // whether written as a byte or as U+F0xx; a space stays a space.
    static wchar_t SymbolChar(const Decoding& decoding, wchar_t c) {
        unsigned position = static_cast<unsigned>(c);
        if (position >= 0xF021u && position <= 0xF0FFu) position -= 0xF000u;
        if (position < 0x21u || position > 0xFFu) return c;
        return static_cast<wchar_t>(decoding.symbolTable ? SymbolFontChar(position) : 0xF000u + position);
    }

    const Decoding& Current() {
        const int font = groups_.back().font >= 0 ? groups_.back().font : defaultFont_;
        if (cacheValid_ && cachedFont_ == font) return cached_;
        cacheValid_ = true;
        cachedFont_ = font;
        cached_ = Decoding{};
        const auto it = fonts_.find(font);
        if (it != fonts_.end() && it->second.kind == CharsetKind::Symbol) {
            cached_.symbolTable = it->second.symbolTable;
            return cached_;
        }
        if (it != fonts_.end() && it->second.kind == CharsetKind::CodePage) {
            cached_.page = FindCodePage(it->second.codePage);
        }
        if (cached_.page == nullptr) cached_.page = FindCodePage(ansiCodePage_);
        if (cached_.page == nullptr) cached_.page = FindCodePage(headerCodePage_);
        if (cached_.page == nullptr) cached_.page = FindCodePage(1252);
        return cached_;
    }

    // ---- Font table
    void FontTableChar(wchar_t c) {
        if (!entry_.open) return;
        if (c == L';') {
            FinishFont();
        } else if (entry_.name.size() < 64) {
            entry_.name += c;
        }
    }

    void FontTableWord(std::wstring_view word, bool hasParam, int param) {
        GroupState& group = groups_.back();
        if (std::binary_search(std::begin(kHiddenDestinations), std::end(kHiddenDestinations), word)) {
            group.fontTable = false;  // \falt and the like: not the font's name
        } else if (word == L"f"sv && hasParam) {
            FinishFont();
            entry_.open = true;
            entry_.number = param;
            entry_.charset = -1;
            entry_.codePage = 0;
            entry_.name.clear();
        } else if (word == L"fcharset"sv && hasParam) {
            entry_.charset = param;
        } else if (word == L"cpg"sv && hasParam) {
            entry_.codePage = param;
        }
    }

    void FinishFont() {
        if (!entry_.open) return;
        entry_.open = false;
        Font font;
        const CharsetMeaning meaning = MeaningOfCharset(entry_.charset);
        if (meaning.kind == CharsetKind::Symbol) {
            font.kind = CharsetKind::Symbol;
            font.symbolTable = IsSymbolFontName(entry_.name);
        } else if (entry_.codePage > 0 && FindCodePage(static_cast<unsigned>(entry_.codePage)) != nullptr) {
            font.kind = CharsetKind::CodePage;
            font.codePage = static_cast<unsigned>(entry_.codePage);
        } else {
            font.kind = meaning.kind;
            font.codePage = meaning.codePage;
        }
        fonts_[entry_.number] = font;
        cacheValid_ = false;
    }

    void ControlSequence() {
        if (pos_ >= in_.size()) return;
        const wchar_t c = in_[pos_];
        if (IsAsciiLetter(c)) {
            FlushLead();
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
            if (digits < 2) FlushLead();
            if (!SkipFallback() && digits == 2) ByteItem(static_cast<unsigned>(value));
        } else {
            ++pos_;
            ControlSymbol(c);
        }
    }

    void ControlSymbol(wchar_t c) {
        if (c == L'\\' || c == L'{' || c == L'}') {
            TextChar(c);
            return;
        }
        FlushLead();
        if (SkipFallback()) return;
        GroupState& group = groups_.back();
        if (c == L'*') {
            group.hidden = true;
            group.fontTable = false;
        }
        if (group.hidden) return;
        switch (c) {
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

        if (word == L"bin"sv) {
            // Binary data is never text, whatever group it is in.
            const std::size_t count = param > 0 ? static_cast<std::size_t>(param) : 0;
            pos_ += std::min(count, in_.size() - pos_);
        }
        if (SkipFallback()) return;
        GroupState& group = groups_.back();
        if (word == L"uc"sv) {
            group.fallbackChars = std::max(0, param);
            return;
        }
        if (group.fontTable) {
            FontTableWord(word, hasParam, param);
            return;
        }
        if (group.hidden) return;
        if (std::binary_search(std::begin(kHiddenDestinations), std::end(kHiddenDestinations), word)) {
            group.hidden = true;
            group.fontTable = word == L"fonttbl"sv;
        } else if (word == L"u"sv) {
            if (!hasParam) return;
            const int unit = param < 0 ? param + 65536 : param;
            if (unit > 0 && unit <= 0xFFFF) {
                const Decoding& decoding = Current();
                const wchar_t c = static_cast<wchar_t>(unit);
                EmitChar(decoding.page == nullptr ? SymbolChar(decoding, c) : c);
            }
            pendingFallback_ = group.fallbackChars;
        } else if (word == L"f"sv) {
            if (hasParam) group.font = param;
        } else if (word == L"plain"sv) {
            group.font = -1;
        } else if (word == L"deff"sv) {
            if (hasParam) defaultFont_ = param;
            cacheValid_ = false;
        } else if (word == L"ansicpg"sv) {
            ansiCodePage_ = param > 0 ? static_cast<unsigned>(param) : 0;
            cacheValid_ = false;
        } else if (word == L"ansi"sv || word == L"mac"sv || word == L"pc"sv || word == L"pca"sv) {
            headerCodePage_ = word == L"ansi"sv ? 1252 : word == L"mac"sv ? 10000 : word == L"pc"sv ? 437 : 850;
            cacheValid_ = false;
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
    int pendingLead_ = -1;  // a lead byte waiting for its trail byte

    // Fonts and code pages.
    std::map<int, Font> fonts_;
    FontEntry entry_;
    int defaultFont_ = -1;
    unsigned ansiCodePage_ = 0;      // \ansicpgN
    unsigned headerCodePage_ = 1252;  // \ansi, \mac, \pc, \pca
    bool cacheValid_ = false;
    int cachedFont_ = 0;
    Decoding cached_;
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
