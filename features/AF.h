// AF: its switch, one byte of a larger record. There is no operation that saves it.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Switches AF off; no argument.
std::int32_t DisableAF(void* argument) noexcept;
/// Switches AF on; no argument.
std::int32_t EnableAF(void* argument) noexcept;

void RegisterAF(EVENT_PROC_REGISTER_FUNC callback);
