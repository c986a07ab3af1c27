// Processes: those that are started, and what this one finds out about itself and has happen to it.
#include "platform/Process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <filesystem>
#include <stdexcept>

#include "platform/Signals.h"
#include "platform/StandardFiles.h"
#include "platform/Surroundings.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Support.h"
#include "tests/support/SupportProcess.h"

using testing::ThrowsMessage;

namespace {

TEST(ProcessTest, ProcessTellsItsLinesAndItsEnd) {
    const FreshFolder folder;
    Process echo("/bin/cat", {});
    EXPECT_EQ(kill(echo.Id(), 0), 0);
    const std::string line(10'000, 'l');
    echo.WriteLine(line);
    echo.WriteLine("second");
    EXPECT_EQ(echo.ReadLine(), line);
    EXPECT_EQ(echo.ReadLine(), "second");
    echo.CloseInput();
    EXPECT_EQ(echo.ReadLine(), std::nullopt);
    EXPECT_EQ(echo.EndText(), "exit code 0");
    echo.WriteLine("nobody reads it");
    echo.Kill();
    EXPECT_EQ(echo.Wait(), 0) << "it had ended before";

    Process shell("/bin/sh", {"-c", "echo ready; printf cut; exit 3"});
    EXPECT_EQ(shell.ReadLine(), "ready");
    EXPECT_EQ(shell.ReadLine(), std::nullopt) << "the line has no end";
    EXPECT_EQ(shell.EndText(), "exit code 3");

    const auto former = std::signal(SIGINT, SIG_IGN);  // as a shell has its background do
    Process waiting("/bin/cat", {});
    std::signal(SIGINT, former);
    EXPECT_EQ(kill(waiting.Id(), SIGINT), 0);
    EXPECT_EQ(waiting.Wait(), -1);
    EXPECT_EQ(waiting.EndText(), "signal 2, Interrupt");
    const int nDescriptor = NextDescriptor();
    EXPECT_THAT(
        [] { Process("/none", {}); },
        ThrowsMessage<std::runtime_error>("/none does not start (error 2)"));
    EXPECT_EQ(NextDescriptor(), nDescriptor);
    std::exception_ptr refusal;
    {
        // Nothing else is done under the limit: a sanitizer opens files for its checks.
        const Limit none(RLIMIT_NOFILE, static_cast<rlim_t>(nDescriptor));
        try {
            Process("/bin/true", {});
        } catch (...) {
            refusal = std::current_exception();
        }
    }
    ASSERT_TRUE(refusal);
    EXPECT_THAT(
        [&] { std::rethrow_exception(refusal); },
        ThrowsMessage<std::runtime_error>("no socket for /bin/true"));
    WriteFile("errors", "of a former process");
    EXPECT_EQ(Process("/bin/sh", {"-c", "echo new >&2"}, "errors").Wait(), 0);
    EXPECT_EQ(ReadFile("errors"), "new\n");
}

TEST(ProcessTest, ProcessIsAtItsEndWhateverItHasStarted) {
    Process process("/bin/sh", {"-c", "sleep 10000 & echo $!"});
    const std::optional<std::string> started = process.ReadLine();
    ASSERT_TRUE(started);
    process.End();
    EXPECT_EQ(process.ReadLine(), std::nullopt);
    kill(std::stoi(*started), SIGKILL);
}

TEST(ProcessTest, ProcessesAreToldFromOneAnother) {
    const std::uint32_t forks = ForkCount();
    EXPECT_TRUE(HoldsInChild([=] { return ForkCount() == forks + 1; }));
    EXPECT_EQ(ForkCount(), forks);
    const uid_t other = getuid() == 0 ? 65534 : getuid();
    EXPECT_TRUE(HoldsInChild([=] { return setuid(other) == 0 && IsProcessThere(1); }))
        << "one that this user may not send a signal";
}

void (*HandlerOf(int signal))(int) {
    struct sigaction action = {};
    EXPECT_EQ(sigaction(signal, nullptr, &action), 0);
    return action.sa_handler;
}

TEST(ProcessTest, FirstSignalToEndIsCaughtUnlessItIsIgnored) {
    static int s_nCaught;
    for (const int nIgnored : {SIGINT, SIGTERM, SIGHUP}) {
        const auto before = [=](int nSignal) { return nSignal == nIgnored ? SIG_IGN : SIG_DFL; };
        const SignalHandler interrupt(SIGINT, before(SIGINT));
        const SignalHandler terminate(SIGTERM, before(SIGTERM));
        const SignalHandler hangUp(SIGHUP, before(SIGHUP));
        CatchEndSignals([](int nSignal) { s_nCaught = nSignal; });
        for (const int nSignal : {SIGINT, SIGTERM, SIGHUP}) {
            s_nCaught = 0;
            std::raise(nSignal);
            EXPECT_EQ(s_nCaught, nSignal == nIgnored ? 0 : nSignal);
            EXPECT_EQ(HandlerOf(nSignal), before(nSignal)) << "of a second one";
        }
    }
}

TEST(ProcessTest, WriteBeyondTheSizeLimitFailsAndEndsNothing) {
    const FreshFolder folder;
    const SignalHandler former(SIGXFSZ, SIG_DFL);
    OutliveSizeLimits();
    const Limit none(RLIMIT_FSIZE, 0);
    const int nFile = open("file", O_WRONLY | O_CREAT, 0600);
    EXPECT_EQ(WriteStandardFile(nFile, "x"), EFBIG);
    close(nFile);
}

TEST(ProcessTest, LocalTimeTellsItsDistance) {
    const char* pszFormer = getenv("TZ");
    const std::string former = pszFormer == nullptr ? "" : pszFormer;
    for (const auto& [pszZone, minutes] : {std::pair("EAST-5:30", 330), {"WEST3:15", -195}}) {
        setenv("TZ", pszZone, 1);
        tzset();
        const LOCAL_TIME local = LocalTime(86'400);
        EXPECT_EQ(local.minutesEast, minutes);
        EXPECT_EQ(local.time.tm_hour * 60 + local.time.tm_min, (minutes + 1440) % 1440);
    }
    pszFormer == nullptr ? unsetenv("TZ") : setenv("TZ", former.c_str(), 1);
    tzset();
}

// The module writes with them held back, and leaves all as it has found it.
TEST_F(ModuleTest, HostHasItsSignalsBackWhileItRunsAndWhenTheModuleIsGone) {
    void (*const pOwn)(int) = [](int) {};
    const SignalHandler tooLarge(SIGXFSZ, pOwn);
    const SignalHandler noReader(SIGPIPE, pOwn);
    const SignalHandler noTerminal(SIGTTOU, pOwn);
    sigset_t before;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    const auto expectOwn = [&] {
        sigset_t now;
        pthread_sigmask(SIG_SETMASK, nullptr, &now);
        for (const int nSignal : {SIGXFSZ, SIGPIPE, SIGTTOU}) {
            EXPECT_EQ(HandlerOf(nSignal), pOwn) << nSignal;
            EXPECT_EQ(sigismember(&now, nSignal), sigismember(&before, nSignal)) << nSignal;
        }
    };
    LoadAgain();
    EXPECT_EQ(Module().Register(), 0);
    {
        const Limit small(RLIMIT_FSIZE, std::filesystem::file_size(LOG_FILE));
        EXPECT_EQ(Run("SaveBodyID"), 0);
        expectOwn();
    }
    Unload();
    expectOwn();
}

}  // namespace
