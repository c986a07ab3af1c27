// A new file beside the old one, through to the disk, then in its place.
#include "platform/WholeFile.h"

#include <cerrno>
#include <cstdio>
#include <string>

#ifdef _WIN32
#include <io.h>
#include <process.h>
#else
#include <unistd.h>
#endif

static int ProcessId() {
#ifdef _WIN32
    return _getpid();
#else
    return getpid();
#endif
}

/// Returns when the bytes are on the disk; 0 is success.
static int WriteThrough(std::FILE* pFile) {
#ifdef _WIN32
    return _commit(_fileno(pFile));
#else
    return fsync(fileno(pFile));
#endif
}

static bool WriteNewFile(const std::filesystem::path& path, std::string_view bytes) {
    std::FILE* pFile = std::fopen(path.string().c_str(), "wb");
    if (pFile == nullptr) {
        return false;
    }
    const bool bWritten = std::fwrite(bytes.data(), 1, bytes.size(), pFile) == bytes.size() &&
                          std::fflush(pFile) == 0 && WriteThrough(pFile) == 0;
    const int error = errno;
    const bool bClosed = std::fclose(pFile) == 0;
    if (!bWritten) {
        errno = error;
    }
    return bWritten && bClosed;
}

void ReplaceFile(const std::filesystem::path& path, std::string_view bytes) {
    // A link stays one: what it leads to is replaced.
    const std::filesystem::path target = std::filesystem::weakly_canonical(path);
    const std::filesystem::path grown = target.string() + '.' + std::to_string(ProcessId());
    std::error_code ignored;
    if (!WriteNewFile(grown, bytes)) {
        const std::error_code error(errno, std::generic_category());
        std::filesystem::remove(grown, ignored);
        throw std::filesystem::filesystem_error("can't write", path, error);
    }
    std::error_code error;
    std::filesystem::rename(grown, target, error);
    if (error) {
        std::filesystem::remove(grown, ignored);
        throw std::filesystem::filesystem_error("can't replace", path, error);
    }
}
