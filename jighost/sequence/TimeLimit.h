// Ends a step's work that does not return in time.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

class TimeLimit {
  public:
    /// Calls `onTimeOver` in a thread of its own, once, if this still stands when the time is over;
    /// a limit of zero is none. Who watches sees all that was done before.
    TimeLimit(std::chrono::milliseconds limit, const std::function<void()>& onTimeOver);
    /// Waits for `onTimeOver` if that has begun.
    ~TimeLimit();
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

  private:
    std::mutex m_Mutex;
    std::condition_variable m_Ended;
    bool m_bEnded = false;
    std::thread m_Thread;
};
