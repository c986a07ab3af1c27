// Fixed values for the switch, of three bytes each.
#include "features/AutoLightingOptimizer.h"

#include <array>

#include "frame/OperationShapes.h"

using OptimizerBytes = std::array<std::uint8_t, 3>;

static const std::uint32_t PROP_AUTO_LIGHTING_OPTIMIZER = 0x8000003d;
static const OptimizerBytes OPTIMIZER_DISABLED = {3, 3, 0};
static const OptimizerBytes OPTIMIZER_ENABLED = {0, 0, 0};

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::int32_t SwitchOptimizer(
    std::string_view logName, const OptimizerBytes& bytes) noexcept {
    return WriteFixedValue(
        {s_LogStream, s_byLogBuffer, logName}, PROP_AUTO_LIGHTING_OPTIMIZER, sizeof(bytes),
        bytes.data());
}

std::int32_t DisableAutoLightingOptimizer(void* /*argument*/) noexcept {
    return SwitchOptimizer("DisableAutoLightingOptimizer", OPTIMIZER_DISABLED);
}

std::int32_t EnableAutoLightingOptimizer(void* /*argument*/) noexcept {
    return SwitchOptimizer("EnableAutoLightingOptimizer", OPTIMIZER_ENABLED);
}

std::int32_t SaveAutoLightingOptimizer(void* /*argument*/) noexcept {
    return SaveProperty(
        {s_LogStream, s_byLogBuffer, "SaveAutoLightingOptimizer"}, PROP_AUTO_LIGHTING_OPTIMIZER);
}

void RegisterAutoLightingOptimizer(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"DisableAutoLightingOptimizer", DisableAutoLightingOptimizer},
        {"EnableAutoLightingOptimizer", EnableAutoLightingOptimizer},
        {"SaveAutoLightingOptimizer", SaveAutoLightingOptimizer},
    };
    RegisterEventProcs(callback, registrations);
}
