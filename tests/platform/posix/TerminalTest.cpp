// A terminal in a file's place: it does not become the process's own, nor stop a job that is not
// its.
#include <fcntl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>

#include "platform/FileLock.h"
#include "platform/StandardFiles.h"
#include "tests/support/Support.h"
#include "tests/support/SupportProcess.h"
#include "tests/support/posix/Terminal.h"

namespace {

class TerminalTest : public testing::Test {
  protected:
    int Open(int openFlags) const {
        int nFile = -1;
        EXPECT_EQ(_sopen_s(&nFile, m_Terminal.path.c_str(), openFlags, _SH_DENYNO, _S_IWRITE), 0);
        return nFile;
    }

    int OpenToRead() const { return open(m_Terminal.path.c_str(), O_RDWR); }

    const Terminal m_Terminal;
};

/// Has a child that leads a session of its own do the work; tells whether that held.
template <class Work>
bool HoldsInASession(const Work& work) {
    return HoldsInChild([&] { return setsid() != -1 && work(); });
}

bool HasTerminal() {
    return open("/dev/tty", O_RDWR) != -1;
}

// Only who can read from it gets it.
TEST_F(TerminalTest, DoesNotBecomeThatOfAHostWithoutOne) {
    EXPECT_TRUE(HoldsInASession([this] { return OpenToRead(), HasTerminal(); }));
    EXPECT_TRUE(HoldsInASession([this] { return Open(_O_RDONLY), !HasTerminal(); }));
    EXPECT_TRUE(
        HoldsInASession([this] { return FileLock().Take(m_Terminal.path), !HasTerminal(); }));
}

TEST_F(TerminalTest, StopsNoHostInTheBackgroundThatWrites) {
    EXPECT_TRUE(HoldsInASession([this] {
        const int nTerminal = OpenToRead();
        termios modes = {};
        tcgetattr(nTerminal, &modes);
        modes.c_lflag |= TOSTOP;
        tcsetattr(nTerminal, TCSANOW, &modes);
        const pid_t host = fork();
        if (host == 0) {
            setpgid(0, 0);
            _exit(_write(Open(_O_WRONLY | _O_APPEND), "text", 4) == 4 ? 0 : 1);
        }
        int status = -1;
        waitpid(host, &status, WUNTRACED);
        kill(host, SIGKILL);
        return status == 0;
    }));
}

TEST_F(TerminalTest, TellsItsWidth) {
    EXPECT_EQ(TerminalWidth(OpenToRead()), 60U);
}

}  // namespace
