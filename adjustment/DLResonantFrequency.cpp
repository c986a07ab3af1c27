// The operations on the DL resonant frequency, and the reading of "BoardInf.ini".
#include "adjustment/DLResonantFrequency.h"

#include <cstring>
#include <iomanip>

#include "adjustment/ABoardEeprom.h"
#include "frame/Dump.h"
#include "frame/OperationFrame.h"
#include "frame/OperationShapes.h"
#include "link/BodyLink.h"
#include "platform/Platform.h"

static const std::uint32_t PROP_DL_RESONANT_FREQUENCY = 0x100000E;  // unsigned 32-bit integer

static const SLR_MONITOR::tagBANK_KIND_T MEMORY_BANK = SLR_MONITOR::BANK_EE;
static const std::uint32_t MEMORY_ADDRESS = 0x1F28;
static const std::uint32_t MEMORY_SIZE = 2;  // bytes

static const char BOARD_INF_FILE[] = "BoardInf.ini";
static const char BOARD_INF_SECTION[] = "DLResonantFrequency";
static const std::int32_t NO_VALUE = -1;   // default of a read: the key is missing
static const std::int32_t VALUE_SIZE = 4;  // bytes; a read needs a range that holds a whole value
// Bytes; far beyond any EEPROM, and low enough that a spoilt file takes no memory of note and does
// not lead far beyond the host's buffer.
static const std::int32_t GREATEST_SIZE = 0x10000;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

namespace {

/// What the file says; nothing of it is trusted.
struct BOARD_INF {
    std::int32_t nAddress;  ///< EEPROM word where the value begins
    std::int32_t nSize;     ///< bytes

    std::int32_t Count() const { return nSize >> 1; }  ///< whole words
};

void ReadProfileInteger(
    const char* lpAppName, const char* lpKeyName, std::int32_t* pnReturn, std::int32_t nDefault,
    const std::string& lpszFileName) {
    *pnReturn = static_cast<std::int32_t>(
        GetPrivateProfileIntA(lpAppName, lpKeyName, nDefault, lpszFileName.c_str()));
    if (*pnReturn != NO_VALUE) {
        return;
    }
    BeginLine(s_LogStream) << "[VALU] lpszFileName - " << lpszFileName.c_str() << '\n';
    BeginLine(s_LogStream) << "[VALU] lpAppName    - " << lpAppName << '\n';
    BeginLine(s_LogStream) << "[VALU] lpKeyName    - " << lpKeyName << '\n';
    BeginLine(s_LogStream) << "[VALU] *pnReturn    - " << *pnReturn << '\n';
    BeginLine(s_LogStream) << "[VALU] nDefault     - " << nDefault << '\n';
    FlushLog(s_LogStream, s_byLogBuffer);
    Fail("[WAPI] GetPrivateProfileInt", RESULT_SYSTEM_ERROR);
}

BOARD_INF ReadBoardInf(CFilePath& filePath) {
    const std::string path = filePath.GetPropertyFullPath(BOARD_INF_FILE);
    BOARD_INF boardInf{};
    ReadProfileInteger(BOARD_INF_SECTION, "Address", &boardInf.nAddress, NO_VALUE, path);
    ReadProfileInteger(BOARD_INF_SECTION, "Size", &boardInf.nSize, NO_VALUE, path);
    BeginLine(s_LogStream) << "[VALU] Address - " << boardInf.nAddress << '\n';
    BeginLine(s_LogStream) << "[VALU] Size    - " << boardInf.nSize << '\n';
    return boardInf;
}

void LogCount(const BOARD_INF& boardInf) {
    BeginLine(s_LogStream) << "[VALU] Count   - " << boardInf.Count() << '\n';
    FlushLog(s_LogStream, s_byLogBuffer);
}

void CheckSize(const BOARD_INF& boardInf, std::int32_t nSmallest) {
    if (boardInf.nSize < nSmallest || boardInf.nSize > GREATEST_SIZE) {
        Fail("[VALU] Size", RESULT_INVALID_CAMERA_VALUE);
    }
}

// Unsigned, because an address from the file may lie anywhere.
std::uint32_t WordAddress(const BOARD_INF& boardInf, std::size_t word) {
    return static_cast<std::uint32_t>(boardInf.nAddress) + static_cast<std::uint32_t>(word);
}

}  // namespace

std::int32_t CopyDLResonantFrequency(void* /*argument*/) noexcept {
    return RunOperation({s_LogStream, s_byLogBuffer, "CopyDLResonantFrequency"}, [] {
        std::uint32_t unFrequency = 0;
        CheckNested(GetBoardInfDLResonantFrequency(&unFrequency), "GetBoardInfDLResonantFrequency");
        CheckNested(SetDLResonantFrequency(&unFrequency), "SetDLResonantFrequency");
    });
}

std::int32_t SetDLResonantFrequency(void* argument) noexcept {
    return RunOperation<CSLRMonitor, CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "SetDLResonantFrequency"}, [&](auto& monitor, auto& property) {
            const auto* punFrequency = static_cast<const std::uint32_t*>(argument);
            CheckPointer(punFrequency, "punFrequency");
            property.Set(PROP_DL_RESONANT_FREQUENCY, sizeof(*punFrequency), punFrequency);
            monitor.OpenSession();
            monitor.ChangeBank(MEMORY_BANK);
            const std::uint8_t byData[MEMORY_SIZE] = {
                static_cast<std::uint8_t>(*punFrequency >> 8),
                static_cast<std::uint8_t>(*punFrequency)};
            for (const std::uint8_t byte : byData) {
                BeginLine(s_LogStream) << "[VALU] byData - " << std::hex << std::setfill('0')
                                       << std::setw(2) << unsigned{byte} << '\n';
            }
            s_LogStream << std::dec;
            FlushLog(s_LogStream, s_byLogBuffer);
            monitor.WriteMemory(MEMORY_ADDRESS, MEMORY_SIZE, byData);
            monitor.CloseSession();
        });
}

std::int32_t GetDLResonantFrequency(void* argument) noexcept {
    // No session is opened: the monitor is only built.
    return RunOperation<CSLRMonitor, CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "GetDLResonantFrequency"},
        [&](auto& /*monitor*/, auto& property) {
            auto* pvParameter = static_cast<std::uint32_t*>(argument);
            CheckPointer(pvParameter, "pvParameter");
            std::uint32_t unFrequencyD = 0;
            property.Get(PROP_DL_RESONANT_FREQUENCY, sizeof(unFrequencyD), &unFrequencyD);
            BeginLine(s_LogStream) << "[VALU] unFrequencyD - " << unFrequencyD << '\n';
            FlushLog(s_LogStream, s_byLogBuffer);
            pvParameter[1] = unFrequencyD;
        });
}

std::int32_t SaveDLResonantFrequency(void* /*argument*/) noexcept {
    return SaveProperty(
        {s_LogStream, s_byLogBuffer, "SaveDLResonantFrequency"}, PROP_DL_RESONANT_FREQUENCY);
}

std::int32_t GetBoardInfDLResonantFrequency(void* argument) noexcept {
    return RunOperation<CEventProcedure, CFilePath>(
        {s_LogStream, s_byLogBuffer, "GetBoardInfDLResonantFrequency"},
        [&](auto& procedure, auto& filePath) {
            auto* pvParameter = static_cast<std::uint32_t*>(argument);
            CheckPointer(pvParameter, "pvParameter");
            const BOARD_INF boardInf = ReadBoardInf(filePath);
            LogCount(boardInf);
            CheckSize(boardInf, VALUE_SIZE);
            const auto count = static_cast<std::size_t>(boardInf.Count());
            const auto pusData = AllocateBuffer<std::uint16_t>(count, "pusData");
            for (std::size_t word = 0; word < count; ++word) {
                pusData[word] = static_cast<std::uint16_t>(
                    ReadEepromWord(procedure, WordAddress(boardInf, word)));
            }
            *pvParameter = pusData[0] | std::uint32_t{pusData[1]} << 16;
        });
}

// Not the mirror of the read: the bytes of each word travel high byte first.
std::int32_t SetBoardInfDLResonantFrequency(void* argument) noexcept {
    return RunOperation<CEventProcedure, CFilePath>(
        {s_LogStream, s_byLogBuffer, "SetBoardInfDLResonantFrequency"},
        [&](auto& procedure, auto& filePath) {
            CheckPointer(argument, "pvParameter");
            const BOARD_INF boardInf = ReadBoardInf(filePath);
            CheckSize(boardInf, 0);
            const auto unSize = static_cast<std::uint32_t>(boardInf.nSize);
            const auto pbyData = AllocateBuffer<std::uint8_t>(unSize, "pbyData");
            std::memcpy(pbyData.get(), argument, unSize);
            DebugPrintDumpMemory(pbyData.get(), &unSize);
            LogCount(boardInf);
            const auto count = static_cast<std::size_t>(boardInf.Count());
            for (std::size_t word = 0; word < count; ++word) {
                const std::uint8_t* pbyWord = &pbyData[2 * word];
                const auto usWord = static_cast<std::uint16_t>(pbyWord[0] << 8 | pbyWord[1]);
                CheckEvent(
                    WriteEepromWord(procedure, WordAddress(boardInf, word), usWord),
                    "FA_WriteEepromData");
            }
        });
}

void RegisterDLResonantFrequency(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"CopyDLResonantFrequency", CopyDLResonantFrequency},
        {"SetDLResonantFrequency", SetDLResonantFrequency},
        {"GetDLResonantFrequency", GetDLResonantFrequency},
        {"SaveDLResonantFrequency", SaveDLResonantFrequency},
        {"GetBoardInfDLResonantFrequency", GetBoardInfDLResonantFrequency},
        {"SetBoardInfDLResonantFrequency", SetBoardInfDLResonantFrequency},
    };
    RegisterEventProcs(callback, registrations);
}
