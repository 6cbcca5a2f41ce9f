#include "quorvel/controls/input_rules.h"

#include "quorvel/common/boundary.h"
#include "quorvel/common/charclass.h"
#include "quorvel/frame/number_text.h"

namespace qv {

bool Only0to9AtoZ(const std::wstring& text, bool wholeText) {
    if (!wholeText && text.size() != 1) return false;
    return CheckCharacters0to9AtoZ(text);
}

std::wstring CutToLimit(std::wstring_view text, int maxChars) try {
    if (maxChars <= 0) return {};
    return std::wstring(text.substr(0, static_cast<size_t>(maxChars)));
} catch (...) {
    return CaughtAtEdge(" qv::CutToLimit", __LINE__, std::wstring());
}

std::wstring UpperCase0to9AtoZ(std::wstring_view text) try {
    std::wstring upper(text);
    for (wchar_t& c : upper) c = ToUpperAscii(c);
    return upper;
} catch (...) {
    return CaughtAtEdge(" qv::UpperCase0to9AtoZ", __LINE__, std::wstring());
}

std::wstring RestrictedText(std::wstring_view text, CharactersCheck check) try {
    std::wstring upper = UpperCase0to9AtoZ(text);
    if (!check(upper, true)) upper.clear();
    return upper;
} catch (...) {
    return CaughtAtEdge(" qv::RestrictedText", __LINE__, std::wstring());
}

std::wstring FieldTextForSet(std::wstring_view text, int maxChars, bool restricted, CharactersCheck check) try {
    // Only a text that is too long is cut: a limit of 0 or less then empties it.
    std::wstring result = static_cast<long long>(text.size()) > maxChars ? CutToLimit(text, maxChars)
                                                                          : std::wstring(text);
    return restricted ? RestrictedText(result, check) : result;
} catch (...) {
    return CaughtAtEdge(" qv::FieldTextForSet", __LINE__, std::wstring());
}

FieldState RestrictAfterTyping(const FieldState& after, wchar_t typed, CharactersCheck check) try {
    FieldState next{UpperCase0to9AtoZ(after.text), after.start, after.end};
    const std::wstring character(1, ToUpperAscii(typed));
    if (check(character, false)) return next;
    const size_t p = next.text.find(character[0]);
    if (p == std::wstring::npos) return next;
    next.text.erase(p, 1);
    if (next.end >= 0) --next.end;
    if (next.start > 0) --next.start;
    return next;
} catch (...) {
    return CaughtAtEdge(" qv::RestrictAfterTyping", __LINE__, FieldState());
}

int DroppedListHeight(int heightOfW) {
    const int row = heightOfW + 11;
    return row <= 30 ? row * 10 : row * 5;
}

int DroppedListWidth(int widestItem, int currentWidth) { return widestItem > currentWidth ? widestItem + 11 : 0; }

}  // namespace qv
