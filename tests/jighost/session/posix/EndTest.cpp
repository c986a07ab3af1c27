// Runs that end before their time: by signals, and by kills wherever they stand.
#include <csignal>
#include <filesystem>
#include <set>
#include <thread>

#include "jighost/records/RunRecordReader.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJson.h"
#include "tests/support/posix/Shell.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string STEPS = "format: 1\nfolder: .\nsteps:\n" + SET_OWNER + SAVE_OWNER +
                          "  - operation: LoadPropertyData\n  - operation: ClearOwnerName\n" +
                          SAVE_OWNER;

/// A sequence that stands in the midst of its third step: its trace is many times what the pipe
/// takes. The rows of the steps before have come by then, although nobody ends the output.
class LongRun {
  public:
    explicit LongRun(const std::string& options) : m_Talk("talk"), m_Rows("rows") {
        WriteFile("sequence.yaml", STEPS);
        jighost = std::make_unique<Process>(
            "/bin/sh", std::vector<std::string>{
                           "-c",
                           "exec \"$0\" sequence sequence.yaml --body body.yaml --trace " +
                               options + " 2>talk >rows",
                           JighostFile()});
        m_Talk.ReadUntil("LoadPropertyData\n");
        m_Rows.ReadUntil("  2  SaveOwnerName ");
    }

    void ReadUntil(const std::string& text) const { m_Talk.ReadUntil(text); }

    std::unique_ptr<Process> jighost;

  private:
    NamedPipe m_Talk;
    NamedPipe m_Rows;
};

TEST_F(JighostTest, SignalEndsTheSequenceBehindTheStepWithAllWritten) {
    for (const auto& [nSignal, exitCode] :
         {std::pair(SIGINT, 130), {SIGTERM, 143}, {SIGHUP, 129}}) {
        ASSERT_EQ(RunShell("rm -f talk rows body.yaml; \"$0\" body new body.yaml").exitCode, 0);
        const LongRun run("--record run.json");
        EXPECT_EQ(kill(run.jighost->Id(), nSignal), 0);
        run.ReadUntil("jighost: interrupted behind step 3\n");
        EXPECT_EQ(run.jighost->Wait(), exitCode);
        const RUN_RECORD record = ReadRunRecord("run.json");
        EXPECT_EQ(record.verdict, VERDICT::ABORTED);
        EXPECT_EQ(record.problem, "interrupted behind step 3");
        ASSERT_EQ(record.steps.size(), 3U);
        EXPECT_THAT(record.steps[2].attempts.at(0).log.back(), HasSubstr("Data - 0"));
        EXPECT_THAT(Owner(), StartsWith("OwnerName = \"Desk\"\n"));
    }
}

TEST_F(JighostTest, SignalEndsAPauseAndLeavesFactoryMode) {
    const std::string wait = "  - {operation: GetBodyID, wait: 3600000 ms}\n";
    for (const std::string& pause : {FAIL_AND_WAIT, wait}) {
        WriteFile("JigDll.log", "");
        WriteFile(
            "waits.yaml", "format: 2\nsteps:\n  - operation: EnterFactoryMode\n" + pause +
                              "always:\n"
                              "  - {operation: ExitFactoryMode, on_unexpected: retry 1}\n");
        Process jighost(
            JighostFile(), {"sequence", "waits.yaml", "--fault", "ExitFactoryMode:1@1=0x2001"});
        EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("EnterFactoryMode"));
        EXPECT_EQ(kill(jighost.Id(), SIGTERM), 0);
        while (const auto line = jighost.ReadLine()) {
        }
        EXPECT_EQ(jighost.Wait(), 143);
        EXPECT_THAT(ReadFile("JigDll.log"), HasSubstr("[FUNC] ExitFactoryMode - 0\n"));
    }
}

TEST_F(JighostTest, OperationThatDoesNotReturnIsToldWithItsCallAndTheRecordIsClosed) {
    // The trace of the second step is many times what the pipe takes, and nobody reads on.
    const NamedPipe talk("talk");
    WriteFile("stands.yaml", R"(format: 2
folder: .
steps:
  - {operation: SetBodyID, record: {SerialNo: 7}, time_limit: 3600000 ms}
  - {operation: LoadPropertyData, time_limit: 1000 ms, on_unexpected: continue}
always:
  - operation: GetOwnerName
)");
    Process jighost(
        "/bin/sh", {"-c",
                    "exec \"$0\" sequence stands.yaml --record run.json --report page.html --junit "
                    "results.xml --trace --fault GetOwnerName:1=0x2001 2>talk >rows",
                    JighostFile()});
    while (!std::filesystem::exists("results.xml")) {
        std::this_thread::yield();
    }
    const RUN_RECORD record = ReadRunRecord("run.json");
    EXPECT_THAT(
        RunRecordJson(record),
        Holds(Json::parse(R"({"outcome": "error", "body": {"serial": null}, "steps": [
            {"outcome": "passed"}, {"attempts": [{"result": null}]}]})")))
        << "nobody knows what SetBodyID has set";
    EXPECT_NE(record.bodyProblem, "");
    const RECORDED_ATTEMPT& attempt = record.steps.at(1).attempts.at(0);
    EXPECT_GE(attempt.timeMs, 1000);
    EXPECT_FALSE(attempt.calls.empty());
    EXPECT_THAT(attempt.log, testing::Contains(HasSubstr("[FUNC] LoadPropertyData")));
    EXPECT_THAT(
        talk.ReadUntil("; no step of always: has run\njighost: no call has met the fault "
                       "GetOwnerName:1=0x2001\n"),
        HasSubstr("jighost: step 2, LoadPropertyData: LoadPropertyData has not returned within "
                  "1000 ms, in "));
    EXPECT_EQ(jighost.Wait(), 4);
    EXPECT_THAT(ReadFile("page.html"), HasSubstr("did not return"));
    EXPECT_THAT(
        ReadFile("results.xml"), HasSubstr(R"(tests="2" failures="0" errors="1" skipped="0")"));
}

TEST_F(JighostTest, InterruptEndsTheFollowingOfALogWithItsSummary) {
    WriteFile("JigDll.log", "[FUNC] First\n[FUNC] First - 1\n");
    Process jighost(JighostFile(), {"log", "--follow"});
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("First"));
    EXPECT_EQ(kill(jighost.Id(), SIGINT), 0);
    EXPECT_EQ(jighost.ReadLine(), "");
    EXPECT_EQ(jighost.ReadLine(), "1 operations, 1 failed");
    EXPECT_EQ(jighost.Wait(), 130);
}

TEST_F(JighostTest, KilledSequenceLeavesTheRecordOfEachStepThatEnded) {
    std::filesystem::create_directory("records");
    LongRun("--records records").jighost->Kill();
    const std::filesystem::directory_iterator files("records");
    ASSERT_NE(files, std::filesystem::directory_iterator());
    EXPECT_THAT(files->path().string(), testing::EndsWith("-unfinished.json"));
    const RUN_RECORD record = ReadRunRecord(files->path().string());
    EXPECT_EQ(record.verdict, VERDICT::UNFINISHED);
    ASSERT_EQ(record.steps.size(), 2U);
    EXPECT_EQ(record.steps[1].operation, "SaveOwnerName");
    EXPECT_EQ(record.steps[1].attempts.at(0).calls.size(), 1U);
}

// --- Kills at each call of the system that changes files ---

/// What a kill at the n-th call of this name leaves; false if the run came to its end before.
bool KillAtCall(
    const std::string& call, int number, const std::string& bodyBefore,
    const std::string& bodyBehind) {
    WriteFile("body.yaml", bodyBefore);
    std::filesystem::remove("run.json");
    // A traced process can't look for leaks.
    const JIGHOST_RUN run = RunShell(
        "ASAN_OPTIONS=detect_leaks=0 exec strace -f -o /dev/null -e trace=" + call +
        " -e inject=" + call + ":signal=KILL:when=" + std::to_string(number) +
        " \"$0\" sequence sequence.yaml --body body.yaml --record run.json");
    const bool bKilled = run.exitCode == -1;
    EXPECT_TRUE(bKilled || run.exitCode == 0) << run.errors;
    const std::string body = ReadFile("body.yaml");
    EXPECT_TRUE(body == bodyBefore || body == bodyBehind) << call << number << '\n' << body;
    // The last row is the summary, when all steps have ended.
    const auto rows = std::count(run.output.begin(), run.output.end(), '\n');
    if (rows > 0 || std::filesystem::exists("run.json")) {
        EXPECT_GE(std::ssize(ReadRunRecord("run.json").steps), std::min<std::ptrdiff_t>(rows, 2))
            << call << number;
    }
    return bKilled;
}

TEST_F(JighostTest, KillAtNoMomentTearsBodyOrRecordOrLeavesRubbishForGood) {
    const std::string before = ReadFile("body.yaml");
    WriteFile("sequence.yaml", "format: 1\nsteps:\n" + SET_OWNER + SAVE_OWNER);
    RunTo(0, "sequence sequence.yaml --body body.yaml --record run.json");
    const std::string behind = ReadFile("body.yaml");
    EXPECT_NE(before, behind);
#ifdef __SANITIZE_ADDRESS__
    const int step = 7;  // each run takes a second there
#else
    const int step = 1;
#endif
    int kills = 0;
    for (const std::string call :
         {"openat", "write", "writev", "rename", "unlink", "fchmod", "fsync", "fdatasync",
          "close"}) {
        for (int number = 1; KillAtCall(call, number, before, behind); number += step) {
            ++kills;
        }
    }
    EXPECT_GT(kills, 50) << "changes of files in a whole run";
    RunTo(0, "sequence sequence.yaml --body body.yaml --record run.json");
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
        files.insert(entry.path().filename().string());
    }
    EXPECT_THAT(
        files,
        testing::ElementsAre("JigDll.log", "body.yaml", "errors.txt", "run.json", "sequence.yaml"));
}

}  // namespace
