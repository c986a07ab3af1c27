// Fixed values for the switch; the sweep is an event.
#include "features/AutoActiveSweep.h"

#include "frame/OperationShapes.h"

static const std::uint32_t PROP_AUTO_ACTIVE_SWEEP = 0x2070001;  // 32-bit integer; 1 is on
static const std::int32_t SWEEP_DISABLED = 0;
static const std::int32_t SWEEP_ENABLED = 1;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::int32_t SwitchSweep(std::string_view logName, std::int32_t nValue) noexcept {
    return WriteFixedValue(
        {s_LogStream, s_byLogBuffer, logName}, PROP_AUTO_ACTIVE_SWEEP, sizeof(nValue), &nValue);
}

std::int32_t DisableAutoActiveSweep(void* /*argument*/) noexcept {
    return SwitchSweep("DisableAutoActiveSweep", SWEEP_DISABLED);
}

std::int32_t EnableAutoActiveSweep(void* /*argument*/) noexcept {
    return SwitchSweep("EnableAutoActiveSweep", SWEEP_ENABLED);
}

std::int32_t SaveAutoActiveSweep(void* /*argument*/) noexcept {
    return SaveProperty(
        {s_LogStream, s_byLogBuffer, "SaveAutoActiveSweep"}, PROP_AUTO_ACTIVE_SWEEP);
}

std::int32_t ExecuteAutoActiveSweep(void* /*argument*/) noexcept {
    return RunEvent({s_LogStream, s_byLogBuffer, "ExecuteAutoActiveSweep"}, "dl_ExecJustNow", 0);
}

void RegisterAutoActiveSweep(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"DisableAutoActiveSweep", DisableAutoActiveSweep},
        {"EnableAutoActiveSweep", EnableAutoActiveSweep},
        {"SaveAutoActiveSweep", SaveAutoActiveSweep},
        {"ExecuteAutoActiveSweep", ExecuteAutoActiveSweep},
    };
    RegisterEventProcs(callback, registrations);
}
