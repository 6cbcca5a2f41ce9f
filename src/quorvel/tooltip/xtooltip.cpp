#include "quorvel/tooltip/xtooltip.h"

#include <oleacc.h>

#include <algorithm>
#include <utility>

#include "quorvel/common/boundary.h"
#include "quorvel/common/shell_text.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/session.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/tooltip/gdi_surface.h"
#include "quorvel/tooltip/placement.h"

namespace {

const wchar_t kClassName[] = L"XTooltip";
constexpr int kMinWrapWidth = 80;
constexpr UINT kDefaultDisplayTime = 5000;

// What all tooltips of the process share. The settings are read once, by
// the first tooltip constructed; the rest follows the tooltips on screen.
struct ProcessState {
    bool settingsRead = false;
    UINT displayTime = kDefaultDisplayTime;
    int wrapWidth = kMinWrapWidth;
    bool enabled = true;
    std::wstring helpDirectory;
    HWND lastTooltip = nullptr;  // the tooltip shown last
    HWND lastOwner = nullptr;    // its owner
    bool showing = false;        // the last tooltip is up (F1 opens a prompt's help)
};

ProcessState& Process() {
    static ProcessState state;
    return state;
}

void ReadProcessSettings() {
    ProcessState& ps = Process();
    if (ps.settingsRead) return;
    ps.settingsRead = true;
    ps.helpDirectory = qv::ContextHelpFileSetting();
    // The setting holds seconds; 0 (or nothing readable) switches tooltips off.
    const unsigned long seconds = qv::TooltipPopupTimeSetting();
    if (seconds == 0) {
        ps.displayTime = kDefaultDisplayTime;
        ps.enabled = false;
        return;
    }
    ps.displayTime = static_cast<UINT>(seconds * 1000u);
    long width = 0;
    if (!qv::TooltipMaxTipWidthSetting(width)) width = 0;
    ps.wrapWidth = static_cast<int>(std::max<long>(width, kMinWrapWidth));
}

const XTooltipOwnerKind* OwnerKindOf(HWND owner) {
    qv::Window* object = qv::Window::FromHandle(owner);
    return object ? dynamic_cast<const XTooltipOwnerKind*>(object) : nullptr;
}

// The context-help file of a prompt owner, "" for every other owner.
std::wstring PromptHelpFile(const XTooltipOwnerKind* kind) {
    if (!kind || kind->TooltipOwnerKind() != XTooltipOwnerKind::kOwnerPrompt) return {};
    return kind->TooltipContextHelpFile();
}

bool SamePoint(POINT a, POINT b) { return a.x == b.x && a.y == b.y; }

// The first tool of window `wnd` (any rectangle), or -1.
int FindToolWindow(const std::vector<tagXTOOLTIP_INFO>& tools, HWND wnd) {
    for (size_t i = 0; i < tools.size(); ++i)
        if (tools[i].hWnd == wnd) return static_cast<int>(i);
    return -1;
}

// The messages of a subclassed tool window that RelayEvent wants.
bool IsToolMessage(UINT msg) {
    switch (msg) {
    case WM_MOUSEMOVE:
    case WM_MOUSELEAVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONUP:
    case WM_MBUTTONDBLCLK:
    case WM_NCLBUTTONDOWN:
    case WM_NCRBUTTONDOWN:
    case WM_NCMBUTTONDOWN:
    case WM_KEYDOWN:
        return true;
    default:
        return false;
    }
}

// The geometry model's value types (LONG and int are both 32 bits on Windows).
qv::TipRect Tip(const RECT& r) {
    return {static_cast<int>(r.left), static_cast<int>(r.top), static_cast<int>(r.right), static_cast<int>(r.bottom)};
}
qv::TipPoint Tip(POINT p) { return {static_cast<int>(p.x), static_cast<int>(p.y)}; }
qv::TipSize Tip(SIZE s) { return {static_cast<int>(s.cx), static_cast<int>(s.cy)}; }

// The size table, set as at 96 DPI, drawn at `dpi`.
qv::TipShape ShapeOf(const int (&sizes)[XTooltip::kSizeCount], UINT dpi) {
    qv::TipShape shape;
    shape.marginX = sizes[XTooltip::kSizeMarginX];
    shape.marginY = sizes[XTooltip::kSizeMarginY];
    shape.shadowX = sizes[XTooltip::kSizeShadowX];
    shape.shadowY = sizes[XTooltip::kSizeShadowY];
    shape.anchorWidth = sizes[XTooltip::kSizeAnchorWidth];
    shape.anchorHeight = sizes[XTooltip::kSizeAnchorHeight];
    shape.anchorOffset = sizes[XTooltip::kSizeAnchorOffset];
    shape.borderX = sizes[XTooltip::kSizeBorderX];
    shape.borderY = sizes[XTooltip::kSizeBorderY];
    return qv::TipShapeForDpi(shape, dpi);
}

}  // namespace

// ---- Construction ----------------------------------------------------------------

XTooltip::XTooltip() {
    m_nTimeInitial = 500;
    ReadProcessSettings();
    // Every tooltip gets its defaults, also while tooltips are switched off:
    // it then simply never makes a window.
    SetDirection(kDirRightBottom);
    SetBehaviour(0);
    SetDefaultStyles();
    SetDefaultColors();
    SetDefaultSizes();
    SetDefaultFont();
    SetEffectBk(0, 2, -1);
    RemoveAllTools();
    if (!qv::RegisterLibraryWindowClass(kClassName, CS_SAVEBITS, ::LoadCursorW(nullptr, IDC_ARROW), nullptr))
        qv::LogFailure(L" XTooltip::XTooltip()", __LINE__, L"Registering the window class failed");
}

XTooltip::~XTooltip() {
    // Our own WM_DESTROY handling (timers, the process-wide records, the
    // tool subclasses) is not reached from the base destructor.
    DestroyWindow();
    UnsubclassTools();  // also for a tooltip that never had a window
}

void XTooltip::ResetProcessSettings() {
    ProcessState& ps = Process();
    ps.settingsRead = false;
    ps.displayTime = kDefaultDisplayTime;
    ps.wrapWidth = kMinWrapWidth;
    ps.enabled = true;
    ps.helpDirectory.clear();
}

BOOL XTooltip::Create(HWND parent) {
    m_hParent = parent;
    if (parent && Process().enabled) {
        if (!CreateEx(WS_EX_TOPMOST | WS_EX_TOOLWINDOW, kClassName, nullptr, WS_POPUP, RECT{}, parent, 0))
            return FALSE;
    }
    SetDefaultFont();
    SetDefaultSizes();
    return TRUE;
}

int XTooltip::GetVersionI() { return 0x0100; }
const wchar_t* XTooltip::GetVersionC() { return L"1.0"; }

// ---- Tools -------------------------------------------------------------------------

void XTooltip::AddTool(HWND wnd, const std::wstring& text, const RECT* rect, UINT id) try {
    tagXTOOLTIP_INFO info;
    info.hWnd = wnd;
    info.nIDTool = id;
    info.rectBounds = rect ? *rect : RECT{};
    info.szText = qv::WrapToolText(text, Process().wrapWidth);
    info.nStyles = m_nStyles;
    info.nEffect = m_nEffect;
    info.nGranularity = m_nGranularity;
    info.crBegin = m_crColor[kColorBk];
    info.crMid = m_crColor[kColorGradientMid];
    info.crEnd = m_crColor[kColorGradientEnd];
    info.nDirection = m_nDirection;
    info.nBehaviour = m_nBehaviour;
    m_arrTools.push_back(std::move(info));
} catch (...) {
    qv::CaughtAtEdge(" XTooltip::AddTool", __LINE__);
}

void XTooltip::AddTool(const tagXTOOLTIP_INFO& info) try {
    m_arrTools.push_back(info);
} catch (...) {
    qv::CaughtAtEdge(" XTooltip::AddTool", __LINE__);
}

BOOL XTooltip::GetTool(int index, tagXTOOLTIP_INFO& info) const try {
    if (!ToolExists(index)) return FALSE;
    info = m_arrTools[static_cast<size_t>(index)];
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XTooltip::GetTool", __LINE__, FALSE);
}

void XTooltip::SetAtTool(int index, const tagXTOOLTIP_INFO& info) try {
    if (!ToolExists(index)) return;
    const HWND before = m_arrTools[static_cast<size_t>(index)].hWnd;
    m_arrTools[static_cast<size_t>(index)] = info;
    if (before && before != info.hWnd && FindToolWindow(m_arrTools, before) < 0) UnsubclassTools(before);
} catch (...) {
    qv::CaughtAtEdge(" XTooltip::SetAtTool", __LINE__);
}

void XTooltip::RemoveTool(int index) {
    if (!ToolExists(index)) return;
    // The indexes after it move down by one; a tooltip for the removed tool goes.
    auto follow = [index](int& i) {
        if (i == index) i = -1;
        else if (i > index) --i;
    };
    if (index == m_nIndexCurrentWnd || index == m_nIndexDisplayWnd) Pop();
    follow(m_nIndexCurrentWnd);
    follow(m_nIndexDisplayWnd);
    const HWND wnd = m_arrTools[static_cast<size_t>(index)].hWnd;
    m_arrTools.erase(m_arrTools.begin() + index);
    if (wnd && FindToolWindow(m_arrTools, wnd) < 0) UnsubclassTools(wnd);
}

void XTooltip::RemoveAllTools() {
    if (!m_arrTools.empty()) Pop();
    m_arrTools.clear();
    m_nIndexCurrentWnd = -1;
    m_nIndexDisplayWnd = -1;
    UnsubclassTools();
}

BOOL XTooltip::IsExistTool(int index) const { return ToolExists(index) ? TRUE : FALSE; }

int XTooltip::FindTool(POINT point) const {
    for (size_t i = 0; i < m_arrTools.size(); ++i) {
        const tagXTOOLTIP_INFO& tool = m_arrTools[i];
        if (!tool.hWnd || !::IsWindowVisible(tool.hWnd)) continue;
        POINT pt = point;
        ::MapWindowPoints(m_hParent, tool.hWnd, &pt, 1);
        RECT area = tool.rectBounds;
        if (::IsRectEmpty(&area)) ::GetClientRect(tool.hWnd, &area);
        if (::PtInRect(&area, pt)) return static_cast<int>(i);
    }
    return -1;
}

int XTooltip::FindTool(HWND wnd, const RECT* rect) const {
    const RECT wanted = rect ? *rect : RECT{};
    for (size_t i = 0; i < m_arrTools.size(); ++i) {
        if (m_arrTools[i].hWnd == wnd && ::EqualRect(&m_arrTools[i].rectBounds, &wanted))
            return static_cast<int>(i);
    }
    return -1;
}

int XTooltip::FindTool(UINT id) const {
    for (size_t i = 0; i < m_arrTools.size(); ++i) {
        if (m_arrTools[i].nIDTool == id) return static_cast<int>(i);
    }
    return -1;
}

HWND XTooltip::GetWndFromPoint(POINT point) const {
    if (!m_hParent || !::IsWindow(m_hParent)) return nullptr;
    return ::ChildWindowFromPointEx(m_hParent, point, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED | CWP_SKIPTRANSPARENT);
}

// ---- Per-tool appearance -------------------------------------------------------------

tagXTOOLTIP_INFO* XTooltip::Record(int tool) {
    return ToolExists(tool) ? &m_arrTools[static_cast<size_t>(tool)] : nullptr;
}

const tagXTOOLTIP_INFO* XTooltip::OwnValues(int tool, UINT maskBit) const {
    if (!ToolExists(tool) || !(m_arrTools[static_cast<size_t>(tool)].nMask & maskBit)) return nullptr;
    return &m_arrTools[static_cast<size_t>(tool)];
}

void XTooltip::SetValue(int tool, UINT maskBit, UINT tagXTOOLTIP_INFO::*field, UINT value, UINT& fallback) {
    if (tagXTOOLTIP_INFO* info = Record(tool)) {
        info->*field = value;
        info->nMask |= maskBit;
    } else {
        fallback = value;
    }
}

UINT XTooltip::GetValue(int tool, UINT maskBit, UINT tagXTOOLTIP_INFO::*field, UINT fallback) const {
    const tagXTOOLTIP_INFO* info = OwnValues(tool, maskBit);
    return info ? info->*field : fallback;
}

void XTooltip::SetStyles(UINT styles, int tool) {
    SetValue(tool, kMaskStyles, &tagXTOOLTIP_INFO::nStyles, styles, m_nStyles);
}

void XTooltip::ModifyStyles(UINT remove, UINT add, int tool) { SetStyles((GetStyles(tool) & ~remove) | add, tool); }

UINT XTooltip::GetStyles(int tool) const { return GetValue(tool, kMaskStyles, &tagXTOOLTIP_INFO::nStyles, m_nStyles); }

void XTooltip::SetEffectBk(UINT effect, BYTE granularity, int tool) {
    if (tagXTOOLTIP_INFO* info = Record(tool)) {
        info->nEffect = effect;
        info->nGranularity = granularity;
        info->nMask |= kMaskEffect;
    } else {
        m_nEffect = effect;
        m_nGranularity = granularity;
    }
}

UINT XTooltip::GetEffectBk(int tool) const {
    BYTE granularity = 0;
    return GetEffectBk(granularity, tool);
}

UINT XTooltip::GetEffectBk(BYTE& granularity, int tool) const {
    const tagXTOOLTIP_INFO* info = OwnValues(tool, kMaskEffect);
    granularity = info ? info->nGranularity : m_nGranularity;
    return info ? info->nEffect : m_nEffect;
}

void XTooltip::SetGradientColors(COLORREF begin, COLORREF middle, COLORREF end, int tool) {
    if (tagXTOOLTIP_INFO* info = Record(tool)) {
        info->crBegin = begin;
        info->crMid = middle;
        info->crEnd = end;
        info->nMask |= kMaskColors;
    } else {
        // The tooltip-wide gradient lives in the colour table.
        m_crColor[kColorBk] = begin;
        m_crColor[kColorGradientMid] = middle;
        m_crColor[kColorGradientEnd] = end;
    }
}

void XTooltip::GetGradientColors(COLORREF& begin, COLORREF& middle, COLORREF& end, int tool) const {
    const tagXTOOLTIP_INFO* info = OwnValues(tool, kMaskColors);
    begin = info ? info->crBegin : m_crColor[kColorBk];
    middle = info ? info->crMid : m_crColor[kColorGradientMid];
    end = info ? info->crEnd : m_crColor[kColorGradientEnd];
}

void XTooltip::SetDirection(UINT direction, int tool) {
    if (direction < kDirCount) SetValue(tool, kMaskDirection, &tagXTOOLTIP_INFO::nDirection, direction, m_nDirection);
}

UINT XTooltip::GetDirection(int tool) const {
    return GetValue(tool, kMaskDirection, &tagXTOOLTIP_INFO::nDirection, m_nDirection);
}

void XTooltip::SetBehaviour(UINT behaviour, int tool) {
    SetValue(tool, kMaskBehaviour, &tagXTOOLTIP_INFO::nBehaviour, behaviour, m_nBehaviour);
}

UINT XTooltip::GetBehaviour(int tool) const {
    return GetValue(tool, kMaskBehaviour, &tagXTOOLTIP_INFO::nBehaviour, m_nBehaviour);
}

void XTooltip::SetMaskTool(int tool, UINT mask) {
    if (tagXTOOLTIP_INFO* info = Record(tool)) info->nMask = mask;
}

void XTooltip::ModifyMaskTool(int tool, UINT remove, UINT add) {
    SetMaskTool(tool, (GetMaskTool(tool) & ~remove) | add);
}

UINT XTooltip::GetMaskTool(int tool) const {
    return ToolExists(tool) ? m_arrTools[static_cast<size_t>(tool)].nMask : 0;
}

// ---- Colours, sizes, font ----------------------------------------------------------------

void XTooltip::SetColor(int index, COLORREF color) {
    if (index >= 0 && index < kColorCount) m_crColor[index] = color;
}

COLORREF XTooltip::GetColor(int index) const {
    return m_crColor[index >= 0 && index < kColorCount ? index : kColorText];
}

void XTooltip::SetDefaultColors() {
    m_crColor[kColorBlack] = RGB(0, 0, 0);
    m_crColor[kColorText] = ::GetSysColor(COLOR_INFOTEXT);
    m_crColor[kColorBk] = ::GetSysColor(COLOR_INFOBK);
    m_crColor[kColorGradientMid] = ::GetSysColor(COLOR_INFOBK);
    m_crColor[kColorGradientEnd] = ::GetSysColor(COLOR_INFOBK);
    m_crColor[kColorShadow] = ::GetSysColor(COLOR_BTNSHADOW);
    m_crColor[kColorBorder] = ::GetSysColor(COLOR_INFOTEXT);
}

void XTooltip::SetSize(int index, int value) {
    if (index >= 0 && index < kSizeCount) m_nSizes[index] = value;
}

int XTooltip::GetSize(int index) const { return index >= 0 && index < kSizeCount ? m_nSizes[index] : 0; }

void XTooltip::SetDefaultSizes() {
    static constexpr int kDefaults[kSizeCount] = {0, 0, 3, 1, 3, 3, 0, 0, 0, 1, 1};
    std::copy(std::begin(kDefaults), std::end(kDefaults), m_nSizes);
}

void XTooltip::SetFont(HFONT font) {
    LOGFONTW lf{};
    if (font && ::GetObjectW(font, sizeof(lf), &lf) == sizeof(lf)) SetFont(&lf);
}

void XTooltip::SetFont(const LOGFONTW* font) {
    if (!font) return;
    m_LogFont = *font;
    m_nFontDpi = GetDrawingDpi();
}

void XTooltip::SetFont(const wchar_t* face, int size, BOOL bold, BOOL italic, BOOL underline, BOOL strikeOut) {
    LOGFONTW lf{};
    // Points to pixels at the owner's DPI, rounded, as a character height.
    const UINT dpi = GetDrawingDpi();
    lf.lfHeight = qv::FontHeightForDpi(size, dpi);
    lf.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    lf.lfItalic = italic ? 1 : 0;
    lf.lfUnderline = underline ? 1 : 0;
    lf.lfStrikeOut = strikeOut ? 1 : 0;
    lf.lfCharSet = DEFAULT_CHARSET;
    if (face) ::lstrcpynW(lf.lfFaceName, face, LF_FACESIZE);
    m_LogFont = lf;
    m_nFontDpi = dpi;
}

void XTooltip::SetDefaultFont() { SetFont(L"Tahoma", 10); }

LOGFONTW XTooltip::GetFontForDpi(UINT dpi) const {
    LOGFONTW lf = m_LogFont;
    lf.lfHeight = qv::ScaleBetweenDpi(lf.lfHeight, m_nFontDpi, dpi);
    lf.lfWidth = qv::ScaleBetweenDpi(lf.lfWidth, m_nFontDpi, dpi);
    return lf;
}

UINT XTooltip::GetDrawingDpi() const {
    // The box shows beside its owner, on the owner's monitor.
    if (m_hParent && ::IsWindow(m_hParent)) return qv::DpiOf(m_hParent);
    if (IsWindow()) return qv::DpiOf(m_hWnd);
    return qv::ScreenDpi();
}

// ---- Timing ---------------------------------------------------------------------------

void XTooltip::SetDelayTime(DWORD which, UINT ms) {
    if (which == kDelayAutoPop) Process().displayTime = ms;
    else if (which == kDelayInitial) m_nTimeInitial = ms;
}

UINT XTooltip::GetDelayTime(DWORD which) const {
    if (which == kDelayAutoPop) return Process().displayTime;
    if (which == kDelayInitial) return m_nTimeInitial;
    return 0;
}

void XTooltip::KillTimers(UINT_PTR id) {
    if (!IsWindow()) return;
    if (id == 0 || id == kTimerShow) KillTimer(kTimerShow);
    if (id == 0 || id == kTimerHide) KillTimer(kTimerHide);
}

// ---- Showing and hiding -------------------------------------------------------------------

POINT XTooltip::CursorInOwner(POINT screen) const {
    POINT pt = screen;
    if (m_hParent) ::ScreenToClient(m_hParent, &pt);
    return pt;
}

bool XTooltip::CursorOverTooltip() const {
    if (!IsVisible()) return false;
    POINT cursor{};
    ::GetCursorPos(&cursor);
    return ::WindowFromPoint(cursor) == m_hWnd;
}

BOOL XTooltip::IsVisible() const { return IsWindow() && IsWindowVisible() ? TRUE : FALSE; }

void XTooltip::RelayEvent(const MSG* msg) try {
    if (!msg || !IsWindow()) return;
    switch (msg->message) {
    case WM_MOUSEMOVE: {
        // The cursor itself, not the message's point: the delay timer checks
        // the same position, whoever relayed the move.
        // The owner sees no moves once the cursor is outside it: ask for
        // WM_MOUSELEAVE, which the owner relays, to learn that it left.
        TRACKMOUSEEVENT track{sizeof(track), TME_LEAVE, msg->hwnd, 0};
        if (msg->hwnd) ::TrackMouseEvent(&track);
        POINT screen{};
        ::GetCursorPos(&screen);
        if (SamePoint(screen, m_ptOriginal)) return;
        if (!(GetStyles(m_nIndexCurrentWnd) & kStyleShowInactive) && !::GetActiveWindow()) return;
        m_ptOriginal = screen;
        const int tool = FindTool(CursorInOwner(screen));
        if (tool < 0) {
            LeaveTools();
            return;
        }
        if (tool != m_nIndexDisplayWnd) {
            // Moving from one shown tool to the next switches at once.
            SetNewToolTip(tool, !IsVisible());
        } else if (IsVisible()) {
            if (m_nEffBehaviour & kBehaviourStay) Process().showing = true;
            else if (m_nEffBehaviour & kBehaviourRepeat) SetNewToolTip(tool, true);
            else Pop();
        }
        return;
    }
    case WM_MOUSELEAVE: {
        // Onto the tooltip itself its own moves take over; onto another tool
        // that tool's moves do. Anywhere else the cursor has left every tool,
        // and coming back to the same one shows it again.
        POINT screen{};
        ::GetCursorPos(&screen);
        if (CursorOverTooltip() || FindTool(CursorInOwner(screen)) >= 0) return;
        LeaveTools();
        m_ptOriginal = POINT{-1, -1};
        return;
    }
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_NCRBUTTONDOWN:
    case WM_NCRBUTTONDBLCLK:
    case WM_NCMBUTTONDOWN:
    case WM_NCMBUTTONDBLCLK:
        Pop();
        return;
    case WM_KEYDOWN: {
        // Any key hides the tooltip; F1 then opens the help of the prompt
        // whose tooltip was up.
        const bool wasShowing = Process().showing;
        Pop();
        if (msg->wParam == VK_F1 && wasShowing) OpenContextHelp();
        return;
    }
    default:
        return;
    }
} catch (...) {
    qv::CaughtAtEdge(" XTooltip::RelayEvent", __LINE__);
}

BOOL XTooltip::SubclassTool(HWND wnd) try {
    if (!wnd || !::IsWindow(wnd) || ::GetWindowThreadProcessId(wnd, nullptr) != ::GetCurrentThreadId()) return FALSE;
    if (FindToolWindow(m_arrTools, wnd) < 0) return FALSE;
    if (std::find(m_subclassedTools.begin(), m_subclassedTools.end(), wnd) != m_subclassedTools.end()) return TRUE;
    m_subclassedTools.push_back(wnd);
    if (::SetWindowSubclass(wnd, &XTooltip::ToolSubclassProc, reinterpret_cast<UINT_PTR>(this),
                            reinterpret_cast<DWORD_PTR>(this)))
        return TRUE;
    m_subclassedTools.pop_back();
    return FALSE;
} catch (...) {
    return qv::CaughtAtEdge(" XTooltip::SubclassTool", __LINE__, FALSE);
}

void XTooltip::UnsubclassTools(HWND wnd) noexcept {
    for (auto it = m_subclassedTools.begin(); it != m_subclassedTools.end();) {
        if (wnd && *it != wnd) {
            ++it;
            continue;
        }
        // A tool window that went first has already taken itself off the list.
        if (::IsWindow(*it))
            ::RemoveWindowSubclass(*it, &XTooltip::ToolSubclassProc, reinterpret_cast<UINT_PTR>(this));
        it = m_subclassedTools.erase(it);
    }
}

LRESULT CALLBACK XTooltip::ToolSubclassProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR, DWORD_PTR ref) {
    auto* self = reinterpret_cast<XTooltip*>(ref);
    if (msg == WM_NCDESTROY) {
        // The tool window goes first: it forgets the tooltip, and the tooltip it.
        self->UnsubclassTools(hwnd);
        return ::DefSubclassProc(hwnd, msg, wp, lp);
    }
    if (IsToolMessage(msg)) {
        try {
            MSG own{hwnd, msg, wp, lp, static_cast<DWORD>(::GetMessageTime()), {}};
            ::GetCursorPos(&own.pt);
            self->RelayEvent(&own);
        } catch (...) {
            qv::LogCaughtException(" XTooltip::ToolSubclassProc", 1, static_cast<long>(msg));
        }
    }
    return ::DefSubclassProc(hwnd, msg, wp, lp);
}

void XTooltip::LeaveTools() {
    if (!(CursorOverTooltip() && (m_nEffBehaviour & kBehaviourStay))) Pop();
    m_nIndexCurrentWnd = -1;
    m_nIndexDisplayWnd = -1;
}

void XTooltip::OpenContextHelp() {
    ProcessState& ps = Process();
    const std::wstring file = PromptHelpFile(OwnerKindOf(ps.lastOwner));
    if (file.empty()) return;
    const INT_PTR result = qv::Services::Shell().Execute(nullptr, L"open", file.c_str(), nullptr,
                                                        ps.helpDirectory.c_str(), SW_SHOW);
    if (result > 32) return;
    const std::wstring caption = CoTranslateText(L"Open application");
    const std::wstring text = CoTranslateText(qv::ShellErrorText(result, L"Help file not found"));
    qv::Services::MessageBoxes().Show(ps.lastOwner, caption.c_str(), text.c_str(), MB_ICONHAND);
}

void XTooltip::SetNewToolTip(int tool, bool delayed) try {
    m_nIndexDisplayWnd = -1;
    Pop();
    if (ToolExists(tool)) m_toolInfo = m_arrTools[static_cast<size_t>(tool)];
    m_nIndexCurrentWnd = tool;
    if (!IsWindow()) return;
    if (delayed) SetTimer(kTimerShow, m_nTimeInitial);
    else ShowAfterDelay();
} catch (...) {
    qv::CaughtAtEdge(" XTooltip::SetNewToolTip", __LINE__);
}

void XTooltip::ShowAfterDelay() {
    Pop();
    POINT screen{};
    ::GetCursorPos(&screen);
    const int tool = FindTool(CursorInOwner(screen));
    if (tool == m_nIndexCurrentWnd && SamePoint(screen, m_ptOriginal) && ToolExists(tool))
        PrepareDisplayToolTip(screen);
    const UINT displayTime = Process().displayTime;
    if (displayTime != 0 && !(m_nEffBehaviour & kBehaviourNoTimeout)) SetTimer(kTimerHide, displayTime);
}

void XTooltip::PrepareDisplayToolTip(POINT cursor) {
    if (!ToolExists(m_nIndexCurrentWnd)) return;
    m_toolInfo = m_arrTools[static_cast<size_t>(m_nIndexCurrentWnd)];
    const int t = m_nIndexCurrentWnd;
    m_nEffStyles = GetStyles(t);
    m_nEffEffect = GetEffectBk(m_nEffGranularity, t);
    GetGradientColors(m_crEffBegin, m_crEffMid, m_crEffEnd, t);
    m_nEffDirection = GetDirection(t);
    m_nEffBehaviour = GetBehaviour(t);
    if (m_toolInfo.szText.empty()) return;

    m_szToolText = MeasureText(m_toolInfo.szText);
    const qv::TipSize box =
        qv::InfoBoxSize(Tip(m_szToolText), m_nEffStyles, ShapeOf(m_nSizes, GetDrawingDpi()));
    DisplayToolTip(cursor, RECT{0, 0, box.cx, box.cy});
    Process().showing = true;
    AnnounceText();
}

void XTooltip::AnnounceText() {
    if (m_toolInfo.szText == m_strAnnounced) return;
    m_strAnnounced = m_toolInfo.szText;
    qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_NAMECHANGE);
}

void XTooltip::DisplayToolTip(POINT cursor, RECT rect) {
    ProcessState& ps = Process();
    // One tooltip at a time, whoever owns it.
    if (ps.lastTooltip && ps.lastTooltip != m_hWnd) {
        auto* other = dynamic_cast<XTooltip*>(qv::Window::FromHandle(ps.lastTooltip));
        if (other && other->IsVisible()) other->Pop();
    }
    ps.lastTooltip = m_hWnd;

    const int width = rect.right - rect.left;
    const int height = rect.bottom - rect.top;
    CalculateInfoBoxRect(cursor, rect);

    // Below the owner's own text: an edit's caret line, a combo's or a
    // prompt's line. A prompt with help takes the focus while its tooltip is
    // up, so that F1 reaches it; Pop gives the focus back.
    const XTooltipOwnerKind* kind = OwnerKindOf(m_hParent);
    const int ownerKind = kind ? kind->TooltipOwnerKind() : XTooltipOwnerKind::kOwnerOther;
    const int offset = qv::TipOwnerOffset(ownerKind, GetDrawingDpi());
    if (!PromptHelpFile(kind).empty()) {
        if (!m_hFocusBack) m_hFocusBack = ::GetFocus();
        ::SetFocus(m_hParent);
    }

    SetWindowRegion(rect, cursor);
    SetWindowPos(nullptr, rect.left, rect.top + offset, width + 2, height + 2,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW | SWP_NOCOPYBITS);
    Invalidate(false);
    ps.lastOwner = m_hParent;
    m_nIndexDisplayWnd = m_nIndexCurrentWnd;
    m_ptDisplayed = cursor;
}

void XTooltip::CalculateInfoBoxRect(POINT cursor, RECT& rect) {
    qv::ClientDC screen(nullptr);
    const qv::TipSize screenSize{::GetDeviceCaps(screen, HORZRES), ::GetDeviceCaps(screen, VERTRES)};
    const qv::InfoBoxPlacement placed = qv::CalculateInfoBoxRect(
        screenSize, Tip(cursor), Tip(rect), static_cast<int>(m_nEffDirection), m_nEffStyles,
        ShapeOf(m_nSizes, GetDrawingDpi()));
    rect = RECT{placed.rect.left, placed.rect.top, placed.rect.right, placed.rect.bottom};
    m_nEffDirection = static_cast<UINT>(placed.direction);
}

void XTooltip::SetWindowRegion(const RECT& placed, POINT cursor) {
    const qv::TipRegionShape shape = qv::CalculateRegionShape(
        Tip(placed), Tip(cursor), static_cast<int>(m_nEffDirection), m_nEffStyles, ShapeOf(m_nSizes, GetDrawingDpi()));
    m_rgnBody.reset(::CreateRectRgn(shape.body.left, shape.body.top, shape.body.right, shape.body.bottom));
    if (shape.hasAnchor) {
        POINT triangle[3];
        for (size_t i = 0; i < 3; ++i) triangle[i] = POINT{shape.anchor[i].x, shape.anchor[i].y};
        qv::Region anchor(::CreatePolygonRgn(triangle, 3, WINDING));
        if (anchor) ::CombineRgn(m_rgnBody, m_rgnBody, anchor, RGN_OR);
    }
    // The window's region owns its own copy: the system deletes what it is given.
    HRGN window = ::CreateRectRgn(0, 0, 0, 0);
    ::CombineRgn(window, m_rgnBody, nullptr, RGN_COPY);
    m_rgnShadow.reset();
    if (shape.hasShadow) {
        m_rgnShadow.reset(::CreateRectRgn(0, 0, 0, 0));
        ::CombineRgn(m_rgnShadow, m_rgnBody, nullptr, RGN_COPY);
        ::OffsetRgn(m_rgnShadow, shape.shadowOffset.x, shape.shadowOffset.y);
        ::CombineRgn(window, window, m_rgnShadow, RGN_OR);
    }
    if (!::SetWindowRgn(m_hWnd, window, FALSE)) ::DeleteObject(window);
}

void XTooltip::Pop() {
    KillTimers(0);
    if (IsVisible()) ShowWindow(SW_HIDE);
    if (Process().lastTooltip == m_hWnd) Process().showing = false;
    if (HWND back = std::exchange(m_hFocusBack, nullptr); back && ::IsWindow(back)) ::SetFocus(back);
}

// ---- Drawing -------------------------------------------------------------------------------

SIZE XTooltip::MeasureText(const std::wstring& text) {
    qv::ClientDC screen(nullptr);
    HDC dc = ::CreateCompatibleDC(screen);
    const SIZE size = PrintTitleString(dc, RECT{}, text, true);
    ::DeleteDC(dc);
    return size;
}

SIZE XTooltip::PrintTitleString(HDC dc, const RECT& rect, const std::wstring& text, bool measureOnly) try {
    if (!dc) return SIZE{};
    const UINT dpi = GetDrawingDpi();
    const LOGFONTW font = GetFontForDpi(dpi);
    qv::MarkupStyle style;
    style.font = qv::GdiMarkupSurface::Describe(font);
    std::copy(std::begin(m_crColor), std::end(m_crColor), style.colours.begin());
    qv::GdiMarkupSurface surface(dc, font, qv::ScaleToDpi(1, dpi));
    const qv::TipSize size = qv::PrintTitleString(surface, Tip(rect), text, measureOnly, style, m_lines);
    return SIZE{size.cx, size.cy};
} catch (...) {
    return qv::CaughtAtEdge(" XTooltip::PrintTitleString", __LINE__, SIZE{});
}

void XTooltip::OnDraw(HDC dc, RECT rect) {
    const RECT client = rect;
    const qv::TipShape shape = ShapeOf(m_nSizes, GetDrawingDpi());
    ::SetBkMode(dc, TRANSPARENT);
    if (m_nEffStyles & kStyleShadow) {
        // A solid shadow: the window has no pixels of what lies beneath it.
        if (m_rgnShadow) {
            qv::Brush shadow(::CreateSolidBrush(m_crColor[kColorShadow]));
            ::FillRgn(dc, m_rgnShadow, shadow);
        }
        rect.right -= shape.shadowX;
        rect.bottom -= shape.shadowY;
    }
    if (m_rgnBody) ::SelectClipRgn(dc, m_rgnBody);
    qv::Brush background(::CreateSolidBrush(m_crColor[kColorBk]));
    ::FillRect(dc, &rect, background);
    if (m_rgnBody) {
        qv::Brush border(::CreateSolidBrush(m_crColor[kColorBorder]));
        ::FrameRgn(dc, m_rgnBody, border, shape.borderX, shape.borderY);
    }
    const qv::TipRect text =
        qv::CalculateTextRect(Tip(client), Tip(m_szToolText), static_cast<int>(m_nEffDirection), m_nEffStyles, shape);
    ::SetTextColor(dc, m_crColor[kColorText]);
    PrintTitleString(dc, RECT{text.left, text.top, text.right, text.bottom}, m_toolInfo.szText, false);
    ::SelectClipRgn(dc, nullptr);
}

// ---- Messages --------------------------------------------------------------------------------

LRESULT XTooltip::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_ACTIVATEAPP:
        OnActivateApp(static_cast<BOOL>(wp), static_cast<DWORD>(lp));
        return 0;
    case WM_MOUSEACTIVATE:
        // Clicking the tooltip hides it; it never takes the activation.
        return MA_NOACTIVATE;
    case WM_MOUSEMOVE:
    case WM_MOUSELEAVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK: {
        // The tooltip relays its own mouse messages like its owner does.
        MSG own{m_hWnd, msg, wp, lp, static_cast<DWORD>(::GetMessageTime()), {}};
        ::GetCursorPos(&own.pt);
        RelayEvent(&own);
        return qv::Window::WindowProc(msg, wp, lp);
    }
    default:
        return qv::Window::WindowProc(msg, wp, lp);
    }
}

void XTooltip::OnDestroy() {
    KillTimers(0);
    UnsubclassTools();
    ProcessState& ps = Process();
    if (ps.lastTooltip == m_hWnd) {
        ps.lastTooltip = nullptr;
        ps.showing = false;
    }
    Default();
}

void XTooltip::OnKillFocus(HWND) {
    Pop();
    Default();
}

BOOL XTooltip::OnEraseBkgnd(HDC) { return FALSE; }

void XTooltip::OnPaint() {
    qv::PaintDC dc(m_hWnd);
    OnDraw(dc, GetClientRect());
}

void XTooltip::OnTimer(UINT_PTR id) {
    if (id == kTimerShow) {
        ShowAfterDelay();
    } else if (id == kTimerHide) {
        // The timer keeps checking while the cursor rests on a tooltip that stays.
        if (!(CursorOverTooltip() && (m_nEffBehaviour & kBehaviourStayOnTimeout))) Pop();
    } else {
        Default();
    }
}

void XTooltip::OnActivateApp(BOOL active, DWORD) {
    if (!active && !(m_nEffStyles & kStyleShowInactive)) Pop();
    Default();
}

void XTooltip::OnDpiChanged(UINT) {
    // Everything is measured at the owner's DPI when the box is placed: a
    // box on screen is simply measured and placed once more.
    if (IsVisible()) PrepareDisplayToolTip(m_ptDisplayed);
}

// ---- Screen readers ----------------------------------------------------------------------

bool XTooltip::AccessibleName(long child, std::wstring& name) {
    if (child != 0) return false;
    name = qv::MarkupPlainText(qv::UnwrapToolText(m_toolInfo.szText, Process().wrapWidth));
    return true;
}

bool XTooltip::AccessibleRole(long child, long& role) {
    if (child != 0) return false;
    role = ROLE_SYSTEM_TOOLTIP;
    return true;
}

bool XTooltip::AccessibleState(long child, long& state) {
    if (child != 0) return false;
    state = STATE_SYSTEM_READONLY | (IsVisible() ? 0 : STATE_SYSTEM_INVISIBLE);
    return true;
}
