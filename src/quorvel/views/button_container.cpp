#include "quorvel/views/button_container.h"

#include <oleacc.h>

#include <string>
#include <utility>

#include "quorvel/common/boundary.h"
#include "quorvel/frame/services.h"
#include "quorvel/platform/gdi.h"
#include "quorvel/platform/module.h"
#include "quorvel/views/button_container_rules.h"

namespace bt = qv::buttons;

namespace {

const wchar_t kClassName[] = L"QuorvelButtonContainer";
// Where a button sits until the first layout.
constexpr RECT kProvisional{0, 5, 5, 5};
constexpr DWORD kButtonStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_PUSHBUTTON;

std::wstring Translated(const std::wstring& text) {
    return text.empty() ? text : qv::Services::Translation().Translate(text.c_str());
}

bt::Box ToBox(const RECT& r) { return {r.left, r.top, r.right, r.bottom}; }
bt::Extent ToExtent(SIZE s) { return {s.cx, s.cy}; }
bt::Orientation ToOrientation(int orientation) {
    return orientation == XButtonContainer::kVertical ? bt::Orientation::kVertical : bt::Orientation::kHorizontal;
}

// A button of the container: a push button named by its caption, and
// described to screen readers by its tooltip text, so a reader hears what a
// sighted user reads when the mouse rests on it.
class ContainerButton final : public qv::Button, public qv::AccessibleSource {
public:
    explicit ContainerButton(std::wstring description) : m_description(std::move(description)) {}
    bool AccessibleRole(long child, long& role) override {
        if (child != CHILDID_SELF) return false;
        role = ROLE_SYSTEM_PUSHBUTTON;
        return true;
    }
    bool AccessibleDescription(long child, std::wstring& description) override {
        if (child != CHILDID_SELF || m_description.empty()) return false;
        description = m_description;
        return true;
    }

private:
    std::wstring m_description;
};

}  // namespace

XButtonContainer::XButtonContainer(HFONT font, int orientation, const std::vector<XButtonDescription>& descriptions)
    : m_font(font), m_orientation(orientation == kVertical ? kVertical : kHorizontal) {
    // A container whose descriptions could not be copied has no buttons;
    // the failure is in the log book and the host's window carries on.
    try {
        m_descriptions = descriptions;
    } catch (...) {
        qv::CaughtAtEdge(" XButtonContainer::XButtonContainer", __LINE__);
    }
}

XButtonContainer::~XButtonContainer() {
    if (OwnsWindow()) DestroyWindow();
}

BOOL XButtonContainer::Create(const RECT& rect, HWND parent, UINT id, DWORD style) try {
    if (m_hWnd || !parent || !::IsWindow(parent)) return FALSE;
    static const wchar_t* const cls = qv::RegisterLibraryWindowClass(
        kClassName, 0, ::LoadCursorW(nullptr, IDC_ARROW), reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)));
    if (!cls) return FALSE;
    if (!CreateEx(WS_EX_CONTROLPARENT, cls, L"", style | WS_CHILD | WS_CLIPCHILDREN, rect, parent, id)) return FALSE;
    ManageLayout();
    return TRUE;
} catch (...) {
    return qv::CaughtAtEdge(" XButtonContainer::Create", __LINE__, FALSE);
}

int XButtonContainer::OnCreate(CREATESTRUCTW* cs) {
    if (Window::OnCreate(cs) == -1) return -1;
    if (!m_tooltip.Create(m_hWnd)) return -1;
    HFONT font = m_font ? m_font : static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    for (XButtonDescription& d : m_descriptions) {
        d.caption = Translated(d.caption);
        d.tooltip = Translated(d.tooltip);
        std::unique_ptr<qv::Button> button = std::make_unique<ContainerButton>(d.tooltip);
        if (!button->Create(d.caption.c_str(), kButtonStyle, kProvisional, m_hWnd, d.id)) return -1;
        button->SetFont(font, false);
        if (!d.tooltip.empty() && m_tooltip.AddTool(button->m_hWnd, d.tooltip.c_str())) m_tooltip.Activate(true);
        m_buttons.push_back(std::move(button));
    }
    return 0;
}

void XButtonContainer::OnDestroy() {
    m_tooltip.DestroyWindow();
    Default();
}

HWND XButtonContainer::GetButton(int index) const noexcept {
    return index >= 0 && index < GetButtonCount() ? m_buttons[static_cast<size_t>(index)]->m_hWnd : nullptr;
}

SIZE XButtonContainer::CalculateButtonSize() {
    std::vector<std::wstring> captions;
    for (const XButtonDescription& d : m_descriptions) captions.push_back(d.caption);
    const std::wstring sample(bt::LongestCaption(captions), L'W');
    qv::ClientDC dc(m_hWnd);
    SIZE text{0, 0};
    if (dc) {
        qv::SelectObjectScope font(dc, m_font ? m_font : ::GetStockObject(DEFAULT_GUI_FONT));
        if (sample.empty()) {
            // No caption at all: buttons as high as a line of text.
            TEXTMETRICW tm{};
            ::GetTextMetricsW(dc, &tm);
            text.cy = tm.tmHeight;
        } else {
            ::GetTextExtentPoint32W(dc, sample.c_str(), static_cast<int>(sample.size()), &text);
        }
    }
    const bt::Extent size = bt::ButtonSize(ToExtent(text), GetInnerMargin());
    return SIZE{size.cx, size.cy};
}

int XButtonContainer::GetInnerMargin() const noexcept { return qv::Scale(m_hWnd, kInnerMargin); }
int XButtonContainer::GetSpacing() const noexcept { return qv::Scale(m_hWnd, kSpacing); }

bool XButtonContainer::PlaceButtons(int orientation, const RECT& area, SIZE size) {
    const bt::Placement placed =
        bt::PlaceButtons(ToOrientation(orientation), ToBox(area), ToExtent(size), GetSpacing(), m_buttons.size());
    for (size_t i = 0; i < placed.boxes.size(); ++i) {
        const bt::Box& b = placed.boxes[i];
        m_buttons[i]->MoveWindow(RECT{b.left, b.top, b.right, b.bottom}, true);
    }
    return placed.complete;
}

bool XButtonContainer::PositionButtonsHorizontal(RECT area, SIZE size) try {
    return PlaceButtons(kHorizontal, area, size);
} catch (...) {
    return qv::CaughtAtEdge(" XButtonContainer::PositionButtonsHorizontal", __LINE__, false);
}

bool XButtonContainer::PositionButtonsVertical(RECT area, SIZE size) try {
    return PlaceButtons(kVertical, area, size);
} catch (...) {
    return qv::CaughtAtEdge(" XButtonContainer::PositionButtonsVertical", __LINE__, false);
}

void XButtonContainer::ManageLayout() try {
    if (!IsWindow()) return;
    const bt::Box area = bt::InnerArea(ToBox(GetClientRect()), GetSpacing());
    const RECT rc{area.left, area.top, area.right, area.bottom};
    const SIZE size = CalculateButtonSize();
    if (m_orientation == kVertical)
        PositionButtonsVertical(rc, size);
    else
        PositionButtonsHorizontal(rc, size);
} catch (...) {
    qv::CaughtAtEdge(" XButtonContainer::ManageLayout", __LINE__);
}

SIZE XButtonContainer::GetMinSize() try {
    const bt::Extent min =
        bt::MinimumSize(ToOrientation(m_orientation), m_buttons.size(), ToExtent(CalculateButtonSize()), GetSpacing());
    return SIZE{min.cx, min.cy};
} catch (...) {
    return qv::CaughtAtEdge(" XButtonContainer::GetMinSize", __LINE__, SIZE{0, 0});
}

void XButtonContainer::OnSize(UINT type, int cx, int cy) {
    Window::OnSize(type, cx, cy);
    ManageLayout();
}

BOOL XButtonContainer::OnCommand(WPARAM wp, LPARAM lp) {
    if (HWND parent = GetParent()) ::SendMessageW(parent, WM_COMMAND, wp, lp);
    return Window::OnCommand(wp, lp);
}

BOOL XButtonContainer::OnNotify(WPARAM wp, LPARAM lp, LRESULT* result) {
    if (HWND parent = GetParent()) *result = ::SendMessageW(parent, WM_NOTIFY, wp, lp);
    Window::OnNotify(wp, lp, result);
    return TRUE;
}

bool XButtonContainer::AccessibleName(long child, std::wstring& name) {
    if (child != CHILDID_SELF) return false;
    name = qv::AccessibleLabelOf(m_hWnd);
    return !name.empty();
}

bool XButtonContainer::AccessibleRole(long child, long& role) {
    if (child != CHILDID_SELF) return false;
    role = ROLE_SYSTEM_GROUPING;
    return true;
}

void XButtonContainer::OnDpiChanged(UINT) { ManageLayout(); }
