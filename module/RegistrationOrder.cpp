// The order in which the host gets to know the operations. A feature with several operations hands
// over its own; the others are registered here, one by one.
#include "module/RegistrationOrder.h"

#include "adjustment/ABoardEeprom.h"
#include "adjustment/CameraLog.h"
#include "adjustment/DLResonantFrequency.h"
#include "adjustment/DigitalParaAdjData.h"
#include "adjustment/FirmwareVersion.h"
#include "adjustment/PropertyData.h"
#include "adjustment/SensorGeometry.h"
#include "adjustment/SensorNumber.h"
#include "adjustment/TuneData.h"
#include "clock/DateTime.h"
#include "clock/Language.h"
#include "clock/TimeCode.h"
#include "clock/VideoSystem.h"
#include "features/AF.h"
#include "features/AutoActiveSweep.h"
#include "features/AutoLightingOptimizer.h"
#include "features/AutoPowerOff.h"
#include "features/Guidance.h"
#include "features/HighIsoSpeedNoiseReduction.h"
#include "features/HighlightTonePriority.h"
#include "features/LongExposureNoiseReduction.h"
#include "features/TouchSensor.h"
#include "identity/BodyID.h"
#include "identity/BodyMaintenance.h"
#include "identity/CopyRight.h"
#include "identity/FileNumber.h"
#include "identity/FilePrefix.h"
#include "identity/OwnerName.h"
#include "inspection/Battery.h"
#include "inspection/BootDisk.h"
#include "inspection/Display.h"
#include "inspection/FactoryMode.h"
#include "inspection/Lens.h"
#include "inspection/MachineCell.h"
#include "inspection/SlitRollingMode.h"
#include "inspection/StorageMedia.h"

void RegisterAllEventProcs(EVENT_PROC_REGISTER_FUNC callback) {
    const auto registerOne = [&](const REGISTRATION& registration) {
        RegisterEventProcs(callback, {&registration, 1});
    };
    RegisterABoardEeprom(callback);
    registerOne(
        {"GetDigitalParaAdjData", GetDigitalParaAdjData, sizeof(DIGITAL_PARA_DATA_T),
         EVENT_PROC_OUT});
    RegisterAF(callback);
    RegisterAutoActiveSweep(callback);
    RegisterAutoLightingOptimizer(callback);
    RegisterAutoPowerOff(callback);
    registerOne({"CheckBatteryStatus", CheckBatteryStatus});
    RegisterBodyID(callback);
    registerOne({"DisableBootDisk", DisableBootDisk});
    registerOne({"EnableBootDisk", EnableBootDisk});
    registerOne({"GetCameraLog", GetCameraLog});
    RegisterBodyMaintenance(callback);
    RegisterSensorNumber(callback);
    registerOne({"ClearCopyRightInfo", ClearCopyRightInfo});
    registerOne({"SaveCopyRightInfo", SaveCopyRightInfo});
    RegisterDateTime(callback);
    RegisterDisplay(callback);
    RegisterDLResonantFrequency(callback);
    registerOne({"ResetFileNumber", ResetFileNumber});
    registerOne({"SaveFileNumber", SaveFileNumber});
    RegisterFirmwareVersion(callback);
    RegisterFilePrefix(callback);
    RegisterGuidance(callback);
    registerOne({"SetHighIsoSpeedNoiseReduction", SetHighIsoSpeedNoiseReduction});
    registerOne({"GetHighIsoSpeedNoiseReduction", GetHighIsoSpeedNoiseReduction});
    registerOne({"DisableHighlightTonePriority", DisableHighlightTonePriority});
    registerOne({"EnableHighlightTonePriority", EnableHighlightTonePriority});
    RegisterLanguage(callback);
    registerOne({"CheckLensActivity", CheckLensActivity});
    registerOne({"SetLongExposureNoiseReduction", SetLongExposureNoiseReduction});
    registerOne({"GetLongExposureNoiseReduction", GetLongExposureNoiseReduction});
    RegisterMachineCell(callback);
    RegisterOwnerName(callback);
    registerOne({"SearchPropertyData", SearchPropertyData});
    registerOne({"LoadPropertyData", LoadPropertyData});
    RegisterPropertyData();
    registerOne({"GetSensorPixelPitch", GetSensorPixelPitch});
    registerOne({"GetSensorOpticalLength", GetSensorOpticalLength});
    registerOne({"SetSlitRollingMode", SetSlitRollingMode});
    registerOne({"ClearSlitRollingMode", ClearSlitRollingMode});
    registerOne({"CheckStorageMediaExistence", CheckStorageMediaExistence});
    RegisterTuneData(callback);
    registerOne({"ResetTimeCode", ResetTimeCode});
    registerOne({"SaveTimeCode", SaveTimeCode});
    RegisterTouchSensor(callback);
    RegisterFactoryMode(callback);
    RegisterVideoSystem(callback);
}
