// The arithmetic of the script buttons, without a window: the size of one
// button from its text, the content size and size limits of a group, where a
// group's buttons go in one column or in rows, and how a script container
// shares its client area between the hosted control and its "..." button.
//
// Private to the library: the window classes (script_buttons.h) measure the
// texts, read the buttons' heights, and move the windows where these
// functions say. All values are pixels; rectangles are left, top, right,
// bottom as in Win32.
//
// The constants are pixels at 96 DPI. A group or container drawn at another
// DPI passes its lengths scaled (Metrics::ForDpi, ScaledParams), so buttons,
// gaps and margins keep their proportions to the (larger) text.
#pragma once

#include <vector>

#include "quorvel/common/box.h"
#include "quorvel/common/dpi_rules.h"

namespace qv::script {

// A button is its text's extent plus this much.
inline constexpr int kTextPadX = 12;
inline constexpr int kTextPadY = 4;
// The spacing of the group: its edge, and the gap used where there is no
// room to share out.
inline constexpr int kSpacing = 5;

struct Size {
    int cx = 0;
    int cy = 0;
    bool operator==(const Size&) const = default;
};

struct Box {
    int x = 0;
    int y = 0;
    int cx = 0;
    int cy = 0;
    bool operator==(const Box&) const = default;
};

using Rect = qv::Box;  // a rectangle in pixels, as a RECT

// The group's lengths at one DPI: the padding of a button around its text
// and the spacing.
struct Metrics {
    int padX = kTextPadX;
    int padY = kTextPadY;
    int spacing = kSpacing;
    // The constants above scaled from 96 DPI to `dpi` (0 counts as 96).
    static Metrics ForDpi(unsigned dpi) noexcept;
    bool operator==(const Metrics&) const = default;
};

// The size of a button whose text measures textCx x textCy.
Size ButtonSize(int textCx, int textCy, const Metrics& lengths = Metrics{});

// The content of a group: cx is the common button width W (the widest
// button), cy the content height H. In one column each button with a height
// adds its height plus the spacing; in rows the heights are simply added.
Size GroupContent(const std::vector<Size>& buttons, bool horizontal, const Metrics& lengths = Metrics{});

struct SizeLimits {
    int minCx = 0;
    int minCy = 0;
    int maxCx = 0;
    int maxCy = 0;
    bool operator==(const SizeLimits&) const = default;
};

// What a group reports for its content (from GroupContent): the content
// plus the spacing, and in rows a maximum width of twice the spacing more.
SizeLimits GroupLimits(Size content, bool horizontal, const Metrics& lengths = Metrics{});

// One column in a cx x cy group: every button W wide at x = 0, from y = 5 on,
// the free height shared out as gaps. The room of one button more than the
// group holds is kept free (the first button's height is counted twice), so
// the column never runs to the bottom edge.
std::vector<Box> AlignVertical(const std::vector<int>& heights, int width, int cx, int cy,
                               const Metrics& lengths = Metrics{});

// Rows in a cx x cy group: as many W-wide buttons in a row as fit, the free
// width and height shared out as gaps. Counting the rows allows for the
// spacing after each button, placing them does not, so a button that only
// just fits is counted in a new row but still placed at the end of the
// current one; the gaps then come out a little smaller than the room left.
std::vector<Box> AlignHorizontal(const std::vector<int>& heights, int width, int cx, int cy,
                                 const Metrics& lengths = Metrics{});

// Where the container's button sits.
enum class Side { Top = 0, Right = 1, Bottom = 2, Left = 3 };

struct ContainerParams {
    int margin = 15;
    int buttonCx = 30;
    int buttonCy = 20;
    bool limits = false;  // the control's size is kept within the four below
    int minCx = 50;
    int maxCx = 100;
    int minCy = 15;
    int maxCy = 30;
};

// `params` with every length (margin, button size, limits) scaled from 96
// DPI to `dpi`: a host gives them as it lays out its forms, at 100 %.
ContainerParams ScaledParams(const ContainerParams& params, unsigned dpi) noexcept;

struct ContainerLayout {
    Rect control;
    Rect button;
    bool operator==(const ContainerLayout&) const = default;
};

// The hosted control takes the client area less the margins and the
// button's strip on `side`; with limits on, its height and width are held
// within them by moving its bottom and right edges. The button sits at the
// margin, centred across the top or bottom edge, or beside the control on
// the right. Without limits a client too small for the margins gives an
// inverted control rectangle: the window layer moves it as empty.
ContainerLayout LayoutContainer(int cx, int cy, Side side, const ContainerParams& params);

}  // namespace qv::script
