// Steps that other files hold, and steps that come again.
#include <filesystem>

#include "platform/Utf8Path.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportJson.h"

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

    static JIGHOST_RUN RunMain(
        int exitCode, const std::string& text, const std::string& options,
        const std::string& error = "") {
        WriteFile(
            "main.yaml", "format: 2\nparameters:\n  who: {type: characters, default: a}\n" + text);
        return RunTo(exitCode, "sequence main.yaml " + options, error);
    }
    /// The only step of the file.
    static void Refuses(const std::string& step, const std::string& complaint) {
        RunMain(2, "steps:\n  - " + step + '\n', "--check", complaint);
    }
};

TEST_F(IncludeTest, IncludedAndRepeatedStepsStandInTheirOrder) {
    const std::string steps = R"(steps:
  - {include: parts/owner.yaml, name: first, parameters: {owner: "${who}1"}}
  - repeat: [x, "${who}"]
    as: end
    steps:
      - include: parts/owner.yaml
        name: again
        parameters: {owner: "b${end}", then: "${end}"}
  - {repeat: 2, steps: [{operation: GetOwnerName, expect_fields: {OwnerName: ba}}]}
always:
  - {operation: GetOwnerName, name: last, expect_fields: {OwnerName: a}}
)";
    const Json record = Json::parse(RunMain(0, steps, "--json").output);
    std::string names;
    for (const Json& step : record["steps"]) {
        names += step["name"].get<std::string>() + '\n';
    }
    EXPECT_EQ(names, R"(first: owner a1
first: GetOwnerName
again: owner bx [x]
again: GetOwnerName [x]
again: owner ba [a]
again: GetOwnerName [a]
GetOwnerName [1]
GetOwnerName [2]
first: back
again: back [x]
again: back [a]
last
)");
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
    const std::string owner = "{include: parts/owner.yaml, name: n, parameters: ";
    const std::pair<std::string, std::string> mistakes[] = {
        {"include: parts/wrong.yaml", wrong + ":2: expected the type of a parameter"},
        {"include: parts/wrong.yaml",
         wrong + ":4: there is no operation 'GetBodyIDs'; did you mean 'GetBodyID'"},
        {"include: parts/wrong.yaml", "shows all) (included by main.yaml:5)"},
        {"include: parts/wrong.yaml", self + ":3: " + self + " includes itself (included by " +
                                          wrong + ":5) (included by main.yaml:5)"},
        {"include: none.yaml", "main.yaml:5: can't read none.yaml"},
        {"include: parts/owner.yaml", "main.yaml:5: expected a value of the parameter owner"},
        {owner + "{owners: a}}", "no parameter 'owners'; did you mean"},
        {owner + "{owner: 12345678901}}", "expected at most 10 charact"},
    };
    for (const auto& [step, complaint] : mistakes) {
        Refuses(step, complaint);
    }
}

TEST_F(IncludeTest, NoFileBecomesMoreThanARunCanHave) {
    std::string deep = "{operation: GetBodyID}";
    for (int i = 0; i < 8; ++i) {
        deep = "{repeat: 1, steps: [" + deep + "]}";
    }
    RunMain(0, "steps: [" + deep + "]\n", "");
    Refuses("{repeat: 1, steps: [" + deep + "]}", "expected includes and repeats at most 8 deep");
    // Aliases that double at each level.
    Refuses(
        "&a0 {repeat: 1000, steps: [{include: \"${x}\"}]}\n"
        "  - {repeat: [\"1\"], as: x, steps: [*a0, *a0]}",
        "there is no parameter 'x'");
}

}  // namespace
