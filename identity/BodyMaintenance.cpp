// Commands to the whole body, and the unique ID as one property.
#include "identity/BodyMaintenance.h"

#include "frame/OperationFrame.h"
#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

static const PROPERTY PROP_VISTA_UNIQUE_ID = {0x100000C, VISTA_UNIQUE_ID_SIZE, "pVistaUniqueID"};

static const std::int32_t IGNORE_AE = 1;
static const std::uint32_t MPU_RESET_FUNCTION = 0x76;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

// What goes wrong with the unique ID stands in the log without the line prefix.
static OPERATION UniqueIDOperation(std::string_view logName) {
    return {s_LogStream, s_byLogBuffer, logName, {}, true};
}

std::int32_t SetDefaultSettings(void* /*argument*/) noexcept {
    return RunTestedEvent(
        {s_LogStream, s_byLogBuffer, "SetDefaultSettings"}, "FA_SetDefaultSetting", 0,
        "[EVNT] FA_SetDefaultSetting");
}

std::int32_t ProhibitFROMAccess(void* /*argument*/) noexcept {
    return RunEvent(
        {s_LogStream, s_byLogBuffer, "ProhibitFROMAccess"}, "prop_prohibitfromaccess", 0);
}

std::int32_t SetAEIgnore(void* /*argument*/) noexcept {
    return RunTestedEvent(
        {s_LogStream, s_byLogBuffer, "SetAEIgnore"}, "ae_ignore_release", IGNORE_AE,
        "[EVNT] ae_ignore_release");
}

std::int32_t MPUReset(void* /*argument*/) noexcept {
    return RunOperation<CSLRMonitor>({s_LogStream, s_byLogBuffer, "MPUReset"}, [](auto& monitor) {
        monitor.OpenSession();
        monitor.ChangeBank(SLR_MONITOR::BANK_FC);
        monitor.CallFunction(MPU_RESET_FUNCTION);
        monitor.CloseSession();
    });
}

// The failing event is reported under the tag of a function.
std::int32_t CopyWindowsVistaUniqueID(void* /*argument*/) noexcept {
    return RunTestedEvent(
        UniqueIDOperation("CopyWindowsVistaUniqueID"), "FA_CopyVistaUniqueID", 0,
        "[FUNC] FA_CopyVistaUniqueID");
}

std::int32_t SaveWindowsVistaUniqueID(void* /*argument*/) noexcept {
    return SaveProperty(UniqueIDOperation("SaveWindowsVistaUniqueID"), PROP_VISTA_UNIQUE_ID.id);
}

std::int32_t GetWindowsVistaUniqueID(void* argument) noexcept {
    return ReadProperty(
        UniqueIDOperation("GetWindowsVistaUniqueID"), PROP_VISTA_UNIQUE_ID, argument);
}

void RegisterBodyMaintenance(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"SetDefaultSettings", SetDefaultSettings},
        {"ProhibitFROMAccess", ProhibitFROMAccess},
        {"SetAEIgnore", SetAEIgnore},
        {"MPUReset", MPUReset},
        {"CopyWindowsVistaUniqueID", CopyWindowsVistaUniqueID},
        {"SaveWindowsVistaUniqueID", SaveWindowsVistaUniqueID},
        {"GetWindowsVistaUniqueID", GetWindowsVistaUniqueID},
    };
    RegisterEventProcs(callback, registrations);
}
