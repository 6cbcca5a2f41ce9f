// The rules of the date and time fields that need no window: where the
// compound date-and-time field puts its two pickers, where Tab and Shift+Tab
// take the focus inside it, and what text the read-only date field shows.
#pragma once

#include <string>

#include "quorvel/common/api.h"
#include "quorvel/common/box.h"
#include "quorvel/common/dpi_rules.h"

namespace qv::datefields {

using Box = qv::Box;  // a rectangle in pixels, as a RECT

// The compound's two pickers at 96 DPI: each 100 wide, 5 apart, 20 high at
// least.
inline constexpr int kFieldWidth = 100;
inline constexpr int kFieldHeight = 20;
inline constexpr int kFieldGap = 5;
inline constexpr int kMinWidth = kFieldGap + 2 * kFieldWidth;  // 205
inline constexpr int kMinHeight = kFieldHeight;                // 20

// The pickers' width, least height and gap at `dpi`, each scaled on its own
// (so the least width is 2 * width + gap of the scaled values).
struct FieldSizes {
    int width = kFieldWidth;
    int height = kFieldHeight;
    int gap = kFieldGap;
    int MinWidth() const noexcept { return gap + 2 * width; }
    bool operator==(const FieldSizes&) const = default;
};
QV_API FieldSizes FieldSizesForDpi(unsigned dpi) noexcept;

// The rectangle the compound lays its pickers out in: the caller's, widened
// to the minimum width from its left edge and made the minimum height from
// its top edge where it is smaller (the minimum at `dpi`).
QV_API Box LayoutRect(const Box& caller, unsigned dpi = kBaseDpi) noexcept;

struct FieldBoxes {
    Box date;
    Box time;
};

// The pickers in a client area of `width` x `height`. Fixed: the date picker
// from the left edge, the time picker the gap to its right, each the field
// width wide (both at `dpi`), so a narrower area cuts the time picker off.
// Stretched: the two share the width (the date picker gets the smaller
// half), the gap kept. Both take the full height. Negative sizes count as 0.
QV_API FieldBoxes FieldLayout(int width, int height, bool stretch, unsigned dpi = kBaseDpi) noexcept;

// Where the focus is when Tab is pressed, seen from the compound.
enum class FocusAt { Compound, DateField, TimeField, Elsewhere };
// Where Tab takes it: nowhere (the key goes on to the usual handling), one of
// the pickers, or back to the window the focus came into the compound from.
enum class TabTarget { None, DateField, TimeField, FocusOrigin };

// Tab: from the compound itself to the date picker (unless the focus came in
// from the time picker), from the date picker to the time picker. Shift+Tab:
// from the time picker to the date picker, from the date picker back to
// where the focus came from. Everything else leaves the compound as usual.
QV_API TabTarget TabStep(FocusAt focus, bool shift, bool originIsTimeField) noexcept;

// The longest span, in days, that a range given in days may reach.
inline constexpr long long kMaxSpanDays = 3615897;

// `date` (an OLE DATE) moved by `days` whole days, the time of day kept.
// False for a span beyond kMaxSpanDays either way, an invalid `date`, or a
// result outside the dates a DATE can hold.
QV_API bool ShiftDate(double date, long long days, double& out) noexcept;

// Display types of the read-only date field.
enum DisplayKind : int { kShowDate = 0, kShowTime = 1, kShowDateTime = 2 };

// Whether a display type shows the time of day (its hidden picker then
// keeps the time as well as the date).
QV_API bool ShowsTime(int displayType) noexcept;
// The read-only field's text from the value's date-only and time-only texts:
// 1 the time, 2 date, one blank, time, any other type the date.
QV_API std::wstring ReadOnlyText(int displayType, const std::wstring& dateText, const std::wstring& timeText);

}  // namespace qv::datefields
