// The colour-scheme variants that paint themselves, each made on a host the
// way a host makes it: the colours and brush they hand the control for
// painting before the host sets any, and after it sets both.
#include <functional>
#include <memory>
#include <string>

#include "quorvel/controls/base_edit.h"
#include "quorvel/controls/base_lists.h"
#include "quorvel/controls/static_text.h"
#include "quorvel/masks/maskedit.h"
#include "quorvel/masks/numeric.h"
#include "quorvel/masks/placeholder.h"
#include "quorvel/valueadded/value_added.h"
#include "support/host.h"

namespace {

struct Made {
    std::unique_ptr<qv::Window> window;
    XBaseColor* colours = nullptr;
};

// Makes a variant with its default constructor (or `args`) and creates it
// with the five-argument Create that every field has.
template <class Variant, class... Args>
std::function<Made(HWND, const RECT&, HFONT)> Field(Args... args) {
    return [=](HWND host, const RECT& rect, HFONT font) {
        auto field = std::make_unique<Variant>(args...);
        XBaseColor* colours = field.get();
        if (!field->Create(L"", 100, rect, font, host)) return Made{};
        return Made{std::move(field), colours};
    };
}

struct Answer {
    COLORREF text, back, brush;
    bool operator==(const Answer&) const = default;
};

// What the field answers to the WM_CTLCOLOR* message its parent gets.
Answer Ask(HWND host, HWND field, UINT msg) {
    HDC dc = ::CreateCompatibleDC(nullptr);
    ::SetTextColor(dc, RGB(1, 1, 1));
    ::SetBkColor(dc, RGB(2, 2, 2));
    const auto brush = reinterpret_cast<HBRUSH>(
        ::SendMessageW(host, msg, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(field)));
    LOGBRUSH lb{};
    lb.lbColor = CLR_INVALID;
    if (brush) ::GetObjectW(brush, sizeof(lb), &lb);
    Answer a{::GetTextColor(dc), ::GetBkColor(dc), lb.lbColor};
    ::DeleteDC(dc);
    return a;
}

using ColorVariantsTest = qvtest::HostTest;

TEST_F(ColorVariantsTest, DefaultsAndSetColoursReachThePainting) {
    const COLORREF window = ::GetSysColor(COLOR_WINDOW);
    const COLORREF face = ::GetSysColor(COLOR_BTNFACE);
    const COLORREF nearBlack = RGB(8, 0, 0);
    const struct {
        const char* name;
        std::function<Made(HWND, const RECT&, HFONT)> make;
        UINT msg;
        Answer defaults;
    } cases[] = {
        {"XBaseEditColor", Field<XBaseEditColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XBaseMultiLineEditColor", Field<XBaseMultiLineEditColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XBaseReadOnlyMultiLineEditColor", Field<XBaseReadOnlyMultiLineEditColor>(), WM_CTLCOLORSTATIC,
         {nearBlack, window, window}},
        {"XBaseComboBoxColor", Field<XBaseComboBoxColor>(), WM_CTLCOLORLISTBOX, {nearBlack, window, window}},
        {"XBaseEditComboBoxColor", Field<XBaseEditComboBoxColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XBaseListBoxColor", Field<XBaseListBoxColor>(), WM_CTLCOLORLISTBOX, {nearBlack, window, window}},
        {"XBaseStatictextColor", Field<XBaseStatictextColor>(), WM_CTLCOLORSTATIC, {RGB(0, 0, 0), face, face}},
        {"XMaskBaseEditColor", Field<XMaskBaseEditColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XMaskEditColor", Field<XMaskEditColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XMaskIntegerEditColor", Field<XMaskIntegerEditColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XMaskSignedIntegerEditColor", Field<XMaskSignedIntegerEditColor>(), WM_CTLCOLOREDIT,
         {nearBlack, window, window}},
        {"XMaskFloatEditColor", Field<XMaskFloatEditColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XMaskSignedFloatEditColor", Field<XMaskSignedFloatEditColor>(), WM_CTLCOLOREDIT,
         {nearBlack, window, window}},
        {"XNumberEditColor", Field<XNumberEditColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XHEXEditColor", Field<XHEXEditColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XBinEditColor", Field<XBinEditColor>(), WM_CTLCOLOREDIT, {nearBlack, window, window}},
        {"XInPlaceFloatEditColor", Field<XInPlaceFloatEditColor>(2, 3), WM_CTLCOLOREDIT, {nearBlack, window, window}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Made made = c.make(host_, Row(0), font_);
        ASSERT_TRUE(made.window && made.window->IsWindow());
        EXPECT_EQ(Ask(host_, *made.window, c.msg), c.defaults);
        made.colours->SetTextColor(RGB(10, 20, 30));
        made.colours->SetBkColor(RGB(200, 210, 220));
        EXPECT_EQ(Ask(host_, *made.window, c.msg), (Answer{RGB(10, 20, 30), RGB(200, 210, 220), RGB(200, 210, 220)}));
    }
}

}  // namespace
