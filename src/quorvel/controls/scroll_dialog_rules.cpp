#include "quorvel/controls/scroll_dialog_rules.h"

#include <algorithm>

namespace qv::scrolling {

namespace {

constexpr int kWheelNotch = 120;
// More lines than any dialog scrolls; keeps absurd wheel settings in range.
constexpr long long kMaxWheelLines = 1 << 20;

void Fit(Axis& axis, int excess) noexcept {
    axis.excess = excess;
    axis.maximum = (std::max)(excess, 0);
    axis.position = (std::min)(axis.position, axis.maximum);
}

int Step(const Axis& axis, int command, int thumb, int page) noexcept {
    int step = 0;
    switch (command) {
    case kLineBack: step = -1; break;
    case kLineForward: step = 1; break;
    case kPageBack: step = -page; break;
    case kPageForward: step = page; break;
    case kThumbTrack: step = thumb - axis.position; break;
    case kToStart: step = -axis.position; break;
    case kToEnd: step = axis.maximum - axis.position; break;
    default: break;  // thumb released, end of scrolling: the track already moved
    }
    return ClampStep(axis, step);
}

int Take(Axis& axis, int step, int unit) noexcept {
    step = ClampStep(axis, step);
    axis.position += step;
    return -unit * step;
}

}  // namespace

int ClampStep(const Axis& axis, int step) noexcept {
    const int low = -axis.position;
    const int high = axis.maximum - axis.position;
    if (step < low) return low;
    if (step > high) return (std::max)(high, low);
    return step;
}

void Model::Init(int layoutWidth, int layoutHeight, unsigned dpi) noexcept {
    m_dpi = dpi == 0 ? kBaseDpi : dpi;
    // At least a pixel a unit, whatever DPI a failed query reports.
    m_unitX = (std::max)(1, ScaleToDpi(kUnitX, m_dpi));
    m_unitY = (std::max)(1, ScaleToDpi(kUnitY, m_dpi));
    m_layoutWidth = layoutWidth;
    m_layoutHeight = layoutHeight;
    m_h = Axis{};
    m_v = Axis{};
}

void Model::ChangeDpi(unsigned dpi) noexcept {
    const unsigned to = dpi == 0 ? kBaseDpi : dpi;
    Init(ScaleBetweenDpi(m_layoutWidth, m_dpi, to), ScaleBetweenDpi(m_layoutHeight, m_dpi, to), to);
}

bool Model::Resize(int clientWidth, int clientHeight, bool maximised, bool resizable) noexcept {
    const int h = (m_layoutWidth - clientWidth) / m_unitX;
    const int v = (m_layoutHeight - clientHeight) / m_unitY;
    Fit(m_h, h);
    Fit(m_v, v);
    return h < 1 && v < 1 && !maximised && resizable;
}

Model::Size Model::FitBars(int bareWidth, int bareHeight, int barWidth, int barHeight) const noexcept {
    Size size{bareWidth, bareHeight};
    bool across = false;
    bool down = false;
    for (int round = 0; round < 2; ++round) {
        if (!across && (m_layoutWidth - size.width) / m_unitX >= 1) {
            across = true;
            size.height -= barHeight;
        }
        if (!down && (m_layoutHeight - size.height) / m_unitY >= 1) {
            down = true;
            size.width -= barWidth;
        }
    }
    return size;
}

int Model::VerticalStep(int command, int thumb) const noexcept {
    return Step(m_v, command, thumb, (std::max)(m_v.excess, 1));
}

int Model::HorizontalStep(int command, int thumb) const noexcept { return Step(m_h, command, thumb, kPageX); }

int Model::ScrollVertical(int step) noexcept { return Take(m_v, step, m_unitY); }

int Model::ScrollHorizontal(int step) noexcept { return Take(m_h, step, m_unitX); }

Model::Shift Model::Reset() noexcept {
    const Shift shift{m_h.position * m_unitX, m_v.position * m_unitY};
    m_h.position = 0;
    m_v.position = 0;
    return shift;
}

Box GripBox(const Box& client, int gripWidth, int gripHeight) noexcept {
    return Box{client.right - gripWidth, client.bottom - gripHeight, client.right, client.bottom};
}

int WheelLines(int& carry, int delta, int linesPerNotch) noexcept {
    if (linesPerNotch <= 0) {
        carry = 0;
        return 0;
    }
    // A turn against the direction of what is kept starts afresh.
    if ((carry > 0 && delta < 0) || (carry < 0 && delta > 0)) carry = 0;
    const long long total = static_cast<long long>(carry) + static_cast<long long>(delta) * linesPerNotch;
    const long long lines = (std::clamp)(total / kWheelNotch, -kMaxWheelLines, kMaxWheelLines);
    carry = static_cast<int>(total % kWheelNotch);
    return static_cast<int>(-lines);
}

}  // namespace qv::scrolling
