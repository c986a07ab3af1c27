// Fixed values for the switch.
#include "features/Guidance.h"

#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

static const std::uint32_t PROP_GUIDANCE = 0x205001c;  // 32-bit integer; 1 is off
static const std::int32_t GUIDANCE_DISABLED = 1;
static const std::int32_t GUIDANCE_ENABLED = 0;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::int32_t SwitchGuidance(std::string_view logName, std::int32_t nValue) noexcept {
    return WriteFixedValue(
        {s_LogStream, s_byLogBuffer, logName}, PROP_GUIDANCE, sizeof(nValue), &nValue);
}

std::int32_t DisableGuidance(void* /*argument*/) noexcept {
    return SwitchGuidance("DisableGuidance", GUIDANCE_DISABLED);
}

std::int32_t EnableGuidance(void* /*argument*/) noexcept {
    return SwitchGuidance("EnableGuidance", GUIDANCE_ENABLED);
}

// Unlike other saves, this one holds a property object around the call.
std::int32_t SaveGuidance(void* /*argument*/) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "SaveGuidance"},
        [](auto& /*property*/) { CProperty::Save(PROP_GUIDANCE); });
}

void RegisterGuidance(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"DisableGuidance", DisableGuidance},
        {"EnableGuidance", EnableGuidance},
        {"SaveGuidance", SaveGuidance},
    };
    RegisterEventProcs(callback, registrations);
}
