// Named blocks of memory shared with other processes, each with a named mutex beside it.
//
// A block lives as long as anybody holds it open: its content outlasts an operation only if
// another holder keeps it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/Export.h"
#include "platform/Platform.h"

class MODULE_API CSharedMemory {
  public:
    CSharedMemory();
    /// Copies share the handles of the original; only one of them may release them.
    CSharedMemory(const CSharedMemory& other);
    CSharedMemory& operator=(const CSharedMemory& other);
    /// Does nothing with the block: FreeSharedMemory releases it.
    virtual ~CSharedMemory();

    /// Opens or creates the block of `size` bytes; a block that this call creates is zero. Gives 1,
    /// or 0 if the block could not be opened.
    std::int32_t MallocSharedMemory(
        std::uint32_t size, const char* pszSharedName, const char* pszMutexName);
    void FreeSharedMemory();

    /// The view of the whole block; null when not open.
    void* GetpSharedMemory() const;
    /// The mapping, not the mutex; null when not open.
    HANDLE GethSharedMemory() const;

  protected:
    HANDLE hSharedMemory = nullptr;
    void* pSharedMemory = nullptr;
    HANDLE hMutex = nullptr;
};

/// Bytes of each block that holds a text: 260 characters and a zero.
constexpr std::uint32_t SHARED_TEXT_SIZE = 261;

/// Open from construction to destruction; for other modules of the host.
class MODULE_API CJIGItoPTPSharedMemory : public CSharedMemory {
  public:
    CJIGItoPTPSharedMemory();
    CJIGItoPTPSharedMemory(const CJIGItoPTPSharedMemory& other);
    CJIGItoPTPSharedMemory& operator=(const CJIGItoPTPSharedMemory& other);
    ~CJIGItoPTPSharedMemory() override;
};

/// Open from construction to destruction; for other modules of the host.
class MODULE_API CCameraHandleSharedMemory : public CSharedMemory {
  public:
    CCameraHandleSharedMemory();
    CCameraHandleSharedMemory(const CCameraHandleSharedMemory& other);
    CCameraHandleSharedMemory& operator=(const CCameraHandleSharedMemory& other);
    ~CCameraHandleSharedMemory() override;
};

/// The folder for adjustment data: a full path that another party writes, zero-terminated.
class CFolderSharedMemory : public CSharedMemory {
  public:
    static constexpr std::size_t PATH_SIZE = 260;

    CFolderSharedMemory();
    ~CFolderSharedMemory() override;

    /// Copies the block's first bytes under the mutex. The text need not end within them.
    void Load(char (&szPath)[PATH_SIZE]) const;
};

/// The body ID last seen: the bytes of the camera's property, as they stand there.
class CBodyIDSharedMemory : public CSharedMemory {
  public:
    static constexpr std::size_t BODY_ID_SIZE = 8;
    using BodyIDBytes = std::array<std::uint8_t, BODY_ID_SIZE>;

    CBodyIDSharedMemory();
    ~CBodyIDSharedMemory() override;

    /// Stores the bytes under the mutex.
    void Store(const BodyIDBytes& bytes);
};

/// The platform call by which a block could not be opened last, such as "MapViewOfFile".
const char* FailedSharedMemoryCall();
