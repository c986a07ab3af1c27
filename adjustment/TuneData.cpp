// The events that save tune data.
#include "adjustment/TuneData.h"

#include "frame/OperationShapes.h"

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::int32_t SaveTuneData(void* /*argument*/) noexcept {
    return RunEvent({s_LogStream, s_byLogBuffer, "SaveTuneData"}, "SaveTuneToFile", 0);
}

std::int32_t SaveTuneData2(void* /*argument*/) noexcept {
    return RunEvent({s_LogStream, s_byLogBuffer, "SaveTuneData2"}, "SaveTune2ToFile", 0);
}

std::int32_t SaveAETuneData(void* /*argument*/) noexcept {
    return RunEvent({s_LogStream, s_byLogBuffer, "SaveAETuneData"}, "SaveAETuneToFile", 0);
}

void RegisterTuneData(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"SaveTuneData", SaveTuneData},
        {"SaveTuneData2", SaveTuneData2},
        {"SaveAETuneData", SaveAETuneData},
    };
    RegisterEventProcs(callback, registrations);
}
