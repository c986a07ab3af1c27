// Operations picked from a trace, which may be of any length, and checked.
#include "jighost/replay/ChosenOperations.h"

#include <algorithm>
#include <limits>

#include "frame/Result.h"
#include "jighost/operations/OperationTable.h"
#include "jighost/text/HostError.h"
#include "trace/TraceReader.h"

// All of them are kept in memory; a whole dump takes ten megabytes of it.
static const std::size_t LARGEST_CHOICE = 256'000'000;

/// Whether more bytes came back than a trace keeps.
static bool IsAnswerLost(const Link::CALL& call) {
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

namespace {

/// Takes what a trace has, one thing after the other.
class Chooser {
  public:
    Chooser(const std::string& path, const OPERATION_CHOICE& choice)
        : m_Path(path),
          m_First(choice.first.value_or(1)),
          m_Last(choice.last.value_or(std::numeric_limits<std::uint32_t>::max())),
          m_bFailed(choice.bFailed),
          m_Reader({path}, [this](const auto& each) { return IsWithin(each.number); }) {}

    CHOSEN_OPERATIONS Read();
    /// Throws if the trace has no operations of these numbers.
    void CheckBounds(const OPERATION_CHOICE& choice) const;

  private:
    bool IsWithin(std::uint32_t number) const { return number >= m_First && number <= m_Last; }
    void TakeAll();
    void TakeOperation(TRACED_OPERATION& operation);
    void TakeGap(const TRACED_GAP& gap);
    void TellLost();
    void Remark(std::size_t line, const std::string& text);

    const std::string& m_Path;
    std::uint32_t m_First;
    std::uint32_t m_Last;
    bool m_bFailed;
    TraceReader m_Reader;
    CHOSEN_OPERATIONS m_Chosen;
    std::size_t m_Size = 0;  // of those in memory
    // Of all operations that began in the trace.
    std::uint32_t m_Before = 0;   // the number ahead of the first one
    std::uint32_t m_Highest = 0;  // number
    std::uint32_t m_Found = 0;    // of the choice
};

void Chooser::Remark(std::size_t line, const std::string& text) {
    m_Chosen.remarks.push_back(m_Path + ':' + std::to_string(line) + ": " + text);
}

void Chooser::TakeOperation(TRACED_OPERATION& operation) {
    m_Highest = std::max(m_Highest, operation.number);
    if (!IsWithin(operation.number)) {
        return;
    }
    ++m_Found;
    if (operation.bTorn) {
        Remark(
            operation.line, "operation " + std::to_string(operation.number) + ", " +
                                operation.name + ", is not whole and can't be replayed");
        m_Chosen.bAll = false;
        return;
    }
    if (m_bFailed && operation.result && !IsFailure(*operation.result)) {
        return;
    }
    m_Size += operation.size;
    if (m_Size > LARGEST_CHOICE) {
        throw TraceError(
            m_Path + ": expected at most " + std::to_string(LARGEST_CHOICE) +
            " bytes of operations: choose some of them");
    }
    try {
        CheckOperation(operation);
    } catch (const TraceError& e) {
        throw TraceError(m_Path + ':' + std::to_string(operation.line) + ": " + e.what());
    }
    m_Chosen.operations.push_back(std::move(operation));
}

void Chooser::TakeGap(const TRACED_GAP& gap) {
    Remark(gap.line, std::to_string(gap.entries) + " entries are missing here: " + gap.why);
}

void Chooser::TakeAll() {
    for (;;) {
        switch (m_Reader.Next()) {
            case TRACE_ITEM::NEW_FILE:
                m_Before = m_Reader.Head().operationsBefore;
                m_Highest = m_Before;
                break;
            case TRACE_ITEM::OPERATION:
                TakeOperation(m_Reader.Operation());
                break;
            case TRACE_ITEM::GAP:
                TakeGap(m_Reader.Gap());
                break;
            case TRACE_ITEM::END:
                return;
        }
    }
}

/// Of operations that began elsewhere, or in a gap, there is less than a beginning.
void Chooser::TellLost() {
    const std::uint32_t first = std::max(m_First, m_Before + 1);
    const std::uint32_t last = std::min(m_Last, m_Highest);
    const std::uint64_t numbers = first <= last ? std::uint64_t{last} - first + 1 : 0;
    const std::uint64_t lost =
        numbers - m_Found + (m_First <= m_Before ? m_Reader.Beginningless() : 0);
    if (lost != 0) {
        m_Chosen.remarks.push_back(
            m_Path + ": " + std::to_string(lost) +
            (lost == 1 ? " operation lacks its" : " operations lack their") + " beginning");
        m_Chosen.bAll = false;
    }
}

CHOSEN_OPERATIONS Chooser::Read() {
    TakeAll();
    TellLost();
    std::sort(
        m_Chosen.operations.begin(), m_Chosen.operations.end(),
        [](const auto& left, const auto& right) { return left.number < right.number; });
    return std::move(m_Chosen);
}

void Chooser::CheckBounds(const OPERATION_CHOICE& choice) const {
    for (const std::optional<std::uint32_t>& number : {choice.first, choice.last}) {
        if (number && m_Highest > m_Before && (*number <= m_Before || *number > m_Highest)) {
            throw TraceError(
                m_Path + ": expected an operation from " + std::to_string(m_Before + 1) + " to " +
                std::to_string(m_Highest) + ", got " + std::to_string(*number));
        }
    }
}

}  // namespace

CHOSEN_OPERATIONS ReadOperations(const std::string& path, const OPERATION_CHOICE& choice) {
    try {
        Chooser chooser(path, choice);
        CHOSEN_OPERATIONS chosen = chooser.Read();
        chooser.CheckBounds(choice);
        if (chosen.operations.empty() && chosen.bAll) {
            throw TraceError(
                path + ": expected an operation at least" +
                (choice.bFailed ? " that failed, got none" : ", got none"));
        }
        return chosen;
    } catch (const TraceError& e) {
        throw HostError(EXIT_WRONG_USE, e.what());
    }
}
