// The record of a sequence's run, as it is filed: what ran where on which body, what each step
// asked for and measured, and what it came to. The document is one JSON object:
//
//     {"format": 2, "record": UUID, "jighost": "1.1.0 (394d8f9)",
//      "started": "2026-11-23T09:20:00.123+01:00", "started_at": milliseconds since 1970 in UTC,
//      "time_ms": 12.5, "station": "line 4", "operator": "", "body": {"serial": 12345, "id": {...},
//      "problem": ""}, "sequence": {"name": ..., "files": [{"path": ..., "sha256": ...}, ...]},
//      "parameters": {NAME: TEXT}, "range": {"first": 1, "last": 5, "of": 8},
//      "libraries": {"module": {"path": ..., "version": ..., "sha256": ...}, "link": {...}},
//      "faults": [TEXT, ...], "outcome": "passed", "problem": "", "steps": [...]}
//
// While the run goes on, the file has that on its first line, without steps and "unfinished", and
// each step that has ended on a line of its own behind it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "jighost/output/Json.h"

constexpr int RECORD_FORMAT = 2;

enum class VERDICT {
    PASSED,
    FAILED,            ///< a result or a value is not the expected one
    OPERATION_FAILED,  ///< nobody expected an operation to fail, or it did not return; or the body
                       ///< or the trace could not be written
    ABORTED,           ///< a signal ended the run
    UNFINISHED,        ///< of a run alone: nothing was told of its end
};

/// A call of the camera link. Both times are from the begin of the run's attempt.
struct RECORDED_CALL {
    std::string request;   ///< as --trace shows it, such as "Set 0x1000007 4: 30 41 42 30"
    std::string answer;    ///< such as "done", "result 0" or "failed: ..."
    std::string sent;      ///< bytes such as "30 41 42 30", of many the first RECORDED_BYTES
    std::string received;  ///< the same
    std::uint64_t sentSize = 0;
    std::uint64_t receivedSize = 0;
    bool bFailed = false;
    double startMs = 0;
    double timeMs = 0;
};
constexpr std::size_t RECORDED_BYTES = 256;

/// One run of a step's operation.
struct RECORDED_ATTEMPT {
    std::optional<std::int32_t> result;  ///< none of an operation that has not returned
    std::string resultName;
    std::string error;   ///< why it failed; empty if it did not
    double startMs = 0;  ///< from the begin of the run
    double timeMs = 0;
    Json before = Json::object();  ///< the record by fields, as RecordJson gives it
    Json after = Json::object();
    std::vector<RECORDED_CALL> calls;
    std::vector<std::string> log;
    std::vector<std::string> interleaved;  ///< lines of the log that may be another process's
};

/// Of the last attempt, or an operator's answer.
struct RECORDED_MEASUREMENT {
    std::string name;
    std::string field;  ///< empty of an answer
    std::string unit;
    std::string text;              ///< the value as people read it, without the unit
    std::optional<double> number;  ///< none of characters and bytes
    std::optional<double> min;
    std::optional<double> max;
    std::string pattern;
    bool bJudged = false;
    bool bWithin = true;  ///< also of what is not judged
};

struct RECORDED_STEP {
    std::uint64_t number = 0;
    std::string name;
    std::string operation;
    VERDICT verdict = VERDICT::PASSED;
    std::string problem;
    std::string expectedResult;  ///< such as "RESULT_SUCCESS (0)"; empty for any success
    Json expectedFields = Json::object();
    double startMs = 0;  ///< from the begin of the run
    double timeMs = 0;   ///< with all attempts and what passed between them
    std::vector<RECORDED_MEASUREMENT> measurements;
    std::vector<RECORDED_ATTEMPT> attempts;  ///< none of a step that asks
};

struct RECORDED_FILE {
    std::string path;
    std::string version;  ///< empty of what has none
    std::string sha256;   ///< in hexadecimal digits; empty if it could not be read
};

struct RECORDED_RANGE {
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    std::uint64_t of = 0;
};

struct RUN_RECORD {
    std::string number;  ///< its own, in the form of a UUID
    std::string jighost;
    std::string started;         ///< with the zone of the station
    std::int64_t startedAt = 0;  ///< the same, in milliseconds since 1970
    double timeMs = 0;
    std::string station;
    std::string operatorName;
    std::optional<std::uint32_t> serial;       ///< as read from the body; none if it could not be
    Json bodyID = Json::object();              ///< the fields of GetBodyID
    std::string bodyProblem;                   ///< why there is no serial number
    std::string sequence;                      ///< its name
    std::vector<RECORDED_FILE> sequenceFiles;  ///< it, and those that it includes
    std::vector<std::pair<std::string, std::string>> parameters;
    RECORDED_RANGE range;
    RECORDED_FILE module;
    RECORDED_FILE link;
    std::vector<std::string> faults;
    VERDICT verdict = VERDICT::UNFINISHED;
    std::string problem;  ///< what went wrong first; empty if nothing did
    std::vector<RECORDED_STEP> steps;
};

/// "passed", "failed", "error", "aborted", "unfinished".
std::string VerdictName(VERDICT verdict);
/// Nothing for another text.
std::optional<VERDICT> VerdictOfName(std::string_view name);

Json RunRecordJson(const RUN_RECORD& record);
/// The document, with the end of its last line.
std::string RunRecordText(const RUN_RECORD& record);
Json RecordedStepJson(const RECORDED_STEP& step);
