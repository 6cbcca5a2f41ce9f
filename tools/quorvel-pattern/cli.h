// quorvel-pattern: checks validation patterns from the command line, for the
// people who write them into the host's configuration. Arguments, standard
// input and output are UTF-8; output lines end with a bare LF everywhere.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qvtool {

// Exit codes: 0 all accepted / no problems, 1 refused / problems found,
// 2 bad arguments (usage on the error stream).
constexpr int kExitOk = 0;
constexpr int kExitRefused = 1;
constexpr int kExitUsage = 2;
// RunCommand's answer when the arguments ask for --batch: the caller then
// streams standard input through a BatchChecker.
constexpr int kRunBatch = -1;

// Runs `check`, `lint`, `explain` or `--help` (args without the program name).
int RunCommand(const std::vector<std::string>& args, std::string& out, std::string& err);

// --batch: input lines "PATTERN<TAB>TEXT" (split at the first tab; one
// trailing CR is dropped so that files with CRLF line ends work), one output
// line per input line, in order: "1" accepted, "0" refused, "error: ..." for
// a line without a tab. Input arrives in chunks of any size; every complete
// line is answered as soon as it has arrived.
class BatchChecker {
public:
    void Feed(std::string_view bytes, std::string& out);
    // Answers a last line that has no line end.
    void Finish(std::string& out);
    bool HadErrors() const { return errors_ != 0; }

private:
    void Line(std::string_view line, std::string& out);

    std::string pending_;
    std::string lastMask_;
    std::wstring mask_;
    std::wstring text_;
    unsigned long long lineNumber_ = 0;
    unsigned long long errors_ = 0;
};

}  // namespace qvtool
