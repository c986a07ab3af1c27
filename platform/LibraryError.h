// The system's own words on a library that could not be loaded, for people to read.
#pragma once

#include <string>

/// The text for the calling thread's failed LoadLibraryA or GetProcAddress; to be asked for right
/// behind the failure, and once.
std::string LastLibraryError();
