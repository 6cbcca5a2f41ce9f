// The text model of the masked fields, kept apart from any window so that it
// can be checked natively and fast.
//
// A masked field refuses every change of its text that its validation
// pattern would not accept. Each user action (a typed character, Backspace,
// Delete, cut, paste) is turned into the text it would produce; that text is
// checked, and the field carries the change out only if the check passes. A
// refused change leaves text and selection exactly as they were, without a
// beep or a message.
//
// The rules here look at a field's state (text and selection) and answer a
// plan: the edit operations the window class carries out on the real edit
// control, in order. The numeric fields add their patterns, their limit
// checks and the way they read and write values.
#pragma once

#include <string>
#include <string_view>

#include "quorvel/common/api.h"
#include "quorvel/controls/input_rules.h"

class XParserFactory;

namespace qv {

// What a masked field is set up with, as the rules see it: a view of the
// field's own members for the duration of one change.
struct QV_API MaskSetup {
    MaskSetup(XParserFactory* parserIn, const std::wstring& maskIn, bool localeDecimalIn, bool zeroOutIn) noexcept
        : parser(parserIn), mask(maskIn), localeDecimal(localeDecimalIn), zeroOut(zeroOutIn) {}

    // The shared checker; without one no change that needs a check is made.
    XParserFactory* parser;
    const std::wstring& mask;
    // A typed ',' '.' or ';' becomes the user's decimal separator.
    bool localeDecimal;
    // Superfluous leading zeros are refused or removed.
    bool zeroOut;

    // True when the pattern accounts for every character of `text`.
    bool Accepts(const std::wstring& text) const;
};

// One operation on the edit control.
struct MaskEditOp {
    enum Kind : unsigned char {
        SetSel,      // EM_SETSEL start, end (the control clamps)
        Clear,       // WM_CLEAR: delete the selection
        ReplaceSel,  // EM_REPLACESEL with the plan's text, not undoable
        PassOn,      // the typed character goes on to the edit control, which inserts it
    };
    Kind kind;
    int start;
    int end;
};

// What a field does with one change. An empty plan changes nothing.
struct QV_API MaskEditPlan {
    enum : int { kMaxOps = 4 };

    MaskEditOp ops[kMaxOps];
    int count = 0;
    // The text of ReplaceSel; for a cut, the text that goes to the clipboard.
    std::wstring text;
    // After a typed character or Backspace: read the field again and run the
    // leading-zero repair (PlanZeroRepair) on what it then holds.
    bool repairAfter = false;

    bool Empty() const noexcept { return count == 0; }
    void Add(MaskEditOp::Kind kind, int start = 0, int end = 0) noexcept {
        if (count < kMaxOps) ops[count++] = MaskEditOp{kind, start, end};
    }
};

// The text of `state` with its selection replaced by `inserted`.
QV_API std::wstring CandidateText(const FieldState& state, std::wstring_view inserted);

// Where a superfluous leading zero of `text` stands: 0 (a zero at the start
// before another digit), 1 (the same after a sign) or -1 (none). A zero is
// superfluous when it is followed by another zero; or by another digit when
// both the pattern and the text hold a decimal separator ('.' or ','); or by
// another digit when `typed` is not '0'. So typing 0 in front of 5 leaves
// "05" in an integer field, where 0 and then 5 give "5".
QV_API int SuperfluousZero(const std::wstring& mask, std::wstring_view text, unsigned typed);

// A typed character. `checked` is the character as the pattern sees it (the
// window class narrows it to the ANSI code page); `separator` is the user's
// decimal separator, used when the setup substitutes it for ',' '.' ';'.
// Control characters are refused, except Backspace, Tab (which moves the
// focus) and Ctrl+C, Ctrl+V, Ctrl+X, which go on to the control so that it
// copies, pastes or cuts through the field's own checked paths. Backspace is
// never checked against the pattern; with nothing selected at position 0 it
// does nothing.
QV_API MaskEditPlan PlanChar(const MaskSetup& setup, const FieldState& state, wchar_t typed, wchar_t checked,
                             wchar_t separator);

// After a typed character or Backspace was carried out: the superfluous
// leading zeros of `state` go (each time the caret stands where the zero
// was), and a field that then holds one character gets the caret after it.
QV_API MaskEditPlan PlanZeroRepair(const MaskSetup& setup, const FieldState& state, unsigned typed);

// Delete: the selection, or the character after the caret.
QV_API MaskEditPlan PlanDelete(const MaskSetup& setup, const FieldState& state);

// Paste of `clip` over the selection; the caret goes to the end.
QV_API MaskEditPlan PlanPaste(const MaskSetup& setup, const FieldState& state, const std::wstring& clip);

// Cut of the selection; the plan's text is what goes to the clipboard, and
// the operations are carried out only once the clipboard has it.
QV_API MaskEditPlan PlanCut(const MaskSetup& setup, const FieldState& state);

// What the edit control makes of `state` under `plan`; `typed` is what
// PassOn inserts. The control's clamping of selections is reproduced.
QV_API FieldState ApplyPlan(FieldState state, const MaskEditPlan& plan, wchar_t typed = 0);

// In place, every `separator` becomes '.' (toPoint) or every '.' becomes
// `separator`.
QV_API void SwapDecimalSeparator(wchar_t* number, size_t length, wchar_t separator, bool toPoint);
QV_API void SwapDecimalSeparator(char* number, size_t length, char separator, bool toPoint);

// ---- Numeric fields ----------------------------------------------------------------

enum class NumberKind { UnsignedInteger, SignedInteger, UnsignedDecimal, SignedDecimal };

// The pattern a numeric field starts with.
QV_API std::wstring DefaultNumericMask(NumberKind kind);
// The pattern for at most `digits` integer digits and `decimals` decimals.
// The unsigned decimal field keeps a separator even for 0 decimals; the
// signed one then allows none.
QV_API std::wstring NumericMask(NumberKind kind, int digits, int decimals);

// How a field reads and writes numbers in the user's locale. The Windows
// fields pass the host's conversions; tests pass a fixed separator.
class QV_API NumberConversion {
public:
    // A whole number text; false when it is not one.
    virtual bool Parse(const std::wstring& text, double& value) const = 0;
    // printf-style, with the locale's separator.
    virtual bool Format(std::wstring& text, double value, const std::wstring& format) const = 0;
    // True when the number in `text` lies in [lower, upper].
    virtual bool InRange(double lower, double upper, std::wstring& text) const = 0;

protected:
    ~NumberConversion() = default;
};

// The library's own conversions with a given decimal separator.
class QV_API SeparatorConversion : public NumberConversion {
public:
    explicit SeparatorConversion(wchar_t separator) noexcept : m_separator(separator) {}
    bool Parse(const std::wstring& text, double& value) const override;
    bool Format(std::wstring& text, double value, const std::wstring& format) const override;
    bool InRange(double lower, double upper, std::wstring& text) const override;

private:
    wchar_t m_separator;
};

// The number at the start of `text` ('.' as separator), as much of it as
// forms a number; 0 when none does. Too large a value is infinite.
QV_API double LeadingNumber(std::wstring_view text);

// The values the fields answer. Integers: leading blanks, a sign and the
// digits up to the first other character, saturated at the type's range;
// 0 without digits. Decimals: 0.0 for an empty text, else the locale
// conversion, else the leading number.
QV_API unsigned ReadUnsignedValue(std::wstring_view text);
QV_API int ReadSignedValue(std::wstring_view text);
QV_API double ReadDecimalValue(const std::wstring& text, const NumberConversion& conversion);

// The text SetValue writes into a decimal field: "0" for 0, else the value
// with `decimals` decimals and `separator` (0: keep '.'). False when the
// value cannot be written (not finite).
QV_API bool DecimalValueText(double value, int decimals, wchar_t separator, std::wstring& text);

// The limit checks made when a field is left. Each answers whether `text`
// passes and, when not, rewrites `text` to what the field then shows.
// Integers compare with the limits cut to integers of the field's type and
// write the violated limit. An empty text counts as 0, and so does a lone
// sign in the signed field (the value its GetValue answers).
QV_API bool CheckUnsignedIntegerLimits(std::wstring& text, double lower, double upper);
QV_API bool CheckSignedIntegerLimits(std::wstring& text, double lower, double upper);
// Value and limits are compared rounded to three significant digits, so a
// value that equals a limit at that precision passes (with limits 0 .. 1,
// "1.004" passes). The violated limit is written with "%g".
QV_API bool CheckUnsignedDecimalLimits(std::wstring& text, double lower, double upper,
                                       const NumberConversion& conversion);
// The locale range check; an empty text counts as 0, and a text that is
// not yet a number ("-", "1e") fails. On failure the text is cut after
// `decimals` characters behind its first separator (at the separator for
// 0), and otherwise left alone: the user corrects it.
QV_API bool CheckSignedDecimalLimits(std::wstring& text, double lower, double upper, int decimals,
                                     const NumberConversion& conversion);

// Trailing zeros dropped for as long as the character before is not '.':
// "1.500" gives "1.5", "2.0" stays, "0.000" gives "0.0" and "100" gives "1".
QV_API std::wstring TrimmedTrailingZeros(std::wstring_view text);

}  // namespace qv
