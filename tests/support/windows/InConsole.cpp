// in_console EVENT PROGRAM [ARGUMENT]...: runs a program whose standard files are the console that
// this one was started in, and gives its exit code. Whenever the named event is set, all programs
// of the console get Ctrl-C.
//
// A program that is started in a pseudo console directly has standard files there or not, by the
// version of the system and by what whoever starts it has itself.
#include "platform/windows/WideText.h"

namespace {

HANDLE s_hProgram = nullptr;

BOOL WINAPI LeaveToProgram(DWORD event) {
    return event == CTRL_C_EVENT ? TRUE : FALSE;
}

HANDLE OpenConsole(const wchar_t* pszName) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreateFileW(
        pszName, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
        OPEN_EXISTING, 0, nullptr);
}

/// `pszLine` as CreateProcessW takes it.
bool Start(wchar_t* pszLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = OpenConsole(L"CONIN$");
    startup.hStdOutput = OpenConsole(L"CONOUT$");
    startup.hStdError = startup.hStdOutput;
    PROCESS_INFORMATION process{};
    const BOOL bStarted = CreateProcessW(
        nullptr, pszLine, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process);
    s_hProgram = process.hProcess;
    return bStarted != FALSE;
}

}  // namespace

int main(int argc, char** argv) {
    const std::wstring event = argc > 2 ? WideText(argv[1]) : L"";
    std::wstring line = GetCommandLineW();
    line.erase(0, line.find(event + L' ') + event.size() + 1);
    SetConsoleCtrlHandler(&LeaveToProgram, TRUE);
    if (event.empty() || !Start(line.data())) {
        return 127;
    }
    const HANDLE events[] = {s_hProgram, OpenEventW(SYNCHRONIZE, FALSE, event.c_str())};
    while (WaitForMultipleObjects(2, events, FALSE, INFINITE) == WAIT_OBJECT_0 + 1) {
        GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    }
    DWORD unCode = 0;
    GetExitCodeProcess(s_hProgram, &unCode);
    return static_cast<int>(unCode);
}
