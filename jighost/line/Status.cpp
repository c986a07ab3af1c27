// Read from the files in the folder, and from the recordings.
#include "jighost/line/Status.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>

#include "jighost/text/HostError.h"
#include "platform/FileStream.h"
#include "recorder/Files.h"
#include "recorder/RecordingName.h"

namespace fs = std::filesystem;

static const char GAP[] = R"({"entry":"gap")";

static std::string FirstLineOf(const fs::path& file) {
    FileStream stream(file);
    std::string line;
    std::getline(stream, line);
    line.resize(line.size() - (line.ends_with('\r') ? 1 : 0));
    return line;
}

/// Empty for a recording whose head is none.
static std::string Begun(const fs::path& recording) {
    const auto head = nlohmann::json::parse(FirstLineOf(recording), nullptr, false);
    return head.is_object() && head.contains("started") && head["started"].is_string()
               ? head["started"].get<std::string>()
               : "";
}

static void CountGaps(const fs::path& recording, RECORDER_STATUS& status) {
    FileStream stream(recording);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(GAP)) {
            const auto gap = nlohmann::json::parse(line, nullptr, false);
            ++status.gaps;
            status.lost += gap.is_object() ? gap.value("entries", std::uint64_t{0}) : 0;
        }
    }
}

RECORDER_STATUS StatusOf(const fs::path& folder) {
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        throw HostError(EXIT_WRONG_USE, "there is no folder " + folder.string());
    }
    RECORDER_STATUS status;
    std::ranges::transform(LibraryPlaces(folder), status.places.begin(), PlacedIn);
    status.bSettings = fs::exists(SettingsFile(folder));
    status.settings = Recorder::ReadSettings(SettingsFile(folder));
    for (const Recorder::RECORDING_FILE& file : Recorder::RecordingsIn(status.settings.into)) {
        status.since = status.files++ == 0 ? Begun(file.path) : status.since;
        status.bytes += file.size;
        CountGaps(file.path, status);
    }
    status.failure = FirstLineOf(folder / Recorder::FAILURE_FILE_NAME);
    return status;
}
