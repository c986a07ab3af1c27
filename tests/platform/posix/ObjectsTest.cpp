// Named blocks and mutexes as objects of the kernel: what stands in their places, who may let go of
// what, and the codes of failures.
#include <pthread.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <functional>
#include <future>
#include <optional>
#include <set>
#include <thread>

#include "tests/support/Support.h"
#include "tests/support/SupportBlocks.h"
#include "tests/support/SupportProcess.h"

namespace {

// What processes with another build of the layer count on: the places in a set of semaphores.
enum PLACE { AT_HOLDERS = 1, AT_OWNER = 2, AT_SEGMENT = 4, PLACE_COUNT = 7 };

int SetOf(key_t key) {
    return semget(key, 0, 0);
}

/// The keys of the sets of semaphores that this process has used last: other test runs have theirs.
/// The key is the table's first column.
std::set<key_t> Keys() {
    std::ifstream table("/proc/sysvipc/sem");
    std::set<key_t> keys;
    std::string line;
    for (std::getline(table, line); std::getline(table, line);) {
        const auto key = static_cast<key_t>(std::stol(line));
        if (semctl(SetOf(key), AT_HOLDERS, GETPID) == getpid()) {
            keys.insert(key);
        }
    }
    return keys;
}

HANDLE OpenBlock(DWORD size = 1) {
    return CreateFileMappingA(
        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size, "SHARED_NAME_LONE");
}

HANDLE OpenMutex() {
    return CreateMutexA(nullptr, FALSE, "MUTEX_NAME_LONE");
}

/// The key of the set of an object that is new.
key_t KeyOf(const std::function<HANDLE()>& open) {
    const std::set<key_t> before = Keys();
    const HANDLE handle = open();
    std::set<key_t> after = Keys();
    EXPECT_NE(CloseHandle(handle), FALSE);
    std::erase_if(after, [&](key_t key) { return before.contains(key); });
    EXPECT_EQ(after.size(), 1U);
    return after.empty() ? 0 : *after.begin();
}

/// Has the block's set name another segment, in digits of 15 bits.
void NameSegment(key_t key, int nSegment) {
    for (int place = AT_SEGMENT; place < PLACE_COUNT; ++place, nSegment >>= 15) {
        EXPECT_EQ(semctl(SetOf(key), place, SETVAL, nSegment & 0x7FFF), 0);
    }
}

class ObjectsTest : public testing::Test {
  protected:
    void TearDown() override {
        EXPECT_EQ(SetOf(m_BlockKey), -1) << "the block's set is left";
        EXPECT_EQ(SetOf(m_MutexKey), -1) << "the mutex's set is left";
    }

    const key_t m_BlockKey = KeyOf([] { return OpenBlock(); });
    const key_t m_MutexKey = KeyOf(OpenMutex);
};

/// Something at a key that no process of the layer has made; it must be removed as it was made.
class ForeignObject {
  public:
    ForeignObject(key_t key, bool bSegment, int size, int mode) : m_bSegment(bSegment) {
        const int nFlags = IPC_CREAT | IPC_EXCL | mode;
        m_nId = bSegment ? shmget(key, static_cast<std::size_t>(size), nFlags)
                         : semget(key, size, nFlags);
        EXPECT_GE(m_nId, 0);
    }
    ForeignObject(const ForeignObject&) = delete;
    ForeignObject& operator=(const ForeignObject&) = delete;
    ~ForeignObject() {
        const int nResult =
            m_bSegment ? shmctl(m_nId, IPC_RMID, nullptr) : semctl(m_nId, 0, IPC_RMID);
        EXPECT_EQ(nResult, 0) << "somebody else has removed it";
    }

    int Id() const { return m_nId; }

  private:
    bool m_bSegment;
    int m_nId;
};

TEST_F(ObjectsTest, ForeignObjectInABlocksPlaceStaysAndTheBlockDoesNotOpen) {
    struct FOREIGN {
        bool bSegment;
        int size;
        int mode;
        DWORD code;
    };
    const FOREIGN open[] = {
        {true, 100, 0666, ERROR_ACCESS_DENIED},
        {false, PLACE_COUNT, 0666, ERROR_ACCESS_DENIED},
        {false, PLACE_COUNT - 1, 0600, ERROR_INVALID_PARAMETER}};
    for (const FOREIGN& each : open) {
        const ForeignObject foreign(m_BlockKey, each.bSegment, each.size, each.mode);
        EXPECT_EQ(OpenBlock(), nullptr);
        EXPECT_EQ(GetLastError(), each.code) << each.bSegment << each.size;
    }
    if (geteuid() != 0) {
        return;  // only the superuser can be another user
    }
    for (const bool bSegment : {true, false}) {
        std::optional<OrdinaryUser> other(std::in_place);
        const ForeignObject foreign(m_BlockKey, bSegment, PLACE_COUNT, 0600);
        other.reset();
        EXPECT_EQ(OpenBlock(), nullptr) << "the superuser could";
        EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    }
}

/// FNV-1a of what is said once for all builds, of the name, and of the user's number.
key_t AgreedKey(const std::string& name) {
    std::string text = std::string("TuneBench") + '\0' + name + '\0';
    for (uid_t user = geteuid(); user != 0; user >>= 8) {
        text += static_cast<char>(user & 0xFF);
    }
    std::uint32_t hash = 0x811C9DC5;
    for (const char character : text) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x01000193;
    }
    return static_cast<key_t>(hash);
}

TEST_F(ObjectsTest, KeysAreThoseOfOtherBuildsAndEachUserHasOwnOnes) {
    EXPECT_EQ(m_BlockKey, AgreedKey("SHARED_NAME_LONE"));
    EXPECT_EQ(m_MutexKey, AgreedKey("MUTEX_NAME_LONE"));
    const OrdinaryUser other;
    EXPECT_EQ(KeyOf([] { return OpenBlock(); }), AgreedKey("SHARED_NAME_LONE"));
}

TEST_F(ObjectsTest, SegmentOfACreatorKilledOnTheWayIsReplaced) {
    ASSERT_GE(shmget(m_BlockKey, 100, IPC_CREAT | IPC_EXCL | 0600), 0);
    const HANDLE hBlock = OpenBlock();
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});
    EXPECT_NE(CloseHandle(hBlock), FALSE);
}

// A dying holder loses its memory first; only then it is no holder any more.
TEST_F(ObjectsTest, BlockWhoseHoldersHaveLostItsSegmentIsMadeAnewButNoForeignOneIsTaken) {
    const HANDLE hDying = OpenBlock();
    {
        const ForeignObject foreign(IPC_PRIVATE, true, 100, 0666);
        NameSegment(m_BlockKey, foreign.Id());
        EXPECT_EQ(OpenBlock(), nullptr);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_ACCESS_DENIED});
    }
    const HANDLE hNew = OpenBlock();  // the segment that is named is gone
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});
    const HANDLE hSecond = OpenBlock();
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ALREADY_EXISTS});
    for (const HANDLE handle : {hDying, hNew, hSecond}) {
        EXPECT_NE(CloseHandle(handle), FALSE);
    }
}

TEST_F(ObjectsTest, FailuresHaveTheirCodesAndSuccessesLeaveTheLastOne) {
    const HANDLE hBlock = OpenBlock();
    const HANDLE hMutex = OpenMutex();
    int foreign = 0;
    const std::pair<std::function<bool()>, DWORD> failures[] = {
        {[] { return CloseHandle(nullptr) != FALSE; }, ERROR_INVALID_HANDLE},
        {[] { return MapViewOfFile(nullptr, FILE_MAP_ALL_ACCESS, 0, 0, 0) != nullptr; },
         ERROR_INVALID_HANDLE},
        {[] { return WaitForSingleObject(nullptr, INFINITE) != WAIT_FAILED; },
         ERROR_INVALID_HANDLE},
        {[] { return ReleaseMutex(nullptr) != FALSE; }, ERROR_INVALID_HANDLE},
        {[&] { return ReleaseMutex(hMutex) != FALSE; }, ERROR_NOT_OWNER},
        {[&] { return UnmapViewOfFile(&foreign) != FALSE; }, ERROR_INVALID_PARAMETER},
        {[] { return CreateMutexA(nullptr, FALSE, "SHARED_NAME_LONE") != nullptr; },
         ERROR_INVALID_HANDLE},
        {[] {
             return CreateFileMappingA(
                        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 1, "MUTEX_NAME_LONE") !=
                    nullptr;
         },
         ERROR_INVALID_HANDLE},
        {[] {
             return CreateFileMappingA(
                        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 0, "EMPTY") != nullptr;
         },
         ERROR_INVALID_PARAMETER},
    };
    for (const auto& [isDone, code] : failures) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(isDone()) << code;
        EXPECT_EQ(GetLastError(), code);
    }
    SetLastError(77);
    std::thread([] { SetLastError(78); }).join();
    const void* pView = MapViewOfFile(hBlock, FILE_MAP_ALL_ACCESS, 0, 0, 0);
    EXPECT_NE(UnmapViewOfFile(pView), FALSE);
    EXPECT_EQ(WaitForSingleObject(hMutex, INFINITE), WAIT_OBJECT_0);
    EXPECT_NE(ReleaseMutex(hMutex), FALSE);
    EXPECT_NE(CloseHandle(hBlock), FALSE);
    EXPECT_EQ(GetLastError(), 77U);
    EXPECT_NE(CloseHandle(hMutex), FALSE);
}

TEST_F(ObjectsTest, MutexIsReleasedByWhoHasTakenItAlone) {
    const HANDLE hMutex = OpenMutex();
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});
    const HANDLE hSecond = OpenMutex();
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(WaitForSingleObject(hMutex, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(ReleaseMutex(hSecond), FALSE);
    BlockHolder other;
    EXPECT_EQ(other.Open("LONE", 1), "created");
    EXPECT_EQ(other.Do("unlock"), "failed 288");
    EXPECT_EQ(semctl(SetOf(m_MutexKey), AT_OWNER, GETVAL), 1);
    EXPECT_NE(ReleaseMutex(hMutex), FALSE);
    EXPECT_EQ(ReleaseMutex(hMutex), FALSE) << "it was released";
    EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_OWNER});
    EXPECT_EQ(other.Do("lock"), "locked");
    EXPECT_EQ(other.Do("unlock"), "unlocked");
    EXPECT_NE(CloseHandle(hMutex), FALSE);
    EXPECT_EQ(semctl(SetOf(m_MutexKey), AT_HOLDERS, GETVAL), 2);
    EXPECT_NE(CloseHandle(hSecond), FALSE);
    EXPECT_EQ(other.Do("close"), "closed");
}

/// Returns when somebody waits for the mutex.
void AwaitWaiter(key_t key) {
    while (semctl(SetOf(key), AT_OWNER, GETZCNT) != 1) {
        std::this_thread::yield();
    }
}

TEST_F(ObjectsTest, SignalsEndNoWaitingAndTheLossOfTheObjectDoes) {
    static std::atomic<int> s_nSignals;
    s_nSignals = 0;
    const SignalHandler handler(SIGUSR1, [](int) { ++s_nSignals; });
    BlockHolder owner;
    EXPECT_EQ(owner.Open("LONE", 1), "created");
    EXPECT_EQ(owner.Do("lock"), "locked");
    const HANDLE hMutex = OpenMutex();
    EXPECT_EQ(WaitForSingleObject(hMutex, 1), DWORD{WAIT_TIMEOUT});
    EXPECT_EQ(ReleaseMutex(hMutex), FALSE) << "it is not this one's";
    std::promise<pthread_t> thread;
    auto result = std::async(std::launch::async, [&] {
        thread.set_value(pthread_self());
        const DWORD waited = WaitForSingleObject(hMutex, INFINITE);
        return std::pair(waited, GetLastError());
    });
    AwaitWaiter(m_MutexKey);
    EXPECT_EQ(pthread_kill(thread.get_future().get(), SIGUSR1), 0);
    while (s_nSignals == 0) {
        std::this_thread::yield();
    }
    AwaitWaiter(m_MutexKey);
    EXPECT_EQ(semctl(SetOf(m_MutexKey), 0, IPC_RMID), 0);
    EXPECT_EQ(result.get(), std::pair(WAIT_FAILED, DWORD{ERROR_INVALID_HANDLE}));
    EXPECT_EQ(WaitForSingleObject(hMutex, INFINITE), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(CloseHandle(hMutex), FALSE) << "there is nothing to let go of";
    EXPECT_EQ(owner.Do("close"), "closed");
}

TEST_F(ObjectsTest, BlockThatFindsNoRoomIsNotLeftHalfMade) {
#ifndef __SANITIZE_ADDRESS__  // whose own memory has terabytes of addresses
    {
        const Limit addresses(RLIMIT_AS, 0);
        EXPECT_EQ(OpenBlock(), nullptr);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_ENOUGH_MEMORY});
    }
    EXPECT_EQ(SetOf(m_BlockKey), -1);
#endif
    const HANDLE hBlock = OpenBlock();
    EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});
    EXPECT_NE(CloseHandle(hBlock), FALSE);
}

}  // namespace
