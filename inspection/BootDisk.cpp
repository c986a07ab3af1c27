// The two events of the switch.
#include "inspection/BootDisk.h"

#include "frame/OperationShapes.h"

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::int32_t DisableBootDisk(void* /*argument*/) noexcept {
    return RunTestedEvent(
        {s_LogStream, s_byLogBuffer, "DisableBootDisk"}, "DisableBootDisk", 0,
        "[EVNT] DisableBootDisk");
}

std::int32_t EnableBootDisk(void* /*argument*/) noexcept {
    return RunTestedEvent(
        {s_LogStream, s_byLogBuffer, "EnableBootDisk"}, "EnableBootDisk", 0,
        "[EVNT] EnableBootDisk");
}
