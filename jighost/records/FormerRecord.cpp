// What format 1 told, in the form of today.
#include "jighost/records/FormerRecord.h"

#include <algorithm>

#include "jighost/records/RecordNumber.h"
#include "jighost/text/Numbers.h"

static constexpr std::pair<std::string_view, VERDICT> OUTCOMES[] = {
    {"as expected", VERDICT::PASSED},
    {"expectation not met", VERDICT::FAILED},
    {"operation failed", VERDICT::OPERATION_FAILED},
    {"interrupted", VERDICT::ABORTED},
    {"unfinished", VERDICT::UNFINISHED},
};

static VERDICT FormerVerdict(const RecordReading& reading) {
    std::string outcome;
    reading("outcome", outcome);
    const auto* pFound = std::find_if(
        std::begin(OUTCOMES), std::end(OUTCOMES),
        [&](const auto& each) { return each.first == outcome; });
    if (pFound == std::end(OUTCOMES)) {
        reading.Refuse("outcome", "an outcome of format 1");
    }
    return pFound->second;
}

static RECORDED_MEASUREMENT FormerMeasurement(const RecordReading& reading) {
    RECORDED_MEASUREMENT measurement;
    std::string outcome;
    reading("name", measurement.name);
    reading("field", measurement.field);
    reading("unit", measurement.unit);
    reading("min", measurement.min);
    reading("max", measurement.max);
    reading("pattern", measurement.pattern);
    reading("outcome", outcome);
    if (outcome != "passed" && outcome != "failed" && outcome != "not judged") {
        reading.Refuse("outcome", "passed, failed or not judged");
    }
    measurement.bJudged = outcome != "not judged";
    measurement.bWithin = outcome != "failed";
    if (reading.IsText("value")) {
        reading("value", measurement.text);
    } else {
        reading("value", measurement.number);
        measurement.text = measurement.number ? NumberText(*measurement.number) : "";
    }
    return measurement;
}

/// The last one, which alone was kept.
static RECORDED_ATTEMPT FormerAttempt(const RecordReading& reading) {
    RECORDED_ATTEMPT attempt;
    reading("result", attempt.result);
    if (attempt.result) {
        reading("result_name", attempt.resultName);
        reading("error", attempt.error);
        reading("time_ms", attempt.timeMs);
        reading("record", attempt.after);
        reading("log", attempt.log);
        reading("interleaved", attempt.interleaved);
    }
    return attempt;
}

static RECORDED_STEP FormerStep(const RecordReading& reading) {
    RECORDED_STEP step;
    reading("number", step.number);
    reading("name", step.name);
    reading("operation", step.operation);
    step.verdict = FormerVerdict(reading);
    reading("problem", step.problem);
    if (reading.Has("measurements")) {
        reading.Each("measurements", [&](const RecordReading& each) {
            step.measurements.push_back(FormerMeasurement(each));
        });
    }
    step.attempts = {FormerAttempt(reading)};
    step.timeMs = step.attempts[0].timeMs;
    return step;
}

RUN_RECORD ReadFormerRecord(const RecordReading& reading, const std::string& text) {
    RUN_RECORD record;
    record.number = RecordNumberOf(text);
    reading("sequence", record.sequence);
    if (reading.Has("parameters")) {
        reading("parameters", record.parameters);
    }
    reading("time_ms", record.timeMs);
    record.verdict = FormerVerdict(reading);
    reading.Each(
        "steps", [&](const RecordReading& each) { record.steps.push_back(FormerStep(each)); });
    for (const RECORDED_STEP& step : record.steps) {
        record.problem = record.problem.empty() ? step.problem : record.problem;
    }
    return record;
}
