// Fuzzes the font and colour chooser's text rules with any text a user or a
// host can give: HTML colour texts, typed sizes, and a translated reader
// text with its numbered places. The input is decoded as UTF-8 into UTF-16
// code units, as the text would be on Windows. A colour that is read must
// write back to the same text in lower case, a size that is read must lie
// in its range and write back to its digits, and a filled-in text never
// grows with one-character arguments.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cwctype>
#include <string>
#include <string_view>

#include "quorvel/common/utf8.h"
#include "quorvel/controls/font_color_rules.h"

namespace fc = qv::fontcolor;

namespace {

std::wstring_view Trimmed(std::wstring_view text) {
    while (!text.empty() && (text.front() == L' ' || text.front() == L'\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == L' ' || text.back() == L'\t')) text.remove_suffix(1);
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = qv::Utf8ToWide(std::string_view(reinterpret_cast<const char*>(data), size));
    const std::wstring_view core = Trimmed(text);

    if (const auto color = fc::ParseHtmlColor(text)) {
        if (*color > 0xFFFFFF) std::abort();
        const std::wstring back = fc::HtmlColor(*color);
        if (back.size() != core.size()) std::abort();
        for (std::size_t i = 0; i < back.size(); ++i)
            if (static_cast<wchar_t>(std::towlower(core[i])) != back[i]) std::abort();
    }

    if (const auto value = fc::ParseSize(text)) {
        if (*value < fc::kMinSize || *value > fc::kMaxSize) std::abort();
        std::wstring_view digits = core;
        while (digits.size() > 1 && digits.front() == L'0') digits.remove_prefix(1);
        if (std::to_wstring(*value) != digits) std::abort();
    }

    // A translation fills its numbered places and nothing more: with one-
    // character arguments the text never grows, as every place is two long.
    const std::wstring filled = fc::FillIn(text, {L"a", L"b", L"c", L"d", L"e"});
    if (filled.size() > text.size()) std::abort();
    if (text.find(L'%') == std::wstring::npos && filled != text) std::abort();

    // Every style value maps back where it came from, or is refused.
    for (const std::uint8_t byte : std::string_view(reinterpret_cast<const char*>(data), size < 4 ? size : 4)) {
        const int v = static_cast<int>(static_cast<std::int8_t>(byte));
        const int pos = fc::ListPositionOfStyle(v);
        if (pos >= 0 ? fc::StyleOfListPosition(pos) != v : (v >= 0 && v < fc::kStyleCount)) std::abort();
        if (pos >= 0 && fc::StyleIndex(fc::StyleOf(v)) != v) std::abort();
    }
    return 0;
}
