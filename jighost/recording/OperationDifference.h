// What of an operation is not as it was another time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "bodylnk/SimulatedBody.h"
#include "jighost/operations/Record.h"

/// The first thing that was not as expected.
struct DIFFERENCE {
    std::size_t operation{};  ///< its number in the trace, from 1
    std::string name{};       ///< of the operation
    std::string where{};      ///< such as "call 3", "result"
    std::string expected{};   ///< as recorded
    std::string made{};       ///< as it came now
};

/// Such as "call 3", by its place, which counts from 0.
std::string CallNumber(std::size_t place);

/// Between what was asked of the camera in the call at a place.
std::optional<DIFFERENCE> RequestDifference(
    std::size_t place, const Link::CALL& expected, const Link::CALL& made);

/// Between what came back.
std::optional<DIFFERENCE> AnswerDifference(
    std::size_t place, const Link::CALL& expected, const Link::CALL& made);

/// Between what constructors and `_gt` threw; null for nothing.
std::optional<DIFFERENCE> ThrowDifference(const Link::THROW* pExpected, const Link::THROW* pMade);

/// Between results.
std::optional<DIFFERENCE> ResultDifference(std::int32_t expected, std::int32_t made);

/// Between records that came back.
std::optional<DIFFERENCE> RecordDifference(
    const RECORD& record, const RecordBytes& expected, const RecordBytes& made);
