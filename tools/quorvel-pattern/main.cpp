// quorvel-pattern's entry point: UTF-8 arguments and streams on every
// platform, standard input read as it arrives so that a program driving
// --batch line by line gets each answer at once.
#include <cstdio>
#include <string>
#include <vector>

#include "cli.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "quorvel/common/utf8.h"
#define QV_READ _read
#else
#include <unistd.h>
#define QV_READ read
#endif

namespace {

void Write(std::FILE* stream, std::string& bytes) {
    if (bytes.empty()) return;
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
    bytes.clear();
}

int Run(const std::vector<std::string>& args) {
    std::string out, err;
    const int code = qvtool::RunCommand(args, out, err);
    Write(stdout, out);
    Write(stderr, err);
    if (code != qvtool::kRunBatch) return code;

    qvtool::BatchChecker batch;
    std::vector<char> buffer(1 << 16);
    for (;;) {
        const int n = QV_READ(0, buffer.data(), static_cast<unsigned>(buffer.size()));
        if (n <= 0) break;
        batch.Feed(std::string_view(buffer.data(), static_cast<size_t>(n)), out);
        Write(stdout, out);
    }
    batch.Finish(out);
    Write(stdout, out);
    return batch.HadErrors() ? qvtool::kExitRefused : qvtool::kExitOk;
}

}  // namespace

#ifdef _WIN32
int wmain(int argc, wchar_t** argv) {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
    std::vector<std::string> args;
    for (int i = 1; i < argc; ++i) args.push_back(qv::WideToUtf8(argv[i]));
    return Run(args);
}
#else
int main(int argc, char** argv) { return Run(std::vector<std::string>(argv + 1, argv + argc)); }
#endif
