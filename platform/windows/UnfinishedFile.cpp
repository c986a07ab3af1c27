// New files that take the place of former ones by renaming, with what those had of rights.
#include "platform/UnfinishedFile.h"

#include <aclapi.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/LeftFiles.h"
#include "platform/windows/ErrorNumber.h"
#include "platform/windows/OpenFile.h"

namespace fs = std::filesystem;

namespace {

// Whoever looks at a file for a moment, such as a virus scanner, keeps it from being replaced.
const DWORD PATIENCE = 2000;  // milliseconds
const DWORD INTERVAL = 10;

[[noreturn]] void Refuse(const fs::path& path, int error) {
    throw std::system_error(error, std::generic_category(), "can't write " + path.string());
}

/// For calls that give FALSE and leave the reason in GetLastError.
void Check(const fs::path& path, BOOL bResult) {
    if (bResult == FALSE) {
        Refuse(path, ErrorNumber(GetLastError()));
    }
}

void WriteAll(const fs::path& path, HANDLE hFile, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1 << 30));
        DWORD unCount = 0;
        Check(path, ::WriteFile(hFile, bytes.data(), size, &unCount, nullptr));
        bytes.remove_prefix(unCount);
    }
}

HANDLE HandleOf(std::intptr_t nFile) {
    return reinterpret_cast<HANDLE>(nFile);
}

/// Opens a device, a pipe or a file that is there.
HANDLE OpenToWrite(const fs::path& path) {
    return OpenShared(path.string(), GENERIC_WRITE);
}

}  // namespace

UnfinishedFile::UnfinishedFile(const fs::path& name, const fs::path& target)
    : m_Name(name),
      m_Target(target),
      m_Path(UnfinishedPath(target)),
      m_nFile(reinterpret_cast<std::intptr_t>(CreateFileW(
          m_Path.c_str(), GENERIC_WRITE | WRITE_DAC, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
          CREATE_NEW, 0, nullptr))) {
    Check(m_Name, m_nFile != -1 ? TRUE : FALSE);
}

UnfinishedFile::~UnfinishedFile() {
    if (m_nFile != -1) {
        CloseHandle(HandleOf(m_nFile));
    }
    DeleteFileW(m_Path.c_str());
}

void UnfinishedFile::TakeRights() const {
    PACL pRights = nullptr;
    PSECURITY_DESCRIPTOR pDescriptor = nullptr;
    const DWORD error = GetNamedSecurityInfoW(
        m_Target.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &pRights,
        nullptr, &pDescriptor);
    if (error == ERROR_SUCCESS) {
        SetSecurityInfo(
            HandleOf(m_nFile), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, pRights,
            nullptr);
        LocalFree(pDescriptor);
    }
}

void UnfinishedFile::Write(std::string_view bytes, OUTLASTS outlasts) {
    const HANDLE hFile = HandleOf(m_nFile);
    WriteAll(m_Name, hFile, bytes);
    if (outlasts == OUTLASTS::POWER_FAILURES) {
        Check(m_Name, FlushFileBuffers(hFile));
    }
    m_nFile = -1;
    Check(m_Name, CloseHandle(hFile));
}

void UnfinishedFile::Replace() const {
    const DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    for (DWORD waited = 0; MoveFileExW(m_Path.c_str(), m_Target.c_str(), flags) == FALSE;
         waited += INTERVAL) {
        const DWORD error = GetLastError();
        if ((error != ERROR_ACCESS_DENIED && error != ERROR_SHARING_VIOLATION) ||
            waited >= PATIENCE) {
            Refuse(m_Name, ErrorNumber(error));
        }
        Sleep(INTERVAL);
    }
}

bool UnfinishedFile::TakeFreePlace() const {
    const BOOL bMoved = MoveFileExW(m_Path.c_str(), m_Target.c_str(), MOVEFILE_WRITE_THROUGH);
    const DWORD error = GetLastError();
    if (bMoved == FALSE && (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS)) {
        return false;
    }
    Check(m_Name, bMoved);
    return true;
}

void CheckWritable(const fs::path& path) {
    std::error_code ignored;
    if (fs::is_directory(path, ignored)) {
        return;  // is refused for what it is
    }
    const HANDLE hFile = OpenToWrite(path);
    const DWORD error = hFile == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
    CloseHandle(hFile);
    if (error == ERROR_ACCESS_DENIED) {
        Refuse(path, EACCES);
    }
}

/// Opens what is there, does the work with it and closes it.
template <class Work>
static void WithOpened(const fs::path& path, const Work& work) {
    const HANDLE hFile = OpenToWrite(path);
    Check(path, hFile != INVALID_HANDLE_VALUE ? TRUE : FALSE);
    try {
        work(hFile);
    } catch (...) {
        CloseHandle(hFile);
        throw;
    }
    Check(path, CloseHandle(hFile));
}

void WriteDevice(const fs::path& path, std::string_view bytes) {
    WithOpened(path, [&](HANDLE hFile) { WriteAll(path, hFile, bytes); });
}

void AppendToFile(const fs::path& path, std::string_view bytes) {
    WithOpened(path, [&](HANDLE hFile) {
        Check(path, SetFilePointerEx(hFile, {}, nullptr, FILE_END));
        WriteAll(path, hFile, bytes);
        Check(path, FlushFileBuffers(hFile));
    });
}

// "NUL", in whatever folder, is "\\.\NUL"; a pipe has such a path from the start.
bool IsDeviceOrPipe(const fs::path& path) {
    wchar_t szFull[MAX_PATH];
    const DWORD length = GetFullPathNameW(path.c_str(), MAX_PATH, szFull, nullptr);
    return length < MAX_PATH && std::wstring_view(szFull, length).starts_with(L"\\\\.\\");
}

fs::path BehindLinks(fs::path path) {
    const DWORD facts = GetFileAttributesW(path.c_str());
    if (facts == INVALID_FILE_ATTRIBUTES || (facts & FILE_ATTRIBUTE_REPARSE_POINT) == 0) {
        return path;
    }
    wchar_t szFinal[32768];
    const HANDLE hFile = OpenShared(path.string(), 0);
    const DWORD length = GetFinalPathNameByHandleW(hFile, szFinal, std::size(szFinal), 0);
    CloseHandle(hFile);
    return length > 0 && length < std::size(szFinal) ? fs::path(szFinal) : path;
}
