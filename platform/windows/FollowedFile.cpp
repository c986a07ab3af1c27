// Open for one look at a time: whoever deletes an open file can't make another one of its name.
#include "platform/FollowedFile.h"

#include <optional>

#include "platform/windows/OpenFile.h"

namespace {

/// INVALID_HANDLE_VALUE for what is no regular file.
HANDLE OpenRegular(const std::filesystem::path& path) {
    const HANDLE hFile = CreateFileW(
        path.c_str(), GENERIC_READ, SHARED_WITH_ALL, nullptr, OPEN_EXISTING, 0, nullptr);
    if (hFile == INVALID_HANDLE_VALUE || GetFileType(hFile) == FILE_TYPE_DISK) {
        return hFile;
    }
    CloseHandle(hFile);
    return INVALID_HANDLE_VALUE;
}

struct FOUND {
    FILE_IDENTITY identity;
    std::uint64_t size = 0;
};

std::optional<FOUND> FactsAt(const std::filesystem::path& path) {
    const HANDLE hFile = OpenRegular(path);
    if (hFile == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    BY_HANDLE_FILE_INFORMATION facts{};
    const bool bKnown = GetFileInformationByHandle(hFile, &facts) != FALSE;
    CloseHandle(hFile);
    const auto size = std::uint64_t{facts.nFileSizeHigh} << 32U | facts.nFileSizeLow;
    return bKnown ? std::optional(FOUND{IdentityOf(facts), size}) : std::nullopt;
}

}  // namespace

struct FollowedFile::STATE {
    std::filesystem::path path;
    std::optional<FILE_IDENTITY> identity;
};

FollowedFile::FollowedFile(std::filesystem::path path)
    : m_pState(std::make_unique<STATE>(STATE{std::move(path), {}})) {}

FollowedFile::~FollowedFile() = default;

bool FollowedFile::Look() noexcept {
    const auto found = FactsAt(m_pState->path);
    const auto former = m_pState->identity;
    m_pState->identity = found ? std::optional(found->identity) : std::nullopt;
    return found && m_pState->identity != former;
}

std::uint64_t FollowedFile::Size() const noexcept {
    const auto found = FactsAt(m_pState->path);
    return found ? found->size : 0;
}

std::size_t FollowedFile::Read(std::uint64_t position, std::span<char> block) const noexcept {
    const HANDLE hFile = OpenRegular(m_pState->path);
    if (hFile == INVALID_HANDLE_VALUE) {
        return 0;
    }
    LARGE_INTEGER place;
    place.QuadPart = static_cast<LONGLONG>(position);
    DWORD unCount = 0;
    if (SetFilePointerEx(hFile, place, nullptr, FILE_BEGIN) == FALSE ||
        ::ReadFile(hFile, block.data(), static_cast<DWORD>(block.size()), &unCount, nullptr) ==
            FALSE) {
        unCount = 0;
    }
    CloseHandle(hFile);
    return unCount;
}
