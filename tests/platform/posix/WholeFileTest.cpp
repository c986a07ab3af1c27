// Files replaced as a whole, with rights and owner, through links, and what is no file.
#include "platform/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/SupportProcess.h"
#include "tests/support/SupportWholeFile.h"

namespace fs = std::filesystem;

namespace {

TEST_F(WholeFileTest, FileKeepsItsRightsAndItsOwner) {
    const uid_t user = geteuid();
    const gid_t group = getegid();
    const bool bRoot = user == 0;
    const std::pair<uid_t, gid_t> owners[] = {
        {user, group}, {bRoot ? 1234 : user, group}, {user, bRoot ? 2345 : group}};
    for (const auto& [owner, itsGroup] : owners) {
        WriteFile("file", "former");
        ASSERT_EQ(chown("file", owner, itsGroup), 0);
        ASSERT_EQ(chmod("file", 04604), 0);
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
    // As many as the system itself follows, and one more.
    fs::path path = "folder/file";
    for (int links = 1; links <= 41; ++links) {
        const fs::path next = "link" + std::to_string(links);
        fs::create_symlink(path, next);
        path = next;
    }
    Replace("link40");
    ExpectRefused("link41", ELOOP);
}

// Another user can tell the name ahead.
TEST_F(WholeFileTest, NothingIsWrittenThroughALinkInTheNewFilesPlace) {
    WriteFile("victim", "former");
    const std::string name = "file.unfinished-" + std::to_string(getpid());
    fs::create_symlink("victim", name);
    ExpectRefused("file", EEXIST);
    EXPECT_TRUE(fs::is_symlink(name));
    EXPECT_EQ(ReadFile("victim"), "former");
    ExpectRefused("missing/", EISDIR);
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

TEST_F(WholeFileTest, WhatTheUserMayNotReplaceIsRefusedAndLeavesNothing) {
    WriteFile("protected", "former");
    ASSERT_EQ(chmod("protected", 0444), 0);
    fs::create_directory("closed");
    WriteFile("foreign", "former");
    fs::permissions(".", fs::perms::all);
    ASSERT_EQ(chmod("foreign", 0666), 0);
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
    EXPECT_EQ(EntryCount("."), 3U);
}

}  // namespace
