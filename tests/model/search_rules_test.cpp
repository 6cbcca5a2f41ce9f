// The search fields' rules: child layout, the WM_GETTEXT count, the
// long-path form, the folder pattern and system message lines. (The path
// kinds, a file's folder and the open failures are seen at work in the
// window tests.)
#include "quorvel/windows/search_rules.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

namespace sr = qv::search;
using qv::Box;

std::tuple<int, int, int, int> Edges(const Box& b) { return {b.left, b.top, b.right, b.bottom}; }

TEST(SearchRulesTest, ChildrenSitAtTheRightEdgeAsHighAsTheFieldAtAnyDpi) {
    const struct { int width, height; bool open; unsigned dpi; Box edit, browse, open_; } cases[] = {
        {200, 24, false, 96, {0, 0, 173, 24}, {175, 0, 200, 24}, {}},
        {200, 24, true, 96, {0, 0, 144, 24}, {146, 0, 171, 24}, {175, 0, 200, 24}},
        {20, 18, false, 96, {0, 0, 0, 18}, {-5, 0, 20, 18}, {}},  // too narrow: the edit shrinks to nothing
        {300, -3, true, 96, {0, 0, 244, 0}, {246, 0, 271, 0}, {275, 0, 300, 0}},
        // Buttons, gaps and the edit's distance scale: 38, 6 and 3 at 150 %, 50, 8 and 4 at 200 %.
        {300, 36, true, 144, {0, 0, 215, 36}, {218, 0, 256, 36}, {262, 0, 300, 36}},
        {400, 48, false, 192, {0, 0, 346, 48}, {350, 0, 400, 48}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << " x " << c.height << (c.open ? " with open" : "") << " at "
                                        << c.dpi);
        const sr::Layout l = sr::LayOut(c.width, c.height, c.open, c.dpi);
        EXPECT_EQ(Edges(l.edit), Edges(c.edit));
        EXPECT_EQ(Edges(l.browse), Edges(c.browse));
        EXPECT_EQ(Edges(l.open), Edges(c.open_));
    }
}

TEST(SearchRulesTest, GetTextCountsOneMoreAndNeverWritesPastTheBuffer) {
    const struct { std::size_t length, size, copy; long long answer; } cases[] = {
        {4, 10, 4, 5},    // the usual case: characters plus one
        {0, 10, 0, 1},    {9, 10, 9, 10},
        {10, 10, 9, 11},  // exactly the buffer's size: counted whole, copied short of the terminator
        {11, 10, 9, 10},  // longer: size - 1 characters
        {500, 260, 259, 260},
        {4, 0, 0, 0},     // no buffer: nothing
        {0, 1, 0, 1},     {3, 1, 0, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.length << " characters into " << c.size);
        const sr::TextAnswer a = sr::AnswerGetText(c.length, c.size);
        EXPECT_EQ(a.copy, c.copy);
        EXPECT_EQ(a.answer, c.answer);
        if (c.size > 0) {
            EXPECT_LT(a.copy, c.size);
        }
    }
}

TEST(SearchRulesTest, LongPathsGetTheLongPathFormFolded) {
    const struct { std::wstring path; std::size_t limit; std::wstring expected; } cases[] = {
        // Short paths stay exactly as typed, whatever they hold.
        {L"C:\\a\\..\\b", 259, L"C:\\a\\..\\b"},
        {L"C:\\a\\b\\..\\.\\c//d", 5, L"\\\\?\\C:\\a\\c\\d"},
        {L"C:\\x\\", 3, L"\\\\?\\C:\\x\\"},
        {L"C:\\..\\..\\x", 3, L"\\\\?\\C:\\x"},  // ".." never climbs above the drive
        {L"\\\\srv\\share\\..\\d\\f.txt", 5, L"\\\\?\\UNC\\srv\\share\\d\\f.txt"},
        {L"//srv/share//d", 5, L"\\\\?\\UNC\\srv\\share\\d"},
        {L"\\\\srv", 3, L"\\\\?\\UNC\\srv\\"},  // a server without a share
        {L"\\\\srv\\..\\x", 3, L"\\\\srv\\..\\x"},  // no share: left for the system to refuse
        {L"\\\\?\\C:\\a\\..\\b", 3, L"\\\\?\\C:\\a\\..\\b"},  // already long: taken as typed
        {L"docs\\..\\x", 3, L"docs\\..\\x"},                  // relative: the caller's to make full
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "limit " << c.limit << " path of " << c.path.size());
        EXPECT_EQ(sr::FileSystemName(c.path, c.limit), c.expected);
    }
    // Past MAX_PATH, with blanks and non-Latin names: nothing is cut off.
    std::wstring deep = L"C:\\";
    for (int i = 0; i < 30; ++i) deep += L"Ordner \u00e4\u4e2d\u0444 " + std::to_wstring(i) + L"\\";
    deep += L"Datei \u6587.txt";
    ASSERT_GT(deep.size(), sr::kMaxPlainPath);
    EXPECT_EQ(sr::FileSystemName(deep), L"\\\\?\\" + deep);
    EXPECT_EQ(sr::FileSystemName(deep.substr(0, sr::kMaxPlainPath)), deep.substr(0, sr::kMaxPlainPath));
}

TEST(SearchRulesTest, FolderPatternAppendsEvenAfterABackslash) {
    EXPECT_EQ(sr::FolderSearchPattern(L"C:\\"), L"C:\\\\*.*");
    EXPECT_EQ(sr::FolderSearchPattern(L"C:\\tmp"), L"C:\\tmp\\*.*");
    EXPECT_EQ(sr::FolderSearchPattern(L""), L"\\*.*");
}

TEST(SearchRulesTest, SystemMessagesShowTheirFirstLine) {
    const struct { const wchar_t* message; const wchar_t* line; } cases[] = {
        {L"The system cannot find the file specified.\r\n", L"The system cannot find the file specified."},
        {L"First\nSecond", L"First"},
        {L"Ends in blanks  \r\n", L"Ends in blanks"},
        {L"\r\nNothing before", L""},
        {L"No break", L"No break"},
    };
    for (const auto& c : cases) EXPECT_EQ(sr::FirstLine(c.message), c.line);
}

}  // namespace
