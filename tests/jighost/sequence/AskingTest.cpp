// Steps that ask, answered by a file.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

namespace {

class AskingTest : public JighostTest {
  protected:
    AskingTest() {
        WriteFile("asks.yaml", R"(format: 2
steps:
  - {ask: "Is the cap on?", name: cap, on_unexpected: continue}
  - {ask: "Which lamp?", name: lamp, answer: number, min: 1, max: 3, on_unexpected: continue}
  - {ask: "Who?", name: who, answer: text, pattern: "[A-Z][a-z]+"}
  - operation: GetOwnerName
)");
    }

    static JIGHOST_RUN Answered(const std::string& answers) {
        WriteFile("answers.csv", "step,answer\n" + answers);
        return RunLine("sequence asks.yaml --answers answers.csv --json");
    }
};

TEST_F(AskingTest, AnswersAreJudgedAndKept) {
    const JIGHOST_RUN good = Answered("cap,y\nlamp,3\nwho,Ann\n");
    EXPECT_EQ(good.exitCode, 0) << good.errors;
    const auto steps = nlohmann::json::parse(good.output)["steps"];
    ASSERT_EQ(steps.size(), 4U);
    EXPECT_EQ(steps[0]["measurements"][0]["text"], "yes");
    EXPECT_EQ(steps[1]["measurements"][0]["value"], 3);
    EXPECT_EQ(steps[2]["measurements"][0]["text"], "Ann");
    EXPECT_TRUE(steps[2]["attempts"].empty()) << "no operation has run";

    const JIGHOST_RUN bad = Answered("cap,no\nlamp,4\nwho,ann\n");
    EXPECT_EQ(bad.exitCode, 5);
    EXPECT_THAT(bad.errors, HasSubstr("step 1, cap: cap: expected like yes, got no\n"));
    EXPECT_THAT(bad.errors, HasSubstr("step 2, lamp: lamp: expected from 1 to 3, got 4\n"));
    EXPECT_EQ(nlohmann::json::parse(bad.output)["steps"].size(), 3U) << "stops behind who";
}

TEST_F(AskingTest, MissingAndWrongAnswersAreToldAheadOfTheFirstStep) {
    const JIGHOST_RUN run = Answered("cap,perhaps\nlamb,2\nwho,Ann\n");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_THAT(run.errors, HasSubstr("answers.csv: cap: expected yes or no, got 'perhaps'"));
    EXPECT_THAT(run.errors, HasSubstr("the step lamp asks: expected an answer in --answers"));
    EXPECT_THAT(run.errors, HasSubstr("no step 'lamb' that asks; did you mean 'lamp'?"));
    EXPECT_FALSE(std::filesystem::exists("JigDll.log"));
    EXPECT_THAT(Answered("cap,y\ncap,n\n").errors, HasSubstr("csv:3: expected one answer"));
    WriteFile(
        "asks.yaml",
        "format: 2\nsteps:\n  - {ask: a, min: 1}\n  - {ask: a, answer: number, pattern: b}\n"
        "  - {ask: a, answer: many}\n  - {ask: a, answer: text, pattern: \"(\"}\n"
        "  - {ask: a, on_unexpected: retry 1}\n");
    const std::string errors = RunLine("sequence --check asks.yaml").errors;
    for (const char* pszLine :
         {"3: expected min: and max: of a number", "4: expected min: and max: of a number",
          "5: expected yes or no, number or text, got 'many'", "6: expected a regular expression",
          "7: expected stop or continue, got 'retry 1'"}) {
        EXPECT_THAT(errors, HasSubstr("asks.yaml:" + std::string(pszLine)));
    }
}

}  // namespace
