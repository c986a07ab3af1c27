// The recorded operations and answers held against what the module does now.
#include "jighost/replay/ReplayRun.h"

#include <algorithm>
#include <stdexcept>

#include "jighost/operations/ResultName.h"
#include "jighost/output/CallText.h"
#include "jighost/session/Interrupt.h"
#include "jighost/text/HostError.h"
#include "trace/TraceReader.h"

using Link::CALL;

static const std::size_t BYTES_SHOWN = 16;

// --- Reading ---

/// Whether more bytes came back than a trace keeps.
static bool IsAnswerLost(const CALL& call) {
    return call.received.empty() && call.value > Link::BLOCK_LIMIT &&
           call.sizeLeft.value_or(0) > Link::BLOCK_LIMIT;
}

static void CheckOperation(const TRACED_OPERATION& operation) {
    const OPERATION_INFO* pInfo = FindOperation(operation.name);
    if (pInfo == nullptr) {
        throw TraceError("name: expected an operation, got \"" + operation.name + '"');
    }
    const std::size_t room = NewRecord(*pInfo->record).size();
    if (operation.record.size() > room || operation.returned.size() > room) {
        throw TraceError("record: expected at most " + std::to_string(room) + " bytes");
    }
    if (std::any_of(operation.calls.begin(), operation.calls.end(), IsAnswerLost)) {
        throw TraceError(
            operation.name + " can't be replayed: the trace lacks an answer of more than " +
            std::to_string(Link::BLOCK_LIMIT) + " bytes");
    }
}

static void CheckOperations(
    const std::string& path, const std::vector<TRACED_OPERATION>& operations) {
    for (const TRACED_OPERATION& operation : operations) {
        try {
            CheckOperation(operation);
        } catch (const TraceError& e) {
            throw TraceError(path + ':' + std::to_string(operation.line) + ": " + e.what());
        }
    }
}

std::vector<TRACED_OPERATION> ReadOperations(const std::string& path) {
    try {
        std::vector<TRACED_OPERATION> operations = ReadTrace(path);
        if (operations.empty()) {
            throw TraceError(path + ": expected an operation at least, got none");
        }
        CheckOperations(path, operations);
        return operations;
    } catch (const TraceError& e) {
        throw HostError(EXIT_WRONG_USE, e.what());
    }
}

// --- Differences ---

static std::size_t FirstDifferentByte(const RecordBytes& expected, const RecordBytes& made) {
    const auto apart = std::mismatch(expected.begin(), expected.end(), made.begin(), made.end());
    return static_cast<std::size_t>(apart.first - expected.begin());
}

static std::string BytesFrom(const RecordBytes& bytes, std::size_t offset) {
    const auto rest = std::span(bytes).subspan(offset);
    return rest.empty() ? "none" : ShortBytes(rest.first(std::min(rest.size(), BYTES_SHOWN)));
}

static std::string CallNumber(std::size_t index) {
    return "call " + std::to_string(index + 1);
}

/// Whether the module asked the camera for the same.
static bool IsSameRequest(const CALL& expected, const CALL& made) {
    return expected.function == made.function && expected.name == made.name &&
           expected.id == made.id && expected.value == made.value &&
           expected.fromList == made.fromList && expected.sent == made.sent;
}

/// A call; of a block too long to be shown whole also what stands at the first different byte.
static std::string LongText(const CALL& call, std::size_t offset) {
    const std::string text = RequestText(call);
    return call.sent.size() <= BYTES_SHOWN ? text
                                           : text + "; from byte " + std::to_string(offset) +
                                                 " on: " + BytesFrom(call.sent, offset);
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
    if (expected == run.record) {
        return std::nullopt;
    }
    const std::size_t offset = FirstDifferentByte(expected, run.record);
    const std::string from = "record from byte " + std::to_string(offset) + " on";
    return DIFFERENCE{
        .where = from + FieldAt(*run.info->record, offset),
        .expected = BytesFrom(expected, offset),
        .made = BytesFrom(run.record, offset)};
}

// --- The camera's part ---

namespace {

/// Answers the calls of one operation as they were answered then.
class Answers {
  public:
    explicit Answers(const TRACED_OPERATION& operation) : m_Operation(operation) {}

    /// Throws, so that the operation ends, from the first call on that has no answer.
    CALL Answer(const CALL& made);
    /// To be called when the operation is done: recorded calls may be left.
    void Finish();

    std::optional<DIFFERENCE> difference;  ///< between the calls
    std::string cut;                       ///< as in REPLAY
    std::size_t answered = 0;              ///< calls

  private:
    void Compare(const CALL& made);
    void Cut();
    void Differ(const std::string& expected, const std::string& made);

    const TRACED_OPERATION& m_Operation;
};

CALL Answers::Answer(const CALL& made) {
    if (!difference && cut.empty()) {
        Compare(made);
    }
    if (difference || !cut.empty()) {
        throw std::runtime_error("the trace has no answer to this call");
    }
    return m_Operation.calls[answered++];
}

void Answers::Compare(const CALL& made) {
    if (answered == m_Operation.calls.size()) {
        if (m_Operation.result) {
            Differ("no call", RequestText(made));
        } else {
            Cut();
        }
        return;
    }
    const CALL& expected = m_Operation.calls[answered];
    if (!IsSameRequest(expected, made)) {
        const std::size_t offset = FirstDifferentByte(expected.sent, made.sent);
        Differ(LongText(expected, offset), LongText(made, offset));
    } else if (m_Operation.bUnanswered && answered + 1 == m_Operation.calls.size()) {
        cut = CallNumber(answered) + ", " + RequestText(made) + ", which never returned";
    }
}

/// The operation is behind the last entry of a trace that does not tell its end.
void Answers::Cut() {
    cut = "behind " + (answered == 0 ? "its start" : CallNumber(answered - 1));
}

void Answers::Differ(const std::string& expected, const std::string& made) {
    difference = {.where = CallNumber(answered), .expected = expected, .made = made};
}

void Answers::Finish() {
    if (difference || !cut.empty()) {
        return;
    }
    if (answered < m_Operation.calls.size()) {
        Differ(RequestText(m_Operation.calls[answered]), "no call");
    } else if (!m_Operation.result) {
        Cut();
    }
}

}  // namespace

// --- Operations ---

static void ReplayOperation(Session& session, const TRACED_OPERATION& operation, REPLAY& replay) {
    const OPERATION_INFO& info = KnownOperation(operation.name);
    RecordBytes record;
    if (!operation.bNullRecord) {
        record = NewRecord(*info.record);
        std::copy(operation.record.begin(), operation.record.end(), record.begin());
    }
    Answers answers(operation);
    SimulatedBody::AnswerCalls([&answers](const CALL& call) { return answers.Answer(call); });
    const OPERATION_RUN run = session.Run(info, std::move(record));
    SimulatedBody::AnswerCalls({});
    if (!run.folderProblem.empty()) {
        throw HostError(EXIT_UNEXPECTED, operation.name + ": " + run.folderProblem);
    }
    answers.Finish();
    replay.calls += answers.answered;
    replay.cut = answers.cut;
    replay.difference = answers.difference;
    if (!replay.difference && replay.cut.empty()) {
        replay.difference = OutcomeDifference(operation, run);
    }
}

REPLAY ReplayTrace(Session& session, const std::vector<TRACED_OPERATION>& trace) {
    REPLAY replay;
    for (const TRACED_OPERATION& operation : trace) {
        if (IsInterrupted()) {
            return replay;
        }
        ReplayOperation(session, operation, replay);
        if (replay.difference) {
            replay.difference->operation = replay.operations + 1;
            replay.difference->name = operation.name;
            return replay;
        }
        if (!replay.cut.empty()) {
            replay.cut = operation.name + ", " + replay.cut;
            return replay;
        }
        ++replay.operations;
    }
    return replay;
}
