// The operations on the A board's EEPROM words; each word is one event in the camera.
#include "adjustment/ABoardEeprom.h"

#include <iomanip>

#include "frame/OperationFrame.h"
#include "link/BodyLink.h"
#include "link/CameraSystem.h"

static const std::int32_t PARAMETER_KIND = 2;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

std::uint32_t ReadEepromWord(CEventProcedure& procedure, std::uint32_t address) {
    std::int32_t nResult = 0;
    procedure.Execute("FA_ReadEepromData", static_cast<std::int32_t>(address), &nResult);
    return static_cast<std::uint32_t>(nResult);
}

std::int32_t WriteEepromWord(
    CEventProcedure& procedure, std::uint32_t address, std::uint32_t value) {
    std::int32_t nResult = 0;
    procedure.ClearParameters();
    procedure.PushParameterAsInteger(static_cast<std::int32_t>(address), PARAMETER_KIND);
    procedure.PushParameterAsInteger(static_cast<std::int32_t>(value), PARAMETER_KIND);
    procedure.Execute("FA_WriteEepromData", &nResult);
    return nResult;
}

static void CheckRange(const ABOARD_EEPROM_DATA_T& data) {
    if (data.Count == 0 || data.Count > ABOARD_EEPROM_WORDS) {
        Fail("[VALU] pData->Count", RESULT_INVALID_PARAMETER);
    }
    if (data.Address >= ABOARD_EEPROM_WORDS) {
        Fail("[VALU] pData->Address", RESULT_INVALID_PARAMETER);
    }
    if (data.Address + data.Count > ABOARD_EEPROM_WORDS) {
        Fail("[VALU] pData->Address + pData->Count", RESULT_INVALID_PARAMETER);
    }
}

static void LogWord(const char* pszLabel, std::uint32_t value) {
    BeginLine(s_LogStream) << pszLabel << value << "( 0x" << std::hex << std::setfill('0')
                           << std::setw(4) << value << std::dec << " )\n";
    FlushLog(s_LogStream, s_byLogBuffer);
}

std::int32_t DebugPrintABoardEepromData(void* /*argument*/) noexcept {
    return RunOperation<CEventProcedure, CCameraSystem>(
        {s_LogStream, s_byLogBuffer, "DebugPrintABoardEepromData"},
        [](auto& procedure, auto& powerSave) {
            powerSave.DisablePowerSave();
            for (std::uint32_t address = 0; address < ABOARD_EEPROM_WORDS; ++address) {
                const std::uint32_t word = ReadEepromWord(procedure, address) & 0xFFFF;
                BeginLine(s_LogStream)
                    << "[VALU] Data( 0x" << std::hex << std::setfill('0') << std::setw(2) << address
                    << " ) - 0x" << std::setw(4) << word << '\n';
                FlushLog(s_LogStream, s_byLogBuffer);
            }
            s_LogStream << std::dec;
            powerSave.EnablePowerSave();
        });
}

std::int32_t GetABoardEepromData(void* argument) noexcept {
    return RunOperation<CEventProcedure, CCameraSystem>(
        {s_LogStream, s_byLogBuffer, "GetABoardEepromData"}, [&](auto& procedure, auto& powerSave) {
            powerSave.DisablePowerSave();
            auto* pData = static_cast<ABOARD_EEPROM_DATA_T*>(argument);
            CheckPointer(pData, "pData");
            BeginLine(s_LogStream) << "[----] pData->Address : " << pData->Address << '\n';
            BeginLine(s_LogStream) << "[----] pData->Count   : " << pData->Count << '\n';
            CheckRange(*pData);
            const std::uint32_t end = pData->Address + pData->Count;
            for (std::uint32_t address = pData->Address; address < end; ++address) {
                const std::uint32_t word = ReadEepromWord(procedure, address);
                LogWord("[VALU] Data - ", word);
                pData->Data[address] = word;
            }
            powerSave.EnablePowerSave();
        });
}

std::int32_t SetABoardEepromData(void* argument) noexcept {
    return RunOperation<CEventProcedure, CCameraSystem>(
        {s_LogStream, s_byLogBuffer, "SetABoardEepromData"}, [&](auto& procedure, auto& powerSave) {
            powerSave.DisablePowerSave();
            const auto* pData = static_cast<const ABOARD_EEPROM_DATA_T*>(argument);
            CheckPointer(pData, "pData");
            CheckRange(*pData);
            const std::uint32_t end = pData->Address + pData->Count;
            for (std::uint32_t address = pData->Address; address < end; ++address) {
                const std::uint32_t ulData = pData->Data[address];
                LogWord("[VALU] ulData - ", ulData);
                WriteEepromWord(procedure, address, ulData);
            }
            powerSave.EnablePowerSave();
        });
}

void RegisterABoardEeprom(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"DebugPrintABoardEepromData", DebugPrintABoardEepromData},
        {"GetABoardEepromData", GetABoardEepromData},
        {"SetABoardEepromData", SetABoardEepromData},
    };
    RegisterEventProcs(callback, registrations);
}
