// The calls stand in the program, where the loader finds them ahead of the system's.
#include "fuzz/MemoryFiles.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <string_view>

#include "platform/Export.h"

namespace {

/// Numbers that the system gives to no file; the platform's layer doubles them.
enum DESCRIPTOR : int { FIRST_DESCRIPTOR = 1 << 29, LOG = FIRST_DESCRIPTOR, INI, DUMP };

std::size_t s_IniPosition = 0;

bool IsOurs(int file) {
    return file >= FIRST_DESCRIPTOR;
}

int Refuse(int error) {
    errno = error;
    return -1;
}

int OpenInMemory(std::string_view path, int flags) {
    MEMORY_FILES& files = MemoryFiles();
    if (path == "JigDll.log") {
        ++files.open;
        return LOG;
    }
    if (path == "./BoardInf.ini") {
        ++files.open;
        s_IniPosition = 0;
        return INI;
    }
    if ((flags & O_CREAT) == 0) {
        return Refuse(ENOENT);
    }
    if (files.dumpFiles == 0) {
        return Refuse(ENOSPC);
    }
    --files.dumpFiles;
    ++files.open;
    return DUMP;
}

// At the file's end, wherever else a call wants it: the module writes nowhere else.
ssize_t WriteInMemory(int file, const void* pData, std::size_t count) {
    MEMORY_FILES& files = MemoryFiles();
    if (file == DUMP && files.bDiskFull) {
        return Refuse(ENOSPC);
    }
    if (file == LOG) {
        files.log.append(static_cast<const char*>(pData), count);
    }
    return static_cast<ssize_t>(count);
}

/// The system's call of this name.
template <class Call>
Call* System(Call* /*type*/, const char* pszName) {
    return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, pszName));
}

}  // namespace

MEMORY_FILES& MemoryFiles() {
    // Never destroyed: the module writes its last lines when the program ends.
    static auto& files = *new MEMORY_FILES;
    return files;
}

extern "C" MODULE_API int open(const char* pszPath, int flags, ...) {
    if (*pszPath != '/') {
        return OpenInMemory(pszPath, flags);
    }
    static const auto system = System(&open, "open");
    std::va_list arguments;
    va_start(arguments, flags);
    const int mode = (flags & O_CREAT) != 0 ? va_arg(arguments, int) : 0;
    va_end(arguments);
    return system(pszPath, flags, mode);
}

extern "C" MODULE_API ssize_t read(int file, void* pData, std::size_t count) {
    if (!IsOurs(file)) {
        static const auto system = System(&read, "read");
        return system(file, pData, count);
    }
    if (file != INI) {
        return Refuse(EBADF);
    }
    const std::string& ini = MemoryFiles().ini;
    const std::size_t taken = ini.copy(static_cast<char*>(pData), count, s_IniPosition);
    s_IniPosition += taken;
    return static_cast<ssize_t>(taken);
}

extern "C" MODULE_API ssize_t write(int file, const void* pData, std::size_t count) {
    static const auto system = System(&write, "write");
    return IsOurs(file) ? WriteInMemory(file, pData, count) : system(file, pData, count);
}

extern "C" MODULE_API ssize_t pwrite(int file, const void* pData, std::size_t count, off_t offset) {
    static const auto system = System(&pwrite, "pwrite");
    return IsOurs(file) ? WriteInMemory(file, pData, count) : system(file, pData, count, offset);
}

extern "C" MODULE_API int close(int file) {
    if (!IsOurs(file)) {
        static const auto system = System(&close, "close");
        return system(file);
    }
    --MemoryFiles().open;
    return 0;
}

extern "C" MODULE_API int fstat(int file, struct stat* pInfo) noexcept {
    if (!IsOurs(file)) {
        static const auto system = System(&fstat, "fstat");
        return system(file, pInfo);
    }
    *pInfo = {};
    pInfo->st_mode = S_IFREG;
    return 0;
}
