// Camera log: what the camera has noted down, fetched into a file.
#pragma once

#include <cstdint>

/// Writes the camera's log to the file "CameraLog" in the current directory, which takes the place
/// of an earlier one; no argument. Code 35 for an empty log; an odd answer of the camera to the
/// start or the end of the exchange is passed on.
std::int32_t GetCameraLog(void* argument) noexcept;
