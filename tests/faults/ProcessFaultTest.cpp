// Other processes are killed at any moment of using a block, or use it at the same time.
#include <chrono>
#include <cstring>
#include <deque>
#include <fstream>
#include <iostream>
#include <random>

#include "link/SharedMemory.h"
#include "tests/support/Driver.h"
#include "tests/support/Support.h"
#include "tests/support/SupportBlocks.h"

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

    /// Segments of KILL_SIZE that the system holds. The size is the fourth column of its table.
    static std::size_t SegmentCount() {
        std::ifstream table("/proc/sysvipc/shm");
        EXPECT_TRUE(table.is_open());
        std::size_t count = 0;
        for (std::string line; std::getline(table, line);) {
            std::istringstream columns(line);
            std::string column;
            columns >> column >> column >> column >> column;
            count += column == std::to_string(KILL_SIZE) ? 1 : 0;
        }
        return count;
    }

    /// A name of this run's own: other runs may be at work on this machine.
    const std::string m_Name = Folder().filename().string();
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
    EXPECT_EQ(SegmentCount(), 0U);
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
    EXPECT_EQ(SegmentCount(), 0U);
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
