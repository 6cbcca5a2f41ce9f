#include "quorvel/valueadded/value_added_rules.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

namespace qv::valueadded {

namespace {

bool IsBlank(wchar_t c) noexcept { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

// The text of field `tag` in `piece`: after "[" tag ":" up to the next "]".
bool FindField(std::wstring_view piece, std::wstring_view tag, std::wstring_view& text) {
    std::wstring open;
    open.reserve(tag.size() + 2);
    open += L'[';
    open += tag;
    open += L':';
    const size_t at = piece.find(open);
    if (at == std::wstring_view::npos) return false;
    const size_t start = at + open.size();
    const size_t end = piece.find(L']', start);
    if (end == std::wstring_view::npos || end == start) return false;
    text = piece.substr(start, end - start);
    return true;
}

bool FieldText(std::wstring_view piece, std::wstring_view shortTag, std::wstring_view longTag,
               std::wstring_view& text) {
    return FindField(piece, shortTag, text) || FindField(piece, longTag, text);
}

// atol: blanks, a sign, the digits that follow; beyond the 32-bit range the
// nearest end.
std::int32_t ReadInteger(std::wstring_view text) {
    size_t i = 0;
    while (i < text.size() && IsBlank(text[i])) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) negative = text[i++] == L'-';
    std::int64_t value = 0;
    constexpr std::int64_t kLimit = std::int64_t{1} << 32;
    for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9'; ++i) {
        value = value * 10 + (text[i] - L'0');
        if (value > kLimit) value = kLimit;  // stays beyond either end
    }
    if (negative) value = -value;
    value = std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                     std::numeric_limits<std::int32_t>::max());
    return static_cast<std::int32_t>(value);
}

// atof with '.': blanks, a sign, the longest number that follows ("nan" and
// "inf" included); no number reads as 0.
double ReadDouble(std::wstring_view text) {
    size_t i = 0;
    while (i < text.size() && IsBlank(text[i])) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) negative = text[i++] == L'-';
    std::string ascii;
    ascii.reserve(std::min<size_t>(text.size() - i, 512));
    for (; i < text.size() && text[i] > 0 && text[i] < 0x80; ++i) ascii += static_cast<char>(text[i]);
    if (ascii.empty() || ascii[0] == '+' || ascii[0] == '-') return 0.0;  // a second sign is no number
    double value = 0.0;
    const auto [end, error] = std::from_chars(ascii.data(), ascii.data() + ascii.size(), value);
    if (error == std::errc::invalid_argument) return 0.0;
    if (error == std::errc::result_out_of_range) {
        // Too large or too small for a double: infinity or zero, by the
        // sign of the exponent.
        const std::string_view number(ascii.data(), static_cast<size_t>(end - ascii.data()));
        const size_t e = number.find_first_of("eE");
        const bool tiny = e != std::string_view::npos && e + 1 < number.size() && number[e + 1] == '-';
        value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
    }
    return negative ? -value : value;
}

void AppendAscii(std::wstring& out, const char* first, const char* last) {
    for (; first != last; ++first) out += static_cast<wchar_t>(static_cast<unsigned char>(*first));
}

void AppendInteger(std::wstring& out, std::int32_t value) {
    char buffer[16];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    AppendAscii(out, buffer, result.ptr);
}

void AppendFixed(std::wstring& out, double value, int decimals) {
    if (std::isnan(value)) {
        out += L"nan";
        return;
    }
    if (std::isinf(value)) {
        out += value < 0 ? L"-inf" : L"inf";
        return;
    }
    char buffer[400];  // the largest double has 309 integer digits
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    if (result.ec != std::errc()) return;
    AppendAscii(out, buffer, result.ptr);
}

bool GroupHasChildren(const Config& config, std::int32_t groupId) {
    for (const auto& group : config)
        if (group.id == groupId) return !group.children.empty();
    return false;
}

}  // namespace

// ---- The value string ---------------------------------------------------------------

bool ParseRecord(std::wstring_view piece, ValueAddedEntry& out) {
    std::wstring_view fp, sid, pid, te, pe, tc, pc;
    if (!FieldText(piece, L"FP", L"FORMPOS", fp) || !FieldText(piece, L"SID", L"SUBGROUPID", sid) ||
        !FieldText(piece, L"PID", L"PARENTID", pid) || !FieldText(piece, L"TE", L"TIMEENTERED", te) ||
        !FieldText(piece, L"PE", L"PERCENTENTERED", pe) || !FieldText(piece, L"TC", L"TIMECALCULATED", tc) ||
        !FieldText(piece, L"PC", L"PERCENTCALCULATED", pc))
        return false;
    out.FP = ReadInteger(fp);
    out.SID = ReadInteger(sid);
    out.PID = ReadInteger(pid);
    out.TE = ReadDouble(te);
    out.PE = ReadDouble(pe);
    out.TC = ReadDouble(tc);
    out.PC = ReadDouble(pc);
    return true;
}

bool ParseValueString(std::wstring_view value, EntryMap& entries) {
    size_t start = 0;
    while (start <= value.size()) {
        size_t end = value.find(L'|', start);
        if (end == std::wstring_view::npos) end = value.size();
        const std::wstring_view piece = value.substr(start, end - start);
        if (!piece.empty()) {
            ValueAddedEntry record;
            if (!ParseRecord(piece, record)) return false;
            const auto found = entries.find(MakeEntryCode(record.PID, record.SID));
            if (found != entries.end()) found->second = record;
        }
        start = end + 1;
    }
    return true;
}

void AppendRecord(std::wstring& out, const ValueAddedEntry& entry) {
    out += L"[FP:";
    AppendInteger(out, entry.FP);
    out += L"][SID:";
    AppendInteger(out, entry.SID);
    out += L"][PID:";
    AppendInteger(out, entry.PID);
    out += L"][TE:";
    AppendFixed(out, entry.TE, 6);
    out += L"][PE:";
    AppendFixed(out, entry.PE, 6);
    out += L"][TC:";
    AppendFixed(out, entry.TC, 6);
    out += L"][PC:";
    AppendFixed(out, entry.PC, 6);
    out += L']';
}

std::wstring WriteValueString(const EntryMap& entries) {
    std::wstring out;
    out.reserve(entries.size() * 96);
    bool first = true;
    for (const auto& [code, entry] : entries) {
        if (!first) out += L'|';
        first = false;
        AppendRecord(out, entry);
    }
    return out;
}

std::wstring FormatFixed(double value, int decimals) {
    std::wstring out;
    AppendFixed(out, value, std::clamp(decimals, 0, 15));
    // A sum that misses zero by a binary rounding shows as "0.00", not "-0.00".
    if (out.size() > 1 && out[0] == L'-' && out.find_first_not_of(L"0.", 1) == std::wstring::npos) out.erase(0, 1);
    return out;
}

// ---- The cap and the roll-up -------------------------------------------------------

EntryMap BlankEntries(const Config& config) {
    EntryMap entries;
    for (const auto& group : config) {
        ValueAddedEntry record;
        record.SID = group.id;
        entries[MakeEntryCode(0, group.id)] = record;
        for (const auto& child : group.children) {
            ValueAddedEntry childRecord;
            childRecord.SID = child.id;
            childRecord.PID = group.id;
            entries[MakeEntryCode(group.id, child.id)] = childRecord;
        }
    }
    return entries;
}

bool CountsTowardsCap(const ValueAddedEntry& entry, const Config& config) {
    return entry.PID != 0 || !GroupHasChildren(config, entry.SID);
}

double MaxAssignable(const EntryMap& entries, EntryCode code, const Config& config) {
    double sum = 0.0;
    for (const auto& [other, entry] : entries)
        if (other != code && CountsTowardsCap(entry, config)) sum += entry.PE;
    return 100.0 - sum;
}

EditOutcome DecideEdit(const EntryMap& entries, EntryCode code, double value, const Config& config,
                       double* maxOut) {
    const auto found = entries.find(code);
    if (found == entries.end() || value == found->second.PE) return EditOutcome::NoChange;
    const double max = MaxAssignable(entries, code, config);
    if (maxOut) *maxOut = max;
    // Written so that a NaN is refused rather than taken.
    if (!(value <= max + 1e-9) && !(value < found->second.PE)) return EditOutcome::OutOfRange;
    return EditOutcome::Accepted;
}

bool ApplyEdit(EntryMap& entries, EntryCode code, double value, double totalTime) {
    const auto found = entries.find(code);
    if (found == entries.end()) return false;
    ValueAddedEntry& entry = found->second;
    entry.PE = value;
    entry.TE = totalTime / 100.0 * entry.PE;
    if (entry.PID > 0) {
        const std::int32_t parentId = entry.PID;
        double pe = 0.0, te = 0.0;
        for (const auto& [other, child] : entries) {
            if (child.PID == parentId) {
                pe += child.PE;
                te += child.TE;
            }
        }
        ValueAddedEntry& parent = entries[MakeEntryCode(0, parentId)];
        parent.SID = parentId;
        parent.PID = 0;
        parent.PE = pe;
        parent.TE = te;
    }
    return true;
}

// ---- Rows ------------------------------------------------------------------------------

std::vector<RowTexts> BuildRows(const Config& config, const EntryMap& entries, double totalTime,
                               int percentDecimals, int timeDecimals, bool images,
                               const std::wstring& notAssigned) {
    std::vector<RowTexts> rows;
    size_t count = 1;
    for (const auto& group : config) count += 1 + group.children.size();
    rows.reserve(count);

    auto figures = [&](RowTexts& row, const ValueAddedEntry* entry) {
        const ValueAddedEntry zero;
        if (!entry) entry = &zero;
        row.pe = FormatFixed(entry->PE, percentDecimals);
        row.te = FormatFixed(entry->TE, timeDecimals);
        row.pc = FormatFixed(entry->PC, percentDecimals);
        row.tc = FormatFixed(entry->TC, timeDecimals);
    };
    auto recordOf = [&](EntryCode code) -> const ValueAddedEntry* {
        const auto found = entries.find(code);
        return found == entries.end() ? nullptr : &found->second;
    };

    for (const auto& group : config) {
        RowTexts row;
        row.hasCode = true;
        row.code = MakeEntryCode(0, group.id);
        row.group = true;
        row.image = images ? 0 : -1;
        row.name = group.name;
        figures(row, recordOf(row.code));
        rows.push_back(std::move(row));
        for (const auto& child : group.children) {
            if (!child.shown) continue;
            RowTexts childRow;
            childRow.hasCode = true;
            childRow.code = MakeEntryCode(group.id, child.id);
            childRow.image = images ? 1 : -1;
            childRow.name = L"    " + child.name;
            figures(childRow, recordOf(childRow.code));
            rows.push_back(std::move(childRow));
        }
    }

    double entered = 100.0, calculated = 100.0;
    for (const auto& [code, entry] : entries) {
        if (!CountsTowardsCap(entry, config)) continue;
        entered -= entry.PE;
        calculated -= entry.PC;
    }
    RowTexts rest;
    rest.name = notAssigned;
    rest.image = -1;
    rest.pe = FormatFixed(entered, percentDecimals);
    rest.te = FormatFixed(totalTime / 100.0 * entered, timeDecimals);
    rest.pc = FormatFixed(calculated, percentDecimals);
    rest.tc = FormatFixed(totalTime / 100.0 * calculated, timeDecimals);
    rows.push_back(std::move(rest));
    return rows;
}

bool IsEditableRow(const ValueAddedEntry& entry, const Config& config, std::int32_t excludedGroup) {
    if (entry.PID != 0) return true;
    return !GroupHasChildren(config, entry.SID) && entry.SID != excludedGroup;
}

// ---- Geometry and colours -------------------------------------------------------------

int ColumnAt(int x, int rowLeft, const std::vector<int>& widths) {
    long long left = rowLeft;
    for (size_t i = 0; i < widths.size(); ++i) {
        const long long right = left + widths[i];
        if (x >= left && x <= right) return static_cast<int>(i);
        left = right;
    }
    return -1;
}

EditSpan EditSpanFor(int rowLeft, int offset, int columnWidth, int clientWidth, unsigned dpi) {
    EditSpan span;
    const long long start = static_cast<long long>(offset) + rowLeft;
    if (start < 0 || start > clientWidth) {
        span.scroll = static_cast<int>(std::clamp<long long>(start, std::numeric_limits<int>::min(),
                                                             std::numeric_limits<int>::max()));
        rowLeft -= span.scroll;
    }
    span.left = rowLeft + offset + ScaleToDpi(4, dpi);
    span.right = span.left + columnWidth - ScaleToDpi(3, dpi);
    if (span.right > clientWidth) span.right = clientWidth;
    return span;
}

int MinEditColumnWidth(unsigned dpi) noexcept { return ScaleToDpi(5, dpi); }

int ColumnWidthForDpi(int column, unsigned dpi) noexcept {
    if (column < 0 || column >= kColumnCount) return 0;
    return ScaleToDpi(kColumnWidths96[column], dpi);
}

PictureSize PictureSlotForDpi(unsigned dpi) noexcept {
    return {ScaleToDpi(kPicture96.cx, dpi), ScaleToDpi(kPicture96.cy, dpi)};
}

CellColours ColoursFor(int column, const ValueAddedEntry* entry, bool groupWithChildren) {
    CellColours colours;
    if (column == 2) {
        colours.back = CellBack::EditColumn;
    } else if (entry) {
        const std::int32_t n = entry->PID >= 1 ? entry->PID : entry->SID;
        colours.back = (n % 2 != 0) ? CellBack::Light : CellBack::Default;
    }
    if (groupWithChildren) colours.text = column == 1 ? CellText::WindowText : CellText::GrayText;
    return colours;
}

}  // namespace qv::valueadded
