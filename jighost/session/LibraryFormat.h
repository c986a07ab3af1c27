// What kind of library a file is, told without loading it.
#pragma once

#include <string>

struct LIBRARY_FORMAT {
    std::string text;  ///< such as "64-bit ELF library"
    bool bLoadable{};  ///< whether this host's word size and system fit it
};

/// Of a file that can be anything.
LIBRARY_FORMAT ReadLibraryFormat(const std::string& path);

/// To be asked ahead of loading: the loader waits for a pipe, and a file that is cut off ends the
/// program within it. `what` names the library to people. Throws EXIT_NO_MODULE.
void RequireLoadable(const std::string& path, const std::string& what);
