// What a run takes it gives back, however it ends: memory, descriptors, each file closed once.
#include "tests/faults/Replaced.h"
#include "tests/support/Driver.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Support.h"

namespace {

class ReleaseTest : public ModuleTest {
  protected:
    ReleaseTest() { SimulatedBody::RecordCalls(false); }

    void TearDown() override {
        EXPECT_EQ(NextDescriptor(), m_nDescriptor);
        EXPECT_EQ(g_nVainCloses, 0);
    }

    static void RegisterNothing(
        const char*, EVENT_PROC, std::int32_t*, std::int32_t*, std::int32_t*) {}

  private:
    const int m_nDescriptor = NextDescriptor();
};

// The second run of a kind: the first one leaves the body with what that finds in it.
TEST_F(ReleaseTest, RunsGiveBackWhatTheyTook) {
    const Surroundings surroundings;
    for (const OPERATION_INFO* pOperation : AllOperations()) {
        SCOPED_TRACE(pOperation->name);
        const EVENT_PROC procedure = Operation(pOperation->name);
        RecordBytes record = ValidRecord(*pOperation);
        SimulatedBody::ClearCalls();
        EXPECT_EQ(procedure(record.data()), 0);
        const std::uint32_t calls = SimulatedBody::CallCount();
        const auto runFailing = [&](std::uint32_t call) {
            if (call != 0) {
                SimulatedBody::FailCall(call);
            }
            EXPECT_EQ(procedure(record.data()), call == 0 ? 0 : LINK_FAILURE);
        };
        for (std::uint32_t call = 0; call <= calls; ++call) {
            runFailing(call);
            const TakenBlocks taken;
            runFailing(call);
            EXPECT_EQ(TakenBlocks::Count(), 0) << "failing call " << call;
        }
    }
}

TEST_F(ReleaseTest, ModuleGivesBackAllButItsPropertyHash) {
    {
        const TakenBlocks taken;
        EXPECT_EQ(Module().RegisterWith(RegisterNothing), 0);
        EXPECT_EQ(TakenBlocks::Count(), 239);
    }
    Unload();
    const std::string path = (BuildFolder() / MODULE_FILE).string();
    const TakenBlocks taken;
    FreeLibrary(LoadLibraryA(path.c_str()));
    EXPECT_EQ(TakenBlocks::Count(), 0);
}

TEST_F(ReleaseTest, WhatIsThrownIsGivenBackWhereverItEnds) {
    const EVENT_PROC save = Operation("SaveBodyID");
    const EVENT_PROC readEeprom = Operation("GetABoardEepromData");
    SimulatedBody::FailEvent("EnablePowerSave");
    const TakenBlocks taken;
    SimulatedBody::FailLinePrefix(3);
    EXPECT_EQ(Module().pRegisterEventProcList(RegisterNothing), LINK_FAILURE);
    SimulatedBody::FailCall(1);
    SimulatedBody::FailLinePrefix(3);  // of the error line
    EXPECT_EQ(save(nullptr), LINK_FAILURE);
    EXPECT_EQ(readEeprom(nullptr), 3);
    EXPECT_EQ(TakenBlocks::Count(), 0);
}

TEST_F(ReleaseTest, RowWhoseFileIsClosedWithAnErrorFailsTheDump) {
    const Surroundings surroundings;
    {
        const AheadOfCalls failing([](std::string_view call) { return call == "close" ? EIO : 0; });
        EXPECT_EQ(Run("LoadPropertyData"), 1);
    }
    EXPECT_THAT(
        Log(), testing::EndsWith("> [ERR!] - [STDF] _close\n> [FUNC] LoadPropertyData - 1\n"));
}

}  // namespace
