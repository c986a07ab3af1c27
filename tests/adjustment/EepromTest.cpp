// The A-board EEPROM with the power-save guard, and the resonant frequency in its three homes.
#include "adjustment/ABoardEeprom.h"
#include "tests/support/Support.h"

namespace {

const char POWER_OFF[] = "Execute DisablePowerSave 0";
const char POWER_ON[] = "Execute EnablePowerSave 0";

// --- A-board EEPROM ---

class EepromTest : public ModuleTest {
  protected:
    std::int32_t RunRange(const std::string& name, std::uint32_t address, std::uint32_t count) {
        m_Data.Address = address;
        m_Data.Count = count;
        return Run(name, &m_Data);
    }

    ABOARD_EEPROM_DATA_T m_Data{};
};

TEST_F(EepromTest, RangeIsCheckedBeforeAnyWord) {
    struct {
        std::uint32_t address, count;
        const char* message;
    } const ranges[] = {
        {200, 0, "[VALU] pData->Count"},
        {127, 129, "[VALU] pData->Count"},
        {128, 1, "[VALU] pData->Address"},
        {0xFFFFFFFF, 2, "[VALU] pData->Address"},
        {127, 2, "[VALU] pData->Address + pData->Count"},
    };
    for (const auto& [address, count, message] : ranges) {
        EXPECT_EQ(RunRange("SetABoardEepromData", address, count), 3);
        EXPECT_EQ(Log(), FailedFrame("SetABoardEepromData", 3, message));
        EXPECT_THAT(Calls(), ElementsAre(POWER_OFF, POWER_ON));
        EXPECT_EQ(RunRange("GetABoardEepromData", address, count), 3);
        EXPECT_THAT(Log(), HasLine("> [----] pData->Address : " + std::to_string(address)));
        EXPECT_THAT(Calls(), ElementsAre(POWER_OFF, POWER_ON));
    }
}

TEST_F(EepromTest, LongWordsAreReadWholeAndPrintedByTheirLow16Bits) {
    SimulatedBody::ScriptEvent("FA_ReadEepromData", {0x10A3C});
    EXPECT_EQ(RunRange("GetABoardEepromData", 0, 128), 0);
    EXPECT_EQ(CountLines(Log(), "> [VALU] Data - 68156( 0x10a3c )"), 128U);
    EXPECT_THAT(m_Data.Data, testing::Each(0x10A3CU));
    EXPECT_EQ(Run("DebugPrintABoardEepromData"), 0);
    EXPECT_THAT(Log(), HasLine("> [VALU] Data( 0x7f ) - 0x0a3c"));
}

TEST_F(EepromTest, DebugPrintLeavesHexadecimalOnWhenItFails) {
    SimulatedBody::FailCall(3);  // the second word
    EXPECT_EQ(Run("DebugPrintABoardEepromData"), LINK_FAILURE);
    EXPECT_THAT(Log(), HasLine("> [FUNC] DebugPrintABoardEepromData - 2001"));
    // Until the first value line, which switches back behind its value.
    EXPECT_EQ(RunRange("GetABoardEepromData", 0, 128), 0);
    EXPECT_THAT(Log(), HasLine("> [----] pData->Count   : 80"));
    EXPECT_EQ(RunRange("GetABoardEepromData", 16, 1), 0);
    EXPECT_THAT(Log(), HasLine("> [----] pData->Address : 16"));
}

TEST_F(EepromTest, PowerSavingIsOnAgainBehindTheClosingLineOfAFailure) {
    m_Data.Count = 1;
    SimulatedBody::FailCall(2);
    EXPECT_THAT(
        RunSteps("GetABoardEepromData", &m_Data),
        ElementsAre(
            "> [----]", "> [FUNC] GetABoardEepromData", POWER_OFF,
            "Execute FA_ReadEepromData 0 failed", "> [----] pData->Address : 0",
            "> [----] pData->Count   : 1", "> [ERR!] - " + LINK_MESSAGE,
            "> [FUNC] GetABoardEepromData - 8193", POWER_ON));
}

TEST_F(EepromTest, GuardSendsNothingInVainAndThrowsNothing) {
    SimulatedBody::FailCall(1);
    EXPECT_EQ(RunRange("SetABoardEepromData", 0, 1), LINK_FAILURE);
    EXPECT_THAT(Calls(), ElementsAre("Execute DisablePowerSave 0 failed"));
    SimulatedBody::FailEvent("EnablePowerSave");
    for (const std::string name : {"GetABoardEepromData", "SetABoardEepromData"}) {
        Expect(
            name, 3, {POWER_OFF, "Execute EnablePowerSave 0 failed"},
            FailedFrame(name, 3, "[VALU] pData"));
    }
}

// --- Resonant frequency ---

class DLResonantFrequencyTest : public ModuleTest {
  protected:
    static void WriteBoardInf(const std::string& keys) {
        WriteFile("BoardInf.ini", "[DLResonantFrequency]\n" + keys);
    }

    static std::string RangeLines(const std::string& address, const std::string& size) {
        return "> [VALU] Address - " + address + "\n> [VALU] Size    - " + size + "\n";
    }
};

TEST_F(DLResonantFrequencyTest, DumpBreaksItsRowsAt16BytesAndItsGroupsAt8) {
    const std::string eight = "> [VALU] Data[ 00000000 ] -  ff ff ff ff ff ff ff ff  ff ";
    const std::string seventeen =
        eight + "ff ff ff ff ff ff ff \n> [VALU] Data[ 00000010 ] -  ff \n";
    std::vector<std::uint8_t> bytes(17, 0xFF);
    for (const auto& [size, rows] :
         {std::pair<std::string, std::string>("0", "\n"), {"9", eight + "\n"}, {"17", seventeen}}) {
        WriteBoardInf("Address=0\nSize=" + size);
        EXPECT_EQ(Run("SetBoardInfDLResonantFrequency", bytes.data()), 0);
        std::string work = "> [VALU]  DataSize = ";
        work.append(size).append("\n").append(rows);
        EXPECT_THAT(Log(), testing::HasSubstr(Frame("DebugPrintDumpMemory", 0, work)));
    }
}

TEST_F(DLResonantFrequencyTest, SizeThatNoBufferCanHaveIsRefused) {
    std::uint32_t frequency = 0x5555;
    for (const auto& [size, count] :
         {std::pair("3", "1"), {"0", "0"}, {"65537", "32768"}, {"-5", "-3"}}) {
        WriteBoardInf(std::string("Address=7\nSize=") + size);
        EXPECT_EQ(Run("GetBoardInfDLResonantFrequency", &frequency), 35);
        EXPECT_EQ(
            Log(), FailedFrame(
                       "GetBoardInfDLResonantFrequency", 35, "[VALU] Size",
                       RangeLines("7", size) + "> [VALU] Count   - " + count + "\n"));
    }
    EXPECT_EQ(frequency, 0x5555U);
    EXPECT_EQ(Run("SetBoardInfDLResonantFrequency", &frequency), 35);
    EXPECT_EQ(
        Log(),
        FailedFrame("SetBoardInfDLResonantFrequency", 35, "[VALU] Size", RangeLines("7", "-5")));
    // Far beyond the four bytes of the host.
    WriteBoardInf("Address=7\nSize=65537");
    EXPECT_EQ(Run("SetBoardInfDLResonantFrequency", &frequency), 35);
    WriteBoardInf("Address=7\nSize=65536");
    Run("GetBoardInfDLResonantFrequency", &frequency);
    EXPECT_EQ(Calls().back(), "Execute FA_ReadEepromData 128 failed");
}

// The line prefix of the byte count fails after 6 others, those of the rows behind it.
TEST_F(DLResonantFrequencyTest, DumpIsInTheFileUpToTheByteAheadOfAFailure) {
    WriteBoardInf("Address=0\nSize=17\n");
    std::vector<std::uint8_t> bytes(17, 0xFF);
    for (const auto& [line, text] :
         {std::pair(8U, "> [VALU]  DataSize = 17\n"),
          std::pair(
              9U,
              "> [VALU] Data[ 00000000 ] -  ff ff ff ff ff ff ff ff  "
              "ff ff ff ff ff ff ff ff ")}) {
        SimulatedBody::FailLinePrefix(line);
        EXPECT_EQ(Run("SetBoardInfDLResonantFrequency", bytes.data()), LINK_FAILURE);
        EXPECT_THAT(Log(), testing::HasSubstr(text));
    }
}

TEST_F(DLResonantFrequencyTest, MissingKeyIsNamed) {
    WriteBoardInf("Address=100\n");
    EXPECT_EQ(Run("CopyDLResonantFrequency"), 1);
    EXPECT_EQ(
        Log(), FailedFrame(
                   "CopyDLResonantFrequency", 1, "[FUNC] GetBoardInfDLResonantFrequency",
                   FailedFrame(
                       "GetBoardInfDLResonantFrequency", 1, "[WAPI] GetPrivateProfileInt",
                       "> [VALU] lpszFileName - ./BoardInf.ini\n"
                       "> [VALU] lpAppName    - DLResonantFrequency\n"
                       "> [VALU] lpKeyName    - Size\n"
                       "> [VALU] *pnReturn    - -1\n"
                       "> [VALU] nDefault     - -1\n")));
}

TEST_F(DLResonantFrequencyTest, RefusedWordEndsTheWrite) {
    WriteBoardInf("Address=100\nSize=8\n");
    SimulatedBody::ScriptEvent("FA_WriteEepromData", {2, 0x35});
    std::uint8_t bytes[8] = {};
    EXPECT_EQ(Run("SetBoardInfDLResonantFrequency", bytes), 0x35);
    EXPECT_THAT(Log(), HasLine("> [ERR!] - [EVNT] FA_WriteEepromData"));
    EXPECT_THAT(Calls(), testing::Contains("Execute FA_WriteEepromData 0").Times(2));
}

}  // namespace
