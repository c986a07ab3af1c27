// What tells one version of a library from another.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace Recorder {

struct LIBRARY_FACTS {
    std::filesystem::path file;
    std::uint64_t size = 0;
    std::string version;  ///< as Windows libraries have it, such as "1.2.0.7"; empty for none
    std::string hash;     ///< SHA-256; empty for a file that can't be read
};

LIBRARY_FACTS ReadLibraryFacts(const std::filesystem::path& file);

}  // namespace Recorder
