// Touch sensor: its switch. The camera holds 1 for on.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Switches the touch sensor off; no argument.
std::int32_t DisableTouchSensor(void* argument) noexcept;
/// Switches the touch sensor on; no argument.
std::int32_t EnableTouchSensor(void* argument) noexcept;
/// Saves the switch in the camera; no argument.
std::int32_t SaveTouchSensor(void* argument) noexcept;

void RegisterTouchSensor(EVENT_PROC_REGISTER_FUNC callback);
