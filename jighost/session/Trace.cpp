// A trace shown on standard error, or kept in a file.
#include "jighost/session/Trace.h"

#include <iomanip>
#include <iostream>
#include <sstream>

#include "jighost/operations/ResultName.h"
#include "jighost/output/CallText.h"
#include "jighost/text/HostError.h"
#include "jighost/text/PlainText.h"
#include "trace/TraceWriter.h"

void Trace::BeginOperation(const OPERATION_INFO& info, const RecordBytes& record) {
    m_Calls = 0;
    m_LogLines = 0;
    WriteOperation(info, record);
}

void Trace::OnCall(const Link::CALL& call, bool complete) {
    if (complete) {
        WriteAnswer(call, m_Calls, std::chrono::steady_clock::now() - m_Start);
        return;
    }
    WriteCall(call, ++m_Calls);
    m_Start = std::chrono::steady_clock::now();
}

void Trace::OnLog(const OwnLines& log) {
    for (; m_LogLines < log.Count() && log.Owner(m_LogLines) != OWNER::UNKNOWN; ++m_LogLines) {
        WriteOneOf(log, m_LogLines);
    }
}

void Trace::EndOperation(const OPERATION_RUN& run, const OwnLines& log) {
    for (std::size_t place = 0; place < log.Count(); ++place) {
        if (place >= m_LogLines || log.Owner(place) == OWNER::UNKNOWN) {
            WriteOneOf(log, place);
        }
    }
    WriteResult(run);
}

void Trace::WriteOneOf(const OwnLines& log, std::size_t place) {
    const OWNER owner = log.Owner(place);
    if (owner != OWNER::ANOTHER) {
        WriteLogLine(log.Text(place), owner == OWNER::UNKNOWN);
    }
}

namespace {

/// For people. A call's line is shown before the call is made and ends when it is complete.
class ShownTrace : public Trace {
    void WriteOperation(const OPERATION_INFO& info, const RecordBytes& /*record*/) override {
        std::cerr << info.name << '\n';
    }
    void WriteLogLine(const std::string& line, bool bInterleaved) override {
        std::cerr << std::string(NUMBER_WIDTH + 1, ' ') << PlainText(line)
                  << (bInterleaved ? " (interleaved)" : "") << '\n';
    }
    void WriteCall(const Link::CALL& call, std::uint32_t number) override {
        std::cerr << std::setw(NUMBER_WIDTH) << number << ' ' << RequestText(call) << std::flush;
    }
    void WriteAnswer(const Link::CALL& call, std::uint32_t /*number*/, Milliseconds time) override {
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

/// Into a file for replay.
class FileTrace : public Trace {
  public:
    explicit FileTrace(const std::string& path) : m_Writer(path) {}

    void Finish() const override {
        try {
            m_Writer.Finish();
        } catch (const TraceError& e) {
            throw HostError(EXIT_HOST_ERROR, e.what());
        }
    }

  private:
    void WriteOperation(const OPERATION_INFO& info, const RecordBytes& record) override {
        m_Writer.WriteOperation(info.name, WithoutSpareBytes(info, record));
    }
    void WriteLogLine(const std::string& line, bool bInterleaved) override {
        m_Writer.WriteLogLine(line, bInterleaved);
    }
    void WriteCall(const Link::CALL& call, std::uint32_t number) override {
        m_Writer.WriteCall(call, number);
    }
    void WriteAnswer(const Link::CALL& call, std::uint32_t number, Milliseconds time) override {
        m_Writer.WriteAnswer(call, number, time);
    }
    void WriteResult(const OPERATION_RUN& run) override {
        m_Writer.WriteResult(run.result, WithoutSpareBytes(*run.info, run.record), run.time);
    }

    /// The record's own bytes, and what an operation that goes by another length left behind them.
    static std::span<const std::uint8_t> WithoutSpareBytes(
        const OPERATION_INFO& info, const RecordBytes& record) {
        std::size_t size = record.size();
        while (size > info.record->size && record[size - 1] == 0) {
            --size;
        }
        return std::span(record).first(size);
    }

    TraceWriter m_Writer;
};

}  // namespace

std::unique_ptr<Trace> NewTrace(const std::string& path) {
    if (path.empty()) {
        return std::make_unique<ShownTrace>();
    }
    try {
        return std::make_unique<FileTrace>(path);
    } catch (const TraceError& e) {
        throw HostError(EXIT_WRONG_USE, e.what());
    }
}
