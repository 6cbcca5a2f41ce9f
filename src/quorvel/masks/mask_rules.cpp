#include "quorvel/masks/mask_rules.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <limits>

#include "quorvel/common/charclass.h"
#include "quorvel/frame/number_text.h"
#include "quorvel/masks/pattern.h"

namespace qv {

namespace {

constexpr wchar_t kBackspace = 8;
constexpr wchar_t kTab = 9;
constexpr wchar_t kCtrlC = 3;
constexpr wchar_t kCtrlV = 0x16;
constexpr wchar_t kCtrlX = 0x18;

bool IsSeparator(wchar_t c) noexcept { return c == L'.' || c == L','; }
bool IsSign(wchar_t c) noexcept { return c == L'+' || c == L'-'; }
bool HoldsSeparator(std::wstring_view text) noexcept {
    return std::find_if(text.begin(), text.end(), IsSeparator) != text.end();
}

// The selection in order and inside the text, as the control sees it.
void ClampedSelection(const FieldState& s, int& start, int& end) noexcept {
    const int len = static_cast<int>(s.text.size());
    start = std::clamp(s.start, 0, len);
    end = std::clamp(s.end, 0, len);
    if (end < start) std::swap(start, end);
}

// Whether the zero at `at` (0, or 1 after a sign) is superfluous.
bool ZeroAtIsSuperfluous(bool maskHasSeparator, std::wstring_view text, size_t at, unsigned typed) {
    if (text.size() < at + 2 || text[at] != L'0') return false;
    const wchar_t next = text[at + 1];
    if (next == L'0') return true;
    if (!IsDigit(next)) return false;
    return (maskHasSeparator && HoldsSeparator(text)) || typed != L'0';
}

// Integer digits at the start of `text` after blanks and a sign, saturated
// at `limit`; `negative` tells the sign.
unsigned long long LeadingInteger(std::wstring_view text, unsigned long long limit, bool& negative) {
    size_t i = 0;
    while (i < text.size() && (text[i] == L' ' || text[i] == L'\t')) ++i;
    negative = i < text.size() && text[i] == L'-';
    if (i < text.size() && IsSign(text[i])) ++i;
    unsigned long long value = 0;
    for (; i < text.size() && IsDigit(text[i]); ++i) {
        const unsigned digit = static_cast<unsigned>(text[i] - L'0');
        value = value > (limit - digit) / 10 ? limit : value * 10 + digit;
    }
    return value;
}

// A limit cut to an integer inside [low, high].
long long CutLimit(double limit, long long low, long long high) {
    if (std::isnan(limit)) return low;
    const double t = std::trunc(limit);
    if (t <= static_cast<double>(low)) return low;
    if (t >= static_cast<double>(high)) return high;
    return static_cast<long long>(t);
}

// Shared by both integer checks: the value (saturated far beyond the
// field's range, so that a too long text fails) against the cut limits.
bool CheckIntegerLimits(std::wstring& text, double lower, double upper, long long low, long long high) {
    bool negative = false;
    const unsigned long long magnitude = LeadingInteger(text, 1ULL << 62, negative);
    const long long value = negative ? -static_cast<long long>(magnitude) : static_cast<long long>(magnitude);
    const long long lo = CutLimit(lower, low, high);
    const long long hi = CutLimit(upper, low, high);
    if (lo > value) {
        text = std::to_wstring(lo);
        return false;
    }
    if (value > hi) {
        text = std::to_wstring(hi);
        return false;
    }
    return true;
}

// Rounded to three significant digits the way "%5.2e" writes a value.
double ThreeDigits(double value) {
    std::wstring text;
    if (!FormatLocaleDouble(text, value, L"%5.2e", L'.')) return value;
    return LeadingNumber(text);
}

}  // namespace

bool MaskSetup::Accepts(const std::wstring& text) const {
    if (!parser) return false;
    int textPos = 0, maskPos = 0, depth = 0;
    return parser->CheckSyntax(text, mask, textPos, maskPos, depth) != 0;
}

std::wstring CandidateText(const FieldState& state, std::wstring_view inserted) {
    int start = 0, end = 0;
    ClampedSelection(state, start, end);
    std::wstring candidate;
    candidate.reserve(state.text.size() - static_cast<size_t>(end - start) + inserted.size());
    candidate.append(state.text, 0, static_cast<size_t>(start));
    candidate.append(inserted);
    candidate.append(state.text, static_cast<size_t>(end));
    return candidate;
}

int SuperfluousZero(const std::wstring& mask, std::wstring_view text, unsigned typed) {
    if (text.size() < 2) return -1;
    const bool maskHasSeparator = HoldsSeparator(mask);
    if (ZeroAtIsSuperfluous(maskHasSeparator, text, 0, typed)) return 0;
    if (IsSign(text[0]) && ZeroAtIsSuperfluous(maskHasSeparator, text, 1, typed)) return 1;
    return -1;
}

MaskEditPlan PlanChar(const MaskSetup& setup, const FieldState& state, wchar_t typed, wchar_t checked,
                      wchar_t separator) {
    MaskEditPlan plan;
    if (setup.localeDecimal && (typed == L',' || typed == L'.' || typed == L';')) {
        const wchar_t sep = separator ? separator : L'.';
        if (setup.Accepts(CandidateText(state, std::wstring_view(&sep, 1)))) {
            plan.text.assign(1, sep);
            plan.Add(MaskEditOp::Clear);
            plan.Add(MaskEditOp::ReplaceSel);
        }
        return plan;
    }
    if (typed == kCtrlC || typed == kCtrlV || typed == kCtrlX || typed == kTab) {
        plan.Add(MaskEditOp::PassOn);
        return plan;
    }
    int start = 0, end = 0;
    ClampedSelection(state, start, end);
    if (typed == kBackspace) {
        if (start == end) {
            if (start == 0) return plan;
            --start;
        }
        plan.Add(MaskEditOp::SetSel, start, end);
        plan.Add(MaskEditOp::Clear);
        plan.repairAfter = true;
        return plan;
    }
    if (!IsPrintable(typed)) return plan;
    const std::wstring candidate = CandidateText(state, std::wstring_view(&checked, 1));
    if (typed == L'0' && setup.zeroOut && SuperfluousZero(setup.mask, candidate, typed) >= 0) return plan;
    if (!setup.Accepts(candidate)) return plan;
    plan.Add(MaskEditOp::PassOn);
    plan.repairAfter = true;
    return plan;
}

MaskEditPlan PlanZeroRepair(const MaskSetup& setup, const FieldState& state, unsigned typed) {
    MaskEditPlan plan;
    size_t length = state.text.size();
    if (setup.zeroOut) {
        // Every zero that goes stands at the same place: at 0 the next digit
        // moves up and is no zero-after-sign case, after a sign the sign stays.
        const int at = SuperfluousZero(setup.mask, state.text, typed);
        if (at >= 0) {
            int removed = 0;
            std::wstring text = state.text;
            while (SuperfluousZero(setup.mask, text, typed) == at) {
                text.erase(static_cast<size_t>(at), 1);
                ++removed;
            }
            plan.Add(MaskEditOp::SetSel, at, at + removed);
            plan.Add(MaskEditOp::Clear);
            plan.Add(MaskEditOp::SetSel, at, at);
            length = text.size();
        }
    }
    if (length == 1) plan.Add(MaskEditOp::SetSel, 1, 1);
    return plan;
}

MaskEditPlan PlanDelete(const MaskSetup& setup, const FieldState& state) {
    MaskEditPlan plan;
    int start = 0, end = 0;
    ClampedSelection(state, start, end);
    if (start == end) end = std::min(end + 1, static_cast<int>(state.text.size()));
    if (start == end) return plan;
    if (!setup.Accepts(CandidateText(FieldState{state.text, start, end}, {}))) return plan;
    plan.Add(MaskEditOp::SetSel, start, end);
    plan.Add(MaskEditOp::Clear);
    return plan;
}

MaskEditPlan PlanPaste(const MaskSetup& setup, const FieldState& state, const std::wstring& clip) {
    MaskEditPlan plan;
    const std::wstring candidate = CandidateText(state, clip);
    if (!setup.Accepts(candidate)) return plan;
    int start = 0, end = 0;
    ClampedSelection(state, start, end);
    // Past the end on purpose: the control puts the caret at the end.
    const int caret = start + static_cast<int>(candidate.size());
    plan.text = clip;
    plan.Add(MaskEditOp::ReplaceSel);
    plan.Add(MaskEditOp::SetSel, caret, caret);
    return plan;
}

MaskEditPlan PlanCut(const MaskSetup& setup, const FieldState& state) {
    MaskEditPlan plan;
    int start = 0, end = 0;
    ClampedSelection(state, start, end);
    if (start == end || !setup.Accepts(CandidateText(state, {}))) return plan;
    plan.text = state.text.substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
    plan.Add(MaskEditOp::Clear);
    plan.Add(MaskEditOp::SetSel, start, start);
    return plan;
}

FieldState ApplyPlan(FieldState state, const MaskEditPlan& plan, wchar_t typed) {
    const auto replace = [&state](std::wstring_view inserted) {
        int start = 0, end = 0;
        ClampedSelection(state, start, end);
        state.text = CandidateText(state, inserted);
        state.start = state.end = start + static_cast<int>(inserted.size());
    };
    for (int i = 0; i < plan.count; ++i) {
        const MaskEditOp& op = plan.ops[i];
        switch (op.kind) {
        case MaskEditOp::SetSel: {
            const int len = static_cast<int>(state.text.size());
            // EM_SETSEL: a start of -1 removes the selection, an end of -1 means the end.
            if (op.start < 0) {
                state.start = state.end = std::clamp(state.end, 0, len);
                break;
            }
            const int end = op.end < 0 ? len : op.end;
            state.start = std::min(std::min(op.start, end), len);
            state.end = std::min(std::max(op.start, end), len);
            break;
        }
        case MaskEditOp::Clear: replace({}); break;
        case MaskEditOp::ReplaceSel: replace(plan.text); break;
        case MaskEditOp::PassOn: replace(std::wstring_view(&typed, 1)); break;
        }
    }
    return state;
}

void SwapDecimalSeparator(wchar_t* number, size_t length, wchar_t separator, bool toPoint) {
    const wchar_t from = toPoint ? separator : L'.';
    const wchar_t to = toPoint ? L'.' : separator;
    std::replace(number, number + length, from, to);
}

void SwapDecimalSeparator(char* number, size_t length, char separator, bool toPoint) {
    const char from = toPoint ? separator : '.';
    const char to = toPoint ? '.' : separator;
    std::replace(number, number + length, from, to);
}

// ---- Numeric fields ----------------------------------------------------------------

std::wstring DefaultNumericMask(NumberKind kind) {
    switch (kind) {
    case NumberKind::UnsignedInteger: return L"#?";
    case NumberKind::SignedInteger: return L"(+|-)#?";
    case NumberKind::UnsignedDecimal: return L"#?(.|,)(#?)(e#?)";
    case NumberKind::SignedDecimal: break;
    }
    return L"(+|-)#?(.|,)(#?)(e#?)";
}

std::wstring NumericMask(NumberKind kind, int digits, int decimals) {
    const std::wstring integer = L"#" + std::to_wstring(digits) + L"?";
    const std::wstring withDecimals = integer + L"(.|,)(#" + std::to_wstring(decimals) + L"?)(e#?)";
    switch (kind) {
    case NumberKind::UnsignedInteger: return integer;
    case NumberKind::SignedInteger: return L"(+|-)" + integer;
    case NumberKind::UnsignedDecimal: return withDecimals;
    case NumberKind::SignedDecimal: break;
    }
    return L"(+|-)" + (decimals > 0 ? withDecimals : integer);
}

bool SeparatorConversion::Parse(const std::wstring& text, double& value) const {
    return ParseLocaleDouble(text, m_separator, value);
}

bool SeparatorConversion::Format(std::wstring& text, double value, const std::wstring& format) const {
    return FormatLocaleDouble(text, value, format, m_separator);
}

bool SeparatorConversion::InRange(double lower, double upper, std::wstring& text) const {
    return CheckRangeText(lower, upper, text, m_separator);
}

double LeadingNumber(std::wstring_view text) {
    size_t i = 0;
    while (i < text.size() && (text[i] == L' ' || text[i] == L'\t')) ++i;
    bool negative = false;
    if (i < text.size() && IsSign(text[i])) negative = text[i++] == L'-';
    // Copy the longest prefix that is a number into a narrow buffer.
    std::string number;
    size_t digits = 0;
    for (; i < text.size() && IsDigit(text[i]); ++i, ++digits) number += static_cast<char>(text[i]);
    if (i < text.size() && text[i] == L'.') {
        number += '.';
        for (++i; i < text.size() && IsDigit(text[i]); ++i, ++digits) number += static_cast<char>(text[i]);
    }
    if (digits == 0) return 0.0;
    if (i + 1 < text.size() && (text[i] == L'e' || text[i] == L'E')) {
        size_t j = i + 1;
        std::string exponent = "e";
        if (IsSign(text[j])) exponent += static_cast<char>(text[j++]);
        if (j < text.size() && IsDigit(text[j])) {
            for (; j < text.size() && IsDigit(text[j]); ++j) exponent += static_cast<char>(text[j]);
            number += exponent;
        }
    }
    double value = 0.0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // Too large or too small for a double: which one, the exponent's sign tells.
        const size_t e = number.find('e');
        const bool tiny = e != std::string::npos && number.compare(e, 2, "e-") == 0;
        value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
    }
    return negative ? -value : value;
}

unsigned ReadUnsignedValue(std::wstring_view text) {
    bool negative = false;
    const unsigned long long value = LeadingInteger(text, UINT_MAX, negative);
    return negative ? 0u : static_cast<unsigned>(value);
}

int ReadSignedValue(std::wstring_view text) {
    bool negative = false;
    const unsigned long long magnitude = LeadingInteger(text, 1ULL + INT_MAX, negative);
    if (negative) return magnitude > static_cast<unsigned long long>(INT_MAX) ? INT_MIN : -static_cast<int>(magnitude);
    return magnitude > static_cast<unsigned long long>(INT_MAX) ? INT_MAX : static_cast<int>(magnitude);
}

double ReadDecimalValue(const std::wstring& text, const NumberConversion& conversion) {
    if (text.empty()) return 0.0;
    double value = 0.0;
    if (conversion.Parse(text, value)) return value;
    return LeadingNumber(text);
}

bool DecimalValueText(double value, int decimals, wchar_t separator, std::wstring& text) {
    if (value == 0.0) {
        text = L"0";
        return true;
    }
    const std::wstring format = L"%." + std::to_wstring(std::clamp(decimals, 0, 999)) + L"f";
    return FormatLocaleDouble(text, value, format, separator ? separator : L'.');
}

bool CheckUnsignedIntegerLimits(std::wstring& text, double lower, double upper) {
    return CheckIntegerLimits(text, lower, upper, 0, UINT_MAX);
}

bool CheckSignedIntegerLimits(std::wstring& text, double lower, double upper) {
    return CheckIntegerLimits(text, lower, upper, INT_MIN, INT_MAX);
}

bool CheckUnsignedDecimalLimits(std::wstring& text, double lower, double upper,
                                const NumberConversion& conversion) {
    const double value = ThreeDigits(ReadDecimalValue(text, conversion));
    double violated = 0.0;
    if (ThreeDigits(lower) > value) {
        violated = lower;
    } else if (value > ThreeDigits(upper)) {
        violated = upper;
    } else {
        return true;
    }
    std::wstring limit;
    if (conversion.Format(limit, violated, L"%g") || FormatLocaleDouble(limit, violated, L"%g", L'.')) text = limit;
    return false;
}

bool CheckSignedDecimalLimits(std::wstring& text, double lower, double upper, int decimals,
                              const NumberConversion& conversion) {
    std::wstring checked = text.empty() ? std::wstring(L"0") : text;
    if (conversion.InRange(lower, upper, checked)) return true;
    const size_t sep = text.find_first_of(L".,");
    if (sep != std::wstring::npos) {
        const size_t keep = decimals > 0 ? sep + 1 + static_cast<size_t>(decimals) : sep;
        if (keep < text.size()) text.resize(keep);
    }
    return false;
}

std::wstring TrimmedTrailingZeros(std::wstring_view text) {
    size_t n = text.size();
    while (n >= 2 && text[n - 1] == L'0' && text[n - 2] != L'.') --n;
    return std::wstring(text.substr(0, n));
}

}  // namespace qv
