// The release mode switched by two events, with the time as an HD count.
#include "inspection/SlitRollingMode.h"

#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

// HD counts of one unit of the host's value: a multiplier and a divisor.
static const double HD_COUNT_MULTIPLIER = 10000.0;
static const double HD_COUNT_DIVISOR = 226.0;
static const std::int64_t GREATEST_HD_COUNT = 3717;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

// The count of a large value does not fit 32 bits.
static std::int64_t ComputeHDCount(std::uint32_t unValue) {
    return static_cast<std::int64_t>(unValue * HD_COUNT_MULTIPLIER / HD_COUNT_DIVISOR);
}

static void CheckHDCount(std::int64_t nHDCount) {
    if (nHDCount > GREATEST_HD_COUNT) {
        s_LogStream << "[ERR!] HD_Count is Over\n";  // without the prefix of other lines
        FlushLog(s_LogStream, s_byLogBuffer);
        Fail("[EVNT] nHDCount", RESULT_INVALID_PARAMETER);
    }
}

std::int32_t SetSlitRollingMode(void* argument) noexcept {
    return RunOperation<CEventProcedure>(
        {s_LogStream, s_byLogBuffer, "SetSlitRollingMode"}, [&](auto& procedure) {
            const auto* pParameter = static_cast<const std::uint32_t*>(argument);
            CheckPointer(pParameter, "pParameter");
            // The mode stands before the value is tested.
            std::int32_t nResult = 0;
            procedure.Execute("FA_SetReleaseModeForSR", 0, &nResult);
            CheckEvent(nResult, "FA_SetReleaseModeForSR");

            const std::int64_t nHDCount = ComputeHDCount(*pParameter);
            BeginLine(s_LogStream) << "[VALU] HdNum - " << nHDCount << '\n';
            CheckHDCount(nHDCount);
            procedure.Execute(
                "FA_SetAccumulateTimeForSR", static_cast<std::int32_t>(nHDCount), &nResult);
            CheckEvent(nResult, "FA_SetAccumulateTimeForSR");
        });
}

std::int32_t ClearSlitRollingMode(void* /*argument*/) noexcept {
    return RunTestedEvent(
        {s_LogStream, s_byLogBuffer, "ClearSlitRollingMode"}, "FA_ClearReleaseModeForSR", 0,
        "[EVNT] FA_ClearReleaseModeForSR");
}
