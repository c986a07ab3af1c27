// Values that a step measures, held against limits and patterns.
#include <filesystem>

#include "jighost/sequence/Pattern.h"
#include "jighost/text/HostError.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportJson.h"

using testing::HasSubstr;

namespace {

TEST_F(JighostTest, MeasurementsAreAllJudgedAtTheirLimits) {
    WriteFile("measure.yaml", R"(format: 2
parameters:
  top: {type: signed 32 bits, default: 12345}
steps:
  - {operation: SetBodyID, record: {SerialNo: 12345}}
  - operation: GetBodyID
    on_unexpected: continue
    measure:
      - {field: CodePair}
      - {field: SerialNo, name: a, min: 12345, max: 0x3039}
      - {field: SerialNo, name: b, min: 12346}
      - {field: SerialNo, name: c, max: 12344.5}
      - {field: SerialNo, name: d, min: -1, max: "${top}"}
      - {field: SerialNo, name: e, value: 12343, tolerance: 2}
      - {field: SerialNo, name: f, value: 12343, tolerance: 1.9}
      - {field: SerialNo, name: g, value: 12345}
      - {field: SerialNo, name: h, value: 12344}
      - {field: SerialNo, unit: bodies, max: 3}
  - {operation: GetOwnerName, measure: [{field: OwnerName, pattern: "Line [0-9]"}]}
)");
    const std::string line = "sequence measure.yaml --body body.yaml ";
    EXPECT_THAT(Json::parse(RunTo(5, line + "--json").output), Holds(Json::parse(R"({"steps": [{},
        {"measurements": [{"judged": false},
            {"name": "a", "within": true, "judged": true, "value": 12345},
            {"name": "b", "within": false}, {"name": "c", "within": false},
            {"name": "d", "within": true}, {"name": "e", "within": true},
            {"name": "f", "within": false}, {"name": "g", "within": true},
            {"name": "h", "within": false}, {"name": "SerialNo", "within": false}]},
        {"outcome": "passed", "measurements": [{"text": "Line 4", "within": true}]}]})")));
    const JIGHOST_RUN run = RunTo(
        5, line,
        "h: expected from 12344 to 12344, got 12345; SerialNo: expected at most 3 bodies, got "
        "12345 bodies\n");
    EXPECT_THAT(run.output, HasSubstr("     SerialNo: 12345 bodies (at most 3), failed\n"));
    // What an operation that failed left in the record is no measurement.
    const JIGHOST_RUN failed = RunTo(4, line + "--json --fault GetBodyID:1=0x2001");
    EXPECT_TRUE(Json::parse(failed.output)["steps"][1]["measurements"].empty());
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
