// Fuzzes IniStore::Parse, Set and Get. The input bytes are decoded as UTF-8
// into UTF-16 code units (as the text would be on Windows); each invalid byte
// becomes U+FFFD and encoded surrogates pass through as lone code units.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quorvel/common/utf8.h"
#include "quorvel/common/charclass.h"
#include "quorvel/frame/ini_store.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring content = qv::Utf8ToWide(std::string_view(reinterpret_cast<const char*>(data), size));
    qv::IniStore store;
    store.Parse(content);

    // A value set afterwards is found under any ASCII case of its names.
    const std::wstring_view view(content);
    const std::wstring_view section = view.substr(0, view.size() / 3);
    const std::wstring_view name = view.substr(view.size() / 3, view.size() / 3);
    store.Set(section, name, view);
    std::wstring upperSection(section);
    std::wstring upperName(name);
    for (wchar_t& c : upperSection) c = qv::ToUpperAscii(c);
    for (wchar_t& c : upperName) c = qv::ToUpperAscii(c);
    std::wstring value;
    if (!store.Get(upperSection, upperName, value) || value != view) std::abort();

    store.Clear();
    if (store.Get(section, name, value)) std::abort();
    return 0;
}
