// Calls of the system that are interrupted, move a part of what they should, or fail: in what the
// module does, and in the layer beneath it and beside it.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fstream>
#include <functional>

#include "identity/BodyID.h"
#include "platform/FileLock.h"
#include "platform/FileReader.h"
#include "platform/GrowingFile.h"
#include "platform/Process.h"
#include "platform/StandardFiles.h"
#include "platform/TextFile.h"
#include "platform/WholeFile.h"
#include "tests/faults/Replaced.h"
#include "tests/support/Driver.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Support.h"

namespace fs = std::filesystem;

namespace {

struct FAILURE {
    std::string_view call;
    int error;
    int skipped =
        0;  // calls of the name that do not fail; all behind the failing one do not either
};

FAILURE s_Failure;

int FailOnce(std::string_view call) {
    return call == s_Failure.call && s_Failure.skipped-- == 0 ? s_Failure.error : 0;
}

/// Each call that waits or moves bytes, ahead of doing it at the second attempt.
int Interrupt(std::string_view call) {
    static std::string_view s_Interrupted;
    for (const std::string_view waiting :
         {"read", "write", "pwrite", "recv", "waitpid", "semtimedop"}) {
        if (call == waiting) {
            s_Interrupted = s_Interrupted == waiting ? "" : waiting;
            return s_Interrupted.empty() ? 0 : EINTR;
        }
    }
    return 0;
}

class SystemCallTest : public ModuleTest {
  protected:
    void TearDown() override {
        g_GreatestMove = SIZE_MAX;
        EXPECT_EQ(NextDescriptor(), m_nDescriptor) << "a file is left open";
    }

    /// The error that the work throws while a call fails; 0 if it throws none.
    static int ErrorOf(const FAILURE& failure, const std::function<void()>& work) {
        s_Failure = failure;
        const AheadOfCalls failing(FailOnce);
        try {
            work();
            return 0;
        } catch (const std::system_error& e) {
            return e.code().value();
        }
    }

  private:
    const int m_nDescriptor = NextDescriptor();
};

// --- Interrupted, a byte at a time ---

// The second run of a kind: the first one leaves the body with what that finds in it.
TEST_F(SystemCallTest, InterruptedOperationsDoAndLogWhatOthersDo) {
    const Surroundings surroundings;
    for (const OPERATION_INFO* pOperation : AllOperations()) {
        RecordBytes record = ValidRecord(*pOperation);
        Run(pOperation->name, record.data());
        EXPECT_EQ(Run(pOperation->name, record.data()), 0) << pOperation->name;
        const std::string log = Log();
        for (const std::uintmax_t limit : {RLIM_INFINITY, rlim_t{1} << 40}) {
            const FileFault limited = FileSizeLimit(limit);
            const AheadOfCalls interrupted(
                [](std::string_view call) { return call == "close" ? EINTR : Interrupt(call); });
            EXPECT_EQ(Run(pOperation->name, record.data()), 0) << pOperation->name;
            EXPECT_EQ(Log(), log);
        }
    }
}

TEST_F(SystemCallTest, FilesAndProcessesAreReadAndWrittenWholeAByteAtATime) {
    const std::string text = "[S]\r\nSize=5\r\n";
    const AheadOfCalls interrupted(Interrupt);
    g_GreatestMove = 1;
    ReplaceFile("replaced", text, OUTLASTS::KILLS);
    GrowingFile growing;
    EXPECT_EQ(growing.Create("growing"), 0);
    EXPECT_EQ(growing.Write(text), 0);
    EXPECT_EQ(growing.Size(), text.size());
    growing.Close();
    const int nFile = open("standard", O_WRONLY | O_CREAT, 0600);
    EXPECT_EQ(WriteStandardFile(nFile, text), 0);
    close(nFile);
    for (const char* pszFile : {"replaced", "growing", "standard"}) {
        EXPECT_EQ(ReadTextFile(pszFile, text.size()), text) << pszFile;
        EXPECT_EQ(GetPrivateProfileIntA("S", "Size", -1, pszFile), 5U);
        FileReader reader(pszFile);
        std::string all;
        std::array<char, 5> block{};
        while (const std::size_t size = reader.Read(block)) {
            all.append(block.data(), size);
        }
        EXPECT_EQ(all, text);
    }
    Process echo("/bin/sh", {"-c", "cat; exit 3"});
    echo.WriteLine("line");
    EXPECT_EQ(echo.ReadLine(), "line");
    echo.CloseInput();
    EXPECT_EQ(echo.EndText(), "exit code 3");
}

// --- Failing ---

TEST_F(SystemCallTest, FileThatCannotBeReplacedIsTheFormerOneAndNothingLiesBesideIt) {
    WriteFile("file", "former");
    const std::size_t before = EntryCount(".");
    for (const FAILURE& failure :
         {FAILURE{"fchmod", EPERM},
          {"write", ENOSPC},
          {"write", EIO, 1},
          {"fsync", EIO},
          {"close", EIO}}) {
        g_GreatestMove = 2;
        const auto replace = [] { ReplaceFile("file", "new", OUTLASTS::POWER_FAILURES); };
        EXPECT_EQ(ErrorOf(failure, replace), failure.error) << failure.call;
        EXPECT_EQ(ReadFile("file"), "former") << failure.call;
        EXPECT_EQ(EntryCount("."), before) << failure.call;
    }
    for (const FAILURE& failure : {FAILURE{"write", ENOSPC}, {"close", EIO}}) {
        const auto write = [] { ReplaceFile("/dev/null", "new", OUTLASTS::KILLS); };
        EXPECT_EQ(ErrorOf(failure, write), failure.error) << failure.call;
    }
}

TEST_F(SystemCallTest, FileIsMadeInAFreePlaceOnlyAlsoWhereTheSystemCannotRenameIntoOne) {
    const auto make = [] { EXPECT_TRUE(MakeFile("file", "new")); };
    EXPECT_EQ(ErrorOf({"renameat2", EACCES}, make), EACCES);
    EXPECT_FALSE(fs::exists("file"));
    EXPECT_EQ(ErrorOf({"renameat2", EINVAL}, make), 0);
    EXPECT_EQ(ReadFile("file"), "new");
    for (AheadOfCalls::ErrorOf* const pMeanwhile :
         {+[](std::string_view call) {
              return call == "renameat2" ? WriteFile("other", "theirs"), 0 : 0;
          },
          +[](std::string_view call) {
              return call == "renameat2" ? WriteFile("other", "theirs"), EINVAL : 0;
          }}) {
        fs::remove("other");
        const AheadOfCalls meanwhile(pMeanwhile);
        EXPECT_FALSE(MakeFile("other", "ours"));
        EXPECT_EQ(ReadFile("other"), "theirs");
    }
}

TEST_F(SystemCallTest, LineThatCannotBeWrittenLeavesNothingOfItself) {
    GrowingFile file;
    EXPECT_EQ(file.Create("file"), 0);
    EXPECT_EQ(file.Write("first\n"), 0);
    g_GreatestMove = 2;
    s_Failure = {"write", ENOSPC, 2};
    {
        const AheadOfCalls failing(FailOnce);
        EXPECT_EQ(file.Write("second\n"), ENOSPC);
        EXPECT_EQ(file.Size(), 6U);
    }
    EXPECT_EQ(file.Write("third\n"), 0);
    EXPECT_EQ(ReadFile("file"), "first\nthird\n");
}

// As where a file may not grow for a reason of its own, which raises no signal.
TEST_F(SystemCallTest, ReasonOfAFailedWriteIsToldAlsoIfItRaisesNothing) {
    const FileFault limited = FileSizeLimit(1000);
    int nFile = 0;
    EXPECT_EQ(_sopen_s(&nFile, "file", _O_WRONLY | _O_CREAT, _SH_DENYNO, _S_IWRITE), 0);
    for (const int error : {EFBIG, EPIPE, EIO}) {
        s_Failure = {"write", error};
        const AheadOfCalls failing(FailOnce);
        EXPECT_EQ(_write(nFile, "text", 4), -1);
        EXPECT_EQ(errno, error);
    }
    EXPECT_EQ(_close(nFile), 0);
}

TEST_F(SystemCallTest, LockIsThatOfTheFileThatHasTheNameWhenItIsTaken) {
    WriteFile("body", "former");
    const AheadOfCalls meanwhile([](std::string_view call) {
        if (call == "flock" && ReadFile("body") == "former") {
            ReplaceFile("body", "new", OUTLASTS::KILLS);
        }
        return 0;
    });
    FileLock lock;
    EXPECT_TRUE(lock.Take("body"));
    EXPECT_FALSE(FileLock().Take("body")) << "the former file is locked";
}

// --- Named blocks ---

HANDLE OpenBlock() {
    return CreateFileMappingA(
        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 1, "SHARED_NAME_FAILING");
}

/// The memory of blocks that this process has attached.
int AttachedSegments() {
    std::ifstream table("/proc/self/maps");
    int count = 0;
    for (std::string line; std::getline(table, line);) {
        count += line.find("/SYSV") != std::string::npos ? 1 : 0;
    }
    return count;
}

// A block is attached once when it is opened and once more for its view.
TEST_F(SystemCallTest, BlockThatCannotBeMappedFailsTheOperationAndIsClosed) {
    BODY_ID_T bodyID{};
    s_Failure = {"shmat", ENOMEM, 1};
    {
        const AheadOfCalls failing(FailOnce);
        EXPECT_EQ(Run("GetBodyID", &bodyID), 1);
    }
    EXPECT_EQ(Log(), FailedFrame("GetBodyID", 1, "[WAPI] MapViewOfFile"));
    EXPECT_FALSE(IsBlockHeld("BODYID"));
}

TEST_F(SystemCallTest, BlockThatDoesNotOpenSaysWhyAndTheNextOneDoes) {
    const std::pair<FAILURE, DWORD> failures[] = {
        {{"semget", ENOSPC}, ERROR_NOT_ENOUGH_MEMORY},
        {{"semget", EPERM}, ERROR_ACCESS_DENIED},
        {{"semget", EINVAL}, ERROR_INVALID_PARAMETER},
        {{"semctl", EIDRM}, ERROR_SUCCESS},  // the set went meanwhile: the next one is found
        {{"semctl", EACCES}, ERROR_ACCESS_DENIED},
        {{"semctl", ENOMEM, 2}, ERROR_NOT_ENOUGH_MEMORY},  // a digit of the segment's id
        {{"semctl", EIDRM, 4}, ERROR_INVALID_HANDLE},
        {{"semtimedop", EIDRM}, ERROR_SUCCESS},
        {{"semtimedop", ENOSPC},
         ERROR_NOT_ENOUGH_MEMORY},  // the kernel keeps only so many undoings
        {{"semtimedop", ENOSPC, 1}, ERROR_NOT_ENOUGH_MEMORY},
        {{"shmget", ENOSPC, 1}, ERROR_NOT_ENOUGH_MEMORY},  // behind a look for a stale one
        {{"shmat", ENOMEM}, ERROR_NOT_ENOUGH_MEMORY},
    };
    for (const auto& [failure, code] : failures) {
        SCOPED_TRACE(std::string(failure.call) + " " + std::to_string(failure.error));
        s_Failure = failure;
        {
            const AheadOfCalls failing(FailOnce);
            const HANDLE hBlock = OpenBlock();
            EXPECT_EQ(GetLastError(), code);
            EXPECT_EQ(hBlock != nullptr, code == ERROR_SUCCESS);
            CloseHandle(hBlock);
        }
        EXPECT_LT(s_Failure.skipped, 0) << "nothing has failed";
        EXPECT_EQ(AttachedSegments(), 0);
        const HANDLE hNext = OpenBlock();
        EXPECT_EQ(GetLastError(), DWORD{ERROR_SUCCESS});
        s_Failure = {"shmat", ENOMEM};
        const AheadOfCalls failing(FailOnce);
        EXPECT_EQ(MapViewOfFile(hNext, FILE_MAP_ALL_ACCESS, 0, 0, 0), nullptr);
        EXPECT_EQ(GetLastError(), DWORD{ERROR_NOT_ENOUGH_MEMORY});
        EXPECT_NE(CloseHandle(hNext), FALSE);
    }
}

}  // namespace
