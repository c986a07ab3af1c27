// Other processes are killed at any moment of using a block, or use it at the same time.
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <deque>
#include <iostream>
#include <random>

#include "link/SharedMemory.h"
#include "tests/support/Driver.h"
#include "tests/support/Support.h"
#include "tests/support/SupportBlocks.h"
#include "tests/support/SupportProcess.h"

namespace {

/// Of no other block, so that its memory is recognised among all memory of the system.
const std::uint32_t KILL_SIZE = 12'347;

/// A process that opens, locks, fills, unlocks and closes a block over and over.
class Churner : public BlockHolder {
  public:
    Churner(const std::string& name, std::uint32_t size) {
        EXPECT_EQ(Do("churn " + name + " " + std::to_string(size)), "churning");
    }
};

class ProcessFaultTest : public ModuleTest {
  protected:
    /// Comes to another moment of the other process's work each time.
    void LetSomeTimePass() {
        using std::chrono::steady_clock;
        const auto end = steady_clock::now() + std::chrono::microseconds(m_Random() % 500);
        while (steady_clock::now() < end) {
        }
    }

    /// Opens the block, which must not hang, and gives its bytes as they stand under its lock.
    std::string OpenAndRead() {
        CSharedMemory block;
        EXPECT_EQ(
            block.MallocSharedMemory(
                KILL_SIZE, ("SHARED_NAME_" + m_Name).c_str(), ("MUTEX_NAME_" + m_Name).c_str()),
            1);
        const HANDLE hMutex = CreateMutexA(nullptr, FALSE, ("MUTEX_NAME_" + m_Name).c_str());
        WaitForSingleObject(hMutex, INFINITE);
        std::string bytes(static_cast<const char*>(block.GetpSharedMemory()), KILL_SIZE);
        ReleaseMutex(hMutex);
        CloseHandle(hMutex);
        block.FreeSharedMemory();
        return bytes;
    }

    const std::string m_Name = "TEST";
    std::minstd_rand m_Random{20};
};

// The block of a process that is killed goes with it: the next one to open it finds a new one.
TEST_F(ProcessFaultTest, HolderIsKilledAtAnyMoment) {
    const int kills = 1000;
    int created = 0;
    for (int kill = 0; kill < kills && !HasFailure(); ++kill) {
        Churner churner(m_Name, KILL_SIZE);
        LetSomeTimePass();
        churner.Kill();
        created += OpenAndRead() == std::string(KILL_SIZE, '\0') ? 1 : 0;
    }
    EXPECT_EQ(created, kills);
    EXPECT_FALSE(IsBlockHeld(m_Name));
    EXPECT_THAT(Segments(), testing::Not(testing::Contains(testing::Pair(testing::_, KILL_SIZE))));
    std::cout << "[ COUNTED  ] kill: " << kills << '\n';
}

// While others go on, a killed one takes neither the block nor its lock with it.
TEST_F(ProcessFaultTest, OneOfSeveralHoldersIsKilled) {
    {
        CSharedMemory held;
        ASSERT_EQ(
            held.MallocSharedMemory(
                KILL_SIZE, ("SHARED_NAME_" + m_Name).c_str(), ("MUTEX_NAME_" + m_Name).c_str()),
            1);
        std::memset(held.GetpSharedMemory(), 'x', KILL_SIZE);
        std::deque<Churner> churners;
        churners.emplace_back(m_Name, KILL_SIZE);
        for (int kill = 0; kill < 100; ++kill) {
            churners.emplace_back(m_Name, KILL_SIZE);
            LetSomeTimePass();
            churners.front().Kill();
            churners.pop_front();
            EXPECT_EQ(OpenAndRead().find('\0'), std::string::npos) << "it is the same block";
        }
        held.FreeSharedMemory();
    }
    EXPECT_FALSE(IsBlockHeld(m_Name));
    EXPECT_THAT(Segments(), testing::Not(testing::Contains(testing::Pair(testing::_, KILL_SIZE))));
}

/// A block and its mutex, taken, with 'x' as its first byte.
struct HELD {
    explicit HELD(const std::string& name) {
        hBlock = CreateFileMappingA(
            INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 1, ("SHARED_NAME_" + name).c_str());
        pView = static_cast<char*>(MapViewOfFile(hBlock, FILE_MAP_ALL_ACCESS, 0, 0, 0));
        hMutex = CreateMutexA(nullptr, FALSE, ("MUTEX_NAME_" + name).c_str());
        EXPECT_EQ(WaitForSingleObject(hMutex, INFINITE), WAIT_OBJECT_0);
        *pView = 'x';
    }

    /// Whether each call with these handles is refused, so that none has an effect.
    bool IsRefused() const {
        return CloseHandle(hBlock) == FALSE && GetLastError() == ERROR_INVALID_HANDLE &&
               MapViewOfFile(hBlock, FILE_MAP_ALL_ACCESS, 0, 0, 0) == nullptr &&
               ReleaseMutex(hMutex) == FALSE && GetLastError() == ERROR_INVALID_HANDLE &&
               WaitForSingleObject(hMutex, INFINITE) == WAIT_FAILED && CloseHandle(hMutex) == FALSE;
    }

    HANDLE hBlock;
    char* pView;
    HANDLE hMutex;
};

TEST_F(ProcessFaultTest, ForkedChildTakesNothingFromItsParent) {
    const HELD held(m_Name);
    EXPECT_TRUE(HoldsInChild([&] {
        const bool bRefused = held.IsRefused();
        UnmapViewOfFile(held.pView);
        return bRefused;
    }));
    BlockHolder other;
    EXPECT_EQ(other.Open(m_Name, 1), "existing");
    EXPECT_EQ(other.Read(), "78");
    EXPECT_NE(ReleaseMutex(held.hMutex), FALSE) << "it was still taken";
    EXPECT_EQ(other.Do("lock"), "locked");
    UnmapViewOfFile(held.pView);
    EXPECT_NE(CloseHandle(held.hBlock), FALSE);
    EXPECT_NE(CloseHandle(held.hMutex), FALSE);
}

TEST_F(ProcessFaultTest, ReaderSeesNoTornContent) {
    const CFolderSharedMemory block;
    Churner writer("FOLDER", SHARED_TEXT_SIZE);
    std::string last;
    for (int changes = 0; changes < 100;) {
        char szPath[CFolderSharedMemory::PATH_SIZE];
        block.Load(szPath);
        const std::string text(szPath, sizeof(szPath));
        ASSERT_EQ(text, std::string(sizeof(szPath), text[0]));
        changes += text != last ? 1 : 0;
        last = text;
    }
}

}  // namespace
