// Writing may raise a signal, which is the host's own matter: it meets none of the module's.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>

#include "tests/support/FileFaults.h"
#include "tests/support/Support.h"
#include "tests/support/SupportProcess.h"

namespace {

const char PIPE[] = "pipe";

/// The signals that reached this process, as a host counts them that handles them.
std::atomic<int> s_nRaised = 0;

/// The pipe opens while it has a reader, who is gone when it comes to the second write.
void WriteToPipeWithoutReader(int openFlags) {
    const int reader = open(PIPE, O_RDONLY | O_NONBLOCK);
    int nFile = -1;
    EXPECT_EQ(_sopen_s(&nFile, PIPE, _O_WRONLY | openFlags, _SH_DENYNO, _S_IWRITE), 0);
    EXPECT_EQ(_write(nFile, "text", 4), 4);
    close(reader);
    EXPECT_EQ(_write(nFile, "text", 4), -1);
    EXPECT_EQ(errno, EPIPE);
    EXPECT_EQ(_close(nFile), 0);
}

void WriteBeyondTheSizeLimit(int openFlags) {
    const FileFault fault = FileSizeLimit(0);
    int nFile = -1;
    EXPECT_EQ(_sopen_s(&nFile, "file", _O_WRONLY | _O_CREAT | openFlags, _SH_DENYNO, _S_IWRITE), 0);
    EXPECT_EQ(_write(nFile, "text", 4), -1);
    EXPECT_EQ(errno, EFBIG);
    EXPECT_EQ(_close(nFile), 0);
}

struct RAISING_WRITE {
    int signal;
    void (*pWrite)(int openFlags);
};

class RaisingWriteTest : public ModuleTest, public testing::WithParamInterface<RAISING_WRITE> {
  protected:
    RaisingWriteTest() { EXPECT_EQ(mkfifo(PIPE, 0600), 0); }

    const int m_Signal = GetParam().signal;
    void (*const m_Write)(int openFlags) = GetParam().pWrite;
};

INSTANTIATE_TEST_SUITE_P(
    Signals, RaisingWriteTest,
    testing::Values(
        RAISING_WRITE{SIGPIPE, WriteToPipeWithoutReader},
        RAISING_WRITE{SIGXFSZ, WriteBeyondTheSizeLimit}));

TEST_P(RaisingWriteTest, HostThatHandlesTheSignalOrDiesOfItGetsNone) {
    for (const int openFlags : {_O_APPEND, _O_TRUNC, 0}) {
        s_nRaised = 0;
        const SignalHandler handler(m_Signal, [](int) { ++s_nRaised; });
        m_Write(openFlags);
        EXPECT_EQ(s_nRaised, 0);
        const SignalHandler none(m_Signal, SIG_DFL);
        m_Write(openFlags);
    }
}

TEST_P(RaisingWriteTest, HostThatBlocksTheSignalFindsItsOwnAlone) {
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, m_Signal);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    const timespec atOnce{};
    m_Write(_O_APPEND);
    EXPECT_EQ(sigtimedwait(&blocked, nullptr, &atOnce), -1);
    std::raise(m_Signal);
    m_Write(_O_APPEND);
    EXPECT_EQ(sigtimedwait(&blocked, nullptr, &atOnce), m_Signal);
    pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
}

}  // namespace
