// The context-help labels on a real form: the prompt's text and its mark-up
// tooltip with F1 help, the static label's standard tooltips and F1 help
// through the shell, and the read-only field whose text lives in a prompt.
#include "quorvel/controls/prompt.h"

#include <string>
#include <tuple>
#include <vector>

#include "quorvel/controls/base_readonly.h"
#include "quorvel/controls/static_text.h"
#include "quorvel/frame/services.h"
#include "support/host.h"

namespace {

using qvtest::AnyVisible;
using qvtest::Pump;
using qvtest::WaitFor;
using qvtest::Windows;

class PromptTest : public qvtest::HostTest {
protected:
    void SetUp() override {
        UseSettings({});
        HostTest::SetUp();
    }
    // Moves the cursor onto `wnd` from outside, as a user's mouse does.
    void Hover(HWND wnd) {
        const std::pair<HWND, POINT> path[] = {{host_, POINT{600, 450}}, {wnd, POINT{5, 5}}};
        for (auto [over, p] : path) {
            ::ClientToScreen(over, &p);
            ::SetCursorPos(p.x, p.y);
            Pump(60);
        }
    }
    RECT rc_{20, 20, 220, 60};
};

TEST_F(PromptTest, PromptShowsItsTextWithLineEndsAndMandatoryMark) {
    const struct { const wchar_t* text; bool mandatory; const wchar_t* shown; } cases[] = {
        {L"A\nB", false, L"\r\nB"}, {L"XY\nZ", false, L"XY\r\nZ"}, {L"Na\nme", true, L"Na\r\nme*"}};
    for (const auto& c : cases) {
        XBasePrompt prompt;
        prompt.Create(c.text, 7, rc_, font_, host_, false, false, L"", c.mandatory);
        EXPECT_EQ(qvtest::TextOf(prompt), c.shown);
    }
    XBasePrompt orphan;
    EXPECT_FALSE(orphan.Create(L"x", 1, rc_, font_, nullptr, false, false, L"tip", false));
}

TEST_F(PromptTest, F1OverAPromptTooltipOpensItsDocument) {
    UseSettings({{L"tooltipdelaytime", L"5"}});
    for (const auto& [help, file] : {std::pair{L"Due<document>dates.htm</document>", L"dates.htm"}, {L"Plain", L""}}) {
        rec_->shell.calls.clear();
        const std::vector<HWND> before = Windows(L"XTooltip");
        XBasePrompt prompt;
        ASSERT_TRUE(prompt.Create(L"Due date", 7, rc_, font_, host_, false, false, help, false));
        Hover(prompt);
        ASSERT_TRUE(WaitFor([&] { return AnyVisible(Windows(L"XTooltip", before)); })) << help;
        ::SendMessageW(prompt, WM_KEYDOWN, VK_F1, 1);
        ASSERT_EQ(rec_->shell.calls.size(), *file ? 1u : 0u) << help;
        if (*file) {
            EXPECT_EQ(rec_->shell.calls[0].file, file) << "the tooltip asked the prompt for its help file";
        }
        prompt.DestroyWindow();
        EXPECT_TRUE(Windows(L"XTooltip", before).empty()) << "the tooltip goes with its prompt";
    }
}

TEST_F(PromptTest, StaticShowsItsHelpAndOpensItsDocumentOnF1) {
    UseSettings({{L"tooltipdelaytime", L"5"}});
    // target null: F1 opens nothing
    const struct { const wchar_t* help; size_t tooltips; const wchar_t* target; } cases[] = {
        {L" ", 0, nullptr}, {L"Only text", 1, nullptr},
        {L"Start date<document>dates.htm</document>", 2, L"C:\\help\\dates.htm"},
        {L"Web<document>http://example.org/page.htm</document>", 2, L"http://example.org/page.htm"},
    };
    LPARAM key = 1;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.help);
        rec_->shell.calls.clear();
        const std::vector<HWND> before = Windows(TOOLTIPS_CLASSW);
        XBaseStaticText label;
        ASSERT_TRUE(label.Create(L"Start date", 9, rc_, font_, host_, c.help, false));
        ASSERT_EQ(Windows(TOOLTIPS_CLASSW, before).size(), c.tooltips);
        if (c.tooltips == 0) continue;
        ::SendMessageW(label, WM_KEYDOWN, VK_F1, ++key);
        EXPECT_TRUE(rec_->shell.calls.empty()) << "no help without the tooltip";

        ::SetFocus(host_);
        Hover(label);
        ASSERT_TRUE(WaitFor([&] { return AnyVisible(Windows(TOOLTIPS_CLASSW, before)); }));
        EXPECT_EQ(::GetFocus(), label.m_hWnd) << "hovering takes the focus, so F1 reaches the label";
        for (HWND tip : Windows(TOOLTIPS_CLASSW, before)) {
            const bool shown = ::IsWindowVisible(tip);
            EXPECT_TRUE(!shown || ::SendMessageW(tip, TTM_GETDELAYTIME, TTDT_AUTOPOP, 0) == 30000);
        }
        ::SendMessageW(label, WM_KEYDOWN, VK_F1, ++key);
        // A host loop that offers the message first does not open it twice.
        MSG msg{label, WM_KEYDOWN, VK_F1, ++key, static_cast<DWORD>(::GetMessageTime()), {}};
        EXPECT_FALSE(label.PreTranslateMessage(&msg));
        ::DispatchMessageW(&msg);
        ASSERT_EQ(rec_->shell.calls.size(), c.target ? 2u : 0u);
        if (c.target) {
            const qvtest::RecordedShell& call = rec_->shell.calls[0];
            EXPECT_EQ(std::tie(call.verb, call.file, call.parameters, call.directory, call.show),
                      std::make_tuple(L"open", c.target, L"", c.target, SW_SHOWNORMAL));
        }
        // The text tooltip goes with the label; the document's stays with the object.
        label.DestroyWindow();
        EXPECT_EQ(Windows(TOOLTIPS_CLASSW, before).size(), c.tooltips - 1);
    }
}

TEST_F(PromptTest, ReadOnlyFieldKeepsItsTextInThePrompt) {
    XBaseEditReadOnly field;
    ASSERT_TRUE(field.Create(L"Start", 5, RECT{10, 10, 210, 40}, font_, host_));
    HWND prompt = ::GetWindow(field, GW_CHILD);
    ASSERT_NE(prompt, nullptr);
    EXPECT_EQ(qvtest::TextOf(prompt), L"Start");

    const struct { int limit; bool mask; const wchar_t *set, *shown; } cases[] = {
        {32767, true, L"ab12", L"AB12"}, {32767, true, L"ab-c", L""}, {5, false, L"Hello world", L"Hello"}};
    for (const auto& c : cases) {
        field.SetMaxInputChar(c.limit);
        field.ActivateInputMask09AZ(c.mask);
        EXPECT_EQ(field.SendMessage(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(c.set)), 0);
        EXPECT_EQ(std::tuple(qvtest::TextOf(prompt), field.SendMessage(WM_GETTEXTLENGTH)),
                  std::tuple(c.shown, static_cast<LRESULT>(wcslen(c.shown))));
    }
    wchar_t buffer[8] = {};
    const std::tuple<WPARAM, LRESULT, const wchar_t*> reads[] = {{8, 6, L"Hello"}, {3, 3, L"He"}, {0, 0, L"He"}};
    for (const auto& [room, answer, text] : reads) {
        EXPECT_EQ(field.SendMessage(WM_GETTEXT, room, reinterpret_cast<LPARAM>(buffer)), answer) << "one more than copied";
        EXPECT_STREQ(buffer, text);
    }

    // The prompt stays 2 pixels inside the frame's client area.
    field.SetWindowPos(nullptr, 0, 0, 150, 60, SWP_NOMOVE | SWP_NOZORDER);
    const RECT client = field.GetClientRect();
    const RECT placed = qvtest::RectIn(field, prompt);
    EXPECT_EQ(std::tie(placed.left, placed.top, placed.right, placed.bottom),
              std::make_tuple(2L, 2L, client.right - 2, client.bottom - 2));
}

}  // namespace
