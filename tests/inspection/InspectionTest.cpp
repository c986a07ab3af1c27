// Inspection: events and their result words, exchanged bytes, order of tests, record after failure.
#include <array>

#include "inspection/StorageMedia.h"
#include "tests/support/Support.h"

namespace {

class InspectionTest : public ModuleTest {};

struct EVENT_CASE {
    const char* name;
    std::string event;
    const char* logName = name;
};

TEST_F(InspectionTest, EventsWhoseResultWordIsNotLookedAt) {
    const EVENT_CASE cases[] = {
        {"ClearMachineCellResult", "FA_GuiFactoryClearResult 0"},
        {"EnterMachineCellSpecialMenu", "FA_OpenSpecialMenu 1"},
        {"ExitMachineCellSpecialMenu", "FA_CloseSpecialMenu 0"},
        {"IncreaseMachineCellDialClickGap", "FA_IncreaseGap 0"},
        {"DecreaseMachineCellDialClickGap", "FA_IncreaseGap 0"},
        {"EnterMachineCellAccTest", "FA_SendAccStartCommand 0"},
        {"ExecuteMachineCellAccTest", "FA_SendAccStartCommand 0", "EnterMachineCellAccTest"},
        {"ExecuteMachineCellExternalStrobeTest", "FA_ExtFlashTest 0"},
        {"SendMachineCellSetButton", "FA_SendMCellSetButton 0"},
        {"OverwriteMachineCellDispDialResult", "FA_Overwrite_DispDial_Result -7"},
    };
    std::int32_t nValue = -7;
    for (const auto& [name, event, logName] : cases) {
        SimulatedBody::ScriptEvent(event.substr(0, event.find(' ')), {3});
        EXPECT_EQ(Run(name, &nValue), 0);
        EXPECT_THAT(Calls(), ElementsAre("Execute " + event));
        EXPECT_EQ(Log(), Frame(logName, 0));
    }
}

TEST_F(InspectionTest, ResultsGoToTheHostsBlock) {
    const EVENT_CASE cases[] = {
        {"GetMachineCellDispDialResult", "FA_Get_DispDial_Result"},
        {"GetMachineCellAccTestResult", "FA_Get_AccTest_Result"},
        {"GetMachineCellSDialTestResult", "FA_Get_SDialAdj_Result"},
        {"GetMachineCellDispDialResultTable", "FA_Get_DispDial_Result",
         "GetMachineCellDispDialResult"},
        {"GetMachineCellAccTestResultTable", "FA_Get_AccTest_Result",
         "GetMachineCellAccTestResult"},
    };
    for (const auto& [name, event, logName] : cases) {
        std::array<std::int32_t, 32> nTable{};
        SimulatedBody::ScriptEvent(event, {12345});  // odd, yet data and no failure
        EXPECT_EQ(Run(name, nTable.data()), 0);
        EXPECT_EQ(nTable[0], 12345);
        EXPECT_THAT(Calls(), ElementsAre("Execute " + event + " 4"));
        EXPECT_EQ(Log(), Frame(logName, 0));
        EXPECT_EQ(Run(name), 3);
        EXPECT_THAT(Calls(), IsEmpty());
        EXPECT_EQ(Log(), FailedFrame(logName, 3, "[VALU] pResult"));
    }
}

std::string WithClosingTag(std::string frame, const std::string& tag) {
    return frame.replace(frame.rfind("[FUNC]"), tag.size(), tag);
}

TEST_F(InspectionTest, OddResultWordIsTheResult) {
    const struct {
        const char* name;
        const char* event;
        const char* message;
        const char* logName = name;
        const char* closingTag = "[FUNC]";
    } cases[] = {
        {"ClearSlitRollingMode", "FA_ClearReleaseModeForSR", "[EVNT] FA_ClearReleaseModeForSR"},
        {"DisableBootDisk", "DisableBootDisk", "[EVNT] DisableBootDisk"},
        {"EnableBootDisk", "EnableBootDisk", "[EVNT] EnableBootDisk"},
        {"TurnOffDisplay", "FactDisp_TurnOffDisplay", "[EVNT] TurnOffDisplay", "_TurnOffDisplay"},
        {"TurnOnDisplay", "FactDisp_TurnOnDisplay", "[EVNT] TurnOnDisplay", "_TurnOnDisplay"},
        {"OutputColorBarChart", "FA_DISP_StartMix", "[EVNT] FA_DISP_StartMix",
         "_OutputColorBarChart", "[VALU]"},
        {"SetSoundVolume", "FA_Set_AudioVolumeOut", "[EVNT] FA_Set_AudioVolumeOut",
         "SetSoundVolume", "[VALU]"},
    };
    std::int32_t nVolume = 0;
    for (const auto& [name, event, message, logName, closingTag] : cases) {
        SimulatedBody::ScriptEvent(event, {2, -1});
        EXPECT_EQ(Run(name, &nVolume), 0);
        EXPECT_EQ(Calls().back(), std::string("Execute ") + event + " 0");
        EXPECT_EQ(Log(), WithClosingTag(Frame(logName, 0), closingTag));
        EXPECT_EQ(Run(name, &nVolume), -1);
        EXPECT_EQ(Log(), WithClosingTag(FailedFrame(logName, -1, message), closingTag));
    }
    nVolume = -2;
    Run("SetSoundVolume", &nVolume);
    EXPECT_THAT(Calls(), ElementsAre("Execute FA_Set_AudioVolumeOut -2"));
    Run("OutputColorBarChart");
    EXPECT_THAT(
        Calls(), ElementsAre(
                     "ClearParameters", "PushParameterAsInteger 255", "PushParameterAsInteger 0",
                     "Execute FA_DISP_StartMix 0"));
}

TEST_F(InspectionTest, SlitRollingTestsItsBoundBehindTheMode) {
    const std::string name = "SetSlitRollingMode";
    const std::string mode = "Execute FA_SetReleaseModeForSR 0";
    std::uint32_t unValue = 84;
    EXPECT_EQ(Run(name, &unValue), 0);
    EXPECT_THAT(Calls(), ElementsAre(mode, "Execute FA_SetAccumulateTimeForSR 3716"));
    EXPECT_EQ(Log(), Frame(name, 0, "> [VALU] HdNum - 3716\n"));
    unValue = 0;
    EXPECT_EQ(Run(name, &unValue), 0);
    EXPECT_THAT(Calls(), ElementsAre(mode, "Execute FA_SetAccumulateTimeForSR 0"));
    for (const auto& [unRefused, lines] :
         {std::pair(85U, "> [VALU] HdNum - 3761\n[ERR!] HD_Count is Over\n"),
          std::pair(~0U, "> [VALU] HdNum - 190042800663\n[ERR!] HD_Count is Over\n")}) {
        unValue = unRefused;
        EXPECT_EQ(Run(name, &unValue), 3);
        EXPECT_THAT(Calls(), ElementsAre(mode));
        EXPECT_EQ(Log(), FailedFrame(name, 3, "[EVNT] nHDCount", lines));
    }
}

TEST_F(InspectionTest, SlitRollingFailsWithTheWordOfEitherEvent) {
    const std::string name = "SetSlitRollingMode";
    std::uint32_t unValue = 1;
    EXPECT_EQ(Run(name), 3);
    EXPECT_EQ(Log(), FailedFrame(name, 3, "[VALU] pParameter"));
    EXPECT_THAT(Calls(), IsEmpty());
    SimulatedBody::ScriptEvent("FA_SetReleaseModeForSR", {7, 4});
    EXPECT_EQ(Run(name, &unValue), 7);
    EXPECT_EQ(Log(), FailedFrame(name, 7, "[EVNT] FA_SetReleaseModeForSR"));
    SimulatedBody::ScriptEvent("FA_SetAccumulateTimeForSR", {5});
    EXPECT_EQ(Run(name, &unValue), 5);
    EXPECT_EQ(
        Log(), FailedFrame(name, 5, "[EVNT] FA_SetAccumulateTimeForSR", "> [VALU] HdNum - 44\n"));
}

TEST_F(InspectionTest, BatteryStatusIsLoggedInHexadecimalAndJudged) {
    const char name[] = "CheckBatteryStatus";
    for (const auto& [status, digits] :
         {std::pair(0, "0"), std::pair(2, "2"), std::pair(1, "1"), std::pair(10, "a"),
          std::pair(255, "ff")}) {
        SimulatedBody::Bytes record(96, 2);
        record[22] = static_cast<std::uint8_t>(status);
        SimulatedBody::SetProperty(0x8003001D, record);
        const bool bAccepted = status == 0 || status == 2;
        const std::string line = std::string("> [VALU] BatteryStatus - ") + digits + "\n";
        EXPECT_EQ(Run(name), bAccepted ? 0 : 35);
        EXPECT_THAT(Calls(), ElementsAre("Get 0x8003001D 96"));
        EXPECT_EQ(
            Log(),
            bAccepted ? Frame(name, 0, line) : FailedFrame(name, 35, "[VALU] BatteryType", line));
    }
}

TEST_F(InspectionTest, LensExchangeIsFinishedBeforeTheVerdict) {
    const char name[] = "CheckLensActivity";
    // What the lens leaves behind the head of the block must come back to it.
    SimulatedBody::Observe([](const SimulatedBody::CALL& call, bool complete) {
        if (complete && call.function == "CSLRMonitor::CallFunction") {
            SimulatedBody::SetMemory(0xFC, 3, {0xA3, 0xA4, 0xA5, 0xA6});
        }
    });
    for (const auto& [answer, bActive] :
         {std::pair(0x01, true), std::pair(0xFF, true), std::pair(0x00, false),
          std::pair(0xFE, false)}) {
        const auto byAnswer = static_cast<std::uint8_t>(answer);
        SimulatedBody::SetLensAnswer(byAnswer);
        EXPECT_EQ(Run(name), bActive ? 0 : 35);
        EXPECT_THAT(
            Calls(),
            ElementsAre(
                "OpenSession", "ChangeBank 0xFC", "WriteMemory 0x0 8: 07 12 80 12 20 90 00 00",
                "CallFunction 15", "ReadMemory 0x0 8",
                "WriteMemory 0x0 8: 02 12 80 a3 a4 a5 a6 " + Hex({byAnswer}), "CallFunction 15",
                "CloseSession"));
        EXPECT_EQ(
            Log(), bActive ? Frame(name, 0, "> [VALU] lStatus - 1\n")
                           : FailedFrame(name, 35, "[VALU] lStatus", "> [VALU] lStatus - 0\n"));
    }
    for (std::uint32_t n = 1; n <= 8; ++n) {
        SimulatedBody::FailCall(n);
        EXPECT_EQ(Run(name), LINK_FAILURE);
        EXPECT_EQ(SimulatedBody::CallCount(), n);
    }
}

TEST_F(InspectionTest, StorageMediaFillsWhatItCouldRead) {
    const char name[] = "CheckStorageMediaExistence";
    SimulatedBody::SetProperty(0x8000001D, BytesOf(std::int32_t{-5}));
    SimulatedBody::SetProperty(0x8000001E, BytesOf(std::int32_t{6}));
    std::array<STORAGE_MEDIA_EXISTENCE_T, 3> media{{{8, 8}, {8, 8}, {8, 8}}};
    EXPECT_EQ(Run(name, &media[0]), 0);
    EXPECT_THAT(Calls(), ElementsAre("Get 0x8000001D 4", "Get 0x8000001E 4"));
    EXPECT_EQ(Log(), Frame(name, 0, "[VALU] CARD Slot1 : -5\n[VALU] CARD Slot2 : 6\n"));
    SimulatedBody::FailCall(2);
    EXPECT_EQ(Run(name, &media[1]), LINK_FAILURE);
    EXPECT_EQ(Log(), FailedFrame(name, LINK_FAILURE, LINK_MESSAGE, "[VALU] CARD Slot1 : -5\n"));
    SimulatedBody::FailCall(1);
    EXPECT_EQ(Run(name, &media[2]), LINK_FAILURE);
    EXPECT_EQ(
        Hex(BytesOf(media)),
        "fb ff ff ff 06 00 00 00 fb ff ff ff 00 00 00 00 00 00 00 00 00 00 00 00");
    EXPECT_EQ(Run(name), 3);
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_EQ(Log(), FailedFrame(name, 3, "[VALU] pStorageMediaExistence"));
}

// What a later call finds in the log file shows which lines were flushed by then.
TEST_F(InspectionTest, LinesWaitForTheirFlush) {
    std::uint32_t unParameter = 1;
    std::string log;
    SimulatedBody::Observe(
        [&](const SimulatedBody::CALL&, bool complete) { log = complete ? log : Log(); });
    EXPECT_EQ(Run("CheckLensActivity"), 0);
    EXPECT_THAT(log, HasLine("> [VALU] lStatus - 1"));
    EXPECT_EQ(Run("SetSlitRollingMode", &unParameter), 0);
    EXPECT_EQ(log, "> [----]\n> [FUNC] SetSlitRollingMode\n");
    STORAGE_MEDIA_EXISTENCE_T media{};
    EXPECT_EQ(Run("CheckStorageMediaExistence", &media), 0);
    EXPECT_EQ(log, "> [----]\n> [FUNC] CheckStorageMediaExistence\n");
}

}  // namespace
