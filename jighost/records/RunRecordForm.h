// What stands where in the document, once for its writer and its reader. A form is given each value
// with its name: form("time_ms", step.timeMs); form.Object("body", ...) those within a value.
#pragma once

#include <concepts>

#include "jighost/records/RunRecord.h"

/// The record, const for a writer.
template <class Type, class Record>
concept RecordOf = std::same_as<std::remove_const_t<Type>, Record>;

template <class Form>
void Describe(Form& form, RecordOf<RECORDED_CALL> auto& call) {
    form("request", call.request);
    form("answer", call.answer);
    form("sent", call.sent);
    form("sent_size", call.sentSize);
    form("received", call.received);
    form("received_size", call.receivedSize);
    form("failed", call.bFailed);
    form("start_ms", call.startMs);
    form("time_ms", call.timeMs);
}

template <class Form>
void Describe(Form& form, RecordOf<RECORDED_ATTEMPT> auto& attempt) {
    form("result", attempt.result);
    form("result_name", attempt.resultName);
    form("error", attempt.error);
    form("start_ms", attempt.startMs);
    form("time_ms", attempt.timeMs);
    form("before", attempt.before);
    form("after", attempt.after);
    form("calls", attempt.calls);
    form("log", attempt.log);
    form("interleaved", attempt.interleaved);
}

template <class Form>
void Describe(Form& form, RecordOf<RECORDED_MEASUREMENT> auto& measurement) {
    form("name", measurement.name);
    form("field", measurement.field);
    form("unit", measurement.unit);
    form("text", measurement.text);
    form("value", measurement.number);
    form("min", measurement.min);
    form("max", measurement.max);
    form("pattern", measurement.pattern);
    form("judged", measurement.bJudged);
    form("within", measurement.bWithin);
}

template <class Form>
void Describe(Form& form, RecordOf<RECORDED_STEP> auto& step) {
    form("number", step.number);
    form("name", step.name);
    form("operation", step.operation);
    form("outcome", step.verdict);
    form("problem", step.problem);
    form("expected_result", step.expectedResult);
    form("expected_fields", step.expectedFields);
    form("start_ms", step.startMs);
    form("time_ms", step.timeMs);
    form("measurements", step.measurements);
    form("attempts", step.attempts);
}

template <class Form>
void Describe(Form& form, RecordOf<RECORDED_FILE> auto& file) {
    form("path", file.path);
    form("version", file.version);
    form("sha256", file.sha256);
}

template <class Form>
void Describe(Form& form, RecordOf<RUN_RECORD> auto& record) {
    form("record", record.number);
    form("jighost", record.jighost);
    form("started", record.started);
    form("started_at", record.startedAt);
    form("time_ms", record.timeMs);
    form("station", record.station);
    form("operator", record.operatorName);
    form.Object("body", [&](auto& body) {
        body("serial", record.serial);
        body("id", record.bodyID);
        body("problem", record.bodyProblem);
    });
    form.Object("sequence", [&](auto& sequence) {
        sequence("name", record.sequence);
        sequence("files", record.sequenceFiles);
    });
    form("parameters", record.parameters);
    form.Object("range", [&](auto& range) {
        range("first", record.range.first);
        range("last", record.range.last);
        range("of", record.range.of);
    });
    form.Object("libraries", [&](auto& libraries) {
        libraries.Object("module", [&](auto& file) { Describe(file, record.module); });
        libraries.Object("link", [&](auto& file) { Describe(file, record.link); });
    });
    form("faults", record.faults);
    form("outcome", record.verdict);
    form("problem", record.problem);
    form("steps", record.steps);
}
