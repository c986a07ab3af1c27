// The file system fails: operations that use no file of their own do not notice, the others give
// their codes, files made before stay complete, and the log goes on as soon as it can.
#include <fcntl.h>
#include <unistd.h>

#include <map>
#include <optional>

#include "tests/support/Driver.h"
#include "tests/support/Support.h"
#include "tests/support/SupportProcess.h"

namespace {

const char LOG_FILE[] = "JigDll.log";

/// Leaves no descriptor to open a file with.
class NoDescriptors {
  public:
    NoDescriptors() : m_Limit(RLIMIT_NOFILE, static_cast<rlim_t>(LowestFree())) {}

  private:
    static int LowestFree() {
        const int file = open("/", O_RDONLY);
        close(file);
        return file;
    }

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

// What comes of writing the camera's log is not tested.
TEST_F(FileFaultTest, NoFileMayGrow) {
    EXPECT_THAT(RunAllDuring<NoFileMayGrow>(), ElementsAre(testing::Pair("LoadPropertyData", 1)));
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
