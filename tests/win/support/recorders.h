// Test seams behind the library's services: message boxes, shell-execute and
// the print dialog are recorded instead of shown or run, so no test ever
// blocks.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "quorvel/frame/services.h"

namespace qvtest {

struct RecordedBox { HWND parent; std::wstring caption; std::wstring text; UINT type; };

class MessageBoxRecorder : public qv::IMessageBoxService {
public:
    int Show(HWND parent, const wchar_t* caption, const wchar_t* text, UINT type) override {
        boxes.push_back({parent, caption ? caption : L"", text ? text : L"", type});
        return answer;
    }
    std::vector<RecordedBox> boxes;
    int answer = IDOK;
};

struct RecordedShell { std::wstring verb, file, parameters, directory; int show; };

class ShellRecorder : public qv::IShellService {
public:
    INT_PTR Execute(HWND, const wchar_t* verb, const wchar_t* file, const wchar_t* parameters,
                    const wchar_t* directory, int show) override {
        calls.push_back({verb ? verb : L"", file ? file : L"", parameters ? parameters : L"",
                         directory ? directory : L"", show});
        return answer;
    }
    std::vector<RecordedShell> calls;
    INT_PTR answer = 42;
};

// Stands in for the print dialog: records the owner and answers the DC that
// `choose` makes (null, or no `choose`: the user cancelled).
class PrintDialogRecorder : public qv::IPrintDialogService {
public:
    HDC ChoosePrinter(HWND owner, std::wstring& deviceName) override {
        owners.push_back(owner);
        deviceName = device;
        return choose ? choose() : nullptr;
    }
    std::vector<HWND> owners;
    std::function<HDC()> choose;
    std::wstring device;
};

// Installs the recorders for its lifetime and clears the log book.
class Recorders {
public:
    Recorders() {
        qv::Services::SetMessageBoxes(&boxes);
        qv::Services::SetShell(&shell);
        qv::Services::SetPrintDialog(&printDialog);
        qv::Services::DefaultLogBook().Clear();
    }
    ~Recorders() {
        qv::Services::SetMessageBoxes(nullptr);
        qv::Services::SetShell(nullptr);
        qv::Services::SetPrintDialog(nullptr);
    }
    Recorders(const Recorders&) = delete;
    Recorders& operator=(const Recorders&) = delete;
    MessageBoxRecorder boxes;
    ShellRecorder shell;
    PrintDialogRecorder printDialog;
};

}  // namespace qvtest
