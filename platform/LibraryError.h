// Why a library could not be loaded, for people to read.
#pragma once

#include <string>

/// The system's own words on the calling thread's failed LoadLibraryA or GetProcAddress; to be
/// asked for right behind the failure, and once.
std::string LastLibraryError();

/// The library that the one at `path` depends on and that is not there; empty if it could not be
/// loaded for another reason. `text` is that of LastLibraryError.
std::string MissingLibrary(const std::string& path, const std::string& text);
