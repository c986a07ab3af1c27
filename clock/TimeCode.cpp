// Six properties written to their first values, or saved as one list.
#include "clock/TimeCode.h"

#include <cstddef>
#include <iterator>

#include "frame/OperationFrame.h"
#include "link/BodyLink.h"

// No property of the time code has the id 0x2070016.
static const std::uint32_t PROP_TIMECODE = 0x2070012;
static const std::uint32_t PROP_TIMECODE_BASEINFO = 0x2070013;
static const std::uint32_t PROP_TIMECODE_WORD_14 = 0x2070014;
static const std::uint32_t PROP_TIMECODE_WORD_15 = 0x2070015;
static const std::uint32_t PROP_TIMECODE_WORD_17 = 0x2070017;
static const std::uint32_t PROP_TIMECODE_WORD_18 = 0x2070018;

static LogBuffer s_byLogBuffer;
static CLogStream s_LogStream(s_byLogBuffer);

namespace {

struct TIMECODE_T {
    std::uint32_t Value;
};
static_assert(sizeof(TIMECODE_T) == 4);

// A broken-down time.
struct TM_T {
    std::int32_t Second;
    std::int32_t Minute;
    std::int32_t Hour;
    std::int32_t Day;      // from 1
    std::int32_t Month;    // from 0
    std::int32_t Year;     // in full, not from 1900
    std::int32_t WeekDay;  // from 0, Sunday
    std::int32_t YearDay;  // from 0
    std::int32_t SummerTimeFlag;
    std::int32_t Unused;
};
static_assert(sizeof(TM_T) == 40);
static_assert(offsetof(TM_T, Second) == 0);
static_assert(offsetof(TM_T, Minute) == 4);
static_assert(offsetof(TM_T, Hour) == 8);
static_assert(offsetof(TM_T, Day) == 12);
static_assert(offsetof(TM_T, Month) == 16);
static_assert(offsetof(TM_T, Year) == 20);
static_assert(offsetof(TM_T, WeekDay) == 24);
static_assert(offsetof(TM_T, YearDay) == 28);
static_assert(offsetof(TM_T, SummerTimeFlag) == 32);
static_assert(offsetof(TM_T, Unused) == 36);

struct TIMECODE_BASEINFO_T {
    TIMECODE_T Timecode;
    TM_T BaseTime;
};
static_assert(sizeof(TIMECODE_BASEINFO_T) == 44);
static_assert(offsetof(TIMECODE_BASEINFO_T, Timecode) == 0);
static_assert(offsetof(TIMECODE_BASEINFO_T, BaseTime) == 4);

struct TIMECODE_PROPERTY {
    std::uint32_t id;
    std::uint32_t size;  // bytes, at most those of a TIMECODE_BASEINFO_T
    const void* pResetValue;
};

constexpr TIMECODE_T RESET_TIMECODE = {0};
// Saturday, 1 January 2000, 00:00:00.
constexpr TM_T RESET_BASE_TIME = {
    .Second = 0,
    .Minute = 0,
    .Hour = 0,
    .Day = 1,
    .Month = 0,
    .Year = 2000,
    .WeekDay = 6,
    .YearDay = 0,
    .SummerTimeFlag = 0,
    .Unused = 0,
};
constexpr TIMECODE_BASEINFO_T RESET_BASEINFO = {RESET_TIMECODE, RESET_BASE_TIME};
constexpr std::uint32_t RESET_WORD_14 = 1;
constexpr std::uint32_t RESET_OTHER_WORD = 0;

// In the order in which each operation goes through them.
constexpr TIMECODE_PROPERTY TIMECODE_PROPERTIES[] = {
    {PROP_TIMECODE, sizeof(RESET_TIMECODE), &RESET_TIMECODE},
    {PROP_TIMECODE_BASEINFO, sizeof(RESET_BASEINFO), &RESET_BASEINFO},
    {PROP_TIMECODE_WORD_14, sizeof(RESET_WORD_14), &RESET_WORD_14},
    {PROP_TIMECODE_WORD_15, sizeof(RESET_OTHER_WORD), &RESET_OTHER_WORD},
    {PROP_TIMECODE_WORD_17, sizeof(RESET_OTHER_WORD), &RESET_OTHER_WORD},
    {PROP_TIMECODE_WORD_18, sizeof(RESET_OTHER_WORD), &RESET_OTHER_WORD},
};

}  // namespace

static void WriteRecordSizes() {
    BeginLine(s_LogStream) << "[FUNC] TIMECODE_T           - " << sizeof(TIMECODE_T) << '\n';
    BeginLine(s_LogStream) << "[FUNC] TM_T                 - " << sizeof(TM_T) << '\n';
    BeginLine(s_LogStream) << "[FUNC] TIMECODE_BASEINFO_T  - " << sizeof(TIMECODE_BASEINFO_T)
                           << '\n';
    FlushLog(s_LogStream, s_byLogBuffer);
}

// The values read serve nothing, but a read that fails must end the operation before any write.
std::int32_t ResetTimeCode(void* /*argument*/) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "ResetTimeCode"}, [](auto& property) {
            WriteRecordSizes();
            for (const TIMECODE_PROPERTY& row : TIMECODE_PROPERTIES) {
                TIMECODE_BASEINFO_T value{};
                property.Get(row.id, row.size, &value);
            }
            for (const TIMECODE_PROPERTY& row : TIMECODE_PROPERTIES) {
                property.Set(row.id, row.size, row.pResetValue);
            }
        });
}

std::int32_t SaveTimeCode(void* /*argument*/) noexcept {
    return RunOperation<CPublicProperty>(
        {s_LogStream, s_byLogBuffer, "SaveTimeCode"}, [](auto& property) {
            property.InitializeList(std::size(TIMECODE_PROPERTIES));
            for (const TIMECODE_PROPERTY& row : TIMECODE_PROPERTIES) {
                property.PushList(row.id);
            }
            property.SaveList();
        });
}
