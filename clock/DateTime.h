// Date and time: the camera's calendar clock and its settings. Every value passes unchanged: no
// range is tested, no year or month is shifted.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/Registration.h"

/// A moment in the order of the host, host byte order. The camera's own record has the opposite
/// order.
struct DATE_TIME_T {
    std::int32_t Year;  ///< as the camera counts it
    std::int32_t Month;
    std::int32_t Day;
    std::int32_t Hour;
    std::int32_t Minute;
    std::int32_t Second;
};
static_assert(sizeof(DATE_TIME_T) == 24);
static_assert(offsetof(DATE_TIME_T, Year) == 0);
static_assert(offsetof(DATE_TIME_T, Month) == 4);
static_assert(offsetof(DATE_TIME_T, Day) == 8);
static_assert(offsetof(DATE_TIME_T, Hour) == 12);
static_assert(offsetof(DATE_TIME_T, Minute) == 16);
static_assert(offsetof(DATE_TIME_T, Second) == 20);

/// Fills a DATE_TIME_T from the camera's clock; a failure leaves it as it was.
std::int32_t GetDateTime(void* argument) noexcept;
/// Sets the camera's clock from a DATE_TIME_T.
std::int32_t SetDateTime(void* argument) noexcept;
/// Makes the camera reset its clock; no argument. A failing event gives its word.
std::int32_t ResetDateTime(void* argument) noexcept;

// The settings are 4 bytes each, passed as they stand. Setting one does not save it.

std::int32_t SetDateDisplayFormat(void* argument) noexcept;
std::int32_t GetDateDisplayFormat(void* argument) noexcept;
std::int32_t SaveDateDisplayFormat(void* argument) noexcept;

std::int32_t SetTimeZone(void* argument) noexcept;
std::int32_t GetTimeZone(void* argument) noexcept;
std::int32_t SaveTimeZone(void* argument) noexcept;

/// There is no operation that reads the summer time setting.
std::int32_t SetSummertimeSetting(void* argument) noexcept;
std::int32_t SaveSummertimeSetting(void* argument) noexcept;

void RegisterDateTime(EVENT_PROC_REGISTER_FUNC callback);
