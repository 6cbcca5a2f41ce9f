// Fuzzes the value string: any text reads without hanging or crashing; what
// the control writes from the records it read reads back to the same text;
// an edit of any value under the cap keeps the roll-up sums.
//
// Input: one byte choosing an entry and the edited value's text, a 0xFF
// byte, then the value string as UTF-8.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quorvel/common/utf8.h"
#include "quorvel/valueadded/value_added_rules.h"

namespace va = qv::valueadded;

namespace {

const va::Config& Plan() {
    static const va::Config plan = {
        {1, L"a", {{11, L"b", true}, {12, L"c", false}}},
        {2, L"d", {}},
        {65537, L"e", {{-3, L"f", true}}},  // ids beyond 16 bits share codes
    };
    return plan;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    const std::string_view all(reinterpret_cast<const char*>(data + 1), size - 1);
    const size_t cut = all.find('\xFF');
    const std::wstring edited = qv::Utf8ToWide(all.substr(0, cut));
    const std::wstring value = cut == std::string_view::npos ? std::wstring() : qv::Utf8ToWide(all.substr(cut + 1));

    va::EntryMap entries = va::BlankEntries(Plan());
    const size_t known = entries.size();
    if (!va::ParseValueString(value, entries)) return 0;
    if (entries.size() != known) std::abort();  // unknown codes add nothing

    const std::wstring written = va::WriteValueString(entries);
    va::EntryMap again = va::BlankEntries(Plan());
    if (!va::ParseValueString(written, again)) std::abort();
    if (va::WriteValueString(again) != written) std::abort();

    // An edit of one entry to the value the edited text reads as.
    auto it = entries.begin();
    std::advance(it, data[0] % entries.size());
    va::ValueAddedEntry probe;
    const std::wstring record = L"[FP:0][SID:0][PID:0][TE:0][PE:" + (edited.empty() ? std::wstring(L"0") : edited) +
                                L"][TC:0][PC:0]";
    const double number = va::ParseRecord(record, probe) ? probe.PE : 0.0;
    if (va::DecideEdit(entries, it->first, number, Plan()) == va::EditOutcome::Accepted) {
        if (!va::ApplyEdit(entries, it->first, number, 3600.0)) std::abort();
        const va::ValueAddedEntry& entry = entries.at(it->first);
        if (entry.PID > 0) {
            double sum = 0.0;
            for (const auto& [code, child] : entries)
                if (child.PID == entry.PID) sum += child.PE;
            const double group = entries.at(va::MakeEntryCode(0, entry.PID)).PE;
            if (!(group == sum || (std::isnan(group) && std::isnan(sum)))) std::abort();
        }
    }
    va::BuildRows(Plan(), entries, 3600.0, data[0] % 20 - 2, data[0] % 7, true, L"x");
    return 0;
}
