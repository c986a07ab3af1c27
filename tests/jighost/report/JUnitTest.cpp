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
    const std::string results = JUnitText(record);
    for (const char* pszText :
         {R"(tests="3" failures="1" errors="1" skipped="1")",
          R"(<error type="error" message="expected success"/>)",
          R"(<failure type="failed" message="expected success"/>)",
          "name=\"2\" time=\"0.000000\">\n<skipped message=", "<system-out>one\ntwo\n</system-out>",
          R"(<property name="serial" value="4294967295"/>)",
          R"(<property name="parameter serial" value="12345"/>)"}) {
        EXPECT_THAT(results, HasSubstr(pszText));
    }
}

TEST(JUnitTest, ARunThatDidNotPassNeverLooksSo) {
    RUN_RECORD record;
    record.range = {1, 0, 0};
    for (const VERDICT verdict : {VERDICT::FAILED, VERDICT::ABORTED, VERDICT::UNFINISHED}) {
        record.verdict = verdict;
        EXPECT_THAT(JUnitText(record), HasSubstr(R"(tests="1")"));
        EXPECT_THAT(
            JUnitText(record), HasSubstr(verdict == VERDICT::FAILED ? "<failure" : "<error"));
    }
}

}  // namespace
