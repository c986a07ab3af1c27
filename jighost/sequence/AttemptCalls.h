// The link calls of a step's attempt, as another thread may ask for them.
#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "bodylnk/SimulatedBody.h"
#include "jighost/records/RunRecord.h"

class AttemptCalls {
  public:
    /// Unless all are kept, only the one that the operation stands in is known.
    explicit AttemptCalls(bool bKept) : m_bKept(bKept) {}

    /// The attempt begins now; forgets the calls of the one before.
    void Begin();
    /// Told by the session of each call before it is made and when it is complete.
    void OnCall(const Link::CALL& call, bool bComplete);

    /// In the order made. One that is not complete has no answer.
    std::vector<RECORDED_CALL> Calls() const;
    /// The call that the operation stands in, such as "Set 0x1000007 8: 36 57 31 45 00 00 00 00";
    /// empty between two calls.
    std::string CurrentText() const;

  private:
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;

    void Keep(const Link::CALL& call, bool bComplete);

    mutable std::mutex m_Mutex;
    const bool m_bKept;
    Clock::time_point m_Start = Clock::now();
    std::optional<Link::CALL> m_Current;
    std::vector<RECORDED_CALL> m_Calls;
};
