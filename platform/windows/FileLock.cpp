// A mutex that is named after the file: there are as many holders as there are of the name, and the
// file itself stays closed, so that its holder may replace it.
#include "platform/FileLock.h"

#include <system_error>

#include "platform/windows/ErrorNumber.h"
#include "platform/windows/OpenFile.h"

FileLock::~FileLock() {
    if (m_nHeld != NOTHING) {
        CloseHandle(reinterpret_cast<HANDLE>(m_nHeld));
    }
}

static std::string NameOf(const std::string& path) {
    BY_HANDLE_FILE_INFORMATION facts{};
    const HANDLE hFile = OpenShared(path, 0);
    const bool bKnown =
        hFile != INVALID_HANDLE_VALUE && GetFileInformationByHandle(hFile, &facts) != FALSE;
    const DWORD error = GetLastError();
    CloseHandle(hFile);
    if (!bKnown) {
        throw std::system_error(ErrorNumber(error), std::generic_category(), "can't read " + path);
    }
    const FILE_IDENTITY file = IdentityOf(facts);
    return "Global\\TUNEBENCH_FILE_" + std::to_string(file.volume) + '_' +
           std::to_string(file.high) + '_' + std::to_string(file.low);
}

// A file that was replaced meanwhile is the former one.
bool FileLock::Take(const std::string& path) {
    for (;;) {
        const std::string name = NameOf(path);
        const HANDLE hMutex = CreateMutexA(nullptr, FALSE, name.c_str());
        const DWORD error = GetLastError();
        if (hMutex != nullptr && error == ERROR_SUCCESS && NameOf(path) == name) {
            m_nHeld = reinterpret_cast<std::intptr_t>(hMutex);
            return true;
        }
        CloseHandle(hMutex);
        if (error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED) {
            return false;  // another user's can't be opened
        }
        if (hMutex == nullptr) {
            throw std::system_error(
                ErrorNumber(error), std::generic_category(), "can't lock " + path);
        }
    }
}
