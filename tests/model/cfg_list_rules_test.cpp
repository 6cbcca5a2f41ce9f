// The configuration list's sort: ordinal order, the quicksort on edge-sized
// and equal-keyed ranges, sub-ranges, and the click direction.
#include "quorvel/lists/cfg_list_rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

namespace ql = qv::lists;

// Rows of (text, tag); the tag shows which row went where.
struct Rows : ql::SortableRows {
    std::vector<std::pair<std::wstring, int>> rows;
    int swaps = 0;
    explicit Rows(std::vector<std::wstring> texts) {
        for (int i = 0; i < static_cast<int>(texts.size()); ++i) rows.emplace_back(texts[i], i);
    }
    std::wstring Text(int row) override { return rows.at(static_cast<size_t>(row)).first; }
    void Swap(int a, int b) override {
        std::swap(rows.at(static_cast<size_t>(a)), rows.at(static_cast<size_t>(b)));
        ++swaps;
    }
    std::vector<std::wstring> Texts() const {
        std::vector<std::wstring> out;
        for (const auto& r : rows) out.push_back(r.first);
        return out;
    }
};

TEST(CfgListRulesTest, OrdinalOrderPutsUpperCaseFirst) {
    const struct { const wchar_t* a; const wchar_t* b; int sign; } cases[] = {
        {L"B", L"a", -1}, {L"Z", L"a", -1}, {L"a", L"a", 0}, {L"", L"a", -1},
        {L"ab", L"a", 1}, {L"\u00e4", L"z", 1}, {L"a\uffff", L"b", -1},
    };
    for (const auto& c : cases) {
        const int r = ql::CompareText(c.a, c.b);
        EXPECT_EQ((r > 0) - (r < 0), c.sign) << c.a << " vs " << c.b;
    }
}

TEST(CfgListRulesTest, SortsRangesInBothDirections) {
    const struct {
        std::vector<std::wstring> in;
        bool ascending;
        int low, high;
        bool ok;
        std::vector<std::wstring> out;
    } cases[] = {
        {{L"b", L"a"}, true, 0, 1, true, {L"a", L"b"}},
        {{L"a", L"b"}, true, 0, 1, true, {L"a", L"b"}},
        {{L"a", L"b"}, false, 0, 1, true, {L"b", L"a"}},
        {{L"a"}, true, 0, 0, false, {L"a"}},                        // one row
        {{L"b", L"a"}, true, 1, 1, false, {L"b", L"a"}},            // range of one
        {{L"b", L"a"}, true, 1, 0, false, {L"b", L"a"}},            // empty range
        {{}, true, 0, -1, false, {}},
        {{L"b", L"a", L"c"}, true, -1, 2, false, {L"b", L"a", L"c"}},
        {{L"abc", L"Abc", L"aBc", L"ABC", L"b"}, true, 0, 4, true, {L"ABC", L"Abc", L"aBc", L"abc", L"b"}},
        {{L"abc", L"Abc", L"aBc", L"ABC", L"b"}, false, 0, 4, true, {L"b", L"abc", L"aBc", L"Abc", L"ABC"}},
        {{L"z", L"d", L"c", L"b", L"a"}, true, 1, 3, true, {L"z", L"b", L"c", L"d", L"a"}},  // outside untouched
        {{L"", L"x", L"", L"a"}, true, 0, 3, true, {L"", L"", L"a", L"x"}},
    };
    for (const auto& c : cases) {
        Rows rows(c.in);
        EXPECT_EQ(ql::SortRowRange(rows, c.ascending, c.low, c.high), c.ok) << c.in.size() << " rows";
        EXPECT_EQ(rows.Texts(), c.out);
        if (!c.ok) {
            EXPECT_EQ(rows.swaps, 0);
        }
    }
}

TEST(CfgListRulesTest, EqualTextsAreNeverSwappedWithEachOther) {
    for (int n : {2, 3, 7, 64}) {
        Rows rows(std::vector<std::wstring>(static_cast<size_t>(n), L"same"));
        EXPECT_TRUE(ql::SortRowRange(rows, true, 0, n - 1));
        EXPECT_EQ(rows.swaps, 0) << n;
        for (int i = 0; i < n; ++i) EXPECT_EQ(rows.rows[static_cast<size_t>(i)].second, i);
    }
}

TEST(CfgListRulesTest, MatchesAReferenceSortOnRandomTextsWithManyDuplicates) {
    std::mt19937 rng(14);
    const wchar_t alphabet[] = L"aAbB";
    for (int round = 0; round < 300; ++round) {
        std::vector<std::wstring> texts(rng() % 40 + 2);
        for (auto& t : texts)
            for (unsigned k = rng() % 3; k > 0; --k) t += alphabet[rng() % 4];
        for (bool ascending : {true, false}) {
            Rows rows(texts);
            ASSERT_TRUE(ql::SortRowRange(rows, ascending, 0, static_cast<int>(texts.size()) - 1));
            auto expected = texts;
            std::sort(expected.begin(), expected.end());
            if (!ascending) std::reverse(expected.begin(), expected.end());
            ASSERT_EQ(rows.Texts(), expected) << "round " << round;
            // Every row is still there once: the swaps moved rows, not texts.
            std::vector<int> tags;
            for (const auto& r : rows.rows) tags.push_back(r.second);
            std::sort(tags.begin(), tags.end());
            for (int i = 0; i < static_cast<int>(tags.size()); ++i) ASSERT_EQ(tags[static_cast<size_t>(i)], i);
        }
    }
}

TEST(CfgListRulesTest, ANewColumnStartsAscendingAndTheSameColumnTurnsRound) {
    const struct { int last; bool lastAscending; int clicked; bool ascending; } cases[] = {
        {-1, true, 0, true}, {-1, false, 2, true}, {0, true, 0, false},
        {0, false, 0, true}, {0, false, 1, true}, {1, true, 0, true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ql::ClickDirection(c.last, c.lastAscending, c.clicked), c.ascending) << c.last << "->" << c.clicked;
}

}  // namespace
