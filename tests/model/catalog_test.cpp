#include "quorvel/frame/catalog.h"

#include <gtest/gtest.h>

namespace {

TEST(Catalog, ParsesEntriesAndReportsBadLines) {
    const std::wstring content =
        L"\uFEFF# comment\r\n"
        L"Cancel\tAbbrechen\r\n"
        L"\r\n"
        L"  \t \n"
        L"Line\\none\\tend\\\\\tZeile\\neins\\r\n"
        L"\\#1\t#1\r"
        L"no tab here\n"
        L"a\tb\tc\n"
        L"bad\\q\tx\n"
        L"x\ttrailing\\\n"
        L"\tempty source\n"
        L"empty translation\t\n"
        L"Cancel\tAnnuler\n"
        L"Last\tLetzte";
    std::vector<std::wstring> errors;
    qv::Catalog catalog;
    EXPECT_FALSE(catalog.Parse(content, &errors));

    const std::vector<std::wstring> expectedErrors = {
        L"line 7: missing tab between source and translation",
        L"line 8: more than one tab",
        L"line 9: unknown escape",
        L"line 10: trailing backslash",
        L"line 11: empty source text",
        L"line 12: empty translation",
        L"line 13: source text already defined",
    };
    EXPECT_EQ(errors, expectedErrors);

    // translation nullptr: not in the table
    const struct { const wchar_t* source; const wchar_t* translation; } lookups[] = {
        {L"Cancel", L"Abbrechen"}, {L"Line\none\tend\\", L"Zeile\neins\r"}, {L"#1", L"#1"}, {L"Last", L"Letzte"},
        {L"cancel", nullptr}, {L"# comment", nullptr}, {L"a", nullptr}, {L"x", nullptr},
    };
    for (const auto& l : lookups) {
        const std::wstring* found = catalog.Find(l.source);
        ASSERT_EQ(found != nullptr, l.translation != nullptr) << l.source;
        if (found) {
            EXPECT_EQ(*found, l.translation) << l.source;
        }
    }
    EXPECT_EQ(catalog.Size(), 4u);
}

TEST(Catalog, ParseReplacesTable) {
    qv::Catalog catalog;
    EXPECT_TRUE(catalog.Parse(L"One\tEins\nTwo\tZwei\n"));
    EXPECT_TRUE(catalog.Parse(L"Two\tDeux"));
    EXPECT_EQ(catalog.Size(), 1u);
    EXPECT_EQ(catalog.Find(L"One"), nullptr);
    ASSERT_NE(catalog.Find(L"Two"), nullptr);
    EXPECT_EQ(*catalog.Find(L"Two"), L"Deux");
}

}  // namespace
