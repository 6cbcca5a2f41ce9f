// One keystroke of a signed decimal field in the text model alone: the plan
// for the typed character (with its pattern check), the edit carried out on
// the model state and the leading-zero repair after it. Text lengths up to
// the 64 characters of a long field; accepted digits, a refused letter and
// Backspace.
#include <benchmark/benchmark.h>

#include <string>

#include "quorvel/masks/mask_rules.h"
#include "quorvel/masks/pattern.h"

namespace {

void Keystroke(benchmark::State& state, wchar_t typed, bool accepted) {
    const std::wstring mask = L"(+|-)#?(.|,)(#?)(e#?)";
    const qv::MaskSetup setup(XParserFactory::GetParserFactory(), mask, true, true);
    // "-1234...,5678": sign, integer digits, separator, decimals.
    const size_t n = static_cast<size_t>(state.range(0));
    std::wstring text = L"-" + std::wstring(n / 2, L'7') + L",";
    text += std::wstring(n - 1 - text.size(), L'3');
    const qv::FieldState before{text, static_cast<int>(n - 1), static_cast<int>(n - 1)};
    for (auto _ : state) {
        const qv::MaskEditPlan plan = qv::PlanChar(setup, before, typed, typed, L',');
        qv::FieldState after = qv::ApplyPlan(before, plan, typed);
        if (plan.repairAfter) after = qv::ApplyPlan(after, qv::PlanZeroRepair(setup, after, typed));
        benchmark::DoNotOptimize(after);
    }
    const qv::MaskEditPlan plan = qv::PlanChar(setup, before, typed, typed, L',');
    if (plan.Empty() == accepted) state.SkipWithError("unexpected answer");
}

BENCHMARK_CAPTURE(Keystroke, digit, L'5', true)->Arg(8)->Arg(64);
BENCHMARK_CAPTURE(Keystroke, refused_letter, L'x', false)->Arg(8)->Arg(64);
BENCHMARK_CAPTURE(Keystroke, backspace, L'\b', true)->Arg(8)->Arg(64);

}  // namespace
