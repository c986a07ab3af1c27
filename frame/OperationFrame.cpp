// The lines of the frame, and what becomes of whatever is thrown inside it.
#include "frame/OperationFrame.h"

// Bytes that a message of the link, which may have any length, leaves to the closing line.
static const std::size_t CLOSING_LINE_ROOM = 4096;

static std::string_view FittingMessage(const CLogStream& stream, std::string_view message) {
    const std::size_t room = LOG_BUFFER_SIZE - stream.Position();
    return message.substr(0, room > CLOSING_LINE_ROOM ? room - CLOSING_LINE_ROOM : 0);
}

void WriteOpeningLines(const OPERATION& operation) {
    BeginLine(operation.stream) << "[----]\n";
    BeginLine(operation.stream) << "[FUNC] " << operation.logName << '\n';
}

static void WriteClosingText(const OPERATION& operation, std::int32_t nResult) {
    if (operation.closing.empty()) {
        operation.stream << "[FUNC] " << operation.logName;
    } else {
        operation.stream << operation.closing;
    }
    operation.stream << " - " << nResult << '\n';
}

void OperationFrame::Open() {
    OpenFramelessRoutine(m_Operation);
}

void OperationFrame::ReportException(const CException* pException) noexcept {
    if (pException == nullptr) {
        ReportUnexpectedException();
        return;
    }
    Report("[ERR!] - ", pException->message.c_str(), pException->code);
}

void OperationFrame::ReportUnexpectedException() noexcept {
    Report("[ERR!] UnExpected Exception", "", RESULT_UNEXPECTED_EXCEPTION);
}

void OperationFrame::Report(
    std::string_view line, std::string_view message, std::int32_t code) noexcept {
    if (!m_Operation.bErrorLinesWithoutPrefix) {
        SwallowExceptions([&] { BeginLine(m_Operation.stream); });
    }
    m_Operation.stream << line << FittingMessage(m_Operation.stream, message) << '\n';
    if (m_nResult == RESULT_SUCCESS) {
        m_nResult = code;
    }
}

// A prefix that can't be had fails the operation; the line tries for one once more.
void OperationFrame::WriteClosingPrefix() noexcept {
    bool bWritten = false;
    Guard([&] {
        BeginLine(m_Operation.stream);
        bWritten = true;
    });
    if (!bWritten) {
        SwallowExceptions([&] { BeginLine(m_Operation.stream); });
    }
}

std::int32_t OperationFrame::Close() noexcept {
    if (!m_bClosed) {
        WriteClosingPrefix();
        m_bClosed = true;
        WriteClosingText(m_Operation, m_nResult);
        FlushLog(m_Operation.stream, m_Operation.buffer);
    }
    return m_nResult;
}

void OpenFramelessRoutine(const OPERATION& routine) {
    WriteOpeningLines(routine);
    FlushLog(routine.stream, routine.buffer);
}

void CloseFramelessRoutine(const OPERATION& routine) {
    BeginLine(routine.stream);
    WriteClosingText(routine, RESULT_SUCCESS);
    FlushLog(routine.stream, routine.buffer);
}
