#include "quorvel/windows/splitter.h"

#include <oleacc.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/services.h"
#include "quorvel/platform/module.h"
#include "quorvel/windows/named_button.h"
#include "quorvel/windows/splitter_rules.h"

namespace sp = qv::splitter;

namespace {

const wchar_t kClassName[] = L"QuorvelSplitter";
// The grey that stands for the button's own colour in a face bitmap.
constexpr COLORREF kFaceKey = RGB(192, 192, 192);
// Keyboard moves of the bar: an arrow key (96-DPI pixels, scaled), and an
// arrow key with Ctrl (one pixel at any DPI: the finest step there is).
constexpr int kKeyStep = 8;
constexpr int kFineKeyStep = 1;
// How far a held-down face moves right and down (96-DPI pixels).
constexpr int kPressShift = 1;

RECT ToRect(const sp::Box& b, int dx, int dy) { return RECT{b.left + dx, b.top + dy, b.right + dx, b.bottom + dy}; }

bool Contains(const RECT& rc, POINT pt) { return ::PtInRect(&rc, pt) != FALSE; }

// Where `child` sits in `parent`'s client coordinates.
RECT ChildRect(HWND parent, HWND child) {
    RECT rc{};
    ::GetWindowRect(child, &rc);
    ::MapWindowPoints(HWND_DESKTOP, parent, reinterpret_cast<POINT*>(&rc), 2);
    return rc;
}

bool IsWithin(HWND ancestor, HWND wnd) { return wnd && ancestor && (wnd == ancestor || ::IsChild(ancestor, wnd)); }

bool IsDialogBox(HWND wnd) {
    wchar_t name[16] = {};
    ::GetClassNameW(wnd, name, 16);
    return std::wstring_view(name) == L"#32770";
}

std::wstring Translated(const wchar_t* text) { return qv::Services::Translation().Translate(text); }

}  // namespace

// ---- XSplitterButton -----------------------------------------------------------

XSplitterButton::~XSplitterButton() = default;

RECT XSplitterButton::GetFaceRect(bool pressed) const {
    const RECT rc = GetClientRect();
    const int index = pressed && m_faces[1] ? 1 : 0;
    const SIZE size = GetBitmapSize(index == 1);
    const UINT dpi = qv::DpiOf(m_hWnd);
    sp::Box at = sp::FaceBox(sp::Box{rc.left, rc.top, rc.right, rc.bottom}, size.cx, size.cy,
                             qv::BitmapFactorForDpi(dpi));
    const int shift = pressed ? qv::ScaleToDpi(kPressShift, dpi) : 0;
    return RECT{at.left + shift, at.top + shift, at.right + shift, at.bottom + shift};
}

bool XSplitterButton::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_PUSHBUTTON;
    return true;
}

bool XSplitterButton::AccessibleState(long child, long& state) {
    if (child != CHILDID_SELF || !IsWindow()) return false;
    state = qv::PushButtonState(m_hWnd);
    return true;
}

bool XSplitterButton::Create(const RECT& rect, HWND parent, UINT id, UINT restBitmap, UINT pressedBitmap) {
    if (!CreateEx(0, L"BUTTON", L"", kStyle, rect, parent, id)) return false;
    LoadBitmaps(restBitmap, pressedBitmap);
    return true;
}

bool XSplitterButton::LoadBitmaps(UINT restBitmap, UINT pressedBitmap) {
    const UINT ids[2] = {restBitmap, pressedBitmap};
    bool all = true;
    for (int i = 0; i < 2; ++i) {
        if (m_ids[i] == ids[i] && m_faces[i]) continue;
        // LR_LOADMAP3DCOLORS turns the grey background of a palette face into
        // the button colour of the user's scheme; TransparentBlt (kFaceKey)
        // does it for a face without a palette.
        m_faces[i].reset(static_cast<HBITMAP>(::LoadImageW(qv::LibraryModule(), MAKEINTRESOURCEW(ids[i]),
                                                           IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS)));
        m_ids[i] = ids[i];
        all = all && m_faces[i];
    }
    if (IsWindow()) Invalidate(false);
    return all;
}

SIZE XSplitterButton::GetBitmapSize(bool pressed) const noexcept {
    BITMAP bm{};
    const HBITMAP face = m_faces[pressed ? 1 : 0].get();
    if (!face || !::GetObjectW(face, sizeof(bm), &bm)) return SIZE{0, 0};
    return SIZE{bm.bmWidth, bm.bmHeight};
}

LRESULT XSplitterButton::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_PRINTCLIENT:
        DrawFace(reinterpret_cast<HDC>(wp));
        return 0;
    // The button draws itself straight away on these (its state, focus or
    // text changed): our face goes over it again. A reader hears of a new
    // name (what a press does now) and of the button held down or let go.
    case BM_SETSTATE:
    case BM_SETCHECK:
    case BM_SETSTYLE:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
    case WM_SETTEXT:
    case WM_UPDATEUISTATE: {
        const bool wasPushed = msg == BM_SETSTATE && (SendMessage(BM_GETSTATE) & BST_PUSHED);
        const LRESULT result = Default();
        if (IsWindowVisible()) {
            qv::ClientDC dc(m_hWnd);
            DrawFace(dc);
        }
        if (msg == WM_SETTEXT && result)
            qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_NAMECHANGE);
        else if (msg == BM_SETSTATE && wasPushed != ((SendMessage(BM_GETSTATE) & BST_PUSHED) != 0))
            qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_STATECHANGE);
        return result;
    }
    default:
        return qv::Window::WindowProc(msg, wp, lp);
    }
}

void XSplitterButton::OnPaint() {
    qv::PaintDC dc(m_hWnd);
    DrawFace(dc);
}

BOOL XSplitterButton::OnEraseBkgnd(HDC) { return TRUE; }  // DrawFace fills everything

void XSplitterButton::DrawFace(HDC dc) {
    if (!dc) return;
    RECT rc = GetClientRect();
    const bool pressed = (SendMessage(BM_GETSTATE) & BST_PUSHED) != 0;
    ::FillRect(dc, &rc, ::GetSysColorBrush(COLOR_BTNFACE));
    const HBITMAP face = m_faces[pressed && m_faces[1] ? 1 : 0].get();
    const RECT at = GetFaceRect(pressed);
    const int cx = at.right - at.left, cy = at.bottom - at.top;
    if (face && cx > 0 && cy > 0) {
        // The face enlarged pixel for pixel into a bitmap of its own, then
        // laid over the button without its grey, so the button's colour and
        // the one-pixel edge drawn over it stay whole. The button cuts off
        // what of the face's margin does not fit.
        const qv::MemoryDC enlarged(dc, cx, cy);
        if (enlarged.IsValid() && qv::DrawBitmapSharp(enlarged, face, RECT{0, 0, cx, cy}, qv::DpiOf(m_hWnd)))
            ::TransparentBlt(dc, at.left, at.top, cx, cy, enlarged, 0, 0, cx, cy, kFaceKey);
    }
    ::DrawEdge(dc, &rc, pressed ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
}

// ---- XSplitterWnd: creation and panes ----------------------------------------------

XSplitterWnd::XSplitterWnd() : m_model(std::make_unique<sp::Model>()) {}

XSplitterWnd::~XSplitterWnd() {
    // The buttons and panes go with the window; our handlers must not be
    // reached from the base destructor with a half-destroyed object.
    if (OwnsWindow()) DestroyWindow();
}

bool XSplitterWnd::PreCreateWindow(CREATESTRUCTW& cs) {
    static const wchar_t* const cls = qv::RegisterLibraryWindowClass(
        kClassName, 0, ::LoadCursorW(nullptr, IDC_ARROW),
        reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)));
    if (!cls) return false;
    cs.lpszClass = cls;
    cs.style |= WS_CHILD | WS_CLIPCHILDREN;
    return true;
}

bool XSplitterWnd::Create(HWND parent, const RECT& rect, UINT id, DWORD style) {
    if (m_hWnd || !parent) return false;
    CREATESTRUCTW cs{};
    cs.hInstance = qv::LibraryModule();
    cs.hMenu = reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id));
    cs.hwndParent = parent;
    cs.x = rect.left;
    cs.y = rect.top;
    cs.cx = rect.right - rect.left;
    cs.cy = rect.bottom - rect.top;
    cs.style = static_cast<LONG>(style);
    if (!PreCreateWindow(cs) || !cs.lpszClass) return false;
    m_created = false;
    const RECT at{cs.x, cs.y, cs.x + cs.cx, cs.y + cs.cy};
    if (!CreateEx(cs.dwExStyle, cs.lpszClass, cs.lpszName, static_cast<DWORD>(cs.style), at, parent, id))
        return false;
    ModifyStyleEx(0, WS_EX_CONTROLPARENT);
    const UINT dpi = qv::DpiOf(m_hWnd);
    m_model->SetDpi(dpi);
    m_cxBorder = qv::SystemMetricForDpi(SM_CXBORDER, dpi);
    m_cyBorder = qv::SystemMetricForDpi(SM_CYBORDER, dpi);
    m_created = true;
    // The first sizing, now that the borders are known.
    const RECT area = AreaRect();
    m_model->Resize(area.right - area.left, area.bottom - area.top);
    Apply();
    return true;
}

HWND XSplitterWnd::GetPane(int row, int col) const {
    if (!m_hWnd || row < 0 || col < 0 || row > 15 || col > 15) return nullptr;
    return ::GetDlgItem(m_hWnd, static_cast<int>(IdFromRowCol(row, col)));
}

bool XSplitterWnd::SetPane(int col, HWND pane) {
    if (!IsWindow() || col < 0 || col > 1 || !pane || !::IsWindow(pane) || pane == m_hWnd || IsOwnButton(pane))
        return false;
    if (HWND old = GetPane(0, col); old && old != pane) ::SetWindowLongPtrW(old, GWLP_ID, 0);
    if (::GetParent(pane) != m_hWnd) {
        const LONG_PTR style = ::GetWindowLongPtrW(pane, GWL_STYLE);
        ::SetWindowLongPtrW(pane, GWL_STYLE, (style & ~static_cast<LONG_PTR>(WS_POPUP)) | WS_CHILD);
        ::SetParent(pane, m_hWnd);
    }
    ::SetWindowLongPtrW(pane, GWLP_ID, static_cast<LONG_PTR>(IdFromRowCol(0, col)));
    // Library controls among the panes hear their notifications through us.
    qv::Window::InstallReflector(m_hWnd);
    Apply();
    return true;
}

int XSplitterWnd::GetColumnCount() const noexcept { return m_model->Columns(); }

bool XSplitterWnd::GetColumnInfo(int col, int& cxCur, int& cxMin) const {
    if (col < 0 || col >= m_model->Columns()) return false;
    cxCur = m_model->ColumnWidth(col);
    cxMin = m_model->ColumnMin(col);
    return true;
}

void XSplitterWnd::SetColumnInfo(int col, int cxIdeal, int cxMin) { m_model->SetColumnInfo(col, cxIdeal, cxMin); }

void XSplitterWnd::RecalcLayout() {
    m_model->RecalcLayout();
    Apply();
}

bool XSplitterWnd::IsOwnButton(HWND wnd) const noexcept {
    return wnd && (wnd == m_upper.m_hWnd || wnd == m_lower.m_hWnd);
}

// ---- Layout -------------------------------------------------------------------------

RECT XSplitterWnd::AreaRect() const {
    RECT rc = GetClientRect();
    rc.left += m_cxBorder;
    rc.right = std::max(rc.left, rc.right - m_cxBorder);
    rc.top += m_cyBorder;
    rc.bottom = std::max(rc.top, rc.bottom - m_cyBorder);
    return rc;
}

RECT XSplitterWnd::BarRect() const {
    const RECT area = AreaRect();
    return ToRect(m_model->Bar(), area.left, area.top);
}

void XSplitterWnd::Apply() {
    if (!IsWindow()) return;
    const RECT area = AreaRect();
    const int height = area.bottom - area.top;
    const bool twoColumns = m_model->HasBar();
    HWND panes[2] = {GetPane(0, 0), GetPane(0, 1)};
    const int widths[2] = {m_model->ColumnWidth(0), twoColumns ? m_model->ColumnWidth(1) : 0};
    const int lefts[2] = {area.left, area.left + m_model->BarLeft() + m_model->Lengths().bar};
    const HWND focus = ::GetFocus();
    bool focusHidden = false;  // a hidden window keeps the keys it had
    for (int i = 0; i < 2; ++i) {
        if (!panes[i]) continue;
        const bool shown = widths[i] > 0 && height > 0;
        ::SetWindowPos(panes[i], nullptr, lefts[i], area.top, std::max(0, widths[i]), std::max(0, height),
                       SWP_NOZORDER | SWP_NOACTIVATE | (shown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
        focusHidden = focusHidden || (!shown && IsWithin(panes[i], focus));
    }
    // The right pane put away by Toggle stays hidden.
    if (HWND away = ::GetDlgItem(m_hWnd, static_cast<int>(kPaneRow1Col0))) {
        ::ShowWindow(away, SW_HIDE);
        focusHidden = focusHidden || IsWithin(away, focus);
    }
    if (twoColumns) OnDrawSplitter(nullptr, kSplitBar, BarRect());
    if (m_upper.IsWindow()) {
        const bool both = m_model->State().BothShown();
        if (m_model->TakeFacesDue()) {
            m_upper.LoadBitmaps(kUpperFace, kUpperFacePressed);
            m_lower.LoadBitmaps(kLowerFace, kLowerFacePressed);
        }
        // Names for screen readers: what a press does now. (A name that
        // cannot be made leaves the old one; the layout matters more.)
        try {
            const std::wstring upperName = Translated(both ? L"Collapse the left pane" : L"Restore both panes");
            const std::wstring lowerName = Translated(both ? L"Collapse the right pane" : L"Restore both panes");
            if (m_upper.GetWindowText() != upperName) m_upper.SetWindowText(upperName.c_str());
            if (m_lower.GetWindowText() != lowerName) m_lower.SetWindowText(lowerName.c_str());
        } catch (...) {
            qv::CaughtAtEdge(" XSplitterWnd::RecalcLayout", __LINE__);
        }
        m_upper.ShowWindow(m_model->UpperVisible() ? SW_SHOWNA : SW_HIDE);
        m_lower.ShowWindow(m_model->LowerVisible() ? SW_SHOWNA : SW_HIDE);
        m_upper.Invalidate(false);
        m_lower.Invalidate(false);
    }
    if ((focusHidden || (IsOwnButton(focus) && !::IsWindowVisible(focus))) && !FocusVisiblePane()) SetFocus();
    ::InvalidateRect(m_hWnd, nullptr, TRUE);
    AnnounceBar();
}

void XSplitterWnd::AnnounceBar() {
    const int percent = m_model->HasBar() ? m_model->LeftPercent() : -1;
    const int collapsed = m_model->AnyCollapsed() ? 1 : 0;
    const bool first = m_announcedPercent < 0 && m_announcedCollapsed < 0;
    const bool moved = percent != m_announcedPercent;
    const bool folded = collapsed != m_announcedCollapsed;
    m_announcedPercent = percent;
    m_announcedCollapsed = collapsed;
    // The layout a splitter is made with is nothing new to a reader.
    if (first || percent < 0) return;
    if (folded) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_STATECHANGE, kBarItem);
    if (moved) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE, kBarItem);
}

void XSplitterWnd::PlaceButtons(const RECT& bar) {
    const sp::ButtonBoxes boxes =
        sp::ButtonRects(sp::Box{bar.left, bar.top, bar.right, bar.bottom}, m_model->Lengths());
    m_rectUpper = ToRect(boxes.upper, 0, 0);
    m_rectLower = ToRect(boxes.lower, 0, 0);
    struct Button {
        XSplitterButton& button;
        const RECT& rect;
        UINT id, face, pressed;
    } buttons[2] = {{m_upper, m_rectUpper, kUpperButtonId, kUpperFace, kUpperFacePressed},
                    {m_lower, m_rectLower, kLowerButtonId, kLowerFace, kLowerFacePressed}};
    for (Button& b : buttons) {
        if (b.button.IsWindow())
            b.button.MoveWindow(b.rect, true);
        else
            b.button.Create(b.rect, m_hWnd, b.id, b.face, b.pressed);
    }
}

void XSplitterWnd::OnDrawSplitter(HDC dc, int type, const RECT& rect) {
    if (type == kSplitBorder) {
        if (!dc) return;
        // The border around the panes: the shadow colour, as thin as the
        // system's borders.
        const HBRUSH shadow = ::GetSysColorBrush(COLOR_BTNSHADOW);
        const RECT edges[4] = {{rect.left, rect.top, rect.right, rect.top + m_cyBorder},
                               {rect.left, rect.bottom - m_cyBorder, rect.right, rect.bottom},
                               {rect.left, rect.top, rect.left + m_cxBorder, rect.bottom},
                               {rect.right - m_cxBorder, rect.top, rect.right, rect.bottom}};
        for (const RECT& edge : edges) ::FillRect(dc, &edge, shadow);
        return;
    }
    if (type != kSplitBar) return;
    PlaceButtons(rect);
    if (!dc) return;
    // The bar around the buttons (all of it where a button is hidden); the
    // shadow colour while the keyboard moves it.
    const HBRUSH brush = ::GetSysColorBrush(m_track == Track::Keyboard ? COLOR_BTNSHADOW : COLOR_BTNFACE);
    const RECT parts[3] = {{rect.left, rect.top, rect.right, std::max(rect.top, m_rectUpper.top)},
                           {rect.left, std::max(rect.top, m_rectUpper.bottom), rect.right,
                            std::min(rect.bottom, m_rectLower.top)},
                           {rect.left, std::min(rect.bottom, m_rectLower.bottom), rect.right, rect.bottom}};
    for (const RECT& part : parts)
        if (part.bottom > part.top) ::FillRect(dc, &part, brush);
    const RECT sides[2][2] = {
        {{rect.left, m_rectUpper.top, m_rectUpper.left, m_rectUpper.bottom},
         {m_rectUpper.right, m_rectUpper.top, rect.right, m_rectUpper.bottom}},
        {{rect.left, m_rectLower.top, m_rectLower.left, m_rectLower.bottom},
         {m_rectLower.right, m_rectLower.top, rect.right, m_rectLower.bottom}}};
    for (const auto& pair : sides)
        for (const RECT& side : pair) ::FillRect(dc, &side, brush);
    if (!m_model->UpperVisible()) ::FillRect(dc, &m_rectUpper, brush);
    if (!m_model->LowerVisible()) ::FillRect(dc, &m_rectLower, brush);
}

void XSplitterWnd::OnPaint() {
    qv::PaintDC dc(m_hWnd);
    if (m_cxBorder > 0 || m_cyBorder > 0) OnDrawSplitter(dc, kSplitBorder, GetClientRect());
    if (m_model->HasBar()) OnDrawSplitter(dc, kSplitBar, BarRect());
}

void XSplitterWnd::OnSize(UINT, int, int) {
    Default();
    const RECT area = AreaRect();
    if (!m_created) {
        // Inside CreateWindowEx: Create makes the first sizing.
        m_model->SetArea(area.right - area.left, area.bottom - area.top);
        return;
    }
    if (IsTracking()) EndTracking(false, 0);
    m_model->Resize(area.right - area.left, area.bottom - area.top);
    Apply();
}

// ---- Collapse and restore -------------------------------------------------------------

void XSplitterWnd::BtnLeftPressed() {
    m_model->BtnLeftPressed();
    Apply();
}

void XSplitterWnd::BtnRightPressed() {
    m_model->BtnRightPressed();
    Apply();
}

void XSplitterWnd::CacheSize() { m_model->CacheSize(); }

void XSplitterWnd::ReadCachedSize(int& left, int& right) const {
    const sp::Widths w = m_model->ReadCachedSize();
    left = w.left;
    right = w.right;
}

void XSplitterWnd::MakeSplitSizes(int& left, int& right) {
    const sp::Widths w = m_model->MakeSplitSizes();
    left = w.left;
    right = w.right;
}

void XSplitterWnd::UpdateSizes(int& left, int& right) {
    sp::Widths w{left, right};
    m_model->UpdateSizes(w);
    left = w.left;
    right = w.right;
    Apply();
}

void XSplitterWnd::CloseVertSplitView(bool closeRight) {
    m_model->CloseVertSplitView(closeRight);
    Apply();
}

void XSplitterWnd::Toggle() {
    if (IsTracking()) EndTracking(false, 0);
    if (m_model->Columns() >= 2) {
        if (HWND right = GetPane(0, 1)) {
            ::SetWindowLongPtrW(right, GWLP_ID, static_cast<LONG_PTR>(kPaneRow1Col0));
            ::ShowWindow(right, SW_HIDE);
        }
    } else if (HWND away = ::GetDlgItem(m_hWnd, static_cast<int>(kPaneRow1Col0))) {
        ::SetWindowLongPtrW(away, GWLP_ID, static_cast<LONG_PTR>(IdFromRowCol(0, 1)));
    }
    m_model->Toggle();
    Apply();
}

int XSplitterWnd::GetBarSize() const noexcept { return m_model->Lengths().bar; }

RECT XSplitterWnd::GetBarRect() const { return m_model->HasBar() ? BarRect() : RECT{}; }

bool XSplitterWnd::IsLeftCollapsed() const noexcept { return m_model->State().leftCollapsed; }
bool XSplitterWnd::IsRightCollapsed() const noexcept { return m_model->State().rightCollapsed; }
bool XSplitterWnd::SizesMadeOnce() noexcept { return sp::SizesMadeOnce(); }

// ---- Active pane ----------------------------------------------------------------------

HWND XSplitterWnd::GetParentFrame() const {
    if (!m_hWnd) return nullptr;
    for (HWND wnd = ::GetAncestor(m_hWnd, GA_PARENT); wnd && wnd != ::GetDesktopWindow();
         wnd = ::GetAncestor(wnd, GA_PARENT)) {
        if (::GetWindowLongPtrW(wnd, GWL_EXSTYLE) & WS_EX_MDICHILD) return wnd;
        if (!(::GetWindowLongPtrW(wnd, GWL_STYLE) & WS_CHILD)) return IsDialogBox(wnd) ? nullptr : wnd;
    }
    return nullptr;
}

HWND XSplitterWnd::GetActivePane(int* row, int* col) const {
    if (!GetParentFrame()) return nullptr;
    HWND panes[2] = {GetPane(0, 0), GetPane(0, 1)};
    const HWND focus = ::GetFocus();
    int found = -1;
    for (int i = 0; i < 2 && found < 0; ++i)
        if (panes[i] && IsWithin(panes[i], focus)) found = i;
    for (int i = 0; i < 2 && found < 0; ++i)
        if (panes[i] && panes[i] == m_activePane) found = i;
    if (found < 0) return nullptr;
    if (row) *row = 0;
    if (col) *col = found;
    return panes[found];
}

void XSplitterWnd::SetActivePane(int row, int col, HWND wnd) {
    if (!GetParentFrame()) return;
    HWND pane = nullptr;
    if (wnd) {
        for (int i = 0; i < 2 && !pane; ++i)
            if (HWND p = GetPane(0, i); p && IsWithin(p, wnd)) pane = p;
    } else {
        pane = GetPane(row, col);
    }
    if (!pane) return;
    m_activePane = pane;
    ::SetFocus(wnd ? wnd : pane);
}

void XSplitterWnd::NoteFocus() {
    const HWND focus = ::GetFocus();
    for (int i = 0; i < 2; ++i)
        if (HWND pane = GetPane(0, i); pane && IsWithin(pane, focus)) m_activePane = pane;
}

bool XSplitterWnd::FocusVisiblePane() {
    for (HWND pane : {m_activePane, GetPane(0, 0), GetPane(0, 1)}) {
        if (pane && ::IsChild(m_hWnd, pane) && ::IsWindowVisible(pane) && ::IsWindowEnabled(pane)) {
            ::SetFocus(pane);
            return true;
        }
    }
    return false;
}

void XSplitterWnd::OnSetFocus(HWND) {
    Default();
    // The splitter itself has nothing to type into: the focus goes on to
    // the active pane, or the first one shown; the bar keeps it while it moves.
    if (IsTracking())
        Invalidate(false);
    else
        FocusVisiblePane();
}

void XSplitterWnd::OnKillFocus(HWND) {
    Default();
    // The bar keeps the keys only while it has the focus.
    if (m_track == Track::Keyboard) EndTracking(false, 0);
}

// ---- Tracking the bar --------------------------------------------------------------------

bool XSplitterWnd::DoKeyboardSplit() {
    if (!IsWindow() || !m_model->HasBar() || IsTracking()) return false;
    NoteFocus();
    m_focusBeforeTrack = ::GetFocus();
    m_track = Track::Keyboard;
    m_model->BeginTrack();
    ::SetFocus(m_hWnd);
    if (::GetFocus() != m_hWnd) {
        m_track = Track::None;
        m_model->CancelTrack();
        return false;
    }
    ::InvalidateRect(m_hWnd, nullptr, FALSE);
    return true;
}

void XSplitterWnd::OnLButtonDown(UINT, POINT pt) {
    if (!m_model->HasBar() || IsTracking() || !Contains(BarRect(), pt)) {
        Default();
        return;
    }
    const RECT area = AreaRect();
    m_grabOffset = pt.x - (area.left + m_model->BarLeft());
    NoteFocus();
    m_focusBeforeTrack = ::GetFocus();
    m_track = Track::Mouse;
    m_model->BeginTrack();
    ::SetCapture(m_hWnd);
    // The focus on the splitter, for Esc.
    ::SetFocus(m_hWnd);
}

void XSplitterWnd::OnMouseMove(UINT, POINT pt) {
    if (m_track != Track::Mouse) {
        Default();
        return;
    }
    m_model->TrackTo(pt.x - m_grabOffset - AreaRect().left);
    Apply();
    ::UpdateWindow(m_hWnd);
}

void XSplitterWnd::OnLButtonUp(UINT, POINT pt) {
    if (m_track != Track::Mouse) {
        Default();
        return;
    }
    EndTracking(true, pt.x - m_grabOffset - AreaRect().left);
}

void XSplitterWnd::OnCaptureChanged(HWND newCapture) {
    Default();
    if (m_track == Track::Mouse && newCapture != m_hWnd) EndTracking(false, 0);
}

void XSplitterWnd::OnKeyDown(UINT vk, UINT, UINT) {
    if (!IsTracking()) {
        Default();
        return;
    }
    const int at = m_model->BarLeft();
    const int step = (::GetKeyState(VK_CONTROL) & 0x8000) ? kFineKeyStep : qv::Scale(m_hWnd, kKeyStep);
    switch (vk) {
    case VK_LEFT: m_model->TrackTo(at - step); break;
    case VK_RIGHT: m_model->TrackTo(at + step); break;
    case VK_HOME: m_model->TrackTo(0); break;
    case VK_END: m_model->TrackTo(m_model->Room()); break;
    case VK_RETURN: EndTracking(true, at); return;
    case VK_ESCAPE: EndTracking(false, 0); return;
    default: return;
    }
    Apply();
}

UINT XSplitterWnd::OnGetDlgCode() {
    const UINT code = static_cast<UINT>(Default());
    return IsTracking() ? code | DLGC_WANTALLKEYS | DLGC_WANTARROWS : code;
}

void XSplitterWnd::EndTracking(bool accept, int x) {
    const Track was = m_track;
    if (was == Track::None) return;
    m_track = Track::None;  // before the capture goes: OnCaptureChanged must not cancel
    if (was == Track::Mouse && ::GetCapture() == m_hWnd) ::ReleaseCapture();
    if (accept)
        m_model->EndTrack(x);
    else
        m_model->CancelTrack();
    Apply();
    HWND back = m_focusBeforeTrack;
    m_focusBeforeTrack = nullptr;
    if (::GetFocus() == m_hWnd || !::GetFocus()) {
        if (back && back != m_hWnd && ::IsWindow(back) && ::IsWindowVisible(back))
            ::SetFocus(back);
        else
            FocusVisiblePane();
    }
}

BOOL XSplitterWnd::OnSetCursor(HWND wnd, UINT hitTest, UINT) {
    if (wnd == m_hWnd && hitTest == HTCLIENT && m_model->HasBar()) {
        POINT pt{};
        ::GetCursorPos(&pt);
        ::ScreenToClient(m_hWnd, &pt);
        if (IsTracking() || Contains(BarRect(), pt)) {
            ::SetCursor(::LoadCursorW(nullptr, IDC_SIZEWE));
            return TRUE;
        }
    }
    return static_cast<BOOL>(Default());
}

// ---- Notifications ------------------------------------------------------------------------

bool XSplitterWnd::ForwardToParent(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
    HWND parent = GetParent();
    if (!parent) return false;
    result = ::SendMessageW(parent, msg, wp, lp);
    return true;
}

BOOL XSplitterWnd::OnCommand(WPARAM wp, LPARAM lp) {
    NoteFocus();
    const HWND from = reinterpret_cast<HWND>(lp);
    if (IsOwnButton(from) && HIWORD(wp) == BN_CLICKED) {
        if (from == m_upper.m_hWnd)
            BtnLeftPressed();
        else
            BtnRightPressed();
        // A click leaves the focus on the button; it belongs in a pane.
        if (::GetFocus() == from) FocusVisiblePane();
    }
    // Handled or not, the parent hears it: a host learns of a collapse or a
    // restore, and of its panes' commands.
    LRESULT ignored = 0;
    if (!ForwardToParent(WM_COMMAND, wp, lp, ignored)) Default();
    return TRUE;
}

BOOL XSplitterWnd::OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) {
    // The buttons' own notifications (custom drawing, hot tracking) stay here.
    NoteFocus();
    const auto* hdr = reinterpret_cast<const NMHDR*>(lp);
    if (hdr && !IsOwnButton(hdr->hwndFrom) && ForwardToParent(WM_NOTIFY, wp, lp, *result)) return TRUE;
    *result = Default();
    return TRUE;
}

LRESULT XSplitterWnd::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC: {
        LRESULT result = 0;
        if (!IsOwnButton(reinterpret_cast<HWND>(lp)) && ForwardToParent(msg, wp, lp, result) && result) return result;
        return Default();
    }
    case WM_DRAWITEM:
    case WM_MEASUREITEM:
    case WM_COMPAREITEM:
    case WM_DELETEITEM: {
        LRESULT result = 0;
        if (wp != 0 && ForwardToParent(msg, wp, lp, result)) return result;
        return Default();
    }
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM: {
        LRESULT result = -1;
        if (lp && ForwardToParent(msg, wp, lp, result)) return result;
        return Default();
    }
    case WM_HSCROLL:
    case WM_VSCROLL: {
        LRESULT result = 0;
        if (lp && ForwardToParent(msg, wp, lp, result)) return result;
        return Default();
    }
    default:
        return qv::Window::WindowProc(msg, wp, lp);
    }
}

// ---- Screen readers and DPI ---------------------------------------------------------------

bool XSplitterWnd::AccessibleName(long child, std::wstring& name) {
    if (child == kBarItem && m_model->HasBar()) {
        name = Translated(L"Splitter bar");
        return true;
    }
    if (child != CHILDID_SELF) return false;
    // The splitter holds the host's panes: the label before it names it.
    name = qv::AccessibleLabelOf(m_hWnd);
    return !name.empty();
}

bool XSplitterWnd::AccessibleValue(long child, std::wstring& value) {
    if (child != kBarItem || !m_model->HasBar()) return false;
    value = std::to_wstring(m_model->LeftPercent()) + L"%";
    return true;
}

bool XSplitterWnd::AccessibleRole(long child, long& role) {
    if (child != kBarItem || !m_model->HasBar()) return false;
    // A divider the user can move, as a window splitter is known to readers.
    role = ROLE_SYSTEM_SEPARATOR;
    return true;
}

bool XSplitterWnd::AccessibleState(long child, long& state) {
    if (child != kBarItem || !m_model->HasBar()) return false;
    state = 0;
    if (m_model->AnyCollapsed()) state |= STATE_SYSTEM_COLLAPSED;
    if (m_track == Track::Keyboard && ::GetFocus() == m_hWnd) state |= STATE_SYSTEM_FOCUSED;
    return true;
}

bool XSplitterWnd::AccessibleChildCount(long& count) {
    // Without a bar the standard proxy's children (the panes) are all there is.
    if (!m_model->HasBar()) return false;
    count = 1;
    return true;
}

bool XSplitterWnd::AccessibleItemRect(long child, RECT& rect) {
    if (child != kBarItem || !m_model->HasBar()) return false;
    rect = BarRect();
    return true;
}

bool XSplitterWnd::AccessibleHitTest(POINT client, long& child) {
    if (!m_model->HasBar() || !Contains(BarRect(), client)) return false;
    // Over a button the button's own object answers.
    for (XSplitterButton* button : {&m_upper, &m_lower})
        if (button->IsWindow() && button->IsWindowVisible() && Contains(ChildRect(m_hWnd, *button), client))
            return false;
    child = kBarItem;
    return true;
}

void XSplitterWnd::OnDpiChanged(UINT dpi) {
    if (!IsWindow()) return;
    if (IsTracking()) EndTracking(false, 0);
    m_model->ChangeDpi(dpi);
    m_cxBorder = qv::SystemMetricForDpi(SM_CXBORDER, dpi);
    m_cyBorder = qv::SystemMetricForDpi(SM_CYBORDER, dpi);
    // The borders may have changed the area; no drop rule runs (nothing
    // moved under the user's hand).
    const RECT area = AreaRect();
    m_model->SetArea(area.right - area.left, area.bottom - area.top);
    m_model->RecalcLayout();
    Apply();
}
