#include "quorvel/controls/base_lists.h"

#include <oleacc.h>

#include <algorithm>
#include <cwchar>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/input_rules.h"
#include "quorvel/controls/reader_state.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/platform/gdi.h"

namespace {

// The default action of a check-list item: what a click on its box does.
bool CheckItemAction(const qv::CheckListBox& list, long child, std::wstring& action) {
    if (child < 1 || child > list.GetCount()) return false;
    const bool checked = list.GetCheck(static_cast<int>(child - 1)) != 0;
    action = CoTranslateText(checked ? L"Uncheck" : L"Check");
    return true;
}

}  // namespace

// ---- XBaseComboBox ------------------------------------------------------------------

BOOL XBaseComboBox::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) {
    return CreateWithStyle(text, id, rect, font, parent, kStyle);
}

BOOL XBaseComboBox::CreateWithStyle(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent,
                                    DWORD style) {
    if (!CreateEx(WS_EX_CLIENTEDGE, L"COMBOBOX", text.c_str(), style, rect, parent, id)) return FALSE;
    SetFont(font, true);
    // A drop-down list shows only its items; an editable one starts with the text.
    if ((style & 3) != CBS_DROPDOWNLIST && !text.empty()) ::SetWindowTextW(m_hWnd, text.c_str());
    return CreateTooltip() != 0;
}

int XBaseComboBox::CreateTooltip() try {
    return CreateFieldTooltip(m_hWnd, GetWindowText());
} catch (...) {
    return qv::CaughtAtEdge(" XBaseComboBox::CreateTooltip", __LINE__, 0);
}

LRESULT XBaseComboBox::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    RelayOwnMessage(m_hWnd, msg, wp, lp);
    switch (msg) {
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
        // The edit part and the dropped list ask the combo box itself, which
        // would pass them to its parent naming the part, not the combo box:
        // a coloured combo answers them here.
        if (HBRUSH brush = OnReflectCtlColor(reinterpret_cast<HDC>(wp), msg))
            return reinterpret_cast<LRESULT>(brush);
        break;
    default:
        break;
    }
    return qv::ComboBox::WindowProc(msg, wp, lp);
}

void XBaseComboBox::OnChar(UINT ch, UINT, UINT) {
    if (!qv::MoveFocusOnKey(m_hWnd, ch, true)) Default();
}

void XBaseComboBox::OnSetFocus(HWND) {
    Default();
    qv::NotifyParentSetFocus(m_hWnd);
}

void XBaseComboBox::OnDestroy() {
    DestroyTooltip();
    Default();
}

bool XBaseComboBox::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    role = ROLE_SYSTEM_COMBOBOX;
    return true;
}

bool XBaseComboBox::AccessibleState(long child, long& state) {
    if (child != 0) return false;
    const bool open = SendMessage(CB_GETDROPPEDSTATE) != 0;
    state = qv::ReaderWindowState(m_hWnd, true) | (open ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED) |
            STATE_SYSTEM_HASPOPUP;
    return true;
}

// ---- XBaseEditComboBox ------------------------------------------------------------------

// The edit part of the editable combo box: its keys and mouse belong to the
// combo box as a whole.
class XBaseEditComboBox::EditPart : public qv::Window {
public:
    explicit EditPart(XBaseEditComboBox& combo) : m_combo(combo) {}

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
        m_combo.RelayOwnMessage(m_hWnd, msg, wp, lp);
        return qv::Window::WindowProc(msg, wp, lp);
    }
    void OnChar(UINT ch, UINT, UINT) override {
        if (!qv::MoveFocusOnKey(m_combo.m_hWnd, ch, true)) Default();
    }

private:
    XBaseEditComboBox& m_combo;
};

XBaseEditComboBox::XBaseEditComboBox() = default;
XBaseEditComboBox::~XBaseEditComboBox() = default;

BOOL XBaseEditComboBox::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) try {
    const BOOL created = CreateWithStyle(text, id, rect, font, parent, kStyle);
    if (HWND edit = GetEditPart()) {
        m_editPart = std::make_unique<EditPart>(*this);
        m_editPart->Attach(edit);
    }
    return created;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseEditComboBox::Create", __LINE__, FALSE);
}

HWND XBaseEditComboBox::GetEditPart() const {
    if (!IsWindow()) return nullptr;
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    if (!::GetComboBoxInfo(m_hWnd, &info) || info.hwndItem == m_hWnd) return nullptr;
    return info.hwndItem;
}

// ---- XBaseListBox ------------------------------------------------------------------------

BOOL XBaseListBox::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) {
    if (!CreateEx(WS_EX_CLIENTEDGE, L"LISTBOX", text.c_str(), kStyle, rect, parent, id)) return FALSE;
    SetFont(font, true);
    return TRUE;
}

void XBaseListBox::OnChar(UINT ch, UINT, UINT) {
    if (!qv::MoveFocusOnKey(m_hWnd, ch, true)) Default();
}

void XBaseListBox::OnSetFocus(HWND) {
    Default();
    qv::NotifyParentSetFocus(m_hWnd);
}

bool XBaseListBox::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    role = ROLE_SYSTEM_LIST;
    return true;
}

bool XBaseListBox::AccessibleState(long child, long& state) {
    if (child != 0) return false;
    state = qv::ReaderWindowState(m_hWnd, true);
    return true;
}

// ---- XBaseCheckListBox -------------------------------------------------------------------

XBaseCheckListBox::XBaseCheckListBox() : m_scheme(qv::kDefaultFieldTextColor, RGB(5, 0, 0)) {}

BOOL XBaseCheckListBox::Create(const std::wstring&, UINT id, const RECT& rect, HFONT font, HWND parent) {
    if (!qv::CheckListBox::Create(kStyle, rect, parent, id)) return FALSE;
    SetFont(font, true);
    return CreateTooltip() != 0;
}

int XBaseCheckListBox::CreateTooltip() try {
    const int count = GetCount();
    int checked = 0;
    for (int i = 0; i < count; ++i)
        if (GetCheck(i) == 1) ++checked;
    // Formatted first, translated as a whole.
    wchar_t text[64] = {};
    std::swprintf(text, 64, L"%d of %d selected", checked, count);
    const wchar_t* translated = ::CoTranslateText2(text);
    return CreateFieldTooltip(m_hWnd, translated ? translated : text);
} catch (...) {
    return qv::CaughtAtEdge(" XBaseCheckListBox::CreateTooltip", __LINE__, 0);
}

void XBaseCheckListBox::SetTextColor(unsigned long colour) { m_scheme.SetText(m_hWnd, colour); }
void XBaseCheckListBox::SetBkColor(unsigned long colour) { m_scheme.SetBk(m_hWnd, colour); }

LRESULT XBaseCheckListBox::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    RelayOwnMessage(m_hWnd, msg, wp, lp);
    return qv::CheckListBox::WindowProc(msg, wp, lp);
}

void XBaseCheckListBox::OnChar(UINT ch, UINT, UINT) {
    if (!qv::MoveFocusOnKey(m_hWnd, ch, true)) Default();
}

void XBaseCheckListBox::OnDestroy() {
    DestroyTooltip();
    Default();
}

HBRUSH XBaseCheckListBox::OnReflectCtlColor(HDC dc, UINT) { return m_scheme.Apply(dc); }

bool XBaseCheckListBox::AccessibleDefaultAction(long child, std::wstring& action) {
    return CheckItemAction(*this, child, action);
}

bool XBaseCheckListBox::AccessibleDoDefaultAction(long child) {
    return child >= 1 && ToggleFromUser(static_cast<int>(child - 1));
}

// ---- XTabCheckListBox ---------------------------------------------------------------------

int XTabCheckListBox::GetAverageCharWidths() const {
    int width = LOWORD(::GetDialogBaseUnits());
    if (HFONT font = GetFont()) {
        LOGFONTW lf{};
        if (::GetObjectW(font, sizeof(lf), &lf) && lf.lfWidth >= 1) width = lf.lfWidth;
    }
    return width;
}

int XTabCheckListBox::DialogUnitsToPixels(int dialogUnits) const { return dialogUnits * GetAverageCharWidths() / 4; }

void XTabCheckListBox::SetTabStops() try {
    m_tabStops.assign(1, GetAverageCharWidths() / 2);
    if (IsWindow()) Invalidate();
} catch (...) {
    qv::CaughtAtEdge(" XTabCheckListBox::SetTabStops", __LINE__);
}

bool XTabCheckListBox::SetTabStops(const int& cx) try {
    if (cx < 0) return false;
    m_tabStops.assign(1, DialogUnitsToPixels(cx));
    if (IsWindow()) Invalidate();
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XTabCheckListBox::SetTabStops", __LINE__, false);
}

bool XTabCheckListBox::SetTabStops(int count, int* stops) try {
    if (count < 0 || (count > 0 && !stops)) return false;
    m_tabStops.resize(static_cast<size_t>(count));
    if (IsWindow()) Invalidate();
    int previous = 0;
    for (int i = 0; i < count; ++i) {
        const int pixels = DialogUnitsToPixels(stops[i]);
        if (pixels <= previous) return false;
        m_tabStops[static_cast<size_t>(i)] = pixels;
        previous = pixels;
    }
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XTabCheckListBox::SetTabStops", __LINE__, false);
}

void XTabCheckListBox::DrawItem(DRAWITEMSTRUCT* dis) {
    HDC dc = dis->hDC;
    const RECT& rc = dis->rcItem;
    const DWORD style = GetStyle();
    const bool ownerDrawnStrings = (style & LBS_HASSTRINGS) && (style & (LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE));
    const int index = static_cast<int>(dis->itemID);
    if (ownerDrawnStrings && index >= 0 && index < GetCount() && (dis->itemAction & (ODA_DRAWENTIRE | ODA_SELECT))) {
        // Items of a variable-height list have no common text height: each
        // must have room for the box and the text. An item only just as high
        // as that minimum is reported as well, and drawn all the same.
        const int cyItem = GetItemHeight(index);
        if ((style & LBS_OWNERDRAWVARIABLE) && cyItem <= CalcMinimumItemHeight())
            qv::LogFailure(L" XTabCheckListBox::DrawItem()", 2073, L"VERIFY(cyItem >= CalcMinimumItemHeight())");

        const bool disabled = !IsWindowEnabled() || !IsEnabled(index) || (dis->itemState & ODS_DISABLED);
        COLORREF text = disabled ? RGB(128, 128, 128) : ::GetSysColor(COLOR_WINDOWTEXT);
        COLORREF back = ::GetSysColor(COLOR_WINDOW);
        if (text == back) text = RGB(192, 192, 192);
        if (!disabled && (dis->itemState & ODS_SELECTED)) {
            text = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
            back = ::GetSysColor(COLOR_HIGHLIGHT);
        }
        const COLORREF oldText = ::SetTextColor(dc, text);
        const COLORREF oldBack = ::SetBkColor(dc, back);
        ::ExtTextOutW(dc, rc.left, rc.top, ETO_OPAQUE, &rc, L"", 0, nullptr);

        TEXTMETRICW tm{};
        ::GetTextMetricsW(dc, &tm);
        const int spare = (std::max)(0, static_cast<int>((rc.bottom - rc.top) - tm.tmHeight) / 2);
        const std::wstring itemText = GetText(index);
        ::TabbedTextOutW(dc, rc.left, rc.top + spare, itemText.c_str(), static_cast<int>(itemText.size()),
                         static_cast<int>(m_tabStops.size()), m_tabStops.empty() ? nullptr : m_tabStops.data(),
                         rc.left);
        ::SetTextColor(dc, oldText);
        ::SetBkColor(dc, oldBack);
        if (dis->itemState & ODS_FOCUS) ::DrawFocusRect(dc, &rc);
    } else if (dis->itemAction & ODA_FOCUS) {
        ::DrawFocusRect(dc, &rc);
    }
}

void XTabCheckListBox::OnChar(UINT ch, UINT, UINT) {
    if (!qv::MoveFocusOnKey(m_hWnd, ch, true)) Default();
}

bool XTabCheckListBox::AccessibleDefaultAction(long child, std::wstring& action) {
    return CheckItemAction(*this, child, action);
}

bool XTabCheckListBox::AccessibleDoDefaultAction(long child) {
    return child >= 1 && ToggleFromUser(static_cast<int>(child - 1));
}

// ---- XBaseComboBoxColor --------------------------------------------------------------------

bool XBaseComboBoxColor::OnReflectCommand(UINT notifyCode) {
    if (notifyCode == CBN_DROPDOWN) SizeDropDown();
    return false;
}

void XBaseComboBoxColor::SizeDropDown() {
    qv::ClientDC dc(m_hWnd);
    HFONT font = GetFont();
    if (!dc || !font) return;
    qv::SelectObjectScope select(dc, font);
    SIZE w{};
    ::GetTextExtentPoint32W(dc, L"W", 1, &w);

    WINDOWPLACEMENT placement{};
    placement.length = sizeof(placement);
    if (::GetWindowPlacement(m_hWnd, &placement)) {
        placement.rcNormalPosition.bottom = placement.rcNormalPosition.top + qv::DroppedListHeight(w.cy);
        ::SetWindowPlacement(m_hWnd, &placement);
    }

    int widest = 0;
    const int count = GetCount();
    for (int i = 0; i < count; ++i) {
        const std::wstring item = GetLBText(i);
        SIZE size{};
        ::GetTextExtentPoint32W(dc, item.c_str(), static_cast<int>(item.size()), &size);
        widest = (std::max)(widest, static_cast<int>(size.cx));
    }
    const int current = static_cast<int>(SendMessage(CB_GETDROPPEDWIDTH));
    if (const int width = qv::DroppedListWidth(widest, current)) SetDroppedWidth(static_cast<UINT>(width));
}
