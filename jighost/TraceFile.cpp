#include "jighost/TraceFile.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "jighost/Json.h"
#include "jighost/Numbers.h"
#include "platform/Platform.h"

using SimulatedBody::CALL;
using SimulatedBody::FAILURE;

/// The record's own bytes, and what an operation that goes by another length left behind them.
static RecordBytes WithoutSpareBytes(const OPERATION_INFO& info, RecordBytes record) {
    while (record.size() > info.record->size && record.back() == 0) {
        record.pop_back();
    }
    return record;
}

template <class Value>
static Json OptionalJson(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}

static Json FailureJson(const std::optional<FAILURE>& failure) {
    if (!failure) {
        return nullptr;
    }
    const auto* pNamed = std::find_if(
        std::begin(TRACED_FAULTS), std::end(TRACED_FAULTS),
        [&](const TRACED_FAULT& named) { return named.kind == failure->kind; });
    return {{"kind", pNamed->name}, {"code", failure->code}, {"message", failure->message}};
}

namespace {

class FileTrace : public Trace {
  public:
    explicit FileTrace(const std::string& path);
    FileTrace(const FileTrace&) = delete;
    FileTrace& operator=(const FileTrace&) = delete;
    ~FileTrace() override { _close(m_nFile); }

    void Finish() const override;

  private:
    void WriteOperation(const OPERATION_INFO& info, const RecordBytes& record) override;
    void WriteLogLine(const std::string& line) override;
    void WriteCall(const CALL& call, std::uint32_t number) override;
    void WriteAnswer(const CALL& call, std::uint32_t number, Milliseconds time) override;
    void WriteResult(const OPERATION_RUN& run) override;

    void WriteLine(const Json& json);

    std::string m_Path;
    int m_nFile = -1;
    int m_nError = 0;  // of the first write that failed; none is tried behind it
    std::uint32_t m_Operations = 0;
};

FileTrace::FileTrace(const std::string& path) : m_Path(path) {
    const errno_t error = _sopen_s(
        &m_nFile, path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _SH_DENYNO,
        _S_IREAD | _S_IWRITE);
    if (error != 0) {
        throw HostError(
            EXIT_WRONG_USE,
            "can't write the trace " + path + ": " + std::generic_category().message(error));
    }
    WriteLine({{"format", TRACE_FORMAT}, {"content", TRACE_CONTENT}});
}

void FileTrace::Finish() const {
    if (m_nError != 0) {
        throw HostError(
            EXIT_HOST_ERROR, "can't write the whole trace " + m_Path + ": " +
                                 std::generic_category().message(m_nError));
    }
}

void FileTrace::WriteOperation(const OPERATION_INFO& info, const RecordBytes& record) {
    WriteLine({
        {"entry", "operation"},
        {"operation", ++m_Operations},
        {"name", info.name},
        {"record", HexBytes(WithoutSpareBytes(info, record))},
    });
}

void FileTrace::WriteLogLine(const std::string& line) {
    WriteLine({{"entry", "log"}, {"line", line}});
}

void FileTrace::WriteCall(const CALL& call, std::uint32_t number) {
    WriteLine({
        {"entry", "call"},
        {"operation", m_Operations},
        {"call", number},
        {"function", call.function},
        {"name", call.name},
        {"id", call.id},
        {"value", call.value},
        {"from_list", call.fromList},
        {"sent", HexBytes(call.sent)},
    });
}

void FileTrace::WriteAnswer(const CALL& call, std::uint32_t number, Milliseconds time) {
    WriteLine({
        {"entry", "answer"},
        {"operation", m_Operations},
        {"call", number},
        {"received", HexBytes(call.received)},
        {"size_left", OptionalJson(call.sizeLeft)},
        {"result", OptionalJson(call.result)},
        {"failure", FailureJson(call.failure)},
        {"time_ms", time.count()},
    });
}

void FileTrace::WriteResult(const OPERATION_RUN& run) {
    WriteLine({
        {"entry", "result"},
        {"operation", m_Operations},
        {"result", run.result},
        {"record", HexBytes(WithoutSpareBytes(*run.info, run.record))},
        {"time_ms", run.time.count()},
    });
}

void FileTrace::WriteLine(const Json& json) {
    const std::string line = json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
    std::size_t written = 0;
    while (m_nError == 0 && written < line.size()) {
        const int count = _write(
            m_nFile, line.data() + written, static_cast<unsigned int>(line.size() - written));
        m_nError = count > 0 ? 0 : errno;
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

}  // namespace

std::unique_ptr<Trace> NewFileTrace(const std::string& path) {
    return std::make_unique<FileTrace>(path);
}
