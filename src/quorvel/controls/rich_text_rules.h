// The rules of the rich text field's context menu, without a window: its
// entries and command ids in menu order, which entries are enabled for a
// given selection and state, which character or paragraph change each
// formatting command makes, and the font-size text of the size dialog.
//
// Private to the library: the window classes (rich_text.h) read the
// control's state, ask these functions, and carry the answers out on the
// real rich edit control.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace qv::richtext {

// Command ids of the menu. The edit commands use the ids hosts know from
// their framework's Edit menu, so a host's own handlers see familiar ids.
enum Command : unsigned {
    kUndo = 57643,
    kCut = 57635,
    kCopy = 57634,
    kPaste = 57637,
    kClear = 57632,
    kSelectAll = 57642,
    kBold = 12340,
    kItalic = 12341,
    kUnderlined = 12342,
    kAlignLeft = 12343,
    kAlignCenter = 12344,
    kAlignRight = 12345,
    kBullets = 12346,
    kTextColor = 12347,
    kFontName = 12348,
    kFontSize = 12349,
};

// The number of commands (each has one enable flag).
inline constexpr int kCommandCount = 16;

// One line of the menu: a command with its English source text, or a
// separator (id 0, text null).
struct MenuLine {
    unsigned id;
    const char* text;
    bool IsSeparator() const noexcept { return id == 0; }
};

// The menu, top to bottom: 16 commands and 5 separators.
inline constexpr std::array<MenuLine, 21> kMenu{{
    {kUndo, "Undo"},
    {kCut, "Cut"},
    {kCopy, "Copy"},
    {kPaste, "Paste"},
    {kClear, "Clear"},
    {kSelectAll, "Select All"},
    {0, nullptr},
    {kBold, "Bold"},
    {kItalic, "Italic"},
    {kUnderlined, "Underlined"},
    {0, nullptr},
    {kAlignLeft, "Align Left"},
    {kAlignCenter, "Align Center"},
    {kAlignRight, "Align Right"},
    {0, nullptr},
    {kBullets, "Bullets"},
    {0, nullptr},
    {kTextColor, "Text Color..."},
    {0, nullptr},
    {kFontName, "Font Name..."},
    {kFontSize, "Font Size..."},
}};

// The index of a command's enable flag (0..15, menu order), or -1 for an
// id that is not one of the menu's.
int FlagIndex(unsigned id) noexcept;

// What the menu is built from.
struct MenuState {
    long selStart = 0;
    long selEnd = 0;
    bool textEmpty = true;
    bool canUndo = false;
    bool canPaste = false;
    // A read-only field offers only what leaves its text alone: Copy and
    // Select All. An editable field offers the formatting entries from
    // Bullets on whatever the selection.
    bool readOnly = false;
};

// A selection counts as text when its end is not negative and differs from
// its start.
bool HasSelection(long start, long end) noexcept;

// The enable flags, one per command in menu order.
std::array<bool, kCommandCount> EnableFlags(const MenuState& state) noexcept;

// Whether a command may run on a field with that read-only state: on a
// read-only field only Copy and Select All do, so a command sent by other
// means than the menu cannot change the text or its formatting either.
bool MayRun(unsigned id, bool readOnly) noexcept;

// What a formatting command changes.
enum class Change {
    None,        // not a formatting command
    Bold,        // character effect, toggled
    Italic,      // character effect, toggled
    Underline,   // character effect, toggled
    AlignLeft,   // paragraph alignment, set
    AlignCenter,
    AlignRight,
    Bullets,     // paragraph numbering with bullets, toggled
};

Change ChangeFor(unsigned id) noexcept;

// The new state of a toggled effect: on, unless the whole selection has it
// already (`uniform`: the control reports one state for all of it, `on`:
// that state). A mixed selection is switched on throughout, as word
// processors do.
bool ToggledOn(bool uniform, bool on) noexcept;

// The font-size dialog's text. Sizes are points with at most one decimal
// place (',' or '.'), blanks around allowed, from kMinPoints to kMaxPoints;
// the answer is in twips (1/20 point), what the rich edit control stores.
inline constexpr int kMinPoints = 1;
inline constexpr int kMaxPoints = 1638;
std::optional<long> ParseFontSize(std::wstring_view text) noexcept;
// Twips as the dialog shows them: "12", "10.5" (to one decimal place).
std::wstring FormatFontSize(long twips);

}  // namespace qv::richtext
