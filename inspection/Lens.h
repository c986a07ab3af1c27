// Lens: whether it is active.
#pragma once

#include <cstdint>

/// Succeeds if the lens is active, and ends in code 35 if it is not; no argument.
std::int32_t CheckLensActivity(void* argument) noexcept;
