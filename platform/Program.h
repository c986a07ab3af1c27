// What a program beside the module needs of the system it runs on.
#pragma once

#include <filesystem>

#include "platform/Platform.h"
#ifndef _WIN32
#include <unistd.h>
#endif

#ifdef _WIN32
constexpr char MODULE_FILE_NAME[] = "TuneBench.t460.dll";
constexpr char LINK_FILE_NAME[] = "BODYLNK.dll";
#else
constexpr char MODULE_FILE_NAME[] = "TuneBench.t460.so";
constexpr char LINK_FILE_NAME[] = "libBODYLNK.so";
#endif

/// The running program's file; empty if the system does not tell.
inline std::filesystem::path ProgramFile() {
#ifdef _WIN32
    char szPath[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameA(nullptr, szPath, MAX_PATH);
    return length < MAX_PATH ? std::filesystem::path(szPath) : std::filesystem::path();
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
    return _isatty(2) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

/// Whether standard output goes to a terminal.
inline bool IsOutputTerminal() {
#ifdef _WIN32
    return _isatty(1) != 0;
#else
    return isatty(STDOUT_FILENO) != 0;
#endif
}
