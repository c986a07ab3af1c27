// Property catalogue and the dump of all adjustment data.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <numeric>

#include "adjustment/PropertyTable.h"
#include "tests/support/SupportBlocks.h"
#include "tests/support/SupportOperations.h"

namespace {

struct ROW {
    std::string name;
    std::uint32_t id;
    std::uint32_t size;
};

/// Rows of one name, each with a number behind it; a row alone has none.
struct FAMILY {
    const char* name;
    std::vector<int> numbers;
    std::uint32_t firstId;
    std::uint32_t lastId;
    std::uint32_t size;
};

std::vector<int> From(int first, int last) {
    std::vector<int> numbers(static_cast<std::size_t>(last - first + 1));
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

// clang-format off
const FAMILY FAMILIES[] = {
    {"PROP_TUNING_FLAG", {}, 0x1000000, 0x1000000, 4},
    {"PROP_TUNING_VERSION", {}, 0x1000001, 0x1000001, 4},
    {"PROP_SENSOR_NUMBER", {}, 0x1000002, 0x1000002, 16},
    {"PROP_SENSOR_PIXEL_PITCH", {}, 0x1000003, 0x1000003, 2},
    {"PROP_SENSOR_OPTICAL_PATH_LENGTH", {}, 0x1000004, 0x1000004, 2},
    {"PROP_BODY_ID", {}, 0x1000006, 0x1000006, 8},
    {"PROP_FILE_PREFIX", {}, 0x1000007, 0x1000007, 8},
    {"PROP_MASTER_BODY", {}, 0x1000009, 0x1000009, 4},
    {"PROP_ADJUST_APP_VERSION", {}, 0x100000A, 0x100000A, 4},
    {"PROP_VISTA_UNIQUE_ID", {}, 0x100000C, 0x100000C, 20},
    {"PROP_VISTA_UNIQUE_ID_FLAG", {}, 0x100000D, 0x100000D, 4},
    {"PROP_LIMIT_LANGUAGE", {}, 0x1000012, 0x1000012, 4},
    {"PROP_OVERRIDE_MODELNAME", {}, 0x1000010, 0x1000010, 32},
    {"PROP_ANALOG_GAIN_100", {}, 0x1010006, 0x1010006, 48},
    {"PROP_CHANNEL_GAIN_", {100, 125, 160, 200, 250, 320, 400, 500, 640, 800, 1000, 1250, 1600, 2000, 2500,
                            3200, 4000, 5000, 6400, 8000, 10000, 12800}, 0x1010022, 0x1010037, 32},
    {"PROP_CHANNEL_GAIN_", {16000, 20000, 25600}, 0x1010078, 0x101007A, 32},
    {"PROP_CHANNEL_GAIN_", {51200, 102400}, 0x10100A7, 0x10100A8, 32},
    {"PROP_H_SHADING_", {125, 250, 500, 1000, 2000, 4000, 8000}, 0x101004E, 0x1010060, 22592},
    {"PROP_WHITE_SEARCH", {}, 0x1010073, 0x1010073, 48},
    {"PROP_COLOR", {}, 0x1010074, 0x1010074, 76},
    {"PROP_IR_SHADING2_", From(1, 17), 0x101007E, 0x101008E, 1440},
    {"PROP_V_SHADING2_", From(5, 18), 0x1010094, 0x10100A1, 29760},
    {"PROP_V_SHADING2_", From(19, 40), 0x1010125, 0x101013A, 29760},
    {"PROP_VIDEO_SYNCGAIN_BURSTLEVEL", {}, 0x1030001, 0x1030001, 16},
    {"PROP_DISPLAY_YUVGAIN", {}, 0x1030002, 0x1030002, 24},
    {"PROP_TFT_BRIGHTNESS", {}, 0x1030004, 0x1030004, 28},
    {"PROP_TFT_COM", {}, 0x1030005, 0x1030005, 36},
    {"PROP_BRIGHT_SENCE", {}, 0x1030006, 0x1030006, 8},
    {"PROP_PDEFDATA_DEFMARK", {}, 0x1040000, 0x1040000, 360000},
    {"PROP_LV_NORMAL_PDEFDATA2_DEFMARK", {}, 0x1050176, 0x1050176, 28000},
    {"PROP_LV_NORMAL_PDEFDATA2_DEFMARK2", {}, 0x1050178, 0x1050178, 40000},
    {"PROP_LV_NORMAL_PDEFDATA2_DEFMARK3", {}, 0x105017B, 0x105017B, 28000},
    {"PROP_LV_MAGNIF_PDEFDATA2_DEFMARK", {}, 0x1050177, 0x1050177, 48056},
    {"PROP_LV_H_SHADING_", {100, 200, 400, 800, 1600, 3200, 6400, 12800}, 0x1050000, 0x1050007, 52736},
    {"PROP_LV_H_SHADING_25600", {}, 0x1050081, 0x1050081, 52736},
    {"PROP_LV_IR_SHADING2_", From(1, 17), 0x1050027, 0x1050037, 512},
    {"PROP_LV_ANALOG_GAIN", {}, 0x10500AB, 0x10500AB, 48},
    {"PROP_LV_CHANNEL_GAIN_", {100, 200, 400, 800, 1600, 3200, 6400, 12800, 25600}, 0x10500B9, 0x10500C1, 32},
    {"PROP_LV_V_SHADING1_", From(5, 18), 0x105010E, 0x105011B, 5248},
    {"PROP_LV_V_SHADING1_", From(19, 21), 0x10501C7, 0x10501C9, 5248},
    {"PROP_LV_V_SHADING1_", From(22, 24), 0x10501F2, 0x10501F4, 5248},
    {"PROP_LV_V_SHADING2_", From(5, 18), 0x105003D, 0x105004A, 8544},
    {"PROP_LV_V_SHADING2_", From(19, 21), 0x10501CA, 0x10501CC, 8544},
    {"PROP_LV_V_SHADING2_", From(22, 24), 0x10501F5, 0x10501F7, 8544},
    {"PROP_LV_V_SHADING3_", From(5, 18), 0x105004F, 0x105005C, 6064},
    {"PROP_LV_V_SHADING3_", From(19, 21), 0x10501CD, 0x10501CF, 6064},
    {"PROP_LV_V_SHADING3_", From(22, 24), 0x10501F8, 0x10501FA, 6064},
    {"PROP_DAF_ABSHD_TBL", {}, 0x105011C, 0x105011C, 81920},
    {"PROP_DAF_K_TBL", {}, 0x105011D, 0x105011D, 14336},
    {"PROP_DAF_SHADING_", {100, 200, 400, 800, 1600, 3200, 6400}, 0x1050154, 0x105015A, 3664},
    {"PROP_DAF_SHADING_", {12800, 25600}, 0x1050163, 0x1050164, 3664},
    {"PROP_DAF_SHADING2_", {100, 200, 400, 800, 1600, 3200, 6400, 12800, 25600}, 0x10501E8, 0x10501F0, 3664},
    {"PROP_DAF_V3_LINE_DEFMARK", {}, 0x105015B, 0x105015B, 88},
    {"PROP_DAF_V5_LINE_DEFMARK", {}, 0x105015C, 0x105015C, 56},
    {"PROP_DAF_V5_SKIP", {}, 0x1050165, 0x1050165, 56},
    {"PROP_ESHUT_CURVE", {}, 0x1070000, 0x1070000, 8400},
    {"PROP_AECU_AECOLOR_RATIO", {}, 0x1F000009, 0x1F000009, 16},
    {"PROP_AECU_AE_LEVEL_Y", {}, 0x1F00000A, 0x1F00000A, 504},
    {"PROP_AECU_WB", {}, 0x1F00000F, 0x1F00000F, 48},
    {"PROP_AECU_SCREEN", From(0, 2), 0x1F000011, 0x1F000013, 106908},
};
// clang-format on

/// The catalogue in its order; the ids of a family are equally far apart.
std::vector<ROW> Catalogue() {
    std::vector<ROW> rows;
    for (const FAMILY& family : FAMILIES) {
        const auto count =
            static_cast<std::uint32_t>(std::max<std::size_t>(family.numbers.size(), 1));
        const std::uint32_t step = count > 1 ? (family.lastId - family.firstId) / (count - 1) : 0;
        EXPECT_EQ(family.firstId + step * (count - 1), family.lastId) << family.name;
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::string number =
                family.numbers.empty() ? "" : std::to_string(family.numbers[i]);
            rows.push_back({family.name + number, family.firstId + step * i, family.size});
        }
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

Steps StartSteps(const std::string& folder) {
    return {"> [VALU] pszFullPath - " + folder,  "> [----]",
            "> [FUNC] GetPropertyDataCount",     "> [VALU] nCount - 239",
            "> [FUNC] GetPropertyDataCount - 0", "> [----]",
            "> [FUNC] GetPropertyDataList",      "> [FUNC] GetPropertyDataList - 0"};
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

    static std::size_t FileCount() {
        return static_cast<std::size_t>(std::distance(
            std::filesystem::directory_iterator("dump"), std::filesystem::directory_iterator()));
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
    EXPECT_EQ(FileCount(), rows.size());
    std::for_each(rows.begin(), rows.end(), ExpectFile);
    EXPECT_EQ(ReadFile("dump/01000003.bin"), "\1\2\3\4");
    EXPECT_EQ(m_Holder.Read().substr(0, 8), Hex({m_Text.begin(), m_Text.begin() + 3}));
}

TEST_F(DumpTest, ReplacesFilesAndWhatStandsBehindTheLastBackslash) {
    WriteFile("dump/01000000.bin", "longer than the four bytes of its row");
    EXPECT_EQ(Dump(m_Text + "dummy.txt"), 0);
    EXPECT_EQ(Dump(m_Text + "dummy.txt"), 0);
    const std::vector<ROW> rows = Catalogue();
    EXPECT_EQ(FileCount(), rows.size());
    ExpectFile(rows[0]);
}

TEST_F(DumpTest, TextWithoutABackslashFailsBehindTheFirstRead) {
    for (const std::string text : {"dump", "dump/file"}) {
        EXPECT_EQ(Dump(text), 1);
        EXPECT_THAT(Calls(), ElementsAre("Get 0x1000000 4"));
        EXPECT_THAT(Log(), HasLine("> [ERR!] - [VALU] pszFileName"));
        EXPECT_EQ(FileCount(), 0U);
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
    EXPECT_EQ(FileCount(), 2U);
    ExpectFile(rows[0]);
    ExpectFile(rows[1]);
    EXPECT_EQ(Dump(m_Text), 0);
}

TEST_F(DumpTest, FileThatCannotBeOpenedFailsTheRow) {
    std::filesystem::create_directory("dump/01000001.bin");
    EXPECT_EQ(Dump(m_Text), 7);
    EXPECT_THAT(Log(), HasLine("> [ERR!] - [STDF] _sopen_s"));
    EXPECT_THAT(Log(), Closes("LoadPropertyData", 7));
    EXPECT_EQ(FileCount(), 2U);

    std::filesystem::remove_all("dump");
    EXPECT_EQ(Dump(m_Text), 7);
    EXPECT_THAT(Calls(), ElementsAre("Get 0x1000000 4"));
    EXPECT_FALSE(std::filesystem::exists("dump"));
}

TEST_F(DumpTest, BlockThatDoesNotOpenFailsTheOperation) {
    EXPECT_EQ(m_Holder.Do("close"), "closed");
    const NameTaken taken("SHARED_NAME_FOLDER");
    EXPECT_EQ(Run("LoadPropertyData"), 1);
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_EQ(Log(), FailedFrame("LoadPropertyData", 1, "[WAPI] CreateFileMapping"));
}

}  // namespace
