// jighost log: what ran, by the module's log.
#include <cerrno>
#include <chrono>
#include <cstring>
#include <iostream>
#include <memory>
#include <thread>

#include "jighost/commands/CommonOptions.h"
#include "jighost/log/LogOutput.h"
#include "jighost/log/LogReader.h"
#include "jighost/session/Interrupt.h"
#include "platform/FileReader.h"

static const std::size_t BLOCK_SIZE = 262144;

/// Between two looks at a file that has not grown.
static const std::chrono::milliseconds PAUSE(200);

struct LOG_OPTIONS {
    std::string path = "JigDll.log";
    LOG_SELECTION selection;
    bool bFollow = false;
};

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

static void ReadWhole(const std::string& path, LogReader& reader) {
    FileReader file(path);
    if (!file.IsOpen()) {
        throw HostError(EXIT_WRONG_USE, "can't open " + path + ": " + std::strerror(errno));
    }
    LogFeed(reader).ReadOn(file);
}

// A file that was replaced is read to its end before the new one: whoever replaced it may have
// written to it until then. An operation may begin in the one and end in the other.
static void Follow(const std::string& path, LogReader& reader, LogOutput& output) {
    LogFeed feed(reader);
    auto pFile = std::make_unique<FileReader>(path);
    if (!pFile->IsOpen()) {
        std::cerr << "jighost: waiting for " << path << '\n';
    }
    while (!IsInterrupted()) {
        const bool bReplaced = !pFile->IsOpen() || pFile->IsReplaced();
        const bool bAny = pFile->IsOpen() && feed.ReadOn(*pFile);
        output.Flush();
        if (bReplaced) {
            reader.BeginFile();
            pFile = std::make_unique<FileReader>(path);
        }
        if (!bAny) {
            std::this_thread::sleep_for(PAUSE);
        }
    }
}

static EXIT_CODE ReadLog(const HOST& host, const LOG_OPTIONS& options) {
    CatchInterrupts();
    LogOutput output(options.selection, host.bJson);
    LogReader reader([&output](auto operations) { output.Add(operations); });
    if (options.bFollow) {
        Follow(options.path, reader, output);
    } else {
        ReadWhole(options.path, reader);
    }
    reader.End();
    output.End();
    return IsInterrupted() ? EXIT_INTERRUPTED : EXIT_OK;
}

void AddLogCommand(Command& program, HOST& host) {
    Command command =
        program.AddCommand("log", "Tells what ran by the module's log, and how it ended");
    const auto pOptions = std::make_shared<LOG_OPTIONS>();
    command.AddOption("file", pOptions->path, "The log; JigDll.log if there is none given");
    command.AddFlag("--failed", pOptions->selection.bFailed, "Lists failed operations alone");
    command.AddOption(
        "--operation", pOptions->selection.operation,
        "Lists and counts runs of this operation alone, by its name in the log", "NAME");
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
