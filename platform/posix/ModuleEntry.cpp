// Calls the library entry as a system with DllMain does. This file is linked into the module alone,
// behind all its other files: its object is then built after theirs and destroyed before them, at
// dlclose as well as at the end of a process that never unloads the module.
#include <csignal>

#include "platform/posix/WindowsCalls.h"

namespace {

// While the module is loaded, a write past the process's limit of file sizes fails with an error
// number; by default its signal would end the host. A handler of the host's own is left alone.
class FileSizeSignal {
  public:
    FileSizeSignal() { Replace(SIG_DFL, SIG_IGN); }
    FileSizeSignal(const FileSizeSignal&) = delete;
    FileSizeSignal& operator=(const FileSizeSignal&) = delete;
    ~FileSizeSignal() {
        if (m_bReplaced) {
            Replace(SIG_IGN, SIG_DFL);
        }
    }

  private:
    using Handler = void (*)(int);

    void Replace(Handler from, Handler to) {
        struct sigaction action {};
        m_bReplaced = sigaction(SIGXFSZ, nullptr, &action) == 0 && action.sa_handler == from &&
                      std::signal(SIGXFSZ, to) != SIG_ERR;
    }

    bool m_bReplaced = false;
};

// No function marked as a destructor: at the end of a process it would run behind the static
// destruction.
class ModuleEntry {
  public:
    ModuleEntry() { DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr); }
    ModuleEntry(const ModuleEntry&) = delete;
    ModuleEntry& operator=(const ModuleEntry&) = delete;
    ~ModuleEntry() { DllMain(nullptr, DLL_PROCESS_DETACH, nullptr); }
};

const FileSizeSignal s_FileSizeSignal;
const ModuleEntry s_ModuleEntry;

}  // namespace
