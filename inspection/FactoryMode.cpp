// One property: set and saved at once, or read.
#include "inspection/FactoryMode.h"

#include "frame/OperationFrame.h"
#include "link/BodyLink.h"

static const std::uint32_t PROP_TUNING_FLAG = 0x1000000;  // signed 32-bit integer
static const std::int32_t IN_FACTORY_MODE = 0;
static const std::int32_t NOT_IN_FACTORY_MODE = -1;  // all bits set

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::int32_t ChangeFactoryMode(std::string_view logName, std::int32_t nState) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, logName}, [&](auto& property) {
            property.Set(PROP_TUNING_FLAG, sizeof(nState), &nState);
            CProperty::Save(PROP_TUNING_FLAG);
        });
}

std::int32_t EnterFactoryMode(void* /*argument*/) noexcept {
    return ChangeFactoryMode("EnterFactoryMode", IN_FACTORY_MODE);
}

std::int32_t ExitFactoryMode(void* /*argument*/) noexcept {
    return ChangeFactoryMode("ExitFactoryMode", NOT_IN_FACTORY_MODE);
}

std::int32_t GetFactoryModeState(void* argument) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "GetFactoryModeState"}, [&](auto& property) {
            auto* pvParameter = static_cast<std::int32_t*>(argument);
            CheckPointer(pvParameter, "pvParameter");
            std::int32_t nState = 0;
            property.Get(PROP_TUNING_FLAG, sizeof(nState), &nState);
            BeginLine(s_LogStream) << "[FUNC] State - " << nState << '\n';
            FlushLog(s_LogStream, s_byLogBuffer);
            *pvParameter = nState;
        });
}

void RegisterFactoryMode(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"EnterFactoryMode", EnterFactoryMode},
        {"ExitFactoryMode", ExitFactoryMode},
        {"GetFactoryModeState", GetFactoryModeState},
    };
    RegisterEventProcs(callback, registrations);
}
