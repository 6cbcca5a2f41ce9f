#include "quorvel/platform/controls.h"

#include <algorithm>
#include <cstring>

#include "quorvel/common/boundary.h"
#include "quorvel/platform/datetime.h"

namespace qv {

namespace {

// Reads a text whose length is known beforehand: `len` characters and the
// terminator, then cut to what the control copied.
template <class Fill>
std::wstring ReadText(int len, Fill fill) {
    if (len <= 0) return {};
    std::wstring text(static_cast<size_t>(len) + 1, L'\0');
    const int got = fill(text.data());
    text.resize(got > 0 ? static_cast<size_t>(got) : 0);
    return text;
}

}  // namespace

// ---------------------------------------------------------------------------
// Edit

bool Edit::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return Window::Create(L"EDIT", L"", style, rect, parent, id);
}

void Edit::GetSel(int& start, int& end) const {
    DWORD s = 0, e = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&s), reinterpret_cast<LPARAM>(&e));
    start = static_cast<int>(s);
    end = static_cast<int>(e);
}

void Edit::SetSel(int start, int end, bool noScroll) {
    SendMessage(EM_SETSEL, static_cast<WPARAM>(start), end);
    if (!noScroll) SendMessage(EM_SCROLLCARET);
}

std::wstring Edit::GetLine(int line) const try {
    const int len = LineLength(LineIndex(line));
    // EM_GETLINE takes the buffer size in its first WORD and copies no terminator.
    std::wstring text(static_cast<size_t>(len < 1 ? 1 : len) + 1, L'\0');
    *reinterpret_cast<WORD*>(text.data()) = static_cast<WORD>(text.size());
    const int got = static_cast<int>(SendMessage(EM_GETLINE, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text.data())));
    text.resize(got > 0 && got <= len ? static_cast<size_t>(got) : 0);
    return text;
} catch (...) {
    return CaughtAtEdge(" qv::Edit::GetLine", __LINE__, std::wstring());
}

POINT Edit::PosFromChar(UINT index) const {
    const LRESULT r = SendMessage(EM_POSFROMCHAR, index);
    return POINT{static_cast<short>(LOWORD(r)), static_cast<short>(HIWORD(r))};
}

// ---------------------------------------------------------------------------
// ComboBox, ListBox, Button, Static

bool ComboBox::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return Window::Create(L"COMBOBOX", L"", style, rect, parent, id);
}

std::wstring ComboBox::GetLBText(int index) const try {
    return ReadText(GetLBTextLen(index), [&](wchar_t* buf) {
        return static_cast<int>(SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buf)));
    });
} catch (...) {
    return CaughtAtEdge(" qv::ComboBox::GetLBText", __LINE__, std::wstring());
}

bool ListBox::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return Window::Create(L"LISTBOX", L"", style, rect, parent, id);
}

std::wstring ListBox::GetText(int index) const try {
    return ReadText(GetTextLen(index), [&](wchar_t* buf) {
        return static_cast<int>(SendMessage(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buf)));
    });
} catch (...) {
    return CaughtAtEdge(" qv::ListBox::GetText", __LINE__, std::wstring());
}

UINT ListBox::ItemFromPoint(POINT pt, bool& outside) const {
    const LRESULT r = SendMessage(LB_ITEMFROMPOINT, 0, MAKELPARAM(pt.x, pt.y));
    outside = HIWORD(r) != 0;
    return LOWORD(r);
}

bool Button::Create(const wchar_t* caption, DWORD style, const RECT& rect, HWND parent, UINT id) {
    return Window::Create(L"BUTTON", caption ? caption : L"", style, rect, parent, id);
}

bool Static::Create(const wchar_t* text, DWORD style, const RECT& rect, HWND parent, UINT id) {
    return Window::Create(L"STATIC", text ? text : L"", style, rect, parent, id);
}

// ---------------------------------------------------------------------------
// HeaderCtrl, ListCtrl

bool HeaderCtrl::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return Window::Create(WC_HEADERW, L"", style, rect, parent, id);
}

bool ListCtrl::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return Window::Create(WC_LISTVIEWW, L"", style, rect, parent, id);
}

int ListCtrl::InsertColumn(int column, const wchar_t* heading, int format, int width, int subItem) {
    LVCOLUMNW col{};
    col.mask = LVCF_FMT | LVCF_TEXT;
    col.fmt = format;
    col.pszText = const_cast<wchar_t*>(heading ? heading : L"");
    if (width != -1) {
        col.mask |= LVCF_WIDTH;
        col.cx = width;
    }
    if (subItem != -1) {
        col.mask |= LVCF_SUBITEM;
        col.iSubItem = subItem;
    }
    return InsertColumn(column, &col);
}

int ListCtrl::InsertItem(int item, const wchar_t* text) {
    LVITEMW it{};
    it.mask = LVIF_TEXT;
    it.iItem = item;
    it.pszText = const_cast<wchar_t*>(text ? text : L"");
    return InsertItem(&it);
}

bool ListCtrl::SetItemText(int item, int subItem, const wchar_t* text) {
    LVITEMW it{};
    it.iSubItem = subItem;
    it.pszText = const_cast<wchar_t*>(text ? text : L"");
    return SendMessage(LVM_SETITEMTEXTW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&it)) != 0;
}

std::wstring ListCtrl::GetItemText(int item, int subItem) const try {
    // The control answers how much it copied, never the full length: grow
    // the buffer until the text no longer fills it.
    for (size_t size = 256;; size *= 4) {
        std::wstring text(size, L'\0');
        LVITEMW it{};
        it.iSubItem = subItem;
        it.pszText = text.data();
        it.cchTextMax = static_cast<int>(size);
        const LRESULT got = SendMessage(LVM_GETITEMTEXTW, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&it));
        if (got < 0) return {};
        if (static_cast<size_t>(got) < size - 1 || size >= (1u << 20)) {
            text.resize(static_cast<size_t>(got));
            return text;
        }
    }
} catch (...) {
    return CaughtAtEdge(" qv::ListCtrl::GetItemText", __LINE__, std::wstring());
}

bool ListCtrl::SetItemData(int item, DWORD_PTR data) {
    LVITEMW it{};
    it.mask = LVIF_PARAM;
    it.iItem = item;
    it.lParam = static_cast<LPARAM>(data);
    return SetItem(&it);
}

DWORD_PTR ListCtrl::GetItemData(int item) const {
    LVITEMW it{};
    it.mask = LVIF_PARAM;
    it.iItem = item;
    return GetItem(&it) ? static_cast<DWORD_PTR>(it.lParam) : 0;
}

bool ListCtrl::SetItemState(int item, UINT state, UINT mask) {
    LVITEMW it{};
    it.state = state;
    it.stateMask = mask;
    return SendMessage(LVM_SETITEMSTATE, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&it)) != 0;
}

bool ListCtrl::GetSubItemRect(int item, int subItem, int area, RECT& rect) const {
    rect = RECT{area, subItem, 0, 0};
    return SendMessage(LVM_GETSUBITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&rect)) != 0;
}

bool ListCtrl::GetItemRect(int item, RECT& rect, UINT area) const {
    rect = RECT{static_cast<LONG>(area), 0, 0, 0};
    return SendMessage(LVM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&rect)) != 0;
}

int ListCtrl::HitTest(POINT pt, UINT* flags) const {
    LVHITTESTINFO info{};
    info.pt = pt;
    const int item = HitTest(&info);
    if (flags) *flags = info.flags;
    return item;
}

// ---------------------------------------------------------------------------
// DateTimeCtrl

bool DateTimeCtrl::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return Window::Create(DATETIMEPICK_CLASSW, L"", style, rect, parent, id);
}

bool DateTimeCtrl::SetTime(const SYSTEMTIME* time) {
    // GDT_NONE ignores the structure, but some implementations refuse a
    // null pointer even then: hand over a blank one.
    SYSTEMTIME blank{};
    return SendMessage(DTM_SETSYSTEMTIME, time ? GDT_VALID : GDT_NONE, reinterpret_cast<LPARAM>(time ? time : &blank)) != 0;
}

bool DateTimeCtrl::GetTime(OleDateTime& time) const {
    SYSTEMTIME st{};
    switch (GetTime(st)) {
    case GDT_VALID:
        time = OleDateTime(st);
        return time.GetStatus() == OleDateTime::valid;
    case GDT_NONE:
        time = OleDateTime();
        time.SetStatus(OleDateTime::null);
        return true;
    default:
        time = OleDateTime();
        time.SetStatus(OleDateTime::invalid);
        return false;
    }
}

bool DateTimeCtrl::SetTime(const OleDateTime& time) {
    if (time.GetStatus() == OleDateTime::null) return SetTime(static_cast<const SYSTEMTIME*>(nullptr));
    SYSTEMTIME st{};
    return time.GetAsSystemTime(st) && SetTime(&st);
}

// ---------------------------------------------------------------------------
// RichEditCtrl

bool RichEditCtrl::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    // Loaded once for the process and never unloaded: the class must outlive
    // every rich edit control, including those of other objects.
    static const HMODULE riched = ::LoadLibraryW(L"RICHED20.DLL");
    if (!riched) return false;
    return Window::Create(RICHEDIT_CLASSW, L"", style, rect, parent, id);
}

void RichEditCtrl::GetSel(long& start, long& end) const {
    CHARRANGE cr{};
    SendMessage(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&cr));
    start = cr.cpMin;
    end = cr.cpMax;
}

void RichEditCtrl::SetSel(long start, long end) {
    CHARRANGE cr{start, end};
    SendMessage(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&cr));
}

namespace {

struct StreamInState {
    const std::string* data;
    size_t pos;
};

// The rich edit control calls these back; an error code (non-zero) stops
// the transfer and ends up in the stream's dwError.
constexpr DWORD kStreamFailed = 1;

DWORD CALLBACK ReadFromString(DWORD_PTR cookie, LPBYTE buf, LONG cb, LONG* read) {
    try {
        auto* s = reinterpret_cast<StreamInState*>(cookie);
        const size_t n = (std::min)(static_cast<size_t>(cb), s->data->size() - s->pos);
        std::memcpy(buf, s->data->data() + s->pos, n);
        s->pos += n;
        *read = static_cast<LONG>(n);
        return 0;
    } catch (...) {
        LogCaughtException(" qv::RichEditCtrl::StreamIn", 1);
        return kStreamFailed;
    }
}

DWORD CALLBACK WriteToString(DWORD_PTR cookie, LPBYTE buf, LONG cb, LONG* written) {
    try {
        reinterpret_cast<std::string*>(cookie)->append(reinterpret_cast<const char*>(buf), static_cast<size_t>(cb));
        *written = cb;
        return 0;
    } catch (...) {
        LogCaughtException(" qv::RichEditCtrl::StreamOut", 1);
        *written = 0;
        return kStreamFailed;
    }
}

}  // namespace

long RichEditCtrl::StreamIn(int format, const std::string& data) {
    StreamInState state{&data, 0};
    EDITSTREAM es{reinterpret_cast<DWORD_PTR>(&state), 0, &ReadFromString};
    StreamIn(format, es);
    return es.dwError ? 0 : static_cast<long>(state.pos);
}

std::string RichEditCtrl::StreamOut(int format) const {
    std::string out;
    EDITSTREAM es{reinterpret_cast<DWORD_PTR>(&out), 0, &WriteToString};
    StreamOut(format, es);
    // A transfer cut short is no content: a half RTF text would not read back.
    if (es.dwError) out.clear();
    return out;
}

// ---------------------------------------------------------------------------
// ScrollBar

bool ScrollBar::Create(DWORD style, const RECT& rect, HWND parent, UINT id) {
    return Window::Create(L"SCROLLBAR", L"", style, rect, parent, id);
}

bool ScrollBar::GetScrollInfo(SCROLLINFO* info, UINT mask) const {
    info->cbSize = sizeof(SCROLLINFO);
    info->fMask = mask;
    return ::GetScrollInfo(m_hWnd, SB_CTL, info) != FALSE;
}

int ScrollBar::GetScrollLimit() const {
    SCROLLINFO si{};
    if (!GetScrollInfo(&si, SIF_RANGE | SIF_PAGE)) return 0;
    const int page = si.nPage > 0 ? static_cast<int>(si.nPage) - 1 : 0;
    return si.nMax - page;
}

// ---------------------------------------------------------------------------
// ToolTipCtrl

bool ToolTipCtrl::Create(HWND parent, DWORD style) {
    const RECT none{CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT};
    if (!CreateEx(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | style, none, parent, 0)) return false;
    ::SetWindowPos(m_hWnd, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return true;
}

namespace {

// The tool identification the tooltip control uses for (wnd, toolId).
TTTOOLINFOW ToolInfo(HWND wnd, UINT_PTR toolId) {
    TTTOOLINFOW ti{};
    // Without lpReserved: comctl32 5 (a host without a version-6 manifest)
    // rejects the larger size, version 6 accepts both.
    ti.cbSize = TTTOOLINFOW_V2_SIZE;
    if (toolId == 0) {
        ti.hwnd = ::GetParent(wnd);
        ti.uFlags = TTF_IDISHWND;
        ti.uId = reinterpret_cast<UINT_PTR>(wnd);
    } else {
        ti.hwnd = wnd;
        ti.uId = toolId;
    }
    return ti;
}

}  // namespace

bool ToolTipCtrl::AddTool(HWND wnd, const wchar_t* text, const RECT* rect, UINT_PTR toolId, UINT extraFlags) {
    TTTOOLINFOW ti = ToolInfo(wnd, toolId);
    ti.uFlags |= extraFlags;
    ti.hinst = nullptr;
    ti.lpszText = const_cast<wchar_t*>(text ? text : LPSTR_TEXTCALLBACKW);
    if (rect) ti.rect = *rect;
    else if (toolId != 0) ::GetClientRect(wnd, &ti.rect);
    return SendMessage(TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti)) != 0;
}

void ToolTipCtrl::DelTool(HWND wnd, UINT_PTR toolId) {
    TTTOOLINFOW ti = ToolInfo(wnd, toolId);
    SendMessage(TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
}

void ToolTipCtrl::UpdateTipText(const wchar_t* text, HWND wnd, UINT_PTR toolId) {
    TTTOOLINFOW ti = ToolInfo(wnd, toolId);
    ti.lpszText = const_cast<wchar_t*>(text ? text : LPSTR_TEXTCALLBACKW);
    SendMessage(TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&ti));
}

void ToolTipCtrl::SetToolRect(HWND wnd, UINT_PTR toolId, const RECT& rect) {
    TTTOOLINFOW ti = ToolInfo(wnd, toolId);
    ti.rect = rect;
    SendMessage(TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&ti));
}

}  // namespace qv
