// A camera reports more than there is memory for, and a block finds no room: the host is not made
// to pay for it.
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

#ifndef __SANITIZE_ADDRESS__  // whose own memory has terabytes of addresses
TEST_F(MemoryFaultTest, CameraLogBeyondTheMemoryIsRefused) {
    SimulatedBody::ScriptReturnSize(0xFFFFFFFF);
    const Limit addresses(RLIMIT_AS, MEMORY().addresses + 1024 * MEBIBYTE);
    EXPECT_EQ(Run("GetCameraLog"), 5);
    EXPECT_THAT(Log(), HasLine("> [ERR!] - [VALU] pbyData"));
    EXPECT_EQ(Calls().back(), "ExecuteAndGetSize FA_GetCameraLogStart");
}
#endif

template <class Block>
void ExpectSize(std::size_t size) {
    const Block block;
    EXPECT_THAT(Segments(), testing::Contains(testing::Pair(getpid(), size)).Times(1));
    EXPECT_THAT(Segments(), testing::Contains(testing::Key(getpid())).Times(1));
}

TEST_F(MemoryFaultTest, BlocksHaveTheSizesThatOthersKnow) {
    ExpectSize<CJIGItoPTPSharedMemory>(261);
    ExpectSize<CCameraHandleSharedMemory>(261);
    ExpectSize<CFolderSharedMemory>(261);
    ExpectSize<CBodyIDSharedMemory>(8);
}

}  // namespace
