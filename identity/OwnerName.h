// Owner name: a text of the camera, handled as a block of bytes.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Bytes of an owner name. Nothing demands a zero byte among them.
constexpr std::uint32_t OWNER_NAME_SIZE = 32;

/// Writes OWNER_NAME_SIZE bytes to the camera as they stand.
std::int32_t SetOwnerName(void* argument) noexcept;
/// Fills OWNER_NAME_SIZE bytes with the camera's as they stand.
std::int32_t GetOwnerName(void* argument) noexcept;
/// Writes OWNER_NAME_SIZE zero bytes to the camera; no argument.
std::int32_t ClearOwnerName(void* argument) noexcept;
/// Saves the owner name in the camera; no argument.
std::int32_t SaveOwnerName(void* argument) noexcept;

void RegisterOwnerName(EVENT_PROC_REGISTER_FUNC callback);
