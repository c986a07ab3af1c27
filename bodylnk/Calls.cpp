// Every call on its way: it is counted, shown to the observer, recorded, and answered in the place
// of who stands behind or made to fail if that was asked for.
#include "bodylnk/Calls.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>

#include "bodylnk/ForEver.h"
#include "bodylnk/SimulatedBody.h"
#include "link/CException.h"
#include "passage/Passage.h"

namespace SimulatedBody {

using Link::ANSWER;
using Link::REQUEST;

namespace {

/// Failures waiting for their turn, each at one occasion.
class FailurePlan {
  public:
    /// n counts the occasions from now on, from 1.
    void FailNth(std::uint32_t n, const FAILURE& failure) { m_Failures[m_Occasions + n] = failure; }
    /// Counts one occasion and gives the failure planned for it.
    std::optional<FAILURE> Next() {
        const auto planned = m_Failures.extract(++m_Occasions);
        return planned ? std::optional(planned.mapped()) : std::nullopt;
    }

  private:
    std::uint64_t m_Occasions = 0;
    std::map<std::uint64_t, FAILURE> m_Failures;
};

struct CALLS {
    std::uint32_t count = 0;
    bool recording = false;
    std::vector<CALL> recorded;
    Observer observer;
    Answerer answerer;
    Thrower thrower;
    PrefixObserver prefixObserver;
    CALL current;  // kept only while somebody listens

    FailurePlan callFailures;
    FailurePlan constructionFailures;
    FailurePlan prefixFailures;
    std::map<std::string, FAILURE, std::less<>> eventFailures;
};

ForEver<CALLS> s_AllCalls;
CALLS& s_Calls = s_AllCalls.object;

bool SomebodyListens() {
    return s_Calls.recording || s_Calls.observer || s_Calls.answerer;
}

std::optional<FAILURE> NextFailure(std::string_view name) {
    if (auto failure = s_Calls.callFailures.Next()) {
        return failure;
    }
    const auto found = s_Calls.eventFailures.find(name);
    return found != s_Calls.eventFailures.end() ? std::optional(found->second) : std::nullopt;
}

[[noreturn]] void Throw(const FAILURE& failure) {
    switch (failure.kind) {
        case FAULT::STANDARD_EXCEPTION:
            throw std::runtime_error(failure.message);
        case FAULT::INTEGER:
            throw failure.code;
        case FAULT::CAMERA_EXCEPTION:
            break;
    }
    throw new CException(failure.message, failure.code);
}

/// Of what is no call.
void ThrowNext(FailurePlan& plan, const char* pszFunction) {
    std::optional<FAILURE> failure = plan.Next();
    if (!failure && s_Calls.thrower) {
        failure = s_Calls.thrower(pszFunction);
    }
    if (failure) {
        Throw(*failure);
    }
}

// --- One call ---

std::optional<FAILURE> BeginCall(const REQUEST& request) {
    ++s_Calls.count;
    if (SomebodyListens()) {
        s_Calls.current = Link::CallOf(request);
    }
    if (s_Calls.observer) {
        s_Calls.observer(s_Calls.current, false);
    }
    return NextFailure(request.name);
}

void Keep(const ANSWER& answer, bool failed) {
    CALL& call = s_Calls.current;
    Link::Complete(call, answer, failed);
    if (s_Calls.observer) {
        s_Calls.observer(call, true);
    }
    if (s_Calls.recording) {
        s_Calls.recorded.push_back(std::move(call));
    }
}

/// A failed call is ended while what it threw is being handled.
void EndCall(const ANSWER& answer, bool failed) noexcept {
    if (SomebodyListens()) {
        SwallowExceptions([&] { Keep(answer, failed); });
    }
}

/// Gives the caller an answer that an Answerer gave; refers to the caller's memory alone.
ANSWER HandOver(const REQUEST& request, const CALL& answered) {
    ANSWER answer;
    if (request.pReceive != nullptr) {
        const std::size_t size = std::min<std::size_t>(answered.received.size(), request.room);
        std::copy_n(answered.received.begin(), size, static_cast<std::uint8_t*>(request.pReceive));
        answer.pReceived = request.pReceive;
        answer.size = static_cast<std::uint32_t>(size);
    }
    if (request.pText != nullptr) {
        request.pText->assign(answered.received.begin(), answered.received.end());
        answer.pReceived = request.pText->data();
        answer.size = static_cast<std::uint32_t>(request.pText->size());
    }
    if (request.pSizeLeft != nullptr && answered.sizeLeft) {
        answer.sizeLeft = *request.pSizeLeft = *answered.sizeLeft;
    }
    if (request.pResult != nullptr && answered.result) {
        answer.result = *request.pResult = *answered.result;
    }
    return answer;
}

}  // namespace

void ResetCalls() {
    s_Calls = {};
}

void RecordCalls(bool recording) {
    s_Calls.recording = recording;
}

const std::vector<CALL>& Calls() {
    return s_Calls.recorded;
}

void ClearCalls() {
    s_Calls.recorded.clear();
    s_Calls.count = 0;
}

std::uint32_t CallCount() {
    return s_Calls.count;
}

void FailCall(std::uint32_t n, const FAILURE& failure) {
    s_Calls.callFailures.FailNth(n, failure);
}

void FailEvent(const std::string& name, const FAILURE& failure) {
    s_Calls.eventFailures[name] = failure;
}

void FailConstruction(std::uint32_t n, const FAILURE& failure) {
    s_Calls.constructionFailures.FailNth(n, failure);
}

void FailLinePrefix(std::uint32_t n, const FAILURE& failure) {
    s_Calls.prefixFailures.FailNth(n, failure);
}

void Observe(Observer observer) {
    s_Calls.observer = std::move(observer);
}

void ObserveLinePrefixes(PrefixObserver observer) {
    s_Calls.prefixObserver = std::move(observer);
}

void AnswerCalls(Answerer answerer) {
    s_Calls.answerer = std::move(answerer);
}

void ThrowBy(Thrower thrower) {
    s_Calls.thrower = std::move(thrower);
}

}  // namespace SimulatedBody

// --- The passage ---

namespace Link {

using namespace SimulatedBody;

void PassCall(const REQUEST& request, const std::function<void()>& work) {
    const std::optional<FAILURE> failure = BeginCall(request);
    const auto failAt = [&](MOMENT moment) {
        if (failure && failure->moment == moment) {
            Throw(*failure);
        }
    };
    ANSWER answer;
    try {
        failAt(MOMENT::BEFORE);
        const std::optional<CALL> answered =
            s_Calls.answerer ? s_Calls.answerer(s_Calls.current) : std::nullopt;
        if (answered) {
            answer = HandOver(request, *answered);
        } else {
            work();
            answer = AnswerTo(request);
        }
        if (answered && answered->failure) {
            Throw(*answered->failure);
        }
        failAt(MOMENT::AFTER);
    } catch (...) {
        EndCall(answer, true);
        throw;
    }
    EndCall(answer, false);
}

void PassConstruction(const char* pszFunction, const std::function<void()>& work) {
    ThrowNext(s_Calls.constructionFailures, pszFunction);
    work();
}

std::string PassLinePrefix(const std::function<std::string()>& work) {
    ThrowNext(s_Calls.prefixFailures, LINE_PREFIX_FUNCTION);
    std::string prefix = work();
    if (s_Calls.prefixObserver) {
        SwallowExceptions([&] { s_Calls.prefixObserver(prefix); });
    }
    return prefix;
}

}  // namespace Link
