// A minimal host application: its own dialog with a signed decimal field, a
// date field that can hold "no date", and a label with a mark-up tooltip.
//
//   host.exe              shows the dialog
//   host.exe --self-test  types into the field the way a user does, reads the
//                         values back, prints them and exits 0 when all is well
#include <windows.h>

#include <cmath>
#include <cstdio>
#include <cwchar>

#include <quorvel/controls/prompt.h>
#include <quorvel/frame/services.h>
#include <quorvel/masks/date_edits.h>
#include <quorvel/masks/numeric.h>

#include "resource.h"

namespace {

struct OrderForm {
    XMaskSignedFloatEdit amount{8, 2};  // at most 8 integer digits and 2 decimals
    XBasePrompt amountLabel;
    XMFCBaseDateEdit due;
};

RECT DialogRect(HWND dialog, int x, int y, int cx, int cy) {
    RECT rc{x, y, x + cx, y + cy};
    ::MapDialogRect(dialog, &rc);
    return rc;
}

bool InitForm(HWND dialog, OrderForm& form) {
    const auto font = reinterpret_cast<HFONT>(::SendMessageW(dialog, WM_GETFONT, 0, 0));
    // An existing dialog item becomes a library control by subclassing...
    if (!form.amount.SubclassDlgItem(IDC_AMOUNT, dialog)) return false;
    form.amount.SetLimits(-10000.0, 10000.0);
    // ...and new controls are created on the dialog.
    if (!form.amountLabel.Create(L"Amount", IDC_AMOUNT_LABEL, DialogRect(dialog, 7, 10, 60, 10), font, dialog,
                                 false, false, L"<b>Amount</b><br>Between <ct=0x0000C0>-10000</ct> and 10000, "
                                               L"two decimals at most.", true))
        return false;
    return form.due.Create(true, DialogRect(dialog, 70, 30, 90, 14), dialog, IDC_DUE, font) != 0;
}

INT_PTR CALLBACK OrderDialogProc(HWND dialog, UINT msg, WPARAM wp, LPARAM lp) {
    switch (msg) {
    case WM_INITDIALOG:
        if (!InitForm(dialog, *reinterpret_cast<OrderForm*>(lp))) ::EndDialog(dialog, IDABORT);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wp) == IDOK || LOWORD(wp) == IDCANCEL) ::EndDialog(dialog, LOWORD(wp));
        return TRUE;
    default:
        return FALSE;
    }
}

// Dispatches the thread's messages for up to `ms` milliseconds, until `done`.
template <class Done>
bool PumpFor(DWORD ms, Done done) {
    const DWORD start = ::GetTickCount();
    do {
        MSG msg;
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&msg);
            ::DispatchMessageW(&msg);
        }
        if (done()) return true;
        ::Sleep(10);
    } while (::GetTickCount() - start < ms);
    return false;
}

int SelfTest() {
    OrderForm form;
    HWND dialog = ::CreateDialogParamW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_ORDER), nullptr,
                                       OrderDialogProc, reinterpret_cast<LPARAM>(&form));
    if (!dialog || !form.amount.IsWindow() || !form.due.IsWindow() || !form.amountLabel.IsWindow()) {
        std::printf("the controls were not created\n");
        return 1;
    }
    ::ShowWindow(dialog, SW_SHOW);
    ::SetForegroundWindow(dialog);
    int failures = 0;
    auto expect = [&failures](bool ok, const char* what) {
        std::printf("%s: %s\n", ok ? "ok" : "FAILED", what);
        if (!ok) ++failures;
    };

    // Typing: the field refuses the letter and the third decimal.
    ::SetFocus(form.amount);
    for (const wchar_t* p = L"-12.5x79"; *p; ++p) ::SendMessageW(form.amount, WM_CHAR, *p, 1);
    wchar_t text[64] = {};
    ::GetWindowTextW(form.amount, text, 64);
    expect(std::wcscmp(text, L"-12.57") == 0, "typed -12.5x79, the field shows -12.57");
    expect(std::fabs(form.amount.GetValue() + 12.57) < 1e-9, "GetValue answers -12.57");

    qv::OleDateTime due;
    expect(form.due.GetValue(due) != 0 && due.GetStatus() == qv::OleDateTime::null, "the date field starts with no date");
    form.due.SetValue(qv::OleDateTime(2026, 11, 23, 0, 0, 0));
    expect(form.due.GetValue(due) != 0 && due.GetYear() == 2026 && due.GetMonth() == 11 && due.GetDay() == 23,
           "the date field holds 2026-11-23");
    // Hovering over the label shows its mark-up tooltip: the setting above is
    // on. The pointer comes in from the dialog and rests on the label, moving
    // a pixel now and then the way a hand does, for up to ten seconds (a busy
    // machine can be slow to deliver the moves and the delay's timer).
    const auto tooltipShown = [] {
        HWND tip = ::FindWindowW(L"XTooltip", nullptr);
        return tip && ::IsWindowVisible(tip);
    };
    bool shown = false;
    for (int attempt = 0; attempt < 6 && !shown; ++attempt) {
        for (HWND over : {dialog, form.amountLabel.m_hWnd}) {
            POINT p{3 + attempt % 2, 3};
            ::ClientToScreen(over, &p);
            ::SetCursorPos(p.x, p.y);
            PumpFor(50, [] { return false; });
        }
        shown = PumpFor(1500, tooltipShown);
    }
    expect(shown, "hovering over the label shows its tooltip");

    ::DestroyWindow(dialog);
    std::printf("%d passed, %d failed\n", 5 - failures, failures);
    return failures == 0 ? 0 : 1;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR commandLine, int) {
    // Tooltips are off until the host says how long one stays up: the one
    // setting that switches them on ("Common" / "tooltipdelaytime", seconds).
    // A host with a session-data manager keeps it there instead.
    qv::Services::DefaultSettings().Set(L"Common", L"tooltipdelaytime", L"20");

    if (commandLine && std::wcsstr(commandLine, L"--self-test")) return SelfTest();
    OrderForm form;
    return static_cast<int>(::DialogBoxParamW(instance, MAKEINTRESOURCEW(IDD_ORDER), nullptr, OrderDialogProc,
                                              reinterpret_cast<LPARAM>(&form)));
}
