// One cell-text request of the report list in the model alone: the column
// key of the requested sub-item (kept apart from the rows, as the header
// keeps it), the lookup in the row's map, and the text written into the
// display buffer. Rows of six values (texts, integers, doubles) in a list of
// 100 000 rows, requested in a scattered order as scrolling and printing
// do; a text value and a number that is formatted.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "quorvel/lists/list_rules.h"

namespace {

namespace ql = qv::lists;

using Value = std::variant<long, double, std::wstring>;
using Row = ql::RowMap<Value>;

void ToText(const Value& value, std::wstring& text) {
    if (const auto* s = std::get_if<std::wstring>(&value))
        text = *s;
    else if (const auto* l = std::get_if<long>(&value))
        text = std::to_wstring(*l);
    else
        text = std::to_wstring(std::get<double>(value));
}

struct List {
    std::vector<std::unique_ptr<int>> keys;  // by header item
    std::vector<std::unique_ptr<Row>> rows;  // by item
};

List MakeList(int rows) {
    List list;
    for (int c = 0; c < 6; ++c) list.keys.push_back(std::make_unique<int>(c));
    for (int r = 0; r < rows; ++r) {
        auto row = std::make_unique<Row>();
        for (int c = 0; c < 6; ++c) {
            if (c % 3 == 0)
                row->emplace(c, std::wstring(L"Item ") + std::to_wstring(r * 7 + c));
            else if (c % 3 == 1)
                row->emplace(c, static_cast<long>(r * 13 + c));
            else
                row->emplace(c, r / 7.0 + c);
        }
        list.rows.push_back(std::move(row));
    }
    return list;
}

void CellText(benchmark::State& state) {
    const int column = static_cast<int>(state.range(0));
    const List list = MakeList(100000);
    std::wstring buffer;
    size_t item = 0;
    for (auto _ : state) {
        item = (item + 7919) % list.rows.size();  // scattered rows
        const wchar_t* text = ql::CellText(list.rows[item].get(), list.keys[static_cast<size_t>(column)].get(), buffer, ToText);
        benchmark::DoNotOptimize(text);
    }
}

BENCHMARK(CellText)->Arg(0)->Arg(1)->Arg(2)->ArgName("column");

}  // namespace
