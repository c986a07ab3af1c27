// All operations against the table of their facts: the whole log, the calls and what stands in the
// file at each of them, the host's record, null pointers, odd words, objects.
#include "tests/support/SupportOperations.h"

namespace {

using SimulatedBody::Bytes;

class OperationTest : public ModuleTest {
  protected:
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
        Bytes record = LongRecord(facts.given);
        ExpectRun(facts, facts.result, facts.steps, record.data());
        EXPECT_EQ(Hex(record), Hex(LongRecord(Left(facts))));
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
            Bytes record = LongRecord(facts.given);
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
            Bytes record = LongRecord(facts.given);
            EXPECT_EQ(RunSteps(facts.name, record.data()).back(), facts.closing + " - 8193");
            EXPECT_EQ(Result(), LINK_FAILURE);
            EXPECT_EQ(Hex(record), Hex(LongRecord(facts.given)));
        }
    }
}

// The data have arrived when the call fails, and must not reach the host all the same.
TEST_F(OperationTest, FailedCallLeavesTheRecordThatIsFilledAtTheEnd) {
    for (const OPERATION_FACTS& facts : AllFacts()) {
        SCOPED_TRACE(facts.name);
        SetUpBody(facts);
        if (facts.bFilledAtTheEnd) {
            for (std::uint32_t call = 1; call <= 2; ++call) {
                SimulatedBody::FailCall(call, {.moment = SimulatedBody::MOMENT::AFTER});
            }
            Bytes record = LongRecord(facts.given);
            EXPECT_EQ(Run(facts.name, record.data()), LINK_FAILURE);
            EXPECT_EQ(Hex(record), Hex(LongRecord(facts.given)));
        }
    }
}

}  // namespace
