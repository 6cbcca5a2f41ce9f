// Timing harness under Wine (not a test): one keystroke in the filtering
// combo box with 10 000 entries, from the WM_CHAR to the refilled list,
// with the list dropped as it is while the user types:
// - a prefix that keeps every entry, and the Backspace that empties the
//   field and brings every entry back (the worst case: two full refills);
// - a pattern ("*7") that keeps one entry in ten, and its Backspace ("*",
//   every entry again);
// - a prefix that keeps none;
// - the first keystroke's drop of the list, sized over every entry;
// against a plain combo box refilled with the same 10 000 texts in the same
// run. Printed in milliseconds per keystroke; a first argument sets another
// entry count.
#include <windows.h>
#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>
#include <vector>

#include "quorvel/lists/custom_combo.h"
#include "timing.h"

namespace {

int kEntries = 10000;
constexpr int kRounds = 10;

std::vector<std::wstring> Texts() {
    std::vector<std::wstring> texts;
    unsigned state = 4242;
    for (int i = 0; i < kEntries; ++i) {
        state = state * 1664525u + 1013904223u;
        wchar_t text[48];
        std::swprintf(text, 48, L"Entry %05u of the catalogue %u", static_cast<unsigned>(i), (state >> 8) % 100000);
        texts.push_back(text);
    }
    return texts;
}

double BaselineRefill(HWND parent, const std::vector<std::wstring>& texts, bool dropped) {
    HWND combo = ::CreateWindowExW(0, L"COMBOBOX", L"", WS_CHILD | WS_VISIBLE | CBS_DROPDOWN | WS_VSCROLL, 0, 0, 300,
                                   300, parent, nullptr, nullptr, nullptr);
    if (dropped) ::SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    const double us = qvbench::MicrosPerCall(kRounds, [&](int) {
        ::SendMessageW(combo, WM_SETREDRAW, FALSE, 0);
        ::SendMessageW(combo, CB_RESETCONTENT, 0, 0);
        ::SendMessageW(combo, CB_INITSTORAGE, texts.size(), 64 * texts.size());
        for (size_t i = 0; i < texts.size(); ++i) {
            const LRESULT at = ::SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(texts[i].c_str()));
            ::SendMessageW(combo, CB_SETITEMDATA, at, static_cast<LPARAM>(i));
        }
        ::SendMessageW(combo, WM_SETREDRAW, TRUE, 0);
    });
    ::DestroyWindow(combo);
    return us / 1000.0;
}

// Milliseconds per keystroke: `key` typed after `start`, then Backspace.
struct Pair {
    double key = 0, back = 0;
    int shown = 0;
};

Pair Keystrokes(XCustomCombo& combo, HWND edit, const wchar_t* start, wchar_t key) {
    ::SetWindowTextW(edit, L"");
    for (const wchar_t* p = start; *p; ++p) ::SendMessageW(edit, WM_CHAR, *p, 1);
    Pair result;
    for (int r = 0; r < kRounds; ++r) {
        result.key += qvbench::MicrosPerCall(1, [&](int) { ::SendMessageW(edit, WM_CHAR, key, 1); });
        result.shown = combo.GetCount();
        result.back += qvbench::MicrosPerCall(1, [&](int) { ::SendMessageW(edit, WM_CHAR, L'\b', 1); });
    }
    result.key /= kRounds * 1000.0;
    result.back /= kRounds * 1000.0;
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    if (argc > 1 && std::atoi(argv[1]) > 0) kEntries = std::atoi(argv[1]);
    const std::vector<std::wstring> texts = Texts();
    HWND host = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 400, 400, nullptr, nullptr,
                                  nullptr, nullptr);

    const double baseline = BaselineRefill(host, texts, false);
    const double baselineDropped = BaselineRefill(host, texts, true);

    XCustomCombo combo;
    if (!combo.Create(L"", 1, RECT{0, 0, 300, 300}, static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT)), host))
        return 1;
    for (size_t i = 0; i < texts.size(); ++i) combo.AddEntry(texts[i], static_cast<DWORD>(i));
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    ::GetComboBoxInfo(combo.m_hWnd, &info);
    ::SetFocus(info.hwndItem);
    // The first keystroke drops the list: its size and width over every entry.
    const double drop = qvbench::MicrosPerCall(1, [&](int) { combo.ShowDropDown(true); }) / 1000.0;
    combo.ShowDropDown(false);
    combo.FilterList(L"");

    const Pair all = Keystrokes(combo, info.hwndItem, L"", L'e');
    const Pair star = Keystrokes(combo, info.hwndItem, L"*", L'7');
    const Pair none = Keystrokes(combo, info.hwndItem, L"", L'x');
    combo.ShowDropDown(false);

    std::printf("%d entries; milliseconds per keystroke (one frame: 16 ms)\n", kEntries);
    std::printf("plain combo box, refill with every entry:        %8.2f\n", baseline);
    std::printf("the same with its list dropped:                  %8.2f\n", baselineDropped);
    std::printf("dropping the list over every entry:              %8.2f\n", drop);
    std::printf("\"e\", prefix keeping %5d entries:               %8.2f\n", all.shown, all.key);
    std::printf("Backspace to an empty field, every entry back:   %8.2f\n", all.back);
    std::printf("\"*7\", pattern keeping %5d entries:             %8.2f\n", star.shown, star.key);
    std::printf("Backspace to \"*\", every entry:                   %8.2f\n", star.back);
    std::printf("\"x\", prefix keeping %5d entries:               %8.2f\n", none.shown, none.key);
    std::printf("Backspace to an empty field, every entry back:   %8.2f\n", none.back);
    combo.DestroyWindow();
    ::DestroyWindow(host);
    return 0;
}
