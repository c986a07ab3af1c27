// Clock and locale: date and time, time code, language, video system.
#include <array>

#include "clock/DateTime.h"
#include "tests/support/Support.h"

namespace {

using ClockTest = ModuleTest;

// --- Settings of 4 bytes ---

struct SETTING {
    std::string name;
    std::string id;
    std::string nullMessage;
    bool bReadable = true;
};

const SETTING SETTINGS[] = {
    {"DateDisplayFormat", "0x2040005", "[VALU] pDateDisplayFormat"},
    {"TimeZone", "0x205001F", "[VALU] pTimeZone"},
    {"SummertimeSetting", "0x2050020", "[VALU] pSummertimeSetting", false},
    {"Language", "0x2040002", "[VALU] pLanguage"},
    {"LimitLanguage", "0x1000012", "[VALU] pLanguage"},
    {"VideoSystem", "0x2040003", "[VALU] pVideoSystem"},
};

TEST_F(ClockTest, SettingsPassAnyValueUnchanged) {
    for (const auto& [name, id, nullMessage, bReadable] : SETTINGS) {
        std::uint32_t value = 0xFEDCBA98;
        Expect("Set" + name, 0, {"Set " + id + " 4: 98 ba dc fe"}, Frame("Set" + name, 0), &value);
        Expect("Set" + name, 3, {}, FailedFrame("Set" + name, 3, nullMessage));
        if (bReadable) {
            std::array<std::uint32_t, 2> read = {0, 77};
            Expect("Get" + name, 0, {"Get " + id + " 4"}, Frame("Get" + name, 0), read.data());
            EXPECT_THAT(read, ElementsAre(0xFEDCBA98, 77));
            Expect("Get" + name, 3, {}, FailedFrame("Get" + name, 3, nullMessage));
        }
    }
}

// A save constructs nothing, so that a failing construction leaves it alone.
TEST_F(ClockTest, SettingsAreSavedWithoutAnObject) {
    SimulatedBody::FailConstruction(1);
    for (const SETTING& setting : SETTINGS) {
        const std::string save = "Save" + setting.name;
        std::string log = Frame(save, 0);
        if (setting.name == "DateDisplayFormat") {
            log.insert(log.rfind(" - "), "t");  // closes under an odd name
        }
        Expect(save, 0, {"Save " + setting.id}, log);
    }
}

// --- Date and time ---

// A month of 99 shows that nothing is tested.
const DATE_TIME_T DATE_TIME = {2009, 99, 31, 23, 59, 58};

TEST_F(ClockTest, SetDateTimeSendsTheFieldsInOppositeOrder) {
    DATE_TIME_T dateTime = DATE_TIME;
    Expect(
        "SetDateTime", 0,
        {"ClearParameters",
         "PushParameterAsSafeArray 36: 3a 00 00 00 3b 00 00 00 17 00 00 00 1f 00 00 00 "
         "63 00 00 00 d9 07 00 00 00 00 00 00 00 00 00 00 00 00 00 00",
         "Execute FA_SetCalendar 0"},
        Frame("SetDateTime", 0, Frame("_GetCalendar", 0)), &dateTime);
    Expect("SetDateTime", 3, {}, FailedFrame("SetDateTime", 3, "[VALU] pDateTime"));
}

TEST_F(ClockTest, GetDateTimeTakesSixWordsOfTheCalendar) {
    SimulatedBody::Calendar() = {58, 59, 23, 31, 99, 2009, 71, 72, 73};
    std::array<std::int32_t, 9> read = {};
    Expect(
        "GetDateTime", 0, {"ClearParameters", "ExecuteAndGetData FA_GetCalendar 36"},
        Frame("GetDateTime", 0, Frame("_GetCalendar", 0)), read.data());
    EXPECT_THAT(read, ElementsAre(2009, 99, 31, 23, 59, 58, 0, 0, 0));
    Expect("GetDateTime", 3, {}, FailedFrame("GetDateTime", 3, "[VALU] pDateTime"));
}

TEST_F(ClockTest, OnlyTheResetLooksAtTheEventsWord) {
    SimulatedBody::ScriptEvent("FA_GetCalendar", {7});
    SimulatedBody::ScriptEvent("FA_SetCalendar", {7});
    SimulatedBody::ScriptEvent("FA_ResetCalendar", {2, 7});
    DATE_TIME_T dateTime = DATE_TIME;
    EXPECT_EQ(Run("SetDateTime", &dateTime), 0);
    EXPECT_EQ(Run("GetDateTime", &dateTime), 0);
    const std::vector<std::string> reset = {"Execute FA_ResetCalendar 0"};
    Expect("ResetDateTime", 0, reset, Frame("ResetDateTime", 0));
    Expect("ResetDateTime", 7, reset, FailedFrame("ResetDateTime", 7, "[EVNT] FA_ResetCalendar"));
}

// The camera's data have arrived when the call fails: they must not reach the host all the same.
TEST_F(ClockTest, AFailingCalendarIsReportedTwiceAndLeavesTheRecord) {
    for (const std::string verb : {"Get", "Set"}) {
        SimulatedBody::FailEvent(
            "FA_" + verb + "Calendar", {.moment = SimulatedBody::MOMENT::AFTER});
        DATE_TIME_T dateTime = DATE_TIME;
        EXPECT_EQ(Run(verb + "DateTime", &dateTime), LINK_FAILURE);
        EXPECT_EQ(BytesOf(dateTime), BytesOf(DATE_TIME));
        EXPECT_EQ(
            Log(), FailedFrame(
                       verb + "DateTime", LINK_FAILURE, "[FUNC] _GetCalendar",
                       FailedFrame("_GetCalendar", LINK_FAILURE, LINK_MESSAGE)));
    }
}

// --- Time code ---

const std::string RECORD_SIZES =
    "> [FUNC] TIMECODE_T           - 4\n"
    "> [FUNC] TM_T                 - 40\n"
    "> [FUNC] TIMECODE_BASEINFO_T  - 44\n";

const std::string BASEINFO_SET =
    "Set 0x2070013 44: 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 01 00 00 00 00 00 00 00 "
    "d0 07 00 00 06 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";

TEST_F(ClockTest, ResetTimeCodeReadsAllThenWritesAllUntilACallFails) {
    std::vector<std::string> calls = {
        "Get 0x2070012 4",
        "Get 0x2070013 44",
        "Get 0x2070014 4",
        "Get 0x2070015 4",
        "Get 0x2070017 4",
        "Get 0x2070018 4",
        "Set 0x2070012 4: 00 00 00 00",
        BASEINFO_SET,
        "Set 0x2070014 4: 01 00 00 00",
        "Set 0x2070015 4: 00 00 00 00",
        "Set 0x2070017 4: 00 00 00 00",
        "Set 0x2070018 4: 00 00 00 00",
    };
    SimulatedBody::SetProperty(0x2070013, SimulatedBody::Bytes(44, 0xEE));
    Expect("ResetTimeCode", 0, calls, Frame("ResetTimeCode", 0, RECORD_SIZES));
    for (; !calls.empty(); calls.pop_back()) {
        SimulatedBody::FailCall(static_cast<std::uint32_t>(calls.size()));
        calls.back() += " failed";
        Expect(
            "ResetTimeCode", LINK_FAILURE, calls,
            FailedFrame("ResetTimeCode", LINK_FAILURE, LINK_MESSAGE, RECORD_SIZES));
    }
}

TEST_F(ClockTest, SaveTimeCodeSavesOneListOfSix) {
    Expect(
        "SaveTimeCode", 0,
        {"InitializeList 6", "PushList 0x2070012", "PushList 0x2070013", "PushList 0x2070014",
         "PushList 0x2070015", "PushList 0x2070017", "PushList 0x2070018", "SaveList"},
        Frame("SaveTimeCode", 0));
}

}  // namespace
