// Parts of names, put together and taken apart.
#include "recorder/RecordingName.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <tuple>

#include "platform/Surroundings.h"
#include "recorder/Files.h"

namespace fs = std::filesystem;

namespace Recorder {

static const std::size_t MOMENT_LENGTH = sizeof("20261122_210659") - 1;

static std::string Formatted(const LOCAL_TIME& local, const char* pszForm) {
    char szText[32];
    return {szText, std::strftime(szText, sizeof szText, pszForm, &local.time)};
}

static bool IsPlain(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z') || character == '-' || character == '.';
}

bool RECORDING_NAME::operator<(const RECORDING_NAME& other) const {
    return std::tie(moment, machine, process, number) <
           std::tie(other.moment, other.machine, other.process, other.number);
}

RECORDING_NAME NewName(std::time_t moment) {
    std::string machine = MachineName();
    std::replace_if(
        machine.begin(), machine.end(), [](char character) { return !IsPlain(character); }, '-');
    return {Formatted(LocalTime(moment), "%Y%m%d_%H%M%S"), machine, ProcessNumber()};
}

std::string FileName(const RECORDING_NAME& name) {
    return name.moment + '_' + name.machine + '_' + std::to_string(name.process) +
           (name.number > 1 ? '_' + std::to_string(name.number) : "") + RECORDING_ENDING;
}

std::optional<RECORDING_NAME> ParseFileName(const std::string& fileName) {
    const std::size_t machine = MOMENT_LENGTH + 1;
    const std::size_t process = fileName.find('_', machine);
    if (!fileName.ends_with(RECORDING_ENDING) || process == std::string::npos) {
        return std::nullopt;
    }
    RECORDING_NAME name = {
        fileName.substr(0, MOMENT_LENGTH), fileName.substr(machine, process - machine), 0};
    const char* pEnd = fileName.data() + fileName.size();
    const auto parsed = std::from_chars(fileName.data() + process + 1, pEnd, name.process);
    if (parsed.ec != std::errc()) {
        return std::nullopt;
    }
    if (parsed.ptr != pEnd && *parsed.ptr == '_') {
        std::from_chars(parsed.ptr + 1, pEnd, name.number);
    }
    return FileName(name) == fileName ? std::optional(name) : std::nullopt;
}

std::vector<RECORDING_FILE> RecordingsIn(const fs::path& folder) {
    std::vector<RECORDING_FILE> files;
    std::error_code error;
    for (fs::directory_iterator each(folder, error), end; !error && each != end;
         each.increment(error)) {
        const auto name = ParseFileName(each->path().filename().string());
        std::error_code gone;
        const std::uintmax_t size = each->file_size(gone);
        if (name && !gone) {
            files.push_back({each->path(), *name, size});
        }
    }
    std::sort(files.begin(), files.end(), [](const auto& left, const auto& right) {
        return left.name < right.name;
    });
    return files;
}

std::string MomentText(std::time_t moment) {
    const LOCAL_TIME local = LocalTime(moment);
    const int nEast = std::abs(local.minutesEast);
    char szZone[16];
    std::snprintf(
        szZone, sizeof szZone, "%c%02d:%02d", local.minutesEast < 0 ? '-' : '+', nEast / 60,
        nEast % 60);
    return Formatted(local, "%Y-%m-%dT%H:%M:%S") + szZone;
}

}  // namespace Recorder
