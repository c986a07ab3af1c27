// Each entry as one line, handed to the system at once.
#include "trace/TraceWriter.h"

#include <cerrno>
#include <system_error>

#include "platform/Platform.h"
#include "trace/JsonLine.h"

[[noreturn]] static void Refuse(const std::string& path, int error) {
    throw TraceError(
        "can't write the trace " + path + ": " + std::generic_category().message(error));
}

static TraceEntry::Time Whole(TraceWriter::Milliseconds time) {
    return std::chrono::duration_cast<TraceEntry::Time>(time);
}

template <class AddFields>
void TraceWriter::WriteEntry(const AddFields& addFields) {
    std::string text;
    JsonLine line(text);
    addFields(line);
    line.End();
    WriteText(text);
}

TraceWriter::TraceWriter(const std::string& path) : m_Path(path) {
    const errno_t error = _sopen_s(
        &m_nFile, path.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_APPEND | _O_BINARY, _SH_DENYNO,
        _S_IREAD | _S_IWRITE);
    if (error != 0) {
        Refuse(path, error);
    }
    WriteEntry(TraceEntry::AddHead);
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
    ++m_Operations;
    WriteEntry([&](JsonLine& line) { TraceEntry::AddOperation(line, m_Operations, name, record); });
}

void TraceWriter::WriteLogLine(std::string_view text, bool bInterleaved) {
    WriteEntry([&](JsonLine& line) { TraceEntry::AddLogLine(line, text, bInterleaved); });
}

void TraceWriter::WriteCall(const Link::CALL& call, std::uint32_t number) {
    WriteEntry([&](JsonLine& line) {
        TraceEntry::AddCall(line, m_Operations, number, TraceEntry::RequestOf(call));
    });
}

void TraceWriter::WriteAnswer(const Link::CALL& call, std::uint32_t number, Milliseconds time) {
    WriteEntry([&](JsonLine& line) {
        TraceEntry::AddAnswer(line, m_Operations, number, TraceEntry::AnswerOf(call), Whole(time));
    });
}

void TraceWriter::WriteResult(
    std::int32_t result, std::span<const std::uint8_t> record, Milliseconds time) {
    WriteEntry([&](JsonLine& line) {
        TraceEntry::AddResult(line, m_Operations, result, record, Whole(time));
    });
}

void TraceWriter::WriteText(std::string_view text) {
    while (m_nError == 0 && !text.empty()) {
        const int count = _write(m_nFile, text.data(), static_cast<unsigned int>(text.size()));
        m_nError = count > 0 ? 0 : errno;
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}
