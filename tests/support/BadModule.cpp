// A module that does what the file harm.txt says: "crash" or "hang" when it is loaded,
// "exit" when it registers; with "leave" it registers as the module beside it does, and ends the
// program when it is unloaded; with "strange" it registers those in directions that there are not,
// with "nameless" one without a name; with "refuse" it registers nothing and fails; else it
// registers two operations in a way that is not theirs.
#include <cstdlib>
#include <fstream>
#include <string>

#include "frame/Registration.h"
#include "platform/Export.h"
#include "platform/Program.h"

static bool IsAsked(const std::string& harm) {
    std::string asked;
    return std::ifstream("harm.txt") >> asked && asked == harm;
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

static EVENT_PROC_REGISTER_FUNC g_pCallback = nullptr;

static void RegisterStrangely(
    const char* name, EVENT_PROC procedure, std::int32_t* size, std::int32_t* direction,
    std::int32_t* reserved) {
    *direction += 7;
    g_pCallback(name, procedure, size, direction, reserved);
}

extern "C" MODULE_API std::int32_t RegisterEventProcList(EVENT_PROC_REGISTER_FUNC callback) {
    if (IsAsked("exit")) {
        std::_Exit(0);
    }
    if (IsAsked("leave") || IsAsked("strange")) {
        g_pCallback = callback;
        const std::string sound = (ProgramFolder() / MODULE_FILE_NAME).string();
        const auto pRegister = reinterpret_cast<void (*)()>(
            GetProcAddress(LoadLibraryA(sound.c_str()), "RegisterEventProcList"));
        return reinterpret_cast<decltype(&RegisterEventProcList)>(pRegister)(
            IsAsked("leave") ? callback : &RegisterStrangely);
    }
    if (IsAsked("refuse")) {
        return 3;
    }
    std::int32_t size = 4;
    std::int32_t direction = EVENT_PROC_OUT;
    std::int32_t reserved = 0;
    if (IsAsked("nameless")) {
        callback(nullptr, nullptr, nullptr, nullptr, nullptr);
        return 0;
    }
    callback("GetBodyID", nullptr, &size, &direction, &reserved);
    direction = EVENT_PROC_IN;
    callback("SetSoundVolume", nullptr, &size, &direction, &reserved);
    return 0;
}

extern "C" MODULE_API std::int32_t GetEventProcList(void* /*pTable*/) {
    return 0;
}

MODULE_EXPORT_AS(RegisterInitializeFuncList, "_RegisterInitializeFuncList@4");
extern "C" MODULE_API_RENAMED std::int32_t WINAPI RegisterInitializeFuncList(void* /*pUnused*/) {
    return 0;
}
