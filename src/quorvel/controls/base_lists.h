// The base list fields: combo boxes, list boxes and check-list boxes, with
// their colour-scheme variants.
//
// Tab and Enter move the focus to the parent's next field (Shift: the
// previous one). The combo boxes and the plain list box tell their parent
// when they get the focus (WM_NOTIFY, NM_SETFOCUS). The combo boxes show
// their text in a tooltip, the check-list box how many of its items are
// checked.
//
// Screen readers: every field is named by its label and described by its
// tooltip's text; the combo boxes report their text as value and whether
// their list is open, the check-list boxes their items as check buttons
// (see platform/checklistbox.h) whose default action checks or unchecks
// them.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/color.h"
#include "quorvel/platform/checklistbox.h"
#include "quorvel/platform/controls.h"

class QV_API XBaseComboBox : public qv::ComboBox, public qv::FieldTooltip, public XTooltipOwnerKind {
public:
    // Child, visible, border, vertical scroll bar, group, tab stop,
    // CBS_DROPDOWNLIST; WS_EX_CLIENTEDGE.
    enum : DWORD { kStyle = 0x50A30003 };

    // Creates the combo box (rect includes the dropped list) and its
    // tooltip. FALSE when either could not be made, also for a null or
    // destroyed parent.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);

    // The tooltip shows the current text.
    int CreateTooltip() override;

    // XTooltipOwnerKind: the tooltip sits below the combo box's field.
    int TooltipOwnerKind() const override { return kOwnerComboBox; }

    // qv::AccessibleSource: a combo box, open or closed.
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

protected:
    BOOL CreateWithStyle(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent, DWORD style);
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;     // WM_CHAR: Tab and Enter move on
    void OnSetFocus(HWND oldFocus) override;                    // WM_SETFOCUS
    void OnDestroy() override;                                  // WM_DESTROY
};

// The editable combo box. Tab and Enter typed into its edit part move on as
// well, and the mouse over the edit part reaches the tooltip.
class QV_API XBaseEditComboBox : public XBaseComboBox {
public:
    // As XBaseComboBox, with CBS_DROPDOWN.
    enum : DWORD { kStyle = 0x50A30002 };

    XBaseEditComboBox();
    ~XBaseEditComboBox() override;

    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);

    // The edit part, or null.
    HWND GetEditPart() const;

private:
    class EditPart;
    std::unique_ptr<EditPart> m_editPart;
};

class QV_API XBaseListBox : public qv::ListBox, public virtual qv::AccessibleSource {
public:
    // Child, visible, border, vertical scroll bar, group, tab stop,
    // LBS_NOTIFY, LBS_SORT, LBS_NOINTEGRALHEIGHT; WS_EX_CLIENTEDGE.
    enum : DWORD { kStyle = 0x50A30103 };

    // FALSE for a null or destroyed parent. `text` becomes the window text.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);

    // qv::AccessibleSource: a list (its items are the list box's own).
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

protected:
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;     // WM_CHAR: Tab and Enter move on
    void OnSetFocus(HWND oldFocus) override;                    // WM_SETFOCUS
};

// A check-list box that paints in its own colours and shows "n of m
// selected" in its tooltip. Its defaults are the text colour RGB(8, 0, 0)
// and the background RGB(5, 0, 0), a near-black, until the host sets its
// own colours; the background colour paints the area below the items.
class QV_API XBaseCheckListBox : public qv::CheckListBox, public qv::FieldTooltip, public XBaseColor {
public:
    // Child, visible, border, vertical scroll bar, group, tab stop,
    // LBS_OWNERDRAWFIXED, LBS_HASSTRINGS, LBS_WANTKEYBOARDINPUT; no extended style.
    enum : DWORD { kStyle = 0x50A30450 };

    XBaseCheckListBox();

    // Creates the list and its tooltip. The list has no text of its own:
    // `text` is not used. FALSE when either could not be made.
    BOOL Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);

    // The tooltip shows how many items are checked (indeterminate ones do
    // not count).
    int CreateTooltip() override;

    void SetTextColor(unsigned long colour) override;
    void SetBkColor(unsigned long colour) override;
    const qv::ColorScheme& Scheme() const noexcept { return m_scheme; }

    // qv::AccessibleSource: "Check" or "Uncheck" (translated), done as a
    // click on the item's box.
    bool AccessibleDefaultAction(long child, std::wstring& action) override;
    bool AccessibleDoDefaultAction(long child) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;     // WM_CHAR: Tab and Enter move on
    void OnDestroy() override;                                  // WM_DESTROY
    HBRUSH OnReflectCtlColor(HDC dc, UINT ctlColorMsg) override;  // reflected WM_CTLCOLORLISTBOX

    qv::ColorScheme m_scheme;
};

// The same, marked read-only for hosts that treat read-only fields alike.
class QV_API XBaseReadOnlyCheckListBox : public XBaseCheckListBox, public XBaseReadOnlyColor {
public:
    void SetTextColor(unsigned long colour) override { XBaseCheckListBox::SetTextColor(colour); }
    void SetBkColor(unsigned long colour) override { XBaseCheckListBox::SetBkColor(colour); }
};

// A check-list box whose item texts may hold tabs, aligned on tab stops.
// Created by the host (CheckListBox::Create with its own style, or
// attached to a dialog's owner-drawn list box with strings).
class QV_API XTabCheckListBox : public qv::CheckListBox {
public:
    // One stop at half the average character width.
    void SetTabStops();
    // One stop every `cx` dialog units; false for a negative cx.
    bool SetTabStops(const int& cx);
    // `count` stops in dialog units, each after the one before (the first
    // after 0). On a stop out of order the answer is false and the stops
    // from that one on are left as they were.
    bool SetTabStops(int count, int* stops);
    // The stops in pixels, as TabbedTextOut takes them.
    const std::vector<int>& GetTabStopPixels() const noexcept { return m_tabStops; }

    // The average character width of the list's font: its lfWidth when that
    // is set, else the dialog base unit.
    int GetAverageCharWidths() const;

    // Draws an item's text with its tabs expanded.
    void DrawItem(DRAWITEMSTRUCT* dis) override;

    // qv::AccessibleSource: as XBaseCheckListBox.
    bool AccessibleDefaultAction(long child, std::wstring& action) override;
    bool AccessibleDoDefaultAction(long child) override;

protected:
    void OnChar(UINT ch, UINT repCnt, UINT flags) override;     // WM_CHAR: Tab and Enter move on

private:
    int DialogUnitsToPixels(int dialogUnits) const;

    std::vector<int> m_tabStops;
};

// Colour-scheme variants: text RGB(8, 0, 0) on the system window colour
// until the host sets its own colours.
class QV_API XBaseComboBoxColor : public qv::ColorVariant<XBaseComboBox> {
public:
    XBaseComboBoxColor() : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}

protected:
    // Before the list drops down: ten rows high (five for tall fonts) and
    // wide enough for the widest item. The parent is told as well.
    bool OnReflectCommand(UINT notifyCode) override;            // reflected CBN_DROPDOWN

private:
    void SizeDropDown();
};

class QV_API XBaseEditComboBoxColor : public qv::ColorVariant<XBaseEditComboBox> {
public:
    XBaseEditComboBoxColor() : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}
};

class QV_API XBaseListBoxColor : public qv::ColorVariant<XBaseListBox> {
public:
    XBaseListBoxColor() : ColorVariant(qv::kDefaultFieldTextColor, ::GetSysColor(COLOR_WINDOW)) {}
};
