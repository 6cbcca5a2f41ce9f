#include "quorvel/masks/numeric.h"

#include <cfloat>

#include "quorvel/common/charclass.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/masks/mask_rules.h"

namespace {

using qv::NumberKind;

// The host's conversions (String2Double, Double2String, CheckRange).
class HostConversion : public qv::NumberConversion {
public:
    bool Parse(const std::wstring& text, double& value) const override { return ::String2Double(text, value); }
    bool Format(std::wstring& text, double value, const std::wstring& format) const override {
        return ::Double2String(text, value, format);
    }
    bool InRange(double lower, double upper, std::wstring& text) const override {
        return ::CheckRange(lower, upper, text);
    }
};

const HostConversion kHostConversion;

// Lets a digit field's keystroke through to the edit, or swallows it.
template <class Accept>
bool Filter(UINT ch, Accept accept) {
    return ch == 8 || (ch <= 0xFFFF && accept(static_cast<wchar_t>(ch)));
}

bool IsHexDigit(wchar_t c) { return qv::IsDigit(c) || (c >= L'a' && c <= L'f') || (c >= L'A' && c <= L'F'); }

}  // namespace

// ---- XMaskIntegerEdit ------------------------------------------------------------------

XMaskIntegerEdit::XMaskIntegerEdit() {
    SetIntMask();
    SetLimits(0.0, 4294967295.0);
}

XMaskIntegerEdit::XMaskIntegerEdit(int digits) : XMaskIntegerEdit() { SetComma(digits); }

void XMaskIntegerEdit::SetIntMask() {
    m_strMask = qv::DefaultNumericMask(NumberKind::UnsignedInteger);
    m_bMaskSet = 1;
}

void XMaskIntegerEdit::SetComma(int digits) {
    m_nDigits = digits;
    m_bLocaleDecimal = 0;
    m_strMask = qv::NumericMask(NumberKind::UnsignedInteger, digits, 0);
}

unsigned int XMaskIntegerEdit::GetValue() { return qv::ReadUnsignedValue(GetWindowText()); }

int XMaskIntegerEdit::SetValue(unsigned int value) { return WriteValueText(std::to_wstring(value), value == 0); }

bool XMaskIntegerEdit::CheckLimits(std::wstring& text) {
    return qv::CheckUnsignedIntegerLimits(text, m_dLowerLimit, m_dUpperLimit);
}

// ---- XMaskSignedIntegerEdit ------------------------------------------------------------

XMaskSignedIntegerEdit::XMaskSignedIntegerEdit() {
    SetSignedIntMask();
    SetLimits(-2147483648.0, 2147483647.0);
}

XMaskSignedIntegerEdit::XMaskSignedIntegerEdit(int digits) : XMaskSignedIntegerEdit() { SetComma(digits); }

void XMaskSignedIntegerEdit::SetSignedIntMask() {
    m_strMask = qv::DefaultNumericMask(NumberKind::SignedInteger);
    m_bMaskSet = 1;
}

void XMaskSignedIntegerEdit::SetComma(int digits) {
    m_nDigits = digits;
    m_bLocaleDecimal = 0;
    m_strMask = qv::NumericMask(NumberKind::SignedInteger, digits, 0);
}

int XMaskSignedIntegerEdit::GetValue() { return qv::ReadSignedValue(GetWindowText()); }

int XMaskSignedIntegerEdit::SetValue(int value) { return WriteValueText(std::to_wstring(value), value == 0); }

bool XMaskSignedIntegerEdit::CheckLimits(std::wstring& text) {
    return qv::CheckSignedIntegerLimits(text, m_dLowerLimit, m_dUpperLimit);
}

// ---- XMaskFloatEdit ---------------------------------------------------------------------

XMaskFloatEdit::XMaskFloatEdit() {
    SetFloatMask();
    m_bLocaleDecimal = 1;
    SetLimits(0.0, DBL_MAX);
}

XMaskFloatEdit::XMaskFloatEdit(int digits, int decimals) : XMaskFloatEdit() { SetComma(digits, decimals); }

void XMaskFloatEdit::SetFloatMask() {
    m_strMask = qv::DefaultNumericMask(NumberKind::UnsignedDecimal);
    m_bMaskSet = 1;
}

void XMaskFloatEdit::SetComma(int digits, int decimals) {
    m_nDigits = digits;
    m_nDecimals = decimals;
    m_bLocaleDecimal = 1;
    m_strMask = qv::NumericMask(NumberKind::UnsignedDecimal, digits, decimals);
}

double XMaskFloatEdit::GetValue() { return qv::ReadDecimalValue(GetWindowText(), kHostConversion); }

int XMaskFloatEdit::SetValue(double value) {
    return WriteDecimalValue(value, m_nDecimals);
}

bool XMaskFloatEdit::CheckLimits(std::wstring& text) {
    return qv::CheckUnsignedDecimalLimits(text, m_dLowerLimit, m_dUpperLimit, kHostConversion);
}

void XMaskFloatEdit::TrimRight() {
    const std::wstring trimmed = qv::TrimmedTrailingZeros(CurrentState().text);
    if (!Setup().Accepts(trimmed)) return;
    SendMessage(EM_SETSEL, 0, -1);
    ReplaceSel(trimmed.c_str(), false);
    SendMessage(EM_SETSEL, 0, 0);
}

// ---- XMaskSignedFloatEdit ---------------------------------------------------------------

XMaskSignedFloatEdit::XMaskSignedFloatEdit() {
    SetSignedFloatMask();
    m_bLocaleDecimal = 1;
    SetLimits(-DBL_MAX / 2, DBL_MAX / 2);
}

XMaskSignedFloatEdit::XMaskSignedFloatEdit(int digits, int decimals) : XMaskSignedFloatEdit() { SetComma(digits, decimals); }

void XMaskSignedFloatEdit::SetSignedFloatMask() {
    m_strMask = qv::DefaultNumericMask(NumberKind::SignedDecimal);
    m_bMaskSet = 1;
}

void XMaskSignedFloatEdit::SetComma(int digits, int decimals) {
    m_nDigits = digits;
    m_nDecimals = decimals;
    m_bLocaleDecimal = decimals > 0 ? 1 : 0;
    m_strMask = qv::NumericMask(NumberKind::SignedDecimal, digits, decimals);
}

double XMaskSignedFloatEdit::GetValue() { return qv::ReadDecimalValue(GetWindowText(), kHostConversion); }

int XMaskSignedFloatEdit::SetValue(double value) {
    return WriteDecimalValue(value, m_nDecimals);
}

bool XMaskSignedFloatEdit::CheckLimits(std::wstring& text) {
    return qv::CheckSignedDecimalLimits(text, m_dLowerLimit, m_dUpperLimit, m_nDecimals, kHostConversion);
}

// ---- Digit fields -----------------------------------------------------------------------

void XNumberEdit::OnChar(UINT ch, UINT repCnt, UINT flags) {
    if (Filter(ch, qv::IsDigit)) XBaseEdit::OnChar(ch, repCnt, flags);
}

void XHEXEdit::OnChar(UINT ch, UINT repCnt, UINT flags) {
    if (Filter(ch, IsHexDigit)) XBaseEdit::OnChar(ch, repCnt, flags);
}

void XBinEdit::OnChar(UINT ch, UINT repCnt, UINT flags) {
    if (Filter(ch, [](wchar_t c) { return c == L'0' || c == L'1'; })) XBaseEdit::OnChar(ch, repCnt, flags);
}
