// XButtonContainer: a child window holding a row or a column of equally
// sized push buttons made from a list of descriptions.
//
// Every button gets the size of the longest caption written in "W"s in the
// container's font, plus an inner margin of kInnerMargin on every side, so
// captions of any letters fit and the bar looks even. The buttons are laid
// out again whenever the container is resized: a row is centred vertically,
// a column starts at the top, both kSpacing apart and kSpacing from the
// edges (a column sits one more kSpacing in from the left). Buttons that do
// not fit are left where they were (at first a 5 x 0 sliver at (0, 5)), so
// a container too small shows the leading buttons only; GetMinSize says how
// large it must be to show them all.
//
// Captions and tooltip texts are English source texts, translated when the
// container is created. Each button with a tooltip text shows it when the
// mouse rests on it (the tooltip watches the buttons itself, so a host's
// message loop needs no relaying).
//
// Everything the buttons send their parent (WM_COMMAND with the command id
// of the description, WM_NOTIFY) goes on to the container's parent, so a
// host handles the bar's commands where it handles those of its other
// controls. The container is a control parent: Tab moves through its
// buttons with the rest of the dialog.
//
// DPI: the inner margin and the spacing are pixels at 96 DPI, scaled to the
// container's DPI; the captions are measured in the host's font, which the
// host makes as large as the DPI wants. The container lays its buttons out
// again when it moves to a monitor of another DPI.
//
// Screen readers: the container is a grouping named by the label before
// it; each button is a push button named by its caption (mnemonic marks
// removed), with its tooltip text as its description.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/window.h"

// One button of the container.
struct XButtonDescription {
    std::wstring caption;  // the button's text
    std::wstring tooltip;  // shown when the mouse rests on the button; "" for none
    UINT id = 0;           // the command id the button sends
};

class QV_API XButtonContainer : public qv::Window, public qv::AccessibleSource, public qv::DpiListener {
public:
    enum : int {
        kHorizontal = 0,  // one row
        kVertical = 1,    // one column
        kInnerMargin = 5,  // pixels at 96 DPI
        kSpacing = 5,      // pixels at 96 DPI
    };

    // `font` (not owned; null: the GUI font) measures and shows the captions.
    // The descriptions are copied, in display order.
    XButtonContainer(HFONT font, int orientation, const std::vector<XButtonDescription>& descriptions);
    ~XButtonContainer() override;

    // Creates the container (child, visible unless `style` says otherwise)
    // with its buttons and tooltip, and lays them out. FALSE when any of
    // them could not be made.
    BOOL Create(const RECT& rect, HWND parent, UINT id, DWORD style = WS_CHILD | WS_VISIBLE);

    // The common button size: the longest caption's length in "W"s, measured
    // in the container's font, plus twice the inner margin (at the
    // container's DPI) each way.
    virtual SIZE CalculateButtonSize();
    // Lays the buttons out in a row / a column inside `area`. False when a
    // button did not fit; the buttons before it are placed.
    virtual bool PositionButtonsHorizontal(RECT area, SIZE size);
    virtual bool PositionButtonsVertical(RECT area, SIZE size);

    // Lays the buttons out in the client area less the spacing (WM_SIZE).
    // `area` of the two positioning functions is already inside it; the
    // spacing between the buttons is the one at the container's DPI.
    void ManageLayout();
    // The smallest client size that shows every button.
    SIZE GetMinSize();

    int GetOrientation() const noexcept { return m_orientation; }
    int GetButtonCount() const noexcept { return static_cast<int>(m_buttons.size()); }
    // The button of description `index`, or null.
    HWND GetButton(int index) const noexcept;
    // The tooltip control of the buttons (null before Create).
    HWND GetToolTip() const noexcept { return m_tooltip.m_hWnd; }
    // The inner margin and the spacing at the container's DPI.
    int GetInnerMargin() const noexcept;
    int GetSpacing() const noexcept;

    // Screen readers: a grouping named by the label before it.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleRole(long child, long& role) override;
    // A new DPI: the buttons are laid out again at its sizes.
    void OnDpiChanged(UINT dpi) override;

protected:
    int OnCreate(CREATESTRUCTW* cs) override;                          // WM_CREATE
    // The tooltip goes before the buttons it watches, so that it lets go of
    // them itself.
    void OnDestroy() override;                                         // WM_DESTROY
    void OnSize(UINT type, int cx, int cy) override;                   // WM_SIZE
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;                     // WM_COMMAND
    BOOL OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) override;     // WM_NOTIFY

private:
    bool PlaceButtons(int orientation, const RECT& area, SIZE size);

    HFONT m_font;
    int m_orientation;
    std::vector<XButtonDescription> m_descriptions;
    qv::ToolTipCtrl m_tooltip;
    std::vector<std::unique_ptr<qv::Button>> m_buttons;
};
