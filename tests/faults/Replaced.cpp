// Operator new, calloc, free, and calls of the system.
#include "tests/faults/Replaced.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

#include "platform/Export.h"
#include "tests/faults/Shortage.h"

std::size_t g_GreatestMove = SIZE_MAX;
int g_nVainCloses = 0;

namespace {

AheadOfCalls::ErrorOf* s_pErrorOf = nullptr;

bool s_bCounting = false;
int s_nTaken = 0;
// What the module took by calloc: who calls free can't be told, since that is often jumped to.
std::array<void*, 16> s_pBuffers = {};

#ifdef __SANITIZE_ADDRESS__
constexpr bool COUNTS_BUFFERS = false;  // the sanitizer has a free of its own, and counts itself
#else
constexpr bool COUNTS_BUFFERS = true;
#endif

void* Allocate(std::size_t size, bool bThrows) {
    void* pMemory = CountAllocation(bThrows) ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (pMemory == nullptr && bThrows) {
        throw std::bad_alloc();
    }
    s_nTaken += s_bCounting && pMemory != nullptr ? 1 : 0;
    return pMemory;
}

/// The library's own function behind the one of this program.
template <class Function>
Function* Own(Function* /*replaced*/, const char* pszName) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, pszName));
}

/// Whether the call fails, with errno set.
bool IsFailing(const char* pszName) {
    const int error = s_pErrorOf == nullptr ? 0 : s_pErrorOf(pszName);
    errno = error == 0 ? errno : error;
    return error != 0;
}

/// Fails, or calls the library's own function.
template <class Result, class... Parameters>
Result Call(Result (*pReplaced)(Parameters...), const char* pszName, Parameters... arguments) {
    return IsFailing(pszName) ? Result(-1) : Own(pReplaced, pszName)(arguments...);
}

void GiveBack(void* pMemory) {
    s_nTaken -= s_bCounting && pMemory != nullptr ? 1 : 0;
    std::free(pMemory);
}

/// The loader's memory does not run out: without it there is no module.
bool IsInModule(const void* pCode) {
    Dl_info library{};
    return dladdr(pCode, &library) != 0 &&
           std::string_view(library.dli_fname).ends_with(MODULE_FILE);
}

}  // namespace

// --- In place of the library's ---

extern "C" MODULE_API void* calloc(std::size_t count, std::size_t size) noexcept {
    const bool bBuffer = (Shortage::IsUnderWay() || (s_bCounting && COUNTS_BUFFERS)) &&
                         IsInModule(__builtin_return_address(0));
    void* pMemory = bBuffer ? Allocate(count * size, false) : std::malloc(count * size);
    if (bBuffer && s_bCounting) {
        *std::find(s_pBuffers.begin(), s_pBuffers.end(), nullptr) = pMemory;
    }
    return pMemory == nullptr ? nullptr : std::memset(pMemory, 0, count * size);
}
#ifndef __SANITIZE_ADDRESS__
extern "C" MODULE_API void free(void* pMemory) noexcept {
    static const auto pFree = Own(std::free, "free");
    const auto pBuffer = std::find(s_pBuffers.begin(), s_pBuffers.end(), pMemory);
    if (pMemory != nullptr && pBuffer != s_pBuffers.end()) {
        *pBuffer = nullptr;
        --s_nTaken;
    }
    pFree(pMemory);
}
#endif
extern "C" MODULE_API int close(int file) {
    const int result = Own(close, "close")(file);
    g_nVainCloses += result != 0 && errno == EBADF ? 1 : 0;
    return IsFailing("close") ? -1 : result;
}
extern "C" MODULE_API ssize_t read(int file, void* pData, std::size_t size) {
    return Call(read, "read", file, pData, std::min(size, g_GreatestMove));
}
extern "C" MODULE_API ssize_t write(int file, const void* pData, std::size_t size) {
    return Call(write, "write", file, pData, std::min(size, g_GreatestMove));
}
extern "C" MODULE_API ssize_t pwrite(int file, const void* pData, std::size_t size, off_t at) {
    return Call(pwrite, "pwrite", file, pData, std::min(size, g_GreatestMove), at);
}
extern "C" MODULE_API ssize_t recv(int file, void* pData, std::size_t size, int flags) {
    return Call(recv, "recv", file, pData, std::min(size, g_GreatestMove), flags);
}
extern "C" MODULE_API pid_t waitpid(pid_t process, int* pStatus, int options) {
    return Call(waitpid, "waitpid", process, pStatus, options);
}
extern "C" MODULE_API int flock(int file, int operation) noexcept {
    return Call(flock, "flock", file, operation);
}
extern "C" MODULE_API int fsync(int file) {
    return Call(fsync, "fsync", file);
}
extern "C" MODULE_API int fchmod(int file, mode_t mode) noexcept {
    return Call(fchmod, "fchmod", file, mode);
}
extern "C" MODULE_API int renameat2(
    int folder, const char* pszFrom, int otherFolder, const char* pszTo,
    unsigned int flags) noexcept {
    return Call(renameat2, "renameat2", folder, pszFrom, otherFolder, pszTo, flags);
}
extern "C" MODULE_API int semget(key_t key, int count, int flags) noexcept {
    return Call(semget, "semget", key, count, flags);
}
extern "C" MODULE_API int semtimedop(
    int set, sembuf* pSteps, std::size_t count, const timespec* pTime) noexcept {
    return Call(semtimedop, "semtimedop", set, pSteps, count, pTime);
}
// What reads a value or removes the set does not fail.
extern "C" MODULE_API int semctl(int set, int number, int command, ...) noexcept {
    va_list arguments;
    va_start(arguments, command);
    void* pArgument = va_arg(arguments, void*);
    va_end(arguments);
    const bool bFailing = (command == SETVAL || command == IPC_STAT) && IsFailing("semctl");
    return bFailing ? -1 : Own(semctl, "semctl")(set, number, command, pArgument);
}
extern "C" MODULE_API int shmget(key_t key, std::size_t size, int flags) noexcept {
    return Call(shmget, "shmget", key, size, flags);
}
extern "C" MODULE_API void* shmat(int segment, const void* pAddress, int flags) noexcept {
    return IsFailing("shmat") ? reinterpret_cast<void*>(-1)
                              : Own(shmat, "shmat")(segment, pAddress, flags);
}
void* operator new(std::size_t size) {
    return Allocate(size, true);
}
void* operator new[](std::size_t size) {
    return Allocate(size, true);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size, false);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size, false);
}
void operator delete(void* pMemory) noexcept {
    GiveBack(pMemory);
}
void operator delete[](void* pMemory) noexcept {
    GiveBack(pMemory);
}
void operator delete(void* pMemory, std::size_t) noexcept {
    GiveBack(pMemory);
}
void operator delete[](void* pMemory, std::size_t) noexcept {
    GiveBack(pMemory);
}

// --- What tests ask for ---

std::shared_ptr<void> WatchAllocations() {
    return nullptr;
}

AheadOfCalls::AheadOfCalls(ErrorOf* pErrorOf) {
    s_pErrorOf = pErrorOf;
}

AheadOfCalls::~AheadOfCalls() {
    s_pErrorOf = nullptr;
}

TakenBlocks::TakenBlocks() {
    s_nTaken = 0;
    s_pBuffers = {};
    s_bCounting = true;
}

TakenBlocks::~TakenBlocks() {
    s_bCounting = false;
}

int TakenBlocks::Count() {
    return s_nTaken;
}
