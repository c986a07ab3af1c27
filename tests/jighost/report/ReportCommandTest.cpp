// jighost report: files that are records, and files that are not.
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportRecords.h"

namespace {

class ReportCommandTest : public testing::Test {
  protected:
    ReportCommandTest() {
        for (const std::string file : {"a.json", "again.json", "b.json"}) {
            RUN_RECORD record = SampleRecord();
            record.number = file[0] == 'b' ? "b" : "a";
            WriteFile(file, RunRecordText(record));
        }
    }

  private:
    FreshFolder m_Folder;
};

TEST_F(ReportCommandTest, WhatIsThereTwiceIsOneAndWhatCanNotBeReadIsLeftOut) {
    WriteFile("wrong.json", "{\"format\": 3}");
    EXPECT_EQ(
        RunTo(0, "report again.json a.json b.json -o page.html").output,
        "page.html: 2 runs, 2 of them not passed\n");
    RunTo(0, "report -o one.html a.json");
    const JIGHOST_RUN run = RunTo(
        5, "report nowhere.json a.json again.json wrong.json -o page.html",
        "wrong.json: format: expected 1 or 2");
    EXPECT_EQ(run.output, "page.html: 1 run, 1 of them not passed\n");
    EXPECT_THAT(run.errors, testing::HasSubstr("nowhere.json"));
    EXPECT_EQ(ReadFile("page.html"), ReadFile("one.html"));
}

}  // namespace
