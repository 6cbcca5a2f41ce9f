#include "quorvel/views/color_button.h"

#include <commdlg.h>

#include <cstdint>
#include <string>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/views/color_button_rules.h"

namespace cl = qv::colors;

namespace {

std::wstring Translated(const wchar_t* text) { return qv::Services::Translation().Translate(text); }

// The name a screen reader hears for a colour: the palette colour's English
// name (translated where a translation is wanted) or its "#RRGGBB" text.
std::wstring EnglishColorText(COLORREF color) {
    const wchar_t* name = cl::ColorName(color);
    return name ? std::wstring(name) : cl::HexText(color);
}

bool IsCellId(UINT id) {
    return id >= XColorBtnDlg::kFirstCell && id < static_cast<UINT>(XColorBtnDlg::kFirstCell) + XColorBtnDlg::kCellCount;
}

void Line(HDC dc, int x1, int y1, int x2, int y2) {
    ::MoveToEx(dc, x1, y1, nullptr);
    ::LineTo(dc, x2, y2);
}

}  // namespace

// ---- XColorBtnDlg ---------------------------------------------------------------

XColorBtnDlg::XColorBtnDlg() noexcept : qv::Dialog(kTemplate) {}

XColorBtnDlg::~XColorBtnDlg() = default;

BOOL XColorBtnDlg::OnInitDialog() {
    qv::Dialog::OnInitDialog();
    m_selected = kNoSelection;
    m_chosen = m_current;
    for (int i = 0; i <= kOtherIndex; ++i) {
        HWND item = ItemOf(i);
        if (!item) continue;
        // The cells' texts are not drawn; they name the colours for screen
        // readers and are translated with the dialog's other texts.
        if (i < kCellCount) ::SetWindowTextW(item, EnglishColorText(cl::PaletteColor(i)).c_str());
        ::SetWindowSubclass(item, &XColorBtnDlg::KeySubclassProc, 1, reinterpret_cast<DWORD_PTR>(this));
    }
    PlaceBelowAnchor();
    const int current = cl::FindPaletteColor(m_current);
    FocusIndex(current >= 0 ? current : 0);
    return FALSE;  // the focus is set
}

HWND XColorBtnDlg::ItemOf(int index) const {
    if (index >= 0 && index < kCellCount) return GetDlgItem(static_cast<int>(kFirstCell) + index);
    return index == kOtherIndex ? GetDlgItem(kOtherButton) : nullptr;
}

int XColorBtnDlg::IndexOf(HWND wnd) const {
    if (!wnd || ::GetParent(wnd) != m_hWnd) return kNoSelection;
    const UINT id = static_cast<UINT>(::GetDlgCtrlID(wnd));
    if (IsCellId(id)) return static_cast<int>(id - kFirstCell);
    return id == kOtherButton ? kOtherIndex : kNoSelection;
}

void XColorBtnDlg::FocusIndex(int index) {
    if (HWND item = ItemOf(index)) ::SetFocus(item);
    if (index >= 0 && index < kCellCount) m_column = index % cl::kGridColumns;
}

void XColorBtnDlg::PlaceBelowAnchor() {
    if (!m_anchor || !::IsWindow(m_anchor)) return;
    RECT anchor{}, self{};
    ::GetWindowRect(m_anchor, &anchor);
    ::GetWindowRect(m_hWnd, &self);
    const int w = self.right - self.left, h = self.bottom - self.top;
    int x = anchor.left, y = anchor.bottom;
    // Keep the grid on the anchor's screen: above the button when there is
    // no room below, and moved in from the screen's sides.
    MONITORINFO mi{};
    mi.cbSize = sizeof mi;
    if (::GetMonitorInfoW(::MonitorFromWindow(m_anchor, MONITOR_DEFAULTTONEAREST), &mi)) {
        const RECT& work = mi.rcWork;
        if (y + h > work.bottom && anchor.top - h >= work.top) y = anchor.top - h;
        if (x + w > work.right) x = work.right - w;
        if (x < work.left) x = work.left;
    }
    ::SetWindowPos(m_hWnd, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void XColorBtnDlg::Choose(int index) {
    m_selected = index;
    m_chosen = cl::PaletteColor(index);
    EndDialog(IDOK);
}

bool XColorBtnDlg::ChooseOtherColor(COLORREF& color) {
    return qv::ChooseSystemColor(m_hWnd, color);
}

void XColorBtnDlg::OpenOther() {
    COLORREF color = m_current;
    m_inOther = true;
    const bool chosen = ChooseOtherColor(color);
    m_inOther = false;
    if (!chosen) {
        FocusIndex(kOtherIndex);
        return;
    }
    m_selected = kOtherIndex;
    m_chosen = color;
    EndDialog(IDOK);
}

BOOL XColorBtnDlg::OnCommand(WPARAM wp, LPARAM lp) {
    const UINT id = LOWORD(wp);
    if (HIWORD(wp) == BN_CLICKED && IsCellId(id)) {
        Choose(static_cast<int>(id - kFirstCell));
        return TRUE;
    }
    if (HIWORD(wp) == BN_CLICKED && id == kOtherButton) {
        OpenOther();
        return TRUE;
    }
    return qv::Dialog::OnCommand(wp, lp);
}

void XColorBtnDlg::OnOK() {
    const int index = IndexOf(::GetFocus());
    if (index >= 0 && index < kCellCount)
        Choose(index);
    else
        EndDialog(IDCANCEL);
}

bool XColorBtnDlg::OnGridKey(int index, UINT vk) {
    cl::GridKey key{};
    switch (vk) {
    case VK_LEFT: key = cl::GridKey::kLeft; break;
    case VK_RIGHT: key = cl::GridKey::kRight; break;
    case VK_UP: key = cl::GridKey::kUp; break;
    case VK_DOWN: key = cl::GridKey::kDown; break;
    case VK_HOME: key = cl::GridKey::kHome; break;
    case VK_END: key = cl::GridKey::kEnd; break;
    case VK_RETURN:
    case VK_SPACE:
        if (index == kOtherIndex)
            OpenOther();
        else
            Choose(index);
        return true;
    case VK_ESCAPE: EndDialog(IDCANCEL); return true;
    default: return false;
    }
    FocusIndex(cl::MoveInGrid(index, key, m_column));
    return true;
}

LRESULT CALLBACK XColorBtnDlg::KeySubclassProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR id, DWORD_PTR ref) {
    auto* self = reinterpret_cast<XColorBtnDlg*>(ref);
    try {
        switch (msg) {
        case WM_GETDLGCODE: {
            // The arrows, Enter and Esc come to the item itself, so that the
            // grid moves by rows and columns rather than in tab order.
            LRESULT code = ::DefSubclassProc(hwnd, msg, wp, lp) | DLGC_WANTARROWS;
            const MSG* m = reinterpret_cast<const MSG*>(lp);
            if (m && m->message == WM_KEYDOWN && (m->wParam == VK_RETURN || m->wParam == VK_ESCAPE))
                code |= DLGC_WANTMESSAGE;
            return code;
        }
        case WM_KEYDOWN:
            if (self && self->OnGridKey(self->IndexOf(hwnd), static_cast<UINT>(wp))) return 0;
            break;
        case WM_CHAR:
            if (wp == L' ' || wp == L'\r' || wp == 0x1B) return 0;  // handled at WM_KEYDOWN
            break;
        case WM_NCDESTROY: ::RemoveWindowSubclass(hwnd, &XColorBtnDlg::KeySubclassProc, id); break;
        default: break;
        }
    } catch (...) {
        qv::LogCaughtException(" XColorBtnDlg::KeySubclassProc", __LINE__, static_cast<long>(msg));
        return 0;
    }
    return ::DefSubclassProc(hwnd, msg, wp, lp);
}

void XColorBtnDlg::DrawCell(const DRAWITEMSTRUCT* dis) {
    const int index = static_cast<int>(dis->CtlID - kFirstCell);
    const COLORREF color = cl::PaletteColor(index);
    HDC dc = dis->hDC;
    RECT rc = dis->rcItem;
    ::FillRect(dc, &rc, ::GetSysColorBrush(COLOR_BTNFACE));
    if (dis->itemState & ODS_FOCUS) {
        // A double frame, black outside and white inside, shows on any colour.
        ::FrameRect(dc, &rc, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
        RECT inner = rc;
        ::InflateRect(&inner, -1, -1);
        ::FrameRect(dc, &inner, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
    } else if (color == m_current) {
        ::FrameRect(dc, &rc, ::GetSysColorBrush(COLOR_HIGHLIGHT));
    }
    RECT swatch = rc;
    const int inset = (dis->itemState & ODS_SELECTED) ? 3 : 2;
    ::InflateRect(&swatch, -inset, -inset);
    qv::Brush fill(::CreateSolidBrush(color));
    ::FillRect(dc, &swatch, fill);
    ::FrameRect(dc, &swatch, ::GetSysColorBrush(COLOR_3DDKSHADOW));
}

LRESULT XColorBtnDlg::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_DRAWITEM: {
        const auto* dis = reinterpret_cast<const DRAWITEMSTRUCT*>(lp);
        if (dis && dis->CtlType == ODT_BUTTON && IsCellId(dis->CtlID)) {
            DrawCell(dis);
            return TRUE;
        }
        break;
    }
    case WM_ACTIVATE:
        // A click outside the grid closes it, as a drop-down closes; the
        // system's colour dialog, owned by the grid, does not; nor does the
        // owner's activation while the grid is closing with a choice.
        if (LOWORD(wp) == WA_INACTIVE && !m_inOther && IsModal() && m_selected == kNoSelection) {
            HWND other = reinterpret_cast<HWND>(lp);
            if (!other || ::GetWindow(other, GW_OWNER) != m_hWnd) EndDialog(IDCANCEL);
        }
        break;
    default: break;
    }
    return qv::Dialog::WindowProc(msg, wp, lp);
}

// ---- XColorBtn ------------------------------------------------------------------

XColorBtn::XColorBtn() noexcept { Construct(0xFFFFFF); }

XColorBtn::XColorBtn(COLORREF selected) noexcept { Construct(selected); }

XColorBtn::XColorBtn(COLORREF selected, const COLORREF* colors, int count) noexcept {
    Construct(selected);
    if (!colors || count <= 0) return;
    std::uint32_t table[cl::kPaletteSize] = {};
    const int n = count < cl::kPaletteSize ? count : cl::kPaletteSize;
    for (int i = 0; i < n; ++i) table[i] = static_cast<std::uint32_t>(colors[i]);
    cl::SetPaletteColors(table, static_cast<std::size_t>(n));
}

void XColorBtn::Construct(COLORREF selected) noexcept {
    m_selColor = selected;
    m_paletteHeld = cl::AcquirePalette();
    InitColorDialog();
    InitPenBrush();
}

XColorBtn::~XColorBtn() {
    if (OwnsWindow()) DestroyWindow();
    m_pdlg.reset();
    if (m_paletteHeld) cl::ReleasePalette();
}

void XColorBtn::InitColorDialog() noexcept { m_pdlg.reset(new (std::nothrow) XColorBtnDlg); }

void XColorBtn::InitPenBrush() noexcept {
    m_penFace.reset(::CreatePen(PS_SOLID, 1, ::GetSysColor(COLOR_BTNFACE)));
    m_penHighlight.reset(::CreatePen(PS_SOLID, 1, ::GetSysColor(COLOR_3DHILIGHT)));
    m_penShadow.reset(::CreatePen(PS_SOLID, 1, ::GetSysColor(COLOR_3DSHADOW)));
    m_penDarkShadow.reset(::CreatePen(PS_SOLID, 1, ::GetSysColor(COLOR_3DDKSHADOW)));
    m_brushFace.reset(::CreateSolidBrush(::GetSysColor(COLOR_BTNFACE)));
}

BOOL XColorBtn::Create(const wchar_t* caption, const RECT& rect, HWND parent, UINT id) try {
    if (m_hWnd || !parent || !::IsWindow(parent)) return FALSE;
    m_label = Translated(caption && *caption ? caption : L"Colour");
    if (!qv::Button::Create(L"", kStyle, rect, parent, id)) return FALSE;
    UpdateAccessibleText();
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XColorBtn::Create", __LINE__, FALSE);
}

void XColorBtn::UpdateAccessibleText() {
    if (!IsWindow()) return;
    if (m_label.empty()) {
        // A dialog item taken over keeps its template caption as the name.
        m_label = GetWindowText();
        if (m_label.empty()) m_label = Translated(L"Colour");
    }
    const std::wstring value = Translated(EnglishColorText(m_selColor).c_str());
    SetWindowText((m_label + L": " + value).c_str());
}

void XColorBtn::SetSelColor(COLORREF color) try {
    m_selColor = color;
    UpdateAccessibleText();
    if (IsWindow()) Invalidate(false);
} catch (...) {
    qv::CaughtAtEdge(" XColorBtn::SetSelColor", __LINE__);
}

void XColorBtn::Reset() { SetSelColor(0xFFFFFF); }

COLORREF XColorBtn::GetPaletteColor(int index) noexcept { return static_cast<COLORREF>(cl::PaletteColor(index)); }

int XColorBtn::GetPaletteUsers() noexcept { return cl::PaletteUsers(); }

bool XColorBtn::OnReflectCommand(UINT notifyCode) {
    if (notifyCode == BN_CLICKED) OnClicked();
    return false;  // the parent hears the click too, after the colour has changed
}

BOOL XColorBtn::OnClicked() {
    if (!m_pdlg) {
        qv::LogFailure(L" XColorBtn::OnClicked()", 384, L"ASSERT(m_pdlg)", E_FAIL);
        return FALSE;
    }
    m_pdlg->SetCurrentColor(m_selColor);
    m_pdlg->SetAnchor(m_hWnd);
    if (m_pdlg->DoModal(m_hWnd) == IDOK) {
        const int index = m_pdlg->GetSelectedIndex();
        if (index >= 0 && index < kPaletteSize)
            SetSelColor(GetPaletteColor(index));
        else if (index == XColorBtnDlg::kOtherIndex)
            SetSelColor(m_pdlg->GetSelectedColor());
    }
    return FALSE;
}

bool XColorBtn::OnReflectDrawItem(DRAWITEMSTRUCT* dis) {
    DrawItem(dis);
    return true;
}

void XColorBtn::DrawItem(DRAWITEMSTRUCT* dis) {
    HDC dc = dis->hDC;
    const UINT state = dis->itemState;
    int L = dis->rcItem.left, T = dis->rcItem.top, R = dis->rcItem.right, B = dis->rcItem.bottom;
    const int savedDc = ::SaveDC(dc);

    // 1. The face and a two-pixel 3D border: raised at rest, sunken while held down.
    ::SelectObject(dc, m_penFace.get());
    ::SelectObject(dc, m_brushFace.get());
    ::Rectangle(dc, L, T, R, B);
    if (state & ODS_SELECTED) {
        ::SelectObject(dc, m_penDarkShadow.get());
        Line(dc, L, B - 1, L, T);
        ::LineTo(dc, R, T);
        ::SelectObject(dc, m_penShadow.get());
        Line(dc, L + 1, B - 2, L + 1, T + 1);
        ::LineTo(dc, R - 1, T + 1);
        ::SelectObject(dc, m_penHighlight.get());
        Line(dc, L, B - 1, R - 1, B - 1);
        ::LineTo(dc, R - 1, T - 1);
        // The content follows the press.
        ++L, ++T, ++R, ++B;
    } else {
        ::SelectObject(dc, m_penDarkShadow.get());
        Line(dc, L, B - 1, R - 1, B - 1);
        ::LineTo(dc, R - 1, T - 1);
        ::SelectObject(dc, m_penShadow.get());
        Line(dc, L + 1, B - 2, R - 2, B - 2);
        ::LineTo(dc, R - 2, T);
        ::SelectObject(dc, m_penHighlight.get());
        Line(dc, L + 1, B - 3, L + 1, T + 1);
        ::LineTo(dc, R - 2, T + 1);
    }
    const int mid = B / 2;
    const bool disabled = (state & ODS_DISABLED) != 0;

    // 2. An engraved separator before the arrow.
    ::SelectObject(dc, m_penShadow.get());
    Line(dc, R - 11, T + 4, R - 11, B - 4);
    ::SelectObject(dc, m_penHighlight.get());
    Line(dc, R - 10, T + 4, R - 10, B - 4);

    // 3. The drop-down arrow: rows of 5, 3 and 1 pixels.
    const COLORREF arrow = disabled ? ::GetSysColor(COLOR_3DSHADOW) : RGB(0, 0, 0);
    ::SelectObject(dc, disabled ? m_penShadow.get() : ::GetStockObject(BLACK_PEN));
    Line(dc, R - 4, mid - 1, R - 9, mid - 1);
    Line(dc, R - 5, mid, R - 8, mid);
    ::SetPixel(dc, R - 6, mid + 1, arrow);
    if (disabled) {
        const COLORREF white = RGB(255, 255, 255);
        ::SetPixel(dc, R - 4, mid - 1, white);
        ::SetPixel(dc, R - 5, mid, white);
        ::SetPixel(dc, R - 6, mid + 1, white);
    }

    // 4. The swatch of the selected colour (a disabled button shows none).
    if (!disabled) {
        qv::Brush swatch(::CreateSolidBrush(m_selColor));
        ::SelectObject(dc, ::GetStockObject(BLACK_PEN));
        ::SelectObject(dc, swatch.get());
        ::Rectangle(dc, L + 5, T + 4, R - 15, B - 4);
        ::SelectObject(dc, m_brushFace.get());  // before the brush goes
    }

    // 5. The focus: a dotted frame, every second pixel black.
    if (state & ODS_FOCUS) {
        for (int x = L + 3; x <= R - 4; x += 2) {
            ::SetPixel(dc, x, T + 3, RGB(0, 0, 0));
            ::SetPixel(dc, x, B - 4, RGB(0, 0, 0));
        }
        for (int y = T + 3; y <= B - 4; y += 2) {
            ::SetPixel(dc, L + 3, y, RGB(0, 0, 0));
            ::SetPixel(dc, R - 4, y, RGB(0, 0, 0));
        }
    }
    ::RestoreDC(dc, savedDc);
}

LRESULT XColorBtn::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_SYSCOLORCHANGE:
        InitPenBrush();
        break;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        // F4 and Alt+Down open the grid, as they open a drop-down list.
        if (wp == VK_F4 || (msg == WM_SYSKEYDOWN && wp == VK_DOWN)) {
            if (HWND parent = GetParent())
                ::SendMessageW(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), BN_CLICKED),
                               reinterpret_cast<LPARAM>(m_hWnd));
            return 0;
        }
        break;
    default: break;
    }
    return qv::Button::WindowProc(msg, wp, lp);
}
