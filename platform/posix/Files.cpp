// No call takes memory, and each is one system call, a write to the end of a file two: the log's
// cost is counted in them.
//
// The number of a file is its descriptor, doubled, and one more if it was opened to append.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <initializer_list>

#include "platform/posix/FileSizeLimit.h"
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
    *pnFile = descriptor << 1 | ((openFlags & _O_APPEND) != 0 ? 1 : 0);
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

/// While it lives, this thread gets none of the signals that a write can raise: of a pipe that
/// nobody reads any more, of a terminal that belongs to another job, of the limit of file sizes.
/// What the program does on them stays as it is.
class WriteSignalsHeld {
  public:
    WriteSignalsHeld() {
        const sigset_t held = SetOf({SIGPIPE, SIGTTOU, SIGXFSZ});
        pthread_sigmask(SIG_BLOCK, &held, &m_Former);
        sigpending(&m_Waiting);
    }
    WriteSignalsHeld(const WriteSignalsHeld&) = delete;
    WriteSignalsHeld& operator=(const WriteSignalsHeld&) = delete;
    ~WriteSignalsHeld() { pthread_sigmask(SIG_SETMASK, &m_Former, nullptr); }

    /// Takes out one that was raised, unless it has waited all along: for a host that blocks it.
    void TakeOut(int signal) const {
        if (sigismember(&m_Waiting, signal) != 0) {
            return;
        }
        const sigset_t raised = SetOf({signal});
        const timespec atOnce{};
        while (sigtimedwait(&raised, nullptr, &atOnce) == -1 && errno == EINTR) {
        }
    }

  private:
    sigset_t m_Former{};
    sigset_t m_Waiting{};
};

}  // namespace

static ssize_t WriteHoldingSignals(int descriptor, const void* pData, unsigned int count) {
    const WriteSignalsHeld signals;
    const ssize_t written = write(descriptor, pData, count);
    const int error = errno;
    if (written < 0 && (error == EPIPE || error == EFBIG)) {
        signals.TakeOut(error == EPIPE ? SIGPIPE : SIGXFSZ);
    }
    errno = error;
    return written;
}

// Two calls that raise nothing serve for nearly all writes of a log: holding the signals takes
// four. Pipes and terminals refuse a write at a place, in silence. A file that grows at its end has
// it there, whatever place is named.
static ssize_t WriteOnce(int file, const void* pData, unsigned int count) {
    if (GrowsAtItsEnd(file) && FileSizeLimit() == RLIM_INFINITY) {
        const ssize_t written = pwrite(Descriptor(file), pData, count, 0);
        if (written >= 0 || errno != ESPIPE) {
            return written;
        }
    }
    return WriteHoldingSignals(Descriptor(file), pData, count);
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
