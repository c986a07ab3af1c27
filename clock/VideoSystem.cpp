// One setting: written, read, saved.
#include "clock/VideoSystem.h"

#include "frame/OperationShapes.h"

static const PROPERTY PROP_VIDEO_SYSTEM = {0x2040003, 4, "pVideoSystem"};

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::int32_t SetVideoSystem(void* argument) noexcept {
    return WriteProperty(
        {s_LogStream, s_byLogBuffer, "SetVideoSystem"}, PROP_VIDEO_SYSTEM, argument);
}

std::int32_t GetVideoSystem(void* argument) noexcept {
    return ReadProperty(
        {s_LogStream, s_byLogBuffer, "GetVideoSystem"}, PROP_VIDEO_SYSTEM, argument);
}

std::int32_t SaveVideoSystem(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveVideoSystem"}, PROP_VIDEO_SYSTEM.id);
}

void RegisterVideoSystem(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"SetVideoSystem", SetVideoSystem},
        {"GetVideoSystem", GetVideoSystem},
        {"SaveVideoSystem", SaveVideoSystem},
    };
    RegisterEventProcs(callback, registrations);
}
