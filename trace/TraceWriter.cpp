// Each entry as one line, handed to the system at once.
#include "trace/TraceWriter.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "platform/Platform.h"
#include "trace/Hex.h"
#include "trace/JsonLine.h"

using Link::CALL;
using Link::FAILURE;

template <class Number>
static void AddOptional(JsonLine& line, const char* pszKey, const std::optional<Number>& number) {
    number ? line.Add(pszKey, std::int64_t{*number}) : line.AddNull(pszKey);
}

static void AddFailure(JsonLine& line, const std::optional<FAILURE>& failure) {
    if (!failure) {
        line.AddNull("failure");
        return;
    }
    const auto* pNamed = std::find_if(
        std::begin(TRACED_FAULTS), std::end(TRACED_FAULTS),
        [&](const TRACED_FAULT& named) { return named.kind == failure->kind; });
    JsonLine fields;
    fields.Add("kind", pNamed->name);
    fields.Add("code", std::int64_t{failure->code});
    fields.Add("message", failure->message);
    line.AddObject("failure", fields);
}

[[noreturn]] static void Refuse(const std::string& path, int error) {
    throw TraceError(
        "can't write the trace " + path + ": " + std::generic_category().message(error));
}

TraceWriter::TraceWriter(const std::string& path) : m_Path(path) {
    const errno_t error = _sopen_s(
        &m_nFile, path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_APPEND | _O_BINARY, _SH_DENYNO,
        _S_IREAD | _S_IWRITE);
    if (error != 0) {
        Refuse(path, error);
    }
    JsonLine line;
    line.Add("format", std::int64_t{TRACE_FORMAT});
    line.Add("content", TRACE_CONTENT);
    WriteLine(line.Text());
    if (m_nError != 0) {
        _close(m_nFile);
        Refuse(path, m_nError);
    }
}

TraceWriter::~TraceWriter() {
    _close(m_nFile);
}

void TraceWriter::Finish() const {
    if (m_nError != 0) {
        throw TraceError(
            "can't write the whole trace " + m_Path + ": " +
            std::generic_category().message(m_nError));
    }
}

void TraceWriter::WriteOperation(std::string_view name, std::span<const std::uint8_t> record) {
    JsonLine line;
    line.Add("entry", "operation");
    line.Add("operation", std::int64_t{++m_Operations});
    line.Add("name", name);
    line.Add("record", HexBytes(record));
    WriteLine(line.Text());
}

void TraceWriter::WriteLogLine(std::string_view text, bool bInterleaved) {
    JsonLine line;
    line.Add("entry", "log");
    line.Add("line", text);
    line.Add("interleaved", bInterleaved);
    WriteLine(line.Text());
}

void TraceWriter::WriteCall(const CALL& call, std::uint32_t number) {
    JsonLine line;
    line.Add("entry", "call");
    line.Add("operation", std::int64_t{m_Operations});
    line.Add("call", std::int64_t{number});
    line.Add("function", call.function);
    line.Add("name", call.name);
    line.Add("id", std::int64_t{call.id});
    line.Add("value", call.value);
    line.Add("from_list", call.fromList);
    line.Add("sent", HexBytes(call.sent));
    WriteLine(line.Text());
}

void TraceWriter::WriteAnswer(const CALL& call, std::uint32_t number, Milliseconds time) {
    JsonLine line;
    line.Add("entry", "answer");
    line.Add("operation", std::int64_t{m_Operations});
    line.Add("call", std::int64_t{number});
    line.Add("received", HexBytes(call.received));
    AddOptional(line, "size_left", call.sizeLeft);
    AddOptional(line, "result", call.result);
    AddFailure(line, call.failure);
    line.Add("time_ms", time.count());
    WriteLine(line.Text());
}

void TraceWriter::WriteResult(
    std::int32_t result, std::span<const std::uint8_t> record, Milliseconds time) {
    JsonLine line;
    line.Add("entry", "result");
    line.Add("operation", std::int64_t{m_Operations});
    line.Add("result", std::int64_t{result});
    line.Add("record", HexBytes(record));
    line.Add("time_ms", time.count());
    WriteLine(line.Text());
}

void TraceWriter::WriteLine(std::string_view line) {
    while (m_nError == 0 && !line.empty()) {
        const int count = _write(m_nFile, line.data(), static_cast<unsigned int>(line.size()));
        m_nError = count > 0 ? 0 : errno;
        line.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}
