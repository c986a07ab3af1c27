// Each block and its mutex opened once and closed again.
#include "jighost/check/SharedBlockCheck.h"

#include <chrono>
#include <future>
#include <memory>
#include <thread>

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

/// Nobody holds a mutex for longer than it takes to copy a block.
static const std::chrono::seconds BLOCK_PATIENCE(2);

/// Waits in a thread, since the wait itself knows no end.
static bool CanTake(HANDLE mutex) {
    const auto pTaken = std::make_shared<std::promise<void>>();
    std::thread([mutex, pTaken] {
        WaitForSingleObject(mutex, INFINITE);
        ReleaseMutex(mutex);
        pTaken->set_value();
    }).detach();
    return pTaken->get_future().wait_for(BLOCK_PATIENCE) == std::future_status::ready;
}

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
    Handle mutex(CreateMutexA(nullptr, FALSE, block.mutexName));
    if (mutex == nullptr) {
        return BlockErrorText(block, "can't open the mutex of the block");
    }
    if (!CanTake(mutex.get())) {
        static_cast<void>(mutex.release());  // the thread still waits for it
        return std::string("another process keeps the mutex of the block ") + block.name;
    }
    return "";
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
