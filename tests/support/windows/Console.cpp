// A pseudo console, and in_console in it.
#include "tests/support/windows/Console.h"

#include <vector>

#include "platform/windows/WideText.h"
#include "tests/support/SupportJighost.h"

namespace {

/// What a program is started with that has a console of its own.
class ConsoleStartup {
  public:
    explicit ConsoleStartup(HPCON hConsole) {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        m_Attributes.resize(size);
        startup.StartupInfo.cb = sizeof startup;
        startup.lpAttributeList =
            reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_Attributes.data());
        EXPECT_TRUE(InitializeProcThreadAttributeList(startup.lpAttributeList, 1, 0, &size));
        EXPECT_TRUE(UpdateProcThreadAttribute(
            startup.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_PSEUDOCONSOLE, hConsole,
            sizeof hConsole, nullptr, nullptr));
    }
    ConsoleStartup(const ConsoleStartup&) = delete;
    ConsoleStartup& operator=(const ConsoleStartup&) = delete;
    ~ConsoleStartup() { DeleteProcThreadAttributeList(startup.lpAttributeList); }

    STARTUPINFOEXW startup{};

  private:
    std::vector<char> m_Attributes;
};

/// Gives null if it does not start.
HANDLE StartIn(HPCON hConsole, const std::string& line) {
    ConsoleStartup startup(hConsole);
    std::wstring text = WideText(line);
    PROCESS_INFORMATION process{};
    EXPECT_TRUE(CreateProcessW(
        nullptr, text.data(), nullptr, nullptr, FALSE, EXTENDED_STARTUPINFO_PRESENT, nullptr,
        nullptr, &startup.startup.StartupInfo, &process))
        << GetLastError();
    CloseHandle(process.hThread);
    return process.hProcess;
}

}  // namespace

Console::Console(const std::string& line) {
    HANDLE hInputEnd = nullptr;
    HANDLE hShownEnd = nullptr;
    EXPECT_TRUE(CreatePipe(&hInputEnd, &m_hInput, nullptr, 0));
    EXPECT_TRUE(CreatePipe(&m_hShown, &hShownEnd, nullptr, 0));
    EXPECT_EQ(CreatePseudoConsole({60, 24}, hInputEnd, hShownEnd, 0, &m_hConsole), S_OK);
    CloseHandle(hInputEnd);
    CloseHandle(hShownEnd);
    const std::string event = "tunebench-ctrl-c-" + std::to_string(GetCurrentProcessId());
    m_hCtrlC = CreateEventA(nullptr, FALSE, FALSE, event.c_str());
    const std::string runner = (BuildFolder() / "in_console.exe").string();
    m_hProcess =
        StartIn(m_hConsole, '"' + runner + "\" " + event + " \"" + JighostFile() + "\" " + line);
}

Console::~Console() {
    TerminateProcess(m_hProcess, 1);
    ClosePseudoConsole(m_hConsole);
    for (HANDLE handle : {m_hInput, m_hShown, m_hCtrlC, m_hProcess}) {
        CloseHandle(handle);
    }
}

std::string Console::ReadUntil(std::string_view text) {
    std::string all;
    char shown[4096];
    DWORD count = 0;
    while (all.find(text) == std::string::npos) {
        if (::ReadFile(m_hShown, shown, sizeof shown, &count, nullptr) == FALSE) {
            ADD_FAILURE() << text << " has not been shown\n" << all;
            break;
        }
        all.append(shown, count);
    }
    return all;
}

void Console::PressCtrlC() {
    SetEvent(m_hCtrlC);
}

int Console::Wait() {
    EXPECT_EQ(WaitForSingleObject(m_hProcess, 60'000), WAIT_OBJECT_0);
    DWORD unCode = 0;
    GetExitCodeProcess(m_hProcess, &unCode);
    return static_cast<int>(unCode);
}
