// By the calls of the run-time library.
#include "platform/GrowingFile.h"

#include <algorithm>
#include <cerrno>

#include "platform/Platform.h"

int GrowingFile::Create(const std::filesystem::path& path) {
    Close();
    LookForLimit();
    return _wsopen_s(
        &m_nFile, path.c_str(),
        _O_WRONLY | _O_CREAT | _O_EXCL | _O_APPEND | _O_BINARY | _O_NOINHERIT, _SH_DENYNO,
        _S_IREAD | _S_IWRITE);
}

// There is none but the disk's.
void GrowingFile::LookForLimit() {
    m_Limit = UINT64_MAX;
}

int GrowingFile::Write(std::string_view text) {
    const std::size_t most = 0x10000000;
    std::string_view rest = text;
    while (!rest.empty()) {
        errno = ENOSPC;  // for a full disk that takes nothing and calls it no failure
        const int nCount =
            _write(m_nFile, rest.data(), static_cast<unsigned int>(std::min(rest.size(), most)));
        if (nCount <= 0) {
            const int nError = errno;
            _chsize_s(m_nFile, static_cast<std::int64_t>(m_Size));
            return nError;
        }
        rest.remove_prefix(static_cast<std::size_t>(nCount));
    }
    m_Size += text.size();
    return 0;
}

void GrowingFile::Close() {
    if (m_nFile != -1) {
        _close(m_nFile);
    }
    m_nFile = -1;
    m_Size = 0;
}
