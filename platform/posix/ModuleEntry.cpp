// Calls the library entry as a system with DllMain does. This file is linked into the module alone,
// behind all its other files: its object is then built after theirs and destroyed before them, at
// dlclose as well as at the end of a process that never unloads the module.
#include "platform/posix/WindowsCalls.h"

namespace {

// No function marked as a destructor: at the end of a process it would run behind the static
// destruction.
class ModuleEntry {
  public:
    ModuleEntry() { DllMain(nullptr, DLL_PROCESS_ATTACH, nullptr); }
    ModuleEntry(const ModuleEntry&) = delete;
    ModuleEntry& operator=(const ModuleEntry&) = delete;
    ~ModuleEntry() { DllMain(nullptr, DLL_PROCESS_DETACH, nullptr); }
};

const ModuleEntry s_ModuleEntry;

}  // namespace
