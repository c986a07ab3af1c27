// A body's condition, and its return to the factory's.
#include "bodylnk/Body.h"

#include <string_view>

#include "bodylnk/Calls.h"
#include "bodylnk/Clock.h"
#include "bodylnk/Events.h"
#include "bodylnk/Monitor.h"
#include "bodylnk/Properties.h"

namespace SimulatedBody {

namespace {

// Monday, 1 June 2026, 09:30:00, with day of the week, day of the year and summer time.
constexpr CalendarWords s_FactoryCalendar = {0, 30, 9, 1, 6, 2026, 1, 151, 0};

constexpr std::string_view s_FactoryLog =
    "0001 boot\n"
    "0002 lens mounted\n"
    "0003 card in slot 1\n"
    "0004 shutter test passed\n";

BODY s_Body;

}  // namespace

BODY::BODY()
    : eeprom(), calendar(s_FactoryCalendar), cameraLog(s_FactoryLog.begin(), s_FactoryLog.end()) {
    for (std::size_t n = 0; n < eeprom.size(); ++n) {
        eeprom[n] = static_cast<std::uint16_t>(0x0A3C + n * 0x1357);
    }
}

BODY& Body() {
    return s_Body;
}

void Reset() {
    s_Body = BODY();
    ResetProperties();
    ResetMonitor();
    ResetEvents();
    ResetCalls();
    ResetClock();
}

std::array<std::uint16_t, EEPROM_WORDS>& Eeprom() {
    return s_Body.eeprom;
}

void SetCameraLog(const Bytes& bytes) {
    s_Body.cameraLog = bytes;
}

CalendarWords& Calendar() {
    return s_Body.calendar;
}

bool PowerSaveEnabled() {
    return s_Body.condition.powerSaving;
}

const CONDITION& Condition() {
    return s_Body.condition;
}

void SetInstallationFolder(const std::string& folder) {
    const bool closed = !folder.empty() && (folder.back() == '/' || folder.back() == '\\');
    s_Body.installationFolder = closed ? folder : folder + "/";
}

}  // namespace SimulatedBody
