// A module that does what the environment's BAD_MODULE says: "crash" or "hang" when it is loaded,
// "exit" when it registers; with "leave" it registers as the module beside it does, and ends the
// program when it is unloaded; else it registers two operations in a way that is not theirs.
#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "frame/Registration.h"
#include "platform/Export.h"

static bool IsAsked(const char* pszHarm) {
    const char* pszAsked = std::getenv("BAD_MODULE");
    return pszAsked != nullptr && std::strcmp(pszAsked, pszHarm) == 0;
}

namespace {

struct Module {
    Module() {
        if (IsAsked("crash")) {
            std::abort();
        }
        while (IsAsked("hang")) {
        }
    }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    ~Module() {
        if (IsAsked("leave")) {
            std::_Exit(0);
        }
    }
};

const Module s_Module;

}  // namespace

extern "C" MODULE_API std::int32_t RegisterEventProcList(EVENT_PROC_REGISTER_FUNC callback) {
    if (IsAsked("exit")) {
        std::_Exit(0);
    }
    if (IsAsked("leave")) {
        Dl_info own{};
        dladdr(&s_Module, &own);
        const std::filesystem::path file(own.dli_fname);
        void* pSound = dlopen((file.parent_path() / MODULE_FILE).c_str(), RTLD_NOW);
        return reinterpret_cast<decltype(&RegisterEventProcList)>(
            dlsym(pSound, "RegisterEventProcList"))(callback);
    }
    std::int32_t size = 4;
    std::int32_t direction = EVENT_PROC_OUT;
    std::int32_t reserved = 0;
    callback("GetBodyID", nullptr, &size, &direction, &reserved);
    direction = EVENT_PROC_IN;
    callback("SetSoundVolume", nullptr, &size, &direction, &reserved);
    return 0;
}

extern "C" MODULE_API std::int32_t GetEventProcList(void* /*pTable*/) {
    return 0;
}

MODULE_EXPORT_AS(RegisterInitializeFuncList, "_RegisterInitializeFuncList@4");
extern "C" MODULE_API_RENAMED std::int32_t RegisterInitializeFuncList(void* /*pUnused*/) {
    return 0;
}
