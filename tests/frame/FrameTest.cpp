// The operation frame: however an operation fails, the host gets a result code and the log one
// closing line.
#include "tests/support/Support.h"

namespace {

using SimulatedBody::FAILURE;
using SimulatedBody::FAULT;

struct FAULT_CASE {
    const char* name;
    FAILURE failure;
    std::int32_t result;
    const char* errorLine;
};

const FAULT_CASE FAULTS[] = {
    {"CException", {.code = 0x2005, .message = "[VALU] text"}, 0x2005, "> [ERR!] - [VALU] text\n"},
    {"negative code", {.code = -3, .message = ""}, -3, "> [ERR!] - \n"},
    {"std::exception", {.kind = FAULT::STANDARD_EXCEPTION}, 33, "> [ERR!] UnExpected Exception\n"},
    {"integer", {.kind = FAULT::INTEGER, .code = 7}, 33, "> [ERR!] UnExpected Exception\n"},
};

class FrameTest : public ModuleTest {
  protected:
    FrameTest() { SimulatedBody::SetProperty(0x1000000, {0, 0, 0, 0}); }

    std::int32_t RunGetState() { return Run("GetFactoryModeState", &m_nState); }

    std::int32_t m_nState = 0;
};

TEST_F(FrameTest, FaultBecomesAResultCode) {
    for (const FAULT_CASE& fault : FAULTS) {
        for (const auto fail : {SimulatedBody::FailCall, SimulatedBody::FailConstruction}) {
            SCOPED_TRACE(fault.name);
            fail(1, fault.failure);
            EXPECT_EQ(RunGetState(), fault.result);
            EXPECT_EQ(Log(), Frame("GetFactoryModeState", fault.result, fault.errorLine));
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

// The prefixes of lines 1 and 2 are the outer frame's, 3 the path's, 4 and 5 the nested frame's.
TEST_F(FrameTest, NestedFailureCarriesItsCode) {
    SimulatedBody::FailLinePrefix(6, {.code = 0x2007, .message = "[VALU] prefix"});
    EXPECT_EQ(Run("LoadPropertyData"), 0x2007);
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_EQ(
        Log(), FailedFrame(
                   "LoadPropertyData", 0x2007, "[FUNC] GetPropertyDataCount",
                   "> [VALU] pszFullPath - \n" +
                       FailedFrame("GetPropertyDataCount", 0x2007, "[VALU] prefix")));
}

// GetPropertyDataList has no guard of its own: its failure is the outer frame's.
TEST_F(FrameTest, FramelessRoutinePassesItsFailureOn) {
    SimulatedBody::FailLinePrefix(9, {.code = 0x2007, .message = "[VALU] prefix"});
    EXPECT_EQ(Run("LoadPropertyData"), 0x2007);
    EXPECT_THAT(
        Log(), testing::EndsWith("> [----]\n> [ERR!] - [VALU] prefix\n"
                                 "> [FUNC] LoadPropertyData - 8199\n"));
    EXPECT_EQ(CountLines(Log(), "> [FUNC] GetPropertyDataList - 0"), 0U);
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
