#include "quorvel/windows/search_rules.h"

#include <algorithm>
#include <vector>

namespace qv::search {

namespace {

bool IsSeparator(wchar_t c) noexcept { return c == L'\\' || c == L'/'; }

bool IsDriveLetter(wchar_t c) noexcept { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); }

// Joins `root` and the components of `rest`, with "." dropped and ".."
// taking the previous component away (never the root).
std::wstring Folded(std::wstring root, std::wstring_view rest) {
    std::vector<std::wstring_view> parts;
    std::size_t i = 0;
    while (i <= rest.size()) {
        std::size_t j = i;
        while (j < rest.size() && !IsSeparator(rest[j])) ++j;
        const std::wstring_view part = rest.substr(i, j - i);
        if (part == L"..") {
            if (!parts.empty()) parts.pop_back();
        } else if (!part.empty() && part != L".") {
            parts.push_back(part);
        }
        i = j + 1;
    }
    for (std::size_t k = 0; k < parts.size(); ++k) {
        if (k > 0) root += L'\\';
        root.append(parts[k]);
    }
    // A path that named a folder with a trailing separator keeps it.
    if (!rest.empty() && IsSeparator(rest.back()) && !parts.empty()) root += L'\\';
    return root;
}

}  // namespace

Layout LayOut(int width, int height, bool openButton, unsigned dpi) noexcept {
    const int h = std::max(height, 0);
    const int button = ScaleToDpi(kButton, dpi), buttonGap = ScaleToDpi(kButtonGap, dpi);
    Layout l;
    if (openButton) {
        l.open = Box{width - button, 0, width, h};
        l.browse = Box{l.open.left - buttonGap - button, 0, l.open.left - buttonGap, h};
    } else {
        l.browse = Box{width - button, 0, width, h};
    }
    l.edit = Box{0, 0, std::max(l.browse.left - ScaleToDpi(kEditGap, dpi), 0), h};
    return l;
}

TextAnswer AnswerGetText(std::size_t length, std::size_t size) noexcept {
    if (size == 0) return {};
    const std::size_t counted = length > size ? size - 1 : length;
    return TextAnswer{std::min(counted, size - 1), static_cast<long long>(counted) + 1};
}

PathKind ClassifyPath(std::wstring_view path) noexcept {
    if (path.empty()) return PathKind::Empty;
    if (path.size() >= 4 && IsSeparator(path[0]) && IsSeparator(path[1]) && IsSeparator(path[3])) {
        if (path[2] == L'?') return PathKind::Extended;
        if (path[2] == L'.') return PathKind::Device;
    }
    if (path.size() >= 3 && IsSeparator(path[0]) && IsSeparator(path[1]) && !IsSeparator(path[2]))
        return PathKind::Unc;
    if (path.size() >= 3 && IsDriveLetter(path[0]) && path[1] == L':' && IsSeparator(path[2]))
        return PathKind::Drive;
    return PathKind::Relative;
}

std::wstring FileSystemName(std::wstring_view fullPath, std::size_t plainLimit) {
    const PathKind kind = ClassifyPath(fullPath);
    if (fullPath.size() <= plainLimit || (kind != PathKind::Drive && kind != PathKind::Unc))
        return std::wstring(fullPath);
    if (kind == PathKind::Drive) {
        std::wstring root = L"\\\\?\\";
        root += fullPath.substr(0, 2);
        root += L'\\';
        return Folded(std::move(root), fullPath.substr(3));
    }
    // \\server\share\rest: server and share are the root, never folded away.
    std::wstring_view rest = fullPath.substr(2);
    std::wstring root = L"\\\\?\\UNC\\";
    for (int part = 0; part < 2; ++part) {
        const auto end = std::find_if(rest.begin(), rest.end(), IsSeparator);
        if (end == rest.begin()) break;  // "\\\\server" without a share
        const std::wstring_view name(rest.data(), static_cast<std::size_t>(end - rest.begin()));
        // A server or share named "." or ".." is no place: the file system
        // gets the name as typed and says so itself.
        if (name == L"." || name == L"..") return std::wstring(fullPath);
        root.append(name);
        root += L'\\';
        rest = end == rest.end() ? std::wstring_view{} : rest.substr(static_cast<std::size_t>(end - rest.begin()) + 1);
        while (!rest.empty() && IsSeparator(rest.front())) rest.remove_prefix(1);
    }
    return Folded(std::move(root), rest);
}

std::wstring FolderSearchPattern(std::wstring_view folder) {
    std::wstring pattern(folder);
    pattern += L"\\*.*";
    return pattern;
}

std::wstring FirstLine(std::wstring_view message) {
    std::wstring_view line = message.substr(0, message.find_first_of(L"\r\n"));
    while (!line.empty() && (line.back() == L' ' || line.back() == L'\t')) line.remove_suffix(1);
    return std::wstring(line);
}

std::wstring ParentFolder(std::wstring_view path) {
    const std::size_t last = path.find_last_of(L"\\/");
    if (last == std::wstring_view::npos) return {};
    // "C:\b.txt" keeps the separator of the drive's root.
    if (last == 2 && ClassifyPath(path) == PathKind::Drive) return std::wstring(path.substr(0, 3));
    return std::wstring(path.substr(0, last));
}

}  // namespace qv::search
