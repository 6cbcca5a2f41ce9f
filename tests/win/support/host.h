// Shared fixture of the Windows tests: a visible top-level host window on the
// test thread, a message pump, and the recorders that keep every test from
// blocking (message boxes, shell-execute) installed for the whole run.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/recorders.h"

namespace qvtest {

// Runs the message loop of this thread for about `ms` milliseconds.
void Pump(DWORD ms = 0);

// A plain Win32 top-level window (no library object), 640 x 480, shown.
HWND CreateHostWindow(const wchar_t* title = L"Quorvel test host");

// Sends each character as WM_CHAR, as TranslateMessage would after a key.
void TypeChars(HWND hwnd, const std::wstring& text);

// The window text of any window.
std::wstring TextOf(HWND hwnd);

// The selection of an edit field object, as (start, end).
template <class Edit>
std::pair<int, int> SelOf(Edit& edit) {
    int start = -1, end = -1;
    edit.GetSel(start, end);
    return {start, end};
}

// Pumps until `done` holds or about `ms` milliseconds have passed.
bool WaitFor(const std::function<bool()>& done, DWORD ms = 4000);

// A non-character key in a Press script: a private-use code unit per key.
constexpr wchar_t Key(int vk) { return static_cast<wchar_t>(0xE000 + vk); }

// Plays a key script as a keyboard does: WM_KEYDOWN for Key(vk) and for
// Backspace, WM_CHAR for every key that makes a character.
void Press(HWND hwnd, const std::wstring& keys);

// Holds a key down for GetKeyState on this thread while it lives.
class HeldKey {
public:
    explicit HeldKey(int vk, bool down = true) : vk_(vk) { Set(down); }
    ~HeldKey() { Set(false); }
    HeldKey(const HeldKey&) = delete;
    HeldKey& operator=(const HeldKey&) = delete;
    void Set(bool down);

private:
    int vk_;
};

// The clipboard as CF_TEXT (null empties it; "<none>" when it holds none)
// and as CF_UNICODETEXT.
bool SetClipboard(HWND owner, const char* text);
bool SetClipboard(HWND owner, const std::wstring& text);
std::string ClipboardAnsi(HWND owner);
std::wstring ClipboardText(HWND owner);

// Shows every message a window receives to `see` while it lives.
class MessageSpy {
public:
    using See = std::function<void(UINT msg, WPARAM wp, LPARAM lp)>;
    MessageSpy(HWND hwnd, See see);
    ~MessageSpy();
    MessageSpy(const MessageSpy&) = delete;
    MessageSpy& operator=(const MessageSpy&) = delete;

private:
    HWND hwnd_;
    See see_;
};

// Where `child` sits in `parent`'s client coordinates.
RECT RectIn(HWND parent, HWND child);

// The extent of `text` in `font` on `wnd`'s DC (the screen's for null).
SIZE TextExtent(HWND wnd, HFONT font, const std::wstring& text);

// A log entry as "module|function|line|message|hr (hex)", to compare whole.
std::wstring Describe(const qv::LogEntry& entry);

// Sets values of the user's locale and restores them when it goes.
class LocaleOverride {
public:
    LocaleOverride() = default;
    LocaleOverride(LCTYPE type, const wchar_t* value) { Set(type, value); }
    ~LocaleOverride();
    LocaleOverride(const LocaleOverride&) = delete;
    LocaleOverride& operator=(const LocaleOverride&) = delete;
    bool Set(LCTYPE type, const wchar_t* value);

private:
    std::vector<std::pair<LCTYPE, std::wstring>> saved_;
};

// The top-level windows of class `cls` that are not in `old`.
std::vector<HWND> Windows(const wchar_t* cls, const std::vector<HWND>& old = {});
bool AnyVisible(const std::vector<HWND>& windows);

// Test base: a fresh host window for each test, destroyed afterwards, and
// the recorders installed (rec_->boxes, rec_->shell). The settings are
// cleared after each test.
class HostTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    // Rows for fields 190 x 24, 30 pixels apart.
    static RECT Row(int i) { return RECT{10, 10 + 30 * i, 200, 34 + 30 * i}; }
    // The help folder and the given "Common" settings (empty values left
    // out), read afresh by the next tooltip.
    static void UseSettings(std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> common);
    HFONT font_ = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    HWND host_ = nullptr;
    std::unique_ptr<Recorders> rec_;
};

}  // namespace qvtest
