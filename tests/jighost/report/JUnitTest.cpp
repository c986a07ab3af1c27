// A run as test results of a build server.
#include "jighost/report/JUnit.h"

#include "tests/support/Support.h"
#include "tests/support/SupportRecords.h"

using testing::HasSubstr;

namespace {

TEST(JUnitTest, EachStepOfTheRangeIsThereOnce) {
    RUN_RECORD record = SampleRecord();
    record.steps.push_back(SampleStep());
    record.steps[1].number = 9;  // of always:
    record.steps[1].verdict = VERDICT::FAILED;
    const std::string text = JUnitText(record);
    EXPECT_THAT(text, HasSubstr(R"(tests="3" failures="1" errors="1" skipped="1")"));
    EXPECT_THAT(text, HasSubstr(R"(<error type="error" message="expected success"/>)"));
    EXPECT_THAT(text, HasSubstr(R"(<failure type="failed" message="expected success"/>)"));
    EXPECT_THAT(text, HasSubstr("name=\"2\" time=\"0.000000\">\n<skipped message="));
    EXPECT_THAT(text, HasSubstr("<system-out>one\ntwo\n</system-out>"));
    EXPECT_THAT(text, HasSubstr(R"(<property name="serial" value="4294967295"/>)"));
    EXPECT_THAT(text, HasSubstr(R"(<property name="parameter serial" value="12345"/>)"));
}

TEST(JUnitTest, ARunThatDidNotPassNeverLooksSo) {
    for (const VERDICT verdict : {VERDICT::FAILED, VERDICT::ABORTED, VERDICT::UNFINISHED}) {
        RUN_RECORD record = SampleRecord();
        record.verdict = verdict;
        record.steps.clear();
        record.range = {1, 0, 0};
        const std::string text = JUnitText(record);
        EXPECT_THAT(text, HasSubstr(R"(tests="1")"));
        EXPECT_THAT(text, HasSubstr(verdict == VERDICT::FAILED ? "<failure" : "<error"));
    }
}

}  // namespace
