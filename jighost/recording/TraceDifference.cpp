// Operations paired by their names, as near to each other as they are found.
#include "jighost/recording/TraceDifference.h"

#include <algorithm>
#include <deque>

#include "jighost/operations/OperationTable.h"
#include "jighost/operations/ResultName.h"
#include "jighost/output/CallText.h"
#include "jighost/session/Interrupt.h"
#include "jighost/text/HostError.h"
#include "trace/TraceReader.h"

// How far the next operation of one name is looked for; a dump takes ten megabytes of the memory.
static const std::size_t MOST_AHEAD = 16;

// --- One operation ---

static std::optional<DIFFERENCE> RecordsDiffer(
    const std::string& name, const Link::Bytes& good, const Link::Bytes& bad) {
    static const RECORD UNKNOWN = {"unknown", 0, {}};
    const OPERATION_INFO* pInfo = FindOperation(name);
    return RecordDifference(pInfo != nullptr ? *pInfo->record : UNKNOWN, good, bad);
}

static bool HasAnswer(const TRACED_OPERATION& operation, std::size_t place) {
    return place < operation.callTimes.size();
}

static std::optional<DIFFERENCE> CallsDiffer(
    const TRACED_OPERATION& good, const TRACED_OPERATION& bad, std::size_t place) {
    const auto requestAt = [place](const TRACED_OPERATION& operation) {
        return place < operation.calls.size() ? RequestText(operation.calls[place]) : "no call";
    };
    if (place >= good.calls.size() || place >= bad.calls.size()) {
        return DIFFERENCE{
            .where = CallNumber(place), .expected = requestAt(good), .made = requestAt(bad)};
    }
    if (auto difference = RequestDifference(place, good.calls[place], bad.calls[place])) {
        return difference;
    }
    if (HasAnswer(good, place) && HasAnswer(bad, place)) {
        return AnswerDifference(place, good.calls[place], bad.calls[place]);
    }
    const auto answerAt = [place](const TRACED_OPERATION& operation) {
        return HasAnswer(operation, place) ? AnswerText(operation.calls[place]) : "no answer";
    };
    if (HasAnswer(good, place) == HasAnswer(bad, place)) {
        return std::nullopt;
    }
    return DIFFERENCE{
        .where = CallNumber(place) + ", " + requestAt(good),
        .expected = answerAt(good),
        .made = answerAt(bad)};
}

/// Between what constructors and `_gt` threw until so many calls were made.
static std::optional<DIFFERENCE> ThrowsDiffer(
    const TRACED_OPERATION& good, const TRACED_OPERATION& bad, std::size_t calls) {
    const auto throwAt = [calls](const TRACED_OPERATION& operation, std::size_t i) {
        const bool bAny = i < operation.throws.size() && operation.throws[i].calls <= calls;
        return bAny ? &operation.throws[i].thrown : nullptr;
    };
    for (std::size_t i = 0; throwAt(good, i) != nullptr || throwAt(bad, i) != nullptr; ++i) {
        if (auto difference = ThrowDifference(throwAt(good, i), throwAt(bad, i))) {
            return difference;
        }
    }
    return std::nullopt;
}

static std::optional<DIFFERENCE> OutcomesDiffer(
    const TRACED_OPERATION& good, const TRACED_OPERATION& bad) {
    if (good.result && bad.result) {
        auto difference = ResultDifference(*good.result, *bad.result);
        return difference ? difference : RecordsDiffer(good.name, good.returned, bad.returned);
    }
    const auto endOf = [](const TRACED_OPERATION& operation) {
        return operation.result ? ResultText(*operation.result) : "none";
    };
    if (!good.result && !bad.result) {
        return std::nullopt;
    }
    return DIFFERENCE{.where = "result", .expected = endOf(good), .made = endOf(bad)};
}

/// The first difference, in the order in which things happened.
static std::optional<DIFFERENCE> OperationsDiffer(
    const TRACED_OPERATION& good, const TRACED_OPERATION& bad) {
    if (good.bNullRecord != bad.bNullRecord) {
        const auto given = [](const TRACED_OPERATION& operation) {
            return operation.bNullRecord ? "a null pointer" : "a record";
        };
        return DIFFERENCE{
            .where = "what it was given", .expected = given(good), .made = given(bad)};
    }
    if (auto difference = RecordsDiffer(good.name, good.record, bad.record)) {
        difference->where = "the given " + difference->where;
        return difference;
    }
    const std::size_t calls = std::max(good.calls.size(), bad.calls.size());
    for (std::size_t i = 0; i <= calls; ++i) {
        auto difference = ThrowsDiffer(good, bad, i);
        if (!difference && i < calls) {
            difference = CallsDiffer(good, bad, i);
        }
        if (difference) {
            return difference;
        }
    }
    return OutcomesDiffer(good, bad);
}

// --- Two recordings ---

namespace {

/// A recording's next operations.
class Side {
  public:
    explicit Side(const std::string& path)
        : m_Reader({path}, [](const TRACED_OPERATION&) { return true; }) {}

    /// Reads on until there are as many operations, or no more.
    void Fill(std::size_t count);
    std::uint64_t Lost() const { return m_Gaps + m_Reader.Beginningless(); }

    std::deque<TRACED_OPERATION> operations;

  private:
    TraceReader m_Reader;
    std::uint64_t m_Gaps = 0;
};

void Side::Fill(std::size_t count) {
    while (operations.size() < count) {
        const TRACE_ITEM item = m_Reader.Next();
        if (item == TRACE_ITEM::END) {
            return;
        }
        m_Gaps += item == TRACE_ITEM::GAP ? 1 : 0;
        if (item == TRACE_ITEM::OPERATION) {
            operations.push_back(std::move(m_Reader.Operation()));
        }
    }
}

class Comparison {
  public:
    Comparison(const std::string& goodPath, const std::string& badPath)
        : m_Good(goodPath), m_Bad(badPath) {}

    TRACE_DIFFERENCE Run();

  private:
    void ComparePair();
    void SkipToPair();
    void SkipGood(std::size_t count);
    void SkipBad(std::size_t count);
    void Note(DIFFERENCE difference, const TRACED_OPERATION* pGood, const TRACED_OPERATION* pBad);

    Side m_Good;
    Side m_Bad;
    TRACE_DIFFERENCE m_Difference;
};

TRACE_DIFFERENCE Comparison::Run() {
    while (!IsInterrupted()) {
        m_Good.Fill(1);
        m_Bad.Fill(1);
        if (m_Good.operations.empty() && m_Bad.operations.empty()) {
            break;
        }
        SkipToPair();
        if (!m_Good.operations.empty() && !m_Bad.operations.empty()) {
            ComparePair();
        }
    }
    m_Difference.lost = m_Good.Lost() + m_Bad.Lost();
    return std::move(m_Difference);
}

void Comparison::Note(
    DIFFERENCE difference, const TRACED_OPERATION* pGood, const TRACED_OPERATION* pBad) {
    if (m_Difference.first) {
        return;
    }
    difference.operation = pGood != nullptr ? pGood->number : 0;
    difference.name = pGood != nullptr ? pGood->name : pBad->name;
    m_Difference.badNumber = pBad != nullptr ? pBad->number : 0;
    m_Difference.first = std::move(difference);
}

void Comparison::ComparePair() {
    const TRACED_OPERATION& good = m_Good.operations.front();
    const TRACED_OPERATION& bad = m_Bad.operations.front();
    COMPARED_COUNTS& counts = m_Difference.counts[good.name];
    if (good.bTorn || bad.bTorn) {
        ++counts.incomplete;
    } else if (const auto difference = OperationsDiffer(good, bad)) {
        ++counts.different;
        Note(*difference, &good, &bad);
    } else {
        ++counts.same;
    }
    m_Good.operations.pop_front();
    m_Bad.operations.pop_front();
}

/// Passes over operations of either side until the next ones have one name, as few as there need
/// be; over one of each if none has.
void Comparison::SkipToPair() {
    const auto& good = m_Good.operations;
    const auto& bad = m_Bad.operations;
    if (!good.empty() && !bad.empty() && good.front().name == bad.front().name) {
        return;
    }
    m_Good.Fill(MOST_AHEAD);
    m_Bad.Fill(MOST_AHEAD);
    for (std::size_t sum = 1; sum < good.size() + bad.size(); ++sum) {
        for (std::size_t i = 0; i <= sum; ++i) {
            if (i < good.size() && sum - i < bad.size() && good[i].name == bad[sum - i].name) {
                SkipGood(i);
                SkipBad(sum - i);
                return;
            }
        }
    }
    SkipGood(1);
    SkipBad(1);
}

void Comparison::SkipGood(std::size_t count) {
    for (; count > 0 && !m_Good.operations.empty(); --count) {
        const TRACED_OPERATION& skipped = m_Good.operations.front();
        ++m_Difference.counts[skipped.name].onlyGood;
        Note({.where = "that only the first one has"}, &skipped, nullptr);
        m_Good.operations.pop_front();
    }
}

void Comparison::SkipBad(std::size_t count) {
    for (; count > 0 && !m_Bad.operations.empty(); --count) {
        const TRACED_OPERATION& skipped = m_Bad.operations.front();
        ++m_Difference.counts[skipped.name].onlyBad;
        Note({.where = "that only the second one has"}, nullptr, &skipped);
        m_Bad.operations.pop_front();
    }
}

}  // namespace

TRACE_DIFFERENCE CompareTraces(const std::string& goodPath, const std::string& badPath) {
    try {
        return Comparison(goodPath, badPath).Run();
    } catch (const TraceError& e) {
        throw HostError(EXIT_WRONG_USE, e.what());
    }
}
