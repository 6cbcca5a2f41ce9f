#include "quorvel/windows/splitter_rules.h"

#include <algorithm>
#include <atomic>

namespace qv::splitter {

namespace {
std::atomic<bool> g_sizesMade{false};
}  // namespace

bool SizesMadeOnce() noexcept { return g_sizesMade.load(); }
void ForgetSizesMade() noexcept { g_sizesMade.store(false); }

ButtonBoxes ButtonRects(const Box& bar) noexcept {
    const int middle = bar.top + bar.Height() / 2;
    ButtonBoxes boxes;
    boxes.upper = Box{bar.left + kButtonInset, middle - kButtonAboveMiddle, bar.right - kButtonInset,
                      middle - kButtonAboveMiddle + kButtonHeight};
    boxes.lower = Box{boxes.upper.left, boxes.upper.bottom + kButtonGap, boxes.upper.right,
                      boxes.upper.bottom + kButtonGap + kButtonHeight};
    return boxes;
}

Box FitCentred(const Box& area, int width, int height) noexcept {
    const int areaW = std::max(0, area.Width());
    const int areaH = std::max(0, area.Height());
    int w = width, h = height;
    if (w <= 0 || h <= 0 || areaW == 0 || areaH == 0) {
        w = 0;
        h = 0;
    } else if (w > areaW || h > areaH) {
        // Scale by the tighter of the two ratios, in integers: w/areaW vs h/areaH.
        if (static_cast<long long>(w) * areaH >= static_cast<long long>(h) * areaW) {
            h = static_cast<int>(std::max(1LL, static_cast<long long>(h) * areaW / w));
            w = areaW;
        } else {
            w = static_cast<int>(std::max(1LL, static_cast<long long>(w) * areaH / h));
            h = areaH;
        }
    }
    const int left = area.left + (areaW - w) / 2;
    const int top = area.top + (areaH - h) / 2;
    return Box{left, top, left + w, top + h};
}

DropDecision DecideDrop(int x, int width, int keepLeft) noexcept {
    const int left = std::max(0, x);
    const int right = std::max(0, width - x);
    const bool inside = x >= 0 && x < width;
    const bool barFits = x <= width - kBar;
    if (inside && barFits && left >= keepLeft && right >= kKeepMin) return {Drop::KeepBoth, false};
    if (x < 1 || left < kCollapseLeftBelow) return {Drop::CollapseLeft, left < kCollapseLeftBelow};
    if (inside && right > kRightRoom) return {Drop::TakePosition, false};
    return {Drop::CollapseRight, right < kKeepMin};
}

// ---- Model: area and layout ----------------------------------------------------

void Model::SetArea(int width, int height) noexcept {
    width_ = std::max(0, width);
    height_ = std::max(0, height);
}

int Model::Room() const noexcept { return std::max(0, width_ - kBar); }

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

Box Model::Bar() const noexcept { return Box{barLeft_, 0, barLeft_ + kBar, height_}; }

bool Model::TakeFacesDue() noexcept {
    const bool due = facesDue_;
    facesDue_ = false;
    return due;
}

// ---- Model: the splitter's operations ---------------------------------------------

void Model::CacheSize() noexcept {
    const Widths current{col_[0].current, col_[1].current};
    if (flags_.rightCollapsed) {
        col_[0].ideal = std::max(0, current.right - kCollapsedSliver);
        col_[1].ideal = kCollapsedSliver;
    } else if (flags_.leftCollapsed) {
        col_[0].ideal = 0;
    } else {
        cached_ = current;
    }
}

Widths Model::MakeSplitSizes() noexcept {
    const bool usable = cached_.left > 0 && cached_.left + kBar + kKeepMin <= width_;
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
    const DropDecision decision = DecideDrop(x, width_, keepLeft);
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
        if (col_[0].current < kFirstLeft) {
            col_[0].ideal = kFirstLeft;
            upperVisible_ = false;
            RecalcLayout();
        }
        if (col_[1].current < kFirstRight) {
            col_[0].ideal = std::max(0, Room() - kFirstRight);
            lowerVisible_ = false;
            RecalcLayout();
        }
        return;
    }
    const int x = flags_.leftCollapsed ? 0 : flags_.rightCollapsed ? Room() : barLeft_;
    Release(x, kResizeKeepLeft);
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
    return Release(x, kKeepMin);
}

void Model::CancelTrack() noexcept {
    if (!tracking_) return;
    tracking_ = false;
    col_[0].ideal = idealBeforeTrack_;
    RecalcLayout();
}

}  // namespace qv::splitter
