// XTooltip: the library's own tooltip window.
//
// A borderless top-most pop-up that shows a mark-up text (tooltip/markup.h)
// for one of several registered tools (a window, or a rectangle inside it)
// after a delay, near the mouse cursor, optionally with a shadow and a
// balloon anchor pointing at the cursor, and hides it again on a timer, on
// clicks and on keys. F1 while the tooltip of a prompt is shown opens the
// prompt's context-help file.
//
// The control that owns a tooltip creates it with Create(owner), registers
// tools with AddTool and passes its mouse and keyboard messages to
// RelayEvent: WM_MOUSEMOVE, WM_MOUSELEAVE (the tooltip asks for it with
// TrackMouseEvent, to learn that the cursor left the owner), the button
// messages and WM_KEYDOWN. The tooltip relays the mouse messages it receives
// itself. A host window that carries a tool but relays nothing (a plain
// Win32 window) asks for SubclassTool instead: the tooltip then hears that
// window's messages itself.
//
// Per-tool appearance: every setter takes a last argument `tool`. -1, or an
// index that does not exist, changes the tooltip-wide default; an existing
// index stores the value in that tool's record and sets the record's mask
// bit, so that tool uses its own value. Getters answer the tool's value when
// its mask bit is set, else the default.
//
// Process-wide (shared by all tooltips, read once from the session settings
// by the first tooltip constructed): the display time, the wrap width, and
// whether tooltips are enabled at all. A popup time of 0 in the settings
// disables tooltips for the process: Create then makes no window.
//
// DPI: the font (given in points, or as a LOGFONT made for the owner's DPI),
// the margins, shadow, anchor and border of the size table (given as at 96
// DPI) and the offset below the owner's line are all drawn at the DPI of the
// owner window the tooltip points at, whatever monitor it is on; a tooltip
// that is showing when its DPI changes measures and places itself again.
//
// Screen readers: the tooltip window is a tooltip whose name is the plain
// text of what it shows (tags removed, the breaks the wrap width inserted
// taken out again); when it shows a new text it announces the new name.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "quorvel/common/api.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/platform/window.h"
#include "quorvel/tooltip/markup.h"

// One registered tool.
struct tagXTOOLTIP_INFO {
    HWND hWnd = nullptr;        // the tool window
    UINT nIDTool = 0;           // the caller's id; the index in the list identifies the tool for the setters
    UINT nMask = 0;             // which of the per-tool values below are set (XTooltip::kMask*)
    RECT rectBounds{};          // in hWnd's client coordinates; empty = the whole window
    std::wstring szText;        // mark-up text
    UINT nStyles = 0;           // XTooltip::kStyle*
    UINT nEffect = 0;           // background effect id (kept, not drawn)
    BYTE nGranularity = 0;      // background effect granularity (kept, not drawn)
    COLORREF crBegin = 0;       // gradient colours (kept, not drawn)
    COLORREF crMid = 0;
    COLORREF crEnd = 0;
    UINT nDirection = 0;        // XTooltip::kDir*
    UINT nBehaviour = 0;        // XTooltip::kBehaviour*
};
using XTOOLTIP_INFO = tagXTOOLTIP_INFO;

// What a tooltip asks of the object behind its owner window, to place the
// box below the owner's text and to find the prompt's help file for F1.
// The library's edit, combo box and prompt classes implement it; the tooltip
// finds it with qv::Window::FromHandle(owner) and a dynamic_cast, so an
// owner without it (or a window without a library object) is "other".
class QV_API XTooltipOwnerKind {
public:
    enum Kind {
        kOwnerOther = 0,
        kOwnerEdit = 1,      // the box moves 8 pixels down
        kOwnerComboBox = 2,  // the box moves 20 pixels down
        kOwnerPrompt = 3,    // 20 pixels down; F1 opens the context-help file
    };
    virtual ~XTooltipOwnerKind() = default;
    virtual int TooltipOwnerKind() const = 0;
    // The context-help file of a prompt ("" = none); other kinds answer "".
    virtual std::wstring TooltipContextHelpFile() const { return {}; }
};

class QV_API XTooltip : public qv::Window, public virtual qv::AccessibleSource, public qv::DpiListener {
public:
    // Styles.
    enum : UINT {
        kStyleAnchor = 0x01,        // balloon pointer towards the cursor
        kStyleShadow = 0x02,
        kStyleVCenter = 0x08,       // text centred vertically
        kStyleBottom = 0x10,        // text at the bottom
        kStyleShowInactive = 0x100, // show even when no window of the application is active
        kDefaultStyles = kStyleShadow | kStyleVCenter,
    };
    // Behaviour.
    enum : UINT {
        kBehaviourRepeat = 0x01,        // moving inside the shown tool re-shows it after the delay
        kBehaviourStay = 0x04,          // stays while the mouse moves inside the tool or over the tooltip
        kBehaviourStayOnTimeout = 0x08, // the display time does not hide it while the cursor is over it
        kBehaviourNoTimeout = 0x10,     // never hidden by time
    };
    // Which per-tool values a record sets.
    enum : UINT {
        kMaskStyles = 0x01,
        kMaskEffect = 0x02,
        kMaskColors = 0x04,
        kMaskDirection = 0x08,
        kMaskBehaviour = 0x10,
    };
    // Directions: where the box lies from the cursor.
    enum : UINT {
        kDirLeftTop = 0,      // above and left
        kDirRightTop = 1,     // above and right
        kDirLeftBottom = 2,   // below and left
        kDirRightBottom = 3,  // below and right (the default)
        kDirCount = 4,
    };
    // Colour table.
    enum : int {
        kColorBlack = 0,
        kColorText = 1,
        kColorBk = 2,
        kColorGradientMid = 3,
        kColorGradientEnd = 4,
        kColorShadow = 5,
        kColorBorder = 6,
        kColorCount = 7,
    };
    // Size table (entries 0 and 1 are kept but not used by the drawing).
    enum : int {
        kSizeMarginX = 2,
        kSizeMarginY = 3,
        kSizeShadowX = 4,
        kSizeShadowY = 5,
        kSizeAnchorWidth = 6,
        kSizeAnchorHeight = 7,
        kSizeAnchorOffset = 8,
        kSizeBorderX = 9,
        kSizeBorderY = 10,
        kSizeCount = 11,
    };
    // SetDelayTime/GetDelayTime: the display time (process-wide) and this
    // tooltip's initial delay, in milliseconds (the TTDT_* values).
    enum : DWORD { kDelayAutoPop = 2, kDelayInitial = 3 };
    // Timer ids.
    enum : UINT_PTR { kTimerShow = 256, kTimerHide = 257 };

    XTooltip();
    ~XTooltip() override;

    // Stores the owner and, when tooltips are enabled, creates the pop-up
    // window owned by it. FALSE only when that creation fails; with tooltips
    // disabled no window is made and the answer is TRUE.
    BOOL Create(HWND parent);
    HWND GetOwnerWindow() const { return m_hParent; }

    // ---- Tools ----
    // A tool for `wnd` (or `rect` of it). A text longer than the wrap width
    // gets "<br>" breaks inserted.
    void AddTool(HWND wnd, const std::wstring& text, const RECT* rect = nullptr, UINT id = 0);
    void AddTool(const tagXTOOLTIP_INFO& info);
    BOOL GetTool(int index, tagXTOOLTIP_INFO& info) const;
    void SetAtTool(int index, const tagXTOOLTIP_INFO& info);
    void RemoveTool(int index);
    void RemoveAllTools();
    BOOL IsExistTool(int index) const;
    int GetToolCount() const { return static_cast<int>(m_arrTools.size()); }
    // The tool under `point` (the owner's client coordinates), or -1.
    int FindTool(POINT point) const;
    // The tool of `wnd` with exactly `rect` (null = the whole window), or -1.
    int FindTool(HWND wnd, const RECT* rect) const;
    // The first tool with the id, or -1.
    int FindTool(UINT id) const;
    // The visible, enabled child of the owner under `point` (the owner's
    // client coordinates), the owner itself, or null outside it.
    HWND GetWndFromPoint(POINT point) const;

    // ---- Per-tool appearance (tool -1 = the defaults) ----
    void SetStyles(UINT styles, int tool = -1);
    void ModifyStyles(UINT remove, UINT add, int tool = -1);
    UINT GetStyles(int tool = -1) const;
    void SetDefaultStyles(int tool = -1) { SetStyles(kDefaultStyles, tool); }
    void SetEffectBk(UINT effect, BYTE granularity = 2, int tool = -1);
    UINT GetEffectBk(int tool = -1) const;
    UINT GetEffectBk(BYTE& granularity, int tool = -1) const;
    void SetGradientColors(COLORREF begin, COLORREF middle, COLORREF end, int tool = -1);
    void GetGradientColors(COLORREF& begin, COLORREF& middle, COLORREF& end, int tool = -1) const;
    void SetDirection(UINT direction, int tool = -1);
    UINT GetDirection(int tool = -1) const;
    void SetBehaviour(UINT behaviour, int tool = -1);
    UINT GetBehaviour(int tool = -1) const;
    // The mask of a tool's record (0 for a tool that does not exist).
    void SetMaskTool(int tool, UINT mask = 0);
    void ModifyMaskTool(int tool, UINT remove, UINT add);
    UINT GetMaskTool(int tool) const;

    // ---- Colours, sizes, font ----
    // Indexes of kColorCount or more are ignored; GetColor answers the text colour for them.
    void SetColor(int index, COLORREF color);
    COLORREF GetColor(int index) const;
    void SetDefaultColors();
    // Indexes of kSizeCount or more are ignored; GetSize answers 0 for them.
    void SetSize(int index, int value);
    int GetSize(int index) const;
    void SetDefaultSizes();
    // A font the host made: taken as made for the owner's DPI at the time
    // it is set (the screen's before Create).
    void SetFont(HFONT font);
    void SetFont(const LOGFONTW* font);
    // `size` in points, at the owner's DPI.
    void SetFont(const wchar_t* face, int size, BOOL bold = FALSE, BOOL italic = FALSE, BOOL underline = FALSE,
                 BOOL strikeOut = FALSE);
    // "Tahoma", 10 points.
    void SetDefaultFont();
    // The font as it was set (its height for the DPI it was set at).
    LOGFONTW GetFont() const { return m_LogFont; }
    // The font the tooltip draws with at `dpi`: the one set, its height and
    // width scaled from the DPI it was made for.
    LOGFONTW GetFontForDpi(UINT dpi) const;
    // The DPI the tooltip draws at: its owner's (the screen's without one).
    UINT GetDrawingDpi() const;

    // ---- Timing ----
    void SetDelayTime(DWORD which, UINT ms);
    UINT GetDelayTime(DWORD which) const;

    // The owner's (and the tooltip's own) mouse and keyboard messages. The
    // position that counts is the cursor's, not the message's point.
    void RelayEvent(const MSG* msg);
    // Relaying without the host's help: subclasses the tool window `wnd`
    // (SetWindowSubclass, one subclass per tooltip) so that its WM_MOUSEMOVE,
    // WM_MOUSELEAVE, button messages and WM_KEYDOWN reach RelayEvent before
    // the window handles them. The subclass goes when the window's last tool
    // is removed, when the tooltip is destroyed, and when the window is
    // destroyed; either may go first. FALSE for a window that is no tool of
    // this tooltip (add the tool first), a destroyed window, or a window of
    // another thread. A window that already relays to this tooltip by hand
    // does not need it.
    BOOL SubclassTool(HWND wnd);
    // Shows `tool` after the initial delay, or at once when `delayed` is
    // false (provided the cursor is still over it).
    void SetNewToolTip(int tool, bool delayed = true);
    // Hides the tooltip now.
    void Pop();
    BOOL IsVisible() const;

    // The mark-up engine with this tooltip's font and colours on `dc`:
    // measureOnly measures `text` (filling the tooltip's line lists) and
    // answers its size; otherwise draws it into `rect` with the lists of the
    // last measuring pass of the same text and answers (0, height).
    SIZE PrintTitleString(HDC dc, const RECT& rect, const std::wstring& text, bool measureOnly);
    // The measured size of the text shown last.
    SIZE GetTextSize() const { return m_szToolText; }

    // qv::DpiListener: a tooltip that is showing is measured and placed again.
    void OnDpiChanged(UINT dpi) override;

    // qv::AccessibleSource: a tooltip named by the plain text it shows.
    bool AccessibleName(long child, std::wstring& name) override;
    bool AccessibleRole(long child, long& role) override;
    bool AccessibleState(long child, long& state) override;

    static int GetVersionI();
    static const wchar_t* GetVersionC();

    // Forgets the process-wide settings (display time, wrap width, enabled
    // flag, help directory), so the next tooltip constructed reads them
    // again; all tooltips, old and new, then share what it read. For tests
    // and for hosts that change the session settings while running.
    static void ResetProcessSettings();

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
    void OnDestroy() override;                                   // WM_DESTROY
    void OnKillFocus(HWND newFocus) override;                    // WM_KILLFOCUS
    BOOL OnEraseBkgnd(HDC dc) override;                          // WM_ERASEBKGND
    void OnPaint() override;                                     // WM_PAINT
    void OnTimer(UINT_PTR id) override;                          // WM_TIMER
    virtual void OnActivateApp(BOOL active, DWORD threadId);     // WM_ACTIVATEAPP
    virtual void OnDraw(HDC dc, RECT rect);

    // Copies the current tool's effective values, measures its text and shows it at `cursor` (screen).
    virtual void PrepareDisplayToolTip(POINT cursor);
    // Places and shows the box `rect` (0, 0, width, height) at `cursor`.
    virtual void DisplayToolTip(POINT cursor, RECT rect);
    // `rect` (0, 0, width, height) moved to its place on the screen; may flip the effective direction.
    virtual void CalculateInfoBoxRect(POINT cursor, RECT& rect);

private:
    static LRESULT CALLBACK ToolSubclassProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    // Removes the subclass from `wnd`, or from every subclassed tool window (null).
    void UnsubclassTools(HWND wnd = nullptr) noexcept;
    void KillTimers(UINT_PTR id = 0);
    void ShowAfterDelay();
    void LeaveTools();
    bool ToolExists(int tool) const { return tool >= 0 && tool < static_cast<int>(m_arrTools.size()); }
    tagXTOOLTIP_INFO* Record(int tool);
    // The tool's record when its mask sets `maskBit`, else null (the default applies).
    const tagXTOOLTIP_INFO* OwnValues(int tool, UINT maskBit) const;
    void SetValue(int tool, UINT maskBit, UINT tagXTOOLTIP_INFO::*field, UINT value, UINT& fallback);
    UINT GetValue(int tool, UINT maskBit, UINT tagXTOOLTIP_INFO::*field, UINT fallback) const;
    // A screen point in the owner's client coordinates.
    POINT CursorInOwner(POINT screen) const;
    bool CursorOverTooltip() const;
    void OpenContextHelp();
    SIZE MeasureText(const std::wstring& text);
    void SetWindowRegion(const RECT& placed, POINT cursor);
    // Tells a reader the tooltip now shows another text.
    void AnnounceText();

    HWND m_hParent = nullptr;
    std::vector<tagXTOOLTIP_INFO> m_arrTools;
    std::vector<HWND> m_subclassedTools;  // tool windows whose messages reach RelayEvent by SubclassTool
    tagXTOOLTIP_INFO m_toolInfo;   // the current tool's record as fetched
    int m_nIndexCurrentWnd = -1;
    int m_nIndexDisplayWnd = -1;
    POINT m_ptOriginal{-1, -1};    // last cursor position seen by RelayEvent (screen)

    // Defaults for tools whose mask does not set a value.
    UINT m_nStyles = kDefaultStyles;
    UINT m_nEffect = 0;
    BYTE m_nGranularity = 2;
    UINT m_nDirection = kDirRightBottom;
    UINT m_nBehaviour = 0;
    // The values in force for the tool being shown.
    UINT m_nEffStyles = kDefaultStyles;
    UINT m_nEffEffect = 0;
    BYTE m_nEffGranularity = 2;
    COLORREF m_crEffBegin = 0, m_crEffMid = 0, m_crEffEnd = 0;
    UINT m_nEffDirection = kDirRightBottom;
    UINT m_nEffBehaviour = 0;

    COLORREF m_crColor[kColorCount]{};
    int m_nSizes[kSizeCount]{};
    LOGFONTW m_LogFont{};
    UINT m_nFontDpi = qv::kBaseDpi;  // the DPI m_LogFont's height is for

    qv::MarkupLines m_lines;       // per-line widths and heights of the last measuring pass
    SIZE m_szToolText{};
    qv::Region m_rgnBody;          // the box (with its anchor), window coordinates
    qv::Region m_rgnShadow;        // the shadow alone

    UINT m_nTimeInitial = 500;
    HWND m_hFocusBack = nullptr;   // focus given back when a prompt's tooltip hides
    POINT m_ptDisplayed{};         // the cursor the box was placed at (screen)
    std::wstring m_strAnnounced;   // the text a reader was last told of
};
