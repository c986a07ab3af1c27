// Steps that other files hold, and steps that come again.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "platform/Utf8Path.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

namespace {

class IncludeTest : public JighostTest {
  protected:
    IncludeTest() {
        std::filesystem::create_directory("parts");
        WriteFile("parts/owner.yaml", R"(format: 2
parameters:
  owner: {type: characters, max: 10}
  then: {type: characters, default: Desk}
steps:
  - {operation: SetOwnerName, name: "owner ${owner}", record: {OwnerName: "${owner}"}}
  - {operation: GetOwnerName, expect_fields: {OwnerName: "${owner}"}}
always:
  - {operation: SetOwnerName, name: back, record: {OwnerName: "${then}"}}
)");
    }

    static JIGHOST_RUN RunMain(const std::string& text, const std::string& options = "") {
        WriteFile(
            "main.yaml", "format: 2\nparameters:\n  who: {type: characters, default: a}\n" + text);
        return RunLine("sequence main.yaml " + options);
    }

    static void Refuses(const std::string& steps, const std::string& complaint) {
        const JIGHOST_RUN run = RunMain("steps:\n" + steps, "--check");
        EXPECT_EQ(run.exitCode, 2) << steps;
        EXPECT_THAT(run.errors, HasSubstr(complaint)) << steps;
    }
};

const std::string INCLUDE_OWNER = "{include: parts/owner.yaml, name: ";

TEST_F(IncludeTest, IncludedAndRepeatedStepsStandInTheirOrder) {
    const JIGHOST_RUN run = RunMain(
        "steps:\n"
        "  - " +
            INCLUDE_OWNER +
            "first, parameters: {owner: \"${who}1\"}}\n"
            "  - repeat: [x, \"${who}\"]\n    as: end\n    steps:\n"
            "      - " +
            INCLUDE_OWNER +
            "again, parameters: {owner: \"b${end}\", then: \"${end}\"}}\n"
            "  - {repeat: 2, steps: [{operation: GetOwnerName, expect_fields: {OwnerName: ba}}]}\n"
            "always:\n  - {operation: GetOwnerName, name: last, expect_fields: {OwnerName: a}}\n",
        "--json");
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    std::vector<std::string> names;
    const auto record = nlohmann::json::parse(run.output);
    for (const auto& step : record["steps"]) {
        names.push_back(step["name"]);
    }
    EXPECT_THAT(
        names, testing::ElementsAre(
                   "first: owner a1", "first: GetOwnerName", "again: owner bx [x]",
                   "again: GetOwnerName [x]", "again: owner ba [a]", "again: GetOwnerName [a]",
                   "GetOwnerName [1]", "GetOwnerName [2]", "first: back", "again: back [x]",
                   "again: back [a]", "last"));
}

TEST_F(IncludeTest, MistakesAreToldThroughIncludesWithAllTheirPlaces) {
    WriteFile(
        "parts/wrong.yaml",
        "format: 2\nparameters: {p: {type: byte}}\nsteps:\n"
        "  - operation: GetBodyIDs\n  - include: self.yaml\n");
    WriteFile("parts/self.yaml", "format: 2\nsteps:\n  - include: ../parts/self.yaml\n");
    // Paths as the system writes them.
    const auto path = [](const char* pszPath) {
        return TextOf(std::filesystem::path(pszPath).make_preferred());
    };
    const std::string wrong = path("parts/wrong.yaml");
    const std::string self = path("parts/self.yaml");
    const std::string step = "  - include: parts/wrong.yaml\n";
    Refuses(step, wrong + ":2: expected the type of a parameter");
    Refuses(step, wrong + ":4: there is no operation 'GetBodyIDs'; did you mean 'GetBodyID'");
    Refuses(step, "shows all) (included by main.yaml:5)");
    Refuses(
        step, self + ":3: " + self + " includes itself (included by " + wrong +
                  ":5) (included by main.yaml:5)");
    const std::pair<std::string, std::string> mistakes[] = {
        {"  - include: none.yaml\n", "main.yaml:5: can't read none.yaml"},
        {"  - include: parts/owner.yaml\n", "main.yaml:5: expected a value of the parameter owner"},
        {"  - " + INCLUDE_OWNER + "n, parameters: {owners: a}}\n",
         "no parameter 'owners'; did you mean"},
        {"  - " + INCLUDE_OWNER + "n, parameters: {owner: 12345678901}}\n",
         "expected at most 10 charact"},
        {"  - {repeat: 0, steps: [{operation: GetBodyID}]}\n", "main.yaml:5: expected how often"},
        {"  - {repeat: 1001, steps: [{operation: GetBodyID}]}\n",
         "main.yaml:5: expected how often"},
        {"  - {repeat: 2, as: who, steps: [{operation: GetBodyID}]}\n",
         "name that no parameter has"},
        {"  - {repeat: 2, steps: []}\n", "main.yaml:5: expected steps: with a step at least"},
        {"  - {repeat: [1, 1], steps: [{operation: GetBodyID, name: n}]}\n", "got 'n [1]' again"},
    };
    for (const auto& [steps, complaint] : mistakes) {
        Refuses(steps, complaint);
    }
}

TEST_F(IncludeTest, NoFileBecomesMoreThanARunCanHave) {
    std::string deep = "{operation: GetBodyID}";
    for (int i = 0; i < 8; ++i) {
        deep = "{repeat: 1, steps: [" + deep + "]}";
    }
    EXPECT_EQ(RunMain("steps: [" + deep + "]\n").exitCode, 0);
    Refuses(
        "  - {repeat: 1, steps: [" + deep + "]}\n", "expected includes and repeats at most 8 deep");
    const std::string many = "{repeat: 1000, steps: [{operation: GetBodyID}]}";
    Refuses("  - {repeat: 1000, steps: [" + many + "]}\n", "expected at most 10000 steps, repeats");
    // Aliases that double at each level, and one that holds itself.
    std::string doubling = "  - &a0 {repeat: 1000, steps: [{include: \"${x}\"}]}\n";
    doubling += "  - {repeat: [\"1\"], as: x, steps: [*a0, *a0]}\n";
    Refuses(doubling, "there is no parameter 'x'");
    Refuses(
        "  - &a {repeat: 2, steps: [*a, *a]}\n", "expected includes and repeats at most 8 deep");
}

}  // namespace
