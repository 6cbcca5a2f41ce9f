#include "quorvel/common/utf8.h"

namespace qv {

void AppendUtf8AsWide(std::string_view utf8, std::wstring& out) {
    const size_t size = utf8.size();
    for (size_t i = 0; i < size;) {
        const unsigned lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {  // the common case, one byte at a time
            out += static_cast<wchar_t>(lead);
            ++i;
            continue;
        }
        const size_t len = lead >= 0xF8 ? 0 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
        unsigned cp = lead & (0x7Fu >> len);  // the payload bits of a len-byte lead
        size_t k = 1;
        for (; k < len && i + k < size && (static_cast<unsigned char>(utf8[i + k]) & 0xC0) == 0x80; ++k)
            cp = cp << 6 | (static_cast<unsigned char>(utf8[i + k]) & 0x3Fu);
        const unsigned smallest = len == 2 ? 0x80 : len == 3 ? 0x800 : 0x10000;
        if (len == 0 || k < len || cp > 0x10FFFF || cp < smallest) {
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
}

std::wstring Utf8ToWide(std::string_view utf8) {
    std::wstring out;
    out.reserve(utf8.size());
    AppendUtf8AsWide(utf8, out);
    return out;
}

void AppendWideAsUtf8(std::wstring_view wide, std::string& out) {
    const size_t size = wide.size();
    for (size_t i = 0; i < size; ++i) {
        unsigned cp = static_cast<unsigned>(wide[i]) & 0x1FFFFFu;
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < size) {
            const unsigned low = static_cast<unsigned>(wide[i + 1]);
            if (low >= 0xDC00 && low <= 0xDFFF) {
                cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
                ++i;
            }
        }
        if ((cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF) cp = 0xFFFD;
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | cp >> 6);
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | cp >> 12);
            out += static_cast<char>(0x80 | (cp >> 6 & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | cp >> 18);
            out += static_cast<char>(0x80 | (cp >> 12 & 0x3F));
            out += static_cast<char>(0x80 | (cp >> 6 & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
}

std::string WideToUtf8(std::wstring_view wide) {
    std::string out;
    out.reserve(wide.size());
    AppendWideAsUtf8(wide, out);
    return out;
}

}  // namespace qv
