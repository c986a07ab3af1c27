// What `jighost recorder install` has laid down for the recorder in one file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace Recorder {

struct SETTINGS {
    std::filesystem::path into;  ///< the folder of the recordings
    std::uint64_t keep = 0;      ///< bytes that the recordings of a machine may have; 0 for any
    /// Bytes of the records of operations for which the module registers none.
    std::map<std::string, std::uint32_t, std::less<>> recordSizes;
};

/// Lines such as "into = FOLDER", "keep = BYTES" and "record GetDateTime = 24". What is no such
/// line is passed over; without a folder it is "recordings" beside the file.
SETTINGS ReadSettings(const std::filesystem::path& file);

/// The text of such a file.
std::string SettingsText(const SETTINGS& settings);

}  // namespace Recorder
