// Field by field, in the order of trace/Trace.h.
#include "trace/TraceEntries.h"

#include <algorithm>
#include <iterator>

#include "trace/Trace.h"

using Link::FAILURE;

template <class Number>
static void AddOptional(JsonLine& line, const JsonKey& key, const std::optional<Number>& number) {
    number ? line.Add(key, std::int64_t{*number}) : line.AddNull(key);
}

static void AddRecord(JsonLine& line, const TraceEntry::Record& record) {
    record ? line.AddBytes("record", *record) : line.AddNull("record");
}

static void AddFailure(JsonLine& line, const std::optional<FAILURE>& failure) {
    if (!failure) {
        line.AddNull("failure");
        return;
    }
    const auto* pNamed = std::find_if(
        std::begin(TRACED_FAULTS), std::end(TRACED_FAULTS),
        [&](const TRACED_FAULT& named) { return named.kind == failure->kind; });
    line.BeginObject("failure");
    line.Add("kind", pNamed->name);
    line.Add("code", std::int64_t{failure->code});
    line.Add("message", failure->message);
    line.EndObject();
}

namespace TraceEntry {

REQUEST_FIELDS RequestOf(const Link::CALL& call) {
    return {call.function, call.name, call.id, call.value, call.fromList, call.sent};
}

ANSWER_FIELDS AnswerOf(const Link::CALL& call) {
    return {call.received, call.sizeLeft, call.result, call.failure};
}

void AddHead(JsonLine& line) {
    line.Add("format", std::int64_t{TRACE_FORMAT});
    line.Add("content", TRACE_CONTENT);
}

void AddOperation(
    JsonLine& line, std::uint32_t operation, std::string_view name, const Record& record) {
    line.Add("entry", "operation");
    line.Add("operation", std::int64_t{operation});
    line.Add("name", name);
    AddRecord(line, record);
}

void AddLogLine(JsonLine& line, std::string_view text, bool bInterleaved) {
    line.Add("entry", "log");
    line.Add("line", text);
    line.Add("interleaved", bInterleaved);
}

void AddCall(
    JsonLine& line, std::uint32_t operation, std::uint32_t number, const REQUEST_FIELDS& request) {
    line.Add("entry", "call");
    line.Add("operation", std::int64_t{operation});
    line.Add("call", std::int64_t{number});
    line.Add("function", request.function);
    line.Add("name", request.name);
    line.Add("id", std::int64_t{request.id});
    line.Add("value", request.value);
    line.Add("from_list", request.fromList);
    line.AddBytes("sent", request.sent);
}

void AddAnswer(
    JsonLine& line, std::uint32_t operation, std::uint32_t number, const ANSWER_FIELDS& answer,
    Time time) {
    line.Add("entry", "answer");
    line.Add("operation", std::int64_t{operation});
    line.Add("call", std::int64_t{number});
    line.AddBytes("received", answer.received);
    AddOptional(line, "size_left", answer.sizeLeft);
    AddOptional(line, "result", answer.result);
    AddFailure(line, answer.failure);
    line.Add("time_ms", time);
}

void AddThrow(JsonLine& line, std::uint32_t operation, const Link::THROW& thrown) {
    line.Add("entry", "thrown");
    line.Add("operation", std::int64_t{operation});
    line.Add("function", thrown.function);
    line.Add("number", std::int64_t{thrown.number});
    AddFailure(line, thrown.failure);
}

void AddResult(
    JsonLine& line, std::uint32_t operation, std::int32_t result, const Record& record, Time time) {
    line.Add("entry", "result");
    line.Add("operation", std::int64_t{operation});
    line.Add("result", std::int64_t{result});
    AddRecord(line, record);
    line.Add("time_ms", time);
}

void AddLogText(JsonLine& line, std::string_view text, std::uint64_t leftOut) {
    if (!text.empty()) {
        line.Add("log", text);
    }
    if (leftOut != 0) {
        line.Add("log_left_out", static_cast<std::int64_t>(leftOut));
    }
}

void AddUnreadLogText(JsonLine& line) {
    line.AddNull("log");
}

}  // namespace TraceEntry
