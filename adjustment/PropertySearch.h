// The hash over the catalogue's names.
#pragma once

#include <cstdint>

#include "adjustment/PropertyTable.h"

struct PROPERTY_HASH_NODE_T {
    const char* pName;  ///< in PropertyDataTable
    std::uint32_t PropertyId;
    std::uint32_t PropertySize;  ///< bytes
    PROPERTY_HASH_NODE_T* pNext;
};

/// Puts a row at the head of its chain. Its node stays allocated until the process ends.
void InsertPropertyNode(const PROPERTY_DATA_T& row);

/// The node of a name, or null. A name that is not found is noted in a log stream that is never
/// flushed.
const PROPERTY_HASH_NODE_T* LookUpPropertyData(const char* pszName);
