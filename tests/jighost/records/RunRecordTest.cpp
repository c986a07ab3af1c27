// Records of runs as documents: nothing lost on the way, nothing wrong taken.
#include "jighost/records/RunRecordReader.h"
#include "jighost/text/HostError.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJson.h"
#include "tests/support/SupportRecords.h"

using testing::HasSubstr;

namespace {

class RunRecordTest : public testing::Test {
  protected:
    static RUN_RECORD Read(const std::string& text) {
        WriteFile("record.json", text);
        return ReadRunRecord("record.json");
    }
    /// Why the text is refused.
    static std::string Problem(const std::string& text) {
        try {
            Read(text);
        } catch (const HostError& e) {
            EXPECT_EQ(e.exitCode, EXIT_WRONG_USE);
            return e.what();
        }
        return "";
    }
    static std::string Line(const Json& json) { return JsonText(json, ON_ONE_LINE) + '\n'; }

  private:
    FreshFolder m_Folder;
};

TEST_F(RunRecordTest, ComesBackAsItWas) {
    const Json json = RunRecordJson(SampleRecord());
    EXPECT_THAT(json, Holds(Json::parse(R"({"format": 2, "steps": [
        {"outcome": "error", "measurements": [{"max": 2}, {}], "attempts": [{}, {"result": null}]}
    ]})")));
    for (const std::string& text : {JsonText(json) + '\n', Line(json)}) {
        EXPECT_EQ(RunRecordJson(Read(text)), json);
    }
}

TEST_F(RunRecordTest, KilledRunHasTheStepsThatEnded) {
    RUN_RECORD record = SampleRecord();
    record.verdict = VERDICT::UNFINISHED;
    record.steps.clear();
    const std::string head = Line(RunRecordJson(record));
    const std::string step = Line(RecordedStepJson(SampleStep()));
    record.steps = {SampleStep()};
    for (const std::size_t cut : {std::size_t{0}, std::size_t{1}, step.size() - 1}) {
        const RUN_RECORD read = Read(head + step + step.substr(0, cut));
        EXPECT_EQ(RunRecordJson(read), RunRecordJson(record)) << cut;
    }
    EXPECT_EQ(Read(head + step + step).steps.size(), 2U);
    // Behind the end of a run nothing is a step of it, and none that went wrong is one that passed.
    EXPECT_EQ(
        Problem(Line(RunRecordJson(SampleRecord())) + step),
        "record.json: expected nothing behind the record's end");
    record.verdict = VERDICT::PASSED;
    EXPECT_EQ(
        Problem(Line(RunRecordJson(record))), "record.json: outcome: expected that of its steps");
}

TEST_F(RunRecordTest, WhatIsWrongIsToldWithItsPlace) {
    const std::tuple<const char*, Json, const char*> wrong[] = {
        {"/format", 3, "record.json: format: expected 1 or 2"},
        {"/body/serial", -1, "record.json: body.serial: expected a whole"},
        {"/body/serial", 4'294'967'296, "body.serial: expected a whole"},
        {"/outcome", "well", ": outcome: expected passed"},
        {"/faults", Json::array({1}), ": faults[1]: expected a text"},
        {"/steps/0/attempts/0/calls/0/time_ms", "x",
         ": steps[1].attempts[1].calls[1].time_ms: expected a number"},
        {"/steps/0/attempts/0/after/OwnerName/deep", 1, "after.OwnerName: expected a value"},
    };
    for (const auto& [place, value, problem] : wrong) {
        Json json = RunRecordJson(SampleRecord());
        json["steps"][0]["attempts"][0]["after"].erase("OwnerName");
        json[Json::json_pointer(place)] = value;
        EXPECT_THAT(Problem(Line(json)), HasSubstr(problem));
    }
    Json lacking = RunRecordJson(SampleRecord());
    lacking.erase("started_at");
    EXPECT_EQ(Problem(Line(lacking)), "record.json: started_at: expected a value");
    for (const char* pszText : {"", "[]", "{\"format\": 2", "no JSON\n{}\n"}) {
        EXPECT_EQ(Problem(pszText), "record.json: expected the record of a sequence's run");
    }
    EXPECT_THAT([] { ReadRunRecord("none"); }, testing::Throws<HostError>());
}

TEST_F(RunRecordTest, FormerFormIsReadToo) {
    const std::string text = R"({"format": 1, "sequence": "identity", "outcome":
        "expectation not met", "time_ms": 2.5, "steps": [{"number": 1, "name": "get", "outcome":
        "expectation not met", "problem": "expected 1, got 2", "attempts": 2, "operation":
        "GetBodyID", "result": 0, "result_name": "RESULT_SUCCESS", "error": "", "time_ms": 1,
        "calls": 3, "record": {"SerialNo": 2}, "log": ["a line"], "interleaved": []}]})";
    const RUN_RECORD record = Read(text);
    EXPECT_EQ(record.number.size(), 36U);
    EXPECT_EQ(record.number, Read(text).number);
    EXPECT_THAT(RunRecordJson(record), Holds(Json::parse(R"({
        "outcome": "failed", "problem": "expected 1, got 2", "body": {"serial": null},
        "steps": [{"attempts": [{"after": {"SerialNo": 2}, "log": ["a line"]}]}]})")));
}

}  // namespace
