#include "quorvel/controls/script_buttons.h"

#include <oleacc.h>

#include <algorithm>

#include "quorvel/common/boundary.h"
#include "quorvel/controls/script_button_rules.h"
#include "quorvel/frame/zt_lang.h"
#include "quorvel/platform/gdi.h"

namespace sc = qv::script;

namespace {

int HeightOf(HWND wnd) {
    RECT r{};
    ::GetWindowRect(wnd, &r);
    return r.bottom - r.top;
}

}  // namespace

// ---------------------------------------------------------------------------
// XBaseSCriptButton

XBaseSCriptButton::~XBaseSCriptButton() = default;

int XBaseSCriptButton::Create(const std::wstring& text, UINT id, const RECT& rect, HFONT font, HWND parent) try {
    if (!qv::Button::Create(text.c_str(), kStyle, rect, parent, id)) return 0;
    m_pParent = parent;
    m_nID = id;
    m_nNaturalWidth = rect.right - rect.left;
    SetFont(font, true);
    return 1;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseSCriptButton::Create", __LINE__, 0);
}

bool XBaseSCriptButton::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_PUSHBUTTON;
    return true;
}

bool XBaseSCriptButton::OnReflectCommand(UINT notifyCode) {
    if (notifyCode != BN_CLICKED) return false;
    OnScriptButtonClicked();
    return true;
}

void XBaseSCriptButton::OnScriptButtonClicked() {
    if (m_pParent && ::IsWindow(m_pParent))
        ::PostMessageW(m_pParent, XBaseScriptBtn_Group::kMsgScriptButtonClicked, 0, static_cast<LPARAM>(m_nID));
}

// ---------------------------------------------------------------------------
// XBaseScriptBtn_Group

XBaseScriptBtn_Group::XBaseScriptBtn_Group() = default;

XBaseScriptBtn_Group::~XBaseScriptBtn_Group() {
    // The buttons go with the window, before their objects do.
    if (OwnsWindow()) DestroyWindow();
}

int XBaseScriptBtn_Group::Create(UINT id, const RECT& rect, HFONT font, HWND parent) try {
    if (m_hWnd || !parent || !::IsWindow(parent)) return 0;
    m_arrButtons.clear();
    m_nHeight = m_nWidth = 0;
    // A control parent, so that a dialog's Tab and arrow keys reach the
    // buttons inside the group as if they were the dialog's own.
    if (!CreateEx(WS_EX_CONTROLPARENT, L"STATIC", L"", kStyle, rect, parent, id)) return 0;
    SetFont(font, true);
    m_pOwner = parent;
    return 1;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseScriptBtn_Group::Create", __LINE__, 0);
}

SIZE XBaseScriptBtn_Group::MeasureButton(const std::wstring& text, HFONT font) const {
    SIZE extent{};
    qv::ClientDC dc(m_hWnd);
    if (!dc) return SIZE{-1, -1};
    qv::SelectObjectScope select(dc, font);
    ::GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &extent);
    const sc::Size size = sc::ButtonSize(extent.cx, extent.cy, sc::Metrics::ForDpi(qv::DpiOf(m_hWnd)));
    return SIZE{size.cx, size.cy};
}

BOOL XBaseScriptBtn_Group::AddScriptCommand(int id, const std::wstring& text) try {
    if (!IsWindow()) return FALSE;
    const HFONT font = GetFont();
    const SIZE size = MeasureButton(text, font);
    if (size.cx < 0) return FALSE;
    auto button = std::make_unique<XBaseSCriptButton>();
    m_arrButtons.reserve(m_arrButtons.size() + 1);  // no throw once the window exists
    if (!button->Create(text, static_cast<UINT>(id), RECT{0, 0, size.cx, size.cy}, font, m_hWnd)) return FALSE;
    m_arrButtons.push_back(std::move(button));
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XBaseScriptBtn_Group::AddScriptCommand", __LINE__, FALSE);
}

XBaseSCriptButton* XBaseScriptBtn_Group::GetScriptButton(int index) const noexcept {
    if (index < 0 || index >= GetScriptCommandCount()) return nullptr;
    return m_arrButtons[static_cast<size_t>(index)].get();
}

std::vector<XBaseSCriptButton*> XBaseScriptBtn_Group::LiveButtons() const {
    std::vector<XBaseSCriptButton*> live;
    for (const auto& b : m_arrButtons)
        if (b && b->IsWindow()) live.push_back(b.get());
    return live;
}

void XBaseScriptBtn_Group::UpdateSize() try {
    m_nHeight = m_nWidth = 0;
    if (m_nAlignment != kAlignVertical)
        UpdateSize_Horizontal();
    else
        UpdateSize_Vertical();
    if (IsWindow()) {
        const RECT client = GetClientRect();
        if (m_nAlignment != kAlignVertical)
            Align_Horizontal(client.right, client.bottom);
        else
            Align_Vertical(client.right, client.bottom);
    }
} catch (...) {
    qv::CaughtAtEdge(" XBaseScriptBtn_Group::UpdateSize", __LINE__);
}

// The widths are the buttons' own: a layout that ran before UpdateSize left
// them 0 wide, and measuring the windows would keep them so for good.
void XBaseScriptBtn_Group::UpdateSize_Horizontal() {
    std::vector<sc::Size> sizes;
    for (XBaseSCriptButton* b : LiveButtons()) sizes.push_back(sc::Size{b->GetNaturalWidth(), HeightOf(*b)});
    const sc::Size content = sc::GroupContent(sizes, true, sc::Metrics::ForDpi(qv::DpiOf(m_hWnd)));
    m_nWidth = content.cx;
    m_nHeight = content.cy;
}

void XBaseScriptBtn_Group::UpdateSize_Vertical() {
    std::vector<sc::Size> sizes;
    for (XBaseSCriptButton* b : LiveButtons()) sizes.push_back(sc::Size{b->GetNaturalWidth(), HeightOf(*b)});
    const sc::Size content = sc::GroupContent(sizes, false, sc::Metrics::ForDpi(qv::DpiOf(m_hWnd)));
    m_nWidth = content.cx;
    m_nHeight = content.cy;
}

namespace {

sc::SizeLimits Limits(HWND group, int width, int height, bool horizontal) {
    return sc::GroupLimits(sc::Size{width, height}, horizontal, sc::Metrics::ForDpi(qv::DpiOf(group)));
}

}  // namespace

int XBaseScriptBtn_Group::GetMinHeight() const {
    return Limits(m_hWnd, m_nWidth, m_nHeight, m_nAlignment != kAlignVertical).minCy;
}
int XBaseScriptBtn_Group::GetMinWidth() const {
    return Limits(m_hWnd, m_nWidth, m_nHeight, m_nAlignment != kAlignVertical).minCx;
}
int XBaseScriptBtn_Group::GetMaxHeight() const {
    return Limits(m_hWnd, m_nWidth, m_nHeight, m_nAlignment != kAlignVertical).maxCy;
}
int XBaseScriptBtn_Group::GetMaxWidth() const {
    return Limits(m_hWnd, m_nWidth, m_nHeight, m_nAlignment != kAlignVertical).maxCx;
}

bool XBaseScriptBtn_Group::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_GROUPING;
    return true;
}

void XBaseScriptBtn_Group::OnDpiChanged(UINT) {
    if (!IsWindow()) return;
    // The buttons are as large as their texts in the group's font: the
    // host gives the group the font for the new DPI, the buttons take it,
    // and each is measured again as AddScriptCommand measured it.
    const HFONT font = GetFont();
    for (XBaseSCriptButton* b : LiveButtons()) {
        const SIZE size = MeasureButton(b->GetWindowText(), font);
        if (size.cx < 0) return;
        b->SetFont(font, false);
        b->m_nNaturalWidth = size.cx;
        ::SetWindowPos(*b, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        b->Invalidate();
    }
    // Measured content and the layout at the current size; the host sizes
    // the group from the getters again if it wants to.
    UpdateSize();
}

LRESULT XBaseScriptBtn_Group::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case kMsgScriptButtonClicked: return OnScriptButtonClicked(wp, lp);
    default: return qv::Static::WindowProc(msg, wp, lp);
    }
}

LRESULT XBaseScriptBtn_Group::OnScriptButtonClicked(WPARAM wp, LPARAM lp) {
    if (m_pOwner && ::IsWindow(m_pOwner)) ::PostMessageW(m_pOwner, kMsgScriptButtonClicked, wp, lp);
    return 0;
}

void XBaseScriptBtn_Group::OnSize(UINT, int cx, int cy) {
    Default();
    if (m_nAlignment != kAlignVertical)
        Align_Horizontal(cx, cy);
    else
        Align_Vertical(cx, cy);
}

namespace {

void Place(const std::vector<XBaseSCriptButton*>& buttons, const std::vector<sc::Box>& boxes) {
    for (size_t i = 0; i < buttons.size() && i < boxes.size(); ++i) {
        const sc::Box& b = boxes[i];
        ::SetWindowPos(*buttons[i], nullptr, b.x, b.y, b.cx, b.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

std::vector<int> Heights(const std::vector<XBaseSCriptButton*>& buttons) {
    std::vector<int> heights;
    heights.reserve(buttons.size());
    for (XBaseSCriptButton* b : buttons) heights.push_back(HeightOf(*b));
    return heights;
}

}  // namespace

void XBaseScriptBtn_Group::Align_Horizontal(int cx, int cy) {
    const std::vector<XBaseSCriptButton*> live = LiveButtons();
    Place(live, sc::AlignHorizontal(Heights(live), m_nWidth, cx, cy, sc::Metrics::ForDpi(qv::DpiOf(m_hWnd))));
}

void XBaseScriptBtn_Group::Align_Vertical(int cx, int cy) {
    const std::vector<XBaseSCriptButton*> live = LiveButtons();
    Place(live, sc::AlignVertical(Heights(live), m_nWidth, cx, cy, sc::Metrics::ForDpi(qv::DpiOf(m_hWnd))));
}

// ---------------------------------------------------------------------------
// XScriptContainer

namespace {
constexpr wchar_t kContainerClass[] = L"XScriptContainer";
}

XScriptContainer::XScriptContainer(HWND control, BtnPos position, UINT buttonId)
    : m_pControl(control), m_nButtonId(buttonId), m_ePosition(position) {}

XScriptContainer::XScriptContainer(const ConstructParam& p)
    : m_pControl(p.pControl),
      m_nMaxHeight(p.nMaxHeight),
      m_nMinHeight(p.nMinHeight),
      m_nMaxWidth(p.nMaxWidth),
      m_nMinWidth(p.nMinWidth),
      m_bUseLimits(p.bUseLimits),
      m_nButtonId(p.nButtonId),
      m_ePosition(p.ePosition),
      m_nButtonHeight(p.nButtonHeight),
      m_nButtonWidth(p.nButtonWidth),
      m_strCaption(p.strCaption),
      m_strTooltip(p.strTooltip),
      m_nMargin(p.nMargin) {}

XScriptContainer::~XScriptContainer() {
    // Our OnDestroy must still be reached: it takes the tooltip along.
    if (OwnsWindow()) DestroyWindow();
}

BOOL XScriptContainer::Create(const RECT& rect, HWND parent, UINT id, DWORD style) try {
    if (m_hWnd || !parent || !::IsWindow(parent)) return FALSE;
    static const wchar_t* const cls = qv::RegisterLibraryWindowClass(
        kContainerClass, 0, ::LoadCursorW(nullptr, IDC_ARROW),
        reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)));
    if (!cls) return FALSE;
    // A control parent, so Tab reaches the control and the button; the
    // children are clipped so the background never paints over them.
    return CreateEx(WS_EX_CONTROLPARENT, cls, L"", style | WS_CHILD | WS_CLIPCHILDREN, rect, parent, id) ? TRUE
                                                                                                          : FALSE;
} catch (...) {
    return qv::CaughtAtEdge(" XScriptContainer::Create", __LINE__, FALSE);
}

int XScriptContainer::OnCreate(CREATESTRUCTW* cs) {
    if (qv::Window::OnCreate(cs) == -1) return -1;
    if (!m_pControl || !::IsWindow(m_pControl)) return -1;
    if (!m_btn.Create(L"", WS_CHILD | WS_TABSTOP | BS_PUSHBUTTON, RECT{0, 5, 5, 5}, m_hWnd, m_nButtonId)) return -1;
    // The button speaks in the control's font, so the two look as one.
    HFONT font = reinterpret_cast<HFONT>(::SendMessageW(m_pControl, WM_GETFONT, 0, 0));
    if (!font) font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    m_btn.SetFont(font, false);
    const std::wstring caption = CoTranslateText(m_strCaption.c_str());
    m_btn.SetWindowText(caption.c_str());
    m_btn.ShowWindow(SW_SHOW);

    // The tooltip watches the button by itself (TTF_SUBCLASS), so plain
    // Win32 hosts that relay nothing see it too.
    if (m_tooltip.Create(m_hWnd)) {
        const std::wstring tip = CoTranslateText(m_strTooltip.c_str());
        m_tooltip.AddTool(m_btn, tip.c_str());
        m_tooltip.Activate(true);
    }
    // Readers hear what the button does, as the tooltip says it, not "...".
    m_btn.SetAccessibleName(CoTranslateText(m_strTooltip.c_str()));

    ::SetParent(m_pControl, m_hWnd);
    ::ShowWindow(m_pControl, SW_SHOW);
    // Tab order: the control first, then its button.
    ::SetWindowPos(m_pControl, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ::SetWindowPos(m_btn, m_pControl, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    return 0;
}

void XScriptContainer::OnDestroy() {
    // The tooltip is a pop-up owned by the top-level window: it would
    // outlive the container.
    m_tooltip.DestroyWindow();
    Default();
}

void XScriptContainer::OnSize(UINT, int, int) {
    Default();
    ManageLayout(m_ePosition);
}

void XScriptContainer::SetButtonPos(BtnPos position) {
    m_ePosition = position;
    if (IsWindow()) ManageLayout(position);
}

void XScriptContainer::ManageLayout(BtnPos position) {
    const RECT client = GetClientRect();
    sc::ContainerParams p;
    p.margin = m_nMargin;
    p.buttonCx = m_nButtonWidth;
    p.buttonCy = m_nButtonHeight;
    p.limits = m_bUseLimits;
    p.minCx = m_nMinWidth;
    p.maxCx = m_nMaxWidth;
    p.minCy = m_nMinHeight;
    p.maxCy = m_nMaxHeight;
    const sc::ContainerLayout l = sc::LayoutContainer(client.right, client.bottom, static_cast<sc::Side>(position),
                                                      sc::ScaledParams(p, qv::DpiOf(m_hWnd)));

    m_btn.MoveWindow(RECT{l.button.left, l.button.top, l.button.right, l.button.bottom}, true);
    if (m_pControl && ::IsWindow(m_pControl)) {
        // A client too small for the margins leaves the control empty
        // rather than inverted.
        ::MoveWindow(m_pControl, l.control.left, l.control.top, std::max(0, l.control.right - l.control.left),
                     std::max(0, l.control.bottom - l.control.top), TRUE);
    }
    Invalidate();
}

BOOL XScriptContainer::OnCommand(WPARAM wp, LPARAM lp) {
    const HWND parent = GetParent();
    if (parent && ::IsWindow(parent)) ::SendMessageW(parent, WM_COMMAND, wp, lp);
    Default();
    return TRUE;
}

BOOL XScriptContainer::OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) {
    // The parent's answer is the container's: a hosted list's custom draw
    // or a refused edit answered by the host works as it would without the
    // container in between.
    LRESULT answer = 0;
    const HWND parent = GetParent();
    if (parent && ::IsWindow(parent)) answer = ::SendMessageW(parent, WM_NOTIFY, wp, lp);
    Default();
    *result = answer;
    return TRUE;
}

BOOL XScriptContainer::PreTranslateMessage(MSG* msg) {
    if (msg && m_tooltip.IsWindow() && msg->hwnd != m_btn.m_hWnd) m_tooltip.RelayEvent(msg);
    return FALSE;
}

bool XScriptContainer::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF) return false;
    name = qv::AccessibleLabelOf(m_hWnd);
    return !name.empty();
}

bool XScriptContainer::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_GROUPING;
    return true;
}

void XScriptContainer::OnDpiChanged(UINT) {
    if (!IsWindow()) return;
    HFONT font = m_pControl && ::IsWindow(m_pControl)
                     ? reinterpret_cast<HFONT>(::SendMessageW(m_pControl, WM_GETFONT, 0, 0))
                     : nullptr;
    if (!font) font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    m_btn.SetFont(font, true);
    ManageLayout(m_ePosition);
}

bool XScriptContainer::ExecuteButton::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF || m_name.empty()) return false;
    name = m_name;
    return true;
}

bool XScriptContainer::ExecuteButton::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_PUSHBUTTON;
    return true;
}
