// Factory mode: the value of the tuning flag.
#include "tests/support/Support.h"

namespace {

const std::uint32_t PROP_TUNING_FLAG = 0x1000000;

class FactoryModeTest : public ModuleTest {};

TEST_F(FactoryModeTest, EntersAndLeavesWithOneSave) {
    const struct {
        const char* name;
        const char* bytes;
    } changes[] = {{"EnterFactoryMode", "00 00 00 00"}, {"ExitFactoryMode", "ff ff ff ff"}};
    for (const auto& change : changes) {
        for (int repetition = 0; repetition < 2; ++repetition) {
            EXPECT_EQ(Run(change.name), 0);
            EXPECT_THAT(
                Calls(),
                ElementsAre(std::string("Set 0x1000000 4: ") + change.bytes, "Save 0x1000000"));
            EXPECT_EQ(Log(), Frame(change.name, 0));
            EXPECT_EQ(Hex(SimulatedBody::SavedValue(PROP_TUNING_FLAG)), change.bytes);
        }
    }
}

TEST_F(FactoryModeTest, StateIsTheSignedValueItself) {
    const struct {
        SimulatedBody::Bytes bytes;
        std::int32_t value;
    } states[] = {
        {{0, 0, 0, 0}, 0},
        {{0xFF, 0xFF, 0xFF, 0xFF}, -1},
        {{2, 1, 0, 0}, 258},
        {{0, 0, 0, 0x80}, INT32_MIN}};
    for (const auto& state : states) {
        SimulatedBody::SetProperty(PROP_TUNING_FLAG, state.bytes);
        std::int32_t nState = 12345;
        EXPECT_EQ(Run("GetFactoryModeState", &nState), 0);
        EXPECT_EQ(nState, state.value);
        EXPECT_THAT(Calls(), ElementsAre("Get 0x1000000 4"));
        EXPECT_EQ(
            Log(), Frame(
                       "GetFactoryModeState", 0,
                       "> [FUNC] State - " + std::to_string(state.value) + "\n"));
    }
}

TEST_F(FactoryModeTest, FailuresEndWhereTheyHappen) {
    EXPECT_EQ(Run("GetFactoryModeState", nullptr), 3);
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_EQ(Log(), FailedFrame("GetFactoryModeState", 3, "[VALU] pvParameter"));

    std::int32_t nState = 12345;
    SimulatedBody::FailCall(1);
    EXPECT_EQ(Run("GetFactoryModeState", &nState), LINK_FAILURE);
    EXPECT_EQ(nState, 12345);
    EXPECT_EQ(Log(), FailedFrame("GetFactoryModeState", LINK_FAILURE, LINK_MESSAGE));

    SimulatedBody::FailCall(1);
    EXPECT_EQ(Run("EnterFactoryMode"), LINK_FAILURE);
    EXPECT_THAT(Calls(), ElementsAre("Set 0x1000000 4: 00 00 00 00 failed"));
}

TEST_F(FactoryModeTest, FailedSaveLeavesTheValueUnsaved) {
    SimulatedBody::SetProperty(PROP_TUNING_FLAG, {0xFF, 0xFF, 0xFF, 0xFF});
    SimulatedBody::FailCall(2);
    EXPECT_EQ(Run("EnterFactoryMode"), LINK_FAILURE);
    EXPECT_EQ(Hex(SimulatedBody::WorkingValue(PROP_TUNING_FLAG)), "00 00 00 00");
    EXPECT_EQ(Hex(SimulatedBody::SavedValue(PROP_TUNING_FLAG)), "ff ff ff ff");
}

}  // namespace
