// Values that a step measures, held against limits and patterns.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "jighost/sequence/Pattern.h"
#include "jighost/text/HostError.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

namespace {

JIGHOST_RUN RunMeasures(const std::string& measures, const std::string& options = "--json") {
    WriteFile(
        "measure.yaml",
        "format: 2\nparameters:\n  top: {type: signed 32 bits, default: 12345}\nsteps:\n"
        "  - {operation: SetBodyID, record: {SerialNo: 12345}}\n"
        "  - {operation: GetBodyID, measure: [{field: CodePair}, " +
            measures +
            "], on_unexpected: continue}\n"
            "  - {operation: GetOwnerName, measure: [{field: OwnerName, pattern: \"Line "
            "[0-9]\"}]}\n");
    return RunLine("sequence measure.yaml --body body.yaml " + options);
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
        const JIGHOST_RUN run = RunMeasures("{field: SerialNo, name: serial, " + text + "}");
        EXPECT_EQ(run.exitCode, bWithin ? 0 : 5) << text << run.errors;
        const auto steps = nlohmann::json::parse(run.output)["steps"];
        ASSERT_EQ(steps[1]["measurements"].size(), 2U);
        EXPECT_EQ(steps[1]["measurements"][0]["judged"], false);
        EXPECT_EQ(steps[1]["measurements"][1]["judged"], true);
        EXPECT_EQ(steps[1]["measurements"][1]["within"], bWithin) << text;
        EXPECT_EQ(steps[1]["measurements"][1]["value"], 12345);
        EXPECT_EQ(steps[2]["measurements"][0]["text"], "Line 4");
        EXPECT_EQ(steps[2]["measurements"][0]["within"], true);
    }
    const JIGHOST_RUN both =
        RunMeasures("{field: SerialNo, unit: bodies, max: 3}, {field: CodeDigitLow, max: -1}", "");
    EXPECT_EQ(both.exitCode, 5);
    EXPECT_THAT(both.output, HasSubstr("     SerialNo: 12345 bodies (at most 3), failed\n"));
    EXPECT_THAT(
        both.errors, HasSubstr("SerialNo: expected at most 3 bodies, got 12345 bodies; "
                               "CodeDigitLow: expected at most -1, got 0\n"));
    // What an operation that failed left in the record is no measurement.
    const JIGHOST_RUN failed =
        RunMeasures("{field: SerialNo}", "--json --fault GetBodyID:1=0x2001");
    EXPECT_TRUE(nlohmann::json::parse(failed.output)["steps"][1]["measurements"].empty());
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
            const JIGHOST_RUN run = RunMeasures(measure, pszOptions);
            EXPECT_EQ(run.exitCode, 2) << measure;
            EXPECT_THAT(run.errors, HasSubstr("measure.yaml:6: " + complaint));
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
    CheckPattern("((a*)*)*b");
    EXPECT_FALSE(IsOfPattern(std::string(500, 'a'), "((a*)*)*b"));
    const std::string deep = std::string(45, '(') + 'a' + std::string(45, ')') + "{32}";
    CheckPattern(deep);
    EXPECT_FALSE(IsOfPattern(std::string(500, 'a'), deep));
}

TEST_F(JighostTest, CheckRunsNothingAndSaysWhatItCannotKnow) {
    WriteFile(
        "check.yaml",
        "format: 2\nparameters:\n  time: {type: characters}\nsteps:\n"
        "  - {operation: SetSlitRollingMode, record: {AccumulateTime: \"${time}\"}}\n");
    const auto expect = [](const std::string& options, int exitCode, const std::string& told) {
        const JIGHOST_RUN run = RunLine("sequence --check check.yaml " + options);
        EXPECT_EQ(run.exitCode, exitCode) << options;
        EXPECT_THAT(run.output + run.errors, HasSubstr(told));
    };
    expect(
        "", 0, "check.yaml: nothing wrong found; not checked without values: what depends on time");
    expect("--set time=8", 0, "check.yaml: nothing wrong found\n");
    expect("--set time=x", 2, "check.yaml:5: SetSlitRollingMode: AccumulateTime: expected");
    EXPECT_FALSE(std::filesystem::exists("JigDll.log")) << "no operation has run";
}

}  // namespace
