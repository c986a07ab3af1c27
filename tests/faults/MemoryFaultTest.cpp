// A camera reports more than there is memory for: the host is not made to pay for it.
#include <algorithm>
#include <fstream>

#include "link/SharedMemory.h"
#include "tests/support/Support.h"
#include "tests/support/SupportProcess.h"

namespace {

const std::size_t MEBIBYTE = 1 << 20;

/// This process's memory in bytes: its address space, and what of it has pages behind it.
struct MEMORY {
    MEMORY() {
        std::ifstream("/proc/self/statm") >> addresses >> resident;
        addresses *= static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        resident *= static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    }

    std::size_t addresses = 0;
    std::size_t resident = 0;
};

class MemoryFaultTest : public ModuleTest {};

TEST_F(MemoryFaultTest, CameraLogCostsWhatArrivesAndNotWhatWasReported) {
    SimulatedBody::SetCameraLog({'a', 'b', 'c'});
    SimulatedBody::ScriptReturnSize(1024 * MEBIBYTE, 5);
    const std::size_t before = MEMORY().resident;
    std::size_t most = 0;
    SimulatedBody::Observe(
        [&](const SimulatedBody::CALL&, bool) { most = std::max(most, MEMORY().resident); });
    EXPECT_EQ(Run("GetCameraLog"), 0);
    EXPECT_LT(most, before + 64 * MEBIBYTE);
    EXPECT_EQ(ReadFile("CameraLog"), std::string("abc\0\0", 5)) << "zero where nothing arrived";
}

TEST_F(MemoryFaultTest, CameraLogBeyondTheMemoryIsRefused) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizers' own memory has terabytes of addresses";
#endif
    SimulatedBody::ScriptReturnSize(0xFFFFFFFF);
    const Limit addresses(RLIMIT_AS, MEMORY().addresses + 1024 * MEBIBYTE);
    EXPECT_EQ(Run("GetCameraLog"), 5);
    EXPECT_THAT(Log(), HasLine("> [ERR!] - [VALU] pbyData"));
    EXPECT_EQ(Calls().back(), "ExecuteAndGetSize FA_GetCameraLogStart");
}

TEST_F(MemoryFaultTest, BlockThatCannotBeMappedKeepsItsErrorCode) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizers' own memory has terabytes of addresses";
#endif
    const auto size = static_cast<std::uint32_t>(64 * MEBIBYTE);
    CSharedMemory block;
    {
        // Room for the block once: its creator has it attached already when it maps it.
        const Limit addresses(RLIMIT_AS, MEMORY().addresses + size + size / 2);
        EXPECT_EQ(block.MallocSharedMemory(size, "SHARED_NAME_TEST", "MUTEX_NAME_TEST"), 0);
    }
    EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_STREQ(FailedSharedMemoryCall(), "MapViewOfFile");
    EXPECT_EQ(block.GethSharedMemory(), nullptr);
}

}  // namespace
