// Sensor number: a text of up to 16 characters in a camera property.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

/// Bytes of a sensor number; a shorter text ends with a zero byte.
constexpr std::uint32_t SENSOR_NUMBER_SIZE = 16;

/// Gives the camera SENSOR_NUMBER_SIZE bytes, all as they stand; unsaved.
std::int32_t SetSensorNumber(void* argument) noexcept;
/// Fills SENSOR_NUMBER_SIZE bytes.
std::int32_t GetSensorNumber(void* argument) noexcept;
/// Saves the sensor number in the camera; no argument.
std::int32_t SaveSensorNumber(void* argument) noexcept;

void RegisterSensorNumber(EVENT_PROC_REGISTER_FUNC callback);
