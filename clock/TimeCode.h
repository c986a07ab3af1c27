// Time code: six camera properties that are reset and saved together.
#pragma once

#include <cstdint>

/// Reads the six properties, then writes their reset values: a base time of 1 January 2000; no
/// argument. A failing read leaves all as they were, a failing write those before it reset.
std::int32_t ResetTimeCode(void* argument) noexcept;
/// Saves the six properties in the camera at once; no argument.
std::int32_t SaveTimeCode(void* argument) noexcept;
