#include "jighost/Session.h"

#include "jighost/AddedLog.h"
#include "jighost/BodyFile.h"
#include "jighost/Interrupt.h"
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
static std::string SwitchBodyOn(const std::string& path) {
    SimulatedBody::Reset();
    UseSampleInstallation();
    if (path.empty()) {
        return "";
    }
    LoadBody(path);
    return BodyText();
}

Session::Session(const HOST& host)
    : m_BodyPath(host.bodyPath),
      m_BodyText(SwitchBodyOn(host.bodyPath)),
      m_Module(host.modulePath) {
    CatchInterrupts();
}

Session::~Session() {
    SimulatedBody::Observe({});
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
    SimulatedBody::Observe([this](const SimulatedBody::CALL& call, bool complete) {
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
    const AddedLog log;
    const std::uint32_t callsBefore = SimulatedBody::CallCount();
    const auto start = std::chrono::steady_clock::now();
    run.result = operation.procedure(info.use == RECORD_USE::NONE ? nullptr : run.record.data());
    run.time = std::chrono::steady_clock::now() - start;
    run.callCount = SimulatedBody::CallCount() - callsBefore;
    run.log = log.Lines();
    return run;
}

void Session::Finish() const {
    if (m_BodyPath.empty()) {
        return;
    }
    const std::string text = BodyText();
    if (text != m_BodyText) {
        WriteBody(m_BodyPath, text);
    }
}
