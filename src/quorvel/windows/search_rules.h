// The rules of the file and folder search fields, without a window: where
// the edit and the buttons go, what a WM_GETTEXT answers, how a typed path
// becomes the name the file system is asked about, how a system error
// message is shown in the field, and the messages of a failed "open".
//
// Private to the library: the window classes (search_field.h) turn these
// answers into window positions, file-system calls and edit texts.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "quorvel/common/box.h"
#include "quorvel/common/dpi_rules.h"

namespace qv::search {

// At 96 DPI the buttons are kButton wide; the edit leaves kEditGap to the
// first one and the file-open field's two buttons sit side by side with
// kButtonGap between them. At any other DPI each of these is scaled.
inline constexpr int kButton = 25;
inline constexpr int kEditGap = 2;
inline constexpr int kButtonGap = 4;

// The children of a field `width` x `height` drawn at `dpi`: all as high as
// the field and at its top. Without an open button the browse button is the
// last one.
struct Layout {
    Box edit;
    Box browse;
    Box open;  // empty without an open button
};
Layout LayOut(int width, int height, bool openButton, unsigned dpi = kBaseDpi) noexcept;

// What WM_GETTEXT with a buffer of `size` characters does for a text of
// `length` characters: `copy` characters go into the buffer, followed by the
// terminator, and the message answers `answer`. The count is one more than
// the characters a host gets, as hosts of these fields expect (a buffer of
// 10 for a 4-character text answers 5). A text longer than the buffer gives
// size - 1 characters. A text exactly as long as the buffer is counted whole
// (size + 1) but only size - 1 characters are copied, so the terminator
// still lands inside the buffer.
struct TextAnswer {
    std::size_t copy = 0;
    long long answer = 0;
};
TextAnswer AnswerGetText(std::size_t length, std::size_t size) noexcept;

// The kind of path a user typed.
enum class PathKind {
    Empty,      // nothing (only blanks count as something: a name may start with one)
    Relative,   // "docs\\a.txt", "C:docs", "\\docs" (relative to a drive or folder)
    Drive,      // "C:\\..."
    Unc,        // "\\\\server\\share\\..."
    Extended,   // "\\\\?\\C:\\..." or "\\\\?\\UNC\\server\\share\\..."
    Device,     // "\\\\.\\..." (a device, never a file of a field)
};
PathKind ClassifyPath(std::wstring_view path) noexcept;

// The longest name the file system takes without the long-path form
// (MAX_PATH less its terminator) and the longest folder name that still
// leaves room for an 8.3 file name inside it.
inline constexpr std::size_t kMaxPlainPath = 259;
inline constexpr std::size_t kMaxPlainFolder = 247;

// The name to ask the file system about for a full path (Drive or Unc):
// paths up to `plainLimit` characters stay as they are; longer ones get the
// long-path form ("\\\\?\\C:\\..." or "\\\\?\\UNC\\server\\..."), with '/'
// turned into '\\' and repeated separators, "." and ".." folded, because
// that form is passed on unparsed. Other kinds are answered unchanged (the
// caller makes relative paths full first; a long-path form is taken as
// typed).
std::wstring FileSystemName(std::wstring_view fullPath, std::size_t plainLimit = kMaxPlainPath);

// The search pattern that asks whether `folder` exists: "\\*.*" appended,
// also after a trailing backslash ("C:\\" searches "C:\\\\*.*", which the
// file system reads as "C:\\*.*").
std::wstring FolderSearchPattern(std::wstring_view folder);

// A system message as the field shows it: up to its first CR or LF (the
// system's texts end in a line break), blanks at the end dropped.
std::wstring FirstLine(std::wstring_view message);

// The folder to open a browse dialog in for a field's text when the text
// names a file: everything before the last separator ("C:\\a\\b.txt" gives
// "C:\\a", "C:\\b.txt" gives "C:\\"); empty when there is none.
std::wstring ParentFolder(std::wstring_view path);


}  // namespace qv::search
