// jighost as people use it: run as a program, in a folder of its own.
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <tuple>

#include "bodylnk/SimulatedBody.h"
#include "jighost/session/BodyFile.h"
#include "jighost/text/HostError.h"
#include "platform/Utf8Path.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string TOO_LONG = "  - {operation: SetSlitRollingMode, record: {AccumulateTime: 85}";
const std::string LEAVING =
    "always:\n  - {operation: ExitFactoryMode, name: leaving}\n"
    "  - {operation: GetFactoryModeState, expect_fields: {State: -1}}\n";

TEST_F(JighostTest, OnlySavedValuesOutliveTheRun) {
    const std::string before = ReadFile("body.yaml");
    EXPECT_EQ(RunSequence("steps:\n" + SET_OWNER, {"--body", "body.yaml"}).exitCode, 0);
    EXPECT_THAT(Owner(), StartsWith("OwnerName = \"Line 4\"\n"));
    EXPECT_EQ(ReadFile("body.yaml"), before);

    // What is saved stays, also if a later step fails.
    const std::string steps = "steps:\n" + SET_OWNER + SAVE_OWNER + TOO_LONG + "}\n";
    EXPECT_EQ(RunSequence(steps, {"--body", "body.yaml"}).exitCode, 4);
    EXPECT_THAT(Owner(), StartsWith("OwnerName = \"Desk\"\n"));
}

TEST_F(JighostTest, BodyThatIsCutAtALineEndIsNoWholeBody) {
    const std::string body = ReadFile("body.yaml");
    for (std::size_t end = 0; end < body.size() - 1; end = body.find('\n', end) + 1) {
        WriteFile("cut.yaml", body.substr(0, end));
        SimulatedBody::Reset();
        EXPECT_THROW(LoadBody("cut.yaml"), HostError) << body.substr(0, end);
    }
    WriteFile("former.yaml", "format: 1\n");
    const std::string steps = "steps:\n" + SET_OWNER + SAVE_OWNER;
    EXPECT_EQ(RunSequence(steps, {"--body", "former.yaml"}).exitCode, 0);
    EXPECT_THAT(ReadFile("former.yaml"), testing::EndsWith("\nend: true\n"));
}

TEST_F(JighostTest, PathsOfAllLanguagesAreTakenAndTold) {
    const std::string name = "Z\u00fcrich\u2013\u5317\u4eac";
    const std::filesystem::path folder = PathOf(name);
    std::filesystem::create_directory(folder);
    const std::string body = " --body " + name + ".yaml";
    for (const std::string& line :
         {"body new " + name + ".yaml", "dump " + name + body, "verify " + name + body,
          "run GetBodyID --trace " + name + ".jsonl", "replay " + name + ".jsonl"}) {
        EXPECT_EQ(RunLine(line).exitCode, 0) << line;
    }
    EXPECT_TRUE(std::filesystem::exists(folder / "01000000.bin"));
    std::filesystem::copy_file("JigDll.log", folder / "log");
    EXPECT_THAT(RunLine("log " + name + "/log").output, HasSubstr("operations, 0 failed"));
    for (const char* pszFile : {MODULE_FILE, BODYLNK_FILE}) {
        std::filesystem::copy_file(BuildFolder() / pszFile, folder / pszFile);
    }
    EXPECT_EQ(RunLine("run GetBodyID --module " + name + "/" + MODULE_FILE).exitCode, 0);
    EXPECT_THAT(RunLine("run GetBodyID --module no" + name).errors, HasSubstr("no" + name));
}

TEST_F(JighostTest, OneOfManyMakesANewBody) {
    for (int round = 0; round < 20; ++round) {
        std::filesystem::remove("new.yaml");
        std::map<int, int> ends;
        for (const JIGHOST_RUN& run : RunAtOnce(std::vector<std::string>(8, "body new new.yaml"))) {
            ++ends[run.exitCode];
            EXPECT_THAT(
                run.errors,
                StartsWith(run.exitCode == 0 ? "" : "jighost: new.yaml is there already"));
        }
        EXPECT_EQ(ends, (std::map<int, int>{{0, 1}, {2, 7}}));
        EXPECT_EQ(ReadFile("new.yaml"), ReadFile("body.yaml"));
    }
}

TEST_F(JighostTest, UnexpectedOutcomeContinuesRetriesAndStops) {
    const std::string steps =
        "steps:\n"
        "  - {operation: GetOwnerName, expect_fields: {OwnerName: Desk}, on_unexpected: "
        "continue}\n" +
        TOO_LONG + ", name: long, on_unexpected: retry 2}\n" + SAVE_OWNER;
    const JIGHOST_RUN run = RunSequence(steps, {"--record", "run.json"});
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_THAT(run.output, HasSubstr("2 of 3 steps run, 2 not as expected"));
    EXPECT_THAT(
        run.errors, HasSubstr("step 1, GetOwnerName: expected OwnerName \"Desk\", got \"Line 4\""));
    EXPECT_THAT(run.errors, HasSubstr("step 2, long: expected success, got"));
    const auto record = nlohmann::json::parse(ReadFile("run.json"));
    EXPECT_EQ(record["steps"][1]["attempts"].size(), 3U);
    EXPECT_THAT(
        RunSequence(steps, {"--from", "3"}).output,
        HasSubstr("1 of 3 steps run, 0 not as expected"));
    EXPECT_EQ(RunSequence(steps, {"--until", "GetOwnerName"}).exitCode, 5);
    EXPECT_EQ(RunSequence("steps:\n" + TOO_LONG + ", expect: 3}\n").exitCode, 0);
    EXPECT_EQ(RunSequence("steps:\n" + TOO_LONG + ", expect: RESULT_NOT_FOUND}\n").exitCode, 5);
}

TEST_F(JighostTest, RetriesWaitAndMayBeGivenUp) {
    const auto run = [](const std::string& onUnexpected, const char* pszFormat = "2") {
        WriteFile(
            "retries.yaml", "format: " + std::string(pszFormat) + "\nsteps:\n" + TOO_LONG +
                                ", on_unexpected: \"" + onUnexpected +
                                "\"}\n  - operation: EnterFactoryMode\n");
        return RunJighost({"sequence", "retries.yaml", "--json"});
    };
    // Attempts, steps that ran, and the milliseconds that it took at least.
    const std::tuple<const char*, std::size_t, std::size_t, double> forms[] = {
        {"stop", 1, 1, 0},
        {"continue", 1, 2, 0},
        {"retry 2", 3, 1, 0},
        {"retry 2 after 20 ms", 3, 1, 40},
        {"retry 1 after 20 ms, then continue", 2, 2, 20},
        {"retry 3, then stop", 4, 1, 0},
    };
    for (const auto& [text, attempts, steps, time] : forms) {
        const auto record = nlohmann::json::parse(run(text).output);
        EXPECT_EQ(record["steps"][0]["attempts"].size(), attempts) << text;
        EXPECT_EQ(record["steps"].size(), steps) << text;
        EXPECT_GE(record["time_ms"].get<double>(), time) << text;
    }
    EXPECT_EQ(nlohmann::json::parse(run("retry 1", "1").output)["steps"][0]["attempts"].size(), 2U);
}

TEST_F(JighostTest, FaultOfOneAttemptLetsARetrySucceed) {
    const std::string step = "steps:\n  - {operation: SaveOwnerName, on_unexpected: retry 3}\n";
    const auto run = [&](const char* pszFault) {
        const JIGHOST_RUN ended = RunSequence(step, {"--json", "--fault", pszFault});
        const auto record = nlohmann::json::parse(ended.output);
        return std::pair(ended.exitCode, record["steps"][0]["attempts"].size());
    };
    EXPECT_EQ(run("SaveOwnerName:1@1=0x2001"), std::pair(0, std::size_t{2}))
        << "and no further attempt";
    EXPECT_EQ(run("SaveOwnerName:1@2=0x2001"), std::pair(5, std::size_t{1})) << "met by no call";
    EXPECT_EQ(run("SaveOwnerName:1=0x2001"), std::pair(4, std::size_t{4}));
}

TEST_F(JighostTest, StepsOfAlwaysRunHoweverTheOthersEnded) {
    const std::string enter = "format: 2\nsteps:\n  - operation: EnterFactoryMode\n";
    WriteFile("fails.yaml", enter + TOO_LONG + "}\n  - operation: GetBodyID\n" + LEAVING);
    const JIGHOST_RUN run = RunJighost({"sequence", "fails.yaml"});
    EXPECT_EQ(run.exitCode, 4) << "of the first problem";
    EXPECT_THAT(run.output, HasSubstr("\n  4  leaving "));
    EXPECT_THAT(run.output, HasSubstr("\n  5  GetFactoryModeState "));
    EXPECT_THAT(run.output, HasSubstr("4 of 5 steps run, 1 not as expected"));

    // One that fails keeps no other one from running, and is told.
    const JIGHOST_RUN unable = RunJighost(
        {"sequence", "fails.yaml", "--until", "1", "--fault", "ExitFactoryMode:1=0x2001"});
    EXPECT_EQ(unable.exitCode, 4);
    EXPECT_THAT(unable.errors, HasSubstr("step 4, leaving: expected success"));
    EXPECT_THAT(unable.output, HasSubstr("3 of 5 steps run, 2 not as expected"));

    WriteFile("twice.yaml", enter + "    name: leaving\n" + LEAVING);
    EXPECT_THAT(RunJighost({"sequence", "twice.yaml"}).errors, HasSubstr("got 'leaving' again"));
}

TEST_F(JighostTest, ShippedSequencesSucceedOnANewBody) {
    const std::string folder = std::string(SEQUENCE_FOLDER) + '/';
    std::filesystem::create_directory("adjustment-data");
    const std::vector<std::string> runs[] = {
        {"sequence", folder + "identity.yaml", "--body", "body.yaml", "--set", "serial=12346"},
        {"sequence", folder + "adjustment-data.yaml", "--body", "body.yaml"},
        {"sequence", folder + "inspection.yaml", "--body", "body.yaml"},
    };
    for (const std::vector<std::string>& arguments : runs) {
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
    }
    EXPECT_THAT(
        RunJighost({"run", "GetBodyID", "--body", "body.yaml"}).output,
        HasSubstr("SerialNo         = 12346\n"));
    EXPECT_THAT(Owner(), StartsWith("OwnerName = \"\"\n"));
    EXPECT_TRUE(std::filesystem::exists("adjustment-data/1f000013.bin"));
}

}  // namespace
