// The file is open for a block at a time: whoever deletes an open one could not make another one of
// its name. One that was renamed is found again by its number.
#include "platform/FileReader.h"

#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>

#include "platform/Utf8Path.h"
#include "platform/windows/ErrorNumber.h"
#include "platform/windows/OpenFile.h"

struct FileReader::STATE {
    std::string path;
    std::optional<FILE_IDENTITY> identity;  // none for a file that could not be opened
    std::int64_t position = 0;
};

/// Nothing for a handle of no file, with the reason in GetLastError.
static std::optional<BY_HANDLE_FILE_INFORMATION> FactsOf(HANDLE hFile) {
    BY_HANDLE_FILE_INFORMATION facts{};
    const bool bKnown =
        hFile != INVALID_HANDLE_VALUE && GetFileInformationByHandle(hFile, &facts) != FALSE;
    return bKnown ? std::optional(facts) : std::nullopt;
}

FileReader::FileReader(const std::string& path, std::int64_t position)
    : m_pState(std::make_unique<STATE>(STATE{path, {}, position})) {
    const HANDLE hFile = OpenShared(path, GENERIC_READ);
    if (const auto facts = FactsOf(hFile)) {
        m_pState->identity = IdentityOf(*facts);
    } else {
        errno = ErrorNumber(GetLastError());
    }
    CloseHandle(hFile);
}

FileReader::~FileReader() = default;

bool FileReader::IsOpen() const {
    return m_pState->identity.has_value();
}

static HANDLE OpenByNumber(const FILE_IDENTITY& identity, const std::string& path) {
    const auto folder = std::filesystem::absolute(PathOf(path)).parent_path();
    const HANDLE hFolder = OpenShared(folder.string(), 0);
    FILE_ID_DESCRIPTOR number{};
    number.dwSize = sizeof number;
    number.Type = FileIdType;
    number.FileId.HighPart = static_cast<LONG>(identity.high);
    number.FileId.LowPart = identity.low;
    const HANDLE hFile = OpenFileById(hFolder, &number, GENERIC_READ, SHARED_WITH_ALL, nullptr, 0);
    CloseHandle(hFolder);
    return hFile;
}

/// INVALID_HANDLE_VALUE if there is none any more.
static HANDLE OpenAgain(const FILE_IDENTITY& identity, const std::string& path) {
    const HANDLE hFile = OpenShared(path, GENERIC_READ);
    const auto facts = FactsOf(hFile);
    if (facts && IdentityOf(*facts) == identity) {
        return hFile;
    }
    CloseHandle(hFile);
    return OpenByNumber(identity, path);
}

std::size_t FileReader::Read(std::span<char> block) {
    const HANDLE hFile = OpenAgain(*m_pState->identity, m_pState->path);
    if (hFile == INVALID_HANDLE_VALUE) {
        return 0;
    }
    LARGE_INTEGER position;
    position.QuadPart = m_pState->position;
    DWORD unCount = 0;
    const bool bRead =
        SetFilePointerEx(hFile, position, nullptr, FILE_BEGIN) != FALSE &&
        ::ReadFile(hFile, block.data(), static_cast<DWORD>(block.size()), &unCount, nullptr) !=
            FALSE;
    const int nError = ErrorNumber(GetLastError());
    CloseHandle(hFile);
    if (!bRead) {
        throw std::system_error(nError, std::generic_category(), "can't read " + m_pState->path);
    }
    m_pState->position += unCount;
    return unCount;
}

bool FileReader::IsReplaced() const {
    const HANDLE hNamed = OpenShared(m_pState->path, 0);
    const auto named = FactsOf(hNamed);
    CloseHandle(hNamed);
    if (!named) {
        return false;  // deleted, with no new one yet
    }
    const auto size = std::int64_t{named->nFileSizeHigh} << 32 | named->nFileSizeLow;
    return IdentityOf(*named) != *m_pState->identity || size < m_pState->position;
}
