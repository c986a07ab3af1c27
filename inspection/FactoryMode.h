// Factory mode: the value of one camera property, saved with each change.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Puts the camera into factory mode, and saves it; no argument.
std::int32_t EnterFactoryMode(void* argument) noexcept;
/// Takes the camera out of factory mode, and saves it; no argument.
std::int32_t ExitFactoryMode(void* argument) noexcept;
/// Fills a signed 32-bit integer: 0 in factory mode, -1 outside it; other values as they are.
std::int32_t GetFactoryModeState(void* argument) noexcept;

void RegisterFactoryMode(EVENT_PROC_REGISTER_FUNC callback);
