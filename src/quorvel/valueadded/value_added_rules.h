// The value-added control's rules without a window: the value string the
// form stores, the records it holds, the 100 % cap, the roll-up of children
// into their group, the rows the list shows, which cells may be edited and
// how they are coloured, and the list's lengths at any DPI.
//
// Private to the library: the control (value_added.h) asks here. Kept free
// of <windows.h> so that it is tested, fuzzed and measured natively.
//
// Integers are 32-bit on every platform here (the Windows `long`), so a
// value string reads and writes the same on both sides.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "quorvel/common/dpi_rules.h"

namespace qv::valueadded {

// A row's entry code: the parent group's id in the low 16 bits (0 for a
// group) and the entry's own id in the high 16 bits.
using EntryCode = std::int32_t;
constexpr EntryCode MakeEntryCode(std::int32_t parentId, std::int32_t id) noexcept {
    return static_cast<EntryCode>((static_cast<std::uint32_t>(parentId) & 0xFFFFu) |
                                  (static_cast<std::uint32_t>(id) << 16));
}

// One group's or child's figures.
struct ValueAddedEntry {
    std::int32_t FP = 0;   // form position ("FORMPOS")
    std::int32_t SID = 0;  // the entry's own id ("SUBGROUPID")
    std::int32_t PID = 0;  // the parent group's id, 0 for a group ("PARENTID")
    double TE = 0.0;       // entered time, seconds ("TIMEENTERED")
    double PE = 0.0;       // entered percent ("PERCENTENTERED")
    double TC = 0.0;       // calculated time, seconds ("TIMECALCULATED")
    double PC = 0.0;       // calculated percent ("PERCENTCALCULATED")
    bool operator==(const ValueAddedEntry&) const = default;
};

// The records of a control, in ascending entry code.
using EntryMap = std::map<EntryCode, ValueAddedEntry>;

// ---- The value string ---------------------------------------------------------------
//
// One record per entry, joined by "|":
//   [FP:1][SID:3][PID:1][TE:120.000000][PE:12.500000][TC:0.000000][PC:0.000000]
// Each field is looked for by its short tag and then by its long name
// ("[FORMPOS:1]" reads like "[FP:1]"); its text runs from the ':' to the
// next ']'. Numbers are read the way the C runtime's atol/atof read them,
// always with '.' as decimal separator whatever the user's locale (the
// string is storage, not display): leading blanks and a sign, the longest
// number that follows, anything after it ignored, no number at all reads as
// 0. Integers beyond the 32-bit range read as its nearest end; a number too
// large for a double reads as infinity; "nan" and "inf" are numbers. Fields
// are written with "%ld" and "%f" (six decimals, '.'), non-finite numbers
// as "nan", "inf" and "-inf", so a string the control wrote reads back to
// the same records and writes again to the same text.

// Reads one record; false when any of its seven fields is missing under
// both names or has an empty text (`out` is then unspecified).
bool ParseRecord(std::wstring_view piece, ValueAddedEntry& out);

// Reads a value string into `entries`, which holds a record for every
// configured group and child: a record replaces the one of its entry code
// (from its PID and SID); a record of a code not in `entries` is ignored.
// Empty pieces are skipped. False as soon as a piece lacks a field; the
// records read before it stay replaced.
bool ParseValueString(std::wstring_view value, EntryMap& entries);

// The value string of `entries`, in ascending entry code.
std::wstring WriteValueString(const EntryMap& entries);
void AppendRecord(std::wstring& out, const ValueAddedEntry& entry);

// "%.*f" with '.' (the list's cells); decimals are kept to 0..15, and a
// value that rounds to zero has no minus sign.
std::wstring FormatFixed(double value, int decimals);

// ---- The cap and the roll-up -------------------------------------------------------

// The configuration as far as the rules need it: every group in order with
// its children in order.
struct ConfigChild {
    std::int32_t id = 0;
    std::wstring name;
    bool shown = true;  // a child that is not shown gets no row
};
struct ConfigGroup {
    std::int32_t id = 0;
    std::wstring name;
    std::vector<ConfigChild> children;
};
using Config = std::vector<ConfigGroup>;

// A zeroed record (SID and PID set) for every group and child of `config`.
EntryMap BlankEntries(const Config& config);

// Whether `entry` counts towards the cap: every record except a group
// whose configuration has children (its percent is their sum).
bool CountsTowardsCap(const ValueAddedEntry& entry, const Config& config);

// 100 - the entered percents of every counting record other than `code`.
double MaxAssignable(const EntryMap& entries, EntryCode code, const Config& config);

// What becomes of an entered value.
enum class EditOutcome {
    NoChange,    // no record, or the value equals the entered percent
    OutOfRange,  // above the maximum and above the value before: refused
    Accepted,
};
// Decides an edit of record `code` to `value`. A value above what is
// assignable is refused unless it lowers the entry (a decrease is always
// taken, even while the sum is above 100). The maximum is compared with a
// tolerance of 1e-9, far below the six decimals a value keeps, so that
// typing exactly the maximum the message showed is taken whatever the
// binary rounding of the sum.
EditOutcome DecideEdit(const EntryMap& entries, EntryCode code, double value, const Config& config,
                       double* maxOut = nullptr);

// Takes an accepted edit: PE = value, TE = total / 100 * PE; a child's
// group record (made if missing) gets the sums of its children's PE and
// TE. False when `code` has no record.
bool ApplyEdit(EntryMap& entries, EntryCode code, double value, double totalTime);

// ---- Rows ------------------------------------------------------------------------------

struct RowTexts {
    bool hasCode = false;  // false only for the "Not Assigned" row
    EntryCode code = 0;
    bool group = false;
    int image = -1;  // 0 group, 1 child, -1 none
    std::wstring name;
    std::wstring pe, te, pc, tc;
};

// The rows in order: each group, then its shown children (name indented by
// four blanks), then the "Not Assigned" row named `notAssigned`, showing
// 100 - the counting records' entered (and calculated) percents, and that
// share of `totalTime`. `images`: whether rows carry their images.
std::vector<RowTexts> BuildRows(const Config& config, const EntryMap& entries, double totalTime,
                               int percentDecimals, int timeDecimals, bool images,
                               const std::wstring& notAssigned);

// Whether a row opens the editor: a child, or a group without children that
// is not the excluded group.
bool IsEditableRow(const ValueAddedEntry& entry, const Config& config, std::int32_t excludedGroup);

// ---- Geometry and colours -------------------------------------------------------------

// The column whose span [left, left + width] (both ends included) holds x,
// adding the widths from `rowLeft`; -1 when none.
int ColumnAt(int x, int rowLeft, const std::vector<int>& widths);

// The in-place editor's horizontal extent within the client area.
struct EditSpan {
    int scroll = 0;  // horizontal scroll needed first (0: none)
    int left = 0;
    int right = 0;
};
// `rowLeft` is the row's left edge (negative when scrolled), `offset` the
// sum of the widths before the column. A column starting outside
// [0, clientWidth] is scrolled into view first. The field starts 4 pixels
// in from the cell's left edge, where the cell's text starts, and is 3
// pixels narrower than the column (both at 96 DPI, scaled to `dpi`).
EditSpan EditSpanFor(int rowLeft, int offset, int columnWidth, int clientWidth, unsigned dpi = kBaseDpi);

// The narrowest column the field opens on: 5 pixels at 96 DPI, scaled.
int MinEditColumnWidth(unsigned dpi) noexcept;

// The columns' widths: 20 (pictures), 200 (names) and 145 for each of the
// four figures at 96 DPI, scaled to `dpi`.
inline constexpr int kColumnCount = 6;
inline constexpr int kColumnWidths96[kColumnCount] = {20, 200, 145, 145, 145, 145};
int ColumnWidthForDpi(int column, unsigned dpi) noexcept;

// The rows' pictures: 18 x 17 pixel bitmaps, each shown in a slot of that
// size at 96 DPI scaled to the list's DPI, enlarged only by whole multiples
// (pixel for pixel, centred in the slot), so a picture stays sharp and the
// rows and the picture column grow with the text.
struct PictureSize {
    int cx = 0;
    int cy = 0;
    bool operator==(const PictureSize&) const = default;
};
inline constexpr PictureSize kPicture96{18, 17};
PictureSize PictureSlotForDpi(unsigned dpi) noexcept;

enum class CellBack { Default, EditColumn, Light };
enum class CellText { Default, WindowText, GrayText };
struct CellColours {
    CellBack back = CellBack::Default;
    CellText text = CellText::Default;
};
// The entered-percent column has its own background; the others alternate
// by the group's number (odd groups light), and a group with children has
// its name in the window text colour and its figures grey.
CellColours ColoursFor(int column, const ValueAddedEntry* entry, bool groupWithChildren);

}  // namespace qv::valueadded
