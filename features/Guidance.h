// Guidance: its switch. The camera holds 1 for off.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Switches guidance off; no argument.
std::int32_t DisableGuidance(void* argument) noexcept;
/// Switches guidance on; no argument.
std::int32_t EnableGuidance(void* argument) noexcept;
/// Saves the switch in the camera; no argument.
std::int32_t SaveGuidance(void* argument) noexcept;

void RegisterGuidance(EVENT_PROC_REGISTER_FUNC callback);
