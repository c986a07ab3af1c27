// Battery: whether its status is one to work with.
#pragma once

#include <cstdint>

/// Succeeds with the battery status 0 or 2, and ends in code 35 with any other; no argument.
std::int32_t CheckBatteryStatus(void* argument) noexcept;
