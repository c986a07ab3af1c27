// The file system fails: operations that use no file of their own do not notice, the others give
// their codes, files made before stay complete, and the log goes on as soon as it can.
#include <map>

#include "tests/support/Driver.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Support.h"

namespace {

FileFault FolderInPlaceOfLog() {
    std::filesystem::remove(LOG_FILE);
    std::filesystem::create_directory(LOG_FILE);
    return {nullptr, [](void*) { std::filesystem::remove(LOG_FILE); }};
}

/// Not a byte can be written to any file, as on a full disk.
FileFault NoFileMayGrow() {
    return FileSizeLimit(0);
}

using Results = std::map<std::string, std::int32_t>;

class FileFaultTest : public ModuleTest {
  protected:
    void TearDown() override { EXPECT_EQ(NextDescriptor(), m_nDescriptor) << "a file is open"; }

    /// Runs all operations during the fault and gives the results that are not 0.
    Results RunAllDuring(FileFault (*makeFault)()) const {
        Results failed;
        const FileFault fault = makeFault();
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

    const int m_nDescriptor = NextDescriptor();
    const Surroundings m_Surroundings;
    const std::string m_FolderText = FolderBlockText("dump");
};

TEST_F(FileFaultTest, LogThatCannotBeWrittenFailsNoOperation) {
    EXPECT_THAT(RunAllDuring(FolderInPlaceOfLog), IsEmpty());
    ExpectThatLogGoesOn();
}

TEST_F(FileFaultTest, NothingIsWritable) {
    const std::string before = ReadFile(LOG_FILE);
    EXPECT_THAT(
        RunAllDuring(NothingWritable),
        testing::UnorderedElementsAre(
            testing::Pair("LoadPropertyData", 7), testing::Pair("GetCameraLog", 1)));
    EXPECT_EQ(ReadFile(LOG_FILE), before);
    EXPECT_EQ(EntryCount("dump"), 0U);
    ExpectThatLogGoesOn();
}

#ifndef __SANITIZE_ADDRESS__  // whose own checks need descriptors
TEST_F(FileFaultTest, NoDescriptorIsLeft) {
    Results expected = {{"LoadPropertyData", 7}, {"GetCameraLog", 1}};
    if (INI_FILES_TAKE_DESCRIPTORS) {
        expected.insert(
            {{"CopyDLResonantFrequency", 1},
             {"GetBoardInfDLResonantFrequency", 1},
             {"SetBoardInfDLResonantFrequency", 1}});
    }
    EXPECT_EQ(RunAllDuring(NoDescriptors), expected);
    ExpectThatLogGoesOn();
}
#endif

// What comes of writing the camera's log is not tested.
TEST_F(FileFaultTest, NoFileMayGrow) {
    EXPECT_THAT(RunAllDuring(NoFileMayGrow), ElementsAre(testing::Pair("LoadPropertyData", 1)));
    ExpectThatLogGoesOn();
}

// Row 109 has 360,000 bytes, more than any other.
TEST_F(FileFaultTest, SizeLimitInTheMiddleOfARow) {
    const std::uintmax_t limit = 200'000;
    std::int32_t result = 0;
    {
        const FileFault sizeLimit = FileSizeLimit(limit);
        result = Run("LoadPropertyData");
    }
    EXPECT_EQ(result, 1);
    EXPECT_THAT(Log(), testing::EndsWith("[STDF] _write\n> [FUNC] LoadPropertyData - 1\n"));
    EXPECT_EQ(EntryCount("dump"), 109U);
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
