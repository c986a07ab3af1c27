// Standard files below what the run-time library makes of them.
#include "platform/StandardFiles.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

// In their order: a new file gets the lowest number that is free. Open in the wrong direction, they
// fail as closed ones do.
void KeepStandardFiles() {
    for (const int nFile : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(nFile, F_GETFD) == -1 && errno == EBADF) {
            open("/dev/null", nFile == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

/// Whoever shares the file may have set it not to wait.
static void WaitForRoom(int nFile) {
    pollfd room = {nFile, POLLOUT, 0};
    poll(&room, 1, -1);
}

int WriteStandardFile(int nFile, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(nFile, bytes.data(), bytes.size());
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            WaitForRoom(nFile);
        } else if (errno != EINTR) {
            return errno;
        }
    }
    return 0;
}

std::size_t TerminalWidth(int nFile) {
    winsize size = {};
    return ioctl(nFile, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

std::string StandardFilePath(int nFile) {
    return nFile == STANDARD_OUTPUT ? "/dev/stdout" : "/dev/stderr";
}
