// Timing harness under Wine (not a test): what the line-number gutter costs
// when an edit scrolls, for a text of 1 000 and of 100 000 lines side by
// side. Printed in microseconds, the best of several rounds (the other
// processes of a shared machine only ever add time):
// - a page scroll (WM_VSCROLL, then painting), of a plain multi-line EDIT and
//   of the line-numbered edit: the difference is the gutter's share;
// - the gutter following one page on its own (new numbers, repainted at
//   once): it paints only the lines in view, so it should not depend on the
//   length of the text;
// - a key that moves nothing, into a plain EDIT and into the numbered edit,
//   which checks the lines in view after every key.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "quorvel/windows/line_number_edit.h"
#include "timing.h"

namespace {

std::wstring Lines(int n) {
    std::wstring text;
    text.reserve(static_cast<std::size_t>(n) * 16);
    for (int i = 1; i <= n; ++i) text += L"line " + std::to_wstring(i) + L"\r\n";
    return text;
}

// Pages down and up in turn from the middle of the text, so every call
// scrolls a whole page.
double PerPageMicros(HWND edit, int count) {
    return qvbench::MicrosPerCall(count, [&](int i) {
        ::SendMessageW(edit, WM_VSCROLL, i % 2 ? SB_PAGEUP : SB_PAGEDOWN, 0);
        ::UpdateWindow(edit);
    });
}

// The gutter given the next page's lines and back, repainting each time.
double GutterPageMicros(XMultiLineEditLN& edit, int count) {
    XLineNumberStatic& gutter = edit.GetLineNumberStatic();
    const int first = gutter.GetTopLine(), last = gutter.GetBottomLine(), page = last - first;
    const double micros = qvbench::MicrosPerCall(count, [&](int i) {
        const int shift = i % 2 ? 0 : page;
        gutter.SetTopAndBottom(first + shift, last + shift);
    });
    gutter.SetTopAndBottom(first, last);
    return micros;
}

// A key that moves nothing (Shift going down): the numbered edit still
// checks the lines in view after it.
double UnmovedKeyMicros(HWND edit, int count) {
    return qvbench::MicrosPerCall(count, [&](int) { ::SendMessageW(edit, WM_KEYDOWN, VK_SHIFT, 1); });
}

struct Edits {
    HWND plain;
    XMultiLineEditLN numbered;
};

void Make(Edits& e, HWND host, int lines, int x, HFONT font) {
    const std::wstring text = Lines(lines);
    e.plain = ::CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"", XBaseMultiLineEdit::kStyle, x, 0, 220, 400, host,
                                nullptr, nullptr, nullptr);
    ::SendMessageW(e.plain, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    ::SetWindowTextW(e.plain, text.c_str());
    e.numbered.Create(text, 1, RECT{x + 230, 0, x + 450, 400}, font, host);
    ::SendMessageW(e.plain, EM_LINESCROLL, 0, lines / 2);
    e.numbered.LineScroll(lines / 2);
}

}  // namespace

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    // Painting needs a visible window.
    HWND host = ::CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 920, 400, nullptr, nullptr,
                                  nullptr, nullptr);
    const HFONT font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
    Edits shortText, longText;
    Make(shortText, host, 1000, 0, font);
    Make(longText, host, 100000, 460, font);
    ::UpdateWindow(host);

    double page[2][2], key[2][2], gutter[2] = {1e9, 1e9};
    Edits* const edits[2] = {&shortText, &longText};
    for (int t = 0; t < 2; ++t) page[t][0] = page[t][1] = key[t][0] = key[t][1] = 1e9;
    for (int round = 0; round < 3; ++round) {
        for (int t = 0; t < 2; ++t) {
            page[t][0] = std::min(page[t][0], PerPageMicros(edits[t]->plain, 30));
            page[t][1] = std::min(page[t][1], PerPageMicros(edits[t]->numbered, 30));
            gutter[t] = std::min(gutter[t], GutterPageMicros(edits[t]->numbered, 200));
            key[t][0] = std::min(key[t][0], UnmovedKeyMicros(edits[t]->plain, 2000));
            key[t][1] = std::min(key[t][1], UnmovedKeyMicros(edits[t]->numbered, 2000));
        }
    }
    const XLineNumberStatic& g = longText.numbered.GetLineNumberStatic();
    std::printf("%d numbers in view; microseconds for 1 000 / 100 000 lines\n", g.GetBottomLine() - g.GetTopLine());
    std::printf("page scroll, plain multi-line EDIT:            %9.1f / %9.1f\n", page[0][0], page[1][0]);
    std::printf("page scroll, line-numbered edit:               %9.1f / %9.1f\n", page[0][1], page[1][1]);
    std::printf("gutter following one page (repainted):         %9.1f / %9.1f\n", gutter[0], gutter[1]);
    std::printf("key that moves nothing, plain multi-line EDIT: %9.1f / %9.1f\n", key[0][0], key[1][0]);
    std::printf("key that moves nothing, line-numbered edit:    %9.1f / %9.1f\n", key[0][1], key[1][1]);
    ::DestroyWindow(host);
    return 0;
}
