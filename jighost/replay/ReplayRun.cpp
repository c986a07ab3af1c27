// The recorded operations and answers held against what the module does now.
#include "jighost/replay/ReplayRun.h"

#include <algorithm>
#include <stdexcept>

#include "jighost/output/CallText.h"
#include "jighost/session/Interrupt.h"
#include "jighost/text/HostError.h"

using Link::CALL;

// --- The camera's part ---

namespace {

/// Stands in the camera's place for one operation, however that ends: the calls are answered as
/// they were then.
class Answers {
  public:
    explicit Answers(const TRACED_OPERATION& operation) : m_Operation(operation) {
        SimulatedBody::AnswerCalls([this](const CALL& call) { return Answer(call); });
        SimulatedBody::ThrowBy([this](std::string_view function) { return Throw(function); });
    }
    Answers(const Answers&) = delete;
    Answers& operator=(const Answers&) = delete;
    ~Answers() {
        SimulatedBody::AnswerCalls({});
        SimulatedBody::ThrowBy({});
    }

    /// To be called when the operation is done: recorded calls, or throws, may be left.
    void Finish();

    std::optional<DIFFERENCE> difference;  ///< in what was asked or thrown
    std::string cut;                       ///< where the trace ends; empty if it does not
    std::size_t answered = 0;              ///< calls

  private:
    /// Throws, so that the operation ends, from the first call on that has no answer.
    CALL Answer(const CALL& made);
    /// What this construction, or this call of `_gt`, threw then.
    std::optional<Link::FAILURE> Throw(std::string_view function);
    void Compare(const CALL& made);
    void CompareThrows();
    void Cut();
    void Differ(const std::string& expected, const std::string& made);

    const TRACED_OPERATION& m_Operation;
    std::uint32_t m_Constructions = 0;
    std::uint32_t m_LinePrefixes = 0;
    std::size_t m_Thrown = 0;  // of those recorded
};

CALL Answers::Answer(const CALL& made) {
    if (!difference && cut.empty()) {
        CompareThrows();
    }
    if (!difference && cut.empty()) {
        Compare(made);
    }
    if (difference || !cut.empty()) {
        throw std::runtime_error("the trace has no answer to this call");
    }
    return m_Operation.calls[answered++];
}

std::optional<Link::FAILURE> Answers::Throw(std::string_view function) {
    const std::uint32_t number =
        ++(function == Link::LINE_PREFIX_FUNCTION ? m_LinePrefixes : m_Constructions);
    if (m_Thrown == m_Operation.throws.size()) {
        return std::nullopt;
    }
    const Link::THROW& next = m_Operation.throws[m_Thrown].thrown;
    if (next.function != function || next.number != number) {
        return std::nullopt;
    }
    ++m_Thrown;
    return next.failure;
}

/// What was thrown by now then, but is not.
void Answers::CompareThrows() {
    if (m_Thrown < m_Operation.throws.size() && m_Operation.throws[m_Thrown].calls <= answered) {
        difference = ThrowDifference(&m_Operation.throws[m_Thrown].thrown, nullptr);
    }
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
    difference = RequestDifference(answered, m_Operation.calls[answered], made);
    if (!difference && m_Operation.bUnanswered && answered + 1 == m_Operation.calls.size()) {
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
    CompareThrows();
    if (difference) {
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

/// A record's bytes as far as the trace has them. It lacks those of a record whose size nobody
/// knew, and zeros behind the record's own.
static std::optional<DIFFERENCE> OutcomeDifference(
    const TRACED_OPERATION& operation, const OPERATION_RUN& run) {
    if (auto difference = ResultDifference(*operation.result, run.result)) {
        return difference;
    }
    RecordBytes expected = operation.returned;
    RecordBytes made = run.record;
    if (expected.size() < run.info->record->size) {
        made.resize(std::min(expected.size(), made.size()));
    }
    expected.resize(made.size());
    return RecordDifference(*run.info->record, expected, made);
}

static void ReplayOperation(Session& session, const TRACED_OPERATION& operation, REPLAY& replay) {
    const OPERATION_INFO& info = KnownOperation(operation.name);
    RecordBytes record;
    if (!operation.bNullRecord) {
        record = NewRecord(*info.record);
        std::copy(operation.record.begin(), operation.record.end(), record.begin());
    }
    Answers answers(operation);
    const OPERATION_RUN run = session.Run(info, std::move(record));
    if (!run.folderProblem.empty()) {
        throw HostError(EXIT_UNEXPECTED, operation.name + ": " + run.folderProblem);
    }
    answers.Finish();
    replay.calls += answers.answered;
    replay.difference = answers.difference;
    if (!answers.cut.empty()) {
        replay.cut += (replay.cut.empty() ? "" : "; ") + operation.name + ", " + answers.cut;
    } else if (!replay.difference) {
        replay.difference = OutcomeDifference(operation, run);
        replay.operations += replay.difference ? 0 : 1;
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
            replay.difference->operation = operation.number;
            replay.difference->name = operation.name;
            return replay;
        }
    }
    return replay;
}
