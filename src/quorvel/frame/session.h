// Session settings: the host's session-data manager interface and the
// readers of the few user settings the library uses. Settings are stored as
// text; a missing service, a missing value, an empty text or a text that does
// not convert all read as absent and give the documented default.
#pragma once

#include <windows.h>
#include <oaidl.h>

#include <string>
#include <string_view>

#include "quorvel/common/api.h"

// {E41B9D02-7C5A-4A8F-B3E6-0F9D28C1A657}: the id the library's own
// session-data manager answers (host_objects.h); the host's server has its
// own, named with SessionSettings::UseSessionDataManager.
inline constexpr IID IID_IZT_SessionDataMng = {
    0xe41b9d02, 0x7c5a, 0x4a8f, {0xb3, 0xe6, 0x0f, 0x9d, 0x28, 0xc1, 0xa6, 0x57}};

// The host's session-data manager (a COM server; the host names its class and
// interface ids). The library calls only GetSessionValue, the tenth entry of
// the function table; the six entries before it belong to the host.
struct IZT_SessionDataMng : public IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Reserved4() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved5() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved6() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved7() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved8() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved9() = 0;
    // section, value name, requested type (always VT_BSTR), the value, and a
    // flag (0 for "Common", 1 for "customization"). S_OK when found.
    virtual HRESULT STDMETHODCALLTYPE GetSessionValue(BSTR section, BSTR name, long type, VARIANT* value,
                                                      long flag) = 0;
};

namespace qv {

// The stored text of a setting, or "" when absent.
QV_API std::wstring ReadSettingText(std::wstring_view section, std::wstring_view name, long flag);
// The setting converted to a 32-bit integer (VariantChangeType to VT_I4);
// false when absent, empty or not convertible.
QV_API bool ReadSettingInt(std::wstring_view section, std::wstring_view name, long flag, long& value);

// The three user settings of tooltips and context help.
// "Common"/"tooltipdelaytime": the tooltip display time as stored, in seconds
// (the tooltips multiply it by 1000), 0 when absent.
QV_API unsigned long TooltipPopupTimeSetting();
// "Common"/"tooltipmaxtipwidth": false when absent (texts are left whole).
QV_API bool TooltipMaxTipWidthSetting(long& width);
// "customization"/"contextHelpOnCustomizationObjects": the folder of the
// context-help documents, "" when absent.
QV_API std::wstring ContextHelpFileSetting();
// Cuts a tooltip text to the configured maximum number of characters; a text
// no longer than that, or any text when no valid maximum is set, stays whole.
QV_API void ApplyTooltipMaxWidth(std::wstring& text);

}  // namespace qv
