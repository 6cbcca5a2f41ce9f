// Model benchmarks of the frame's conversions: the costs a numeric field
// pays on every value read and write, and rich text to plain text.
#include <benchmark/benchmark.h>

#include <string>

#include "quorvel/frame/number_text.h"
#include "quorvel/frame/rtf_text.h"

namespace {

void BM_ParseLocaleDouble(benchmark::State& state) {
    const std::wstring text = L"-12345,678e-2";
    double v = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(qv::ParseLocaleDouble(text, L',', v));
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_ParseLocaleDouble);

void BM_FormatLocaleDouble(benchmark::State& state) {
    std::wstring out;
    for (auto _ : state) {
        benchmark::DoNotOptimize(qv::FormatLocaleDouble(out, 3.14159, L"%5.2e", L','));
        benchmark::DoNotOptimize(out.data());
    }
}
BENCHMARK(BM_FormatLocaleDouble);

// A 10 KB document: font and colour tables, paragraphs, escapes.
void BM_RtfToText10K(benchmark::State& state) {
    std::wstring rtf = L"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}{\\f1 Courier;}}{\\colortbl;\\red255\\green0\\blue0;}";
    while (rtf.size() < 10000) rtf += L"{\\b Gr\\'fc\\'dfe} aus M\\u252?nchen\\tab 12,50 \\u8364?\\par ";
    rtf += L"}";
    std::wstring text;
    for (auto _ : state) {
        benchmark::DoNotOptimize(qv::RtfToText(rtf, text));
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * rtf.size() * sizeof(wchar_t)));
}
BENCHMARK(BM_RtfToText10K);

}  // namespace
