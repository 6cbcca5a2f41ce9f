#include "quorvel/frame/ini_store.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

TEST(IniStore, ParsesSectionsAndValues) {
    qv::IniStore store;
    const bool ok = store.Parse(
        L"\uFEFFtop = level \r\n"
        L"; comment\n"
        L"# comment = no\n"
        L"  [ Colors ]  \r"
        L"Back = Red\n"
        L"  fore=  Blue = Navy  \n"
        L"empty=\n"
        L"no equals sign\n"
        L"= no name\n"
        L"BACK=Green\n"
        L"[Broken\n"
        L"lost=1\n"
        L"[]\n"
        L"again=2\n");
    EXPECT_FALSE(ok);

    // value nullptr: not stored
    const struct { const wchar_t* section; const wchar_t* name; const wchar_t* value; } cases[] = {
        {L"", L"top", L"level"}, {L"", L"AGAIN", L"2"}, {L"colors", L"back", L"Green"},
        {L"COLORS", L"Fore", L"Blue = Navy"}, {L"Colors", L"empty", L""}, {L"", L"; comment", nullptr},
        {L"", L"# comment", nullptr}, {L"Colors", L"no equals sign", nullptr}, {L"Colors", L"", nullptr},
        {L"Broken", L"lost", nullptr}, {L"Colors", L"lost", nullptr}, {L"", L"lost", nullptr},
        {L"Colors", L"top", nullptr},
    };
    for (const auto& c : cases) {
        std::wstring value = L"stale";
        EXPECT_EQ(store.Get(c.section, c.name, value), c.value != nullptr) << c.section << L"/" << c.name;
        EXPECT_EQ(value, c.value ? c.value : L"stale") << c.section << L"/" << c.name;
    }
}

TEST(IniStore, SetParseAndClear) {
    qv::IniStore store;
    store.Set(L"Main", L"Width", L"10");
    store.Set(L"main", L"WIDTH", L"20");
    EXPECT_TRUE(store.Parse(L"[MAIN]\nheight=5\n"));
    std::wstring value;
    std::wstring height;
    ASSERT_TRUE(store.Get(L"Main", L"width", value) && store.Get(L"main", L"Height", height));
    EXPECT_EQ(std::tuple(value, height), std::tuple(L"20", L"5"));
    EXPECT_FALSE(store.Get(L"Mainx", L"width", value));
    store.Clear();
    EXPECT_FALSE(store.Get(L"Main", L"width", value));
}

}  // namespace
