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

    static void Refuses(const std::string& options, const std::string& complaint) {
        const JIGHOST_RUN run = RunTo(2, "sequence body-of.yaml " + options, complaint);
        EXPECT_EQ(run.output, "") << "before the first step";
    }
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

TEST_F(ParameterTest, WrongAndMissingValuesAreToldAtOnceAheadOfTheFirstStep) {
    WriteFile("two.csv", "serial,owner\n1,\n0,b\n");
    WriteFile("lot.csv", "serial\n1\n2\n");
    WriteFile("long.csv", "serial\n1,2\n");
    WriteFile("open.csv", "serial\n\"1\n");
    WriteFile("other.csv", "serials\n1\n");
    const std::pair<std::string, std::string> refusals[] = {
        {"", "the parameter serial has no value: expected --set serial=VALUE"},
        {"--set serial=0", "serial: expected from 1 to 9999, got '0'"},
        {"--set serial=x", "serial: expected a number from 0 to 4294967295, got 'x'"},
        {"--set owner=12345678901", "owner: expected from 1 to 10 characters, got '12345678901'"},
        {"--set serial", "expected NAME=VALUE, got 'serial'"},
        {"--set serial=0 --set ownr=b", "no parameter 'ownr'; did you mean 'owner'?"},
        {"--set serial=1 --table lot.csv", "lot.csv:2: expected a value of serial once"},
        {"--table two.csv", "two.csv:2: parameter: owner: expected from 1 to 10 characters"},
        {"--table two.csv", "\ntwo.csv:3: parameter: serial: expected from 1 to 9999, got '0'"},
        {"--table long.csv", "long.csv:2: expected 1 values, got 2"},
        {"--table open.csv", "open.csv:2: expected a quote behind a quoted text"},
        {"--table other.csv", "other.csv: the sequence has no parameter 'serials'"},
        {"--table none.csv", "can't read none.csv"},
        {"--table lot.csv --record run.json", "--record run.json: expected a file of its own for"},
        {"--set serial=1 --set owner=../a --record ${owner}.json",
         "expected a value of owner that can be part of a file's name, got '../a'"},
    };
    for (const auto& [options, complaint] : refusals) {
        Refuses(options, complaint);
    }
    // What only a value makes wrong is told with its row.
    const std::string time = "  time: {type: characters}\nsteps:\n  - operation: ";
    WriteFile(
        "body-of.yaml", OWNER_PARAMETERS + time +
                            "SetSlitRollingMode\n    record: {AccumulateTime: \"${time}\"}\n");
    WriteFile("bad.csv", "serial,time\n1,9\n2,b\n");
    Refuses("--table bad.csv", "body-of.yaml:9: SetSlitRollingMode: AccumulateTime: expected");
    Refuses("--table bad.csv", "got 'b' (bad.csv:3)");
    EXPECT_FALSE(std::filesystem::exists("JigDll.log"));
}

TEST_F(ParameterTest, NoneAreInASequenceOfFormat1) {
    WriteFile("body-of.yaml", "format: 1\nparameters: {}\n" + OWNER_STEPS);
    Refuses("", "body-of.yaml:2: expected no parameters: in a sequence of format 1");
    const JIGHOST_RUN run = RunSequence(OWNER_STEPS);
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_THAT(run.output, HasSubstr("OwnerName = \"${owner}\"")) << "texts stay as they are";
}

}  // namespace
