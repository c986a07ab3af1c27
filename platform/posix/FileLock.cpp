// A lock of the open file, which the kernel lets go of with the process.
#include "platform/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

FileLock::~FileLock() {
    if (m_nHeld != NOTHING) {
        close(static_cast<int>(m_nHeld));
    }
}

/// Whether the path still leads to the open file.
static bool IsAt(const std::string& path, int nFile) {
    struct stat opened = {};
    struct stat named = {};
    return fstat(nFile, &opened) == 0 && stat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

// Locked is the file and not its name: a file that was replaced meanwhile is the former one.
bool FileLock::Take(const std::string& path) {
    for (;;) {
        const int nFile = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
        if (nFile == -1) {
            throw std::system_error(errno, std::generic_category(), "can't read " + path);
        }
        const bool bTaken = flock(nFile, LOCK_EX | LOCK_NB) == 0;
        if (bTaken && IsAt(path, nFile)) {
            m_nHeld = nFile;
            return true;
        }
        close(nFile);
        if (!bTaken) {
            return false;
        }
    }
}
