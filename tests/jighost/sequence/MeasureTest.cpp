// Values that a step measures, held against limits and patterns.
#include <filesystem>

#include "jighost/sequence/Pattern.h"
#include "jighost/text/HostError.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportJson.h"

using testing::HasSubstr;

namespace {

JIGHOST_RUN RunMeasures(
    int exitCode, const std::string& measures, const std::string& options = "--json",
    const std::string& error = "") {
    WriteFile(
        "measure.yaml", R"(format: 2
parameters:
  top: {type: signed 32 bits, default: 12345}
steps:
  - {operation: SetBodyID, record: {SerialNo: 12345}}
  - {operation: GetBodyID, measure: [{field: CodePair}, )" +
                            measures + R"(], on_unexpected: continue}
  - {operation: GetOwnerName, measure: [{field: OwnerName, pattern: "Line [0-9]"}]}
)");
    return RunTo(exitCode, "sequence measure.yaml --body body.yaml " + options, error);
}

TEST_F(JighostTest, MeasurementsAreAllJudgedAtTheirLimits) {
    const std::pair<std::string, bool> limits[] = {
        {"min: 12345, max: 0x3039", true},
        {"min: 12346", false},
        {"max: 12344.5", false},
        {"min: -1, max: \"${top}\"", true},
        {"value: 12343, tolerance: 2", true},
        {"value: 12343, tolerance: 1.9", false},
        {"value: 12345", true},
    };
    for (const auto& [text, bWithin] : limits) {
        const JIGHOST_RUN run =
            RunMeasures(bWithin ? 0 : 5, "{field: SerialNo, name: serial, " + text + "}");
        Json expected = Json::parse(R"({"steps": [{},
            {"measurements": [{"judged": false}, {"judged": true, "value": 12345}]},
            {"measurements": [{"text": "Line 4", "within": true}]}]})");
        expected["steps"][1]["measurements"][1]["within"] = bWithin;
        EXPECT_THAT(Json::parse(run.output), Holds(expected)) << text;
    }
    const JIGHOST_RUN both = RunMeasures(
        5, "{field: SerialNo, unit: bodies, max: 3}, {field: CodeDigitLow, max: -1}", "",
        "SerialNo: expected at most 3 bodies, got 12345 bodies; "
        "CodeDigitLow: expected at most -1, got 0\n");
    EXPECT_THAT(both.output, HasSubstr("     SerialNo: 12345 bodies (at most 3), failed\n"));
    // What an operation that failed left in the record is no measurement.
    const JIGHOST_RUN failed =
        RunMeasures(4, "{field: SerialNo}", "--json --fault GetBodyID:1=0x2001");
    EXPECT_TRUE(Json::parse(failed.output)["steps"][1]["measurements"].empty());
}

TEST_F(JighostTest, WrongMeasurementsAreToldWithTheirLine) {
    const std::pair<std::string, std::string> wrong[] = {
        {"{name: a}", "expected the field: that is measured, got none"},
        {"{field: SerialNum}", "GetBodyID has no field 'SerialNum'"},
        {"{field: \"\"}", "GetBodyID has no field ''"},
        {"{field: SerialNo, min: few}", "expected a number, got 'few'"},
        {"{field: SerialNo, min: inf}", "expected a number, got 'inf'"},
        {"{field: SerialNo, min: 3, max: 2}", "expected limits with something between, got from 3"},
        {"{field: SerialNo, min: 3, value: 2}", "expected min: and max:, or value: with its toler"},
        {"{field: SerialNo, max: 3, tolerance: 2}", "expected min: and max:, or value: with its"},
        {"{field: SerialNo, pattern: a}", "expected limits of a number, got a pattern"},
        {"{field: CodePair}", "expected each name of a measurement once, got 'CodePair' again"},
    };
    for (const auto& [measure, complaint] : wrong) {
        for (const char* pszOptions : {"", "--check"}) {
            RunMeasures(2, measure, pszOptions, "measure.yaml:6: " + complaint);
        }
    }
}

TEST(PatternTest, HostilePatternIsRefusedOrCheap) {
    const std::string length(100, 'a');
    for (const std::string& pattern :
         {std::string(), length + 'a', std::string("("), std::string("a{33}"),
          std::string("(a{6}){6}"), std::string("(a{2,7}){7}"), std::string("(a)\\1")}) {
        EXPECT_THROW(CheckPattern(pattern), HostError) << pattern;
    }
    EXPECT_TRUE(IsOfPattern("2026-11", "\\d{4}-\\d{2}"));
    EXPECT_FALSE(IsOfPattern("2026-110", "\\d{4}-\\d{2}")) << "the whole text";
    const std::string deep = std::string(45, '(') + 'a' + std::string(45, ')') + "{32}";
    for (const std::string& pattern : {std::string("((a*)*)*b"), deep}) {
        CheckPattern(pattern);
        EXPECT_FALSE(IsOfPattern(std::string(500, 'a'), pattern));
    }
}

TEST_F(JighostTest, CheckRunsNothingAndSaysWhatItCannotKnow) {
    WriteFile("check.yaml", R"(format: 2
parameters:
  time: {type: characters}
steps:
  - {operation: SetSlitRollingMode, record: {AccumulateTime: "${time}"}}
)");
    const std::string line = "sequence --check check.yaml ";
    EXPECT_EQ(
        RunTo(0, line).output,
        "check.yaml: nothing wrong found; not checked without values: what depends on time\n");
    EXPECT_EQ(RunTo(0, line + "--set time=8").output, "check.yaml: nothing wrong found\n");
    RunTo(2, line + "--set time=x", "check.yaml:5: SetSlitRollingMode: AccumulateTime: expected");
    EXPECT_FALSE(std::filesystem::exists("JigDll.log")) << "no operation has run";
}

}  // namespace
