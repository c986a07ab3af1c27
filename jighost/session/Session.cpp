// Body, module, faults and trace brought together for a run.
#include "jighost/session/Session.h"

#include <iostream>

#include "jighost/session/AddedLog.h"
#include "jighost/session/BodyFile.h"
#include "jighost/session/Interrupt.h"
#include "jighost/session/Trace.h"
#include "jighost/text/HostError.h"
#include "platform/Program.h"

/// The current directory's BoardInf.ini is the one that counts; the sample lies beside this
/// program.
static void UseSampleInstallation() {
    std::error_code error;
    if (!std::filesystem::exists("BoardInf.ini", error)) {
        SimulatedBody::SetInstallationFolder(ProgramFolder().string());
    }
}

/// Gives the text of the body's file, as it would be written now.
static std::string SwitchBodyOn(const SESSION_OPTIONS& options) {
    if (!options.bodyPath.empty() && !options.linkPath.empty()) {
        throw HostError(
            EXIT_WRONG_USE,
            "expected --body, the file of a simulated body, or --link, a camera link in its place, "
            "and not both");
    }
    SimulatedBody::Reset();
    UseSampleInstallation();
    if (options.bodyPath.empty()) {
        return "";
    }
    LoadBody(options.bodyPath);
    return BodyText();
}

Session::Session(const SESSION_OPTIONS& options)
    : m_BodyPath(options.bodyPath),
      m_BodyText(SwitchBodyOn(options)),
      m_Faults(options.faults),
      m_Link(options.linkPath),
      m_Module(options.modulePath) {
    CatchInterrupts();
    if (options.bTrace) {
        m_pTrace = NewTrace(options.tracePath);
        Watch([this](const Link::CALL& call, bool complete) { m_pTrace->OnCall(call, complete); });
    }
    if (!m_Faults.IsEmpty()) {
        SimulatedBody::AnswerCalls(
            [this](const Link::CALL& call) { return m_Faults.Answer(call); });
    }
}

Session::~Session() {
    SimulatedBody::Observe({});
    SimulatedBody::AnswerCalls({});
}

void Session::HoldFolder(const std::string& blockText) {
    m_FolderBlock.emplace().Write(blockText);
}

void Session::OfferFolder(const std::string& blockText) {
    if (m_FolderBlock.emplace().IsEmpty()) {
        m_FolderBlock->Write(blockText);
    }
}

void Session::Watch(SimulatedBody::Observer watcher) {
    m_Watchers.push_back(std::move(watcher));
    SimulatedBody::Observe([this](const Link::CALL& call, bool complete) {
        for (const SimulatedBody::Observer& each : m_Watchers) {
            each(call, complete);
        }
    });
}

OPERATION_RUN Session::Run(const OPERATION_INFO& info, RecordBytes record) {
    OPERATION_RUN run;
    run.info = &info;
    run.record = std::move(record);
    const REGISTERED_OPERATION& operation = m_Module.Find(info.name);
    m_Faults.BeginOperation(info.name);
    if (m_pTrace != nullptr) {
        m_pTrace->BeginOperation(info, run.record);
    }
    const AddedLog log;
    const std::uint32_t callsBefore = SimulatedBody::CallCount();
    const auto start = std::chrono::steady_clock::now();
    run.result = operation.procedure(info.use == RECORD_USE::NONE ? nullptr : run.record.data());
    run.time = std::chrono::steady_clock::now() - start;
    run.callCount = SimulatedBody::CallCount() - callsBefore;
    run.log = log.Lines();
    if (m_pTrace != nullptr) {
        m_pTrace->EndOperation(run);
    }
    return run;
}

void Session::Finish() const {
    for (const std::string& fault : m_Faults.NotMet()) {
        std::cerr << "jighost: no call has met the fault " << fault << '\n';
    }
    if (!m_BodyPath.empty()) {
        const std::string text = BodyText();
        if (text != m_BodyText) {
            WriteBody(m_BodyPath, text);
        }
    }
    if (m_pTrace != nullptr) {
        m_pTrace->Finish();
    }
}
