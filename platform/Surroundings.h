// What a library finds out about the process and the machine that it runs in.
#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <string>

#include "platform/Platform.h"

/// The file of the library that holds the address, as it was loaded; empty if the system does not
/// tell.
std::filesystem::path LibraryFileOf(const void* pAddress);

/// The library that was loaded from this file, whoever has done it: null if nobody has. The caller
/// does not hold it.
HMODULE LoadedLibrary(const std::filesystem::path& file);

/// Loads a library by its full path. If the program has `pszName`, which the library defines too,
/// for all its libraries, the library's own calls of what it defines stay within it all the same.
/// Null on failure, told by LastLibraryError.
HMODULE LoadBesideNamesake(const std::filesystem::path& file, const char* pszName);

std::string MachineName();
std::uint32_t ProcessNumber();
/// Counts up in a process that was forked: cheaper to ask than its number.
std::uint32_t ForkCount();
/// Whether there is such a process on this machine.
bool IsProcessThere(std::uint32_t number);

/// The machine's local time, and its distance from UTC in minutes; does not touch what the program
/// may have of its last `localtime`.
struct LOCAL_TIME {
    std::tm time;
    int minutesEast;
};
LOCAL_TIME LocalTime(std::time_t moment);
