// The line-numbered edit on a real EDIT: the gutter's place and width, the
// lines it numbers after every kind of scrolling, font and text changes,
// what it paints (also in colour), a refused format, and attaching to a
// host's edit.
#include "quorvel/windows/line_number_edit.h"

#include <algorithm>
#include <functional>
#include <string>
#include <tuple>

#include "quorvel/platform/gdi.h"
#include "support/host.h"

namespace {

using qvtest::Key;
using qvtest::TextExtent;

// "line 1" ... "line n", one per text line.
std::wstring Lines(int n) {
    std::wstring text;
    for (int i = 1; i <= n; ++i) text += (i > 1 ? L"\r\nline " : L"line ") + std::to_wstring(i);
    return text;
}

// A window's client area as it is on the screen, read once.
struct Snapshot {
    explicit Snapshot(HWND hwnd) : screen(hwnd), memory(screen, 1000, 1000) {
        ::BitBlt(memory, 0, 0, 1000, 1000, screen, 0, 0, SRCCOPY);
    }
    COLORREF At(int x, int y) const { return ::GetPixel(memory, x, y); }
    qv::ClientDC screen;
    qv::MemoryDC memory;
};

RECT EditRect(const XMultiLineEditLN& edit) {
    RECT r{};
    edit.SendMessage(EM_GETRECT, 0, reinterpret_cast<LPARAM>(&r));
    return r;
}

class LineNumberEditTest : public qvtest::HostTest {
protected:
    static constexpr RECT kRect{10, 10, 330, 210};

    // The gutter numbers the lines the edit shows whole, each number on the
    // top of its text line, and the text starts right of it.
    static void ExpectFollows(XMultiLineEditLN& edit) {
        XLineNumberStatic& gutter = edit.GetLineNumberStatic();
        const int first = edit.GetFirstVisibleLine(), height = edit.GetZeroSize().cy;
        ASSERT_GT(height, 0);
        const RECT client = edit.GetClientRect(), place = qvtest::RectIn(edit, gutter);
        const int last = std::min(edit.GetLineCount(), first + static_cast<int>(client.bottom) / height);
        EXPECT_EQ(std::tuple(gutter.GetTopLine(), gutter.GetBottomLine(), gutter.GetTopMargin()),
                  std::tuple(first, last, EditRect(edit).top));
        for (int line = first; line < gutter.GetBottomLine(); ++line) {
            const int index = edit.LineIndex(line);
            if (edit.LineLength(index) == 0) continue;  // no character to ask about
            EXPECT_EQ(edit.PosFromChar(static_cast<UINT>(index)).y, gutter.GetTopMargin() + height * (line - first))
                << line;
        }
        EXPECT_EQ(std::tuple(place.left, place.top, place.bottom), std::tuple(0L, 0L, client.bottom));
        EXPECT_GE(EditRect(edit).left, place.right + 1);
    }

    static int GutterWidth(XMultiLineEditLN& edit) { return qvtest::RectIn(edit, edit.GetLineNumberStatic()).right; }
};

TEST_F(LineNumberEditTest, AnEmptyEditNumbersItsOneLine) {
    XMultiLineEditLN edit;
    ASSERT_TRUE(edit.Create(L"", 100, kRect, font_, host_));
    XLineNumberStatic& gutter = edit.GetLineNumberStatic();
    EXPECT_EQ(std::tuple(qvtest::TextOf(gutter), gutter.GetDlgCtrlID(), gutter.GetStyle(), gutter.GetParent()),
              std::tuple(L"LINENUMBERSTATIC", 65535, 0x50000001ul, edit.m_hWnd));
    EXPECT_EQ(std::tuple(gutter.GetTopLine(), gutter.GetBottomLine()), std::tuple(0, 1));
    EXPECT_EQ(GutterWidth(edit), TextExtent(edit, font_, L"00001").cx + 5);
    ExpectFollows(edit);

    // Which formats are refused is the model's; here the fallback to "%05i".
    ASSERT_TRUE(edit.SetLineNumberFormat(L"[%d]"));
    EXPECT_EQ(GutterWidth(edit), TextExtent(edit, font_, L"[1]").cx + 5);
    EXPECT_FALSE(edit.SetLineNumberFormat(L"%s"));
    EXPECT_EQ(std::tuple(edit.GetLineNumberFormat(), gutter.GetLineNumberFormat()), std::tuple(L"%05i", L"%05i"));
    EXPECT_EQ(GutterWidth(edit), TextExtent(edit, font_, L"00001").cx + 5);
}

TEST_F(LineNumberEditTest, WidthFollowsTheLineCountsDigitsAndTheFont) {
    XMultiLineEditLN edit;
    ASSERT_TRUE(edit.Create(L"", 100, kRect, font_, host_));
    EXPECT_TRUE(edit.SetLineNumberFormat(L"%d"));
    for (int lines : {9, 10, 99, 100}) {
        SCOPED_TRACE(lines);
        edit.SetWindowTextW(Lines(lines).c_str());
        EXPECT_EQ(GutterWidth(edit), TextExtent(edit, font_, std::to_wstring(lines)).cx + 5);
        ExpectFollows(edit);
    }

    // Typing the hundredth line widens the gutter at once; taking it away
    // again leaves it wide until the next size change.
    const int wide = TextExtent(edit, font_, L"100").cx + 5, narrow = TextExtent(edit, font_, L"99").cx + 5;
    edit.SetWindowTextW(Lines(99).c_str());
    edit.SetLineNumberFormat(L"%d");  // a format change lays out afresh
    EXPECT_EQ(GutterWidth(edit), narrow);
    edit.SetSel(edit.GetWindowTextLength(), edit.GetWindowTextLength());
    qvtest::TypeChars(edit, L"\r");
    EXPECT_EQ(std::tuple(edit.GetLineCount(), GutterWidth(edit)), std::tuple(100, wide));
    qvtest::Press(edit, L"\b");
    EXPECT_EQ(std::tuple(edit.GetLineCount(), GutterWidth(edit)), std::tuple(99, wide));
    edit.SetWindowPos(nullptr, 0, 0, 300, 180, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(GutterWidth(edit), narrow);
    ExpectFollows(edit);

    // A font change measures afresh: wider digits, higher and so fewer lines.
    qv::Font big(::CreateFontW(-26, 0, 0, 0, FW_NORMAL, 0, 0, 0, DEFAULT_CHARSET, 0, 0, 0, 0, L"Tahoma"));
    const int before = edit.GetLineNumberStatic().GetBottomLine();
    edit.SetFont(big, true);
    EXPECT_EQ(edit.GetZeroSize().cy, TextExtent(edit, big, L"0").cy);
    EXPECT_EQ(GutterWidth(edit), TextExtent(edit, big, L"99").cx + 5);
    EXPECT_LT(edit.GetLineNumberStatic().GetBottomLine(), before);
    ExpectFollows(edit);
}

TEST_F(LineNumberEditTest, FollowsEveryKindOfScrolling) {
    auto send = [](UINT msg, WPARAM wp, LPARAM lp = 0) {
        return [=](XMultiLineEditLN& e) { e.SendMessage(msg, wp, lp); };
    };
    const WPARAM wheelDown = static_cast<WPARAM>(static_cast<WORD>(-2 * WHEEL_DELTA)) << 16;
    const std::function<void(XMultiLineEditLN&)> scrolls[] = {
        send(WM_VSCROLL, SB_LINEDOWN), send(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 120)),
        [](XMultiLineEditLN& e) { qvtest::Press(e, {Key(VK_NEXT), Key(VK_DOWN)}); },
        send(WM_MOUSEWHEEL, wheelDown, MAKELPARAM(100, 100)), send(EM_LINESCROLL, 0, 39), send(EM_SCROLL, SB_PAGEDOWN),
        [](XMultiLineEditLN& e) { e.SetSel(e.LineIndex(150), e.LineIndex(150), true), e.SendMessage(EM_SCROLLCARET); },
        [](XMultiLineEditLN& e) { e.SetSel(e.GetWindowTextLength(), -1, true), e.ReplaceSel(L"\r\nmore"); },
    };
    XMultiLineEditLN edit;
    ASSERT_TRUE(edit.Create(Lines(200), 100, kRect, font_, host_));
    for (std::size_t i = 0; i < std::size(scrolls); ++i) {
        SCOPED_TRACE(testing::Message() << "scroll #" << i);
        edit.SendMessage(WM_VSCROLL, SB_TOP);
        edit.SetSel(0, 0, true);
        ASSERT_EQ(edit.GetLineNumberStatic().GetTopLine(), 0);
        scrolls[i](edit);
        EXPECT_GT(edit.GetFirstVisibleLine(), 0);
        ExpectFollows(edit);
    }
}

TEST_F(LineNumberEditTest, PaintsNumbersOnItsBackgroundAndTheDividingLine) {
    XMultiLineEditLN plain;
    XMultiLineEditLNColor coloured;
    ASSERT_TRUE(plain.Create(Lines(200), 100, RECT{10, 10, 330, 220}, font_, host_));
    ASSERT_TRUE(coloured.Create(Lines(200), 101, RECT{340, 10, 620, 220}, font_, host_));
    coloured.SetMarginForegroundColor(RGB(0, 0, 160));
    coloured.SetMarginBackgroundColor(RGB(255, 250, 205));
    plain.LineScroll(39);
    qvtest::Pump(200);  // the edits' own painting comes first: it must leave the gutter alone
    const struct { XMultiLineEditLN* edit; COLORREF fg, bg; } cases[] = {
        {&plain, ::GetSysColor(COLOR_WINDOWTEXT), RGB(234, 232, 228)},
        {&coloured, RGB(0, 0, 160), RGB(255, 250, 205)},
    };
    for (const auto& c : cases) {
        XLineNumberStatic& gutter = c.edit->GetLineNumberStatic();
        const RECT client = gutter.GetClientRect();
        const int height = c.edit->GetZeroSize().cy, margin = gutter.GetTopMargin();
        const Snapshot shot(gutter);
        for (LONG y : {0L, client.bottom / 2, client.bottom - 1}) EXPECT_EQ(shot.At(client.right - 1, y), c.fg) << y;
        auto ink = [&](int top, int bottom) {
            int n = 0;
            for (int y = top; y < bottom; ++y)
                for (int x = 0; x < client.right - 1; ++x) n += shot.At(x, y) != c.bg;
            return n;
        };
        // Every numbered line holds ink; below them (a line that does not fit
        // whole is not numbered) and above the first there is none.
        const int rows = gutter.GetBottomLine() - gutter.GetTopLine();
        ASSERT_GT(rows, 3);
        ASSERT_GT(client.bottom - (margin + rows * height), 2);
        for (int row = 0; row < rows; ++row) EXPECT_GT(ink(margin + row * height, margin + (row + 1) * height), 0);
        EXPECT_EQ(ink(margin + rows * height, client.bottom) + ink(0, margin), 0);
    }
    // A coloured gutter of its own paints in its scheme.
    XLineNumberStaticColor gutter;
    EXPECT_EQ(std::tuple(gutter.GetForegroundColor(), gutter.GetBackgroundColor()),
              std::tuple(RGB(8, 0, 0), ::GetSysColor(COLOR_WINDOW)));
    ASSERT_TRUE(gutter.Create(L"", XMultiLineEditLN::kLineNumberStyle, RECT{200, 0, 260, 60}, plain, 7));
    gutter.SetBkColor(RGB(200, 0, 0));
    gutter.SetTextColor(RGB(0, 120, 0));
    const Snapshot shot(gutter);
    EXPECT_EQ(std::tuple(shot.At(0, 50), shot.At(59, 50)), std::tuple(RGB(200, 0, 0), RGB(0, 120, 0)));
}

TEST_F(LineNumberEditTest, AttachingToAHostsEditMakesTheGutterAndDetachingTakesItAway) {
    HWND raw = ::CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", Lines(30).c_str(),
                                 WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE, 10, 10, 320, 200, host_,
                                 reinterpret_cast<HMENU>(static_cast<INT_PTR>(120)), nullptr, nullptr);
    ::SendMessageW(raw, WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
    RECT plain{}, after{};
    ::SendMessageW(raw, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&plain));
    {
        XMultiLineEditLNColor edit;
        ASSERT_TRUE(edit.SubclassDlgItem(120, host_));
        edit.SendMessage(WM_VSCROLL, SB_PAGEDOWN);
        ExpectFollows(edit);
    }  // the object goes, the host's edit stays as it was
    EXPECT_EQ(std::tuple(::IsWindow(raw) != FALSE, ::GetDlgItem(raw, 65535)), std::tuple(true, HWND{}));
    ::SendMessageW(raw, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&after));
    EXPECT_TRUE(::EqualRect(&after, &plain));
    ::DestroyWindow(raw);
}

}  // namespace
