// What kind of library a file is, told without loading it.
#pragma once

#include <string>

struct LIBRARY_FORMAT {
    std::string text;  ///< such as "64-bit ELF library"
    bool bLoadable{};  ///< whether this host's word size and system fit it
};

/// Of a file that can be anything.
LIBRARY_FORMAT ReadLibraryFormat(const std::string& path);
