#include "quorvel/masks/date_rules.h"

#include <algorithm>

#include "quorvel/common/oledate.h"

namespace qv::datefields {

FieldSizes FieldSizesForDpi(unsigned dpi) noexcept {
    return FieldSizes{ScaleToDpi(kFieldWidth, dpi), ScaleToDpi(kFieldHeight, dpi), ScaleToDpi(kFieldGap, dpi)};
}

Box LayoutRect(const Box& caller, unsigned dpi) noexcept {
    const FieldSizes sizes = FieldSizesForDpi(dpi);
    Box box = caller;
    if (box.Width() < sizes.MinWidth()) box.right = box.left + sizes.MinWidth();
    if (box.Height() < sizes.height) box.bottom = box.top + sizes.height;
    return box;
}

FieldBoxes FieldLayout(int width, int height, bool stretch, unsigned dpi) noexcept {
    const FieldSizes sizes = FieldSizesForDpi(dpi);
    width = std::max(width, 0);
    height = std::max(height, 0);
    int dateWidth = sizes.width;
    int timeWidth = sizes.width;
    if (stretch) {
        const int room = std::max(width - sizes.gap, 0);
        dateWidth = room / 2;
        timeWidth = room - dateWidth;
    }
    const int timeLeft = dateWidth + sizes.gap;
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
