// Attempts at short intervals: nobody has to tell the waiting one anything, least of all one that
// was killed.
#include "jighost/session/Patience.h"

#include <algorithm>
#include <thread>

#include "jighost/session/Interrupt.h"

using Clock = std::chrono::steady_clock;

static const std::chrono::seconds PATIENCE(3);
static const std::chrono::milliseconds INTERVAL(10);

bool SucceedsInTime(const std::function<bool()>& attempt) {
    const auto end = Clock::now() + PATIENCE;
    while (!attempt()) {
        if (IsInterrupted() || Clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(INTERVAL);
    }
    return true;
}

bool PassesWithoutInterrupt(std::chrono::milliseconds time) {
    const auto end = Clock::now() + time;
    for (auto now = Clock::now(); now < end && !IsInterrupted(); now = Clock::now()) {
        std::this_thread::sleep_until(std::min(end, now + INTERVAL));
    }
    return !IsInterrupted();
}
