// Numeric entry fields.
//
// Four masked fields for numbers (unsigned and signed integers, unsigned and
// signed decimals): each installs its pattern, has default limits, reads and
// writes its value, and tests its limits when it is left, so that an
// out-of-range value shows "Value out of range" and keeps the focus. The
// decimal fields turn a typed ',' '.' or ';' into the user's decimal
// separator.
//
// Three simpler digit fields (decimal digits, hexadecimal digits, binary
// digits) filter single keystrokes only, without a pattern or limits.
//
// Every field has a colour-scheme variant (suffix Color).
#pragma once

#include <windows.h>

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/color.h"
#include "quorvel/masks/maskedit.h"

// Unsigned integer: pattern "#?" (or "#n?"), limits 0 .. 4294967295.
class QV_API XMaskIntegerEdit : public XMaskBaseEdit {
public:
    XMaskIntegerEdit();
    // At most `digits` digits.
    explicit XMaskIntegerEdit(int digits);

    void SetMask() override { SetIntMask(); }
    using XMaskBaseEdit::SetMask;
    void SetIntMask();
    void SetComma(int digits);

    // The text as an unsigned number (0 for an empty text).
    unsigned int GetValue();
    // Writes the value; 1 when done, 0 (field left empty) when the pattern
    // refuses it.
    int SetValue(unsigned int value);
    // Out of range: the text becomes the violated limit.
    bool CheckLimits(std::wstring& text) override;

protected:
    int m_nDigits = 0;    // 0: no count given (the default pattern)
    int m_nDecimals = 0;
};

// Signed integer: pattern "(+|-)#?" (or "(+|-)#n?"), limits -2147483648 ..
// 2147483647. A lone sign is accepted while typing.
class QV_API XMaskSignedIntegerEdit : public XMaskBaseEdit {
public:
    XMaskSignedIntegerEdit();
    explicit XMaskSignedIntegerEdit(int digits);

    void SetMask() override { SetSignedIntMask(); }
    using XMaskBaseEdit::SetMask;
    void SetSignedIntMask();
    void SetComma(int digits);

    int GetValue();
    int SetValue(int value);
    // Out of range: the text becomes the violated limit. An empty text and a
    // lone sign count as 0.
    bool CheckLimits(std::wstring& text) override;

protected:
    int m_nDigits = 0;
    int m_nDecimals = 0;
};

// Unsigned decimal: pattern "#?(.|,)(#?)(e#?)" (or "#n?(.|,)(#m?)(e#?)"),
// limits 0 .. the largest double. Limits are compared at three significant
// digits.
class QV_API XMaskFloatEdit : public XMaskBaseEdit {
public:
    // Any number of digits; SetValue writes six decimals.
    XMaskFloatEdit();
    explicit XMaskFloatEdit(int digits, int decimals);

    void SetMask() override { SetFloatMask(); }
    using XMaskBaseEdit::SetMask;
    void SetFloatMask();
    void SetComma(int digits, int decimals);

    // 0.0 for an empty text.
    double GetValue();
    // "0" for 0, else the value with the field's decimals and the user's
    // separator; 1 when done, 0 (field left empty) when refused.
    int SetValue(double value);
    // Out of range: the text becomes the violated limit ("%g").
    bool CheckLimits(std::wstring& text) override;
    // Drops trailing zeros ("1.500" -> "1.5", "100" -> "1"; only '.' stops
    // it) when the pattern accepts the result; the caret goes to 0.
    virtual void TrimRight();

protected:
    LRESULT OnGetText(WPARAM cchMax, LPARAM buffer) override { return AnswerGetText(cchMax, buffer); }  // WM_GETTEXT
    LRESULT OnSetText(WPARAM, LPARAM text) override { return AnswerSetText(text); }                     // WM_SETTEXT

    int m_nDigits = 0;
    int m_nDecimals = 6;
};

// Signed decimal: pattern "(+|-)#?(.|,)(#?)(e#?)" (or
// "(+|-)#n?(.|,)(#m?)(e#?)", "(+|-)#n?" for no decimals), limits
// -8.988465674311579e307 .. 8.988465674311579e307.
class QV_API XMaskSignedFloatEdit : public XMaskBaseEdit {
public:
    XMaskSignedFloatEdit();
    explicit XMaskSignedFloatEdit(int digits, int decimals);

    void SetMask() override { SetSignedFloatMask(); }
    using XMaskBaseEdit::SetMask;
    void SetSignedFloatMask();
    void SetComma(int digits, int decimals);

    double GetValue();
    int SetValue(double value);
    // The locale range check; an empty text counts as 0. On failure the text
    // is cut after the field's decimals and the user corrects it.
    bool CheckLimits(std::wstring& text) override;

protected:
    LRESULT OnGetText(WPARAM cchMax, LPARAM buffer) override { return AnswerGetText(cchMax, buffer); }  // WM_GETTEXT
    LRESULT OnSetText(WPARAM, LPARAM text) override { return AnswerSetText(text); }                     // WM_SETTEXT

    int m_nDigits = 0;
    int m_nDecimals = 6;
};

// Digit fields: single keystrokes filtered, Backspace let through, any
// other control character (Ctrl+C, Ctrl+V, Ctrl+X too) swallowed. A paste
// from the context menu is not filtered.
class QV_API XNumberEdit : public XBaseEdit {
public:
    XNumberEdit() : XBaseEdit({}, {}, {}) {}

protected:
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;  // WM_CHAR: 0-9
};

class QV_API XHEXEdit : public XBaseEdit {
public:
    XHEXEdit() : XBaseEdit({}, {}, {}) {}

protected:
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;  // WM_CHAR: 0-9, a-f, A-F
};

class QV_API XBinEdit : public XBaseEdit {
public:
    XBinEdit() : XBaseEdit({}, {}, {}) {}

protected:
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;  // WM_CHAR: 0, 1
};

namespace qv {

// The colour-scheme variant of a numeric or digit field: text RGB(8, 0, 0)
// on the system window colour, and the field's own constructors.
template <class Field>
class DefaultColorVariant : public ColorVariant<Field> {
public:
    DefaultColorVariant() : ColorVariant<Field>(kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}
    template <class... Args>
    explicit DefaultColorVariant(Args... args)
        : ColorVariant<Field>(kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW), args...) {}
};

}  // namespace qv

class QV_API XMaskIntegerEditColor : public qv::DefaultColorVariant<XMaskIntegerEdit> {
public:
    using DefaultColorVariant::DefaultColorVariant;
};
class QV_API XMaskSignedIntegerEditColor : public qv::DefaultColorVariant<XMaskSignedIntegerEdit> {
public:
    using DefaultColorVariant::DefaultColorVariant;
};
class QV_API XMaskFloatEditColor : public qv::DefaultColorVariant<XMaskFloatEdit> {
public:
    using DefaultColorVariant::DefaultColorVariant;
};
class QV_API XMaskSignedFloatEditColor : public qv::DefaultColorVariant<XMaskSignedFloatEdit> {
public:
    using DefaultColorVariant::DefaultColorVariant;
};
class QV_API XNumberEditColor : public qv::DefaultColorVariant<XNumberEdit> {};
class QV_API XHEXEditColor : public qv::DefaultColorVariant<XHEXEdit> {};
class QV_API XBinEditColor : public qv::DefaultColorVariant<XBinEdit> {};
