// The rows of the catalogue, written out at compile time.
#include "adjustment/PropertyTable.h"

#include <span>
#include <string_view>

namespace {

using TABLE = std::array<PROPERTY_DATA_T, PROPERTY_COUNT + 1>;

/// Fills the table row by row, at compile time: a row too many does not compile.
class CTableWriter {
  public:
    constexpr void Row(std::string_view name, std::uint32_t id, std::uint32_t size) {
        PROPERTY_DATA_T& row = m_Table.at(m_Count++);
        std::size_t length = 0;
        Append(row, length, name);
        row.PropertyId = id;
        row.PropertySize = size;
    }

    /// A row for each number, which ends the row's name; ids `step` apart, sizes equal.
    constexpr void Family(
        std::string_view name, std::span<const std::uint32_t> numbers, std::uint32_t firstId,
        std::uint32_t size, std::uint32_t step = 1) {
        for (const std::uint32_t number : numbers) {
            PROPERTY_DATA_T& row = m_Table.at(m_Count++);
            std::size_t length = 0;
            Append(row, length, name);
            AppendNumber(row, length, number);
            row.PropertyId = firstId;
            row.PropertySize = size;
            firstId += step;
        }
    }

    /// The same for the numbers from `first` to `last`.
    constexpr void Range(
        std::string_view name, std::uint32_t first, std::uint32_t last, std::uint32_t firstId,
        std::uint32_t size) {
        for (std::uint32_t number = first; number <= last; ++number) {
            Family(name, std::span(&number, 1), firstId + number - first, size);
        }
    }

    constexpr std::size_t Count() const { return m_Count; }
    constexpr const TABLE& Table() const { return m_Table; }

  private:
    static constexpr void Append(PROPERTY_DATA_T& row, std::size_t& length, std::string_view text) {
        for (const char character : text) {
            row.PropertyName[length++] = character;
        }
    }

    static constexpr void AppendNumber(
        PROPERTY_DATA_T& row, std::size_t& length, std::uint32_t number) {
        if (number >= 10) {
            AppendNumber(row, length, number / 10);
        }
        row.PropertyName[length++] = static_cast<char>('0' + number % 10);
    }

    TABLE m_Table{};
    std::size_t m_Count = 0;
};

constexpr std::uint32_t CHANNEL_GAINS[] = {100,  125,  160,  200,  250,   320,  400,  500,
                                           640,  800,  1000, 1250, 1600,  2000, 2500, 3200,
                                           4000, 5000, 6400, 8000, 10000, 12800};
constexpr std::uint32_t HIGH_CHANNEL_GAINS[] = {16000, 20000, 25600};
constexpr std::uint32_t HIGHEST_CHANNEL_GAINS[] = {51200, 102400};
constexpr std::uint32_t SHUTTER_SPEEDS[] = {125, 250, 500, 1000, 2000, 4000, 8000};
// Sensitivities in full steps; families end at different ones.
constexpr std::uint32_t SENSITIVITIES[] = {100, 200, 400, 800, 1600, 3200, 6400, 12800, 25600};
constexpr std::span UP_TO_6400(SENSITIVITIES, 7);
constexpr std::span UP_TO_12800(SENSITIVITIES, 8);
constexpr std::uint32_t FROM_12800[] = {12800, 25600};

constexpr void WriteStillImageRows(CTableWriter& table) {
    table.Row("PROP_TUNING_FLAG", 0x1000000, 4);
    table.Row("PROP_TUNING_VERSION", 0x1000001, 4);
    table.Row("PROP_SENSOR_NUMBER", 0x1000002, 16);
    table.Row("PROP_SENSOR_PIXEL_PITCH", 0x1000003, 2);
    table.Row("PROP_SENSOR_OPTICAL_PATH_LENGTH", 0x1000004, 2);
    table.Row("PROP_BODY_ID", 0x1000006, 8);
    table.Row("PROP_FILE_PREFIX", 0x1000007, 8);
    table.Row("PROP_MASTER_BODY", 0x1000009, 4);
    table.Row("PROP_ADJUST_APP_VERSION", 0x100000A, 4);
    table.Row("PROP_VISTA_UNIQUE_ID", 0x100000C, 20);
    table.Row("PROP_VISTA_UNIQUE_ID_FLAG", 0x100000D, 4);
    table.Row("PROP_LIMIT_LANGUAGE", 0x1000012, 4);
    table.Row("PROP_OVERRIDE_MODELNAME", 0x1000010, 32);
    table.Row("PROP_ANALOG_GAIN_100", 0x1010006, 48);
    table.Family("PROP_CHANNEL_GAIN_", CHANNEL_GAINS, 0x1010022, 32);
    table.Family("PROP_CHANNEL_GAIN_", HIGH_CHANNEL_GAINS, 0x1010078, 32);
    table.Family("PROP_CHANNEL_GAIN_", HIGHEST_CHANNEL_GAINS, 0x10100A7, 32);
    table.Family("PROP_H_SHADING_", SHUTTER_SPEEDS, 0x101004E, 22592, 3);
    table.Row("PROP_WHITE_SEARCH", 0x1010073, 48);
    table.Row("PROP_COLOR", 0x1010074, 76);
    table.Range("PROP_IR_SHADING2_", 1, 17, 0x101007E, 1440);
    table.Range("PROP_V_SHADING2_", 5, 18, 0x1010094, 29760);
    table.Range("PROP_V_SHADING2_", 19, 40, 0x1010125, 29760);
    table.Row("PROP_VIDEO_SYNCGAIN_BURSTLEVEL", 0x1030001, 16);
    table.Row("PROP_DISPLAY_YUVGAIN", 0x1030002, 24);
    table.Row("PROP_TFT_BRIGHTNESS", 0x1030004, 28);
    table.Row("PROP_TFT_COM", 0x1030005, 36);
    table.Row("PROP_BRIGHT_SENCE", 0x1030006, 8);
    table.Row("PROP_PDEFDATA_DEFMARK", 0x1040000, 360000);
}

constexpr void WriteLiveViewRows(CTableWriter& table) {
    table.Row("PROP_LV_NORMAL_PDEFDATA2_DEFMARK", 0x1050176, 28000);
    table.Row("PROP_LV_NORMAL_PDEFDATA2_DEFMARK2", 0x1050178, 40000);
    table.Row("PROP_LV_NORMAL_PDEFDATA2_DEFMARK3", 0x105017B, 28000);
    table.Row("PROP_LV_MAGNIF_PDEFDATA2_DEFMARK", 0x1050177, 48056);
    table.Family("PROP_LV_H_SHADING_", UP_TO_12800, 0x1050000, 52736);
    table.Row("PROP_LV_H_SHADING_25600", 0x1050081, 52736);
    table.Range("PROP_LV_IR_SHADING2_", 1, 17, 0x1050027, 512);
    table.Row("PROP_LV_ANALOG_GAIN", 0x10500AB, 48);
    table.Family("PROP_LV_CHANNEL_GAIN_", SENSITIVITIES, 0x10500B9, 32);
    table.Range("PROP_LV_V_SHADING1_", 5, 18, 0x105010E, 5248);
    table.Range("PROP_LV_V_SHADING1_", 19, 21, 0x10501C7, 5248);
    table.Range("PROP_LV_V_SHADING1_", 22, 24, 0x10501F2, 5248);
    table.Range("PROP_LV_V_SHADING2_", 5, 18, 0x105003D, 8544);
    table.Range("PROP_LV_V_SHADING2_", 19, 21, 0x10501CA, 8544);
    table.Range("PROP_LV_V_SHADING2_", 22, 24, 0x10501F5, 8544);
    table.Range("PROP_LV_V_SHADING3_", 5, 18, 0x105004F, 6064);
    table.Range("PROP_LV_V_SHADING3_", 19, 21, 0x10501CD, 6064);
    table.Range("PROP_LV_V_SHADING3_", 22, 24, 0x10501F8, 6064);
}

constexpr void WriteRemainingRows(CTableWriter& table) {
    table.Row("PROP_DAF_ABSHD_TBL", 0x105011C, 81920);
    table.Row("PROP_DAF_K_TBL", 0x105011D, 14336);
    table.Family("PROP_DAF_SHADING_", UP_TO_6400, 0x1050154, 3664);
    table.Family("PROP_DAF_SHADING_", FROM_12800, 0x1050163, 3664);
    table.Family("PROP_DAF_SHADING2_", SENSITIVITIES, 0x10501E8, 3664);
    table.Row("PROP_DAF_V3_LINE_DEFMARK", 0x105015B, 88);
    table.Row("PROP_DAF_V5_LINE_DEFMARK", 0x105015C, 56);
    table.Row("PROP_DAF_V5_SKIP", 0x1050165, 56);
    table.Row("PROP_ESHUT_CURVE", 0x1070000, 8400);
    table.Row("PROP_AECU_AECOLOR_RATIO", 0x1F000009, 16);
    table.Row("PROP_AECU_AE_LEVEL_Y", 0x1F00000A, 504);
    table.Row("PROP_AECU_WB", 0x1F00000F, 48);
    table.Row("PROP_AECU_SCREEN0", 0x1F000011, 106908);
    table.Row("PROP_AECU_SCREEN1", 0x1F000012, 106908);
    table.Row("PROP_AECU_SCREEN2", 0x1F000013, 106908);
    table.Row("PROP_END_ID", PROP_END_ID, 0);
}

constexpr TABLE MakeTable() {
    CTableWriter table;
    WriteStillImageRows(table);
    WriteLiveViewRows(table);
    WriteRemainingRows(table);
    return table.Count() == table.Table().size() ? table.Table() : throw "rows are missing";
}

constexpr bool IdsAreDistinct(const TABLE& table) {
    for (std::size_t row = 0; row < table.size(); ++row) {
        for (std::size_t other = 0; other < row; ++other) {
            if (table[row].PropertyId == table[other].PropertyId) {
                return false;
            }
        }
    }
    return true;
}

}  // namespace

constexpr TABLE PropertyDataTable = MakeTable();
static_assert(IdsAreDistinct(PropertyDataTable));
static_assert(PropertyDataTable[PROPERTY_COUNT].PropertyId == PROP_END_ID);
