// Calls, results and records held against each other.
#include "jighost/recording/OperationDifference.h"

#include <algorithm>
#include <span>

#include "jighost/operations/ResultName.h"
#include "jighost/output/CallText.h"

using Link::CALL;

static const std::size_t BYTES_SHOWN = 16;

static std::size_t FirstDifferentByte(const RecordBytes& expected, const RecordBytes& made) {
    const auto apart = std::mismatch(expected.begin(), expected.end(), made.begin(), made.end());
    return static_cast<std::size_t>(apart.first - expected.begin());
}

static std::string BytesFrom(const RecordBytes& bytes, std::size_t offset) {
    const auto rest = std::span(bytes).subspan(offset);
    return rest.empty() ? "none" : ShortBytes(rest.first(std::min(rest.size(), BYTES_SHOWN)));
}

std::string CallNumber(std::size_t place) {
    return "call " + std::to_string(place + 1);
}

// --- Calls ---

/// Of a block too long to be shown whole, what stands at a byte of it.
static std::string LongText(const std::string& text, const RecordBytes& bytes, std::size_t offset) {
    return bytes.size() <= BYTES_SHOWN ? text
                                       : text + "; from byte " + std::to_string(offset) +
                                             " on: " + BytesFrom(bytes, offset);
}

std::optional<DIFFERENCE> RequestDifference(
    std::size_t place, const CALL& expected, const CALL& made) {
    if (expected.function == made.function && expected.name == made.name &&
        expected.id == made.id && expected.value == made.value &&
        expected.fromList == made.fromList && expected.sent == made.sent) {
        return std::nullopt;
    }
    const std::size_t offset = FirstDifferentByte(expected.sent, made.sent);
    return DIFFERENCE{
        .where = CallNumber(place),
        .expected = LongText(RequestText(expected), expected.sent, offset),
        .made = LongText(RequestText(made), made.sent, offset)};
}

std::optional<DIFFERENCE> AnswerDifference(
    std::size_t place, const CALL& expected, const CALL& made) {
    if (expected.received == made.received && expected.sizeLeft == made.sizeLeft &&
        expected.result == made.result && expected.failure == made.failure) {
        return std::nullopt;
    }
    const std::size_t offset = FirstDifferentByte(expected.received, made.received);
    return DIFFERENCE{
        .where = CallNumber(place) + ", the answer to " + RequestText(expected),
        .expected = LongText(AnswerText(expected), expected.received, offset),
        .made = LongText(AnswerText(made), made.received, offset)};
}

std::optional<DIFFERENCE> ThrowDifference(const Link::THROW* pExpected, const Link::THROW* pMade) {
    const auto text = [](const Link::THROW* pThrown) {
        return pThrown != nullptr ? ThrowText(*pThrown) : "nothing";
    };
    const bool bBoth = pExpected != nullptr && pMade != nullptr;
    if (pExpected == pMade || (bBoth && *pExpected == *pMade)) {
        return std::nullopt;
    }
    return DIFFERENCE{.where = "what was thrown", .expected = text(pExpected), .made = text(pMade)};
}

// --- Outcomes ---

std::optional<DIFFERENCE> ResultDifference(std::int32_t expected, std::int32_t made) {
    if (expected == made) {
        return std::nullopt;
    }
    return DIFFERENCE{
        .where = "result", .expected = ResultText(expected), .made = ResultText(made)};
}

/// The field at a place of the record, such as ", Data"; empty behind the record.
static std::string FieldAt(const RECORD& record, std::size_t offset) {
    for (const FIELD& field : record.fields) {
        if (offset >= field.offset && offset < field.offset + field.width * field.count) {
            return std::string(", ") + field.name;
        }
    }
    return "";
}

std::optional<DIFFERENCE> RecordDifference(
    const RECORD& record, const RecordBytes& expected, const RecordBytes& made) {
    if (expected == made) {
        return std::nullopt;
    }
    const std::size_t offset = FirstDifferentByte(expected, made);
    return DIFFERENCE{
        .where = "record from byte " + std::to_string(offset) + " on" + FieldAt(record, offset),
        .expected = BytesFrom(expected, offset),
        .made = BytesFrom(made, offset)};
}
