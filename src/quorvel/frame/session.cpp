#include "quorvel/frame/session.h"

#include "quorvel/common/boundary.h"
#include "quorvel/frame/services.h"
#include "quorvel/platform/com.h"

namespace qv {

std::wstring ReadSettingText(std::wstring_view section, std::wstring_view name, long flag) try {
    std::wstring value;
    if (!Services::Settings().GetSessionValue(section, name, flag, value)) return {};
    return value;
} catch (...) {
    return CaughtAtEdge(" qv::ReadSettingText", __LINE__, std::wstring());
}

bool ReadSettingInt(std::wstring_view section, std::wstring_view name, long flag, long& value) try {
    const std::wstring text = ReadSettingText(section, name, flag);
    if (text.empty()) return false;
    Variant v{std::wstring_view(text)};
    if (FAILED(v.ChangeType(VT_I4))) return false;
    value = v.lVal;
    return true;
} catch (...) {
    return CaughtAtEdge(" qv::ReadSettingInt", __LINE__, false);
}

unsigned long TooltipPopupTimeSetting() {
    long ms = 0;
    return ReadSettingInt(L"Common", L"tooltipdelaytime", 0, ms) ? static_cast<unsigned long>(ms) : 0;
}

bool TooltipMaxTipWidthSetting(long& width) { return ReadSettingInt(L"Common", L"tooltipmaxtipwidth", 0, width); }

std::wstring ContextHelpFileSetting() { return ReadSettingText(L"customization", L"contextHelpOnCustomizationObjects", 1); }

void ApplyTooltipMaxWidth(std::wstring& text) {
    long width = 0;
    if (!TooltipMaxTipWidthSetting(width) || width < 0) return;
    if (text.size() > static_cast<size_t>(width)) text.resize(static_cast<size_t>(width));
}

}  // namespace qv
