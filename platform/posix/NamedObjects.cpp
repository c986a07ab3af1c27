// Named blocks and mutexes over System V semaphores and shared memory: their names stand in no
// file system, and the kernel takes back all that a process did with SEM_UNDO when it dies.
//
// A named object is one set of semaphores. All of them are 0 when nobody holds the object, so that
// a set needs no initialisation (the kernel makes it with zeros), and one that killed holders left
// behind is as good as new. Opening and closing happen inside the gate. Who closes last removes the
// set; those who wait at its gate meanwhile learn that it went and find or make its successor.
//
// The set of a block also names the block's segment of memory, which is marked for removal as soon
// as its creator has it attached: from then on it has no key, and the kernel frees it with the last
// process that has it attached (this kernel still lets others attach it by its id). A dying process
// loses its memory first and its semaphores afterwards, so that a counted holder may have no
// segment any more; such a block is created anew. A holder that lives has it attached.
#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "platform/posix/WindowsCalls.h"

namespace {

enum SemaphoreIndex : unsigned short {
    GATE,     // 1 while a process is opening or closing the object
    HOLDERS,  // open handles of all processes
    OWNER,    // 1 while the mutex is taken
    KIND,     // what the object is, while somebody holds it
    SEGMENT,  // the segment's id, in SEGMENT_DIGITS digits from the lowest one
    SEMAPHORE_COUNT = SEGMENT + 3
};

// Blocks and mutexes share their names: an object is of the kind that its first holder made.
enum ObjectKind : int { BLOCK = 1, MUTEX = 2 };

constexpr int SEGMENT_DIGITS = SEMAPHORE_COUNT - SEGMENT;
constexpr int SEGMENT_RADIX = 32768;  // a semaphore's highest value and one

constexpr int OWN_ACCESS = 0600;

struct NamedObject {
    // A child that was forked has the handle's memory as well, and is no holder.
    pid_t process = -1;
    int nSet = -1;
    // Of a block: the segment and the attachment that keeps it from going.
    int nSegment = -1;
    void* pMemory = nullptr;
    // Of a mutex: taken through this handle.
    bool bOwned = false;
};

// Handles are the system's memory: they do not come from the program's operator new.
struct FreeObject {
    void operator()(NamedObject* pObject) const { std::free(pObject); }
};
using ObjectPointer = std::unique_ptr<NamedObject, FreeObject>;

/// The last argument of semctl, which the caller has to declare.
union SemaphoreArgument {
    int value;
    semid_ds* pInfo;
};

thread_local DWORD t_unLastError = ERROR_SUCCESS;

DWORD ErrorCode(int error) {
    switch (error) {
        case EACCES:
        case EPERM:
        case EEXIST:  // something foreign stands at our key
            return ERROR_ACCESS_DENIED;
        case EINVAL:
            return ERROR_INVALID_PARAMETER;
        case EIDRM:
            return ERROR_INVALID_HANDLE;
        default:
            return ERROR_NOT_ENOUGH_MEMORY;
    }
}

/// Leaves the code of an earlier failure where there is no new one.
BOOL Succeed(bool bDone) {
    if (!bDone) {
        SetLastError(ErrorCode(errno));
    }
    return bDone ? TRUE : FALSE;
}

bool IsGone(int error) {
    return error == EIDRM || error == EINVAL;
}

/// One key for a user's object. FNV-1a; 0 would ask for an object without a key.
key_t ObjectKey(std::string_view name) {
    std::uint32_t hash = 2166136261U;
    const auto add = [&hash](std::uint32_t byte) { hash = (hash ^ byte) * 16777619U; };
    for (const std::string_view text : {std::string_view("TuneBench"), name}) {
        for (const char character : text) {
            add(static_cast<unsigned char>(character));
        }
        add(0);
    }
    for (std::uint32_t user = geteuid(); user != 0; user >>= 8) {
        add(user & 0xFF);
    }
    return static_cast<key_t>(hash == IPC_PRIVATE ? 1 : hash);
}

/// Another user may have put an object with open access at our key.
bool CheckOwn(const ipc_perm& access) {
    if (access.cuid == geteuid() && (access.mode & 0777) == OWN_ACCESS) {
        return true;
    }
    errno = EACCES;
    return false;
}

bool IsOwnSet(int nSet) {
    semid_ds info{};
    SemaphoreArgument argument{};
    argument.pInfo = &info;
    return semctl(nSet, 0, IPC_STAT, argument) == 0 && CheckOwn(info.sem_perm);
}

/// Waits until all steps can be done at once, with a time at most for that long; errno is EAGAIN
/// then. A signal begins the time anew.
template <std::size_t COUNT>
bool Change(int nSet, sembuf (&steps)[COUNT], const timespec* pTime = nullptr) {
    int nResult = 0;
    do {
        nResult = semtimedop(nSet, steps, COUNT, pTime);
    } while (nResult != 0 && errno == EINTR);
    return nResult == 0;
}

bool EnterGate(int nSet) {
    sembuf steps[] = {{GATE, 0, 0}, {GATE, 1, SEM_UNDO}};
    return Change(nSet, steps);
}

bool EnterGateAndLetGo(int nSet) {
    sembuf steps[] = {{GATE, 0, 0}, {GATE, 1, SEM_UNDO}, {HOLDERS, -1, SEM_UNDO | IPC_NOWAIT}};
    return Change(nSet, steps);
}

bool LeaveGateAsHolder(int nSet) {
    sembuf steps[] = {{GATE, -1, SEM_UNDO | IPC_NOWAIT}, {HOLDERS, 1, SEM_UNDO}};
    return Change(nSet, steps);
}

bool HasHolders(int nSet) {
    return semctl(nSet, HOLDERS, GETVAL) > 0;
}

/// Inside the gate.
bool IsOrBecomes(int nSet, ObjectKind kind) {
    if (HasHolders(nSet)) {
        return semctl(nSet, KIND, GETVAL) == kind;
    }
    SemaphoreArgument argument{};
    argument.value = kind;
    return semctl(nSet, KIND, SETVAL, argument) == 0;
}

/// Nobody can become a holder meanwhile: that takes the gate.
void LeaveGateAndTidy(int nSet) {
    if (!HasHolders(nSet)) {
        semctl(nSet, 0, IPC_RMID);
        return;
    }
    sembuf steps[] = {{GATE, -1, SEM_UNDO | IPC_NOWAIT}};
    Change(nSet, steps);
}

/// Inside the gate of the object's set; -1 on failure.
int EnterObject(key_t key) {
    for (;;) {
        const int nSet = semget(key, SEMAPHORE_COUNT, IPC_CREAT | OWN_ACCESS);
        if (nSet < 0) {
            return -1;
        }
        if (IsOwnSet(nSet) && EnterGate(nSet)) {
            return nSet;
        }
        if (!IsGone(errno)) {
            return -1;
        }
    }
}

// A creator killed between two digits does no harm: it was no holder, and the mixture of two ids
// names no segment.
bool StoreSegmentID(int nSet, int nSegment) {
    for (int digit = 0; digit < SEGMENT_DIGITS; ++digit) {
        SemaphoreArgument argument{};
        argument.value = nSegment % SEGMENT_RADIX;
        if (semctl(nSet, SEGMENT + digit, SETVAL, argument) != 0) {
            return false;
        }
        nSegment /= SEGMENT_RADIX;
    }
    return true;
}

int LoadSegmentID(int nSet) {
    int nSegment = 0;
    for (int digit = SEGMENT_DIGITS - 1; digit >= 0; --digit) {
        nSegment = nSegment * SEGMENT_RADIX + semctl(nSet, SEGMENT + digit, GETVAL);
    }
    return nSegment;
}

void* Attach(int nSegment) {
    void* pMemory = shmat(nSegment, nullptr, 0);
    return pMemory != reinterpret_cast<void*>(-1) ? pMemory : nullptr;
}

bool IsOwnSegment(int nSegment) {
    shmid_ds info{};
    return shmctl(nSegment, IPC_STAT, &info) == 0 && CheckOwn(info.shm_perm);
}

bool AttachSegment(NamedObject& block) {
    block.nSegment = LoadSegmentID(block.nSet);
    if (!IsOwnSegment(block.nSegment)) {
        return false;
    }
    block.pMemory = Attach(block.nSegment);
    return block.pMemory != nullptr;
}

/// Of a creator that was killed before its segment had lost its key.
void RemoveStaleSegment(key_t key) {
    const int nStale = shmget(key, 0, 0);
    if (nStale >= 0 && IsOwnSegment(nStale)) {
        shmctl(nStale, IPC_RMID, nullptr);
    }
}

bool CreateSegment(NamedObject& block, key_t key, DWORD size) {
    RemoveStaleSegment(key);
    block.nSegment = shmget(key, size, IPC_CREAT | IPC_EXCL | OWN_ACCESS);
    if (block.nSegment < 0) {
        return false;
    }
    block.pMemory = Attach(block.nSegment);
    const int nAttachError = errno;
    shmctl(block.nSegment, IPC_RMID, nullptr);
    errno = nAttachError;
    return block.pMemory != nullptr && StoreSegmentID(block.nSet, block.nSegment);
}

/// Inside the gate. Gives ERROR_SUCCESS, ERROR_ALREADY_EXISTS or the code of a failure.
DWORD AttachOrCreateSegment(NamedObject& block, key_t key, DWORD size) {
    if (HasHolders(block.nSet)) {
        if (AttachSegment(block)) {
            return ERROR_ALREADY_EXISTS;
        }
        if (!IsGone(errno)) {
            return ErrorCode(errno);
        }
    }
    return CreateSegment(block, key, size) ? ERROR_SUCCESS : ErrorCode(errno);
}

void DetachSegment(const NamedObject& object) {
    if (object.pMemory != nullptr) {
        shmdt(object.pMemory);
    }
}

/// What the two kinds of objects have in common. `build` runs inside the gate and gives
/// ERROR_SUCCESS to the creator, ERROR_ALREADY_EXISTS, or the code of a failure.
template <typename Build>
HANDLE OpenObject(key_t key, ObjectKind kind, const Build& build) {
    ObjectPointer object(static_cast<NamedObject*>(std::malloc(sizeof(NamedObject))));
    if (object == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    *object = NamedObject{.process = getpid()};
    object->nSet = EnterObject(key);
    if (object->nSet < 0) {
        Succeed(false);
        return nullptr;
    }
    DWORD code = IsOrBecomes(object->nSet, kind) ? build(*object) : ERROR_INVALID_HANDLE;
    const bool bBuilt = code == ERROR_SUCCESS || code == ERROR_ALREADY_EXISTS;
    if (bBuilt && LeaveGateAsHolder(object->nSet)) {
        SetLastError(code);
        return object.release();
    }
    code = bBuilt ? ErrorCode(errno) : code;
    DetachSegment(*object);
    LeaveGateAndTidy(object->nSet);
    SetLastError(code);
    return nullptr;
}

/// The object behind a handle; null and the error code set if this process has none there.
NamedObject* ObjectOf(HANDLE handle) {
    auto* pObject = static_cast<NamedObject*>(handle);
    if (pObject == nullptr || pObject->process != getpid()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    return pObject;
}

}  // namespace

DWORD GetLastError() {
    return t_unLastError;
}

void SetLastError(DWORD code) {
    t_unLastError = code;
}

HANDLE CreateFileMappingA(
    HANDLE /*file*/, void* /*pAttributes*/, DWORD /*protection*/, DWORD /*sizeHigh*/, DWORD sizeLow,
    const char* pszName) {
    const auto key = ObjectKey(pszName);
    return OpenObject(
        key, BLOCK, [&](NamedObject& block) { return AttachOrCreateSegment(block, key, sizeLow); });
}

void* MapViewOfFile(
    HANDLE mapping, DWORD /*access*/, DWORD /*offsetHigh*/, DWORD /*offsetLow*/,
    std::size_t /*size*/) {
    const NamedObject* pBlock = ObjectOf(mapping);
    if (pBlock == nullptr) {
        return nullptr;
    }
    void* pView = Attach(pBlock->nSegment);
    Succeed(pView != nullptr);
    return pView;
}

BOOL UnmapViewOfFile(const void* pView) {
    return Succeed(shmdt(pView) == 0);
}

HANDLE CreateMutexA(void* /*pAttributes*/, BOOL /*initialOwner*/, const char* pszName) {
    return OpenObject(ObjectKey(pszName), MUTEX, [](const NamedObject& mutex) {
        return HasHolders(mutex.nSet) ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS;
    });
}

DWORD WaitForSingleObject(HANDLE mutex, DWORD milliseconds) {
    NamedObject* pMutex = ObjectOf(mutex);
    if (pMutex == nullptr) {
        return WAIT_FAILED;
    }
    sembuf steps[] = {{OWNER, 0, 0}, {OWNER, 1, SEM_UNDO}};
    const timespec time = {milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    if (!Change(pMutex->nSet, steps, milliseconds == INFINITE ? nullptr : &time)) {
        if (errno == EAGAIN) {
            return WAIT_TIMEOUT;
        }
        Succeed(false);
        return WAIT_FAILED;
    }
    pMutex->bOwned = true;
    return WAIT_OBJECT_0;
}

BOOL ReleaseMutex(HANDLE mutex) {
    NamedObject* pMutex = ObjectOf(mutex);
    if (pMutex == nullptr) {
        return FALSE;
    }
    if (!pMutex->bOwned) {
        SetLastError(ERROR_NOT_OWNER);
        return FALSE;
    }
    pMutex->bOwned = false;
    sembuf steps[] = {{OWNER, -1, SEM_UNDO | IPC_NOWAIT}};
    return Succeed(Change(pMutex->nSet, steps));
}

// In the order in which a dying process lets go: the memory first.
BOOL CloseHandle(HANDLE handle) {
    const ObjectPointer object(ObjectOf(handle));
    if (object == nullptr) {
        return FALSE;
    }
    DetachSegment(*object);
    const bool bLetGo = EnterGateAndLetGo(object->nSet);
    Succeed(bLetGo);
    if (bLetGo) {
        LeaveGateAndTidy(object->nSet);
    }
    return bLetGo ? TRUE : FALSE;
}
