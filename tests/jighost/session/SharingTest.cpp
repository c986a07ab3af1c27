// Several runs, and other hosts, at one body or at one folder block.
#include <filesystem>

#include "jighost/session/FolderBlock.h"
#include "jighost/session/HeldFolder.h"
#include "platform/FileLock.h"
#include "platform/Program.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::AllOf;
using testing::HasSubstr;

namespace {

const int PAIRS = IS_WINDOWS ? 5 : 20;  // where processes take long to start

void ExpectBothEndWell(const std::string& left, const std::string& right) {
    for (const JIGHOST_RUN& run : RunAtOnce({left, right})) {
        EXPECT_EQ(run.exitCode, 0) << run.errors;
    }
}

TEST_F(JighostTest, RunsOnOneBodyTakeTurnsAndLoseNothing) {
    WriteFile("owner.yaml", "format: 1\nsteps:\n" + SET_OWNER + SAVE_OWNER);
    WriteFile(
        "prefix.yaml",
        "format: 1\nsteps:\n  - operation: SetFilePrefix\n  - operation: SaveFilePrefix\n");
    const std::string before = ReadFile("body.yaml");
    for (int pair = 0; pair < PAIRS; ++pair) {
        WriteFile("body.yaml", before);
        ExpectBothEndWell(
            "sequence owner.yaml --body body.yaml", "sequence prefix.yaml --body body.yaml");
        const std::string saved = RunLine("body show body.yaml").output;
        EXPECT_THAT(saved, AllOf(HasSubstr("\"Desk\""), HasSubstr("\"6W1E\"")));
    }
}

TEST_F(JighostTest, DumpsOfOneUserAtOnceLandEachInItsFolder) {
    RunTo(0, "body new other.yaml");
    WriteFile("sequence.yaml", "format: 1\nsteps:\n" + SET_OWNER + SAVE_OWNER);
    RunTo(0, "sequence sequence.yaml --body other.yaml");
    for (const std::string option : {"", " --take-folder"}) {
        for (int pair = 0; pair < PAIRS; ++pair) {
            for (const char* pszFolder : {"left", "right"}) {
                std::filesystem::remove_all(pszFolder);
                std::filesystem::create_directory(pszFolder);
            }
            ExpectBothEndWell(
                "dump left --body body.yaml" + option, "dump right --body other.yaml" + option);
            RunTo(0, "verify left --body body.yaml");
            RunTo(0, "verify right --body other.yaml");
        }
    }
}

// All of them wait for the same three seconds.
TEST_F(JighostTest, WhatAnotherProcessKeepsIsRefusedWithOneLineAndLeftAsItIs) {
    std::filesystem::create_directory("host");
    std::filesystem::create_directory("dump");
    RunTo(0, "dump dump --trace dump.jsonl");
    WriteFile(
        "sequence.yaml", "format: 1\nfolder: dump\nsteps:\n  - operation: LoadPropertyData\n");
    FileLock lock;
    ASSERT_TRUE(lock.Take("body.yaml"));
    const FolderBlock host;
    const std::string text = FolderBlockText("host");
    host.Write(text);
    const std::string held = "another process holds the block SHARED_NAME_FOLDER, for " +
                             std::filesystem::canonical("host").generic_string() + "/; ";
    const std::string takers[] = {"dump dump", "sequence sequence.yaml", "replay dump.jsonl"};
    const std::vector<JIGHOST_RUN> refused =
        RunAtOnce({takers[0], takers[1], takers[2], "run GetBodyID --body body.yaml"});
    for (const JIGHOST_RUN& run : refused) {
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_EQ(
            run.errors,
            &run == &refused.back()
                ? "jighost: another run of jighost uses the body body.yaml\n"
                : "jighost: " + held + "--take-folder takes it as long as this run lasts\n");
    }
    EXPECT_EQ(host.Text(), text);
    EXPECT_TRUE(std::filesystem::is_empty("host"));

    std::filesystem::remove("dump/01000000.bin");
    for (const std::string& command : takers) {
        RunTo(0, command + " --take-folder");
        EXPECT_EQ(host.Text(), text) << command;
        EXPECT_TRUE(std::filesystem::is_empty("host")) << command;
    }
    EXPECT_TRUE(std::filesystem::exists("dump/01000000.bin"));

    RunTo(0, "run LoadPropertyData", held + "a dump goes there");
    EXPECT_TRUE(std::filesystem::exists("host/01000000.bin"));
}

TEST(JighostFolderTest, DumpIntoAnotherFolderOrIntoOneThatNobodyKnowsIsAProblem) {
    const HeldFolder folder("\\own\\", FOREIGN_FOLDER::REFUSED);
    const std::string line = "2026/11/22 [VALU] pszFullPath - ";
    const std::string own = line + "\\own\\";
    const std::string other = line + "\\other\\";
    EXPECT_EQ(folder.Problem({"[FUNC] LoadPropertyData", own}, {other}, false), "");
    EXPECT_EQ(
        folder.Problem({other}, {own}, false),
        "expected the folder /own/, the module took /other/");
    EXPECT_NE(folder.Problem({other}, {}, true), "");
    EXPECT_EQ(folder.Problem({}, {other}, true), "") << "it failed before";
    EXPECT_NE(folder.Problem({}, {}, false), "") << "the log is lost";
    // Among lines of several hosts.
    EXPECT_EQ(folder.Problem({}, {own, "[FUNC] GetBodyID", own}, false), "");
    EXPECT_NE(folder.Problem({}, {other, own}, false), "");
    EXPECT_NE(folder.Problem({}, {other}, false), "");
    EXPECT_NE(folder.Problem({}, {"[FUNC] GetBodyID"}, false), "");
}

// A host that writes while the folder is taken has the last word.
TEST(JighostFolderTest, FormerTextComesBackUnlessItsHolderHasWrittenAnother) {
    const FolderBlock host;
    host.Write("\\host\\");
    { const HeldFolder folder("\\own\\", FOREIGN_FOLDER::TAKEN); }
    EXPECT_EQ(host.Text(), "\\host\\");
    {
        const HeldFolder folder("\\own\\", FOREIGN_FOLDER::TAKEN);
        EXPECT_EQ(host.Text(), "\\own\\");
        host.Write("\\new\\");
    }
    EXPECT_EQ(host.Text(), "\\new\\");
}

}  // namespace
