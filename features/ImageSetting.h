// What the image settings share: each is a camera property of one 32-bit word, which is neither
// interpreted nor tested. Every write reads first, so that a failing read stops it.
#pragma once

#include <cstdint>

#include "frame/OperationFrame.h"

/// An image setting that the host reads and writes.
struct IMAGE_SETTING {
    std::uint32_t id;
    const char* pszArgument;  ///< the pointer's name in the message of a null pointer
};

/// Replaces the setting with the host's word. A null pointer ends in code 3 without a camera call.
std::int32_t SetImageSetting(
    const OPERATION& operation, const IMAGE_SETTING& setting, const void* argument) noexcept;

/// Fills the host's word; it stays as it was if the camera gives none. A null pointer ends as
/// above.
std::int32_t GetImageSetting(
    const OPERATION& operation, const IMAGE_SETTING& setting, void* argument) noexcept;

/// Replaces the setting `id` with a fixed word.
std::int32_t SwitchImageSetting(
    const OPERATION& operation, std::uint32_t id, std::uint32_t unValue) noexcept;
