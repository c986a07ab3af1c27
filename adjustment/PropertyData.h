// Property catalogue for the host, and the dump of all adjustment data to files.
#pragma once

#include <cstdint>

#include "adjustment/PropertyTable.h"

/// Fills the property hash with all real rows. Done again, it adds them again.
void RegisterPropertyData();

/// Takes a PROPERTY_DATA_T with PropertyName and fills in id and size; code 25 for an unknown name.
std::int32_t SearchPropertyData(void* argument) noexcept;

/// Reads every property of the catalogue and writes each into a file of its own, in the folder that
/// the folder block names; no argument.
std::int32_t LoadPropertyData(void* argument) noexcept;
