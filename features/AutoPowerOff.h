// Auto power off: switch and time in one camera property. 0 is off, any other value is the time; it
// passes through without conversion or range test.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Fills an unsigned 32-bit integer with the time.
std::int32_t GetAutoPowerOffTime(void* argument) noexcept;
/// Writes the time from an unsigned 32-bit integer.
std::int32_t SetAutoPowerOffTime(void* argument) noexcept;
/// Writes 0; no argument.
std::int32_t DisableAutoPowerOff(void* argument) noexcept;
/// Writes 60, whatever time stood there before; no argument.
std::int32_t EnableAutoPowerOff(void* argument) noexcept;
/// Saves the time in the camera; no argument.
std::int32_t SaveAutoPowerOff(void* argument) noexcept;

void RegisterAutoPowerOff(EVENT_PROC_REGISTER_FUNC callback);
