// The reports that a sequence's run leaves.
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

namespace {

TEST_F(JighostTest, ReportsTellWhatTheRunCameTo) {
    WriteFile("steps.yaml", R"(format: 2
name: owners
parameters: {owner: {type: characters}}
steps:
  - operation: GetOwnerName
  - {operation: GetOwnerName, name: check, expect_fields: {OwnerName: "${owner}"}}
  - operation: GetBodyID
)");
    WriteFile("lot.csv", "owner\nDesk\n\"Line 4\"\n");
    const std::string lot = "sequence steps.yaml --body body.yaml --table lot.csv";
    RunTo(5, lot + " --report ${owner}.html --junit ${owner}.xml");
    const std::pair<const char*, const char*> told[] = {
        {"Desk.xml", R"(tests="3" failures="1" errors="0" skipped="1")"},
        {"Desk.xml", R"(<property name="parameter owner" value="Desk"/>)"},
        {"Desk.xml", "[FUNC] GetOwnerName - 0\n"},
        {"Desk.html", "<title>failed: owners, serial 54321</title>"},
        {"Line 4.xml", R"(tests="3" failures="0" errors="0" skipped="0")"},
        {"Line 4.html", "<title>passed: owners, serial "}};
    for (const auto& [file, text] : told) {
        EXPECT_THAT(ReadFile(file), HasSubstr(text));
    }
    for (const std::string option : {"--report", "--junit"}) {
        RunTo(2, lot + ' ' + option + " page", option + " page: expected a file of its own for");
        RunTo(2, lot + ' ' + option + " nowhere/${owner}");
    }
    EXPECT_FALSE(std::filesystem::exists("page"));
    // Nothing runs on the first body if the second one's page can't be written.
    std::filesystem::create_directory("Desk");
    RunTo(2, lot + " --report ${owner}/now.html");
    EXPECT_FALSE(std::filesystem::exists("Desk/now.html"));
    RunTo(
        2, "sequence steps.yaml --body body.yaml --set owner=Desk --report page --junit page",
        "--junit page is the same file as --report");
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
        RunTo(0, "sequence " + plain);
        RunTo(0, "sequence --check good.yaml " + plain.substr(10));
        ASSERT_THAT(ReadFile("run.html"), HasSubstr("<title>passed: ")) << "nothing was to run";
        ASSERT_THAT(ReadFile("run.xml"), HasSubstr(R"(errors="0")"));
        RunTo(exitCode, "sequence " + options);
        EXPECT_THAT(ReadFile("run.html"), HasSubstr("<title>error: ")) << options;
        EXPECT_THAT(ReadFile("run.xml"), HasSubstr(R"(tests="1" failures="0" errors="1")"));
    }
    // What is no report may be anybody's.
    RunTo(2, "sequence bad.yaml --set unit=a --junit good.yaml");
    EXPECT_EQ(ReadFile("good.yaml"), text);
}

}  // namespace
