// Consoles get their text in UTF-16, whatever code page they show; files and pipes get UTF-8, lines
// ended as the run-time library ends them.
#include "platform/StandardFiles.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "platform/windows/ErrorNumber.h"
#include "platform/windows/WideText.h"

static HANDLE HandleOf(int nFile) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(nFile));
}

/// Colours and the way back to a line's begin are the terminal's own on other systems.
static void UnderstandEscapes(int nFile) {
    DWORD mode = 0;
    if (GetConsoleMode(HandleOf(nFile), &mode) != FALSE) {
        SetConsoleMode(HandleOf(nFile), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
}

// In their order: a new file gets the lowest number that is free. Open in the wrong direction, they
// fail as closed ones do.
void KeepStandardFiles() {
    for (const int nFile : {0, STANDARD_OUTPUT, STANDARD_ERROR}) {
        if (HandleOf(nFile) == INVALID_HANDLE_VALUE) {
            _open("NUL", nFile == 0 ? _O_WRONLY : _O_RDONLY);
        }
        UnderstandEscapes(nFile);
    }
}

static int WriteConsoleText(int nFile, std::string_view bytes) {
    const std::wstring text = WideText(bytes);
    std::wstring_view rest = text;
    while (!rest.empty()) {
        const DWORD most = 8192;  // what consoles of all versions take at once
        DWORD unCount = 0;
        const auto size = std::min(static_cast<DWORD>(rest.size()), most);
        if (WriteConsoleW(HandleOf(nFile), rest.data(), size, &unCount, nullptr) == FALSE) {
            return ErrorNumber(GetLastError());
        }
        rest.remove_prefix(unCount);
    }
    return 0;
}

int WriteStandardFile(int nFile, std::string_view bytes) {
    if (TerminalWidth(nFile) != 0) {
        return WriteConsoleText(nFile, bytes);
    }
    while (!bytes.empty()) {
        const int count = _write(nFile, bytes.data(), static_cast<unsigned int>(bytes.size()));
        if (count <= 0) {
            return errno;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
}

std::size_t TerminalWidth(int nFile) {
    CONSOLE_SCREEN_BUFFER_INFO facts{};
    return GetConsoleScreenBufferInfo(HandleOf(nFile), &facts) != FALSE
               ? static_cast<std::size_t>(facts.srWindow.Right - facts.srWindow.Left + 1)
               : 0;
}

std::string StandardFilePath(int nFile) {
    wchar_t szPath[32768];
    const DWORD length = GetFinalPathNameByHandleW(HandleOf(nFile), szPath, std::size(szPath), 0);
    return length < std::size(szPath) ? std::filesystem::path(szPath, szPath + length).string()
                                      : "";
}
