#include "quorvel/windows/splitter_rules.h"

#include <algorithm>
#include <atomic>

namespace qv::splitter {

namespace {
std::atomic<bool> g_sizesMade{false};
}  // namespace

bool SizesMadeOnce() noexcept { return g_sizesMade.load(); }
void ForgetSizesMade() noexcept { g_sizesMade.store(false); }

Metrics Metrics::ForDpi(unsigned dpi) noexcept {
    const auto at = [dpi](int length) { return ScaleToDpi(length, dpi); };
    Metrics m;
    m.bar = at(kBar);
    m.buttonInset = at(kButtonInset);
    m.buttonAboveMiddle = at(kButtonAboveMiddle);
    m.buttonHeight = at(kButtonHeight);
    m.buttonGap = at(kButtonGap);
    m.keepMin = at(kKeepMin);
    m.resizeKeepLeft = at(kResizeKeepLeft);
    m.collapseLeftBelow = at(kCollapseLeftBelow);
    m.rightRoom = at(kRightRoom);
    m.firstLeft = at(kFirstLeft);
    m.firstRight = at(kFirstRight);
    m.collapsedSliver = at(kCollapsedSliver);
    return m;
}

ButtonBoxes ButtonRects(const Box& bar, const Metrics& m) noexcept {
    const int middle = bar.top + bar.Height() / 2;
    ButtonBoxes boxes;
    boxes.upper = Box{bar.left + m.buttonInset, middle - m.buttonAboveMiddle, bar.right - m.buttonInset,
                      middle - m.buttonAboveMiddle + m.buttonHeight};
    boxes.lower = Box{boxes.upper.left, boxes.upper.bottom + m.buttonGap, boxes.upper.right,
                      boxes.upper.bottom + m.buttonGap + m.buttonHeight};
    return boxes;
}

Box FaceBox(const Box& area, int width, int height, int factor) noexcept {
    const long long k = std::max(1, factor);
    const bool none = width <= 0 || height <= 0;
    // Saturated: no face is larger than the screen, but nothing here may overflow.
    const int w = none ? 0 : static_cast<int>(std::min<long long>(width * k, 1 << 20));
    const int h = none ? 0 : static_cast<int>(std::min<long long>(height * k, 1 << 20));
    const int left = area.left + CentredOffset(area.Width(), w);
    const int top = area.top + CentredOffset(area.Height(), h);
    return Box{left, top, left + w, top + h};
}

DropDecision DecideDrop(int x, int width, int keepLeft, const Metrics& m) noexcept {
    const int left = std::max(0, x);
    const int right = std::max(0, width - x);
    const bool inside = x >= 0 && x < width;
    const bool barFits = x <= width - m.bar;
    if (inside && barFits && left >= keepLeft && right >= m.keepMin) return {Drop::KeepBoth, false};
    if (x < 1 || left < m.collapseLeftBelow) return {Drop::CollapseLeft, left < m.collapseLeftBelow};
    if (inside && right > m.rightRoom) return {Drop::TakePosition, false};
    return {Drop::CollapseRight, right < m.keepMin};
}

// ---- Model: DPI ------------------------------------------------------------------------

void Model::SetDpi(unsigned dpi) noexcept {
    dpi_ = dpi == 0 ? kBaseDpi : dpi;
    lengths_ = Metrics::ForDpi(dpi_);
}

void Model::ChangeDpi(unsigned dpi) noexcept {
    CancelTrack();
    const unsigned from = dpi_;
    SetDpi(dpi);
    if (dpi_ != from) {
        const auto rescale = [from, this](int length) { return ScaleBetweenDpi(length, from, dpi_); };
        for (Column& col : col_) {
            if (col.ideal >= 0) col.ideal = rescale(col.ideal);
            col.minimum = rescale(col.minimum);
            col.current = rescale(col.current);
        }
        cached_ = Widths{rescale(cached_.left), rescale(cached_.right)};
    }
    RecalcLayout();
}

// ---- Model: area and layout ----------------------------------------------------

void Model::SetArea(int width, int height) noexcept {
    width_ = std::max(0, width);
    height_ = std::max(0, height);
}

int Model::Room() const noexcept { return std::max(0, width_ - lengths_.bar); }

void Model::SetColumnInfo(int col, int ideal, int minimum) noexcept {
    if (col < 0 || col > 1) return;
    col_[col].ideal = std::max(0, ideal);
    col_[col].minimum = std::max(0, minimum);
}

int Model::ColumnWidth(int col) const noexcept { return col >= 0 && col <= 1 ? col_[col].current : 0; }
int Model::ColumnMin(int col) const noexcept { return col >= 0 && col <= 1 ? col_[col].minimum : 0; }
int Model::ColumnIdeal(int col) const noexcept { return col >= 0 && col <= 1 ? col_[col].ideal : 0; }

void Model::RecalcLayout() noexcept {
    if (col_[0].ideal < 0 && width_ > 0) col_[0].ideal = width_ / 3;
    if (columns_ < 2) {
        col_[0].current = width_;
        col_[1].current = 0;
        barLeft_ = width_;
        return;
    }
    const int room = Room();
    int left = std::clamp(col_[0].ideal, 0, room);
    if (left < col_[0].minimum) left = 0;
    int right = room - left;
    if (right < col_[1].minimum) {
        left = room;
        right = 0;
    }
    col_[0].current = left;
    col_[1].current = right;
    barLeft_ = left;
}

Box Model::Bar() const noexcept { return Box{barLeft_, 0, barLeft_ + lengths_.bar, height_}; }

int Model::LeftPercent() const noexcept {
    const int room = Room();
    if (!HasBar() || room <= 0) return 100;
    // Rounded half up: a bar in the middle of an odd room is at 50 %.
    return static_cast<int>((200LL * col_[0].current + room) / (2LL * room));
}

bool Model::TakeFacesDue() noexcept {
    const bool due = facesDue_;
    facesDue_ = false;
    return due;
}

// ---- Model: the splitter's operations ---------------------------------------------

void Model::CacheSize() noexcept {
    const Widths current{col_[0].current, col_[1].current};
    if (flags_.rightCollapsed) {
        col_[0].ideal = std::max(0, current.right - lengths_.collapsedSliver);
        col_[1].ideal = lengths_.collapsedSliver;
    } else if (flags_.leftCollapsed) {
        col_[0].ideal = 0;
    } else {
        cached_ = current;
    }
}

Widths Model::MakeSplitSizes() noexcept {
    const bool usable = cached_.left > 0 && cached_.left + lengths_.bar + lengths_.keepMin <= width_;
    if (!usable) {
        flags_.leftShown = flags_.rightShown = true;
        flags_.leftCollapsed = flags_.rightCollapsed = false;
        g_sizesMade.store(true);
        // Column 1 takes the rest of the width in the layout whatever it is
        // asked for, so its third of the height shows nowhere.
        return Widths{width_ / 3, height_ / 3};
    }
    return Widths{cached_.left, width_ - cached_.left};
}

void Model::UpdateSizes(Widths& widths) noexcept {
    // A negative width comes only from a column that leaves the other no room.
    widths.left = std::max(0, widths.left);
    widths.right = std::max(0, widths.right);
    if (widths.left == 0 && widths.right == 0) widths = Widths{col_[0].current, col_[1].current};
    col_[0].ideal = widths.left;
    col_[1].ideal = widths.right;
    RecalcLayout();
    CacheSize();
}

void Model::CloseVertSplitView(bool closeRight) noexcept {
    CacheSize();
    col_[0].ideal = closeRight ? width_ : 0;
    col_[1].ideal = closeRight ? 0 : width_;
    RecalcLayout();
}

void Model::ShowBoth() noexcept {
    upperVisible_ = lowerVisible_ = true;
    flags_.leftCollapsed = flags_.rightCollapsed = false;
    facesDue_ = true;
}

void Model::Restore() noexcept {
    ShowBoth();
    Widths widths = MakeSplitSizes();
    UpdateSizes(widths);
    flags_.leftShown = flags_.rightShown = true;
    flags_.restoredByButton = false;
}

void Model::BtnLeftPressed() noexcept {
    if (!flags_.BothShown()) {
        Restore();
        return;
    }
    CloseVertSplitView(false);
    flags_.leftCollapsed = true;
    flags_.rightCollapsed = false;
    lowerVisible_ = false;
    upperVisible_ = true;
    flags_.leftShown = flags_.rightShown = false;
}

void Model::BtnRightPressed() noexcept {
    if (!flags_.BothShown()) {
        Restore();
        return;
    }
    CloseVertSplitView(true);
    flags_.rightCollapsed = true;
    flags_.leftCollapsed = false;
    upperVisible_ = false;
    lowerVisible_ = true;
    flags_.leftShown = flags_.rightShown = false;
}

void Model::Toggle() noexcept {
    columns_ = columns_ >= 2 ? 1 : 2;
    RecalcLayout();
}

// ---- Model: drops and resizes ------------------------------------------------------

void Model::TakePosition(int x) noexcept {
    col_[0].ideal = std::clamp(x, 0, Room());
    RecalcLayout();
}

Drop Model::Release(int x, int keepLeft) noexcept {
    if (!HasBar()) return Drop::TakePosition;
    const DropDecision decision = DecideDrop(x, width_, keepLeft, lengths_);
    CacheSize();
    switch (decision.action) {
    case Drop::KeepBoth:
        ShowBoth();
        flags_.leftShown = flags_.rightShown = true;
        TakePosition(x);
        break;
    case Drop::TakePosition:
        TakePosition(x);
        break;
    case Drop::CollapseLeft:
        if (decision.forceShown) flags_.leftShown = flags_.rightShown = true;
        BtnLeftPressed();
        break;
    case Drop::CollapseRight:
        if (decision.forceShown) flags_.leftShown = flags_.rightShown = true;
        BtnRightPressed();
        break;
    }
    return decision.action;
}

void Model::Resize(int width, int height) noexcept {
    SetArea(width, height);
    RecalcLayout();
    if (!HasBar() || width_ == 0) return;
    if (!sized_) {
        sized_ = true;
        if (col_[0].current < lengths_.firstLeft) {
            col_[0].ideal = lengths_.firstLeft;
            upperVisible_ = false;
            RecalcLayout();
        }
        if (col_[1].current < lengths_.firstRight) {
            col_[0].ideal = std::max(0, Room() - lengths_.firstRight);
            lowerVisible_ = false;
            RecalcLayout();
        }
        return;
    }
    const int x = flags_.leftCollapsed ? 0 : flags_.rightCollapsed ? Room() : barLeft_;
    Release(x, lengths_.resizeKeepLeft);
}

// ---- Model: tracking -----------------------------------------------------------------

void Model::BeginTrack() noexcept {
    tracking_ = true;
    idealBeforeTrack_ = col_[0].ideal;
}

void Model::TrackTo(int x) noexcept {
    if (tracking_) TakePosition(x);
}

Drop Model::EndTrack(int x) noexcept {
    CancelTrack();
    return Release(x, lengths_.keepMin);
}

void Model::CancelTrack() noexcept {
    if (!tracking_) return;
    tracking_ = false;
    col_[0].ideal = idealBeforeTrack_;
    RecalcLayout();
}

}  // namespace qv::splitter
