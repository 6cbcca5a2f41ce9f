// Shared fixture of the Windows tests: a visible top-level host window on the
// test thread, a message pump, and the recorders that keep every test from
// blocking (message boxes, shell-execute) installed for the whole run.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <memory>
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

// Test base: a fresh host window for each test, destroyed afterwards, and
// the recorders installed (rec_->boxes, rec_->shell).
class HostTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    HWND host_ = nullptr;
    std::unique_ptr<Recorders> rec_;
};

}  // namespace qvtest
