// Video system: one camera setting whose values are the camera's own.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Writes the 4 bytes of the argument to the camera as they stand.
std::int32_t SetVideoSystem(void* argument) noexcept;
/// Fills 4 bytes with the camera's as they stand.
std::int32_t GetVideoSystem(void* argument) noexcept;
/// Saves the video system in the camera; no argument.
std::int32_t SaveVideoSystem(void* argument) noexcept;

void RegisterVideoSystem(EVENT_PROC_REGISTER_FUNC callback);
