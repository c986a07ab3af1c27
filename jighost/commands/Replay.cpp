// jighost replay: a recorded trace run against its own answers.
#include <algorithm>
#include <iostream>
#include <memory>
#include <random>

#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Json.h"
#include "jighost/replay/ReplayRun.h"

static EXIT_CODE RunTrace(const HOST& host, const std::string& path);

void AddReplayCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "replay", "Runs a trace's operations with the recorded answers and tells what differs");
    const auto pPath = std::make_shared<std::string>();
    command.AddArgument("trace", *pPath, "A file that --trace has written");
    AddModuleOption(command, host);
    AddTakeFolderOption(command, host);
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost run SetFilePrefix --trace prefix.jsonl && jighost replay prefix.jsonl\n"
        "  jighost replay prefix.jsonl --module build/TuneBench.t460.so --json\n"
        "The first call, result or record that differs ends it with exit code 5. Of a trace that\n"
        "was cut off, what there is is replayed; nobody knows the rest, which is exit code 5 too.\n"
        "The camera's answers alone come from the trace: BoardInf.ini is read where it was then.\n"
        "A dump goes to a folder that is removed again.");
    command.SetWork([&host, pPath] { host.exitCode = RunTrace(host, *pPath); });
}

/// A new folder for what a dump writes, which nobody needs again; removed at the end.
class ScratchFolder {
  public:
    ScratchFolder() {
        std::random_device random;
        do {
            path = std::filesystem::temp_directory_path() / ("jighost-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path));
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::filesystem::path path;
};

static bool HasDump(const std::vector<TRACED_OPERATION>& trace) {
    return std::any_of(trace.begin(), trace.end(), [](const TRACED_OPERATION& operation) {
        return operation.name == "LoadPropertyData";
    });
}

static REPLAY Replay(const HOST& host, const std::vector<TRACED_OPERATION>& trace) {
    std::optional<ScratchFolder> folder;
    SESSION_OPTIONS options = host.session;
    if (HasDump(trace)) {
        options.folderText = FolderBlockText(folder.emplace().path);
    }
    Session session(options);
    return ReplayTrace(session, trace);
}

static void ShowJson(const REPLAY& replay) {
    Json json = {
        {"format", JSON_FORMAT}, {"operations", replay.operations}, {"calls", replay.calls},
        {"cut", replay.cut},     {"difference", nullptr},
    };
    if (replay.difference) {
        json["difference"] = {
            {"operation", replay.difference->operation}, {"name", replay.difference->name},
            {"where", replay.difference->where},         {"expected", replay.difference->expected},
            {"made", replay.difference->made},
        };
    }
    WriteJson(std::cout, json);
}

static void Show(const REPLAY& replay) {
    std::cout << replay.operations << (replay.operations == 1 ? " operation, " : " operations, ")
              << replay.calls << (replay.calls == 1 ? " call" : " calls") << " as recorded\n";
    if (!replay.cut.empty()) {
        std::cout << "the trace was cut off at " << replay.cut << '\n';
    }
    if (replay.difference) {
        std::cout << "operation " << replay.difference->operation << ", " << replay.difference->name
                  << ", differs in " << replay.difference->where
                  << "\n  expected: " << replay.difference->expected
                  << "\n  made:     " << replay.difference->made << '\n';
    }
}

static EXIT_CODE RunTrace(const HOST& host, const std::string& path) {
    const REPLAY replay = Replay(host, ReadOperations(path));
    if (host.bJson) {
        ShowJson(replay);
    } else {
        Show(replay);
    }
    return replay.difference || !replay.cut.empty() ? EXIT_UNEXPECTED : EXIT_OK;
}
