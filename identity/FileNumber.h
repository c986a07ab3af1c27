// File number: the number that the camera counts its files with.
#pragma once

#include <cstdint>

/// Writes 0 to the camera's file number; no argument.
std::int32_t ResetFileNumber(void* argument) noexcept;
/// Saves the file number in the camera; no argument.
std::int32_t SaveFileNumber(void* argument) noexcept;
