// Kept open, which nobody notices who renames or deletes it: opening takes longer than reading.
#include "platform/FollowedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <tuple>

namespace {

using Identity = std::tuple<dev_t, ino_t>;

/// Nothing for what is no regular file.
std::optional<Identity> IdentityOf(int nFailed, const struct stat& facts) {
    return nFailed == 0 && S_ISREG(facts.st_mode)
               ? std::optional(Identity(facts.st_dev, facts.st_ino))
               : std::nullopt;
}

std::optional<Identity> OpenedIdentity(int nFile) {
    struct stat facts = {};
    return IdentityOf(fstat(nFile, &facts), facts);
}

std::optional<Identity> NamedIdentity(const char* pszPath) {
    struct stat facts = {};
    return IdentityOf(stat(pszPath, &facts), facts);
}

}  // namespace

struct FollowedFile::STATE {
    std::filesystem::path path;
    int nFile = -1;
    std::optional<Identity> identity;

    /// A host that closes all descriptors may have another file under the number by now.
    bool IsOpen() const { return identity && OpenedIdentity(nFile) == identity; }

    void Close() {
        if (IsOpen()) {
            close(nFile);
        }
        nFile = -1;
        identity.reset();
    }
};

FollowedFile::FollowedFile(std::filesystem::path path)
    : m_pState(std::make_unique<STATE>(STATE{std::move(path), -1, {}})) {}

FollowedFile::~FollowedFile() {
    m_pState->Close();
}

// Looked at ahead of opening, which some devices notice; a pipe that has come since does not block.
bool FollowedFile::Look() noexcept {
    const auto named = NamedIdentity(m_pState->path.c_str());
    if (named && named == m_pState->identity && m_pState->IsOpen()) {
        return false;
    }
    m_pState->Close();
    if (named) {
        m_pState->nFile =
            open(m_pState->path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        m_pState->identity = OpenedIdentity(m_pState->nFile);
    }
    return m_pState->identity.has_value();
}

std::uint64_t FollowedFile::Size() const noexcept {
    struct stat facts = {};
    const bool bSame = IdentityOf(fstat(m_pState->nFile, &facts), facts) == m_pState->identity;
    return bSame ? static_cast<std::uint64_t>(facts.st_size) : 0;
}

std::size_t FollowedFile::Read(std::uint64_t position, std::span<char> block) const noexcept {
    const ssize_t count =
        pread(m_pState->nFile, block.data(), block.size(), static_cast<off_t>(position));
    return static_cast<std::size_t>(std::max<ssize_t>(count, 0));
}
