// Told by what the files hold.
#include "jighost/line/LibraryPlace.h"

#include "jighost/session/Installation.h"
#include "jighost/text/HostError.h"
#include "platform/TextFile.h"
#include "recorder/Files.h"

namespace fs = std::filesystem;

static LIBRARY_PLACE PlaceOf(const fs::path& folder, const char* pszName) {
    return {folder / pszName, folder / Recorder::RecordedName(pszName), RecorderFolder() / pszName};
}

std::array<LIBRARY_PLACE, 2> LibraryPlaces(const fs::path& folder) {
    return {PlaceOf(folder, LINK_FILE_NAME), PlaceOf(folder, MODULE_FILE_NAME)};
}

OCCUPANT OccupantOf(const fs::path& file) {
    if (!fs::exists(fs::symlink_status(file))) {
        return OCCUPANT::NOTHING;
    }
    try {
        const std::string bytes = ReadTextFile(file, LARGEST_LIBRARY);
        return bytes.find(Recorder::MARK) != std::string::npos ? OCCUPANT::RECORDER
                                                               : OCCUPANT::LIBRARY;
    } catch (const std::runtime_error& e) {
        throw HostError(EXIT_HOST_ERROR, e.what());
    }
}

PLACED PlacedIn(const LIBRARY_PLACE& place) {
    const bool bRecorded = fs::exists(fs::symlink_status(place.recorded));
    if (OccupantOf(place.file) == OCCUPANT::RECORDER) {
        return bRecorded ? PLACED::WHOLE : PLACED::HALF;
    }
    return bRecorded ? PLACED::HALF : PLACED::NOT;
}

fs::path SettingsFile(const fs::path& folder) {
    return folder / Recorder::SETTINGS_FILE_NAME;
}
