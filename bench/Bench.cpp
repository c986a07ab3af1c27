// Operations beside the same kernel calls made by hand, all in one run, and the memory of a dump.
//
//     tunebench_bench [Google Benchmark's options]    the table of times, and the ratios where
//                                                     the options ask for repetitions
//     tunebench_bench --operations N                  N times EnterFactoryMode and nothing else,
//                                                     to be run under strace
//
// It works in a fresh folder on a memory file system where there is one, so that no disk is timed.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/ByHand.h"
#include "bench/MedianReporter.h"
#include "bench/WorkFolder.h"
#include "jighost/session/FolderBlock.h"
#include "jighost/session/Module.h"
#include "platform/OwnBlocks.h"

namespace fs = std::filesystem;

static const char LOG_FILE_NAME[] = "JigDll.log";
static const std::uintmax_t GIBIBYTE = 1ULL << 30;
static const std::size_t CATALOGUE_ROWS = 239;

// --- The work ---

/// The operation's pointer, looked up once: a host does not search at each call either.
static EVENT_PROC Find(const Module& module, const std::string& name) {
    const auto& operations = module.Operations();
    const auto found = std::find_if(
        operations.begin(), operations.end(),
        [&](const auto& operation) { return operation.name == name; });
    if (found == operations.end()) {
        throw std::runtime_error("the module does not register " + name);
    }
    return found->procedure;
}

static void Run(EVENT_PROC operation) {
    std::array<std::uint32_t, 5> record{};  // as large as any record used here
    const std::int32_t result = operation(record.data());
    if (result != 0) {
        throw std::runtime_error("an operation gave " + std::to_string(result));
    }
}

/// Puts a log of that many zero bytes in place. A long one has no pages behind it: only where an
/// append goes matters here.
static void StartLog(std::uintmax_t size) {
    std::ofstream(LOG_FILE_NAME, std::ios::trunc).close();
    fs::resize_file(LOG_FILE_NAME, size);
}

static Flushes FlushesOf(EVENT_PROC operation, const std::vector<std::size_t>& linesOfFlushes) {
    StartLog(0);
    Run(operation);
    return ReadFlushes(linesOfFlushes);
}

/// One flush for each element: what stands in the log after a dump.
static std::vector<std::size_t> LinesOfDumpFlushes() {
    std::vector<std::size_t> lines = {2, 1, 2, 2, 2, 1};  // opening, path, count, list
    lines.insert(lines.end(), CATALOGUE_ROWS, 3);         // dashes, property, file
    lines.push_back(2);                                   // dashes, closing
    return lines;
}

struct DUMP_FILE {
    std::string name;
    std::string bytes;
};

static std::vector<DUMP_FILE> ReadDumpFiles(const fs::path& folder) {
    std::vector<DUMP_FILE> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        files.push_back({entry.path().string(), ReadFile(entry.path().string())});
    }
    if (files.size() != CATALOGUE_ROWS) {
        throw std::runtime_error("a dump left " + std::to_string(files.size()) + " files");
    }
    return files;
}

// --- The benchmarks ---

template <class Work>
static void Register(const std::string& name, std::uintmax_t logSize, const Work& work) {
    const auto run = [logSize, work](benchmark::State& state) {
        StartLog(logSize);
        for ([[maybe_unused]] auto iteration : state) {
            work();
        }
        StartLog(0);
    };
    benchmark::RegisterBenchmark(name.c_str(), run);
}

static void RegisterFactoryMode(EVENT_PROC enter) {
    const Flushes flushes = FlushesOf(enter, {2, 1});
    Register("EnterFactoryMode", 0, [enter] { Run(enter); });
    Register("EnterFactoryMode by hand", 0, [flushes] {
        for (const auto& text : flushes) {
            FlushByHand(text);
        }
    });
    Register("EnterFactoryMode, log of 1 GiB", GIBIBYTE, [enter] { Run(enter); });
}

static void RegisterBodyID(EVENT_PROC get) {
    const Flushes flushes = FlushesOf(get, {2, 1, 1});
    Register("GetBodyID", 0, [get] { Run(get); });
    Register("GetBodyID by hand", 0, [flushes] {
        FlushByHand(flushes[0]);
        StoreBodyIDByHand();
        FlushByHand(flushes[1]);
        FlushByHand(flushes[2]);
    });
}

static void RegisterDump(EVENT_PROC load, const fs::path& folder) {
    const Flushes flushes = FlushesOf(load, LinesOfDumpFlushes());
    const std::vector<DUMP_FILE> files = ReadDumpFiles(folder);
    Register("LoadPropertyData", 0, [load] { Run(load); });
    Register("LoadPropertyData by hand", 0, [files, flushes] {
        for (const auto& file : files) {
            WriteFileByHand(file.name, file.bytes);
        }
        for (const auto& text : flushes) {
            FlushByHand(text);
        }
    });
}

// --- Memory ---

/// Resident memory of this process in MiB.
static double ResidentMemory() {
    std::ifstream statm("/proc/self/statm");
    double totalPages = 0;
    double residentPages = 0;
    statm >> totalPages >> residentPages;
    return residentPages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

// --- The closing table ---

static void PrintRatios(const MedianReporter& reporter, double memoryGrowth) {
    std::printf("\n%-52s %8s   %s\n", "Median / median", "measured", "goal");
    reporter.PrintRatio("EnterFactoryMode", "EnterFactoryMode by hand", "at most 1.25");
    reporter.PrintRatio("GetBodyID", "GetBodyID by hand", "at most 1.25");
    reporter.PrintRatio("LoadPropertyData", "LoadPropertyData by hand", "at most 1.25");
    reporter.PrintRatio("EnterFactoryMode, log of 1 GiB", "EnterFactoryMode", "about 1");
    std::printf(
        "%-52s %8.2f   %s\n", "MiB more resident, from loading to a dump's end", memoryGrowth,
        "at most 6");
}

static void RunOperations(long count) {
    const WorkFolder folder;
    const Module module("");
    const EVENT_PROC enter = Find(module, "EnterFactoryMode");
    for (long i = 0; i < count; ++i) {
        Run(enter);
    }
}

static void RunBenchmarks(int argc, char** argv) {
    const WorkFolder folder;
    const fs::path dumpFolder = folder.Path() / "dump";
    fs::create_directory(dumpFolder);
    const FolderBlock block;
    block.Write(FolderBlockText(dumpFolder));

    const double memoryBefore = ResidentMemory();
    const Module module("");
    const EVENT_PROC load = Find(module, "LoadPropertyData");
    Run(load);
    const double memoryGrowth = ResidentMemory() - memoryBefore;

    RegisterFactoryMode(Find(module, "EnterFactoryMode"));
    RegisterBodyID(Find(module, "GetBodyID"));
    RegisterDump(load, dumpFolder);
    benchmark::Initialize(&argc, argv);
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    PrintRatios(reporter, memoryGrowth);
}

int main(int argc, char** argv) {
    try {
        TakeOwnBlocks();
        if (argc == 3 && std::strcmp(argv[1], "--operations") == 0) {
            RunOperations(std::strtol(argv[2], nullptr, 10));
        } else {
            RunBenchmarks(argc, argv);
        }
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "tunebench_bench: %s\n", e.what());
        return 1;
    }
}
