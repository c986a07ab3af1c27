// Tune data, sensor and optics data, firmware versions and the camera's log.
#include <filesystem>

#include "adjustment/DigitalParaAdjData.h"
#include "tests/support/Support.h"

namespace {

class AdjustmentTest : public ModuleTest {};

TEST_F(AdjustmentTest, TuneDataIsSavedWhateverTheCameraAnswers) {
    for (const auto& [name, event] :
         {std::pair("SaveTuneData", "SaveTuneToFile"),
          {"SaveTuneData2", "SaveTune2ToFile"},
          {"SaveAETuneData", "SaveAETuneToFile"}}) {
        SimulatedBody::ScriptEvent(event, {7});
        EXPECT_EQ(Run(name), 0);
        EXPECT_THAT(Calls(), ElementsAre(std::string("Execute ") + event + " 0"));
        EXPECT_EQ(Log(), Frame(name, 0));
    }
}

TEST_F(AdjustmentTest, NullPointerReachesNoCamera) {
    for (const auto& [name, pointer] :
         {std::pair("SetSensorNumber", "pSensorNumber"),
          {"GetSensorNumber", "pSensorNumber"},
          {"GetSensorPixelPitch", "&pdblPixelPitch"},
          {"GetSensorOpticalLength", "&pdblOpticalLength"},
          {"GetDigitalParaAdjData", "pDigitalParaData"},
          {"GetIcuFirmwareVersion", "pFirmVersion"},
          {"GetMpuFirmwareVersion", "pFirmVersion"},
          {"GetFpuVersion", "pFirmVersion"},
          {"GetIcuCheckSum", "pIcuCheckSum"},
          {"SetDLResonantFrequency", "punFrequency"},
          {"GetDLResonantFrequency", "pvParameter"},
          {"GetBoardInfDLResonantFrequency", "pvParameter"},
          {"SetBoardInfDLResonantFrequency", "pvParameter"}}) {
        EXPECT_EQ(Run(name), 3);
        EXPECT_THAT(Calls(), IsEmpty()) << name;
        EXPECT_THAT(Log(), HasLine(std::string("> [ERR!] - [VALU] ") + pointer));
    }
}

TEST_F(AdjustmentTest, FailureLeavesTheHostsValueAsItWas) {
    for (const char* name :
         {"GetSensorPixelPitch", "GetSensorOpticalLength", "GetDigitalParaAdjData",
          "GetMpuFirmwareVersion", "GetIcuCheckSum", "GetFpuVersion", "GetTpuVersion",
          "GetBpVersion", "GetEepromVersion", "GetDLResonantFrequency"}) {
        SimulatedBody::Bytes record(8, 0x5A);
        SimulatedBody::FailCall(1, {.moment = SimulatedBody::MOMENT::AFTER});
        EXPECT_EQ(Run(name, record.data()), LINK_FAILURE);
        EXPECT_EQ(record, SimulatedBody::Bytes(8, 0x5A)) << name;
    }
}

// --- Sensor and optics ---

TEST_F(AdjustmentTest, SensorNumberTravelsWholeAndIsLoggedUpToItsZero) {
    const std::string full = "0123456789ABCDEF";
    SimulatedBody::SetProperty(0x1000002, {full.begin(), full.end()});
    char number[] = "################behind";
    EXPECT_EQ(Run("GetSensorNumber", number), 0);
    EXPECT_STREQ(number, "0123456789ABCDEFbehind");
    EXPECT_THAT(Calls(), ElementsAre("Get 0x1000002 16"));
    EXPECT_EQ(Log(), Frame("GetSensorNumber", 0, "> [VALU] SensorNumber - " + full + "\n"));

    number[3] = '\0';
    EXPECT_EQ(Run("SetSensorNumber", number), 0);
    EXPECT_THAT(
        Calls(), ElementsAre("Set 0x1000002 16: 30 31 32 00 34 35 36 37 38 39 41 42 43 44 45 46"));
    EXPECT_EQ(Log(), Frame("SetSensorNumber", 0, "> [VALU] SensorNumber - 012\n"));

    EXPECT_EQ(Run("SaveSensorNumber"), 0);
    EXPECT_THAT(Calls(), ElementsAre("Save 0x1000002"));
}

TEST_F(AdjustmentTest, PitchKeepsItsFractionAndLengthDropsIt) {
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
        EXPECT_THAT(Calls(), ElementsAre("Get 0x1000003 4"));
        EXPECT_EQ(Run("GetSensorOpticalLength", &result), 0);
        EXPECT_EQ(result, value.length);
        EXPECT_THAT(Calls(), ElementsAre("Get 0x1000004 4"));
        EXPECT_EQ(Log(), Frame("GetSensorOpticalLength", 0));
    }
}

TEST_F(AdjustmentTest, DigitalParametersAreWidenedWithTheirSign) {
    SimulatedBody::SetProperty(0x1F000010, {0xFF, 0xFF, 0x02, 0x00});
    DIGITAL_PARA_DATA_T data{};
    EXPECT_EQ(Run("GetDigitalParaAdjData", &data), 0);
    EXPECT_EQ(data.DeltaX, -1);
    EXPECT_EQ(data.DeltaY, 2);
    EXPECT_THAT(Calls(), ElementsAre("Get 0x1F000010 4"));
    EXPECT_EQ(
        Log(),
        Frame("GetDigitalParaAdjData", 0, "> [VALU] DeltaX - 4294967295\n> [VALU] DeltaY - 2\n"));
}

// --- Firmware versions ---

TEST_F(AdjustmentTest, VersionBlocksAreHandedOverAndDumped) {
    struct {
        const char *name, *logName, *call;
        std::uint32_t id;
    } const blocks[] = {
        {"GetIcuFirmwareVersion", "GetIcuFirmwareVersion", "Get 0x2000001 36", 0x2000001},
        {"GetIcuMasterVersion", "GetIcuMasterFirmwareVersion", "Get 0x2000007 36", 0x2000007},
        {"GetIcuSlaveVersion", "GetIcuSlaveFirmwareVersion", "Get 0x2000005 36", 0x2000005},
    };
    SimulatedBody::Bytes expected(36, 0xC3);
    for (const auto& [name, logName, call, id] : blocks) {
        SimulatedBody::SetProperty(id, expected);
        SimulatedBody::Bytes version(36);
        EXPECT_EQ(Run(name, version.data()), 0);
        EXPECT_EQ(version, expected);
        EXPECT_THAT(Calls(), ElementsAre(call));
        EXPECT_THAT(Log(), HasLine("> [VALU] Data[ 00000020 ] -  c3 c3 c3 c3 "));
        EXPECT_THAT(Log(), Closes(logName, 0));
    }
}

TEST_F(AdjustmentTest, SmallVersionsAreFourBytesFromTheirPlace) {
    struct {
        const char *name, *logName, *call, *bytes, *lines;
    } const versions[] = {
        {"GetEepromVersion", "GetEepromFirmwareVersion", "Get 0x2000006 36", "11 12 13 14",
         "> [VALU] EEPROM Version\n> [VALU]    .EEPROM - 11\n"},
        {"GetFpuVersion", "GetFpuFirmwareVersion", "Get 0x2000006 36", "13 14 15 16",
         "> [VALU] FPU FirmVersion\n> [VALU]    .FPU - 13\n"},
        {"GetBpVersion", "GetBpFirmwareVersion", "Get 0x2000006 36", "16 17 18 19",
         "> [VALU] BP(S-FROM) Version\n> [VALU]    .BP - 16\n"},
        {"GetTpuVersion", "GetTpuFirmwareVersion", "Get 0x2000006 36", "17 18 19 1a",
         "> [VALU] TPU FirmVersion\n> [VALU]    .TPU - 17\n"},
        {"GetMpuFirmwareVersion", "GetMpuFirmwareVersion", "Get 0x80030000 4", "0a 01 02 03",
         "> [VALU] MPU FirmVersion\n> [VALU]    .MPU - a\n"},
    };
    SimulatedBody::Bytes block(36);
    for (std::size_t place = 4; place <= 13; ++place) {
        block[place] = static_cast<std::uint8_t>(place + 0x0D);
    }
    SimulatedBody::SetProperty(0x2000006, block);
    SimulatedBody::SetProperty(0x80030000, {0x0A, 1, 2, 3});
    for (const auto& [name, logName, call, bytes, lines] : versions) {
        SimulatedBody::Bytes version(4);
        EXPECT_EQ(Run(name, version.data()), 0);
        EXPECT_EQ(Hex(version), bytes);
        EXPECT_THAT(Calls(), ElementsAre(call));
        EXPECT_EQ(Log(), Frame(logName, 0, lines));
    }
}

TEST_F(AdjustmentTest, CheckSumIsNoFailure) {
    SimulatedBody::ScriptEvent("FA_GetIcuCheckSum", {-1});
    std::uint32_t checkSum = 0;
    EXPECT_EQ(Run("GetIcuCheckSum", &checkSum), 0);
    EXPECT_EQ(checkSum, 0xFFFFFFFF);
    EXPECT_THAT(Calls(), ElementsAre("Execute FA_GetIcuCheckSum 0"));
    EXPECT_EQ(Log(), Frame("GetIcuCheckSum", 0));
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
    SimulatedBody::ScriptEvent("FA_GetCameraLogStart", {2});
    EXPECT_EQ(Run("GetCameraLog"), 0);
    EXPECT_EQ(ReadFile("CameraLog"), "\n");
    EXPECT_THAT(
        Calls(), ElementsAre(
                     "ClearParameters", "ExecuteAndGetSize FA_GetCameraLogStart", "ClearParameters",
                     "GetReturnData 1", "Execute FA_GetCameraLogEnd 0"));
    EXPECT_EQ(
        Log(), Frame("GetCameraLog", 0, StartLines("2", "1") + Frame("DebugWriteDumpMemory", 0)));
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
