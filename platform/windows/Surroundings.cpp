// Told by the system.
#include "platform/Surroundings.h"

namespace fs = std::filesystem;

fs::path LibraryFileOf(const void* pAddress) {
    HMODULE library = nullptr;
    wchar_t szPath[32768] = {};  // as long as a path may be
    const bool bTold =
        GetModuleHandleExW(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            static_cast<const wchar_t*>(pAddress), &library) != 0 &&
        GetModuleFileNameW(library, szPath, std::size(szPath)) < std::size(szPath);
    return bTold ? fs::path(szPath) : fs::path();
}

HMODULE LoadedLibrary(const fs::path& file) {
    return GetModuleHandleW(file.c_str());
}

// A library's calls of what it defines always stay within it.
HMODULE LoadBesideNamesake(const fs::path& file, const char* /*pszName*/) {
    return LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

std::string MachineName() {
    char szName[MAX_COMPUTERNAME_LENGTH + 1] = {};
    DWORD size = sizeof szName;
    return GetComputerNameA(szName, &size) != 0 ? szName : "";
}

std::uint32_t ProcessNumber() {
    return GetCurrentProcessId();
}

std::uint32_t ForkCount() {
    return 0;
}

bool IsProcessThere(std::uint32_t number) {
    HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, number);
    if (process == nullptr) {
        return GetLastError() == ERROR_ACCESS_DENIED;
    }
    const bool bRuns = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return bRuns;
}

LOCAL_TIME LocalTime(std::time_t moment) {
    LOCAL_TIME local = {};
    localtime_s(&local.time, &moment);
    std::tm asUtc = local.time;
    local.minutesEast = static_cast<int>((_mkgmtime(&asUtc) - moment) / 60);
    return local;
}
