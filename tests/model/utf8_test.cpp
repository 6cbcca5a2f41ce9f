#include "quorvel/common/utf8.h"

#include <gtest/gtest.h>

namespace {

struct Utf8Case { const char* utf8; const wchar_t* wide; };

// Every lead byte range, both directions; invalid bytes become U+FFFD.
TEST(Utf8, ConvertsBothWays) {
    const Utf8Case cases[] = {
        {"a\xC3\xA9", L"a\u00E9"},                 // lead below 0xD0
        {"\xD0\x9F\xDF\xBF", L"\u041F\u07FF"},     // leads with the fifth bit set
        {"\xE8\xAA\x9E\xEF\xBF\xBD", L"\u8A9E\uFFFD"},
        {"\xF0\x9F\x98\x80", L"\xD83D\xDE00"},     // a surrogate pair
    };
    for (const Utf8Case& c : cases) {
        EXPECT_EQ(qv::Utf8ToWide(c.utf8), c.wide) << c.utf8;
        EXPECT_EQ(qv::WideToUtf8(c.wide), c.utf8) << c.utf8;
    }
    EXPECT_EQ(qv::Utf8ToWide("\x80x\xC0\x80\xE8\xAA"), L"\uFFFDx\uFFFD\uFFFD\uFFFD\uFFFD");
}

}  // namespace
