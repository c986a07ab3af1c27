// What a program beside the module needs of the system it runs on.
#pragma once

#include <filesystem>

#include "platform/Platform.h"
#ifndef _WIN32
#include <poll.h>
#include <unistd.h>
#endif

#ifdef _WIN32
constexpr bool IS_WINDOWS = true;
constexpr char MODULE_FILE_NAME[] = "TuneBench.t460.dll";
constexpr char LINK_FILE_NAME[] = "BODYLNK.dll";
#else
constexpr bool IS_WINDOWS = false;
constexpr char MODULE_FILE_NAME[] = "TuneBench.t460.so";
constexpr char LINK_FILE_NAME[] = "libBODYLNK.so";
#endif

/// The running program's file; empty if the system does not tell.
inline std::filesystem::path ProgramFile() {
#ifdef _WIN32
    wchar_t szPath[32768] = {};  // as long as a path may be
    const DWORD length = GetModuleFileNameW(nullptr, szPath, std::size(szPath));
    return length < std::size(szPath) ? std::filesystem::path(szPath) : std::filesystem::path();
#else
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
#endif
}

/// The folder of the running program's file; empty if the system does not tell.
inline std::filesystem::path ProgramFolder() {
    return ProgramFile().parent_path();
}

/// Whether standard error goes to a terminal.
inline bool IsErrorOutputTerminal() {
#ifdef _WIN32
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != FALSE;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

/// Whether standard output goes to a terminal.
inline bool IsOutputTerminal() {
#ifdef _WIN32
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != FALSE;
#else
    return isatty(STDOUT_FILENO) != 0;
#endif
}

/// Whether standard input comes from a terminal.
inline bool IsInputTerminal() {
#ifdef _WIN32
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != FALSE;
#else
    return isatty(STDIN_FILENO) != 0;
#endif
}

/// Waits for standard input to have something, or its end, for so many milliseconds at most. Gives
/// whether it has.
inline bool WaitForInput(int nMilliseconds) {
#ifdef _WIN32
    const DWORD time = static_cast<DWORD>(nMilliseconds);
    return WaitForSingleObject(GetStdHandle(STD_INPUT_HANDLE), time) == WAIT_OBJECT_0;
#else
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, nMilliseconds) > 0;
#endif
}
