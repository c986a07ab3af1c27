// Slit rolling mode: a release mode of the camera with an accumulate time.
#pragma once

#include <cstdint>

/// Turns the mode on and sends the accumulate time of an unsigned 32-bit integer, at most 84. A
/// value above it ends in code 3 with the mode on and no time set; nothing is undone on a failure.
std::int32_t SetSlitRollingMode(void* argument) noexcept;
/// Turns the mode off; no argument.
std::int32_t ClearSlitRollingMode(void* argument) noexcept;
