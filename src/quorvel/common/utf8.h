// UTF-8 at the library's edges (command-line tools, fuzz inputs) to and from
// the UTF-16 code units that every control works with. The same code units
// come out on every build, also where wchar_t is 32 bits wide, so a text has
// the same answers natively and on Windows.
#pragma once

#include <string>
#include <string_view>

#include "quorvel/common/api.h"

namespace qv {

// Appends `utf8` to `out` as UTF-16 code units. Each byte that does not
// start a valid sequence becomes U+FFFD; encoded surrogates pass through as
// lone code units.
QV_API void AppendUtf8AsWide(std::string_view utf8, std::wstring& out);
QV_API std::wstring Utf8ToWide(std::string_view utf8);

// Appends UTF-16 code units as UTF-8; a lone surrogate becomes U+FFFD.
QV_API void AppendWideAsUtf8(std::wstring_view wide, std::string& out);
QV_API std::string WideToUtf8(std::wstring_view wide);

}  // namespace qv
