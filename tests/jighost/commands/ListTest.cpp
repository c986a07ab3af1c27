// jighost list: operations and records that it tells are those that the module's hosts know.
#include <gmock/gmock.h>

#include <cstddef>
#include <iomanip>
#include <sstream>

#include "adjustment/PropertyTable.h"
#include "jighost/output/Json.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportOperations.h"

using testing::HasSubstr;
using testing::StartsWith;

static Json ListedOperations(const std::vector<std::string>& arguments) {
    const JIGHOST_RUN run = RunJighost(arguments);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    return Json::parse(run.output)["operations"];
}

// The facts were typed by hand.
TEST(JighostListTest, EachOperationHasARowWithWhatItIsRegisteredWith) {
    const FreshFolder folder;
    std::istringstream lines(RunJighost({"list"}).output);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(
        line, " no  name                                size  direction            what it does");
    int number = 0;
    for (const OPERATION_FACTS& facts : AllFacts()) {
        std::ostringstream row;
        row << std::setw(3) << ++number << "  " << std::left << std::setw(36) << facts.name
            << std::right << std::setw(4) << facts.size << "  "
            << (facts.direction == 0   ? "EVENT_PROC_IN (0)  "
                : facts.direction == 1 ? "EVENT_PROC_OUT (1) "
                                       : "EVENT_PROC_NONE (3)")
            << "  ";
        std::getline(lines, line);
        EXPECT_THAT(line, StartsWith(row.str()));
        EXPECT_GT(line.size(), row.str().size()) << "and what it does";
    }
    EXPECT_FALSE(std::getline(lines, line)) << line;
}

TEST(JighostListTest, OneOperationComesWithItsRecordAndItsFailures) {
    const FreshFolder folder;
    const std::pair<std::string, std::string> texts[] = {
        {"EnterFactoryMode",
         "name        EnterFactoryMode\ngroup       Factory mode\n"
         "does        enters factory mode and saves that\n"
         "registered  0 bytes, EVENT_PROC_NONE (3)\nrecord      -\nfails       as any operation: "},
        {"SetBoardInfDLResonantFrequency",
         "\nregistered  0 bytes, EVENT_PROC_NONE (3)\n"
         "record      bytes for the EEPROM, up to 256 bytes, filled by the host\n"},
        {"GetBodyID",
         "\nregistered  20 bytes, EVENT_PROC_OUT (1)\n"
         "record      BODY_ID_T, 20 bytes, filled by the operation\n"},
        {"GetABoardEepromData", "\n     0  128 x 4  Data[0..127]      unsigned 32 bits "},
    };
    for (const auto& [operation, text] : texts) {
        EXPECT_THAT(RunJighost({"list", operation}).output, HasSubstr(text));
    }
    const Json record = ListedOperations({"list", "SearchPropertyData", "--json"}).at(0)["record"];
    EXPECT_EQ(record["size"], sizeof(PROPERTY_DATA_T));
    EXPECT_EQ(record["any_length"], false);
    EXPECT_EQ(record["fields"][2]["name"], "PropertySize");
    EXPECT_EQ(record["fields"][2]["offset"], offsetof(PROPERTY_DATA_T, PropertySize));
    const Json bytes = ListedOperations({"list", "SetBoardInfDLResonantFrequency", "--json"}).at(0);
    EXPECT_EQ(bytes["record"]["any_length"], true);
    EXPECT_THAT(bytes["failures"].get<std::string>(), StartsWith("3 for a null record; "));
}

// A field that lies across another one or outside the record would be read wrongly by every host.
TEST(JighostListTest, FieldsLieOneBehindTheOtherInRecordsOfTheRegisteredSize) {
    const FreshFolder folder;
    const Json operations = ListedOperations({"list", "--json"});
    EXPECT_EQ(operations.size(), 131U);
    for (const Json& operation : operations) {
        const Json& record = operation["record"];
        const int size = record.is_null() ? 0 : record["size"].get<int>();
        EXPECT_TRUE(operation["size"] == 0 || operation["size"] == size) << operation;
        int end = 0;
        for (const Json& field : record.is_null() ? Json::array() : record["fields"]) {
            EXPECT_GE(field["offset"], end) << operation;
            end =
                field["offset"].get<int>() + field["width"].get<int>() * field["count"].get<int>();
        }
        EXPECT_LE(end, size) << operation;
    }
}
