// qv::CheckListBox: a list box that shows a check box before each item.
//
// The list box is owner-drawn with strings (LBS_OWNERDRAWFIXED or
// LBS_OWNERDRAWVARIABLE, and LBS_HASSTRINGS): Create adds what is missing,
// Attach refuses a list box without them. Its WM_DRAWITEM and WM_MEASUREITEM
// come back to it by reflection from the parent. Each item's check state
// (0 unchecked, 1 checked, 2 indeterminate) and enabled flag are kept beside
// the list box's items, so the item data stays free for the host.
//
// The user toggles an item by clicking its box, or the selected items by
// pressing Space; a click on the text only selects. With the automatic styles (BS_AUTOCHECKBOX, the
// default, and BS_AUTO3STATE) the state changes and the parent receives
// WM_COMMAND with CLBN_CHKCHANGE; with BS_CHECKBOX and BS_3STATE the state
// changes only through SetCheck. Disabled items ignore the mouse.
//
// Drawing: the class draws the box; the virtual DrawItem draws the text part
// (the item rectangle given to it starts after the box), so a derived class
// can draw its text differently. MeasureItem's answer is raised to
// CalcMinimumItemHeight().
//
// DPI: the box, the column it stands in and the smallest item height are
// sizes at 96 DPI scaled to the list's DPI; a list that moves to a monitor
// of another DPI measures its items again.
//
// Screen readers: the items are the list's children 1..n, check buttons
// named by their text, checked, mixed (indeterminate) or neither, selected
// and focused as the list box shows them; every change of an item's check,
// by the mouse, Space or SetCheck, is announced for that item.
#pragma once

#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"

// Notification code sent with WM_COMMAND when the user changed a check.
#ifndef CLBN_CHKCHANGE
#define CLBN_CHKCHANGE (40)
#endif

namespace qv {

class QV_API CheckListBox : public ListBox, public virtual AccessibleSource, public DpiListener {
public:
    // Side of the check box in pixels at 96 DPI (GetCheckSize: at the list's DPI).
    enum : int { kCheckSize = 13 };

    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);
    // False for a list box that is not owner-drawn with strings.
    bool Attach(HWND hwnd);
    bool (SubclassWindow)(HWND hwnd) { return Attach(hwnd); }
    bool SubclassDlgItem(UINT id, HWND parent);

    // BS_CHECKBOX, BS_AUTOCHECKBOX, BS_AUTO3STATE or BS_3STATE; false for others.
    bool SetCheckStyle(UINT style);
    UINT GetCheckStyle() const noexcept { return m_checkStyle; }
    // 0, 1, or 2 with a 3-state style; false for an invalid index or state.
    bool SetCheck(int index, int check);
    // The item's state, -1 for an invalid index.
    int GetCheck(int index) const;
    // A disabled item draws grey and ignores the mouse.
    bool Enable(int index, bool enabled = true);
    bool IsEnabled(int index) const;

    // The smallest item height that shows the box and the text: the height
    // of the list box's font, but at least the box plus one pixel above and
    // below (kCheckSize + 2), both at the list's DPI.
    int CalcMinimumItemHeight() const;
    // The side of the check box at the list's DPI.
    int GetCheckSize() const;

    // qv::DpiListener: the item height is measured again.
    void OnDpiChanged(UINT dpi) override;

    // qv::AccessibleSource: the items as check buttons (children 1..n).
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleChildCount(long& count) override;
    bool AccessibleItemRect(long child, RECT& rect) override;
    bool AccessibleHitTest(POINT client, long& child) override;

protected:
    // Draws the text part of an item; dis->rcItem starts after the box.
    virtual void DrawItem(DRAWITEMSTRUCT* dis);
    // The height of an item; raised to CalcMinimumItemHeight() afterwards.
    virtual void MeasureItem(MEASUREITEMSTRUCT* mis);
    // The width of the box column at the left of each item, at the list's DPI.
    int GetCheckAreaWidth() const;
    // Toggles the item as a click on its box does (the selection with it in
    // a multiple-selection list) and tells the parent; false for an invalid
    // or disabled item, or a style that leaves checks to SetCheck.
    bool ToggleFromUser(int index);

    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    bool OnReflectDrawItem(DRAWITEMSTRUCT* dis) override;
    bool OnReflectMeasureItem(MEASUREITEMSTRUCT* mis) override;
    void OnLButtonDown(UINT flags, POINT pt) override;
    void OnLButtonDblClk(UINT flags, POINT pt) override;
    void OnKeyDown(UINT vk, UINT repCnt, UINT flags) override;
    LRESULT OnSetFont(WPARAM wp, LPARAM lp) override;

private:
    struct ItemState {
        int check = 0;
        bool enabled = true;
    };
    void SyncItems();
    void UpdateItemHeight();
    void InvalidateItem(int index);
    bool IsAutomatic() const noexcept { return m_checkStyle == BS_AUTOCHECKBOX || m_checkStyle == BS_AUTO3STATE; }
    // The state after `check` in the user's toggle cycle.
    int NextCheck(int check) const noexcept;
    // Moves the item to its next state and, in a multiple-selection list
    // where the item is selected, every selected enabled item with it.
    void ToggleByUser(int index);
    void NotifyCheckChange();
    // A click (or double click) at pt; true when it was handled here.
    bool HandleClick(POINT pt);

    std::vector<ItemState> m_items;
    UINT m_checkStyle = BS_AUTOCHECKBOX;
};

}  // namespace qv
