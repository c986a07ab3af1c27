// Libraries loaded by the dynamic linker.
#include <dlfcn.h>
#include <link.h>

#include <cstring>

#include "platform/posix/NativePath.h"
#include "platform/posix/WindowsCalls.h"

HMODULE LoadLibraryA(const char* pszPath) {
    char szNative[PATH_MAX];
    if (pszPath == nullptr || !ToNativePath(pszPath, szNative)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    HMODULE library = dlopen(szNative, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        SetLastError(ERROR_MOD_NOT_FOUND);
    }
    return library;
}

/// The system keeps "name@version" as two texts.
static void* FindVersioned(HMODULE library, const char* pszName, const char* pszAt) {
    char szPlainName[256];
    const auto length = static_cast<std::size_t>(pszAt - pszName);
    if (length >= sizeof szPlainName) {
        return nullptr;
    }
    std::memcpy(szPlainName, pszName, length);
    szPlainName[length] = '\0';
    return dlvsym(library, szPlainName, pszAt + 1);
}

/// The system looks into the libraries that one depends on too: what it finds there is no export.
static bool IsIn(HMODULE library, const void* pAddress) {
    link_map* pLibrary = nullptr;
    void* pOwner = nullptr;
    Dl_info info{};
    return dlinfo(library, RTLD_DI_LINKMAP, static_cast<void*>(&pLibrary)) == 0 &&
           dladdr1(pAddress, &info, &pOwner, RTLD_DL_LINKMAP) != 0 && pOwner == pLibrary;
}

FARPROC GetProcAddress(HMODULE library, const char* pszName) {
    if (library == nullptr || pszName == nullptr) {  // the system takes null for all libraries
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const char* pszAt = std::strchr(pszName, '@');
    void* pAddress =
        pszAt != nullptr ? FindVersioned(library, pszName, pszAt) : dlsym(library, pszName);
    if (pAddress == nullptr || !IsIn(library, pAddress)) {
        SetLastError(ERROR_PROC_NOT_FOUND);
        return nullptr;
    }
    return reinterpret_cast<FARPROC>(pAddress);
}

BOOL FreeLibrary(HMODULE library) {
    if (library == nullptr || dlclose(library) != 0) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    return TRUE;
}
