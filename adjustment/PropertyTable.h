// The catalogue of the camera's adjustment properties: name, id and size of each.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// One row of the catalogue, also the host's record of SearchPropertyData.
struct PROPERTY_DATA_T {
    char PropertyName[64];       ///< ASCII, zero-terminated, the rest zero
    std::uint32_t PropertyId;    ///< as CProperty takes it
    std::uint32_t PropertySize;  ///< bytes
};
static_assert(sizeof(PROPERTY_DATA_T) == 72);
static_assert(offsetof(PROPERTY_DATA_T, PropertyId) == 64);
static_assert(offsetof(PROPERTY_DATA_T, PropertySize) == 68);

constexpr std::size_t PROPERTY_COUNT = 239;

/// Id of the row behind the last real one.
constexpr std::uint32_t PROP_END_ID = 0xDEAD;

/// PROPERTY_COUNT rows by family, then the sentinel row. The order is that of the dump.
extern const std::array<PROPERTY_DATA_T, PROPERTY_COUNT + 1> PropertyDataTable;
