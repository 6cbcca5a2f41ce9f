// The library's edge with its host: an exception thrown by a message
// handler, by a reflected notification or by one of the host's own services
// stops at the edge, is written to the log book, and leaves the window
// working.
#include <new>
#include <stdexcept>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "quorvel/frame/services.h"
#include "quorvel/frame/session.h"
#include "quorvel/frame/siblings.h"
#include "quorvel/platform/controls.h"
#include "support/host.h"

namespace {

using qvtest::HostTest;

// Objects that own what a copy would free twice cannot be copied.
static_assert(!std::is_copy_constructible_v<qv::CatalogTranslation> &&
              !std::is_copy_assignable_v<qv::CatalogTranslation>);
static_assert(!std::is_copy_constructible_v<qv::MemoryLogBook> && !std::is_copy_assignable_v<qv::MemoryLogBook>);
static_assert(!std::is_copy_constructible_v<qv::SessionSettings> && !std::is_copy_assignable_v<qv::SessionSettings>);

// An edit field whose handler of `throwOn` throws std::bad_alloc, as a
// std::wstring does when memory runs out; with `afterDefault` it throws once
// the edit control has processed the message.
class ThrowingEdit : public qv::Edit {
public:
    UINT throwOn = 0;
    bool afterDefault = false;
    std::wstring setFirst;  // a text OnChar sets (WM_SETTEXT) before its own Default()
    int paints = 0;

protected:
    void Maybe(UINT msg) {
        if (msg != throwOn) return;
        if (afterDefault) Default();
        throw std::bad_alloc();
    }
    LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override {
        if (msg != WM_CHAR && msg != WM_CREATE && msg != WM_PAINT) Maybe(msg);
        return qv::Edit::WindowProc(msg, wp, lp);
    }
    int OnCreate(CREATESTRUCTW* cs) override {
        Maybe(WM_CREATE);
        return qv::Edit::OnCreate(cs);
    }
    void OnChar(UINT ch, UINT repCnt, UINT flags) override {
        if (!setFirst.empty()) SendMessage(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(setFirst.c_str()));
        Maybe(WM_CHAR);
        qv::Edit::OnChar(ch, repCnt, flags);
    }
    void OnPaint() override {
        // An edge that left the window invalid would be asked to paint again
        // and again: from the sixth call on the handler paints, so that the
        // test ends and reports the count instead of hanging.
        if (++paints <= 5) Maybe(WM_PAINT);
        Default();
    }
};

class BoundaryTest : public HostTest {
protected:
    void Make(ThrowingEdit& edit) {
        ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, RECT{10, 10, 200, 34}, host_, 100));
        edit.SetWindowText(L"abcd");
        edit.SetSel(1, 3);
        qv::Services::DefaultLogBook().Clear();
    }
    static const std::vector<qv::LogEntry>& Log() { return qv::Services::DefaultLogBook().Entries(); }
    // The one entry the edge wrote, as "module|function|line|message|hr".
    static std::wstring OnlyEntry() {
        return Log().size() == 1 ? qvtest::Describe(Log()[0]) : L"entries: " + std::to_wstring(Log().size());
    }
};

TEST_F(BoundaryTest, RefusedInputLeavesTextAndSelectionAndTheFieldWorksOn) {
    qvtest::SetClipboard(host_, L"zz");
    const std::wstring newText = L"new";
    const struct { UINT msg; WPARAM wp; LPARAM lp; const wchar_t* hex; } cases[] = {
        {WM_CHAR, L'x', 1, L"0102"},
        {WM_KEYDOWN, VK_DELETE, 1, L"0100"},
        {WM_PASTE, 0, 0, L"0302"},
        {WM_CUT, 0, 0, L"0300"},
        {WM_CLEAR, 0, 0, L"0303"},
        {WM_SETTEXT, 0, reinterpret_cast<LPARAM>(newText.c_str()), L"000C"},
        {EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(newText.c_str()), L"00C2"},
    };
    for (const auto& c : cases) {
        ThrowingEdit edit;
        Make(edit);
        edit.throwOn = c.msg;
        EXPECT_EQ(edit.SendMessage(c.msg, c.wp, c.lp), 0) << c.hex;
        EXPECT_EQ(std::tuple(qvtest::TextOf(edit), qvtest::SelOf(edit)), std::tuple(L"abcd", std::pair(1, 3))) << c.hex;
        EXPECT_EQ(OnlyEntry(), std::wstring(L"Quorvel| qv::Window::WindowProc|1|Exception caught: std::bad_alloc "
                                            L"(message 0x") + c.hex + L")|80004005");
        edit.throwOn = 0;
        qvtest::TypeChars(edit, L"y");
        EXPECT_EQ(qvtest::TextOf(edit), L"ayd") << c.hex << ": the next keystroke";
    }
}

TEST_F(BoundaryTest, AfterDefaultThePlatformsAnswerStands) {
    ThrowingEdit edit;
    Make(edit);
    edit.throwOn = WM_CHAR;
    edit.afterDefault = true;
    qvtest::TypeChars(edit, L"x");
    EXPECT_EQ(std::tuple(qvtest::TextOf(edit), qvtest::SelOf(edit)), std::tuple(L"axd", std::pair(2, 2)));
    EXPECT_EQ(Log().size(), 1u);
}

TEST_F(BoundaryTest, AThrowInANestedMessageLeavesTheOuterOneIntact) {
    ThrowingEdit edit;
    Make(edit);
    edit.setFirst = L"zzz";
    edit.throwOn = WM_SETTEXT;
    qvtest::TypeChars(edit, L"q");  // the nested WM_SETTEXT is refused, then Default() inserts 'q'
    EXPECT_EQ(std::tuple(qvtest::TextOf(edit), qvtest::SelOf(edit)), std::tuple(L"aqd", std::pair(2, 2)));
    EXPECT_EQ(Log().size(), 1u);
}

TEST_F(BoundaryTest, AThrowingCreationHandlerFailsTheCreation) {
    for (const UINT msg : {WM_NCCREATE, WM_CREATE}) {
        ThrowingEdit edit;
        edit.throwOn = msg;
        EXPECT_FALSE(edit.Create(WS_CHILD | WS_VISIBLE, RECT{10, 10, 200, 34}, host_, 101)) << msg;
        EXPECT_EQ(std::tuple(edit.m_hWnd, ::GetDlgItem(host_, 101)), std::tuple(HWND{}, HWND{})) << msg;
        ASSERT_FALSE(Log().empty());
        EXPECT_EQ(Log().back().message,
                  msg == WM_CREATE ? L"Exception caught: std::bad_alloc (message 0x0001)"
                                   : L"Exception caught: std::bad_alloc (message 0x0081)");
    }
}

TEST_F(BoundaryTest, AThrowingPaintHandlerIsNotCalledAgainAndAgain) {
    ThrowingEdit edit;
    Make(edit);
    qvtest::Pump(100);
    edit.paints = 0;
    edit.throwOn = WM_PAINT;
    edit.Invalidate();
    qvtest::Pump(300);
    EXPECT_EQ(edit.paints, 1);
    EXPECT_FALSE(::GetUpdateRect(edit, nullptr, FALSE));
}

// A button whose reflected notification handler throws.
class ThrowingButton : public qv::Window {
protected:
    bool OnReflectCommand(UINT) override { throw std::runtime_error("notification failed"); }
};

TEST_F(BoundaryTest, AThrowingReflectedNotificationGoesOnToTheParent) {
    int parentCommands = 0;
    qvtest::MessageSpy spy(host_, [&](UINT msg, WPARAM, LPARAM) { parentCommands += msg == WM_COMMAND; });
    ThrowingButton button;
    ASSERT_TRUE(button.Create(L"BUTTON", L"B", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, RECT{10, 10, 90, 40}, host_, 102));
    qv::Services::DefaultLogBook().Clear();
    button.SendMessage(BM_CLICK);
    EXPECT_EQ(parentCommands, 1);
    EXPECT_EQ(OnlyEntry(), L"Quorvel| qv::Window::ReflectorProc|3|Exception caught: notification failed "
                           L"(message 0x0111)|80004005");
}

// Host services that throw: the translation for texts starting with '!',
// the conversions and the settings always.
class ThrowingServices : public qv::ITranslationService, public qv::IConversionService, public qv::ISettingsService {
public:
    ThrowingServices() {
        qv::Services::SetTranslation(this);
        qv::Services::SetConversion(this);
        qv::Services::SetSettings(this);
    }
    ~ThrowingServices() override {
        qv::Services::SetTranslation(nullptr);
        qv::Services::SetConversion(nullptr);
        qv::Services::SetSettings(nullptr);
    }
    std::wstring Translate(std::wstring_view text) override {
        if (!text.empty() && text[0] == L'!') Fail();
        return L"T:" + std::wstring(text);
    }
    bool String2Double(std::wstring_view, double&) override { Fail(); }
    bool Double2String(std::wstring&, double, std::wstring_view) override { Fail(); }
    bool CheckRange(double, double, std::wstring_view) override { Fail(); }
    bool CheckCharacters0_9A_Z(std::wstring_view, bool) override { Fail(); }
    bool RTF2TXT(std::wstring_view, std::wstring&) override { Fail(); }
    bool GetSessionValue(std::wstring_view, std::wstring_view, long, std::wstring&) override { Fail(); }

private:
    [[noreturn]] static void Fail() { throw std::runtime_error("host service failed"); }
};

TEST_F(BoundaryTest, OperationsAnswerTheirSafeValueWhenAHostServiceThrows) {
    ThrowingServices services;
    double value = 1.5;
    std::wstring text = L"2";
    const struct { const char* what; bool (*answers)(double&, std::wstring&); } cases[] = {
        {"CoTranslateText: the text itself", [](double&, std::wstring&) {
             return std::wstring(CoTranslateText(L"!Save")) == L"!Save"; }},
        {"CoTranslateText2: empty", [](double&, std::wstring&) { return *CoTranslateText2(L"!Save") == L'\0'; }},
        {"String2Double: false, value kept", [](double& v, std::wstring&) {
             return !String2Double(L"2.5", v) && v == 1.5; }},
        {"Double2String: false", [](double&, std::wstring& t) { return !Double2String(t, 2.5, L"%.1f"); }},
        {"CheckRange: false", [](double&, std::wstring& t) { return !CheckRange(0, 9, t); }},
        {"ReadSettingText: empty", [](double&, std::wstring&) { return qv::ReadSettingText(L"a", L"b", 0).empty(); }},
    };
    for (const auto& c : cases) {
        qv::Services::DefaultLogBook().Clear();
        EXPECT_TRUE(c.answers(value, text)) << c.what;
        ASSERT_EQ(Log().size(), 1u) << c.what;
        EXPECT_EQ(std::tuple(Log()[0].module, Log()[0].message, Log()[0].hr),
                  std::tuple(L"Quorvel", L"Exception caught: host service failed", long{E_FAIL}))
            << c.what;
    }
}

TEST_F(BoundaryTest, ALabelWhoseTranslationThrowsKeepsItsTextAndTheOthersAreTranslated) {
    ThrowingServices services;
    HWND labels[3];
    const wchar_t* texts[] = {L"one", L"!two", L"three"};
    for (int i = 0; i < 3; ++i)
        labels[i] = ::CreateWindowExW(0, L"STATIC", texts[i], WS_CHILD | WS_VISIBLE, 10, 10 + 30 * i, 100, 20, host_,
                                      nullptr, nullptr, nullptr);
    CoTranslateWindow(host_);
    EXPECT_EQ(std::tuple(qvtest::TextOf(labels[0]), qvtest::TextOf(labels[1]), qvtest::TextOf(labels[2])),
              std::tuple(L"T:one", L"!two", L"T:three"));
    EXPECT_EQ(Log().size(), 1u);
}

}  // namespace
