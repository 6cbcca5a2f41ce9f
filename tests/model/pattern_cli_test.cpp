#include "cli.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct CliRun { int code; std::string out, err; };

CliRun Command(std::vector<std::string> args) {
    CliRun r;
    r.code = qvtool::RunCommand(args, r.out, r.err);
    return r;
}

TEST(PatternCli, CommandsAnswerWithExitCodes) {
    struct Row { std::vector<std::string> args; int code; const char* out; } rows[] = {
        {{"check", "(+|-)#?", "-12", "+5"}, 0, "accepted\naccepted\n"},
        {{"check", "#2?", "12", "123", ""}, 1, "accepted\nrefused\naccepted\n"},
        {{"check", "[\xC3\xA9t\xC3\xA9|hiver]", "\xC3\xA9t"}, 0, "accepted\n"},
        {{"lint", "#5?(.|,)(#2?)"}, 0, ""},
        {{"lint", "(a||b"}, 1, "position 1: '(' is never closed: a text that reaches this group is refused\nposition 4: empty alternative before '|'\n"},
        {{"explain", "#5?(.|,)(#2?)", "12,5"}, 0, "prefix: \"12,5\" (4 of 4 characters)\naccepted\n"},
        {{"explain", "#2?x", "123"}, 1, "prefix: \"12\" (2 of 3 characters)\nrefused '3' at position 3: item \"#2?\""},
        {{"--batch"}, qvtool::kRunBatch, ""},
    };
    for (const Row& row : rows) {
        const CliRun r = Command(row.args);
        EXPECT_EQ(r.code, row.code) << row.args[0] << " " << row.args[1];
        EXPECT_EQ(r.out.rfind(row.out, 0), 0u) << r.out;
    }
    for (const std::vector<std::string>& bad : std::vector<std::vector<std::string>>{
             {}, {"check", "#"}, {"lint"}, {"explain", "#"}, {"frobnicate"}, {"--batch", "x"}}) {
        const CliRun r = Command(bad);
        EXPECT_EQ(r.code, qvtool::kExitUsage);
        EXPECT_NE(r.err.find("usage:"), std::string::npos);
    }
}

TEST(PatternCli, BatchAnswersEveryLineInOrderWhateverTheChunks) {
    const std::string input = "#?\t123\n#?\t12a\r\nno tab here\n\n(+|-)#?\t-\n[a|]\tb\n#\t";
    const std::string expected =
        "1\n0\nerror: line 3 has no tab between pattern and text\nerror: line 4 has no tab between pattern and text\n"
        "1\n0\n1\n";
    for (size_t chunk : {size_t{1}, size_t{3}, input.size()}) {
        qvtool::BatchChecker batch;
        std::string out;
        for (size_t i = 0; i < input.size(); i += chunk) batch.Feed(std::string_view(input).substr(i, chunk), out);
        batch.Finish(out);
        EXPECT_EQ(out, expected) << "chunk " << chunk;
        EXPECT_TRUE(batch.HadErrors());
    }
}

}  // namespace
