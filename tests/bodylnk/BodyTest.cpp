// What the simulated body does when it is asked: what events change in it, what it answers, and
// what is told of a call.
#include <algorithm>
#include <array>
#include <functional>
#include <optional>

#include "link/BodyLink.h"
#include "tests/support/Support.h"

using namespace SimulatedBody;
using SLR_MONITOR::BANK_FC;

namespace {

class BodyTest : public testing::Test {
  protected:
    BodyTest() { Reset(); }
    BodyTest(const BodyTest&) = delete;
    BodyTest& operator=(const BodyTest&) = delete;
    ~BodyTest() override { Reset(); }

    /// The word that the event answers with.
    static std::int32_t RunEvent(const std::string& name, std::int32_t parameter = 0) {
        std::int32_t word = 0;
        CEventProcedure().Execute(name, parameter, &word);
        return word;
    }

    /// Fails the test if the call is taken.
    static void ExpectRefused(const std::function<void()>& call) {
        try {
            call();
            ADD_FAILURE() << "was taken";
        } catch (const CException* e) {
            delete e;
        }
    }
};

TEST_F(BodyTest, EventsChangeTheirPartOfTheConditionAndNoOther) {
    struct CHANGE {
        std::vector<std::pair<const char*, std::int32_t>> events;  // with their parameters
        CONDITION condition;
    };
    const CHANGE changes[] = {
        {{{"DisablePowerSave", 0}}, {.powerSaving = false}},
        {{{"DisablePowerSave", 0}, {"EnablePowerSave", 0}}, {}},
        {{{"prop_prohibitfromaccess", 0}}, {.romAccess = false}},
        {{{"ae_ignore_release", 1}}, {.releaseIgnoresExposure = true}},
        {{{"ae_ignore_release", 1}, {"ae_ignore_release", 0}}, {}},
        {{{"SaveTuneToFile", 0}, {"SaveTune2ToFile", 0}, {"SaveAETuneToFile", 0}},
         {.tuneSaves = 3}},
        {{{"dl_ExecJustNow", 0}}, {.sweeps = 1}},
        {{{"FA_OpenSpecialMenu", 0}}, {.specialMenu = true}},
        {{{"FA_OpenSpecialMenu", 0}, {"FA_CloseSpecialMenu", 0}}, {}},
        {{{"FA_ExtFlashTest", 0}, {"FA_SendMCellSetButton", 0}, {"FA_SendMCellSetButton", 0}},
         {.strobeTests = 1, .setButtons = 2}},
        {{{"FA_Overwrite_DispDial_Result", 7},
          {"FA_SendAccStartCommand", 0},
          {"FA_IncreaseGap", 0}},
         {.dialClickGap = 1, .dispDialResult = 7, .accTestResult = 1}},
        {{{"FA_SendAccStartCommand", 0}, {"FA_IncreaseGap", 0}, {"FA_GuiFactoryClearResult", 0}},
         {.dispDialResult = 0}},
        {{{"FA_Set_AudioVolumeOut", 5}}, {.soundVolume = 5}},
        {{{"FA_SetReleaseModeForSR", 0}, {"FA_SetAccumulateTimeForSR", 84}},
         {.slitRolling = true, .accumulateTime = 84}},
        {{{"FA_SetReleaseModeForSR", 0},
          {"FA_SetAccumulateTimeForSR", 84},
          {"FA_ClearReleaseModeForSR", 0}},
         {}},
        {{{"FactDisp_TurnOffDisplay", 0}}, {.displayOn = false}},
        {{{"FactDisp_TurnOffDisplay", 0}, {"FactDisp_TurnOnDisplay", 0}}, {}},
        {{{"DisableBootDisk", 0}}, {.bootDisk = false}},
        {{{"DisableBootDisk", 0}, {"EnableBootDisk", 0}}, {}},
    };
    for (const CHANGE& change : changes) {
        Reset();
        for (const auto& [pszEvent, parameter] : change.events) {
            RunEvent(pszEvent, parameter);
        }
        EXPECT_TRUE(Condition() == change.condition) << change.events.back().first;
    }
    EXPECT_EQ(RunEvent("FA_GetIcuCheckSum"), 0x5A17C3E9);
    RunEvent("FA_Overwrite_DispDial_Result", 3);
    RunEvent("FA_IncreaseGap");
    EXPECT_EQ(RunEvent("FA_Get_DispDial_Result"), 3);
    EXPECT_EQ(RunEvent("FA_Get_AccTest_Result"), 0);
    EXPECT_EQ(RunEvent("FA_Get_SDialAdj_Result"), 1);
}

TEST_F(BodyTest, WholeBodyIsResetPartByPart) {
    RunEvent("FA_ResetCalendar");
    EXPECT_EQ(Calendar(), (std::array<std::int32_t, 9>{0, 0, 0, 1, 1, 2000, 6, 0, 0}));

    // The unique ID is the EEPROM's words 96 to 105, the low byte first.
    for (std::size_t word = 0; word < EEPROM_WORDS; ++word) {
        Eeprom()[word] = static_cast<std::uint16_t>(0x100 * (word + 1) + word);
    }
    RunEvent("FA_CopyVistaUniqueID");
    EXPECT_EQ(
        Hex(WorkingValue(0x100000C)),
        "60 61 61 62 62 63 63 64 64 65 65 66 66 67 67 68 68 69 69 6a");

    for (const std::uint32_t id : {0x203FFFFU, 0x2040000U, 0x207FFFFU, 0x2080000U, 0x80000000U}) {
        SetProperty(id, {1});
        CPublicProperty().Set(id, 1, "\2");
    }
    RunEvent("FA_SetDefaultSetting");
    PowerCycle();
    EXPECT_EQ(
        SavedProperties(), (std::map<std::uint32_t, Bytes>{{0x203FFFF, {1}}, {0x2080000, {1}}}))
        << "the others are settings";

    std::uint32_t size = 0;
    std::int32_t word = 0;
    CEventProcedure().ExecuteAndGetSize("FA_GetCalendar", &size, &word);
    EXPECT_EQ(size, 36U) << "nine words";
    CEventProcedure().ExecuteAndGetSize("FA_GetCameraLogStart", &size, &word);
    RunEvent("FA_GetCameraLogEnd");
    ExpectRefused([] { RunEvent("FA_GetCameraLogEnd"); });
}

TEST_F(BodyTest, LensAnswersInItsBlockUntilTheMpuIsReset) {
    CSLRMonitor monitor;
    monitor.OpenSession();
    monitor.ChangeBank(BANK_FC);
    SetLensAnswer(9);
    SetMemory(BANK_FC, 0, {0x07, 0x12, 0x80});
    monitor.CallFunction(15);
    EXPECT_EQ(Hex(Memory(BANK_FC, 0, 9)), "07 12 80 00 00 00 00 09 00");
    SetMemory(BANK_FC, 0, {0x02, 0x12, 0x80});
    monitor.CallFunction(118);
    EXPECT_EQ(Condition().mpuResets, 1U);
    ExpectRefused([&] { monitor.CallFunction(15); });
    Reset();
    EXPECT_EQ(Hex(Memory(BANK_FC, 0, 3)), "00 00 00");
}

TEST_F(BodyTest, InstallationFolderAndLinesBeginAsTheyShould) {
    for (const std::string folder : {"desk", "desk/"}) {
        SetInstallationFolder(folder);
        EXPECT_EQ(CFilePath().GetPropertyFullPath("a.ini"), "desk/a.ini");
    }
    SetInstallationFolder("desk\\");
    EXPECT_EQ(CFilePath().GetPropertyFullPath("a.ini"), "desk\\a.ini");
    std::string moment = _gt(10);
    std::replace_if(
        moment.begin(), moment.end(), [](char c) { return c >= '0' && c <= '9'; }, '0');
    EXPECT_EQ(moment, "0000/00/00 00:00:00.000 ");
}

// --- What is told of a call ---

TEST_F(BodyTest, AnswersTakeNoMoreRoomThanTheCallerHas) {
    CALL answer;
    answer.received = Bytes(16, 7);
    answer.sizeLeft = 3;
    AnswerCalls([&](const CALL&) { return answer; });
    std::array<std::uint8_t, 16> data{};
    CPublicProperty().Get(0x1000006, 8, data.data());
    EXPECT_EQ(Hex({data.begin(), data.end()}).substr(0, 29), "07 07 07 07 07 07 07 07 00 00");
    EXPECT_EQ(CFilePath().GetPropertyFullPath("a"), std::string(16, 7));
    AnswerCalls({});

    // Of what the body gives a call tells as much as it says is left.
    RecordCalls(true);
    ScriptReturnSize(36, 3);
    std::uint32_t size = 36;
    std::int32_t word = 0;
    std::array<std::uint8_t, 36> calendar{};
    CEventProcedure event;
    event.ExecuteAndGetSize("FA_GetCalendar", &size, &word);
    event.GetReturnData(calendar.data(), &size, &word);
    EXPECT_EQ(Calls().back().received.size(), 3U);
    ClearCalls();
    EXPECT_EQ(CallCount(), 0U);
}

TEST_F(BodyTest, CallsTellWhatWentInAndWhatWasThrown) {
    RecordCalls(true);
    CEventProcedure event;
    event.PushParameterAsInteger(5, 2);
    EXPECT_EQ(Calls().back().id, 2U);
    const Bytes block(Link::BLOCK_LIMIT);
    event.PushParameterAsSafeArray(block.data(), Link::BLOCK_LIMIT);
    EXPECT_EQ(Calls().back().sent.size(), Link::BLOCK_LIMIT);
    SetProperty(1, block);
    Bytes received(Link::BLOCK_LIMIT);
    CPublicProperty().Get(1, Link::BLOCK_LIMIT, received.data());
    EXPECT_EQ(Calls().back().received.size(), Link::BLOCK_LIMIT);

    AnswerCalls([](const CALL&) -> std::optional<CALL> { throw 'x'; });
    EXPECT_THROW(event.ClearParameters(), char);
    EXPECT_EQ(
        Calls().back().failure,
        (FAILURE{.kind = FAULT::STANDARD_EXCEPTION, .code = 0, .message = "unknown exception"}));
}

}  // namespace
