// Test seams behind the library's services: message boxes and shell-execute
// are recorded instead of shown or run, so no test ever blocks.
#pragma once

#include <windows.h>

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

// Installs both recorders for its lifetime and clears the log book.
class Recorders {
public:
    Recorders() {
        qv::Services::SetMessageBoxes(&boxes);
        qv::Services::SetShell(&shell);
        qv::Services::DefaultLogBook().Clear();
    }
    ~Recorders() {
        qv::Services::SetMessageBoxes(nullptr);
        qv::Services::SetShell(nullptr);
    }
    Recorders(const Recorders&) = delete;
    Recorders& operator=(const Recorders&) = delete;
    MessageBoxRecorder boxes;
    ShellRecorder shell;
};

}  // namespace qvtest
