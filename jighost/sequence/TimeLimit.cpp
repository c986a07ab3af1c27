// The thread waits for the end of the work, or for the end of the time.
#include "jighost/sequence/TimeLimit.h"

TimeLimit::TimeLimit(std::chrono::milliseconds limit, const std::function<void()>& onTimeOver) {
    if (limit == limit.zero()) {
        return;
    }
    m_Thread = std::thread([this, limit, onTimeOver] {
        std::unique_lock lock(m_Mutex);
        if (!m_Ended.wait_for(lock, limit, [this] { return m_bEnded; })) {
            onTimeOver();
        }
    });
}

TimeLimit::~TimeLimit() {
    if (m_Thread.joinable()) {
        {
            const std::lock_guard lock(m_Mutex);
            m_bEnded = true;
        }
        m_Ended.notify_one();
        m_Thread.join();
    }
}
