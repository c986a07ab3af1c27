// The file system fails: operations that use no file of their own do not notice, the others give
// their codes, files made before stay complete, and the log goes on as soon as it can.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>

#include <map>
#include <optional>

#include "tests/support/Driver.h"
#include "tests/support/Support.h"
#include "tests/support/SupportProcess.h"

namespace {

const char PIPE[] = "pipe";

/// Counts a signal that reaches this process, as a host would that handles it.
class SignalCount {
  public:
    explicit SignalCount(int signal) : m_Signal(signal) {
        s_nCount = 0;
        struct sigaction action {};
        action.sa_handler = [](int) { ++s_nCount; };
        EXPECT_EQ(sigaction(signal, &action, &m_Former), 0);
    }
    SignalCount(const SignalCount&) = delete;
    SignalCount& operator=(const SignalCount&) = delete;
    ~SignalCount() { sigaction(m_Signal, &m_Former, nullptr); }

    int Count() const { return s_nCount; }

  private:
    inline static std::atomic<int> s_nCount = 0;
    int m_Signal;
    struct sigaction m_Former {};
};

/// Leaves no descriptor to open a file with.
class NoDescriptors {
  public:
    NoDescriptors() : m_Limit(RLIMIT_NOFILE, static_cast<rlim_t>(NextDescriptor())) {}

  private:
    Limit m_Limit;
};

/// Takes the permission to write from the log, the folder of the log and the dump's folder.
class NothingWritable {
  public:
    NothingWritable() {
        Change(std::filesystem::perm_options::remove);
        m_User.emplace();
    }
    NothingWritable(const NothingWritable&) = delete;
    NothingWritable& operator=(const NothingWritable&) = delete;
    ~NothingWritable() {
        m_User.reset();
        Change(std::filesystem::perm_options::add);
    }

  private:
    static void Change(std::filesystem::perm_options change) {
        for (const char* pszPath : {LOG_FILE, ".", "dump"}) {
            std::filesystem::permissions(pszPath, std::filesystem::perms::owner_write, change);
        }
    }

    std::optional<OrdinaryUser> m_User;
};

class FolderInPlaceOfLog {
  public:
    FolderInPlaceOfLog() {
        std::filesystem::remove(LOG_FILE);
        std::filesystem::create_directory(LOG_FILE);
    }
    FolderInPlaceOfLog(const FolderInPlaceOfLog&) = delete;
    FolderInPlaceOfLog& operator=(const FolderInPlaceOfLog&) = delete;
    ~FolderInPlaceOfLog() { std::filesystem::remove(LOG_FILE); }
};

/// Not a byte can be written to any file.
class NoFileMayGrow {
  private:
    Limit m_Limit{RLIMIT_FSIZE, 0};
};

using Results = std::map<std::string, std::int32_t>;

class FileFaultTest : public ModuleTest {
  protected:
    void TearDown() override { EXPECT_EQ(NextDescriptor(), m_nDescriptor) << "a file is open"; }

    /// Runs all operations during the fault and gives the results that are not 0.
    template <class Fault>
    Results RunAllDuring() const {
        Results failed;
        const Fault fault;
        // Opened during the fault, because it is the user's own; its folder was made before.
        const FolderBlock block;
        block.Write(m_FolderText);
        for (const OPERATION_INFO* pOperation : AllOperations()) {
            RecordBytes record = ValidRecord(*pOperation);
            const std::int32_t result = Operation(pOperation->name)(record.data());
            if (result != 0) {
                failed[pOperation->name] = result;
            }
        }
        return failed;
    }

    void ExpectThatLogGoesOn() {
        EXPECT_EQ(Run("SaveBodyID"), 0);
        EXPECT_EQ(Log(), Frame("SaveBodyID", 0));
    }

    static std::size_t FileCount() {
        return static_cast<std::size_t>(std::distance(
            std::filesystem::directory_iterator("dump"), std::filesystem::directory_iterator()));
    }

    const int m_nDescriptor = NextDescriptor();
    const Surroundings m_Surroundings;
    const std::string m_FolderText = FolderBlockText("dump");
};

TEST_F(FileFaultTest, LogThatCannotBeWrittenFailsNoOperation) {
    EXPECT_THAT(RunAllDuring<FolderInPlaceOfLog>(), IsEmpty());
    ExpectThatLogGoesOn();
}

TEST_F(FileFaultTest, NothingIsWritable) {
    const std::string before = ReadFile(LOG_FILE);
    EXPECT_THAT(
        RunAllDuring<NothingWritable>(),
        testing::UnorderedElementsAre(
            testing::Pair("LoadPropertyData", 7), testing::Pair("GetCameraLog", 1)));
    EXPECT_EQ(ReadFile(LOG_FILE), before);
    EXPECT_EQ(FileCount(), 0U);
    ExpectThatLogGoesOn();
}

TEST_F(FileFaultTest, NoDescriptorIsLeft) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizers' own checks need descriptors";
#endif
    EXPECT_THAT(
        RunAllDuring<NoDescriptors>(),
        testing::UnorderedElementsAre(
            testing::Pair("LoadPropertyData", 7), testing::Pair("GetCameraLog", 1),
            testing::Pair("CopyDLResonantFrequency", 1),
            testing::Pair("GetBoardInfDLResonantFrequency", 1),
            testing::Pair("SetBoardInfDLResonantFrequency", 1)));
    ExpectThatLogGoesOn();
}

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
    const NoFileMayGrow fault;
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

class RaisingWriteTest : public FileFaultTest, public testing::WithParamInterface<RAISING_WRITE> {
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
        const SignalCount raised(m_Signal);
        m_Write(openFlags);
        EXPECT_EQ(raised.Count(), 0);
        std::signal(m_Signal, SIG_DFL);
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

// What comes of writing the camera's log is not tested.
TEST_F(FileFaultTest, NoFileMayGrow) {
    const SignalCount raised(SIGXFSZ);
    EXPECT_THAT(RunAllDuring<NoFileMayGrow>(), ElementsAre(testing::Pair("LoadPropertyData", 1)));
    EXPECT_EQ(raised.Count(), 0);
    ExpectThatLogGoesOn();
}

// Row 109 has 360,000 bytes, more than any other.
TEST_F(FileFaultTest, SizeLimitInTheMiddleOfARow) {
    const std::uintmax_t limit = 200'000;
    std::int32_t result = 0;
    {
        const Limit sizeLimit(RLIMIT_FSIZE, limit);
        result = Run("LoadPropertyData");
    }
    EXPECT_EQ(result, 1);
    EXPECT_THAT(Log(), HasLine("> [ERR!] - [STDF] _write"));
    EXPECT_THAT(Log(), Closes("LoadPropertyData", 1));
    EXPECT_EQ(FileCount(), 109U);
    EXPECT_EQ(std::filesystem::file_size("dump/01040000.bin"), limit);
    for (const auto& file : std::filesystem::directory_iterator("dump")) {
        const auto id = static_cast<std::uint32_t>(std::stoul(file.path().stem(), nullptr, 16));
        if (id != 0x1040000) {
            const SimulatedBody::Bytes value = SimulatedBody::WorkingValue(id);
            EXPECT_TRUE(ReadFile(file) == std::string(value.begin(), value.end())) << file;
        }
    }
    EXPECT_EQ(Run("LoadPropertyData"), 0);
    EXPECT_EQ(std::filesystem::file_size("dump/01040000.bin"), 360'000U);
}

}  // namespace
