// The exchange with the lens, which goes on after a bad answer.
#include "tests/support/Support.h"

namespace {

TEST_F(ModuleTest, LensExchangeIsFinishedBeforeTheVerdict) {
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
}

}  // namespace
