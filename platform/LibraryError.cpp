// The loader's last message on each system.
#include "platform/LibraryError.h"

#include "platform/Platform.h"

#ifdef _WIN32

std::string LastLibraryError() {
    char szText[512];
    const DWORD length = FormatMessageA(
        FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, GetLastError(), 0,
        szText, sizeof szText, nullptr);
    std::string text(szText, length);
    text.erase(text.find_last_not_of("\r\n ") + 1);
    return text;
}

#else

#include <dlfcn.h>

std::string LastLibraryError() {
    const char* pszText = dlerror();
    return pszText != nullptr ? pszText : "";
}

#endif
