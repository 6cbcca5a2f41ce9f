// Fuzzes the pattern checker, the lint and the explanation over any
// (pattern, text) pair: each must terminate and never crash or read out of
// bounds. The input is UTF-8; the pattern is everything before the first
// tab and the text everything after it (no tab: the text is empty).
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quorvel/common/utf8.h"
#include "quorvel/masks/pattern.h"
#include "quorvel/masks/pattern_lint.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const size_t tab = input.find('\t');
    const std::wstring mask = qv::Utf8ToWide(input.substr(0, tab));
    const std::wstring text = tab == std::string_view::npos ? std::wstring() : qv::Utf8ToWide(input.substr(tab + 1));

    XParserFactory* checker = XParserFactory::GetParserFactory();
    const int accepted = checker->Check(text, mask);
    // Prefix acceptance: the empty text is always acceptable.
    if (!checker->Check(std::wstring(), mask)) std::abort();

    // The explanation re-checks every prefix; keep long inputs to the check.
    if (text.size() > 256) return 0;
    const qv::PatternExplanation e = qv::ExplainPattern(mask, text);
    if (e.accepted != (accepted != 0) || e.prefixLength < 0 || e.prefixLength > static_cast<int>(text.size()))
        std::abort();
    if (!e.accepted) {
        const std::wstring line = qv::DescribeRefusal(mask, text, e);
        if (line.empty()) std::abort();
    }
    for (const qv::PatternProblem& p : qv::LintPattern(mask))
        if (p.pos < 0 || p.pos > static_cast<int>(mask.size()) || p.message.empty()) std::abort();
    return 0;
}
