#include "quorvel/platform/window.h"

#include <windowsx.h>

#include "quorvel/common/boundary.h"
#include "quorvel/platform/accessible.h"
#include "quorvel/platform/dpi.h"
#include "quorvel/platform/module.h"

namespace qv {

namespace {

// Subclass ids: any value unique to this procedure works; the procedure's
// address plus the id identifies our subclass among others on the window.
constexpr UINT_PTR kObjectSubclassId = 0x51560001;   // 'QV' object
constexpr UINT_PTR kReflectorSubclassId = 0x51560002;

// The object being created by CreateEx on this thread, attached by the CBT
// hook at HCBT_CREATEWND, before the window sees WM_NCCREATE.
thread_local Window* t_creating = nullptr;

// Whether the window belongs to this process. A window's subclass record
// is a pointer into the memory of the process that subclassed it, kept in a
// window property that any process can read: asked about another process's
// window (the desktop window is the parent of a combo box's drop-down list),
// comctl32 would follow that pointer in our address space.
bool OwnedByThisProcess(HWND hwnd) {
    DWORD pid = 0;
    return hwnd && ::GetWindowThreadProcessId(hwnd, &pid) != 0 && pid == ::GetCurrentProcessId();
}

// GetWindowSubclass is exported by comctl32 (by name in version 6, by
// ordinal 411 before), but MinGW's import library does not list it.
BOOL WindowSubclassRef(HWND hwnd, SUBCLASSPROC proc, UINT_PTR id, DWORD_PTR* ref) {
    if (!OwnedByThisProcess(hwnd)) return FALSE;
    using Fn = BOOL(WINAPI*)(HWND, SUBCLASSPROC, UINT_PTR, DWORD_PTR*);
    static const Fn fn = [] {
        HMODULE comctl = ::GetModuleHandleW(L"comctl32.dll");
        if (!comctl) comctl = ::LoadLibraryW(L"comctl32.dll");
        if (!comctl) return Fn{};
        FARPROC p = ::GetProcAddress(comctl, "GetWindowSubclass");
        if (!p) p = ::GetProcAddress(comctl, reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(411)));
        return reinterpret_cast<Fn>(reinterpret_cast<void*>(p));
    }();
    return fn ? fn(hwnd, proc, id, ref) : FALSE;
}

POINT PointFromLParam(LPARAM lp) { return POINT{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)}; }

// The window's direct child that an owner-drawn item message is about: the
// item's window when it is one (a list box), otherwise the child with the
// item's control id (a combo box may name its inner list instead of itself).
HWND ItemOwner(HWND parent, HWND item, UINT ctlId) {
    if (item && ::GetParent(item) == parent) return item;
    return ::GetDlgItem(parent, static_cast<int>(ctlId));
}

// The child a notification to `parent` is about, or null when it is not a
// child's notification (menus, accelerators, window scroll bars).
HWND ReflectionTarget(HWND parent, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_COMMAND:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<HWND>(lp);
    case WM_NOTIFY:
        return lp ? reinterpret_cast<const NMHDR*>(lp)->hwndFrom : nullptr;
    case WM_DRAWITEM:
        if (wp == 0 || !lp) return nullptr;  // menu item
        return reinterpret_cast<const DRAWITEMSTRUCT*>(lp)->hwndItem;
    case WM_MEASUREITEM: {
        if (wp == 0 || !lp) return nullptr;  // menu item
        const auto* mis = reinterpret_cast<const MEASUREITEMSTRUCT*>(lp);
        return ::GetDlgItem(parent, static_cast<int>(mis->CtlID));
    }
    case WM_COMPAREITEM: {
        if (wp == 0 || !lp) return nullptr;
        const auto* cis = reinterpret_cast<const COMPAREITEMSTRUCT*>(lp);
        return ItemOwner(parent, cis->hwndItem, cis->CtlID);
    }
    case WM_DELETEITEM: {
        if (wp == 0 || !lp) return nullptr;
        const auto* dis = reinterpret_cast<const DELETEITEMSTRUCT*>(lp);
        return ItemOwner(parent, dis->hwndItem, dis->CtlID);
    }
    case WM_CHARTOITEM:
    case WM_VKEYTOITEM:
        return reinterpret_cast<HWND>(lp);  // the list box
    default:
        return nullptr;
    }
}

// Where the edges with Win32 log a caught exception: fixed positions, so
// that an entry of the log book leads back to its edge.
constexpr unsigned long kEdgeHandler = 1;     // a message handler (WindowProc) threw
constexpr unsigned long kEdgeNcDestroy = 2;   // OnNcDestroy or PostNcDestroy threw
constexpr unsigned long kEdgeReflector = 3;   // a child's OnChildNotify threw
constexpr unsigned long kEdgeCbtHook = 4;     // attaching a window being created threw

// What a window answers for a message whose handler threw. Nothing is thrown
// on into Win32 and the host; the message gets the answer that leaves the
// window consistent:
// - WM_NCCREATE answers FALSE and WM_CREATE -1: the creation fails (Create
//   answers false) rather than leaving a window whose object is half set up.
// - When the handler had already called Default(), the platform's answer to
//   that call stands: the message has been processed.
// - Keyboard, clipboard and text-changing input is swallowed (answer 0): a
//   refused keystroke, paste or text leaves text and selection exactly as
//   they were.
// - Everything else goes to the platform's processing (DefSubclassProc), as
//   if the object did not handle it. For WM_PAINT that validates the window,
//   so a paint handler that throws is not called again and again.
// WM_NCDESTROY is not answered here: Dispatch detaches and cleans up whatever
// its handlers do.
LRESULT AnswerAfterThrow(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, bool defaultCalled, LRESULT defaultResult) {
    switch (msg) {
    case WM_NCCREATE: return FALSE;
    case WM_CREATE: return -1;
    default: break;
    }
    if (defaultCalled) return defaultResult;
    switch (msg) {
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
    case WM_DEADCHAR:
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
    case WM_SYSCHAR:
    case WM_SYSDEADCHAR:
    case WM_UNICHAR:
    case WM_IME_CHAR:
    case WM_CUT:
    case WM_PASTE:
    case WM_CLEAR:
    case WM_UNDO:
    case WM_SETTEXT:
    case EM_REPLACESEL:
    case EM_SETSEL:
    case EM_UNDO:
        return 0;
    default:
        return ::DefSubclassProc(hwnd, msg, wp, lp);
    }
}

}  // namespace

Window::~Window() {
    if (m_hWnd && ::IsWindow(m_hWnd)) {
        if (m_ownsWindow)
            ::DestroyWindow(m_hWnd);
        else
            Detach();
    }
    m_hWnd = nullptr;
}

bool Window::CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* windowName, DWORD style,
                      const RECT& rect, HWND parent, UINT id, void* createParam) {
    if (m_hWnd || !className) return false;
    if ((style & WS_CHILD) && (!parent || !::IsWindow(parent))) return false;
    Window* const outer = t_creating;
    t_creating = this;
    HHOOK hook = ::SetWindowsHookExW(WH_CBT, &Window::CbtProc, nullptr, ::GetCurrentThreadId());
    HWND hwnd = ::CreateWindowExW(exStyle, className, windowName, style, rect.left, rect.top,
                                  rect.right - rect.left, rect.bottom - rect.top, parent,
                                  reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), LibraryModule(),
                                  createParam);
    if (hook) ::UnhookWindowsHookEx(hook);
    t_creating = outer;
    if (!hwnd) {
        m_hWnd = nullptr;
        return false;
    }
    if (m_hWnd != hwnd) AttachInternal(hwnd);  // the hook did not see it
    m_ownsWindow = true;
    if (parent) InstallReflector(parent);
    return true;
}

bool Window::Create(const wchar_t* className, const wchar_t* windowName, DWORD style, const RECT& rect,
                    HWND parent, UINT id) {
    return CreateEx(0, className, windowName, style, rect, parent, id);
}

LRESULT CALLBACK Window::CbtProc(int code, WPARAM wp, LPARAM lp) {
    try {
        if (code == HCBT_CREATEWND && t_creating) {
            Window* self = t_creating;
            t_creating = nullptr;  // only the first window: children made in OnCreate are not ours
            self->AttachInternal(reinterpret_cast<HWND>(wp));
        }
    } catch (...) {
        LogCaughtException(" qv::Window::CbtProc", kEdgeCbtHook);
    }
    return ::CallNextHookEx(nullptr, code, wp, lp);
}

void Window::AttachInternal(HWND hwnd) {
    m_hWnd = hwnd;
    ::SetWindowSubclass(hwnd, &Window::SubclassProc, kObjectSubclassId, reinterpret_cast<DWORD_PTR>(this));
    // Keep the reflector above the object's own subclass, so a child's
    // notification reaches the child before this window's handlers.
    DWORD_PTR ref = 0;
    if (WindowSubclassRef(hwnd, &Window::ReflectorProc, kReflectorSubclassId, &ref)) {
        ::RemoveWindowSubclass(hwnd, &Window::ReflectorProc, kReflectorSubclassId);
        ::SetWindowSubclass(hwnd, &Window::ReflectorProc, kReflectorSubclassId, 0);
    }
}

bool Window::Attach(HWND hwnd) {
    if (m_hWnd || !hwnd || !::IsWindow(hwnd) || FromHandle(hwnd)) return false;
    // Subclassing works only on the thread that owns the window.
    if (::GetWindowThreadProcessId(hwnd, nullptr) != ::GetCurrentThreadId()) return false;
    AttachInternal(hwnd);
    m_ownsWindow = false;
    if (HWND parent = ::GetParent(hwnd)) InstallReflector(parent);
    return true;
}

bool Window::SubclassDlgItem(UINT id, HWND parent) {
    if (!parent || !::IsWindow(parent)) return false;
    return Attach(::GetDlgItem(parent, static_cast<int>(id)));
}

HWND Window::Detach() {
    HWND hwnd = m_hWnd;
    if (hwnd) ::RemoveWindowSubclass(hwnd, &Window::SubclassProc, kObjectSubclassId);
    m_hWnd = nullptr;
    m_ownsWindow = false;
    return hwnd;
}

bool Window::DestroyWindow() {
    if (!m_hWnd || !::IsWindow(m_hWnd)) return false;
    return ::DestroyWindow(m_hWnd) != FALSE;
}

Window* Window::FromHandle(HWND hwnd) noexcept {
    if (!hwnd) return nullptr;
    DWORD_PTR ref = 0;
    if (!WindowSubclassRef(hwnd, &Window::SubclassProc, kObjectSubclassId, &ref)) return nullptr;
    return reinterpret_cast<Window*>(ref);
}

bool Window::InstallReflector(HWND parent) {
    // Only a parent of this thread can be subclassed; a window of another
    // process (the desktop) must not get a record it could hand to others.
    if (!parent || !::IsWindow(parent) || ::GetWindowThreadProcessId(parent, nullptr) != ::GetCurrentThreadId())
        return false;
    DWORD_PTR ref = 0;
    if (WindowSubclassRef(parent, &Window::ReflectorProc, kReflectorSubclassId, &ref)) return true;
    return ::SetWindowSubclass(parent, &Window::ReflectorProc, kReflectorSubclassId, 0) != FALSE;
}

LRESULT CALLBACK Window::ReflectorProc(HWND parent, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR) {
    if (msg == WM_NCDESTROY) {
        ::RemoveWindowSubclass(parent, &Window::ReflectorProc, kReflectorSubclassId);
        return ::DefSubclassProc(parent, msg, wp, lp);
    }
    try {
        if (HWND child = ReflectionTarget(parent, msg, wp, lp)) {
            // Only direct children: a grandchild's notification belongs to its own parent.
            if (::GetParent(child) == parent) {
                if (Window* obj = FromHandle(child)) {
                    LRESULT result = 0;
                    if (obj->OnChildNotify(msg, wp, lp, &result)) return result;
                }
            }
        }
    } catch (...) {
        // A child whose handler threw has declined: the parent sees the
        // notification as it would without the child's object.
        LogCaughtException(" qv::Window::ReflectorProc", kEdgeReflector, static_cast<long>(msg));
    }
    return ::DefSubclassProc(parent, msg, wp, lp);
}

LRESULT CALLBACK Window::SubclassProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR ref) {
    return reinterpret_cast<Window*>(ref)->Dispatch(hwnd, msg, wp, lp);
}

LRESULT Window::Dispatch(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    const MSG saved = m_current;
    const LRESULT savedResult = m_defaultResult;
    const bool savedCalled = m_defaultCalled;
    m_current = MSG{hwnd, msg, wp, lp, 0, {0, 0}};
    m_defaultResult = 0;
    m_defaultCalled = false;

    if (msg == WM_NCDESTROY) {
        // The object lets go of the window whatever its handlers do.
        try {
            OnNcDestroy();
        } catch (...) {
            LogCaughtException(" qv::Window::WindowProc", kEdgeNcDestroy, static_cast<long>(msg));
        }
        const LRESULT result = m_defaultCalled ? m_defaultResult : ::DefSubclassProc(hwnd, msg, wp, lp);
        ::RemoveWindowSubclass(hwnd, &Window::SubclassProc, kObjectSubclassId);
        m_hWnd = nullptr;
        m_ownsWindow = false;
        m_current = saved;
        try {
            PostNcDestroy();  // may delete this: touch nothing afterwards
        } catch (...) {
            LogCaughtException(" qv::Window::WindowProc", kEdgeNcDestroy, static_cast<long>(msg));
        }
        return result;
    }

    LRESULT result = 0;
    bool threw = false;
    try {
        result = WindowProc(msg, wp, lp);
    } catch (...) {
        LogCaughtException(" qv::Window::WindowProc", kEdgeHandler, static_cast<long>(msg));
        threw = true;
    }
    // The platform's processing runs outside the handler, once the exception is gone.
    if (threw) result = AnswerAfterThrow(hwnd, msg, wp, lp, m_defaultCalled, m_defaultResult);
    // The dispatch state of an outer message comes back also after a throw,
    // so the window goes on working.
    m_current = saved;
    m_defaultResult = savedResult;
    m_defaultCalled = savedCalled;
    return result;
}

LRESULT Window::Default() {
    m_defaultResult = ::DefSubclassProc(m_current.hwnd, m_current.message, m_current.wParam, m_current.lParam);
    m_defaultCalled = true;
    return m_defaultResult;
}

LRESULT Window::DefWindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    return ::DefSubclassProc(m_current.hwnd ? m_current.hwnd : m_hWnd, msg, wp, lp);
}

bool Window::OnChildNotify(UINT msg, WPARAM wp, LPARAM lp, LRESULT* result) {
    switch (msg) {
    case WM_COMMAND:
        if (!OnReflectCommand(HIWORD(wp))) return false;
        *result = 0;
        return true;
    case WM_NOTIFY:
        *result = 0;
        return OnReflectNotify(reinterpret_cast<NMHDR*>(lp), result);
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC: {
        HBRUSH brush = OnReflectCtlColor(reinterpret_cast<HDC>(wp), msg);
        if (!brush) return false;
        *result = reinterpret_cast<LRESULT>(brush);
        return true;
    }
    case WM_DRAWITEM:
        if (!OnReflectDrawItem(reinterpret_cast<DRAWITEMSTRUCT*>(lp))) return false;
        *result = TRUE;
        return true;
    case WM_MEASUREITEM:
        if (!OnReflectMeasureItem(reinterpret_cast<MEASUREITEMSTRUCT*>(lp))) return false;
        *result = TRUE;
        return true;
    case WM_HSCROLL:
    case WM_VSCROLL:
        if (!OnReflectScroll(msg, LOWORD(wp), HIWORD(wp))) return false;
        *result = 0;
        return true;
    default:
        return false;
    }
}

LRESULT Window::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    // For handlers without a result of their own, the result is what
    // Default() answered, or 0 when the handler did not call it.
    auto plain = [this]() { return m_defaultCalled ? m_defaultResult : 0; };
    switch (msg) {
    case WM_CREATE: return OnCreate(reinterpret_cast<CREATESTRUCTW*>(lp));
    case WM_DESTROY: OnDestroy(); return plain();
    case WM_CHAR: OnChar(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)); return plain();
    case WM_KEYDOWN: OnKeyDown(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)); return plain();
    case WM_KEYUP: OnKeyUp(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)); return plain();
    case WM_SYSKEYDOWN: OnSysKeyDown(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)); return plain();
    case WM_SETFOCUS: OnSetFocus(reinterpret_cast<HWND>(wp)); return plain();
    case WM_KILLFOCUS: OnKillFocus(reinterpret_cast<HWND>(wp)); return plain();
    case WM_PAINT: OnPaint(); return plain();
    case WM_ERASEBKGND: return OnEraseBkgnd(reinterpret_cast<HDC>(wp));
    case WM_SIZE: OnSize(static_cast<UINT>(wp), LOWORD(lp), HIWORD(lp)); return plain();
    case WM_MOVE: OnMove(GET_X_LPARAM(lp), GET_Y_LPARAM(lp)); return plain();
    case WM_MOUSEMOVE: OnMouseMove(static_cast<UINT>(wp), PointFromLParam(lp)); return plain();
    case WM_MOUSELEAVE: OnMouseLeave(); return plain();
    case WM_MOUSEWHEEL:
        return OnMouseWheel(GET_KEYSTATE_WPARAM(wp), GET_WHEEL_DELTA_WPARAM(wp), PointFromLParam(lp));
    case WM_LBUTTONDOWN: OnLButtonDown(static_cast<UINT>(wp), PointFromLParam(lp)); return plain();
    case WM_LBUTTONUP: OnLButtonUp(static_cast<UINT>(wp), PointFromLParam(lp)); return plain();
    case WM_LBUTTONDBLCLK: OnLButtonDblClk(static_cast<UINT>(wp), PointFromLParam(lp)); return plain();
    case WM_RBUTTONDOWN: OnRButtonDown(static_cast<UINT>(wp), PointFromLParam(lp)); return plain();
    case WM_RBUTTONUP: OnRButtonUp(static_cast<UINT>(wp), PointFromLParam(lp)); return plain();
    case WM_MBUTTONDOWN: OnMButtonDown(static_cast<UINT>(wp), PointFromLParam(lp)); return plain();
    case WM_TIMER: OnTimer(static_cast<UINT_PTR>(wp)); return plain();
    case WM_SETCURSOR: return OnSetCursor(reinterpret_cast<HWND>(wp), LOWORD(lp), HIWORD(lp));
    case WM_GETDLGCODE: return OnGetDlgCode();
    case WM_CONTEXTMENU: OnContextMenu(reinterpret_cast<HWND>(wp), PointFromLParam(lp)); return plain();
    case WM_HELP: return OnHelpInfo(reinterpret_cast<HELPINFO*>(lp));
    case WM_COMMAND: OnCommand(wp, lp); return plain();
    case WM_NOTIFY: {
        LRESULT result = 0;
        if (OnNotify(wp, lp, &result)) return result;
        return plain();
    }
    case WM_HSCROLL: OnHScroll(LOWORD(wp), HIWORD(wp), reinterpret_cast<HWND>(lp)); return plain();
    case WM_VSCROLL: OnVScroll(LOWORD(wp), HIWORD(wp), reinterpret_cast<HWND>(lp)); return plain();
    case WM_ENABLE: OnEnable(static_cast<BOOL>(wp)); return plain();
    case WM_SHOWWINDOW: OnShowWindow(static_cast<BOOL>(wp), static_cast<UINT>(lp)); return plain();
    case WM_CAPTURECHANGED: OnCaptureChanged(reinterpret_cast<HWND>(lp)); return plain();
    case WM_GETMINMAXINFO: OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(lp)); return plain();
    case WM_CUT: return OnCut(wp, lp);
    case WM_COPY: return OnCopy(wp, lp);
    case WM_PASTE: return OnPaste(wp, lp);
    case WM_CLEAR: return OnClear(wp, lp);
    case WM_SETTEXT: return OnSetText(wp, lp);
    case WM_GETTEXT: return OnGetText(wp, lp);
    case WM_GETTEXTLENGTH: return OnGetTextLength(wp, lp);
    case WM_SETFONT: return OnSetFont(wp, lp);
    case WM_GETOBJECT:
        // Screen readers: the standard proxy with the control's own answers
        // over it (see platform/accessible.h).
        if (const LRESULT answered = AnswerGetObject(m_hWnd, wp, lp)) return answered;
        return Default();
    case WM_DPICHANGED:
    case WM_DPICHANGED_AFTERPARENT: {
        const LRESULT result = Default();
        if (auto* listener = dynamic_cast<DpiListener*>(this))
            listener->OnDpiChanged(msg == WM_DPICHANGED ? LOWORD(wp) : DpiOf(m_hWnd));
        return result;
    }
    default: return Default();
    }
}

int Window::OnCreate(CREATESTRUCTW*) { return static_cast<int>(Default()); }
void Window::OnDestroy() { Default(); }
void Window::OnNcDestroy() { Default(); }
void Window::OnChar(UINT, UINT, UINT) { Default(); }
void Window::OnKeyDown(UINT, UINT, UINT) { Default(); }
void Window::OnKeyUp(UINT, UINT, UINT) { Default(); }
void Window::OnSysKeyDown(UINT, UINT, UINT) { Default(); }
void Window::OnSetFocus(HWND) { Default(); }
void Window::OnKillFocus(HWND) { Default(); }
void Window::OnPaint() { Default(); }
BOOL Window::OnEraseBkgnd(HDC) { return static_cast<BOOL>(Default()); }
void Window::OnSize(UINT, int, int) { Default(); }
void Window::OnMove(int, int) { Default(); }
void Window::OnMouseMove(UINT, POINT) { Default(); }
void Window::OnMouseLeave() { Default(); }
BOOL Window::OnMouseWheel(UINT, short, POINT) { return static_cast<BOOL>(Default()); }
void Window::OnLButtonDown(UINT, POINT) { Default(); }
void Window::OnLButtonUp(UINT, POINT) { Default(); }
void Window::OnLButtonDblClk(UINT, POINT) { Default(); }
void Window::OnRButtonDown(UINT, POINT) { Default(); }
void Window::OnRButtonUp(UINT, POINT) { Default(); }
void Window::OnMButtonDown(UINT, POINT) { Default(); }
void Window::OnTimer(UINT_PTR) { Default(); }
BOOL Window::OnSetCursor(HWND, UINT, UINT) { return static_cast<BOOL>(Default()); }
UINT Window::OnGetDlgCode() { return static_cast<UINT>(Default()); }
void Window::OnContextMenu(HWND, POINT) { Default(); }
BOOL Window::OnHelpInfo(HELPINFO*) { return static_cast<BOOL>(Default()); }
BOOL Window::OnCommand(WPARAM, LPARAM) {
    Default();
    return FALSE;
}
BOOL Window::OnNotify(WPARAM, LPARAM, LRESULT*) {
    Default();
    return FALSE;
}
void Window::OnHScroll(UINT, UINT, HWND) { Default(); }
void Window::OnVScroll(UINT, UINT, HWND) { Default(); }
void Window::OnEnable(BOOL) { Default(); }
void Window::OnShowWindow(BOOL, UINT) { Default(); }
void Window::OnCaptureChanged(HWND) { Default(); }
void Window::OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
LRESULT Window::OnCut(WPARAM, LPARAM) { return Default(); }
LRESULT Window::OnCopy(WPARAM, LPARAM) { return Default(); }
LRESULT Window::OnPaste(WPARAM, LPARAM) { return Default(); }
LRESULT Window::OnClear(WPARAM, LPARAM) { return Default(); }
LRESULT Window::OnSetText(WPARAM, LPARAM) { return Default(); }
LRESULT Window::OnGetText(WPARAM, LPARAM) { return Default(); }
LRESULT Window::OnGetTextLength(WPARAM, LPARAM) { return Default(); }
LRESULT Window::OnSetFont(WPARAM, LPARAM) { return Default(); }

std::wstring Window::GetWindowText() const try {
    if (!IsWindow()) return {};
    const int len = ::GetWindowTextLengthW(m_hWnd);
    std::wstring text(static_cast<size_t>(len) + 1, L'\0');
    const int got = ::GetWindowTextW(m_hWnd, text.data(), len + 1);
    text.resize(got > 0 ? static_cast<size_t>(got) : 0);
    return text;
} catch (...) {
    return CaughtAtEdge(" qv::Window::GetWindowText", __LINE__, std::wstring());
}

namespace {
bool ModifyLong(HWND hwnd, int index, DWORD remove, DWORD add, UINT swpFlags) {
    if (!hwnd || !::IsWindow(hwnd)) return false;
    const DWORD style = static_cast<DWORD>(::GetWindowLongPtrW(hwnd, index));
    const DWORD next = (style & ~remove) | add;
    if (next == style) return false;
    ::SetWindowLongPtrW(hwnd, index, static_cast<LONG_PTR>(next));
    if (swpFlags)
        ::SetWindowPos(hwnd, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | swpFlags);
    return true;
}
}  // namespace

bool Window::ModifyStyle(DWORD remove, DWORD add, UINT swpFlags) {
    return ModifyLong(m_hWnd, GWL_STYLE, remove, add, swpFlags);
}

bool Window::ModifyStyleEx(DWORD remove, DWORD add, UINT swpFlags) {
    return ModifyLong(m_hWnd, GWL_EXSTYLE, remove, add, swpFlags);
}

RECT Window::GetClientRect() const {
    RECT rc{};
    if (m_hWnd) ::GetClientRect(m_hWnd, &rc);
    return rc;
}

RECT Window::GetWindowRect() const {
    RECT rc{};
    if (m_hWnd) ::GetWindowRect(m_hWnd, &rc);
    return rc;
}

bool Window::MoveWindow(const RECT& rect, bool repaint) {
    return ::MoveWindow(m_hWnd, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, repaint) != FALSE;
}

bool Window::SetWindowPos(HWND after, int x, int y, int cx, int cy, UINT flags) {
    return ::SetWindowPos(m_hWnd, after, x, y, cx, cy, flags) != FALSE;
}

const wchar_t* RegisterLibraryWindowClass(const wchar_t* className, UINT style, HCURSOR cursor,
                                          HBRUSH background) {
    WNDCLASSEXW wc{};
    if (::GetClassInfoExW(LibraryModule(), className, &wc)) return className;
    wc.cbSize = sizeof(wc);
    wc.style = style;
    wc.lpfnWndProc = ::DefWindowProcW;
    wc.hInstance = LibraryModule();
    wc.hCursor = cursor ? cursor : ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = background;
    wc.lpszClassName = className;
    return ::RegisterClassExW(&wc) ? className : nullptr;
}

}  // namespace qv
