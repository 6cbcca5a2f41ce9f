// XMaskBaseEdit: a single-line edit that refuses every change of its text
// that its validation pattern would not accept.
//
// Typed characters, Backspace, Delete, cut and paste are each turned into the
// text they would produce; the change is made only if the pattern accepts
// that text (the rules are in masks/mask_rules.h). A refused change leaves
// text and selection as they were, silently. On top of that the field drops
// superfluous leading zeros, can turn a typed ',' '.' or ';' into the user's
// decimal separator, and keeps a lower and an upper limit that the numeric
// fields test when the field is left: a value that fails shows the box
// "Value out of range" and the focus stays in the field, with the repaired
// text selected, until the value passes.
//
// All masked fields share one pattern checker: the first field made creates
// it, the last one destroyed deletes it, and the next field creates it again.
#pragma once

#include <windows.h>

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/color.h"
#include "quorvel/controls/input_rules.h"

class XParserFactory;

namespace qv {
struct MaskSetup;
struct MaskEditPlan;
}  // namespace qv

class QV_API XMaskBaseEdit : public XBaseEdit {
public:
    // The pattern "#?(.)(#?)": digits, then optionally '.' and decimals.
    XMaskBaseEdit();
    // The caller's pattern.
    explicit XMaskBaseEdit(const std::wstring& mask);
    ~XMaskBaseEdit() override;

    // Both Create forms of XBaseEdit (Create(text, id, rect, font, parent) and
    // Create(style, rect, parent, id)) make the field; a text given there is
    // taken as it is, without a check.

    // The default pattern "#?(.)(#?)".
    virtual void SetMask();
    virtual void SetMask(const std::wstring& mask);
    const std::wstring& GetMask() const noexcept { return m_strMask; }

    void SetLimits(double lower, double upper) noexcept {
        m_dLowerLimit = lower;
        m_dUpperLimit = upper;
    }
    double GetLowerLimit() const noexcept { return m_dLowerLimit; }
    double GetUpperLimit() const noexcept { return m_dUpperLimit; }

    // Whether `text` is a value the field may be left with. Always here; the
    // numeric fields test their limits and, on failure, rewrite `text` to
    // what the field shows instead. A check that cannot be made (no memory)
    // lets the text be.
    virtual bool CheckLimits(std::wstring& text);

    // The next loss of focus shows "Value out of range" (once), even for a
    // valid value, and keeps the focus.
    void SetDisplayError(bool display) noexcept { m_bDisplayError = display; }

    // The field's state: its text, the selected text, the selection and the
    // start of the line (always 0: the field has one line).
    void Update(std::wstring& text, std::wstring& selText, int& selStart, int& selEnd, int& lineStart);
    // The leading-zero rule. Mode 1 tests `text` as a candidate and answers 0
    // when it would keep a superfluous zero; mode 0 reads the field and
    // removes its superfluous zeros. 1 otherwise (and always when the rule
    // is switched off).
    int ZeroOut(std::wstring& text, std::wstring& selText, int selStart, int selEnd, int lineStart, unsigned nChar,
                int mode);

    // Number of live masked fields that hold the shared checker.
    static unsigned GetParserCount() noexcept { return m_uiParserCount; }

protected:
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;   // WM_CHAR
    void OnKeyDown(UINT vk, UINT repCnt, UINT flags) override;  // WM_KEYDOWN: Delete
    void OnKillFocus(HWND newFocus) override;                 // WM_KILLFOCUS: the limits
    LRESULT OnPaste(WPARAM wp, LPARAM lp) override;           // WM_PASTE
    LRESULT OnCut(WPARAM wp, LPARAM lp) override;             // WM_CUT

    // The clipboard's text over the selection, if the pattern accepts the
    // result. 0 when the clipboard holds no text or cannot be opened, else 1.
    int ManagePaste();
    // The selection to the clipboard and out of the field, if the pattern
    // accepts what remains. Only when the clipboard already holds text; the
    // selection goes there as 8-bit text (CF_TEXT) of its character count
    // plus 2 bytes, taken from the wide text, without emptying the
    // clipboard first: so a host reading CF_TEXT gets the first character
    // of an ASCII selection.
    int ManageCut();

    // In place: the user's decimal separator becomes '.' (toPoint) or the
    // reverse. A separator that cannot be read is reported in a box.
    void SetDecimalLocale(wchar_t* number, bool toPoint);
    void SetDecimalLocale(char* number, bool toPoint);

    // The field's text and selection (Update without the rest).
    qv::FieldState CurrentState();
    // The rules' view of this field.
    qv::MaskSetup Setup() const;
    // Carries out a plan on the control; PassOn hands `ch` to XBaseEdit.
    void Run(const qv::MaskEditPlan& plan, UINT ch, UINT repCnt, UINT flags);
    // Empties the field and writes a value's text: at once when `unchecked`,
    // else only when the pattern accepts it. 1 when written.
    int WriteValueText(const std::wstring& text, bool unchecked);
    // SetValue of the decimal fields: "0" for 0, else the value with
    // `decimals` decimals and the user's separator, if the pattern takes it.
    int WriteDecimalValue(double value, int decimals);
    // WM_GETTEXT of the decimal fields: the field's line, at most cchMax - 1
    // characters and a terminating zero; 0 without a window, room or buffer.
    LRESULT AnswerGetText(WPARAM cchMax, LPARAM buffer);
    // WM_SETTEXT of the decimal fields: the text replaces the selection.
    LRESULT AnswerSetText(LPARAM text);
    // The error box of a locale call that failed: `where`, a line break and
    // the system's text for the last error; caption "Error in Quorvel".
    static void ShowLocaleFailure(const wchar_t* where);

    // Not read by the field itself; kept so that the members that follow
    // stay where hosts built against the class expect them. Always 1.
    int m_nReserved = 1;
    double m_dUpperLimit = 0.0;
    double m_dLowerLimit = 0.0;
    std::wstring m_strMask;
    int m_bMaskSet = 0;
    XParserFactory* m_pParser = nullptr;
    // 1: a typed ',' '.' or ';' becomes the locale's decimal separator.
    int m_bLocaleDecimal = 0;
    // 1: superfluous leading zeros are refused or removed.
    int m_bZeroOut = 1;
    bool m_bDisplayError = false;
    static unsigned int m_uiParserCount;

private:
    void InitMaskedit(const std::wstring& mask);
};

// Colour-scheme variant: text RGB(8, 0, 0) on the system window colour.
class QV_API XMaskBaseEditColor : public qv::ColorVariant<XMaskBaseEdit> {
public:
    XMaskBaseEditColor() : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}
    explicit XMaskBaseEditColor(const std::wstring& mask)
        : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW), mask) {}
};
