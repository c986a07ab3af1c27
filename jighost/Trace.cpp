#include "jighost/Trace.h"

#include <iomanip>
#include <iostream>
#include <sstream>

#include "jighost/CallText.h"
#include "jighost/ResultName.h"
#include "jighost/TraceFile.h"

void Trace::BeginOperation(const OPERATION_INFO& info, const RecordBytes& record) {
    m_Calls = 0;
    m_Log = AddedLog();
    WriteOperation(info, record);
}

void Trace::OnCall(const SimulatedBody::CALL& call, bool complete) {
    if (complete) {
        WriteAnswer(call, m_Calls, std::chrono::steady_clock::now() - m_Start);
        return;
    }
    WriteLogLines();
    WriteCall(call, ++m_Calls);
    m_Start = std::chrono::steady_clock::now();
}

void Trace::EndOperation(const OPERATION_RUN& run) {
    WriteLogLines();
    WriteResult(run);
}

void Trace::WriteLogLines() {
    const std::vector<std::string> lines = m_Log.Lines();
    m_Log = AddedLog();
    for (const std::string& line : lines) {
        WriteLogLine(line);
    }
}

namespace {

/// For people. A call's line is shown before the call is made and ends when it is complete.
class ShownTrace : public Trace {
    void WriteOperation(const OPERATION_INFO& info, const RecordBytes& /*record*/) override {
        std::cerr << info.name << '\n';
    }
    void WriteLogLine(const std::string& line) override {
        std::cerr << std::string(NUMBER_WIDTH + 1, ' ') << line << '\n';
    }
    void WriteCall(const SimulatedBody::CALL& call, std::uint32_t number) override {
        std::cerr << std::setw(NUMBER_WIDTH) << number << ' ' << RequestText(call) << std::flush;
    }
    void WriteAnswer(
        const SimulatedBody::CALL& call, std::uint32_t /*number*/, Milliseconds time) override {
        std::cerr << " -> " << AnswerText(call) << " (" << TimeText(time) << ")\n";
    }
    void WriteResult(const OPERATION_RUN& run) override {
        std::cerr << run.info->name << ": " << ResultText(run.result) << ", " << run.callCount
                  << (run.callCount == 1 ? " call, " : " calls, ") << TimeText(run.time) << '\n';
    }

    static std::string TimeText(Milliseconds time) {
        std::ostringstream text;
        text << std::fixed << std::setprecision(3) << time.count() << " ms";
        return text.str();
    }

    static constexpr int NUMBER_WIDTH = 4;
};

}  // namespace

std::unique_ptr<Trace> NewTrace(const std::string& path) {
    if (path.empty()) {
        return std::make_unique<ShownTrace>();
    }
    return NewFileTrace(path);
}
