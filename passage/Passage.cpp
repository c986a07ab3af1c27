// Calls as data: what went in, what came back, what was thrown.
#include "passage/Passage.h"

#include <algorithm>
#include <exception>

#include "link/CException.h"

namespace Link {

namespace {

Bytes CopyBytes(const void* pMemory, std::uint32_t size) {
    const auto* pBytes = static_cast<const std::uint8_t*>(pMemory);
    return pBytes != nullptr ? Bytes(pBytes, pBytes + size) : Bytes();
}

}  // namespace

FAILURE CaughtFailure() {
    FAILURE unknown = {
        .kind = FAULT::STANDARD_EXCEPTION, .code = 0, .message = "unknown exception"};
    try {
        throw;
    } catch (const CException* e) {
        return e != nullptr ? FAILURE{.code = e->code, .message = e->message} : unknown;
    } catch (const std::exception& e) {
        return {.kind = FAULT::STANDARD_EXCEPTION, .code = 0, .message = e.what()};
    } catch (std::int32_t code) {
        return {.kind = FAULT::INTEGER, .code = code, .message = ""};
    } catch (...) {
        return unknown;
    }
}

ANSWER AnswerTo(const REQUEST& request) {
    ANSWER answer = {.pReceived = request.pReceive, .size = request.room};
    if (request.pSizeLeft != nullptr) {
        answer.sizeLeft = *request.pSizeLeft;
        answer.size = std::min(answer.size, *request.pSizeLeft);
    }
    if (request.pText != nullptr) {
        answer.pReceived = request.pText->data();
        answer.size = static_cast<std::uint32_t>(request.pText->size());
    }
    if (answer.size > BLOCK_LIMIT) {
        answer.size = 0;
    }
    if (request.pResult != nullptr) {
        answer.result = *request.pResult;
    }
    return answer;
}

CALL CallOf(const REQUEST& request) {
    return {
        .function = request.pszFunction,
        .name = std::string(request.name),
        .id = request.id,
        .value = request.value,
        .fromList = request.fromList,
        .sent = CopyBytes(request.pSent, request.sentSize <= BLOCK_LIMIT ? request.sentSize : 0),
        .received = {},
        .sizeLeft = {},
        .result = {},
        .failure = {}};
}

void Complete(CALL& call, const ANSWER& answer, bool failed) {
    call.received = CopyBytes(answer.pReceived, answer.size);
    call.sizeLeft = answer.sizeLeft;
    call.result = answer.result;
    if (failed) {
        call.failure = CaughtFailure();
    }
}

}  // namespace Link
