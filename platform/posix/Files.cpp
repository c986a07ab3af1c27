// Each call here is one system call and takes no memory: the log's cost is counted in them.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/NativePath.h"
#include "platform/posix/WindowsCalls.h"

bool ToNativePath(const char* pszPath, char (&szNative)[PATH_MAX]) noexcept {
    for (char& character : szNative) {
        character = *pszPath == '\\' ? '/' : *pszPath;
        if (*pszPath++ == '\0') {
            return true;
        }
    }
    return false;
}

// Not blocking, so that a named pipe in a file's place fails the opening and does not hang the
// host.
static int NativeFlags(int openFlags) {
    return ((openFlags & _O_WRONLY) != 0 ? O_WRONLY : O_RDONLY) |
           ((openFlags & _O_APPEND) != 0 ? O_APPEND : 0) |
           ((openFlags & _O_CREAT) != 0 ? O_CREAT : 0) |
           ((openFlags & _O_TRUNC) != 0 ? O_TRUNC : 0) | O_CLOEXEC | O_NONBLOCK;
}

errno_t _sopen_s(int* pnFile, const char* pszPath, int openFlags, int /*sharing*/, int permission) {
    if (pnFile == nullptr) {
        return EINVAL;
    }
    *pnFile = -1;
    if (pszPath == nullptr) {
        return EINVAL;
    }
    char szNative[PATH_MAX];
    if (!ToNativePath(pszPath, szNative)) {
        return ENAMETOOLONG;
    }
    const mode_t mode = (permission & _S_IWRITE) != 0 ? 0666 : 0444;
    *pnFile = open(szNative, NativeFlags(openFlags), mode);
    return *pnFile < 0 ? errno : 0;
}

int _write(int file, const void* pData, unsigned int count) {
    ssize_t written = 0;
    do {
        written = write(file, pData, count);
    } while (written < 0 && errno == EINTR);  // interrupted ahead of the first byte
    return static_cast<int>(written);
}

int _close(int file) {
    // An interrupted close has let go of the descriptor; a second one could hit another file.
    return close(file) == 0 || errno == EINTR ? 0 : -1;
}
