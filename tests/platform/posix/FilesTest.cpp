// What the POSIX layer does beyond the calls of Windows, and where these systems alone can be asked
// for it: files, and arguments that no caller should have.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <memory>
#include <system_error>

#include "platform/FileLock.h"
#include "platform/FileReader.h"
#include "platform/FollowedFile.h"
#include "platform/GrowingFile.h"
#include "platform/Process.h"
#include "platform/StandardFiles.h"
#include "platform/TextFile.h"
#include "platform/WholeFile.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Support.h"
#include "tests/support/SupportProcess.h"
#include "tests/support/SupportTable.h"

namespace {

const std::string OVERLONG(5000, 'x');

/// The message of what the work throws.
template <class Work>
std::string ThrownBy(const Work& work) {
    try {
        work();
        return "nothing";
    } catch (const std::exception& e) {
        return e.what();
    }
}

class FilesTest : public testing::Test {
  private:
    FreshFolder m_Folder;
};

// --- Files that are read ---

TEST_F(FilesTest, ReaderGoesOnAndTellsWhatBecameOfItsFile) {
    WriteFile("log", "12345678");
    FileReader reader("log");
    ASSERT_TRUE(reader.IsOpen());
    const auto read = [&reader] {
        std::array<char, 5> block{};
        return std::string(block.data(), reader.Read(block));
    };
    EXPECT_EQ(read(), "12345");
    EXPECT_EQ(read(), "678");
    EXPECT_EQ(read(), "");
    std::ofstream("log", std::ios::app) << "9";
    EXPECT_EQ(read(), "9");
    EXPECT_FALSE(reader.IsReplaced());
    std::filesystem::resize_file("log", 8);
    EXPECT_TRUE(reader.IsReplaced()) << "a byte that was read is gone";
    std::filesystem::remove("log");
    EXPECT_FALSE(reader.IsReplaced()) << "there is no new one yet";
    WriteFile("log", "a new one, longer than the former");
    EXPECT_TRUE(reader.IsReplaced());
}

TEST_F(FilesTest, FollowedFileIsARegularOneAndTouchesNoOthers) {
    FollowedFile file("log");
    ASSERT_EQ(mkfifo("log", 0600), 0);
    EXPECT_FALSE(file.Look());
    std::filesystem::remove("log");
    const int nNext = dup(STDERR_FILENO);
    close(nNext);
    WriteFile("log", "0123");
    EXPECT_TRUE(file.Look());
    EXPECT_FALSE(file.Look());
    EXPECT_EQ(file.Size(), 4U);
    // A host that closes all descriptors and opens a file of its own.
    WriteFile("own", "abc");
    close(nNext);
    ASSERT_EQ(open("own", O_RDONLY), nNext);
    EXPECT_EQ(file.Size(), 0U);
    EXPECT_TRUE(file.Look());
    EXPECT_EQ(file.Size(), 4U);
    std::array<char, 5> block{};
    EXPECT_EQ(file.Read(2, block), 2U);
    EXPECT_EQ(block.front(), '2');
    EXPECT_EQ(read(nNext, block.data(), block.size()), 3) << "the host's own file stays open";
    close(nNext);
}

TEST_F(FilesTest, ReaderOfNoFileSaysWhy) {
    EXPECT_FALSE(FileReader("none").IsOpen());
    EXPECT_EQ(errno, ENOENT);
    FileReader folder(".");
    std::array<char, 5> block{};
    EXPECT_EQ(ThrownBy([&] { folder.Read(block); }), "can't read .: Is a directory");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    const int nWriter = open("pipe", O_RDWR);
    FileReader pipe("pipe");
    EXPECT_EQ(write(nWriter, "text", 4), 4);
    EXPECT_EQ(pipe.Read(block), 4U);
    EXPECT_FALSE(pipe.IsReplaced()) << "what was read is no longer in it, and it is the same";
    close(nWriter);
}

TEST_F(FilesTest, WholeTextsHaveTheirLimitAndTheirRefusals) {
    WriteFile("text", "0123456789");
    EXPECT_EQ(ReadTextFile("text", 10), "0123456789");
    const auto refusal = [](const char* pszPath) {
        return ThrownBy([=] { ReadTextFile(pszPath, 9); });
    };
    EXPECT_EQ(refusal("text"), "can't read text: expected at most 9 bytes");
    EXPECT_EQ(refusal("none"), "can't read none: No such file or directory");
    EXPECT_EQ(refusal("text/none"), "can't read text/none: Not a directory");
    EXPECT_EQ(refusal("/dev/zero"), "can't read /dev/zero: it is no regular file");
    EXPECT_EQ(refusal("/proc/self/mem"), "can't read /proc/self/mem: Input/output error");
    ASSERT_EQ(chmod("text", 0200), 0);
    const OrdinaryUser user;
    EXPECT_EQ(refusal("text"), "can't read text: Permission denied");
}

TEST_F(FilesTest, LockIsOneHoldersAndThatOfTheFileThatHasTheName) {
    WriteFile("body", "former");
    FileLock second;
    {
        FileLock first;
        EXPECT_TRUE(first.Take("body"));
        EXPECT_FALSE(second.Take("body"));
        ReplaceFile("body", "new", OUTLASTS::KILLS);
        EXPECT_TRUE(second.Take("body")) << "the former file's lock is no longer this one's";
    }
    EXPECT_FALSE(FileLock().Take("body"));
    EXPECT_EQ(
        ThrownBy([] { FileLock().Take("none"); }), "can't read none: No such file or directory");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_TRUE(FileLock().Take("pipe")) << "nobody writes it";
}

TEST_F(FilesTest, GrowingFileTakesWholeLinesWithinItsLimitAndIsNewEachTime) {
    GrowingFile file;
    {
        const Limit ten(RLIMIT_FSIZE, 10);
        EXPECT_EQ(file.Create("file"), 0);
        EXPECT_EQ(file.Write("more than ten"), EFBIG);
        EXPECT_EQ(file.Write("123456"), 0);
        EXPECT_EQ(file.Write("78901"), EFBIG);
        EXPECT_EQ(file.Write("7890"), 0) << "it is full to the last byte then";
    }
    EXPECT_EQ(file.Write("x"), EFBIG) << "nobody has looked for the limit";
    file.LookForLimit();
    EXPECT_EQ(file.Write("x"), 0);
    EXPECT_EQ(file.Size(), 11U);
    const int nDescriptor = NextDescriptor();
    EXPECT_EQ(file.Create("file"), EEXIST);
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(file.Size(), 0U);
    EXPECT_LT(NextDescriptor(), nDescriptor) << "the former file is left open";
    EXPECT_EQ(ReadFile("file"), "1234567890x");
}

TEST_F(FilesTest, ProgramsThatAreStartedHaveNoneOfTheFiles) {
    WriteFile("file", "");
    const auto expectNone = [](const auto& open) {
        const int nDescriptor = NextDescriptor();
        const auto opened = open();
        EXPECT_EQ(fcntl(nDescriptor, F_GETFD), FD_CLOEXEC);
    };
    expectNone([] { return FileReader("file"); });
    expectNone([] { return Process("/bin/cat", {}); });
    expectNone([] {
        auto pLock = std::make_unique<FileLock>();
        EXPECT_TRUE(pLock->Take("file"));
        return pLock;
    });
    expectNone([] {
        auto pFile = std::make_unique<GrowingFile>();
        EXPECT_EQ(pFile->Create("new"), 0);
        return pFile;
    });
}

// --- INI files ---

int SizeIn(const std::string& text) {
    WriteFile("Test.ini", text);
    return static_cast<int>(GetPrivateProfileIntA("S", "Size", -1, ".\\Test.ini"));
}

TEST_F(FilesTest, IniValuesAreReadToTheEndOfWhatALineHolds) {
    for (const YAML::Node& row : TableRows("platform/posix/values.yaml", 17)) {
        const auto text = row[0].as<std::string>();
        EXPECT_EQ(SizeIn(text), row[1].as<int>()) << text;
    }
    EXPECT_EQ(SizeIn("\xEF\xBB[S]\nSize=5\n"), -1) << "half of a byte order mark is none";
    // A line's first 4096 bytes count; the second of the digits is the last of them, or behind it.
    const std::string blanks(4096 - std::string("Size=42").size(), ' ');
    EXPECT_EQ(SizeIn("[S]\nSize=" + blanks + "42\n"), 42);
    EXPECT_EQ(SizeIn("[S]\nSize=" + blanks + " 42\n"), 4);
}

TEST_F(FilesTest, WhatIsNoIniFileGivesTheDefaultAtOnce) {
    const auto size = [](const char* pszPath) {
        return GetPrivateProfileIntA("S", "Size", 7, pszPath);
    };
    EXPECT_EQ(size("."), 7U);
    EXPECT_EQ(size(OVERLONG.c_str()), 7U);
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_EQ(size("pipe"), 7U) << "nobody writes it";
    EXPECT_EQ(size("/dev/zero"), 7U);
    const int nDescriptor = NextDescriptor();
    EXPECT_EQ(SizeIn("[S]\nSize=5\n"), 5);
    EXPECT_EQ(NextDescriptor(), nDescriptor);
}

// --- Arguments that no caller should have ---

TEST_F(FilesTest, StringsRefuseWhatIsNoStringAndEmptyTheirDestination) {
    struct REFUSED {
        std::function<errno_t(char*)> call;
        const char* pszLeft = "";
    };
    const REFUSED calls[] = {
        {[](char*) { return strcpy_s(nullptr, 8, "a"); }, "old"},
        {[](char* pText) { return strcpy_s(pText, 0, "a"); }, "old"},  // no room for a zero
        {[](char* pText) { return strcpy_s(pText, 8, nullptr); }},
        {[](char*) { return strcat_s(nullptr, 8, "a"); }, "old"},
        {[](char* pText) { return strcat_s(pText, 0, "a"); }, "old"},
        {[](char* pText) { return strcat_s(pText, 8, nullptr); }},
        {[](char*) { return _itoa_s(1, nullptr, 8, 10); }, "old"},
        {[](char* pText) { return _itoa_s(1, pText, 0, 10); }, "old"},
        {[](char* pText) { return _itoa_s(1, pText, 8, -1); }},
        {[](char* pText) { return _itoa_s(1, pText, 8, 1); }},
        {[](char* pText) { return _itoa_s(1, pText, 8, 37); }},
    };
    for (const REFUSED& refused : calls) {
        char szText[8] = "old";
        EXPECT_EQ(refused.call(szText), EINVAL);
        EXPECT_STREQ(szText, refused.pszLeft);
    }
    char szText[8] = "old";
    EXPECT_EQ(_itoa_s(123, szText, 3, 10), ERANGE);
}

TEST_F(FilesTest, FilesAreOpenedWithoutHangingTheHost) {
    int nFile = 0;
    EXPECT_EQ(_sopen_s(nullptr, "file", _O_WRONLY | _O_CREAT, _SH_DENYNO, _S_IWRITE), EINVAL);
    EXPECT_EQ(_sopen_s(&nFile, nullptr, _O_WRONLY, _SH_DENYNO, _S_IWRITE), EINVAL);
    EXPECT_EQ(nFile, -1);
    EXPECT_FALSE(std::filesystem::exists("file"));
    // The longest path with its zero fits, and the system itself then refuses it.
    EXPECT_EQ(_sopen_s(&nFile, OVERLONG.c_str(), 0, _SH_DENYNO, 0), ENAMETOOLONG);
    EXPECT_EQ(
        _sopen_s(&nFile, (std::string(4090, '/') + "file").c_str(), 0, _SH_DENYNO, 0), ENOENT);
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_EQ(_sopen_s(&nFile, "pipe", _O_WRONLY | _O_APPEND, _SH_DENYNO, _S_IWRITE), ENXIO);
    EXPECT_EQ(_close(-1), -1);
    EXPECT_EQ(errno, EBADF);
    const mode_t former = umask(0);
    const int nDescriptor = NextDescriptor();
    EXPECT_EQ(_sopen_s(&nFile, "file", _O_WRONLY | _O_CREAT, _SH_DENYNO, _S_IWRITE), 0);
    EXPECT_EQ(fcntl(nDescriptor, F_GETFD), FD_CLOEXEC) << "programs that the host starts have it";
    EXPECT_EQ(_close(nFile), 0);
    umask(former);
    struct stat info = {};
    EXPECT_EQ(stat("file", &info), 0);
    EXPECT_EQ(info.st_mode, static_cast<mode_t>(S_IFREG | 0666));
}

// --- Standard files ---

TEST_F(FilesTest, StandardFileThatDoesNotWaitIsWrittenWhole) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    ASSERT_EQ(fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
    const std::string text(1'000'000, 't');  // many times what the pipe holds
    const auto reading = std::async(std::launch::async, [&] {
        std::string all;
        std::array<char, 4096> block{};
        while (const ssize_t count = read(ends[0], block.data(), block.size())) {
            all.append(block.data(), static_cast<std::size_t>(count));
        }
        return all == text;
    });
    EXPECT_EQ(WriteStandardFile(ends[1], text), 0);
    close(ends[1]);
    reading.wait();
    close(ends[0]);
    EXPECT_EQ(WriteStandardFile(ends[1], "x"), EBADF);
    EXPECT_EQ(WriteStandardFile(ends[1], ""), 0) << "there is nothing to write";
    EXPECT_EQ(TerminalWidth(ends[1]), 0U);
}

TEST_F(FilesTest, ClosedStandardFilesFailAndNoOtherFileTakesTheirNumbers) {
    std::array<int, 3> former{};
    for (int nFile = 0; nFile < 3; ++nFile) {
        former.at(static_cast<std::size_t>(nFile)) = fcntl(nFile, F_DUPFD_CLOEXEC, 3);
        close(nFile);
    }
    KeepStandardFiles();
    char byte = 0;
    const bool bRead = read(STDIN_FILENO, &byte, 1) != -1;
    const int nOutput = WriteStandardFile(STANDARD_OUTPUT, "x");
    const int nError = WriteStandardFile(STANDARD_ERROR, "x");
    const int nNext = NextDescriptor();
    for (int nFile = 0; nFile < 3; ++nFile) {
        dup2(former.at(static_cast<std::size_t>(nFile)), nFile);
        close(former.at(static_cast<std::size_t>(nFile)));
    }
    EXPECT_FALSE(bRead);
    EXPECT_EQ(nOutput, EBADF);
    EXPECT_EQ(nError, EBADF);
    EXPECT_GT(nNext, STANDARD_ERROR);
}

}  // namespace
