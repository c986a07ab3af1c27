// All operations against the table of their facts: the whole log, the calls and what stands in the
// file at each of them, the host's record, null pointers, odd words, objects.
#include <algorithm>
#include <set>

#include "tests/support/SupportOperations.h"

namespace {

using SimulatedBody::Bytes;

const std::uint8_t BYTE_BEHIND = 0xA5;

class OperationTest : public ModuleTest {
  protected:
    /// A record that goes on far behind the operation's.
    static Bytes Record(const std::string& firstBytes) {
        Bytes record = FromHex(firstBytes);
        record.resize(600, BYTE_BEHIND);
        return record;
    }

    void ExpectRun(
        const OPERATION_FACTS& facts, std::int32_t result, const Steps& steps, void* pRecord) {
        EXPECT_EQ(RunSteps(facts.name, pRecord), WholeRun(facts, result, steps));
        EXPECT_EQ(Result(), result);
    }
};

TEST_F(OperationTest, DoesItsStepsAndLeavesItsRecord) {
    for (const OPERATION_FACTS& facts : AllFacts()) {
        SCOPED_TRACE(facts.name);
        SetUpBody(facts);
        SimulatedBody::FailConstruction(facts.objects + 1);  // one more than there are
        Bytes record = Record(facts.given);
        ExpectRun(facts, facts.result, facts.steps, record.data());
        EXPECT_EQ(Hex(record), Hex(Record(facts.left.empty() ? facts.given : facts.left)));
    }
}

TEST_F(OperationTest, NullPointerIsNamedAndReachesNoCamera) {
    for (const OPERATION_FACTS& facts : AllFacts()) {
        SCOPED_TRACE(facts.name);
        SetUpBody(facts);
        if (!facts.pointer.empty()) {
            ExpectRun(facts, 3, {facts.errorLine + "[VALU] " + facts.pointer}, nullptr);
        }
    }
}

TEST_F(OperationTest, OddWordIsTheResultWhereItIsLookedAt) {
    for (const OPERATION_FACTS& facts : AllFacts()) {
        SCOPED_TRACE(facts.name);
        SetUpBody(facts);
        if (!facts.wordError.empty()) {
            SimulatedBody::ScriptEvent(EventsOf(facts).back(), {-5});
            Steps steps = facts.steps;
            steps.push_back(facts.wordError);
            Bytes record = Record(facts.given);
            ExpectRun(facts, -5, steps, record.data());
        }
    }
}

TEST_F(OperationTest, LastObjectThatIsNotBuiltEndsIt) {
    for (const OPERATION_FACTS& facts : AllFacts()) {
        SCOPED_TRACE(facts.name);
        SetUpBody(facts);
        if (facts.objects != 0) {
            SimulatedBody::FailConstruction(facts.objects);
            Bytes record = Record(facts.given);
            EXPECT_EQ(RunSteps(facts.name, record.data()).back(), facts.closing + " - 8193");
            EXPECT_EQ(Result(), LINK_FAILURE);
            EXPECT_EQ(Hex(record), Hex(Record(facts.given)));
        }
    }
}

// The data have arrived when the call fails, and must not reach the host all the same.
TEST_F(OperationTest, FailedCallLeavesTheRecordThatIsFilledAtTheEnd) {
    const std::set<std::string> names = {
        "GetABoardEepromData",
        "GetBodyID",
        "GetBoardInfDLResonantFrequency",
        "GetBpVersion",
        "GetDateTime",
        "GetDigitalParaAdjData",
        "GetDLResonantFrequency",
        "GetEepromVersion",
        "GetFactoryModeState",
        "GetFpuVersion",
        "GetHighIsoSpeedNoiseReduction",
        "GetIcuCheckSum",
        "GetLongExposureNoiseReduction",
        "GetMpuFirmwareVersion",
        "GetSensorOpticalLength",
        "GetSensorPixelPitch",
        "GetTpuVersion"};
    for (const OPERATION_FACTS& facts : AllFacts()) {
        SCOPED_TRACE(facts.name);
        SetUpBody(facts);
        if (names.contains(facts.name)) {
            for (std::uint32_t call = 1; call <= 2; ++call) {
                SimulatedBody::FailCall(call, {.moment = SimulatedBody::MOMENT::AFTER});
            }
            Bytes record = Record(facts.given);
            EXPECT_EQ(Run(facts.name, record.data()), LINK_FAILURE);
            EXPECT_EQ(Hex(record), Hex(Record(facts.given)));
        }
    }
}

// Both frames report it: the nested one as it was thrown, the outer one by the other's name.
TEST_F(OperationTest, FailedCallOfANestedOperationIsReportedTwice) {
    const struct NESTED {
        std::string name, call, inner;
    } cases[] = {
        {"SetFilePrefix", "Get 0x1000006 8", "GetBodyID"},
        {"ClearOwnerName", "Set 0x2000004", "SetOwnerName"},
        {"ClearCopyRightInfo", "Set 0xE070000", "_SetArtistInfo"},
        {"ClearCopyRightInfo", "Set 0xE070001", "_SetCopyRighInfo"},
        {"GetDateTime", "ExecuteAndGetData", "_GetCalendar"},
        {"SetDateTime", "Execute", "_GetCalendar"},
        {"CopyDLResonantFrequency", "Execute", "GetBoardInfDLResonantFrequency"},
        {"CopyDLResonantFrequency", "WriteMemory", "SetDLResonantFrequency"},
    };
    for (const NESTED& nested : cases) {
        SCOPED_TRACE(nested.inner);
        const OPERATION_FACTS& facts = FactsOf(nested.name);
        SetUpBody(facts);
        const auto failed = std::find_if(
            facts.steps.begin(), facts.steps.end(),
            [&](const std::string& step) { return step.starts_with(nested.call); });
        ASSERT_NE(failed, facts.steps.end());
        Steps steps(facts.steps.begin(), failed);
        const auto calls = std::count_if(
            steps.begin(), steps.end(), [](const std::string& step) { return step[0] != '>'; });
        steps.insert(
            steps.end(),
            {*failed + " failed", "> [ERR!] - " + LINK_MESSAGE,
             "> [FUNC] " + nested.inner + " - 8193", "> [ERR!] - [FUNC] " + nested.inner});
        SimulatedBody::FailCall(static_cast<std::uint32_t>(calls) + 1);
        Bytes record = Record(facts.given);
        ExpectRun(facts, LINK_FAILURE, steps, record.data());
    }
}

}  // namespace
