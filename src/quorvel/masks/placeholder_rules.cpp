#include "quorvel/masks/placeholder_rules.h"

#include <algorithm>

#include "quorvel/common/boundary.h"
#include "quorvel/common/charclass.h"

namespace qv {

namespace {

constexpr wchar_t kDigitPosition = L'#';
constexpr wchar_t kAnyPosition = L'*';

int Length(std::wstring_view s) noexcept { return static_cast<int>(s.size()); }

}  // namespace

bool IsInputPosition(std::wstring_view mask, int index) noexcept {
    if (index < 0 || index >= Length(mask)) return false;
    const wchar_t m = mask[static_cast<size_t>(index)];
    return m == kDigitPosition || m == kAnyPosition;
}

std::wstring PlaceholderTemplate(std::wstring_view mask, wchar_t placeholder) try {
    std::wstring shown(mask);
    for (int i = 0; i < Length(mask); ++i)
        if (IsInputPosition(mask, i)) shown[static_cast<size_t>(i)] = placeholder;
    return shown;
} catch (...) {
    return CaughtAtEdge(" qv::PlaceholderTemplate", __LINE__, std::wstring());
}

bool IsCheckedChar(std::wstring_view text, std::wstring_view mask, wchar_t placeholder) {
    if (text.size() > mask.size()) return false;
    for (size_t i = 0; i < text.size(); ++i) {
        const wchar_t t = text[i];
        switch (mask[i]) {
        case kDigitPosition:
            if (!IsDigit(t) && t != placeholder) return false;
            break;
        case kAnyPosition:
            break;
        default:
            if (t != mask[i]) return false;
        }
    }
    return true;
}

PlaceholderAction BackspaceAction(const PlaceholderLine& line, std::wstring_view mask, wchar_t placeholder) try {
    PlaceholderAction action;
    const int caret = line.start;
    if (caret < 1 || caret > Length(line.text)) return action;
    if (IsInputPosition(mask, caret - 1)) {
        action.kind = PlaceholderAction::kReplace;
        action.from = caret - 1;
        action.to = caret;
        action.text.assign(1, placeholder);
        action.caret = caret - 1;
        return action;
    }
    int to = caret - 1;
    while (to > 0 && !IsInputPosition(mask, to - 1)) --to;
    action.kind = PlaceholderAction::kMoveCaret;
    action.caret = to;
    return action;
} catch (...) {
    return CaughtAtEdge(" qv::BackspaceAction", __LINE__, PlaceholderAction());
}

PlaceholderAction TypedCharAction(const PlaceholderLine& line, std::wstring_view mask, wchar_t placeholder,
                                  wchar_t ch) try {
    PlaceholderAction action;
    // The double quote is never taken into a template. Control characters
    // are dropped as well: passed on, Ctrl+Z would let the edit control undo
    // an edit and shift the template.
    if (ch == L'"' || !IsPrintable(ch)) return action;
    const int caret = line.start;
    if (caret < 0 || caret >= Length(line.text)) return action;
    std::wstring candidate = line.text;
    candidate[static_cast<size_t>(caret)] = ch;
    if (!IsCheckedChar(candidate, mask, placeholder)) return action;
    action.kind = PlaceholderAction::kTypeOver;
    action.from = caret;
    action.to = caret + 1;
    action.text.assign(1, ch);
    action.caret = CaretAfterTyping(candidate, mask, caret + 1);
    return action;
} catch (...) {
    return CaughtAtEdge(" qv::TypedCharAction", __LINE__, PlaceholderAction());
}

int CaretAfterTyping(std::wstring_view text, std::wstring_view mask, int caret) noexcept {
    const int limit = std::min(Length(text), Length(mask));
    if (caret >= 0 && caret < limit && !IsInputPosition(mask, caret)) return caret + 1;
    return caret;
}

PlaceholderAction DeleteAction(const PlaceholderLine& line, std::wstring_view mask, wchar_t placeholder) try {
    PlaceholderAction action;
    const int from = std::max(line.start, 0);
    const int to = std::min({line.end, Length(line.text), Length(mask)});
    if (from >= to) return action;
    action.kind = PlaceholderAction::kReplace;
    action.from = from;
    action.to = to;
    action.text = line.text.substr(static_cast<size_t>(from), static_cast<size_t>(to - from));
    for (int i = from; i < to; ++i)
        if (IsInputPosition(mask, i)) action.text[static_cast<size_t>(i - from)] = placeholder;
    action.caret = from;
    return action;
} catch (...) {
    return CaughtAtEdge(" qv::DeleteAction", __LINE__, PlaceholderAction());
}

}  // namespace qv
