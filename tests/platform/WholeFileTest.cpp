// Files replaced as a whole: what stays of the former one, and what is never replaced.
#include "platform/WholeFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Process.h"
#include "tests/support/Support.h"
#include "tests/support/SupportProcess.h"

namespace fs = std::filesystem;

namespace {

class WholeFileTest : public testing::Test {
  protected:
    static void Replace(const fs::path& path, OUTLASTS outlasts = OUTLASTS::KILLS) {
        CheckReplaceable(path);
        ReplaceFile(path, "new", outlasts);
    }

    /// Both ways of asking give this error, and nothing is made.
    static void ExpectRefused(const fs::path& path, int error) {
        const auto errorOf = [](const auto& work) {
            try {
                work();
                return 0;
            } catch (const std::system_error& e) {
                return e.code().value();
            }
        };
        EXPECT_EQ(errorOf([&] { CheckReplaceable(path); }), error) << path;
        EXPECT_EQ(errorOf([&] { ReplaceFile(path, "new", OUTLASTS::KILLS); }), error) << path;
    }

    /// The number of a process that is gone.
    static std::string GoneProcess() {
        Process process("/bin/true", {});
        process.Wait();
        return std::to_string(process.Id());
    }

  private:
    FreshFolder m_Folder;
};

TEST_F(WholeFileTest, FileKeepsItsRightsAndItsOwner) {
    WriteFile("file", "former");
    ASSERT_EQ(chmod("file", 0604), 0);
    const bool bRoot = geteuid() == 0;
    ASSERT_EQ(chown("file", bRoot ? 1234 : geteuid(), bRoot ? 2345 : getegid()), 0);
    struct stat former = {};
    ASSERT_EQ(stat("file", &former), 0);
    Replace("file", OUTLASTS::POWER_FAILURES);
    struct stat now = {};
    ASSERT_EQ(stat("file", &now), 0);
    EXPECT_EQ(ReadFile("file"), "new");
    EXPECT_EQ(now.st_mode, former.st_mode);
    EXPECT_EQ(now.st_uid, former.st_uid);
    EXPECT_EQ(now.st_gid, former.st_gid);
    EXPECT_NE(now.st_ino, former.st_ino) << "it was not replaced as a whole";
}

TEST_F(WholeFileTest, LinksStayAndLeadToTheNewFile) {
    fs::create_directory("folder");
    WriteFile("folder/file", "former");
    fs::create_symlink("folder/file", "link");
    fs::create_symlink("link", "linkToLink");
    fs::create_symlink("folder/missing", "dangling");
    Replace("linkToLink");
    Replace("dangling");
    for (const char* pszLink : {"link", "linkToLink", "dangling"}) {
        EXPECT_TRUE(fs::is_symlink(pszLink));
    }
    EXPECT_EQ(ReadFile("folder/file"), "new");
    EXPECT_EQ(ReadFile("folder/missing"), "new");
    fs::create_symlink("circle", "circle");
    ExpectRefused("circle", ELOOP);
}

TEST_F(WholeFileTest, DevicesAndPipesAreWrittenTo) {
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const int nPipe = open("pipe", O_RDONLY | O_NONBLOCK);
    Replace("pipe");
    char text[8] = {};
    EXPECT_EQ(read(nPipe, text, sizeof(text)), 3);
    close(nPipe);
    EXPECT_TRUE(fs::is_fifo("pipe"));
    Replace("/dev/null");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_THROW(Replace("/dev/full"), std::system_error);
}

TEST_F(WholeFileTest, WhatCannotBeReplacedIsRefusedAndLeavesNothing) {
    WriteFile("protected", "former");
    ASSERT_EQ(chmod("protected", 0444), 0);
    fs::create_directory("closed");
    WriteFile("foreign", "former");
    fs::permissions(".", fs::perms::all);
    ASSERT_EQ(chmod("foreign", 0666), 0);
    ExpectRefused(".", EISDIR);
    ExpectRefused("closed/", EISDIR);
    ExpectRefused("nowhere/file", ENOENT);
    {
        const OrdinaryUser user;
        ExpectRefused("protected", EACCES);
        if (geteuid() != getuid()) {
            ExpectRefused("foreign", EPERM);
            ExpectRefused("closed/file", EACCES);
        }
    }
    EXPECT_EQ(ReadFile("protected"), "former");
    EXPECT_EQ(ReadFile("foreign"), "former");
    EXPECT_EQ(std::distance(fs::directory_iterator("."), fs::directory_iterator()), 3);
}

TEST_F(WholeFileTest, OnlyWhatKilledWritersOfTheFileHaveLeftIsRemoved) {
    const std::string gone = GoneProcess();
    const std::string own = std::to_string(getpid());
    const std::vector<std::string> left = {"file.unfinished-" + gone, "file.unfinished-" + own};
    const std::vector<std::string> others = {"file.unfinished-1", "other.unfinished-" + gone,
                                             "file." + gone,      "file.unfinished-" + gone + "a",
                                             "file.unfinished-",  "file.unfinished--5"};
    for (const auto& names : {left, others}) {
        for (const std::string& name : names) {
            WriteFile(name, "former");
        }
    }
    Replace("file");
    for (const std::string& name : left) {
        EXPECT_FALSE(fs::exists(name)) << name;
    }
    for (const std::string& name : others) {
        EXPECT_EQ(ReadFile(name), "former") << name;
    }
}

}  // namespace
