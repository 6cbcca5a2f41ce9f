// Rich text to plain text through the exported RTF2TXT: the documents the
// system's rich edit control wrote (the native model tests read the same
// files, so both builds are held to the same text), and every byte and byte
// pair of each built-in code page against the system converter.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "quorvel/common/utf8.h"
#include "quorvel/frame/siblings.h"

namespace {

// tests/data/rtf beside this file. A cross-built test runs under Wine,
// whose drive Z: is the root of the build machine's file system.
std::filesystem::path DataFolder() {
    const std::filesystem::path folder =
        std::filesystem::path(__FILE__).parent_path().parent_path() / "data" / "rtf";
    if (std::filesystem::exists(folder)) return folder;
    return std::filesystem::path(L"Z:" + folder.wstring());
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

TEST(RtfToTextTest, ConvertsDocumentsOfTheRichEditControl) {
    const std::filesystem::path folder = DataFolder();
    for (const char* name : {"cyrillic", "greek", "turkish", "central_european", "japanese", "chinese_simplified",
                             "korean", "mixed", "bullets"}) {
        const std::string rtf = ReadFile(folder / (std::string(name) + ".rtf"));
        const std::wstring expected = qv::Utf8ToWide(ReadFile(folder / (std::string(name) + ".txt")));
        ASSERT_FALSE(expected.empty()) << name;
        std::wstring text;
        EXPECT_TRUE(RTF2TXT(std::wstring(rtf.begin(), rtf.end()), text)) << name;  // the files are ASCII
        EXPECT_EQ(text, expected) << name;
    }
}

std::wstring Hex(unsigned byte) {
    wchar_t buffer[8];
    swprintf(buffer, 8, L"\\'%02x", byte);
    return buffer;
}

std::wstring Convert(unsigned codePage, const std::wstring& bytes) {
    std::wstring text;
    RTF2TXT(L"{\\rtf1\\ansi\\ansicpg" + std::to_wstring(codePage) + L" " + bytes + L"}", text);
    return text;
}

// MultiByteToWideChar's text, without the control characters (U+0000 for
// some unassigned Mac bytes) that the converter never puts out.
std::wstring System(unsigned codePage, const char* bytes, int size) {
    wchar_t out[4];
    const int n = ::MultiByteToWideChar(codePage, 0, bytes, size, out, 4);
    std::wstring text;
    for (int i = 0; i < n; ++i) {
        if (out[i] >= 0x20 || out[i] == L'\t') text += out[i];
    }
    return text;
}

// Each byte from 0x20 and each pair of a lead byte with a byte from 0x20 gives
// what MultiByteToWideChar gives. Where the converter does not join a pair
// (the second byte is no trail byte of the code page), the system must give
// its default character for it, and the second byte is read on its own.
TEST(RtfToTextTest, DecodesEveryByteAsTheSystemDoes) {
    const unsigned codePages[] = {437,   850,   874,   932,   936,   949,   950,   1250,  1251,  1252,
                                  1253,  1254,  1255,  1256,  1257,  1258,  1361,  10000, 10001, 10002,
                                  10003, 10004, 10005, 10006, 10007, 10008, 10021, 10029, 10081};
    int checkedPairs = 0;
    for (unsigned cp : codePages) {
        CPINFOEXW info{};
        ASSERT_TRUE(::GetCPInfoExW(cp, 0, &info)) << cp;
        for (unsigned b = 0x20; b < 0x100; ++b) {
            const char byte = static_cast<char>(b);
            const bool lead = ::IsDBCSLeadByteEx(cp, static_cast<BYTE>(b)) != FALSE;
            const std::wstring alone = Convert(cp, Hex(b));
            if (!lead) {
                EXPECT_EQ(alone, System(cp, &byte, 1)) << cp << " byte " << b;
                continue;
            }
            EXPECT_EQ(alone, L"\uFFFD") << cp << " lead byte " << b;
            for (unsigned t = 0x20; t < 0x100; ++t) {
                const char pair[2] = {byte, static_cast<char>(t)};
                const std::wstring system = System(cp, pair, 2);
                const std::wstring text = Convert(cp, Hex(b) + Hex(t));
                if (text.size() == 1) {
                    EXPECT_EQ(text, system) << cp << " pair " << b << " " << t;
                    ++checkedPairs;
                } else {
                    EXPECT_EQ(system, std::wstring(1, info.UnicodeDefaultChar)) << cp << " pair " << b << " " << t;
                    EXPECT_EQ(text, L"\uFFFD" + Convert(cp, Hex(t))) << cp << " pair " << b << " " << t;
                }
            }
        }
    }
    EXPECT_GT(checkedPairs, 100000);
}

}  // namespace
