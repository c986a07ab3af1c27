// jighost log: what ran, by the module's log.
#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <thread>

#include "jighost/commands/CommonOptions.h"
#include "jighost/log/LogOutput.h"
#include "jighost/log/LogReader.h"
#include "jighost/operations/LogName.h"
#include "jighost/output/Complaint.h"
#include "jighost/session/Interrupt.h"
#include "jighost/text/NearestName.h"
#include "platform/FileReader.h"
#include "platform/Utf8Path.h"

struct LOG_OPTIONS {
    std::string path = "JigDll.log";
    LOG_SELECTION selection;
    bool bFollow = false;
};

static EXIT_CODE ReadLog(const HOST& host, const LOG_OPTIONS& options);

void AddLogCommand(Command& program, HOST& host) {
    Command command =
        program.AddCommand("log", "Tells what ran by the module's log, and how it ended");
    const auto pOptions = std::make_shared<LOG_OPTIONS>();
    command.AddOption("file", pOptions->path, "The log; JigDll.log if there is none given");
    command.AddFlag("--failed", pOptions->selection.bFailed, "Lists failed operations alone");
    command.AddOption(
        "--operation", pOptions->selection.operation,
        "Lists and counts runs of this operation alone", "NAME");
    command.AddFlag(
        "--follow", pOptions->bFollow, "Goes on with what is added, also to a new file, to Ctrl-C");
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost log\n"
        "  jighost log --failed --operation GetBodyID line3/JigDll.log\n"
        "  jighost log --follow\n"
        "With --json each line is a document: the format, then each operation, then the summary.");
    command.SetWork([&host, pOptions] { host.exitCode = ReadLog(host, *pOptions); });
}

// --- Reading ---

static const std::size_t BLOCK_SIZE = 262144;

/// Between two looks at a file that has not grown.
static const std::chrono::milliseconds PAUSE(200);

namespace {

/// Hands a file's bytes to a LogReader.
class LogFeed {
  public:
    explicit LogFeed(LogReader& reader) : m_Reader(reader) {}

    /// Up to the file's present end, or to Ctrl-C. Gives whether anything was there.
    bool ReadOn(FileReader& file) {
        bool bAny = false;
        while (!IsInterrupted()) {
            const std::size_t count = file.Read(m_Block);
            if (count == 0) {
                break;
            }
            bAny = true;
            m_Reader.Add({m_Block.data(), count});
        }
        return bAny;
    }

  private:
    LogReader& m_Reader;
    std::vector<char> m_Block = std::vector<char>(BLOCK_SIZE);
};

}  // namespace

/// Opens a file or a pipe: anything else has no end, or no bytes.
static std::unique_ptr<FileReader> OpenLog(const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(PathOf(path), error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
        !std::filesystem::is_fifo(status)) {
        throw HostError(EXIT_WRONG_USE, path + " is no file: expected a log of the module");
    }
    return std::make_unique<FileReader>(path);
}

static void ReadWhole(const std::string& path, LogReader& reader) {
    const std::unique_ptr<FileReader> pFile = OpenLog(path);
    if (!pFile->IsOpen()) {
        throw HostError(EXIT_WRONG_USE, "can't open " + path + ": " + std::strerror(errno));
    }
    LogFeed(reader).ReadOn(*pFile);
    if (!reader.IsLog() && !IsInterrupted()) {
        throw HostError(
            EXIT_WRONG_USE, path + " is no log of the module: expected lines such as '[----]'");
    }
}

// A file that was replaced is read to its end before the new one: whoever replaced it may have
// written to it until then. An operation may begin in the one and end in the other.
static void Follow(const std::string& path, LogReader& reader, LogOutput& output) {
    LogFeed feed(reader);
    std::unique_ptr<FileReader> pFile = OpenLog(path);
    if (!pFile->IsOpen()) {
        Complain("waiting for " + path);
    }
    while (!IsInterrupted() && std::cout) {
        const bool bReplaced = !pFile->IsOpen() || pFile->IsReplaced();
        const bool bAny = pFile->IsOpen() && feed.ReadOn(*pFile);
        reader.Pause();
        output.Flush();
        if (bReplaced) {
            reader.BeginFile();
            pFile = OpenLog(path);
        }
        if (!bAny) {
            std::this_thread::sleep_for(PAUSE);
        }
    }
}

/// Refuses a name that is neither an operation's nor, by the number of its runs, one of the log.
static void CheckOperation(const std::string& name, std::uint64_t runs) {
    if (!name.empty() && runs == 0 && !IsLogName(name)) {
        throw HostError(
            EXIT_WRONG_USE, "neither the module nor the log has an operation '" + name + "'" +
                                NearestNames(name, LogNames()));
    }
}

static EXIT_CODE ReadLog(const HOST& host, const LOG_OPTIONS& options) {
    CatchInterrupts();
    LOG_SELECTION selection = options.selection;
    selection.operation = LogName(selection.operation);
    LogOutput output(selection, host.bJson);
    LogReader reader([&output](auto operations) { output.Add(operations); });
    if (options.bFollow) {
        CheckOperation(selection.operation, 0);
        Follow(options.path, reader, output);
    } else {
        ReadWhole(options.path, reader);
    }
    reader.End();
    if (!IsInterrupted()) {
        CheckOperation(selection.operation, output.Count());
    }
    output.End();
    return IsInterrupted() ? EXIT_INTERRUPTED : EXIT_OK;
}
