#include "quorvel/platform/checklistbox.h"

#include <oleacc.h>

#include <algorithm>

#include "quorvel/common/boundary.h"
#include "quorvel/platform/gdi.h"

namespace qv {

namespace {

constexpr DWORD kOwnerDraw = LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE;

bool IsListBoxClass(HWND hwnd) {
    wchar_t name[16] = {};
    ::GetClassNameW(hwnd, name, 16);
    return ::lstrcmpiW(name, L"ListBox") == 0;
}

// The list as a whole, for a reader: shown, enabled, focused.
long ListWindowState(HWND hwnd) {
    long state = 0;
    if (!::IsWindowVisible(hwnd)) state |= STATE_SYSTEM_INVISIBLE;
    if (::IsWindowEnabled(hwnd)) state |= STATE_SYSTEM_FOCUSABLE;
    else state |= STATE_SYSTEM_UNAVAILABLE;
    if (::GetFocus() == hwnd) state |= STATE_SYSTEM_FOCUSED;
    return state;
}

}  // namespace

bool CheckListBox::Create(DWORD style, const RECT& rect, HWND parent, UINT id) try {
    style |= LBS_HASSTRINGS;
    if (!(style & kOwnerDraw)) style |= LBS_OWNERDRAWFIXED;
    if (!ListBox::Create(style, rect, parent, id)) return false;
    // The list box measured its items while it was being created, before the
    // parent's reflector could pass WM_MEASUREITEM to us: set the height now.
    SyncItems();
    UpdateItemHeight();
    return true;
} catch (...) {
    return CaughtAtEdge(" qv::CheckListBox::Create", __LINE__, false);
}

bool CheckListBox::Attach(HWND hwnd) try {
    if (!hwnd || !::IsWindow(hwnd) || !IsListBoxClass(hwnd)) return false;
    const DWORD style = static_cast<DWORD>(::GetWindowLongPtrW(hwnd, GWL_STYLE));
    if (!(style & LBS_HASSTRINGS) || !(style & kOwnerDraw)) return false;
    if (!ListBox::Attach(hwnd)) return false;
    SyncItems();
    UpdateItemHeight();
    return true;
} catch (...) {
    return CaughtAtEdge(" qv::CheckListBox::Attach", __LINE__, false);
}

bool CheckListBox::SubclassDlgItem(UINT id, HWND parent) {
    if (!parent || !::IsWindow(parent)) return false;
    return Attach(::GetDlgItem(parent, static_cast<int>(id)));
}

bool CheckListBox::SetCheckStyle(UINT style) {
    if (style != BS_CHECKBOX && style != BS_AUTOCHECKBOX && style != BS_AUTO3STATE && style != BS_3STATE)
        return false;
    m_checkStyle = style;
    return true;
}

bool CheckListBox::SetCheck(int index, int check) {
    if (index < 0 || static_cast<size_t>(index) >= m_items.size() || check < 0 || check > 2) return false;
    if (check == 2 && m_checkStyle != BS_3STATE && m_checkStyle != BS_AUTO3STATE) return false;
    const bool changed = m_items[static_cast<size_t>(index)].check != check;
    m_items[static_cast<size_t>(index)].check = check;
    InvalidateItem(index);
    // However the check changed (mouse, Space, the host), a reader hears it.
    if (changed) RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_STATECHANGE, index + 1);
    return true;
}

int CheckListBox::GetCheck(int index) const {
    if (index < 0 || static_cast<size_t>(index) >= m_items.size()) return -1;
    return m_items[static_cast<size_t>(index)].check;
}

bool CheckListBox::Enable(int index, bool enabled) {
    if (index < 0 || static_cast<size_t>(index) >= m_items.size()) return false;
    m_items[static_cast<size_t>(index)].enabled = enabled;
    InvalidateItem(index);
    return true;
}

bool CheckListBox::IsEnabled(int index) const {
    return index >= 0 && static_cast<size_t>(index) < m_items.size() && m_items[static_cast<size_t>(index)].enabled;
}

int CheckListBox::CalcMinimumItemHeight() const {
    ClientDC dc(m_hWnd);
    SelectObjectScope font(dc, GetFont());
    TEXTMETRICW tm{};
    ::GetTextMetricsW(dc, &tm);
    return (std::max)(static_cast<int>(tm.tmHeight), GetCheckSize() + Scale(m_hWnd, 2));
}

int CheckListBox::GetCheckSize() const { return Scale(m_hWnd, kCheckSize); }

int CheckListBox::GetCheckAreaWidth() const { return GetCheckSize() + Scale(m_hWnd, 4); }

void CheckListBox::MeasureItem(MEASUREITEMSTRUCT*) {
    // itemHeight comes in as CalcMinimumItemHeight(), which suits plain text.
}

void CheckListBox::DrawItem(DRAWITEMSTRUCT* dis) {
    HDC dc = dis->hDC;
    const RECT& rc = dis->rcItem;
    if (dis->itemAction & (ODA_DRAWENTIRE | ODA_SELECT)) {
        const bool selected = (dis->itemState & ODS_SELECTED) != 0;
        const bool enabled = IsEnabled(static_cast<int>(dis->itemID)) && !(dis->itemState & ODS_DISABLED);
        ::FillRect(dc, &rc, ::GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
        const COLORREF oldColor = ::SetTextColor(
            dc, ::GetSysColor(!enabled ? COLOR_GRAYTEXT : selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        const int oldMode = ::SetBkMode(dc, TRANSPARENT);
        const std::wstring text = GetText(static_cast<int>(dis->itemID));
        RECT textRect = rc;
        textRect.left += Scale(m_hWnd, 2);
        ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &textRect,
                    DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_LEFT);
        ::SetBkMode(dc, oldMode);
        ::SetTextColor(dc, oldColor);
        if (dis->itemState & ODS_FOCUS) ::DrawFocusRect(dc, &rc);
    } else if (dis->itemAction & ODA_FOCUS) {
        ::DrawFocusRect(dc, &rc);
    }
}

bool CheckListBox::OnReflectDrawItem(DRAWITEMSTRUCT* dis) {
    if (dis->itemID == static_cast<UINT>(-1)) {  // empty list: only the focus
        if (dis->itemAction & ODA_FOCUS) ::DrawFocusRect(dis->hDC, &dis->rcItem);
        return true;
    }
    if (dis->itemAction & (ODA_DRAWENTIRE | ODA_SELECT)) {
        RECT area = dis->rcItem;
        const int areaWidth = GetCheckAreaWidth();
        area.right = (std::min)(area.right, area.left + areaWidth);
        ::FillRect(dis->hDC, &area, ::GetSysColorBrush(COLOR_WINDOW));
        const int index = static_cast<int>(dis->itemID);
        const int check = GetCheck(index);
        UINT state = check == 2 ? DFCS_BUTTON3STATE | DFCS_CHECKED : DFCS_BUTTONCHECK | (check == 1 ? DFCS_CHECKED : 0);
        if (!IsEnabled(index) || (dis->itemState & ODS_DISABLED)) state |= DFCS_INACTIVE;
        const int size = GetCheckSize();
        const int left = dis->rcItem.left + Scale(m_hWnd, 1);
        const int top = dis->rcItem.top + (dis->rcItem.bottom - dis->rcItem.top - size) / 2;
        RECT box{left, top, left + size, top + size};
        ::DrawFrameControl(dis->hDC, &box, DFC_BUTTON, state);
    }
    DRAWITEMSTRUCT textPart = *dis;
    textPart.rcItem.left += GetCheckAreaWidth();
    DrawItem(&textPart);
    return true;
}

bool CheckListBox::OnReflectMeasureItem(MEASUREITEMSTRUCT* mis) {
    const int minimum = CalcMinimumItemHeight();
    mis->itemHeight = static_cast<UINT>(minimum);
    MeasureItem(mis);
    mis->itemHeight = (std::max)(mis->itemHeight, static_cast<UINT>(minimum));
    return true;
}

LRESULT CheckListBox::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    // The per-item states follow the list box's own item operations.
    switch (msg) {
    case LB_ADDSTRING:
    case LB_INSERTSTRING: {
        const LRESULT r = Default();
        if (r >= 0) m_items.insert(m_items.begin() + (std::min)(static_cast<size_t>(r), m_items.size()), ItemState{});
        return r;
    }
    case LB_DELETESTRING: {
        const LRESULT r = Default();
        if (r != LB_ERR && wp < m_items.size()) m_items.erase(m_items.begin() + static_cast<ptrdiff_t>(wp));
        return r;
    }
    case LB_RESETCONTENT: {
        const LRESULT r = Default();
        m_items.clear();
        return r;
    }
    case LB_DIR:
    case LB_ADDFILE: {  // file names arrive without a message per item
        const LRESULT r = Default();
        SyncItems();
        return r;
    }
    default:
        return ListBox::WindowProc(msg, wp, lp);
    }
}

void CheckListBox::OnLButtonDown(UINT, POINT pt) {
    if (!HandleClick(pt)) Default();
}

void CheckListBox::OnLButtonDblClk(UINT, POINT pt) {
    // A quick second click on a box is a second toggle, not a double click.
    if (!HandleClick(pt)) Default();
}

bool CheckListBox::HandleClick(POINT pt) {
    bool outside = true;
    const int index = static_cast<int>(ItemFromPoint(pt, outside));
    if (outside || index >= GetCount()) return false;
    SetFocus();
    if (!IsEnabled(index)) return true;  // swallowed: a disabled item cannot even be selected
    RECT rc{};
    GetItemRect(index, rc);
    const bool inBox = pt.x >= rc.left && pt.x < rc.left + GetCheckSize() + Scale(m_hWnd, 2);
    if (!inBox || !IsAutomatic()) return false;
    // In a multiple-selection list a click on a selected item's box changes
    // the whole selection and keeps it; otherwise the item is also selected.
    const bool multi = (GetStyle() & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0 && GetSel(index) > 0;
    ToggleByUser(index);
    if (!multi) Default();
    NotifyCheckChange();
    return true;
}

void CheckListBox::OnKeyDown(UINT vk, UINT, UINT) {
    // Space checks the selection: the selected item, or in a multiple-
    // selection list every selected item, led by the caret item when it is
    // selected. With nothing selected Space does what the list box does.
    int lead = -1;
    if (vk == VK_SPACE && IsAutomatic()) {
        if (GetStyle() & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) {
            lead = GetCaretIndex();
            if (lead < 0 || GetSel(lead) <= 0) {
                int first = -1;
                lead = GetSelItems(1, &first) == 1 ? first : -1;
            }
        } else {
            lead = GetCurSel();
        }
    }
    if (!ToggleFromUser(lead)) Default();
}

bool CheckListBox::ToggleFromUser(int index) {
    if (index < 0 || index >= GetCount() || !IsEnabled(index) || !IsAutomatic()) return false;
    ToggleByUser(index);
    NotifyCheckChange();
    return true;
}

void CheckListBox::ToggleByUser(int index) {
    const int check = NextCheck(GetCheck(index));
    SetCheck(index, check);
    if ((GetStyle() & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) && GetSel(index) > 0) {
        for (int i = 0; i < static_cast<int>(m_items.size()); ++i)
            if (i != index && IsEnabled(i) && GetSel(i) > 0) SetCheck(i, check);
    }
}

void CheckListBox::NotifyCheckChange() {
    ::SendMessageW(GetParent(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), CLBN_CHKCHANGE), reinterpret_cast<LPARAM>(m_hWnd));
}

int CheckListBox::NextCheck(int check) const noexcept {
    const int states = m_checkStyle == BS_AUTO3STATE ? 3 : 2;
    if (check >= states) check = states - 1;  // indeterminate in a two-state list counts as checked
    return (check + 1) % states;
}

LRESULT CheckListBox::OnSetFont(WPARAM, LPARAM) {
    const LRESULT r = Default();
    UpdateItemHeight();
    return r;
}

void CheckListBox::OnDpiChanged(UINT) {
    UpdateItemHeight();
    Invalidate(false);
}

// ---- Screen readers ----------------------------------------------------------------

bool CheckListBox::AccessibleChildCount(long& count) {
    count = (std::max)(GetCount(), 0);
    return true;
}

bool CheckListBox::AccessibleName(long child, std::wstring& name) {
    // The list itself is named by its label.
    if (child < 1 || child > GetCount()) return false;
    name = GetText(static_cast<int>(child - 1));
    return true;
}

bool CheckListBox::AccessibleRole(long child, long& role) {
    if (child < 0 || child > GetCount()) return false;
    role = child == 0 ? ROLE_SYSTEM_LIST : ROLE_SYSTEM_CHECKBUTTON;
    return true;
}

bool CheckListBox::AccessibleState(long child, long& state) {
    if (child == 0) {
        state = ListWindowState(m_hWnd);
        return true;
    }
    const int index = static_cast<int>(child - 1);
    if (index < 0 || index >= GetCount()) return false;
    state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    const int check = GetCheck(index);
    if (check == 1) state |= STATE_SYSTEM_CHECKED;
    if (check == 2) state |= STATE_SYSTEM_MIXED;
    if (!IsEnabled(index) || !IsWindowEnabled()) state |= STATE_SYSTEM_UNAVAILABLE;
    const bool multi = (GetStyle() & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
    if (multi ? GetSel(index) > 0 : GetCurSel() == index) state |= STATE_SYSTEM_SELECTED;
    if (::GetFocus() == m_hWnd && GetCaretIndex() == index) state |= STATE_SYSTEM_FOCUSED;
    // Scrolled out of the list: there, but not on the screen.
    RECT item{}, client = GetClientRect(), seen{};
    if (!IsWindowVisible()) state |= STATE_SYSTEM_INVISIBLE;
    else if (GetItemRect(index, item) == LB_ERR || !::IntersectRect(&seen, &item, &client))
        state |= STATE_SYSTEM_OFFSCREEN;
    return true;
}

bool CheckListBox::AccessibleItemRect(long child, RECT& rect) {
    if (child < 1 || child > GetCount()) return false;
    return GetItemRect(static_cast<int>(child - 1), rect) != LB_ERR;
}

bool CheckListBox::AccessibleHitTest(POINT client, long& child) {
    bool outside = true;
    const int index = static_cast<int>(ItemFromPoint(client, outside));
    if (outside || index < 0 || index >= GetCount()) return false;
    child = index + 1;
    return true;
}

void CheckListBox::SyncItems() {
    const LRESULT count = SendMessage(LB_GETCOUNT);
    m_items.resize(count > 0 ? static_cast<size_t>(count) : 0);
}

void CheckListBox::UpdateItemHeight() {
    // Items of an LBS_OWNERDRAWVARIABLE list are measured one by one as they come.
    if (!(GetStyle() & LBS_OWNERDRAWFIXED)) return;
    MEASUREITEMSTRUCT mis{ODT_LISTBOX, static_cast<UINT>(GetDlgCtrlID()), 0, 0, 0, 0};
    OnReflectMeasureItem(&mis);
    // A list box item is at most 255 pixels high.
    SendMessage(LB_SETITEMHEIGHT, 0, MAKELPARAM((std::min)(mis.itemHeight, 255u), 0));
}

void CheckListBox::InvalidateItem(int index) {
    RECT rc{};
    if (m_hWnd && GetItemRect(index, rc) != LB_ERR) ::InvalidateRect(m_hWnd, &rc, FALSE);
}

}  // namespace qv
