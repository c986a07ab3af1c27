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

TEST_F(JighostTest, RunThatCannotBeginLeavesNoFormerReportAsItsOwn) {
    const std::string text =
        "format: 2\nparameters: {unit: {type: characters}}\n"
        "steps:\n  - {operation: GetOwnerName, name: \"${unit}\"}\n";
    WriteFile("good.yaml", text);
    WriteFile("bad.yaml", text + "  - operation: Nothing\n");
    const std::string plain = "good.yaml --set unit=a --junit run.xml --report run.html ";
    const std::string named = "good.yaml --set unit=run --junit ${unit}.xml --report ${unit}.html ";
    const std::pair<std::string, int> cases[] = {
        {plain + "--module nowhere", 3},
        {named + "--body nowhere", 2},
        {named + "--fault GetOwnerName", 2},
        {plain + "--set other=b", 2},
        {plain + "--record run.json --records .", 2},
        {"bad" + plain.substr(4), 2},
        {"nowhere" + plain, 2},
    };
    for (const auto& [options, exitCode] : cases) {
        ASSERT_EQ(RunLine("sequence " + plain).exitCode, 0);
        ASSERT_THAT(ReadFile("run.html"), HasSubstr("<title>passed: "));
        EXPECT_EQ(RunLine("sequence --check good.yaml " + plain.substr(10)).exitCode, 0);
        ASSERT_THAT(ReadFile("run.xml"), HasSubstr(R"(errors="0")")) << "nothing was to run";
        EXPECT_EQ(RunLine("sequence " + options).exitCode, exitCode) << options;
        EXPECT_THAT(ReadFile("run.html"), HasSubstr("<title>error: ")) << options;
        EXPECT_THAT(ReadFile("run.xml"), HasSubstr(R"(tests="1" failures="0" errors="1")"));
    }
    // What is no report may be anybody's.
    EXPECT_EQ(RunLine("sequence bad.yaml --set unit=a --junit good.yaml").exitCode, 2);
    EXPECT_EQ(ReadFile("good.yaml"), text);
}

}  // namespace
