// The value-added control's model with 500 entries (25 groups of 19
// children): reading the value string into the records, making the rows'
// texts, writing the string, and one edit decided and rolled up.
#include <benchmark/benchmark.h>

#include <string>

#include "quorvel/valueadded/value_added_rules.h"

namespace {

namespace va = qv::valueadded;

va::Config Plan500() {
    va::Config plan;
    for (int g = 1; g <= 25; ++g) {
        va::ConfigGroup group{g, L"Group " + std::to_wstring(g), {}};
        for (int c = 1; c <= 19; ++c) group.children.push_back({g * 100 + c, L"Step " + std::to_wstring(c), true});
        plan.push_back(std::move(group));
    }
    return plan;
}

std::wstring Value500(const va::Config& plan) {
    va::EntryMap entries = va::BlankEntries(plan);
    for (auto& [code, entry] : entries)
        if (entry.PID) entry.PE = 0.2, entry.TE = 7.2;
    return va::WriteValueString(entries);
}

void BM_SetValueModel500(benchmark::State& state) {
    const va::Config plan = Plan500();
    const std::wstring value = Value500(plan);
    for (auto _ : state) {
        va::EntryMap entries = va::BlankEntries(plan);
        benchmark::DoNotOptimize(va::ParseValueString(value, entries));
        auto rows = va::BuildRows(plan, entries, 3600.0, 2, 2, true, L"Not Assigned");
        benchmark::DoNotOptimize(rows.data());
    }
    state.SetLabel(std::to_string(value.size()) + " chars");
}
BENCHMARK(BM_SetValueModel500);

void BM_GetValueModel500(benchmark::State& state) {
    const va::Config plan = Plan500();
    va::EntryMap entries = va::BlankEntries(plan);
    va::ParseValueString(Value500(plan), entries);
    for (auto _ : state) benchmark::DoNotOptimize(va::WriteValueString(entries));
}
BENCHMARK(BM_GetValueModel500);

void BM_EditWithRollUp500(benchmark::State& state) {
    const va::Config plan = Plan500();
    va::EntryMap entries = va::BlankEntries(plan);
    va::ParseValueString(Value500(plan), entries);
    const va::EntryCode code = va::MakeEntryCode(13, 1305);
    double value = 0.1;
    for (auto _ : state) {
        value = value == 0.1 ? 0.15 : 0.1;
        if (va::DecideEdit(entries, code, value, plan) == va::EditOutcome::Accepted)
            va::ApplyEdit(entries, code, value, 3600.0);
        benchmark::DoNotOptimize(entries);
    }
}
BENCHMARK(BM_EditWithRollUp500);

}  // namespace
