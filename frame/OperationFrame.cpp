#include "frame/OperationFrame.h"

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
    std::string_view line, const char* pszMessage, std::int32_t code) noexcept {
    if (m_bClosed) {
        return;  // a local object's destructor: the operation has told its result
    }
    if (!m_Operation.bErrorLinesWithoutPrefix) {
        SwallowExceptions([&] { BeginLine(m_Operation.stream); });
    }
    m_Operation.stream << line << pszMessage << '\n';
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
