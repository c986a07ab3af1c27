// Body, module, faults and trace brought together for a run.
#include "jighost/session/Session.h"

#include <algorithm>

#include "frame/Result.h"
#include "jighost/operations/ResultName.h"
#include "jighost/output/CallText.h"
#include "jighost/output/Complaint.h"
#include "jighost/session/Interrupt.h"
#include "jighost/session/Trace.h"
#include "jighost/text/HostError.h"
#include "platform/Signals.h"
#include "platform/StandardFiles.h"

static void CheckBodyOrLink(const SESSION_OPTIONS& options) {
    if (!options.bodyPath.empty() && !options.linkPath.empty()) {
        throw HostError(
            EXIT_WRONG_USE,
            "expected --body, the file of a simulated body, or --link, a camera link in its place, "
            "and not both");
    }
}

/// As the writer of traces takes a path: as the module takes all of its own.
static std::string WithSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

/// What would be written in place of another file is told while nothing is lost yet.
static void CheckFiles(const SESSION_OPTIONS& options) {
    std::vector<NAMED_FILE> outputs = {{"--body", options.bodyPath}};
    outputs.insert(outputs.end(), options.outputs.begin(), options.outputs.end());
    outputs.push_back({"--trace", WithSlashes(options.tracePath)});
    std::vector<NAMED_FILE> inputs = options.inputs;
    inputs.push_back({"the module", FullModulePath(options.modulePath)});
    inputs.push_back({"the camera link", options.linkPath});
    inputs.push_back({"the module's log", "JigDll.log"});
    inputs.push_back({"the camera's log", "CameraLog"});
    inputs.push_back({"the installation's file", "BoardInf.ini"});
    inputs.push_back({"standard output", StandardFilePath(STANDARD_OUTPUT)});
    inputs.push_back({"standard error", StandardFilePath(STANDARD_ERROR)});
    CheckOutputs(outputs, inputs);
}

/// Ahead of all else that a session does.
static const SESSION_OPTIONS& Checked(const SESSION_OPTIONS& options) {
    CatchInterrupts();
    CheckBodyOrLink(options);
    CheckFiles(options);
    return options;
}

static std::unique_ptr<HeldFolder> NewFolder(const SESSION_OPTIONS& options) {
    if (options.folderText.empty()) {
        return nullptr;
    }
    return std::make_unique<HeldFolder>(
        options.folderText, options.bTakeFolder ? FOREIGN_FOLDER::TAKEN : options.foreignFolder);
}

Session::Session(const SESSION_OPTIONS& options)
    : m_Body(Checked(options).bodyPath),
      m_Faults(options.faults),
      m_Link(options.linkPath),
      m_Module(options.modulePath),
      m_pFolder(NewFolder(options)) {
    OutliveBrokenPipes();
    const std::string problem = m_Log.Problem();
    if (!problem.empty()) {
        Complain("the module's log is lost: " + problem);
    }
    if (options.bTrace) {
        m_pTrace = NewTrace(options.tracePath);
    }
    Watch([this](const Link::CALL& call, bool complete) { OnCall(call, complete); });
    if (!m_Faults.IsEmpty()) {
        SimulatedBody::AnswerCalls(
            [this](const Link::CALL& call) { return m_Faults.Answer(call); });
    }
}

Session::~Session() {
    SimulatedBody::Observe({});
    SimulatedBody::AnswerCalls({});
    SimulatedBody::ThrowBy({});
}

void Session::Watch(SimulatedBody::Observer watcher) {
    m_Watchers.push_back(std::move(watcher));
    SimulatedBody::Observe([this](const Link::CALL& call, bool complete) {
        for (const SimulatedBody::Observer& each : m_Watchers) {
            each(call, complete);
        }
    });
}

static void RunProcedure(const REGISTERED_OPERATION& operation, OPERATION_RUN& run) {
    const bool bNull = run.info->use == RECORD_USE::NONE || run.record.empty();
    void* pRecord = bNull ? nullptr : run.record.data();
    const std::uint32_t callsBefore = SimulatedBody::CallCount();
    const auto start = std::chrono::steady_clock::now();
    run.result = operation.procedure(pRecord);
    run.time = std::chrono::steady_clock::now() - start;
    run.callCount = SimulatedBody::CallCount() - callsBefore;
}

OPERATION_RUN Session::Run(const OPERATION_INFO& info, RecordBytes record, std::uint32_t attempt) {
    OPERATION_RUN run;
    run.info = &info;
    run.record = std::move(record);
    const REGISTERED_OPERATION& operation = m_Module.Find(info.name);
    m_Faults.BeginOperation(info.name, attempt);
    if (m_pTrace != nullptr) {
        m_pTrace->BeginOperation(info, run.record);
    }
    m_Log.Begin();
    m_FailedCall.clear();
    RunProcedure(operation, run);
    run.failedCall = m_FailedCall;
    TakeLog(run);
    return run;
}

void Session::TakeLog(OPERATION_RUN& run) {
    const OwnLines& log = m_Log.ReadOn();
    run.log = log.Texts(OWNER::THIS_PROCESS);
    run.interleaved = log.Texts(OWNER::UNKNOWN);
    if (m_pFolder != nullptr && IsDump(*run.info)) {
        run.folderProblem = m_pFolder->Problem(run.log, run.interleaved, IsFailure(run.result));
    }
    if (m_pTrace != nullptr) {
        m_pTrace->EndOperation(run, log);
    }
}

void Session::OnCall(const Link::CALL& call, bool complete) {
    if (complete && IsFailedCall(call) && m_FailedCall.empty()) {
        m_FailedCall = RequestText(call) + " -> " + AnswerText(call);
    }
    if (m_pTrace == nullptr) {
        return;
    }
    if (!complete) {
        m_pTrace->OnLog(m_Log.ReadOn());
    }
    m_pTrace->OnCall(call, complete);
}

std::string FailureCause(const OPERATION_RUN& run) {
    const std::string error = LastError(run.log);
    return error.empty() && IsFailure(run.result) ? run.failedCall : error;
}

std::string RunError(const OPERATION_RUN& run) {
    std::string cause = FailureCause(run);
    if (!IsFailure(run.result) || !LastError(run.log).empty()) {
        return cause;
    }
    return ResultText(run.result) + (cause.empty() ? "" : ", " + cause) +
           (run.interleaved.empty() ? "" : "; the log's lines are interleaved");
}

std::string NotMetText(const std::string& fault) {
    return "no call has met the fault " + fault;
}

bool Session::Finish() const {
    for (const std::string& fault : m_Faults.NotMet()) {
        Complain(NotMetText(fault));
    }
    const bool bBody = DoOrComplain([this] { m_Body.WriteBack(); });
    const bool bTrace = m_pTrace == nullptr || DoOrComplain([this] { m_pTrace->Finish(); });
    return bBody && bTrace;
}

EXIT_CODE Session::Conclude(EXIT_CODE exitCode, bool bWritten) const {
    if (!bWritten) {
        return EXIT_HOST_ERROR;
    }
    return exitCode == EXIT_OK && !m_Faults.NotMet().empty() ? EXIT_UNEXPECTED : exitCode;
}
