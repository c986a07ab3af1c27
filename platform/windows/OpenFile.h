// Files opened in a way that keeps nobody from writing, renaming or deleting them.
#pragma once

#include <string>

#include "platform/Platform.h"
#include "platform/windows/WideText.h"

constexpr DWORD SHARED_WITH_ALL = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Opens a file or a folder. `access` is that of CreateFileW; INVALID_HANDLE_VALUE for what can't
/// be opened, with the code in GetLastError.
inline HANDLE OpenShared(const std::string& path, DWORD access) {
    return CreateFileW(
        WideText(path).c_str(), access, SHARED_WITH_ALL, nullptr, OPEN_EXISTING,
        FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

/// What tells an open file from all others of the machine.
struct FILE_IDENTITY {
    bool operator==(const FILE_IDENTITY&) const = default;

    DWORD volume = 0;
    DWORD high = 0;
    DWORD low = 0;
};

inline FILE_IDENTITY IdentityOf(const BY_HANDLE_FILE_INFORMATION& facts) {
    return {facts.dwVolumeSerialNumber, facts.nFileIndexHigh, facts.nFileIndexLow};
}
