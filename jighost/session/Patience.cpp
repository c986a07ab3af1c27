// Attempts at short intervals: nobody has to tell the waiting one anything, least of all one that
// was killed.
#include "jighost/session/Patience.h"

#include <chrono>
#include <thread>

#include "jighost/session/Interrupt.h"

static const std::chrono::seconds PATIENCE(3);
static const std::chrono::milliseconds INTERVAL(10);

bool SucceedsInTime(const std::function<bool()>& attempt) {
    const auto end = std::chrono::steady_clock::now() + PATIENCE;
    while (!attempt()) {
        if (IsInterrupted() || std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(INTERVAL);
    }
    return true;
}
