// What is installed in a host's folder, and what it has recorded.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

#include "jighost/line/LibraryPlace.h"
#include "recorder/Settings.h"

struct RECORDER_STATUS {
    std::array<PLACED, 2> places{};  ///< link and module
    bool bSettings = false;
    Recorder::SETTINGS settings;
    std::size_t files = 0;
    std::uint64_t bytes = 0;
    std::string since;       ///< when the oldest recording was begun; empty without one
    std::uint64_t gaps = 0;  ///< places in the recordings where entries are missing
    std::uint64_t lost = 0;  ///< the entries
    std::string failure;     ///< the recorder's own words on its last failure; empty for none
};

/// Reads all recordings. Throws HostError.
RECORDER_STATUS StatusOf(const std::filesystem::path& folder);
