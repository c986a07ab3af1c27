// jighost replay: a recorded trace run against its own answers.
#include <algorithm>
#include <iostream>
#include <memory>
#include <random>

#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Complaint.h"
#include "jighost/output/Json.h"
#include "jighost/replay/ChosenOperations.h"
#include "jighost/replay/ReplayRun.h"
#include "jighost/text/Numbers.h"

struct REPLAY_OPTIONS {
    std::string path;
    std::string operation;
    std::string from;
    std::string until;
    bool bFailed = false;
};

static EXIT_CODE RunTrace(const HOST& host, const REPLAY_OPTIONS& options);

void AddReplayCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "replay", "Runs a trace's operations with the recorded answers and tells what differs");
    const auto pOptions = std::make_shared<REPLAY_OPTIONS>();
    command.AddArgument("trace", pOptions->path, "A file that --trace or the recorder has written");
    command.AddOption(
        "--operation", pOptions->operation, "This operation alone, by its number in the trace",
        "NUMBER");
    command.AddOption("--from", pOptions->from, "First operation, by its number", "NUMBER");
    command.AddOption("--until", pOptions->until, "Last operation, by its number", "NUMBER");
    command.AddFlag(
        "--failed", pOptions->bFailed, "Of these, those alone that failed or never ended");
    AddModuleOption(command, host);
    AddTakeFolderOption(command, host);
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost run SetFilePrefix --trace prefix.jsonl && jighost replay prefix.jsonl\n"
        "  jighost replay prefix.jsonl --module build/TuneBench.t460.so --json\n"
        "  jighost replay line/recordings/20261122_210659_line3_4711.jsonl --failed\n"
        "The first call, result or record that differs ends it with exit code 5. Operations that\n"
        "were cut off, or could not be written whole, are replayed as far as there is something;\n"
        "nobody knows the rest, which is exit code 5 too. jighost trace tells the numbers.\n"
        "The camera's answers alone come from the trace: BoardInf.ini is read where it was then.\n"
        "A dump goes to a folder that is removed again.");
    command.SetWork([&host, pOptions] { host.exitCode = RunTrace(host, *pOptions); });
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

/// Nothing for no text.
static std::optional<std::uint32_t> OperationNumber(
    const std::string& option, const std::string& text) {
    const auto number = ParseNumber<std::uint32_t>(text);
    if (!number && !text.empty()) {
        throw HostError(
            EXIT_WRONG_USE, option + ": expected an operation's number, got '" + text + "'");
    }
    return number;
}

static OPERATION_CHOICE Choice(const REPLAY_OPTIONS& options) {
    OPERATION_CHOICE choice;
    choice.bFailed = options.bFailed;
    choice.first = OperationNumber("--from", options.from);
    choice.last = OperationNumber("--until", options.until);
    if (const auto number = OperationNumber("--operation", options.operation)) {
        if (choice.first || choice.last) {
            throw HostError(EXIT_WRONG_USE, "expected --operation, or --from and --until");
        }
        choice.first = number;
        choice.last = number;
    }
    if (choice.first && choice.last && *choice.last < *choice.first) {
        throw HostError(EXIT_WRONG_USE, "--until comes ahead of --from");
    }
    return choice;
}

static EXIT_CODE RunTrace(const HOST& host, const REPLAY_OPTIONS& options) {
    const CHOSEN_OPERATIONS chosen = ReadOperations(options.path, Choice(options));
    for (const std::string& remark : chosen.remarks) {
        Complain(remark);
    }
    const REPLAY replay = Replay(host, chosen.operations);
    if (host.bJson) {
        ShowJson(replay);
    } else {
        Show(replay);
    }
    return replay.difference || !replay.cut.empty() || !chosen.bAll ? EXIT_UNEXPECTED : EXIT_OK;
}
