// The file of a block of bytes, and the table of sixteen bytes to a line.
#include "frame/Dump.h"

#include <algorithm>
#include <iomanip>

#include "frame/OperationFrame.h"
#include "platform/Platform.h"

static const std::int32_t BYTES_PER_ROW = 16;
static const std::int32_t BYTES_PER_GROUP = 8;  // with a further blank ahead of it

static const std::uint32_t GREATEST_WRITE = 0x40000000;  // bytes

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

// What can't be written is left out: nothing tests it. A single call takes no more than 2 GiB.
static void WriteBytes(int nFile, const std::uint8_t* pData, std::uint32_t size) {
    while (size > 0) {
        const int nWritten = _write(nFile, pData, std::min(size, GREATEST_WRITE));
        if (nWritten <= 0) {
            return;
        }
        pData += nWritten;
        size -= static_cast<std::uint32_t>(nWritten);
    }
}

std::int32_t DebugWriteDumpMemory(
    const std::string& name, const std::uint8_t* pData, const std::uint32_t* pSize) noexcept {
    return RunOperation({s_LogStream, s_byLogBuffer, "DebugWriteDumpMemory"}, [&] {
        CheckPointer(pData, "pData");
        int nFile = -1;
        if (_sopen_s(
                &nFile, name.c_str(), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _SH_DENYNO,
                _S_IREAD | _S_IWRITE) != 0) {
            Fail("[STDF] File Stream Open Error", RESULT_SYSTEM_ERROR);
        }
        WriteBytes(nFile, pData, *pSize);
        _close(nFile);
    });
}

static void BeginRow(std::int32_t index) {
    if (index != 0) {
        s_LogStream << '\n';
    }
    BeginLine(s_LogStream) << "[VALU] Data[ " << std::setfill('0') << std::setw(8) << index
                           << " ] - ";
}

// The stream is hexadecimal here.
static void PrintByte(std::int32_t index, std::uint8_t byte) {
    if (index % BYTES_PER_ROW == 0) {
        BeginRow(index);
    }
    if (index % BYTES_PER_GROUP == 0) {
        s_LogStream << ' ';
    }
    s_LogStream << std::setfill('0') << std::setw(2) << unsigned{byte} << ' ';
    // For each byte: slow, and meant.
    FlushLog(s_LogStream, s_byLogBuffer);
}

void DebugPrintDumpMemory(const std::uint8_t* pData, const std::uint32_t* pSize) {
    const OPERATION routine{s_LogStream, s_byLogBuffer, "DebugPrintDumpMemory"};
    WriteOpeningLines(routine);
    BeginLine(s_LogStream) << "[VALU]  DataSize = " << *pSize << '\n';
    FlushLog(s_LogStream, s_byLogBuffer);

    s_LogStream << std::hex;
    const auto nSize = static_cast<std::int32_t>(*pSize);
    for (std::int32_t index = 0; index < nSize; ++index) {
        PrintByte(index, pData[index]);
    }
    s_LogStream << std::dec << '\n';
    CloseFramelessRoutine(routine);
}
