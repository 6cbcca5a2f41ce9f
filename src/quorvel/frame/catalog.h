// Translation table supplied by the host application, used to translate the
// library's own user-visible English texts.
//
// Text format (the host decodes its file, UTF-8 or UTF-16, to a wide string):
//  - One entry per line: the English source text, one TAB, the translation.
//  - Lines end with LF, CRLF or CR. A leading U+FEFF (byte order mark) is
//    ignored. Lines holding nothing but spaces and tabs are ignored, and so
//    are lines whose first character is '#' (comments).
//  - Both columns are taken literally (no trimming) except for the escapes
//    \t (tab), \n (line feed), \r (carriage return), \\ (backslash) and
//    \# ('#', so that a source text can start with '#').
//  - A line with a problem is skipped and reported as "line N: <problem>":
//    no TAB or more than one, an unknown escape or a trailing backslash, an
//    empty source or translation, or a source already defined by an earlier
//    line (the first definition stays).
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qv {

class Catalog {
public:
    // Replaces the table with the entries of `content`. Problems are appended
    // to `errors` when given. Returns true when no line had a problem.
    bool Parse(std::wstring_view content, std::vector<std::wstring>* errors = nullptr);

    // The translation of `source`, or nullptr when the table has none.
    const std::wstring* Find(std::wstring_view source) const;

    std::size_t Size() const { return entries_.size(); }

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::wstring_view s) const noexcept {
            return std::hash<std::wstring_view>{}(s);
        }
    };
    std::unordered_map<std::wstring, std::wstring, Hash, std::equal_to<>> entries_;
};

}  // namespace qv
