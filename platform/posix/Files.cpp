// Each call on a regular file is one system call and takes no memory: the log's cost is counted in
// them.
//
// The number of a file is its descriptor, doubled, and one more where all that is written goes to
// its end: it was opened to append, or emptied.
#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <initializer_list>

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
// host; and a terminal does not become the one that the host gets its signals from.
static int NativeFlags(int openFlags) {
    return ((openFlags & _O_WRONLY) != 0 ? O_WRONLY : O_RDONLY) |
           ((openFlags & _O_APPEND) != 0 ? O_APPEND : 0) |
           ((openFlags & _O_CREAT) != 0 ? O_CREAT : 0) |
           ((openFlags & _O_TRUNC) != 0 ? O_TRUNC : 0) | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
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
    const int descriptor = open(szNative, NativeFlags(openFlags), mode);
    if (descriptor < 0) {
        return errno;
    }
    *pnFile = descriptor << 1 | ((openFlags & (_O_APPEND | _O_TRUNC)) != 0 ? 1 : 0);
    return 0;
}

static int Descriptor(int file) {
    return file >> 1;  // -1 stays -1
}

static bool GrowsAtItsEnd(int file) {
    return (file & 1) != 0;
}

static sigset_t SetOf(std::initializer_list<int> signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : signals) {
        sigaddset(&set, signal);
    }
    return set;
}

namespace {

/// While it lives, this thread gets neither the signal of a pipe that nobody reads any more nor
/// that of a terminal that belongs to another job. What the program does on them stays as it is.
class StreamSignalsHeld {
  public:
    StreamSignalsHeld() {
        const sigset_t held = SetOf({SIGPIPE, SIGTTOU});
        pthread_sigmask(SIG_BLOCK, &held, &m_Former);
        sigpending(&m_Waiting);
    }
    StreamSignalsHeld(const StreamSignalsHeld&) = delete;
    StreamSignalsHeld& operator=(const StreamSignalsHeld&) = delete;
    ~StreamSignalsHeld() { pthread_sigmask(SIG_SETMASK, &m_Former, nullptr); }

    /// Takes out the signal of a pipe, unless one has waited all along: for a host that blocks it.
    void TakeOut() const {
        if (sigismember(&m_Waiting, SIGPIPE) != 0) {
            return;
        }
        const sigset_t pipe = SetOf({SIGPIPE});
        const timespec atOnce{};
        while (sigtimedwait(&pipe, nullptr, &atOnce) == -1 && errno == EINTR) {
        }
    }

  private:
    sigset_t m_Former{};
    sigset_t m_Waiting{};
};

}  // namespace

static ssize_t WriteToStream(int descriptor, const void* pData, unsigned int count) {
    const StreamSignalsHeld signals;
    const ssize_t written = write(descriptor, pData, count);
    if (written < 0 && errno == EPIPE) {
        signals.TakeOut();
        errno = EPIPE;
    }
    return written;
}

// Pipes and terminals, which alone raise those signals, have no end to write at: they refuse that,
// in silence. A system without the call does so for all files.
static ssize_t WriteOnce(int file, const void* pData, unsigned int count) {
    if (GrowsAtItsEnd(file)) {
        const iovec bytes{const_cast<void*>(pData), count};
        const ssize_t written = pwritev2(Descriptor(file), &bytes, 1, 0, RWF_APPEND);
        if (written >= 0 || (errno != ESPIPE && errno != ENOTSUP && errno != ENOSYS)) {
            return written;
        }
    }
    return WriteToStream(Descriptor(file), pData, count);
}

int _write(int file, const void* pData, unsigned int count) {
    ssize_t written = 0;
    do {
        written = WriteOnce(file, pData, count);
    } while (written < 0 && errno == EINTR);  // interrupted ahead of the first byte
    return static_cast<int>(written);
}

int _close(int file) {
    // An interrupted close has let go of the descriptor; a second one could hit another file.
    return close(Descriptor(file)) == 0 || errno == EINTR ? 0 : -1;
}
