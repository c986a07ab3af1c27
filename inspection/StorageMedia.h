// Storage media: what the two card slots hold.
#pragma once

#include <cstddef>
#include <cstdint>

/// The camera's words for the slots, unchanged, host byte order.
struct STORAGE_MEDIA_EXISTENCE_T {
    std::int32_t Slot1;
    std::int32_t Slot2;
};
static_assert(sizeof(STORAGE_MEDIA_EXISTENCE_T) == 8);
static_assert(offsetof(STORAGE_MEDIA_EXISTENCE_T, Slot1) == 0);
static_assert(offsetof(STORAGE_MEDIA_EXISTENCE_T, Slot2) == 4);

/// Fills a STORAGE_MEDIA_EXISTENCE_T. A slot that could not be read is 0.
std::int32_t CheckStorageMediaExistence(void* argument) noexcept;
