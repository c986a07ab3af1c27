// Each block and its mutex opened once and closed again.
#include "jighost/check/SharedBlockCheck.h"

#include <memory>
#include <string>

#include "link/SharedMemory.h"
#include "platform/Platform.h"

namespace {

struct SHARED_BLOCK {
    const char* name;
    const char* mutexName;
    DWORD size;  ///< bytes
};

struct CloseHandleDeleter {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleDeleter>;

}  // namespace

static const SHARED_BLOCK BLOCKS[] = {
    {"SHARED_NAME_FOLDER", "MUTEX_NAME_FOLDER", SHARED_TEXT_SIZE},
    {"SHARED_NAME_BODYID", "MUTEX_NAME_BODYID", CBodyIDSharedMemory::BODY_ID_SIZE},
    {"SHARED_NAME_JIGItoPTP", "MUTEX_NAME_JIGItoPTP", SHARED_TEXT_SIZE},
    {"SHARED_NAME_CameraHandle", "MUTEX_NAME_CameraHandle", SHARED_TEXT_SIZE},
};

/// In ms. Nobody holds a mutex for longer than it takes to copy a block.
static const DWORD BLOCK_PATIENCE = 2000;

static std::string BlockErrorText(const SHARED_BLOCK& block, const char* what) {
    return std::string(what) + " " + block.name + " (error " + std::to_string(GetLastError()) + ")";
}

static std::string BlockFault(const SHARED_BLOCK& block) {
    const Handle mapping(CreateFileMappingA(
        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, block.size, block.name));
    if (mapping == nullptr) {
        return BlockErrorText(block, "can't open the block");
    }
    const void* pView = MapViewOfFile(mapping.get(), FILE_MAP_ALL_ACCESS, 0, 0, 0);
    if (pView == nullptr) {
        return BlockErrorText(block, "can't map the block");
    }
    UnmapViewOfFile(pView);
    const Handle mutex(CreateMutexA(nullptr, FALSE, block.mutexName));
    if (mutex == nullptr) {
        return BlockErrorText(block, "can't open the mutex of the block");
    }
    switch (WaitForSingleObject(mutex.get(), BLOCK_PATIENCE)) {
        case WAIT_TIMEOUT:
            return std::string("another process keeps the mutex of the block ") + block.name;
        case WAIT_FAILED:
            return BlockErrorText(block, "can't take the mutex of the block");
        default:
            ReleaseMutex(mutex.get());
            return "";
    }
}

std::string SharedBlockFault() {
    for (const SHARED_BLOCK& block : BLOCKS) {
        std::string fault = BlockFault(block);
        if (!fault.empty()) {
            return fault;
        }
    }
    return "";
}
