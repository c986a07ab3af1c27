// Every allocation fails in turn.
#include <iostream>
#include <set>

#include "identity/BodyID.h"
#include "tests/faults/Shortage.h"
#include "tests/support/Driver.h"
#include "tests/support/Support.h"

namespace {

class AllocationTest : public ModuleTest {
  protected:
    static void PrepareBody() {
        SimulatedBody::Reset();
        // As long as the real one, so that each line allocates.
        SimulatedBody::SetLinePrefix("2026/11/22 20:10:29.123 ");
        std::filesystem::remove("JigDll.log");
    }

    /// Notes the buffer that an error line names.
    void NoteBuffer(const std::string& operation) {
        const std::string log = Log();
        const std::string tag = "[ERR!] - [VALU] ";
        const std::size_t found = log.find(tag);
        ASSERT_NE(found, std::string::npos) << log;
        const std::size_t start = found + tag.size();
        m_Buffers.insert(operation + ": " + log.substr(start, log.find('\n', start) - start));
    }

    void ExpectThatNextRunWorks() {
        EXPECT_FALSE(IsBlockHeld("BODYID"));
        BODY_ID_T bodyID{};
        EXPECT_EQ(Run("GetBodyID", &bodyID), 0);
    }

    /// Gives false if the operation has no n-th allocation.
    bool RunCase(const OPERATION_INFO& operation, SHORTAGE shortage, std::uint32_t n) {
        PrepareBody();
        ClearLog();
        RecordBytes record = ValidRecord(operation);
        const EVENT_PROC procedure = Operation(operation.name);
        std::int32_t result = 0;
        {
            const Shortage untilEnd(shortage, n);
            result = procedure(record.data());
        }
        if (!Shortage::HasFailed()) {
            EXPECT_EQ(result, 0);
            m_Closing = ClosingText(Log());
            return false;
        }
        const bool bBuffer = shortage == SHORTAGE::ONCE && !Shortage::HasThrown();
        EXPECT_EQ(result, bBuffer ? 5 : 33);
        if (bBuffer) {
            NoteBuffer(operation.name);
        }
        EXPECT_TRUE(ClosesOnce(Log(), m_Closing, result)) << Log();
        EXPECT_TRUE(IsSpareUntouched(operation, record));
        // What it takes to switch power saving on again may be out of memory, too.
        EXPECT_TRUE(SimulatedBody::PowerSaveEnabled() || shortage == SHORTAGE::FOR_EVER);
        ExpectThatNextRunWorks();
        return true;
    }

    std::string m_Closing;  // of the last run without a shortage
    std::set<std::string> m_Buffers;
};

TEST_F(AllocationTest, EveryAllocationOfEveryOperationFailsInTurn) {
    const Surroundings surroundings;
    std::size_t cases = 0;
    for (const OPERATION_INFO* pOperation : AllOperations()) {
        for (const SHORTAGE shortage : {SHORTAGE::ONCE, SHORTAGE::FOR_EVER}) {
            SCOPED_TRACE(pOperation->name);
            EXPECT_FALSE(RunCase(*pOperation, SHORTAGE::NONE, 0));
            for (std::uint32_t n = 1; RunCase(*pOperation, shortage, n); ++n) {
                ASSERT_FALSE(HasFailure()) << "allocation " << n;
                ++cases;
            }
        }
    }
    std::cout << "[ COUNTED  ] case of a failing allocation: " << cases << '\n';
    // The copy runs the read of the INI file's range.
    const std::set<std::string> buffers = {
        "CopyDLResonantFrequency: pusData",
        "GetBoardInfDLResonantFrequency: pusData",
        "GetCameraLog: pbyData",
        "GetCameraLog: pszFullPath",
        "LoadPropertyData: _pszFileName",
        "LoadPropertyData: pPropertyData",
        "LoadPropertyData: pszFullPath",
        "SetBoardInfDLResonantFrequency: pbyData"};
    EXPECT_EQ(m_Buffers, buffers);
}

TEST_F(AllocationTest, EveryAllocationOfTheRegistrationFailsInTurn) {
    std::uint32_t n = 0;
    do {
        std::int32_t result = 0;
        {
            const Shortage untilEnd(SHORTAGE::ONCE, ++n);
            result = Module().Register();
        }
        ASSERT_EQ(result, Shortage::HasFailed() ? 33 : 0);
    } while (Shortage::HasFailed());
    EXPECT_EQ(Module().registered.size(), 131U);
    EXPECT_GT(n, 239U) << "a node for each row of the catalogue";
}

TEST_F(AllocationTest, ModuleThatIsLoadedWithoutMemoryWorks) {
    const std::string path = (BuildFolder() / MODULE_FILE).string();
    SimulatedBody::SetLinePrefix("2026/11/22 20:10:29.123 ");
    std::uint32_t n = 0;
    do {
        Unload();
        HMODULE library = nullptr;
        {
            const Shortage untilEnd(SHORTAGE::ONCE, ++n);
            library = LoadLibraryA(path.c_str());
        }
        ASSERT_NE(library, nullptr) << "allocation " << n;
        LoadAgain();  // the same one, once more
        FreeLibrary(library);
        const bool bFailed = Shortage::HasFailed();
        EXPECT_EQ(Module().Register(), 0);
        EXPECT_EQ(Module().registered.size(), 131U);
        EXPECT_EQ(Run("SaveBodyID"), 0);
        if (!bFailed) {
            break;
        }
    } while (!HasFailure());
    EXPECT_GT(n, 2U) << "the log's buffer and its first lines";
}

}  // namespace
