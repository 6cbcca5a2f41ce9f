// Fuzzes the viewer's readers of file bytes: ParseBmp on the raw bytes, and
// TextLines with DetectOfficePage on the same bytes as text, and the name
// rules on its first line.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quorvel/views/viewer_rules.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    namespace vw = qv::viewer;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);

    vw::PackedDib dib;
    if (vw::ParseBmp(bytes, dib)) {
        // What was read is consistent: the header's sizes match the rows.
        const std::size_t stride = ((static_cast<std::size_t>(dib.width) * dib.bitCount + 31) / 32) * 4;
        if (dib.width <= 0 || dib.height <= 0 || dib.bitsOffset < 40 ||
            dib.bytes.size() != dib.bitsOffset + stride * static_cast<std::size_t>(dib.height))
            std::abort();
    } else if (!dib.bytes.empty()) {
        std::abort();
    }

    const auto lines = vw::TextLines(bytes, 3);
    if (lines.size() > 3) std::abort();
    const vw::Office office = vw::DetectOfficePage(lines);
    if (office != vw::Office::None && lines.size() < 3) std::abort();
    if (lines.empty()) return 0;
    (void)vw::IsHtmlFirstLine(lines[0]);

    // The first line as a file name: the key is at most three characters,
    // and a renamed name ends with the new extension.
    const std::wstring& name = lines[0];
    if (vw::ExtensionKey(name).size() > 3) std::abort();
    (void)vw::ChooseViewer(name);
    const std::wstring renamed = vw::NameWithExtension(name, L"doc");
    if (!renamed.empty() && renamed.compare(renamed.size() - 4, 4, L".doc") != 0) std::abort();
    (void)vw::BrowserCommandLine(name, L"x.htm");
    return 0;
}
