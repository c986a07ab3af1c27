// Holds the POSIX layer and the system that it stands in for against each other: strings, INI
// values and files, where both must do the same.
#include <array>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <string>
#include <tuple>

#include "tests/support/Support.h"
#include "tests/support/SupportTable.h"

namespace {

class PlatformTest : public testing::Test {
  protected:
    PlatformTest() { std::filesystem::create_directory(FOLDER); }

    const FreshFolder m_Current;

    static constexpr const char* FOLDER = "PlatformTestFiles";
    static constexpr const char* FILE_PATH = ".\\PlatformTestFiles\\Test.txt";
    static constexpr const char* INI_PATH = ".\\PlatformTestFiles\\Test.ini";

    static void WriteIni(const std::string& text) { WriteFile("PlatformTestFiles/Test.ini", text); }

    static int ReadIni(const char* pszSection, const char* pszKey) {
        return static_cast<int>(GetPrivateProfileIntA(pszSection, pszKey, -1, INI_PATH));
    }

    static std::string FileText() { return ReadFile("PlatformTestFiles/Test.txt"); }

    /// Writes the text by the layer's calls and gives the error of the opening.
    static errno_t WriteFileText(const std::string& text, int openFlags) {
        int nFile = 0;
        const errno_t error = _sopen_s(
            &nFile, FILE_PATH, _O_WRONLY | _O_BINARY | openFlags, _SH_DENYNO, _S_IREAD | _S_IWRITE);
        EXPECT_EQ(nFile < 0, error != 0);
        if (error == 0) {
            const auto length = static_cast<unsigned int>(text.size());
            EXPECT_EQ(_write(nFile, text.data(), length), static_cast<int>(length));
            EXPECT_EQ(_close(nFile), 0);
        }
        return error;
    }
};

TEST_F(PlatformTest, CopiedTextFitsWithItsZeroOrTheDestinationIsEmpty) {
    const std::array<char, 4> endless = {'a', 'b', 'c', 'd'};
    char szText[5] = "old";
    EXPECT_EQ(strcpy_s(szText, sizeof szText, "abcd"), 0);
    EXPECT_STREQ(szText, "abcd");
    EXPECT_EQ(strcpy_s(szText, sizeof szText, "abcde"), ERANGE);
    EXPECT_STREQ(szText, "");
    EXPECT_EQ(strcpy_s(szText, endless.size(), endless.data()), ERANGE);
    EXPECT_STREQ(szText, "");
}

TEST_F(PlatformTest, AppendedTextFitsWithItsZeroOrTheDestinationIsEmpty) {
    char szText[5] = "ab";
    EXPECT_EQ(strcat_s(szText, sizeof szText, "cd"), 0);
    EXPECT_STREQ(szText, "abcd");
    EXPECT_EQ(strcat_s(szText, sizeof szText, ""), 0);
    EXPECT_EQ(strcat_s(szText, sizeof szText, "e"), ERANGE);
    EXPECT_STREQ(szText, "");

    char endless[3] = {'a', 'b', 'c'};
    EXPECT_NE(strcat_s(endless, sizeof endless, ""), 0);
    EXPECT_EQ(endless[0], '\0');
}

TEST_F(PlatformTest, NumbersAreWrittenInAllRadicesOrTheDestinationIsEmpty) {
    const std::tuple<int, int, const char*> cases[] = {
        {0, 10, "0"},
        {INT_MIN, 10, "-2147483648"},
        {-1, 16, "ffffffff"},
        {0xABC, 16, "abc"},
        {35, 36, "z"},
        {INT_MIN, 8, "20000000000"},
        {INT_MIN, 2, "10000000000000000000000000000000"}};
    for (const auto& [value, radix, pszExpected] : cases) {
        char szNumber[33] = "old";
        const std::size_t exact = std::string(pszExpected).size() + 1;
        EXPECT_EQ(_itoa_s(value, szNumber, exact, radix), 0);
        EXPECT_STREQ(szNumber, pszExpected);
        EXPECT_NE(_itoa_s(value, szNumber, exact - 1, radix), 0) << pszExpected;
        EXPECT_STREQ(szNumber, exact == 1 ? pszExpected : "") << pszExpected;
    }
}

TEST_F(PlatformTest, IniValuesInEveryForm) {
    for (const YAML::Node& row : TableRows("platform/values.yaml", 19)) {
        const auto text = row[0].as<std::string>();
        WriteIni("[S]\r\nKey=" + text + "\r\nNext=99\r\n");
        EXPECT_EQ(ReadIni("S", "Key"), row[1].as<int>()) << text;
    }
}

TEST_F(PlatformTest, IniSectionsAndKeysAreFoundWithoutCaseAndTheFirstCounts) {
    WriteIni(
        "Key=1\n"
        "[Other]\nKey=2\n;Only=3\n"
        "  [dlRESONANTfrequency]  \n\n; Key=4\n  aDDress = 5\nADDRESS=6\nAddressX=7\nNothing\n"
        "[Last]\nSize=8\n"
        "[DLResonantFrequency]\nSize=9\n"
        "[End]\nKey=10");
    EXPECT_EQ(ReadIni("DLResonantFrequency", "Address"), 5);
    EXPECT_EQ(ReadIni("DLResonantFrequency", "Key"), -1);
    EXPECT_EQ(ReadIni("DLResonantFrequency", "Nothing"), -1);
    EXPECT_EQ(ReadIni("DLResonantFrequency", "Size"), -1) << "stands in a later section only";
    EXPECT_EQ(ReadIni("Other", "Only"), -1);
    EXPECT_EQ(ReadIni("End", "Key"), 10) << "the last line has no end";
    EXPECT_EQ(ReadIni("Missing", "Key"), -1);
}

TEST_F(PlatformTest, IniFilesThatAreMissingOrBadGiveTheDefault) {
    EXPECT_EQ(ReadIni("S", "Key"), -1) << "no file";
    WriteIni("");
    EXPECT_EQ(ReadIni("S", "Key"), -1) << "an empty file";
    WriteIni("[S\nKey=1\n]\n=\n[]\n");
    EXPECT_EQ(ReadIni("S", "Key"), -1) << "a section without an end";
    WriteIni(
        "[T]\nLong=" + std::string(100'000, 'x') + "\n[S]\n" + std::string(100'000, ' ') +
        "\nKey=6\n");
    EXPECT_EQ(ReadIni("S", "Key"), 6) << "behind lines of any length";
}

TEST_F(PlatformTest, FilesAreCreatedContinuedAndCutByTheirFlags) {
    EXPECT_EQ(WriteFileText("x", _O_APPEND), ENOENT) << "nothing creates it";
    EXPECT_EQ(WriteFileText("one\n", _O_CREAT | _O_APPEND), 0);
    EXPECT_EQ(WriteFileText("two\n", _O_CREAT | _O_APPEND), 0);
    EXPECT_EQ(FileText(), "one\ntwo\n");
    EXPECT_EQ(WriteFileText("3", 0), 0);
    EXPECT_EQ(FileText(), "3ne\ntwo\n") << "written over from the beginning";
    EXPECT_EQ(WriteFileText("", _O_CREAT | _O_TRUNC), 0);
    EXPECT_EQ(FileText(), "");
}

TEST_F(PlatformTest, EmptiedFileIsWrittenFromItsBeginningByEachOfItsWriters) {
    std::array<int, 2> files{};
    for (int& nFile : files) {
        ASSERT_EQ(
            _sopen_s(
                &nFile, FILE_PATH, _O_WRONLY | _O_BINARY | _O_CREAT | _O_TRUNC, _SH_DENYNO,
                _S_IREAD | _S_IWRITE),
            0);
    }
    for (const int nFile : files) {
        EXPECT_EQ(_write(nFile, "row", 3), 3);
        EXPECT_EQ(_write(nFile, "s", 1), 1);
        EXPECT_EQ(_close(nFile), 0);
    }
    EXPECT_EQ(FileText(), "rows");
}

TEST_F(PlatformTest, FilesThatCannotBeOpenedOrWrittenSaySo) {
    int nFile = 0;
    EXPECT_EQ(_sopen_s(&nFile, FOLDER, _O_WRONLY, _SH_DENYNO, _S_IWRITE) == 0, false);
    EXPECT_EQ(nFile, -1);

    const std::string longPath(5000, 'x');
    EXPECT_NE(_sopen_s(&nFile, longPath.c_str(), _O_WRONLY | _O_CREAT, _SH_DENYNO, _S_IWRITE), 0);
    EXPECT_EQ(nFile, -1);

    ASSERT_EQ(_sopen_s(&nFile, FILE_PATH, _O_RDONLY | _O_CREAT, _SH_DENYNO, _S_IREAD), 0);
    EXPECT_EQ(_write(nFile, "x", 1), -1) << "opened for reading";
    EXPECT_EQ(_close(nFile), 0);
    const auto access = std::filesystem::status("PlatformTestFiles/Test.txt").permissions();
    EXPECT_EQ(access & std::filesystem::perms::owner_write, std::filesystem::perms::none)
        << "created without the permission to write";
    std::filesystem::permissions(
        "PlatformTestFiles/Test.txt", std::filesystem::perms::owner_write,
        std::filesystem::perm_options::add);
}

}  // namespace
