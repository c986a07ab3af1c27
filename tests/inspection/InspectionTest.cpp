// Inspection at its edges: values that are judged, bounds, an exchange that goes on after a bad
// answer, what is filled ahead of a failure.
#include "inspection/StorageMedia.h"
#include "tests/support/Support.h"

namespace {

class InspectionTest : public ModuleTest {};

TEST_F(InspectionTest, SlitRollingTestsItsBoundBehindTheMode) {
    const std::string name = "SetSlitRollingMode";
    const std::string mode = "Execute FA_SetReleaseModeForSR 0";
    std::uint32_t unValue = 0;
    EXPECT_EQ(Run(name, &unValue), 0);
    EXPECT_THAT(Calls(), ElementsAre(mode, "Execute FA_SetAccumulateTimeForSR 0"));
    for (const auto& [unRefused, count] :
         {std::pair(85U, "3761"), std::pair(~0U, "190042800663")}) {
        unValue = unRefused;
        const std::string lines = std::string("> [VALU] HdNum - ") + count + "\n";
        Expect(
            name, 3, {mode},
            FailedFrame(name, 3, "[EVNT] nHDCount", lines + "[ERR!] HD_Count is Over\n"), &unValue);
    }
    SimulatedBody::ScriptEvent("FA_SetReleaseModeForSR", {7});
    Expect(name, 7, {mode}, FailedFrame(name, 7, "[EVNT] FA_SetReleaseModeForSR"), &unValue);
}

TEST_F(InspectionTest, BatteryStatusIsLoggedInHexadecimalAndJudged) {
    const char name[] = "CheckBatteryStatus";
    for (const auto& [status, digits] :
         {std::pair(0, "0"), std::pair(2, "2"), std::pair(1, "1"), std::pair(3, "3"),
          std::pair(10, "a"), std::pair(255, "ff")}) {
        SimulatedBody::Bytes record(96, 2);
        record[22] = static_cast<std::uint8_t>(status);
        SimulatedBody::SetProperty(0x8003001D, record);
        const bool bAccepted = status == 0 || status == 2;
        const std::string line = std::string("> [VALU] BatteryStatus - ") + digits + "\n";
        Expect(
            name, bAccepted ? 0 : 35, {"Get 0x8003001D 96"},
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
         {std::pair(0xFF, true), std::pair(0x00, false), std::pair(0xFE, false)}) {
        const auto byAnswer = static_cast<std::uint8_t>(answer);
        SimulatedBody::SetLensAnswer(byAnswer);
        Expect(
            name, bActive ? 0 : 35,
            {"OpenSession", "ChangeBank 0xFC", "WriteMemory 0x0 8: 07 12 80 12 20 90 00 00",
             "CallFunction 15", "ReadMemory 0x0 8",
             "WriteMemory 0x0 8: 02 12 80 a3 a4 a5 a6 " + Hex({byAnswer}), "CallFunction 15",
             "CloseSession"},
            bActive ? Frame(name, 0, "> [VALU] lStatus - 1\n")
                    : FailedFrame(name, 35, "[VALU] lStatus", "> [VALU] lStatus - 0\n"));
    }
}

TEST_F(InspectionTest, StorageMediaFillsWhatItCouldRead) {
    const char name[] = "CheckStorageMediaExistence";
    SimulatedBody::SetProperty(0x8000001D, BytesOf(std::int32_t{-5}));
    STORAGE_MEDIA_EXISTENCE_T media{8, 8};
    SimulatedBody::FailCall(2);
    Expect(
        name, LINK_FAILURE, {"Get 0x8000001D 4", "Get 0x8000001E 4 failed"},
        FailedFrame(name, LINK_FAILURE, LINK_MESSAGE, "[VALU] CARD Slot1 : -5\n"), &media);
    EXPECT_EQ(Hex(BytesOf(media)), "fb ff ff ff 00 00 00 00");
    SimulatedBody::FailCall(1);
    EXPECT_EQ(Run(name, &media), LINK_FAILURE);
    EXPECT_EQ(Hex(BytesOf(media)), "00 00 00 00 00 00 00 00");
}

}  // namespace
