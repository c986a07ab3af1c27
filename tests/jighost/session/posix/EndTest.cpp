// Runs that end before their time: by signals, and by kills wherever they stand.
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <set>
#include <thread>

#include "jighost/records/RunRecordReader.h"
#include "tests/support/Support.h"
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
    explicit LongRun(const std::string& record = "run.json", const char* pszOption = "--record")
        : m_Talk("talk"), m_Rows("rows") {
        WriteFile("sequence.yaml", STEPS);
        jighost = std::make_unique<Process>(
            "/bin/sh", std::vector<std::string>{
                           "-c", "exec \"$0\" \"$@\" 2>talk >rows", JighostFile(), "sequence",
                           "sequence.yaml", "--body", "body.yaml", pszOption, record, "--trace"});
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
        const LongRun run;
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
    WriteFile(
        "stands.yaml",
        "format: 2\nfolder: .\nsteps:\n  - {operation: SetBodyID, record: {SerialNo: 7}, "
        "time_limit: 3600000 ms}\n"
        "  - {operation: LoadPropertyData, time_limit: 1000 ms, on_unexpected: continue}\n"
        "always:\n  - operation: GetOwnerName\n");
    Process jighost(
        "/bin/sh", {"-c", "exec \"$0\" \"$@\" 2>talk >rows", JighostFile(), "sequence",
                    "stands.yaml", "--record", "run.json", "--report", "page.html", "--junit",
                    "results.xml", "--trace", "--fault", "GetOwnerName:1=0x2001"});
    while (!std::filesystem::exists("results.xml")) {
        std::this_thread::yield();
    }
    const RUN_RECORD record = ReadRunRecord("run.json");
    EXPECT_EQ(record.verdict, VERDICT::OPERATION_FAILED);
    EXPECT_FALSE(record.serial) << "nobody knows what SetBodyID has set";
    EXPECT_NE(record.bodyProblem, "");
    ASSERT_EQ(record.steps.size(), 2U);
    EXPECT_EQ(record.steps[0].verdict, VERDICT::PASSED);
    const RECORDED_ATTEMPT& attempt = record.steps[1].attempts.at(0);
    EXPECT_FALSE(attempt.result) << "nobody knows it";
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

void ExpectFirstTwoSteps(const std::string& path) {
    const RUN_RECORD record = ReadRunRecord(path);
    EXPECT_EQ(record.verdict, VERDICT::UNFINISHED);
    ASSERT_EQ(record.steps.size(), 2U);
    EXPECT_EQ(record.steps[1].operation, "SaveOwnerName");
    EXPECT_EQ(record.steps[1].attempts.at(0).calls.size(), 1U);
}

TEST_F(JighostTest, KilledSequenceLeavesTheRecordOfEachStepThatEnded) {
    LongRun().jighost->Kill();
    ExpectFirstTwoSteps("run.json");
    std::filesystem::create_directory("records");
    std::filesystem::remove("talk");
    std::filesystem::remove("rows");
    LongRun("records", "--records").jighost->Kill();
    const std::filesystem::directory_iterator files("records");
    ASSERT_NE(files, std::filesystem::directory_iterator());
    EXPECT_THAT(files->path().string(), testing::EndsWith("-unfinished.json"));
    ExpectFirstTwoSteps(files->path());
}

// --- Kills at each call of the system that changes files ---

/// Stops a child at its calls of the system.
class TracedJighost {
  public:
    explicit TracedJighost(std::vector<std::string> arguments) : m_Child(fork()) {
        if (m_Child == 0) {
            arguments.insert(arguments.begin(), JighostFile());
            std::vector<char*> argv(arguments.size() + 1, nullptr);
            std::transform(
                arguments.begin(), arguments.end(), argv.begin(),
                [](std::string& argument) { return argument.data(); });
            freopen("rows.txt", "w", stdout);
            // Which can't look for leaks in a process that is traced.
            setenv("ASAN_OPTIONS", "detect_leaks=0", 1);
            ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
            execv(argv[0], argv.data());
            _exit(127);
        }
        waitpid(m_Child, &m_nStatus, 0);
        ptrace(PTRACE_SETOPTIONS, m_Child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    }
    TracedJighost(const TracedJighost&) = delete;
    TracedJighost& operator=(const TracedJighost&) = delete;
    ~TracedJighost() { Kill(); }

    /// Lets it run up to its next call that changes a file; false at its end.
    bool RunToChange() {
        static const std::set<std::uint64_t> changes = {SYS_openat,    SYS_write,  SYS_rename,
                                                        SYS_unlink,    SYS_fchmod, SYS_fsync,
                                                        SYS_fdatasync, SYS_close};
        for (;;) {
            ptrace(PTRACE_SYSCALL, m_Child, nullptr, nullptr);
            waitpid(m_Child, &m_nStatus, 0);
            if (!WIFSTOPPED(m_nStatus)) {
                return false;
            }
            __ptrace_syscall_info info{};
            ptrace(PTRACE_GET_SYSCALL_INFO, m_Child, sizeof(info), &info);
            if (info.op == PTRACE_SYSCALL_INFO_ENTRY && changes.contains(info.entry.nr)) {
                return true;
            }
        }
    }

    void Kill() {
        if (WIFSTOPPED(m_nStatus)) {
            kill(m_Child, SIGKILL);
            waitpid(m_Child, &m_nStatus, 0);
        }
    }

  private:
    pid_t m_Child;
    int m_nStatus = 0;
};

std::size_t LinesOf(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

/// What a kill at the n-th change leaves; false if the run came to its end before.
bool KillAtChange(int number, const std::string& bodyBefore, const std::string& bodyBehind) {
    WriteFile("body.yaml", bodyBefore);
    std::filesystem::remove("run.json");
    TracedJighost jighost(
        {"sequence", "sequence.yaml", "--body", "body.yaml", "--record", "run.json"});
    for (int i = 0; i < number; ++i) {
        if (!jighost.RunToChange()) {
            return false;
        }
    }
    jighost.Kill();
    const std::string body = ReadFile("body.yaml");
    EXPECT_TRUE(body == bodyBefore || body == bodyBehind) << number << '\n' << body;
    // The last row is the summary, when all steps have ended.
    const std::size_t rows = std::min<std::size_t>(LinesOf(ReadFile("rows.txt")), 2);
    if (rows > 0 || std::filesystem::exists("run.json")) {
        EXPECT_GE(ReadRunRecord("run.json").steps.size(), rows) << number;
    }
    return true;
}

TEST_F(JighostTest, KillAtNoMomentTearsBodyOrRecordOrLeavesRubbishForGood) {
    const std::string before = ReadFile("body.yaml");
    EXPECT_EQ(
        RunSequence(
            "steps:\n" + SET_OWNER + SAVE_OWNER, {"--body", "body.yaml", "--record", "run.json"})
            .exitCode,
        0);
    const std::string behind = ReadFile("body.yaml");
    EXPECT_NE(before, behind);
#ifdef __SANITIZE_ADDRESS__
    const int step = 7;  // each run takes a second there
#else
    const int step = 1;
#endif
    int number = 1;
    while (KillAtChange(number, before, behind)) {
        number += step;
    }
    EXPECT_GT(number, 50) << "changes of files in a whole run";
    EXPECT_EQ(RunSequence("steps:\n" + SAVE_OWNER, {"--record", "run.json"}).exitCode, 0);
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
        files.insert(entry.path().filename().string());
    }
    EXPECT_THAT(
        files,
        testing::ElementsAre(
            "JigDll.log", "body.yaml", "errors.txt", "rows.txt", "run.json", "sequence.yaml"));
}

}  // namespace
