// The reports that a sequence's run leaves.
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

namespace {

TEST_F(JighostTest, ReportsTellWhatTheRunCameTo) {
    WriteFile(
        "steps.yaml",
        "format: 2\nname: owners\nparameters: {owner: {type: characters}}\nsteps:\n"
        "  - operation: GetOwnerName\n"
        "  - {operation: GetOwnerName, name: check, expect_fields: {OwnerName: \"${owner}\"}}\n"
        "  - operation: GetBodyID\n");
    WriteFile("lot.csv", "owner\nDesk\n\"Line 4\"\n");
    const std::string lot = "sequence steps.yaml --body body.yaml --table lot.csv";
    EXPECT_EQ(RunLine(lot + " --report ${owner}.html --junit ${owner}.xml").exitCode, 5);
    const std::string results = ReadFile("Desk.xml");
    EXPECT_THAT(results, HasSubstr(R"(tests="3" failures="1" errors="0" skipped="1")"));
    EXPECT_THAT(results, HasSubstr(R"(<property name="parameter owner" value="Desk"/>)"));
    EXPECT_THAT(results, HasSubstr("[FUNC] GetOwnerName - 0\n"));
    EXPECT_THAT(ReadFile("Desk.html"), HasSubstr("<title>failed: owners, serial 54321</title>"));
    EXPECT_THAT(
        ReadFile("Line 4.xml"), HasSubstr(R"(tests="3" failures="0" errors="0" skipped="0")"));
    EXPECT_THAT(ReadFile("Line 4.html"), HasSubstr("<title>passed: owners, serial "));
    for (const std::string option : {"--report", "--junit"}) {
        EXPECT_THAT(
            RunLine(lot + ' ' + option + " page").errors,
            HasSubstr(option + " page: expected a file of its own for each row"));
        EXPECT_EQ(RunLine(lot + ' ' + option + " nowhere/${owner}").exitCode, 2);
    }
    EXPECT_FALSE(std::filesystem::exists("page"));
    // Nothing runs on the first body if the second one's page can't be written.
    std::filesystem::create_directory("Desk");
    EXPECT_EQ(RunLine(lot + " --report ${owner}/now.html").exitCode, 2);
    EXPECT_FALSE(std::filesystem::exists("Desk/now.html"));
    const std::string one = "sequence steps.yaml --body body.yaml --set owner=Desk";
    EXPECT_THAT(
        RunLine(one + " --report page --junit page").errors,
        HasSubstr("--junit page is the same file as --report"));
}

}  // namespace
