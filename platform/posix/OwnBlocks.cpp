// The kernel gives a process a namespace of its own for System V objects. Some containers forbid
// it: the runs there take turns.
#include "platform/OwnBlocks.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sched.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

#include "platform/OwnTurn.h"

static bool WriteText(const char* pszPath, const std::string& text) {
    const int nFile = open(pszPath, O_WRONLY | O_CLOEXEC);
    const bool bWritten =
        nFile >= 0 && write(nFile, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    close(nFile);
    return bWritten;
}

/// In a namespace of users everybody is nobody at first.
static bool KeepNumber(const char* pszMapPath, unsigned number) {
    const std::string text = std::to_string(number);
    return WriteText(pszMapPath, text + ' ' + text + " 1");
}

/// The first process of a namespace has every power in it, over its user's files as well, whose
/// modes would stop nothing any more.
static bool DropPower() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
    return syscall(SYS_capset, &header, none) == 0;
}

static bool EnterOwnNamespace() {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (user == 0) {
        return unshare(CLONE_NEWIPC) == 0;
    }
    // What an ordinary user may only do inside a namespace of users.
    return unshare(CLONE_NEWUSER | CLONE_NEWIPC) == 0 && KeepNumber("/proc/self/uid_map", user) &&
           WriteText("/proc/self/setgroups", "deny") && KeepNumber("/proc/self/gid_map", group) &&
           DropPower();
}

/// Tried by a child: nobody comes back from half the way.
static bool CanEnterOwnNamespace() {
    const pid_t child = fork();
    if (child == 0) {
        _exit(EnterOwnNamespace() ? 0 : 1);
    }
    int status = -1;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

void TakeOwnBlocks() {
    if (!CanEnterOwnNamespace()) {
        TakeOwnTurn();
    } else if (!EnterOwnNamespace()) {
        throw std::runtime_error("the kernel gives no namespace of its own");
    }
}
