// Which properties differ between two dumps.
#pragma once

#include <string>
#include <vector>

#include "jighost/check/DumpFolder.h"

struct ROW_DIFFERENCE {
    const PROPERTY_DATA_T* pRow;
    std::string onlyIn;  ///< the folder that alone has the file; empty if both have it
    COMPARISON comparison;
};

/// What two dumps came to.
struct DUMP_DIFFERENCE {
    std::size_t compared = 0;  ///< properties that both folders have
    std::size_t missing = 0;   ///< properties that neither has whole
    std::vector<ROW_DIFFERENCE> differences;
};

DUMP_DIFFERENCE CompareDumps(const std::string& left, const std::string& right);
