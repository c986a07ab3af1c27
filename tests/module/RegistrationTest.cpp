// What the callback of the registration is told: names, order, procedures and triples.
#include <map>
#include <set>

#include "tests/support/Support.h"

namespace {

struct EXPECTED {
    const char* name;
    std::int32_t size = 0;
    std::int32_t direction = 3;
};

// clang-format off
const EXPECTED OPERATIONS[] = {
    {"DebugPrintABoardEepromData"}, {"GetABoardEepromData"}, {"SetABoardEepromData"},
    {"GetDigitalParaAdjData", 8, 1}, {"DisableAF"}, {"DisableAf"}, {"EnableAF"}, {"EnableAf"},
    {"DisableAutoActiveSweep"}, {"EnableAutoActiveSweep"}, {"SaveAutoActiveSweep"},
    {"ExecuteAutoActiveSweep"}, {"DisableAutoLightingOptimizer"}, {"EnableAutoLightingOptimizer"},
    {"SaveAutoLightingOptimizer"}, {"GetAutoPowerOffTime"}, {"SetAutoPowerOffTime"},
    {"DisableAutoPowerOff"}, {"EnableAutoPowerOff"}, {"SaveAutoPowerOff"}, {"CheckBatteryStatus"},
    {"SetBodyID", 20, 0}, {"GetBodyID", 20, 1}, {"SaveBodyID"}, {"DisableBootDisk"},
    {"EnableBootDisk"}, {"GetCameraLog"}, {"SetDefaultSettings"}, {"ProhibitFROMAccess"},
    {"SetAEIgnore"}, {"MPUReset"}, {"CopyWindowsVistaUniqueID"}, {"SaveWindowsVistaUniqueID"},
    {"GetWindowsVistaUniqueID"}, {"SetSensorNumber", 16, 0}, {"GetSensorNumber", 16, 1},
    {"SaveSensorNumber"}, {"ClearCopyRightInfo"}, {"SaveCopyRightInfo"}, {"GetDateTime"},
    {"SetDateTime"}, {"ResetDateTime"}, {"SetDateDisplayFormat"}, {"GetDateDisplayFormat"},
    {"SaveDateDisplayFormat"}, {"SetTimeZone"}, {"GetTimeZone"}, {"SaveTimeZone"},
    {"SetSummertimeSetting"}, {"SaveSummertimeSetting"}, {"TurnOffDisplay"}, {"TurnOnDisplay"},
    {"OutputColorBarChart"}, {"CopyDLResonantFrequency"}, {"SetDLResonantFrequency"},
    {"GetDLResonantFrequency"}, {"SaveDLResonantFrequency"}, {"GetBoardInfDLResonantFrequency"},
    {"SetBoardInfDLResonantFrequency"}, {"ResetFileNumber"}, {"SaveFileNumber"},
    {"GetIcuFirmwareVersion"}, {"GetMpuFirmwareVersion"}, {"GetIcuCheckSum"},
    {"GetIcuMasterVersion"}, {"GetIcuSlaveVersion"}, {"GetFpuVersion"}, {"GetTpuVersion"},
    {"GetBpVersion"}, {"GetEepromVersion"}, {"SetFilePrefix"}, {"GetFilePrefix"},
    {"SaveFilePrefix"}, {"SetDefaultFilePrefix"}, {"DisableGuidance"}, {"EnableGuidance"},
    {"SaveGuidance"}, {"SetHighIsoSpeedNoiseReduction"}, {"GetHighIsoSpeedNoiseReduction"},
    {"DisableHighlightTonePriority"}, {"EnableHighlightTonePriority"}, {"SetLanguage"},
    {"GetLanguage"}, {"SaveLanguage"}, {"SetLimitLanguage"}, {"GetLimitLanguage"},
    {"SaveLimitLanguage"}, {"CheckLensActivity"}, {"SetLongExposureNoiseReduction"},
    {"GetLongExposureNoiseReduction"}, {"ClearMachineCellResult"},
    {"EnterMachineCellSpecialMenu"}, {"ExitMachineCellSpecialMenu"},
    {"IncreaseMachineCellDialClickGap"}, {"DecreaseMachineCellDialClickGap"},
    {"EnterMachineCellAccTest"}, {"ExecuteMachineCellAccTest"},
    {"ExecuteMachineCellExternalStrobeTest"}, {"SendMachineCellSetButton"},
    {"OverwriteMachineCellDispDialResult", 4, 0}, {"GetMachineCellDispDialResult", 4, 1},
    {"GetMachineCellAccTestResult", 4, 1}, {"GetMachineCellSDialTestResult", 4, 1},
    {"GetMachineCellDispDialResultTable", 128, 1}, {"GetMachineCellAccTestResultTable", 96, 1},
    {"SetSoundVolume", 4, 0}, {"SetOwnerName"}, {"GetOwnerName"}, {"ClearOwnerName"},
    {"SaveOwnerName"}, {"SearchPropertyData"}, {"LoadPropertyData"}, {"GetSensorPixelPitch"},
    {"GetSensorOpticalLength"}, {"SetSlitRollingMode"}, {"ClearSlitRollingMode"},
    {"CheckStorageMediaExistence"}, {"SaveTuneData"}, {"SaveTuneData2"}, {"SaveAETuneData"}, {"ResetTimeCode"}, {"SaveTimeCode"},
    {"DisableTouchSensor"}, {"EnableTouchSensor"}, {"SaveTouchSensor"}, {"EnterFactoryMode"},
    {"ExitFactoryMode"}, {"GetFactoryModeState"}, {"SetVideoSystem"}, {"GetVideoSystem"},
    {"SaveVideoSystem"},
};
// clang-format on
static_assert(std::size(OPERATIONS) == 131);

const std::map<std::string, std::string> SECOND_NAMES = {
    {"DisableAf", "DisableAF"},
    {"EnableAf", "EnableAF"},
    {"ExecuteMachineCellAccTest", "EnterMachineCellAccTest"},
    {"GetMachineCellDispDialResultTable", "GetMachineCellDispDialResult"},
    {"GetMachineCellAccTestResultTable", "GetMachineCellAccTestResult"},
};

class RegistrationTest : public ModuleTest {};

TEST_F(RegistrationTest, HandsOverAllOperationsInOrder) {
    const std::vector<REGISTERED>& registered = Module().registered;
    ASSERT_EQ(registered.size(), std::size(OPERATIONS));
    for (std::size_t i = 0; i < registered.size(); ++i) {
        EXPECT_EQ(registered[i].name, OPERATIONS[i].name) << "at place " << i + 1;
        EXPECT_EQ(registered[i].size, OPERATIONS[i].size) << registered[i].name;
        EXPECT_EQ(registered[i].direction, OPERATIONS[i].direction) << registered[i].name;
        EXPECT_EQ(registered[i].reserved, 0) << registered[i].name;
    }
}

TEST_F(RegistrationTest, OnlySecondNamesShareAProcedure) {
    std::set<EVENT_PROC> procedures;
    for (const REGISTERED& operation : Module().registered) {
        const auto second = SECOND_NAMES.find(operation.name);
        if (second != SECOND_NAMES.end()) {
            EXPECT_EQ(operation.procedure, Operation(second->second)) << operation.name;
        } else {
            EXPECT_TRUE(procedures.insert(operation.procedure).second) << operation.name;
        }
    }
    EXPECT_EQ(procedures.size(), 126U);
}

}  // namespace
