// The module's files, in memory: within this program a relative path leads here, whoever opens it
// by the system's open. Only the module does.
#pragma once

#include <cstdint>
#include <string>

struct MEMORY_FILES {
    std::string log;              ///< JigDll.log
    std::string ini;              ///< BoardInf.ini
    std::uint32_t dumpFiles = 0;  ///< files of a dump that may still be made; a further one fails
    bool bDiskFull = false;       ///< what is written to a dump fails
    std::uint32_t open = 0;       ///< descriptors that are not closed
};

MEMORY_FILES& MemoryFiles();
