// The scrolling dialog page: two order forms built on the library's empty
// child page, the way a host puts a form together at run time. The first is
// smaller than its layout and scrolled part-way: its scroll bars reach the
// fields it cannot show. The second has its full size and a sizing border,
// so its grip sits in the bottom-right corner; drag the grip to make it
// smaller and it gains scroll bars.
#include <memory>
#include <vector>

#include "gallery.h"
#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/base_lists.h"
#include "quorvel/controls/scroll_dialog.h"

namespace gallery {

namespace {

class OrderForm : public XScrollDialog {
public:
    explicit OrderForm(bool resizable) : m_resizable(resizable) {}

protected:
    BOOL OnInitDialog() override {
        // The frame first: the layout is the client area inside it.
        ModifyStyle(0, WS_BORDER | (m_resizable ? WS_THICKFRAME : 0), SWP_FRAMECHANGED);
        const wchar_t* labels[] = {L"Order:", L"Customer:", L"Article:", L"Quantity:", L"Due date:", L"Workshop:",
                                   L"Route:", L"Notes:"};
        const wchar_t* values[] = {L"4711-03", L"Hartmann Stahlbau", L"Bracket 40 x 60", L"250", L"14.12.2026",
                                   L"Welding hall 2", L"Cut - Weld - Grind - Paint", L"Seams checked before painting"};
        for (int i = 0; i < 8; ++i) {
            AddLabel(m_hWnd, labels[i], 12, 14 + 32 * i, 90, 20);
            auto field = std::make_unique<XBaseEdit>();
            field->Create(values[i], 1000 + i, RECT{104, 10 + 32 * i, 344, 34 + 32 * i}, GalleryFont(), m_hWnd);
            m_fields.push_back(std::move(field));
        }
        return XScrollDialog::OnInitDialog();
    }

private:
    bool m_resizable;
    std::vector<std::unique_ptr<XBaseEdit>> m_fields;
};

struct ScrollDialogObjects : PageObjects {
    OrderForm shrunk{false};
    OrderForm full{true};
};

// Places a form and shows it; `cw` x `ch` is the client area, scroll bars
// left out.
void Place(OrderForm& form, int x, int y, int cw, int ch) {
    const RECT client = form.GetClientRect();
    const RECT outer = form.GetWindowRect();
    const int frameW = (outer.right - outer.left) - client.right;
    const int frameH = (outer.bottom - outer.top) - client.bottom;
    const RECT layout = form.GetInitialClientRect();
    const int barW = ch < layout.bottom ? ::GetSystemMetrics(SM_CXVSCROLL) : 0;
    const int barH = cw < layout.right ? ::GetSystemMetrics(SM_CYHSCROLL) : 0;
    form.SetWindowPos(nullptr, x, y, cw + frameW + barW, ch + frameH + barH, SWP_NOZORDER | SWP_SHOWWINDOW);
}

}  // namespace

std::unique_ptr<PageObjects> BuildScrollDialogPage(HWND page) {
    auto objects = std::make_unique<ScrollDialogObjects>();
    AddLabel(page, L"A form made smaller than its layout, scrolled part-way: the bars reach the fields it cannot "
                   L"show (the wheel scrolls it too).",
             16, 12, 440, 36);
    AddLabel(page, L"The same form at its full size with a sizing border: the grip in its corner resizes it, and "
                   L"it gains scroll bars when it gets smaller.",
             512, 12, 440, 36);
    if (objects->shrunk.Create(page)) {
        Place(objects->shrunk, 16, 56, 260, 160);
        objects->shrunk.SendMessage(WM_VSCROLL, MAKEWPARAM(SB_THUMBTRACK, 12), 0);
        objects->shrunk.SendMessage(WM_HSCROLL, MAKEWPARAM(SB_LINERIGHT, 0), 0);
    }
    if (objects->full.Create(page)) {
        const RECT layout = objects->full.GetInitialClientRect();
        Place(objects->full, 512, 56, layout.right, layout.bottom);
    }
    return objects;
}

}  // namespace gallery
