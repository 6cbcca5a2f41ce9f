#include "quorvel/masks/date_rules.h"

#include <algorithm>

#include "quorvel/common/oledate.h"

namespace qv::datefields {

Box LayoutRect(const Box& caller) noexcept {
    Box box = caller;
    if (box.Width() < kMinWidth) box.right = box.left + kMinWidth;
    if (box.Height() < kMinHeight) box.bottom = box.top + kMinHeight;
    return box;
}

FieldBoxes FieldLayout(int width, int height, bool stretch) noexcept {
    width = std::max(width, 0);
    height = std::max(height, 0);
    int dateWidth = kFieldWidth;
    int timeWidth = kFieldWidth;
    if (stretch) {
        const int room = std::max(width - kFieldGap, 0);
        dateWidth = room / 2;
        timeWidth = room - dateWidth;
    }
    const int timeLeft = dateWidth + kFieldGap;
    return FieldBoxes{Box{0, 0, dateWidth, height}, Box{timeLeft, 0, timeLeft + timeWidth, height}};
}

TabTarget TabStep(FocusAt focus, bool shift, bool originIsTimeField) noexcept {
    if (!shift) {
        if (focus == FocusAt::Compound && !originIsTimeField) return TabTarget::DateField;
        if (focus == FocusAt::DateField) return TabTarget::TimeField;
        return TabTarget::None;
    }
    if (focus == FocusAt::TimeField) return TabTarget::DateField;
    if (focus == FocusAt::DateField) return TabTarget::FocusOrigin;
    return TabTarget::None;
}

bool ShiftDate(double date, long long days, double& out) noexcept {
    if (days > kMaxSpanDays || days < -kMaxSpanDays || !oledate::IsValidDate(date)) return false;
    const double shifted = oledate::FromLinear(oledate::ToLinear(date) + static_cast<double>(days));
    if (!oledate::IsValidDate(shifted)) return false;
    out = shifted;
    return true;
}

bool ShowsTime(int displayType) noexcept { return displayType == kShowTime || displayType == kShowDateTime; }

std::wstring ReadOnlyText(int displayType, const std::wstring& dateText, const std::wstring& timeText) {
    switch (displayType) {
    case kShowTime: return timeText;
    case kShowDateTime: return dateText + L' ' + timeText;
    default: return dateText;
    }
}

}  // namespace qv::datefields
