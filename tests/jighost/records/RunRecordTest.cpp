// Records of runs as documents: nothing lost on the way, nothing wrong taken.
#include "jighost/records/RunRecordReader.h"
#include "jighost/text/HostError.h"
#include "tests/support/Support.h"
#include "tests/support/SupportRecords.h"

using testing::HasSubstr;

namespace {

std::string Problem() {
    try {
        ReadRunRecord("record.json");
    } catch (const HostError& e) {
        EXPECT_EQ(e.exitCode, EXIT_WRONG_USE);
        return e.what();
    }
    return "";
}

class RunRecordTest : public testing::Test {
  private:
    FreshFolder m_Folder;
};

TEST_F(RunRecordTest, ComesBackAsItWas) {
    const Json json = RunRecordJson(SampleRecord());
    EXPECT_EQ(json["format"], 2);
    EXPECT_EQ(json["steps"][0]["outcome"], "error");
    EXPECT_EQ(json["steps"][0]["measurements"][0]["max"], 2);
    EXPECT_TRUE(json["steps"][0]["attempts"][1]["result"].is_null());
    for (const int indent : {2, ON_ONE_LINE}) {
        WriteFile("record.json", JsonText(json, indent) + '\n');
        EXPECT_EQ(RunRecordJson(ReadRunRecord("record.json")), json);
    }
}

TEST_F(RunRecordTest, KilledRunHasTheStepsThatEnded) {
    RUN_RECORD record = SampleRecord();
    record.verdict = VERDICT::UNFINISHED;
    record.steps.clear();
    const std::string head = JsonText(RunRecordJson(record), ON_ONE_LINE) + '\n';
    const std::string step = JsonText(RecordedStepJson(SampleStep()), ON_ONE_LINE) + '\n';
    for (const std::size_t cut : {std::size_t{0}, std::size_t{1}, step.size() - 1}) {
        WriteFile("record.json", head + step + step.substr(0, cut));
        const RUN_RECORD read = ReadRunRecord("record.json");
        EXPECT_EQ(read.verdict, VERDICT::UNFINISHED);
        ASSERT_EQ(read.steps.size(), 1U) << cut;
        EXPECT_EQ(RecordedStepJson(read.steps[0]), RecordedStepJson(SampleStep()));
    }
    // Behind the end of a run nothing is a step of it, and none that went wrong is one that passed.
    record.verdict = VERDICT::FAILED;
    WriteFile("record.json", JsonText(RunRecordJson(record), ON_ONE_LINE) + "\n" + step);
    EXPECT_THAT(Problem(), HasSubstr("record.json: expected nothing behind the record's end"));
    record.verdict = VERDICT::PASSED;
    record.steps = {SampleStep()};
    WriteFile("record.json", JsonText(RunRecordJson(record)));
    EXPECT_THAT(Problem(), HasSubstr("record.json: outcome: expected that of its steps"));
    WriteFile("record.json", head + step + step);
    EXPECT_EQ(ReadRunRecord("record.json").steps.size(), 2U);
}

TEST_F(RunRecordTest, WhatIsWrongIsToldWithItsPlace) {
    const Json right = RunRecordJson(SampleRecord());
    const auto with = [&right](const char* pszPointer, const Json& value) {
        Json wrong = right;
        wrong[Json::json_pointer(pszPointer)] = value;
        WriteFile("record.json", JsonText(wrong));
        return Problem();
    };
    EXPECT_EQ(with("/format", 3), "record.json: format: expected 1 or 2");
    EXPECT_THAT(with("/body/serial", -1), HasSubstr("record.json: body.serial: expected a whole"));
    EXPECT_THAT(with("/body/serial", 4'294'967'296), HasSubstr("body.serial: expected a whole"));
    EXPECT_THAT(with("/outcome", "well"), HasSubstr(": outcome: expected passed"));
    EXPECT_THAT(with("/faults", {1}), HasSubstr(": faults[1]: expected a text"));
    EXPECT_THAT(
        with("/steps/0/attempts/0/calls/0/time_ms", "x"),
        HasSubstr(": steps[1].attempts[1].calls[1].time_ms: expected a number"));
    EXPECT_THAT(
        with("/steps/0/attempts/0/after/OwnerName", {{"deep", 1}}),
        HasSubstr("after.OwnerName: expected a value"));
    Json lacking = right;
    lacking.erase("started_at");
    WriteFile("record.json", JsonText(lacking));
    EXPECT_EQ(Problem(), "record.json: started_at: expected a value");
    for (const char* pszText : {"", "[]", "{\"format\": 2", "no JSON\n{}\n"}) {
        WriteFile("record.json", pszText);
        EXPECT_THAT(Problem(), HasSubstr("expected the record of a sequence's run")) << pszText;
    }
    std::filesystem::remove("record.json");
    EXPECT_THAT(Problem(), HasSubstr("can't read record.json"));
}

TEST_F(RunRecordTest, FormerFormIsReadToo) {
    WriteFile("record.json", R"({"format": 1, "sequence": "identity", "outcome":
        "expectation not met", "time_ms": 2.5, "steps": [{"number": 1, "name": "get", "outcome":
        "expectation not met", "problem": "expected 1, got 2", "attempts": 2, "operation":
        "GetBodyID", "result": 0, "result_name": "RESULT_SUCCESS", "error": "", "time_ms": 1,
        "calls": 3, "record": {"SerialNo": 2}, "log": ["a line"], "interleaved": []}]})");
    const RUN_RECORD record = ReadRunRecord("record.json");
    EXPECT_EQ(record.number.size(), 36U);
    EXPECT_EQ(record.number, ReadRunRecord("record.json").number);
    EXPECT_EQ(record.verdict, VERDICT::FAILED);
    EXPECT_EQ(record.problem, "expected 1, got 2");
    EXPECT_FALSE(record.serial);
    ASSERT_EQ(record.steps.size(), 1U);
    EXPECT_EQ(record.steps[0].attempts.at(0).after["SerialNo"], 2);
    EXPECT_EQ(record.steps[0].attempts[0].log.at(0), "a line");
}

}  // namespace
