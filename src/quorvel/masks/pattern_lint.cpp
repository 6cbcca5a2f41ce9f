#include "quorvel/masks/pattern_lint.h"

#include <algorithm>

#include "quorvel/common/boundary.h"
#include "quorvel/common/charclass.h"

namespace qv {
namespace {

// An item as the checker reads it, with what it can consume at the start of
// a repetition pass.
struct Item {
    enum Type { None, Digit, Printable, Set, Literal } type = None;
    int begin = 0;
    int end = 0;
    std::wstring firsts;  // Set: first characters of its alternatives; Literal: the character
};

// True when `a` consumes every character with which `b` could begin: `b`
// then never sees a character, because an item repeats as long as one of its
// alternatives matches and fails when that is more often than it allows.
bool Swallows(const Item& a, const Item& b) {
    auto covers = [&a](wchar_t c) {
        switch (a.type) {
        case Item::Digit: return IsDigit(c);
        case Item::Printable: return IsPrintable(c);
        case Item::Set:
        case Item::Literal: return a.firsts.find(c) != std::wstring::npos;
        default: return false;
        }
    };
    switch (b.type) {
    case Item::Digit:
        for (wchar_t c = L'0'; c <= L'9'; ++c)
            if (!covers(c)) return false;
        return true;
    case Item::Printable: return a.type == Item::Printable;
    case Item::Set:
    case Item::Literal:
        if (b.firsts.empty()) return false;
        for (wchar_t c : b.firsts)
            if (!covers(c)) return false;
        return true;
    default: return false;
    }
}

class Linter {
public:
    explicit Linter(const std::wstring& mask) : mask_(mask), len_(static_cast<int>(mask.size())) {}

    std::vector<PatternProblem> Run() {
        if (len_ == 0) {
            Add(0, L"the pattern is empty: only the empty text is acceptable");
            return problems_;
        }
        levels_.push_back(Level{-1});
        int pos = 0;
        while (pos < len_) pos = Step(pos);
        if (levels_.back().sawBar && !levels_.back().altHasContent) Add(len_, L"empty alternative at the end of the pattern");
        for (size_t i = 1; i < levels_.size(); ++i)
            Add(levels_[i].open, L"'(' is never closed: a text that reaches this group is refused");
        std::stable_sort(problems_.begin(), problems_.end(),
                         [](const PatternProblem& a, const PatternProblem& b) { return a.pos < b.pos; });
        return problems_;
    }

private:
    struct Level {
        explicit Level(int at) : open(at) {}
        int open;  // position of the '(' (-1 for the pattern itself)
        bool altHasContent = false;
        bool sawBar = false;
        Item previous;  // the item before the current position in this alternative
    };

    void Add(int pos, std::wstring message) { problems_.push_back({pos, std::move(message)}); }

    std::wstring Text(const Item& item) const { return mask_.substr(item.begin, item.end - item.begin); }

    // Reads one token at `pos` and returns the position after it.
    int Step(int pos) {
        const wchar_t c = mask_[pos];
        Level& level = levels_.back();
        switch (c) {
        case L'(':
            level.altHasContent = true;
            level.previous = Item{};
            levels_.push_back(Level{pos});
            return pos + 1;
        case L')':
            if (levels_.size() == 1) {
                Add(pos, L"')' without '(': the check stops here and accepts whatever text follows");
                return pos + 1;
            }
            if (!level.altHasContent) Add(pos, L"empty alternative before ')'");
            levels_.pop_back();
            return pos + 1;
        case L'|':
            if (!level.altHasContent) Add(pos, L"empty alternative before '|'");
            level.altHasContent = false;
            level.sawBar = true;
            level.previous = Item{};
            return pos + 1;
        case L'?':
            Add(pos, L"'?' is a literal question mark here: only '#', '*' and ']' take a count");
            break;
        default:
            break;
        }
        Item item;
        item.begin = pos;
        int next = pos;
        if (c == L'#' || c == L'*') {
            ++next;
            XMenge menge(c == L'#' ? XMengeKindDigit : XMengeKindPrintable, mask_, next);
            item.type = c == L'#' ? Item::Digit : Item::Printable;
            LiteralDigits(next, c);
        } else if (c == L'[') {
            XMenge menge(mask_, next);
            if (next == pos) {
                Add(pos, L"'[' without ']': the set matches nothing, so nothing can be typed from here on");
                next = pos + 1;
            } else {
                item.type = Item::Set;
                SetContents(menge, pos, item);
                LiteralDigits(next, L']');
            }
        } else {
            item.type = Item::Literal;
            item.firsts.assign(1, c);
            next = pos + 1;
        }
        item.end = next;
        if (level.previous.type != Item::None && Swallows(level.previous, item))
            Add(level.previous.begin, L"nothing can be typed after this item: it also takes every character that the next item \"" +
                                          Text(item) + L"\" could start with");
        level.previous = item;
        level.altHasContent = true;
        return next;
    }

    // Digits right after an item that did not become a count.
    void LiteralDigits(int pos, wchar_t after) {
        int end = pos;
        while (end < len_ && IsDigit(mask_[end])) ++end;
        if (end == pos) return;
        Add(pos, L"digits \"" + mask_.substr(pos, end - pos) + L"\" after '" + std::wstring(1, after) +
                     L"' are literal characters, not a count: a count is digits followed directly by '?'");
    }

    void SetContents(const XMenge& menge, int open, Item& item) {
        const int close = static_cast<int>(mask_.find(L']', open));
        int alt = open + 1;
        for (const XMengeElement* e : menge.m_elements) {
            if (!e->m_strValue.empty()) item.firsts += e->m_strValue[0];
            if (e->m_strValue.empty())
                Add(alt, L"empty alternative in a string set: the check refuses any text that reaches it");
            alt += static_cast<int>(e->m_strValue.size()) + 1;
        }
        for (int i = open + 1; i < close; ++i)
            if (mask_[i] == L'(' || mask_[i] == L')')
                Add(i, std::wstring(L"'") + mask_[i] +
                           L"' inside a string set still counts as a group bracket when a group is skipped");
    }

    const std::wstring& mask_;
    const int len_;
    std::vector<Level> levels_;
    std::vector<PatternProblem> problems_;
};

}  // namespace

std::vector<PatternProblem> LintPattern(const std::wstring& mask) try {
    return Linter(mask).Run();
} catch (...) {
    return CaughtAtEdge(" qv::LintPattern", __LINE__, std::vector<PatternProblem>());
}

PatternExplanation ExplainPattern(const std::wstring& mask, const std::wstring& text) try {
    PatternExplanation result;
    XParserFactory* checker = XParserFactory::GetParserFactory();
    if (!checker) return result;
    const int len = static_cast<int>(text.size());
    if (checker->Check(text, mask)) {
        result.accepted = true;
        result.prefixLength = len;
        return result;
    }
    // Acceptance is not always monotonic in the length (a later '|' can
    // complete a match), so look for the longest accepted prefix from the top.
    int k = len - 1;
    while (k > 0 && !checker->Check(text.substr(0, k), mask)) --k;
    result.prefixLength = k;
    int textPos = 0, maskPos = 0, depth = 0;
    checker->CheckTraced(text.substr(0, k + 1), mask, textPos, maskPos, depth, &result.trace);
    return result;
} catch (...) {
    return CaughtAtEdge(" qv::ExplainPattern", __LINE__, PatternExplanation());
}

std::wstring DescribeRefusal(const std::wstring& mask, const std::wstring& text,
                             const PatternExplanation& e) try {
    if (e.accepted) return L"";
    using Reason = PatternTrace::Reason;
    const PatternTrace& t = e.trace;
    std::wstring line = L"refused '" + text.substr(e.prefixLength, 1) + L"' at position " +
                        std::to_wstring(e.prefixLength + 1);
    const std::wstring item =
        t.itemBegin >= 0 && t.itemEnd <= static_cast<int>(mask.size()) && t.itemBegin < t.itemEnd
            ? mask.substr(t.itemBegin, t.itemEnd - t.itemBegin)
            : std::wstring();
    const std::wstring where = L" at position " + std::to_wstring(t.itemBegin + 1) + L" of the pattern";
    switch (t.reason) {
    case Reason::ItemFailed:
        return line + L": item \"" + item + L"\"" + where + L" matched " + std::to_wstring(t.count) +
               L" time(s) from position " + std::to_wstring(t.textPos + 1) + L", allowed " +
               std::to_wstring(t.minCount) + L" to " + std::to_wstring(t.maxCount);
    case Reason::NoClosingBracket:
        return line + L": the group '('" + where + L" is never closed";
    case Reason::PatternUsedUp:
        return line + L": the pattern ends before the text";
    case Reason::EmptyAlternative:
        return line + L": item \"" + item + L"\"" + where + L" has an empty alternative";
    default:
        return line;
    }
} catch (...) {
    return CaughtAtEdge(" qv::DescribeRefusal", __LINE__, std::wstring());
}

}  // namespace qv
