// Counting, recording and failing of calls.
#include "bodylnk/Calls.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "link/CException.h"

namespace SimulatedBody {

namespace {

struct CALLS {
    std::uint32_t count = 0;
    bool recording = false;
    std::vector<CALL> recorded;
    Observer observer;
    Answerer answerer;
    CALL current;  // kept only while somebody listens

    FailurePlan callFailures;
    FailurePlan constructionFailures;
    std::map<std::string, FAILURE, std::less<>> eventFailures;
};

CALLS s_Calls;

bool SomebodyListens() {
    return s_Calls.recording || s_Calls.observer || s_Calls.answerer;
}

Bytes CopyBytes(const void* pMemory, std::uint32_t size) {
    const auto* pBytes = static_cast<const std::uint8_t*>(pMemory);
    return pBytes != nullptr ? Bytes(pBytes, pBytes + size) : Bytes();
}

std::optional<FAILURE> NextFailure(std::string_view name) {
    if (auto failure = s_Calls.callFailures.Next()) {
        return failure;
    }
    const auto found = s_Calls.eventFailures.find(name);
    return found != s_Calls.eventFailures.end() ? std::optional(found->second) : std::nullopt;
}

// Of the exception that is being handled.
FAILURE CaughtFailure() {
    try {
        throw;
    } catch (const CException* e) {
        return {.code = e->code, .message = e->message};
    } catch (const std::exception& e) {
        return {.kind = FAULT::STANDARD_EXCEPTION, .code = 0, .message = e.what()};
    } catch (std::int32_t code) {
        return {.kind = FAULT::INTEGER, .code = code, .message = ""};
    } catch (...) {
        return {.kind = FAULT::STANDARD_EXCEPTION, .code = 0, .message = "unknown exception"};
    }
}

void Keep(const ANSWER& answer, bool failed) {
    CALL& call = s_Calls.current;
    call.received = CopyBytes(answer.pReceived, answer.size);
    call.sizeLeft = answer.sizeLeft;
    call.result = answer.result;
    if (failed) {
        call.failure = CaughtFailure();
    }
    if (s_Calls.observer) {
        s_Calls.observer(call, true);
    }
    if (s_Calls.recording) {
        s_Calls.recorded.push_back(std::move(call));
    }
}

}  // namespace

std::optional<FAILURE> FailurePlan::Next() {
    const auto planned = m_Failures.extract(++m_Occasions);
    return planned ? std::optional(planned.mapped()) : std::nullopt;
}

void Throw(const FAILURE& failure) {
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

void PassConstruction() {
    if (const auto failure = s_Calls.constructionFailures.Next()) {
        Throw(*failure);
    }
}

std::optional<FAILURE> BeginCall(const REQUEST& request) {
    ++s_Calls.count;
    if (SomebodyListens()) {
        CALL& call = s_Calls.current;
        call = CALL();
        call.function = request.pszFunction;
        call.name = request.name;
        call.id = request.id;
        call.value = request.value;
        call.fromList = request.fromList;
        call.sent = CopyBytes(request.pSent, request.sentSize);
    }
    if (s_Calls.observer) {
        s_Calls.observer(s_Calls.current, false);
    }
    return NextFailure(request.name);
}

void EndCall(const ANSWER& answer, bool failed) noexcept {
    if (SomebodyListens()) {
        SwallowExceptions([&] { Keep(answer, failed); });
    }
}

std::optional<CALL> AnswerInPlaceOfBody() {
    return s_Calls.answerer ? s_Calls.answerer(s_Calls.current) : std::nullopt;
}

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

void Observe(Observer observer) {
    s_Calls.observer = std::move(observer);
}

void AnswerCalls(Answerer answerer) {
    s_Calls.answerer = std::move(answerer);
}

}  // namespace SimulatedBody
