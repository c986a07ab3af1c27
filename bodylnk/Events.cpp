// The table of events, and what each of them does to the body.
#include "bodylnk/Events.h"

#include <cstring>
#include <deque>

#include "bodylnk/Body.h"
#include "bodylnk/Properties.h"
#include "bodylnk/Refusal.h"

namespace SimulatedBody {

namespace {

// --- EEPROM ---

std::uint16_t& EepromWord(std::int32_t address) {
    if (address < 0 || static_cast<std::size_t>(address) >= EEPROM_WORDS) {
        Refuse("[VALU] EEPROM address", REFUSED_RANGE);
    }
    return Body().eeprom[static_cast<std::size_t>(address)];
}

EVENT_ANSWER ReadEeprom(const PARAMETERS& parameters) {
    return {.word = EepromWord(parameters.integers[0])};
}

// An EEPROM word has 16 bits: what is above them in the parameter is lost.
EVENT_ANSWER WriteEeprom(const PARAMETERS& parameters) {
    EepromWord(parameters.integers[0]) = static_cast<std::uint16_t>(parameters.integers[1]);
    return {};
}

// --- Calendar ---

constexpr std::uint32_t CALENDAR_SIZE = sizeof(CalendarWords);
constexpr CalendarWords s_ResetCalendar = {0, 0, 0, 1, 1, 2000, 6, 0, 0};

EVENT_ANSWER GetCalendar(const PARAMETERS&) {
    Bytes data(CALENDAR_SIZE);
    std::memcpy(data.data(), Body().calendar.data(), CALENDAR_SIZE);
    return {.data = std::move(data)};
}

EVENT_ANSWER SetCalendar(const PARAMETERS& parameters) {
    std::memcpy(Body().calendar.data(), parameters.blocks[0].data(), CALENDAR_SIZE);
    return {};
}

EVENT_ANSWER ResetCalendar(const PARAMETERS&) {
    Body().calendar = s_ResetCalendar;
    return {};
}

// --- Camera log ---

EVENT_ANSWER StartCameraLog(const PARAMETERS&) {
    EVENT_ANSWER answer{.data = Body().cameraLog};
    Body().cameraLogStarted = true;
    return answer;
}

EVENT_ANSWER EndCameraLog(const PARAMETERS&) {
    if (!Body().cameraLogStarted) {
        Refuse("[VALU] Camera log not started", REFUSED_ORDER);
    }
    Body().cameraLogStarted = false;
    return {};
}

// --- Whole body ---

EVENT_ANSWER GetIcuCheckSum(const PARAMETERS&) {
    return {.word = 0x5A17C3E9};
}

// The body's own unique ID stands in the EEPROM, from this word on.
EVENT_ANSWER CopyVistaUniqueID(const PARAMETERS&) {
    constexpr std::uint32_t PROP_VISTA_UNIQUE_ID = 0x100000C;
    constexpr std::uint32_t PROP_VISTA_UNIQUE_ID_SIZE = 20;
    constexpr std::size_t FIRST_WORD = 96;
    WriteProperty(PROP_VISTA_UNIQUE_ID, PROP_VISTA_UNIQUE_ID_SIZE, &Body().eeprom[FIRST_WORD]);
    return {};
}

EVENT_ANSWER SetDefaultSetting(const PARAMETERS&) {
    RestoreSettings();
    return {};
}

EVENT_ANSWER SaveTune(const PARAMETERS&) {
    ++Body().condition.tuneSaves;
    return {};
}

EVENT_ANSWER SweepNow(const PARAMETERS&) {
    ++Body().condition.sweeps;
    return {};
}

// --- Machine cell ---

EVENT_ANSWER ClearResults(const PARAMETERS&) {
    CONDITION& condition = Body().condition;
    condition.dispDialResult = 0;
    condition.accTestResult = 0;
    condition.dialClickGap = 0;
    return {};
}

EVENT_ANSWER IncreaseGap(const PARAMETERS&) {
    ++Body().condition.dialClickGap;
    return {};
}

EVENT_ANSWER StartAccTest(const PARAMETERS&) {
    ++Body().condition.accTestResult;
    return {};
}

EVENT_ANSWER TestExternalFlash(const PARAMETERS&) {
    ++Body().condition.strobeTests;
    return {};
}

EVENT_ANSWER SendSetButton(const PARAMETERS&) {
    ++Body().condition.setButtons;
    return {};
}

EVENT_ANSWER OverwriteDispDialResult(const PARAMETERS& parameters) {
    Body().condition.dispDialResult = parameters.integers[0];
    return {};
}

// The results answer with one word only: how much room there is behind it is not known here.

EVENT_ANSWER GetDispDialResult(const PARAMETERS&) {
    return {.word = Body().condition.dispDialResult};
}

EVENT_ANSWER GetAccTestResult(const PARAMETERS&) {
    return {.word = Body().condition.accTestResult};
}

EVENT_ANSWER GetSDialResult(const PARAMETERS&) {
    return {.word = Body().condition.dialClickGap};
}

EVENT_ANSWER SetAudioVolume(const PARAMETERS& parameters) {
    Body().condition.soundVolume = parameters.integers[0];
    return {};
}

// --- Switches ---

template <bool CONDITION::*Switch, bool On>
EVENT_ANSWER Turn(const PARAMETERS&) {
    Body().condition.*Switch = On;
    return {};
}

EVENT_ANSWER SetReleaseIgnoresExposure(const PARAMETERS& parameters) {
    Body().condition.releaseIgnoresExposure = parameters.integers[0] != 0;
    return {};
}

EVENT_ANSWER SetAccumulateTime(const PARAMETERS& parameters) {
    if (!Body().condition.slitRolling) {
        Refuse("[VALU] Release mode not set", REFUSED_ORDER);
    }
    Body().condition.accumulateTime = parameters.integers[0];
    return {};
}

EVENT_ANSWER ClearReleaseMode(const PARAMETERS&) {
    Body().condition.slitRolling = false;
    Body().condition.accumulateTime = 0;
    return {};
}

// --- The table ---

// An event takes either integers or one block of a fixed size.
struct EVENT {
    const char* pszName;
    std::size_t integers;
    std::size_t blockSize;
    EVENT_ANSWER (*pRun)(const PARAMETERS&);
};

constexpr EVENT s_Events[] = {
    {"FA_ReadEepromData", 1, 0, ReadEeprom},
    {"FA_WriteEepromData", 2, 0, WriteEeprom},
    {"DisablePowerSave", 1, 0, Turn<&CONDITION::powerSaving, false>},
    {"EnablePowerSave", 1, 0, Turn<&CONDITION::powerSaving, true>},
    {"FA_GetCalendar", 0, 0, GetCalendar},
    {"FA_SetCalendar", 0, CALENDAR_SIZE, SetCalendar},
    {"FA_ResetCalendar", 1, 0, ResetCalendar},
    {"FA_GetCameraLogStart", 0, 0, StartCameraLog},
    {"FA_GetCameraLogEnd", 1, 0, EndCameraLog},
    {"FA_GetIcuCheckSum", 1, 0, GetIcuCheckSum},
    {"FA_CopyVistaUniqueID", 1, 0, CopyVistaUniqueID},
    {"FA_SetDefaultSetting", 1, 0, SetDefaultSetting},
    {"prop_prohibitfromaccess", 1, 0, Turn<&CONDITION::romAccess, false>},
    {"ae_ignore_release", 1, 0, SetReleaseIgnoresExposure},
    {"SaveTuneToFile", 1, 0, SaveTune},
    {"SaveTune2ToFile", 1, 0, SaveTune},
    {"SaveAETuneToFile", 1, 0, SaveTune},
    {"dl_ExecJustNow", 1, 0, SweepNow},
    {"FA_GuiFactoryClearResult", 1, 0, ClearResults},
    {"FA_OpenSpecialMenu", 1, 0, Turn<&CONDITION::specialMenu, true>},
    {"FA_CloseSpecialMenu", 1, 0, Turn<&CONDITION::specialMenu, false>},
    {"FA_IncreaseGap", 1, 0, IncreaseGap},
    {"FA_SendAccStartCommand", 1, 0, StartAccTest},
    {"FA_ExtFlashTest", 1, 0, TestExternalFlash},
    {"FA_SendMCellSetButton", 1, 0, SendSetButton},
    {"FA_Overwrite_DispDial_Result", 1, 0, OverwriteDispDialResult},
    {"FA_Get_DispDial_Result", 1, 0, GetDispDialResult},
    {"FA_Get_AccTest_Result", 1, 0, GetAccTestResult},
    {"FA_Get_SDialAdj_Result", 1, 0, GetSDialResult},
    {"FA_Set_AudioVolumeOut", 1, 0, SetAudioVolume},
    {"FA_SetReleaseModeForSR", 1, 0, Turn<&CONDITION::slitRolling, true>},
    {"FA_SetAccumulateTimeForSR", 1, 0, SetAccumulateTime},
    {"FA_ClearReleaseModeForSR", 1, 0, ClearReleaseMode},
    {"FactDisp_TurnOffDisplay", 1, 0, Turn<&CONDITION::displayOn, false>},
    {"FactDisp_TurnOnDisplay", 1, 0, Turn<&CONDITION::displayOn, true>},
    {"FA_DISP_StartMix", 2, 0, Turn<&CONDITION::colourBars, true>},
    {"DisableBootDisk", 1, 0, Turn<&CONDITION::bootDisk, false>},
    {"EnableBootDisk", 1, 0, Turn<&CONDITION::bootDisk, true>},
};

const EVENT* FindEvent(const std::string& name) {
    for (const EVENT& event : s_Events) {
        if (name == event.pszName) {
            return &event;
        }
    }
    return nullptr;
}

void CheckForm(const EVENT& event, const PARAMETERS& parameters) {
    const std::size_t blocks = event.blockSize != 0 ? 1 : 0;
    if (parameters.integers.size() != event.integers || parameters.blocks.size() != blocks ||
        (blocks != 0 && parameters.blocks[0].size() != event.blockSize)) {
        Refuse("[EVNT] Parameters of " + std::string(event.pszName), REFUSED_PARAMETER);
    }
}

// --- Scripts ---

struct SCRIPTS {
    std::map<std::string, std::deque<std::int32_t>> words;  // by event; the last word stays
    RETURN_SIZES sizes;
};

SCRIPTS s_Scripts;

std::int32_t NextWord(std::deque<std::int32_t>& words) {
    const std::int32_t word = words.front();
    if (words.size() > 1) {
        words.pop_front();
    }
    return word;
}

}  // namespace

EVENT_ANSWER RunEvent(const std::string& name, const PARAMETERS& parameters) {
    const EVENT* pEvent = FindEvent(name);
    const auto script = s_Scripts.words.find(name);
    const bool scripted = script != s_Scripts.words.end();
    if (pEvent == nullptr && !scripted) {
        Refuse("[EVNT] Unknown event " + name, REFUSED_EVENT);
    }
    EVENT_ANSWER answer;
    if (pEvent != nullptr) {
        CheckForm(*pEvent, parameters);
        answer = pEvent->pRun(parameters);
    }
    if (scripted) {
        answer.word = NextWord(script->second);
    }
    return answer;
}

const RETURN_SIZES& ScriptedReturnSizes() {
    return s_Scripts.sizes;
}

void ResetEvents() {
    s_Scripts = {};
}

void ScriptEvent(const std::string& name, const std::vector<std::int32_t>& words) {
    if (words.empty()) {
        s_Scripts.words.erase(name);
    } else {
        s_Scripts.words[name].assign(words.begin(), words.end());
    }
}

void ScriptReturnSize(std::uint32_t reported, std::optional<std::uint32_t> left) {
    s_Scripts.sizes = {.reported = reported, .left = left};
}

std::vector<std::string> Events() {
    std::vector<std::string> names;
    for (const EVENT& event : s_Events) {
        names.emplace_back(event.pszName);
    }
    return names;
}

}  // namespace SimulatedBody
