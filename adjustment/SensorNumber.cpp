// The sensor number's text, passed on with all of its bytes.
#include "adjustment/SensorNumber.h"

#include <string_view>

#include "frame/OperationFrame.h"
#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

static const std::uint32_t PROP_SENSOR_NUMBER = 0x1000002;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static void LogSensorNumber(const char* pSensorNumber) {
    const std::string_view number(pSensorNumber, SENSOR_NUMBER_SIZE);
    BeginLine(s_LogStream) << "[VALU] SensorNumber - " << number.substr(0, number.find('\0'))
                           << '\n';
    FlushLog(s_LogStream, s_byLogBuffer);
}

std::int32_t SetSensorNumber(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "SetSensorNumber"}, [&](auto& property) {
            const auto* pSensorNumber = static_cast<const char*>(argument);
            CheckPointer(pSensorNumber, "pSensorNumber");
            LogSensorNumber(pSensorNumber);
            property.Set(PROP_SENSOR_NUMBER, SENSOR_NUMBER_SIZE, pSensorNumber);
        });
}

std::int32_t GetSensorNumber(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "GetSensorNumber"}, [&](auto& property) {
            auto* pSensorNumber = static_cast<char*>(argument);
            CheckPointer(pSensorNumber, "pSensorNumber");
            property.Get(PROP_SENSOR_NUMBER, SENSOR_NUMBER_SIZE, pSensorNumber);
            LogSensorNumber(pSensorNumber);
        });
}

std::int32_t SaveSensorNumber(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveSensorNumber"}, PROP_SENSOR_NUMBER);
}

void RegisterSensorNumber(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"SetSensorNumber", SetSensorNumber, SENSOR_NUMBER_SIZE, EVENT_PROC_IN},
        {"GetSensorNumber", GetSensorNumber, SENSOR_NUMBER_SIZE, EVENT_PROC_OUT},
        {"SaveSensorNumber", SaveSensorNumber},
    };
    RegisterEventProcs(callback, registrations);
}
