// The least that a host does: loads the module, learns its operations and calls one.
#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <cstdio>
#include <map>
#include <string>

#include "frame/Registration.h"
#include "identity/BodyID.h"

static std::map<std::string, EVENT_PROC> operations;

static void Collect(
    const char* name, EVENT_PROC procedure, std::int32_t* /*size*/, std::int32_t* /*direction*/,
    std::int32_t* /*reserved*/) {
    operations[name] = procedure;
}

// Null if there is no module, or no such export.
static void* ExportOfModule(const char* name) {
#ifdef _WIN32
    return reinterpret_cast<void*>(GetProcAddress(LoadLibraryA("TuneBench.t460.dll"), name));
#else
    void* module = dlopen("./TuneBench.t460.so", RTLD_NOW);
    return module == nullptr ? nullptr : dlsym(module, name);
#endif
}

int main() {
    auto registerList = reinterpret_cast<std::int32_t (*)(EVENT_PROC_REGISTER_FUNC)>(
        ExportOfModule("RegisterEventProcList"));
    if (registerList == nullptr || registerList(Collect) != 0) {
        std::fputs("the module can't be loaded\n", stderr);
        return 1;
    }
    BODY_ID_T body{};
    const std::int32_t result = operations.at("GetBodyID")(&body);
    std::printf("GetBodyID: %d, serial number %u\n", result, body.SerialNo);
    return result;
}
