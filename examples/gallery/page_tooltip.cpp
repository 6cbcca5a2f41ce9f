// The tooltip page: labels whose mark-up tooltips show every tag, the
// shadow, the balloon anchor in each direction, and F1 help. Each label owns
// its tooltip and relays its mouse and key messages to it, as the library's
// controls do.
#include <memory>
#include <string>

#include "gallery.h"
#include "quorvel/platform/window.h"
#include "quorvel/tooltip/xtooltip.h"

namespace gallery {

namespace {

const wchar_t kEveryTag[] =
    L"<b>Bold</b>, <i>italic</i>, <u>underlined</u> and <s>struck-out</s> text<br>"
    L"<ct=0x0000FF>Red</ct>, <ct=0xC00000>blue</ct> and <cti>colour value 1</cti> text<br>"
    L"<cb=0x80FFFF>A yellow box</cb> and <cbi=5>the shadow colour</cbi> behind text<br>"
    L"Tab stops:<t>one<t>two<t=2>four<br>"
    L"<hr><br>"
    L"<al_c>A centred line<br>"
    L"<al_r>A right-aligned line<br>"
    L"<al_l>Literal <<angle> brackets ><br>"
    L"<hr=50%><br>"
    L"<al_r><ct=0xFF0000>Press F1 for more info...</ct>";

// A label that owns a tooltip and hands it its mouse and key messages.
class TipLabel : public qv::Window, public XTooltipOwnerKind {
public:
    XTooltip tip;

    bool Make(HWND page, const wchar_t* caption, const RECT& rc, const wchar_t* text) {
        if (!Create(L"STATIC", caption, WS_CHILD | WS_VISIBLE | WS_BORDER | SS_NOTIFY | SS_CENTER | SS_CENTERIMAGE, rc,
                    page, 0))
            return false;
        SetFont(GalleryFont(), false);
        if (!tip.Create(m_hWnd)) return false;
        tip.AddTool(m_hWnd, text);
        tip.SetDelayTime(XTooltip::kDelayInitial, 300);
        return true;
    }
    // Balloon pointer of `size` pixels; the box keeps 12 pixels from its side.
    void Anchor(int size) {
        tip.SetSize(XTooltip::kSizeAnchorWidth, size);
        tip.SetSize(XTooltip::kSizeAnchorHeight, size);
        tip.SetSize(XTooltip::kSizeAnchorOffset, 12);
    }
    // A prompt with a help file: F1 over its tooltip opens the file.
    std::wstring helpFile;
    int TooltipOwnerKind() const override { return helpFile.empty() ? kOwnerOther : kOwnerPrompt; }
    std::wstring TooltipContextHelpFile() const override { return helpFile; }

protected:
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
        switch (msg) {
        case WM_MOUSEMOVE:
        case WM_MOUSELEAVE:
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
        case WM_KEYDOWN: {
            const MSG m{m_hWnd, msg, wp, lp, static_cast<DWORD>(::GetMessageTime()), {}};
            tip.RelayEvent(&m);
            break;
        }
        default:
            break;
        }
        return qv::Window::WindowProc(msg, wp, lp);
    }
};

struct TooltipObjects : PageObjects {
    TipLabel everyTag, plain, shadow, help;
    TipLabel directions[4];
    ~TooltipObjects() override;
};

TooltipObjects* g_current = nullptr;  // for the screenshot hook

TooltipObjects::~TooltipObjects() {
    if (g_current == this) g_current = nullptr;
}

}  // namespace

// The gallery's settings switch tooltips on (EnableGalleryTooltips).
std::unique_ptr<PageObjects> BuildTooltipPage(HWND page) {
    auto objects = std::make_unique<TooltipObjects>();
    TooltipObjects& o = *objects;
    AddLabel(page, L"Hover over a label to see its tooltip; a click, a key or leaving the label hides it. "
                   L"F1 while the prompt's tooltip is up opens its help file.",
             16, 12, 900, 20);

    o.everyTag.Make(page, L"Every tag, anchor and shadow", RECT{16, 44, 236, 84}, kEveryTag);
    o.everyTag.tip.SetStyles(XTooltip::kStyleAnchor | XTooltip::kStyleShadow);
    o.everyTag.Anchor(10);

    o.plain.Make(page, L"Plain box", RECT{560, 44, 760, 84}, L"A plain box: no shadow, no anchor, text at the top.");
    o.plain.tip.SetStyles(0);

    o.shadow.Make(page, L"Default: shadow", RECT{560, 100, 760, 140},
                  L"<b>Shadow</b><br>The box casts a shadow to the right and below.");

    o.help.Make(page, L"Prompt with F1 help", RECT{560, 156, 760, 196},
                L"A prompt's help text.<br><al_r><ct=0xFF0000>Press F1 for more info...</ct>");
    o.help.helpFile = L"tooltips.htm";

    // Boxes that open to the left need room there, so those labels sit
    // further right; each box stays inside the gallery window.
    static const struct {
        UINT direction;
        const wchar_t* caption;
        const wchar_t* text;
    } kDirections[4] = {
        {1, L"Above, right", L"<b>Direction 1</b><br>The box lies above and right of the cursor."},
        {3, L"Below, right", L"<b>Direction 3</b><br>The box lies below and right of the cursor."},
        {0, L"Above, left", L"<b>Direction 0</b><br>The box lies above and left of the cursor."},
        {2, L"Below, left", L"<b>Direction 2</b><br>The box lies below and left of the cursor."},
    };
    for (int i = 0; i < 4; ++i) {
        const int x = 16 + i * 236;
        TipLabel& label = o.directions[i];
        label.Make(page, kDirections[i].caption, RECT{x, 520, x + 220, 560}, kDirections[i].text);
        label.tip.SetStyles(XTooltip::kStyleAnchor | XTooltip::kStyleShadow | XTooltip::kStyleVCenter);
        label.tip.SetDirection(kDirections[i].direction);
        label.Anchor(8);
    }
    g_current = &o;
    return objects;
}

// Screenshot hook: the cursor goes to the middle of the first label and its
// tooltip opens at once.
void ShowTooltipForShot(HWND) {
    if (!g_current) return;
    TipLabel& label = g_current->everyTag;
    const RECT rc = label.GetClientRect();
    POINT pt{rc.right / 2, rc.bottom / 2};
    ::ClientToScreen(label, &pt);
    ::SetCursorPos(pt.x, pt.y);
    const MSG move{label, WM_MOUSEMOVE, 0, MAKELPARAM(rc.right / 2, rc.bottom / 2), 0, pt};
    label.tip.RelayEvent(&move);
    label.tip.SetNewToolTip(0, false);
}

}  // namespace gallery
