// The calendar read and set by events, and three settings beside it.
#include "clock/DateTime.h"

#include "frame/OperationFrame.h"
#include "frame/OperationShapes.h"
#include "link/BodyLink.h"

static const PROPERTY PROP_DATE_DISPLAY_FORMAT = {0x2040005, 4, "pDateDisplayFormat"};
static const PROPERTY PROP_TIME_ZONE = {0x205001F, 4, "pTimeZone"};
static const PROPERTY PROP_SUMMERTIME_SETTING = {0x2050020, 4, "pSummertimeSetting"};

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

namespace {

// The record of the camera's calendar events.
struct CALENDAR_T {
    std::int32_t Second;
    std::int32_t Minute;
    std::int32_t Hour;
    std::int32_t Day;
    std::int32_t Month;
    std::int32_t Year;
    std::int32_t Unused[3];  // sent as zero, never read
};
static_assert(sizeof(CALENDAR_T) == 36);
static_assert(offsetof(CALENDAR_T, Second) == 0);
static_assert(offsetof(CALENDAR_T, Minute) == 4);
static_assert(offsetof(CALENDAR_T, Hour) == 8);
static_assert(offsetof(CALENDAR_T, Day) == 12);
static_assert(offsetof(CALENDAR_T, Month) == 16);
static_assert(offsetof(CALENDAR_T, Year) == 20);
static_assert(offsetof(CALENDAR_T, Unused) == 24);

CALENDAR_T ToCalendar(const DATE_TIME_T& dateTime) {
    CALENDAR_T calendar{};
    calendar.Year = dateTime.Year;
    calendar.Month = dateTime.Month;
    calendar.Day = dateTime.Day;
    calendar.Hour = dateTime.Hour;
    calendar.Minute = dateTime.Minute;
    calendar.Second = dateTime.Second;
    return calendar;
}

DATE_TIME_T ToDateTime(const CALENDAR_T& calendar) {
    return {calendar.Year, calendar.Month,  calendar.Day,
            calendar.Hour, calendar.Minute, calendar.Second};
}

std::int32_t _GetCalendar(CALENDAR_T* pCalendar) noexcept {
    return RunOperation<CEventProcedure>(
        {s_LogStream, s_byLogBuffer, "_GetCalendar"}, [&](auto& procedure) {
            CheckPointer(pCalendar, "(void*)pCalendar");
            procedure.ClearParameters();
            std::uint32_t unSize = sizeof(CALENDAR_T);
            std::int32_t nResult = 0;  // not looked at
            procedure.ExecuteAndGetData("FA_GetCalendar", pCalendar, &unSize, &nResult);
        });
}

// Goes by the name of the other one in the log.
std::int32_t _SetCalendar(const CALENDAR_T* pCalendar) noexcept {
    return RunOperation<CEventProcedure>(
        {s_LogStream, s_byLogBuffer, "_GetCalendar"}, [&](auto& procedure) {
            CheckPointer(pCalendar, "(void*)pCalendar");
            procedure.ClearParameters();
            procedure.PushParameterAsSafeArray(pCalendar, sizeof(CALENDAR_T));
            std::int32_t nResult = 0;  // not looked at
            procedure.Execute("FA_SetCalendar", &nResult);
        });
}

}  // namespace

std::int32_t GetDateTime(void* argument) noexcept {
    return RunOperation({s_LogStream, s_byLogBuffer, "GetDateTime"}, [&] {
        auto* pDateTime = static_cast<DATE_TIME_T*>(argument);
        CheckPointer(pDateTime, "pDateTime");
        CALENDAR_T calendar{};
        CheckNested(_GetCalendar(&calendar), "_GetCalendar");
        *pDateTime = ToDateTime(calendar);
    });
}

std::int32_t SetDateTime(void* argument) noexcept {
    return RunOperation({s_LogStream, s_byLogBuffer, "SetDateTime"}, [&] {
        const auto* pDateTime = static_cast<const DATE_TIME_T*>(argument);
        CheckPointer(pDateTime, "pDateTime");
        const CALENDAR_T calendar = ToCalendar(*pDateTime);
        CheckNested(_SetCalendar(&calendar), "_GetCalendar");
    });
}

std::int32_t ResetDateTime(void* /*argument*/) noexcept {
    return RunTestedEvent(
        {s_LogStream, s_byLogBuffer, "ResetDateTime"}, "FA_ResetCalendar", 0,
        "[EVNT] FA_ResetCalendar");
}

std::int32_t SetDateDisplayFormat(void* argument) noexcept {
    return WriteProperty(
        {s_LogStream, s_byLogBuffer, "SetDateDisplayFormat"}, PROP_DATE_DISPLAY_FORMAT, argument);
}

std::int32_t GetDateDisplayFormat(void* argument) noexcept {
    return ReadProperty(
        {s_LogStream, s_byLogBuffer, "GetDateDisplayFormat"}, PROP_DATE_DISPLAY_FORMAT, argument);
}

// The closing line has one "t" too many.
std::int32_t SaveDateDisplayFormat(void* /*argument*/) noexcept {
    return SaveProperty(
        {s_LogStream, s_byLogBuffer, "SaveDateDisplayFormat", "[FUNC] SaveDateDisplayFormatt"},
        PROP_DATE_DISPLAY_FORMAT.id);
}

std::int32_t SetTimeZone(void* argument) noexcept {
    return WriteProperty({s_LogStream, s_byLogBuffer, "SetTimeZone"}, PROP_TIME_ZONE, argument);
}

std::int32_t GetTimeZone(void* argument) noexcept {
    return ReadProperty({s_LogStream, s_byLogBuffer, "GetTimeZone"}, PROP_TIME_ZONE, argument);
}

std::int32_t SaveTimeZone(void* /*argument*/) noexcept {
    return SaveProperty({s_LogStream, s_byLogBuffer, "SaveTimeZone"}, PROP_TIME_ZONE.id);
}

std::int32_t SetSummertimeSetting(void* argument) noexcept {
    return WriteProperty(
        {s_LogStream, s_byLogBuffer, "SetSummertimeSetting"}, PROP_SUMMERTIME_SETTING, argument);
}

std::int32_t SaveSummertimeSetting(void* /*argument*/) noexcept {
    return SaveProperty(
        {s_LogStream, s_byLogBuffer, "SaveSummertimeSetting"}, PROP_SUMMERTIME_SETTING.id);
}

void RegisterDateTime(EVENT_PROC_REGISTER_FUNC callback) {
    static const REGISTRATION registrations[] = {
        {"GetDateTime", GetDateTime},
        {"SetDateTime", SetDateTime},
        {"ResetDateTime", ResetDateTime},
        {"SetDateDisplayFormat", SetDateDisplayFormat},
        {"GetDateDisplayFormat", GetDateDisplayFormat},
        {"SaveDateDisplayFormat", SaveDateDisplayFormat},
        {"SetTimeZone", SetTimeZone},
        {"GetTimeZone", GetTimeZone},
        {"SaveTimeZone", SaveTimeZone},
        {"SetSummertimeSetting", SetSummertimeSetting},
        {"SaveSummertimeSetting", SaveSummertimeSetting},
    };
    RegisterEventProcs(callback, registrations);
}
