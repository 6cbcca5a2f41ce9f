#include "quorvel/views/viewer_rules.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "quorvel/common/utf8.h"

namespace qv::viewer {

namespace {

// ASCII lower case only: extensions and header lines are ASCII, and the
// answer must not depend on the C runtime's locale.
wchar_t Lower(wchar_t c) { return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c - L'A' + L'a') : c; }

bool EqualNoCase(std::wstring_view a, std::wstring_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (Lower(a[i]) != Lower(b[i])) return false;
    return true;
}

bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == 0xFEFF; }

std::wstring_view Trim(std::wstring_view s) {
    while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
    return s;
}

// Where the file name starts (after the last "\", "/" or drive colon).
size_t NameStart(std::wstring_view path) {
    const size_t sep = path.find_last_of(L"\\/:");
    return sep == std::wstring_view::npos ? 0 : sep + 1;
}

void SplitLines(std::wstring_view text, size_t maxLines, std::vector<std::wstring>& lines) {
    size_t start = 0;
    while (start < text.size() && lines.size() < maxLines) {
        size_t end = text.find_first_of(L"\r\n", start);
        if (end == std::wstring_view::npos) end = text.size();
        lines.emplace_back(text.substr(start, end - start));
        if (end < text.size() && text[end] == L'\r' && end + 1 < text.size() && text[end + 1] == L'\n') ++end;
        start = end + 1;
    }
}

}  // namespace

std::wstring ExtensionKey(std::wstring_view path) {
    const std::wstring_view name = path.substr(NameStart(path));
    const size_t dot = name.rfind(L'.');
    if (dot == std::wstring_view::npos) return {};
    return std::wstring(name.substr(dot + 1, 3));
}

bool IsPicture(std::wstring_view path) {
    const std::wstring key = ExtensionKey(path);
    return EqualNoCase(key, L"gif") || EqualNoCase(key, L"jpg") || EqualNoCase(key, L"bmp");
}

std::wstring ReaderName(std::wstring_view path) {
    const size_t sep = path.find_last_of(L"\\/");
    if (sep == std::wstring_view::npos || sep + 1 == path.size()) return std::wstring(path);
    return std::wstring(path.substr(sep + 1));
}

ViewLayout LayOutView(int width, int height, bool withRow, unsigned dpi) noexcept {
    width = std::max(width, 0);
    height = std::max(height, 0);
    ViewLayout v;
    if (!withRow) {
        v.viewer = Box{0, 0, width, height};
        return v;
    }
    const int row = ScaleToDpi(kRowHeight, dpi), gap = ScaleToDpi(kRowGap, dpi);
    int right = width;
    for (int i = kButtonCount - 1; i >= 0; --i) {
        right -= row;
        v.buttons[i] = Box{right, 0, right + row, row};
        right -= gap;
    }
    v.edit = Box{0, 0, std::max(right, 0), row};
    v.viewer = Box{0, std::min(height, row + gap), width, height};
    return v;
}

Kind ChooseViewer(std::wstring_view path) {
    // Compared in this order; "html" can never equal a three-character key
    // and is listed only so that the order stays the one hosts know.
    static constexpr struct { const wchar_t* key; Kind kind; } kTable[] = {
        {L"gif", Kind::Html}, {L"jpg", Kind::Html}, {L"htm", Kind::Html},
        {L"html", Kind::Html}, {L"txt", Kind::Html}, {L"bmp", Kind::Bitmap},
    };
    const std::wstring key = ExtensionKey(path);
    if (key.empty()) return Kind::None;
    for (const auto& row : kTable)
        if (EqualNoCase(key, row.key)) return row.kind;
    return Kind::None;
}

std::vector<std::wstring> TextLines(std::string_view bytes, size_t maxLines) {
    std::vector<std::wstring> lines;
    if (maxLines == 0) return lines;
    std::wstring text;
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (bytes.size() >= 2 && ((byte(0) == 0xFF && byte(1) == 0xFE) || (byte(0) == 0xFE && byte(1) == 0xFF))) {
        const bool little = byte(0) == 0xFF;
        // Only as much as the lines asked for can need: a header is short.
        const size_t units = (bytes.size() - 2) / 2;
        text.reserve(units);
        for (size_t i = 0; i < units; ++i) {
            const unsigned a = byte(2 + 2 * i), b = byte(3 + 2 * i);
            text.push_back(static_cast<wchar_t>(little ? (a | (b << 8)) : ((a << 8) | b)));
        }
    } else {
        if (bytes.size() >= 3 && byte(0) == 0xEF && byte(1) == 0xBB && byte(2) == 0xBF) bytes.remove_prefix(3);
        text = qv::Utf8ToWide(bytes);
    }
    SplitLines(text, maxLines, lines);
    return lines;
}

namespace {

uint32_t U32(std::string_view b, size_t at) {
    return static_cast<uint32_t>(static_cast<unsigned char>(b[at])) |
           static_cast<uint32_t>(static_cast<unsigned char>(b[at + 1])) << 8 |
           static_cast<uint32_t>(static_cast<unsigned char>(b[at + 2])) << 16 |
           static_cast<uint32_t>(static_cast<unsigned char>(b[at + 3])) << 24;
}
uint16_t U16(std::string_view b, size_t at) {
    return static_cast<uint16_t>(static_cast<unsigned char>(b[at]) | static_cast<unsigned char>(b[at + 1]) << 8);
}
void Put32(unsigned char* at, uint32_t v) {
    for (int i = 0; i < 4; ++i) at[i] = static_cast<unsigned char>((v >> (8 * i)) & 0xFF);
}
void Put16(unsigned char* at, uint16_t v) {
    at[0] = static_cast<unsigned char>(v & 0xFF);
    at[1] = static_cast<unsigned char>(v >> 8);
}

constexpr uint32_t kRgb = 0, kBitFields = 3;  // the compression codes read

}  // namespace

bool ParseBmp(std::string_view file, PackedDib& dib) {
    constexpr size_t kFileHeader = 14;
    if (file.size() < kFileHeader + 40 || file[0] != 'B' || file[1] != 'M') return false;
    const size_t offBits = U32(file, 10);
    const size_t headerSize = U32(file, 14);
    if (headerSize < 40 || headerSize > 1024 || kFileHeader + headerSize > file.size()) return false;
    const long width = static_cast<int32_t>(U32(file, 18));
    const long height = static_cast<int32_t>(U32(file, 22));
    const unsigned planes = U16(file, 26);
    const unsigned bitCount = U16(file, 28);
    const uint32_t compression = U32(file, 30);
    uint32_t colours = U32(file, 46);
    if (width <= 0 || width > kMaxBitmapSide || height == 0 || height < -kMaxBitmapSide || height > kMaxBitmapSide ||
        planes != 1)
        return false;
    switch (bitCount) {
    case 1: case 4: case 8: case 16: case 24: case 32: break;
    default: return false;
    }
    const bool bitFields = compression == kBitFields;
    if (compression != kRgb && !(bitFields && (bitCount == 16 || bitCount == 32))) return false;
    if (bitCount <= 8) {
        if (colours == 0 || colours > (1u << bitCount)) colours = 1u << bitCount;
    } else {
        colours = 0;  // a colour table beside true colours only helps palette screens
    }
    // The masks follow a 40-byte header; the larger headers hold them at
    // the same place, inside.
    const size_t masksBytes = bitFields ? 12 : 0;
    const size_t coloursAt = kFileHeader + headerSize + (headerSize == 40 ? masksBytes : 0);
    const size_t coloursBytes = size_t{colours} * 4;
    const size_t rows = static_cast<size_t>(height < 0 ? -height : height);
    const size_t stride = ((static_cast<size_t>(width) * bitCount + 31) / 32) * 4;
    const size_t imageBytes = stride * rows;
    if (imageBytes > kMaxBitmapFile || coloursAt + coloursBytes > file.size()) return false;
    if (offBits < coloursAt + coloursBytes || offBits > file.size() || file.size() - offBits < imageBytes) return false;

    PackedDib out;
    out.bitsOffset = 40 + masksBytes + coloursBytes;
    out.width = static_cast<int>(width);
    out.height = static_cast<int>(rows);
    out.bitCount = static_cast<int>(bitCount);
    out.bytes.assign(out.bitsOffset + imageBytes, 0);
    unsigned char* h = out.bytes.data();
    Put32(h, 40);                                    // size of the header
    Put32(h + 4, static_cast<uint32_t>(width));
    Put32(h + 8, static_cast<uint32_t>(rows));      // bottom-up, whatever the file had
    Put16(h + 12, 1);                                // planes
    Put16(h + 14, static_cast<uint16_t>(bitCount));
    Put32(h + 16, compression);
    Put32(h + 20, static_cast<uint32_t>(imageBytes));
    Put32(h + 32, colours);                          // colours used (resolution and "important" stay 0)
    if (masksBytes) std::copy_n(file.data() + kFileHeader + 40, masksBytes, out.bytes.data() + 40);
    if (coloursBytes) std::copy_n(file.data() + coloursAt, coloursBytes, out.bytes.data() + 40 + masksBytes);
    const char* pixels = file.data() + offBits;
    unsigned char* target = out.bytes.data() + out.bitsOffset;
    if (height > 0) {
        std::copy_n(pixels, imageBytes, target);
    } else {
        for (size_t r = 0; r < rows; ++r) std::copy_n(pixels + (rows - 1 - r) * stride, stride, target + r * stride);
    }
    dib = std::move(out);
    return true;
}

bool IsHtmlFirstLine(std::wstring_view line) { return line.substr(0, 6) == L"<html "; }

Office DetectOfficePage(const std::vector<std::wstring>& lines) {
    static constexpr const wchar_t* kVml = L"<html xmlns:v=\"urn:schemas-microsoft-com:vml\"";
    static constexpr const wchar_t* kOffice = L"xmlns:o=\"urn:schemas-microsoft-com:office:office\"";
    static constexpr const wchar_t* kWord = L"xmlns:w=\"urn:schemas-microsoft-com:office:word\"";
    static constexpr const wchar_t* kExcel = L"xmlns:x=\"urn:schemas-microsoft-com:office:excel\"";
    if (lines.size() < 3) return Office::None;
    if (!EqualNoCase(Trim(lines[0]), kVml)) return Office::None;
    if (!EqualNoCase(Trim(lines[1]), kOffice)) return Office::None;
    const std::wstring_view third = Trim(lines[2]);
    if (EqualNoCase(third, kWord)) return Office::WordPage;
    if (EqualNoCase(third, kExcel)) return Office::SpreadSheet;
    return Office::None;
}

std::wstring_view OfficeExtension(Office office) {
    switch (office) {
    case Office::WordPage: return L"doc";
    case Office::SpreadSheet: return L"xls";
    case Office::None: break;
    }
    return {};
}

std::wstring OfficeFileName(std::wstring_view path, Office office) {
    return NameWithExtension(path, OfficeExtension(office));
}

std::wstring NameWithExtension(std::wstring_view path, std::wstring_view ext) {
    std::wstring_view name = path.substr(NameStart(path));
    if (ext.empty() || name.empty()) return {};
    const size_t dot = name.rfind(L'.');
    if (dot != std::wstring_view::npos && dot > 0) name = name.substr(0, dot);
    std::wstring result(name);
    result += L'.';
    result += ext;
    return result;
}

std::wstring BrowserCommandLine(std::wstring_view registered, std::wstring_view file) {
    std::wstring_view command = Trim(registered);
    if (command.empty()) return {};
    const size_t placeholder = command.find(L"%1");
    if (placeholder != std::wstring_view::npos) {
        size_t cut = placeholder;
        // A quoted "%1" goes with its opening quote, or the command would
        // end inside an open quote.
        if (cut > 0 && command[cut - 1] == L'"') --cut;
        command = Trim(command.substr(0, cut));
    }
    std::wstring line(command);
    line += L' ';
    line += file;
    return line;
}

}  // namespace qv::viewer
