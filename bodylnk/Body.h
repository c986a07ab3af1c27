// What the body has beside its properties and its memory banks.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "bodylnk/SimulatedBody.h"

namespace SimulatedBody {

using CalendarWords = std::array<std::int32_t, 9>;

struct BODY {
    BODY();

    std::array<std::uint16_t, EEPROM_WORDS> eeprom;
    CalendarWords calendar;
    Bytes cameraLog;
    bool cameraLogStarted = false;
    CONDITION condition;
    std::string installationFolder = "./";
};

BODY& Body();

}  // namespace SimulatedBody
