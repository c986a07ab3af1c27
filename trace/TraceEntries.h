// The fields of a trace's entries, for all that write one. Whoever begins a line may add fields of
// its own behind these.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "link/Call.h"
#include "trace/JsonLine.h"

namespace TraceEntry {

using Time = std::chrono::nanoseconds;
/// None for a null pointer.
using Record = std::optional<std::span<const std::uint8_t>>;

/// What went to the camera; refers to its owner's memory.
struct REQUEST_FIELDS {
    std::string_view function;
    std::string_view name;
    std::uint32_t id;
    std::int64_t value;
    bool fromList;
    std::span<const std::uint8_t> sent;
};

/// What came back, the same way.
struct ANSWER_FIELDS {
    std::span<const std::uint8_t> received;
    std::optional<std::uint32_t> sizeLeft;
    std::optional<std::int32_t> result;
    std::optional<Link::FAILURE> failure;
};

REQUEST_FIELDS RequestOf(const Link::CALL& call);
ANSWER_FIELDS AnswerOf(const Link::CALL& call);

void AddHead(JsonLine& line);
void AddOperation(
    JsonLine& line, std::uint32_t operation, std::string_view name, const Record& record);
void AddLogLine(JsonLine& line, std::string_view text, bool bInterleaved);
/// `number` counts the operation's calls, from 1.
void AddCall(
    JsonLine& line, std::uint32_t operation, std::uint32_t number, const REQUEST_FIELDS& request);
void AddAnswer(
    JsonLine& line, std::uint32_t operation, std::uint32_t number, const ANSWER_FIELDS& answer,
    Time time);
/// What a constructor or `_gt` threw.
void AddThrow(JsonLine& line, std::uint32_t operation, const Link::THROW& thrown);
void AddResult(
    JsonLine& line, std::uint32_t operation, std::int32_t result, const Record& record, Time time);
// To a result.

/// What the module's log grew by, and how many bytes more. Nothing for no text.
void AddLogText(JsonLine& line, std::string_view text, std::uint64_t leftOut);
/// It may have grown.
void AddUnreadLogText(JsonLine& line);

}  // namespace TraceEntry
