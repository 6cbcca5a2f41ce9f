#include "cli.h"

#include "quorvel/common/utf8.h"
#include "quorvel/masks/pattern.h"
#include "quorvel/masks/pattern_lint.h"

namespace qvtool {
namespace {

const char kUsage[] =
    "usage: quorvel-pattern check PATTERN TEXT...   accepted/refused per text\n"
    "       quorvel-pattern --batch                 PATTERN<TAB>TEXT lines on stdin -> 1/0\n"
    "       quorvel-pattern lint PATTERN            problems, one per line\n"
    "       quorvel-pattern explain PATTERN TEXT    longest acceptable prefix and the refusing item\n"
    "Positions count from 1. Exit: 0 accepted/clean, 1 refused/problems (--batch: a line\n"
    "without a tab), 2 bad arguments.\n";

int Usage(std::string& err, const char* why) {
    if (why) err += std::string("quorvel-pattern: ") + why + "\n";
    err += kUsage;
    return kExitUsage;
}

}  // namespace

int RunCommand(const std::vector<std::string>& args, std::string& out, std::string& err) {
    if (args.empty()) return Usage(err, "no command");
    const std::string& command = args[0];
    if (command == "--help" || command == "-h") {
        out += kUsage;
        return kExitOk;
    }
    if (command == "--batch") return args.size() == 1 ? kRunBatch : Usage(err, "--batch takes no arguments");

    XParserFactory* checker = XParserFactory::GetParserFactory();
    if (command == "check") {
        if (args.size() < 3) return Usage(err, "check needs a pattern and at least one text");
        const std::wstring mask = qv::Utf8ToWide(args[1]);
        int result = kExitOk;
        for (size_t i = 2; i < args.size(); ++i) {
            const bool accepted = checker->Check(qv::Utf8ToWide(args[i]), mask) != 0;
            out += accepted ? "accepted\n" : "refused\n";
            if (!accepted) result = kExitRefused;
        }
        return result;
    }
    if (command == "lint") {
        if (args.size() != 2) return Usage(err, "lint needs exactly one pattern");
        const auto problems = qv::LintPattern(qv::Utf8ToWide(args[1]));
        for (const qv::PatternProblem& p : problems)
            out += "position " + std::to_string(p.pos + 1) + ": " + qv::WideToUtf8(p.message) + "\n";
        return problems.empty() ? kExitOk : kExitRefused;
    }
    if (command == "explain") {
        if (args.size() != 3) return Usage(err, "explain needs a pattern and one text");
        const std::wstring mask = qv::Utf8ToWide(args[1]);
        const std::wstring text = qv::Utf8ToWide(args[2]);
        const qv::PatternExplanation e = qv::ExplainPattern(mask, text);
        out += "prefix: \"" + qv::WideToUtf8(text.substr(0, e.prefixLength)) + "\" (" +
               std::to_string(e.prefixLength) + " of " + std::to_string(text.size()) + " characters)\n";
        if (e.accepted) {
            out += "accepted\n";
            return kExitOk;
        }
        out += qv::WideToUtf8(qv::DescribeRefusal(mask, text, e)) + "\n";
        return kExitRefused;
    }
    return Usage(err, ("unknown command '" + command + "'").c_str());
}

void BatchChecker::Feed(std::string_view bytes, std::string& out) {
    size_t start = 0;
    for (size_t nl = bytes.find('\n'); nl != std::string_view::npos; nl = bytes.find('\n', start)) {
        if (pending_.empty()) {
            Line(bytes.substr(start, nl - start), out);
        } else {
            pending_.append(bytes.substr(start, nl - start));
            Line(pending_, out);
            pending_.clear();
        }
        start = nl + 1;
    }
    pending_.append(bytes.substr(start));
}

void BatchChecker::Finish(std::string& out) {
    if (pending_.empty()) return;
    Line(pending_, out);
    pending_.clear();
}

void BatchChecker::Line(std::string_view line, std::string& out) {
    ++lineNumber_;
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    const size_t tab = line.find('\t');
    if (tab == std::string_view::npos) {
        ++errors_;
        out += "error: line " + std::to_string(lineNumber_) + " has no tab between pattern and text\n";
        return;
    }
    // Configuration files repeat a pattern over many lines: decode it once.
    const std::string_view mask = line.substr(0, tab);
    if (mask != lastMask_ || lineNumber_ == 1) {
        lastMask_.assign(mask);
        mask_.clear();
        qv::AppendUtf8AsWide(mask, mask_);
    }
    text_.clear();
    qv::AppendUtf8AsWide(line.substr(tab + 1), text_);
    int textPos = 0, maskPos = 0, depth = 0;
    const int accepted = XParserFactory::GetParserFactory()->CheckSyntax(text_, mask_, textPos, maskPos, depth);
    out += accepted ? "1\n" : "0\n";
}

}  // namespace qvtool
