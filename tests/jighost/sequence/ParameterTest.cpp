// What a sequence is given for a run: from the command line, from a table, from its own file.
#include <filesystem>

#include "tests/support/SupportJighost.h"
#include "tests/support/SupportJson.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string OWNER_PARAMETERS = R"(format: 2
name: body ${serial}
parameters:
  serial: {type: unsigned 32 bits, min: 1, max: 9999, question: "Serial number on the label?"}
  owner: {type: characters, min: 1, max: 10, default: Desk}
)";
const std::string OWNER_STEPS = R"(steps:
  - {operation: SetOwnerName, name: "owner of ${serial}", record: {OwnerName: "${owner}"}}
  - {operation: GetOwnerName, expect_fields: {OwnerName: "${owner}"}}
)";

class ParameterTest : public JighostTest {
  protected:
    ParameterTest() { WriteFile("body-of.yaml", OWNER_PARAMETERS + OWNER_STEPS); }
};

TEST_F(ParameterTest, ValuesStandInRecordsExpectationsAndNames) {
    const std::string options = "--set serial=0x10 --set owner=a${owner}b --json";
    EXPECT_THAT(
        Json::parse(RunTo(0, "sequence body-of.yaml " + options).output), Holds(Json::parse(R"({
            "sequence": {"name": "body 0x10"}, "parameters": {"owner": "a${owner}b"}, "steps": [
            {"name": "owner of 0x10"}, {"attempts": [{"after": {"OwnerName": "a${owner}b"}}]}]})")))
        << "a value is no place for another";
}

TEST_F(ParameterTest, EachRowOfATableIsARunOfItsOwn) {
    WriteFile("lot.csv", "\xEF\xBB\xBFserial,owner\r\n1,\"a \"\"b\"\",c\"\r\n\r\n2,d\r\n");
    const std::string line = "sequence body-of.yaml --table lot.csv ";
    const std::string output = RunTo(0, line + "--record run-${serial}.json").output;
    EXPECT_THAT(output, StartsWith("lot.csv:2: owner = a \"b\",c, serial = 1\n"));
    EXPECT_THAT(output, HasSubstr("\nlot.csv:4: owner = d, serial = 2\n"));
    const auto owner = [](const char* pszPath) {
        return Json::parse(ReadFile(pszPath))["parameters"]["owner"];
    };
    EXPECT_EQ(owner("run-1.json"), "a \"b\",c");
    EXPECT_EQ(owner("run-2.json"), "d");
    // A row that fails keeps no other one from running, and is the run's result.
    EXPECT_THAT(
        RunTo(4, line + "--fault GetOwnerName:1=0x2001").output,
        HasSubstr("body 2: 2 of 2 steps run, 1 not as expected"));
}

TEST_F(ParameterTest, NoneAreInASequenceOfFormat1) {
    const JIGHOST_RUN run = RunSequence(OWNER_STEPS);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_THAT(run.output, HasSubstr("OwnerName = \"${owner}\"")) << "texts stay as they are";
}

}  // namespace
