// jighost in a console: what it shows there, and how Ctrl-C ends it.
#include <nlohmann/json.hpp>

#include "tests/support/SupportJighost.h"
#include "tests/support/windows/Console.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

TEST_F(JighostTest, CtrlCEndsTheSequenceBehindTheStepWithAllWritten) {
    WriteFile("sequence.yaml", "format: 2\nsteps:\n" + SET_OWNER + SAVE_OWNER + FAIL_AND_WAIT);
    Console console("sequence sequence.yaml --body body.yaml --record run.json");
    console.ReadUntil("  2  SaveOwnerName");
    console.PressCtrlC();
    console.ReadUntil("jighost: interrupted behind step ");
    EXPECT_EQ(console.Wait(), 130);
    const auto record = nlohmann::json::parse(ReadFile("run.json"), nullptr, false);
    EXPECT_EQ(record.value("outcome", ""), "aborted");
    EXPECT_THAT(Owner(), StartsWith("OwnerName = \"Desk\"\n"));
}

TEST_F(JighostTest, CtrlCEndsTheFollowingOfALogWithItsSummary) {
    WriteFile("JigDll.log", "[FUNC] First\n[FUNC] First - 1\n");
    Console console("log --follow");
    console.ReadUntil("First");
    console.PressCtrlC();
    console.ReadUntil("1 operations, 1 failed");
    EXPECT_EQ(console.Wait(), 130);
}

TEST_F(JighostTest, ConsoleShowsProgressColoursAndTextsOfAllLanguages) {
    WriteFile("JigDll.log", "[FUNC] A\n[ERR!] - Z\u00fcrich \u5317\u4eac\n[FUNC] A - 1\n");
    Console log("log --failed");
    EXPECT_THAT(
        log.ReadUntil("1 operations"), AllOf(HasSubstr("\033[31m"), HasSubstr("\u5317\u4eac")));
    WriteFile("sequence.yaml", "format: 1\nsteps:\n" + SET_OWNER + SAVE_OWNER);
    Console sequence("sequence sequence.yaml");
    EXPECT_THAT(
        sequence.ReadUntil("2 of 2 steps run"),
        AllOf(HasSubstr("[1/2] SetOwnerName"), HasSubstr("\r\033[K"), HasSubstr("\033[32m")));
}

}  // namespace
