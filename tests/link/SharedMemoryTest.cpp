// Shared blocks between processes: their life, their locks, and operations that share them.
#include "link/SharedMemory.h"

#include <cstring>
#include <future>
#include <tuple>

#include "identity/BodyID.h"
#include "tests/support/Support.h"
#include "tests/support/SupportBlocks.h"

namespace {

const char* const ZEROS = "00 00 00 00 00 00 00 00";

class SharedMemoryTest : public ModuleTest {
  protected:
    BODY_ID_T m_BodyID{1507, 42, 3, 9, 12345};
    const std::string m_Bytes = "b5 0d 00 00 f9 5d a9 be";
};

// --- The class ---

TEST_F(SharedMemoryTest, ClassIsClosedBeforeAndAfter) {
    CSharedMemory block;
    EXPECT_EQ(block.GetpSharedMemory(), nullptr);
    EXPECT_EQ(block.GethSharedMemory(), nullptr);
    {
        const NameTaken taken("SHARED_NAME_TEST");
        EXPECT_EQ(block.MallocSharedMemory(16, "SHARED_NAME_TEST", "MUTEX_NAME_TEST"), 0);
    }
    EXPECT_EQ(block.MallocSharedMemory(16, "SHARED_NAME_TEST", "MUTEX_NAME_TEST"), 1);
    EXPECT_NE(block.GetpSharedMemory(), nullptr);
    EXPECT_NE(block.GethSharedMemory(), nullptr);
    block.FreeSharedMemory();
    EXPECT_EQ(block.GetpSharedMemory(), nullptr);
    EXPECT_EQ(block.GethSharedMemory(), nullptr);
}

TEST_F(SharedMemoryTest, CreatorFindsZerosAndSecondOpenerTheContent) {
    CSharedMemory first;
    CSharedMemory second;
    ASSERT_EQ(first.MallocSharedMemory(16, "SHARED_NAME_TEST", "MUTEX_NAME_TEST"), 1);
    EXPECT_EQ(
        std::string(16, '\0'), std::string(static_cast<const char*>(first.GetpSharedMemory()), 16));
    std::memcpy(first.GetpSharedMemory(), "content", sizeof("content"));
    ASSERT_EQ(second.MallocSharedMemory(16, "SHARED_NAME_TEST", "MUTEX_NAME_TEST"), 1);
    EXPECT_STREQ(static_cast<const char*>(second.GetpSharedMemory()), "content");
    first.FreeSharedMemory();
    EXPECT_STREQ(static_cast<const char*>(second.GetpSharedMemory()), "content");
    second.FreeSharedMemory();
}

TEST_F(SharedMemoryTest, DestructionOfThePlainClassLetsNothingGo) {
    CSharedMemory kept;
    {
        CSharedMemory block;
        ASSERT_EQ(block.MallocSharedMemory(16, "SHARED_NAME_TEST", "MUTEX_NAME_TEST"), 1);
        kept = block;
    }
    EXPECT_EQ(BlockHolder().Open("TEST", 16), "existing");
    kept.FreeSharedMemory();
    EXPECT_EQ(BlockHolder().Open("TEST", 16), "created");
}

template <class Block>
void ExpectToHold(const std::string& name, std::uint32_t size) {
    {
        const Block block;
        const HANDLE hMutex = CreateMutexA(nullptr, FALSE, ("MUTEX_NAME_" + name).c_str());
        EXPECT_EQ(GetLastError(), DWORD{ERROR_ALREADY_EXISTS}) << name;
        CloseHandle(hMutex);
        EXPECT_EQ(BlockHolder().Open(name, size), "existing") << name;
    }
    EXPECT_EQ(BlockHolder().Open(name, size), "created") << name;
}

TEST_F(SharedMemoryTest, SubclassesHoldTheirBlocksWhileTheyLive) {
    ExpectToHold<CJIGItoPTPSharedMemory>("JIGItoPTP", 261);
    ExpectToHold<CCameraHandleSharedMemory>("CameraHandle", 261);
    ExpectToHold<CFolderSharedMemory>("FOLDER", 261);
    ExpectToHold<CBodyIDSharedMemory>("BODYID", 8);
}

template <class Block>
struct OPEN_BLOCK : Block {
    std::tuple<HANDLE, void*, HANDLE> Handles() const {
        return {this->hSharedMemory, this->pSharedMemory, this->hMutex};
    }
};

template <class Block>
void ExpectToCopyHandles() {
    OPEN_BLOCK<Block> block;
    OPEN_BLOCK<Block> closed;
    closed.FreeSharedMemory();
    OPEN_BLOCK<Block> copy = block;
    EXPECT_EQ(copy.Handles(), block.Handles());
    copy = closed;
    EXPECT_EQ(copy.Handles(), closed.Handles());
}

TEST_F(SharedMemoryTest, CopiesNameTheSameHandles) {
    ExpectToCopyHandles<CJIGItoPTPSharedMemory>();
    ExpectToCopyHandles<CCameraHandleSharedMemory>();
}

// --- Several processes ---

TEST_F(SharedMemoryTest, ContentEndsWithTheLastHolder) {
    BlockHolder first;
    BlockHolder second;
    EXPECT_EQ(first.Open("BODYID", 8), "created");
    EXPECT_EQ(Run("SetBodyID", &m_BodyID), 0);
    EXPECT_EQ(second.Open("BODYID", 8), "existing");
    EXPECT_EQ(first.Do("close"), "closed");
    EXPECT_EQ(second.Read(), m_Bytes);
    EXPECT_EQ(second.Do("close"), "closed");
    EXPECT_EQ(first.Open("BODYID", 8), "created");
    EXPECT_EQ(first.Read(), ZEROS);
}

TEST_F(SharedMemoryTest, LockOfAKilledOwnerPassesOn) {
    BlockHolder owner;
    BlockHolder waiter;
    owner.Open("BODYID", 8);
    waiter.Open("BODYID", 8);
    EXPECT_EQ(owner.Do("lock"), "locked");
    waiter.Begin("lock");
    owner.Kill();
    EXPECT_EQ(waiter.Answer(), "locked");
    waiter.Kill();
    EXPECT_EQ(Run("SetBodyID", &m_BodyID), 0);
}

TEST_F(SharedMemoryTest, OperationWaitsForTheLock) {
    BlockHolder holder;
    holder.Open("BODYID", 8);
    EXPECT_EQ(holder.Do("lock"), "locked");
    std::promise<void> written;
    SimulatedBody::Observe([&](const SimulatedBody::CALL&, bool complete) {
        if (complete) {
            written.set_value();
        }
    });
    const auto result = std::async(std::launch::async, [&] { return Run("SetBodyID", &m_BodyID); });
    written.get_future().wait();  // from here on the operation wants the lock
    for (int look = 0; look < 500; ++look) {
        EXPECT_EQ(holder.Read(), ZEROS);
    }
    EXPECT_EQ(holder.Do("unlock"), "unlocked");
    result.wait();
    EXPECT_EQ(holder.Read(), m_Bytes);
}

TEST_F(SharedMemoryTest, BlockThatDoesNotOpenFailsTheOperation) {
    for (const auto& [pszBlock, pszName] :
         {std::pair("SHARED_NAME_BODYID", "SetBodyID"),
          {"SHARED_NAME_BODYID", "GetBodyID"},
          {"SHARED_NAME_FOLDER", "LoadPropertyData"}}) {
        const NameTaken taken(pszBlock);
        EXPECT_EQ(Run(pszName, &m_BodyID), 1);
        EXPECT_THAT(Calls(), IsEmpty());
        EXPECT_EQ(Log(), FailedFrame(pszName, 1, "[WAPI] CreateFileMapping"));
    }
    EXPECT_EQ(Run("SetBodyID", &m_BodyID), 0);
}

}  // namespace
