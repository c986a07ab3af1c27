// jighost dump: the whole adjustment data of the body, a file for each property.
#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>

#include "adjustment/PropertyTable.h"
#include "frame/Result.h"
#include "jighost/commands/CommonOptions.h"
#include "jighost/operations/ResultName.h"
#include "jighost/output/Complaint.h"
#include "jighost/output/Json.h"
#include "jighost/session/Session.h"
#include "jighost/text/PlainText.h"
#include "platform/Program.h"
#include "platform/Utf8Path.h"

static EXIT_CODE Dump(const HOST& host, const std::string& folder);

void AddDumpCommand(Command& program, HOST& host) {
    Command command =
        program.AddCommand("dump", "Dumps all adjustment data of the body into a folder");
    const auto pFolder = std::make_shared<std::string>();
    command.AddArgument("folder", *pFolder, "An existing folder; its files are replaced");
    AddSessionOptions(command, host);
    AddTakeFolderOption(command, host);
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  mkdir adjust && jighost dump adjust\n"
        "  jighost dump adjust --fault LoadPropertyData:100=0x2001");
    command.SetWork([&host, pFolder] { host.exitCode = Dump(host, *pFolder); });
}

/// Watches a dump by its reads from the camera, one for each row, and draws the progress of it.
class DumpProgress {
  public:
    explicit DumpProgress(bool bDrawn) : m_bDrawn(bDrawn) {}

    void OnCall(const Link::CALL& call, bool complete) {
        if (call.function != "CProperty::Get") {
            return;
        }
        if (!complete) {
            ++m_Rows;
            Draw();
        } else if (!call.failure) {
            m_ByteCount += call.value;
        }
    }

    /// Takes the bar away: what it led to is told next.
    void Clear() const {
        if (m_bDrawn) {
            std::cerr << "\r\033[K" << std::flush;
        }
    }

    /// The rows begun so far, so that it is also the number of the last one.
    std::size_t Rows() const { return m_Rows; }
    /// Bytes that the camera gave.
    std::int64_t ByteCount() const { return m_ByteCount; }

  private:
    void Draw() const {
        if (!m_bDrawn) {
            return;
        }
        const std::size_t width = 40;
        const std::size_t filled = std::min(width, m_Rows * width / PROPERTY_COUNT);
        std::cerr << "\r[" << std::string(filled, '#') << std::string(width - filled, '.') << "] "
                  << m_Rows << '/' << PROPERTY_COUNT << std::flush;
    }

    bool m_bDrawn;
    std::size_t m_Rows = 0;
    std::int64_t m_ByteCount = 0;
};

static std::string FailureText(const OPERATION_RUN& run, std::size_t rows) {
    std::string text = "LoadPropertyData failed";
    if (rows > 0) {
        text += " at row " + std::to_string(rows) + " of " + std::to_string(PROPERTY_COUNT) + ", " +
                PropertyDataTable[rows - 1].PropertyName;
    }
    const std::string cause = FailureCause(run);
    text += ": " + cause + (cause.empty() ? "" : ", ") + ResultText(run.result);
    return text + (rows > 1 ? "; the files of the rows before are complete" : "");
}

static void ShowDump(
    const std::string& folder, const OPERATION_RUN& run, const DumpProgress& progress) {
    std::cout << progress.Rows() << " files, " << progress.ByteCount() << " bytes, " << std::fixed
              << std::setprecision(3) << run.time.count() / 1000 << " s in " << PlainText(folder)
              << '\n';
}

/// Of a failed dump too: `files` are the complete ones.
static void ShowAsJson(
    const std::string& folder, const OPERATION_RUN& run, const DumpProgress& progress) {
    const std::size_t files = progress.Rows() - (IsFailure(run.result) && progress.Rows() > 0);
    WriteJson(
        std::cout, {{"format", JSON_FORMAT},
                    {"folder", folder},
                    {"files", files},
                    {"bytes", progress.ByteCount()},
                    {"result", run.result},
                    {"result_name", ResultName(run.result)},
                    {"error", run.folderProblem.empty() ? RunError(run) : run.folderProblem},
                    {"time_ms", run.time.count()}});
}

static EXIT_CODE Report(
    const HOST& host, const std::string& folder, const OPERATION_RUN& run,
    const DumpProgress& progress) {
    if (host.bJson) {
        ShowAsJson(folder, run, progress);
    }
    if (!run.folderProblem.empty()) {
        Complain(run.folderProblem);
        return EXIT_UNEXPECTED;
    }
    if (IsFailure(run.result)) {
        Complain(FailureText(run, progress.Rows()));
        return EXIT_OPERATION_FAILED;
    }
    if (!host.bJson) {
        ShowDump(folder, run, progress);
    }
    return EXIT_OK;
}

static EXIT_CODE Dump(const HOST& host, const std::string& folder) {
    SESSION_OPTIONS options = host.session;
    options.folderText = FolderBlockText(PathOf(folder));
    const OPERATION_INFO& info = KnownOperation("LoadPropertyData");
    Session session(options);
    DumpProgress progress(IsErrorOutputTerminal() && !options.IsTraceShown());
    session.Watch(
        [&progress](const Link::CALL& call, bool complete) { progress.OnCall(call, complete); });
    const OPERATION_RUN run = session.Run(info, NewRecord(*info.record));
    progress.Clear();
    const bool bWritten = session.Finish();
    return session.Conclude(Report(host, folder, run, progress), bWritten);
}
