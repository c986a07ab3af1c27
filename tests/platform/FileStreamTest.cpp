// Files read as streams while others take them away.
#include "platform/FileStream.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/Support.h"

namespace {

TEST(FileStreamTest, FileMayBeRenamedAndDeletedWhileItIsRead) {
    const FreshFolder folder;
    const std::string half(100'000, 'x');
    WriteFile("file", half + '\n' + half);
    FileStream stream("file");
    std::string line;
    EXPECT_TRUE(std::getline(stream, line));
    EXPECT_EQ(line, half);
    std::filesystem::rename("file", "renamed");
    WriteFile("file", "another one");
    EXPECT_TRUE(std::getline(stream, line));
    EXPECT_EQ(line, half);
    EXPECT_FALSE(std::getline(stream, line));

    const FileStream open("file");
    EXPECT_TRUE(open);
    EXPECT_TRUE(std::filesystem::remove("file"));
    WriteFile("file", "a third one");
    EXPECT_FALSE(FileStream("none"));
}

}  // namespace
