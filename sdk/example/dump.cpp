// Has all adjustment data dumped into a folder, by the module's import library: the host holds the
// block that names the folder while the operation runs.
#include <cstdio>
#include <cstring>
#include <string>

#include "link/SharedMemory.h"
#include "module/Module.h"

static EVENT_PROC loadPropertyData;

static void Collect(
    const char* name, EVENT_PROC procedure, std::int32_t* /*size*/, std::int32_t* /*direction*/,
    std::int32_t* /*reserved*/) {
    if (std::strcmp(name, "LoadPropertyData") == 0) {
        loadPropertyData = procedure;
    }
}

int main(int argc, char** argv) {
    if (argc != 2 || std::strlen(argv[1]) >= SHARED_TEXT_SIZE) {
        std::fputs("usage: dump FOLDER, as a full path that ends in a backslash\n", stderr);
        return 1;
    }
    CSharedMemory folder;
    if (folder.MallocSharedMemory(SHARED_TEXT_SIZE, "SHARED_NAME_FOLDER", "MUTEX_NAME_FOLDER") ==
            0 ||
        RegisterEventProcList(Collect) != 0) {
        std::fputs("there is no block for the folder, or no operation\n", stderr);
        return 1;
    }
    std::strcpy(static_cast<char*>(folder.GetpSharedMemory()), argv[1]);
    const std::int32_t result = loadPropertyData(nullptr);
    folder.FreeSharedMemory();
    std::printf("LoadPropertyData: %d\n", result);
    return result;
}
