#include "quorvel/masks/placeholder.h"

#include "quorvel/common/boundary.h"
#include "quorvel/controls/base_keys.h"

XMaskEdit::XMaskEdit() : XBaseEdit() {}

void XMaskEdit::SetMask(const std::wstring& mask) try {
    SetWindowTextW(qv::PlaceholderTemplate(mask, m_chPlaceholder).c_str());
    m_strMask = mask;
    m_bMaskSet = 1;
} catch (...) {
    qv::CaughtAtEdge(" XMaskEdit::SetMask", __LINE__);
}

LRESULT XMaskEdit::OnInitControl(UINT, LPARAM lParam) {
    SetWindowTextW(reinterpret_cast<const wchar_t*>(lParam));
    return 0;
}

int XMaskEdit::IsCheckedChar(const std::wstring& text, const std::wstring& mask, std::wstring*) {
    return qv::IsCheckedChar(text, mask, m_chPlaceholder) ? 1 : 0;
}

void XMaskEdit::Update() {
    GetSel(m_nSelStart, m_nSelEnd);
    m_nLine = LineFromChar(m_nSelStart);
    const int lineStart = LineIndex(m_nLine);
    m_nLineLen = LineLength(lineStart);
    m_strText = GetLine(m_nLine);
    m_nCaret = m_nSelStart - lineStart;
    m_nMaskLen = static_cast<int>(m_strMask.size());
    m_nTextLen = static_cast<int>(m_strText.size());
}

qv::PlaceholderLine XMaskEdit::CurrentLine() const {
    const int lineStart = m_nSelStart - m_nCaret;
    return {m_strText, m_nCaret, m_nSelEnd - lineStart};
}

void XMaskEdit::Apply(const qv::PlaceholderAction& action) {
    const int lineStart = m_nSelStart - m_nCaret;
    switch (action.kind) {
    case qv::PlaceholderAction::kReplace:
        SetSel(lineStart + action.from, lineStart + action.to);
        ReplaceSel(action.text.c_str(), false);
        [[fallthrough]];
    case qv::PlaceholderAction::kMoveCaret:
        SetSel(lineStart + action.caret, lineStart + action.caret);
        break;
    default:
        break;
    }
}

void XMaskEdit::LocCursor() {
    Update();
    const int caret = qv::CaretAfterTyping(m_strText, m_strMask, m_nCaret);
    if (caret != m_nCaret) SetSel(m_nSelStart + 1, m_nSelStart + 1);
}

void XMaskEdit::OnChar(UINT ch, UINT repCnt, UINT flags) {
    // Without a mask there is no template to keep: the field types like
    // the base edit.
    if (!m_bMaskSet) {
        XBaseEdit::OnChar(ch, repCnt, flags);
        return;
    }
    // Tab still moves to the next field; the template is not touched.
    if (ch == VK_TAB) {
        qv::MoveFocusOnKey(m_hWnd, ch, false);
        return;
    }
    Update();
    if (ch == VK_BACK) {
        Apply(qv::BackspaceAction(CurrentLine(), m_strMask, m_chPlaceholder));
        return;
    }
    const qv::PlaceholderAction action =
        qv::TypedCharAction(CurrentLine(), m_strMask, m_chPlaceholder, static_cast<wchar_t>(ch));
    if (action.kind != qv::PlaceholderAction::kTypeOver) return;
    // The character replaces the one at the caret: that one goes, and the
    // base edit inserts the typed one in its place (with its own length
    // limit and restriction), then the caret skips a literal.
    const int lineStart = m_nSelStart - m_nCaret;
    SetSel(lineStart + action.from, lineStart + action.to);
    Clear();
    XBaseEdit::OnChar(ch, repCnt, flags);
    LocCursor();
}

void XMaskEdit::OnKeyDown(UINT vk, UINT repCnt, UINT flags) {
    if (!m_bMaskSet) {
        XBaseEdit::OnKeyDown(vk, repCnt, flags);
        return;
    }
    Update();
    // Shift+Insert would paste and Ctrl+Insert copy; Insert is dropped in
    // every combination.
    if (vk == VK_INSERT) return;
    // Delete (also Shift+Delete, which would cut) only puts placeholders back.
    if (vk == VK_DELETE) {
        Apply(qv::DeleteAction(CurrentLine(), m_strMask, m_chPlaceholder));
        return;
    }
    XBaseEdit::OnKeyDown(vk, repCnt, flags);
}

void XMaskEdit::OnContextMenu(HWND wnd, POINT pt) {
    // The edit control's own menu offers Undo, Cut, Paste and Delete, none
    // of which keeps the template: a masked field has no menu.
    if (m_bMaskSet) return;
    XBaseEdit::OnContextMenu(wnd, pt);
}
