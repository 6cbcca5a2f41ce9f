#include "quorvel/views/color_button.h"

#include <commdlg.h>
#include <oleacc.h>

#include <cstdint>
#include <string>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/services.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/views/color_button_rules.h"
#include "quorvel/windows/named_button.h"

namespace cl = qv::colors;

namespace {

std::wstring Translated(const wchar_t* text) { return qv::Services::Translation().Translate(text); }

// The name a screen reader hears for a colour: the palette colour's English
// name (translated where a translation is wanted) or its "#RRGGBB" text.
std::wstring EnglishColorText(COLORREF color) {
    const wchar_t* name = cl::ColorName(color);
    return name ? std::wstring(name) : cl::HexText(color);
}

// The same as the user reads it: a name translated, a "#RRGGBB" text as it is.
std::wstring ReaderColorText(COLORREF color) {
    const wchar_t* name = cl::ColorName(color);
    return name ? Translated(name) : cl::HexText(color);
}

// The "#RRGGBB" text of a colour that is read by its name, for the reader
// who wants the exact colour; false for a colour read as its text already.
bool ReaderColorDetail(COLORREF color, std::wstring& detail) {
    if (!cl::ColorName(color)) return false;
    detail = cl::HexText(color);
    return true;
}

void Fill(HDC dc, const qv::Box& b, HBRUSH brush) {
    const RECT rc{b.left, b.top, b.right, b.bottom};
    ::FillRect(dc, &rc, brush);
}

bool IsCellId(UINT id) {
    return id >= XColorBtnDlg::kFirstCell && id < static_cast<UINT>(XColorBtnDlg::kFirstCell) + XColorBtnDlg::kCellCount;
}

}  // namespace

// ---- XColorBtnDlg::Item ------------------------------------------------------------

// A cell of the grid or "Other...". The arrow keys, Enter, Space and Esc on
// it move in the grid or choose; a screen reader hears a cell as a list item
// named by its colour, selected when it holds the colour the grid opened on.
class XColorBtnDlg::Item final : public qv::Button, public qv::AccessibleSource {
public:
    Item(XColorBtnDlg& grid, int index) : m_grid(grid), m_index(index) {}
    ~Item() override { Detach(); }

    bool IsCell() const noexcept { return m_index < kCellCount; }
    COLORREF Color() const noexcept { return cl::PaletteColor(m_index); }

    bool AccessibleName(long child, std::wstring& name) override {
        if (child != CHILDID_SELF || !IsCell()) return false;
        name = ReaderColorText(Color());
        return true;
    }
    bool AccessibleDescription(long child, std::wstring& description) override {
        return child == CHILDID_SELF && IsCell() && ReaderColorDetail(Color(), description);
    }
    bool AccessibleRole(long child, long& role) override {
        if (child != CHILDID_SELF) return false;
        role = IsCell() ? ROLE_SYSTEM_LISTITEM : ROLE_SYSTEM_PUSHBUTTON;
        return true;
    }
    bool AccessibleState(long child, long& state) override {
        if (child != CHILDID_SELF) return false;
        state = qv::PushButtonState(m_hWnd) & ~STATE_SYSTEM_PRESSED;
        if (IsCell()) {
            state |= STATE_SYSTEM_SELECTABLE;
            if (Color() == m_grid.m_current) state |= STATE_SYSTEM_SELECTED;
        }
        return true;
    }

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
        switch (msg) {
        case WM_GETDLGCODE: {
            // The arrows, Enter and Esc come to the item itself, so that the
            // grid moves by rows and columns rather than in tab order.
            LRESULT code = Default() | DLGC_WANTARROWS;
            const MSG* m = reinterpret_cast<const MSG*>(lp);
            if (m && m->message == WM_KEYDOWN && (m->wParam == VK_RETURN || m->wParam == VK_ESCAPE))
                code |= DLGC_WANTMESSAGE;
            return code;
        }
        case WM_KEYDOWN:
            if (m_grid.OnGridKey(m_index, static_cast<UINT>(wp))) return 0;
            break;
        case WM_CHAR:
            if (wp == L' ' || wp == L'\r' || wp == 0x1B) return 0;  // handled at WM_KEYDOWN
            break;
        default: break;
        }
        return qv::Button::WindowProc(msg, wp, lp);
    }

private:
    XColorBtnDlg& m_grid;
    int m_index;
};

// ---- XColorBtnDlg ---------------------------------------------------------------

XColorBtnDlg::XColorBtnDlg() noexcept : qv::Dialog(kTemplate) {}

XColorBtnDlg::~XColorBtnDlg() {
    // The items let go of their windows before the grid does.
    m_items.clear();
}

BOOL XColorBtnDlg::OnInitDialog() {
    qv::Dialog::OnInitDialog();
    m_selected = kNoSelection;
    m_chosen = m_current;
    m_items.clear();
    for (int i = 0; i <= kOtherIndex; ++i) {
        HWND item = ItemOf(i);
        if (!item) continue;
        // The cells' texts are not drawn; they name the colours for tools
        // that read window texts and are translated with the dialog's other
        // texts. Screen readers ask the item itself.
        if (i < kCellCount) ::SetWindowTextW(item, EnglishColorText(cl::PaletteColor(i)).c_str());
        auto object = std::make_unique<Item>(*this, i);
        if (object->Attach(item)) m_items.push_back(std::move(object));
    }
    LayOut(qv::DpiOf(m_hWnd));
    PlaceBelowAnchor();
    const int current = cl::FindPaletteColor(m_current);
    FocusIndex(current >= 0 ? current : 0);
    return FALSE;  // the focus is set
}

void XColorBtnDlg::LayOut(UINT dpi) {
    const cl::GridLayout g = cl::LayOutGrid(dpi);
    auto place = [](HWND item, const qv::Box& b) {
        if (item) ::SetWindowPos(item, nullptr, b.left, b.top, b.Width(), b.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
    };
    for (int i = 0; i < kCellCount; ++i) place(ItemOf(i), g.cells[i]);
    place(ItemOf(kOtherIndex), g.other);
    // The grid's frame around a client area of the laid-out size.
    RECT frame{0, 0, g.width, g.height};
    ::AdjustWindowRectEx(&frame, GetStyle(), FALSE, GetExStyle());
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    Invalidate();
}

void XColorBtnDlg::OnDpiChanged(UINT dpi) {
    if (IsWindow()) LayOut(dpi);
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

namespace {

// A frame `unit` pixels thick just inside `rc`.
void Frame(HDC dc, const RECT& rc, HBRUSH brush, int unit) {
    for (int i = 0; i < unit; ++i) {
        RECT line = rc;
        ::InflateRect(&line, -i, -i);
        ::FrameRect(dc, &line, brush);
    }
}

}  // namespace

void XColorBtnDlg::DrawCell(const DRAWITEMSTRUCT* dis) {
    const int index = static_cast<int>(dis->CtlID - kFirstCell);
    const COLORREF color = cl::PaletteColor(index);
    const cl::GridLayout g = cl::LayOutGrid(qv::DpiOf(dis->hwndItem));
    HDC dc = dis->hDC;
    RECT rc = dis->rcItem;
    ::FillRect(dc, &rc, ::GetSysColorBrush(COLOR_BTNFACE));
    if (dis->itemState & ODS_FOCUS) {
        // A double frame, black outside and white inside, shows on any colour.
        Frame(dc, rc, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)), g.unit);
        RECT inner = rc;
        ::InflateRect(&inner, -g.unit, -g.unit);
        Frame(dc, inner, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)), g.unit);
    } else if (color == m_current) {
        Frame(dc, rc, ::GetSysColorBrush(COLOR_HIGHLIGHT), g.unit);
    }
    RECT swatch = rc;
    const int inset = g.inset + ((dis->itemState & ODS_SELECTED) ? g.unit : 0);
    ::InflateRect(&swatch, -inset, -inset);
    qv::Brush fill(::CreateSolidBrush(color));
    ::FillRect(dc, &swatch, fill);
    Frame(dc, swatch, ::GetSysColorBrush(COLOR_3DDKSHADOW), g.unit);
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
    case WM_DESTROY:
        // The items let go of their windows while they still exist.
        m_items.clear();
        break;
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
    m_brushFace.reset(::CreateSolidBrush(::GetSysColor(COLOR_BTNFACE)));
    m_brushHighlight.reset(::CreateSolidBrush(::GetSysColor(COLOR_3DHILIGHT)));
    m_brushShadow.reset(::CreateSolidBrush(::GetSysColor(COLOR_3DSHADOW)));
    m_brushDarkShadow.reset(::CreateSolidBrush(::GetSysColor(COLOR_3DDKSHADOW)));
}

BOOL XColorBtn::Create(const wchar_t* caption, const RECT& rect, HWND parent, UINT id) try {
    if (m_hWnd || !parent || !::IsWindow(parent)) return FALSE;
    // The caption is not drawn: it is the name screen readers hear.
    const std::wstring name = caption && *caption ? Translated(caption) : std::wstring();
    return qv::Button::Create(name.c_str(), kStyle, rect, parent, id) ? TRUE : FALSE;
} catch (...) {
    return qv::CaughtAtEdge(" XColorBtn::Create", __LINE__, FALSE);
}

void XColorBtn::SetSelColor(COLORREF color) try {
    const bool changed = color != m_selColor;
    m_selColor = color;
    if (!IsWindow()) return;
    Invalidate(false);
    if (changed) qv::RaiseAccessibleEvent(m_hWnd, EVENT_OBJECT_VALUECHANGE);
} catch (...) {
    qv::CaughtAtEdge(" XColorBtn::SetSelColor", __LINE__);
}

bool XColorBtn::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF) return false;
    name = qv::AccessibleTextOf(m_hWnd);
    if (name.empty()) name = qv::AccessibleLabelOf(m_hWnd);
    if (name.empty()) name = Translated(L"Colour");
    return true;
}

bool XColorBtn::AccessibleValue(long child, std::wstring& value) {
    if (child != CHILDID_SELF) return false;
    value = ReaderColorText(m_selColor);
    return true;
}

bool XColorBtn::AccessibleDescription(long child, std::wstring& description) {
    return child == CHILDID_SELF && ReaderColorDetail(m_selColor, description);
}

bool XColorBtn::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_BUTTONDROPDOWNGRID;
    return true;
}

bool XColorBtn::AccessibleState(long child, long& state) {
    if (child != CHILDID_SELF) return false;
    state = qv::PushButtonState(m_hWnd) | STATE_SYSTEM_HASPOPUP;
    return true;
}

void XColorBtn::OnDpiChanged(UINT) {
    if (IsWindow()) Invalidate(false);
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
    const qv::Box item{dis->rcItem.left, dis->rcItem.top, dis->rcItem.right, dis->rcItem.bottom};
    const cl::ButtonFace f = cl::LayOutButton(item, (state & ODS_SELECTED) != 0, qv::DpiOf(dis->hwndItem));
    const bool disabled = (state & ODS_DISABLED) != 0;
    auto shade = [this](cl::Shade s) {
        switch (s) {
        case cl::Shade::kDarkShadow: return m_brushDarkShadow.get();
        case cl::Shade::kShadow: return m_brushShadow.get();
        case cl::Shade::kHighlight: return m_brushHighlight.get();
        }
        return m_brushShadow.get();
    };

    // 1. The face and a two-line 3D border: raised at rest, sunken while
    //    held down, when the content follows the press.
    Fill(dc, item, m_brushFace.get());
    for (const cl::Band& band : f.frame) Fill(dc, band.box, shade(band.shade));

    // 2. An engraved separator before the arrow.
    Fill(dc, f.separatorShadow, m_brushShadow.get());
    Fill(dc, f.separatorHighlight, m_brushHighlight.get());

    // 3. The drop-down arrow; engraved grey with a white edge when disabled.
    HBRUSH arrow = disabled ? m_brushShadow.get() : static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH));
    for (const qv::Box& row : f.arrow) {
        Fill(dc, row, arrow);
        if (disabled) {
            Fill(dc, qv::Box{row.right - f.unit, row.top, row.right, row.bottom},
                 static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
        }
    }

    // 4. The swatch of the selected colour in a black outline (a disabled
    //    button shows none).
    if (!disabled) {
        Fill(dc, f.swatch, static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)));
        qv::Brush swatch(::CreateSolidBrush(m_selColor));
        const int u = f.unit;
        Fill(dc, qv::Box{f.swatch.left + u, f.swatch.top + u, f.swatch.right - u, f.swatch.bottom - u}, swatch.get());
    }

    // 5. The focus: a dotted frame, every second dot black.
    if (state & ODS_FOCUS) {
        HBRUSH black = static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH));
        const int u = f.unit, step = 2 * f.unit;
        auto dot = [&](int x, int y) { Fill(dc, qv::Box{x, y, x + u, y + u}, black); };
        for (int x = f.focus.left; x <= f.focus.right; x += step) {
            dot(x, f.focus.top);
            dot(x, f.focus.bottom);
        }
        for (int y = f.focus.top; y <= f.focus.bottom; y += step) {
            dot(f.focus.left, y);
            dot(f.focus.right, y);
        }
    }
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
