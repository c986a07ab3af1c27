// A dump's folder held against the catalogue and against the body that it came from.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

struct FINDING {
    std::string kind;  ///< "missing", "length", "bytes" or "foreign"
    std::string file;
    std::string property;  ///< empty for a foreign file
    std::string text;
};

using Findings = std::vector<FINDING>;

/// With `bBody` the bytes are held against the simulated body's saved values too.
Findings CheckDump(const std::filesystem::path& folder, bool bBody);
