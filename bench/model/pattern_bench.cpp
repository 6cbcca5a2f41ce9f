// The pattern checker runs after every keystroke, cut and paste of a masked
// field. Check on each built-in pattern for accepted and refused texts of
// growing length; std::wregex answering the same question for the signed
// decimal pattern is the reference point.
#include <benchmark/benchmark.h>

#include <regex>
#include <string>

#include "quorvel/masks/pattern.h"

namespace {

enum Builtin { UnsignedInt, SignedInt, UnsignedDecimal, AnySeparator, SignedDecimal, CommaMask52 };

const wchar_t* MaskOf(Builtin b) {
    switch (b) {
    case UnsignedInt: return L"#?";
    case SignedInt: return L"(+|-)#?";
    case UnsignedDecimal: return L"#?(.)(#?)";
    case AnySeparator: return L"#?(.|,)(#?)(e#?)";
    case SignedDecimal: return L"(+|-)#?(.|,)(#?)(e#?)";
    default: return L"#5?(.|,)(#2?)";
    }
}

// An accepted text of exactly `n` characters that uses every part of the
// pattern (n >= 8); the comma mask accepts at most 8 characters.
std::wstring AcceptedText(Builtin b, size_t n) {
    std::wstring head, tail;
    switch (b) {
    case SignedInt: head = L"-"; break;
    case UnsignedDecimal: tail = L".5"; break;
    case AnySeparator: tail = L",5e7"; break;
    case SignedDecimal: head = L"+"; tail = L".5e7"; break;
    case CommaMask52: return n == 8 ? L"12345,67" : std::wstring();
    default: break;
    }
    return head + std::wstring(n - head.size() - tail.size(), L'4') + tail;
}

// The same text with its last character made wrong: the refusal is found
// only at the end, the dearest place for the checker.
std::wstring RefusedText(Builtin b, size_t n) {
    std::wstring t = b == CommaMask52 ? std::wstring(n, L'4') : AcceptedText(b, n);
    t.back() = L'x';
    return t;
}

void BM_Check(benchmark::State& state, Builtin b, bool accepted) {
    const std::wstring mask = MaskOf(b);
    const size_t n = static_cast<size_t>(state.range(0));
    const std::wstring text = accepted ? AcceptedText(b, n) : RefusedText(b, n);
    if (text.empty()) {
        state.SkipWithError("no accepted text of this length");
        return;
    }
    XParserFactory* checker = XParserFactory::GetParserFactory();
    if (checker->Check(text, mask) != (accepted ? 1 : 0)) {
        state.SkipWithError("unexpected answer");
        return;
    }
    for (auto _ : state) benchmark::DoNotOptimize(checker->Check(text, mask));
    state.SetComplexityN(state.range(0));
}

// Prefix acceptance of the signed decimal pattern written as a regular
// expression: every prefix of an acceptable number is itself matched.
void BM_Wregex(benchmark::State& state, bool accepted) {
    const std::wregex re(L"[+-]?[0-9]*([.,][0-9]*)?(e[0-9]*)?");
    const size_t n = static_cast<size_t>(state.range(0));
    const std::wstring text = accepted ? AcceptedText(SignedDecimal, n) : RefusedText(SignedDecimal, n);
    for (auto _ : state) benchmark::DoNotOptimize(std::regex_match(text, re));
    state.SetComplexityN(state.range(0));
}

#define QV_SIZES ->Arg(8)->Arg(16)->Arg(64)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN)

BENCHMARK_CAPTURE(BM_Check, unsigned_int_ok, UnsignedInt, true) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, unsigned_int_refused, UnsignedInt, false) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, signed_int_ok, SignedInt, true) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, signed_int_refused, SignedInt, false) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, unsigned_decimal_ok, UnsignedDecimal, true) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, unsigned_decimal_refused, UnsignedDecimal, false) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, any_separator_ok, AnySeparator, true) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, any_separator_refused, AnySeparator, false) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, signed_decimal_ok, SignedDecimal, true) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, signed_decimal_refused, SignedDecimal, false) QV_SIZES;
BENCHMARK_CAPTURE(BM_Check, comma_mask_5_2_ok, CommaMask52, true)->Arg(8);
BENCHMARK_CAPTURE(BM_Check, comma_mask_5_2_refused, CommaMask52, false) QV_SIZES;
BENCHMARK_CAPTURE(BM_Wregex, signed_decimal_ok, true) QV_SIZES;
BENCHMARK_CAPTURE(BM_Wregex, signed_decimal_refused, false) QV_SIZES;

}  // namespace
