#include "quorvel/frame/codepages.h"

#include <algorithm>
#include <iterator>

namespace qv {

// In codepage_tables.cpp (generated).
extern const CodePage kCodePages[];
extern const std::size_t kCodePageCount;
extern const char16_t kSymbolFont[256];

namespace {

struct CharsetCodePage {
    int charset;
    unsigned codePage;
};

// The rich text format's character sets and their code pages. Sorted by
// charset. Not listed: 0 ANSI and 1 default (the document's code page),
// 2 symbol, and the old Mac Johab set 82, which has no code page.
constexpr CharsetCodePage kCharsets[] = {
    {77, 10000},   // Mac Roman
    {78, 10001},   // Mac Shift-JIS
    {79, 10003},   // Mac Hangul
    {80, 10008},   // Mac GB2312
    {81, 10002},   // Mac Big5
    {83, 10005},   // Mac Hebrew
    {84, 10004},   // Mac Arabic
    {85, 10006},   // Mac Greek
    {86, 10081},   // Mac Turkish
    {87, 10021},   // Mac Thai
    {88, 10029},   // Mac Eastern European
    {89, 10007},   // Mac Cyrillic
    {128, 932},    // Shift-JIS
    {129, 949},    // Hangul
    {130, 1361},   // Johab
    {134, 936},    // GB2312
    {136, 950},    // Big5
    {161, 1253},   // Greek
    {162, 1254},   // Turkish
    {163, 1258},   // Vietnamese
    {177, 1255},   // Hebrew
    {178, 1256},   // Arabic
    {179, 1256},   // Arabic traditional
    {180, 1256},   // Arabic user
    {181, 1255},   // Hebrew user
    {186, 1257},   // Baltic
    {204, 1251},   // Cyrillic
    {222, 874},    // Thai
    {238, 1250},   // Eastern European
    {254, 437},    // PC 437
    {255, 437},    // OEM
};

static_assert(std::is_sorted(std::begin(kCharsets), std::end(kCharsets),
                             [](const CharsetCodePage& a, const CharsetCodePage& b) { return a.charset < b.charset; }));

}  // namespace

const CodePage* FindCodePage(unsigned number) {
    const CodePage* end = kCodePages + kCodePageCount;
    const CodePage* it = std::lower_bound(kCodePages, end, number,
                                          [](const CodePage& page, unsigned n) { return page.number < n; });
    return it != end && it->number == number ? it : nullptr;
}

CharsetMeaning MeaningOfCharset(int charset) {
    if (charset == 2) return {CharsetKind::Symbol, 0};
    const auto it = std::lower_bound(std::begin(kCharsets), std::end(kCharsets), charset,
                                     [](const CharsetCodePage& c, int n) { return c.charset < n; });
    if (it != std::end(kCharsets) && it->charset == charset) return {CharsetKind::CodePage, it->codePage};
    return {CharsetKind::Document, 0};
}

char16_t SymbolFontChar(unsigned byte) {
    return byte < 256 ? kSymbolFont[byte] : static_cast<char16_t>(byte);
}

}  // namespace qv
