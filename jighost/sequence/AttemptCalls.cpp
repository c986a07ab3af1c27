// Each call becomes text as it is made and as it is complete: its bytes are not kept longer.
#include "jighost/sequence/AttemptCalls.h"

#include <algorithm>

#include "jighost/output/CallText.h"
#include "trace/Hex.h"

static std::string FirstBytes(const Link::Bytes& bytes) {
    return HexBytes(std::span(bytes).first(std::min(bytes.size(), RECORDED_BYTES)));
}

void AttemptCalls::Begin() {
    const std::lock_guard lock(m_Mutex);
    m_Start = Clock::now();
    m_Current.reset();
    m_Calls.clear();
}

void AttemptCalls::OnCall(const Link::CALL& call, bool bComplete) {
    const std::lock_guard lock(m_Mutex);
    m_Current = bComplete ? std::nullopt : std::optional(call);
    if (m_bKept) {
        Keep(call, bComplete);
    }
}

void AttemptCalls::Keep(const Link::CALL& call, bool bComplete) {
    const double now = Milliseconds(Clock::now() - m_Start).count();
    if (!bComplete) {
        RECORDED_CALL& begun = m_Calls.emplace_back();
        begun.request = RequestText(call);
        begun.sent = FirstBytes(call.sent);
        begun.sentSize = call.sent.size();
        begun.startMs = now;
        return;
    }
    RECORDED_CALL& done = m_Calls.back();
    done.answer = AnswerText(call);
    done.received = FirstBytes(call.received);
    done.receivedSize = call.received.size();
    done.bFailed = IsFailedCall(call);
    done.timeMs = now - done.startMs;
}

std::vector<RECORDED_CALL> AttemptCalls::Calls() const {
    const std::lock_guard lock(m_Mutex);
    return m_Calls;
}

std::string AttemptCalls::CurrentText() const {
    const std::lock_guard lock(m_Mutex);
    return m_Current ? RequestText(*m_Current) : "";
}
