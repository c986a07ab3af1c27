// What a run tells of a log that it can't write.
#include <nlohmann/json.hpp>

#include "tests/support/posix/Shell.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string LOST_CALL = "SetFilePrefix:2=0x2001";

#ifdef __SANITIZE_ADDRESS__
// Its shadow takes more addresses than a limit could leave.
const std::string LIMIT_OF_MEMORY = "export ASAN_OPTIONS=$ASAN_OPTIONS:hard_rss_limit_mb=4000";
#else
const std::string LIMIT_OF_MEMORY = "ulimit -v 4000000";
#endif

/// jighost where the script has put something in the log's place; a run that hangs or takes all
/// memory fails.
JIGHOST_RUN RunBehind(const std::string& script, const std::string& arguments) {
    return RunShell(
        "rm -rf JigDll.log; " + script + '\n' + LIMIT_OF_MEMORY +
        "; exec timeout -s KILL 60 \"$0\" " + arguments);
}

TEST_F(JighostTest, LogThatIsLostIsToldFirstAndHoldsNothingUp) {
    WriteFile(
        "sequence.yaml",
        "format: 1\nsteps:\n  - {operation: SetFilePrefix, on_unexpected: continue}\n");
    WriteFile("long.log", std::string(4096, '\n'));
    const std::pair<std::string, std::string> cases[] = {
        {"mkdir JigDll.log", "JigDll.log is no regular file"},
        {"mkfifo JigDll.log", "JigDll.log is no regular file"},
        {"ln -s /dev/zero JigDll.log", "JigDll.log is no regular file"},
        {"ln -s /dev/full JigDll.log", "JigDll.log is no regular file"},
        {"ln -s nowhere/x JigDll.log", "can't write JigDll.log: No such file or directory"},
        {"cp long.log JigDll.log; trap '' XFSZ; ulimit -f 1", "nothing has come to JigDll.log"},
    };
    const std::string cause =
        "Set 0x1000007 8: 36 57 31 45 00 00 00 00 -> failed: [EVNT] --fault " + LOST_CALL +
        " (0x2001)";
    for (const auto& [script, problem] : cases) {
        const std::string lost = "jighost: the module's log is lost: " + problem + '\n';
        const JIGHOST_RUN json = RunBehind(script, "run SetFilePrefix --json --fault " + LOST_CALL);
        EXPECT_EQ(json.exitCode, 4) << script;
        EXPECT_THAT(json.errors, StartsWith(lost));
        EXPECT_EQ(
            nlohmann::json::parse(json.output).at("error"), "event or link code (8193), " + cause);
        const JIGHOST_RUN steps = RunBehind(script, "sequence sequence.yaml --fault " + LOST_CALL);
        EXPECT_EQ(steps.exitCode, 4) << script;
        EXPECT_THAT(steps.errors, AllOf(HasSubstr(lost), HasSubstr("(8193): " + cause)));
        EXPECT_THAT(
            RunBehind(script, "run SetSlitRollingMode AccumulateTime=85").errors,
            HasSubstr("failed: RESULT_INVALID_PARAMETER (3)\n"));
    }
    const JIGHOST_RUN dump = RunBehind("mkdir JigDll.log", "dump .");
    EXPECT_EQ(dump.exitCode, 5);
    EXPECT_THAT(
        dump.errors, AllOf(
                         StartsWith("jighost: the module's log is lost: "),
                         HasSubstr("the module's log does not tell which one")));
}

}  // namespace
