// Fuzzes IniStore::Parse, Set and Get. The input bytes are decoded as UTF-8
// into UTF-16 code units (as the text would be on Windows); each invalid byte
// becomes U+FFFD and encoded surrogates pass through as lone code units.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "common/charclass.h"
#include "frame/ini_store.h"

namespace {

std::wstring DecodeUtf8(const std::uint8_t* data, std::size_t size) {
    std::wstring out;
    for (std::size_t i = 0; i < size;) {
        const unsigned lead = data[i];
        const std::size_t len = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
        unsigned cp = len == 1 ? lead : lead & (0x3Fu >> len);
        std::size_t k = 1;
        for (; k < len && i + k < size && (data[i + k] & 0xC0) == 0x80; ++k) cp = cp << 6 | (data[i + k] & 0x3Fu);
        if (len == 0 || k < len || cp > 0x10FFFF) {
            out += static_cast<wchar_t>(0xFFFD);
            ++i;
            continue;
        }
        i += len;
        if (cp >= 0x10000) {
            out += static_cast<wchar_t>(0xD800 + ((cp - 0x10000) >> 10));
            out += static_cast<wchar_t>(0xDC00 + (cp & 0x3FF));
        } else {
            out += static_cast<wchar_t>(cp);
        }
    }
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring content = DecodeUtf8(data, size);
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
