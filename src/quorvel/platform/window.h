// qv::Window: the library's window object.
//
// A Window either creates its HWND (Create/CreateEx) or attaches to an
// existing one (Attach, SubclassDlgItem). Either way it hooks the window with
// SetWindowSubclass, so it stacks cleanly with other subclasses and leaves
// GWLP_USERDATA to the host. Messages are dispatched by WindowProc's switch to
// virtual handlers named after their message (OnChar, OnKillFocus, ...).
// A handler that wants the platform's processing calls Default(); a handler
// that does not call it has handled the message.
//
// Reflection: a control learns about its own notifications (WM_COMMAND,
// WM_NOTIFY, WM_CTLCOLOR*, WM_DRAWITEM, WM_MEASUREITEM, WM_COMPAREITEM,
// WM_DELETEITEM, WM_CHARTOITEM, WM_VKEYTOITEM, WM_HSCROLL, WM_VSCROLL)
// through a subclass that the Window installs on its parent, whatever the
// parent is (one of ours or a plain Win32 dialog). The parent's subclass
// finds the child the message is about and calls its OnChildNotify; when the
// child handles it, the parent never sees the message. Owner-drawn item
// messages of menus (wParam 0) are never reflected.
//
// Exceptions stop at the window's edge: a handler that throws is logged and
// the message gets a safe answer (window.cpp lists them); the window keeps
// working.
//
// Lifetime: the object detaches itself on WM_NCDESTROY, whichever of parent
// or child goes first. Destroying the object destroys a window it created and
// merely detaches from a window it attached to. The handlers of a derived
// class are no longer reached from the base destructor, so a derived class
// that must see its own WM_DESTROY calls DestroyWindow in its destructor.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>

#include "quorvel/common/api.h"

namespace qv {

class QV_API Window {
public:
    Window() noexcept = default;
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    HWND m_hWnd = nullptr;

    operator HWND() const noexcept { return m_hWnd; }
    HWND GetSafeHwnd() const noexcept { return m_hWnd; }

    // CreateWindowExW; the object is attached before WM_NCCREATE, so its
    // OnCreate sees the creation.
    bool CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* windowName, DWORD style,
                  const RECT& rect, HWND parent, UINT id, void* createParam = nullptr);
    bool Create(const wchar_t* className, const wchar_t* windowName, DWORD style, const RECT& rect,
                HWND parent, UINT id);
    // Subclasses an existing window. False for a null or destroyed window or
    // one that already has an object.
    bool Attach(HWND hwnd);
    // Names that <windowsx.h> defines as function-like macros are declared in
    // parentheses, so the header compiles whichever the host included first;
    // such a host calls them as (w.SubclassWindow)(hwnd).
    bool (SubclassWindow)(HWND hwnd) { return Attach(hwnd); }
    // Subclasses the dialog item `id` of `parent` (WM_SUBCLASSDLGITEM style).
    bool SubclassDlgItem(UINT id, HWND parent);
    // Removes the subclass and forgets the window, which lives on.
    HWND Detach();
    HWND UnsubclassWindow() { return Detach(); }
    bool DestroyWindow();

    // The object attached to hwnd, or null.
    static Window* FromHandle(HWND hwnd) noexcept;

    // Installs the reflecting subclass on a parent; done by Attach for the
    // window's parent, and available for hosts that reparent controls.
    static bool InstallReflector(HWND parent);

    // Thin wrappers of the window functions.
    bool IsWindow() const noexcept { return m_hWnd && ::IsWindow(m_hWnd); }
    LRESULT SendMessage(UINT msg, WPARAM wp = 0, LPARAM lp = 0) const { return ::SendMessageW(m_hWnd, msg, wp, lp); }
    BOOL PostMessage(UINT msg, WPARAM wp = 0, LPARAM lp = 0) const { return ::PostMessageW(m_hWnd, msg, wp, lp); }
    std::wstring GetWindowText() const;
    bool SetWindowText(const wchar_t* text) { return ::SetWindowTextW(m_hWnd, text ? text : L"") != FALSE; }
    int GetWindowTextLength() const { return ::GetWindowTextLengthW(m_hWnd); }
    HWND GetParent() const { return ::GetParent(m_hWnd); }
    HWND GetDlgItem(int id) const { return ::GetDlgItem(m_hWnd, id); }
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongPtrW(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE)); }
    bool ModifyStyle(DWORD remove, DWORD add, UINT swpFlags = 0);
    bool ModifyStyleEx(DWORD remove, DWORD add, UINT swpFlags = 0);
    RECT GetClientRect() const;
    RECT GetWindowRect() const;
    bool MoveWindow(const RECT& rect, bool repaint = true);
    bool SetWindowPos(HWND after, int x, int y, int cx, int cy, UINT flags);
    bool ShowWindow(int cmd) { return ::ShowWindow(m_hWnd, cmd) != FALSE; }
    bool EnableWindow(bool enable = true) { return ::EnableWindow(m_hWnd, enable) != FALSE; }
    bool IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd) != FALSE; }
    bool IsWindowVisible() const { return ::IsWindowVisible(m_hWnd) != FALSE; }
    HWND SetFocus() { return ::SetFocus(m_hWnd); }
    void Invalidate(bool erase = true) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    void SetFont(HFONT font, bool redraw = true) { SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw); }
    HFONT GetFont() const { return reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)); }
    UINT_PTR SetTimer(UINT_PTR id, UINT elapse) { return ::SetTimer(m_hWnd, id, elapse, nullptr); }
    bool KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id) != FALSE; }

    // Whether this object created its window (and so destroys it).
    bool OwnsWindow() const noexcept { return m_ownsWindow; }

protected:
    // The message dispatcher: one switch calling the named handlers; the
    // default of every handler and of unlisted messages is Default().
    virtual LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp);
    // The previous window procedure with the message being dispatched.
    LRESULT Default();
    // The previous window procedure with another message.
    LRESULT DefWindowProc(UINT msg, WPARAM wp, LPARAM lp);
    // The message being dispatched (valid inside a handler).
    const MSG& GetCurrentMessage() const noexcept { return m_current; }

    // Reflected notifications. Answer true (and the result) when handled;
    // then the parent does not see the message. The messages without a
    // handler of their own below arrive here only; a derived class that
    // wants them overrides OnChildNotify, answers true and sets `result`:
    //   WM_COMPAREITEM  -1, 0 or 1 (the first item sorts before, equal, after)
    //   WM_DELETEITEM   TRUE
    //   WM_CHARTOITEM,  -1 for the list box's own action on the key, -2 when
    //   WM_VKEYTOITEM   the key is dealt with, or the index of the item the
    //                   list box is to act on
    virtual bool OnChildNotify(UINT msg, WPARAM wp, LPARAM lp, LRESULT* result);
    virtual bool OnReflectCommand(UINT /*notifyCode*/) { return false; }             // WM_COMMAND
    virtual bool OnReflectNotify(NMHDR* /*hdr*/, LRESULT* /*result*/) { return false; } // WM_NOTIFY
    // WM_CTLCOLOR*: a null brush means not handled.
    virtual HBRUSH OnReflectCtlColor(HDC /*dc*/, UINT /*ctlColorMsg*/) { return nullptr; }
    virtual bool OnReflectDrawItem(DRAWITEMSTRUCT* /*dis*/) { return false; }        // WM_DRAWITEM
    virtual bool OnReflectMeasureItem(MEASUREITEMSTRUCT* /*mis*/) { return false; }  // WM_MEASUREITEM
    virtual bool OnReflectScroll(UINT /*msg*/, UINT /*code*/, UINT /*pos*/) { return false; } // WM_HSCROLL/WM_VSCROLL

    // Message handlers; each defaults to Default().
    virtual int OnCreate(CREATESTRUCTW* cs);                               // WM_CREATE
    virtual void OnDestroy();                                              // WM_DESTROY
    virtual void OnNcDestroy();                                            // WM_NCDESTROY (before detach)
    virtual void PostNcDestroy() {}                                        // after detach; may delete this
    virtual void OnChar(UINT ch, UINT repCnt, UINT flags);                 // WM_CHAR
    virtual void OnKeyDown(UINT vk, UINT repCnt, UINT flags);              // WM_KEYDOWN
    virtual void OnKeyUp(UINT vk, UINT repCnt, UINT flags);                // WM_KEYUP
    virtual void OnSysKeyDown(UINT vk, UINT repCnt, UINT flags);           // WM_SYSKEYDOWN
    virtual void OnSetFocus(HWND oldFocus);                                // WM_SETFOCUS
    virtual void OnKillFocus(HWND newFocus);                               // WM_KILLFOCUS
    virtual void OnPaint();                                                // WM_PAINT
    virtual BOOL OnEraseBkgnd(HDC dc);                                     // WM_ERASEBKGND
    virtual void OnSize(UINT type, int cx, int cy);                        // WM_SIZE
    virtual void OnMove(int x, int y);                                     // WM_MOVE
    virtual void OnMouseMove(UINT flags, POINT pt);                        // WM_MOUSEMOVE
    virtual void OnMouseLeave();                                           // WM_MOUSELEAVE
    virtual BOOL OnMouseWheel(UINT flags, short delta, POINT pt);          // WM_MOUSEWHEEL
    virtual void OnLButtonDown(UINT flags, POINT pt);                      // WM_LBUTTONDOWN
    virtual void OnLButtonUp(UINT flags, POINT pt);                        // WM_LBUTTONUP
    virtual void OnLButtonDblClk(UINT flags, POINT pt);                    // WM_LBUTTONDBLCLK
    virtual void OnRButtonDown(UINT flags, POINT pt);                      // WM_RBUTTONDOWN
    virtual void OnRButtonUp(UINT flags, POINT pt);                        // WM_RBUTTONUP
    virtual void OnMButtonDown(UINT flags, POINT pt);                      // WM_MBUTTONDOWN
    virtual void OnTimer(UINT_PTR id);                                     // WM_TIMER
    virtual BOOL OnSetCursor(HWND wnd, UINT hitTest, UINT mouseMsg);       // WM_SETCURSOR
    virtual UINT OnGetDlgCode();                                           // WM_GETDLGCODE
    virtual void OnContextMenu(HWND wnd, POINT pt);                        // WM_CONTEXTMENU
    virtual BOOL OnHelpInfo(HELPINFO* info);                               // WM_HELP
    // WM_COMMAND and WM_NOTIFY from this window's own children and menus
    // (after reflection to the child has declined them).
    virtual BOOL OnCommand(WPARAM wp, LPARAM lp);                          // WM_COMMAND
    virtual BOOL OnNotify(WPARAM wp, LPARAM lp, LRESULT* result);          // WM_NOTIFY
    virtual void OnHScroll(UINT code, UINT pos, HWND scrollBar);           // WM_HSCROLL
    virtual void OnVScroll(UINT code, UINT pos, HWND scrollBar);           // WM_VSCROLL
    virtual void OnEnable(BOOL enable);                                    // WM_ENABLE
    virtual void OnShowWindow(BOOL show, UINT status);                     // WM_SHOWWINDOW
    virtual void OnCaptureChanged(HWND newCapture);                        // WM_CAPTURECHANGED
    virtual void OnGetMinMaxInfo(MINMAXINFO* mmi);                         // WM_GETMINMAXINFO
    virtual LRESULT OnCut(WPARAM wp, LPARAM lp);                           // WM_CUT
    virtual LRESULT OnCopy(WPARAM wp, LPARAM lp);                          // WM_COPY
    virtual LRESULT OnPaste(WPARAM wp, LPARAM lp);                         // WM_PASTE
    virtual LRESULT OnClear(WPARAM wp, LPARAM lp);                         // WM_CLEAR
    virtual LRESULT OnSetText(WPARAM wp, LPARAM lp);                       // WM_SETTEXT
    virtual LRESULT OnGetText(WPARAM wp, LPARAM lp);                       // WM_GETTEXT
    virtual LRESULT OnGetTextLength(WPARAM wp, LPARAM lp);                 // WM_GETTEXTLENGTH
    virtual LRESULT OnSetFont(WPARAM wp, LPARAM lp);                       // WM_SETFONT

private:
    friend struct WindowAccess;
    void AttachInternal(HWND hwnd);
    LRESULT Dispatch(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    static LRESULT CALLBACK SubclassProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    static LRESULT CALLBACK ReflectorProc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
    static LRESULT CALLBACK CbtProc(int code, WPARAM wp, LPARAM lp);

    MSG m_current{};
    LRESULT m_defaultResult = 0;
    bool m_defaultCalled = false;
    bool m_ownsWindow = false;
};

// Registers a window class whose procedure is DefWindowProcW, for windows
// that a Window object creates and subclasses. Registered once per process
// in the library's module; answers the class atom name or null.
QV_API const wchar_t* RegisterLibraryWindowClass(const wchar_t* className, UINT style, HCURSOR cursor,
                                                 HBRUSH background);

}  // namespace qv
