// Body maintenance: single commands to the whole body, and its Windows Vista unique ID.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Bytes of the unique ID; their meaning is the camera's own.
constexpr std::uint32_t VISTA_UNIQUE_ID_SIZE = 20;

/// Puts the camera's settings back to their defaults; no argument. A failing event gives its word.
std::int32_t SetDefaultSettings(void* argument) noexcept;
/// Shuts off access to the camera's FROM; no argument. The event's word is not looked at.
std::int32_t ProhibitFROMAccess(void* argument) noexcept;
/// Makes the camera ignore AE at release; no argument. A failing event gives its word.
std::int32_t SetAEIgnore(void* argument) noexcept;
/// Calls the reset function of the camera's MPU; no argument.
std::int32_t MPUReset(void* argument) noexcept;

/// Makes the camera copy its unique ID; no argument. A failing event gives its word.
std::int32_t CopyWindowsVistaUniqueID(void* argument) noexcept;
/// Saves the unique ID in the camera; no argument.
std::int32_t SaveWindowsVistaUniqueID(void* argument) noexcept;
/// Fills VISTA_UNIQUE_ID_SIZE bytes.
std::int32_t GetWindowsVistaUniqueID(void* argument) noexcept;

void RegisterBodyMaintenance(EVENT_PROC_REGISTER_FUNC callback);
