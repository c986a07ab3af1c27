// Told by the dynamic linker and the kernel.
#include "platform/Surroundings.h"

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>

namespace fs = std::filesystem;

fs::path LibraryFileOf(const void* pAddress) {
    Dl_info info = {};
    std::error_code error;
    return dladdr(pAddress, &info) != 0 ? fs::absolute(info.dli_fname, error) : fs::path();
}

HMODULE LoadedLibrary(const fs::path& file) {
    HMODULE library = dlopen(file.c_str(), RTLD_LAZY | RTLD_NOLOAD);
    if (library != nullptr) {
        dlclose(library);
    }
    dlerror();  // a host that asks for the last error finds none that is not its own
    return library;
}

/// Whether a call of the name by any library of the process finds what the program has.
static bool HasForAll(const char* pszName) {
    HMODULE program = dlopen(nullptr, RTLD_LAZY);
    const bool bFound = program != nullptr && dlsym(program, pszName) != nullptr;
    if (program != nullptr) {
        dlclose(program);
    }
    return bFound;
}

// Own names come first only where they must: that also takes the program's own memory functions
// from the library, and AddressSanitizer ends a process for it. There a library has to be linked
// with -Bsymbolic.
#if defined(__SANITIZE_ADDRESS__)
static const int OWN_NAMES_FIRST = 0;
#else
static const int OWN_NAMES_FIRST = RTLD_DEEPBIND;
#endif

HMODULE LoadBesideNamesake(const fs::path& file, const char* pszName) {
    const int nOwnNames = HasForAll(pszName) ? OWN_NAMES_FIRST : 0;
    return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | nOwnNames);
}

std::string MachineName() {
    char szName[HOST_NAME_MAX + 1] = {};
    gethostname(szName, HOST_NAME_MAX);
    return szName;
}

std::uint32_t ProcessNumber() {
    return static_cast<std::uint32_t>(getpid());
}

static std::uint32_t s_Forks = 0;
[[maybe_unused]] static const int s_nForksCounted =
    pthread_atfork(nullptr, nullptr, [] { ++s_Forks; });

std::uint32_t ForkCount() {
    return s_Forks;
}

bool IsProcessThere(std::uint32_t number) {
    return kill(static_cast<pid_t>(number), 0) == 0 || errno != ESRCH;
}

LOCAL_TIME LocalTime(std::time_t moment) {
    LOCAL_TIME local = {};
    localtime_r(&moment, &local.time);
    local.minutesEast = static_cast<int>(local.time.tm_gmtoff / 60);
    return local;
}
