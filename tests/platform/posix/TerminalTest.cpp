// A terminal in a file's place: it does not become the process's own, nor stop a job that is not
// its.
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "platform/FileLock.h"
#include "platform/StandardFiles.h"
#include "tests/support/Support.h"

namespace {

/// The two ends of a terminal of this process's own.
class TerminalTest : public testing::Test {
  protected:
    TerminalTest() {
        EXPECT_EQ(grantpt(m_nMaster), 0);
        EXPECT_EQ(unlockpt(m_nMaster), 0);
        m_Path = ptsname(m_nMaster);
    }
    ~TerminalTest() override { close(m_nMaster); }

    int Open(int openFlags) const {
        int nFile = -1;
        EXPECT_EQ(_sopen_s(&nFile, m_Path.c_str(), openFlags, _SH_DENYNO, _S_IWRITE), 0);
        return nFile;
    }

    const int m_nMaster = posix_openpt(O_RDWR | O_NOCTTY);
    std::string m_Path;
};

/// Has a child that leads a session of its own do the work; tells whether that held.
template <class Work>
bool HoldsInASession(const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(setsid() != -1 && work() ? 0 : 1);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

bool HasTerminal() {
    return open("/dev/tty", O_RDWR) != -1;
}

// Only who can read from it gets it.
TEST_F(TerminalTest, DoesNotBecomeThatOfAHostWithoutOne) {
    EXPECT_TRUE(HoldsInASession([this] { return open(m_Path.c_str(), O_RDWR), HasTerminal(); }));
    EXPECT_TRUE(HoldsInASession([this] { return Open(_O_RDONLY), !HasTerminal(); }));
    EXPECT_TRUE(HoldsInASession([this] { return FileLock().Take(m_Path), !HasTerminal(); }));
}

TEST_F(TerminalTest, StopsNoHostInTheBackgroundThatWrites) {
    EXPECT_TRUE(HoldsInASession([this] {
        const int nTerminal = open(m_Path.c_str(), O_RDWR);
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
    winsize size = {};
    size.ws_col = 123;
    ASSERT_EQ(ioctl(m_nMaster, TIOCSWINSZ, &size), 0);
    EXPECT_EQ(TerminalWidth(m_nMaster), 123U);
}

}  // namespace
