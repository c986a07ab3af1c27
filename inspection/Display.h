// Display control: the camera's display off and on, and a colour bar chart on it. Each operation
// fails with the result word of its event.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Turns the display off; no argument.
std::int32_t TurnOffDisplay(void* argument) noexcept;
/// Turns the display on; no argument.
std::int32_t TurnOnDisplay(void* argument) noexcept;
/// Shows the colour bar chart; no argument.
std::int32_t OutputColorBarChart(void* argument) noexcept;

void RegisterDisplay(EVENT_PROC_REGISTER_FUNC callback);
