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

/// Does the work in a child, and tells whether that held.
template <class Work>
bool HoldsInChild(const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(work() ? 0 : 1);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

TEST(ProcessTest, ProcessesAreToldFromOneAnother) {
    const std::uint32_t forks = ForkCount();
    EXPECT_TRUE(HoldsInChild([=] { return ForkCount() == forks + 1; }));
    EXPECT_EQ(ForkCount(), forks);
    const uid_t other = getuid() == 0 ? 65534 : getuid();
    EXPECT_TRUE(HoldsInChild([=] { return setuid(other) == 0 && IsProcessThere(1); }))
        << "one that this user may not send a signal";
}

TEST(ProcessTest, FirstSignalToEndIsCaughtUnlessItIsIgnored) {
    static int s_nCaught;
    const std::array<int, 3> signals = {SIGINT, SIGTERM, SIGHUP};
    for (const int nIgnored : signals) {
        std::array<struct sigaction, signals.size()> former{};
        for (std::size_t i = 0; i < signals.size(); ++i) {
            struct sigaction action = {};
            action.sa_handler = signals[i] == nIgnored ? SIG_IGN : SIG_DFL;
            ASSERT_EQ(sigaction(signals[i], &action, &former[i]), 0);
        }
        CatchEndSignals([](int nSignal) { s_nCaught = nSignal; });
        for (std::size_t i = 0; i < signals.size(); ++i) {
            s_nCaught = 0;
            std::raise(signals[i]);
            EXPECT_EQ(s_nCaught, signals[i] == nIgnored ? 0 : signals[i]);
            struct sigaction second = {};
            EXPECT_EQ(sigaction(signals[i], &former[i], &second), 0);
            EXPECT_EQ(second.sa_handler, signals[i] == nIgnored ? SIG_IGN : SIG_DFL);
        }
    }
}

TEST(ProcessTest, WriteBeyondTheSizeLimitFailsAndEndsNothing) {
    const FreshFolder folder;
    const auto former = std::signal(SIGXFSZ, SIG_DFL);
    OutliveSizeLimits();
    const Limit none(RLIMIT_FSIZE, 0);
    const int nFile = open("file", O_WRONLY | O_CREAT, 0600);
    EXPECT_EQ(WriteStandardFile(nFile, "x"), EFBIG);
    close(nFile);
    std::signal(SIGXFSZ, former);
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
    struct sigaction own = {};
    own.sa_handler = [](int) {};
    std::array<struct sigaction, 3> former{};
    const std::array<int, 3> signals = {SIGXFSZ, SIGPIPE, SIGTTOU};
    for (std::size_t i = 0; i < signals.size(); ++i) {
        ASSERT_EQ(sigaction(signals[i], &own, &former[i]), 0);
    }
    sigset_t before;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);
    const auto expectOwn = [&] {
        sigset_t now;
        pthread_sigmask(SIG_SETMASK, nullptr, &now);
        for (const int nSignal : signals) {
            struct sigaction found = {};
            EXPECT_EQ(sigaction(nSignal, nullptr, &found), 0);
            EXPECT_EQ(found.sa_handler, own.sa_handler) << nSignal;
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
    for (std::size_t i = 0; i < signals.size(); ++i) {
        sigaction(signals[i], &former[i], nullptr);
    }
}

}  // namespace
