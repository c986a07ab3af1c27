// File prefix: the four characters that begin the names of a body's files.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Bytes of a prefix: its characters, then zero bytes.
constexpr std::uint32_t FILE_PREFIX_SIZE = 8;

/// Computes the prefix from the body's serial number and writes it to the camera; no argument. Code
/// 35 for a serial number from 103680 on; a failure of GetBodyID comes back as it is.
std::int32_t SetFilePrefix(void* argument) noexcept;
/// Fills FILE_PREFIX_SIZE bytes with the camera's, whatever they hold.
std::int32_t GetFilePrefix(void* argument) noexcept;
/// Saves the prefix in the camera; no argument.
std::int32_t SaveFilePrefix(void* argument) noexcept;
/// Writes the prefix "IMG_" to the camera; no argument.
std::int32_t SetDefaultFilePrefix(void* argument) noexcept;

void RegisterFilePrefix(EVENT_PROC_REGISTER_FUNC callback);
