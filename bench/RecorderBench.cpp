// What the recorder costs a host: the same operations in processes with and without it, which take
// turns, in fresh folders on a memory file system where there is one.
//
//     tunebench_recorder_bench                        the ratios
//     tunebench_recorder_bench --host MODULE WORK     a host's part: does the work and prints the
//                                                     processor's time for one operation in ns, and
//                                                     by how many KiB the memory grew meanwhile
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

#include "bench/WorkFolder.h"
#include "frame/Registration.h"
#include "jighost/session/FolderBlock.h"
#include "platform/OwnBlocks.h"
#include "platform/Process.h"
#include "platform/Program.h"
#include "recorder/Files.h"
#include "recorder/RecordingName.h"
#include "recorder/Settings.h"

namespace fs = std::filesystem;

// --- A host ---

struct WORK {
    const char* name;
    const char* operation;
    long warmUp;  // ahead of what is measured
    long count;
};

static const WORK WORKS[] = {
    {"operation", "SetVideoSystem", 1000, 20'000},
    {"short", "EnterFactoryMode", 1000, 20'000},
    {"dump", "LoadPropertyData", 1, 10},
    {"million", "EnterFactoryMode", 10'000, 1'000'000},
    {"once", "LoadPropertyData", 0, 1},
};

static const WORK& WorkOf(const std::string& name) {
    return *std::find_if(
        std::begin(WORKS), std::end(WORKS), [&](const WORK& work) { return work.name == name; });
}

static double ProcessorNanoseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

static long ResidentKibibytes() {
    std::ifstream statm("/proc/self/statm");
    long total = 0;
    long resident = 0;
    statm >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

static void Repeat(EVENT_PROC operation, long count) {
    for (long i = 0; i < count; ++i) {
        std::array<std::uint32_t, 8> record{};
        if (operation(record.data()) != 0) {
            throw std::runtime_error("an operation failed");
        }
        if (i % 1000 == 0) {
            fs::resize_file("JigDll.log", 0);
        }
    }
}

static std::map<std::string, EVENT_PROC> s_Operations;

static void Collect(
    const char* name, EVENT_PROC procedure, std::int32_t* /*size*/, std::int32_t* /*direction*/,
    std::int32_t* /*reserved*/) {
    s_Operations[name] = procedure;
}

// No other room of jighost: those know the simulated body, which would be there in place of the
// library in the host's folder.
static void RegisterOperations(const std::string& modulePath) {
    HMODULE module = LoadLibraryA(modulePath.c_str());
    const auto registerList = reinterpret_cast<std::int32_t (*)(EVENT_PROC_REGISTER_FUNC)>(
        GetProcAddress(module, "RegisterEventProcList"));
    if (registerList == nullptr || registerList(Collect) != 0) {
        throw std::runtime_error("can't load " + modulePath);
    }
}

static void BeHost(const std::string& modulePath, const WORK& work) {
    fs::create_directories("dump");
    const FolderBlock block;
    block.Write(FolderBlockText(fs::current_path() / "dump"));
    RegisterOperations(modulePath);
    const EVENT_PROC operation = s_Operations.at(work.operation);
    Repeat(operation, work.warmUp);
    const long memory = ResidentKibibytes();
    const double start = ProcessorNanoseconds();
    Repeat(operation, work.count);
    const double time = (ProcessorNanoseconds() - start) / static_cast<double>(work.count);
    std::printf("%.0f %ld\n", time, ResidentKibibytes() - memory);
}

// --- The hosts' folders ---

static const std::uint64_t KEEP = 100'000'000;

/// Gives the module's path, the recorder's in a folder that has it.
static fs::path MakeHostFolder(const fs::path& folder, bool bRecorder) {
    fs::create_directories(folder / "recordings");
    for (const char* pszName : {MODULE_FILE_NAME, LINK_FILE_NAME}) {
        const std::string name = bRecorder ? Recorder::RecordedName(pszName) : pszName;
        fs::copy_file(ProgramFolder() / pszName, folder / name);
        if (bRecorder) {
            fs::copy_file(ProgramFolder() / "recorder" / pszName, folder / pszName);
        }
    }
    std::ofstream(folder / Recorder::SETTINGS_FILE_NAME)
        << Recorder::SettingsText({folder / "recordings", bRecorder ? KEEP : 0, {}});
    return folder / MODULE_FILE_NAME;
}

// --- Measuring ---

struct MEASURED {
    double time = 0;
    double growth = 0;
};

static MEASURED RunHost(const fs::path& module, const char* pszWork) {
    Process host(ProgramFile().string(), {"--host", module.string(), pszWork});
    std::istringstream line(host.ReadLine().value_or(""));
    MEASURED measured;
    if (!(line >> measured.time >> measured.growth) || host.Wait() != 0) {
        throw std::runtime_error("a host of the benchmark failed");
    }
    return measured;
}

static double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

/// Of the medians of 15 pairs, with and without the recorder.
static double Ratio(const fs::path& recorded, const fs::path& plain, const char* pszWork) {
    std::vector<double> with;
    std::vector<double> without;
    for (int i = 0; i < 15; ++i) {
        with.push_back(RunHost(recorded, pszWork).time);
        without.push_back(RunHost(plain, pszWork).time);
    }
    return Median(with) / Median(without);
}

/// Bytes of the recording of one dump for each byte of its blocks over 64 bytes.
static double BytesForEachByte(const fs::path& recorded) {
    const fs::path recordings = recorded.parent_path() / "recordings";
    fs::remove_all(recordings);
    fs::create_directory(recordings);
    RunHost(recorded, "once");
    std::uint64_t passed = 0;
    for (const auto& file : fs::directory_iterator("dump")) {
        passed += file.file_size() > 64 ? file.file_size() : 0;
    }
    return static_cast<double>(Recorder::RecordingsIn(recordings).at(0).size) /
           static_cast<double>(passed);
}

static void Print(const char* pszWhat, double value, const char* pszGoal) {
    std::printf("%-52s %8.2f   %s\n", pszWhat, value, pszGoal);
    std::fflush(stdout);
}

static void Measure() {
    const WorkFolder folder;
    const fs::path plain = MakeHostFolder(folder.Path() / "plain", false);
    const fs::path recorded = MakeHostFolder(folder.Path() / "recorded", true);
    std::printf("%-52s %8s   %s\n", "With the recorder", "measured", "goal");
    Print("SetVideoSystem / without", Ratio(recorded, plain, "operation"), "at most 2.0");
    Print("EnterFactoryMode / without", Ratio(recorded, plain, "short"), "at most 2.0");
    Print("LoadPropertyData / without", Ratio(recorded, plain, "dump"), "at most 2.5");
    Print(
        "bytes recorded / bytes of a dump's large blocks", BytesForEachByte(recorded),
        "at most 1.5");
    Print(
        "KiB more resident after 1,000,000 operations", RunHost(recorded, "million").growth,
        "about 0");
}

int main(int argc, char** argv) {
    try {
        if (argc == 4 && std::strcmp(argv[1], "--host") == 0) {
            BeHost(argv[2], WorkOf(argv[3]));
        } else {
            TakeOwnBlocks();
            Measure();
        }
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "tunebench_recorder_bench: %s\n", e.what());
        return 1;
    }
}
