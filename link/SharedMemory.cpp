// Opening, clearing and releasing of the blocks, and the copies of their content.
#include "link/SharedMemory.h"

#include <atomic>
#include <cstring>

// The platform call that failed last in MallocSharedMemory: the class itself keeps its three
// fields, which other modules know.
static std::atomic<const char*> s_pszFailedCall = "CreateFileMapping";

namespace {

/// Holds a block's mutex for one copy of its content.
class CMutexLock {
  public:
    explicit CMutexLock(HANDLE hMutex) : m_hMutex(hMutex) {
        WaitForSingleObject(m_hMutex, INFINITE);
    }
    CMutexLock(const CMutexLock&) = delete;
    CMutexLock& operator=(const CMutexLock&) = delete;
    ~CMutexLock() { ReleaseMutex(m_hMutex); }

  private:
    HANDLE m_hMutex;
};

}  // namespace

CSharedMemory::CSharedMemory() = default;
CSharedMemory::CSharedMemory(const CSharedMemory& other) = default;
CSharedMemory& CSharedMemory::operator=(const CSharedMemory& other) = default;
CSharedMemory::~CSharedMemory() = default;

std::int32_t CSharedMemory::MallocSharedMemory(
    std::uint32_t size, const char* pszSharedName, const char* pszMutexName) {
    hSharedMemory =
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size, pszSharedName);
    const DWORD lastError = GetLastError();
    if (hSharedMemory == nullptr) {
        s_pszFailedCall = "CreateFileMapping";
        return 0;
    }
    pSharedMemory = MapViewOfFile(hSharedMemory, FILE_MAP_ALL_ACCESS, 0, 0, 0);
    if (pSharedMemory == nullptr) {
        s_pszFailedCall = "MapViewOfFile";
        CloseHandle(hSharedMemory);
        hSharedMemory = nullptr;
        return 0;
    }
    hMutex = CreateMutexA(nullptr, FALSE, pszMutexName);
    if (lastError != ERROR_ALREADY_EXISTS) {
        const CMutexLock lock(hMutex);
        std::memset(pSharedMemory, 0, size);
    }
    return 1;
}

void CSharedMemory::FreeSharedMemory() {
    UnmapViewOfFile(pSharedMemory);
    pSharedMemory = nullptr;
    CloseHandle(hSharedMemory);
    hSharedMemory = nullptr;
    CloseHandle(hMutex);
    hMutex = nullptr;
}

void* CSharedMemory::GetpSharedMemory() const {
    return pSharedMemory;
}

HANDLE CSharedMemory::GethSharedMemory() const {
    return hSharedMemory;
}

CJIGItoPTPSharedMemory::CJIGItoPTPSharedMemory() {
    MallocSharedMemory(SHARED_TEXT_SIZE, "SHARED_NAME_JIGItoPTP", "MUTEX_NAME_JIGItoPTP");
}
CJIGItoPTPSharedMemory::CJIGItoPTPSharedMemory(const CJIGItoPTPSharedMemory& other) = default;
CJIGItoPTPSharedMemory& CJIGItoPTPSharedMemory::operator=(const CJIGItoPTPSharedMemory& other) =
    default;
CJIGItoPTPSharedMemory::~CJIGItoPTPSharedMemory() {
    FreeSharedMemory();
}

CCameraHandleSharedMemory::CCameraHandleSharedMemory() {
    MallocSharedMemory(SHARED_TEXT_SIZE, "SHARED_NAME_CameraHandle", "MUTEX_NAME_CameraHandle");
}
CCameraHandleSharedMemory::CCameraHandleSharedMemory(const CCameraHandleSharedMemory& other) =
    default;
CCameraHandleSharedMemory& CCameraHandleSharedMemory::operator=(
    const CCameraHandleSharedMemory& other) = default;
CCameraHandleSharedMemory::~CCameraHandleSharedMemory() {
    FreeSharedMemory();
}

CFolderSharedMemory::CFolderSharedMemory() {
    MallocSharedMemory(SHARED_TEXT_SIZE, "SHARED_NAME_FOLDER", "MUTEX_NAME_FOLDER");
}
CFolderSharedMemory::~CFolderSharedMemory() {
    FreeSharedMemory();
}

void CFolderSharedMemory::Load(char (&szPath)[PATH_SIZE]) const {
    const CMutexLock lock(hMutex);
    std::memcpy(szPath, pSharedMemory, PATH_SIZE);
}

CBodyIDSharedMemory::CBodyIDSharedMemory() {
    MallocSharedMemory(BODY_ID_SIZE, "SHARED_NAME_BODYID", "MUTEX_NAME_BODYID");
}
CBodyIDSharedMemory::~CBodyIDSharedMemory() {
    FreeSharedMemory();
}

void CBodyIDSharedMemory::Store(const BodyIDBytes& bytes) {
    const CMutexLock lock(hMutex);
    std::memcpy(pSharedMemory, bytes.data(), bytes.size());
}

const char* FailedSharedMemoryCall() {
    return s_pszFailedCall;
}
