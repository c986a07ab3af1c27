// Words of the A-board EEPROM, and what a dump has in the log when it fails.
#include "adjustment/ABoardEeprom.h"
#include "tests/support/Support.h"

namespace {

class EepromTest : public ModuleTest {
  protected:
    std::int32_t RunRange(const std::string& name, std::uint32_t address, std::uint32_t count) {
        m_Data.Address = address;
        m_Data.Count = count;
        return Run(name, &m_Data);
    }

    ABOARD_EEPROM_DATA_T m_Data{};
};

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

// The line prefix of the byte count fails after 6 others, those of the rows behind it.
TEST_F(ModuleTest, DumpIsInTheFileUpToTheByteAheadOfAFailure) {
    WriteFile("BoardInf.ini", "[DLResonantFrequency]\nAddress=0\nSize=17\n");
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

}  // namespace
