// Boot disk: its switch. Both operations fail with the result word of their event.
#pragma once

#include <cstdint>

/// Switches the boot disk off; no argument.
std::int32_t DisableBootDisk(void* argument) noexcept;
/// Switches the boot disk on; no argument.
std::int32_t EnableBootDisk(void* argument) noexcept;
