#include "quorvel/masks/pattern.h"

#include <climits>
#include <memory>
#include <new>

#include "quorvel/common/boundary.h"
#include "quorvel/common/charclass.h"

namespace {

int Length(const std::wstring& s) {
    return s.size() > static_cast<size_t>(INT_MAX) ? INT_MAX : static_cast<int>(s.size());
}

// True when `c` occurs at `from` or later. Searching from the end answers
// this in a step or two for ordinary patterns, where the character sought
// usually stands near the end, instead of walking the rest of the pattern
// for every item.
// Hands a new alternative to the item, which deletes it; nothing leaks when
// the list cannot grow.
void AddElement(std::vector<XMengeElement*>& elements, std::unique_ptr<XMengeElement> element) {
    elements.push_back(element.get());
    element.release();
}

bool OccursFrom(const std::wstring& mask, wchar_t c, int from) {
    const size_t at = mask.rfind(c);
    return at != std::wstring::npos && at >= static_cast<size_t>(from);
}

}  // namespace

// ---------------------------------------------------------------- elements

int XMengeElement::Match(const std::wstring&, int&, int&) { return 1; }

XMengeOne::XMengeOne(wchar_t c) { m_strValue.assign(1, c); }

int XMengeOne::Match(const std::wstring& text, int& pos, int& kind) {
    kind = Full;
    if (pos < 0 || pos >= Length(text) || m_strValue.size() != 1 || text[pos] != m_strValue[0])
        return 0;
    ++pos;
    return 1;
}

int XMengeDigit::Match(const std::wstring& text, int& pos, int& kind) {
    kind = Full;
    if (pos < 0 || pos >= Length(text) || !qv::IsDigit(text[pos])) return 0;
    ++pos;
    return 1;
}

int XMengeChar::Match(const std::wstring& text, int& pos, int& kind) {
    kind = Full;
    if (pos < 0 || pos >= Length(text) || !qv::IsPrintable(text[pos])) return 0;
    ++pos;
    return 1;
}

XMengeString::XMengeString(const std::wstring& s) { m_strValue = s; }

int XMengeString::Match(const std::wstring& text, int& pos, int& kind) {
    const std::wstring& s = m_strValue;
    const int len = Length(text);
    if (pos < 0) return 0;
    const int available = pos < len ? len - pos : 0;
    const int slice = Length(s) < available ? Length(s) : available;
    if (slice == Length(s) && text.compare(static_cast<size_t>(pos), static_cast<size_t>(slice), s) == 0) {
        pos += slice;
        kind = Full;
        return 1;
    }
    if (pos >= len || slice == 0 || text[pos] != s[0]) return 0;
    // A common prefix counts as a (partial) match: typing "ab" towards "abc".
    int i = 0;
    while (i < slice && text[pos + i] == s[i]) ++i;
    pos += i;
    kind = Partial;
    return 1;
}

// -------------------------------------------------------------------- item

XMenge::XMenge(int kind, const std::wstring& mask, int& maskPos) {
    switch (kind) {
    case XMengeKindDigit:
        AddElement(m_elements, std::make_unique<XMengeDigit>());
        ParseQuantifier(mask, maskPos);
        break;
    case XMengeKindPrintable:
        AddElement(m_elements, std::make_unique<XMengeChar>());
        ParseQuantifier(mask, maskPos);
        break;
    case XMengeKindOne:
        // A literal is required exactly once and takes no quantifier.
        if (maskPos >= 0 && maskPos < Length(mask)) {
            AddElement(m_elements, std::make_unique<XMengeOne>(mask[maskPos]));
            ++maskPos;
        }
        break;
    default:
        break;
    }
}

XMenge::XMenge(const std::wstring& mask, int& maskPos) { ParseStringSet(mask, maskPos); }

XMenge::~XMenge() {
    for (XMengeElement* e : m_elements) delete e;
}

void XMenge::ParseQuantifier(const std::wstring& mask, int& maskPos) {
    m_nMax = m_nMin = 1;
    const int len = Length(mask);
    if (maskPos < 0 || maskPos >= len) return;
    if (mask[maskPos] == L'?') {
        m_nMax = 100000;
        m_nMin = 0;
        ++maskPos;
        return;
    }
    // A count is a run of digits directly followed by '?'. Anything else in
    // between (a second '#', a letter) leaves the bounds at 1..1, and the
    // digits are then read as literal characters by the items that follow.
    int end = maskPos;
    while (end < len && qv::IsDigit(mask[end])) ++end;
    if (end == maskPos || end >= len || mask[end] != L'?') return;
    long long value = 0;
    for (int i = maskPos; i < end; ++i) {
        value = value * 10 + (mask[i] - L'0');
        if (value > INT_MAX) value = INT_MAX;  // saturate like a leading-integer conversion
    }
    m_nMax = static_cast<int>(value);
    m_nMin = 0;
    maskPos = end + 1;
}

void XMenge::ParseStringSet(const std::wstring& mask, int& maskPos) try {
    const int len = Length(mask);
    if (maskPos < 0 || maskPos >= len || mask[maskPos] != L'[' ||
        mask.find(L']', static_cast<size_t>(maskPos)) == std::wstring::npos)
        return;
    // Each pass drops the '[' or '|' in front and takes the characters up to
    // the next '|' or ']' as one alternative, possibly empty.
    while (maskPos < len && mask[maskPos] != L']') {
        ++maskPos;
        const size_t stop = mask.find_first_of(L"|]", static_cast<size_t>(maskPos));
        if (stop == std::wstring::npos) break;
        AddElement(m_elements, std::make_unique<XMengeString>(mask.substr(maskPos, stop - maskPos)));
        maskPos = static_cast<int>(stop);
    }
    ++maskPos;
    ParseQuantifier(mask, maskPos);
} catch (...) {
    qv::CaughtAtEdge(" XMenge::ParseStringSet", __LINE__);
}

void XMenge::Consume(const std::wstring& text, int& textPos, int& count) {
    const int len = Length(text);
    int best = textPos;
    bool matched = true;
    int kind = 0;
    m_bStalled = false;
    while (textPos < len && matched) {
        const int start = textPos;
        matched = false;
        for (XMengeElement* element : m_elements) {
            if (element->Match(text, textPos, kind)) {
                if (kind == Full || kind == Partial) {
                    if (textPos > best) best = textPos;
                    textPos = start;
                }
                matched = true;
            }
        }
        if (matched) ++count;
        textPos = best;
        // Hang guard: a pass that matched without advancing (only an empty
        // string alternative can do that) would match again and again at
        // the same place. Stop and report it; the checker refuses the text.
        // Texts that never bring an item to this state are unaffected.
        if (matched && best == start) {
            m_bStalled = true;
            break;
        }
    }
    textPos = best;
}

// ----------------------------------------------------------------- checker

XParserFactory* XParserFactory::m_ParserFactory = nullptr;

XParserFactory* XParserFactory::GetParserFactory() {
    if (!m_ParserFactory) m_ParserFactory = new (std::nothrow) XParserFactory();
    return m_ParserFactory;
}

void XParserFactory::DestroyParserFactory() {
    delete m_ParserFactory;
    m_ParserFactory = nullptr;
}

int XParserFactory::Check(const std::wstring& text, const std::wstring& mask) {
    int textPos = 0, maskPos = 0, depth = 0;
    return CheckTraced(text, mask, textPos, maskPos, depth, nullptr);
}

int XParserFactory::CheckSyntax(const std::wstring& text, const std::wstring& mask, int& textPos,
                                int& maskPos, int& depth) {
    return CheckTraced(text, mask, textPos, maskPos, depth, nullptr);
}

namespace {

void Note(qv::PatternTrace* trace, qv::PatternTrace::Reason reason, int textPos, int itemBegin,
          int itemEnd, const XMenge* item = nullptr, int count = 0) {
    if (!trace || textPos < trace->textPos) return;
    // At the same place an item's own failure says more than the pattern
    // running out after the item's group was skipped.
    if (textPos == trace->textPos && reason == qv::PatternTrace::Reason::PatternUsedUp &&
        trace->reason == qv::PatternTrace::Reason::ItemFailed)
        return;
    trace->reason = reason;
    trace->textPos = textPos;
    trace->itemBegin = itemBegin;
    trace->itemEnd = itemEnd;
    trace->count = count;
    trace->minCount = item ? item->m_nMin : 0;
    trace->maxCount = item ? item->m_nMax : 0;
}

}  // namespace

// The checker reads the pattern left to right, one item at a time, and
// accepts as soon as the text is used up. A group "(...)" is a nested level:
// when it returns 0 the text goes back to where the group began and checking
// goes on after it, so a group never fails its caller. When an item fails and
// a '|' follows anywhere later in the pattern, the level restarts at the next
// alternative from the text position where the level began.
//
// Nested groups are followed with an explicit stack of levels rather than by
// recursion, so a configured pattern with thousands of '(' cannot exhaust the
// stack of the user-interface thread; the answers are those of the recursive
// reading. Every step moves the pattern position forward, so a check ends
// after at most one item per pattern character.
int XParserFactory::CheckTraced(const std::wstring& text, const std::wstring& mask, int& textPos,
                                int& maskPos, int& depth, qv::PatternTrace* trace) try {
    using Reason = qv::PatternTrace::Reason;
    struct Level {
        int entryPos;  // text position where the enclosing level began
        int groupPos;  // text position where this group began in that level
    };
    std::vector<Level> enclosing;
    const int textLen = Length(text);
    const int maskLen = Length(mask);
    int entryPos = textPos;
    int result = -1;  // what the current level returns; -1 while it goes on

    for (;;) {
        if (result >= 0) {
            if (enclosing.empty()) return result;
            // Back in the enclosing level after a group: skip the rest of the
            // group whether it matched or not.
            const Level level = enclosing.back();
            enclosing.pop_back();
            entryPos = level.entryPos;
            if (result == 0) textPos = level.groupPos;
            result = ScipBrackets(mask, maskPos, 1) ? -1 : 0;
            continue;
        }
        if (textPos >= textLen) {
            result = 1;
            continue;
        }
        if (maskPos < 0 || maskPos >= maskLen) {
            Note(trace, Reason::PatternUsedUp, textPos, maskLen, maskLen);
            result = 0;
            continue;
        }
        const int itemBegin = maskPos;
        XMenge* item = nullptr;
        switch (mask[maskPos]) {
        case L'#':
            ++maskPos;
            item = new XMenge(XMengeKindDigit, mask, maskPos);
            break;
        case L'*':
            ++maskPos;
            item = new XMenge(XMengeKindPrintable, mask, maskPos);
            break;
        case L'[':
            item = new XMenge(mask, maskPos);
            break;
        case L'(':
            if (!OccursFrom(mask, L')', maskPos)) {
                Note(trace, Reason::NoClosingBracket, textPos, maskPos, maskPos + 1);
                result = 0;
                continue;
            }
            ++maskPos;
            ++depth;
            enclosing.push_back({entryPos, textPos});
            entryPos = textPos;
            continue;
        case L')':
            --depth;
            result = 1;
            continue;
        case L'|':
            // The alternative just finished has matched.
            ++maskPos;
            result = 1;
            continue;
        default:
            item = new XMenge(XMengeKindOne, mask, maskPos);
            break;
        }

        const int itemPos = textPos;
        int count = 0;
        item->Consume(text, textPos, count);
        if (item->Stalled()) {
            Note(trace, Reason::EmptyAlternative, itemPos, itemBegin, maskPos, item, count);
            return ClearFalseMask(item);
        }
        if (item->m_nMin <= count && count <= item->m_nMax) {
            delete item;
            continue;
        }
        Note(trace, Reason::ItemFailed, itemPos, itemBegin, maskPos, item, count);
        if (!OccursFrom(mask, L'|', maskPos) || !SciptoNext(mask, maskPos)) {
            result = ClearFalseMask(item);
            continue;
        }
        textPos = entryPos;
        delete item;
    }
} catch (...) {
    return qv::CaughtAtEdge(" XParserFactory::CheckTraced", __LINE__, 0);
}

int XParserFactory::ScipBrackets(const std::wstring& mask, int& maskPos, int open) {
    const int len = Length(mask);
    while (open != 0) {
        if (maskPos < 0 || maskPos >= len) return 0;
        if (mask[maskPos] == L'(') ++open;
        else if (mask[maskPos] == L')') --open;
        ++maskPos;
    }
    return 1;
}

int XParserFactory::SciptoNext(const std::wstring& mask, int& maskPos) {
    const int len = Length(mask);
    for (;;) {
        if (maskPos < 0 || maskPos >= len) return 0;
        const wchar_t c = mask[maskPos];
        if (c == L')') return 1;
        ++maskPos;
        if (c == L'|') return 1;
        if (c == L'(' && !ScipBrackets(mask, maskPos, 1)) return 0;
    }
}

std::wstring XParserFactory::GetCommaMask(int intDigits, int decimals) try {
    return L"#" + std::to_wstring(intDigits) + L"?(.|,)(#" + std::to_wstring(decimals) + L"?)";
} catch (...) {
    return qv::CaughtAtEdge(" XParserFactory::GetCommaMask", __LINE__, std::wstring());
}

int XParserFactory::NoZero() { return 1; }

int XParserFactory::ClearFalseMask(XMenge* item) {
    delete item;
    return 0;
}
