// Fixed values for the switch.
#include "features/TouchSensor.h"

#include "frame/OperationShapes.h"

static const std::uint32_t PROP_TOUCH_SENSOR = 0x2050027;  // 32-bit integer; 1 is on
static const std::int32_t TOUCH_SENSOR_DISABLED = 0;
static const std::int32_t TOUCH_SENSOR_ENABLED = 1;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::int32_t SwitchTouchSensor(std::string_view logName, std::int32_t nValue) noexcept {
    return WriteFixedValue(
        {s_LogStream, s_byLogBuffer, logName}, PROP_TOUCH_SENSOR, sizeof(nValue), &nValue);
}

std::int32_t DisableTouchSensor(void* /*argument*/) noexcept {
    return SwitchTouchSensor("DisableTouchSensor", TOUCH_SENSOR_DISABLED);
}

std::int32_t EnableTouchSensor(void* /*argument*/) noexcept {
    return SwitchTouchSensor("EnableTouchSensor", TOUCH_SENSOR_ENABLED);
}

std::int32_t SaveTouchSensor(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveTouchSensor"}, PROP_TOUCH_SENSOR);
}

void RegisterTouchSensor(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"DisableTouchSensor", DisableTouchSensor},
        {"EnableTouchSensor", EnableTouchSensor},
        {"SaveTouchSensor", SaveTouchSensor},
    };
    RegisterEventProcs(callback, registrations);
}
