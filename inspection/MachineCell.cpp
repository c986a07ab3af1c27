// The events of the machine cell tests and of their results.
#include "inspection/MachineCell.h"

#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

static const std::int32_t OPEN_MENU_PARAMETER = 1;
// What it means is the camera's; the same for a single result and for a table.
static const std::int32_t READ_RESULT_PARAMETER = 4;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

static std::int32_t RunCellEvent(
    std::string_view logName, const char* pszEvent, std::int32_t parameter = 0) noexcept {
    return RunEvent({s_LogStream, s_byLogBuffer, logName}, pszEvent, parameter);
}

// The event writes straight into the host's block.
static std::int32_t ReadCellResult(
    std::string_view logName, const char* pszEvent, void* argument) noexcept {
    return RunOperation<CEventProcedure>(
        {s_LogStream, s_byLogBuffer, logName}, [&](auto& procedure) {
            auto* pResult = static_cast<std::int32_t*>(argument);
            CheckPointer(pResult, "pResult");
            procedure.Execute(pszEvent, READ_RESULT_PARAMETER, pResult);
        });
}

std::int32_t ClearMachineCellResult(void* /*argument*/) noexcept {
    return RunCellEvent("ClearMachineCellResult", "FA_GuiFactoryClearResult");
}

std::int32_t EnterMachineCellSpecialMenu(void* /*argument*/) noexcept {
    return RunCellEvent("EnterMachineCellSpecialMenu", "FA_OpenSpecialMenu", OPEN_MENU_PARAMETER);
}

std::int32_t ExitMachineCellSpecialMenu(void* /*argument*/) noexcept {
    return RunCellEvent("ExitMachineCellSpecialMenu", "FA_CloseSpecialMenu");
}

std::int32_t IncreaseMachineCellDialClickGap(void* /*argument*/) noexcept {
    return RunCellEvent("IncreaseMachineCellDialClickGap", "FA_IncreaseGap");
}

std::int32_t DecreaseMachineCellDialClickGap(void* /*argument*/) noexcept {
    // The only gap event that is known. Should the camera have another one, its name goes here.
    return RunCellEvent("DecreaseMachineCellDialClickGap", "FA_IncreaseGap");
}

std::int32_t EnterMachineCellAccTest(void* /*argument*/) noexcept {
    return RunCellEvent("EnterMachineCellAccTest", "FA_SendAccStartCommand");
}

std::int32_t ExecuteMachineCellExternalStrobeTest(void* /*argument*/) noexcept {
    return RunCellEvent("ExecuteMachineCellExternalStrobeTest", "FA_ExtFlashTest");
}

std::int32_t SendMachineCellSetButton(void* /*argument*/) noexcept {
    return RunCellEvent("SendMachineCellSetButton", "FA_SendMCellSetButton");
}

std::int32_t OverwriteMachineCellDispDialResult(void* argument) noexcept {
    return RunOperation<CEventProcedure>(
        {s_LogStream, s_byLogBuffer, "OverwriteMachineCellDispDialResult"}, [&](auto& procedure) {
            std::int32_t nResult = 0;
            procedure.Execute(
                "FA_Overwrite_DispDial_Result", *static_cast<const std::int32_t*>(argument),
                &nResult);
        });
}

std::int32_t GetMachineCellDispDialResult(void* argument) noexcept {
    return ReadCellResult("GetMachineCellDispDialResult", "FA_Get_DispDial_Result", argument);
}

std::int32_t GetMachineCellAccTestResult(void* argument) noexcept {
    return ReadCellResult("GetMachineCellAccTestResult", "FA_Get_AccTest_Result", argument);
}

std::int32_t GetMachineCellSDialTestResult(void* argument) noexcept {
    return ReadCellResult("GetMachineCellSDialTestResult", "FA_Get_SDialAdj_Result", argument);
}

std::int32_t SetSoundVolume(void* argument) noexcept {
    // The closing line bears another tag than the opening line.
    return RunOperation<CEventProcedure>(
        {s_LogStream, s_byLogBuffer, "SetSoundVolume", "[VALU] SetSoundVolume"},
        [&](auto& procedure) {
            std::int32_t nResult = 0;
            procedure.Execute(
                "FA_Set_AudioVolumeOut", *static_cast<const std::int32_t*>(argument), &nResult);
            CheckEvent(nResult, "FA_Set_AudioVolumeOut");
        });
}

void RegisterMachineCell(EVENT_PROC_REGISTER_FUNC callback) {
    static const std::int32_t WORD_SIZE = sizeof(std::int32_t);
    static const REGISTRATION registrations[] = {
        {"ClearMachineCellResult", ClearMachineCellResult},
        {"EnterMachineCellSpecialMenu", EnterMachineCellSpecialMenu},
        {"ExitMachineCellSpecialMenu", ExitMachineCellSpecialMenu},
        {"IncreaseMachineCellDialClickGap", IncreaseMachineCellDialClickGap},
        {"DecreaseMachineCellDialClickGap", DecreaseMachineCellDialClickGap},
        {"EnterMachineCellAccTest", EnterMachineCellAccTest},
        {"ExecuteMachineCellAccTest", EnterMachineCellAccTest},
        {"ExecuteMachineCellExternalStrobeTest", ExecuteMachineCellExternalStrobeTest},
        {"SendMachineCellSetButton", SendMachineCellSetButton},
        {"OverwriteMachineCellDispDialResult", OverwriteMachineCellDispDialResult, WORD_SIZE,
         EVENT_PROC_IN},
        {"GetMachineCellDispDialResult", GetMachineCellDispDialResult, WORD_SIZE, EVENT_PROC_OUT},
        {"GetMachineCellAccTestResult", GetMachineCellAccTestResult, WORD_SIZE, EVENT_PROC_OUT},
        {"GetMachineCellSDialTestResult", GetMachineCellSDialTestResult, WORD_SIZE, EVENT_PROC_OUT},
        {"GetMachineCellDispDialResultTable", GetMachineCellDispDialResult,
         DISP_DIAL_RESULT_TABLE_SIZE, EVENT_PROC_OUT},
        {"GetMachineCellAccTestResultTable", GetMachineCellAccTestResult,
         ACC_TEST_RESULT_TABLE_SIZE, EVENT_PROC_OUT},
        {"SetSoundVolume", SetSoundVolume, WORD_SIZE, EVENT_PROC_IN},
    };
    RegisterEventProcs(callback, registrations);
}
