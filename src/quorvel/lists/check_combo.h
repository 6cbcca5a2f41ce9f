// XCheckComboBox: a drop-down list combo box whose list shows a check box
// before every entry, for picking several values from a short list.
//
// The combo box is owner-drawn with strings (CBS_DROPDOWNLIST,
// CBS_OWNERDRAWFIXED, CBS_HASSTRINGS; Create adds them). Check states are
// kept per text: entries with equal texts (compared exactly, case included)
// share one state, so checking one checks them all. The states are recorded
// by AddString and live in the combo box object, so they can be set and read
// before the list has ever been opened.
//
// The drop-down list is taken over as an XComboCheckListBox the first time it
// asks for its colours (or when it is first dropped down). The user toggles
// an entry by clicking its box, or the highlighted entry with Space while the
// list is open; a click on the box leaves the list open, a click on the text
// selects the entry and closes it as usual. Opening the list checks the entry
// that is selected at that moment.
//
// The field shows the texts of the checked entries, each text once, in list
// order and joined by ", "; with nothing checked it shows the selected
// entry's text (or nothing). The form reads the result with GetCheck(index)
// or IsChecked(text), or all of it with GetCheckedText().
//
// DPI: the check box, its column, the smallest item height and the field's
// text inset are sizes at 96 DPI scaled to the combo box's DPI; the items
// are measured again when that changes.
//
// Screen readers: the combo box is named by its label and reports what its
// field shows as its value (the checked entries, or the selected one when
// none is checked). Its entries, and the items of the open list, are check
// buttons named by their text, checked or not; every change of a check is
// announced for the entry (child index + 1) and, when the field's text
// changes with it, as a new value of the combo box.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"

class XCheckComboBox;

// The drop-down list of an XCheckComboBox: draws a check box before every
// item and turns clicks on the box and Space into toggles of its combo box's
// shared states. Its own per-item states mirror the combo box's.
class QV_API XComboCheckListBox : public qv::ListBox, public virtual qv::AccessibleSource {
public:
    // Side of the check box in pixels at 96 DPI.
    enum : int { kCheckSize = 13 };

    explicit XComboCheckListBox(XCheckComboBox* combo = nullptr) noexcept : m_combo(combo) {}

    // Takes over the combo box's list window (class "ComboLBox").
    bool Attach(HWND hwnd);

    // 0 unchecked, 1 checked; false for an invalid index or state.
    bool SetCheck(int index, int check);
    // The item's state, -1 for an invalid index.
    int GetCheck(int index) const;

    // Draws an item: the box at the left, then the text. The list sends its
    // WM_DRAWITEM to the combo box, which hands it here.
    void DrawListItem(const DRAWITEMSTRUCT* dis);
    // The side of the box and the width of the box column at the left of
    // each item, at `dpi`.
    static int CheckSize(UINT dpi = qv::kBaseDpi) noexcept { return qv::ScaleToDpi(kCheckSize, dpi); }
    static int CheckAreaWidth(UINT dpi = qv::kBaseDpi) noexcept { return CheckSize(dpi) + qv::ScaleToDpi(4, dpi); }

    // qv::AccessibleSource: the items as check buttons (children 1..n) whose
    // default action checks or unchecks them.
    bool AccessibleChildCount(long& count) override;
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;
    bool AccessibleItemRect(long child, RECT& rect) override;
    bool AccessibleHitTest(POINT client, long& child) override;
    bool AccessibleDefaultAction(long child, std::wstring& action) override;
    bool AccessibleDoDefaultAction(long child) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    bool OnReflectDrawItem(DRAWITEMSTRUCT* dis) override;
    void OnLButtonDown(UINT flags, POINT pt) override;
    void OnLButtonDblClk(UINT flags, POINT pt) override;
    void OnLButtonUp(UINT flags, POINT pt) override;
    void OnKeyDown(UINT vk, UINT repCnt, UINT flags) override;

private:
    // A click at pt on an item's box; true when it toggled.
    bool HandleBoxClick(POINT pt);
    void Toggle(int index);
    void InvalidateItem(int index);
    // The DPI the items are measured at: the combo box's.
    UINT Dpi() const;

    XCheckComboBox* m_combo;
    std::vector<int> m_checks;
    bool m_swallowUp = false;  // the button-up of a box click
};

class QV_API XCheckComboBox : public qv::ComboBox, public virtual qv::AccessibleSource, public qv::DpiListener {
public:
    XCheckComboBox();
    ~XCheckComboBox() override;
    XCheckComboBox(const XCheckComboBox&) = delete;
    XCheckComboBox& operator=(const XCheckComboBox&) = delete;

    // Creates the combo box with the owner-drawn list styles added.
    bool Create(DWORD style, const RECT& rect, HWND parent, UINT id);

    // Adds the text and records its check state (shared with every entry of
    // the same text); sets the check in the list at once when the list is
    // already taken over. Returns the new index, negative on failure (then
    // nothing is recorded).
    int AddString(const wchar_t* text, bool checked);
    using qv::ComboBox::AddString;

    // The shared state of the entry's text: 1 checked, 0 not, -1 for an
    // invalid index.
    int GetCheck(int index) const;
    // Sets the state of the entry's text (every entry with that text).
    bool SetCheck(int index, bool checked);
    // The recorded state of a text; false for a text never added.
    bool IsChecked(const wchar_t* text) const;
    // The text the field shows (see above).
    std::wstring GetFieldText() const;
    // The checked texts, each once, in list order.
    std::vector<std::wstring> GetCheckedTexts() const;

    // The list, once taken over; null before.
    XComboCheckListBox* GetCheckList() noexcept { return m_list.m_hWnd ? &m_list : nullptr; }

    // qv::DpiListener: the items are measured again.
    void OnDpiChanged(UINT dpi) override;

    // qv::AccessibleSource: a combo box whose value is the field's text and
    // whose entries are check buttons (children 1..n).
    bool AccessibleValue(long child, std::wstring& value) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;
    bool AccessibleChildCount(long& count) override;
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleItemRect(long child, RECT& rect) override;
    bool AccessibleDefaultAction(long child, std::wstring& action) override;
    bool AccessibleDoDefaultAction(long child) override;

protected:
    // WM_CTLCOLOR* the combo box receives for its list: takes the list over
    // on the first WM_CTLCOLORLISTBOX. Null lets the message go on to the
    // parent as usual.
    virtual HBRUSH OnCtlColor(HDC dc, HWND wnd, UINT ctlColorMsg);
    // The colours of the field when it is not selected.
    virtual COLORREF FieldTextColor() const { return ::GetSysColor(COLOR_WINDOWTEXT); }
    virtual COLORREF FieldBkColor() const { return ::GetSysColor(COLOR_WINDOW); }
    // Reflected CBN_DROPDOWN: the selected entry becomes checked.
    virtual void OnDropdown();
    // The field (ODT_COMBOBOX, ODS_COMBOBOXEDIT) and list items the parent
    // receives.
    virtual void DrawItem(DRAWITEMSTRUCT* dis);
    // The height of the list items: the height of "Test" in the combo box's
    // font, and at least the check box plus a pixel above and below.
    virtual void MeasureItem(MEASUREITEMSTRUCT* mis);

    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    bool OnReflectCommand(UINT notifyCode) override;
    bool OnReflectDrawItem(DRAWITEMSTRUCT* dis) override;
    bool OnReflectMeasureItem(MEASUREITEMSTRUCT* mis) override;

private:
    friend class XComboCheckListBox;

    // Takes the list window over and applies the recorded states.
    void TakeOverList(HWND list);
    // Records the state of `text` and shows it on every entry with that text.
    void ApplyState(const std::wstring& text, bool checked);
    // A user's toggle of list item `index`.
    void ToggleFromList(int index);
    void DrawField(const DRAWITEMSTRUCT* dis);

    std::map<std::wstring, bool> m_checks;
    XComboCheckListBox m_list;
};

// Colour-scheme variant: text RGB(8, 0, 0) on the system window colour until
// the host sets its own colours; the field and the list use them.
class QV_API XCheckComboBoxColor : public qv::ColorVariant<XCheckComboBox> {
public:
    XCheckComboBoxColor() : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}

protected:
    HBRUSH OnCtlColor(HDC dc, HWND wnd, UINT ctlColorMsg) override;
    COLORREF FieldTextColor() const override { return m_scheme.TextColor(); }
    COLORREF FieldBkColor() const override { return m_scheme.BkColor(); }
};
