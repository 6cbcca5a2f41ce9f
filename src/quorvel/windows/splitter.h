// XSplitterWnd: a two-column splitter window whose bar carries two collapse
// buttons (XSplitterButton).
//
// The splitter is a child window holding two panes side by side, with a bar
// of 12 pixels between them. The host puts its own child windows into the
// panes (SetPane). The upper button on the bar collapses the left pane and
// the lower one the right pane; while a pane is collapsed only its button
// shows, and pressing it restores both panes to the widths they had before
// the collapse (or to a third for column 0 when there are none).
//
// Mouse: over the bar the cursor is the west-east sizing arrow. A drag
// captures the mouse and the panes resize as the bar moves; Esc during the
// drag puts the bar back. Where the bar is released decides:
//   - both panes at least 21 pixels wide: the bar stays there, both buttons
//     show and no pane is collapsed any more;
//   - the left pane under 16 pixels (or the bar at the left edge): the left
//     pane collapses, as a press of the upper button;
//   - otherwise, more than 20 pixels left on the right: the bar stays;
//   - otherwise the right pane collapses, as a press of the lower button.
// The widths cached for a restore are those from before the drag. The same
// rules run whenever the splitter is resized (the left pane then needs only
// 16 pixels): a collapsed pane stays collapsed, and a pane that becomes too
// narrow collapses. The very first sizing instead widens a pane narrower than
// 15 (left) or 20 (right) pixels to that width and hides its button.
//
// Keyboard: DoKeyboardSplit() (for a host's menu item or accelerator, such
// as "Split" in a View menu) gives the bar the focus: Left and Right move it
// by 8 pixels (with Ctrl by 1), Home and End to the edges, Enter drops it
// there under the rules above (so End, Enter collapses the right pane) and
// Esc puts it back; so does the focus moving away. While the bar has the
// focus it is drawn in the shadow colour. Tab moves through the panes'
// controls (the splitter is a control parent); focus given to the splitter
// itself goes on to the active pane.
//
// Panes: each pane window gets the control id of its place, IdFromRowCol(row,
// column) (kPaneFirst + 16 * row + column), and the splitter positions,
// shows and hides it. A pane of width 0 is hidden; when it had the focus, the
// focus moves to the other pane. Toggle() puts the right pane away (it takes
// the id of row 1, column 0, kPaneRow1Col0, and the splitter shows one column
// without a bar) and brings it back on the next call.
//
// Notifications: whatever the panes send their parent (WM_COMMAND, WM_NOTIFY,
// WM_CTLCOLOR*, WM_DRAWITEM, WM_MEASUREITEM, WM_COMPAREITEM, WM_DELETEITEM,
// WM_VKEYTOITEM, WM_CHARTOITEM, WM_HSCROLL, WM_VSCROLL from a control) goes
// on to the splitter's parent, which answers it, so a host handles its panes'
// notifications where it handles those of its other controls. (Library
// controls in the panes hear theirs by reflection first, as anywhere.) A
// press of a button reaches the parent too, after the pane has collapsed or
// been restored, as WM_COMMAND with BN_CLICKED and the button's window in
// lParam (a collapse by a drag or a resize is no press and is not sent).
// The buttons' ids (kUpperButtonId, kLowerButtonId) do not fit the 16
// bits WM_COMMAND has for an id: the parent sees their low words (0xF69A and
// 0xF69B); GetDlgCtrlID of lParam gives the whole id.
//
// Active pane: the pane with the focus; while the focus is elsewhere, the
// pane SetActivePane made active or the last one the splitter saw with the
// focus (at a notification of a pane, a drag or a button press). As in a
// framework's splitter, GetActivePane and SetActivePane work only when the
// splitter has a parent frame: an ancestor that is a top-level window other
// than a dialog box, or an MDI child window. In a dialog (a top-level window
// of the dialog class) there is none: GetActivePane answers null and
// SetActivePane does nothing.
//
// Sizes: the bar and the gap between the panes are 12 pixels; the panes sit
// inside a border of the system's border width and height (SM_CXBORDER,
// SM_CYBORDER, read at Create; 10 and 0 before). The buttons span the bar
// less 2 pixels at each side; the upper one starts 80 pixels above the bar's
// vertical middle, both are 57 high and the lower one starts 20 below the
// upper one. Button faces come from the library's bitmaps 139 (upper at
// rest), 137 (upper held down), 138 (lower at rest) and 136 (lower held
// down), drawn centred; a face wider than its button loses some of the
// margin of button colour around its arrow, never a pixel of the arrow.
//
// DPI: these sizes, the edges that collapse a pane on a drop and the arrow
// keys' step are pixels at 96 DPI; the splitter uses them scaled to its
// window's DPI (GetBarSize() answers the bar's width), and the borders are
// the system's for that DPI. The faces are enlarged by whole multiples only,
// pixel for pixel (twice as large at 192 DPI), so the arrows stay sharp.
// When the splitter moves to a monitor of another DPI the widths it keeps
// (the columns', the minimums, those cached for a restore) are rescaled with
// it and the panes laid out again: each keeps its share.
//
// Screen readers: the bar, which has no window of its own, is item 1 of the
// splitter, a separator named "Splitter bar" whose value is the left pane's
// share of the width in per cent ("40%"; "0%" with the left pane collapsed,
// "100%" with the right one) and whose state is collapsed while a pane is
// collapsed and focused while the keyboard moves it. Every move announces
// the new value, every collapse and restore the new state. The buttons are
// push buttons named by what a press does now ("Collapse the left pane",
// "Restore both panes"), pressed while held down; a new name is announced.
// The splitter itself takes the name of the label before it.
//
// Sizes made once: the first restore in the process that has no usable
// cached widths sets a process-wide flag (SizesMadeOnce). It records only:
// every restore uses the splitter's cached widths whenever they still fit.
#pragma once

#include <windows.h>

#include <memory>

#include "quorvel/common/api.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/platform/window.h"

namespace qv::splitter {
class Model;
}

// A collapse button on the splitter's bar: a push button that draws a face
// bitmap of the library instead of text, one at rest and one while held
// down. Its window text is not shown; screen readers read it.
class QV_API XSplitterButton : public qv::Window, public qv::AccessibleSource {
public:
    enum : DWORD { kStyle = 0x50000020 };  // WS_CHILD | WS_VISIBLE | BS_LEFTTEXT

    XSplitterButton() noexcept = default;
    ~XSplitterButton() override;

    // Creates the button ("BUTTON" with kStyle, so it shows at once) on
    // `parent` with the faces `restBitmap` and `pressedBitmap`.
    bool Create(const RECT& rect, HWND parent, UINT id, UINT restBitmap, UINT pressedBitmap);
    // Loads the two faces from the library's resources (a face that is
    // missing draws nothing; a missing pressed face uses the rest face).
    // Grey RGB(192, 192, 192) in a face is the button's own colour.
    bool LoadBitmaps(UINT restBitmap, UINT pressedBitmap);
    // The bitmap ids of the faces at rest and held down (0 when none).
    UINT GetBitmapId(bool pressed) const noexcept { return m_ids[pressed ? 1 : 0]; }
    // The size of the face bitmap (0 x 0 when none is loaded).
    SIZE GetBitmapSize(bool pressed) const noexcept;
    // Where the face goes in the button's client area at its DPI: enlarged
    // by the whole multiple for the DPI and centred, one pixel (scaled)
    // right and down while held down. It may reach past the button's edges,
    // which cut off that much of the face's margin. Empty without a face.
    RECT GetFaceRect(bool pressed) const;

    // Screen readers: a push button; its state (pressed while held down,
    // focused, invisible, unavailable). The name is the window text.
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnPaint() override;                                               // WM_PAINT
    BOOL OnEraseBkgnd(HDC dc) override;                                    // WM_ERASEBKGND
    // Draws the face for the button's state into `dc`.
    virtual void DrawFace(HDC dc);

private:
    qv::Bitmap m_faces[2];
    UINT m_ids[2] = {0, 0};
};

class QV_API XSplitterWnd : public qv::Window, public qv::AccessibleSource, public qv::DpiListener {
public:
    enum : UINT {
        kUpperButtonId = 456346,  // collapses and restores the left pane
        kLowerButtonId = 456347,  // collapses and restores the right pane
        kPaneFirst = 0xE900,      // id of the pane in row 0, column 0 (59648)
        kPaneRow1Col0 = kPaneFirst + 16,  // 59664: where Toggle puts the right pane
        kBarSize = 12,            // the bar's width and the gap between the panes
    };
    // The bitmaps of the buttons' faces (at rest, held down).
    enum : UINT {
        kUpperFace = 139,
        kUpperFacePressed = 137,
        kLowerFace = 138,
        kLowerFacePressed = 136,
    };
    // The parts OnDrawSplitter draws.
    enum SplitType { kSplitBar = 1, kSplitBorder = 3 };

    XSplitterWnd();
    ~XSplitterWnd() override;

    // Creates the splitter on `parent` with two columns in one row, adds
    // WS_EX_CONTROLPARENT and reads the border sizes from the system. Set the
    // columns' widths before or after; column 0 starts at a third of the
    // width. (Names the base class has are hidden here; the splitter makes
    // its window only this way.)
    bool Create(HWND parent, const RECT& rect, UINT id, DWORD style = WS_CHILD | WS_VISIBLE);

    // ---- Panes ---------------------------------------------------------------
    static UINT IdFromRowCol(int row, int col) noexcept {
        return static_cast<UINT>(kPaneFirst) + 16u * static_cast<UINT>(row) + static_cast<UINT>(col);
    }
    // Makes `pane` the window of column `col` (0 or 1): it becomes a child of
    // the splitter with the id IdFromRowCol(0, col) and is laid out. A
    // window that held the place before loses the id (to 0) and is
    // otherwise left as it is, for the host to hide or destroy.
    bool SetPane(int col, HWND pane);
    // The window with the id of (row, col), or null.
    HWND GetPane(int row, int col) const;
    int GetRowCount() const noexcept { return 1; }
    int GetColumnCount() const noexcept;

    // ---- Column widths, as a framework's splitter ------------------------------
    // The width column `col` has now and its minimum (false for no such column).
    bool GetColumnInfo(int col, int& cxCur, int& cxMin) const;
    // The width column `col` is to have and its minimum, taken at the next
    // RecalcLayout. A column narrower than its minimum is not shown; column 1
    // always takes what column 0 and the bar leave.
    void SetColumnInfo(int col, int cxIdeal, int cxMin);
    // Lays the panes, the bar and its buttons out again.
    void RecalcLayout();

    // ---- The bar from the keyboard ---------------------------------------------
    // Gives the bar the focus for the arrow keys (see above). False when
    // there is no bar or the bar is already moving.
    bool DoKeyboardSplit();
    // Whether the bar is being moved (by the mouse or the keyboard).
    bool IsTracking() const noexcept { return m_track != Track::None; }

    // ---- Collapse and restore ----------------------------------------------------
    int GetBorderCX() const noexcept { return m_cxBorder; }
    int GetBorderCY() const noexcept { return m_cyBorder; }
    // The upper button's action: collapse the left pane when both are
    // shown, otherwise restore both.
    void BtnLeftPressed();
    // The lower button's action: collapse the right pane when both are
    // shown, otherwise restore both.
    void BtnRightPressed();
    // Keeps the current column widths for a restore (while a pane is
    // collapsed the widths from before stay kept; the columns are then
    // written back in their collapsed form: column 0 = 0 for the left pane,
    // column 0 = column 1's width less 3 and column 1 = 3 for the right one).
    void CacheSize();
    // The kept widths of columns 0 and 1.
    void ReadCachedSize(int& left, int& right) const;
    // The widths a restore brings (see the header comment): the kept column
    // 0 and the client width less it, or a third of the client width and of
    // the client height when nothing usable is kept.
    void MakeSplitSizes(int& left, int& right);
    // Gives the columns these widths (negatives 0; both 0 keeps the current
    // ones), keeps them for a restore, redraws the buttons and lays out.
    void UpdateSizes(int& left, int& right);
    // Keeps the widths, then gives the whole width to the left column
    // (closeRight) or to the right one.
    void CloseVertSplitView(bool closeRight);
    // Puts the right pane away or brings it back (see above).
    void Toggle();
    bool IsLeftCollapsed() const noexcept;
    bool IsRightCollapsed() const noexcept;
    // Whether some splitter of this process has fallen back to thirds.
    static bool SizesMadeOnce() noexcept;

    // ---- Active pane (only with a parent frame) --------------------------------
    // The active pane and its place (row and col untouched without one).
    HWND GetActivePane(int* row = nullptr, int* col = nullptr) const;
    // Makes the pane at (row, col), or the pane holding `wnd`, active and
    // gives the focus to `wnd` or the pane.
    void SetActivePane(int row, int col, HWND wnd = nullptr);
    // The parent frame (see above), or null.
    HWND GetParentFrame() const;

    // The collapse buttons (windows exist once the splitter is created).
    XSplitterButton& GetUpperButton() noexcept { return m_upper; }
    XSplitterButton& GetLowerButton() noexcept { return m_lower; }

    // The bar's width at the splitter's DPI (kBarSize at 96 DPI).
    int GetBarSize() const noexcept;
    // The bar's place in client coordinates (empty with one column).
    RECT GetBarRect() const;

    // ---- Screen readers (see the top of this file) ---------------------------
    enum : long { kBarItem = 1 };
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleValue(long child, std::wstring& value) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;
    bool AccessibleChildCount(long& count) override;
    bool AccessibleItemRect(long child, RECT& rect) override;
    bool AccessibleHitTest(POINT client, long& child) override;

    // The splitter now draws at `dpi`: borders, bar and buttons at its
    // sizes, the kept widths rescaled, laid out again.
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    // The class, style and extended style of the window Create makes; the
    // splitter's own class with WS_CLIPCHILDREN. False stops the creation.
    virtual bool PreCreateWindow(CREATESTRUCTW& cs);
    // Draws a part of the splitter into `dc`: kSplitBar the bar between the
    // columns (it places, and first creates, the buttons, then fills the rest
    // of the bar), kSplitBorder the border around the panes. A null `dc`
    // only places the buttons. `rect` is in client coordinates.
    virtual void OnDrawSplitter(HDC dc, int type, const RECT& rect);

    void OnSize(UINT type, int cx, int cy) override;                       // WM_SIZE
    void OnPaint() override;                                               // WM_PAINT
    void OnMouseMove(UINT flags, POINT pt) override;                       // WM_MOUSEMOVE
    void OnLButtonDown(UINT flags, POINT pt) override;                     // WM_LBUTTONDOWN
    void OnLButtonUp(UINT flags, POINT pt) override;                       // WM_LBUTTONUP
    void OnCaptureChanged(HWND newCapture) override;                       // WM_CAPTURECHANGED
    BOOL OnSetCursor(HWND wnd, UINT hitTest, UINT mouseMsg) override;      // WM_SETCURSOR
    void OnSetFocus(HWND oldFocus) override;                               // WM_SETFOCUS
    void OnKillFocus(HWND newFocus) override;                              // WM_KILLFOCUS
    void OnKeyDown(UINT vk, UINT repCnt, UINT flags) override;             // WM_KEYDOWN
    UINT OnGetDlgCode() override;                                          // WM_GETDLGCODE
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;                         // WM_COMMAND
    BOOL OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) override;         // WM_NOTIFY

private:
    enum class Track { None, Mouse, Keyboard };
    RECT AreaRect() const;
    RECT BarRect() const;
    void Apply();
    void PlaceButtons(const RECT& bar);
    void EndTracking(bool accept, int x);
    void NoteFocus();
    bool FocusVisiblePane();
    bool IsOwnButton(HWND wnd) const noexcept;
    bool ForwardToParent(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result);
    // Tells screen readers of a new position or collapse state of the bar.
    void AnnounceBar();

    std::unique_ptr<qv::splitter::Model> m_model;
    int m_cxBorder = 10;
    int m_cyBorder = 0;
    RECT m_rectUpper{};  // the buttons' places, in client coordinates
    RECT m_rectLower{};
    XSplitterButton m_upper;
    XSplitterButton m_lower;
    HWND m_activePane = nullptr;
    HWND m_focusBeforeTrack = nullptr;
    Track m_track = Track::None;
    int m_grabOffset = 0;
    bool m_created = false;
    int m_announcedPercent = -1;  // what readers last heard of the bar
    int m_announcedCollapsed = -1;
};
