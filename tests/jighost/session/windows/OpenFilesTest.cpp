// Files that a run uses, which others rename and delete meanwhile.
#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

namespace {

/// Whether it comes true before a machine would have to be taken for dead.
bool ComesTrue(const std::function<bool()>& condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    bool bTrue = condition();
    while (!bTrue && std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
        bTrue = condition();
    }
    return bTrue;
}

bool IsRenamed(const std::string& from, const std::string& to) {
    std::error_code error;
    std::filesystem::rename(from, to, error);
    return !error;
}

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
        EXPECT_TRUE(ComesTrue([&] { return IsRenamed(file, "renamed " + file); })) << file;
    }
    EXPECT_TRUE(std::filesystem::remove("renamed JigDll.log"));
    jighost.Kill();
    EXPECT_THAT(ReadFile("renamed run.json"), HasSubstr("\"outcome\":\"unfinished\""));
}

}  // namespace
