// The records that operations take or fill, field by field.
#pragma once

#include "adjustment/PropertyTable.h"
#include "identity/BodyID.h"
#include "jighost/operations/Record.h"

using enum FIELD_KIND;

// --- Of no feature in particular ---

constexpr RECORD NO_RECORD = {"none", 0, {}};

constexpr char UNCHANGED[] = "what it means is the camera's; passed on unchanged and untested";

constexpr FIELD WORD_FIELDS[] = {{"Value", 0, 4, UNSIGNED, UNCHANGED}};
constexpr RECORD WORD = {"32-bit word", 4, WORD_FIELDS};

constexpr FIELD DOUBLE_FIELDS[] = {{"Value", 0, 8, DOUBLE, "the camera's integer / 1000"}};
constexpr RECORD DOUBLE_VALUE = {"64-bit number", 8, DOUBLE_FIELDS};

// --- Adjustment data ---

constexpr std::uint32_t EEPROM_WORD_COUNT = 128;
constexpr FIELD ABOARD_EEPROM_FIELDS[] = {
    {"Data", 0, 4, HEX, "element n is EEPROM word n, 16 bits, whatever the range",
     EEPROM_WORD_COUNT},
    {"Address", 512, 4, UNSIGNED, "first word of the range, 0 to 127"},
    {"Count", 516, 4, UNSIGNED, "words, 1 to 128; the range ends at word 127 at the latest"},
};
constexpr RECORD ABOARD_EEPROM = {"ABOARD_EEPROM_DATA_T", 520, ABOARD_EEPROM_FIELDS};

constexpr char DELTA[] = "16 bits in the camera, widened with their sign";
constexpr FIELD DIGITAL_PARA_FIELDS[] = {
    {"DeltaX", 0, 4, SIGNED, DELTA}, {"DeltaY", 4, 4, SIGNED, DELTA}};
constexpr RECORD DIGITAL_PARA = {"DIGITAL_PARA_DATA_T", 8, DIGITAL_PARA_FIELDS};

constexpr FIELD SENSOR_NUMBER_FIELDS[] = {
    {"SensorNumber", 0, 16, TEXT, "all 16 bytes travel, also behind a zero byte"}};
constexpr RECORD SENSOR_NUMBER = {"sensor number text", 16, SENSOR_NUMBER_FIELDS};

constexpr char FREQUENCY_UNIT[] = "first EEPROM word low, second one high; the unit is the board's";
constexpr FIELD FREQUENCY_FIELDS[] = {{"Frequency", 0, 4, UNSIGNED, FREQUENCY_UNIT}};
constexpr RECORD FREQUENCY = {"frequency", 4, FREQUENCY_FIELDS};

// The frequency is the second word; the first one is left as it is.
constexpr FIELD SECOND_FREQUENCY_FIELDS[] = {
    {"Frequency", 4, 4, UNSIGNED, "as above; the word ahead of it is left as it is"}};
constexpr RECORD SECOND_FREQUENCY = {"word and frequency", 8, SECOND_FREQUENCY_FIELDS};

// BoardInf.ini says how many bytes are read; the whole EEPROM has this many.
constexpr FIELD BOARD_INF_FIELDS[] = {
    {"Data", 0, 2 * EEPROM_WORD_COUNT, BYTES,
     "as many as Size in BoardInf.ini says; two to a word, high byte first"}};
constexpr RECORD BOARD_INF = {
    "bytes for the EEPROM", 2 * EEPROM_WORD_COUNT, BOARD_INF_FIELDS, true};

constexpr FIELD VERSION_BLOCK_FIELDS[] = {{"Version", 0, 36, BYTES, "laid out by the camera"}};
constexpr RECORD VERSION_BLOCK = {"version block", 36, VERSION_BLOCK_FIELDS};

constexpr FIELD SMALL_VERSION_FIELDS[] = {{"Version", 0, 4, BYTES, "the first byte alone counts"}};
constexpr RECORD SMALL_VERSION = {"small version", 4, SMALL_VERSION_FIELDS};

constexpr FIELD CHECK_SUM_FIELDS[] = {{"CheckSum", 0, 4, HEX, "the event's result word"}};
constexpr RECORD CHECK_SUM = {"checksum", 4, CHECK_SUM_FIELDS};

constexpr FIELD PROPERTY_DATA_FIELDS[] = {
    {"PropertyName", 0, 64, TEXT, "read; ended by a zero byte, case counts"},
    {"PropertyId", 64, 4, HEX, "filled"},
    {"PropertySize", 68, 4, UNSIGNED, "filled; bytes"},
};
constexpr RECORD PROPERTY_DATA = {"PROPERTY_DATA_T", sizeof(PROPERTY_DATA_T), PROPERTY_DATA_FIELDS};

// --- Body identity ---

constexpr FIELD BODY_ID_FIELDS[] = {
    {"ManufactureMonth", 0, 4, UNSIGNED, "10000000000 each in the body number"},
    {"CodePair", 4, 4, UNSIGNED, "0 to 99, 100000000 each"},
    {"CodeDigitHigh", 8, 4, UNSIGNED, "0 to 9, 10000000 each"},
    {"CodeDigitLow", 12, 4, UNSIGNED, "0 to 9, 1000000 each"},
    {"SerialNo", 16, 4, UNSIGNED, "0 to 999999, 1 each; a larger field carries, no one is tested"},
};
constexpr RECORD BODY_ID = {"BODY_ID_T", sizeof(BODY_ID_T), BODY_ID_FIELDS};

constexpr FIELD FILE_PREFIX_FIELDS[] = {
    {"FilePrefix", 0, 8, TEXT, "four characters, then zero bytes"}};
constexpr RECORD FILE_PREFIX = {"file prefix text", 8, FILE_PREFIX_FIELDS};

constexpr FIELD OWNER_NAME_FIELDS[] = {{"OwnerName", 0, 32, TEXT, "all 32 bytes travel"}};
constexpr RECORD OWNER_NAME = {"owner name text", 32, OWNER_NAME_FIELDS};

constexpr FIELD UNIQUE_ID_FIELDS[] = {{"VistaUniqueID", 0, 20, BYTES, "as the camera has it"}};
constexpr RECORD UNIQUE_ID = {"unique ID", 20, UNIQUE_ID_FIELDS};

// --- Clock, features, inspection ---

constexpr FIELD DATE_TIME_FIELDS[] = {
    {"Year", 0, 4, UNSIGNED, "in full; no field is converted or tested"},
    {"Month", 4, 4, UNSIGNED, "month of the year"},
    {"Day", 8, 4, UNSIGNED, "day of the month"},
    {"Hour", 12, 4, UNSIGNED, "hours"},
    {"Minute", 16, 4, UNSIGNED, "minutes"},
    {"Second", 20, 4, UNSIGNED, "seconds"},
};
constexpr RECORD DATE_TIME = {"DATE_TIME_T", 24, DATE_TIME_FIELDS};

constexpr FIELD POWER_OFF_TIME_FIELDS[] = {
    {"AutoPowerOffTime", 0, 4, UNSIGNED, "0 is off; the unit is the camera's"}};
constexpr RECORD POWER_OFF_TIME = {"auto power off time", 4, POWER_OFF_TIME_FIELDS};

constexpr FIELD ACCUMULATE_TIME_FIELDS[] = {
    {"AccumulateTime", 0, 4, UNSIGNED, "0 to 84; the camera gets this x 10000 / 226 as HD count"}};
constexpr RECORD ACCUMULATE_TIME = {"accumulate time", 4, ACCUMULATE_TIME_FIELDS};

constexpr FIELD FACTORY_STATE_FIELDS[] = {
    {"State", 0, 4, SIGNED, "0 in factory mode, -1 not; any other value as the camera has it"}};
constexpr RECORD FACTORY_STATE = {"factory mode state", 4, FACTORY_STATE_FIELDS};

constexpr FIELD CELL_RESULT_FIELDS[] = {{"Result", 0, 4, SIGNED, UNCHANGED}};
constexpr RECORD CELL_RESULT = {"machine cell result", 4, CELL_RESULT_FIELDS};

// The layout of both tables is the camera's own.
constexpr FIELD DISP_DIAL_TABLE_FIELDS[] = {{"Result", 0, 128, BYTES, "laid out by the camera"}};
constexpr RECORD DISP_DIAL_TABLE = {"DispDial result table", 128, DISP_DIAL_TABLE_FIELDS};
constexpr FIELD ACC_TEST_TABLE_FIELDS[] = {{"Result", 0, 96, BYTES, "laid out by the camera"}};
constexpr RECORD ACC_TEST_TABLE = {"Acc test result table", 96, ACC_TEST_TABLE_FIELDS};

constexpr FIELD SOUND_VOLUME_FIELDS[] = {{"Volume", 0, 4, SIGNED, UNCHANGED}};
constexpr RECORD SOUND_VOLUME = {"sound volume", 4, SOUND_VOLUME_FIELDS};

constexpr char MEDIA[] = "what stands for which media is the camera's";
constexpr FIELD STORAGE_MEDIA_FIELDS[] = {
    {"Slot1", 0, 4, SIGNED, MEDIA}, {"Slot2", 4, 4, SIGNED, MEDIA}};
constexpr RECORD STORAGE_MEDIA = {"STORAGE_MEDIA_EXISTENCE_T", 8, STORAGE_MEDIA_FIELDS};
