// Artist and copyright text: two texts of the camera that are cleared and saved as a pair.
#pragma once

#include <cstdint>

/// Writes 64 zero bytes to the artist text, then to the copyright text; no argument. If the first
/// fails the second is not tried.
std::int32_t ClearCopyRightInfo(void* argument) noexcept;
/// Saves both texts in the camera at once; no argument.
std::int32_t SaveCopyRightInfo(void* argument) noexcept;
