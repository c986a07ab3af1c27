// On/off features and image settings: what reaches the camera, in which order, and what does not.
#include <numeric>

#include "tests/support/Support.h"

namespace {

class FeaturesTest : public ModuleTest {};

TEST_F(FeaturesTest, SwitchesAndSavesMakeOneCall) {
    SimulatedBody::ScriptEvent("dl_ExecJustNow", {3});  // nobody looks at the word
    for (const auto& [name, call] : {
             std::pair("DisableAutoActiveSweep", "Set 0x2070001 4: 00 00 00 00"),
             std::pair("EnableAutoActiveSweep", "Set 0x2070001 4: 01 00 00 00"),
             std::pair("SaveAutoActiveSweep", "Save 0x2070001"),
             std::pair("ExecuteAutoActiveSweep", "Execute dl_ExecJustNow 0"),
             std::pair("DisableAutoLightingOptimizer", "Set 0x8000003D 3: 03 03 00"),
             std::pair("EnableAutoLightingOptimizer", "Set 0x8000003D 3: 00 00 00"),
             std::pair("SaveAutoLightingOptimizer", "Save 0x8000003D"),
             std::pair("DisableAutoPowerOff", "Set 0x80000024 4: 00 00 00 00"),
             std::pair("EnableAutoPowerOff", "Set 0x80000024 4: 3c 00 00 00"),
             std::pair("SaveAutoPowerOff", "Save 0x80000024"),
             std::pair("DisableGuidance", "Set 0x205001C 4: 01 00 00 00"),
             std::pair("EnableGuidance", "Set 0x205001C 4: 00 00 00 00"),
             std::pair("SaveGuidance", "Save 0x205001C"),
             std::pair("DisableTouchSensor", "Set 0x2050027 4: 00 00 00 00"),
             std::pair("EnableTouchSensor", "Set 0x2050027 4: 01 00 00 00"),
             std::pair("SaveTouchSensor", "Save 0x2050027"),
         }) {
        EXPECT_EQ(Run(name), 0);
        EXPECT_THAT(Calls(), ElementsAre(call));
        EXPECT_EQ(Log(), Frame(name, 0));
    }
}

TEST_F(FeaturesTest, OnlySaveGuidanceHoldsAPropertyObject) {
    SimulatedBody::FailConstruction(1);
    for (const char* name :
         {"SaveAutoActiveSweep", "SaveAutoLightingOptimizer", "SaveAutoPowerOff",
          "SaveTouchSensor"}) {
        EXPECT_EQ(Run(name), 0) << name;
    }
    EXPECT_EQ(Run("SaveGuidance"), LINK_FAILURE);
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(FeaturesTest, AFChangesOneByteOfItsRecord) {
    SimulatedBody::Bytes record(84);
    std::iota(record.begin(), record.end(), std::uint8_t{100});
    SimulatedBody::SetProperty(0x80010007, record);
    for (const auto& [name, logName] :
         {std::pair("DisableAF", "DisableAF"), std::pair("EnableAF", "EnableAF"),
          std::pair("DisableAf", "DisableAF"), std::pair("EnableAf", "EnableAF")}) {
        record[10] = *name == 'D' ? 1 : 0;
        EXPECT_EQ(Run(name), 0);
        EXPECT_THAT(Calls(), ElementsAre("Get 0x80010007 84", "Set 0x80010007 84: " + Hex(record)));
        EXPECT_EQ(Log(), Frame(logName, 0));
    }
}

TEST_F(FeaturesTest, AutoPowerOffTimeIsSwitchAndTime) {
    std::uint32_t unTime = 30;
    EXPECT_EQ(Run("SetAutoPowerOffTime", &unTime), 0);
    EXPECT_THAT(Calls(), ElementsAre("Set 0x80000024 4: 1e 00 00 00"));
    EXPECT_EQ(Log(), Frame("SetAutoPowerOffTime", 0));
    for (const std::uint32_t unExpected : {0U, 60U, 0xFFFFFFFFU}) {
        SimulatedBody::SetProperty(0x80000024, BytesOf(unExpected));
        EXPECT_EQ(Run("GetAutoPowerOffTime", &unTime), 0);
        EXPECT_EQ(unTime, unExpected);
        EXPECT_THAT(Calls(), ElementsAre("Get 0x80000024 4"));
        EXPECT_EQ(
            Log(), Frame(
                       "GetAutoPowerOffTime", 0,
                       "> [VALU] AutoPowerOffTime - " + std::to_string(unExpected) + "\n"));
    }
}

TEST_F(FeaturesTest, AFailedReadStopsTheWriteBehindIt) {
    const struct {
        const char* name;
        std::string id;
        const char* sent;
    } cases[] = {
        {"SetHighIsoSpeedNoiseReduction", "0x80000049 4", ": ef cd ab 89"},
        {"SetLongExposureNoiseReduction", "0x80000048 4", ": ef cd ab 89"},
        {"EnableHighlightTonePriority", "0x8000004A 4", ": 01 00 00 00"},
        {"DisableHighlightTonePriority", "0x8000004A 4", ": 00 00 00 00"},
    };
    std::uint32_t unWord = 0x89ABCDEF;
    for (const auto& [name, id, sent] : cases) {
        EXPECT_EQ(Run(name, &unWord), 0);
        EXPECT_THAT(Calls(), ElementsAre("Get " + id, "Set " + id + sent));
        EXPECT_EQ(Log(), Frame(name, 0));
        SimulatedBody::FailCall(1);
        EXPECT_EQ(Run(name, &unWord), LINK_FAILURE);
        EXPECT_THAT(Calls(), ElementsAre("Get " + id + " failed"));
    }
    SimulatedBody::FailCall(1);
    EXPECT_EQ(Run("DisableAF"), LINK_FAILURE);
    EXPECT_THAT(Calls(), ElementsAre("Get 0x80010007 84 failed"));
}

TEST_F(FeaturesTest, NoiseReductionFillsTheWordOrLeavesIt) {
    for (const auto& [name, id] :
         {std::pair("GetHighIsoSpeedNoiseReduction", 0x80000049U),
          std::pair("GetLongExposureNoiseReduction", 0x80000048U)}) {
        std::uint32_t unWord = 1;
        SimulatedBody::SetProperty(id, BytesOf(0xFEDCBA98U));
        SimulatedBody::FailCall(1, {.moment = SimulatedBody::MOMENT::AFTER});
        EXPECT_EQ(Run(name, &unWord), LINK_FAILURE);
        EXPECT_EQ(unWord, 1U);
        EXPECT_EQ(Run(name, &unWord), 0);
        EXPECT_EQ(unWord, 0xFEDCBA98U);
        EXPECT_EQ(Log(), Frame(name, 0));
    }
}

TEST_F(FeaturesTest, NullPointerLeavesTheCameraUntouched) {
    for (const std::string name :
         {"AutoPowerOffTime", "HighIsoSpeedNoiseReduction", "LongExposureNoiseReduction"}) {
        for (const std::string verb : {"Set", "Get"}) {
            EXPECT_EQ(Run(verb + name), 3);
            EXPECT_THAT(Calls(), IsEmpty());
            EXPECT_EQ(Log(), FailedFrame(verb + name, 3, "[VALU] p" + name));
        }
    }
}

}  // namespace
