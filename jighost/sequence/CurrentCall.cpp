// Only the call itself is kept: its text is made where somebody asks.
#include "jighost/sequence/CurrentCall.h"

#include "jighost/output/CallText.h"

void CurrentCall::OnCall(const Link::CALL& call, bool bComplete) {
    const std::lock_guard lock(m_Mutex);
    m_Call = bComplete ? std::nullopt : std::optional(call);
}

std::string CurrentCall::Text() const {
    const std::lock_guard lock(m_Mutex);
    return m_Call ? RequestText(*m_Call) : "";
}
