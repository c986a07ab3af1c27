// Operator new, calloc, free and close.
#include "tests/faults/Replaced.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

#include "platform/Export.h"
#include "tests/faults/Shortage.h"

bool g_bCloseFails = false;
int g_nVainCloses = 0;

namespace {

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
    static const auto pClose = Own(close, "close");
    const int result = pClose(file);
    g_nVainCloses += result != 0 && errno == EBADF ? 1 : 0;
    if (g_bCloseFails) {
        errno = EIO;
        return -1;
    }
    return result;
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
