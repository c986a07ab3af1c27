// jighost list: the records that it tells are those that the module's hosts know.
#include <gmock/gmock.h>

#include <cstddef>

#include "adjustment/PropertyTable.h"
#include "jighost/output/Json.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::ContainsRegex;
using testing::HasSubstr;

static Json ListedOperations(const std::vector<std::string>& arguments) {
    const JIGHOST_RUN run = RunJighost(arguments);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    return Json::parse(run.output)["operations"];
}

TEST(JighostListTest, OneOperationComesWithItsRecordAndItsFailures) {
    const FreshFolder folder;
    const JIGHOST_RUN text = RunJighost({"list", "SearchPropertyData"});
    EXPECT_EQ(text.exitCode, 0);
    for (const char* pszRegex :
         {"group +Property data\n", "record +PROPERTY_DATA_T, 72 bytes, .*host and .*operation\n",
          "fails +3 for a null record; 25 ", "\n +64 +4  PropertyId +unsigned 32 bits +filled\n"}) {
        EXPECT_THAT(text.output, ContainsRegex(pszRegex));
    }
    const Json record = ListedOperations({"list", "SearchPropertyData", "--json"}).at(0)["record"];
    EXPECT_EQ(record["size"], sizeof(PROPERTY_DATA_T));
    EXPECT_EQ(record["fields"][2]["name"], "PropertySize");
    EXPECT_EQ(record["fields"][2]["offset"], offsetof(PROPERTY_DATA_T, PropertySize));

    const JIGHOST_RUN wrong = RunJighost({"list", "SearchPropertyDate"});
    EXPECT_EQ(wrong.exitCode, 2);
    EXPECT_THAT(wrong.errors, HasSubstr("did you mean 'SearchPropertyData'"));
    EXPECT_EQ(RunJighost({"list", ""}).exitCode, 2);
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
