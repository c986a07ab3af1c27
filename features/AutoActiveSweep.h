// Auto active sweep: its switch, and a sweep at once.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Switches the sweep off; no argument.
std::int32_t DisableAutoActiveSweep(void* argument) noexcept;
/// Switches the sweep on; no argument.
std::int32_t EnableAutoActiveSweep(void* argument) noexcept;
/// Saves the switch in the camera; no argument.
std::int32_t SaveAutoActiveSweep(void* argument) noexcept;
/// Starts a sweep at once; no argument. What the sweep itself reports is not looked at.
std::int32_t ExecuteAutoActiveSweep(void* argument) noexcept;

void RegisterAutoActiveSweep(EVENT_PROC_REGISTER_FUNC callback);
