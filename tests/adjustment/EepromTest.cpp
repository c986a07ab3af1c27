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

TEST_F(EepromTest, ReadStoresFullWordsInTheSlotsOfItsRange) {
    SimulatedBody::ScriptEvent("FA_ReadEepromData", {0x10A3C, 0x2B});
    EXPECT_EQ(RunRange("GetABoardEepromData", 10, 2), 0);
    EXPECT_THAT(std::vector(m_Data.Data + 9, m_Data.Data + 13), ElementsAre(0, 0x10A3C, 0x2B, 0));
    EXPECT_THAT(
        Calls(),
        ElementsAre(
            POWER_OFF, "Execute FA_ReadEepromData 10", "Execute FA_ReadEepromData 11", POWER_ON));
    EXPECT_EQ(
        Log(), Frame(
                   "GetABoardEepromData", 0,
                   "> [----] pData->Address : 10\n"
                   "> [----] pData->Count   : 2\n"
                   "> [VALU] Data - 68156( 0x10a3c )\n"
                   "> [VALU] Data - 43( 0x002b )\n"));
}

TEST_F(EepromTest, WritePassesWholeSlotsOnAndIgnoresTheAnswer) {
    SimulatedBody::ScriptEvent("FA_WriteEepromData", {3});
    m_Data.Data[126] = 0x1234;
    m_Data.Data[127] = 0xFFFFFFFF;
    EXPECT_EQ(RunRange("SetABoardEepromData", 126, 2), 0);
    EXPECT_THAT(
        Calls(), ElementsAre(
                     POWER_OFF, "ClearParameters", "PushParameterAsInteger 126",
                     "PushParameterAsInteger 4660", "Execute FA_WriteEepromData 0",
                     "ClearParameters", "PushParameterAsInteger 127", "PushParameterAsInteger -1",
                     "Execute FA_WriteEepromData 0", POWER_ON));
    EXPECT_EQ(
        Log(), Frame(
                   "SetABoardEepromData", 0,
                   "> [VALU] ulData - 4660( 0x1234 )\n"
                   "> [VALU] ulData - 4294967295( 0xffffffff )\n"));
}

TEST_F(EepromTest, DebugPrintShowsTheLow16BitsOfAllWords) {
    std::string lines;
    std::vector<std::int32_t> answers;
    for (std::uint8_t word = 0; word < 128; ++word) {
        answers.push_back(0x70A00 + word);
        lines += "> [VALU] Data( 0x" + Hex({word}) + " ) - 0x0a" + Hex({word}) + "\n";
    }
    SimulatedBody::ScriptEvent("FA_ReadEepromData", answers);
    EXPECT_EQ(Run("DebugPrintABoardEepromData"), 0);
    EXPECT_EQ(Log(), Frame("DebugPrintABoardEepromData", 0, lines));
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

TEST_F(EepromTest, PowerSavingIsOnAgainBeforeTheClosingLineOrBehindItAfterAFailure) {
    std::string logThen;
    SimulatedBody::Observe([&](const SimulatedBody::CALL& call, bool complete) {
        if (call.name == "EnablePowerSave" && complete) {
            logThen = Log();
        }
    });
    EXPECT_EQ(RunRange("GetABoardEepromData", 0, 1), 0);
    EXPECT_EQ(CountLines(logThen, "> [FUNC] GetABoardEepromData - 0"), 0U);
    SimulatedBody::FailCall(3);  // the second word
    EXPECT_EQ(RunRange("GetABoardEepromData", 0, 3), LINK_FAILURE);
    EXPECT_THAT(logThen, Closes("GetABoardEepromData", LINK_FAILURE));
    EXPECT_EQ(Calls().back(), POWER_ON);
    SimulatedBody::Observe({});
}

TEST_F(EepromTest, GuardSendsNothingInVainAndThrowsNothing) {
    SimulatedBody::FailCall(1);
    EXPECT_EQ(RunRange("SetABoardEepromData", 0, 1), LINK_FAILURE);
    EXPECT_THAT(Calls(), ElementsAre("Execute DisablePowerSave 0 failed"));
    SimulatedBody::FailEvent("EnablePowerSave");
    EXPECT_EQ(Run("GetABoardEepromData"), 3);
    EXPECT_EQ(Log(), FailedFrame("GetABoardEepromData", 3, "[VALU] pData"));
    EXPECT_THAT(Calls(), ElementsAre(POWER_OFF, "Execute EnablePowerSave 0 failed"));
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

TEST_F(DLResonantFrequencyTest, WrittenBytesComeBackExchangedInEachHalf) {
    WriteBoardInf("Address=100\nSize=5\n");
    std::uint8_t bytes[] = {0x12, 0x34, 0x56, 0x78, 0x9A};
    EXPECT_EQ(Run("SetBoardInfDLResonantFrequency", bytes), 0);
    EXPECT_THAT(Calls(), testing::Contains("Execute FA_WriteEepromData 0").Times(2));
    EXPECT_EQ(SimulatedBody::Eeprom()[100], 0x1234);
    EXPECT_EQ(SimulatedBody::Eeprom()[101], 0x5678);
    const std::string lines = RangeLines("100", "5") + "> [VALU] Count   - 2\n";
    // The dump has a stream of its own, which reaches the file first.
    EXPECT_EQ(
        Log(), Frame(
                   "SetBoardInfDLResonantFrequency", 0,
                   Frame(
                       "DebugPrintDumpMemory", 0,
                       "> [VALU]  DataSize = 5\n"
                       "> [VALU] Data[ 00000000 ] -  12 34 56 78 9a \n") +
                       lines));
    std::uint32_t frequency = 0;
    EXPECT_EQ(Run("GetBoardInfDLResonantFrequency", &frequency), 0);
    EXPECT_EQ(frequency, 0x56781234U);
    EXPECT_EQ(Log(), Frame("GetBoardInfDLResonantFrequency", 0, lines));
}

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
         {std::pair("3", "1"), {"0", "0"}, {"2147483647", "1073741823"}, {"-5", "-3"}}) {
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
    WriteBoardInf("Address=7\nSize=2147483647");
    EXPECT_EQ(Run("SetBoardInfDLResonantFrequency", &frequency), 35);
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

TEST_F(DLResonantFrequencyTest, CopyMovesTheWordsToPropertyAndMemoryUnsaved) {
    WriteBoardInf("Address=100\nSize=4\n");
    SimulatedBody::Eeprom()[100] = 0x120A;
    SimulatedBody::Eeprom()[101] = 0x5678;
    EXPECT_EQ(Run("CopyDLResonantFrequency"), 0);
    EXPECT_THAT(
        Calls(), ElementsAre(
                     "GetPropertyFullPath BoardInf.ini", "Execute FA_ReadEepromData 100",
                     "Execute FA_ReadEepromData 101", "Set 0x100000E 4: 0a 12 78 56", "OpenSession",
                     "ChangeBank 0xEE", "WriteMemory 0x1F28 2: 12 0a", "CloseSession"));
    EXPECT_THAT(
        Log(), testing::HasSubstr(Frame(
                   "SetDLResonantFrequency", 0, "> [VALU] byData - 12\n> [VALU] byData - 0a\n")));
    EXPECT_EQ(Run("SaveDLResonantFrequency"), 0);
    EXPECT_THAT(Calls(), ElementsAre("Save 0x100000E"));
}

TEST_F(DLResonantFrequencyTest, FailedMemoryLeavesThePropertySetAndReadFillsTheSecondWord) {
    std::uint32_t frequency = 4000000000;
    SimulatedBody::FailCall(4);  // WriteMemory
    EXPECT_EQ(Run("SetDLResonantFrequency", &frequency), LINK_FAILURE);
    std::uint32_t words[2] = {1, 2};
    EXPECT_EQ(Run("GetDLResonantFrequency", words), 0);
    EXPECT_THAT(words, ElementsAre(1, 4000000000));
    EXPECT_THAT(Calls(), ElementsAre("Get 0x100000E 4"));
    EXPECT_EQ(Log(), Frame("GetDLResonantFrequency", 0, "> [VALU] unFrequencyD - 4000000000\n"));
}

}  // namespace
