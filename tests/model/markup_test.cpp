#include "quorvel/tooltip/markup.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <ostream>
#include <tuple>

namespace qv {
// Readable failure messages for sizes.
void PrintTo(const TipSize& size, std::ostream* os) { *os << "(" << size.cx << ", " << size.cy << ")"; }
}  // namespace qv

namespace {

using qv::TipSize;

// Records what the layout draws. Characters are 6 pixels wide; runs are 16
// pixels high, 20 in a bold font, so a bold run makes its line taller.
class Recorder : public qv::MarkupSurface {
public:
    std::wstring log;  // drawing calls, '|'-separated
    int depth = 0;     // fonts of the layout currently selected
    int selects = 0;

    void UseFont(const qv::FontDesc& font) override {
        EXPECT_EQ(depth++, 0) << "a font selected over another";
        ++selects;
        m_font = font;
    }
    void RestoreFont() override { EXPECT_EQ(--depth, 0); }
    qv::TipTextMetrics GetMetrics() override { return {16, 6}; }
    TipSize MeasureText(std::wstring_view text) override {
        return {6 * static_cast<int>(text.size()), m_font.weight > 400 ? 20 : 16};
    }
    void PutText(int x, int y, std::wstring_view text) override {
        Add(std::to_wstring(x) + L"," + std::to_wstring(y) + L" " + std::wstring(text));
        if (m_font.weight != 400) log += L" w" + std::to_wstring(m_font.weight);
        if (m_font.italic) log += L" I";
        if (m_font.underline) log += L" U";
        if (m_font.strikeOut) log += L" S";
    }
    void SetTextColour(qv::ColourRef colour) override { Add(L"fg " + Hex(m_fg = colour)); }
    qv::ColourRef GetTextColour() override { return m_fg; }
    void SetBackColour(qv::ColourRef colour) override { Add(L"bg " + Hex(colour)); }
    void SetBackMode(int mode) override { Add(L"mode " + std::to_wstring(mode)); }
    void DrawHorzLine(int xFrom, int xTo, int y, qv::ColourRef colour) override {
        Add(L"line " + std::to_wstring(xFrom) + L"-" + std::to_wstring(xTo) + L"@" + std::to_wstring(y) + L" " +
            Hex(colour));
    }

private:
    void Add(const std::wstring& entry) { log += (log.empty() ? L"" : L"|") + entry; }
    static std::wstring Hex(qv::ColourRef c) {
        wchar_t buf[16];
        std::swprintf(buf, 16, L"%X", c);
        return buf;
    }
    qv::FontDesc m_font;
    qv::ColourRef m_fg = 0;
};

qv::MarkupStyle Style(int weight = 400) {
    qv::MarkupStyle style;
    style.font.face = L"Tahoma";
    style.font.weight = weight;
    style.colours = {0x0, 0xAA, 0xBB00, 0x33, 0x44, 0x55, 0x66};
    return style;
}

// log: the calls of the drawing pass
struct Passes { TipSize measured; TipSize drawn; std::wstring log; qv::MarkupLines lines; };

// Measures `text`, then draws it at (0, 0) in a rectangle `width` wide.
Passes MeasureAndDraw(std::wstring_view text, int width = 60, int weight = 400) {
    Recorder surface;
    Passes p;
    const qv::MarkupStyle style = Style(weight);
    p.measured = qv::PrintTitleString(surface, {0, 0, width, 100}, text, true, style, p.lines);
    EXPECT_EQ(surface.log.find(L','), std::wstring::npos) << "measuring drew";
    surface.log.clear();
    p.drawn = qv::PrintTitleString(surface, {0, 0, width, 100}, text, false, style, p.lines);
    p.log = surface.log;
    EXPECT_EQ(surface.depth, 0) << "font left selected";
    return p;
}

struct LayoutCase { const wchar_t* text; TipSize measured; const wchar_t* log; };

const LayoutCase kLayoutCases[] = {
    // Escapes and plain '>'.
    {L"a<<b", {18, 16}, L"0,0 a<b"}, {L"a>b", {18, 16}, L"0,0 a>b"},
    // Font tags, any case; a taller bold run lowers the whole line; tags
    // do not nest.
    {L"<b>x</b>y", {12, 20}, L"0,4 x w800|6,4 y"}, {L"<B>x</B>y", {12, 20}, L"0,4 x w800|6,4 y"},
    {L"<b><b>x</b>y", {12, 20}, L"0,4 x w800|6,4 y"},
    {L"<i>a</i><u>b</U><s>c</s>d", {24, 16}, L"0,0 a I|6,0 b U|12,0 c S|18,0 d"},
    // Line breaks: counts, no '=' means the default, 0 means 1.
    {L"a<br=3>b", {6, 64}, L"0,0 a|0,48 b"}, {L"a<br 2>b", {6, 32}, L"0,0 a|0,16 b"},
    {L"a<br=0>b", {6, 32}, L"0,0 a|0,16 b"},
    // Tab stops every 24 pixels.
    {L"ab<t>c", {30, 16}, L"0,0 ab|24,0 c"}, {L"<t=2>c", {54, 16}, L"48,0 c"},
    {L"abcde<t>f", {54, 16}, L"0,0 abcde|48,0 f"},
    // Raw TAB and LF, after text too; CR is never drawn.
    {L"ab\tc", {30, 16}, L"0,0 ab|24,0 c"}, {L"\tc", {30, 16}, L"24,0 c"}, {L"ab\ncd", {12, 32}, L"0,0 ab|0,16 cd"},
    {L"ab\r\ncd\r", {12, 32}, L"0,0 ab|0,16 cd"}, {L"ab\n", {12, 32}, L"0,0 ab"}, {L"<b>\r", {0, 16}, L""},
    // Rules: pixels through the middle of the line, per cent of the
    // rectangle when drawing but of nothing when measuring.
    {L"<hr>", {100, 16}, L"line 0-100@8 0"},
    {L"<ct=5><hr=0x20>x", {38, 16}, L"fg 5|line 0-32@8 5|32,0 x"},
    {L"a<hr=50%>", {6, 16}, L"0,0 a|line 6-36@8 0"},
    // Alignment, drawing pass only; closing tags set it again; at a line
    // start it overrides what a tab added.
    {L"<al_c>abc<br>de", {18, 32}, L"21,0 abc|24,16 de"},
    {L"<al_c>abc</al_c><br>de", {18, 32}, L"21,0 abc|24,16 de"},
    {L"<al_r>x<al_l><br>y", {6, 32}, L"54,0 x|0,16 y"}, {L"<al_c>x</al_r><br>y", {6, 32}, L"27,0 x|54,16 y"},
    {L"<al_r><t>x<t>y", {54, 16}, L"6,0 x|24,0 y"},
    // Colours; "cti" takes a colour value.
    {L"<ct=0xFF0000>x</ct>y", {12, 16}, L"fg FF0000|0,0 x|fg AA|6,0 y"},
    {L"<cti>x<cti=0x20>", {6, 16}, L"fg 1|0,0 x|fg 20"}, {L"<ct 255>x", {6, 16}, L"fg AA|0,0 x"},
    {L"<cb=255>x</cb>", {6, 16}, L"bg FF|mode 2|0,0 x|bg BB00|mode 1"},
    {L"<cbi=5>x</cbi><cbi=7>y", {12, 16}, L"bg 55|mode 2|0,0 x|bg BB00|mode 1|6,0 y"},
    // Unknown, empty and unterminated tags.
    {L"<xyz a=1>abc", {18, 16}, L"0,0 abc"}, {L"<>a</>", {6, 16}, L"0,0 a"}, {L"abc<b", {0, 0}, L"0,0 abc"},
    {L"abc<", {0, 0}, L"0,0 abc<"}, {L"", {0, 0}, L""},
};

TEST(Markup, MeasuresAndDraws) {
    for (const LayoutCase& c : kLayoutCases) {
        const Passes p = MeasureAndDraw(c.text);
        EXPECT_EQ(std::tie(p.measured, p.drawn, p.log), std::tuple(c.measured, TipSize{0, c.measured.cy}, c.log))
            << c.text;
        EXPECT_EQ(p.lines.lineWidths.size(), p.lines.lineHeights.size()) << c.text;
    }
}

TEST(Markup, RecordsLinesAndCompletesPerCentRulesLast) {
    const Passes tall = MeasureAndDraw(L"a<b>B</b><br>c");
    EXPECT_EQ(std::tie(tall.lines.lineWidths, tall.lines.lineHeights),
              std::tuple(std::vector<int>{12, 6}, std::vector<int>{20, 16}));
    // The rule line gets half of the widest line, which it does not widen.
    const Passes rule = MeasureAndDraw(L"a<hr=50%><br>abcdef");
    EXPECT_EQ(std::tie(rule.measured, rule.lines.lineWidths), std::tuple(TipSize{36, 32}, std::vector<int>{24, 36}));
    EXPECT_TRUE(MeasureAndDraw(L"abc<b").lines.lineWidths.empty());
}

TEST(Markup, BoldDoublesTheBaseWeight) {
    const std::pair<int, const wchar_t*> kWeights[] = {
        {400, L"0,4 x w800"}, {700, L"0,4 x w900"}, {450, L"0,4 x w900"}, {300, L"0,4 x w600"}, {0, L"0,4 x w800"}};
    for (const auto& [base, log] : kWeights) {
        EXPECT_EQ(MeasureAndDraw(L"<b>x", 60, base).log, log) << base;
        EXPECT_EQ(MeasureAndDraw(L"<b></b>x", 60, base).log, MeasureAndDraw(L"x", 60, base).log) << base;
    }
}

TEST(Markup, EmptyTextTouchesNothing) {
    Recorder surface;
    qv::MarkupLines lines{{1}, {2}};
    EXPECT_EQ(qv::PrintTitleString(surface, {}, L"", false, Style(), lines), (TipSize{}));
    EXPECT_EQ(std::tuple(lines.lineWidths.size(), surface.selects), std::tuple(1u, 0));
}

TEST(Markup, RawBreaksAfterTextTerminateAndHugeValuesSaturate) {
    std::wstring text;
    for (int i = 0; i < 20000; ++i) text += L"ab\tc\n";
    EXPECT_EQ(MeasureAndDraw(text).measured, (TipSize{30, 20000 * 16 + 16}));
    const Passes p = MeasureAndDraw(L"a<br=4294967295>b<t=99999999999>c<hr=4000000000%>");
    EXPECT_EQ(p.measured, (TipSize{134217727, 134217727}));
}

struct ScanCase {
    std::wstring (*scan)(std::wstring_view, std::size_t&);
    const wchar_t* text;
    std::size_t from;
    const wchar_t* result;
    std::size_t to;
};

const ScanCase kScanCases[] = {
    {qv::SearchBeginOfTag, L"ab<b>", 0, L"ab", 2}, {qv::SearchBeginOfTag, L"<b>", 0, L"", 1},
    {qv::SearchBeginOfTag, L"a\r<<b\tc", 0, L"a<b", 5}, {qv::GetNameOfTag, L"  /B =3>", 0, L"/B", 5},
    {qv::GetNameOfTag, L"\tb>", 0, L"\t", 0}, {qv::GetNameOfTag, L"b\tr\r>", 0, L"br", 4},
    {qv::GetStringValue, L"=0x20>", 0, L"0x20", 5}, {qv::GetStringValue, L" 2>", 0, L"", 1},
    {qv::GetStringValue, L"\n= 5 >", 0, L"5", 5}, {qv::GetPropertiesOfTag, L"  ab cd=1>", 0, L"ab", 5},
    {qv::GetPropertiesOfTag, L"cd=1>", 0, L"cd", 2},
};

TEST(Markup, ScannerReadsAndMovesTheCursor) {
    for (const ScanCase& c : kScanCases) {
        std::size_t pos = c.from;
        EXPECT_EQ(c.scan(c.text, pos), c.result) << c.text;
        EXPECT_EQ(pos, c.to) << c.text;
    }
    std::size_t pos = 1;
    qv::SearchEndOfTag(L"<xyz\tq>", pos);
    EXPECT_EQ(pos, 4u);
}

TEST(Markup, ParsesNumbersLikeTheWindowsRuntime) {
    const std::pair<const wchar_t*, std::uint32_t> kNumbers[] = {
        {L"0x1F", 31},       {L"0XfF0000", 0xFF0000},      {L"017", 15},         {L"08", 0},
        {L"50%", 50},        {L" \v+7", 7},                {L"-1", 0xFFFFFFFFu}, {L"4294967295", 0xFFFFFFFFu},
        {L"4294967296", 0xFFFFFFFFu}, {L"-99999999999", 0xFFFFFFFFu}, {L"0x", 0}, {L"0xg", 0},
        {L"abc", 0},         {L"\uFF11", 0},
    };
    for (const auto& [text, value] : kNumbers) EXPECT_EQ(qv::ParseUInt32(text), value) << text;
}

TEST(Markup, MulDivRoundsHalfAwayFromZero) {
    const int kCases[][4] = {{50, 6, 100, 3}, {1, 1, 2, 1},         {-1, 1, 2, -1},
                             {7, 3, -2, -11}, {5, 7, 0, -1},        {INT_MAX, 2, 1, -1}};
    for (const auto& c : kCases) EXPECT_EQ(qv::MulDivRounded(c[0], c[1], c[2]), c[3]) << c[0] << "*" << c[1] << "/" << c[2];
}

}  // namespace

TEST(MarkupPlainText, TagsGoBreaksAndTabsStay) {
    struct Case { const wchar_t* markup; const wchar_t* plain; } cases[] = {
        {L"<b>Due date</b><br>When the order is due.", L"Due date\r\nWhen the order is due."},
        {L"a<br=3>b", L"a\r\n\r\n\r\nb"},
        {L"A<t>B<T=2>C", L"A\tB\t\tC"},
        {L"x\ny\tz\r", L"x\r\ny\tz"},
        {L"<ct=0x0000FF>red</ct> <cb=0xFF>on</cb><al_r><hr=50%>end", L"red onend"},
        {L"a << b", L"a < b"},
        {L"<unknown tag>kept", L"kept"},
        {L"cut <b", L"cut "},  // a tag missing its '>' swallows the rest
        {L"", L""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.markup);
        EXPECT_EQ(qv::MarkupPlainText(c.markup), c.plain);
    }
    // A slip in a count gives a few line ends, not billions.
    EXPECT_EQ(qv::MarkupPlainText(L"a<br=4000000000>b").size(), 2u + 2 * 16);
}
