// Read from the files in the folder, and from the recordings.
#include "jighost/line/Status.h"

#include <algorithm>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "jighost/text/HostError.h"
#include "platform/Utf8Path.h"
#include "recorder/Files.h"
#include "recorder/RecordingName.h"
#include "trace/LineReader.h"
#include "trace/Trace.h"

namespace fs = std::filesystem;

static const char GAP_BEGINNING[] = R"({"entry":"gap")";

/// Until `onLine` gives false. A file that is not there has none: the recorder may have removed it
/// to make room.
static void ReadLines(
    const fs::path& file, const std::function<bool(std::string_view line)>& onLine) {
    try {
        LineReader lines(TextOf(file), 0);
        LineReader::FOUND found = lines.Next();
        while (found == LineReader::FOUND::LINE && onLine(lines.Text())) {
            found = lines.Next();
        }
        if (found == LineReader::FOUND::TOO_LONG) {
            throw TraceError(
                TextOf(file) + ": expected at most " + std::to_string(LONGEST_LINE) +
                " bytes in a line");
        }
    } catch (const TraceError& e) {
        std::error_code error;
        if (fs::exists(file, error) || error) {
            throw HostError(EXIT_HOST_ERROR, e.what());
        }
    }
}

static std::string FirstLineOf(const fs::path& file) {
    std::string first;
    ReadLines(file, [&](std::string_view line) {
        first = line.substr(0, line.size() - (line.ends_with('\r') ? 1 : 0));
        return false;
    });
    return first;
}

/// Empty for a recording whose head is none.
static std::string Begun(const fs::path& recording) {
    const auto head = nlohmann::json::parse(FirstLineOf(recording), nullptr, false);
    return head.is_object() && head.contains("started") && head["started"].is_string()
               ? head["started"].get<std::string>()
               : "";
}

static void CountGaps(const fs::path& recording, RECORDER_STATUS& status) {
    ReadLines(recording, [&](std::string_view line) {
        if (line.starts_with(GAP_BEGINNING)) {
            const auto gap = nlohmann::json::parse(line, nullptr, false);
            const bool bTold =
                gap.is_object() && gap.contains("entries") && gap["entries"].is_number_unsigned();
            ++status.gaps;
            status.lost += bTold ? gap["entries"].get<std::uint64_t>() : 0;
        }
        return true;
    });
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
