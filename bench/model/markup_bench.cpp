// Model benchmarks of the tooltip mark-up: the measuring pass that sizes a
// tooltip and the drawing pass that paints it, over a 2 KB text using every
// tag, on a surface that costs next to nothing.
#include <benchmark/benchmark.h>

#include <string>

#include "quorvel/tooltip/markup.h"

namespace {

class NullSurface : public qv::MarkupSurface {
public:
    void UseFont(const qv::FontDesc&) override {}
    void RestoreFont() override {}
    qv::TipTextMetrics GetMetrics() override { return {16, 6}; }
    qv::TipSize MeasureText(std::wstring_view text) override { return {6 * static_cast<int>(text.size()), 16}; }
    void PutText(int x, int, std::wstring_view text) override { benchmark::DoNotOptimize(x + text.size()); }
    void SetTextColour(qv::ColourRef) override {}
    qv::ColourRef GetTextColour() override { return 0; }
    void SetBackColour(qv::ColourRef) override {}
    void SetBackMode(int) override {}
    void DrawHorzLine(int, int, int, qv::ColourRef) override {}
};

std::wstring EveryTagText() {
    std::wstring text;
    while (text.size() < 2048) {
        text += L"<al_l><b>Order</b> <i>number</i><t>4711 <u>open</u> <s>closed</s><br>"
                L"<al_c><ct=0xFF0000>Start</ct><t=2><cti=0x20>end</cti> a<<b<br=2>"
                L"<al_r><cb=0xC0FFC0>due</cb> <cbi=3>late</cbi><hr=40><hr=50%><hr><br>"
                L"<al>Press F1 for more info...<xyz><br>";
    }
    return text;
}

void RunPass(benchmark::State& state, bool measureOnly) {
    const std::wstring text = EveryTagText();
    NullSurface surface;
    qv::MarkupStyle style;
    qv::MarkupLines lines;
    const qv::TipRect rect{0, 0, 400, 2000};
    qv::PrintTitleString(surface, rect, text, true, style, lines);
    for (auto _ : state) {
        benchmark::DoNotOptimize(qv::PrintTitleString(surface, rect, text, measureOnly, style, lines));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size() * sizeof(wchar_t)));
}

void BM_MarkupMeasure2K(benchmark::State& state) { RunPass(state, true); }
BENCHMARK(BM_MarkupMeasure2K);

void BM_MarkupDraw2K(benchmark::State& state) { RunPass(state, false); }
BENCHMARK(BM_MarkupDraw2K);

}  // namespace
