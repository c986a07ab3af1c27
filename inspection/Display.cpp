// The events of the display, one of them with a parameter list.
#include "inspection/Display.h"

#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

// The colour bar chart's parameters, in the order of the list.
static const std::int32_t CHART_PARAMETERS[] = {255, 0};
static const std::int32_t INTEGER_KIND = 2;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

// Log names begin with an underscore; the names in messages do not.

std::int32_t TurnOffDisplay(void* /*argument*/) noexcept {
    return RunTestedEvent(
        {s_LogStream, s_byLogBuffer, "_TurnOffDisplay"}, "FactDisp_TurnOffDisplay", 0,
        "[EVNT] TurnOffDisplay");
}

std::int32_t TurnOnDisplay(void* /*argument*/) noexcept {
    return RunTestedEvent(
        {s_LogStream, s_byLogBuffer, "_TurnOnDisplay"}, "FactDisp_TurnOnDisplay", 0,
        "[EVNT] TurnOnDisplay");
}

std::int32_t OutputColorBarChart(void* /*argument*/) noexcept {
    // The closing line bears another tag than the opening line.
    return RunOperation<CEventProcedure>(
        {s_LogStream, s_byLogBuffer, "_OutputColorBarChart", "[VALU] _OutputColorBarChart"},
        [&](auto& procedure) {
            procedure.ClearParameters();
            for (const std::int32_t nParameter : CHART_PARAMETERS) {
                procedure.PushParameterAsInteger(nParameter, INTEGER_KIND);
            }
            std::int32_t nResult = 0;
            procedure.Execute("FA_DISP_StartMix", &nResult);
            CheckEvent(nResult, "FA_DISP_StartMix");
        });
}

void RegisterDisplay(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"TurnOffDisplay", TurnOffDisplay},
        {"TurnOnDisplay", TurnOnDisplay},
        {"OutputColorBarChart", OutputColorBarChart},
    };
    RegisterEventProcs(callback, registrations);
}
