// From the session's own.
#include "platform/User.h"

#include <filesystem>

#include "platform/Platform.h"
#include "platform/Utf8Path.h"

// Behind the system's own header, which it takes for included.
#include <lmcons.h>

std::string UserName() {
    wchar_t szName[UNLEN + 1] = {};
    DWORD size = UNLEN + 1;
    return GetUserNameW(szName, &size) == FALSE ? "" : TextOf(std::filesystem::path(szName));
}
