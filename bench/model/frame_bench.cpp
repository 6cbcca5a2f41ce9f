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

// Converts a document of about 10 KB made of `head`, `paragraph` repeated
// and a closing brace.
void ConvertRtf10K(benchmark::State& state, const wchar_t* head, const wchar_t* paragraph) {
    std::wstring rtf = head;
    while (rtf.size() < 10000) rtf += paragraph;
    rtf += L"}";
    std::wstring text;
    for (auto _ : state) {
        benchmark::DoNotOptimize(qv::RtfToText(rtf, text));
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * rtf.size() * sizeof(wchar_t)));
}

// Font and colour tables, paragraphs, escapes.
void BM_RtfToText10K(benchmark::State& state) {
    ConvertRtf10K(state, L"{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}{\\f1 Courier;}}{\\colortbl;\\red255\\green0\\blue0;}",
                  L"{\\b Gr\\'fc\\'dfe} aus M\\u252?nchen\\tab 12,50 \\u8364?\\par ");
}
BENCHMARK(BM_RtfToText10K);

// Japanese as the rich edit control writes it: every character a Shift-JIS
// pair of \'hh bytes in a font with charset 128.
void BM_RtfToTextShiftJis10K(benchmark::State& state) {
    ConvertRtf10K(state, L"{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fcharset128 MS Mincho;}}\\f0 ",
                  L"\\'82\\'a2\\'82\\'eb\\'82\\'cd\\'93\\'fa\\'96\\'7b\\'8c\\'ea\\'81\\'42\\par ");
}
BENCHMARK(BM_RtfToTextShiftJis10K);

}  // namespace
