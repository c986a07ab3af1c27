// Sensor geometry: pixel pitch and optical length, which the camera keeps in thousandths.
#pragma once

#include <cstdint>

/// Fills a 64-bit floating-point number with the pixel pitch, its fraction included.
std::int32_t GetSensorPixelPitch(void* argument) noexcept;
/// Fills a 64-bit floating-point number with the optical length, its fraction dropped.
std::int32_t GetSensorOpticalLength(void* argument) noexcept;
