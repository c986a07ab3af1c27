// Body ID: the number that identifies one camera body.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/Registration.h"

/// The body number in groups of its decimal digits, host byte order. A value reads back unchanged
/// while each group keeps to its range; nothing tests the ranges.
struct BODY_ID_T {
    std::uint32_t ManufactureMonth;
    std::uint32_t CodePair;       ///< 0 to 99
    std::uint32_t CodeDigitHigh;  ///< 0 to 9
    std::uint32_t CodeDigitLow;   ///< 0 to 9
    std::uint32_t SerialNo;       ///< 0 to 999999
};
static_assert(sizeof(BODY_ID_T) == 20);
static_assert(offsetof(BODY_ID_T, CodePair) == 4);
static_assert(offsetof(BODY_ID_T, CodeDigitHigh) == 8);
static_assert(offsetof(BODY_ID_T, CodeDigitLow) == 12);
static_assert(offsetof(BODY_ID_T, SerialNo) == 16);

/// Packs a BODY_ID_T, writes it to the camera and shows it in the shared block.
std::int32_t SetBodyID(void* argument) noexcept;
/// Reads the body ID, shows it in the shared block and unpacks it into a BODY_ID_T.
std::int32_t GetBodyID(void* argument) noexcept;
/// Saves the body ID in the camera; no argument.
std::int32_t SaveBodyID(void* argument) noexcept;

void RegisterBodyID(EVENT_PROC_REGISTER_FUNC callback);
