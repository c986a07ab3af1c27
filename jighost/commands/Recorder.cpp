// jighost recorder: put between a host, module and camera link, looked after, and taken out again.
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>

#include "jighost/commands/CommonOptions.h"
#include "jighost/line/Install.h"
#include "jighost/line/Status.h"
#include "jighost/output/Json.h"
#include "jighost/text/Numbers.h"
#include "jighost/text/PlainText.h"
#include "platform/Utf8Path.h"

static void AddInstallCommand(Command& recorder);
static void AddStatusCommand(Command& recorder, HOST& host);
static void AddRemoveCommand(Command& recorder, HOST& host);

void AddRecorderCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "recorder", "Keeps all that passes between a host, its module and its camera link");
    command.RequireCommand();
    command.SetFooter(
        "Examples:\n"
        "  jighost recorder install /opt/line --keep 2G\n"
        "  jighost recorder status /opt/line\n"
        "  jighost recorder remove /opt/line");
    AddInstallCommand(command);
    AddStatusCommand(command, host);
    AddRemoveCommand(command, host);
}

static const char FOLDER_TEXT[] = "The host's folder, with the module and the camera link in it";

static void ShowStep(const std::string& text) {
    std::cout << PlainText(text) << std::endl;
}

// --- install ---

// One recording has to have room for a dump, and several recordings for the space to be bounded.
static const std::uint64_t LEAST_KEPT = 16'000'000;

static const char ANY_SIZE[] = "all";

/// Such as "500M" or "2G"; 0 for any size.
static std::uint64_t ParseSize(const std::string& text) {
    if (text == ANY_SIZE) {
        return 0;
    }
    static const std::string UNITS = "KMGT";
    std::uint64_t factor = 1;
    std::string digits = text;
    const std::size_t unit = text.empty() ? std::string::npos : UNITS.find(text.back());
    if (unit != std::string::npos) {
        digits.pop_back();
        for (std::size_t i = 0; i <= unit; ++i) {
            factor *= 1000;
        }
    }
    const auto number = ParseNumber<std::uint32_t>(digits);
    if (!number || *number * factor < LEAST_KEPT) {
        throw HostError(
            EXIT_WRONG_USE, "--keep " + text +
                                ": expected 'all' or a number of bytes, 16M at least; K, M, G "
                                "and T stand for thousands of them");
    }
    return *number * factor;
}

struct INSTALL_OPTIONS {
    std::string folder;
    std::string into;
    std::string keep = ANY_SIZE;
};

static void AddInstallCommand(Command& recorder) {
    Command command = recorder.AddCommand(
        "install", "Puts the recorder into a host's folder: all of it, or nothing");
    const auto pOptions = std::make_shared<INSTALL_OPTIONS>();
    command.AddArgument("folder", pOptions->folder, FOLDER_TEXT);
    command.AddOption(
        "--into", pOptions->into, "Where recordings go; else to recordings/ in the folder",
        "TRACES");
    command.AddOption(
        "--keep", pOptions->keep,
        "The space that they may have, such as 2G: old ones go, whole, where it is full; else all "
        "stay",
        "SIZE");
    command.SetFooter(
        "Example:\n"
        "  jighost recorder install /opt/line --into /var/recordings --keep 2G");
    command.SetWork([pOptions] {
        InstallRecorder(
            {PathOf(pOptions->folder), PathOf(pOptions->into), ParseSize(pOptions->keep)},
            ShowStep);
    });
}

// --- status ---

static const char* PlacedText(PLACED placed) {
    switch (placed) {
        case PLACED::NOT:
            return "not installed";
        case PLACED::WHOLE:
            return "installed";
        default:
            return "half installed: jighost recorder remove puts the library back";
    }
}

static std::string SizeText(std::uint64_t bytes) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << static_cast<double>(bytes) / 1e6 << " MB";
    return text.str();
}

static void ShowRecordings(const RECORDER_STATUS& status) {
    std::cout << "recordings  " << status.files << (status.files == 1 ? " file, " : " files, ")
              << SizeText(status.bytes)
              << (status.since.empty() ? "" : ", since " + PlainText(status.since)) << '\n'
              << "into        " << PlainText(status.settings.into.string()) << '\n'
              << "keep        "
              << (status.settings.keep == 0 ? "all" : SizeText(status.settings.keep)) << '\n';
}

static void ShowFailures(const RECORDER_STATUS& status) {
    std::cout << "failures    ";
    if (status.gaps != 0) {
        std::cout << status.lost << " entries missing in " << status.gaps
                  << (status.gaps == 1 ? " place" : " places")
                  << (status.failure.empty() ? "\n" : "; ");
    }
    std::cout
        << (status.failure.empty() ? status.gaps == 0 ? "none\n" : ""
                                   : PlainText(status.failure) + '\n');
}

static void ShowText(const RECORDER_STATUS& status) {
    std::cout << "link        " << PlacedText(status.places[0]) << '\n'
              << "module      " << PlacedText(status.places[1]) << '\n';
    if (status.bSettings) {
        ShowRecordings(status);
        ShowFailures(status);
    }
}

static const char* PlacedName(PLACED placed) {
    static const char* const NAMES[] = {"no", "whole", "half"};
    return NAMES[static_cast<std::size_t>(placed)];
}

static void ShowJson(const RECORDER_STATUS& status) {
    Json json = {
        {"format", JSON_FORMAT},
        {"link", PlacedName(status.places[0])},
        {"module", PlacedName(status.places[1])}};
    if (status.bSettings) {
        json.update(
            {{"files", status.files},
             {"bytes", status.bytes},
             {"since", status.since},
             {"into", status.settings.into.string()},
             {"keep", status.settings.keep},
             {"gaps", status.gaps},
             {"lost", status.lost},
             {"failure", status.failure}});
    }
    WriteJson(std::cout, json);
}

static EXIT_CODE ShowStatus(const std::string& folder, bool bJson) {
    const RECORDER_STATUS status = StatusOf(PathOf(folder));
    bJson ? ShowJson(status) : ShowText(status);
    const bool bWhole =
        status.bSettings && status.places[0] == PLACED::WHOLE && status.places[1] == PLACED::WHOLE;
    return bWhole && status.gaps == 0 && status.failure.empty() ? EXIT_OK : EXIT_UNEXPECTED;
}

static void AddStatusCommand(Command& recorder, HOST& host) {
    Command command = recorder.AddCommand(
        "status", "Tells what is installed and recorded, and whether something failed");
    const auto pFolder = std::make_shared<std::string>();
    command.AddArgument("folder", *pFolder, FOLDER_TEXT);
    AddJsonOption(command, host);
    command.SetFooter(
        "Example:\n  jighost recorder status /opt/line\n"
        "Ends with 5 if the recorder is not installed whole, or something failed.");
    command.SetWork([&host, pFolder] { host.exitCode = ShowStatus(*pFolder, host.bJson); });
}

// --- remove ---

static void AddRemoveCommand(Command& recorder, HOST& host) {
    Command command = recorder.AddCommand(
        "remove", "Puts module and camera link back, however far an installation had come");
    const auto pFolder = std::make_shared<std::string>();
    command.AddArgument("folder", *pFolder, FOLDER_TEXT);
    command.SetFooter(
        "Example:\n  jighost recorder remove /opt/line\n"
        "The recordings stay. Ends with 5 if a library could not be put back.");
    command.SetWork([&host, pFolder] {
        host.exitCode = RemoveRecorder(PathOf(*pFolder), ShowStep) ? EXIT_OK : EXIT_UNEXPECTED;
    });
}
