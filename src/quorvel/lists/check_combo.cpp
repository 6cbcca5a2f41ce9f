#include "quorvel/lists/check_combo.h"

#include <oleacc.h>

#include <algorithm>
#include <set>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/reader_state.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/platform/gdi.h"

namespace {

// What a reader's default action does to an entry: check it or uncheck it.
std::wstring CheckActionText(bool checked) {
    const wchar_t* text = ::CoTranslateText(checked ? L"Uncheck" : L"Check");
    return text ? text : L"";
}

// An entry of the list, for a reader: a check button, checked or not, and
// selected when it is the list's selection.
long EntryState(bool checked, bool selected, bool shown) {
    long state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    if (checked) state |= STATE_SYSTEM_CHECKED;
    if (selected) state |= STATE_SYSTEM_SELECTED | (shown ? STATE_SYSTEM_FOCUSED : 0);
    if (!shown) state |= STATE_SYSTEM_INVISIBLE;
    return state;
}

}  // namespace

// ---------------------------------------------------------------------------
// XComboCheckListBox

bool XComboCheckListBox::Attach(HWND hwnd) try {
    if (!hwnd || !::IsWindow(hwnd)) return false;
    if (!qv::ListBox::Attach(hwnd)) return false;
    const LRESULT count = SendMessage(LB_GETCOUNT);
    m_checks.assign(count > 0 ? static_cast<size_t>(count) : 0, 0);
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XComboCheckListBox::Attach", __LINE__, false);
}

bool XComboCheckListBox::SetCheck(int index, int check) {
    if (index < 0 || static_cast<size_t>(index) >= m_checks.size() || check < 0 || check > 1) return false;
    const bool changed = m_checks[static_cast<size_t>(index)] != check;
    m_checks[static_cast<size_t>(index)] = check;
    InvalidateItem(index);
    if (changed) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_STATECHANGE, index + 1);
    return true;
}

int XComboCheckListBox::GetCheck(int index) const {
    if (index < 0 || static_cast<size_t>(index) >= m_checks.size()) return -1;
    return m_checks[static_cast<size_t>(index)];
}

void XComboCheckListBox::DrawListItem(const DRAWITEMSTRUCT* dis) {
    HDC dc = dis->hDC;
    const RECT& rc = dis->rcItem;
    if (dis->itemID == static_cast<UINT>(-1)) {  // empty list: only the focus
        if (dis->itemAction & ODA_FOCUS) ::DrawFocusRect(dc, &rc);
        return;
    }
    const int index = static_cast<int>(dis->itemID);
    const UINT dpi = Dpi();
    RECT text = rc;
    text.left = (std::min)(rc.right, rc.left + CheckAreaWidth(dpi));
    if (dis->itemAction & (ODA_DRAWENTIRE | ODA_SELECT)) {
        // The combo box's field colours, so a coloured combo box's list matches its field.
        const COLORREF fg = m_combo ? m_combo->FieldTextColor() : ::GetSysColor(COLOR_WINDOWTEXT);
        const COLORREF bk = m_combo ? m_combo->FieldBkColor() : ::GetSysColor(COLOR_WINDOW);
        qv::Brush bkBrush(::CreateSolidBrush(bk));
        RECT area{rc.left, rc.top, text.left, rc.bottom};
        ::FillRect(dc, &area, bkBrush.get());
        const int size = CheckSize(dpi);
        const int left = rc.left + qv::ScaleToDpi(1, dpi);
        const int top = rc.top + (rc.bottom - rc.top - size) / 2;
        RECT box{left, top, left + size, top + size};
        ::DrawFrameControl(dc, &box, DFC_BUTTON, DFCS_BUTTONCHECK | (GetCheck(index) == 1 ? DFCS_CHECKED : 0));

        const bool selected = (dis->itemState & ODS_SELECTED) != 0;
        ::FillRect(dc, &text, selected ? ::GetSysColorBrush(COLOR_HIGHLIGHT) : bkBrush.get());
        const COLORREF oldColor = ::SetTextColor(dc, selected ? ::GetSysColor(COLOR_HIGHLIGHTTEXT) : fg);
        const int oldMode = ::SetBkMode(dc, TRANSPARENT);
        const std::wstring s = GetText(index);
        RECT inner = text;
        inner.left += qv::ScaleToDpi(2, dpi);
        ::DrawTextW(dc, s.c_str(), static_cast<int>(s.size()), &inner, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_LEFT);
        ::SetBkMode(dc, oldMode);
        ::SetTextColor(dc, oldColor);
        if (dis->itemState & ODS_FOCUS) ::DrawFocusRect(dc, &text);
    } else if (dis->itemAction & ODA_FOCUS) {
        ::DrawFocusRect(dc, &text);
    }
}

bool XComboCheckListBox::OnReflectDrawItem(DRAWITEMSTRUCT* dis) {
    DrawListItem(dis);
    return true;
}

LRESULT XComboCheckListBox::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    // The per-item states follow the list's own item operations (the combo
    // box adds, inserts and deletes through them).
    switch (msg) {
    case LB_ADDSTRING:
    case LB_INSERTSTRING: {
        const LRESULT r = Default();
        if (r >= 0) m_checks.insert(m_checks.begin() + static_cast<ptrdiff_t>((std::min)(static_cast<size_t>(r), m_checks.size())), 0);
        return r;
    }
    case LB_DELETESTRING: {
        const LRESULT r = Default();
        if (r != LB_ERR && wp < m_checks.size()) m_checks.erase(m_checks.begin() + static_cast<ptrdiff_t>(wp));
        return r;
    }
    case LB_RESETCONTENT: {
        const LRESULT r = Default();
        m_checks.clear();
        return r;
    }
    default:
        return qv::ListBox::WindowProc(msg, wp, lp);
    }
}

bool XComboCheckListBox::HandleBoxClick(POINT pt) {
    bool outside = true;
    const int index = static_cast<int>(ItemFromPoint(pt, outside));
    if (outside || index < 0 || index >= GetCount()) return false;
    RECT rc{};
    if (GetItemRect(index, rc) == LB_ERR || pt.y < rc.top || pt.y >= rc.bottom) return false;
    const UINT dpi = Dpi();
    if (pt.x < rc.left || pt.x >= rc.left + CheckSize(dpi) + qv::ScaleToDpi(2, dpi)) return false;
    SetCurSel(index);
    Toggle(index);
    return true;
}

void XComboCheckListBox::OnLButtonDown(UINT, POINT pt) {
    // A click on a box toggles and keeps the list open for the next one.
    if (HandleBoxClick(pt)) {
        m_swallowUp = true;
        return;
    }
    Default();
}

void XComboCheckListBox::OnLButtonDblClk(UINT, POINT pt) {
    // A quick second click on a box is a second toggle.
    if (HandleBoxClick(pt)) {
        m_swallowUp = true;
        return;
    }
    Default();
}

void XComboCheckListBox::OnLButtonUp(UINT, POINT) {
    if (m_swallowUp) {
        m_swallowUp = false;
        return;
    }
    Default();
}

void XComboCheckListBox::OnKeyDown(UINT vk, UINT, UINT) {
    // Space toggles the highlighted entry while the list is open; closed, the
    // key does what it always does.
    const int index = vk == VK_SPACE && ::IsWindowVisible(m_hWnd) ? GetCurSel() : -1;
    if (index < 0 || index >= GetCount()) {
        Default();
        return;
    }
    Toggle(index);
}

void XComboCheckListBox::Toggle(int index) {
    if (m_combo) {
        m_combo->ToggleFromList(index);
    } else {
        SetCheck(index, GetCheck(index) == 1 ? 0 : 1);
    }
}

void XComboCheckListBox::InvalidateItem(int index) {
    RECT rc{};
    if (m_hWnd && GetItemRect(index, rc) != LB_ERR) ::InvalidateRect(m_hWnd, &rc, FALSE);
}

UINT XComboCheckListBox::Dpi() const {
    return qv::DpiOf(m_combo && m_combo->m_hWnd ? m_combo->m_hWnd : m_hWnd);
}

bool XComboCheckListBox::AccessibleChildCount(long& count) {
    count = (std::max)(GetCount(), 0);
    return true;
}

bool XComboCheckListBox::AccessibleName(long child, std::wstring& name) {
    if (child < 1 || child > GetCount()) return false;
    name = GetText(static_cast<int>(child - 1));
    return true;
}

bool XComboCheckListBox::AccessibleRole(long child, long& role) {
    if (child < 0 || child > GetCount()) return false;
    role = child == 0 ? ROLE_SYSTEM_LIST : ROLE_SYSTEM_CHECKBUTTON;
    return true;
}

bool XComboCheckListBox::AccessibleState(long child, long& state) {
    const bool shown = IsWindowVisible();
    if (child == 0) {
        state = shown ? 0 : STATE_SYSTEM_INVISIBLE;
        return true;
    }
    const int index = static_cast<int>(child - 1);
    if (index < 0 || index >= GetCount()) return false;
    state = EntryState(GetCheck(index) == 1, GetCurSel() == index, shown);
    RECT item{}, client = GetClientRect(), seen{};
    if (shown && (GetItemRect(index, item) == LB_ERR || !::IntersectRect(&seen, &item, &client)))
        state |= STATE_SYSTEM_OFFSCREEN;
    return true;
}

bool XComboCheckListBox::AccessibleItemRect(long child, RECT& rect) {
    if (child < 1 || child > GetCount()) return false;
    return GetItemRect(static_cast<int>(child - 1), rect) != LB_ERR;
}

bool XComboCheckListBox::AccessibleHitTest(POINT client, long& child) {
    bool outside = true;
    const int index = static_cast<int>(ItemFromPoint(client, outside));
    if (outside || index < 0 || index >= GetCount()) return false;
    child = index + 1;
    return true;
}

bool XComboCheckListBox::AccessibleDefaultAction(long child, std::wstring& action) {
    if (child < 1 || child > GetCount()) return false;
    action = CheckActionText(GetCheck(static_cast<int>(child - 1)) == 1);
    return true;
}

bool XComboCheckListBox::AccessibleDoDefaultAction(long child) {
    if (child < 1 || child > GetCount()) return false;
    Toggle(static_cast<int>(child - 1));
    return true;
}

// ---------------------------------------------------------------------------
// XCheckComboBox

XCheckComboBox::XCheckComboBox() : m_list(this) {}

XCheckComboBox::~XCheckComboBox() {
    if (m_list.m_hWnd) m_list.Detach();
}

bool XCheckComboBox::Create(DWORD style, const RECT& rect, HWND parent, UINT id) try {
    style &= ~static_cast<DWORD>(CBS_SIMPLE | CBS_DROPDOWN | CBS_OWNERDRAWVARIABLE);
    style |= CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;
    if (!qv::ComboBox::Create(style, rect, parent, id)) return false;
    // The combo box measured its items while it was being created, before the
    // parent's reflector could pass WM_MEASUREITEM to us: set the height now.
    MEASUREITEMSTRUCT mis{ODT_COMBOBOX, id, 0, 0, 0, 0};
    MeasureItem(&mis);
    SetItemHeight(0, mis.itemHeight);
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XCheckComboBox::Create", __LINE__, false);
}

int XCheckComboBox::AddString(const wchar_t* text, bool checked) try {
    const int index = qv::ComboBox::AddString(text);
    if (index < 0 || !text) return index;
    ApplyState(text, checked);
    return index;
} catch (...) {
    return qv::CaughtAtEdge(" XCheckComboBox::AddString", __LINE__, CB_ERR);
}

int XCheckComboBox::GetCheck(int index) const try {
    if (index < 0 || index >= GetCount()) return -1;
    const auto it = m_checks.find(GetLBText(index));
    return it != m_checks.end() && it->second ? 1 : 0;
} catch (...) {
    return qv::CaughtAtEdge(" XCheckComboBox::GetCheck", __LINE__, -1);
}

bool XCheckComboBox::SetCheck(int index, bool checked) try {
    if (index < 0 || index >= GetCount()) return false;
    ApplyState(GetLBText(index), checked);
    return true;
} catch (...) {
    return qv::CaughtAtEdge(" XCheckComboBox::SetCheck", __LINE__, false);
}

bool XCheckComboBox::IsChecked(const wchar_t* text) const {
    if (!text) return false;
    const auto it = m_checks.find(text);
    return it != m_checks.end() && it->second;
}

std::vector<std::wstring> XCheckComboBox::GetCheckedTexts() const {
    std::vector<std::wstring> texts;
    std::set<std::wstring> seen;
    const int count = GetCount();
    for (int i = 0; i < count; ++i) {
        std::wstring text = GetLBText(i);
        const auto it = m_checks.find(text);
        if (it != m_checks.end() && it->second && seen.insert(text).second) texts.push_back(std::move(text));
    }
    return texts;
}

std::wstring XCheckComboBox::GetFieldText() const try {
    const std::vector<std::wstring> checked = GetCheckedTexts();
    if (checked.empty()) {
        const int sel = GetCurSel();
        return sel >= 0 ? GetLBText(sel) : std::wstring();
    }
    std::wstring text;
    for (const std::wstring& t : checked) {
        if (!text.empty()) text += L", ";
        text += t;
    }
    return text;
} catch (...) {
    return qv::CaughtAtEdge(" XCheckComboBox::GetFieldText", __LINE__, std::wstring());
}

void XCheckComboBox::ApplyState(const std::wstring& text, bool checked) {
    const std::wstring before = m_hWnd ? GetFieldText() : std::wstring();
    const auto known = m_checks.find(text);
    const bool changed = known == m_checks.end() || known->second != checked;
    m_checks[text] = checked;
    if (m_list.m_hWnd) {
        const int count = GetCount();
        for (int i = 0; i < count; ++i)
            if (GetLBText(i) == text) m_list.SetCheck(i, checked ? 1 : 0);
    }
    if (!m_hWnd) return;
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
    // Every entry of the text changed with it; the field's text may have too.
    if (changed) {
        const int count = GetCount();
        for (int i = 0; i < count; ++i)
            if (GetLBText(i) == text) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_STATECHANGE, i + 1);
    }
    if (GetFieldText() != before) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
}

void XCheckComboBox::ToggleFromList(int index) {
    if (index < 0 || index >= GetCount()) return;
    const std::wstring text = GetLBText(index);
    ApplyState(text, !IsChecked(text.c_str()));
}

void XCheckComboBox::TakeOverList(HWND list) {
    if (m_list.m_hWnd || !list || !m_list.Attach(list)) return;
    const int count = GetCount();
    for (int i = 0; i < count; ++i) {
        const auto it = m_checks.find(GetLBText(i));
        m_list.SetCheck(i, it != m_checks.end() && it->second ? 1 : 0);
    }
}

HBRUSH XCheckComboBox::OnCtlColor(HDC, HWND wnd, UINT ctlColorMsg) {
    if (ctlColorMsg == WM_CTLCOLORLISTBOX && wnd != m_hWnd && !m_list.m_hWnd) TakeOverList(wnd);
    return nullptr;
}

void XCheckComboBox::OnDropdown() {
    if (!m_list.m_hWnd) {
        COMBOBOXINFO info{};
        info.cbSize = sizeof(info);
        if (::GetComboBoxInfo(m_hWnd, &info)) TakeOverList(info.hwndList);
    }
    const int sel = GetCurSel();
    if (sel >= 0 && m_list.m_hWnd) ApplyState(GetLBText(sel), true);
}

void XCheckComboBox::DrawField(const DRAWITEMSTRUCT* dis) {
    HDC dc = dis->hDC;
    const RECT& rc = dis->rcItem;
    const bool selected = (dis->itemState & ODS_SELECTED) != 0;
    const std::wstring text = GetFieldText();
    const COLORREF bk = selected ? ::GetSysColor(COLOR_HIGHLIGHT) : FieldBkColor();
    if (text.empty()) {
        qv::Brush brush(::CreateSolidBrush(bk));
        ::FillRect(dc, &rc, brush.get());
        return;
    }
    const COLORREF oldText = ::SetTextColor(dc, selected ? ::GetSysColor(COLOR_HIGHLIGHTTEXT) : FieldTextColor());
    const COLORREF oldBk = ::SetBkColor(dc, bk);
    const UINT oldAlign = ::SetTextAlign(dc, TA_LEFT | TA_TOP);
    // Filling with ExtTextOut's opaque rectangle first, then the clipped text.
    ::ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rc, nullptr, 0, nullptr);
    const UINT dpi = qv::DpiOf(m_hWnd);
    ::ExtTextOutW(dc, rc.left + qv::ScaleToDpi(3, dpi), rc.top + qv::ScaleToDpi(1, dpi), ETO_CLIPPED, &rc, text.c_str(),
                  static_cast<UINT>(text.size()), nullptr);
    ::SetTextAlign(dc, oldAlign);
    ::SetBkColor(dc, oldBk);
    ::SetTextColor(dc, oldText);
}

void XCheckComboBox::DrawItem(DRAWITEMSTRUCT* dis) {
    if (dis->itemState & ODS_COMBOBOXEDIT) {
        DrawField(dis);
    } else {
        // A list item that reached the parent (the list not yet taken over).
        m_list.DrawListItem(dis);
    }
}

void XCheckComboBox::MeasureItem(MEASUREITEMSTRUCT* mis) {
    if (mis->itemID == static_cast<UINT>(-1)) return;  // the field keeps its height
    qv::ClientDC dc(m_hWnd);
    qv::SelectObjectScope font(dc, GetFont());
    SIZE size{};
    ::GetTextExtentPoint32W(dc, L"Test", 4, &size);
    const UINT dpi = qv::DpiOf(m_hWnd);
    mis->itemHeight = static_cast<UINT>(
        (std::max)(static_cast<int>(size.cy), XComboCheckListBox::CheckSize(dpi) + qv::ScaleToDpi(2, dpi)));
}

LRESULT XCheckComboBox::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        if (HBRUSH brush = OnCtlColor(reinterpret_cast<HDC>(wp), reinterpret_cast<HWND>(lp), msg))
            return reinterpret_cast<LRESULT>(brush);
        return Default();
    case WM_DRAWITEM: {
        // The list draws its items through the combo box: with the list
        // taken over, they are drawn here with their boxes.
        auto* dis = reinterpret_cast<DRAWITEMSTRUCT*>(lp);
        if (dis && m_list.m_hWnd && dis->hwndItem == m_list.m_hWnd) {
            m_list.DrawListItem(dis);
            return TRUE;
        }
        return Default();
    }
    default:
        return qv::ComboBox::WindowProc(msg, wp, lp);
    }
}

bool XCheckComboBox::OnReflectCommand(UINT notifyCode) {
    if (notifyCode == CBN_DROPDOWN) OnDropdown();
    // With nothing checked the field shows the selection: a new value.
    if (notifyCode == CBN_SELCHANGE) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
    return false;  // the parent hears it too
}

void XCheckComboBox::OnDpiChanged(UINT) {
    MEASUREITEMSTRUCT mis{ODT_COMBOBOX, static_cast<UINT>(GetDlgCtrlID()), 0, 0, 0, 0};
    MeasureItem(&mis);
    SetItemHeight(0, mis.itemHeight);
    Invalidate(false);
}

// ---- Screen readers ----------------------------------------------------------------

bool XCheckComboBox::AccessibleValue(long child, std::wstring& value) {
    if (child != 0) return false;
    value = GetFieldText();
    return true;
}

bool XCheckComboBox::AccessibleRole(long child, long& role) {
    if (child < 0 || child > GetCount()) return false;
    role = child == 0 ? ROLE_SYSTEM_COMBOBOX : ROLE_SYSTEM_CHECKBUTTON;
    return true;
}

bool XCheckComboBox::AccessibleState(long child, long& state) {
    const bool open = SendMessage(CB_GETDROPPEDSTATE) != 0;
    if (child == 0) {
        state = qv::ReaderWindowState(m_hWnd, true) | STATE_SYSTEM_HASPOPUP |
                (open ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED);
        return true;
    }
    const int index = static_cast<int>(child - 1);
    if (index < 0 || index >= GetCount()) return false;
    // The entries are on the screen while the list is open.
    state = EntryState(GetCheck(index) == 1, GetCurSel() == index, open);
    return true;
}

bool XCheckComboBox::AccessibleChildCount(long& count) {
    count = (std::max)(GetCount(), 0);
    return true;
}

bool XCheckComboBox::AccessibleName(long child, std::wstring& name) {
    // The combo box itself is named by its label.
    if (child < 1 || child > GetCount()) return false;
    name = GetLBText(static_cast<int>(child - 1));
    return true;
}

bool XCheckComboBox::AccessibleItemRect(long child, RECT& rect) {
    // Where the open list shows the entry; a closed list shows none.
    if (child < 1 || child > GetCount() || !m_list.m_hWnd || !SendMessage(CB_GETDROPPEDSTATE)) return false;
    if (m_list.GetItemRect(static_cast<int>(child - 1), rect) == LB_ERR) return false;
    ::MapWindowPoints(m_list.m_hWnd, m_hWnd, reinterpret_cast<POINT*>(&rect), 2);
    return true;
}

bool XCheckComboBox::AccessibleDefaultAction(long child, std::wstring& action) {
    if (child < 1 || child > GetCount()) return false;
    action = CheckActionText(GetCheck(static_cast<int>(child - 1)) == 1);
    return true;
}

bool XCheckComboBox::AccessibleDoDefaultAction(long child) {
    if (child < 1 || child > GetCount()) return false;
    const int index = static_cast<int>(child - 1);
    return SetCheck(index, GetCheck(index) != 1);
}

bool XCheckComboBox::OnReflectDrawItem(DRAWITEMSTRUCT* dis) {
    if (dis->CtlType != ODT_COMBOBOX) return false;
    DrawItem(dis);
    return true;
}

bool XCheckComboBox::OnReflectMeasureItem(MEASUREITEMSTRUCT* mis) {
    if (mis->CtlType != ODT_COMBOBOX) return false;
    MeasureItem(mis);
    return true;
}

// ---------------------------------------------------------------------------
// XCheckComboBoxColor

HBRUSH XCheckComboBoxColor::OnCtlColor(HDC dc, HWND wnd, UINT ctlColorMsg) {
    XCheckComboBox::OnCtlColor(dc, wnd, ctlColorMsg);
    return m_scheme.Apply(dc);
}
