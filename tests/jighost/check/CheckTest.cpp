// jighost verify, diff and doctor: what they say of dumps and modules that are not as they should
// be.
#include <gmock/gmock.h>

#include <filesystem>
#include <string>

#include "jighost/check/Registrations.h"
#include "jighost/output/Json.h"
#include "link/SharedMemory.h"
#include "platform/Program.h"
#include "tests/support/Support.h"
#include "tests/support/SupportBlocks.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportOperations.h"

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Two dumps, "a" and "b", of the body whose file is "body.yaml".
class JighostDumpTest : public testing::Test {
  protected:
    JighostDumpTest() {
        std::filesystem::create_directory("a");
        RunTo(0, "body new body.yaml");
        RunTo(0, "dump a --body body.yaml");
        std::filesystem::copy("a", "b");
    }

  private:
    FreshFolder m_Folder;
};

// 01000002.bin is the sensor number, 16 bytes; 01000006.bin the body ID, 8 bytes, which of a
// factory-new body ends in 31 4f c1 5e.
TEST_F(JighostDumpTest, EachFaultOfADumpIsNamed) {
    std::filesystem::remove("b/01000000.bin");
    WriteFile("b/01000002.bin", "short");
    WriteFile("b/01000006.bin", ReadFile("b/01000006.bin").substr(0, 5) + "\x50\xC1\x5F");
    WriteFile("b/notes.txt", "");
    EXPECT_THAT(
        RunTo(5, "verify b --body body.yaml").output,
        ContainsRegex("missing +01000000.bin .*4 bytes expected\n"
                      "length +01000002.bin .*5 bytes, 16 expected\n"
                      "bytes +01000006.bin .*2 bytes differ, the first at offset 5\n"
                      "foreign +notes.txt .*\n239 files expected, 4 findings\n"));
    EXPECT_THAT(
        RunTo(5, "diff a b").output,
        ContainsRegex("01000000.bin .*only in a\n01000002.bin .*\n.*left: .*\n.*right: .*\n"
                      "01000006.bin .*2 bytes differ, the first at offset 5\n"
                      "    left:  4f c1 5e\n    right: 50 c1 5f\n"
                      "238 properties in both, 3 differences\n"));
}

TEST_F(JighostDumpTest, WhatCannotBeComparedIsNoSuccess) {
    std::filesystem::create_directory("empty");
    WriteFile("empty/notes.txt", "");
    for (const char* pszLine : {"verify empty", "diff empty empty", "diff a empty"}) {
        RunTo(2, pszLine, "there is no dump in empty: expected files");
    }
    std::filesystem::remove("a/01000000.bin");
    std::filesystem::remove("b/01000000.bin");
    const char NEITHER[] = "238 properties in both, 1 in neither, 0 differences\n";
    EXPECT_EQ(RunTo(5, "diff a b").output, NEITHER);
    WriteFile("a/01000000.bin", "cut");
    WriteFile("b/01000000.bin", "cut");
    EXPECT_EQ(RunTo(5, "diff a b").output, NEITHER);
}

/// A module that does what the file harm.txt says.
std::string BadModule() {
    return (BuildFolder() / BAD_MODULE_FILE).string();
}

TEST(JighostDoctorTest, ModuleBesideItServesAndLeavesNoFaultInTheFolder) {
    const FreshFolder folder;
    const JIGHOST_RUN run = RunJighost({"doctor"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, ContainsRegex("ok +registrations +131\n"));
}

TEST(JighostDoctorTest, EachReasonNotToServeIsNamed) {
    const FreshFolder folder;
    const auto expect = [](const std::string& module, const char* regex) {
        const JIGHOST_RUN run = RunJighost({"doctor", module});
        EXPECT_EQ(run.exitCode, 3) << module;
        EXPECT_THAT(run.output, ContainsRegex(regex));
    };
    expect("none.so", "failed +found +there is no file ");
    WriteFile("text.so", "no library at all");
    expect("text.so", "failed +word size +neither");
    WriteFile("narrow.so", std::string("\177ELF\1\1\1", 7) + std::string(60, '\0'));
    expect("narrow.so", "failed +word size +32-bit ELF library, but this host");
    // Of the other word size.
    std::string header("MZ");
    header.resize(0x3C);
    header += std::string("\x40\0\0\0PE\0\0", 8) + (sizeof(void*) == 8 ? "\x4C\1" : "\x64\x86");
    WriteFile("windows.dll", header);
    expect("windows.dll", "failed +word size +..-bit Windows library, but this host");
    WriteFile("arm.dll", header.replace(0x44, 2, "\x64\xAA"));
    expect("arm.dll", "failed +word size +Windows library, but this host");
    WriteFile("old.exe", "MZ" + std::string(100, '\0'));
    expect("old.exe", "failed +word size +an old program, no library");
    WriteFile("cut.so", ReadFile(BuildFolder() / MODULE_FILE).substr(0, 5000));
    expect("cut.so", "failed +word size +.*cut off");
    expect((BuildFolder() / BODYLNK_FILE).string(), "failed +exports +without Register");
    // A module that needs another camera link than the one that is loaded here.
    std::string foreign = ReadFile(BuildFolder() / MODULE_FILE);
    const std::size_t name = foreign.find(BODYLNK_FILE) + std::string(BODYLNK_FILE).find("BODYLNK");
    ASSERT_LT(name, foreign.size());
    WriteFile("foreign.so", foreign.replace(name, 7, "NOTHERE"));
    expect(
        "foreign.so", IS_WINDOWS ? "failed +loads +NOTHERE.dll is missing: "
                                 : "failed +loads +libNOTHERE.so is missing: ");
    std::filesystem::remove("JigDll.log");
    MakeIrregular("JigDll.log");
    const JIGHOST_RUN own = RunJighost({"doctor"});
    EXPECT_EQ(own.exitCode, 3);
    EXPECT_THAT(own.output, ContainsRegex("failed +log file +.*JigDll.log is no regular file"));
    std::filesystem::remove_all("JigDll.log");
    BlockHolder other;
    EXPECT_EQ(other.Open("CameraHandle", SHARED_TEXT_SIZE), "created");
    EXPECT_EQ(other.Do("lock"), "locked");
    const JIGHOST_RUN kept = RunJighost({"doctor"});
    EXPECT_EQ(kept.exitCode, 3);
    EXPECT_THAT(
        kept.output,
        HasSubstr("failed  shared blocks  another process keeps the mutex of the block "
                  "SHARED_NAME_CameraHandle\n"));
}

TEST(JighostDoctorTest, ProgramsAndDebuggersAreToldAllChecksInTheirOrder) {
    const FreshFolder folder;
    const auto states = [](const std::vector<std::string>& arguments, int exitCode) {
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_EQ(run.exitCode, exitCode);
        const Json document = Json::parse(run.output);
        EXPECT_EQ(document["serves"], exitCode == 0);
        std::string text;
        for (const Json& check : document["checks"]) {
            text += check["check"].get<std::string>() + ' ' + check["state"].get<std::string>() +
                    (check["text"] == "not tested" ? " not tested, " : ", ");
        }
        return text;
    };
    EXPECT_EQ(
        states({"doctor", "none.so", "--json"}, 3),
        "found failed, word size - not tested, loads - not tested, exports - not tested, "
        "registrations - not tested, unloads - not tested, log file ok, shared blocks ok, ");
    EXPECT_FALSE(std::filesystem::exists("JigDll.log")) << "nor before";
    EXPECT_EQ(
        states({"doctor", "--json"}, 0),
        "found ok, word size ok, loads ok, exports ok, registrations ok, unloads ok, log file ok, "
        "shared blocks ok, ");

    const JIGHOST_RUN sound = RunJighost({"doctor", "--in-process"});
    EXPECT_EQ(sound.exitCode, 0);
    EXPECT_EQ(CountLines(sound.output, "jighost-check\tok\tregistrations\t131"), 1U);
    EXPECT_EQ(CountLines(sound.output, "jighost-check\tok\tunloads\twithout harm"), 1U);
    const JIGHOST_RUN missing = RunJighost({"doctor", "none.so", "--in-process"});
    EXPECT_EQ(missing.exitCode, 3);
    EXPECT_THAT(missing.output, StartsWith("jighost-check\tfailed\tfound\tthere is no file "));
    EXPECT_EQ(CountLines(missing.output, "jighost-check\t-\tloads\tnot tested"), 1U);
}

TEST(JighostDoctorTest, RegistrationsThatAreNotAsTheyShouldBeAreTold) {
    std::vector<REGISTERED_OPERATION> operations;
    for (const OPERATION_FACTS& facts : AllFacts()) {
        operations.push_back({facts.name.c_str(), nullptr, facts.size, facts.direction});
    }
    EXPECT_EQ(RegistrationFaults(operations), "");
    std::vector<REGISTERED_OPERATION> changed = operations;
    std::swap(changed[1], changed[2]);
    EXPECT_EQ(RegistrationFaults(changed), ", in another order than expected");
    changed = operations;
    changed[0].name = "Foreign";
    changed[1].direction = 1;
    EXPECT_EQ(
        RegistrationFaults(changed), ", missing: " + AllFacts()[0].name + ", too many: Foreign, " +
                                         AllFacts()[1].name +
                                         " with size 0 and direction 1 in place of 0 and 3");
}

TEST(JighostDoctorTest, ModuleThatDoesHarmIsToldAndEndsNobodyElse) {
    const FreshFolder folder;
    const auto expect = [&](const char* pszHarm, const char* regex) {
        WriteFile("harm.txt", pszHarm);
        const JIGHOST_RUN run = RunJighost({"doctor", BadModule()});
        EXPECT_EQ(run.exitCode, 3) << pszHarm;
        EXPECT_THAT(run.output, ContainsRegex(regex));
        EXPECT_THAT(run.output, HasSubstr("ok      shared blocks")) << "the rest is told too";
    };
    expect(
        "crash", IS_WINDOWS ? "failed +loads +ends the program: exit code 3\n"
                            : "failed +loads +ends the program: signal 6, ");
    expect("hang", "failed +loads +does not come back within 10 seconds");
    expect("exit", "failed +registrations +ends the program: exit code 0\n-       unloads");
    expect(
        "nothing",
        "failed +registrations +2, missing: .*, GetBodyID with size 4 and direction 1 in place of "
        "20 and 1\n");
    expect("leave", "ok +registrations +131\nfailed +unloads +ends the program: exit code 0");
    expect("nameless", "failed +registrations +.*without a name");
    expect("refuse", "failed +registrations +.*does not register: RESULT_INVALID_PARAMETER .3.\n");
    WriteFile("harm.txt", "nothing");
    EXPECT_THAT(
        RunJighost({"run", "GetBodyID", "--module", BadModule()}).errors,
        HasSubstr("does not register GetBodyID\n"))
        << "its procedure is null";
    WriteFile("cut.so", ReadFile(BuildFolder() / MODULE_FILE).substr(0, 100'000));
    const JIGHOST_RUN run = RunJighost({"run", "GetBodyID", "--module", "cut.so"});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_THAT(run.errors, ContainsRegex("-bit \\w+ library, cut off ahead of its end"));
}

TEST(JighostDocsTest, ModuleThatLacksOperationsIsToldAheadOfTheDocument) {
    const FreshFolder folder;
    WriteFile("harm.txt", "nothing");
    const JIGHOST_RUN lacking = RunJighost({"docs", "--module", BadModule()});
    EXPECT_EQ(lacking.exitCode, 3);
    EXPECT_EQ(lacking.output, "");
    EXPECT_THAT(lacking.errors, HasSubstr("does not register "));
    WriteFile("harm.txt", "strange");
    const JIGHOST_RUN strange = RunJighost({"docs", "--module", BadModule()});
    EXPECT_EQ(strange.exitCode, 0);
    EXPECT_THAT(strange.output, HasSubstr("| 0, 10 |")) << "EVENT_PROC_NONE, 3, and 7";
}

}  // namespace
