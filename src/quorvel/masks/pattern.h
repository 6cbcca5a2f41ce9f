// Validation patterns: the small language in which every masked field states
// what its text may look like, and the checker that the fields ask after
// every keystroke, cut and paste.
//
// The language, read left to right:
//   #        one decimal digit            *        one printable character
//   [a|bc]   one of the strings "a", "bc" (a string may also match as a prefix)
//   (x|y)    a group of alternatives; a group is always optional
//   |        separates alternatives
//   other    that character itself, exactly once (case-sensitive)
// After '#', '*' or ']': '?' allows 0 to 100000 repetitions, "N?" 0 to N, and
// nothing exactly one. There is no escape character; '#', '(' or '*' inside
// a string set are plain characters.
//
// The check is a prefix check: a text is accepted when the pattern accounts
// for every one of its characters, even if the pattern asks for more later.
// That is what lets a user type a number digit by digit: "1" is acceptable
// under "##", and the empty text under any pattern.
//
// Matching is greedy and never backtracks: an item repeats as often as its
// alternatives match and fails when that is more often than its maximum; it
// does not stop early to leave characters for the items after it. Pattern
// authors write patterns with that in mind ("#2?" refuses "123").
//
// Everything here is portable code over std::wstring, built into the DLL and
// natively; nothing is cached between checks.
#pragma once

#include <string>
#include <vector>

#include "quorvel/common/api.h"

// How far an element matched: the whole of what it stands for, or (string
// elements only) a non-empty common prefix with the text.
enum MatchKind { Full = 1, Partial = 2 };

// The code with which an item is built from a single pattern character.
enum XMengeKind { XMengeKindDigit = 1, XMengeKindPrintable = 2, XMengeKindOne = 3 };

// One alternative of an item: answers whether the text at `pos` begins with
// what the element stands for, and how far that reaches.
class QV_API XMengeElement {
public:
    virtual ~XMengeElement() = default;

    // On success advances `pos` past the match, sets `kind` and returns 1.
    // The base element matches nothing and everything: it returns 1 and
    // leaves `pos` and `kind` alone.
    virtual int Match(const std::wstring& text, int& pos, int& kind);

    std::wstring m_strValue;
};

// Exactly the character it holds (case-sensitive).
class QV_API XMengeOne : public XMengeElement {
public:
    explicit XMengeOne(wchar_t c);
    int Match(const std::wstring& text, int& pos, int& kind) override;
};

// One of '0'..'9'.
class QV_API XMengeDigit : public XMengeElement {
public:
    XMengeDigit() = default;
    int Match(const std::wstring& text, int& pos, int& kind) override;
};

// One printable character: anything but a C0/C1 control character, decided
// by the library's own character classes so that every build agrees.
class QV_API XMengeChar : public XMengeElement {
public:
    XMengeChar() = default;
    int Match(const std::wstring& text, int& pos, int& kind) override;
};

// A string of a string set. It matches the whole string, or, leniently, any
// non-empty common prefix with the text wherever it stands, so that a user
// can type the first letters of a keyword.
class QV_API XMengeString : public XMengeElement {
public:
    XMengeString() = default;
    explicit XMengeString(const std::wstring& s);
    int Match(const std::wstring& text, int& pos, int& kind) override;
};

// One item of a pattern: its alternative elements and its repetition bounds.
// Built from the pattern text for one test and destroyed right after.
class QV_API XMenge {
public:
    // Builds a digit (1), printable (2) or one-character (3) item. For kinds
    // 1 and 2 `maskPos` is just after the '#' or '*' and a quantifier is read;
    // for kind 3 it is on the literal character, which is required exactly
    // once, and `maskPos` steps past it.
    XMenge(int kind, const std::wstring& mask, int& maskPos);
    // Builds a string set with `maskPos` on '['. A set without a closing ']'
    // has no elements, matches nothing and leaves `maskPos` where it was.
    XMenge(const std::wstring& mask, int& maskPos);
    ~XMenge();

    XMenge(const XMenge&) = delete;
    XMenge& operator=(const XMenge&) = delete;

    // Reads "?" or "N?" at `maskPos` into the bounds (1..1 when there is
    // none) and steps past it.
    void ParseQuantifier(const std::wstring& mask, int& maskPos);
    // Reads "[s1|s2|...]" and the quantifier after it.
    void ParseStringSet(const std::wstring& mask, int& maskPos);

    // Greedy repetition: each pass takes the longest reach of any
    // alternative (the earlier one on a tie) and the passes go on while one
    // matches. Adds the number of passes to `count` and leaves `textPos`
    // after the longest match. Bounds are not looked at here: an item that
    // repeats more often than `m_nMax` fails afterwards instead of stopping.
    void Consume(const std::wstring& text, int& textPos, int& count);

    // True when the last Consume stopped because a pass matched without
    // advancing while text remained: an empty string alternative ("[|a]",
    // "[]") would otherwise repeat forever. The checker refuses the text.
    bool Stalled() const { return m_bStalled; }

    std::vector<XMengeElement*> m_elements;
    int m_nMax = 1;
    int m_nMin = 1;

private:
    bool m_bStalled = false;
};

namespace qv {

// What a check saw, for explaining a refusal to a pattern author. Filled only
// when a trace is passed; the masked fields never pass one.
struct PatternTrace {
    enum class Reason {
        None,
        ItemFailed,        // an item matched too few or too many times
        NoClosingBracket,  // a '(' with no ')' anywhere after it
        PatternUsedUp,     // text left over at the end of the pattern
        EmptyAlternative,  // an empty string alternative stopped the check
    };
    // The failure furthest into the text (the last one on a tie).
    Reason reason = Reason::None;
    int textPos = -1;     // where the failing item began in the text
    int itemBegin = -1;   // the item's characters in the pattern: [begin, end)
    int itemEnd = -1;
    int count = 0;        // how often the item matched
    int minCount = 0;
    int maxCount = 0;
};

}  // namespace qv

// The process-wide pattern checker. It holds no state between checks; the
// masked fields share one instance, created by the first and destroyed by the
// last of them.
class QV_API XParserFactory {
public:
    virtual ~XParserFactory() = default;
    XParserFactory(const XParserFactory&) {}
    XParserFactory& operator=(const XParserFactory&) { return *this; }

    // The instance, created on first use; null when it cannot be made (no
    // memory), which the masked fields take as a refusal of every text.
    static XParserFactory* GetParserFactory();
    // Deletes the instance; a later GetParserFactory creates a new one.
    static void DestroyParserFactory();

    // 1 when the pattern accounts for every character of the text; a check
    // that cannot be completed (no memory) answers 0.
    int Check(const std::wstring& text, const std::wstring& mask);
    // The checker with positions of the caller's own (the fields pass 0, 0, 0).
    int CheckSyntax(const std::wstring& text, const std::wstring& mask, int& textPos, int& maskPos,
                    int& depth);
    // The same check, recording the furthest failure into `trace` (may be null).
    int CheckTraced(const std::wstring& text, const std::wstring& mask, int& textPos, int& maskPos,
                    int& depth, qv::PatternTrace* trace);

    // "#a?(.|,)(#b?)": at most a integer digits, then optionally '.' or ','
    // and at most b decimals. Counts are written in decimal as given; a
    // negative count is written with its sign and then reads as literal
    // characters, which refuses any digit.
    std::wstring GetCommaMask(int intDigits, int decimals);
    int NoZero();

protected:
    XParserFactory() = default;

    // Steps `maskPos` to just after the ')' that closes the current group;
    // 0 when the mask ends first.
    int ScipBrackets(const std::wstring& mask, int& maskPos, int open);
    // Steps `maskPos` to the next alternative: past the next '|' of this
    // level, or onto the ')' that ends the group. 0 when the mask ends first.
    int SciptoNext(const std::wstring& mask, int& maskPos);

private:
    int ClearFalseMask(XMenge* item);

    static XParserFactory* m_ParserFactory;
};
