// Files that a run uses, which others rename and delete meanwhile.
#include <filesystem>
#include <string>

#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

namespace {

// Its third step has failed and waits for an hour: from then on the run opens nothing, and what its
// last line of the log had open is closed before long.
TEST_F(JighostTest, RunThatStandsStillKeepsNoFileOpen) {
    WriteFile("sequence.yaml", "format: 2\nsteps:\n" + SET_OWNER + SAVE_OWNER + FAIL_AND_WAIT);
    Process jighost(
        JighostFile(),
        {"sequence", "sequence.yaml", "--body", "body.yaml", "--record", "run.json"});
    EXPECT_TRUE(ComesTrue([] {
        return std::filesystem::exists("JigDll.log") &&
               ReadFile("JigDll.log").find("] SetSlitRollingMode - 3") != std::string::npos;
    }));
    for (const std::string file : {"JigDll.log", "body.yaml", "run.json", "sequence.yaml"}) {
        EXPECT_TRUE(IsRenamed(file, "renamed " + file)) << file;
    }
    EXPECT_TRUE(std::filesystem::remove("renamed JigDll.log"));
    jighost.Kill();
    EXPECT_THAT(ReadFile("renamed run.json"), HasSubstr("\"outcome\":\"unfinished\""));
}

}  // namespace
