// The record of a run: what it tells of the run, and what becomes of its file.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <set>

#include "jighost/records/RunRecordReader.h"
#include "platform/Program.h"
#include "platform/Surroundings.h"
#include "platform/User.h"
#include "recorder/Sha256.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportJson.h"

using testing::HasSubstr;

namespace {

const std::string GET_OWNER =
    "  - {operation: GetOwnerName, expect: 0, expect_fields: {OwnerName: Line 4}}\n";
const std::string SET_ID =
    "  - {operation: SetBodyID, record: {SerialNo: 12345}, on_unexpected: continue}\n";

class SequenceRecordTest : public JighostTest {
  protected:
    /// The steps come to this exit code.
    static RUN_RECORD Recorded(
        const std::string& steps, int exitCode, const std::string& options = "") {
        WriteFile("steps.yaml", "format: 2\nname: a run\nfolder: .\nsteps:\n" + steps);
        RunTo(exitCode, "sequence steps.yaml --record run.json " + options);
        return ReadRunRecord("run.json");
    }
};

void ExpectHash(const RECORDED_FILE& file, const std::string& name) {
    EXPECT_EQ(std::filesystem::path(file.path).filename(), name);
    EXPECT_EQ(file.sha256, Recorder::Sha256(ReadFile(file.path)));
}

std::int64_t Now() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

/// Since 1970, of a moment such as "2026-11-23T09:20:00.123+01:00".
std::int64_t MillisecondsOf(const std::string& moment) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, rest = 0, zone = 0;
    int zoneMinutes = 0;
    char sign = 0;
    const int read = std::sscanf(
        moment.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d.%3d%c%2d:%2d", &year, &month, &day, &hour, &minute,
        &second, &rest, &sign, &zone, &zoneMinutes);
    EXPECT_EQ(read, 10) << moment;
    const std::chrono::sys_days date(std::chrono::year(year) / month / day);
    const int east = (sign == '-' ? -1 : 1) * (60 * zone + zoneMinutes);
    const std::chrono::minutes time(60 * hour + minute - east);
    const std::chrono::milliseconds seconds(1000 * second + rest);
    return (date.time_since_epoch() + time + seconds).count();
}

TEST_F(SequenceRecordTest, HeadTellsWhatRanWhenAndWhere) {
    WriteFile("part.yaml", "format: 2\nsteps:\n" + GET_OWNER);
    const std::string steps =
        GET_OWNER + GET_OWNER +
        "  - include: part.yaml\n"
        "parameters: {b: {type: characters}, a: {type: bytes, default: 01}}\n";
    WriteFile("steps.yaml", "format: 2\nsteps:\n" + steps);
    RunTo(
        2, "sequence steps.yaml --set b=x --record part.yaml",
        "--record part.yaml is the same file as the sequence");
    const std::int64_t before = Now();
    const RUN_RECORD record = Recorded(
        steps, 5,
        "--from 2 --until 3 --set b=x --station line4 --operator Kim "
        "--fault GetOwnerName:1=0x2001");
    EXPECT_TRUE(record.startedAt >= before && record.startedAt <= Now()) << record.startedAt;
    EXPECT_EQ(MillisecondsOf(record.started), record.startedAt) << record.started;
    EXPECT_THAT(RunRecordJson(record), Holds(Json::parse(R"({"station": "line4", "operator": "Kim",
        "sequence": {"name": "a run", "files": [{}, {}]}, "parameters": {"a": "01", "b": "x"},
        "range": {"first": 2, "last": 3, "of": 3}, "faults": ["GetOwnerName:1=0x2001"],
        "outcome": "failed", "steps": [{}]})")));
    EXPECT_THAT(record.jighost, HasSubstr(" ("));
    ExpectHash(record.sequenceFiles[0], "steps.yaml");
    ExpectHash(record.sequenceFiles[1], "part.yaml");
    ExpectHash(record.module, MODULE_FILE_NAME);
    ExpectHash(record.link, BODYLNK_FILE);
    EXPECT_EQ(record.problem, record.steps.at(0).problem);

    const RUN_RECORD other = Recorded(GET_OWNER, 0);
    EXPECT_NE(other.number, record.number);
    EXPECT_EQ(other.number.size(), 36U);
    EXPECT_EQ(other.station, MachineName());
    EXPECT_EQ(other.operatorName, UserName());
    EXPECT_NE(other.operatorName, "");
    EXPECT_EQ(other.problem, "");
}

TEST_F(SequenceRecordTest, StepHasAllItsAttemptsWithTheirCalls) {
    const RUN_RECORD record = Recorded(
        "  - {operation: SetFilePrefix, on_unexpected: \"retry 2 after 1 ms\"}\n" + GET_OWNER +
            "  - {operation: LoadPropertyData}\n",
        0, "--fault SetFilePrefix:2@1=0x2001");
    EXPECT_THAT(RunRecordJson(record), Holds(Json::parse(R"json({"steps": [
        {"outcome": "passed", "attempts": [
            {"result": 8193, "calls": [
                {"failed": false, "received_size": 8},
                {"failed": true, "request": "Set 0x1000007 8: 36 57 31 45 00 00 00 00",
                 "sent": "36 57 31 45 00 00 00 00", "sent_size": 8}]},
            {"result": 0, "error": "", "calls": [{}, {}]}]},
        {"expected_result": "RESULT_SUCCESS (0)", "expected_fields": {"OwnerName": "Line 4"},
         "attempts": [
            {"before": {"OwnerName": ""}, "after": {"OwnerName": "Line 4"}}]
},
        {}]
})json")));
    const RECORDED_STEP& prefix = record.steps.at(0);
    const RECORDED_ATTEMPT& failed = prefix.attempts.at(0);
    EXPECT_THAT(failed.error, HasSubstr("--fault SetFilePrefix:2@1"));
    EXPECT_THAT(failed.calls.at(1).answer, testing::StartsWith("failed: "));
    EXPECT_THAT(failed.log.back(), testing::EndsWith("SetFilePrefix - 8193"));
    const RECORDED_ATTEMPT& second = prefix.attempts.at(1);
    EXPECT_GE(second.startMs, failed.startMs + failed.timeMs + 1) << "the pause";
    EXPECT_GE(prefix.timeMs, second.startMs + second.timeMs - prefix.startMs);

    const std::vector<RECORDED_CALL>& calls = record.steps.at(2).attempts.at(0).calls;
    const auto large = std::ranges::max_element(calls, {}, &RECORDED_CALL::receivedSize);
    ASSERT_NE(large, calls.end());
    EXPECT_GT(large->receivedSize, RECORDED_BYTES);
    EXPECT_EQ(large->received.size(), 3 * RECORDED_BYTES - 1);
    double inCalls = 0;
    for (const RECORDED_CALL& call : calls) {
        inCalls += call.timeMs;
    }
    EXPECT_LE(inCalls, record.steps[2].attempts[0].timeMs);
}

TEST_F(SequenceRecordTest, BodyIsReadForRecordsAloneAndMeetsNoFault) {
    WriteFile("steps.yaml", "format: 1\nsteps:\n  - operation: GetOwnerName\n");
    RunTo(0, "sequence steps.yaml");
    EXPECT_EQ(ReadFile("JigDll.log").find("GetBodyID"), std::string::npos);

    const RUN_RECORD met = Recorded(
        "  - {operation: GetBodyID, on_unexpected: retry 1}\n", 0,
        "--fault GetBodyID:1@1=0x2001 --json --trace trace.jsonl");
    EXPECT_EQ(met.bodyProblem, "");
    EXPECT_EQ(met.bodyID["SerialNo"], met.serial.value_or(0));
    ASSERT_EQ(met.steps.size(), 1U) << "the reading is no step";
    ASSERT_EQ(met.steps[0].attempts.size(), 2U);
    EXPECT_EQ(met.steps[0].attempts[1].after, met.bodyID);

    const RUN_RECORD unmet = Recorded(GET_OWNER, 5, "--fault GetBodyID:1=0x2001");
    EXPECT_EQ(unmet.verdict, VERDICT::FAILED) << "a fault that nothing has met tests nothing";
    EXPECT_NE(unmet.problem, "");
    EXPECT_TRUE(unmet.serial);
}

TEST_F(SequenceRecordTest, BodyIsTheOneThatTheRunLeaves) {
    const std::string body = "--body body.yaml";
    EXPECT_EQ(Recorded(SET_ID + "  - operation: SaveBodyID\n", 0, body).serial, 12345U);
    EXPECT_EQ(Recorded(GET_OWNER, 0, body).serial, 12345U);
    const std::string setOther = "  - {operation: SetBodyID, record: {SerialNo: 1}}\n";
    EXPECT_EQ(Recorded(setOther, 4, body + " --fault SetBodyID:1=0x2001").serial, 12345U);
}

TEST_F(SequenceRecordTest, BodyThatCannotBeReadIsToldAndKeepsNothingFromRunning) {
    WriteFile("asks.yaml", "format: 2\nsteps:\n  - ask: Well?\n");
    WriteFile("answers.csv", "step,answer\nWell?,yes\n");
    const std::string module = (BuildFolder() / BAD_MODULE_FILE).string();
    const JIGHOST_RUN run = RunJighost(
        {"sequence", "asks.yaml", "--answers", "answers.csv", "--module", module, "--record",
         "run.json"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    const RUN_RECORD record = ReadRunRecord("run.json");
    EXPECT_FALSE(record.serial);
    EXPECT_THAT(record.bodyProblem, testing::EndsWith(" does not register GetBodyID"));
    ExpectHash(record.module, BAD_MODULE_FILE);
    EXPECT_TRUE(record.steps.at(0).attempts.empty());
    EXPECT_EQ(record.steps[0].measurements.at(0).text, "yes");
}

TEST_F(SequenceRecordTest, FolderGetsAFileForEachRun) {
    std::filesystem::create_directory("records");
    WriteFile(
        "lot.yaml",
        "format: 2\nparameters: {owner: {type: characters}}\nsteps:\n" + SET_ID +
            "  - {operation: GetOwnerName, expect_fields: {OwnerName: \"${owner}\"}}\n");
    WriteFile("lot.csv", "owner\nLine 4\nLine 5\n");
    const std::string line = "sequence lot.yaml --table lot.csv --records records";
    RunAtOnce({line, line, line});
    std::set<std::string> numbers;
    std::multiset<VERDICT> outcomes;
    for (const auto& entry : std::filesystem::directory_iterator("records")) {
        const std::string name = entry.path().filename().string();
        const RUN_RECORD record = ReadRunRecord(entry.path().string());
        EXPECT_THAT(name, testing::StartsWith(record.started.substr(0, 11)));
        EXPECT_THAT(name, HasSubstr("-12345-" + VerdictName(record.verdict)));
        EXPECT_EQ(record.steps.size(), 2U);
        numbers.insert(record.number);
        outcomes.insert(record.verdict);
    }
    EXPECT_EQ(numbers.size(), 6U);
    EXPECT_EQ(outcomes.count(VERDICT::PASSED), 3U);
    EXPECT_EQ(outcomes.count(VERDICT::FAILED), 3U);
    RunTo(
        2, "sequence lot.yaml --set owner=a --records none",
        "--records none: expected a folder that is there");
    RunTo(2, "sequence lot.yaml --set owner=a --records records --record run.json");
}

}  // namespace
