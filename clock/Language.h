// Language and limit language: two camera settings whose codes are the camera's own. Neither
// touches the other.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Writes the 4 bytes of the argument to the camera's language as they stand.
std::int32_t SetLanguage(void* argument) noexcept;
/// Fills 4 bytes with the camera's language as they stand.
std::int32_t GetLanguage(void* argument) noexcept;
/// Saves the language in the camera; no argument.
std::int32_t SaveLanguage(void* argument) noexcept;

/// Writes the 4 bytes of the argument to the camera's limit language as they stand.
std::int32_t SetLimitLanguage(void* argument) noexcept;
/// Fills 4 bytes with the camera's limit language as they stand.
std::int32_t GetLimitLanguage(void* argument) noexcept;
/// Saves the limit language in the camera; no argument.
std::int32_t SaveLimitLanguage(void* argument) noexcept;

void RegisterLanguage(EVENT_PROC_REGISTER_FUNC callback);
