// How recordings are called: "20261122_210659_line3_4711.jsonl", by date and local time, machine
// and process; "_2" and so on stand behind the process where there is such a file already.
#pragma once

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Recorder {

struct RECORDING_NAME {
    std::string moment;   ///< "20261122_210659"
    std::string machine;  ///< without characters that a name of ours gives a meaning to
    std::uint32_t process = 0;
    unsigned number = 1;  ///< of those that would be called the same

    bool operator==(const RECORDING_NAME&) const = default;
    /// Older ones are less.
    bool operator<(const RECORDING_NAME& other) const;
};

/// Of a recording that this process begins at the moment.
RECORDING_NAME NewName(std::time_t moment);

std::string FileName(const RECORDING_NAME& name);

/// Nothing for what is no recording's name.
std::optional<RECORDING_NAME> ParseFileName(const std::string& fileName);

struct RECORDING_FILE {
    std::filesystem::path path;
    RECORDING_NAME name;
    std::uint64_t size;
};

/// Those in a folder, oldest first; none if it can't be read.
std::vector<RECORDING_FILE> RecordingsIn(const std::filesystem::path& folder);

/// "2026-11-22T21:06:59+01:00".
std::string MomentText(std::time_t moment);

}  // namespace Recorder
