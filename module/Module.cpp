// The entry of the library, which writes the log's banners, and its exports.
#include "module/Module.h"

#include "frame/OperationFrame.h"
#include "module/RegistrationOrder.h"

static const char MODULE_NAME[] = "TuneBench.t460";
static const char ASTERISKS[] =
    "*******************************************************************************";
static_assert(sizeof(ASTERISKS) == 79 + 1);

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static void WriteAsteriskLine() {
    BeginLine(s_LogStream) << "[CMNT] " << ASTERISKS << '\n';
}

static void WriteModuleLine(const char* pszEvent) {
    BeginLine(s_LogStream) << "[CMNT]  " << MODULE_NAME << pszEvent << '\n';
}

static void Attach() {
    OpenLog();
    WriteAsteriskLine();
    WriteModuleLine(" Initialize");
    FlushLog(s_LogStream, s_byLogBuffer);
    WriteAsteriskLine();
    FlushLog(s_LogStream, s_byLogBuffer);
}

static void WriteTerminateBanner() {
    WriteAsteriskLine();
    WriteModuleLine(" Terminate");
    WriteAsteriskLine();
    FlushLog(s_LogStream, s_byLogBuffer);
}

// The system calls this under its loader's lock, where nothing may be thrown.
extern "C" BOOL WINAPI DllMain(HINSTANCE /*instance*/, DWORD reason, void* /*pReserved*/) {
    if (reason == DLL_PROCESS_ATTACH) {
        SwallowExceptions(Attach);
    } else if (reason == DLL_PROCESS_DETACH) {
        SwallowExceptions(WriteTerminateBanner);
        CloseLog();
    }
    return TRUE;
}

std::int32_t GetEventProcList(EVENT_PROC_T** ppTable) noexcept {
    return RunOperation(
        {s_LogStream, s_byLogBuffer, "GetEventProcList"}, [&] { GetHash(ppTable); });
}

std::int32_t RegisterEventProcList(EVENT_PROC_REGISTER_FUNC callback) noexcept {
    return RunOperation({s_LogStream, s_byLogBuffer, "RegisterEventProcList"}, [&] {
        RegisterAllEventProcs(callback);
    });
}

MODULE_EXPORT_AS(RegisterInitializeFuncList, "_RegisterInitializeFuncList@4");

std::int32_t WINAPI RegisterInitializeFuncList(void* /*pUnused*/) noexcept {
    FlushLog(s_LogStream, s_byLogBuffer);
    return RESULT_SUCCESS;
}
