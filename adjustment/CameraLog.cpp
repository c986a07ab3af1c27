// The camera's log fetched in one exchange of three events and put into the file "CameraLog".
#include "adjustment/CameraLog.h"

#include "frame/Dump.h"
#include "frame/OperationFrame.h"
#include "link/BodyLink.h"
#include "platform/Platform.h"

static const char FILE_NAME[] = "CameraLog";
static const std::size_t PATH_SIZE = 260;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

namespace {

/// Starts the exchange and gives the size of the log in bytes, not 0.
std::uint32_t StartCameraLog(CEventProcedure& procedure) {
    std::uint32_t lSize = 0;
    std::int32_t nResult = 0;
    procedure.ClearParameters();
    procedure.ExecuteAndGetSize("FA_GetCameraLogStart", &lSize, &nResult);
    BeginLine(s_LogStream) << "[EVNT] FA_GetCameraLogStart - " << nResult << '\n';
    BeginLine(s_LogStream) << "[VALU] lSize                - " << lSize << '\n';
    FlushLog(s_LogStream, s_byLogBuffer);
    CheckEvent(nResult, "FA_GetCameraLogStart");
    if (lSize == 0) {
        Fail("[VALU] Size", RESULT_INVALID_CAMERA_VALUE);
    }
    return lSize;
}

void EndCameraLog(CEventProcedure& procedure) {
    std::int32_t nResult = 0;
    procedure.Execute("FA_GetCameraLogEnd", 0, &nResult);
    CheckEvent(nResult, "FA_GetCameraLogEnd");
}

void WriteCameraLog(const std::uint8_t* pbyData, std::uint32_t lSize, std::uint32_t lAllocated) {
    const auto pszFullPath = AllocateBuffer<char>(PATH_SIZE, "pszFullPath");
    if (strcpy_s(pszFullPath.get(), PATH_SIZE, FILE_NAME) != 0) {
        Fail("[STDF] strcpy_s", RESULT_RUNTIME_ERROR);
    }
    if (lSize > lAllocated) {
        Fail("[VALU] Size", RESULT_INVALID_CAMERA_VALUE);
    }
    CheckNested(DebugWriteDumpMemory(pszFullPath.get(), pbyData, &lSize), "DebugWriteDumpMemory");
}

}  // namespace

// A failure between start and end leaves the camera's exchange unended.
std::int32_t GetCameraLog(void* /*argument*/) noexcept {
    return RunOperation<CEventProcedure>(
        {s_LogStream, s_byLogBuffer, "GetCameraLog"}, [](auto& procedure) {
            const std::uint32_t lAllocated = StartCameraLog(procedure);
            const auto pbyData = AllocateBuffer<std::uint8_t>(lAllocated, "pbyData");
            // The answer to the fetch is not tested; what it leaves as the size is.
            std::uint32_t lSize = lAllocated;
            std::int32_t nResult = 0;
            procedure.ClearParameters();
            procedure.GetReturnData(pbyData.get(), &lSize, &nResult);
            EndCameraLog(procedure);
            WriteCameraLog(pbyData.get(), lSize, lAllocated);
        });
}
