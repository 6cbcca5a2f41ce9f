// Help for the people who write validation patterns into the host's
// configuration: the mistakes worth hearing about before a user meets them,
// and why a given text is refused. Portable model code. When there is no
// memory for an answer, each answers an empty one.
#pragma once

#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/masks/pattern.h"

namespace qv {

struct PatternProblem {
    int pos = 0;  // 0-based index into the pattern
    std::wstring message;
};

// Everything in `mask` that does not do what its author most likely meant,
// in pattern order:
//  - a '(' that is never closed, a ')' without '(' (at the top level the
//    check stops there and accepts whatever follows), a '[' without ']';
//  - empty alternatives, in groups and in string sets (an empty string in a
//    set refuses every text that reaches it);
//  - digits after '#', '*' or ']' that are not followed directly by '?' and
//    so are literal characters instead of a count;
//  - a '?' that is a literal question mark because no '#', '*' or ']'
//    stands right before it;
//  - an item after which nothing can ever be typed, because its repetition
//    takes every character that the next item could start with ("#?#",
//    "*?x"); matching is greedy and never gives characters back;
//  - '(' or ')' inside a string set, which still count as group brackets when
//    the checker skips a group.
QV_API std::vector<PatternProblem> LintPattern(const std::wstring& mask);

// Why `text` is or is not acceptable under `mask`.
struct PatternExplanation {
    bool accepted = false;
    int prefixLength = 0;  // the longest acceptable prefix of the text
    PatternTrace trace;    // the furthest failure when checking one more character
};

QV_API PatternExplanation ExplainPattern(const std::wstring& mask, const std::wstring& text);

// One line describing the refusal of an explanation ("" when accepted).
QV_API std::wstring DescribeRefusal(const std::wstring& mask, const std::wstring& text,
                                    const PatternExplanation& explanation);

}  // namespace qv
