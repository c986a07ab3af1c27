// jighost report: files that are records, and files that are not.
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportRecords.h"

using testing::HasSubstr;

namespace {

class ReportCommandTest : public testing::Test {
  protected:
    static void FileRecord(const std::string& path, const std::string& number) {
        RUN_RECORD record = SampleRecord();
        record.number = number;
        WriteFile(path, JsonText(RunRecordJson(record)));
    }

  private:
    FreshFolder m_Folder;
};

TEST_F(ReportCommandTest, OneRecordTwiceIsOne) {
    FileRecord("a.json", "a");
    FileRecord("again.json", "a");
    FileRecord("b.json", "b");
    EXPECT_EQ(
        RunLine("report a.json again.json -o page.html").output,
        "page.html: 1 run, 1 of them not passed\n");
    const std::string one = ReadFile("page.html");
    EXPECT_EQ(
        RunLine("report -o page.html again.json a.json b.json").output,
        "page.html: 2 runs, 2 of them not passed\n");
    EXPECT_EQ(RunLine("report -o page.html a.json").exitCode, 0);
    EXPECT_EQ(ReadFile("page.html"), one);
}

TEST_F(ReportCommandTest, WhatCanNotBeReadIsToldAndLeftOut) {
    FileRecord("a.json", "a");
    WriteFile("wrong.json", "{\"format\": 3}");
    const JIGHOST_RUN run = RunLine("report nowhere.json a.json wrong.json -o page.html");
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_THAT(run.errors, HasSubstr("nowhere.json"));
    EXPECT_THAT(run.errors, HasSubstr("wrong.json: format: expected 1 or 2"));
    EXPECT_EQ(run.output, "page.html: 1 run, 1 of them not passed\n");
    EXPECT_THAT(ReadFile("page.html"), HasSubstr("</html>\n"));
}

TEST_F(ReportCommandTest, NothingIsReplacedByNothing) {
    FileRecord("a.json", "a");
    WriteFile("page.html", "former");
    const std::string record = ReadFile("a.json");
    EXPECT_EQ(RunLine("report nowhere.json -o page.html").exitCode, 2);
    for (const char* pszLine :
         {"report a.json", "report -o page.html", "report a.json -o a.json",
          "report a.json -o ./a.json", "report a.json -o nowhere/page.html"}) {
        const JIGHOST_RUN run = RunLine(pszLine);
        EXPECT_EQ(run.exitCode, 2) << pszLine;
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    }
    EXPECT_EQ(ReadFile("page.html"), "former");
    EXPECT_EQ(ReadFile("a.json"), record);
}

}  // namespace
