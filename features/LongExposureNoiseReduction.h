// Long exposure noise reduction: a word whose meaning is the camera's. There is no operation that
// saves it.
#pragma once

#include <cstdint>

/// Writes the setting from a 32-bit word.
std::int32_t SetLongExposureNoiseReduction(void* argument) noexcept;
/// Fills a 32-bit word with the setting.
std::int32_t GetLongExposureNoiseReduction(void* argument) noexcept;
