// The texts of the context-help labels: how a help string splits into the
// tooltip text and the help document, what the tooltip of a label and of a
// prompt says, how long a label's tooltip stays up, which target F1 opens,
// and how a prompt turns its line feeds into line ends an edit shows.
//
// A help string is free text, optionally followed by a document reference
// "<document>" + document + "</document>". The document is a file name
// inside the user's help folder, or a web address containing "http://".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qv {

inline constexpr std::wstring_view kDocumentTag = L"<document>";
inline constexpr std::wstring_view kDocumentEndTag = L"</document>";

// The hints the labels add to a tooltip whose help string names a document
// (English source texts; the window layer passes them through translation).
inline constexpr std::wstring_view kStaticHelpHint = L"<For more help press F1>";
inline constexpr std::wstring_view kPromptHelpHint = L"Press F1 for more info...";

struct ToolString {
    std::wstring tooltip;
    std::wstring document;
    bool operator==(const ToolString&) const = default;
};

// The label's split: the text before "<document>", and what follows the tag
// up to "</document>" (empty without the closing tag).
ToolString ParseToolString(std::wstring_view source);

// The label's tooltip text: a label with a document tells the user to press
// F1 (" " + hint after the help text).
std::wstring StaticTooltipText(const ToolString& parsed, std::wstring_view hint = kStaticHelpHint);

// A label shows a tooltip only for a text that is neither empty nor a
// single blank.
bool ShowsStaticTooltip(std::wstring_view text) noexcept;

// How long a label's tooltip stays up (ms), from the configured popup time:
// 5000 when the setting is 0; otherwise the setting times 1000 (32-bit
// unsigned) capped at 30, where the cap is compared in milliseconds, so a
// real setting always gives 30000 and only a product that wraps round to a
// value of at most 30 is used as it is.
std::uint32_t StaticAutoPopDelay(std::uint32_t popupTime) noexcept;

// What F1 over a label opens: a web address as it is, a file name joined to
// the help folder with no separator added (the folder is expected to end in
// one). No document: "" (F1 does nothing).
std::wstring HelpTarget(std::wstring_view document, std::wstring_view helpFolder);

// The prompt's tooltip and context-help file.
struct PromptHelp {
    std::wstring tooltipText;
    std::wstring contextHelpFile;
    bool operator==(const PromptHelp&) const = default;
};

// Without "<document>" the help string is the tooltip text. With it at
// position p, the document is what lies between the tag and the next "<"
// (empty when none follows), and the tooltip is the first p characters,
// a line break and the hint in red, right-aligned; a help string that
// starts with the tag gives the red hint alone.
PromptHelp PromptTooltip(std::wstring_view source, std::wstring_view hint = kPromptHelpHint);

// A prompt's line feeds become carriage return + line feed, as a multi-line
// edit needs them. A line feed at position 0 or 1 makes the text "\r\n" plus
// what follows it, so in "A\nB" the "A" is lost ("\r\nB"); later line feeds
// get a carriage return inserted unless one is already there.
std::wstring PromptLineEnds(std::wstring text);

// The name a screen reader announces for a label or prompt text: the text
// before any "<document>" reference, without its '&' mnemonic markers ("&&"
// stays one '&'), line ends and runs of blanks made one blank, and without
// the trailing "*" that marks a mandatory field (the star is drawn for the
// eye; read aloud it is noise). Mark-up is not removed here: a label shows
// its text as it is, '<' included.
std::wstring AccessibleLabelName(std::wstring_view text);

}  // namespace qv
