// The rows of all operations, group by group.
#include "jighost/operations/OperationTable.h"

#include "jighost/operations/OperationRecords.h"
#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"

using enum RECORD_USE;

// --- How operations fail, beside the camera link ---

static constexpr char LINK[] = "";
static constexpr char NULL_RECORD[] = "3 for a null record";
static constexpr char RANGE[] =
    "3 for a null record, Count outside 1 to 128, Address over 127 or a range past word 127";
static constexpr char BLOCK[] = "3 for a null record; 1 for a shared block that can't be opened";
static constexpr char EVENT_WORD[] = "the event's result word if it is odd";
static constexpr char UNHEARD[] = "the event's result word is not looked at";
static constexpr char UNHEARD_CLOCK[] =
    "3 for a null record; the event's result word is not looked at";
static constexpr char UNTESTED_POINTER[] =
    "the pointer is not tested, nor is the event's result word looked at";
static constexpr char UNTESTED_VOLUME[] =
    "the pointer is not tested; the event's result word if it is odd";
static constexpr char INI[] =
    "3 for a null record; 1 for a missing file or key; 35 for a Size below 4 or "
    "above 65536; 5 for no memory";
static constexpr char INI_WRITE[] =
    "3 for a null record; 1 for a missing file or key; 35 for a Size below 0 or "
    "above 65536; 5 for no memory; the "
    "event's result word if it is odd, with the words ahead of it written";
static constexpr char INI_COPY[] =
    "as GetBoardInfDLResonantFrequency, then as SetDLResonantFrequency";
static constexpr char CAMERA_LOG[] =
    "the result word of the start or end event if it is odd; 35 for an empty log or one that has "
    "grown; 5 for no memory; 1 for a file that can't be opened";
static constexpr char PREFIX[] = "as GetBodyID; 35 for a SerialNo over 103679";
static constexpr char SEARCH[] = "3 for a null record; 25 for a name that the catalogue has not";
static constexpr char DUMP[] =
    "1 for a block that can't be opened or whose path has no backslash, or a write or close that "
    "fails; 5 for no memory; 7 for a path too long or a file that can't be opened; the files of "
    "earlier rows stay";
static constexpr char SLIT[] =
    "3 for a null record, or, with the mode already on, a time over 84; the result word of either "
    "event if it is odd";
static constexpr char BATTERY[] = "35 for a status other than 0 and 2";
static constexpr char LENS[] = "35 for an inactive lens";

// --- The operations of each group ---

static constexpr OPERATION_INFO A_BOARD_EEPROM[] = {
    {"DebugPrintABoardEepromData", NONE, &NO_RECORD, "logs all 128 EEPROM words, in hexadecimal",
     LINK},
    {"GetABoardEepromData", IN_OUT, &ABOARD_EEPROM, "reads a range of EEPROM words", RANGE},
    {"SetABoardEepromData", IN, &ABOARD_EEPROM,
     "writes a range of EEPROM words at once; a refused word goes unnoticed", RANGE},
};

static constexpr OPERATION_INFO DIGITAL_PARAMETER[] = {
    {"GetDigitalParaAdjData", OUT, &DIGITAL_PARA, "reads the two digital deltas", NULL_RECORD},
};

static constexpr OPERATION_INFO AF[] = {
    {"DisableAF", NONE, &NO_RECORD, "switches AF off", LINK},
    {"DisableAf", NONE, &NO_RECORD, "second name of DisableAF, and logs as it", LINK},
    {"EnableAF", NONE, &NO_RECORD, "switches AF on", LINK},
    {"EnableAf", NONE, &NO_RECORD, "second name of EnableAF, and logs as it", LINK},
};

static constexpr OPERATION_INFO AUTO_ACTIVE_SWEEP[] = {
    {"DisableAutoActiveSweep", NONE, &NO_RECORD, "switches the auto active sweep off", LINK},
    {"EnableAutoActiveSweep", NONE, &NO_RECORD, "switches the auto active sweep on", LINK},
    {"SaveAutoActiveSweep", NONE, &NO_RECORD, "saves the auto active sweep switch", LINK},
    {"ExecuteAutoActiveSweep", NONE, &NO_RECORD, "starts a sweep at once", UNHEARD},
};

static constexpr OPERATION_INFO AUTO_LIGHTING_OPTIMIZER[] = {
    {"DisableAutoLightingOptimizer", NONE, &NO_RECORD, "switches the optimizer off", LINK},
    {"EnableAutoLightingOptimizer", NONE, &NO_RECORD, "switches the optimizer on", LINK},
    {"SaveAutoLightingOptimizer", NONE, &NO_RECORD, "saves the optimizer's switch", LINK},
};

static constexpr OPERATION_INFO AUTO_POWER_OFF[] = {
    {"GetAutoPowerOffTime", OUT, &POWER_OFF_TIME, "reads the time to power off", NULL_RECORD},
    {"SetAutoPowerOffTime", IN, &POWER_OFF_TIME, "sets the time to power off", NULL_RECORD},
    {"DisableAutoPowerOff", NONE, &NO_RECORD, "sets the time to power off to 0", LINK},
    {"EnableAutoPowerOff", NONE, &NO_RECORD, "sets the time to power off to 60", LINK},
    {"SaveAutoPowerOff", NONE, &NO_RECORD, "saves the time to power off", LINK},
};

static constexpr OPERATION_INFO BATTERY_GROUP[] = {
    {"CheckBatteryStatus", NONE, &NO_RECORD, "passes judgement on the battery by its result alone",
     BATTERY},
};

static constexpr OPERATION_INFO BODY_ID_GROUP[] = {
    {"SetBodyID", IN, &BODY_ID, "writes the body ID, and puts it into its shared block", BLOCK},
    {"GetBodyID", OUT, &BODY_ID, "reads the body ID, and puts it into its shared block", BLOCK},
    {"SaveBodyID", NONE, &NO_RECORD, "saves the body ID", LINK},
};

static constexpr OPERATION_INFO BOOT_DISK[] = {
    {"DisableBootDisk", NONE, &NO_RECORD, "switches the boot disk off", EVENT_WORD},
    {"EnableBootDisk", NONE, &NO_RECORD, "switches the boot disk on", EVENT_WORD},
};

static constexpr OPERATION_INFO CAMERA_LOG_GROUP[] = {
    {"GetCameraLog", NONE, &NO_RECORD,
     "stores the camera's log in the file CameraLog of the current directory", CAMERA_LOG},
};

static constexpr OPERATION_INFO BODY_MAINTENANCE[] = {
    {"SetDefaultSettings", NONE, &NO_RECORD, "puts the settings back to default", EVENT_WORD},
    {"ProhibitFROMAccess", NONE, &NO_RECORD, "prohibits access to the FROM", UNHEARD},
    {"SetAEIgnore", NONE, &NO_RECORD, "lets the release ignore AE", EVENT_WORD},
    {"MPUReset", NONE, &NO_RECORD, "resets the MPU", LINK},
    {"CopyWindowsVistaUniqueID", NONE, &NO_RECORD, "has the camera copy its unique ID", EVENT_WORD},
    {"SaveWindowsVistaUniqueID", NONE, &NO_RECORD, "saves the unique ID", LINK},
    {"GetWindowsVistaUniqueID", OUT, &UNIQUE_ID, "reads the unique ID", NULL_RECORD},
};

static constexpr OPERATION_INFO SENSOR_NUMBER_GROUP[] = {
    {"SetSensorNumber", IN, &SENSOR_NUMBER, "writes the sensor number", NULL_RECORD},
    {"GetSensorNumber", OUT, &SENSOR_NUMBER, "reads the sensor number", NULL_RECORD},
    {"SaveSensorNumber", NONE, &NO_RECORD, "saves the sensor number", LINK},
};

static constexpr OPERATION_INFO COPYRIGHT[] = {
    {"ClearCopyRightInfo", NONE, &NO_RECORD, "clears the artist text, then the copyright text",
     LINK},
    {"SaveCopyRightInfo", NONE, &NO_RECORD, "saves the artist and copyright texts together", LINK},
};

static constexpr OPERATION_INFO DATE_AND_TIME[] = {
    {"GetDateTime", OUT, &DATE_TIME, "reads the camera's clock", UNHEARD_CLOCK},
    {"SetDateTime", IN, &DATE_TIME, "sets the camera's clock", UNHEARD_CLOCK},
    {"ResetDateTime", NONE, &NO_RECORD, "resets the camera's clock", EVENT_WORD},
    {"SetDateDisplayFormat", IN, &WORD, "writes the date's display format", NULL_RECORD},
    {"GetDateDisplayFormat", OUT, &WORD, "reads the date's display format", NULL_RECORD},
    {"SaveDateDisplayFormat", NONE, &NO_RECORD, "saves the date's display format", LINK},
    {"SetTimeZone", IN, &WORD, "writes the time zone", NULL_RECORD},
    {"GetTimeZone", OUT, &WORD, "reads the time zone", NULL_RECORD},
    {"SaveTimeZone", NONE, &NO_RECORD, "saves the time zone", LINK},
    {"SetSummertimeSetting", IN, &WORD, "writes the summer time setting", NULL_RECORD},
    {"SaveSummertimeSetting", NONE, &NO_RECORD, "saves the summer time setting", LINK},
};

static constexpr OPERATION_INFO DISPLAY[] = {
    {"TurnOffDisplay", NONE, &NO_RECORD, "turns the display off", EVENT_WORD},
    {"TurnOnDisplay", NONE, &NO_RECORD, "turns the display on", EVENT_WORD},
    {"OutputColorBarChart", NONE, &NO_RECORD, "shows a colour bar chart", EVENT_WORD},
};

static constexpr OPERATION_INFO DL_RESONANT_FREQUENCY[] = {
    {"CopyDLResonantFrequency", NONE, &NO_RECORD,
     "copies the frequency from the EEPROM to property and memory", INI_COPY},
    {"SetDLResonantFrequency", IN, &FREQUENCY,
     "writes the frequency to the property, its low half to memory", NULL_RECORD},
    {"GetDLResonantFrequency", OUT, &SECOND_FREQUENCY, "reads the frequency from the property",
     NULL_RECORD},
    {"SaveDLResonantFrequency", NONE, &NO_RECORD, "saves the property of the frequency", LINK},
    {"GetBoardInfDLResonantFrequency", OUT, &FREQUENCY,
     "reads the frequency from the EEPROM, where BoardInf.ini says", INI},
    {"SetBoardInfDLResonantFrequency", IN, &BOARD_INF,
     "writes bytes to the EEPROM, where BoardInf.ini says", INI_WRITE},
};

static constexpr OPERATION_INFO FILE_NUMBER[] = {
    {"ResetFileNumber", NONE, &NO_RECORD, "sets the file number to 0", LINK},
    {"SaveFileNumber", NONE, &NO_RECORD, "saves the file number", LINK},
};

static constexpr OPERATION_INFO FIRMWARE_VERSIONS[] = {
    {"GetIcuFirmwareVersion", OUT, &VERSION_BLOCK, "reads the ICU's version", NULL_RECORD},
    {"GetMpuFirmwareVersion", OUT, &SMALL_VERSION, "reads the MPU's version", NULL_RECORD},
    {"GetIcuCheckSum", OUT, &CHECK_SUM, "reads the ICU's checksum", NULL_RECORD},
    {"GetIcuMasterVersion", OUT, &VERSION_BLOCK, "reads the ICU master's version", NULL_RECORD},
    {"GetIcuSlaveVersion", OUT, &VERSION_BLOCK, "reads the ICU slave's version", NULL_RECORD},
    {"GetFpuVersion", OUT, &SMALL_VERSION, "reads the FPU's version", NULL_RECORD},
    {"GetTpuVersion", OUT, &SMALL_VERSION, "reads the TPU's version", NULL_RECORD},
    {"GetBpVersion", OUT, &SMALL_VERSION, "reads the BP's version", NULL_RECORD},
    {"GetEepromVersion", OUT, &SMALL_VERSION, "reads the EEPROM's version", NULL_RECORD},
};

static constexpr OPERATION_INFO FILE_PREFIX_GROUP[] = {
    {"SetFilePrefix", NONE, &NO_RECORD, "writes the prefix that belongs to the body's SerialNo",
     PREFIX},
    {"GetFilePrefix", OUT, &FILE_PREFIX, "reads the file prefix", NULL_RECORD},
    {"SaveFilePrefix", NONE, &NO_RECORD, "saves the file prefix", LINK},
    {"SetDefaultFilePrefix", NONE, &NO_RECORD, "writes the prefix IMG_", LINK},
};

static constexpr OPERATION_INFO GUIDANCE[] = {
    {"DisableGuidance", NONE, &NO_RECORD, "switches the guidance off", LINK},
    {"EnableGuidance", NONE, &NO_RECORD, "switches the guidance on", LINK},
    {"SaveGuidance", NONE, &NO_RECORD, "saves the guidance's switch", LINK},
};

static constexpr OPERATION_INFO HIGH_ISO_SPEED_NOISE_REDUCTION[] = {
    {"SetHighIsoSpeedNoiseReduction", IN, &WORD, "writes the high ISO speed noise reduction",
     NULL_RECORD},
    {"GetHighIsoSpeedNoiseReduction", OUT, &WORD, "reads the high ISO speed noise reduction",
     NULL_RECORD},
};

static constexpr OPERATION_INFO HIGHLIGHT_TONE_PRIORITY[] = {
    {"DisableHighlightTonePriority", NONE, &NO_RECORD, "switches highlight tone priority off",
     LINK},
    {"EnableHighlightTonePriority", NONE, &NO_RECORD, "switches highlight tone priority on", LINK},
};

static constexpr OPERATION_INFO LANGUAGE[] = {
    {"SetLanguage", IN, &WORD, "writes the language", NULL_RECORD},
    {"GetLanguage", OUT, &WORD, "reads the language", NULL_RECORD},
    {"SaveLanguage", NONE, &NO_RECORD, "saves the language", LINK},
    {"SetLimitLanguage", IN, &WORD, "writes the limit language", NULL_RECORD},
    {"GetLimitLanguage", OUT, &WORD, "reads the limit language", NULL_RECORD},
    {"SaveLimitLanguage", NONE, &NO_RECORD, "saves the limit language", LINK},
};

static constexpr OPERATION_INFO LENS_GROUP[] = {
    {"CheckLensActivity", NONE, &NO_RECORD,
     "asks the lens whether it is active, by the result alone", LENS},
};

static constexpr OPERATION_INFO LONG_EXPOSURE_NOISE_REDUCTION[] = {
    {"SetLongExposureNoiseReduction", IN, &WORD, "writes the long exposure noise reduction",
     NULL_RECORD},
    {"GetLongExposureNoiseReduction", OUT, &WORD, "reads the long exposure noise reduction",
     NULL_RECORD},
};

static constexpr OPERATION_INFO MACHINE_CELL[] = {
    {"ClearMachineCellResult", NONE, &NO_RECORD, "clears the results", UNHEARD},
    {"EnterMachineCellSpecialMenu", NONE, &NO_RECORD, "opens the special menu", UNHEARD},
    {"ExitMachineCellSpecialMenu", NONE, &NO_RECORD, "closes the special menu", UNHEARD},
    {"IncreaseMachineCellDialClickGap", NONE, &NO_RECORD, "widens the dial's click gap", UNHEARD},
    {"DecreaseMachineCellDialClickGap", NONE, &NO_RECORD,
     "runs the event that widens the gap: the camera shows no other", UNHEARD},
    {"EnterMachineCellAccTest", NONE, &NO_RECORD, "starts the Acc test", UNHEARD},
    {"ExecuteMachineCellAccTest", NONE, &NO_RECORD,
     "second name of EnterMachineCellAccTest, and logs as it", UNHEARD},
    {"ExecuteMachineCellExternalStrobeTest", NONE, &NO_RECORD, "tests the external strobe",
     UNHEARD},
    {"SendMachineCellSetButton", NONE, &NO_RECORD, "sends the set button", UNHEARD},
    {"OverwriteMachineCellDispDialResult", IN, &CELL_RESULT, "overwrites the DispDial result",
     UNTESTED_POINTER},
    {"GetMachineCellDispDialResult", OUT, &CELL_RESULT, "reads the DispDial result", NULL_RECORD},
    {"GetMachineCellAccTestResult", OUT, &CELL_RESULT, "reads the Acc test result", NULL_RECORD},
    {"GetMachineCellSDialTestResult", OUT, &CELL_RESULT, "reads the SDial test result",
     NULL_RECORD},
    {"GetMachineCellDispDialResultTable", OUT, &DISP_DIAL_TABLE,
     "second name of GetMachineCellDispDialResult, for a whole table", NULL_RECORD},
    {"GetMachineCellAccTestResultTable", OUT, &ACC_TEST_TABLE,
     "second name of GetMachineCellAccTestResult, for a whole table", NULL_RECORD},
    {"SetSoundVolume", IN, &SOUND_VOLUME, "sets the sound volume", UNTESTED_VOLUME},
};

static constexpr OPERATION_INFO OWNER_NAME_GROUP[] = {
    {"SetOwnerName", IN, &OWNER_NAME, "writes the owner name", NULL_RECORD},
    {"GetOwnerName", OUT, &OWNER_NAME, "reads the owner name", NULL_RECORD},
    {"ClearOwnerName", NONE, &NO_RECORD, "writes 32 zero bytes as the owner name", LINK},
    {"SaveOwnerName", NONE, &NO_RECORD, "saves the owner name", LINK},
};

static constexpr OPERATION_INFO PROPERTY_DATA_GROUP[] = {
    {"SearchPropertyData", IN_OUT, &PROPERTY_DATA,
     "finds id and size of the adjustment property of that name", SEARCH},
    {"LoadPropertyData", NONE, &NO_RECORD,
     "dumps all adjustment properties into the folder of SHARED_NAME_FOLDER", DUMP},
};

static constexpr OPERATION_INFO SENSOR_GEOMETRY[] = {
    {"GetSensorPixelPitch", OUT, &DOUBLE_VALUE, "reads the pixel pitch", NULL_RECORD},
    {"GetSensorOpticalLength", OUT, &DOUBLE_VALUE, "reads the optical length, without its fraction",
     NULL_RECORD},
};

static constexpr OPERATION_INFO SLIT_ROLLING_MODE[] = {
    {"SetSlitRollingMode", IN, &ACCUMULATE_TIME, "enters slit rolling mode with an accumulate time",
     SLIT},
    {"ClearSlitRollingMode", NONE, &NO_RECORD, "leaves slit rolling mode", EVENT_WORD},
};

static constexpr OPERATION_INFO STORAGE_MEDIA_GROUP[] = {
    {"CheckStorageMediaExistence", OUT, &STORAGE_MEDIA, "reads both card slots", NULL_RECORD},
};

static constexpr OPERATION_INFO TUNE_DATA[] = {
    {"SaveTuneData", NONE, &NO_RECORD, "has the camera save its tune data to file", UNHEARD},
    {"SaveTuneData2", NONE, &NO_RECORD, "has the camera save its second tune data to file",
     UNHEARD},
    {"SaveAETuneData", NONE, &NO_RECORD, "has the camera save its AE tune data to file", UNHEARD},
};

static constexpr OPERATION_INFO TIME_CODE[] = {
    {"ResetTimeCode", NONE, &NO_RECORD, "puts the six time code properties back", LINK},
    {"SaveTimeCode", NONE, &NO_RECORD, "saves the six time code properties", LINK},
};

static constexpr OPERATION_INFO TOUCH_SENSOR[] = {
    {"DisableTouchSensor", NONE, &NO_RECORD, "switches the touch sensor off", LINK},
    {"EnableTouchSensor", NONE, &NO_RECORD, "switches the touch sensor on", LINK},
    {"SaveTouchSensor", NONE, &NO_RECORD, "saves the touch sensor's switch", LINK},
};

static constexpr OPERATION_INFO FACTORY_MODE[] = {
    {"EnterFactoryMode", NONE, &NO_RECORD, "enters factory mode and saves that", LINK},
    {"ExitFactoryMode", NONE, &NO_RECORD, "leaves factory mode and saves that", LINK},
    {"GetFactoryModeState", OUT, &FACTORY_STATE, "reads whether the camera is in factory mode",
     NULL_RECORD},
};

static constexpr OPERATION_INFO VIDEO_SYSTEM[] = {
    {"SetVideoSystem", IN, &WORD, "writes the video system", NULL_RECORD},
    {"GetVideoSystem", OUT, &WORD, "reads the video system", NULL_RECORD},
    {"SaveVideoSystem", NONE, &NO_RECORD, "saves the video system", LINK},
};

static constexpr OPERATION_GROUP GROUPS[] = {
    {"A-board EEPROM", A_BOARD_EEPROM},
    {"Digital parameter adjustment data", DIGITAL_PARAMETER},
    {"AF", AF},
    {"Auto active sweep", AUTO_ACTIVE_SWEEP},
    {"Auto lighting optimizer", AUTO_LIGHTING_OPTIMIZER},
    {"Auto power off", AUTO_POWER_OFF},
    {"Battery", BATTERY_GROUP},
    {"Body ID", BODY_ID_GROUP},
    {"Boot disk", BOOT_DISK},
    {"Camera log", CAMERA_LOG_GROUP},
    {"Body maintenance and unique ID", BODY_MAINTENANCE},
    {"Sensor number", SENSOR_NUMBER_GROUP},
    {"Artist and copyright text", COPYRIGHT},
    {"Date and time", DATE_AND_TIME},
    {"Display", DISPLAY},
    {"DL resonant frequency", DL_RESONANT_FREQUENCY},
    {"File number", FILE_NUMBER},
    {"Firmware versions", FIRMWARE_VERSIONS},
    {"File prefix", FILE_PREFIX_GROUP},
    {"Guidance", GUIDANCE},
    {"High ISO speed noise reduction", HIGH_ISO_SPEED_NOISE_REDUCTION},
    {"Highlight tone priority", HIGHLIGHT_TONE_PRIORITY},
    {"Language", LANGUAGE},
    {"Lens", LENS_GROUP},
    {"Long exposure noise reduction", LONG_EXPOSURE_NOISE_REDUCTION},
    {"Machine cell", MACHINE_CELL},
    {"Owner name", OWNER_NAME_GROUP},
    {"Property data", PROPERTY_DATA_GROUP},
    {"Sensor geometry", SENSOR_GEOMETRY},
    {"Slit rolling mode", SLIT_ROLLING_MODE},
    {"Storage media", STORAGE_MEDIA_GROUP},
    {"Tune data", TUNE_DATA},
    {"Time code", TIME_CODE},
    {"Touch sensor", TOUCH_SENSOR},
    {"Factory mode", FACTORY_MODE},
    {"Video system", VIDEO_SYSTEM},
};

static constexpr std::size_t CountOperations() {
    std::size_t count = 0;
    for (const OPERATION_GROUP& group : GROUPS) {
        count += group.operations.size();
    }
    return count;
}
static_assert(CountOperations() == OPERATION_COUNT);

std::span<const OPERATION_GROUP> OperationGroups() {
    return GROUPS;
}

const OPERATION_INFO* FindOperation(std::string_view name) {
    for (const OPERATION_GROUP& group : GROUPS) {
        for (const OPERATION_INFO& operation : group.operations) {
            if (operation.name == name) {
                return &operation;
            }
        }
    }
    return nullptr;
}

const char* GroupName(const OPERATION_INFO& info) {
    for (const OPERATION_GROUP& group : GROUPS) {
        for (const OPERATION_INFO& operation : group.operations) {
            if (&operation == &info) {
                return group.name;
            }
        }
    }
    return "";
}

std::vector<std::string> OperationNames() {
    std::vector<std::string> names;
    for (const OPERATION_GROUP& group : GROUPS) {
        for (const OPERATION_INFO& operation : group.operations) {
            names.emplace_back(operation.name);
        }
    }
    return names;
}

const OPERATION_INFO& KnownOperation(const std::string& name) {
    const OPERATION_INFO* pInfo = FindOperation(name);
    if (pInfo == nullptr) {
        throw HostError(
            EXIT_WRONG_USE, "there is no operation '" + name + "'" +
                                NearestNames(name, OperationNames()) + " (jighost list shows all)");
    }
    return *pInfo;
}

bool IsDump(const OPERATION_INFO& info) {
    return std::string_view(info.name) == "LoadPropertyData";
}

bool FillsRecord(const OPERATION_INFO& info) {
    return info.use == RECORD_USE::OUT || info.use == RECORD_USE::IN_OUT;
}

void CheckRecordGiven(const OPERATION_INFO& info, bool bGiven) {
    if (info.use == RECORD_USE::NONE && bGiven) {
        throw HostError(EXIT_WRONG_USE, std::string(info.name) + " takes no record");
    }
    if ((info.use == RECORD_USE::IN || info.use == RECORD_USE::IN_OUT) && !bGiven) {
        throw HostError(
            EXIT_WRONG_USE, std::string(info.name) + " reads a record: give a value to " +
                                FieldNames(*info.record));
    }
}
