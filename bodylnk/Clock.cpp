// Date and time in the form of a log line's prefix, or the text that was set for it.
#include "bodylnk/Clock.h"

#include <chrono>
#include <cstddef>
#include <ctime>
#include <stdexcept>
#include <string>

#include "bodylnk/ForEver.h"
#include "bodylnk/SimulatedBody.h"

namespace SimulatedBody {

namespace {

struct CLOCK {
    std::string fixedText;    // empty: the time
    std::time_t minute = -1;  // what `szMinute` shows, in minutes of the system's clock
    char szMinute[sizeof("YYYY/MM/DD hh:mm:") + 8] = "";
};

ForEver<CLOCK> s_Clock;

// Asked once a minute only: the run-time library looks at the zone's file each time.
void ShowMinute(CLOCK& clock, std::time_t minute) {
    const std::time_t seconds = minute * 60;
    const std::tm* pLocal = std::localtime(&seconds);
    if (pLocal == nullptr ||
        std::strftime(clock.szMinute, sizeof(clock.szMinute), "%Y/%m/%d %H:%M:", pLocal) == 0) {
        throw std::runtime_error("no local time");
    }
    clock.minute = minute;
}

void AppendDigits(std::string& text, unsigned value, unsigned weight) {
    for (; weight != 0; weight /= 10) {
        text += static_cast<char>('0' + value / weight % 10);
    }
}

// "2026/11/22 20:10:29.123 ": the blank keeps the tag that follows clear of the time.
std::string TimeText(CLOCK& clock) {
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
    const auto minute = static_cast<std::time_t>(now / 60000);
    if (minute != clock.minute) {
        ShowMinute(clock, minute);
    }
    const auto rest = static_cast<unsigned>(now % 60000);
    std::string text;
    text.reserve(sizeof(clock.szMinute));
    text += clock.szMinute;
    AppendDigits(text, rest / 1000, 10);
    text += '.';
    AppendDigits(text, rest % 1000, 100);
    text += ' ';
    return text;
}

}  // namespace

std::string ClockText() {
    CLOCK& clock = s_Clock.object;
    return clock.fixedText.empty() ? TimeText(clock) : clock.fixedText;
}

void ResetClock() {
    s_Clock.object = {};
}

void SetLinePrefix(const std::string& prefix) {
    s_Clock.object.fixedText = prefix;
}

}  // namespace SimulatedBody
