// What the project counts on of the Windows and run-time calls, fulfilled on POSIX systems. Only
// what is stated here holds; each family of calls has a source file of its own beside this one.
#pragma once

#include <cstddef>
#include <cstdint>

using BOOL = int;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using HANDLE = void*;
using HMODULE = void*;
using HINSTANCE = void*;
using FARPROC = void (*)();
using errno_t = int;

#define WINAPI
#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(-1))

constexpr BOOL TRUE = 1;
constexpr BOOL FALSE = 0;

// --- Library entry (ModuleEntry.cpp) ---

constexpr DWORD DLL_PROCESS_DETACH = 0;
constexpr DWORD DLL_PROCESS_ATTACH = 1;
constexpr DWORD DLL_THREAD_ATTACH = 2;
constexpr DWORD DLL_THREAD_DETACH = 3;

/// Defined by the module; called with attach after its static initialisation and with detach before
/// its static destruction.
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void* pReserved);

// --- Loading of libraries (Library.cpp) ---

/// Loads a library, backslashes in the path allowed: null on failure, with the code in
/// GetLastError and the system's own text in LastLibraryError.
HMODULE LoadLibraryA(const char* pszPath);

/// The address of the library's own export, "name" or "name@version"; null if there is none.
FARPROC GetProcAddress(HMODULE library, const char* pszName);

/// Lets go of a library; the last one to do so unloads it.
BOOL FreeLibrary(HMODULE library);

// --- Named blocks and mutexes (NamedObjects.cpp) ---
//
// A named object lives exactly as long as any process holds it: a process that dies, also by
// SIGKILL, lets go of what it holds at that instant. It is its user's own: nobody else can open it,
// but while it does not live another user can take its place in the kernel, and it then does not
// open: ERROR_ACCESS_DENIED. Nothing of it ever stands in the file system.
//
// A handle belongs to the process that opened it. A child has none of it: in one that was forked
// each call with it fails with ERROR_INVALID_HANDLE.
//
// A block's content goes with its last holder. Behind killed holders a name's counters may stay in
// the kernel, all zero, and behind a creator that was killed on the way a block of zeros that
// nobody holds, until the next one to use the name has closed it.

constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_MOD_NOT_FOUND = 126;
constexpr DWORD ERROR_PROC_NOT_FOUND = 127;
constexpr DWORD ERROR_ALREADY_EXISTS = 183;
constexpr DWORD ERROR_NOT_OWNER = 288;

constexpr DWORD PAGE_READWRITE = 0x04;
constexpr DWORD FILE_MAP_ALL_ACCESS = 0xF001F;
constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_TIMEOUT = 258;
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;

/// The calling thread's code of the last call of this family or that of the libraries that failed
/// or that opened a block or a mutex: other calls that succeed leave it.
DWORD GetLastError();
void SetLastError(DWORD code);

/// Opens or creates the block `pszName` of `sizeLow` bytes; null on failure. GetLastError gives
/// ERROR_SUCCESS to exactly one opener, the creator, who finds the block zero, and
/// ERROR_ALREADY_EXISTS to the others. An existing block keeps its size,
/// which is a page at least; a mutex of the name is ERROR_INVALID_HANDLE. `file` is
/// INVALID_HANDLE_VALUE, `pAttributes` null, `protection` PAGE_READWRITE and `sizeHigh` 0.
HANDLE CreateFileMappingA(
    HANDLE file, void* pAttributes, DWORD protection, DWORD sizeHigh, DWORD sizeLow,
    const char* pszName);

/// Maps the whole block; null on failure. The view ends before its handle is closed. `access` is
/// FILE_MAP_ALL_ACCESS, offset and size are 0.
void* MapViewOfFile(
    HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow, std::size_t size);
BOOL UnmapViewOfFile(const void* pView);

/// Opens or creates the mutex `pszName`, not owned; null on failure. `pAttributes` is null,
/// `initialOwner` FALSE.
HANDLE CreateMutexA(void* pAttributes, BOOL initialOwner, const char* pszName);

/// Takes the mutex; a mutex whose owner died passes to the next waiter. Who has it does not take it
/// a second time. Gives WAIT_TIMEOUT if it is not free within `milliseconds`, of which INFINITE are
/// no limit.
DWORD WaitForSingleObject(HANDLE mutex, DWORD milliseconds);

/// FALSE, and nothing is released, if the mutex was not taken through this handle.
BOOL ReleaseMutex(HANDLE mutex);

/// Lets go of a block or a mutex; FALSE for a null handle.
BOOL CloseHandle(HANDLE handle);

// --- Files (Files.cpp) ---

constexpr int _O_RDONLY = 0x0000;
constexpr int _O_WRONLY = 0x0001;
constexpr int _O_APPEND = 0x0008;
constexpr int _O_CREAT = 0x0100;
constexpr int _O_TRUNC = 0x0200;
constexpr int _O_TEXT = 0x4000;
constexpr int _O_BINARY = 0x8000;
constexpr int _SH_DENYNO = 0x40;
constexpr int _S_IWRITE = 0x80;
constexpr int _S_IREAD = 0x100;

/// Opens a file, backslashes in the path allowed, and gives its number for _write and _close alone,
/// or -1 and an error number. Text and binary are the same here: a line ends in LF. A new file is
/// writable if `permission` holds _S_IWRITE. No sharing is ever denied.
errno_t _sopen_s(int* pnFile, const char* pszPath, int openFlags, int sharing, int permission);

/// Writes at most `count` bytes in one call; gives their number or -1. A pipe that nobody reads, a
/// terminal of another job and the limit of file sizes raise no signal.
int _write(int file, const void* pData, unsigned int count);

/// Gives 0, or -1 on failure.
int _close(int file);

// --- Bounded strings (Strings.cpp) ---
//
// Each gives 0, or an error number with the destination made empty: EINVAL for a null argument, a
// size of 0 or a radix outside 2 to 36, ERANGE where the result with its zero does not fit into
// `size` bytes. A source is read no further than fits.

errno_t strcpy_s(char* pszDestination, std::size_t size, const char* pszSource);
errno_t strcat_s(char* pszDestination, std::size_t size, const char* pszSource);

/// Digits in lower case; only radix 10 shows a sign, the others the value's 32 bits.
errno_t _itoa_s(int value, char* pszBuffer, std::size_t size, int radix);

// --- INI files (Profile.cpp) ---

/// The integer at `pszKey` of `[pszSection]`, names compared without case; `nDefault` where the
/// file, the section or the key is missing or the value is empty. Of several equal names the first
/// counts. A value is decimal or has the prefix 0x, 0o or 0b, may have a sign and quotes, and ends
/// at the first character that is no digit of it; without a digit it is 0.
UINT GetPrivateProfileIntA(
    const char* pszSection, const char* pszKey, int nDefault, const char* pszPath);
