// Pages of records: what is on them, and what is not.
#include "jighost/report/ReportPage.h"

#include "tests/support/Support.h"
#include "tests/support/SupportRecords.h"

using testing::HasSubstr;
using testing::Not;

namespace {

RUN_RECORD NumberedRecord(const std::string& number, VERDICT verdict) {
    RUN_RECORD record = SampleRecord();
    record.number = number;
    record.verdict = verdict;
    return record;
}

std::string PageOf(const std::vector<RUN_RECORD>& records) {
    ReportPage page;
    for (const RUN_RECORD& record : records) {
        page.Add(record);
    }
    return page.Text();
}

TEST(ReportPageTest, TellsAllThatTheRecordHas) {
    const std::string page = PageOf({SampleRecord()});
    for (const char* pszText :
         {"4294967295", "identity.yaml", "00ff", "12345", "TuneBench.t460, 1.1.0",
          "SetBodyID:1=0x2001", "Step 3, a &quot;name&quot;\\x0a", "expected success",
          "did not return", "a result (-5)", "Link failure", "SerialNo", "1, 2", "Set 0x1 2: 30 41",
          "failed: [EVNT] Link failure (0x2001)", "2 bytes:", "one\ntwo\n", "at most 2",
          "like L.*"}) {
        EXPECT_THAT(page, HasSubstr(pszText));
    }
    EXPECT_THAT(page, Not(HasSubstr("id=\"runs\"")));
}

TEST(ReportPageTest, OfManyIsTheSameInAnyOrder) {
    RUN_RECORD late = NumberedRecord("b", VERDICT::PASSED);
    ++late.startedAt;
    const RUN_RECORD first = NumberedRecord("a", VERDICT::PASSED);
    const RUN_RECORD atOnce = NumberedRecord("c", VERDICT::PASSED);
    const std::string page = PageOf({first, late, atOnce});
    EXPECT_EQ(PageOf({atOnce, late, first}), page);
    EXPECT_THAT(page, HasSubstr("<title>3 runs</title>"));
}

TEST(ReportPageTest, ARunThatHasEndedTakesThePlaceOfItselfUnfinished) {
    const RUN_RECORD begun = NumberedRecord("a", VERDICT::UNFINISHED);
    const RUN_RECORD ended = NumberedRecord("a", VERDICT::PASSED);
    EXPECT_EQ(PageOf({begun, ended}), PageOf({ended}));
    EXPECT_EQ(PageOf({ended, begun}), PageOf({ended}));
    EXPECT_THAT(PageOf({begun}), HasSubstr("nothing was told of the run&#39;s end"));
}

TEST(ReportPageTest, WithoutMomentsNothingIsDrawnOverTime) {
    RUN_RECORD record = SampleRecord();
    EXPECT_THAT(PageOf({record}), HasSubstr("class=\"lane\""));
    record.startedAt = 0;
    EXPECT_THAT(PageOf({record}), Not(HasSubstr("class=\"lane\"")));
}

}  // namespace
