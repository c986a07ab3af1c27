// Optics data where they are cut, and the camera's log where it does not come whole.
#include <filesystem>

#include "tests/support/Support.h"

namespace {

TEST_F(ModuleTest, PitchKeepsItsFractionAndLengthDropsIt) {
    struct {
        std::int32_t raw;
        double pitch, length;
    } const values[] = {
        {5360, 5.36, 5.0},     {-1500, -1.5, -1.0}, {44000, 44.0, 44.0},
        {44999, 44.999, 44.0}, {999, 0.999, 0.0},   {INT32_MIN, -2147483.648, -2147483.0},
    };
    for (const auto& value : values) {
        SimulatedBody::SetProperty(0x1000003, BytesOf(value.raw));
        SimulatedBody::SetProperty(0x1000004, BytesOf(value.raw));
        double result = 0;
        EXPECT_EQ(Run("GetSensorPixelPitch", &result), 0);
        EXPECT_EQ(result, value.pitch);
        EXPECT_EQ(Run("GetSensorOpticalLength", &result), 0);
        EXPECT_EQ(result, value.length);
    }
}

// --- Camera log ---

class CameraLogTest : public ModuleTest {
  protected:
    CameraLogTest() { WriteFile("CameraLog", "earlier"); }

    /// Runs the operation and expects a failure that leaves the earlier file.
    void ExpectFailure(std::int32_t code, const std::string& message, const std::string& lines) {
        EXPECT_EQ(Run("GetCameraLog"), code);
        EXPECT_EQ(Log(), FailedFrame("GetCameraLog", code, message, lines));
        EXPECT_EQ(ReadFile("CameraLog"), "earlier");
    }

    static std::string StartLines(const std::string& word, const std::string& size) {
        return "> [EVNT] FA_GetCameraLogStart - " + word + "\n> [VALU] lSize                - " +
               size + "\n";
    }
};

TEST_F(CameraLogTest, ReplacesTheEarlierFile) {
    SimulatedBody::SetCameraLog({0x0A});
    EXPECT_EQ(Run("GetCameraLog"), 0);
    EXPECT_EQ(ReadFile("CameraLog"), "\n");
}

TEST_F(CameraLogTest, StartsWordIsTestedBeforeItsSize) {
    SimulatedBody::SetCameraLog({});
    ExpectFailure(35, "[VALU] Size", StartLines("0", "0"));
    EXPECT_THAT(Calls(), ElementsAre("ClearParameters", "ExecuteAndGetSize FA_GetCameraLogStart"));
    SimulatedBody::ScriptEvent("FA_GetCameraLogStart", {-3});
    ExpectFailure(-3, "[EVNT] FA_GetCameraLogStart", StartLines("-3", "0"));
}

TEST_F(CameraLogTest, RefusedEndDropsTheData) {
    SimulatedBody::SetCameraLog({1, 2});
    SimulatedBody::ScriptEvent("FA_GetCameraLogEnd", {5});
    ExpectFailure(5, "[EVNT] FA_GetCameraLogEnd", StartLines("0", "2"));
}

TEST_F(CameraLogTest, SizeThatTheFetchLeavesCountsUpToTheBuffers) {
    SimulatedBody::SetCameraLog({'a', 'b', 'c'});
    SimulatedBody::ScriptReturnSize(3, 2000000);
    ExpectFailure(35, "[VALU] Size", StartLines("0", "3"));
    EXPECT_EQ(Calls().back(), "Execute FA_GetCameraLogEnd 0");
    SimulatedBody::ScriptReturnSize(5, 4);  // more than the body gives
    EXPECT_EQ(Run("GetCameraLog"), 0);
    EXPECT_EQ(ReadFile("CameraLog"), std::string("abc\0", 4));
}

TEST_F(CameraLogTest, FileThatCannotBeOpenedIsReported) {
    SimulatedBody::SetCameraLog({1});
    std::filesystem::remove("CameraLog");
    std::filesystem::create_directory("CameraLog");
    EXPECT_EQ(Run("GetCameraLog"), 1);
    const std::string nested =
        FailedFrame("DebugWriteDumpMemory", 1, "[STDF] File Stream Open Error");
    EXPECT_EQ(
        Log(),
        FailedFrame(
            "GetCameraLog", 1, "[FUNC] DebugWriteDumpMemory", StartLines("0", "1") + nested));
}

}  // namespace
