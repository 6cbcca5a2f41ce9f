// Script buttons: commands the host configures, offered as push buttons.
//
// XBaseScriptBtn_Group is a borderless container (a STATIC) holding one
// XBaseSCriptButton per command. It lays its buttons out in one column or in
// rows whenever it is resized, reports the size it wants so the host can
// place it, and passes a click on any button to its owner (the parent given
// to Create) as one posted message, kMsgScriptButtonClicked (WM_USER +
// 0x212), with wParam 0 and lParam the command's id. Being posted, the
// message reaches the owner after the click has finished, so the owner may
// run a long script or even destroy the group in its handler.
//
// Host's calling order: Create, AddScriptCommand per command, SetAlignment,
// UpdateSize, then the size getters to place and size the group; the layout
// runs on every WM_SIZE.
//
//     XBaseScriptBtn_Group scripts;
//     scripts.Create(IDC_SCRIPTS, rect, font, dialog);
//     scripts.AddScriptCommand(101, L"Recalculate");
//     scripts.AddScriptCommand(102, L"Export");
//     scripts.SetAlignment(0);          // one column
//     scripts.UpdateSize();
//     ::SetWindowPos(scripts, nullptr, 0, 0, scripts.GetMaxWidth(), 200, SWP_NOMOVE | SWP_NOZORDER);
//     // the dialog: case XBaseScriptBtn_Group::kMsgScriptButtonClicked: RunScript(UINT(lParam));
//
// The buttons are real push buttons: they draw focus, pressed and disabled
// states the system's way, and screen readers find a push button named by
// its text. The group is a control parent, so Tab in a dialog walks through
// its buttons. Command texts are shown as the host gives them (they are the
// host's configured names, not the library's texts).
//
// XScriptContainer frames one control of the host together with a small
// "..." button (tooltip "Execute script") on one of its four sides. The
// container becomes the control's parent and passes everything the control
// and the button send it (WM_COMMAND, WM_NOTIFY) on to its own parent, so
// the host handles a press of the button (WM_COMMAND, BN_CLICKED, the
// button's id) and the control's notifications where it handles its other
// controls'. The control's window goes with the container's.
//
// DPI: every length here (the buttons' padding around their texts, the
// group's spacing, the container's margin, button size and size limits,
// the host's ConstructParam values included) is pixels at 96 DPI, scaled to
// the window's DPI when it is laid out, so a form looks the same at 150 %
// as at 100 %. The buttons' texts are measured in the fonts the host gives,
// which the host makes as large as the DPI wants. When the window moves to
// a monitor of another DPI, the group measures its buttons again (in its
// font, which it gives them too) and both lay themselves out again.
//
// Screen readers: a script button is a push button named by its command
// text; the group is a grouping named by the label before it; so is the
// container, whose "..." button is named by what it does, its tooltip text
// ("Execute script", translated), not by its three dots.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <memory>
#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/controls.h"
#include "quorvel/platform/dpi.h"

class XBaseScriptBtn_Group;

// One command of a group: a push button that tells its group when pressed.
class QV_API XBaseSCriptButton : public qv::Button, public qv::AccessibleSource {
public:
    // Child, visible, group, tab stop.
    enum : DWORD { kStyle = 0x50030000 };

    XBaseSCriptButton() noexcept = default;
    ~XBaseSCriptButton() override;

    // A push button with `text` at `rect` of `parent` (the group), with the
    // font set and redrawn. Nonzero when the button was made.
    int Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent);

    UINT GetCommandId() const noexcept { return m_nID; }
    // The width the button was created with (its text's, in a group).
    int GetNaturalWidth() const noexcept { return m_nNaturalWidth; }

    // Screen readers: a push button (named by its text).
    bool AccessibleRole(long child, long& role) override;

protected:
    bool OnReflectCommand(UINT notifyCode) override;  // reflected WM_COMMAND (BN_CLICKED)
    // Posts the click message with the command id to the group, when the
    // group is a window.
    void OnScriptButtonClicked();

private:
    friend class XBaseScriptBtn_Group;  // measures its buttons again at a new DPI

    HWND m_pParent = nullptr;
    UINT m_nID = 0;
    int m_nNaturalWidth = 0;
};

class QV_API XBaseScriptBtn_Group : public qv::Static, public qv::AccessibleSource, public qv::DpiListener {
public:
    // Child, visible (the group has no border and no text).
    enum : DWORD { kStyle = 0x50000000 };
    // Posted to the owner on a click: wParam 0, lParam the command id.
    enum : UINT { kMsgScriptButtonClicked = WM_USER + 0x212 };
    // SetAlignment values (any nonzero value means rows).
    enum : int { kAlignVertical = 0, kAlignHorizontal = 1 };

    XBaseScriptBtn_Group();
    ~XBaseScriptBtn_Group() override;

    // Creates the empty group at `rect` of `parent`, which becomes the owner
    // of the click messages; sets the font with redraw. Nonzero on success;
    // 0 for a null or destroyed parent or a group that already has a window.
    int Create(UINT id, const RECT& rect, HFONT font, HWND parent);

    // Adds a button for command `id` with `text`, sized to the text in the
    // group's font (text extent + 12 by + 4) at the group's top-left corner.
    // Nothing is laid out or resized: call UpdateSize and size the group.
    // TRUE when the button was made.
    BOOL AddScriptCommand(int id, const std::wstring& text);

    // Nonzero: rows; 0 (the default): one column.
    void SetAlignment(int alignment) noexcept { m_nAlignment = alignment; }
    int GetAlignment() const noexcept { return m_nAlignment; }

    // Measures the buttons: the common button width (the widest button as
    // made for its text, whatever width a layout gave it since) and the
    // content height the size getters report. Until it has run, the layout
    // gives the buttons no width. It also lays the buttons out in the
    // group's current size, so a group created at its final size (which
    // gets no WM_SIZE later) shows its buttons in place.
    void UpdateSize();
    int GetMinHeight() const;
    int GetMinWidth() const;
    int GetMaxHeight() const;
    int GetMaxWidth() const;
    int GetScriptCommandCount() const noexcept { return static_cast<int>(m_arrButtons.size()); }
    // The button of the index-th command (in the order added), or null.
    XBaseSCriptButton* GetScriptButton(int index) const noexcept;

    // Screen readers: a grouping (named by its label, as any text-less field).
    bool AccessibleRole(long child, long& role) override;
    // A new DPI: every button measured again in the group's font (which the
    // buttons take), the content size updated and the buttons laid out.
    void OnDpiChanged(UINT dpi) override;

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnSize(UINT type, int cx, int cy) override;                  // WM_SIZE
    // kMsgScriptButtonClicked from a button: posted on to the owner with the
    // same wParam and lParam, when the owner is a window. Answers 0.
    LRESULT OnScriptButtonClicked(WPARAM wp, LPARAM lp);

private:
    void Align_Horizontal(int cx, int cy);
    void Align_Vertical(int cx, int cy);
    void UpdateSize_Horizontal();
    void UpdateSize_Vertical();
    // A button for `text` in `font` at the group's DPI (text extent + padding).
    SIZE MeasureButton(const std::wstring& text, HFONT font) const;
    // The buttons that are windows, in order.
    std::vector<XBaseSCriptButton*> LiveButtons() const;

    HWND m_pOwner = nullptr;
    std::vector<std::unique_ptr<XBaseSCriptButton>> m_arrButtons;
    int m_nAlignment = kAlignVertical;
    int m_nHeight = 0;
    int m_nWidth = 0;
};

class QV_API XScriptContainer : public qv::Window, public qv::AccessibleSource, public qv::DpiListener {
public:
    // The "..." button: a push button that screen readers know by what it
    // does (its tooltip text) rather than by its caption.
    class QV_API ExecuteButton : public qv::Button, public qv::AccessibleSource {
    public:
        // The name readers hear; "" leaves them the caption.
        void SetAccessibleName(const std::wstring& name) { m_name = name; }
        bool AccessibleName(long child, std::wstring& name) override;
        bool AccessibleRole(long child, long& role) override;

    private:
        std::wstring m_name;
    };

    // Where the button sits beside the control.
    enum BtnPos : int { PosTop = 0, PosRight = 1, PosBottom = 2, PosLeft = 3 };

    // Every setting of a container, for the second constructor.
    struct ConstructParam {
        HWND pControl = nullptr;     // the hosted control (not owned)
        int nMaxHeight = 30;         // size limits of the control, used when bUseLimits
        int nMinHeight = 15;
        int nMaxWidth = 100;
        int nMinWidth = 50;
        bool bUseLimits = false;
        UINT nButtonId = 0;
        int nButtonWidth = 30;
        int nButtonHeight = 20;
        BtnPos ePosition = PosRight;
        std::wstring strCaption = L"...";
        std::wstring strTooltip = L"Execute script";
        int nMargin = 15;            // around the control and the button
    };

    // A container for `control` with the button (id `buttonId`) on side
    // `position`; every other setting at its default above.
    XScriptContainer(HWND control, BtnPos position, UINT buttonId);
    explicit XScriptContainer(const ConstructParam& param);
    ~XScriptContainer() override;

    // Creates the container at `rect` of `parent`: the button with its
    // caption and tooltip, and the hosted control moved inside. FALSE for a
    // null parent, a container that already has a window, or no hosted
    // control (then no window is left behind).
    BOOL Create(const RECT& rect, HWND parent, UINT id, DWORD style = WS_CHILD | WS_VISIBLE);

    // Relays every message to the button's tooltip, for hosts whose message
    // loop offers messages to the controls first. The tooltip already
    // watches the button itself, so the button's own messages are not
    // relayed twice. Never consumes the message.
    BOOL PreTranslateMessage(MSG* msg);

    HWND GetControl() const noexcept { return m_pControl; }
    BtnPos GetButtonPos() const noexcept { return m_ePosition; }
    // Moves the button to another side and lays the container out again.
    void SetButtonPos(BtnPos position);
    UINT GetButtonId() const noexcept { return m_nButtonId; }
    HWND GetButton() const noexcept { return m_btn.m_hWnd; }
    HWND GetToolTipCtrl() const noexcept { return m_tooltip.m_hWnd; }

    // Screen readers: a grouping named by the label before it.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleRole(long child, long& role) override;
    // A new DPI: the button takes the control's font again and the
    // container lays itself out at the new sizes.
    void OnDpiChanged(UINT dpi) override;

protected:
    int OnCreate(CREATESTRUCTW* cs) override;                          // WM_CREATE
    void OnDestroy() override;                                         // WM_DESTROY
    void OnSize(UINT type, int cx, int cy) override;                   // WM_SIZE
    BOOL OnCommand(WPARAM wp, LPARAM lp) override;                     // WM_COMMAND
    BOOL OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) override;     // WM_NOTIFY
    // Places the control and the button for the button on `position`, at
    // the container's DPI.
    void ManageLayout(BtnPos position);

private:
    HWND m_pControl = nullptr;
    int m_nMaxHeight = 30;
    int m_nMinHeight = 15;
    int m_nMaxWidth = 100;
    int m_nMinWidth = 50;
    bool m_bUseLimits = false;
    ExecuteButton m_btn;
    UINT m_nButtonId = 0;
    BtnPos m_ePosition = PosRight;
    int m_nButtonHeight = 20;
    int m_nButtonWidth = 30;
    std::wstring m_strCaption = L"...";
    std::wstring m_strTooltip = L"Execute script";
    qv::ToolTipCtrl m_tooltip;
    int m_nMargin = 15;
};
