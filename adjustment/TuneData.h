// Tune data: the camera saves it to a file of its own. What the camera answers is not looked at.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Each has the camera save one kind of tune data; no argument.
std::int32_t SaveTuneData(void* argument) noexcept;
std::int32_t SaveTuneData2(void* argument) noexcept;
std::int32_t SaveAETuneData(void* argument) noexcept;

void RegisterTuneData(EVENT_PROC_REGISTER_FUNC callback);
