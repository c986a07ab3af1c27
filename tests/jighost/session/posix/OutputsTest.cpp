// Where a run may write by links, to devices and by a shell, and what becomes of its other results
// when it can't.
#include <filesystem>

#include "jighost/records/RunRecordReader.h"
#include "tests/support/posix/Shell.h"

using testing::EndsWith;
using testing::HasSubstr;

namespace {

/// The steps on the body, as a shell runs it behind what comes first.
JIGHOST_RUN RunSteps(
    const std::string& steps, const std::string& options, const std::string& first = "") {
    WriteFile("sequence.yaml", "format: 1\nfolder: .\nsteps:\n" + steps);
    return RunShell(first + "\n\"$0\" sequence sequence.yaml --body body.yaml " + options);
}

TEST_F(JighostTest, OutputThatIsAnotherFileByALinkOrByTheShellIsRefused) {
    std::filesystem::create_symlink("sequence.yaml", "link");
    std::filesystem::create_symlink("new.json", "dangling");
    std::filesystem::create_symlink("circle", "circle");
    MakeIrregular("pipe");
    const std::pair<std::string, std::string> wrong[] = {
        {"--record ./link", "--record ./link is the same file as the sequence"},
        {"--trace link", "--trace link is the same file as the sequence"},
        {"--record new.json --trace dangling", "--trace dangling is the same file as --record"},
        {"--record out.txt >out.txt", "is the same file as standard output"},
        {"--record pipe", "--record pipe: expected a file, got a device or a pipe"},
        {"--report pipe", "--report pipe: expected a file, got a device or a pipe"},
        {"--junit /dev/null", "--junit /dev/null: expected a file, got a device or a pipe"},
        {"--record circle", "can't write circle: Too many levels of symbolic links"},
        {"--trace circle", "can't write circle: Too many levels of symbolic links"},
        {"--trace /dev/full", "can't write the trace /dev/full: No space left"},
    };
    for (const auto& [options, message] : wrong) {
        const JIGHOST_RUN run = RunSteps(SET_OWNER + SAVE_OWNER, options);
        EXPECT_EQ(run.exitCode, 2) << options;
        EXPECT_THAT(run.errors, HasSubstr(message));
        EXPECT_THAT(Owner(), HasSubstr("Line 4"));
        EXPECT_FALSE(std::filesystem::exists("new.json"));
    }
    // What it was and not what it is called counts, and a device may take everything.
    EXPECT_EQ(
        RunShell("\"$0\" run GetBodyID --trace /dev/null >/dev/null 2>/dev/null").exitCode, 0);
}

TEST_F(JighostTest, ResultThatCannotBeWrittenKeepsNoOtherOneBack) {
    std::string readings;
    for (int i = 0; i < 20; ++i) {
        readings += "  - operation: GetBodyID\n";
    }
    const JIGHOST_RUN large =
        RunSteps(SET_OWNER + SAVE_OWNER + readings, "--record run.json", "ulimit -f 26");
    EXPECT_EQ(large.exitCode, 1);
    EXPECT_THAT(large.output, HasSubstr("22 of 22 steps run, 0 not as expected"));
    EXPECT_THAT(large.errors, HasSubstr("can't write run.json: File too large"));
    EXPECT_THAT(Owner(), HasSubstr("Desk"));

    // A disk with room for the record's start and no more: the body and the trace do not fit.
    const std::string all = "--trace trace.jsonl --record run.json --json";
    const JIGHOST_RUN full = RunSteps(SET_OWNER + SAVE_OWNER, all, "ulimit -f 12");
    EXPECT_EQ(full.exitCode, 0) << "nothing is saved that was not so before\n" << full.errors;
    std::filesystem::remove("JigDll.log");
    const JIGHOST_RUN fuller = RunSteps(
        "  - operation: ClearOwnerName\n" + SAVE_OWNER + "  - operation: LoadPropertyData\n", all,
        "ulimit -f 12");
    EXPECT_EQ(fuller.exitCode, 1);
    EXPECT_THAT(fuller.output, EndsWith("\n}\n"));
    for (const std::string file : {"body.yaml", "the whole trace trace.jsonl", "run.json"}) {
        EXPECT_THAT(fuller.errors, HasSubstr("jighost: can't write " + file + ": File too large"));
    }
    const RUN_RECORD left = ReadRunRecord("run.json");
    EXPECT_EQ(left.verdict, VERDICT::UNFINISHED);
    EXPECT_EQ(left.steps.size(), 2U) << "what there was room for";
    EXPECT_THAT(fuller.errors, HasSubstr("step 3, LoadPropertyData: expected success"));
    EXPECT_THAT(Owner(), HasSubstr("Desk"));
}

TEST_F(JighostTest, RunWhoseBodyIsNotSavedHasNotPassed) {
    const JIGHOST_RUN run =
        RunSteps(SET_OWNER + SAVE_OWNER, "--record run.json --junit run.xml", "ulimit -f 12");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr("can't write body.yaml"));
    const RUN_RECORD record = ReadRunRecord("run.json");
    EXPECT_EQ(record.verdict, VERDICT::OPERATION_FAILED);
    EXPECT_EQ(record.problem, "the body's file or the trace could not be written");
    EXPECT_EQ(record.steps.size(), 2U);
    EXPECT_THAT(
        ReadFile("run.xml"), HasSubstr("<error type=\"error\" message=\"the body&#39;s file"));
}

}  // namespace
