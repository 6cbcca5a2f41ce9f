#include "quorvel/lists/custom_combo.h"

#include <algorithm>

#include "quorvel/common/boundary.h"
#include "quorvel/lists/filter_rules.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/tooltip/markup.h"

namespace ql = qv::lists;

// The edit part of the combo box: relays its mouse messages to the combo
// box's tooltip, and tells a reader what the field is for: it has no label
// of its own, so it takes the combo box's name and description.
class XCustomCombo::EditPart : public qv::Window, public virtual qv::AccessibleSource {
public:
    explicit EditPart(XCustomCombo& combo) : m_combo(combo) {}

    bool AccessibleName(long child, std::wstring& name) override {
        if (child != CHILDID_SELF || !m_combo.IsWindow()) return false;
        name = qv::AccessibleLabelOf(m_combo.m_hWnd);
        return !name.empty();
    }
    bool AccessibleDescription(long child, std::wstring& description) override {
        return child == CHILDID_SELF && m_combo.AccessibleDescription(child, description);
    }

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
        m_combo.RelayOwnMessage(m_hWnd, msg, wp, lp);
        return qv::Window::WindowProc(msg, wp, lp);
    }

private:
    XCustomCombo& m_combo;
};

XCustomCombo::XCustomCombo() : m_scheme(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}

XCustomCombo::~XCustomCombo() {
    // Our WM_DESTROY (the tooltip) must still be reached.
    if (OwnsWindow() && IsWindow()) DestroyWindow();
}

BOOL XCustomCombo::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) try {
    if (!parent || !::IsWindow(parent)) return FALSE;
    if (!CreateEx(WS_EX_CLIENTEDGE, L"COMBOBOX", text.c_str(), kStyle, rect, parent, id)) return FALSE;
    SetFont(font, true);
    if (!text.empty()) ::SetWindowTextW(m_hWnd, text.c_str());
    if (m_tooltipText.empty()) m_tooltipText = text;
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    if (::GetComboBoxInfo(m_hWnd, &info) && info.hwndItem && info.hwndItem != m_hWnd) {
        m_editPart = std::make_unique<EditPart>(*this);
        m_editPart->Attach(info.hwndItem);
    }
    return CreateTooltip() != 0;
} catch (...) {
    return qv::CaughtAtEdge(" XCustomCombo::Create", __LINE__, FALSE);
}

int XCustomCombo::CreateTooltip() try {
    return CreateFieldTooltip(m_hWnd, m_tooltipText);
} catch (...) {
    return qv::CaughtAtEdge(" XCustomCombo::CreateTooltip", __LINE__, 0);
}

int XCustomCombo::CreateTooltip(const std::wstring& markup) try {
    m_tooltipText = markup;
    return CreateFieldTooltip(m_hWnd, m_tooltipText);
} catch (...) {
    return qv::CaughtAtEdge(" XCustomCombo::CreateTooltip", __LINE__, 0);
}

int XCustomCombo::AddEntry(const std::wstring& text, DWORD value) try {
    m_texts.push_back(text);
    m_lowered.push_back(ql::ToLowerFilterText(text));
    m_values.push_back(value);
    if (!m_showsAll || !IsWindow()) return -1;
    // Straight to the list, as a refill does: hosts add thousands.
    const HWND list = DroppedList();
    const int index = static_cast<int>(list ? ::SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()))
                                            : AddString(text.c_str()));
    if (index < 0) return -1;
    if (list) ::SendMessageW(list, LB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(value));
    else SetItemData(index, value);
    m_shown.push_back(m_texts.size() - 1);
    return index;
} catch (...) {
    return qv::CaughtAtEdge(" XCustomCombo::AddEntry", __LINE__, -1);
}

void XCustomCombo::DeleteAll() {
    if (IsWindow()) ResetContent();
    m_shown.clear();
    m_showsAll = m_texts.empty();
}

void XCustomCombo::FilterList(const std::wstring& pattern) try {
    ShowEntries(ql::FilterEntries(m_lowered, pattern));
} catch (...) {
    qv::CaughtAtEdge(" XCustomCombo::FilterList", __LINE__);
}

HWND XCustomCombo::DroppedList() const {
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    return ::GetComboBoxInfo(m_hWnd, &info) ? info.hwndList : nullptr;
}

void XCustomCombo::ShowEntries(const std::vector<size_t>& indexes) {
    if (!IsWindow()) {
        m_shown.clear();
        return;
    }
    // Typing on often keeps what is shown (the first letters of a long
    // list): then the list stays as it is, with its selection.
    if (indexes == m_shown && GetCount() == static_cast<int>(m_shown.size())) return;
    m_shown.clear();
    // The refill talks to the dropped list itself, around the combo box:
    // each message through the combo box would pass its window procedure
    // and ours, for thousands of entries. One repaint for the whole refill,
    // and the storage reserved at once.
    const HWND list = DroppedList();
    const auto send = [&](UINT lbMsg, UINT cbMsg, WPARAM wp, LPARAM lp) {
        return list ? ::SendMessageW(list, lbMsg, wp, lp) : SendMessage(cbMsg, wp, lp);
    };
    // Only the list is refilled: its redraw alone is held.
    if (list) ::SendMessageW(list, WM_SETREDRAW, FALSE, 0);
    else SendMessage(WM_SETREDRAW, FALSE);
    // An item with a value is announced to the combo box (WM_DELETEITEM)
    // when removed, one message per item that the combo box passes on to
    // its parent; without values the list is emptied at once.
    const int count = GetCount();
    for (int i = 0; i < count; ++i) send(LB_SETITEMDATA, CB_SETITEMDATA, static_cast<WPARAM>(i), 0);
    send(LB_RESETCONTENT, CB_RESETCONTENT, 0, 0);
    size_t chars = 0;
    for (size_t i : indexes) chars += m_texts[i].size() + 1;
    send(LB_INITSTORAGE, CB_INITSTORAGE, indexes.size(), static_cast<LPARAM>(chars * sizeof(wchar_t)));
    m_shown.reserve(indexes.size());
    for (size_t i : indexes) {
        const LRESULT index = send(LB_ADDSTRING, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(m_texts[i].c_str()));
        if (index < 0) break;
        send(LB_SETITEMDATA, CB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(m_values[i]));
        m_shown.push_back(i);
    }
    m_showsAll = m_shown.size() == m_texts.size();
    if (list) {
        ::SendMessageW(list, WM_SETREDRAW, TRUE, 0);
        ::InvalidateRect(list, nullptr, TRUE);
    } else {
        SendMessage(WM_SETREDRAW, TRUE);
        Invalidate();
    }
}

bool XCustomCombo::TokenizeString(const std::wstring& pattern, std::vector<std::wstring>& tokens,
                                  std::vector<int>& types) {
    std::vector<ql::FilterToken> parts;
    const bool wildcard = ql::TokenizeString(pattern, parts);
    tokens.clear();
    types.clear();
    for (ql::FilterToken& p : parts) {
        types.push_back(p.type);
        tokens.push_back(std::move(p.text));
    }
    return wildcard;
}

bool XCustomCombo::CompareTokenToString(const std::vector<std::wstring>& tokens, const std::vector<int>& types,
                                        const std::wstring& text) {
    std::vector<ql::FilterToken> parts;
    const size_t n = (std::min)(tokens.size(), types.size());
    parts.reserve(n);
    for (size_t i = 0; i < n; ++i) parts.push_back({types[i], tokens[i]});
    return ql::CompareTokenToString(parts, text);
}

bool XCustomCombo::AccessibleDescription(long child, std::wstring& description) {
    if (child != CHILDID_SELF || m_tooltipText.empty()) return false;
    description = qv::MarkupPlainText(m_tooltipText);
    return true;
}

void XCustomCombo::SetTextColor(unsigned long colour) { m_scheme.SetText(m_hWnd, colour); }
void XCustomCombo::SetBkColor(unsigned long colour) { m_scheme.SetBk(m_hWnd, colour); }

LRESULT XCustomCombo::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    RelayOwnMessage(m_hWnd, msg, wp, lp);
    switch (msg) {
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
        // The edit part and the dropped list ask the combo box itself, which
        // would pass them on to its parent naming the part: answered here.
        if (HBRUSH brush = OnReflectCtlColor(reinterpret_cast<HDC>(wp), msg))
            return reinterpret_cast<LRESULT>(brush);
        break;
    default:
        break;
    }
    return qv::ComboBox::WindowProc(msg, wp, lp);
}

HBRUSH XCustomCombo::OnReflectCtlColor(HDC dc, UINT) { return m_scheme.Apply(dc); }

bool XCustomCombo::OnReflectCommand(UINT notifyCode) {
    // The parent is told as well.
    if (notifyCode == CBN_EDITUPDATE) OnCbnEditupdate();
    else if (notifyCode == CBN_DROPDOWN) OnCbnDropdown();
    return false;
}

void XCustomCombo::OnCbnEditupdate() try {
    // Putting the text back and dropping the list notify again; those
    // notifications are ours.
    if (m_updating) return;
    m_updating = true;
    struct Reset { bool& flag; ~Reset() { flag = false; } } reset{m_updating};

    const std::wstring typed = GetWindowText();
    ShowDropDown(true);
    if (typed.empty()) {
        if (!m_showsAll || GetCount() != static_cast<int>(m_texts.size())) {
            std::vector<size_t> all(m_texts.size());
            for (size_t i = 0; i < all.size(); ++i) all[i] = i;
            ShowEntries(all);
        }
        return;
    }
    FilterList(ql::ToLowerFilterText(typed));
    SetWindowText(typed.c_str());
    const int end = static_cast<int>(typed.size());
    SetEditSel(end, end);
} catch (...) {
    qv::CaughtAtEdge(" XCustomCombo::OnCbnEditupdate", __LINE__);
}

void XCustomCombo::OnCbnDropdown() try {
    const int rows = SizeDroppedList();
    // The list keeps its height: blank entries fill it up.
    for (int n = ql::FillerCount(GetCount(), rows); n > 0; --n) AddString(L" ");
} catch (...) {
    qv::CaughtAtEdge(" XCustomCombo::OnCbnDropdown", __LINE__);
}

void XCustomCombo::OnDpiChanged(UINT) try {
    if (m_droppedSized && IsWindow()) SizeDroppedList();
} catch (...) {
    qv::CaughtAtEdge(" XCustomCombo::OnDpiChanged", __LINE__);
}

int XCustomCombo::SizeDroppedList() {
    int rows = 15;
    {
        qv::ClientDC dc(m_hWnd);
        const HFONT font = GetFont();
        if (dc && font) {
            qv::SelectObjectScope select(dc, font);
            TEXTMETRICW tm{};
            ::GetTextMetricsW(dc, &tm);
            const UINT dpi = qv::DpiOf(m_hWnd);
            const ql::DropDownSize size = ql::DropDownSizeFor(tm.tmHeight, dpi);
            rows = size.rows;
            m_droppedSized = true;
            SetItemHeight(0, static_cast<UINT>(size.itemHeight));
            // The combo box's height includes the dropped list.
            const RECT field = GetWindowRect();
            const int fieldHeight = field.bottom - field.top;
            ::SetWindowPos(m_hWnd, nullptr, 0, 0, field.right - field.left, fieldHeight + size.listHeight,
                           SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);

            // Each entry is measured once per font; later drops look it up.
            if (font != m_widthsFont) {
                m_widths.clear();
                m_widthsFont = font;
            }
            m_widths.resize(m_texts.size(), -1);
            int widest = 0;
            for (size_t i : m_shown) {
                if (m_widths[i] < 0) {
                    SIZE extent{};
                    ::GetTextExtentPoint32W(dc, m_texts[i].c_str(), static_cast<int>(m_texts[i].size()), &extent);
                    m_widths[i] = static_cast<int>(extent.cx);
                }
                widest = (std::max)(widest, m_widths[i]);
            }
            const int current = static_cast<int>(SendMessage(CB_GETDROPPEDWIDTH));
            if (const int width = ql::DroppedWidthFor(widest, current, dpi)) SetDroppedWidth(static_cast<UINT>(width));
        }
    }
    return rows;
}

void XCustomCombo::OnSize(UINT, int, int) {
    // The field keeps its text on resizing; a combo box would select it all.
    const DWORD sel = GetEditSel();
    Default();
    if (GetEditSel() != sel) SetEditSel(LOWORD(sel), HIWORD(sel));
}

void XCustomCombo::OnDestroy() {
    DestroyTooltip();
    Default();
}
