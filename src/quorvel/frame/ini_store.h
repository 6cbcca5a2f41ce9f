// In-memory settings store read from INI text.
//
// Text format:
//  - Lines end with LF, CRLF or CR; a leading U+FEFF is ignored. Spaces and
//    tabs around a line, a section name, a value name and a value are trimmed.
//  - "[Section]" starts a section; lines before the first one belong to the
//    section "". "[]" names the section "" again.
//  - "name=value" splits at the first '='; the value is taken literally
//    (no quotes or inline comments are interpreted) and may be empty.
//  - Empty lines and lines starting with ';' or '#' are ignored.
//  - A later definition of the same name in the same section wins.
//  - Malformed lines (no '=', empty name, a '[' line not ending with ']') are
//    skipped. After a malformed section line, the lines up to the next valid
//    section line are skipped too, so they cannot land in the wrong section.
// Section and value names compare case-insensitively for ASCII letters; a
// name keeps the spelling it was first stored with.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace qv {

class IniStore {
public:
    void Set(std::wstring_view section, std::wstring_view name, std::wstring_view value);
    bool Get(std::wstring_view section, std::wstring_view name, std::wstring& value) const;

    // Adds the settings of `content` to the store (existing ones are kept
    // unless redefined). Returns false when a malformed line was skipped.
    bool Parse(std::wstring_view content);
    void Clear() { sections_.clear(); }

private:
    struct NoCaseLess {
        using is_transparent = void;
        bool operator()(std::wstring_view a, std::wstring_view b) const noexcept;
    };
    using Values = std::map<std::wstring, std::wstring, NoCaseLess>;
    std::map<std::wstring, Values, NoCaseLess> sections_;
};

}  // namespace qv
