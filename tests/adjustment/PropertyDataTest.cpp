// Property catalogue and the dump of all adjustment data.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sstream>

#include "adjustment/PropertyTable.h"
#include "tests/support/SupportBlocks.h"
#include "tests/support/SupportOperations.h"

namespace {

struct ROW {
    std::string name;
    std::uint32_t id;
    std::uint32_t size;
};

std::vector<ROW> Catalogue() {
    std::vector<ROW> rows;
    for (const std::string& line : TableLines("adjustment/catalogue.txt")) {
        std::istringstream columns(line);
        ROW& row = rows.emplace_back();
        columns >> row.name >> std::hex >> row.id >> std::dec >> row.size;
        EXPECT_TRUE(columns) << line;
    }
    EXPECT_EQ(rows.size(), 239U);
    return rows;
}

PROPERTY_DATA_T Named(const std::string& name) {
    PROPERTY_DATA_T row{};
    name.copy(row.PropertyName, sizeof(row.PropertyName));
    row.PropertyId = 111;
    row.PropertySize = 222;
    return row;
}

class PropertyDataTest : public ModuleTest {};

TEST_F(PropertyDataTest, EveryRowIsFound) {
    for (const ROW& expected : Catalogue()) {
        PROPERTY_DATA_T row = Named(expected.name);
        EXPECT_EQ(Run("SearchPropertyData", &row), 0) << expected.name;
        EXPECT_EQ(row.PropertyName, expected.name);
        EXPECT_EQ(row.PropertyId, expected.id) << expected.name;
        EXPECT_EQ(row.PropertySize, expected.size) << expected.name;
    }
    EXPECT_EQ(Log(), Frame("SearchPropertyData", 0));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(PropertyDataTest, OtherNamesLeaveTheRecordAsItWas) {
    // The last two fill the field and end nowhere inside it.
    for (const std::string& name :
         {std::string("PROP_END_ID"), std::string("prop_body_id"), std::string("PROP_BODY_I"),
          std::string("PROP_BODY_ID "), std::string(), std::string("\xFF\x80"),
          std::string(64, 'x'), std::string(64, '\xFF')}) {
        PROPERTY_DATA_T row = Named(name);
        const std::string before = Hex(BytesOf(row));
        EXPECT_EQ(Run("SearchPropertyData", &row), 25) << name;
        EXPECT_EQ(Hex(BytesOf(row)), before);
        EXPECT_EQ(Log(), FailedFrame("SearchPropertyData", 25, "[CMNT] Not Found"));
    }
}

// --- The dump ---

std::string FileName(std::uint32_t id) {
    char szName[16];
    std::snprintf(szName, sizeof(szName), "%08x.bin", static_cast<unsigned>(id));
    return szName;
}

std::uint32_t FileSize(const ROW& row) {
    return (row.size + 3) / 4 * 4;
}

const std::string DASHES = "> [CMNT] " + std::string(80, '-');

/// Up to the first row's read: as where nobody has named a folder.
Steps StartSteps(const std::string& folder) {
    Steps steps = FactsOf("LoadPropertyData").steps;
    steps.resize(8);
    steps.front() += folder;
    return steps;
}

/// Its lines are in the file ahead of the next row's read.
void AddRowSteps(Steps& steps, const ROW& row) {
    std::ostringstream get;
    get << "Get 0x" << std::hex << std::uppercase << row.id << std::dec << ' ' << FileSize(row);
    steps.insert(
        steps.end(), {get.str(), DASHES, "> [VALU] PropertyName - " + row.name,
                      "[VALU] pszFileName - " + FileName(row.id)});
}

class DumpTest : public ModuleTest {
  protected:
    DumpTest() {
        EXPECT_EQ(m_Holder.Open("FOLDER", 261), "created");
        std::filesystem::create_directory("dump");
    }

    std::int32_t Dump(const std::string& text) {
        m_Holder.WriteText(text);
        return Run("LoadPropertyData");
    }

    static void ExpectFile(const ROW& row) {
        const SimulatedBody::Bytes value = SimulatedBody::WorkingValue(row.id);
        EXPECT_EQ(value.size(), FileSize(row)) << row.name;
        // Not shown: it may be long.
        EXPECT_TRUE(ReadFile("dump/" + FileName(row.id)) == std::string(value.begin(), value.end()))
            << row.name;
    }

    const std::string m_Text = (Folder() / "dump").string() + "\\";
    BlockHolder m_Holder;
};

TEST_F(DumpTest, WritesOneFileForEachRow) {
    const std::vector<ROW> rows = Catalogue();
    SimulatedBody::SetProperty(0x1000003, {1, 2, 3, 4});
    m_Holder.WriteText(m_Text);
    Steps steps = StartSteps(m_Text);
    for (const ROW& row : rows) {
        AddRowSteps(steps, row);
    }
    steps.push_back(DASHES);
    EXPECT_EQ(RunSteps("LoadPropertyData"), WholeRun(FactsOf("LoadPropertyData"), 0, steps));
    EXPECT_EQ(EntryCount("dump"), rows.size());
    std::for_each(rows.begin(), rows.end(), ExpectFile);
    EXPECT_EQ(ReadFile("dump/01000003.bin"), "\1\2\3\4");
    EXPECT_EQ(m_Holder.Read().substr(0, 8), Hex({m_Text.begin(), m_Text.begin() + 3}));
}

TEST_F(DumpTest, ReplacesFilesAndWhatStandsBehindTheLastBackslash) {
    WriteFile("dump/01000000.bin", "longer than the four bytes of its row");
    EXPECT_EQ(Dump(m_Text + "dummy.txt"), 0);
    EXPECT_EQ(Dump(m_Text + "dummy.txt"), 0);
    const std::vector<ROW> rows = Catalogue();
    EXPECT_EQ(EntryCount("dump"), rows.size());
    ExpectFile(rows[0]);
}

TEST_F(DumpTest, TextWithoutABackslashFailsBehindTheFirstRead) {
    for (const std::string text : {"dump", "dump/file"}) {
        EXPECT_EQ(Dump(text), 1);
        EXPECT_THAT(Calls(), ElementsAre("Get 0x1000000 4"));
        EXPECT_THAT(Log(), HasLine("> [ERR!] - [VALU] pszFileName"));
        EXPECT_EQ(EntryCount("dump"), 0U);
    }
}

// 13 bytes of the 260 are a file name with its zero. The folder of these texts does not exist.
TEST_F(DumpTest, TextHasToLeaveRoomForTheFileName) {
    EXPECT_EQ(Dump(std::string(246, 'x') + "\\"), 7);
    EXPECT_THAT(Log(), HasLine("> [ERR!] - [STDF] _sopen_s"));
    EXPECT_EQ(Dump(std::string(247, 'x') + "\\"), 7);
    EXPECT_THAT(Log(), HasLine("> [ERR!] - [STDF] strcpy_s"));
}

TEST_F(DumpTest, TextHasToEndWithin260Bytes) {
    const std::string longest = m_Text + std::string(259 - m_Text.size(), 'x');
    EXPECT_EQ(Dump(longest), 0);
    EXPECT_EQ(Dump(longest + "x"), 7);
    EXPECT_EQ(Log(), FailedFrame("LoadPropertyData", 7, "[STDF] strcpy_s"));
    m_Holder.Write(SimulatedBody::Bytes(261, 'x'));
    EXPECT_EQ(Run("LoadPropertyData"), 7);
    EXPECT_EQ(Log(), FailedFrame("LoadPropertyData", 7, "[STDF] strcpy_s"));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(DumpTest, FailureKeepsTheFilesBefore) {
    const std::vector<ROW> rows = Catalogue();
    SimulatedBody::FailCall(3);
    m_Holder.WriteText(m_Text);
    Steps steps = StartSteps(m_Text);
    AddRowSteps(steps, rows[0]);
    AddRowSteps(steps, rows[1]);
    steps.insert(
        steps.end(), {"Get 0x1000002 16 failed", DASHES,
                      "> [VALU] PropertyName - PROP_SENSOR_NUMBER", "> [ERR!] - " + LINK_MESSAGE});
    EXPECT_EQ(
        RunSteps("LoadPropertyData"), WholeRun(FactsOf("LoadPropertyData"), LINK_FAILURE, steps));
    EXPECT_EQ(EntryCount("dump"), 2U);
    ExpectFile(rows[0]);
    ExpectFile(rows[1]);
    EXPECT_EQ(Dump(m_Text), 0);
}

TEST_F(DumpTest, FileThatCannotBeOpenedFailsTheRow) {
    std::filesystem::create_directory("dump/01000001.bin");
    EXPECT_EQ(Dump(m_Text), 7);
    EXPECT_THAT(Log(), testing::EndsWith("[STDF] _sopen_s\n> [FUNC] LoadPropertyData - 7\n"));
    EXPECT_EQ(EntryCount("dump"), 2U);

    std::filesystem::remove_all("dump");
    EXPECT_EQ(Dump(m_Text), 7);
    EXPECT_THAT(Calls(), ElementsAre("Get 0x1000000 4"));
    EXPECT_FALSE(std::filesystem::exists("dump"));
}

}  // namespace
