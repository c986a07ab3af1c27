// The operation frame: however an operation fails, the host gets a result code and the log one
// closing line.
#include "tests/support/Support.h"

namespace {

using SimulatedBody::FAULT;

class FrameTest : public ModuleTest {
  protected:
    FrameTest() { SimulatedBody::SetProperty(0x1000000, {0, 0, 0, 0}); }

    std::int32_t RunGetState() { return Run("GetFactoryModeState", &m_nState); }

    std::int32_t m_nState = 0;
};

TEST_F(FrameTest, ExceptionOfTheLinkBecomesResultAndErrorLine) {
    for (const std::int32_t code : {0x2005, -3}) {
        for (const auto fail : {SimulatedBody::FailCall, SimulatedBody::FailConstruction}) {
            const std::string message = code < 0 ? "" : "[VALU] text";
            fail(1, {.code = code, .message = message});
            EXPECT_EQ(RunGetState(), code);
            EXPECT_EQ(Log(), FailedFrame("GetFactoryModeState", code, message));
            EXPECT_EQ(RunGetState(), 0);
            EXPECT_EQ(Log(), Frame("GetFactoryModeState", 0, "> [FUNC] State - 0\n"));
        }
    }
}

TEST_F(FrameTest, FirstFailureIsTheResult) {
    SimulatedBody::FailCall(1, {.code = 0x2003});
    // Opening lines, error line, closing line.
    SimulatedBody::FailLinePrefix(4, {.kind = FAULT::INTEGER});
    EXPECT_EQ(RunGetState(), 0x2003);
    EXPECT_THAT(Log(), testing::EndsWith("[FUNC] GetFactoryModeState - 8195\n"));
}

TEST_F(FrameTest, EveryPrefixFailingLeavesTheResult) {
    for (std::uint32_t line = 1; line <= 10; ++line) {
        SimulatedBody::FailLinePrefix(line, {.kind = FAULT::INTEGER});
    }
    EXPECT_EQ(RunGetState(), 33);
    EXPECT_THAT(Log(), testing::EndsWith("[FUNC] GetFactoryModeState - 33\n"));
}

// Two opening lines of the registration, two of the property hash between its groups.
TEST_F(FrameTest, FailedRegistrationKeepsWhatWasRegistered) {
    SimulatedBody::FailLinePrefix(3);
    ClearLog();
    EXPECT_EQ(Module().Register(), LINK_FAILURE);
    ASSERT_FALSE(Module().registered.empty());
    EXPECT_EQ(Module().registered.back().name, "LoadPropertyData");
    EXPECT_EQ(Log(), FailedFrame("RegisterEventProcList", LINK_FAILURE, LINK_MESSAGE));
}

}  // namespace
