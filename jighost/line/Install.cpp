// Each library keeps a second name before the recorder takes the first one, in one step: at no
// moment is a host without its libraries.
#include "jighost/line/Install.h"

#include <array>
#include <set>

#include "jighost/check/Doctor.h"
#include "jighost/line/LibraryPlace.h"
#include "jighost/operations/OperationTable.h"
#include "jighost/output/Complaint.h"
#include "jighost/text/HostError.h"
#include "platform/FileReader.h"
#include "platform/LibraryNames.h"
#include "platform/TextFile.h"
#include "platform/WholeFile.h"
#include "recorder/Files.h"
#include "recorder/Settings.h"

namespace fs = std::filesystem;

// --- Checks ---

static void CheckFolder(const fs::path& folder) {
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        throw HostError(EXIT_WRONG_USE, "there is no folder " + folder.string());
    }
}

static void CheckPlace(const LIBRARY_PLACE& place) {
    if (PlacedIn(place) != PLACED::NOT) {
        const std::string folder = place.file.parent_path().string();
        throw HostError(
            EXIT_WRONG_USE, "there is a recorder already, or part of one, in " + folder +
                                ": jighost recorder status tells more");
    }
    if (!fs::is_regular_file(fs::symlink_status(place.file))) {
        throw HostError(
            EXIT_WRONG_USE,
            "expected a library " + place.file.string() + ", which is no file, or a link to one");
    }
    if (OccupantOf(place.recorder) != OCCUPANT::RECORDER) {
        throw HostError(
            EXIT_HOST_ERROR, "this jighost has no recorder: there is none in " +
                                 place.recorder.parent_path().string());
    }
}

static void CheckNameFree(const fs::path& file) {
    if (fs::exists(fs::symlink_status(file))) {
        throw HostError(EXIT_WRONG_USE, "there is a file " + file.string() + " already");
    }
}

/// Both libraries, loaded by another process: word size, names, registrations.
static void CheckThatTheyServe(const fs::path& link, const fs::path& module) {
    for (const CHECK& check : CheckModuleAndLink(module.string(), link.string())) {
        if (check.state == STATE::FAILED) {
            throw HostError(EXIT_NO_MODULE, "the check '" + check.name + "' failed: " + check.text);
        }
    }
}

/// Nothing of a file that is no library or program: a log may have gigabytes.
static std::string LibraryBytes(const fs::path& file) {
    try {
        FileReader reader(file.string());
        std::array<char, 4> start{};
        const std::size_t count = reader.IsOpen() ? reader.Read(start) : 0;
        const bool bOther = reader.IsOpen() && !MayHaveNames({start.data(), count});
        return bOther ? "" : ReadTextFile(file, LARGEST_LIBRARY);
    } catch (const std::runtime_error& e) {
        throw HostError(EXIT_HOST_ERROR, e.what());
    }
}

/// The names that the file takes from the camera link and that the recorder lacks.
static std::string LackingNames(
    const fs::path& file, const std::set<std::string>& offered,
    const std::set<std::string>& recorded) {
    std::string lacking;
    for (const std::string& name : NamesTaken(LibraryBytes(file), LINK_FILE_NAME)) {
        if (offered.contains(name) && !recorded.contains(name)) {
            lacking += (lacking.empty() ? "" : ", ") + name;
        }
    }
    return lacking;
}

/// A library or a host that takes more of the camera link than the recorder has could not be loaded
/// with it.
static void CheckWhoTakesFrom(const LIBRARY_PLACE& link) {
    const std::set<std::string> offered = NamesOffered(LibraryBytes(link.file));
    const std::set<std::string> recorded = NamesOffered(LibraryBytes(link.recorder));
    bool bAll = true;
    for (const fs::directory_entry& entry : fs::directory_iterator(link.file.parent_path())) {
        if (entry.is_regular_file()) {
            const std::string lacking = LackingNames(entry.path(), offered, recorded);
            bAll = bAll && lacking.empty();
            if (!lacking.empty()) {
                Complain(
                    entry.path().string() + " takes names from " + LINK_FILE_NAME +
                    " that the recorder lacks: " + lacking);
            }
        }
    }
    if (!bAll) {
        throw HostError(EXIT_NO_MODULE, "nothing was installed: these would not load any more");
    }
}

// --- Installing ---

static void MakeRecordingFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder)) {
        throw HostError(
            EXIT_WRONG_USE, "can't make the folder " + folder.string() + ": " + error.message());
    }
    WithExitCode(EXIT_WRONG_USE, [&] { CheckReplaceable(folder / "recording"); });
}

static Recorder::SETTINGS SettingsOf(const INSTALLATION& installation) {
    Recorder::SETTINGS settings;
    settings.into = installation.into;
    settings.keep = installation.keep;
    for (const OPERATION_GROUP& group : OperationGroups()) {
        for (const OPERATION_INFO& info : group.operations) {
            // A shorter record than the whole one would be read beyond its end.
            if (info.use != RECORD_USE::NONE && !info.record->bAnyLength) {
                settings.recordSizes[info.name] = info.record->size;
            }
        }
    }
    return settings;
}

static void TakePlace(const LIBRARY_PLACE& place, const OnStep& onStep) {
    const std::string recorder = ReadTextFile(place.recorder, LARGEST_LIBRARY);
    fs::create_hard_link(place.file, place.recorded);
    ReplaceFile(place.file, recorder, OUTLASTS::POWER_FAILURES);
    onStep(
        place.file.filename().string() + " is " + place.recorded.filename().string() +
        " now, and the recorder has its place");
}

void InstallRecorder(const INSTALLATION& given, const OnStep& onStep) {
    INSTALLATION installation = given;
    CheckFolder(installation.folder);
    installation.folder = fs::canonical(installation.folder);
    installation.into = given.into.empty() ? installation.folder / "recordings"
                                           : fs::absolute(given.into).lexically_normal();
    const auto places = LibraryPlaces(installation.folder);
    for (const LIBRARY_PLACE& place : places) {
        CheckPlace(place);
    }
    CheckNameFree(SettingsFile(installation.folder));
    CheckThatTheyServe(places[0].file, places[1].file);
    CheckWhoTakesFrom(places[0]);
    onStep("module and camera link serve");
    MakeRecordingFolder(installation.into);
    try {
        ReplaceFile(
            SettingsFile(installation.folder), SettingsText(SettingsOf(installation)),
            OUTLASTS::POWER_FAILURES);
        for (const LIBRARY_PLACE& place : places) {
            TakePlace(place, onStep);
        }
    } catch (const std::exception& e) {
        RemoveRecorder(installation.folder, [](const std::string&) {});
        throw HostError(EXIT_HOST_ERROR, std::string("nothing was installed: ") + e.what());
    }
    onStep("recordings go to " + installation.into.string());
}

// --- Removing ---

static bool IsSame(const fs::path& left, const fs::path& right) {
    return ReadTextFile(left, LARGEST_LIBRARY) == ReadTextFile(right, LARGEST_LIBRARY);
}

/// Gives false if another library has come into the place.
static bool PutBack(const LIBRARY_PLACE& place, const OnStep& onStep) {
    const std::string name = place.file.filename().string();
    const OCCUPANT occupant = OccupantOf(place.file);
    if (!fs::exists(fs::symlink_status(place.recorded))) {
        if (occupant != OCCUPANT::LIBRARY) {
            onStep(name + " is lost: there is no " + place.recorded.filename().string());
        }
        return occupant == OCCUPANT::LIBRARY;
    }
    if (occupant == OCCUPANT::LIBRARY && !IsSame(place.file, place.recorded)) {
        onStep(
            name + " has come since and stays; " + place.recorded.filename().string() +
            " is the one before");
        return false;
    }
    if (occupant == OCCUPANT::LIBRARY) {
        fs::remove(place.recorded);
    } else {
        fs::rename(place.recorded, place.file);
    }
    onStep(name + " is back");
    return true;
}

bool RemoveRecorder(const fs::path& folder, const OnStep& onStep) {
    CheckFolder(folder);
    bool bWhole = true;
    try {
        const auto places = LibraryPlaces(folder);
        for (auto place = places.rbegin(); place != places.rend(); ++place) {
            CheckReplaceable(place->file);  // and clears away what a killed installation left
            bWhole = PutBack(*place, onStep) && bWhole;
        }
        for (const char* pszFile : {Recorder::SETTINGS_FILE_NAME, Recorder::FAILURE_FILE_NAME}) {
            fs::remove(folder / pszFile);
        }
    } catch (const std::runtime_error& e) {
        throw HostError(EXIT_HOST_ERROR, e.what());
    }
    return bWhole;
}
