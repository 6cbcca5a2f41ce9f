// The filtering combo box matches every stored entry on each keystroke. The
// matcher alone on a 100-character pattern with 20 "*" against 10 000 texts
// of 40 to 200 characters, and the prefix filter on the same texts as the
// reference point.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "quorvel/lists/filter_rules.h"

namespace {

namespace ql = qv::lists;

std::vector<std::wstring> Texts() {
    std::vector<std::wstring> texts;
    unsigned state = 12345;
    for (int i = 0; i < 10000; ++i) {
        state = state * 1664525u + 1013904223u;
        const size_t length = 40 + (state >> 8) % 161;
        std::wstring t;
        for (size_t k = 0; k < length; ++k) {
            state = state * 1664525u + 1013904223u;
            t += static_cast<wchar_t>(L'a' + (state >> 8) % 4);  // a, b, c, d: literals are often found
        }
        texts.push_back(std::move(t));
    }
    return texts;
}

// 100 characters: 20 times a star and a literal of four letters, so every
// literal floats and is searched through the rest of the text. `common`:
// literals of a, b, c and d, found now and then until the text runs out;
// otherwise the first literal holds an "e" that no text has, so each text is
// read to its end at once.
std::wstring Pattern(bool common) {
    static const wchar_t* const literals[] = {L"abca", L"dbca", L"cadb", L"bbad", L"dcab"};
    std::wstring p;
    for (int i = 0; i < 20; ++i) p += std::wstring(L"*") + literals[i % 5];
    if (!common) p[1] = L'e';
    return p;
}

void BM_MatcherTwentyStars(benchmark::State& state) {
    static const std::vector<std::wstring> texts = Texts();
    std::vector<ql::FilterToken> tokens;
    ql::TokenizeString(Pattern(state.range(0) != 0), tokens);
    int kept = 0;
    for (auto _ : state) {
        kept = 0;
        for (const auto& t : texts) kept += ql::CompareTokenToString(tokens, t);
        benchmark::DoNotOptimize(kept);
    }
    state.counters["kept"] = kept;
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(texts.size()));
}
BENCHMARK(BM_MatcherTwentyStars)->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

void BM_PrefixReference(benchmark::State& state) {
    static const std::vector<std::wstring> texts = Texts();
    for (auto _ : state) benchmark::DoNotOptimize(ql::FilterEntries(texts, L"abca"));
    state.SetItemsProcessed(state.iterations() * static_cast<long long>(texts.size()));
}
BENCHMARK(BM_PrefixReference)->Unit(benchmark::kMicrosecond);

}  // namespace
