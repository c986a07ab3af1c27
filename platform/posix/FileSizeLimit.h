// How large the files that this process writes may become.
#pragma once

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

/// RLIM_INFINITY for any size. Asked ahead of many writes, since the host can change it at any
/// time: the run-time library's getrlimit takes the kernel two and a half times as long.
inline rlim_t FileSizeLimit() {
    static_assert(sizeof(rlim_t) == sizeof(long), "the kernel's form of a limit");
    rlimit limit{};
    return syscall(SYS_getrlimit, RLIMIT_FSIZE, &limit) == 0 ? limit.rlim_cur : 0;
}
