// Steps that ask, answered by a file.
#include <filesystem>

#include "tests/support/SupportJighost.h"
#include "tests/support/SupportJson.h"

using testing::AllOf;
using testing::HasSubstr;

namespace {

class AskingTest : public JighostTest {
  protected:
    static JIGHOST_RUN Answered(
        int exitCode, const std::string& answers, const std::string& error = "") {
        WriteFile("asks.yaml", R"(format: 2
steps:
  - {ask: "Is the cap on?", name: cap, on_unexpected: continue}
  - {ask: "Which lamp?", name: lamp, answer: number, min: 1, max: 3, on_unexpected: continue}
  - {ask: "Who?", name: who, answer: text, pattern: "[A-Z][a-z]+"}
  - operation: GetOwnerName
)");
        WriteFile("answers.csv", "step,answer\n" + answers);
        return RunTo(exitCode, "sequence asks.yaml --answers answers.csv --json", error);
    }
};

TEST_F(AskingTest, AnswersAreJudgedAndKept) {
    EXPECT_THAT(
        Json::parse(Answered(0, "cap,y\nlamp,3\nwho,Ann\n").output),
        Holds(Json::parse(R"({"steps": [
            {"measurements": [{"text": "yes"}]}, {"measurements": [{"value": 3}]},
            {"measurements": [{"text": "Ann"}], "attempts": []}, {}]})")));
    const JIGHOST_RUN bad = Answered(
        5, "cap,no\nlamp,4\nwho,ann\n", "step 2, lamp: lamp: expected from 1 to 3, got 4\n");
    EXPECT_THAT(bad.errors, HasSubstr("step 1, cap: cap: expected like yes, got no\n"));
    EXPECT_EQ(Json::parse(bad.output)["steps"].size(), 3U) << "stops behind who";
}

TEST_F(AskingTest, MissingAndWrongAnswersAreToldAheadOfTheFirstStep) {
    EXPECT_THAT(
        Answered(2, "cap,perhaps\nlamb,2\nwho,Ann\n").errors,
        AllOf(
            HasSubstr("answers.csv: cap: expected yes or no, got 'perhaps'"),
            HasSubstr("the step lamp asks: expected an answer in --answers"),
            HasSubstr("no step 'lamb' that asks; did you mean 'lamp'?")));
    Answered(2, "cap,y\ncap,n\n", "csv:3: expected one answer");
    EXPECT_FALSE(std::filesystem::exists("JigDll.log"));
}

}  // namespace
