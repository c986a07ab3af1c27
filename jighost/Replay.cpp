// jighost replay: a trace's operations once more, the camera's answers taken from the trace.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <random>

#include "jighost/CallText.h"
#include "jighost/CommonOptions.h"
#include "jighost/Interrupt.h"
#include "jighost/Json.h"
#include "jighost/ResultName.h"
#include "jighost/TraceFile.h"

using SimulatedBody::CALL;

// --- Differences ---

/// What was recorded and what came now, where they differ.
struct DIFFERENCE {
    std::size_t operation = 0;  ///< number, from 1
    std::string name;           ///< of the operation
    std::string where;          ///< such as "call 3", "result"
    std::string expected;
    std::string made;
};

/// Where two blocks part, with some bytes from there on.
struct BYTES_APART {
    std::size_t offset;
    std::string expected;
    std::string made;
};

static BYTES_APART WhereApart(const RecordBytes& expected, const RecordBytes& made) {
    const auto apart =
        std::mismatch(expected.begin(), expected.end(), made.begin(), made.end());
    return {
        static_cast<std::size_t>(apart.first - expected.begin()),
        ShortBytes({apart.first, expected.end()}), ShortBytes({apart.second, made.end()})};
}

static std::string AtByte(std::size_t offset, const std::string& bytes) {
    return " (from byte " + std::to_string(offset) + " on: " + (bytes.empty() ? "none" : bytes) +
           ")";
}

/// Whether the module asked the camera for the same.
static bool IsSameRequest(const CALL& expected, const CALL& made) {
    return expected.function == made.function && expected.name == made.name &&
           expected.id == made.id && expected.value == made.value &&
           expected.fromList == made.fromList && expected.sent == made.sent;
}

static void TellCalls(DIFFERENCE& difference, const CALL& expected, const CALL& made) {
    difference.expected = RequestText(expected);
    difference.made = RequestText(made);
    if (expected.sent != made.sent) {
        const BYTES_APART apart = WhereApart(expected.sent, made.sent);
        difference.expected += AtByte(apart.offset, apart.expected);
        difference.made += AtByte(apart.offset, apart.made);
    }
}

// --- The camera's part ---

/// Answers the calls of one operation as they were answered then.
class Answers {
  public:
    explicit Answers(const TRACED_OPERATION& operation) : m_Operation(operation) {}

    /// Throws, so that the operation ends, from the first call on that has no answer.
    CALL Answer(const CALL& made);

    /// Empty if all calls were the recorded ones.
    const std::optional<DIFFERENCE>& Difference() const { return m_Difference; }
    /// Whether the operation has come to where the trace was cut off.
    bool IsAtCut() const { return m_bAtCut; }
    std::size_t Answered() const { return m_Answered; }

    /// To be called when the operation is done: recorded calls may be left.
    void Finish();

  private:
    void Compare(const CALL& made);

    const TRACED_OPERATION& m_Operation;
    std::size_t m_Answered = 0;
    std::optional<DIFFERENCE> m_Difference;
    bool m_bAtCut = false;
};

static std::string CallNumber(std::size_t index) {
    return "call " + std::to_string(index + 1);
}

CALL Answers::Answer(const CALL& made) {
    if (!m_Difference && !m_bAtCut) {
        Compare(made);
    }
    if (m_Difference || m_bAtCut) {
        throw std::runtime_error("the trace has no answer to this call");
    }
    return m_Operation.calls[m_Answered++];
}

void Answers::Compare(const CALL& made) {
    const std::vector<CALL>& calls = m_Operation.calls;
    if (m_Answered == calls.size()) {
        m_bAtCut = !m_Operation.result;
        if (!m_bAtCut) {
            m_Difference = {.where = CallNumber(m_Answered), .expected = "no call", .made = {}};
            m_Difference->made = RequestText(made);
        }
    } else if (!IsSameRequest(calls[m_Answered], made)) {
        m_Difference = {.where = CallNumber(m_Answered), .expected = {}, .made = {}};
        TellCalls(*m_Difference, calls[m_Answered], made);
    } else {
        m_bAtCut = m_Operation.bUnanswered && m_Answered + 1 == calls.size();
    }
}

void Answers::Finish() {
    if (!m_Difference && !m_bAtCut && m_Answered < m_Operation.calls.size()) {
        m_Difference = {
            .where = CallNumber(m_Answered),
            .expected = RequestText(m_Operation.calls[m_Answered]),
            .made = "no call"};
    }
}

// --- Outcome of an operation ---

/// The field at an offset of the record; empty behind the record.
static std::string FieldAt(const RECORD& record, std::size_t offset) {
    for (const FIELD& field : record.fields) {
        if (offset >= field.offset && offset < field.offset + field.width * field.count) {
            return std::string(", ") + field.name;
        }
    }
    return "";
}

static std::optional<DIFFERENCE> OutcomeDifference(
    const TRACED_OPERATION& operation, const OPERATION_RUN& run) {
    if (*operation.result != run.result) {
        return DIFFERENCE{
            .where = "result",
            .expected = ResultText(*operation.result),
            .made = ResultText(run.result)};
    }
    RecordBytes expected = operation.returned;
    expected.resize(run.record.size());
    if (expected != run.record) {
        const std::size_t offset = WhereApart(expected, run.record).offset;
        const std::size_t end = 
            std::min(run.record.size(), std::max<std::size_t>(run.info->record->size, offset + 8));
        expected.resize(end);
        const RecordBytes made(run.record.begin(), run.record.begin() + static_cast<std::ptrdiff_t>(end));
        const BYTES_APART apart = WhereApart(expected, made);
        return DIFFERENCE{
            .where = "record from byte " + std::to_string(offset) + " on" +
                     FieldAt(*run.info->record, offset),
            .expected = apart.expected,
            .made = apart.made};
    }
    return std::nullopt;
}
