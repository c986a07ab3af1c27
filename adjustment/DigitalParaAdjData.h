// Digital parameter adjustment data: an X and a Y value.
#pragma once

#include <cstddef>
#include <cstdint>

/// Host byte order.
struct DIGITAL_PARA_DATA_T {
    std::int32_t DeltaX;  ///< 16 bits in the camera
    std::int32_t DeltaY;  ///< 16 bits in the camera
};
static_assert(sizeof(DIGITAL_PARA_DATA_T) == 8);
static_assert(offsetof(DIGITAL_PARA_DATA_T, DeltaX) == 0);
static_assert(offsetof(DIGITAL_PARA_DATA_T, DeltaY) == 4);

/// Fills a DIGITAL_PARA_DATA_T.
std::int32_t GetDigitalParaAdjData(void* argument) noexcept;
