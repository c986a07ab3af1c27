// Fixed times for the switch, and the time read and written as it stands.
#include "features/AutoPowerOff.h"

#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

static const std::uint32_t PROP_AUTO_POWER_OFF_TIME = 0x80000024;  // unsigned 32-bit integer
static const std::uint32_t TIME_DISABLED = 0;
static const std::uint32_t TIME_ENABLED = 60;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::int32_t WriteTime(std::string_view logName, std::uint32_t unTime) noexcept {
    return WriteFixedValue(
        {s_LogStream, s_byLogBuffer, logName}, PROP_AUTO_POWER_OFF_TIME, sizeof(unTime), &unTime);
}

std::int32_t GetAutoPowerOffTime(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "GetAutoPowerOffTime"}, [&](auto& property) {
            auto* pAutoPowerOffTime = static_cast<std::uint32_t*>(argument);
            CheckPointer(pAutoPowerOffTime, "pAutoPowerOffTime");
            property.Get(PROP_AUTO_POWER_OFF_TIME, sizeof(*pAutoPowerOffTime), pAutoPowerOffTime);
            BeginLine(s_LogStream) << "[VALU] AutoPowerOffTime - " << *pAutoPowerOffTime << '\n';
            FlushLog(s_LogStream, s_byLogBuffer);
        });
}

std::int32_t SetAutoPowerOffTime(void* argument) noexcept {
    return WriteProperty(
        {s_LogStream, s_byLogBuffer, "SetAutoPowerOffTime"},
        {PROP_AUTO_POWER_OFF_TIME, sizeof(std::uint32_t), "pAutoPowerOffTime"}, argument);
}

std::int32_t DisableAutoPowerOff(void* /*argument*/) noexcept {
    return WriteTime("DisableAutoPowerOff", TIME_DISABLED);
}

std::int32_t EnableAutoPowerOff(void* /*argument*/) noexcept {
    return WriteTime("EnableAutoPowerOff", TIME_ENABLED);
}

std::int32_t SaveAutoPowerOff(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveAutoPowerOff"}, PROP_AUTO_POWER_OFF_TIME);
}

void RegisterAutoPowerOff(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"GetAutoPowerOffTime", GetAutoPowerOffTime}, {"SetAutoPowerOffTime", SetAutoPowerOffTime},
        {"DisableAutoPowerOff", DisableAutoPowerOff}, {"EnableAutoPowerOff", EnableAutoPowerOff},
        {"SaveAutoPowerOff", SaveAutoPowerOff},
    };
    RegisterEventProcs(callback, registrations);
}
