// What becomes of output that can't be written, that nobody reads, or that a terminal is too narrow
// for.
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "tests/support/Support.h"
#include "tests/support/posix/Shell.h"
#include "tests/support/posix/Terminal.h"

using testing::HasSubstr;

namespace {

/// Each command with data on standard output; the file sequence.yaml and the folder dump are there.
std::vector<std::string> Commands() {
    std::vector<std::string> commands = {
        "--help", "run --help", "docs", "completion bash", "run GetBodyID --trace trace.jsonl"};
    for (const std::string command :
         {"list", "run GetBodyID", "dump dump", "sequence sequence.yaml", "body show body.yaml",
          "log", "verify dump", "diff dump dump", "doctor", "replay trace.jsonl"}) {
        commands.insert(commands.end(), {command, command + " --json"});
    }
    return commands;
}

class JighostOutputTest : public JighostTest {
  protected:
    JighostOutputTest() {
        std::filesystem::create_directory("dump");
        WriteFile("sequence.yaml", "format: 1\nsteps:\n" + SET_OWNER + SAVE_OWNER);
        EXPECT_EQ(RunJighost({"run", "GetBodyID", "--trace", "trace.jsonl"}).exitCode, 0);
        EXPECT_EQ(RunJighost({"dump", "dump"}).exitCode, 0);
    }

    static JIGHOST_RUN RunWith(const std::string& command, const std::string& redirection) {
        return RunShell("exec \"$0\" " + command + ' ' + redirection);
    }
};

TEST_F(JighostOutputTest, EveryCommandEndsWithOneAndALineIfItsDataAreLost) {
    for (const std::string& command : Commands()) {
        EXPECT_EQ(RunWith(command, "").exitCode, 0) << command;
        for (const std::string redirection : {">/dev/full", ">&-"}) {
            const JIGHOST_RUN run = RunWith(command, redirection);
            EXPECT_EQ(run.exitCode, 1) << command << redirection;
            EXPECT_THAT(run.errors, HasSubstr("jighost: can't write standard output: ")) << command;
        }
    }
    EXPECT_EQ(RunShell("timeout 60 \"$0\" log --follow >/dev/full").exitCode, 1);
    EXPECT_EQ(RunWith("run GetBodyID --trace", "2>/dev/full").exitCode, 1);
    EXPECT_EQ(RunWith("run GetBodyID", "2>&-").exitCode, 0);
    EXPECT_EQ(RunWith("run GetBodyIDs", "2>&-").exitCode, 2);
    EXPECT_EQ(RunWith("body new other.yaml", ">&-").exitCode, 0) << "it has no data";
}

// A file that is opened where standard output was would get the data.
TEST_F(JighostOutputTest, ClosedStandardFilesPassTheirNumbersToNoOtherFile) {
    const JIGHOST_RUN run =
        RunWith("run GetBodyID --trace closed.jsonl --body body.yaml", "<&- >&- 2>&-");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(ReadFile("closed.jsonl").find("RESULT_SUCCESS"), std::string::npos);
    EXPECT_EQ(RunJighost({"replay", "closed.jsonl"}).exitCode, 0);
}

// The pipe has no reader from the start.
TEST_F(JighostOutputTest, PipeThatNobodyReadsEndsQuietlyWhenAllThatLastsIsWritten) {
    const std::string pipe = "mkfifo pipe; exec 3<>pipe 4>pipe 3<&-\n\"$0\" ";
    for (const std::string& command : Commands()) {
        const JIGHOST_RUN run = RunShell(pipe + command + " >&4; code=$?; rm pipe; exit $code");
        EXPECT_EQ(run.exitCode, 141) << command;
        EXPECT_EQ(run.errors, "") << command;
    }
    const JIGHOST_RUN run =
        RunShell(pipe + "sequence sequence.yaml --record run.json --body body.yaml >&4");
    EXPECT_EQ(run.exitCode, 141);
    EXPECT_THAT(ReadFile("run.json"), HasSubstr("\n  \"outcome\": \"passed\","));
    EXPECT_THAT(Owner(), HasSubstr("Desk"));
}

// --- Terminals ---

TEST_F(JighostOutputTest, TerminalCutsNoWordOfASequence) {
    WriteFile(
        "sequence.yaml",
        "format: 1\nsteps:\n  - {operation: GetIcuFirmwareVersion, expect_fields: {Version: "
        "01}}\n");
    const Terminal terminal;
    RunShell("NO_COLOR=1 \"$0\" sequence sequence.yaml >" + terminal.path + " 2>&1");
    std::istringstream shown(terminal.ReadUntil("jighost: step 1"));
    std::string words;
    for (std::string line; std::getline(shown, line);) {
        line.erase(0, line.rfind("\033[K") == std::string::npos ? 0 : line.rfind("\033[K") + 3);
        line.pop_back();  // the terminal's carriage return
        EXPECT_LE(line.size(), 60U) << line;
        words += line.substr(std::min(line.find_first_not_of(' '), line.size())) + ' ';
    }
    EXPECT_THAT(words, HasSubstr("not as expected"));
    EXPECT_THAT(words, HasSubstr("1 of 1 steps run, 1 not as expected"));
    EXPECT_THAT(RunWith("sequence sequence.yaml", "2>&1").output, HasSubstr("not as expected\n"));
}

}  // namespace
