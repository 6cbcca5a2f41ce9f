#include "quorvel/masks/numeric.h"

#include <cfloat>

#include "quorvel/common/boundary.h"
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

void XMaskIntegerEdit::SetIntMask() try {
    m_strMask = qv::DefaultNumericMask(NumberKind::UnsignedInteger);
    m_bMaskSet = 1;
} catch (...) {
    qv::CaughtAtEdge(" XMaskIntegerEdit::SetIntMask", __LINE__);
}

void XMaskIntegerEdit::SetComma(int digits) try {
    m_nDigits = digits;
    m_bLocaleDecimal = 0;
    m_strMask = qv::NumericMask(NumberKind::UnsignedInteger, digits, 0);
} catch (...) {
    qv::CaughtAtEdge(" XMaskIntegerEdit::SetComma", __LINE__);
}

unsigned int XMaskIntegerEdit::GetValue() try {
    return qv::ReadUnsignedValue(GetWindowText());
} catch (...) {
    return qv::CaughtAtEdge(" XMaskIntegerEdit::GetValue", __LINE__, 0u);
}

int XMaskIntegerEdit::SetValue(unsigned int value) try {
    return WriteValueText(std::to_wstring(value), value == 0);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskIntegerEdit::SetValue", __LINE__, 0);
}

bool XMaskIntegerEdit::CheckLimits(std::wstring& text) try {
    return qv::CheckUnsignedIntegerLimits(text, m_dLowerLimit, m_dUpperLimit);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskIntegerEdit::CheckLimits", __LINE__, true);
}

// ---- XMaskSignedIntegerEdit ------------------------------------------------------------

XMaskSignedIntegerEdit::XMaskSignedIntegerEdit() {
    SetSignedIntMask();
    SetLimits(-2147483648.0, 2147483647.0);
}

XMaskSignedIntegerEdit::XMaskSignedIntegerEdit(int digits) : XMaskSignedIntegerEdit() { SetComma(digits); }

void XMaskSignedIntegerEdit::SetSignedIntMask() try {
    m_strMask = qv::DefaultNumericMask(NumberKind::SignedInteger);
    m_bMaskSet = 1;
} catch (...) {
    qv::CaughtAtEdge(" XMaskSignedIntegerEdit::SetSignedIntMask", __LINE__);
}

void XMaskSignedIntegerEdit::SetComma(int digits) try {
    m_nDigits = digits;
    m_bLocaleDecimal = 0;
    m_strMask = qv::NumericMask(NumberKind::SignedInteger, digits, 0);
} catch (...) {
    qv::CaughtAtEdge(" XMaskSignedIntegerEdit::SetComma", __LINE__);
}

int XMaskSignedIntegerEdit::GetValue() try {
    return qv::ReadSignedValue(GetWindowText());
} catch (...) {
    return qv::CaughtAtEdge(" XMaskSignedIntegerEdit::GetValue", __LINE__, 0);
}

int XMaskSignedIntegerEdit::SetValue(int value) try {
    return WriteValueText(std::to_wstring(value), value == 0);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskSignedIntegerEdit::SetValue", __LINE__, 0);
}

bool XMaskSignedIntegerEdit::CheckLimits(std::wstring& text) try {
    return qv::CheckSignedIntegerLimits(text, m_dLowerLimit, m_dUpperLimit);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskSignedIntegerEdit::CheckLimits", __LINE__, true);
}

// ---- XMaskFloatEdit ---------------------------------------------------------------------

XMaskFloatEdit::XMaskFloatEdit() {
    SetFloatMask();
    m_bLocaleDecimal = 1;
    SetLimits(0.0, DBL_MAX);
}

XMaskFloatEdit::XMaskFloatEdit(int digits, int decimals) : XMaskFloatEdit() { SetComma(digits, decimals); }

void XMaskFloatEdit::SetFloatMask() try {
    m_strMask = qv::DefaultNumericMask(NumberKind::UnsignedDecimal);
    m_bMaskSet = 1;
} catch (...) {
    qv::CaughtAtEdge(" XMaskFloatEdit::SetFloatMask", __LINE__);
}

void XMaskFloatEdit::SetComma(int digits, int decimals) try {
    m_nDigits = digits;
    m_nDecimals = decimals;
    m_bLocaleDecimal = 1;
    m_strMask = qv::NumericMask(NumberKind::UnsignedDecimal, digits, decimals);
} catch (...) {
    qv::CaughtAtEdge(" XMaskFloatEdit::SetComma", __LINE__);
}

double XMaskFloatEdit::GetValue() try {
    return qv::ReadDecimalValue(GetWindowText(), kHostConversion);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskFloatEdit::GetValue", __LINE__, 0.0);
}

int XMaskFloatEdit::SetValue(double value) try {
    return WriteDecimalValue(value, m_nDecimals);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskFloatEdit::SetValue", __LINE__, 0);
}

bool XMaskFloatEdit::CheckLimits(std::wstring& text) try {
    return qv::CheckUnsignedDecimalLimits(text, m_dLowerLimit, m_dUpperLimit, kHostConversion);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskFloatEdit::CheckLimits", __LINE__, true);
}

void XMaskFloatEdit::TrimRight() try {
    const std::wstring trimmed = qv::TrimmedTrailingZeros(CurrentState().text);
    if (!Setup().Accepts(trimmed)) return;
    SendMessage(EM_SETSEL, 0, -1);
    ReplaceSel(trimmed.c_str(), false);
    SendMessage(EM_SETSEL, 0, 0);
} catch (...) {
    qv::CaughtAtEdge(" XMaskFloatEdit::TrimRight", __LINE__);
}

// ---- XMaskSignedFloatEdit ---------------------------------------------------------------

XMaskSignedFloatEdit::XMaskSignedFloatEdit() {
    SetSignedFloatMask();
    m_bLocaleDecimal = 1;
    SetLimits(-DBL_MAX / 2, DBL_MAX / 2);
}

XMaskSignedFloatEdit::XMaskSignedFloatEdit(int digits, int decimals) : XMaskSignedFloatEdit() { SetComma(digits, decimals); }

void XMaskSignedFloatEdit::SetSignedFloatMask() try {
    m_strMask = qv::DefaultNumericMask(NumberKind::SignedDecimal);
    m_bMaskSet = 1;
} catch (...) {
    qv::CaughtAtEdge(" XMaskSignedFloatEdit::SetSignedFloatMask", __LINE__);
}

void XMaskSignedFloatEdit::SetComma(int digits, int decimals) try {
    m_nDigits = digits;
    m_nDecimals = decimals;
    m_bLocaleDecimal = decimals > 0 ? 1 : 0;
    m_strMask = qv::NumericMask(NumberKind::SignedDecimal, digits, decimals);
} catch (...) {
    qv::CaughtAtEdge(" XMaskSignedFloatEdit::SetComma", __LINE__);
}

double XMaskSignedFloatEdit::GetValue() try {
    return qv::ReadDecimalValue(GetWindowText(), kHostConversion);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskSignedFloatEdit::GetValue", __LINE__, 0.0);
}

int XMaskSignedFloatEdit::SetValue(double value) try {
    return WriteDecimalValue(value, m_nDecimals);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskSignedFloatEdit::SetValue", __LINE__, 0);
}

bool XMaskSignedFloatEdit::CheckLimits(std::wstring& text) try {
    return qv::CheckSignedDecimalLimits(text, m_dLowerLimit, m_dUpperLimit, m_nDecimals, kHostConversion);
} catch (...) {
    return qv::CaughtAtEdge(" XMaskSignedFloatEdit::CheckLimits", __LINE__, true);
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
