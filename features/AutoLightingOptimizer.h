// Auto lighting optimizer: its switch.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Switches the optimizer off; no argument.
std::int32_t DisableAutoLightingOptimizer(void* argument) noexcept;
/// Switches the optimizer on; no argument.
std::int32_t EnableAutoLightingOptimizer(void* argument) noexcept;
/// Saves the switch in the camera; no argument.
std::int32_t SaveAutoLightingOptimizer(void* argument) noexcept;

void RegisterAutoLightingOptimizer(EVENT_PROC_REGISTER_FUNC callback);
