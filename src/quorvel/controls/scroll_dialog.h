// XScrollDialog: a dialog base class for a host's resizable dialogs. When the
// user makes the dialog smaller than it was laid out, it gains scroll bars
// that scroll its contents (8 pixels a unit across, 4 pixels down; a page
// down is the whole shortfall, a page across 8 units), and the mouse wheel
// scrolls it as well (down when it can, otherwise across). While the dialog
// is not smaller than its layout, a size grip (XScrollGripper) sits in its
// bottom-right corner; the grip stays hidden in a maximised dialog and in
// one that cannot be resized (no WS_THICKFRAME), where it would have
// nothing to do.
//
// Every change of size first scrolls the contents back to the origin, then
// sets the ranges for the new size; the layout is the client rectangle the
// dialog had when it was initialised.
//
// The host derives its dialogs from it and names its own template and
// module; the default constructor takes the library's empty child page
// (IDD_QV_FORMVIEW), for a page whose controls the host makes at run time.
//
// DPI: the units are 8 and 4 pixels at 96 DPI, scaled to the dialog's DPI,
// and the grip is as large as the system's scroll bars at that DPI. When
// the dialog moves to a monitor of another DPI it scrolls back to the
// origin, rescales its layout size with the fields the system scaled, makes
// the grip again at the new size and sets up its ranges again; a top-level
// dialog also takes the window rectangle the system suggests for the new
// DPI.
//
// Screen readers: the grip is a grip named "Size grip".
#pragma once

#include "quorvel/common/api.h"
#include "quorvel/controls/scroll_dialog_rules.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dialog.h"
#include "quorvel/platform/dpi.h"

// The size grip: a size-box scroll bar whose whole area answers the
// hit-test as the bottom-right sizing border, so that dragging it resizes
// the dialog it sits on.
class QV_API XScrollGripper : public qv::ScrollBar, public qv::AccessibleSource {
public:
    enum : UINT { kId = 59936 };
    enum : DWORD { kStyle = WS_CHILD | WS_VISIBLE | SBS_SIZEGRIP | SBS_SIZEBOX | SBS_SIZEBOXBOTTOMRIGHTALIGN };

    // Screen readers: a grip, named "Size grip" (translated).
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleRole(long child, long& role) override;

protected:
    // WM_NCHITTEST: HTBOTTOMRIGHT where the bar answers HTCLIENT;
    // WM_NCLBUTTONDOWN on it starts sizing the dialog.
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
};

class QV_API XScrollDialog : public qv::Dialog, public qv::DpiListener {
public:
    // Pixels per unit at 96 DPI (UnitX(), UnitY() answer them at the
    // dialog's DPI).
    enum : int { kUnitX = qv::scrolling::kUnitX, kUnitY = qv::scrolling::kUnitY };

    // The library's empty child page.
    XScrollDialog() noexcept;
    // The template `templateId` of `templateModule` (null: the library's
    // own templates), run with `parent` as its parent or owner.
    XScrollDialog(unsigned int templateId, HWND parent, HINSTANCE templateModule = nullptr) noexcept;
    ~XScrollDialog() override;

    // Runs or creates the dialog with the parent given to the constructor.
    INT_PTR DoModal() { return Dialog::DoModal(m_pParent); }
    bool Create() { return Dialog::Create(m_pParent); }
    using Dialog::Create;
    using Dialog::DoModal;

    // Read-outs of the scroll state: the excess, range maximum and position
    // of each direction, in units.
    const qv::scrolling::Axis& HorizontalScroll() const noexcept { return m_model.Horizontal(); }
    const qv::scrolling::Axis& VerticalScroll() const noexcept { return m_model.Vertical(); }
    // The client rectangle the dialog was laid out with.
    RECT GetInitialClientRect() const noexcept { return m_rcInitialClient; }
    bool IsScrollingDisabled() const noexcept { return m_bScrollingDisabled; }
    HWND GetGripper() const noexcept { return m_gripper.m_hWnd; }
    // Pixels per unit at the dialog's DPI.
    int UnitX() const noexcept { return m_model.UnitX(); }
    int UnitY() const noexcept { return m_model.UnitY(); }

    // The dialog now draws at `dpi` (see the top of this file).
    void OnDpiChanged(UINT dpi) override;

protected:
    // Base initialisation, then (unless scrolling is disabled) the layout is
    // remembered and the grip made.
    BOOL OnInitDialog() override;

    // Scrolls the contents back to the origin; both positions to 0.
    void ResetScrollbars();
    // Ranges, positions and the grip for the current client size.
    void SetupScrollbars();
    // No more scrolling: the grip goes, later sizes only resize.
    void DisableScrolling();
    // The grip's client size, (0, 0) when it has no window.
    SIZE GetGripperSize() const;

    void OnSize(UINT type, int cx, int cy) override;
    // The dialog's own bars (no scroll-bar window): the step of the command.
    void OnVScroll(UINT code, UINT pos, HWND scrollBar) override;
    void OnHScroll(UINT code, UINT pos, HWND scrollBar) override;
    BOOL OnMouseWheel(UINT flags, short delta, POINT pt) override;
    // WM_MOUSEHWHEEL; WM_DPICHANGED (the suggested rectangle).
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;

private:
    // Scrolls back and sets the ranges up until the client size holds.
    void Relayout();
    // The grip's size: the system's scroll-bar size at the dialog's DPI.
    SIZE GripMetrics() const;
    void ScrollVertically(int step);
    void ScrollHorizontally(int step);
    bool IsMaximised() const;

    HWND m_pParent = nullptr;
    qv::scrolling::Model m_model;
    RECT m_rcInitialClient{};
    int m_bInitialized = 0;
    XScrollGripper m_gripper;
    bool m_bScrollingDisabled = false;
    bool m_bInLayout = false;  // the scroll bars' own size changes are part of the layout
    int m_iWheelCarry = 0;
    int m_iHWheelCarry = 0;
};
