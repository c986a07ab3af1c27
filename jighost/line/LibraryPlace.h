// A place in a host's folder that the recorder takes: the library's own name, and the one that the
// library has meanwhile.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>

/// Bytes; nobody has larger ones.
constexpr std::uint64_t LARGEST_LIBRARY = 1'000'000'000;

struct LIBRARY_PLACE {
    std::filesystem::path file;      ///< in the host's folder, under the name that others know
    std::filesystem::path recorded;  ///< the library while the recorder has its name
    std::filesystem::path recorder;  ///< what jighost has for the place
};

/// Those of link and module. In this order the recorder comes, and it goes in the other one: the
/// module's part works with the link's.
std::array<LIBRARY_PLACE, 2> LibraryPlaces(const std::filesystem::path& folder);

enum class OCCUPANT { NOTHING, LIBRARY, RECORDER };

/// What lies at the path. Throws EXIT_HOST_ERROR if it can't be read.
OCCUPANT OccupantOf(const std::filesystem::path& file);

/// How far the recorder stands in a place.
enum class PLACED { NOT, WHOLE, HALF };
PLACED PlacedIn(const LIBRARY_PLACE& place);

/// In the settings' place of the folder.
std::filesystem::path SettingsFile(const std::filesystem::path& folder);
