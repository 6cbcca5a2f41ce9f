// The placeholder mask edit XMaskEdit and its colour-scheme variant.
//
// A fixed-layout entry field for codes, numbers with separators and the
// like: the mask is shown as a template in which every input position holds
// a placeholder ('_' unless the host chooses another) and every other mask
// character stands as a literal. '#' takes a digit 0-9, '*' any printable
// character. The user types over the placeholders; literals cannot be
// changed and the caret skips one of them after each typed character;
// Backspace and Delete put placeholders back instead of removing
// characters, so the template never shifts. Cut, paste and the edit
// control's context menu are not available. Refused keys are dropped
// silently: text and selection stay as they were, with no beep and no
// message.
//
// The rules themselves are in masks/placeholder_rules.h.
#pragma once

#include <windows.h>

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/masks/placeholder_rules.h"

class QV_API XMaskEdit : public XBaseEdit {
public:
    // No mask yet: until SetMask the field types like an XBaseEdit.
    XMaskEdit();

    // Shows the template of `mask` (through SetWindowTextW, so the length
    // limit applies) with the caret at its start, and from then on enforces
    // it. The template needs the window: call it after Create or after
    // attaching to a dialog item. Called earlier, only the mask is kept and
    // the field stays empty, which takes no typing until SetMask is called
    // again on the window.
    virtual void SetMask(const std::wstring& mask);
    // The placeholder of the next SetMask; a template already shown keeps
    // its placeholders, so call it before SetMask.
    void SetPlaceholder(wchar_t c) noexcept { m_chPlaceholder = c; }

    // Writes the text at `lParam` (a null-terminated string; null: empty)
    // through SetWindowTextW and answers 0. No message is routed here: a
    // host that initialises its fields by a message of its own calls it
    // from its handler.
    LRESULT OnInitControl(UINT, LPARAM lParam);

protected:
    // 1 when `text` fits `mask` position by position with the current
    // placeholder, else 0. `pExtra` is not used.
    int IsCheckedChar(const std::wstring& text, const std::wstring& mask, std::wstring* pExtra);
    // Reads the selection and the caret's line into the members below.
    void Update();
    // After a typed character: moves the caret over one literal.
    void LocCursor();
    // The answer to WM_CUT and WM_PASTE: 0, and nothing done.
    LRESULT VoidRoutine(WPARAM, LPARAM) { return 0; }

    LRESULT OnCut(WPARAM wp, LPARAM lp) override { return VoidRoutine(wp, lp); }  // WM_CUT
    LRESULT OnPaste(WPARAM wp, LPARAM lp) override { return VoidRoutine(wp, lp); }  // WM_PASTE
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;                         // WM_CHAR
    void OnKeyDown(UINT vk, UINT repCnt, UINT flags) override;                      // WM_KEYDOWN
    void OnContextMenu(HWND wnd, POINT pt) override;                                // WM_CONTEXTMENU

    // Refreshed by Update before each use; positions as EM_GETSEL gives them
    // except m_nCaret, which counts from the start of the caret's line.
    int m_nTextLen = 0;
    int m_nCaret = 0;
    int m_nLineLen = 0;
    int m_nMaskLen = 0;
    std::wstring m_strText;
    int m_nLine = 0;
    int m_nSelEnd = 0;
    int m_nSelStart = 0;

    std::wstring m_strMask;
    int m_bMaskSet = 0;
    wchar_t m_chPlaceholder = qv::kDefaultPlaceholder;

private:
    // The caret's line as the rules take it (positions within the line).
    qv::PlaceholderLine CurrentLine() const;
    // Carries out a move or a replacement; a typed character is inserted by
    // OnChar itself.
    void Apply(const qv::PlaceholderAction& action);
};

// Colour-scheme variant: text RGB(8, 0, 0) on the system window colour
// until the host sets its own colours.
class QV_API XMaskEditColor : public qv::ColorVariant<XMaskEdit> {
public:
    XMaskEditColor() : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}
};
